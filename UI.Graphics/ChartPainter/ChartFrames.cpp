#include "ChartFrames.h"

#include <algorithm>

namespace Orv::Chart {

namespace {

// The tick request of the caching run; the frames ask again once the layout is known.
constexpr unsigned cachingTicks = 8;

} // namespace

ChartFrames::ChartFrames(KelChart& chart, const Orv::Chart::AxisPairs& pairs)
    : m_chart(chart)
    , m_pairs(pairs)
    , m_size(800, 500)
{
    reload();
}

ChartFrames::~ChartFrames()
{
    clear();
}

void ChartFrames::clear()
{
    m_renderer.reset();
    m_pipeline.reset();
    m_views.clear();
    m_data.reset();
}

void ChartFrames::reload()
{
    clear();
    if (live()) {
        takeLiveSeries();
        rescale(m_size);
        return;
    }
    m_data = std::make_unique<KelChartPipeline>(
        m_chart.unitSystem, *m_pairs.x, *m_pairs.y, *m_pairs.z, m_chart.variables,
        KelChartPipeline::Settings{KelChartPipeline::everyAxis(cachingTicks), false, QStringList()});
    const KelChartVariableListCache& cache = m_data->cache();
    for (std::size_t i = 0; i < cache.size(); ++i)
        m_views.push_back(std::make_unique<KelChartDecimatedView>(cache.cache(i)));
    rescale(m_size);
}

void ChartFrames::rescale(QSize size)
{
    m_size = size.expandedTo(QSize(Orv::Chart::ChartLayout::minimumWidth, Orv::Chart::ChartLayout::minimumHeight));
    m_renderer.reset();
    m_pipeline = std::make_unique<Orv::Chart::Plot>(m_chart, m_pairs, Orv::Chart::TickRoom{m_size, 100, {}, m_locale},
                                                      caches());
    std::vector<const KelChartDecimatedView*> views;
    for (const auto& view : m_views)
        views.push_back(view.get());
    // A click on a hidden series' faded entry shows it again.
    m_renderer = std::make_unique<Orv::Chart::ChartPainter>(*m_pipeline, m_size, std::move(views), true);
    m_renderer->setLocale(m_locale);
    m_renderer->setInteractive(m_interactive);
}

const KelChartVariableListCache& ChartFrames::caches() const
{
    return live() ? m_liveCaches : m_data->cache();
}

void ChartFrames::showLive(std::vector<const KelChartLiveSeries*> series)
{
    m_live = std::move(series);
    reload();
}

void ChartFrames::liveAppended()
{
    if (!live())
        return;
    m_renderer.reset();
    m_pipeline.reset();
    m_views.clear();
    takeLiveSeries();
    rescale(m_size);
}

// The series with something to draw, in the order the list cache puts their
// stand-in caches, each with a view that reads it.
void ChartFrames::takeLiveSeries()
{
    std::vector<KelChartVariableCache> standIns;
    for (const KelChartLiveSeries* series : m_live)
        if (series->variable().enabled.get())
            standIns.push_back(series->cache());
    m_liveCaches = KelChartVariableListCache(std::move(standIns));
    for (std::size_t i = 0; i < m_liveCaches.size(); ++i) {
        const auto drawn = std::find_if(m_live.begin(), m_live.end(), [&](const KelChartLiveSeries* series) {
            return &series->variable() == &m_liveCaches.cache(i).variable();
        });
        m_views.push_back(std::make_unique<KelChartDecimatedView>(**drawn));
    }
}

void ChartFrames::setLocale(const QLocale& locale)
{
    m_locale = locale;
    rescale(m_size);
}

void ChartFrames::setInteractive(bool on)
{
    m_interactive = on;
    m_renderer->setInteractive(on);
}

void ChartFrames::paint(QPainter& painter) const
{
    m_renderer->paint(painter);
}

} // namespace Orv::Chart
