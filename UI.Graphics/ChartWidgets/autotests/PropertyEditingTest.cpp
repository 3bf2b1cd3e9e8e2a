// Edits as the property editor's cells make them: the editor each kind of
// value gets, what it shows, what it writes back, the colour pickers, the
// reasons given for refused or unreadable text, the filter and undo.
#include "ChartWidget.h"
#include "ColourEditor.h"
#include "ColourListEditor.h"
#include "DataBinding.h"
#include "PropertyDelegate.h"
#include "PropertyEditor.h"
#include "SampleChart.h"

#include "KelChartAxisContinuous.h"
#include "KelChartPropertyModel.h"
#include "KelChartVariable.h"

#include <QAbstractProxyModel>
#include <QApplication>
#include <QColorDialog>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QStyleOptionViewItem>
#include <QTest>
#include <QToolButton>
#include <QTreeView>
#include <QUndoStack>

#include "ValueCell.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

using Model = KelChartPropertyModel;
using Orv::Chart::ColourEditor;
using Orv::Chart::ColourListEditor;

// The line a user types into: the editor itself or the line inside a colour editor.
QLineEdit* lineOf(QWidget* editor)
{
    if (auto* line = qobject_cast<QLineEdit*>(editor))
        return line;
    return editor ? editor->findChild<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly) : nullptr;
}

// The text an editor shows, whichever kind it is.
QString shownText(QWidget* editor)
{
    if (auto* box = qobject_cast<QComboBox*>(editor))
        return box->currentText();
    if (QLineEdit* line = lineOf(editor))
        return line->text();
    return QStringLiteral("<no editor>");
}

// Types into an editor as a user would; a combo box takes one of its words.
void typeInto(QWidget* editor, const QString& text)
{
    if (auto* box = qobject_cast<QComboBox*>(editor))
        box->setCurrentIndex(box->findText(text));
    else if (QLineEdit* line = lineOf(editor))
        line->setText(text);
}

// The colour dialog an editor opened; it does not block, so a test answers it directly.
QColorDialog* openDialog(QWidget* editor)
{
    for (QColorDialog* dialog : editor->findChildren<QColorDialog*>())
        if (dialog->isVisible())
            return dialog;
    return nullptr;
}

class SampleTree : public ::testing::Test {
protected:
    void SetUp() override
    {
        chart = Orv::Chart::SampleChart::build(group);
        model = std::make_unique<Model>(chart.get());
        editor = std::make_unique<Orv::Chart::PropertyEditor>();
        editor->setModel(model.get());
        delegate = dynamic_cast<Orv::Chart::PropertyDelegate*>(editor->view()->itemDelegate());
        ASSERT_NE(delegate, nullptr);
    }

    // An editor of the delegate on the model's own cell, showing the value.
    QWidget* openEditor(const QString& path)
    {
        QWidget* edit = delegate->createEditor(&parent, QStyleOptionViewItem(), cell(path));
        if (edit)
            delegate->setEditorData(edit, cell(path));
        return edit;
    }
    // Gives the editor's text to the model, as the view does when the user presses Enter.
    void commit(QWidget* edit, const QString& path) { delegate->setModelData(edit, model.get(), cell(path)); }

    // The value cell of the row with that path.
    QModelIndex cell(const QString& path) const { return valueCell(*model, path); }
    KelChartAxisContinuous& leftAxis() const
    {
        return dynamic_cast<KelChartAxisContinuous&>(*chart->axisY.find(QStringLiteral("axis.y.left")));
    }

    KelModifiedGroup group;
    std::unique_ptr<KelChart2D> chart;
    std::unique_ptr<Model> model;
    std::unique_ptr<Orv::Chart::PropertyEditor> editor;
    Orv::Chart::PropertyDelegate* delegate = nullptr;
    QWidget parent;
};

struct EditCase {
    const char* path;
    Model::Kind kind;
    const char* typed;
};

class DelegateEdit : public SampleTree, public ::testing::WithParamInterface<EditCase> {};

