#pragma once
// Chooses the editor of a value cell from the property model's hints: a word
// list for a style word, a colour editor, a colour list editor with swatches,
// a text line otherwise. Booleans are check boxes of the cell itself.
// Whatever the editor gives goes to the model as text, which refuses bad text
// and leaves the property as it was.
//
// A text line is checked while the user types: when the model would refuse
// the text, the line gets a red frame and the reason as its tool tip, and
// `fieldChecked` passes the reason on; nothing typed is swallowed. A refused
// text is kept: the next editor opened on that cell starts from it, so the
// user can correct it. Accepted edits, check boxes included, go onto the undo
// stack when one is set.
//
// Proxy models may stand between the view and the property model: hints are
// read through them, checks asked of the property model beneath.

#include "OrvChartWidgetsExport.h"

#include <QPersistentModelIndex>
#include <QPointer>
#include <QStyledItemDelegate>

class KelChartPropertyModel;
class QLineEdit;
class QUndoStack;

namespace Orv::Chart {

class ORV_CHARTWIDGETS_EXPORT PropertyDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    // Where accepted edits are recorded; none by default. Not owned.
    void setUndoStack(QUndoStack* stack);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;

Q_SIGNALS:
    // The text in an open line would be refused for `problem`; empty once it would be taken.
    void fieldChecked(const QString& problem) const;
    // An editor's text went to the model and was taken (or was the value
    // already), or was refused and kept for the cell's next editor.
    void committed(const QModelIndex& index, bool accepted) const;

private:
    // A property about to be written, located so that the write can be recorded
    // even when a filter drops the row in answer to it.
    struct Target {
        KelChartPropertyModel* model = nullptr;
        QPersistentModelIndex cell;
        QString path;
        QString before;
    };
    static Target targetOf(const QModelIndex& index);
    void record(const Target& target, const QString& after) const;
    void watch(QLineEdit* field, const QModelIndex& index) const;

    QPointer<QUndoStack> m_undo;
    // The last refused text and the view's cell it was meant for.
    mutable QPersistentModelIndex m_refusedCell;
    mutable QString m_refusedText;
};

} // namespace Orv::Chart
