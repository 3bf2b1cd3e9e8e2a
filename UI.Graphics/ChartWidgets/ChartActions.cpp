#include "ChartActions.h"

#include "ChartWidget.h"
#include "HoverText.h"
#include "PropertyEditor.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QIcon>
#include <QIconEngine>
#include <QImageWriter>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QTimer>
#include <QUndoStack>

#include <cmath>
#include <functional>

namespace Orv::Chart {

namespace {

// No style icon to fall back on.
constexpr int noStyleIcon = -1;

QPoint positionOf(const QMouseEvent* event)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return event->position().toPoint();
#else
    return event->pos();
#endif
}

// The platform's bindings of a standard key, then `extra` unless among them.
QList<QKeySequence> keysOf(QKeySequence::StandardKey standard, const QKeySequence& extra = {})
{
    QList<QKeySequence> keys = QKeySequence::keyBindings(standard);
    if (!extra.isEmpty() && !keys.contains(extra))
        keys << extra;
    return keys;
}

// Strokes of an icon in a unit square, for platforms without an icon theme
// (the style has no zoom or home icons to fall back on).
using Strokes = std::function<void(QPainter&)>;

class DrawnIcon : public QIconEngine {
public:
    explicit DrawnIcon(Strokes strokes)
        : m_strokes(std::move(strokes))
    {
    }
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        const QPalette::ColorGroup group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width(), rect.height());
        painter->setPen(QPen(QApplication::palette().color(group, QPalette::WindowText), 0.08, Qt::SolidLine,
                             Qt::RoundCap, Qt::RoundJoin));
        painter->setBrush(Qt::NoBrush);
        m_strokes(*painter);
        painter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }
    QIconEngine* clone() const override { return new DrawnIcon(m_strokes); }

private:
    Strokes m_strokes;
};

void drawHouse(QPainter& painter)
{
    painter.drawPolyline(QPolygonF({{0.12, 0.52}, {0.5, 0.16}, {0.88, 0.52}}));
    painter.drawPolyline(QPolygonF({{0.24, 0.42}, {0.24, 0.86}, {0.76, 0.86}, {0.76, 0.42}}));
    painter.drawRect(QRectF(0.42, 0.6, 0.16, 0.26));
}

// A lens with a plus (or a minus) in it.
void drawLens(QPainter& painter, bool plus)
{
    painter.drawEllipse(QPointF(0.42, 0.42), 0.28, 0.28);
    painter.drawLine(QPointF(0.62, 0.62), QPointF(0.88, 0.88));
    painter.drawLine(QPointF(0.29, 0.42), QPointF(0.55, 0.42));
    if (plus)
        painter.drawLine(QPointF(0.42, 0.29), QPointF(0.42, 0.55));
}

// A double arrow reaching from a bottom line to a top line.
void drawFitVertical(QPainter& painter)
{
    painter.drawLine(QPointF(0.15, 0.12), QPointF(0.85, 0.12));
    painter.drawLine(QPointF(0.15, 0.88), QPointF(0.85, 0.88));
    painter.drawLine(QPointF(0.5, 0.26), QPointF(0.5, 0.74));
    painter.drawPolyline(QPolygonF({{0.36, 0.4}, {0.5, 0.26}, {0.64, 0.4}}));
    painter.drawPolyline(QPolygonF({{0.36, 0.6}, {0.5, 0.74}, {0.64, 0.6}}));
}

QIcon iconOf(const char* themeIcon, int styleIcon, Strokes strokes = {})
{
    QIcon fallback;
    if (strokes)
        fallback = QIcon(new DrawnIcon(std::move(strokes)));
    else if (styleIcon != noStyleIcon)
        fallback = QApplication::style()->standardIcon(static_cast<QStyle::StandardPixmap>(styleIcon));
    return QIcon::fromTheme(QString::fromLatin1(themeIcon), fallback);
}

} // namespace

ChartActions::ChartActions(ChartWidget* chart, PropertyEditor* editor, QObject* parent)
    : QObject(parent)
    , m_chart(chart)
{
    createViewActions();
    createCopyActions();
    createUndoActions(editor);
    buildContextMenu();
    m_chart->installEventFilter(this);
    connect(m_chart, &ChartWidget::historyChanged, this, &ChartActions::updateEnabled);
    connect(m_chart, &ChartWidget::hoverChanged, this, &ChartActions::updateEnabled);
    connect(m_chart, &ChartWidget::pointCursorChanged, this, &ChartActions::updateEnabled);
    updateEnabled();
}

