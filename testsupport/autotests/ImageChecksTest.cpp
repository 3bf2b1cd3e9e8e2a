#include "ImageChecks.h"
#include "QtPrinters.h"
#include "TempFolder.h"

#include <QFileInfo>
#include <QPainter>

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

using namespace OrvTest;

namespace {

const QColor red(255, 0, 0);

// A red 8 x 6 rectangle at (10, 5) on a white 40 x 30 image, painted as
// renderers paint: into a premultiplied image.
class RedRectangle : public ::testing::Test {
protected:
    void SetUp() override
    {
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.fillRect(rectangle, red);
    }

    const QRect rectangle{10, 5, 8, 6};
    QImage image{40, 30, QImage::Format_ARGB32_Premultiplied};
};

TEST_F(RedRectangle, CountsAndLocatesTheColour)
{
    EXPECT_EQ(countPixels(image, red), 48);
    EXPECT_EQ(countPixels(image, QColor(Qt::white)), 40 * 30 - 48);
    // The area's right and bottom edges are inside it.
    EXPECT_EQ(countPixels(image, QRect(0, 0, 11, 6), red), 1);
    EXPECT_EQ(countPixels(image, QRect(0, 0, 0, 0), red), 0);
    EXPECT_EQ(boundingBox(image, red), rectangle);
    EXPECT_TRUE(boundingBox(image, QColor(Qt::blue)).isNull());
}

TEST_F(RedRectangle, FindsDrawingOnlyWhereItIs)
{
    EXPECT_TRUE(anythingDrawn(image, rectangle, Qt::white));
    EXPECT_TRUE(anythingDrawn(image, QRect(17, 10, 5, 5), Qt::white)); // shares one corner pixel
    EXPECT_FALSE(anythingDrawn(image, QRect(18, 0, 22, 30), Qt::white));
    EXPECT_FALSE(anythingDrawn(image, QRect(0, 11, 40, 19), Qt::white));
    EXPECT_FALSE(anythingDrawn(image, rectangle, red));
}

TEST_F(RedRectangle, MeasuresTheDifferenceFromABlankImage)
{
    QImage blank(image.size(), QImage::Format_RGB32);
    blank.fill(Qt::white);
    EXPECT_DOUBLE_EQ(differingFraction(image, blank), 48.0 / (40 * 30));
    EXPECT_DOUBLE_EQ(differingFraction(image, image.convertToFormat(QImage::Format_RGB888)), 0.0);
    EXPECT_NONFATAL_FAILURE(differingFraction(image, blank.copy(0, 0, 40, 29)), "different sizes");
}

TEST_F(RedRectangle, SavesTheImageForInspection)
{
    const std::string path = saveImage(image, QStringLiteral("red/rectangle"));
    EXPECT_NE(path.find("RedRectangle.SavesTheImageForInspection-red_rectangle.png"), std::string::npos) << path;
    EXPECT_EQ(differingFraction(QImage(QString::fromStdString(path)), image), 0.0) << path;
}

TEST(ImageChecks, ToleranceAppliesToEveryChannelIncludingAlpha)
{
    QImage image(2, 1, QImage::Format_ARGB32_Premultiplied);
    image.setPixelColor(0, 0, QColor(250, 5, 0));
    image.setPixelColor(1, 0, QColor(255, 0, 0, 128));
    EXPECT_EQ(countPixels(image, red, 4), 0);
    EXPECT_EQ(countPixels(image, red, 5), 1);
    // Compared unpremultiplied: half-transparent red is still red, with alpha 128.
    EXPECT_EQ(countPixels(image, QColor(255, 0, 0, 128), 1), 1);
}

TEST(TempFolder, WritesAndReadsBackInSubfolders)
{
    QString root;
    {
        const TempFolder folder;
        ASSERT_TRUE(folder.isValid());
        root = folder.path();
        const QString written = folder.write(QStringLiteral("in/data.csv"), "x,y\n1,2\n");
        EXPECT_EQ(written, folder.path(QStringLiteral("in/data.csv")));
        EXPECT_TRUE(written.startsWith(root + QLatin1Char('/')));
        EXPECT_EQ(folder.read(QStringLiteral("in/data.csv")), QByteArray("x,y\n1,2\n"));
    }
    EXPECT_FALSE(QFileInfo::exists(root));
}

} // namespace
