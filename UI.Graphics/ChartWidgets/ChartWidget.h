#pragma once
// The chart in a widget, moved with the mouse as a host moves it: through
// the axes' range properties (see AxisRanges), then a new frame over the kept
// caches. The wheel zooms about the cursor, a left drag pans, a right drag
// (or a left drag with Shift) zooms to the rubber band, a double click gives
// the axes their automatic ranges back. Hovering lists the nearest point of
// each series.

#include "OrvChartWidgetsExport.h"
#include "ChartFrames.h"

#include <QPointF>
#include <QStringList>
#include <QWidget>

#include <memory>

namespace Orv::Chart {

class ORV_CHARTWIDGETS_EXPORT ChartWidget : public QWidget {
    Q_OBJECT
public:
    explicit ChartWidget(QWidget* parent = nullptr);
    ~ChartWidget() override;

    // The chart, or none; it and its pairs must outlive the view or be replaced first.
    void setChart(KelChart* chart, const Orv::Chart::AxisPairs& pairs);
    // The frames drawn, null without a chart.
    const ChartFrames* frames() const { return m_frames.get(); }
    // After a change of the chart outside the view: new caches and a new frame.
    void reload();
    const QStringList& hoverLines() const { return m_hover; }

Q_SIGNALS:
    // The view wrote axis ranges into the chart.
    void rangesChanged();
    void hoverChanged(const QString& text);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    enum class Drag { None, Pan, Band };

    void rangesWritten();
    void updateHover(QPointF pixel);
    void paintBand(QPainter& painter) const;
    void paintHover(QPainter& painter) const;

    std::unique_ptr<ChartFrames> m_frames;
    Drag m_drag = Drag::None;
    QPointF m_pressed;
    QPointF m_current;
    // The ranges at the press: a pan moves from them by the whole drag, so
    // that rounding does not add up over many small steps.
    std::unique_ptr<class AxisRanges> m_pressRanges;
    QStringList m_hover;
    QPointF m_hoverAt;
};

} // namespace Orv::Chart
