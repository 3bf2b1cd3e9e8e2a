// The chart's actions as a host wires them: their shortcuts, their enabled
// states following the history and the editor's undo stack, and what
// triggering them does to the chart's ranges and the clipboard.
#include "AxisRanges.h"
#include "ChartActions.h"
#include "ChartWidget.h"
#include "DataBinding.h"
#include "PropertyEditCommand.h"
#include "PropertyEditor.h"
#include "SampleChart.h"

#include "KelChartPropertyModel.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>
#include <QUndoStack>

#include "ValueCell.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using Orv::Chart::ChartActions;

class ChartActionsTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        chart = Orv::Chart::SampleChart::build(group);
        Orv::Chart::bindData(chart->variables, Orv::Chart::axisPairsOf(*chart), Orv::Chart::SampleChart::data());
        model = std::make_unique<KelChartPropertyModel>(chart.get());
        view = std::make_unique<Orv::Chart::ChartWidget>();
        view->setChart(chart.get(), Orv::Chart::axisPairsOf(*chart));
        editor = std::make_unique<Orv::Chart::PropertyEditor>();
        editor->setModel(model.get());
        editor->attach(view.get());
        actions = std::make_unique<ChartActions>(view.get(), editor.get());
        view->resize(800, 600);
        view->show();
        QCoreApplication::processEvents();
        ASSERT_NE(view->frames(), nullptr);
    }
    // The x range written into the bottom axis.
    std::pair<double, double> xRange() const
    {
        const Orv::Chart::ChartFrames& frames = *view->frames();
        const auto spans = Orv::Chart::AxisRanges(frames.pipeline(), frames.pairs(), frames.layout()).spans();
        return {spans.front().axis->min.get(), spans.front().axis->max.get()};
    }
    QPoint inPlot(double across, double down) const
    {
        const QRectF plot = view->frames()->layout().plot();
        return (plot.topLeft() + QPointF(plot.width() * across, plot.height() * down)).toPoint();
    }

    // Destroyed in reverse: the actions, the editor, the widget, then the chart.
    KelModifiedGroup group;
    std::unique_ptr<KelChart2D> chart;
    std::unique_ptr<KelChartPropertyModel> model;
    std::unique_ptr<Orv::Chart::ChartWidget> view;
    std::unique_ptr<Orv::Chart::PropertyEditor> editor;
    std::unique_ptr<ChartActions> actions;
};

TEST_F(ChartActionsTest, EveryActionHasAShortcutOfItsOwn)
{
    QSet<QString> seen;
    for (QAction* action : actions->viewActions() + actions->editActions()) {
        EXPECT_FALSE(action->shortcuts().isEmpty()) << action->text().toStdString();
        for (const QKeySequence& key : action->shortcuts()) {
            const QString text = key.toString(QKeySequence::PortableText);
            EXPECT_FALSE(seen.contains(text)) << text.toStdString() << " is taken twice";
            seen.insert(text);
        }
    }
    EXPECT_TRUE(actions->back()->shortcuts().contains(QKeySequence(Qt::ALT | Qt::Key_Left)));
    EXPECT_TRUE(actions->forward()->shortcuts().contains(QKeySequence(Qt::ALT | Qt::Key_Right)));
    EXPECT_EQ(actions->zoomIn()->shortcuts(), QKeySequence::keyBindings(QKeySequence::ZoomIn));
    EXPECT_EQ(actions->undo()->shortcuts(), QKeySequence::keyBindings(QKeySequence::Undo));
    EXPECT_EQ(actions->copyValues()->shortcuts(), QKeySequence::keyBindings(QKeySequence::Copy));
    // Ctrl+C anywhere else in the window stays with the focused field.
    EXPECT_EQ(actions->copyValues()->shortcutContext(), Qt::WidgetWithChildrenShortcut);
}

TEST_F(ChartActionsTest, BackAndForwardWalkTheViewsAndFollowTheHistory)
{
    const auto home = xRange();
    EXPECT_FALSE(actions->back()->isEnabled());
    EXPECT_FALSE(actions->forward()->isEnabled());

    actions->zoomIn()->trigger();
    const auto zoomed = xRange();
    EXPECT_LT(zoomed.second - zoomed.first, home.second - home.first);
    EXPECT_TRUE(actions->back()->isEnabled());

    actions->back()->trigger();
    EXPECT_EQ(xRange(), home);
    EXPECT_FALSE(actions->back()->isEnabled());
    EXPECT_TRUE(actions->forward()->isEnabled());

    actions->forward()->trigger();
    EXPECT_EQ(xRange(), zoomed);
    actions->zoomOut()->trigger();
    actions->zoomOut()->trigger();
    EXPECT_GT(xRange().second - xRange().first, home.second - home.first);

    actions->home()->trigger();
    EXPECT_EQ(xRange(), home);
    EXPECT_FALSE(actions->forward()->isEnabled());
}

