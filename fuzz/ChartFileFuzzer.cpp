// The chart file loader on arbitrary bytes. Bad input must end in an error
// result, nothing else. A chart that loads must save to a file that loads
// again and saves the same, and must get through the drawing pipeline and
// the layout with a day of made-up data bound to each of its variables.

#include "FuzzInput.h"
#include "FuzzTargets.h"
#include "QuietLogger.h"

#include "ChartFile.h"
#include "ChartLayout.h"
#include "DataBinding.h"
#include "ElementClasses.h"
#include "Plot.h"

#include <QByteArray>

#include <cmath>
#include <memory>

namespace {

// The host's default.
constexpr unsigned tickCount = 8;

namespace Chart = Orv::Chart;
using Chart::ChartFile::fromJson;
using Chart::ChartFile::toJson;

void checkSavedFileLoadsTheSame(const KelProperties& root)
{
    const QByteArray saved = toJson(root);
    KelModifiedGroup group;
    const std::unique_ptr<KelProperties> again = fromJson(saved, QStringLiteral("saved"), group);
    if (!again)
        fuzzFailure("a saved chart loads", __FILE__, __LINE__);
    FUZZ_CHECK(toJson(*again) == saved);
}

// Hourly values over a day, with a gap, for every variable of the chart.
Chart::DataSet dayOfData(const KelChart& chart)
{
    Chart::DataSet data;
    for (unsigned i = 0; i < chart.variables.size(); ++i) {
        Chart::DataSeries& series = data.series.emplace_back();
        series.x.name = QStringLiteral("hour");
        series.y.name = chart.variables[i]->name();
        for (int hour = 0; hour < 24; ++hour) {
            series.x.append(static_cast<float>(hour), false);
            series.y.append(static_cast<float>(10 + 5 * std::sin(hour / 4.0)), hour == 7);
        }
    }
    return data;
}

void checkPipeline(KelProperties& root)
{
    auto* chart = dynamic_cast<KelChart*>(&root);
    const Chart::AxisPairs pairs = Chart::axisPairsOf(root);
    if (!chart || !pairs.exist())
        return;
    Chart::bindData(chart->variables, pairs, dayOfData(*chart));
    const QSize size(800, 500);
    const Chart::Plot pipeline(*chart, pairs, {size, tickCount, {}});
    for (const Chart::PlotAxis& axis : pipeline.axes()) {
        FUZZ_CHECK(axis.min < axis.max);
        for (const Chart::Tick& tick : axis.ticks.major())
            FUZZ_CHECK(std::isfinite(tick.value) && std::isfinite(tick.position));
    }
    const Chart::ChartLayout layout(pipeline, size);
    FUZZ_CHECK(QRectF(QPointF(0, 0), QSizeF(size)).contains(layout.plot()));
}

} // namespace

int fuzzChartFile(const std::uint8_t* data, std::size_t size)
{
    const QuietLogger quiet;
    const QByteArray json(reinterpret_cast<const char*>(data), static_cast<int>(size));
    KelModifiedGroup group;
    const std::unique_ptr<KelProperties> root = fromJson(json, QStringLiteral("fuzz"), group);
    if (!root)
        return 0;
    checkSavedFileLoadsTheSame(*root);
    checkPipeline(*root);
    return 0;
}

// Qt's JSON parser (seen in 5.15) leaks the earlier value of a key repeated in one
// object when that value is an array or object (as in {"":[{}],"":""}). The
// leak is Qt's own, so leak checks skip what Qt allocated; Qt has no frame
// pointers, so a leak's stack ends in Qt and only the library can be named.
extern "C" const char* __lsan_default_suppressions() // NOLINT(bugprone-reserved-identifier)
{
    return "leak:libQt*Core.so\n";
}

#ifndef ORV_FUZZ_REPLAY
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    return fuzzChartFile(data, size);
}
#endif
