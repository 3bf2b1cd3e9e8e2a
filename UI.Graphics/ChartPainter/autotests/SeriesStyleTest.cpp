// One series painted with the words of its style: where its symbols, fills,
// steps, sticks and bar caps show, in which colours, and that data beyond a
// fixed axis range stays inside the plot even where nothing clips the drawing
// (an SVG file). Also the legend's box in its colours.

#include "ChartPainter.h"
#include "PaintedChart.h"
#include "ChartSetUp.h"
#include "DataBinding.h"
#include "Plot.h"

#include "ImageChecks.h"

#include <QImage>
#include <QSvgRenderer>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

namespace {

namespace Chart = Orv::Chart;

const QColor lineColour(0xff, 0x00, 0xff);
const QColor fillColour(0x00, 0xb0, 0x00);
const QColor capColour(0x00, 0x00, 0xff);

Chart::DataSeries series(std::vector<float> x, std::vector<float> y)
{
    Chart::DataSeries s;
    s.x = {QStringLiteral("x"), {}, std::move(x), {}};
    s.y = {QStringLiteral("y"), {}, std::move(y), {}};
    s.x.undefined.resize(s.x.values.size(), false);
    s.y.undefined.resize(s.y.values.size(), false);
    return s;
}

// Four points well apart on axes fixed to [-0.5, 3.5] x [0, 8], so that y = 0 is the plot's bottom.
const QStringList fixedAxes = {
    "axis.x/axis.x.bottom/autoScale=false", "axis.x/axis.x.bottom/min=-0.5", "axis.x/axis.x.bottom/max=3.5",
    "axis.y/axis.y.left/autoScale=false",   "axis.y/axis.y.left/min=0",      "axis.y/axis.y.left/max=8"};

class SeriesStyleTest : public ::testing::Test {
protected:
    // Sets the chart up for the series, draws it in the line colour without a legend, applies the `style`
    // assignments (relative to the variable's style), then the `settings` (relative to the chart), and runs the
    // pipeline.
    void draw(Chart::DataSeries one, const QStringList& style, QStringList settings = {})
    {
        Chart::DataSet data;
        data.series.push_back(std::move(one));
        Chart::setUpChartForData(chart, data, QStringLiteral("test"));
        QStringList all = {QStringLiteral("legend.1/enabled=false"),
                           QStringLiteral("variable/y/style/lineColor=") + lineColour.name()};
        for (const QString& word : style)
            all << QStringLiteral("variable/y/style/") + word;
        all << settings;
        PaintedChart::assignAll(chart, all);
        EXPECT_TRUE(Chart::bindData(chart.variables, Chart::axisPairsOf(chart), std::move(data)).isEmpty());
        plot = std::make_unique<Chart::Plot>(chart, Chart::axisPairsOf(chart), Chart::TickRoom{size, 100, {}});
        painter = std::make_unique<Chart::ChartPainter>(*plot, size);
    }

    QImage image() const { return PaintedChart::image(*painter, size); }

    // The chart written as SVG and read back: what a viewer shows, with nothing clipped but what the painter cut.
    QImage svgImage() const
    {
        QSvgRenderer renderer(PaintedChart::svg(*painter, size, true));
        EXPECT_TRUE(renderer.isValid());
        QImage result(size, QImage::Format_ARGB32);
        result.fill(Qt::white);
        QPainter reader(&result);
        renderer.render(&reader);
        return result;
    }

    QPointF pixelOf(double x, double y) const
    {
        const Orv::Math::Vector3 point(static_cast<float>(x), static_cast<float>(y), 0.0f);
        const auto cube = plot->scaling().preciseMatrix(0).map(point.x(), point.y(), point.z());
        return painter->layout().toPixel(cube.x, cube.y);
    }

    // Pixels of the colour in a square of 2 `radius` + 1 around a data point.
    int pixelsNear(const QImage& drawn, double x, double y, const QColor& colour, int radius = 1) const
    {
        const QPoint at = pixelOf(x, y).toPoint();
        const QRect around(at - QPoint(radius, radius), at + QPoint(radius, radius));
        return OrvTest::countPixels(drawn, around, colour, 40);
    }

