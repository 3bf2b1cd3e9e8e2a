// One series painted with the words of its style: where its symbols, fills,
// steps, sticks and bar caps show, in which colours, and that data beyond a
// fixed axis range stays inside the plot even where nothing clips the drawing
// (an SVG file). Also the legend's box in its colours.

#include "PaintedChart.h"

#include "ImageChecks.h"

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {

namespace Chart = Orv::Chart;
using PaintedChart::series;

const QColor lineColour = PaintedChart::seriesColour;
const QColor fillColour(0x00, 0xb0, 0x00);
const QColor capColour(0x00, 0x00, 0xff);

// Four points well apart on axes fixed to [-0.5, 3.5] x [0, 8], so that y = 0 is the plot's bottom.
const QStringList fixedAxes = {
    "axis.x/axis.x.bottom/autoScale=false", "axis.x/axis.x.bottom/min=-0.5", "axis.x/axis.x.bottom/max=3.5",
    "axis.y/axis.y.left/autoScale=false",   "axis.y/axis.y.left/min=0",      "axis.y/axis.y.left/max=8"};

class SeriesStyleTest : public PaintedChart::SeriesChart {
protected:
    // Draws the series without a legend, with the `style` assignments (relative to the variable's style), then
    // the `settings` (relative to the chart).
    void drawStyled(Chart::DataSeries one, const QStringList& style, const QStringList& settings = {})
    {
        QStringList all = {QStringLiteral("legend.1/enabled=false")};
        for (const QString& word : style)
            all << QStringLiteral("variable/y/style/") + word;
        draw(std::move(one), all + settings);
    }

    // The chart written as SVG and read back: what a viewer shows, with nothing clipped but what the painter cut.
    QImage svgImage() const
    {
        QSvgRenderer renderer(svg(true));
        EXPECT_TRUE(renderer.isValid());
        QImage result(size, QImage::Format_ARGB32);
        result.fill(Qt::white);
        QPainter reader(&result);
        renderer.render(&reader);
        return result;
    }

    // Pixels of the colour in a square of 2 `radius` + 1 around a data point.
    int pixelsNear(const QImage& drawn, double x, double y, const QColor& colour, int radius = 1) const
    {
        const QPoint at = pixelOf(x, y).toPoint();
        const QRect around(at - QPoint(radius, radius), at + QPoint(radius, radius));
        return OrvTest::countPixels(drawn, around, colour, 40);
    }
};

const std::vector<float> fourX = {0, 1, 2, 3};
const std::vector<float> fourY = {2, 6, 3, 5};

Chart::DataSeries four()
{
    return series("x", fourX, "y", fourY);
}

class SymbolTest : public SeriesStyleTest, public ::testing::WithParamInterface<const char*> {};

// Symbols alone, in their fill colour centred on each point, with no line joining them, whether a line style or a
// plot style of none leaves it out. Only a square covers the point 6.5 pixels right of and below its centre, 1.6 of
// its half-size of 8 along the diagonal.
TEST_P(SymbolTest, EachPointShowsItsSymbolAndNoLineJoinsThem)
{
    const QString symbol = QString::fromLatin1(GetParam());
    for (const char* noLine : {"line=none", "style=none"}) {
        SCOPED_TRACE(noLine);
        drawStyled(four(),
                   {QString::fromLatin1(noLine), QStringLiteral("symbol=") + symbol, QStringLiteral("symbolSize=16"),
                    QStringLiteral("symbolOutline=false"), QStringLiteral("symbolFillColor=") + fillColour.name()},
                   fixedAxes);
        const QImage drawn = image();
        for (std::size_t k = 0; k < fourX.size(); ++k) {
            EXPECT_EQ(pixelsNear(drawn, fourX[k], fourY[k], fillColour), 9) << k << OrvTest::saveImage(drawn, "symbol");
            const QPoint corner = (pixelOf(fourX[k], fourY[k]) + QPointF(6.5, 6.5)).toPoint();
            EXPECT_EQ(OrvTest::colorMatches(drawn.pixel(corner), fillColour, 40), symbol == QLatin1String("rect")) << k;
        }
        EXPECT_EQ(OrvTest::countPixels(drawn, lineColour, 40), 0) << OrvTest::saveImage(drawn, "noLine");
    }
}

INSTANTIATE_TEST_SUITE_P(Shapes, SymbolTest,
                         ::testing::Values("rect", "ellipse", "diamond", "hexagon", "triangle", "utriangle",
                                           "dtriangle", "ltriangle", "rtriangle", "cross", "xCross", "star"),
                         [](const ::testing::TestParamInfo<const char*>& info) { return std::string(info.param); });

class FillTest : public SeriesStyleTest, public ::testing::WithParamInterface<const char*> {};

// The area between the line and the base line is filled: every pixel of it by a solid fill, some by a pattern, and
// by a gradient none in the fill colour and none white. Above the line stays white.
TEST_P(FillTest, AreaUnderTheLineIsFilledInItsPattern)
{
    const QString fill = QString::fromLatin1(GetParam());
    drawStyled(four(), {QStringLiteral("fill=") + fill, QStringLiteral("fillColor=") + fillColour.name()}, fixedAxes);
    const QImage drawn = image();
    // Under the segment from (1, 6) to (2, 3): at x = 1.5 the line is at 4.5.
    const QRect under = QRectF(pixelOf(1.3, 2.5), pixelOf(1.7, 1.0)).normalized().toAlignedRect();
    const int filled = OrvTest::countPixels(drawn, under, fillColour, 40);
    const int area = under.width() * under.height();
    if (fill == QLatin1String("solid")) {
        EXPECT_EQ(filled, area) << OrvTest::saveImage(drawn, "fill");
    } else if (fill == QLatin1String("gradient")) {
        EXPECT_EQ(filled, 0);
        EXPECT_EQ(OrvTest::countPixels(drawn, under, Qt::white, 8), 0) << OrvTest::saveImage(drawn, "gradient");
    } else {
        EXPECT_GT(filled, 0) << OrvTest::saveImage(drawn, "fill");
        EXPECT_LT(filled, area) << OrvTest::saveImage(drawn, "fill");
    }
    const QRect above = QRectF(pixelOf(1.3, 7.5), pixelOf(1.7, 6.5)).normalized().toAlignedRect();
    EXPECT_FALSE(OrvTest::anythingDrawn(drawn, above, Qt::white, 8)) << OrvTest::saveImage(drawn, "above");
}

INSTANTIATE_TEST_SUITE_P(Patterns, FillTest,
                         ::testing::Values("solid", "dense", "medium", "sparse", "horizontal", "vertical", "cross",
                                           "bDiagonal", "fDiagonal", "crossDiagonal", "gradient"),
                         [](const ::testing::TestParamInfo<const char*>& info) { return std::string(info.param); });

// A step holds each value until the next point and rises there: its corners are drawn, the diagonals are not.
TEST_F(SeriesStyleTest, StepsHoldEachValueUntilTheNextPoint)
{
    drawStyled(four(), {QStringLiteral("style=step"), QStringLiteral("lineWidth=2")}, fixedAxes);
    const QImage drawn = image();
    for (std::size_t k = 1; k < fourX.size(); ++k) {
        EXPECT_GT(pixelsNear(drawn, (fourX[k - 1] + fourX[k]) / 2, fourY[k - 1], lineColour), 0) << k;
        EXPECT_GT(pixelsNear(drawn, fourX[k], (fourY[k - 1] + fourY[k]) / 2, lineColour), 0) << k;
        EXPECT_EQ(pixelsNear(drawn, (fourX[k - 1] + fourX[k]) / 2, (fourY[k - 1] + fourY[k]) / 2, lineColour, 3), 0)
            << k << OrvTest::saveImage(drawn, "steps");
    }
}

// Sticks rise from the base line to each point, with nothing drawn between them. A gradient line colours them by
// height as it colours a line: they must not vanish for want of a brush.
TEST_F(SeriesStyleTest, SticksRiseFromTheBaseLineToEachPoint)
{
    drawStyled(four(), {QStringLiteral("style=stick"), QStringLiteral("lineWidth=2")}, fixedAxes);
    const QImage drawn = image();
    for (std::size_t k = 0; k < fourX.size(); ++k) {
        EXPECT_GT(pixelsNear(drawn, fourX[k], fourY[k] / 2, lineColour), 0) << k << OrvTest::saveImage(drawn, "sticks");
        EXPECT_EQ(pixelsNear(drawn, fourX[k], fourY[k] + 0.5, lineColour, 3), 0) << k;
    }
    for (std::size_t k = 1; k < fourX.size(); ++k)
        EXPECT_EQ(pixelsNear(drawn, (fourX[k - 1] + fourX[k]) / 2, 1.0, lineColour, 3), 0) << k;

    drawStyled(four(), {QStringLiteral("style=stick"), QStringLiteral("line=gradient"), QStringLiteral("lineWidth=3")},
               fixedAxes);
    const QImage gradient = image();
    for (std::size_t k = 0; k < fourX.size(); ++k)
        EXPECT_NE(gradient.pixelColor(pixelOf(fourX[k], fourY[k] / 2).toPoint()), QColor(Qt::white))
            << k << OrvTest::saveImage(gradient, "gradient-sticks");
}

// A bar's top carries a cap of its own colour and size; the bar below it has the fill colour.
TEST_F(SeriesStyleTest, BarTopsCarryTheirCap)
{
    drawStyled(four(),
               {QStringLiteral("style=bar"), QStringLiteral("fill=solid"),
                QStringLiteral("fillColor=") + fillColour.name(), QStringLiteral("barWidth=0.5"),
                QStringLiteral("barTopSize=6"), QStringLiteral("barTopColor=") + capColour.name()},
               fixedAxes);
    const QImage drawn = image();
    for (std::size_t k = 0; k < fourX.size(); ++k) {
        EXPECT_EQ(pixelsNear(drawn, fourX[k], fourY[k], capColour), 9) << k << OrvTest::saveImage(drawn, "bars");
        EXPECT_EQ(pixelsNear(drawn, fourX[k], fourY[k] / 2, fillColour, 2), 25) << k;
        EXPECT_EQ(pixelsNear(drawn, fourX[k], fourY[k] / 2, capColour, 2), 0) << k;
        EXPECT_EQ(pixelsNear(drawn, fourX[k] + 0.4, 1.0, fillColour, 2), 0) << k;
    }
}

// Data beyond the fixed ranges of both axes, a gap and its mark below the plot: what is drawn without any clip
// (an SVG file read back) stays inside the plot, and the parts of the line that lie inside are there.
TEST_F(SeriesStyleTest, LinesAndFillsBeyondTheAxesStayInsideThePlotOfAnSvgFile)
{
    // The y range [1, 4] cuts the segments from (0, 0) and to (1, 6), leaves (1, 6)-(2, 6) wholly above, and
    // (5, 5)-(6, 3.5) passes above the plot's corner at (5.5, 4). The gap at x = 3 is marked at the lowest y, 0.
    const QStringList axes = {
        "axis.x/axis.x.bottom/autoScale=false", "axis.x/axis.x.bottom/min=0.5", "axis.x/axis.x.bottom/max=5.5",
        "axis.y/axis.y.left/autoScale=false",   "axis.y/axis.y.left/min=1",     "axis.y/axis.y.left/max=4"};
    for (const bool filled : {false, true}) {
        SCOPED_TRACE(filled ? "filled" : "line");
        QStringList style = {QStringLiteral("lineWidth=2")};
        if (filled)
            style << QStringLiteral("fill=solid") << QStringLiteral("fillColor=") + fillColour.name();
        drawStyled(series("x", {0, 1, 2, 3, 4, 5, 6, 7}, "y", {0, 6, 6, NAN, 3, 5, 3.5f, NAN}), style, axes);
        const QRectF area = painter->layout().plot().adjusted(-1.5, -1.5, 1.5, 1.5);
        const QImage drawn = svgImage();
        for (const QColor& colour : {lineColour, fillColour}) {
            const QRect box = OrvTest::boundingBox(drawn, colour, 40);
            if (!box.isNull()) {
                EXPECT_TRUE(area.contains(box)) << colour.name().toStdString() << OrvTest::saveImage(drawn, "svg");
            }
        }
        // The rising part of (4, 3)-(5, 5) lies inside, up to y = 4 at x = 4.5.
        EXPECT_GT(pixelsNear(drawn, 4.25, 3.5, lineColour), 0) << OrvTest::saveImage(drawn, "inside");
        EXPECT_EQ(OrvTest::countPixels(drawn, fillColour, 40) > 0, filled);
    }
}

struct LegendBoxCase {
    const char* name;
    // The background colours, empty for none, and the legend element's alignment: bottom, top or right.
    const char* background;
    int alignment;
    // The colours at the top and the bottom of the box's inside.
    QColor top;
    QColor bottom;
};
void PrintTo(const LegendBoxCase& c, std::ostream* os)
{
    *os << c.name;
}

class LegendBoxTest : public SeriesStyleTest, public ::testing::WithParamInterface<LegendBoxCase> {};

// A legend with a border is a box in it, beside the plot on the side its alignment names: empty inside, of its
// one background colour, or running from the first colour at the top to the last at the bottom. Its texts cast
// their shadow.
TEST_P(LegendBoxTest, LegendBoxHasItsBorderBackgroundAndShadow)
{
    const LegendBoxCase& c = GetParam();
    const QColor border(0x80, 0x00, 0x00);
    const QColor shadow(0x00, 0xc0, 0xc0);
    QStringList legend = {QStringLiteral("legend.1/enabled=true"), QStringLiteral("legend.1/border=") + border.name(),
                          QStringLiteral("legend.1/textShadowColor=") + shadow.name(),
                          QStringLiteral("legend.1/viewport/alignment=%1").arg(c.alignment)};
    if (*c.background)
        legend << QStringLiteral("legend.1/background=") + QString::fromLatin1(c.background);
    drawStyled(four(), {}, legend);
    const QImage drawn = image();
    const QRect box = OrvTest::boundingBox(drawn, border, 30);
    ASSERT_FALSE(box.isNull()) << OrvTest::saveImage(drawn, "legend");
    EXPECT_GT(box.width(), 30);
    EXPECT_GT(box.height(), 10);
    const QRectF plotArea = painter->layout().plot();
    switch (c.alignment) {
    case Qt::AlignBottom:
        EXPECT_GT(box.top(), plotArea.bottom());
        break;
    case Qt::AlignTop:
        EXPECT_LT(box.bottom(), plotArea.top());
        break;
    default:
        EXPECT_GT(box.left(), plotArea.right());
        break;
    }
    const QRect inside = box.adjusted(2, 2, -2, -2);
    EXPECT_TRUE(OrvTest::colorMatches(drawn.pixel(inside.right() - 1, inside.top()), c.top, 30))
        << OrvTest::saveImage(drawn, "legend");
    EXPECT_TRUE(OrvTest::colorMatches(drawn.pixel(inside.right() - 1, inside.bottom()), c.bottom, 30))
        << OrvTest::saveImage(drawn, "legend");
    EXPECT_GT(OrvTest::countPixels(drawn, inside, shadow, 40), 0) << OrvTest::saveImage(drawn, "shadow");
}

// An image too low for a row of the legend leaves it out, on any side, and gives the plot all the room there is.
TEST_F(SeriesStyleTest, LegendWithoutRoomIsLeftOut)
{
    size = QSize(400, 80);
    const QColor border(0x80, 0x00, 0x00);
    drawStyled(four(), {}, {QStringLiteral("legend.1/enabled=false")});
    const QRectF alone = painter->layout().plot();
    for (const int alignment : {Qt::AlignBottom, Qt::AlignTop, Qt::AlignRight}) {
        SCOPED_TRACE(alignment);
        drawStyled(four(), {},
                   {QStringLiteral("legend.1/enabled=true"), QStringLiteral("legend.1/border=") + border.name(),
                    QStringLiteral("legend.1/viewport/alignment=%1").arg(alignment)});
        EXPECT_EQ(painter->layout().plot(), alone);
        const QImage drawn = image();
        EXPECT_EQ(OrvTest::countPixels(drawn, border, 30), 0) << OrvTest::saveImage(drawn, "noRoom");
    }
}

const QColor yellow(0xff, 0xff, 0x00);
const QColor cyan(0x00, 0xff, 0xff);

INSTANTIATE_TEST_SUITE_P(
    Backgrounds, LegendBoxTest,
    ::testing::Values(LegendBoxCase{"plainBelow", "#ffff00", Qt::AlignBottom, yellow, yellow},
                      LegendBoxCase{"gradientAbove", "#ffff00, #00ffff", Qt::AlignTop, yellow, cyan},
                      LegendBoxCase{"borderOnlyRight", "", Qt::AlignRight, Qt::white, Qt::white}),
    [](const ::testing::TestParamInfo<LegendBoxCase>& info) { return std::string(info.param.name); });

} // namespace
