#include "PropertyDelegate.h"

#include "ColourEditor.h"

#include "KelChartPropertyModel.h"

#include <QComboBox>
#include <QLineEdit>
#include <QRegularExpressionValidator>

namespace Orv::Chart {

namespace {

using Model = KelChartPropertyModel;

// Partial input is let through; the model decides on the whole text.
const QRegularExpression integerPattern(QStringLiteral("[-+]?[0-9]*"));
const QRegularExpression numberPattern(QStringLiteral("[-+]?[0-9]*\\.?[0-9]*([eE][-+]?[0-9]*)?"));

QWidget* lineEditor(QWidget* parent, const QRegularExpression* pattern)
{
    auto* line = new QLineEdit(parent);
    if (pattern != nullptr)
        line->setValidator(new QRegularExpressionValidator(*pattern, line));
    return line;
}

} // namespace

QWidget* PropertyDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const
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
    case Model::Integer:
        return lineEditor(parent, &integerPattern);
    case Model::Number:
        return lineEditor(parent, &numberPattern);
    default:
        return lineEditor(parent, nullptr);
    }
}

void PropertyDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    const QString text = index.data(Qt::EditRole).toString();
    if (auto* box = qobject_cast<QComboBox*>(editor))
        box->setCurrentIndex(box->findText(text));
    else if (auto* colour = dynamic_cast<ColourEditor*>(editor))
        colour->setText(text);
    else if (auto* line = qobject_cast<QLineEdit*>(editor))
        line->setText(text);
}

void PropertyDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    QString text;
    if (auto* box = qobject_cast<QComboBox*>(editor))
        text = box->currentText();
    else if (auto* colour = dynamic_cast<ColourEditor*>(editor))
        text = colour->text();
    else if (auto* line = qobject_cast<QLineEdit*>(editor))
        text = line->text();
    else
        return;
    // Unchanged text is no edit: it would only refresh the chart.
    if (text != index.data(Qt::EditRole).toString())
        model->setData(index, text, Qt::EditRole);
}

} // namespace Orv::Chart
