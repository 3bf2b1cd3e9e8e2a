#include "ViewWindow.h"

#include "ChartWidget.h"
#include "PropertyEditor.h"

#include "ChartFile.h"

#include "KelChartPropertyModel.h"

#include <QDockWidget>
#include <QFileDialog>
#include <QMenuBar>
#include <QStatusBar>

namespace kelview {

using Orv::Chart::ChartWidget;
using Orv::Chart::PropertyEditor;

ViewWindow::ViewWindow(std::unique_ptr<ChartDocument> document, QWidget* parent)
    : QMainWindow(parent)
    , m_document(std::move(document))
    , m_chart(new ChartWidget(this))
    , m_model(new KelChartPropertyModel(&m_document->root(), this))
{
    setCentralWidget(m_chart);
    m_chart->setChart(m_document->chart(), m_document->pairs());
    buildEditor();
    buildMenus();
    connect(m_chart, &ChartWidget::hoverChanged, this, [this](const QString& text) {
        statusBar()->showMessage(text);
    });
    connect(m_editor, &PropertyEditor::refused, this, [this](const QString& text) { showMessage(text); });
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
    m_editor = new PropertyEditor;
    m_editor->setModel(m_model);
    m_editor->attach(m_chart);
    m_dock = new QDockWidget(tr("Properties"), this);
    m_dock->setObjectName(QStringLiteral("properties"));
    m_dock->setWidget(m_editor);
    addDockWidget(Qt::RightDockWidgetArea, m_dock);
    resizeDocks({m_dock}, {460}, Qt::Horizontal);
}

void ViewWindow::buildMenus()
{
    QMenu* file = menuBar()->addMenu(tr("&File"));
    // The shortcut is set on its own: Qt 5 and Qt 6 order addAction's arguments differently.
    file->addAction(tr("&Save as..."), this, [this] { saveAs(); })->setShortcut(QKeySequence::Save);
    file->addAction(tr("&Quit"), this, &QWidget::close)->setShortcut(QKeySequence::Quit);
    QMenu* view = menuBar()->addMenu(tr("&View"));
    view->addAction(m_dock->toggleViewAction());
}

QString ViewWindow::message() const
{
    return m_editor->message();
}

void ViewWindow::treeChanged()
{
    m_editor->refresh();
    m_chart->reload();
}

void ViewWindow::showMessage(const QString& text)
{
    m_editor->showMessage(text);
    statusBar()->showMessage(text);
}

bool ViewWindow::save(const QString& path)
{
    Orv::Chart::IoError error;
    if (!Orv::Chart::ChartFile::save(m_document->root(), path, &error)) {
        showMessage(error.message);
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
