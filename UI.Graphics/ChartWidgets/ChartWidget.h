#pragma once
// The chart in a widget, driven with the mouse and the keyboard as a host
// drives it: through the axes' range properties (see AxisRanges), then a new
// frame over the kept caches. The right button draws rubber bands; ChartActions
// gives a host the menus, toolbar and context menu (on a right click without
// a drag) that go with it.
//
// Mouse: the wheel zooms about the cursor (over an axis band, that axis
// alone), a left drag pans, a right drag (or a left drag with Shift) zooms to
// the rubber band, a double click goes back to the view the chart opened with
// (Home), a click on a legend entry hides or shows that series. Hovering
// shows a crosshair with the cursor's position in axis units and marks the
// nearest point of each series.
//
// Keyboard: arrows pan, + and - zoom, Home, Escape cancels a rubber band,
// Tab and Shift+Tab move the point cursor between series, Left and Right
// (Shift: by ten; Ctrl+Home and End to the ends) move it along one.
//
// Labels and read-outs follow the widget's locale (QWidget::setLocale); the
// chart's own texts stay as the model writes them.
//
// The gestures, the history, the hover and the kept picture are
// ChartNavigator's (ChartView), which the Qt Quick item shares, so that both
// hosts do the same to the same ranges.
//
// Every navigation is a view: `back()` and `forward()` walk through them.
// A view holds its ranges exactly: the axes it writes get "tightRange".
//
// The chart's picture is kept between paint events and drawn again only when
// the frame changes; hover, crosshair, rubber band, point cursor and focus
// frame are drawn over it. While the user drags, turns the wheel or holds a
// navigation key the frames are interactive ones (see ChartFrames), and the
// settled frame follows once the gesture ends.

#include "OrvChartWidgetsExport.h"
#include "ChartFrames.h"
#include "ChartNavigator.h"
#include "HoverText.h"
#include "ViewHistory.h"

#include <QImage>
#include <QPointF>
#include <QStringList>
#include <QWidget>

#include <cstddef>
#include <memory>
#include <vector>

namespace Orv::Chart {

// A point of one series, chosen with the keyboard.
struct PointCursor {
    // Positions in the frame's per-variable scaling; no series when npos.
    std::size_t series = npos;
    std::size_t index = 0;

    static constexpr std::size_t npos = static_cast<std::size_t>(-1);
    bool valid() const { return series != npos; }
    bool operator==(const PointCursor& other) const { return series == other.series && index == other.index; }
};

class ORV_CHARTWIDGETS_EXPORT ChartWidget : public QWidget {
    Q_OBJECT
public:
    explicit ChartWidget(QWidget* parent = nullptr);
    ~ChartWidget() override;

    // The chart, or none; it and its pairs must outlive the view or be
    // replaced first. Its ranges now are the Home view; the history starts anew.
    void setChart(KelChart* chart, const Orv::Chart::AxisPairs& pairs);
    // The frames drawn, null without a chart.
    const ChartFrames* frames() const { return m_nav->frames(); }
    // After a change of the chart outside the view: a new frame, over new
    // caches unless nothing the caches were built from changed (a colour, a
    // title or a range was edited, but no data, unit or binding).
    void reload();

    // Draws these live series, one per variable of the chart, in place of the
    // variables' own items (see ChartFrames::showLive; LiveFeed does this);
    // none: back to the variables.
    void showLive(std::vector<const KelChartLiveSeries*> series);
    // A new frame after items were appended to the live series: an
    // interactive one while they keep coming, the settled one when they stop.
    void liveAppended();

    // What the hover shows: the cursor's position, then one line per series.
    const QStringList& hoverLines() const { return m_nav->hoverLines(); }
    // The cursor's position in axis units ("x = 12.5 h, y = 3.2 degC"), empty outside the plot.
    QString readOut() const { return m_nav->readOut(); }

    bool canGoBack() const { return m_nav->history().canGoBack(); }
    bool canGoForward() const { return m_nav->history().canGoForward(); }
    const ViewHistory& history() const { return m_nav->history(); }

    PointCursor pointCursor() const { return m_cursor; }
    // Moves the keyboard's point cursor; out of range positions are clamped.
    void setPointCursor(std::size_t series, std::size_t index);
    // "air temperature: x = 13 h, y = 8.13 degC", or empty without a cursor.
    QString pointCursorText() const;

    // What the view tells of values now: the point cursor's, else the hover's read-out and lines.
    QString valuesText() const;

    // The chart as drawn now, without hover or rubber band.
    QImage image() const;
    // The picture of the chart kept between paint events, at the widget's
    // pixel ratio and without overlays; null before the first paint.
    QImage keptFrame() const;

public Q_SLOTS:
    void home();
    void back();
    void forward();
    // About the plot's centre, by one wheel notch.
    void zoomIn();
    void zoomOut();
    // The y axes to the data inside the x ranges shown.
    void fitY();
    // Moves the content by that many pixels.
    void panBy(QPointF pixels);
    // Copies `valuesText()`.
    void copyValues() const;
    // Copies the chart as an image.
    void copyImage() const;

Q_SIGNALS:
    // The view wrote axis ranges into the chart.
    void rangesChanged();
    void hoverChanged(const QString& text);
    // `canGoBack` or `canGoForward` may have changed.
    void historyChanged();
    void pointCursorChanged();
    // A legend click wrote a series' "enabled".
    void seriesToggled(const QString& variableName, bool shown);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    std::vector<std::size_t> drawnSeries() const;
    bool moveCursorToSeries(bool next);
    std::size_t nearestOnSeries(std::size_t series) const;
    bool pointCursorKey(const QKeyEvent& event);
    void moveCursorAlong(long steps);
    void keepCursorInView();
    void paintCursorRing(QPainter& painter) const;
    void paintHover(QPainter& painter) const;
    void paintFocus(QPainter& painter) const;

    // The frames, their kept picture, the history, the gestures and the hover.
    ChartNavigator* m_nav;
    PointCursor m_cursor;
};

} // namespace Orv::Chart
