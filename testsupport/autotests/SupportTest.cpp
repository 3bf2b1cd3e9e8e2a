// The test main and the printers, as every module's tests rely on them.

#include "QtPrinters.h"

#include <QFontMetricsF>
#include <QGuiApplication>

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
