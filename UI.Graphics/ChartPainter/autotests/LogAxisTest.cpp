// A logarithmic axis over three decades at several heights: its minor ticks
// are labelled all, or only those at 2 and 5 times a power of ten, or none,
// as room allows, and the drawing shows exactly the labelled ones.

#include "ChartPainter.h"
#include "PaintedChart.h"
#include "ChartSetUp.h"
#include "DataBinding.h"
#include "Plot.h"

#include "SvgChecks.h"


#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <memory>

namespace {

namespace Chart = Orv::Chart;

enum class Minors { None, TwoAndFive, Every };

class LogAxisTest : public ::testing::Test {
protected:
    // The chart of y from 1 to 1000 on a logarithmic axis, in an image of the height.
    void draw(int height)
    {
        size = QSize(400, height);
        Chart::DataSet data;
        Chart::DataSeries s;
        // x labels in tenths, so that none reads like a label of the y axis.
        s.x = {QStringLiteral("x"), {}, {0.1f, 0.2f, 0.3f, 0.4f}, {false, false, false, false}};
        s.y = {QStringLiteral("y"), {}, {1, 10, 100, 1000}, {false, false, false, false}};
        data.series.push_back(std::move(s));
        chart = std::make_unique<KelChart2D>(group);
        Chart::setUpChartForData(*chart, data, QStringLiteral("test"));
        PaintedChart::assignAll(*chart, {QStringLiteral("axis.y/axis.y.left/logarithmic=true")});
        EXPECT_TRUE(Chart::bindData(chart->variables, Chart::axisPairsOf(*chart), std::move(data)).isEmpty());
        plot = std::make_unique<Chart::Plot>(*chart, Chart::axisPairsOf(*chart), Chart::TickRoom{size, 100, {}});
    }

    const Chart::PlotAxis& yAxis() const
    {
        const Chart::PlotAxis* axis = plot->axis(QStringLiteral("axis.y.left"));
        EXPECT_TRUE(axis);
        return *axis;
    }

    // Which minor ticks are labelled, or a failure when they follow no rule.
    Minors labelledMinors() const
    {
        const std::vector<Chart::Tick>& minor = yAxis().ticks.minor();
        EXPECT_FALSE(minor.empty());
        bool every = true;
        bool none = true;
        bool twoAndFive = true;
        for (const Chart::Tick& tick : minor) {
            const double mantissa = std::pow(10.0, tick.value - std::floor(tick.value + 1e-9));
            const bool atTwoOrFive = std::abs(mantissa - 2) < 1e-6 || std::abs(mantissa - 5) < 1e-6;
            every = every && tick.labelled;
            none = none && !tick.labelled;
            twoAndFive = twoAndFive && tick.labelled == atTwoOrFive;
        }
        EXPECT_TRUE(every || none || twoAndFive);
        return every ? Minors::Every : none ? Minors::None : Minors::TwoAndFive;
    }

    QStringList svgTexts() const
    {
        return OrvTest::texts(OrvTest::parseSvg(PaintedChart::svg(Chart::ChartPainter(*plot, size), size)));
    }

    QSize size;
    KelModifiedGroup group;
    std::unique_ptr<KelChart2D> chart;
    std::unique_ptr<Chart::Plot> plot;
};

// Taller images label more minor ticks, from none to every one (neighbours 9 and 10 are only 4.6 % of a decade
// apart, so every label needs a very tall axis); a labelled minor tick's label is drawn, an unlabelled one's is
// not.
TEST_F(LogAxisTest, MinorLabelsFollowTheRoom)
{
    std::map<Minors, int> seen;
    Minors before = Minors::None;
    for (const int height : {150, 400, 600, 1600, 4000}) {
        SCOPED_TRACE(height);
        draw(height);
        const Minors minors = labelledMinors();
        EXPECT_GE(static_cast<int>(minors), static_cast<int>(before));
        before = minors;
        seen[minors] = height;
        const QStringList texts = svgTexts();
        for (const Chart::Tick& tick : yAxis().ticks.minor())
            EXPECT_EQ(texts.contains(tick.label), tick.labelled) << tick.label.toStdString();
    }
    EXPECT_EQ(seen.size(), 3u) << seen.count(Minors::None) << seen.count(Minors::TwoAndFive)
                               << seen.count(Minors::Every);
}

} // namespace
