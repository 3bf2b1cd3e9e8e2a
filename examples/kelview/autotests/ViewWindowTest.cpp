// The viewer's window as a user meets it, without any dialog: when it asks
// before changes are lost, what the status bar and the message bar tell, and
// files that open or do not.
#include "ChartActions.h"
#include "ChartWidget.h"
#include "MessageBar.h"
#include "PropertyEditCommand.h"
#include "PropertyEditor.h"
#include "UnsavedChanges.h"
#include "ViewWindow.h"

#include "KelChartPropertyModel.h"
#include "OrvDiagnostics.h"

#include "TempFolder.h"

#include <QAction>
#include <QTest>
#include <QUndoStack>

#include <gtest/gtest.h>

#include <memory>
#include <ostream>

namespace {

using kelview::SaveAnswer;

class ViewWindowTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        window = std::make_unique<kelview::ViewWindow>(kelview::ChartDocument::open(QString(), QString()));
        window->setAttribute(Qt::WA_QuitOnClose, false);
        window->setSavePrompt([this] {
            ++asked;
            return answer;
        });
        window->resize(1100, 640);
        window->show();
        QCoreApplication::processEvents();
    }

    // The value cell of the row with that path ("title", "axis.y/axis.y.left/max").
    QModelIndex cell(const QString& path, const QModelIndex& parent = {}) const
    {
        const KelChartPropertyModel& model = *window->propertyModel();
        for (int row = 0; row < model.rowCount(parent); ++row) {
            const QModelIndex name = model.index(row, KelChartPropertyModel::NameColumn, parent);
            const QString rowPath = name.data(KelChartPropertyModel::PathRole).toString();
            if (rowPath == path)
                return name.siblingAtColumn(KelChartPropertyModel::ValueColumn);
            if (path.startsWith(rowPath + QLatin1Char('/')))
                return cell(path, name);
        }
        return {};
    }
    // An edit as the editor makes it: written through the model, then recorded for undo.
    void edit(const QString& name, const QString& text)
    {
        const QString before = cell(name).data().toString();
        ASSERT_TRUE(window->propertyModel()->setData(cell(name), text));
        window->editor()->undoStack()->push(
            new Orv::Chart::PropertyEditCommand(window->propertyModel(), name, before, text));
    }

    OrvTest::TempFolder folder;
    std::unique_ptr<kelview::ViewWindow> window;
    SaveAnswer answer = SaveAnswer::Cancel;
    int asked = 0;
};

TEST_F(ViewWindowTest, AZoomIsAChangeToAskAboutAndCancelKeepsTheWindow)
{
    EXPECT_FALSE(window->isModified());
    window->chartActions()->zoomIn()->trigger();
    EXPECT_TRUE(window->isModified());
    EXPECT_TRUE(window->isWindowModified());
    EXPECT_FALSE(window->close());
    EXPECT_EQ(asked, 1);
    answer = SaveAnswer::Discard;
    EXPECT_TRUE(window->close());
}

TEST_F(ViewWindowTest, AnEditIsAChangeUntilItIsUndone)
{
    edit(QStringLiteral("title"), QStringLiteral("Walks"));
    EXPECT_TRUE(window->isModified());
    window->chartActions()->undo()->trigger();
    EXPECT_FALSE(window->isModified());
    EXPECT_FALSE(window->isWindowModified());
}

TEST_F(ViewWindowTest, SavingMakesTheFileTheOneSaveWritesTo)
{
    edit(QStringLiteral("title"), QStringLiteral("Walks"));
    window->chartActions()->fitY()->trigger();
    const QString path = folder.path(QStringLiteral("walks.json"));
    ASSERT_TRUE(window->save(path));
    EXPECT_FALSE(window->isModified());
    EXPECT_EQ(window->document().chartPath(), path);
    EXPECT_TRUE(window->windowTitle().startsWith(QStringLiteral("walks.json")));
    EXPECT_TRUE(window->close()) << "nothing left to ask about";
    EXPECT_EQ(asked, 0);
}

TEST_F(ViewWindowTest, AGoodEditClearsTheRefusalFromTheStatusBar)
{
    ASSERT_FALSE(
        window->propertyModel()->setData(cell(QStringLiteral("axis.y/axis.y.left/max")), QStringLiteral("lots")));
    EXPECT_FALSE(window->statusMessage().isEmpty());
    EXPECT_EQ(window->statusMessage(), window->message());
    ASSERT_TRUE(window->propertyModel()->setData(cell(QStringLiteral("title")), QStringLiteral("Walks")));
    EXPECT_EQ(window->statusMessage(), QString());
}