ChartActions::~ChartActions()
{
    delete m_menu;
}

QAction* ChartActions::makeAction(const QString& text, const QString& toolTip, const QIcon& icon)
{
    auto* action = new QAction(icon, text, this);
    action->setToolTip(toolTip);
    action->setStatusTip(toolTip);
    m_chart->addAction(action);
    return action;
}

void ChartActions::createViewActions()
{
    m_home = makeAction(tr("&Home"), tr("Back to the view the chart opened with"),
                        iconOf("go-home", noStyleIcon, drawHouse));
    m_home->setShortcuts({QKeySequence(QStringLiteral("Alt+Home")), QKeySequence(QStringLiteral("Ctrl+0"))});
    m_back = makeAction(tr("&Back"), tr("The previous view"), iconOf("go-previous", QStyle::SP_ArrowBack));
    m_back->setShortcuts(keysOf(QKeySequence::Back, QKeySequence(QStringLiteral("Alt+Left"))));
    m_forward = makeAction(tr("&Forward"), tr("The next view"), iconOf("go-next", QStyle::SP_ArrowForward));
    m_forward->setShortcuts(keysOf(QKeySequence::Forward, QKeySequence(QStringLiteral("Alt+Right"))));
    m_zoomIn = makeAction(tr("Zoom &in"), tr("Zoom in about the plot's centre"),
                          iconOf("zoom-in", noStyleIcon, [](QPainter& painter) { drawLens(painter, true); }));
    m_zoomIn->setShortcuts(QKeySequence::ZoomIn);
    m_zoomOut = makeAction(tr("Zoom &out"), tr("Zoom out about the plot's centre"),
                           iconOf("zoom-out", noStyleIcon, [](QPainter& painter) { drawLens(painter, false); }));
    m_zoomOut->setShortcuts(QKeySequence::ZoomOut);
    m_fitY = makeAction(tr("Fit &y to data"), tr("The y axes to the data inside the x range shown"),
                        iconOf("zoom-fit-best", noStyleIcon, drawFitVertical));
    m_fitY->setShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+Y")));
    connect(m_home, &QAction::triggered, m_chart, &ChartWidget::home);
    connect(m_back, &QAction::triggered, m_chart, &ChartWidget::back);
    connect(m_forward, &QAction::triggered, m_chart, &ChartWidget::forward);
    connect(m_zoomIn, &QAction::triggered, m_chart, &ChartWidget::zoomIn);
    connect(m_zoomOut, &QAction::triggered, m_chart, &ChartWidget::zoomOut);
    connect(m_fitY, &QAction::triggered, m_chart, &ChartWidget::fitY);
}

void ChartActions::createCopyActions()
{
    m_copyValues = makeAction(tr("&Copy values"), tr("Copy the values under the mouse or at the point cursor"),
                              iconOf("edit-copy", noStyleIcon));
    m_copyValues->setShortcuts(QKeySequence::Copy);
    // Only while the chart has the focus: Ctrl+C in the editor's fields copies their text.
    m_copyValues->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    m_copyImage =
        makeAction(tr("Copy &image"), tr("Copy the chart as an image"), iconOf("image-x-generic", noStyleIcon));
    m_copyImage->setShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+C")));
    m_saveImage = makeAction(tr("Save &image..."), tr("Save the chart as an image file"),
                             iconOf("document-save-as", QStyle::SP_DialogSaveButton));
    connect(m_copyValues, &QAction::triggered, this, &ChartActions::copyValuesNow);
    connect(m_copyImage, &QAction::triggered, m_chart, &ChartWidget::copyImage);
    connect(m_saveImage, &QAction::triggered, this, &ChartActions::saveImageAs);
}

void ChartActions::createUndoActions(PropertyEditor* editor)
{
    if (editor == nullptr)
        return;
    QUndoStack* stack = editor->undoStack();
    m_undo = stack->createUndoAction(this, tr("&Undo"));
    m_undo->setIcon(iconOf("edit-undo", noStyleIcon));
    m_undo->setShortcuts(QKeySequence::Undo);
    m_redo = stack->createRedoAction(this, tr("&Redo"));
    m_redo->setIcon(iconOf("edit-redo", noStyleIcon));
    m_redo->setShortcuts(QKeySequence::Redo);
    m_chart->addAction(m_undo);
    m_chart->addAction(m_redo);
}

