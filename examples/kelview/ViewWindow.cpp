#include "ViewWindow.h"

#include "ChartActions.h"
#include "ChartWidget.h"
#include "LogRelay.h"
#include "MessageBar.h"
#include "PropertyEditor.h"

#include "ChartFile.h"
#include "ChartPainter.h"
#include "Failure.h"

#include "KelChartPropertyModel.h"

#include <QAction>
#include <QActionGroup>
#include <QCloseEvent>
#include <QDir>
#include <QDockWidget>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QRegularExpression>
#include <QSettings>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QUndoStack>
#include <QVBoxLayout>

#include <algorithm>

namespace kelview {

using Orv::Chart::ChartActions;
using Orv::Chart::ChartWidget;
using Orv::Chart::PropertyEditor;

namespace {

// The locales the View menu offers, by QLocale's name.
const char* const offeredLocales[] = {"C", "de_DE", "fr_FR", "en_US", "ja_JP"};

// How long news stays in the status bar.
constexpr int newsMs = 8000;

const QString localeKey = QStringLiteral("locale");
const QString chartFilter = QStringLiteral("Chart files (*.json)");

QStringList exportFilters()
{
    return {ViewWindow::tr("PNG images (*.png)"), ViewWindow::tr("SVG drawings (*.svg)"),
            ViewWindow::tr("PDF documents (*.pdf)")};
}

QString localeLabel(const QString& name)
{
    if (name == QLatin1String("C"))
        return ViewWindow::tr("C (English, default)");
    return QStringLiteral("%1 (%2)").arg(name, QLocale(name).nativeLanguageName());
}

} // namespace

QString withExportSuffix(const QString& path, const QString& nameFilter)
{
    if (Orv::Chart::ChartPainter::formatOf(path))
        return path;
    static const QRegularExpression pattern(QStringLiteral("\\*\\.(\\w+)"));
    const QRegularExpressionMatch suffix = pattern.match(nameFilter);
    return suffix.hasMatch() ? path + QLatin1Char('.') + suffix.captured(1) : path;
}

ViewWindow::ViewWindow(std::unique_ptr<ChartDocument> document, QWidget* parent)
    : QMainWindow(parent)
    , m_document(std::move(document))
    , m_chart(new ChartWidget)
{
    m_relay = std::make_unique<LogRelay>([this](const QString& warning) {
        if (!m_opening)
            QMetaObject::invokeMethod(this, [this, warning] { showWarning(warning); }, Qt::QueuedConnection);
    });
    buildCentre();
    buildEditor();
    m_actions = new ChartActions(m_chart, m_editor, this);
    m_unsaved = new UnsavedChanges(m_chart, m_editor->undoStack(), this);
    buildMenus();
    buildToolBar();
    buildStatusBar();
    connectMessages();
    showDocument();
}

void ViewWindow::connectMessages()
{
    connect(m_editor, &PropertyEditor::refused, this, [this](const QString& text) { showStatus(text, true); });
    connect(m_editor, &PropertyEditor::edited, this, [this] {
        if (m_statusIsRefusal)
            showStatus(QString());
        updateTitle();
    });
    connect(m_actions, &ChartActions::failed, this, &ViewWindow::showFault);
    connect(m_actions, &ChartActions::imageSaved, this,
            [this](const QString& path) { showStatus(tr("Saved the image to %1").arg(path)); });
    connect(m_unsaved, &UnsavedChanges::modifiedChanged, this, &QWidget::setWindowModified);
}

ViewWindow::~ViewWindow()
{
    releaseDocument();
}

// The model and the views point into the document's tree: they let go of it first.
void ViewWindow::releaseDocument()
{
    Q_EMIT documentReleasing();
    m_chart->setChart(nullptr, {});
    m_editor->setModel(nullptr);
    delete m_model;
    m_model = nullptr;
}

void ViewWindow::buildCentre()
{
    auto* centre = new QWidget;
    m_messageBar = new MessageBar(centre);
    auto* layout = new QVBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_messageBar);
    layout->addWidget(m_chart, 1);
    setCentralWidget(centre);
}

