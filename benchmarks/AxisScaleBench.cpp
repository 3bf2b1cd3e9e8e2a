// The update of a time axis's scale against that of a continuous axis over the
// same ranges: spans from 10 ms to 2,000 years, starting between 1700 and 2300,
// 2 to 12 intervals, each axis with its fixed range. A logarithmic axis is
// updated over ranges from a tenth of a decade to 600 decades, anywhere
// between 1e-300 and 1e300.

#include "BenchData.h"

#include "KelChart2D.h"
#include "KelChartAxisScale.h"
#include "KelChartAxisTime.h"
#include "KelChartVariableListCache.h"

#include <cmath>
#include <memory>
#include <random>
#include <vector>

namespace {

constexpr double secondsPerYear = 365.2425 * 86400;

struct RangeCase {
    double min;
    double max;
    unsigned count;
};

std::vector<RangeCase> rangeCases()
{
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> start(-300 * secondsPerYear, 300 * secondsPerYear);
    std::uniform_real_distribution<double> logSpan(std::log(0.01), std::log(2000 * secondsPerYear));
    std::uniform_int_distribution<unsigned> count(2, 12);
    std::vector<RangeCase> cases(256);
    for (RangeCase& c : cases) {
        c.min = start(random);
        c.max = c.min + std::exp(logSpan(random));
        c.count = count(random);
    }
    return cases;
}

// Real ranges of logarithmic axes: 0.1 to 600 decades, log-uniform.
std::vector<RangeCase> logarithmicCases()
{
    std::mt19937_64 random(11);
    std::uniform_real_distribution<double> logSpan(std::log(0.1), std::log(600.0));
    std::uniform_int_distribution<unsigned> count(2, 12);
    std::vector<RangeCase> cases(256);
    for (RangeCase& c : cases) {
        const double decades = std::exp(logSpan(random));
        const double first = std::uniform_real_distribution<double>(-300, 300 - decades)(random);
        c.min = std::pow(10.0, first);
        c.max = std::pow(10.0, first + decades);
        c.count = count(random);
    }
    return cases;
}

// One chart with an axis of class `Axis` per case, its range fixed, and one
// variable on each so that its scale is in use.
template <class Axis>
class ScaleCases {
public:
    explicit ScaleCases(bool logarithmic = false)
    {
        const std::vector<RangeCase> cases = logarithmic ? logarithmicCases() : rangeCases();
        for (std::size_t i = 0; i < cases.size(); ++i) {
            auto* axis = new Axis(m_group);
            axis->rename(QStringLiteral("axis.%1").arg(i));
            axis->enabled.set(true);
            axis->autoScale.set(false);
            axis->min.set(cases[i].min);
            axis->max.set(cases[i].max);
            axis->unitLabel.set(QStringLiteral("s since 2000-01-01 00:00:00 UTC"));
            axis->logarithmic.set(logarithmic);
            m_chart.insert(axis, false);
            auto& variable = m_chart.variables.child(QStringLiteral("v%1").arg(i), KelChartVariable::typeString);
            variable.xAxis.set(axis->name());
            variable.variableiter.setVector2Data({0, 1}, {0, 1}, {}, {}, QString(), QString());
            m_axes.push_back(axis);
            m_counts.push_back(cases[i].count);
        }
        m_cache = std::make_unique<KelChartVariableListCache>(m_chart.variables);
        for (const Axis* axis : m_axes)
            m_scales.emplace_back(*axis, *m_cache);
    }

    void updateNext(std::size_t i)
    {
        const std::size_t k = i % m_scales.size();
        m_scales[k].update(m_counts[k], m_format);
        benchmark::DoNotOptimize(m_scales[k].label(0));
    }

private:
    KelModifiedGroup m_group;
    KelChart2D m_chart{m_group};
    std::vector<const Axis*> m_axes;
    std::vector<unsigned> m_counts;
    std::unique_ptr<KelChartVariableListCache> m_cache;
    std::vector<KelChartAxisScale> m_scales;
    const Orv::Math::NumberFormat m_format;
};

template <class Axis>
void ScaleUpdate(benchmark::State& state, bool logarithmic = false)
{
    ScaleCases<Axis> cases(logarithmic);
    std::size_t next = 0;
    for (auto _ : state)
        cases.updateNext(next++);
    bench::reportItems(state, 1, 0);
}

void ScaleUpdateContinuous(benchmark::State& state) { ScaleUpdate<KelChartAxisContinuous>(state); }
void ScaleUpdateTime(benchmark::State& state) { ScaleUpdate<KelChartAxisTime>(state); }
void ScaleUpdateLogarithmic(benchmark::State& state) { ScaleUpdate<KelChartAxisContinuous>(state, true); }

} // namespace

BENCHMARK(ScaleUpdateContinuous);
BENCHMARK(ScaleUpdateTime);
BENCHMARK(ScaleUpdateLogarithmic);