TEST_F(ChartActionsTest, WithoutAChartOnlyUndoAndRedoMayBeEnabled)
{
    view->setChart(nullptr, {});
    for (QAction* action : actions->viewActions() + actions->editActions()) {
        const bool undoOrRedo = action == actions->undo() || action == actions->redo();
        EXPECT_TRUE(undoOrRedo || !action->isEnabled()) << action->text().toStdString();
    }
}

TEST_F(ChartActionsTest, CopyValuesCopiesThePointCursorsValues)
{
    EXPECT_FALSE(actions->copyValues()->isEnabled()) << "nothing under the cursor to copy";
    view->setPointCursor(0, 3);
    ASSERT_TRUE(actions->copyValues()->isEnabled());
    actions->copyValues()->trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), view->pointCursorText());
}

TEST_F(ChartActionsTest, ARightClickOpensTheMenuWhoseCopyTakesTheValuesUnderTheClick)
{
    const QPoint at = inPlot(0.4, 0.5);
    QTest::mouseMove(view.get(), at);
    const QString underClick = view->valuesText();
    ASSERT_FALSE(underClick.isEmpty());
    QTest::mousePress(view.get(), Qt::RightButton, {}, at);
    QTest::mouseRelease(view.get(), Qt::RightButton, {}, at);
    ASSERT_TRUE(actions->contextMenu()->isVisible());

    // The open menu takes the hover away from the chart.
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(view.get(), &leave);
    actions->contextMenu()->hide();
    actions->copyValues()->trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), underClick);
}

TEST_F(ChartActionsTest, ARightDragZoomsWithoutTheMenu)
{
    const auto before = xRange();
    QTest::mousePress(view.get(), Qt::RightButton, {}, inPlot(0.2, 0.2));
    QTest::mouseMove(view.get(), inPlot(0.5, 0.6));
    QTest::mouseRelease(view.get(), Qt::RightButton, {}, inPlot(0.5, 0.6));
    EXPECT_FALSE(actions->contextMenu()->isVisible());
    EXPECT_NE(xRange(), before);
}

TEST_F(ChartActionsTest, UndoAndRedoFollowTheEditorsStack)
{
    EXPECT_FALSE(actions->undo()->isEnabled());
    const QModelIndex title = valueCell(*model, QStringLiteral("title"));
    const QString before = title.data().toString();
    ASSERT_TRUE(model->setData(title, QStringLiteral("Walks")));
    editor->undoStack()->push(
        new Orv::Chart::PropertyEditCommand(model.get(), QStringLiteral("title"), before, QStringLiteral("Walks")));
    ASSERT_TRUE(actions->undo()->isEnabled());

    actions->undo()->trigger();
    EXPECT_EQ(valueCell(*model, QStringLiteral("title")).data().toString(), before);
    EXPECT_FALSE(actions->undo()->isEnabled());
    ASSERT_TRUE(actions->redo()->isEnabled());
    actions->redo()->trigger();
    EXPECT_EQ(valueCell(*model, QStringLiteral("title")).data().toString(), QStringLiteral("Walks"));
}

TEST_F(ChartActionsTest, TheImageIsWrittenAsDrawnOrTheFaultNamesTheFile)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("chart.png"));
    ASSERT_TRUE(actions->writeImage(path));
    EXPECT_EQ(QImage(path).size(), view->size());
    QString error;
    EXPECT_FALSE(actions->writeImage(folder.filePath(QStringLiteral("no/such/folder/chart.png")), &error));
    EXPECT_TRUE(error.contains(QStringLiteral("chart.png"))) << error.toStdString();
}

TEST(ChartActionsWithoutEditor, HaveNoUndo)
{
    Orv::Chart::ChartWidget view;
    const ChartActions actions(&view);
    EXPECT_EQ(actions.undo(), nullptr);
    EXPECT_EQ(actions.editActions(), QList<QAction*>({actions.copyValues(), actions.copyImage()}));
}

} // namespace