void ChartActions::buildContextMenu()
{
    m_menu = new QMenu(m_chart);
    m_menu->addActions(viewActions());
    m_menu->addSeparator();
    m_menu->addActions({m_copyValues, m_copyImage, m_saveImage});
    // Queued: an action chosen from the menu runs after the menu hid.
    connect(m_menu, &QMenu::aboutToHide, this, [this] {
        QTimer::singleShot(0, this, [this] {
            m_menuValues.clear();
            updateEnabled();
        });
    });
}

QList<QAction*> ChartActions::viewActions() const
{
    return {m_home, m_back, m_forward, m_zoomIn, m_zoomOut, m_fitY};
}

QList<QAction*> ChartActions::editActions() const
{
    QList<QAction*> actions;
    if (m_undo != nullptr)
        actions << m_undo << m_redo;
    return actions << m_copyValues << m_copyImage;
}

void ChartActions::updateEnabled()
{
    const bool drawn = m_chart->frames() != nullptr;
    for (QAction* action : {m_home, m_zoomIn, m_zoomOut, m_fitY, m_copyImage, m_saveImage})
        action->setEnabled(drawn);
    m_back->setEnabled(drawn && m_chart->canGoBack());
    m_forward->setEnabled(drawn && m_chart->canGoForward());
    m_copyValues->setEnabled(drawn && !(m_menuValues.isEmpty() && m_chart->valuesText().isEmpty()));
}

void ChartActions::copyValuesNow()
{
    const QString text = m_menuValues.isEmpty() ? m_chart->valuesText() : m_menuValues;
    if (!text.isEmpty())
        QApplication::clipboard()->setText(text);
}

bool ChartActions::writeImage(const QString& path, QString* error) const
{
    QImageWriter writer(path);
    if (writer.write(m_chart->image()))
        return true;
    if (error != nullptr)
        *error = tr("%1: cannot save the image: %2").arg(QFileInfo(path).fileName(), writer.errorString());
    return false;
}

void ChartActions::saveImageAs()
{
    QString path = QFileDialog::getSaveFileName(m_chart, tr("Save the chart as an image"), QString(),
                                                tr("PNG images (*.png);;JPEG images (*.jpg *.jpeg);;All files (*)"));
    if (path.isEmpty())
        return;
    if (QFileInfo(path).suffix().isEmpty())
        path += QStringLiteral(".png");
    QString error;
    if (writeImage(path, &error))
        Q_EMIT imageSaved(path);
    else
        Q_EMIT failed(error);
}

void ChartActions::showContextMenu(QPoint position)
{
    m_menuValues = m_chart->valuesText();
    updateEnabled();
    m_menu->popup(m_chart->mapToGlobal(position));
}

// The point cursor, or else the middle of the plot.
QPoint ChartActions::keyboardMenuPosition() const
{
    const ChartFrames* frames = m_chart->frames();
    if (frames == nullptr)
        return m_chart->rect().center();
    const PointCursor cursor = m_chart->pointCursor();
    if (cursor.valid()) {
        const QPointF at = HoverText::pointPixel(*frames, cursor.series, cursor.index);
        if (std::isfinite(at.x()) && std::isfinite(at.y()))
            return at.toPoint();
    }
    return frames->layout().plot().center().toPoint();
}

bool ChartActions::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_chart)
        return false;
    switch (event->type()) {
    case QEvent::MouseButtonPress: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        m_rightDown = mouse->button() == Qt::RightButton;
        m_rightPressed = positionOf(mouse);
        break;
    }
    case QEvent::MouseButtonRelease: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        const bool click = (positionOf(mouse) - m_rightPressed).manhattanLength() < QApplication::startDragDistance();
        if (mouse->button() == Qt::RightButton && m_rightDown && click)
            showContextMenu(positionOf(mouse));
        m_rightDown = false;
        break;
    }
    case QEvent::ContextMenu:
        // The mouse's request comes with the press, while the press may still
        // become a rubber band; the release decides instead.
        if (static_cast<QContextMenuEvent*>(event)->reason() != QContextMenuEvent::Mouse)
            showContextMenu(keyboardMenuPosition());
        return true;
    case QEvent::KeyPress: {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_F10 && key->modifiers() == Qt::ShiftModifier) {
            showContextMenu(keyboardMenuPosition());
            return true;
        }
        break;
    }
    default:
        break;
    }
    return false;
}

} // namespace Orv::Chart
