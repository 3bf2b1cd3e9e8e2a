#include "PropertyEditor.h"

#include "ChartWidget.h"
#include "PropertyDelegate.h"

#include "KelChartPropertyModel.h"

#include <QLabel>
#include <QTreeView>
#include <QVBoxLayout>

namespace Orv::Chart {

namespace {

constexpr int nameWidth = 200;
constexpr int valueWidth = 170;

} // namespace

PropertyEditor::PropertyEditor(QWidget* parent)
    : QWidget(parent)
    , m_view(new QTreeView(this))
    , m_message(new QLabel(this))
{
    m_view->setItemDelegate(new PropertyDelegate(m_view));
    m_view->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                            QAbstractItemView::SelectedClicked);
    m_view->setAlternatingRowColors(true);
    m_message->setWordWrap(true);
    m_message->setStyleSheet(QStringLiteral("color: #a01010"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(m_view, 1);
    layout->addWidget(m_message);
}

void PropertyEditor::setModel(KelChartPropertyModel* model)
{
    if (m_model)
        disconnect(m_model, nullptr, this, nullptr);
    m_model = model;
    m_view->setModel(model);
    m_message->clear();
    if (!model)
        return;
    m_view->setColumnWidth(KelChartPropertyModel::NameColumn, nameWidth);
    m_view->setColumnWidth(KelChartPropertyModel::ValueColumn, valueWidth);
    m_view->expandToDepth(0);
    connect(model, &QAbstractItemModel::dataChanged, this, [this] {
        if (m_refreshing)
            return;
        m_message->clear();
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
    m_message->setText(text);
}

} // namespace Orv::Chart
