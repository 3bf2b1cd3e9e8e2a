#pragma once
// The navigation of one chart's view, the same in every host that shows it
// (a widget, a Qt Quick item): the frames and their kept picture, the views
// the user walked through, the hover, and the gestures that write the axes'
// ranges (see AxisRanges). Gestures come as positions in the host's logical
// pixels, wheel angles, buttons and modifiers rather than a toolkit's events.
//
//   - The wheel zooms about the cursor (over an axis band, that axis alone);
//     notches closer together than a moment are one step of the history.
//   - A pan drag moves the ranges from those at the press by the whole drag
//     (a drag that starts on an axis's labels moves that axis alone); a band
//     drag (right button, or left with Shift) zooms to its rectangle once
//     released. Drags shorter than a few pixels are clicks.
//   - A pinch zooms about its centre, as the wheel does.
//   - A left click on a legend entry hides or shows that series, through its
//     "enabled"; a double click in the plot goes Home.
// While the user drags, turns the wheel or pinches the frames are
// interactive ones (see ChartFrames): a drag settles on release, the wheel,
// a pinch and held keys after a short rest (`settleSoon`).
//
// Without a chart every gesture is ignored. The chart and its pairs must
// outlive the navigator or be replaced first. The host repaints on
// `changed()`, drawing `picture()` and the overlays (see ChartOverlays).

#include "OrvChartViewExport.h"
#include "ChartFrames.h"
#include "HoverText.h"
#include "ViewHistory.h"

#include <QElapsedTimer>
#include <QImage>
#include <QLocale>
#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QSize>
#include <QStringList>

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

class QTimer;

namespace Orv::Chart {

class AxisRanges;
class CacheInputs;
class KeptFrame;

class ORV_CHARTVIEW_EXPORT ChartNavigator : public QObject {
    Q_OBJECT
public:
    enum class Drag { None, Pan, Band };

    // `hostSize` tells the host's size in logical pixels whenever a frame is laid out.
    explicit ChartNavigator(std::function<QSize()> hostSize, QObject* parent = nullptr);
    ~ChartNavigator() override;

    // The chart, or none; its ranges now are the Home view and the history starts anew.
    void setChart(KelChart* chart, const Orv::Chart::AxisPairs& pairs);
    ChartFrames* frames() const { return m_frames.get(); }
    // After a change of the chart outside the view: a new frame, over new
    // caches unless nothing the caches were built from changed.
    void reload();
    void showLive(std::vector<const KelChartLiveSeries*> series);
    void liveAppended();
    // The host's size changed.
    void resized();
    // The locale of the labels and read-outs.
    void setLocale(const QLocale& locale);
    const QLocale& locale() const { return m_locale; }

    // The chart's picture at `ratio` device pixels per logical one, kept
    // until the frame changes; without overlays.
    const QImage& picture(qreal ratio);
    // The picture as last drawn; null before the first.
    const QImage& keptPicture() const;

    const ViewHistory& history() const { return m_history; }
    void home();
    void back();
    void forward();
    void zoomIn();
    void zoomOut();
    void fitY();
    // The host wrote axis ranges itself (a field, a script): a new frame and a view of the history.
    void rangesEdited();
    // Moves the content by that many pixels.
    void panBy(QPointF pixels);
    // Moves the ranges so that the value under `from` comes under `to`.
    void pan(QPointF from, QPointF to);

    // False when the wheel had nothing to zoom about (over the title or the legend).
    bool wheel(QPointF at, int eighths);
    // `scale` is the pinch's change since its last step (above 1 spreads the fingers: zoom in).
    void pinch(QPointF centre, double scale);
    // True when the press was a click on a legend entry and nothing more follows.
    bool press(QPointF at, Qt::MouseButton button, Qt::KeyboardModifiers modifiers);
    void move(QPointF at);
    void release(QPointF at);
    void doubleClick(QPointF at);
    // Drops a band being drawn; false when there was none.
    bool cancelBand();
    // Arrows pan by a tenth of the plot, + (or =) and - zoom about its centre, Home goes home,
    // Escape drops a rubber band; false for any other key, and for Escape without a band.
    bool navigateByKey(int key);
    // No hover: the cursor left the host, or the keyboard took over.
    void clearHover();

    // Interactive frames from now on, settled after a short rest unless more follows.
    void settleSoon();
    // The hover again at the still cursor, after the frame changed under it.
    void refreshHover();

    Drag drag() const { return m_drag; }
    // The band being drawn, normalised.
    QRectF band() const { return QRectF(m_pressed, m_current).normalized(); }
    const QStringList& hoverLines() const { return m_hover; }
    const std::vector<HoverText::Hit>& hits() const { return m_hits; }
    const QString& readOut() const { return m_readOut; }
    QPointF hoverAt() const { return m_hoverAt; }

Q_SIGNALS:
    // The host should paint again.
    void changed();
    // The view wrote axis ranges into the chart.
    void rangesChanged();
    void hoverChanged(const QString& text);
    void historyChanged();
    void seriesToggled(const QString& variableName, bool shown);
    // The frames were rebuilt after a change of the chart or its data.
    void reloaded();

private:
    bool keyStep(const std::function<void()>& step);
    void rescale();
    void frameChanged();
    void beginInteraction();
    void settle();
    void rangesWritten();
    void viewChosen();
    void showView(const ViewState& state);
    void zoomAt(QPointF centre, double factor);
    void stepInGesture();
    bool toggleLegendEntry(QPointF pixel);
    void updateHover(QPointF pixel);
    AxisRanges ranges() const;

    std::function<QSize()> m_hostSize;
    QLocale m_locale = QLocale::c();
    std::unique_ptr<ChartFrames> m_frames;
    std::unique_ptr<KeptFrame> m_picture;
    // What the frames' caches were built from, to tell an edit of the look from one of the data.
    std::unique_ptr<CacheInputs> m_cacheInputs;
    // Ends the interactive frames a while after the last wheel notch, pinch step or key.
    QTimer* m_settle;
    ViewHistory m_history;
    Drag m_drag = Drag::None;
    QPointF m_pressed;
    QPointF m_current;
    // The ranges at the press: a pan moves from them by the whole drag, so
    // that rounding does not add up over many small steps.
    std::unique_ptr<AxisRanges> m_pressRanges;
    // The axis a drag on its labels moves alone, or every axis (npos).
    std::size_t m_dragSpan = static_cast<std::size_t>(-1);
    QElapsedTimer m_wheelClock;
    QStringList m_hover;
    std::vector<HoverText::Hit> m_hits;
    QString m_readOut;
    // The hovered pixel; none when the cursor is not over the host.
    QPointF m_hoverAt;
    bool m_hovering = false;
};

} // namespace Orv::Chart
