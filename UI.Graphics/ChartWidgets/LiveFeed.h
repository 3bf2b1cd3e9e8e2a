#pragma once
// Live data in a chart widget: every variable of the widget's chart is drawn
// from a live series (KelChartLiveSeries) that grows as items arrive, instead
// of from its own iterator.
//
// Items may be posted from any thread: they wait in a queue, and the widget's
// thread drains the queue once per frame (at most `framesPerSecond` times a
// second), appends them and draws one frame. A frame costs the same whether
// the series hold a thousand points or ten million.
//
// Settings, as properties: `limit` bounds the items kept per series (the
// oldest are dropped; 0 keeps all), `followWidth` makes the bottom x axis
// show the newest `followWidth` x units and follow them (0: the axis stays
// where the chart or the user puts it), `paused` holds the view still: items
// keep arriving into the queue (at most `limit` per series) and are drawn
// once it is resumed.
//
// The chart's variables must be in the units of their axes: live items are
// drawn as they come, without a unit conversion.

#include "OrvChartWidgetsExport.h"

#include <QObject>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

class KelChartLiveSeries;

namespace Orv::Chart {

class ChartWidget;

class ORV_CHARTWIDGETS_EXPORT LiveFeed : public QObject {
    Q_OBJECT
    Q_PROPERTY(qulonglong limit READ limitItems WRITE setLimitItems NOTIFY settingsChanged)
    Q_PROPERTY(double followWidth READ followWidth WRITE setFollowWidth NOTIFY settingsChanged)
    Q_PROPERTY(bool paused READ paused WRITE setPaused NOTIFY settingsChanged)
public:
    static constexpr int framesPerSecond = 60;

    // Feeds the variables of the widget's chart, which must be set first and
    // stay while the feed lives; the widget shows the live series from now on.
    explicit LiveFeed(ChartWidget& widget, std::size_t limit = 0, QObject* parent = nullptr);
    ~LiveFeed() override;

    // Thread safe. Items for the variable at `series` (its position in the
    // chart's variable list); +infinity marks an undefined component.
    void post(std::size_t series, std::vector<double> x, std::vector<double> y);

    std::size_t limit() const;
    void setLimit(std::size_t items);
    qulonglong limitItems() const { return limit(); }
    void setLimitItems(qulonglong items) { setLimit(static_cast<std::size_t>(items)); }
    double followWidth() const;
    void setFollowWidth(double width);
    bool paused() const;
    void setPaused(bool paused);

    std::size_t seriesCount() const;
    const KelChartLiveSeries& series(std::size_t index) const;
    // Items appended to all series since the feed started, and frames drawn with new items.
    std::uint64_t itemsAppended() const;
    std::uint64_t framesDrawn() const;

    // Drains the queue now and draws a frame when it held items (the timer
    // does this by itself; tests and hosts with their own clock call it).
    void drain();

Q_SIGNALS:
    void settingsChanged();
    // After a frame with new items was drawn.
    void framed();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Orv::Chart
