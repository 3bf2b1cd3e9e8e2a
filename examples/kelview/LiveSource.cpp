#include "LiveSource.h"

#include "LineSource.h"
#include "SignalGenerator.h"

#include "LiveFeed.h"

namespace kelview {

std::unique_ptr<LiveSource> LiveSource::open(const LiveOptions& options)
{
    switch (options.source) {
    case LiveOptions::Source::Generator:
        return std::make_unique<SignalGenerator>(options.rate);
    case LiveOptions::Source::StandardInput:
        return std::make_unique<LineSource>(0, false, QStringLiteral("standard input"), LineSource::AtEnd::Stop);
    case LiveOptions::Source::Path:
        return LineSource::open(options.path);
    case LiveOptions::Source::None:
        break;
    }
    return nullptr;
}

// The thread runs a subclass's code: subclasses stop it in their own destructors, this is the last resort.
LiveSource::~LiveSource()
{
    stop();
}

void LiveSource::start()
{
    m_thread = std::thread([this] { run(); });
}

void LiveSource::stop()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_stopping = true;
    }
    m_wake.notify_all();
    if (m_thread.joinable())
        m_thread.join();
}

void LiveSource::feed(Orv::Chart::LiveFeed& feed, std::vector<std::size_t> series)
{
    {
        // The kept rows go first: the thread posts only once it sees the feed.
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_feed = &feed;
        m_series = std::move(series);
        post(std::move(m_kept));
    }
    m_wake.notify_all();
}

bool LiveSource::pause(std::chrono::milliseconds time)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return !m_wake.wait_for(lock, time, [this] { return m_stopping.load(); });
}

bool LiveSource::waitForFeed()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_wake.wait(lock, [this] { return m_stopping || m_feed != nullptr; });
    return !m_stopping;
}

void LiveSource::post(std::vector<Items> items)
{
    for (std::size_t s = 0; s < items.size() && s < m_series.size(); ++s)
        if (!items[s].x.empty() && m_series[s] != noSeries)
            m_feed->post(m_series[s], std::move(items[s].x), std::move(items[s].y));
}

// A data set is no meta type to queue as a signal's argument: the signal is sent from the window's thread.
void LiveSource::tellReady(const Orv::Chart::DataSet& table)
{
    const auto send = [this, table] { Q_EMIT ready(table); };
    QMetaObject::invokeMethod(this, send, Qt::QueuedConnection);
}

} // namespace kelview
