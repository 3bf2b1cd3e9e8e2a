#pragma once
// Chooses the editor of a value cell from the property model's hints: a word
// list for a style word, a colour editor, number fields that take only what
// can become a number, free text otherwise. Booleans are check boxes of the
// cell itself. Whatever the editor gives goes to the model as text, which
// refuses bad text and leaves the property as it was.

#include "OrvChartWidgetsExport.h"
#include <QStyledItemDelegate>

namespace Orv::Chart {

class ORV_CHARTWIDGETS_EXPORT PropertyDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
};

} // namespace Orv::Chart
