#pragma once
// Where live data come from: a producer on a thread of its own. It first
// tells what table it fills (`ready`: the series with their names and units,
// and the rows it has so far); the window sets a chart up for that table and
// hands those rows to its variables (`bind`); from `feed` on the producer
// posts its items to the live feed in batches. Its end, its faults and its
// remarks on the data are signals sent from its thread: queued, they arrive
// on the window's.

#include "ViewOptions.h"

#include "CsvLines.h"
#include "DataSet.h"
#include "ElementClasses.h"

#include <QObject>
#include <QString>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

class KelChartVariableList;

namespace Orv::Chart {
class LiveFeed;
} // namespace Orv::Chart

namespace kelview {

class LiveSource : public QObject {
    Q_OBJECT
public:
    // Items of one series: x and y, +infinity where a value is missing.
    using Items = Orv::Chart::CsvLines::Items;
    // A feed position for a series that has no variable.
    static constexpr std::size_t noSeries = static_cast<std::size_t>(-1);

    // The source a command line asks for; a path that does not open throws a kelchart::Failure.
    static std::unique_ptr<LiveSource> open(const LiveOptions& options);

    // Subclasses `stop` in their own destructors: the thread runs their code.
    ~LiveSource() override;

    // What the source is, for titles and messages ("standard input").
    virtual QString name() const = 0;
    // Starts the thread; `ready` follows once the table is known.
    void start();
    // Hands the rows that came with `ready` to the variables; gives the series that found none.
    virtual QStringList bind(KelChartVariableList& variables, const Orv::Chart::AxisPairs& pairs) = 0;
    // From now on items go to `feed`: those of table series i to its series `series[i]` (or nowhere:
    // `noSeries`). The feed must outlive the source's thread: `stop` it first.
    void feed(Orv::Chart::LiveFeed& feed, std::vector<std::size_t> series);
    // Ends the thread; nothing is posted after.
    void stop();

Q_SIGNALS:
    void ready(const Orv::Chart::DataSet& table);
    // The input ended; what arrived stays.
    void ended(const QString& message);
    void failed(const QString& message);
    void remark(const QString& text);

protected:
    LiveSource() = default;

    // The thread's work; it ends when `stopping` turns true.
    virtual void run() = 0;
    bool stopping() const { return m_stopping; }
    // Waits that long, or less when stopped; gives whether to go on.
    bool pause(std::chrono::milliseconds time);
    // Waits for `feed`; false when stopped first.
    bool waitForFeed();
    // The bound rows wait for the feed; later ones go straight to it.
    void keepForFeed(std::vector<Items> rows) { m_kept = std::move(rows); }
    void post(std::vector<Items> items);
    // `ready`, from the thread.
    void tellReady(const Orv::Chart::DataSet& table);

private:
    std::thread m_thread;
    std::atomic<bool> m_stopping{false};
    std::mutex m_mutex;
    std::condition_variable m_wake;
    Orv::Chart::LiveFeed* m_feed = nullptr;
    std::vector<std::size_t> m_series;
    std::vector<Items> m_kept;
};

} // namespace kelview
