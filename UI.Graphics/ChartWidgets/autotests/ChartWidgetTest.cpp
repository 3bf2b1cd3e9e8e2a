// Drives the chart widget and the property editor on the offscreen platform
// as a user would: wheel, drags, double click, hover and edits.
#include "AxisRanges.h"
#include "ChartFile.h"
#include "ChartWidget.h"
#include "DataBinding.h"
#include "PropertyEditor.h"
#include "SampleChart.h"

#include "KelChartPropertyModel.h"
#include "KelChartVariable.h"

#include <QApplication>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QWheelEvent>

#include "ValueCell.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <vector>

namespace {

using Model = KelChartPropertyModel;

struct Range {
    double min, max;
};

class ViewTest : public ::testing::Test {
protected:
    // The sample chart in a chart widget beside its property editor, as a host sets them up.
    void SetUp() override
    {
        chart = Orv::Chart::SampleChart::build(group);
        Orv::Chart::bindData(chart->variables, Orv::Chart::axisPairsOf(*chart), Orv::Chart::SampleChart::data());
        model = std::make_unique<Model>(chart.get());
        editor = std::make_unique<Orv::Chart::PropertyEditor>();
        editor->setModel(model.get());
        view = std::make_unique<Orv::Chart::ChartWidget>();
        view->setChart(chart.get(), Orv::Chart::axisPairsOf(*chart));
        editor->attach(view.get());
        view->resize(800, 600);
        view->show();
        QCoreApplication::processEvents();
        ASSERT_NE(view->frames(), nullptr);
    }

    const Orv::Chart::ChartFrames& frames() const { return *view->frames(); }
    QRectF plot() const { return frames().layout().plot(); }
    KelChartAxisContinuous& axis(const QString& name) const
    {
        return dynamic_cast<KelChartAxisContinuous&>(*frames().pairs().find(name));
    }
    // Each continuous axis's span in scale coordinates, as the frame drew it.
    std::vector<Orv::Chart::AxisSpan> spans() const
    {
        return Orv::Chart::AxisRanges(frames().pipeline(), frames().pairs(), frames().layout()).spans();
    }
    // The range written into the axis, in scale coordinates.
    static Range written(const Orv::Chart::AxisSpan& span)
    {
        const double min = span.axis->min.get(), max = span.axis->max.get();
        return span.logarithmic ? Range{std::log10(min), std::log10(max)} : Range{min, max};
    }

