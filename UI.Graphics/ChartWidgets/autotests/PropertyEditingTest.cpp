// Edits as the property editor's cells make them: the editor each kind of
// value gets, what it shows, what it writes back, and the colour picker.
#include "ColourEditor.h"
#include "PropertyDelegate.h"
#include "PropertyEditor.h"
#include "SampleChart.h"

#include "KelChartAxisContinuous.h"
#include "KelChartPropertyModel.h"
#include "KelChartVariable.h"

#include <QApplication>
#include <QColorDialog>
#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QStyleOptionViewItem>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>
#include <QValidator>

#include "ValueCell.h"

#include <gtest/gtest.h>

#include <functional>

#include <memory>

namespace {

using Model = KelChartPropertyModel;
using Orv::Chart::ColourEditor;

// The text an editor shows, whichever kind it is.
QString shownText(QWidget* editor)
{
    if (auto* box = qobject_cast<QComboBox*>(editor))
        return box->currentText();
    if (auto* colour = dynamic_cast<ColourEditor*>(editor))
        return colour->text();
    if (auto* line = qobject_cast<QLineEdit*>(editor))
        return line->text();
    return QStringLiteral("<no editor>");
}

// Types into an editor as a user would; a combo box takes one of its words.
void typeInto(QWidget* editor, const QString& text)
{
    if (auto* box = qobject_cast<QComboBox*>(editor))
        box->setCurrentIndex(box->findText(text));
    else if (auto* colour = dynamic_cast<ColourEditor*>(editor))
        colour->setText(text);
    else if (auto* line = qobject_cast<QLineEdit*>(editor))
        line->setText(text);
}

class SampleTree : public ::testing::Test {
protected:
    void SetUp() override
    {
        chart = Orv::Chart::SampleChart::build(group);
        model = std::make_unique<Model>(chart.get());
        editor = std::make_unique<Orv::Chart::PropertyEditor>();
        editor->setModel(model.get());
    }

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
    Orv::Chart::PropertyDelegate delegate;
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
    const std::unique_ptr<QWidget> edit(delegate.createEditor(&parent, QStyleOptionViewItem(), index));
    ASSERT_NE(edit, nullptr);
    EXPECT_EQ(GetParam().kind == Model::Colour, dynamic_cast<ColourEditor*>(edit.get()) != nullptr);
    EXPECT_EQ(GetParam().kind == Model::Choice, qobject_cast<QComboBox*>(edit.get()) != nullptr);

    delegate.setEditorData(edit.get(), index);
    EXPECT_EQ(shownText(edit.get()), index.data(Qt::EditRole).toString());

