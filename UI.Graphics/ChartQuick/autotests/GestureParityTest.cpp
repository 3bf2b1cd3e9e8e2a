// The same mouse events sent to a chart item in a Qt Quick window and to a
// chart widget of the same size leave the same ranges, history and hover.
#include "QuickWindow.h"

#include "ChartWidget.h"
#include "DataBinding.h"
#include "SampleChart.h"
#include "ViewState.h"

#include "KelChartAxisPair.h"
#include "KelChartVariable.h"

#include <QKeyEvent>

#include <functional>
#include <memory>

namespace {

using Orv::Chart::ChartFrames;
using Orv::Chart::ViewState;
using quicktest::sendMouse;
using quicktest::sendWheel;

// A gesture in positions the frames give: sent to `target` (the window or the widget).
struct Gesture {
    const char* name;
    // Whether the gesture leaves other ranges than Home's, so that agreeing means something.
    bool movesRanges;
    std::function<void(QObject* target, const ChartFrames& frames)> send;
};

QPointF plotAt(const ChartFrames& frames, double x, double y)
{
    const QRectF plot = frames.layout().plot();
    return {plot.left() + x * plot.width(), plot.top() + y * plot.height()};
}

void drag(QObject* target, QPointF from, QPointF to, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    sendMouse(target, QEvent::MouseButtonPress, from, button, modifiers);
    for (int step = 1; step <= 5; ++step)
        sendMouse(target, QEvent::MouseMove, from + (to - from) * step / 5.0, button, modifiers);
    sendMouse(target, QEvent::MouseButtonRelease, to, button, modifiers);
}

void sendKeys(QObject* target, std::initializer_list<Qt::Key> keys)
{
    for (const Qt::Key key : keys) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(target, &press);
        QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
        QCoreApplication::sendEvent(target, &release);
    }
}

const Gesture gestures[] = {
    {"WheelInThePlot", true, [](QObject* t, const ChartFrames& f) { sendWheel(t, plotAt(f, 0.3, 0.6), 120); }},
    {"WheelOutThreeNotches", true,
     [](QObject* t, const ChartFrames& f) {
         for (int notch = 0; notch < 3; ++notch)
             sendWheel(t, plotAt(f, 0.7, 0.2), -120);
     }},
    {"WheelOverTheLeftAxis", true,
     [](QObject* t, const ChartFrames& f) {
         const QRectF plot = f.layout().plot();
         sendWheel(t, QPointF(plot.left() - 12, plot.center().y()), 240);
     }},
    {"LeftDragPans", true,
     [](QObject* t, const ChartFrames& f) {
         drag(t, plotAt(f, 0.5, 0.5), plotAt(f, 0.2, 0.7), Qt::LeftButton, Qt::NoModifier);
     }},
    {"ShiftDragZoomsToTheBand", true,
     [](QObject* t, const ChartFrames& f) {
         drag(t, plotAt(f, 0.2, 0.2), plotAt(f, 0.6, 0.7), Qt::LeftButton, Qt::ShiftModifier);
     }},
    {"RightDragZoomsToTheBand", true,
     [](QObject* t, const ChartFrames& f) {
         drag(t, plotAt(f, 0.8, 0.9), plotAt(f, 0.4, 0.3), Qt::RightButton, Qt::NoModifier);
     }},
    {"DoubleClickGoesHome", false,
     [](QObject* t, const ChartFrames& f) {
         sendWheel(t, plotAt(f, 0.5, 0.5), 360);
         const QPointF at = plotAt(f, 0.4, 0.4);
         sendMouse(t, QEvent::MouseButtonPress, at, Qt::LeftButton);
         sendMouse(t, QEvent::MouseButtonRelease, at, Qt::LeftButton);
         // As the platform's events come: Qt 6 sends the second press before the double click.
         if (QT_VERSION >= QT_VERSION_CHECK(6, 0, 0))
             sendMouse(t, QEvent::MouseButtonPress, at, Qt::LeftButton);
         sendMouse(t, QEvent::MouseButtonDblClick, at, Qt::LeftButton);
         sendMouse(t, QEvent::MouseButtonRelease, at, Qt::LeftButton);
     }},
    {"LegendClickHidesASeries", false,
     [](QObject* t, const ChartFrames& f) {
         const QPointF at = f.layout().legendCell(1).center();
         sendMouse(t, QEvent::MouseButtonPress, at, Qt::LeftButton);
         sendMouse(t, QEvent::MouseButtonRelease, at, Qt::LeftButton);
     }},
    {"ArrowKeysPan", true, [](QObject* t, const ChartFrames&) { sendKeys(t, {Qt::Key_Left, Qt::Key_Up, Qt::Key_Up}); }},
    {"ArrowKeysPanBack", true, [](QObject* t, const ChartFrames&) { sendKeys(t, {Qt::Key_Right, Qt::Key_Down}); }},
    {"PlusAndMinusZoom", true,
     [](QObject* t, const ChartFrames&) { sendKeys(t, {Qt::Key_Plus, Qt::Key_Equal, Qt::Key_Minus}); }},
    {"HomeKeyAfterKeys", false,
     [](QObject* t, const ChartFrames&) { sendKeys(t, {Qt::Key_Minus, Qt::Key_Left, Qt::Key_Home}); }},
    {"EscapeEndsABand", false,
     [](QObject* t, const ChartFrames& f) {
         sendMouse(t, QEvent::MouseButtonPress, plotAt(f, 0.2, 0.2), Qt::RightButton);
         sendMouse(t, QEvent::MouseMove, plotAt(f, 0.6, 0.6), Qt::RightButton);
         sendKeys(t, {Qt::Key_Escape});
         sendMouse(t, QEvent::MouseButtonRelease, plotAt(f, 0.6, 0.6), Qt::RightButton);
     }},
    {"HoverAfterAZoom", true,
     [](QObject* t, const ChartFrames& f) {
         sendWheel(t, plotAt(f, 0.5, 0.5), 120);
         sendMouse(t, QEvent::MouseMove, plotAt(f, 0.35, 0.55), Qt::NoButton);
     }},
};

