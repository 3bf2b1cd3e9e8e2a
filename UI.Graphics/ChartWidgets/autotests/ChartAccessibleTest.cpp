// The chart widget as assistive technology sees it, through QAccessible
// alone: the tree a screen reader walks, and the events it hears.
#include "ChartAccessible.h"
#include "ChartAccessible_p.h"
#include "ChartSetUp.h"
#include "ChartWidget.h"
#include "DataBinding.h"
#include "HoverText.h"
#include "SampleChart.h"

#include "KelChartAxisContinuous.h"

#include <QAccessible>
#include <QApplication>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

namespace {

using Orv::Chart::ChartWidget;

struct Heard {
    QAccessible::Event type;
    QAccessibleInterface* target;
};

std::vector<Heard> heard;

void hear(QAccessibleEvent* event)
{
    heard.push_back({event->type(), event->accessibleInterface()});
}

QString nameOf(QAccessibleInterface* part)
{
    return part->text(QAccessible::Name);
}

class ChartAccessibleTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        chart = Orv::Chart::SampleChart::build(group);
        Orv::Chart::bindData(chart->variables, Orv::Chart::axisPairsOf(*chart), Orv::Chart::SampleChart::data());
        view->setChart(chart.get(), Orv::Chart::axisPairsOf(*chart));
        view->setLocale(QLocale::c());
        view->resize(800, 600);
        view->show();
        QCoreApplication::processEvents();
        root = QAccessible::queryAccessibleInterface(view.get());
        ASSERT_NE(root, nullptr);
        heard.clear();
        Orv::Chart::setChartAnnouncer(hear);
    }

    void TearDown() override { Orv::Chart::setChartAnnouncer(nullptr); }

    QAccessibleInterface* last() const { return root->child(root->childCount() - 1); }
    QPoint global(QPointF pixel) const { return view->mapToGlobal(pixel.toPoint()); }

    KelModifiedGroup group;
    std::unique_ptr<KelChart2D> chart;
    std::unique_ptr<ChartWidget> view = std::make_unique<ChartWidget>();
    QAccessibleInterface* root = nullptr;
};

// Every axis and series in drawing order, each read in its own units: the
// shade sensor's degF come out in degC, the pressure's NaN reading is
// counted rather than taken for a value, categories are named.
TEST_F(ChartAccessibleTest, TheTreeNamesTheChartItsAxesAndItsSeries)
{
    EXPECT_EQ(root->role(), QAccessible::Chart);
    EXPECT_EQ(root->text(QAccessible::Name), QStringLiteral("Weather station, one day"));
    EXPECT_EQ(root->text(QAccessible::Description), QStringLiteral("4 axes, 4 series"));
    const std::vector<std::pair<const char*, const char*>> expected = {
        {"time axis, bottom", "continuous, from 0 to 24 h"},
        {"period axis, top", "categories, night, morning, afternoon, evening"},
        {"temperature axis, left", "continuous, from -8 to 10 degC"},
        {"pressure axis, right", "continuous, from 101 to 101.9 kPa"},
        {"mean temperature", "4 points, from -3.3 to 8.3 degC, last 3.3 degC"},
        {"air temperature", "25 points, from -4 to 9 degC, last -2.1 degC"},
        {"shade temperature (degF)", "25 points, from -5.6 to 7.8 degC, last -4 degC"},
        {"air pressure", "23 points, 1 without a reading, from 101.08 to 101.8 kPa, last 101.56 kPa"},
    };
    ASSERT_EQ(root->childCount(), static_cast<int>(expected.size()));
    for (int i = 0; i < root->childCount(); ++i) {
        QAccessibleInterface* part = root->child(i);
        EXPECT_EQ(nameOf(part), QLatin1String(expected[i].first));
        EXPECT_EQ(part->text(QAccessible::Description), QLatin1String(expected[i].second));
        EXPECT_EQ(part->parent(), root);
        EXPECT_EQ(root->indexOfChild(part), i);
        EXPECT_EQ(root->child(i), part) << "one interface per part";
    }
}

TEST_F(ChartAccessibleTest, PartsLieWhereTheyAreDrawn)
{
    const Orv::Chart::ChartLayout& layout = view->frames()->layout();
    const QRectF band = layout.axisBand(Orv::Chart::AxisSide::Bottom);
    EXPECT_EQ(root->child(0)->rect(), band.translated(global({0, 0})).toAlignedRect());
    EXPECT_EQ(root->childAt(global(band.center()).x(), global(band.center()).y()), root->child(0));
    // Series in the legend are its cells.
    EXPECT_EQ(root->child(5)->rect(), layout.legendCell(1).translated(global({0, 0})).toAlignedRect());

    // The point: a marker's box around its pixel.
    view->setPointCursor(1, 12);
    const QPoint pixel = global(Orv::Chart::HoverText::pointPixel(*view->frames(), 1, 12));
    EXPECT_TRUE(last()->rect().contains(pixel));
    EXPECT_LE(last()->rect().width(), 10);
    EXPECT_EQ(root->childAt(pixel.x(), pixel.y()), last());
}