    void mouse(QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::KeyboardModifiers modifiers = {})
    {
        const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(button);
        QMouseEvent event(type, at, view->mapToGlobal(at.toPoint()), button, held, modifiers);
        QApplication::sendEvent(view.get(), &event);
    }
    void drag(QPointF from, QPointF to, Qt::MouseButton button)
    {
        mouse(QEvent::MouseButtonPress, from, button);
        mouse(QEvent::MouseMove, (from + to) / 2, button);
        mouse(QEvent::MouseMove, to, button);
        mouse(QEvent::MouseButtonRelease, to, button);
    }
    void wheel(QPointF at, int eighths)
    {
        QWheelEvent event(at, view->mapToGlobal(at.toPoint()), QPoint(), QPoint(0, eighths), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(view.get(), &event);
    }
    // The value cell of the row with that path.
    QModelIndex cell(const QString& path) const { return valueCell(*model, path); }

    KelModifiedGroup group;
    std::unique_ptr<KelChart2D> chart;
    std::unique_ptr<Model> model;
    // The editor, attached to the widget, goes first.
    std::unique_ptr<Orv::Chart::ChartWidget> view;
    std::unique_ptr<Orv::Chart::PropertyEditor> editor;
};

void expectNear(double actual, double expected, double width, const char* what)
{
    EXPECT_NEAR(actual, expected, 1e-9 * std::abs(width)) << what;
}

TEST_F(ViewTest, ARubberBandZoomsToItsRectangleAndADoubleClickGoesHome)
{
    const Orv::Chart::ViewState home = Orv::Chart::ViewState::of(frames().pairs());
    const QPointF a = plot().topLeft() + QPointF(50, 30);
    const QPointF b = a + QPointF(200, 100);
    for (const auto& start :
         std::vector<std::function<void()>>{[&] { drag(b, a, Qt::RightButton); },
                                            [&] {
                                                mouse(QEvent::MouseButtonPress, a, Qt::LeftButton, Qt::ShiftModifier);
                                                mouse(QEvent::MouseMove, b, Qt::LeftButton, Qt::ShiftModifier);
                                                mouse(QEvent::MouseButtonRelease, b, Qt::LeftButton, Qt::ShiftModifier);
                                            }}) {
        const auto before = spans();
        start();
        for (const Orv::Chart::AxisSpan& span : before) {
            const Range now = written(span);
            const double lo = std::min(span.valueAt(a), span.valueAt(b));
            const double hi = std::max(span.valueAt(a), span.valueAt(b));
            expectNear(now.min, lo, hi - lo, "band's low end");
            expectNear(now.max, hi, hi - lo, "band's high end");
        }
        mouse(QEvent::MouseButtonDblClick, a, Qt::LeftButton);
        EXPECT_TRUE(Orv::Chart::ViewState::of(frames().pairs()) == home);
    }
    // A click is no band.
    drag(a, a + QPointF(2, 2), Qt::RightButton);
    EXPECT_TRUE(Orv::Chart::ViewState::of(frames().pairs()) == home);
}

TEST_F(ViewTest, ALogarithmicAxisZoomsInLogSpaceAndGetsRealValues)
{
    ASSERT_TRUE(model->setData(cell(QStringLiteral("axis.y/axis.y.right/logarithmic")), QStringLiteral("true")));
    const auto before = spans();
    const auto right = std::find_if(before.begin(), before.end(), [](const Orv::Chart::AxisSpan& span) {
        return span.axis->name() == QStringLiteral("axis.y.right");
    });
    ASSERT_NE(right, before.end());
    ASSERT_TRUE(right->logarithmic);
    wheel(plot().center(), 240);
    const double min = right->axis->min.get(), max = right->axis->max.get();
    EXPECT_GT(min, 0);
    expectNear(std::log10(max) - std::log10(min), 0.64 * (right->max - right->min), 1, "two notches in log10");
}

TEST_F(ViewTest, HoverListsTheNearestPointOfEachSeriesWithItsUnits)
{
    mouse(QEvent::MouseMove, plot().center(), Qt::NoButton);
    const QStringList lines = view->hoverLines();
    ASSERT_FALSE(lines.isEmpty());
    EXPECT_TRUE(lines.filter(QStringLiteral("degC")).size() >= 1) << lines.join('\n').toStdString();
    EXPECT_TRUE(lines.filter(QStringLiteral("kPa")).size() == 1) << lines.join('\n').toStdString();
    mouse(QEvent::MouseMove, QPointF(2, 2), Qt::NoButton);
    EXPECT_TRUE(view->hoverLines().isEmpty());
}

TEST_F(ViewTest, ABadEditChangesNeitherThePropertyNorTheFrame)
{
    ASSERT_TRUE(model->setData(cell(QStringLiteral("axis.y/axis.y.left/max")), QStringLiteral("60")));
    const Orv::Chart::Plot* frame = &frames().pipeline();
    EXPECT_FALSE(model->setData(cell(QStringLiteral("axis.y/axis.y.left/max")), QStringLiteral("lots")));
    EXPECT_FALSE(model->setData(cell(QStringLiteral("variable/T1/style/style")), QStringLiteral("wiggly")));
    EXPECT_EQ(axis(QStringLiteral("axis.y.left")).max.get(), 60);
    EXPECT_EQ(&frames().pipeline(), frame) << "no new frame";
    EXPECT_FALSE(editor->message().isEmpty());
}

TEST_F(ViewTest, TheRowsFollowVariablesAddedAndRemoved)
{
    const QModelIndex variables = cell(QStringLiteral("variable")).siblingAtColumn(Model::NameColumn);
    ASSERT_TRUE(variables.isValid());
    const int rows = model->rowCount(variables);
    KelProperties& added = chart->variables.child(QStringLiteral("extra"), KelChartVariable::typeString);
    editor->refresh();
    view->reload();
    ASSERT_EQ(model->rowCount(variables), rows + 1);
    EXPECT_EQ(model->index(rows, Model::NameColumn, variables).data().toString(), QStringLiteral("extra"));
    chart->variables.erase(&added);
    editor->refresh();
    view->reload();
    EXPECT_EQ(model->rowCount(variables), rows);
    EXPECT_FALSE(cell(QStringLiteral("variable/extra")).isValid());
}

// Copies of the caches share their arrays, which keeps them from being freed
// and their memory from being taken by new caches.
std::vector<KelChartVariableCache> cachesOf(const Orv::Chart::ChartFrames& frames)
{
    std::vector<KelChartVariableCache> caches;
    for (std::size_t i = 0; i < frames.pipeline().cache().size(); ++i)
        caches.push_back(frames.pipeline().cache().cache(i));
    return caches;
}

bool sameCaches(const std::vector<KelChartVariableCache>& a, const std::vector<KelChartVariableCache>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& x, const auto& y) {
        return x.x().data() == y.x().data() && x.y().data() == y.y().data();
    });
}