// The sample chart with its data, once per host.
struct SampleData {
    SampleData()
    {
        chart = Orv::Chart::SampleChart::build(group);
        Orv::Chart::bindData(chart->variables, Orv::Chart::axisPairsOf(*chart), Orv::Chart::SampleChart::data());
    }
    KelModifiedGroup group;
    std::unique_ptr<KelChart2D> chart;
};

QStringList enabledSeries(const ChartFrames& frames)
{
    QStringList shown;
    for (const KelChartVariable* variable : frames.layout().legendVariables())
        shown << variable->name() + (variable->enabled.get() ? QStringLiteral(" on") : QStringLiteral(" off"));
    return shown;
}

std::string describe(const ViewState& state)
{
    std::string text;
    for (const ViewState::Axis& axis : state.axes())
        text += axis.place.toStdString() + (axis.autoScale ? " auto " : " fixed ") + std::to_string(axis.min) + ".."
                + std::to_string(axis.max) + "; ";
    return text;
}

class GestureParity : public ::testing::TestWithParam<Gesture> {};

TEST_P(GestureParity, TheItemEndsWhereTheWidgetDoes)
{
    const QSize size(900, 560);
    SampleData forWidget;
    Orv::Chart::ChartWidget widget;
    widget.resize(size);
    widget.setChart(forWidget.chart.get(), Orv::Chart::axisPairsOf(*forWidget.chart));
    widget.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&widget));

    SampleData forItem;
    quicktest::QuickChart quick(size);
    quick.item->setChart(forItem.chart.get(), Orv::Chart::axisPairsOf(*forItem.chart));
    ASSERT_EQ(quick.item->frames()->layout().plot(), widget.frames()->layout().plot());
    quick.item->forceActiveFocus(); // keys go to the window's focus item

    const ViewState home = ViewState::of(widget.frames()->pairs());
    GetParam().send(&widget, *widget.frames());
    GetParam().send(quick.window.get(), *quick.item->frames());

    const ViewState fromWidget = ViewState::of(widget.frames()->pairs());
    const ViewState fromItem = ViewState::of(quick.item->frames()->pairs());
    EXPECT_TRUE(fromItem == fromWidget) << "item:   " << describe(fromItem) << "\nwidget: " << describe(fromWidget);
    EXPECT_EQ(fromWidget != home, GetParam().movesRanges);
    EXPECT_EQ(quick.item->navigator().history().size(), widget.history().size());
    EXPECT_EQ(quick.item->readOut(), widget.readOut());
    EXPECT_EQ(quick.item->hoverLines(), widget.hoverLines());
    EXPECT_EQ(enabledSeries(*quick.item->frames()), enabledSeries(*widget.frames()));
    quick.item->setChart(nullptr, {});
}

INSTANTIATE_TEST_SUITE_P(Gestures, GestureParity, ::testing::ValuesIn(gestures),
                         [](const ::testing::TestParamInfo<Gesture>& info) { return std::string(info.param.name); });

} // namespace
