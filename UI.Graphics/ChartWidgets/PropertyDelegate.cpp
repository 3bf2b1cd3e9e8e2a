#include "PropertyDelegate.h"

#include "ColourEditor.h"
#include "ColourListEditor.h"
#include "PropertyEditCommand.h"

#include "KelChartPropertyModel.h"

#include <QAbstractProxyModel>
#include <QComboBox>
#include <QCursor>
#include <QLineEdit>
#include <QToolTip>
#include <QUndoStack>

namespace Orv::Chart {

namespace {

using Model = KelChartPropertyModel;

// The cell of the property model beneath any proxies between it and the view.
QModelIndex propertyCell(const QModelIndex& index)
{
    QModelIndex cell = index;
    while (const auto* proxy = qobject_cast<const QAbstractProxyModel*>(cell.model()))
        cell = proxy->mapToSource(cell);
    return qobject_cast<const Model*>(cell.model()) ? cell : QModelIndex();
}

QString problemOf(const QModelIndex& index, const QString& text)
{
    const QModelIndex cell = propertyCell(index);
    return cell.isValid() ? static_cast<const Model*>(cell.model())->problem(cell, text) : QString();
}

QWidget* newEditor(QWidget* parent, const QModelIndex& index)
{
    switch (index.data(Model::KindRole).toInt()) {
    case Model::NoValue:
    case Model::Bool:
        return nullptr;
    case Model::Colour:
        return new ColourEditor(parent);
    case Model::Choice: {
        auto* box = new QComboBox(parent);
        box->addItems(index.data(Model::ChoicesRole).toStringList());
        return box;
    }
    default:
        break;
    }
    if (index.data(Model::ValueTypeRole).toString() == QLatin1String("colorlist"))
        return new ColourListEditor(parent);
    return new QLineEdit(parent);
}

// The line the user types into: the editor itself, or the line of a colour editor.
QLineEdit* textField(QWidget* editor)
{
    if (auto* line = qobject_cast<QLineEdit*>(editor))
        return line;
    return editor->findChild<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly);
}

void mark(QLineEdit* field, const QString& problem)
{
    field->setToolTip(problem);
    field->setStyleSheet(problem.isEmpty() ? QString() : QStringLiteral("QLineEdit { border: 2px solid #c62828; }"));
    // A tip already on screen keeps the text it was shown with: follow the typing, and go once it reads.
    if (!QToolTip::isVisible() || !field->underMouse())
        return;
    if (problem.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(QCursor::pos(), problem, field);
}

} // namespace

void PropertyDelegate::setUndoStack(QUndoStack* stack)
{
    m_undo = stack;
}

QWidget* PropertyDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const
{
    QWidget* editor = newEditor(parent, index);
    if (QLineEdit* field = editor ? textField(editor) : nullptr)
        watch(field, index);
    return editor;
}

void PropertyDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    QString text = index.data(Qt::EditRole).toString();
    if (m_refusedCell.isValid() && m_refusedCell == index) {
        text = m_refusedText;
        m_refusedCell = QPersistentModelIndex();
    }
    if (auto* box = qobject_cast<QComboBox*>(editor))
        box->setCurrentIndex(box->findText(text));
    else if (QLineEdit* field = textField(editor))
        field->setText(text);
}

void PropertyDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    QString text;
    if (auto* box = qobject_cast<QComboBox*>(editor))
        text = box->currentText();
    else if (const QLineEdit* field = textField(editor))
        text = field->text();
    else
        return;
    const Target target = targetOf(index);
    const QPersistentModelIndex cell(index);
    // Unchanged text is no edit: it would only refresh the chart.
    if (text == target.before) {
        Q_EMIT committed(cell, true);
        return;
    }
    if (!model->setData(index, text, Qt::EditRole)) {
        m_refusedCell = cell;
        m_refusedText = text;
        Q_EMIT committed(cell, false);
        return;
    }
    m_refusedCell = QPersistentModelIndex();
    record(target, text);
    Q_EMIT committed(cell, true);
}

// An editor taller than its row (the colour list's swatches) hangs over the rows below.
void PropertyDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                            const QModelIndex& index) const
{
    QStyledItemDelegate::updateEditorGeometry(editor, option, index);
    const int wanted = editor->sizeHint().height();
    if (wanted > editor->height())
        editor->resize(editor->width(), wanted);
}

// Check boxes are edited by the cell itself, without an editor; their changes are recorded here.
bool PropertyDelegate::editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                                   const QModelIndex& index)
{
    if (!index.flags().testFlag(Qt::ItemIsUserCheckable))
        return QStyledItemDelegate::editorEvent(event, model, option, index);
    const Target target = targetOf(index);
    const bool handled = QStyledItemDelegate::editorEvent(event, model, option, index);
    const QString after = target.cell.data(Qt::EditRole).toString();
    if (after != target.before)
        record(target, after);
    return handled;
}

PropertyDelegate::Target PropertyDelegate::targetOf(const QModelIndex& index)
{
    const QModelIndex cell = propertyCell(index);
    // The undo command writes through the model later, so it needs it writable.
    auto* model = const_cast<Model*>(static_cast<const Model*>(cell.model()));
    return {model, cell, index.data(Model::PathRole).toString(), index.data(Qt::EditRole).toString()};
}

void PropertyDelegate::record(const Target& target, const QString& after) const
{
    if (m_undo && target.model)
        m_undo->push(new PropertyEditCommand(target.model, target.path, target.before, after));
}

void PropertyDelegate::watch(QLineEdit* field, const QModelIndex& index) const
{
    connect(field, &QLineEdit::textChanged, field,
            [this, field, cell = QPersistentModelIndex(index)](const QString& text) {
                const QString problem = problemOf(cell, text);
                mark(field, problem);
                Q_EMIT fieldChecked(problem);
            });
}

} // namespace Orv::Chart
