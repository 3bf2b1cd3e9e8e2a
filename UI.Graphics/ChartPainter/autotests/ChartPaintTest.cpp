// Charts set up for a file's data, painted: what their axis captions say when
// they have to be shortened, where undefined points are marked, that a fixed
// range of a tight axis fills the plot exactly, and which minor ticks of a
// logarithmic axis are labelled.

#include "PaintedChart.h"

#include "ImageChecks.h"
#include "SvgChecks.h"

#include <QImage>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <vector>

namespace {

namespace Chart = Orv::Chart;
using PaintedChart::series;
using PaintedChart::seriesColour;

class ChartPaintTest : public PaintedChart::SeriesChart {
protected:
    QStringList svgTexts() const { return OrvTest::texts(OrvTest::parseSvg(svg())); }
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
    const QStringList texts = svgTexts();
    EXPECT_EQ(texts.filter(QRegularExpression(QString::fromUtf8(c.pattern))).size(), 1)
        << texts.join(QLatin1Char('|')).toStdString();
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
    // Whether the painter marks the undefined point at the lowest y (or x) of the series.
    bool markedAt(const QImage& drawn, double defined) const
    {
        const Orv::Math::BoundingBox& box = plot->cache().cache(0).bounds();
        const bool withoutY = GetParam().series.x.undefined == std::vector<bool>(GetParam().series.x.size(), false);
        const QPointF at = withoutY ? pixelOf(defined, box.min().y()) : pixelOf(box.min().x(), defined);
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

enum class Minors { None, TwoAndFive, Every };

// Which minor ticks of the axis are labelled, or a failure when they follow no rule.
Minors labelledMinors(const Chart::PlotAxis& axis)
{
    EXPECT_FALSE(axis.ticks.minor().empty());
    bool every = true, none = true, twoAndFive = true;
    for (const Chart::Tick& tick : axis.ticks.minor()) {
        const double mantissa = std::pow(10.0, tick.value - std::floor(tick.value + 1e-9));
        const bool atTwoOrFive = std::abs(mantissa - 2) < 1e-6 || std::abs(mantissa - 5) < 1e-6;
        every = every && tick.labelled;
        none = none && !tick.labelled;
        twoAndFive = twoAndFive && tick.labelled == atTwoOrFive;
    }
    EXPECT_TRUE(every || none || twoAndFive);
    return every ? Minors::Every : none ? Minors::None : Minors::TwoAndFive;
}

// y from 1 to 1000 on a logarithmic axis (x in tenths, so that no x label reads like a y one): taller images label
// more minor ticks, from none to every one (neighbours 9 and 10 are only 4.6 % of a decade apart, so every label
// needs a very tall axis); a labelled minor tick's label is drawn, an unlabelled one's is not.
TEST_F(ChartPaintTest, LogAxisMinorLabelsFollowTheRoom)
{
    std::map<Minors, int> seen;
    Minors before = Minors::None;
    for (const int height : {150, 400, 600, 1600, 4000}) {
        SCOPED_TRACE(height);
        size = QSize(400, height);
        draw(series("x", {0.1f, 0.2f, 0.3f, 0.4f}, "y", {1, 10, 100, 1000}), {"axis.y/axis.y.left/logarithmic=true"});
        const Chart::PlotAxis* left = plot->axis(QStringLiteral("axis.y.left"));
        ASSERT_TRUE(left);
        const Minors minors = labelledMinors(*left);
        EXPECT_GE(static_cast<int>(minors), static_cast<int>(before));
        before = minors;
        seen[minors] = height;
        const QStringList texts = svgTexts();
        for (const Chart::Tick& tick : left->ticks.minor())
            EXPECT_EQ(texts.contains(tick.label), tick.labelled) << tick.label.toStdString();
    }
    EXPECT_EQ(seen.size(), 3u) << seen.count(Minors::None) << seen.count(Minors::TwoAndFive)
                               << seen.count(Minors::Every);
}

} // namespace