TEST_F(ViewWindowTest, TheHoverShowsInTheStatusBar)
{
    Orv::Chart::ChartWidget* chart = window->chartView();
    const QPoint middle = chart->frames()->layout().plot().center().toPoint();
    QTest::mouseMove(chart, middle);
    ASSERT_FALSE(chart->readOut().isEmpty());
    EXPECT_TRUE(window->readOut().startsWith(chart->readOut())) << window->readOut().toStdString();
}

TEST_F(ViewWindowTest, AFileThatDoesNotOpenLeavesTheChartAndSaysWhy)
{
    const QString path = folder.write(QStringLiteral("broken.json"), "{");
    EXPECT_FALSE(window->openFile(path));
    EXPECT_NE(window->chartView()->frames(), nullptr);
    ASSERT_TRUE(window->messageBar()->isVisible());
    EXPECT_EQ(window->messageBar()->level(), kelview::MessageBar::Level::Fault);
    EXPECT_TRUE(window->messageBar()->lines().join(QString()).contains(QStringLiteral("broken.json")));
}

TEST_F(ViewWindowTest, ADataFileOpensInPlaceOfTheChartAndSaveAsksForAChartFile)
{
    const QString path = folder.write(QStringLiteral("run.tsv"), "t\tspeed\n1\t2\n2\t3\n3\t5\n");
    window->chartActions()->zoomIn()->trigger();
    ASSERT_TRUE(window->openFile(path));
    EXPECT_FALSE(window->isModified()) << "a file just opened has nothing to save";
    EXPECT_EQ(window->document().dataPath(), path);
    EXPECT_TRUE(window->document().chartPath().isEmpty());
    EXPECT_TRUE(window->windowTitle().startsWith(QStringLiteral("run.tsv")));
    EXPECT_NE(window->chartView()->frames(), nullptr);
}

TEST_F(ViewWindowTest, TheLibrarysWarningsReachTheMessageBar)
{
    orvdebug::warning("the axis has no unit");
    orvdebug::warning("the axis has no unit");
    QCoreApplication::processEvents();
    EXPECT_EQ(window->messageBar()->lines(), QStringList(QStringLiteral("the axis has no unit")));
    EXPECT_TRUE(window->messageBar()->isVisible());
}

TEST_F(ViewWindowTest, ALocaleFromTheCommandLineJoinsTheMenuChecked)
{
    window->setChartLocale(QLocale(QStringLiteral("it_IT")));
    EXPECT_EQ(window->chartView()->locale().name(), QStringLiteral("it_IT"));
    int checked = 0;
    for (const QAction* action : window->findChildren<QAction*>()) {
        if (action->isChecked() && !action->data().toString().isEmpty()) {
            ++checked;
            EXPECT_EQ(action->data().toString(), QStringLiteral("it_IT"));
        }
    }
    EXPECT_EQ(checked, 1);
}

struct Decision {
    bool modified;
    SaveAnswer answer;
    bool saves;
    bool mayGo;
    int asks;
    int saveCalls;
};

void PrintTo(const Decision& d, std::ostream* out)
{
    static const char* const answers[] = {"Save", "Discard", "Cancel"};
    *out << (d.modified ? "modified, " : "unmodified, ") << answers[static_cast<int>(d.answer)]
         << (d.saves ? ", save succeeds" : ", save fails");
}

class PromptDecision : public ::testing::TestWithParam<Decision> {};

TEST_P(PromptDecision, FollowsTheAnswerAndTheSave)
{
    const Decision& d = GetParam();
    int asks = 0, saves = 0;
    const bool mayGo = kelview::mayDiscard(
        d.modified,
        [&] {
            ++asks;
            return d.answer;
        },
        [&] {
            ++saves;
            return d.saves;
        });
    EXPECT_EQ(mayGo, d.mayGo);
    EXPECT_EQ(asks, d.asks);
    EXPECT_EQ(saves, d.saveCalls);
}

INSTANTIATE_TEST_SUITE_P(Answers, PromptDecision,
                         ::testing::Values(Decision{false, SaveAnswer::Cancel, false, true, 0, 0},
                                           Decision{true, SaveAnswer::Cancel, true, false, 1, 0},
                                           Decision{true, SaveAnswer::Discard, false, true, 1, 0},
                                           Decision{true, SaveAnswer::Save, true, true, 1, 1},
                                           // A save that failed or was cancelled keeps the chart.
                                           Decision{true, SaveAnswer::Save, false, false, 1, 1}));

} // namespace