void ViewWindow::buildEditor()
{
    m_editor = new PropertyEditor;
    m_editor->attach(m_chart);
    m_dock = new QDockWidget(tr("Properties"), this);
    m_dock->setObjectName(QStringLiteral("properties"));
    m_dock->setWidget(m_editor);
    addDockWidget(Qt::RightDockWidgetArea, m_dock);
    resizeDocks({m_dock}, {460}, Qt::Horizontal);
}

void ViewWindow::buildMenus()
{
    buildFileMenu();
    buildEditMenu();
    buildViewMenu();
}

// Shortcuts are set on their own: Qt 5 and Qt 6 order addAction's arguments differently.
void ViewWindow::buildFileMenu()
{
    QMenu* file = menuBar()->addMenu(tr("&File"));
    QAction* open = file->addAction(QIcon::fromTheme(QStringLiteral("document-open")), tr("&Open..."), this,
                                    &ViewWindow::openChosen);
    open->setShortcut(QKeySequence::Open);
    QAction* save = file->addAction(QIcon::fromTheme(QStringLiteral("document-save")), tr("&Save"), this,
                                    &ViewWindow::saveChosen);
    save->setShortcut(QKeySequence::Save);
    QAction* saveAs = file->addAction(QIcon::fromTheme(QStringLiteral("document-save-as")), tr("Save &as..."),
                                      this, &ViewWindow::saveAsChosen);
    saveAs->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
    file->addSeparator();
    file->addAction(m_actions->saveImage());
    file->addAction(QIcon::fromTheme(QStringLiteral("document-export")), tr("&Export..."), this,
                    &ViewWindow::exportChosen);
    QAction* print = file->addAction(QIcon::fromTheme(QStringLiteral("document-print")), tr("&Print..."), this,
                                     &ViewWindow::print);
    print->setShortcut(QKeySequence::Print);
    file->addSeparator();
    QAction* quit = file->addAction(QIcon::fromTheme(QStringLiteral("application-exit")), tr("&Quit"), this,
                                    &QWidget::close);
    quit->setShortcut(QKeySequence::Quit);
}

void ViewWindow::buildEditMenu()
{
    QMenu* edit = menuBar()->addMenu(tr("&Edit"));
    edit->addActions({m_actions->undo(), m_actions->redo()});
    edit->addSeparator();
    edit->addActions({m_actions->copyValues(), m_actions->copyImage()});
}

void ViewWindow::buildViewMenu()
{
    QMenu* view = menuBar()->addMenu(tr("&View"));
    view->addActions(m_actions->viewActions());
    view->addSeparator();
    view->addAction(m_dock->toggleViewAction());
    buildLocaleMenu(view);
}

void ViewWindow::buildLocaleMenu(QMenu* view)
{
    m_localeMenu = view->addMenu(tr("&Locale"));
    m_localeMenu->setToolTipsVisible(true);
    m_locales = new QActionGroup(this);
    for (const char* name : offeredLocales)
        addLocaleAction(QLatin1String(name));
}

QAction* ViewWindow::addLocaleAction(const QString& name)
{
    QAction* action = m_localeMenu->addAction(localeLabel(name));
    action->setData(name);
    action->setCheckable(true);
    action->setToolTip(tr("Numbers and dates in the chart as this locale writes them"));
    m_locales->addAction(action);
    connect(action, &QAction::triggered, this, [this, name] { chooseLocale(name); });
    return action;
}

void ViewWindow::buildToolBar()
{
    QToolBar* bar = addToolBar(tr("Navigation"));
    bar->setObjectName(QStringLiteral("navigation"));
    bar->addActions(m_actions->viewActions());
}

void ViewWindow::buildStatusBar()
{
    m_readOut = new QLabel;
    m_status = new QLabel;
    m_statusTimer = new QTimer(this);
    m_statusTimer->setSingleShot(true);
    m_statusTimer->setInterval(newsMs);
    connect(m_statusTimer, &QTimer::timeout, this, [this] { showStatus(QString()); });
    m_status->setFrameShape(QFrame::StyledPanel);
    for (QLabel* label : {m_readOut, m_status}) {
        // Long texts are cut rather than widening the window.
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        label->setTextFormat(Qt::PlainText);
    }
    statusBar()->addWidget(m_readOut, 3);
    statusBar()->addPermanentWidget(m_status, 2);
    connect(m_chart, &ChartWidget::hoverChanged, this, [this](const QString& hover) {
        m_hover = hover;
        showReadOut();
    });
    connect(m_chart, &ChartWidget::pointCursorChanged, this, &ViewWindow::showReadOut);
}