TEST_F(ChartAccessibleTest, ThePointCursorIsAFocusedChildAnnouncedOnEveryMove)
{
    QApplication::setActiveWindow(view.get());
    view->setFocus();
    ASSERT_TRUE(view->hasFocus());

    view->setPointCursor(1, 3);
    ASSERT_EQ(root->childCount(), 9);
    QAccessibleInterface* point = last();
    EXPECT_EQ(nameOf(point), view->pointCursorText());
    EXPECT_EQ(point->text(QAccessible::Description), QStringLiteral("point 4 of 25"));
    EXPECT_TRUE(point->state().focused);
    EXPECT_EQ(root->focusChild(), point);
    ASSERT_EQ(heard.size(), 2u);
    EXPECT_EQ(heard[0].type, QAccessible::ObjectCreated);
    EXPECT_EQ(heard[0].target, point);
    EXPECT_EQ(heard[1].type, QAccessible::Focus);
    EXPECT_EQ(heard[1].target, point);

    // Along the series: the same focused point with a new name.
    heard.clear();
    view->setPointCursor(1, 4);
    ASSERT_EQ(heard.size(), 1u);
    EXPECT_EQ(heard[0].type, QAccessible::NameChanged);
    EXPECT_EQ(heard[0].target, point);
    EXPECT_TRUE(nameOf(point).contains(QStringLiteral("x = 4 h"))) << nameOf(point).toStdString();

    heard.clear();
    view->setPointCursor(1, 4);
    EXPECT_TRUE(heard.empty()) << "no move, nothing to say";

    // Without a cursor the focus falls back to the chart; the point is gone.
    view->setPointCursor(Orv::Chart::PointCursor::npos, 0);
    EXPECT_EQ(root->childCount(), 8);
    EXPECT_FALSE(point->isValid());
    EXPECT_TRUE(nameOf(point).isEmpty());
    EXPECT_EQ(heard.back().type, QAccessible::Focus);
    EXPECT_EQ(heard.back().target, root);
}

TEST_F(ChartAccessibleTest, NewRangesAreAnnouncedOnTheAxes)
{
    const QString before = root->child(0)->text(QAccessible::Description);
    view->zoomIn();
    int described = 0;
    for (const Heard& event : heard)
        described += event.type == QAccessible::DescriptionChanged && nameOf(event.target).contains(" axis, ");
    EXPECT_EQ(described, 4);
    EXPECT_NE(root->child(0)->text(QAccessible::Description), before);
}

// Parts look the chart up through the widget: whatever replaced it, or the
// widget's end, an interface held by a reader never reaches a chart that is gone.
TEST_F(ChartAccessibleTest, ReplacingTheChartLeavesNoPartDangling)
{
    QAccessibleInterface* pressure = root->child(7);
    const QAccessible::Id pressureId = QAccessible::uniqueId(pressure);
    view->setChart(nullptr, Orv::Chart::axisPairsOf(*chart));
    chart.reset();
    EXPECT_EQ(root->childCount(), 0);
    EXPECT_EQ(root->text(QAccessible::Description), QStringLiteral("no axes to draw"));
    EXPECT_FALSE(pressure->isValid());
    EXPECT_TRUE(nameOf(pressure).isEmpty());
    EXPECT_TRUE(pressure->rect().isEmpty());
    ASSERT_FALSE(heard.empty());
    EXPECT_EQ(heard.front().type, QAccessible::ObjectReorder);

    view.reset();
    EXPECT_EQ(QAccessible::accessibleInterface(pressureId), nullptr);
}

// A time axis reads as dates in its zone, a logarithmic one in real values.
TEST_F(ChartAccessibleTest, TimeAndLogarithmicAxesReadInRealUnits)
{
    Orv::Chart::DataSet data;
    Orv::Chart::DataSeries series;
    series.x = {QStringLiteral("x"), QString(), {}, {}};
    series.y = {QStringLiteral("y"), QStringLiteral("Pa"), {}, {}};
    constexpr std::int64_t march4th2012 = 1330819200LL * 1000000;
    for (int hour = 0; hour < 3; ++hour) {
        series.x.append(0, false);
        series.y.append(static_cast<float>(std::pow(10.0, hour * 1.5)), false);
        data.xTimes.push_back({march4th2012 + hour * 3600LL * 1000000, true});
    }
    data.timeX = true;
    data.series.push_back(series);
    auto timed = std::make_unique<KelChart2D>(group);
    Orv::Chart::setUpChartForData(*timed, data, QStringLiteral("data"));
    Orv::Chart::bindData(timed->variables, Orv::Chart::axisPairsOf(*timed), data);
    auto& y =
        dynamic_cast<KelChartAxisContinuous&>(*Orv::Chart::axisPairsOf(*timed).find(QStringLiteral("axis.y.left")));
    y.logarithmic.set(true);
    y.autoScale.set(false);
    y.min.set(1.0);
    y.max.set(1000.0);
    view->setChart(timed.get(), Orv::Chart::axisPairsOf(*timed));
    chart = std::move(timed);

    const QString time = root->child(0)->text(QAccessible::Description);
    // Two hours and a margin: to the minute.
    const QRegularExpression dates(
        QStringLiteral("^time, from 2012-03-0[34] \\d\\d:\\d\\d UTC to 2012-03-04 0\\d:\\d\\d UTC$"));
    EXPECT_TRUE(dates.match(time).hasMatch()) << qPrintable(time);
    EXPECT_EQ(root->child(1)->text(QAccessible::Description), QStringLiteral("logarithmic, from 1 to 1000 Pa"));
    EXPECT_EQ(root->child(2)->text(QAccessible::Description),
              QStringLiteral("3 points, from 1 to 1000 Pa, last 1000 Pa"));
}

} // namespace
