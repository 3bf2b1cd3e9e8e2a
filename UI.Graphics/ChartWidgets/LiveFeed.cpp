#include "LiveFeed.h"

#include "ChartWidget.h"

#include "KelChartAxisContinuous.h"
#include "KelChartLiveSeries.h"
#include "KelChartVariableList.h"

#include <QTimer>

#include <algorithm>
#include <cmath>
#include <limits>
#include <mutex>

namespace Orv::Chart {

namespace {

// Items waiting for the next frame, for one series.
struct Queued {
    std::vector<double> x;
    std::vector<double> y;

    void add(const std::vector<double>& moreX, const std::vector<double>& moreY)
    {
        const std::size_t count = std::min(moreX.size(), moreY.size());
        x.insert(x.end(), moreX.begin(), moreX.begin() + static_cast<std::ptrdiff_t>(count));
        y.insert(y.end(), moreY.begin(), moreY.begin() + static_cast<std::ptrdiff_t>(count));
    }
    // Only the newest `limit` can ever be kept; trimmed in large steps so that
    // a long pause costs a constant time per item.
    void trimTo(std::size_t limit)
    {
        if (limit == 0 || x.size() <= 2 * limit)
            return;
        const auto drop = static_cast<std::ptrdiff_t>(x.size() - limit);
        x.erase(x.begin(), x.begin() + drop);
        y.erase(y.begin(), y.begin() + drop);
    }
};

} // namespace

struct LiveFeed::Private {
    ChartWidget& widget;
    std::vector<std::unique_ptr<KelChartLiveSeries>> series;
    std::size_t limit;
    double followWidth = 0.0;
    bool paused = false;
    std::uint64_t appended = 0;
    std::uint64_t frames = 0;
    QTimer timer;

    std::mutex mutex;
    std::vector<Queued> queue;

    Private(ChartWidget& w, std::size_t l)
        : widget(w)
        , limit(l)
    {
    }

    std::vector<Queued> takeQueue()
    {
        std::vector<Queued> taken(queue.size());
        const std::lock_guard<std::mutex> lock(mutex);
        queue.swap(taken);
        return taken;
    }
    std::size_t append(std::vector<Queued> taken)
    {
        std::size_t count = 0;
        for (std::size_t i = 0; i < taken.size() && i < series.size(); ++i) {
            series[i]->append(taken[i].x.data(), taken[i].y.data(), taken[i].x.size());
            count += taken[i].x.size();
        }
        return count;
    }
    double newestX() const
    {
        double newest = -std::numeric_limits<double>::infinity();
        for (const auto& s : series) {
            const KelChartDecimatedView::Data data = s->data();
            for (std::size_t k = data.size; k-- > 0;)
                if (std::isfinite(data.x[k])) {
                    newest = std::max(newest, data.x[k]);
                    break;
                }
        }
        return newest;
    }
    // The bottom axis shows the newest `followWidth` units, exactly.
    void follow()
    {
        const ChartFrames* frames = widget.frames();
        const double newest = newestX();
        if (followWidth <= 0 || !frames || !std::isfinite(newest))
            return;
        auto* axis = dynamic_cast<KelChartAxisContinuous*>(frames->pairs().x->first());
        if (!axis)
            return;
        axis->autoScale.set(false);
        axis->tightRange.set(true);
        axis->min.set(newest - followWidth);
        axis->max.set(newest);
    }
};

LiveFeed::LiveFeed(ChartWidget& widget, std::size_t limit, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>(widget, limit))
{
    const ChartFrames* frames = widget.frames();
    if (frames) {
        const KelChartVariableList& variables = frames->chart().variables;
        for (unsigned i = 0; i < variables.size(); ++i)
            d->series.push_back(std::make_unique<KelChartLiveSeries>(*variables.at(i), limit));
    }
    d->queue.resize(d->series.size());
    std::vector<const KelChartLiveSeries*> shown;
    for (const auto& s : d->series)
        shown.push_back(s.get());
    widget.showLive(std::move(shown));
    connect(&d->timer, &QTimer::timeout, this, &LiveFeed::drain);
    d->timer.start(1000 / framesPerSecond);
}

LiveFeed::~LiveFeed()
{
    d->widget.showLive({});
}

void LiveFeed::post(std::size_t series, std::vector<double> x, std::vector<double> y)
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    if (series >= d->queue.size())
        return;
    Queued& queued = d->queue[series];
    if (queued.x.empty() && x.size() == y.size()) {
        queued.x = std::move(x);
        queued.y = std::move(y);
    } else {
        queued.add(x, y);
    }
    queued.trimTo(d->limit);
}

void LiveFeed::drain()
{
    if (d->paused)
        return;
    const std::size_t count = d->append(d->takeQueue());
    if (count == 0)
        return;
    d->appended += count;
    d->follow();
    d->widget.liveAppended();
    ++d->frames;
    Q_EMIT framed();
}

std::size_t LiveFeed::limit() const
{
    return d->limit;
}

void LiveFeed::setLimit(std::size_t items)
{
    if (items == d->limit)
        return;
    d->limit = items;
    for (const auto& s : d->series)
        s->setLimit(items);
    d->widget.liveAppended();
    Q_EMIT settingsChanged();
}

double LiveFeed::followWidth() const
{
    return d->followWidth;
}

void LiveFeed::setFollowWidth(double width)
{
    width = std::isfinite(width) && width > 0 ? width : 0.0;
    if (width == d->followWidth)
        return;
    d->followWidth = width;
    d->follow();
    d->widget.liveAppended();
    Q_EMIT settingsChanged();
}

bool LiveFeed::paused() const
{
    return d->paused;
}

void LiveFeed::setPaused(bool paused)
{
    if (paused == d->paused)
        return;
    d->paused = paused;
    Q_EMIT settingsChanged();
    drain();
}

std::size_t LiveFeed::seriesCount() const
{
    return d->series.size();
}

const KelChartLiveSeries& LiveFeed::series(std::size_t index) const
{
    return *d->series.at(index);
}

std::uint64_t LiveFeed::itemsAppended() const
{
    return d->appended;
}

std::uint64_t LiveFeed::framesDrawn() const
{
    return d->frames;
}

} // namespace Orv::Chart