// The document's tree in the editor and the chart, as just opened: nothing to save.
void ViewWindow::showDocument()
{
    m_model = new KelChartPropertyModel(&m_document->root(), this);
    m_editor->setModel(m_model);
    m_chart->setChart(m_document->chart(), m_document->pairs());
    m_unsaved->markSaved();
    updateTitle();
    const QStringList remarks = m_document->notes() + m_document->warnings();
    if (remarks.isEmpty())
        m_messageBar->clear();
    else
        m_messageBar->showMessage(MessageBar::Level::Remark, remarks);
    showStatus(remarks.isEmpty() ? tr("Opened %1").arg(m_document->displayName())
                                 : tr("Opened %1 with %n remark(s)", nullptr, static_cast<int>(remarks.size()))
                                       .arg(m_document->displayName()));
}

// The hover's values, or the point cursor's while the mouse is elsewhere.
void ViewWindow::showReadOut()
{
    const QString text = m_hover.isEmpty() ? m_chart->pointCursorText() : m_hover;
    m_readOut->setText(text);
    m_readOut->setToolTip(text);
}

// A refusal or fault stays until it is mended; news ("Saved ...") fades.
void ViewWindow::showStatus(const QString& text, bool refusal)
{
    m_statusIsRefusal = refusal && !text.isEmpty();
    m_status->setText(text);
    m_status->setToolTip(text);
    m_status->setStyleSheet(m_statusIsRefusal ? QStringLiteral("color: #a01010") : QString());
    m_status->setVisible(!text.isEmpty());
    if (m_statusIsRefusal || text.isEmpty())
        m_statusTimer->stop();
    else
        m_statusTimer->start();
}

void ViewWindow::showFault(const QString& text)
{
    m_messageBar->showMessage(MessageBar::Level::Fault, {text});
    showStatus(text, true);
}

void ViewWindow::showWarning(const QString& text)
{
    m_messageBar->add(text);
    showStatus(text);
}

void ViewWindow::updateTitle()
{
    setWindowTitle(tr("%1[*] - kelview").arg(m_document->displayName()));
    setWindowModified(m_unsaved->isModified());
}

QString ViewWindow::message() const
{
    return m_editor->message();
}

QString ViewWindow::readOut() const
{
    return m_readOut->text();
}

QString ViewWindow::statusMessage() const
{
    return m_status->text();
}

void ViewWindow::treeChanged()
{
    m_editor->refresh();
    m_chart->reload();
}

void ViewWindow::setChartLocale(const QLocale& locale)
{
    m_chart->setLocale(locale);
    const QString name = locale.name();
    const QList<QAction*> offered = m_locales->actions();
    auto chosen = std::find_if(offered.begin(), offered.end(),
                               [&name](const QAction* action) { return action->data().toString() == name; });
    // A locale from the command line that the menu does not offer joins it.
    (chosen != offered.end() ? *chosen : addLocaleAction(name))->setChecked(true);
}

void ViewWindow::chooseLocale(const QString& name)
{
    setChartLocale(QLocale(name));
    QSettings().setValue(localeKey, name);
}

bool ViewWindow::openFile(const QString& path)
{
    std::unique_ptr<ChartDocument> next;
    m_opening = true;
    try {
        next = ChartDocument::open(path);
    } catch (const kelchart::Failure& failure) {
        m_opening = false;
        showFault(failure.message());
        return false;
    }
    m_opening = false;
    replaceDocument(std::move(next));
    return true;
}

void ViewWindow::replaceDocument(std::unique_ptr<ChartDocument> document)
{
    releaseDocument();
    m_document = std::move(document);
    showDocument();
}

bool ViewWindow::save(const QString& path)
{
    Orv::Chart::IoError error;
    if (!Orv::Chart::ChartFile::save(m_document->root(), path, &error)) {
        showFault(error.message);
        return false;
    }
    m_document->setChartPath(path);
    m_unsaved->markSaved();
    updateTitle();
    showStatus(tr("Saved %1").arg(path));
    return true;
}