struct Edit {
    const char* path;
    const char* text;
    bool renewsCaches;
};

class EditTest : public ViewTest, public ::testing::WithParamInterface<Edit> {};

TEST_P(EditTest, OnlyEditsOfDataUnitsOrBindingsRenewTheCaches)
{
    const auto before = cachesOf(frames());
    ASSERT_TRUE(model->setData(cell(QString::fromLatin1(GetParam().path)), QString::fromLatin1(GetParam().text)));
    EXPECT_EQ(!sameCaches(cachesOf(frames()), before), GetParam().renewsCaches);
}

INSTANTIATE_TEST_SUITE_P(
    Edits, EditTest,
    ::testing::Values(Edit{"variable/T1/style/lineColor", "#ff00ff", false},
                      Edit{"variable/T2/style/lineWidth", "5", false}, Edit{"variable/T1/title", "air", false},
                      Edit{"title", "Edited", false}, Edit{"axis.y/axis.y.left/inverted", "true", false},
                      Edit{"axis.y/axis.y.left/gridColor", "#00ff00", false},
                      Edit{"variable/T1/enabled", "false", true}, Edit{"variable/T1/yAxis", "axis.y.right", true},
                      Edit{"variable/T1/order", "7", true},
                      Edit{"variable/T1/style/componentSortAxis", "0", true},
                      Edit{"axis.y/axis.y.right/logarithmic", "true", true},
                      Edit{"axis.y/axis.y.left/unitLabel", "K", true}));

TEST_F(ViewTest, ANewColourShowsOverTheKeptCaches)
{
    const auto magenta = [this] {
        const QImage image = view->grab().toImage();
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                count += image.pixelColor(x, y) == QColor(Qt::magenta) ? 1 : 0;
        return count;
    };
    ASSERT_EQ(magenta(), 0);
    ASSERT_TRUE(model->setData(cell(QStringLiteral("variable/T1/style/lineColor")), QStringLiteral("#ff00ff")));
    EXPECT_GT(magenta(), 50) << "the air temperature's line";
}

// New data come in without any property changing: the caches must follow them.
TEST_F(ViewTest, NewDataOfTheSameSizeRenewTheCaches)
{
    const auto before = cachesOf(frames());
    view->reload();
    EXPECT_TRUE(sameCaches(cachesOf(frames()), before)) << "nothing changed";
    Orv::Chart::DataSet data = Orv::Chart::SampleChart::data();
    data.series[1].y.values[3] += 1;
    Orv::Chart::bindData(chart->variables, Orv::Chart::axisPairsOf(*chart), data);
    view->reload();
    EXPECT_FALSE(sameCaches(cachesOf(frames()), before));
}

TEST_F(ViewTest, EditsSurviveASaveAndALoad)
{
    ASSERT_TRUE(model->setData(cell(QStringLiteral("title")), QStringLiteral("Edited")));
    wheel(plot().center(), 120);
    const double max = axis(QStringLiteral("axis.y.left")).max.get();
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("chart.json"));
    ASSERT_TRUE(Orv::Chart::ChartFile::save(*chart, path));
    KelModifiedGroup again;
    const std::unique_ptr<KelProperties> reopened = Orv::Chart::ChartFile::load(path, again);
    ASSERT_TRUE(reopened);
    const auto& loaded = dynamic_cast<KelChart2D&>(*reopened);
    EXPECT_EQ(loaded.title.get(), QStringLiteral("Edited"));
    const auto& left = dynamic_cast<KelChartAxisContinuous&>(*loaded.axisY.find(QStringLiteral("axis.y.left")));
    EXPECT_EQ(left.max.get(), max);
    EXPECT_FALSE(left.autoScale.get());
}

} // namespace