TEST_P(DelegateEdit, TheEditorShowsTheValueAndWritesTheTypedTextIntoTheProperty)
{
    const QModelIndex index = cell(QString::fromLatin1(GetParam().path));
    ASSERT_TRUE(index.isValid());
    ASSERT_EQ(index.data(Model::KindRole).toInt(), GetParam().kind);
    const std::unique_ptr<QWidget> edit(delegate->createEditor(&parent, QStyleOptionViewItem(), index));
    ASSERT_NE(edit, nullptr);
    EXPECT_EQ(GetParam().kind == Model::Colour, dynamic_cast<ColourEditor*>(edit.get()) != nullptr);
    EXPECT_EQ(GetParam().kind == Model::Choice, qobject_cast<QComboBox*>(edit.get()) != nullptr);

    delegate->setEditorData(edit.get(), index);
    EXPECT_EQ(shownText(edit.get()), index.data(Qt::EditRole).toString());

    const QSignalSpy edited(editor.get(), &Orv::Chart::PropertyEditor::edited);
    const QString typed = QString::fromLatin1(GetParam().typed);
    typeInto(edit.get(), typed);
    ASSERT_EQ(shownText(edit.get()), typed);
    delegate->setModelData(edit.get(), model.get(), index);
    EXPECT_EQ(index.data(Qt::EditRole).toString(), typed);
    EXPECT_GE(edited.count(), 1);
    EXPECT_TRUE(editor->message().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(ByKind, DelegateEdit,
                         ::testing::Values(EditCase{"title", Model::Text, "Renamed"},
                                           EditCase{"variable/T1/order", Model::Integer, "-7"},
                                           EditCase{"axis.y/axis.y.left/max", Model::Number, "12.5"},
                                           EditCase{"axis.y/axis.y.left/tickColor", Model::Colour, "#ff0000"},
                                           EditCase{"axis.y/axis.y.left/gridColor", Model::Colour, "#80102030"},
                                           EditCase{"variable/T1/style/style", Model::Choice, "bar"}));

// Letters typed into a number field stay there; the field and the line under
// the tree say what a number looks like, until the text reads again.
TEST_F(SampleTree, ANumberFieldKeepsLettersAndSaysWhatItWants)
{
    editor->show();
    for (const char* path : {"variable/T1/order", "axis.y/axis.y.left/max"}) {
        SCOPED_TRACE(path);
        QLineEdit* line = lineOf(openEditor(QString::fromLatin1(path)));
        ASSERT_NE(line, nullptr);
        line->clear();
        QTest::keyClicks(line, QStringLiteral("1x"));
        EXPECT_EQ(line->text(), QStringLiteral("1x"));
        EXPECT_TRUE(line->toolTip().startsWith(QStringLiteral("\"1x\" is not a "))) << line->toolTip().toStdString();
        EXPECT_FALSE(line->styleSheet().isEmpty()) << "a red frame";
        EXPECT_EQ(editor->hint(), line->toolTip());
        EXPECT_TRUE(editor->findChild<QLabel*>(QStringLiteral("hint"))->isVisible());

        QTest::keyClick(line, Qt::Key_Backspace);
        EXPECT_TRUE(line->toolTip().isEmpty());
        EXPECT_TRUE(line->styleSheet().isEmpty());
        EXPECT_TRUE(editor->hint().isEmpty());
    }
}

// Values the chart would quietly ignore and list entries that are no colour
// are refused in plain words, and nothing changes: no value, no undo step.
struct RefusalCase {
    const char* path;
    const char* typed;
    const char* reason;
};

class PlainRefusal : public SampleTree, public ::testing::WithParamInterface<RefusalCase> {};

TEST_P(PlainRefusal, TheEditIsRefusedWithTheReasonAndChangesNothing)
{
    const QString path = QString::fromLatin1(GetParam().path);
    const QString before = cell(path).data().toString();
    const QSignalSpy edited(editor.get(), &Orv::Chart::PropertyEditor::edited);
    QWidget* edit = openEditor(path);
    typeInto(edit, QString::fromLatin1(GetParam().typed));
    const QString reason = QString::fromUtf8(GetParam().reason);
    EXPECT_EQ(lineOf(edit)->toolTip(), reason) << "told while typing";
    commit(edit, path);
    EXPECT_EQ(editor->message(), path + QStringLiteral(": ") + reason);
    EXPECT_EQ(cell(path).data().toString(), before);
    EXPECT_EQ(edited.count(), 0);
    EXPECT_EQ(editor->undoStack()->count(), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Reasons, PlainRefusal,
    ::testing::Values(RefusalCase{"axis.x/axis.x.bottom/min", "25", "min must be below max (now 24)"},
                      RefusalCase{"axis.x/axis.x.bottom/max", "0", "max must be above min (now 0)"},
                      RefusalCase{"variable/T1/style/lineWidth", "-3", "lineWidth must be 0 or more, not -3"},
                      RefusalCase{"variable/T1/style/symbolSize", "7, -1", "symbolSize must be 0 or more, not -1"},
                      RefusalCase{"variable/T1/style/lineColor", "red, blurple",
                                  "\"blurple\" is not a colour: use a name like red or a code like #3060c0"}));

TEST_F(SampleTree, UnchangedTextForeignEditorsAndCheckBoxesWriteNothing)
{
    EXPECT_EQ(openEditor(QStringLiteral("axis.y/axis.y.left/autoScale")), nullptr) << "a check box in the cell";
    const QModelIndex title = cell(QStringLiteral("title"));
    const QSignalSpy changed(model.get(), &QAbstractItemModel::dataChanged);
    const std::unique_ptr<QWidget> edit(delegate->createEditor(&parent, QStyleOptionViewItem(), title));
    delegate->setEditorData(edit.get(), title);
    delegate->setModelData(edit.get(), model.get(), title);
    QWidget foreign;
    delegate->setEditorData(&foreign, title);
    delegate->setModelData(&foreign, model.get(), title);
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(chart->title.get(), QStringLiteral("Weather station, one day"));
    EXPECT_EQ(editor->undoStack()->count(), 0);
}

TEST_F(SampleTree, ARefusedColourLeavesThePropertyAndSaysWhyUntilTheNextGoodEdit)
{
    editor->show();
    const QColor before = leftAxis().tickColor.get();
    const QString path = QStringLiteral("axis.y/axis.y.left/tickColor");
    const QSignalSpy refused(editor.get(), &Orv::Chart::PropertyEditor::refused);
    QWidget* edit = openEditor(path);
    typeInto(edit, QStringLiteral("greenish"));
    commit(edit, path);
    EXPECT_EQ(leftAxis().tickColor.get(), before);
    ASSERT_EQ(refused.count(), 1);
    EXPECT_EQ(editor->message(), refused.at(0).at(0).toString());
    EXPECT_EQ(editor->message(), model->lastError());
    EXPECT_TRUE(editor->findChild<QLabel*>(QStringLiteral("message"))->isVisible());

    // The next editor on the cell starts from the refused text, to be corrected.
    QWidget* again = openEditor(path);
    EXPECT_EQ(shownText(again), QStringLiteral("greenish"));
    // Going back to the value the property has ends the refusal too.
    typeInto(again, before.name());
    commit(again, path);
    EXPECT_TRUE(editor->message().isEmpty());

    typeInto(edit, QStringLiteral("greenish"));
    commit(edit, path);
    ASSERT_FALSE(editor->message().isEmpty());
    typeInto(edit, QStringLiteral("#123456"));
    commit(edit, path);
    EXPECT_EQ(leftAxis().tickColor.get(), QColor(0x12, 0x34, 0x56));
    EXPECT_TRUE(editor->message().isEmpty());
    EXPECT_FALSE(editor->findChild<QLabel*>(QStringLiteral("message"))->isVisible());
    EXPECT_EQ(shownText(openEditor(path)), QStringLiteral("#123456")) << "an accepted edit drops the refused text";
}

// In the tree, Enter on a refused text closes the editor and opens a new one with that text.
TEST_F(SampleTree, TheTreeReopensARefusedFieldWithTheRefusedText)
{
    editor->show();
    QTreeView* view = editor->view();
    const auto* rows = qobject_cast<const QAbstractProxyModel*>(view->model());
    ASSERT_NE(rows, nullptr);
    const QModelIndex maxCell = rows->mapFromSource(cell(QStringLiteral("axis.y/axis.y.left/max")));
    view->edit(maxCell);
    QLineEdit* line = lineOf(view->indexWidget(maxCell));
    ASSERT_NE(line, nullptr);
    line->selectAll();
    QTest::keyClicks(line, QStringLiteral("lots"));
    QTest::keyClick(line, Qt::Key_Return);
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
    EXPECT_EQ(leftAxis().max.get(), 0);
    EXPECT_FALSE(editor->message().isEmpty());
    QLineEdit* reopened = lineOf(view->indexWidget(maxCell));
    ASSERT_NE(reopened, nullptr);
    EXPECT_EQ(reopened->text(), QStringLiteral("lots"));
}

// The colour list editor: one swatch per entry, each opening the colour
// dialog for its entry, buttons that add and remove entries, text still typed.
TEST_F(SampleTree, AColourListIsEditedWithSwatches)
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const QString path = QStringLiteral("variable/T1/style/lineColor");
    auto* list = dynamic_cast<ColourListEditor*>(openEditor(path));
    ASSERT_NE(list, nullptr);
    const QColor first = chart->variables[QStringLiteral("T1")]->style.lineColor.get().front();
    ASSERT_EQ(list->swatches().size(), 1);

    list->addButton()->click();
    ASSERT_EQ(list->swatches().size(), 2);
    list->swatches()[1]->click();
    QColorDialog* dialog = openDialog(list);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->currentColor(), first) << "a new entry repeats the last";
    dialog->setCurrentColor(QColor(0x30, 0x60, 0xc0));
    dialog->accept();
    EXPECT_EQ(list->text(), first.name() + QStringLiteral(", #3060c0"));
    commit(list, path);
    EXPECT_EQ(chart->variables[QStringLiteral("T1")]->style.lineColor.get(),
              (QList<QColor>{first, QColor(0x30, 0x60, 0xc0)}));

    list->removeButton()->click();
    EXPECT_EQ(list->swatches().size(), 1);
    typeInto(list, QStringLiteral("red, blurple"));
    EXPECT_FALSE(list->swatches()[0]->isEnabled()) << "no swatches for a text that does not read";
    typeInto(list, QStringLiteral("red, blue, green"));
    EXPECT_EQ(list->swatches().size(), 3);
}

// The filter keeps the rows that match and the way down to them; edits and
// checks go through it to the model beneath.
TEST_F(SampleTree, TheFilterShowsTheMatchingRowsWithTheirAncestorsAndEditsThroughThem)
{
    EXPECT_EQ(editor->filter()->placeholderText(), QStringLiteral("Filter properties"));
    editor->filter()->setText(QStringLiteral("linewidth"));
    const QAbstractItemModel& rows = *editor->view()->model();
    int matches = 0;
    QModelIndex t1Width;
    std::function<void(const QModelIndex&)> visit = [&](const QModelIndex& parent) {
        for (int row = 0; row < rows.rowCount(parent); ++row) {
            const QModelIndex name = rows.index(row, Model::NameColumn, parent);
            const QString path = name.data(Model::PathRole).toString();
            if (name.data().toString() == QLatin1String("lineWidth")) {
                ++matches;
                if (path == QLatin1String("variable/T1/style/lineWidth"))
                    t1Width = name.siblingAtColumn(Model::ValueColumn);
            } else {
                EXPECT_GT(rows.rowCount(name), 0) << path.toStdString() << " is neither a match nor on the way to one";
            }
            visit(name);
        }
    };
    visit(QModelIndex());
    EXPECT_EQ(matches, static_cast<int>(chart->variables.size()) + 1) << "each series' style and the chart's";
    ASSERT_TRUE(t1Width.isValid());

    const std::unique_ptr<QWidget> edit(delegate->createEditor(&parent, QStyleOptionViewItem(), t1Width));
    delegate->setEditorData(edit.get(), t1Width);
    typeInto(edit.get(), QStringLiteral("-1"));
    EXPECT_FALSE(lineOf(edit.get())->toolTip().isEmpty());
    typeInto(edit.get(), QStringLiteral("4, 1"));
    delegate->setModelData(edit.get(), editor->view()->model(), t1Width);
    EXPECT_EQ(chart->variables[QStringLiteral("T1")]->style.lineWidth.get(), (std::vector<double>{4, 1}));
}

TEST_F(SampleTree, AReplacedModelNoLongerReportsToTheEditor)
{
    KelModifiedGroup otherGroup;
    const std::unique_ptr<KelChart2D> other = Orv::Chart::SampleChart::build(otherGroup);
    Model otherModel(other.get());
    commit(openEditor(QStringLiteral("title")), QStringLiteral("title"));
    editor->showMessage(QStringLiteral("stale"));
    editor->setModel(&otherModel);
    EXPECT_EQ(editor->model(), &otherModel);
    EXPECT_EQ(editor->view()->model()->rowCount(), otherModel.rowCount());
    EXPECT_TRUE(editor->message().isEmpty()) << "a new tree starts without a reason";
    EXPECT_EQ(editor->undoStack()->count(), 0) << "nor with the old tree's edits";

    const QSignalSpy edited(editor.get(), &Orv::Chart::PropertyEditor::edited);
    const QSignalSpy refused(editor.get(), &Orv::Chart::PropertyEditor::refused);
    ASSERT_TRUE(model->setData(cell(QStringLiteral("title")), QStringLiteral("Old tree")));
    ASSERT_FALSE(model->setData(cell(QStringLiteral("axis.y/axis.y.left/max")), QStringLiteral("lots")));
    EXPECT_EQ(edited.count(), 0);
    EXPECT_EQ(refused.count(), 0);
    EXPECT_TRUE(editor->message().isEmpty());

    editor->setModel(nullptr);
    EXPECT_EQ(editor->model(), nullptr);
    EXPECT_EQ(editor->view()->model(), nullptr);
    editor->refresh();
    EXPECT_EQ(edited.count(), 0);
}

TEST_F(SampleTree, ARefreshShowsChangesMadeElsewhereWithoutCallingThemEdits)
{
    const QSignalSpy edited(editor.get(), &Orv::Chart::PropertyEditor::edited);
    chart->title.set(QStringLiteral("Changed outside"));
    editor->refresh();
    EXPECT_EQ(cell(QStringLiteral("title")).data().toString(), QStringLiteral("Changed outside"));
    EXPECT_EQ(edited.count(), 0);
}

// Undo and redo of an edit made in the editor write the old and the new text
// back through the model, and the chart widget draws a frame for each.
TEST_F(SampleTree, UndoAndRedoRestoreTheValueAndTheChartFollows)
{
    Orv::Chart::bindData(chart->variables, Orv::Chart::axisPairsOf(*chart), Orv::Chart::SampleChart::data());
    Orv::Chart::ChartWidget view;
    view.setChart(chart.get(), Orv::Chart::axisPairsOf(*chart));
    editor->attach(&view);
    view.resize(800, 600);
    view.show();
    QCoreApplication::processEvents();
    ASSERT_TRUE(model->setData(cell(QStringLiteral("axis.y/axis.y.left/autoScale")), QStringLiteral("false")));
    ASSERT_TRUE(model->setData(cell(QStringLiteral("axis.y/axis.y.left/min")), QStringLiteral("-40")));
    ASSERT_TRUE(model->setData(cell(QStringLiteral("axis.y/axis.y.left/max")), QStringLiteral("60")));
    const auto drawnMax = [&] { return view.frames()->pipeline().axis(QStringLiteral("axis.y.left"))->max; };
    ASSERT_LT(drawnMax(), 100);

    QWidget* edit = openEditor(QStringLiteral("axis.y/axis.y.left/max"));
    typeInto(edit, QStringLiteral("100"));
    commit(edit, QStringLiteral("axis.y/axis.y.left/max"));
    ASSERT_EQ(editor->undoStack()->count(), 1);
    EXPECT_GE(drawnMax(), 100);

    // The command finds its property again after the model was reset.
    model->setRoot(chart.get());
    const QSignalSpy edited(editor.get(), &Orv::Chart::PropertyEditor::edited);
    editor->undoStack()->undo();
    EXPECT_EQ(leftAxis().max.get(), 60);
    EXPECT_LT(drawnMax(), 100);
    editor->undoStack()->redo();
    EXPECT_EQ(leftAxis().max.get(), 100);
    EXPECT_GE(drawnMax(), 100);
    EXPECT_EQ(edited.count(), 2);
    EXPECT_EQ(editor->undoStack()->count(), 1) << "undo and redo push nothing";
}

// The colour dialog behind the button does not block: it opens on the colour
// in the line, and what it gives comes back as text, with alpha only when not opaque.
struct PickCase {
    QColor chosen;
    bool accepted;
    const char* shown;
};

class ColourPick : public ::testing::TestWithParam<PickCase> {};

TEST_P(ColourPick, TheButtonOpensTheDialogAndShowsThePickedColour)
{
    // A platform's own dialog could not be driven from here.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    ColourEditor colour;
    colour.setText(QStringLiteral("#336699"));
    auto* button = colour.findChild<QToolButton*>();
    ASSERT_NE(button, nullptr);
    button->click();
    QColorDialog* dialog = openDialog(&colour);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->currentColor(), QColor(0x33, 0x66, 0x99));
    dialog->setCurrentColor(GetParam().chosen);
    if (GetParam().accepted)
        dialog->accept();
    else
        dialog->reject();
    EXPECT_EQ(colour.text(), QString::fromLatin1(GetParam().shown));
}

INSTANTIATE_TEST_SUITE_P(Choices, ColourPick,
                         ::testing::Values(PickCase{QColor(255, 0, 0), true, "#ff0000"},
                                           PickCase{QColor(0, 255, 0, 128), true, "#8000ff00"},
                                           PickCase{QColor(255, 0, 0), false, "#336699"}));

} // namespace
