// Charts set up for a file's data, painted: what their axis captions say when
// they have to be shortened, where undefined points are marked, and that a
// fixed range of a tight axis fills the plot exactly.

#include "ChartPainter.h"
#include "PaintedChart.h"
#include "ChartSetUp.h"
#include "DataBinding.h"
#include "Plot.h"

#include "ImageChecks.h"
#include "SvgChecks.h"

#include <QImage>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

namespace {

namespace Chart = Orv::Chart;

const QColor seriesColour(0xff, 0x00, 0xff);

// One series of a data set; empty flags leave every value defined.
Chart::DataSeries series(const QString& xName, std::vector<float> x, const QString& yName, std::vector<float> y,
                         std::vector<bool> xUndefined = {}, std::vector<bool> yUndefined = {})
{
    Chart::DataSeries s;
    s.x = {xName, {}, std::move(x), std::move(xUndefined)};
    s.y = {yName, {}, std::move(y), std::move(yUndefined)};
    s.x.undefined.resize(s.x.values.size(), false);
    s.y.undefined.resize(s.y.values.size(), false);
    return s;
}

class ChartPaintTest : public ::testing::Test {
protected:
    static constexpr QSize size{400, 300};

    // Sets the chart up for the series as for a file's, in the series colour, applies `settings` and runs the
    // pipeline.
    void draw(Chart::DataSeries one, QStringList settings = {})
    {
        Chart::DataSet data;
        data.series.push_back(std::move(one));
        Chart::setUpChartForData(chart, data, QStringLiteral("test"));
        settings
            << QStringLiteral("variable/%1/style/lineColor=%2").arg(data.series.front().y.name, seriesColour.name());
        PaintedChart::assignAll(chart, settings);
        EXPECT_TRUE(Chart::bindData(chart.variables, Chart::axisPairsOf(chart), std::move(data)).isEmpty());
        plot = std::make_unique<Chart::Plot>(chart, Chart::axisPairsOf(chart), Chart::TickRoom{size, 100, {}});
        painter = std::make_unique<Chart::ChartPainter>(*plot, size);
    }

    QImage image() const { return PaintedChart::image(*painter, size); }
    QStringList svgTexts() const { return OrvTest::texts(OrvTest::parseSvg(PaintedChart::svg(*painter, size))); }

    // Where the first variable's point (x, y) is drawn.
    QPointF pixelOf(double x, double y) const
    {
        const Orv::Math::Vector3 point(static_cast<float>(x), static_cast<float>(y), 0.0f);
        const auto cube = plot->scaling().preciseMatrix(0).map(point.x(), point.y(), point.z());
        return painter->layout().toPixel(cube.x, cube.y);
    }

    KelModifiedGroup group;
    KelChart2D chart{group};
    std::unique_ptr<Chart::Plot> plot;
    std::unique_ptr<Chart::ChartPainter> painter;
};

struct CaptionCase {
    const char* name;
    Chart::DataSeries series;
    QString yUnit;
    // What the shortened caption must look like: the title cut, the end whole.
    const char* pattern;
};
void PrintTo(const CaptionCase& c, std::ostream* os)
{
    *os << c.name;
}

class AxisCaptionTest : public ChartPaintTest, public ::testing::WithParamInterface<CaptionCase> {};

const QString longName = QStringLiteral("Population of the largest metropolitan areas in the northern hemisphere");

// Values around 1e7 are labelled in millions (and 1e-5 in millionths): the caption must keep saying so when its
// title is cut.
TEST_P(AxisCaptionTest, ShortenedCaptionKeepsItsFactorWhole)
{
    CaptionCase c = GetParam();
    c.series.y.unit = c.yUnit;
    draw(c.series);
    const QRegularExpression pattern(QString::fromUtf8(c.pattern));
    const QStringList texts = svgTexts();
    EXPECT_EQ(texts.filter(pattern).size(), 1) << texts.join(QLatin1Char('|')).toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Sides, AxisCaptionTest,
    ::testing::Values(
        CaptionCase{"left", series("x", {0, 1}, longName, {1.2e7f, 3.4e7f}), {},
                    "^Population.*\u2026 \\(\u00d7 10\u2076\\)$"},
        CaptionCase{"leftWithUnit", series("x", {0, 1}, longName, {1.2e7f, 3.4e7f}), "kg",
                    "^Population.*\u2026 \\[kg\\] \\(\u00d7 10\u2076\\)$"},
        CaptionCase{"leftSmallValues", series("x", {0, 1}, longName, {1.2e-5f, 3.4e-5f}), {},
                    "^Population.*\u2026 \\(\u00d7 10\u207b\u2076\\)$"},
        CaptionCase{"bottom", series(longName + longName, {1.2e7f, 3.4e7f}, "y", {0, 1}), {},
                    "^Population.*\u2026 \\(\u00d7 10\u2076\\)$"}),
    [](const ::testing::TestParamInfo<CaptionCase>& info) { return std::string(info.param.name); });

struct GapCase {
    const char* name;
    Chart::DataSeries series;
    // Undefined points by their defined component: x for points without y, y for points without x.
    std::vector<double> marked;
    std::vector<double> unmarked;
};
void PrintTo(const GapCase& c, std::ostream* os)
{
    *os << c.name;
}

class UndefinedMarkTest : public ChartPaintTest, public ::testing::WithParamInterface<GapCase> {
protected:
    // Where the painter marks an undefined point: at the lowest y or x of the series.
    QPointF markOf(double defined) const
    {
        const Orv::Math::BoundingBox& box = plot->cache().cache(0).bounds();
        const bool withoutY = GetParam().series.x.undefined == std::vector<bool>(GetParam().series.x.size(), false);
        return withoutY ? pixelOf(defined, box.min().y()) : pixelOf(box.min().x(), defined);
    }
    bool markedAt(const QImage& drawn, double defined) const
    {
        const QPointF at = markOf(defined);
        EXPECT_TRUE(painter->layout().plot().contains(at)) << defined;
        const QRect around = QRectF(at - QPointF(3, 3), at + QPointF(3, 3)).toAlignedRect();
        return OrvTest::countPixels(drawn, around, seriesColour, 60) > 0;
    }
};

// Rows before a column starts or after it ends are no gaps of the series; those between its points are.
TEST_P(UndefinedMarkTest, OnlyGapsInsideTheSeriesAreMarked)
{
    const GapCase& c = GetParam();
    draw(c.series);
    const QImage drawn = image();
    for (const double at : c.marked)
        EXPECT_TRUE(markedAt(drawn, at)) << at << OrvTest::saveImage(drawn, "marked");
    for (const double at : c.unmarked)
        EXPECT_FALSE(markedAt(drawn, at)) << at << OrvTest::saveImage(drawn, "unmarked");
}

const std::vector<float> tenX = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};