    const QSignalSpy edited(editor.get(), &Orv::Chart::PropertyEditor::edited);
    const QString typed = QString::fromLatin1(GetParam().typed);
    typeInto(edit.get(), typed);
    ASSERT_EQ(shownText(edit.get()), typed);
    delegate.setModelData(edit.get(), model.get(), index);
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

TEST_F(SampleTree, TheTypedValueReachesTheChart)
{
    const auto editorOf = [&](const QModelIndex& index) {
        QWidget* edit = delegate.createEditor(&parent, QStyleOptionViewItem(), index);
        delegate.setEditorData(edit, index);
        return edit;
    };
    QWidget* colour = editorOf(cell(QStringLiteral("axis.y/axis.y.left/tickColor")));
    typeInto(colour, QStringLiteral("#00ff00"));
    delegate.setModelData(colour, model.get(), cell(QStringLiteral("axis.y/axis.y.left/tickColor")));
    EXPECT_EQ(leftAxis().tickColor.get(), QColor(0, 255, 0));

    QWidget* order = editorOf(cell(QStringLiteral("variable/T1/order")));
    typeInto(order, QStringLiteral("9"));
    delegate.setModelData(order, model.get(), cell(QStringLiteral("variable/T1/order")));
    EXPECT_EQ(chart->variables[QStringLiteral("T1")]->order.get(), 9);
}

TEST_F(SampleTree, NumberFieldsLetThroughOnlyWhatCanBecomeANumber)
{
    const auto validate = [&](const char* path, const char* text) {
        const std::unique_ptr<QWidget> edit(
            delegate.createEditor(&parent, QStyleOptionViewItem(), cell(QString::fromLatin1(path))));
        auto* line = qobject_cast<QLineEdit*>(edit.get());
        if (line == nullptr)
            return QStringLiteral("no line editor");
        if (line->validator() == nullptr)
            return QStringLiteral("free");
        QString input = QString::fromLatin1(text);
        int position = input.size();
        return line->validator()->validate(input, position) == QValidator::Invalid ? QStringLiteral("invalid")
                                                                                   : QStringLiteral("ok");
    };
    EXPECT_EQ(validate("variable/T1/order", "-12"), QStringLiteral("ok"));
    EXPECT_EQ(validate("variable/T1/order", "+"), QStringLiteral("ok")) << "partial input is let through";
    EXPECT_EQ(validate("variable/T1/order", "1.5"), QStringLiteral("invalid"));
    EXPECT_EQ(validate("variable/T1/order", "x"), QStringLiteral("invalid"));
    EXPECT_EQ(validate("axis.y/axis.y.left/max", "-1.5e"), QStringLiteral("ok"));
    EXPECT_EQ(validate("axis.y/axis.y.left/max", "1.5.2"), QStringLiteral("invalid"));
    EXPECT_EQ(validate("title", "anything at all, 1.5.2"), QStringLiteral("free"));
}

TEST_F(SampleTree, UnchangedTextAndForeignEditorsWriteNothing)
{
    const QModelIndex title = cell(QStringLiteral("title"));
    const QSignalSpy changed(model.get(), &QAbstractItemModel::dataChanged);
    const std::unique_ptr<QWidget> edit(delegate.createEditor(&parent, QStyleOptionViewItem(), title));
    delegate.setEditorData(edit.get(), title);
    delegate.setModelData(edit.get(), model.get(), title);
    QWidget foreign;
    delegate.setEditorData(&foreign, title);
    delegate.setModelData(&foreign, model.get(), title);
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(chart->title.get(), QStringLiteral("Weather station, one day"));
}

TEST_F(SampleTree, ARefusedColourLeavesThePropertyAndSaysWhy)
{
    const QColor before = leftAxis().tickColor.get();
    const QModelIndex index = cell(QStringLiteral("axis.y/axis.y.left/tickColor"));
    const QSignalSpy refused(editor.get(), &Orv::Chart::PropertyEditor::refused);
    const std::unique_ptr<QWidget> edit(delegate.createEditor(&parent, QStyleOptionViewItem(), index));
    typeInto(edit.get(), QStringLiteral("greenish"));
    delegate.setModelData(edit.get(), model.get(), index);
    EXPECT_EQ(leftAxis().tickColor.get(), before);
    ASSERT_EQ(refused.count(), 1);
    EXPECT_FALSE(editor->message().isEmpty());
    EXPECT_EQ(editor->message(), refused.at(0).at(0).toString());
    EXPECT_EQ(editor->message(), model->lastError());

    // The next good edit clears the reason.
    typeInto(edit.get(), QStringLiteral("#123456"));
    delegate.setModelData(edit.get(), model.get(), index);
    EXPECT_EQ(leftAxis().tickColor.get(), QColor(0x12, 0x34, 0x56));
    EXPECT_TRUE(editor->message().isEmpty());
}

TEST_F(SampleTree, AReplacedModelNoLongerReportsToTheEditor)
{
    KelModifiedGroup otherGroup;
    const std::unique_ptr<KelChart2D> other = Orv::Chart::SampleChart::build(otherGroup);
    Model otherModel(other.get());
    editor->showMessage(QStringLiteral("stale"));
    editor->setModel(&otherModel);
    EXPECT_EQ(editor->model(), &otherModel);
    EXPECT_EQ(editor->view()->model(), &otherModel);
    EXPECT_TRUE(editor->message().isEmpty()) << "a new tree starts without a reason";

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

// The colour dialog behind the button: it opens on the colour in the line,
// and what it gives comes back as text, with alpha only when not opaque.
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

    // Answers the dialog once it is open, looking again every 10 ms until then (at most 5 s), so that the
    // dialog's own loop never waits for an answer already given up. The state outlives this test.
    struct Answer {
        QColor opened;
        bool sawDialog = false;
        bool done = false;
        int tries = 0;
    };
    const auto state = std::make_shared<Answer>();
    const PickCase pick = GetParam();
    const auto answer = std::make_shared<std::function<void()>>();
    *answer = [state, pick, weak = std::weak_ptr<std::function<void()>>(answer)] {
        QColorDialog* dialog = nullptr;
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (auto* found = qobject_cast<QColorDialog*>(widget); found && found->isVisible())
                dialog = found;
        if (dialog == nullptr) {
            if (!state->done && ++state->tries < 500)
                if (const auto again = weak.lock())
                    QTimer::singleShot(10, [again] { (*again)(); });
            return;
        }
        state->sawDialog = true;
        state->opened = dialog->currentColor();
        dialog->setCurrentColor(pick.chosen);
        if (pick.accepted)
            dialog->accept();
        else
            dialog->reject();
    };
    QTimer::singleShot(0, [answer] { (*answer)(); });
    button->click();
    state->done = true;
    const bool sawDialog = state->sawDialog;
    const QColor opened = state->opened;
    ASSERT_TRUE(sawDialog);
    EXPECT_EQ(opened, QColor(0x33, 0x66, 0x99));
    EXPECT_EQ(colour.text(), QString::fromLatin1(GetParam().shown));
}

INSTANTIATE_TEST_SUITE_P(Choices, ColourPick,
                         ::testing::Values(PickCase{QColor(255, 0, 0), true, "#ff0000"},
                                           PickCase{QColor(0, 255, 0, 128), true, "#8000ff00"},
                                           PickCase{QColor(255, 0, 0), false, "#336699"}));

} // namespace