void ViewWindow::closeEvent(QCloseEvent* event)
{
    if (mayDiscardChanges())
        event->accept();
    else
        event->ignore();
}

bool ViewWindow::mayDiscardChanges()
{
    const auto ask = [this] { return m_savePrompt ? m_savePrompt() : askToSave(); };
    return mayDiscard(isModified(), ask, [this] { return saveChosen(); });
}

SaveAnswer ViewWindow::askToSave()
{
    QMessageBox box(QMessageBox::Warning, tr("kelview"), tr("The chart has changes that are not saved."),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
    box.setInformativeText(m_document->chartPath().isEmpty()
                               ? tr("Save them to a chart file?")
                               : tr("Save them to %1?").arg(QFileInfo(m_document->chartPath()).fileName()));
    box.setDefaultButton(QMessageBox::Save);
    switch (box.exec()) {
    case QMessageBox::Save:
        return SaveAnswer::Save;
    case QMessageBox::Discard:
        return SaveAnswer::Discard;
    default:
        return SaveAnswer::Cancel;
    }
}

void ViewWindow::openChosen()
{
    if (!mayDiscardChanges())
        return;
    const QString path = QFileDialog::getOpenFileName(
        this, tr("Open a chart or data file"), QFileInfo(m_document->chartPath()).path(),
        tr("Charts and data (*.json *.csv *.tsv *.txt);;Chart files (*.json);;Data files (*.csv *.tsv *.txt);;"
           "All files (*)"));
    if (!path.isEmpty())
        openFile(path);
}

// A chart set up for data, or the sample, has no chart file yet: Save asks for one.
bool ViewWindow::saveChosen()
{
    return m_document->chartPath().isEmpty() ? saveAsChosen() : save(m_document->chartPath());
}

bool ViewWindow::saveAsChosen()
{
    QString suggestion = m_document->chartPath();
    if (suggestion.isEmpty() && !m_document->dataPath().isEmpty()) {
        const QFileInfo data(m_document->dataPath());
        suggestion = data.dir().filePath(data.completeBaseName() + QStringLiteral(".json"));
    }
    QFileDialog dialog(this, tr("Save the chart"), suggestion, chartFilter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("json"));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return false;
    return save(withChartSuffix(dialog.selectedFiles().constFirst()));
}

bool ViewWindow::exportChart(const QString& path)
{
    const Orv::Chart::ChartFrames* frames = m_chart->frames();
    QString error = tr("%1: there is no chart to export").arg(path);
    if (frames == nullptr || !frames->painter().write(path, &error)) {
        showFault(error);
        return false;
    }
    showStatus(tr("Exported the chart to %1").arg(path));
    return true;
}

// Next to the chart or data file, named after it.
void ViewWindow::exportChosen()
{
    const QString source = m_document->chartPath().isEmpty() ? m_document->dataPath() : m_document->chartPath();
    const QFileInfo info(source.isEmpty() ? QStringLiteral("chart") : source);
    QFileDialog dialog(this, tr("Export the chart"), info.dir().filePath(info.completeBaseName()),
                       exportFilters().join(QStringLiteral(";;")));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    exportChart(withExportSuffix(dialog.selectedFiles().constFirst(), dialog.selectedNameFilter()));
}

void ViewWindow::print()
{
    if (!m_printer)
        m_printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    auto* dialog = new QPrintDialog(m_printer.get(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this] { printOn(*m_printer); });
    dialog->open();
}

// The painter's origin is the printable area's corner; the frame's fonts
// are sized in pixels, so they scale with the rest of the layout.
void ViewWindow::printOn(QPrinter& printer)
{
    const Orv::Chart::ChartFrames* frames = m_chart->frames();
    if (frames == nullptr)
        return;
    QPainter painter;
    if (!painter.begin(&printer)) {
        showFault(tr("The chart could not be printed."));
        return;
    }
    const QSizeF page = printer.pageRect(QPrinter::DevicePixel).size();
    const QSizeF size = frames->size();
    const double scale = std::min(page.width() / size.width(), page.height() / size.height());
    painter.translate((page.width() - scale * size.width()) / 2, (page.height() - scale * size.height()) / 2);
    painter.scale(scale, scale);
    frames->paint(painter);
    showStatus(tr("Printed the chart"));
}

} // namespace kelview
