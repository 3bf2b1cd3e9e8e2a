#include "SignalGenerator.h"

#include "DataBinding.h"

#include <cmath>

namespace kelview {

namespace Chart = Orv::Chart;

namespace {

constexpr double twoPi = 6.283185307179586;

Chart::DataSeries channel(const char* name, const char* unit)
{
    Chart::DataSeries series;
    series.x = {QStringLiteral("time"), QStringLiteral("s"), {}, {}};
    series.y = {QString::fromLatin1(name), QString::fromLatin1(unit), {}, {}};
    return series;
}

double squareWave(double t)
{
    return std::fmod(t * 0.2, 1.0) < 0.5 ? 4.0 : 3.0;
}

double sawtooth(double t)
{
    return -4.5 + 1.5 * std::fmod(t * 0.25, 1.0);
}

} // namespace

SignalGenerator::SignalGenerator(double rate)
    : m_rate(rate)
{
}

SignalGenerator::~SignalGenerator()
{
    stop();
}

QString SignalGenerator::name() const
{
    return QStringLiteral("generator");
}

Chart::DataSet SignalGenerator::table()
{
    Chart::DataSet data;
    data.series = {channel("sine", "V"), channel("square", "V"), channel("sawtooth", "V"),
                   channel("temperature", "degC")};
    return data;
}

// No rows yet: the variables get the units.
QStringList SignalGenerator::bind(KelChartVariableList& variables, const Chart::AxisPairs& pairs)
{
    return Chart::bindData(variables, pairs, table());
}

std::vector<LiveSource::Items> SignalGenerator::produce(std::uint64_t first, std::uint64_t end)
{
    constexpr double meanTemperature = 21.0;
    constexpr double pullPerSecond = 0.05;
    constexpr double wanderPerRootSecond = 0.4;
    const double step = 1.0 / m_rate;
    std::vector<Items> items(4);
    for (Items& one : items) {
        one.x.reserve(end - first);
        one.y.reserve(end - first);
    }
    for (std::uint64_t k = first; k < end; ++k) {
        const double t = static_cast<double>(k) * step;
        m_temperature += pullPerSecond * (meanTemperature - m_temperature) * step
                         + wanderPerRootSecond * std::sqrt(step) * m_noise(m_random);
        const double values[] = {2.0 * std::sin(twoPi * 0.5 * t) + 0.15 * m_noise(m_random), squareWave(t), sawtooth(t),
                                 m_temperature};
        for (std::size_t c = 0; c < items.size(); ++c) {
            items[c].x.push_back(t);
            items[c].y.push_back(values[c]);
        }
    }
    return items;
}

void SignalGenerator::run()
{
    tellReady(table());
    if (!waitForFeed())
        return;
    const auto start = std::chrono::steady_clock::now();
    std::uint64_t made = 0;
    while (pause(tick)) {
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        const auto due = static_cast<std::uint64_t>(elapsed.count() * m_rate);
        if (due > made)
            post(produce(made, due));
        made = std::max(made, due);
    }
}

} // namespace kelview
