// The test main and the printers, as every module's tests rely on them.

#include "QtPrinters.h"
#include "TextBoxes.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>

#include <gtest/gtest.h>

namespace {

TEST(TestMain, RunsTestsInAGuiApplicationWithoutADisplay)
{
    ASSERT_NE(qobject_cast<QGuiApplication*>(QCoreApplication::instance()), nullptr);
    EXPECT_FALSE(QCoreApplication::instance()->inherits("QApplication"));
    EXPECT_FALSE(qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"));
    EXPECT_EQ(QGuiApplication::platformName(), qEnvironmentVariable("QT_QPA_PLATFORM"));
    // Text can be measured.
    EXPECT_GT(QFontMetricsF(QFont()).horizontalAdvance(QStringLiteral("label")), 0.0);
}

// GoogleTest finds the printers rather than printing QStrings as lists of characters and the rest as bytes.
TEST(QtPrinters, GoogleTestPrintsQtValuesAsText)
{
    using ::testing::PrintToString;
    EXPECT_EQ(PrintToString(QStringList({"x", "y"})), "{\"x\", \"y\"}");
    EXPECT_EQ(PrintToString(QRectF(1, 2, 3.5, 4)), "(1, 2) 3.5 x 4");
    EXPECT_EQ(PrintToString(QColor(255, 0, 0, 128)), "#80ff0000");
}

} // namespace

TEST(TextBoxes, FindsTextsThatOverlapOrLeaveThePicture)
{
    const QSize size(200, 100);
    const QList<OrvTest::DrawnText> texts = OrvTest::drawnTexts(size, [](QPainter& painter) {
        painter.setFont(QFont(QStringLiteral("DejaVu Sans"), 10));
        painter.drawText(QPointF(10, 20), QStringLiteral("first"));
        painter.drawText(QPointF(20, 22), QStringLiteral("second"));
        painter.translate(150, 80);
        painter.drawText(QPointF(0, 0), QStringLiteral("far beyond the edge"));
        painter.drawText(QPointF(0, -40), QStringLiteral("   "));
    });
    ASSERT_EQ(texts.size(), 3);
    EXPECT_EQ(texts[2].box.left(), 150.0);
    EXPECT_EQ(OrvTest::overlappingTexts(texts), QStringList{QStringLiteral("first / second")});
    EXPECT_EQ(OrvTest::textsOutside(texts, size), QStringList{QStringLiteral("far beyond the edge")});
}
