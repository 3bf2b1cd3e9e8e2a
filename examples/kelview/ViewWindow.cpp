#include "ViewWindow.h"

#include "ChartView.h"
#include "Failure.h"
#include "PropertyDelegate.h"

#include "KelChartPropertyModel.h"

#include <QDockWidget>
#include <QFileDialog>
#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>
#include <QTreeView>
#include <QVBoxLayout>

namespace kelview {

ViewWindow::ViewWindow(std::unique_ptr<ChartDocument> document, QWidget* parent)
    : QMainWindow(parent)
    , m_document(std::move(document))
    , m_chart(new ChartView(this))
    , m_model(new KelChartPropertyModel(&m_document->root(), this))
{
    setCentralWidget(m_chart);
    m_chart->setChart(m_document->chart(), m_document->pairs());
    buildEditor();
    buildMenus();
    connect(m_chart, &ChartView::rangesChanged, this, [this] { rangesChanged(); });
    connect(m_chart, &ChartView::hoverChanged, this, [this](const QString& text) {
        statusBar()->showMessage(text);
    });
    connect(m_model, &QAbstractItemModel::dataChanged, this, [this] { edited(); });
    connect(m_model, &KelChartPropertyModel::editRefused, this,
            [this](const QModelIndex&, const QString& text) { showMessage(text); });
    const QString title = m_document->root().name();
    setWindowTitle(title.isEmpty() ? tr("kelview") : tr("%1 - kelview").arg(title));
    if (!m_document->notes().isEmpty())
        statusBar()->showMessage(m_document->notes().join(QStringLiteral("; ")));
}

ViewWindow::~ViewWindow()
{
    // The model and the view point into the document's tree.
    delete m_model;
    m_chart->setChart(nullptr, {});
}

void ViewWindow::buildEditor()
{
    m_editor = new QTreeView;
    m_editor->setModel(m_model);
    m_editor->setItemDelegate(new PropertyDelegate(m_editor));
    m_editor->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                              QAbstractItemView::SelectedClicked);
    m_editor->setAlternatingRowColors(true);
    m_editor->setColumnWidth(KelChartPropertyModel::NameColumn, 200);
    m_editor->setColumnWidth(KelChartPropertyModel::ValueColumn, 170);
    m_editor->expandToDepth(0);
    m_message = new QLabel;
    m_message->setWordWrap(true);
    m_message->setStyleSheet(QStringLiteral("color: #a01010"));
    auto* panel = new QWidget;
    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(m_editor, 1);
    layout->addWidget(m_message);
    m_dock = new QDockWidget(tr("Properties"), this);
    m_dock->setObjectName(QStringLiteral("properties"));
    m_dock->setWidget(panel);
    addDockWidget(Qt::RightDockWidgetArea, m_dock);
    resizeDocks({m_dock}, {460}, Qt::Horizontal);
}

void ViewWindow::buildMenus()
{
    QMenu* file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&Save as..."), this, [this] { saveAs(); }, QKeySequence::Save);
    file->addAction(tr("&Quit"), this, &QWidget::close, QKeySequence::Quit);
    QMenu* view = menuBar()->addMenu(tr("&View"));
    view->addAction(m_dock->toggleViewAction());
}

QString ViewWindow::message() const
{
    return m_message->text();
}

// Anything may have changed: data units, styles, axes; the frames start afresh.
void ViewWindow::edited()
{
    if (m_syncing)
        return;
    m_message->clear();
    m_chart->reload();
}

void ViewWindow::rangesChanged()
{
    m_syncing = true;
    m_model->refresh();
    m_syncing = false;
}

void ViewWindow::treeChanged()
{
    m_syncing = true;
    m_model->refresh();
    m_syncing = false;
    m_chart->reload();
}

void ViewWindow::showMessage(const QString& text)
{
    m_message->setText(text);
    statusBar()->showMessage(text);
}

bool ViewWindow::save(const QString& path)
{
    try {
        m_document->save(path);
    } catch (const kelchart::Failure& failure) {
        showMessage(failure.message());
        return false;
    }
    statusBar()->showMessage(tr("Saved %1").arg(path));
    return true;
}

void ViewWindow::saveAs()
{
    const QString path =
        QFileDialog::getSaveFileName(this, tr("Save the chart"), QString(), tr("Chart files (*.json)"));
    if (!path.isEmpty())
        save(path);
}

} // namespace kelview
