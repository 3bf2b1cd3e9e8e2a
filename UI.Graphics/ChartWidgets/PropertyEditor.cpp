#include "PropertyEditor.h"

#include "ChartWidget.h"
#include "PropertyDelegate.h"
#include "PropertyFilter_p.h"

#include "KelChartPropertyModel.h"

#include <QLabel>
#include <QLineEdit>
#include <QPersistentModelIndex>
#include <QTimer>
#include <QTreeView>
#include <QUndoStack>
#include <QVBoxLayout>

namespace Orv::Chart {

namespace {

constexpr int nameWidth = 200;
constexpr int valueWidth = 170;

// Explicit colours on both sides, so the lines read in light and dark themes alike.
const char* const hintStyle = "QLabel { color: #4a3800; background: #fff3cd; padding: 2px 4px; }";
const char* const messageStyle =
    "QLabel { color: #7a0c0c; background: #fde2e2; border: 1px solid #e0a3a3; padding: 3px 4px; }";

QLabel* noteLine(QWidget* parent, const QString& name, const char* style)
{
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setStyleSheet(QString::fromLatin1(style));
    label->hide();
    return label;
}

void setNote(QLabel* label, const QString& text)
{
    label->setText(text);
    label->setVisible(!text.isEmpty());
}

} // namespace

PropertyEditor::PropertyEditor(QWidget* parent)
    : QWidget(parent)
    , m_filter(new QLineEdit(this))
    , m_rows(new PropertyFilter(this))
    , m_view(new QTreeView(this))
    , m_delegate(new PropertyDelegate(m_view))
    , m_hint(noteLine(this, QStringLiteral("hint"), hintStyle))
    , m_message(noteLine(this, QStringLiteral("message"), messageStyle))
    , m_undo(new QUndoStack(this))
{
    m_filter->setPlaceholderText(tr("Filter properties"));
    m_filter->setClearButtonEnabled(true);
    m_delegate->setUndoStack(m_undo);
    m_view->setItemDelegate(m_delegate);
    m_view->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                            QAbstractItemView::SelectedClicked);
    m_view->setAlternatingRowColors(true);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(m_filter);
    layout->addWidget(m_view, 1);
    layout->addWidget(m_hint);
    layout->addWidget(m_message);
    connect(m_filter, &QLineEdit::textChanged, this, &PropertyEditor::filterRows);
    connect(m_delegate, &PropertyDelegate::fieldChecked, this, &PropertyEditor::showHint);
    connect(m_delegate, &PropertyDelegate::closeEditor, this, [this] { showHint(QString()); });
    connect(m_delegate, &PropertyDelegate::committed, this, &PropertyEditor::afterCommit);
}

// Closing the tree commits an open field, after this editor's own parts are
// gone: what the model and the delegate say then must not reach them.
PropertyEditor::~PropertyEditor()
{
    disconnect(m_delegate, nullptr, this, nullptr);
    if (m_model)
        disconnect(m_model, nullptr, this, nullptr);
}

void PropertyEditor::setModel(KelChartPropertyModel* model)
{
    if (m_model)
        disconnect(m_model, nullptr, this, nullptr);
    m_model = model;
    m_undo->clear();
    m_rows->setSourceModel(model);
    m_view->setModel(model ? m_rows : nullptr);
    showMessage(QString());
    showHint(QString());
    if (!model)
        return;
    m_view->setColumnWidth(KelChartPropertyModel::NameColumn, nameWidth);
    m_view->setColumnWidth(KelChartPropertyModel::ValueColumn, valueWidth);
    filterRows(m_filter->text());
    connect(model, &QAbstractItemModel::dataChanged, this, [this] {
        if (m_refreshing)
            return;
        showMessage(QString());
        Q_EMIT edited();
    });
    connect(model, &KelChartPropertyModel::editRefused, this, [this](const QModelIndex&, const QString& text) {
        showMessage(text);
        Q_EMIT refused(text);
    });
}

void PropertyEditor::attach(ChartWidget* chart)
{
    connect(this, &PropertyEditor::edited, chart, &ChartWidget::reload);
    connect(chart, &ChartWidget::rangesChanged, this, &PropertyEditor::refresh);
    connect(chart, &ChartWidget::seriesToggled, this, &PropertyEditor::refresh);
}

void PropertyEditor::refresh()
{
    if (!m_model)
        return;
    m_refreshing = true;
    m_model->refresh();
    m_refreshing = false;
}

QString PropertyEditor::message() const
{
    return m_message->text();
}

void PropertyEditor::showMessage(const QString& text)
{
    setNote(m_message, text);
}

QString PropertyEditor::hint() const
{
    return m_hint->text();
}

void PropertyEditor::showHint(const QString& text)
{
    setNote(m_hint, text);
}

// While filtering, every row left is opened, so the matches deep in the tree show.
void PropertyEditor::filterRows(const QString& text)
{
    m_rows->setText(text);
    if (text.isEmpty()) {
        m_view->collapseAll();
        m_view->expandToDepth(0);
    } else {
        m_view->expandAll();
    }
}

// A refused text comes back in a new editor on the same cell, once the view
// has closed the one that gave it; the delegate starts that editor from it.
void PropertyEditor::afterCommit(const QModelIndex& index, bool accepted)
{
    if (accepted) {
        // Giving back the value a property already has also ends a refused edit.
        showMessage(QString());
        return;
    }
    QTimer::singleShot(0, this, [this, cell = QPersistentModelIndex(index)] {
        if (cell.isValid() && cell.model() == m_view->model())
            m_view->edit(cell);
    });
}

} // namespace Orv::Chart