INSTANTIATE_TEST_SUITE_P(
    Series, UndefinedMarkTest,
    ::testing::Values(
        GapCase{"columnStartsLateAndEndsEarly",
                series("x", tenX, "y", {0, 0, 0, 20, 30, 0, 30, 20, 0, 0}, {},
                       {true, true, true, false, false, true, false, false, true, true}),
                {5},
                {0, 1, 2, 8, 9}},
        GapCase{"notANumber", series("x", {0, 1, 2, 3, 4, 5}, "y", {NAN, 20, 30, NAN, 30, 20}), {3}, {0}},
        GapCase{"xMissingOutsideTheDefinedY",
                series("x", {0, 1, 2, 3, 4, 0, 0, 0}, "y", {5, 6, 7, 8, 9, 2, 7.5f, 12},
                       {false, false, false, false, false, true, true, true}),
                {7.5},
                {2, 12}}),
    [](const ::testing::TestParamInfo<GapCase>& info) { return std::string(info.param.name); });

// A view zoomed to a range fixes it on a tight axis: its ends are the plot's edges, its ticks lie between.
TEST_F(ChartPaintTest, FixedTightRangeFillsThePlotExactly)
{
    draw(series("x", tenX, "y", {5, 6, 7, 8, 9, 9, 8, 7, 6, 5}),
         {"axis.x/axis.x.bottom/autoScale=false", "axis.x/axis.x.bottom/min=2.5", "axis.x/axis.x.bottom/max=7.25",
          "axis.y/axis.y.left/autoScale=false", "axis.y/axis.y.left/min=6.1", "axis.y/axis.y.left/max=8.7"});
    const Chart::PlotAxis* x = plot->axis(QStringLiteral("axis.x.bottom"));
    const Chart::PlotAxis* y = plot->axis(QStringLiteral("axis.y.left"));
    ASSERT_TRUE(x && y);
    EXPECT_EQ(std::make_pair(x->min, x->max), std::make_pair(2.5, 7.25));
    EXPECT_EQ(std::make_pair(y->min, y->max), std::make_pair(6.1, 8.7));
    const QRectF area = painter->layout().plot();
    const QPointF low = pixelOf(2.5, 6.1);
    const QPointF high = pixelOf(7.25, 8.7);
    EXPECT_NEAR(low.x(), area.left(), 1e-3);
    EXPECT_NEAR(low.y(), area.bottom(), 1e-3);
    EXPECT_NEAR(high.x(), area.right(), 1e-3);
    EXPECT_NEAR(high.y(), area.top(), 1e-3);
    for (const Chart::PlotAxis* axis : {x, y}) {
        ASSERT_FALSE(axis->ticks.major().empty());
        for (const Chart::Tick& tick : axis->ticks.major())
            EXPECT_TRUE(tick.position >= 0 && tick.position <= 1) << tick.label.toStdString();
    }
}

} // namespace
