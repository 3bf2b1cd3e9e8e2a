#pragma once
// The chart in a Qt Quick scene, driven as the chart widget is and through
// the same navigation (ChartNavigator), so that both behave alike: the wheel
// zooms about the cursor (over an axis band, that axis alone), a left drag
// pans, a right drag (or a left drag with Shift) zooms to the rubber band, a
// double click goes Home, a click on a legend entry hides or shows that
// series, hovering shows a crosshair and the read-out; a pinch (two touch
// points, or the platform's zoom gesture) zooms about its centre, one touch
// point pans. Keys: arrows pan, + and - zoom, Home, Escape drops a band.
//
// In QML (after `ChartItem::registerQmlTypes()`):
//     import Orv.Chart 1.0
//     Chart { source: "file:///data/readings.csv"; xAxis.min: 0; onReadOutChanged: ... }
// `source` names a data file (".csv", ".tsv", ".txt": a chart set up for it)
// or a chart file (its variables get the sample's data by name); an empty
// source is the built-in sample. A file that cannot be loaded leaves the
// chart shown as it was and sets `errorString`; a good one clears it.
//
// The item is a painted item: the chart's picture is kept between frames at
// the window's device pixel ratio, drawn again only when the frame changes,
// and hover, crosshair and band are painted over it. The chart belongs to
// the item (from `source`), or to the host (`setChart`): then it must outlive
// the item or be replaced first.

#include "OrvChartQuickExport.h"
#include "ChartAxis.h"
#include "ChartFrames.h"
#include "ChartNavigator.h"

#include <QImage>
#include <QQuickPaintedItem>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <memory>

namespace Orv::Chart {

class ChartSource;

class ORV_CHARTQUICK_EXPORT ChartItem : public QQuickPaintedItem {
    Q_OBJECT
    Q_PROPERTY(QUrl source READ source WRITE setSource NOTIFY sourceChanged)
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY titleChanged)
    Q_PROPERTY(Orv::Chart::ChartAxis* xAxis READ xAxis CONSTANT)
    Q_PROPERTY(Orv::Chart::ChartAxis* yAxis READ yAxis CONSTANT)
    // The cursor's position in axis units; empty outside the plot.
    Q_PROPERTY(QString readOut READ readOut NOTIFY hoverChanged)
    // The nearest point of each series to the cursor, one line each.
    Q_PROPERTY(QStringList hoverLines READ hoverLines NOTIFY hoverChanged)
    Q_PROPERTY(QString errorString READ errorString NOTIFY errorStringChanged)
    Q_PROPERTY(bool hasChart READ hasChart NOTIFY chartChanged)
    Q_PROPERTY(bool canGoBack READ canGoBack NOTIFY historyChanged)
    Q_PROPERTY(bool canGoForward READ canGoForward NOTIFY historyChanged)
public:
    explicit ChartItem(QQuickItem* parent = nullptr);
    ~ChartItem() override;

    // Registers `Chart` and `ChartAxis` as the QML module Orv.Chart 1.0; once per process.
    static void registerQmlTypes();

    QUrl source() const { return m_source; }
    void setSource(const QUrl& source);
    // A chart the host owns in place of the source's.
    void setChart(KelChart* chart, const Orv::Chart::AxisPairs& pairs);

    QString title() const;
    void setTitle(const QString& title);
    ChartAxis* xAxis() const { return m_xAxis; }
    ChartAxis* yAxis() const { return m_yAxis; }
    QString readOut() const { return m_nav->readOut(); }
    const QStringList& hoverLines() const { return m_nav->hoverLines(); }
    QString errorString() const { return m_error; }
    bool hasChart() const { return m_nav->frames() != nullptr; }
    bool canGoBack() const { return m_nav->history().canGoBack(); }
    bool canGoForward() const { return m_nav->history().canGoForward(); }

    const ChartFrames* frames() const { return m_nav->frames(); }
    ChartNavigator& navigator() { return *m_nav; }
    // After a change of the chart outside the item: a new frame.
    void reload();
    // The picture kept between frames, without overlays; null before the first paint.
    QImage keptFrame() const { return m_nav->keptPicture(); }

    void paint(QPainter* painter) override;

public Q_SLOTS:
    void home();
    void back();
    void forward();
    void zoomIn();
    void zoomOut();
    void fitY();

Q_SIGNALS:
    void sourceChanged();
    void titleChanged();
    // The view wrote axis ranges into the chart (a gesture, Home, a written range).
    void rangesChanged();
    void hoverChanged();
    void historyChanged();
    void errorStringChanged();
    // Another chart is shown, or none.
    void chartChanged();
    void seriesToggled(const QString& variableName, bool shown);

protected:
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
#else
    void geometryChanged(const QRectF& newGeometry, const QRectF& oldGeometry) override;
#endif
    bool event(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void hoverEnterEvent(QHoverEvent* event) override;
    void hoverMoveEvent(QHoverEvent* event) override;
    void hoverLeaveEvent(QHoverEvent* event) override;
    void touchEvent(QTouchEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QSize hostSize() const;
    qreal pixelRatio() const;
    void show(KelChart* chart, const Orv::Chart::AxisPairs& pairs);
    KelChartAxis* firstAxis(bool x) const;
    bool shownRange(const KelChartAxis* axis, double& min, double& max) const;
    void axesChanged();
    bool nativeGesture(QEvent* event);
    void touchPinch(QPointF centre, double distance);

    ChartNavigator* m_nav;
    ChartAxis* m_xAxis;
    ChartAxis* m_yAxis;
    std::unique_ptr<ChartSource> m_loaded;
    QUrl m_source;
    QString m_error;
    // The last centre distance of a two-point touch; zero while there is none.
    double m_pinchDistance = 0;
};

} // namespace Orv::Chart