    QSize size{400, 300};
    KelModifiedGroup group;
    KelChart2D chart{group};
    std::unique_ptr<Chart::Plot> plot;
    std::unique_ptr<Chart::ChartPainter> painter;
};

const std::vector<float> fourX = {0, 1, 2, 3};
const std::vector<float> fourY = {2, 6, 3, 5};

struct SymbolCase {
    const char* symbol;
    // How the line is left out: by a line style or by a plot style of none.
    const char* noLine;
    // Whether the symbol covers a point 6.5 pixels right of and below its centre, 1.6 of its half-size of 8 along
    // the diagonal: only a square does.
    bool coversCorner;
};
void PrintTo(const SymbolCase& c, std::ostream* os)
{
    *os << c.symbol;
}

class SymbolTest : public SeriesStyleTest, public ::testing::WithParamInterface<SymbolCase> {};

// Symbols alone, without lines, in their fill colour centred on each point.
TEST_P(SymbolTest, EachPointShowsItsSymbolAndNoLineJoinsThem)
{
    draw(series(fourX, fourY),
         {QString::fromLatin1(GetParam().noLine), QStringLiteral("symbol=") + QString::fromLatin1(GetParam().symbol),
          QStringLiteral("symbolSize=16"), QStringLiteral("symbolOutline=false"),
          QStringLiteral("symbolFillColor=") + fillColour.name()},
         fixedAxes);
    const QImage drawn = image();
    for (std::size_t k = 0; k < fourX.size(); ++k) {
        EXPECT_EQ(pixelsNear(drawn, fourX[k], fourY[k], fillColour), 9) << k << OrvTest::saveImage(drawn, "symbol");
        const QPoint corner = (pixelOf(fourX[k], fourY[k]) + QPointF(6.5, 6.5)).toPoint();
        EXPECT_EQ(OrvTest::colorMatches(drawn.pixel(corner), fillColour, 40), GetParam().coversCorner) << k;
    }
    for (std::size_t k = 1; k < fourX.size(); ++k)
        EXPECT_EQ(pixelsNear(drawn, (fourX[k - 1] + fourX[k]) / 2, (fourY[k - 1] + fourY[k]) / 2, lineColour, 3), 0);
    EXPECT_EQ(OrvTest::countPixels(drawn, lineColour, 40), 0) << OrvTest::saveImage(drawn, "noLine");
}

INSTANTIATE_TEST_SUITE_P(Shapes, SymbolTest,
                         ::testing::Values(SymbolCase{"rect", "line=none", true},
                                           SymbolCase{"ellipse", "style=none", false},
                                           SymbolCase{"diamond", "line=none", false},
                                           SymbolCase{"hexagon", "style=none", false},
                                           SymbolCase{"triangle", "line=none", false},
                                           SymbolCase{"utriangle", "style=none", false},
                                           SymbolCase{"dtriangle", "line=none", false},
                                           SymbolCase{"ltriangle", "style=none", false},
                                           SymbolCase{"rtriangle", "line=none", false},
                                           SymbolCase{"cross", "style=none", false},
                                           SymbolCase{"xCross", "line=none", false},
                                           SymbolCase{"star", "style=none", false}),
                         [](const ::testing::TestParamInfo<SymbolCase>& info) { return std::string(info.param.symbol); });

struct FillCase {
    const char* fill;
    // Whether every pixel under the line has the fill colour (else some do, in a pattern), or, for a gradient,
    // none do.
    enum { Every, Some, OtherColours } expected;
};
void PrintTo(const FillCase& c, std::ostream* os)
{
    *os << c.fill;
}

class FillTest : public SeriesStyleTest, public ::testing::WithParamInterface<FillCase> {};

// The area between the line and the base line is filled; above the line stays white.
TEST_P(FillTest, AreaUnderTheLineIsFilledInItsPattern)
{
    draw(series(fourX, fourY),
         {QStringLiteral("fill=") + QString::fromLatin1(GetParam().fill),
          QStringLiteral("fillColor=") + fillColour.name()},
         fixedAxes);
    const QImage drawn = image();
    // Under the segment from (1, 6) to (2, 3): at x = 1.5 the line is at 4.5.
    const QRect under = QRectF(pixelOf(1.3, 2.5), pixelOf(1.7, 1.0)).normalized().toAlignedRect();
    const int filled = OrvTest::countPixels(drawn, under, fillColour, 40);
    const int area = under.width() * under.height();
    switch (GetParam().expected) {
    case FillCase::Every:
        EXPECT_EQ(filled, area) << OrvTest::saveImage(drawn, "fill");
        break;
    case FillCase::Some:
        EXPECT_GT(filled, 0) << OrvTest::saveImage(drawn, "fill");
        EXPECT_LT(filled, area) << OrvTest::saveImage(drawn, "fill");
        break;
    case FillCase::OtherColours:
        EXPECT_EQ(filled, 0);
        EXPECT_EQ(OrvTest::countPixels(drawn, under, Qt::white, 8), 0) << OrvTest::saveImage(drawn, "gradient");
        break;
    }
    const QRect above = QRectF(pixelOf(1.3, 7.5), pixelOf(1.7, 6.5)).normalized().toAlignedRect();
    EXPECT_FALSE(OrvTest::anythingDrawn(drawn, above, Qt::white, 8)) << OrvTest::saveImage(drawn, "above");
}

INSTANTIATE_TEST_SUITE_P(Patterns, FillTest,
                         ::testing::Values(FillCase{"solid", FillCase::Every}, FillCase{"dense", FillCase::Some},
                                           FillCase{"medium", FillCase::Some}, FillCase{"sparse", FillCase::Some},
                                           FillCase{"horizontal", FillCase::Some},
                                           FillCase{"vertical", FillCase::Some}, FillCase{"cross", FillCase::Some},
                                           FillCase{"bDiagonal", FillCase::Some},
                                           FillCase{"fDiagonal", FillCase::Some},
                                           FillCase{"crossDiagonal", FillCase::Some},
                                           FillCase{"gradient", FillCase::OtherColours}),
                         [](const ::testing::TestParamInfo<FillCase>& info) { return std::string(info.param.fill); });

// A step holds each value until the next point and rises there: its corners are drawn, the diagonals are not.
TEST_F(SeriesStyleTest, StepsHoldEachValueUntilTheNextPoint)
{
    draw(series(fourX, fourY), {QStringLiteral("style=step"), QStringLiteral("lineWidth=2")}, fixedAxes);
    const QImage drawn = image();
    for (std::size_t k = 1; k < fourX.size(); ++k) {
        EXPECT_GT(pixelsNear(drawn, (fourX[k - 1] + fourX[k]) / 2, fourY[k - 1], lineColour), 0) << k;
        EXPECT_GT(pixelsNear(drawn, fourX[k], (fourY[k - 1] + fourY[k]) / 2, lineColour), 0) << k;
        EXPECT_EQ(pixelsNear(drawn, (fourX[k - 1] + fourX[k]) / 2, (fourY[k - 1] + fourY[k]) / 2, lineColour, 3), 0)
            << k << OrvTest::saveImage(drawn, "steps");
    }
}

// Sticks rise from the base line to each point, with nothing drawn between them.
TEST_F(SeriesStyleTest, SticksRiseFromTheBaseLineToEachPoint)
{
    draw(series(fourX, fourY), {QStringLiteral("style=stick"), QStringLiteral("lineWidth=2")}, fixedAxes);
    const QImage drawn = image();
    for (std::size_t k = 0; k < fourX.size(); ++k) {
        EXPECT_GT(pixelsNear(drawn, fourX[k], fourY[k] / 2, lineColour), 0) << k << OrvTest::saveImage(drawn, "sticks");
        EXPECT_EQ(pixelsNear(drawn, fourX[k], fourY[k] + 0.5, lineColour, 3), 0) << k;
    }
    for (std::size_t k = 1; k < fourX.size(); ++k)
        EXPECT_EQ(pixelsNear(drawn, (fourX[k - 1] + fourX[k]) / 2, 1.0, lineColour, 3), 0) << k;
}

// A gradient line colours sticks by height as it colours a line: they must not vanish for want of a brush.
TEST_F(SeriesStyleTest, GradientSticksAreDrawn)
{
    draw(series(fourX, fourY),
         {QStringLiteral("style=stick"), QStringLiteral("line=gradient"), QStringLiteral("lineWidth=3")}, fixedAxes);
    const QImage drawn = image();
    for (std::size_t k = 0; k < fourX.size(); ++k) {
        const QPoint middle = pixelOf(fourX[k], fourY[k] / 2).toPoint();
        EXPECT_NE(drawn.pixelColor(middle), QColor(Qt::white)) << k << OrvTest::saveImage(drawn, "gradient-sticks");
    }
}

// A bar's top carries a cap of its own colour and size; the bar below it has the fill colour.
TEST_F(SeriesStyleTest, BarTopsCarryTheirCap)
{
    draw(series(fourX, fourY),
         {QStringLiteral("style=bar"), QStringLiteral("fill=solid"), QStringLiteral("fillColor=") + fillColour.name(),
          QStringLiteral("barWidth=0.5"), QStringLiteral("barTopSize=6"),
          QStringLiteral("barTopColor=") + capColour.name()},
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
        draw(series({0, 1, 2, 3, 4, 5, 6, 7}, {0, 6, 6, NAN, 3, 5, 3.5f, NAN}), style, axes);
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
    draw(series(fourX, fourY), {}, legend);
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
    draw(series(fourX, fourY), {}, {QStringLiteral("legend.1/enabled=false")});
    const QRectF alone = painter->layout().plot();
    for (const int alignment : {Qt::AlignBottom, Qt::AlignTop, Qt::AlignRight}) {
        SCOPED_TRACE(alignment);
        draw(series(fourX, fourY), {},
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
