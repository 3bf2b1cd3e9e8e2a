// The chart file loader of the example host on arbitrary bytes. Bad input
// must end in a Failure, nothing else. A chart that loads must save to a file
// that loads again and saves the same, and must get through the drawing
// pipeline with the sample data bound to its variables.

#include "FuzzInput.h"
#include "FuzzTargets.h"
#include "QuietLogger.h"

#include "ChartFile.h"
#include "DataBinding.h"
#include "ElementClasses.h"
#include "Failure.h"
#include "Pipeline.h"
#include "Report.h"
#include "SampleChart.h"

#include <QByteArray>

#include <cmath>
#include <memory>

namespace {

// The host's default.
constexpr unsigned tickCount = 8;

using kelchart::ChartFile::fromJson;
using kelchart::ChartFile::toJson;

void checkSavedFileLoadsTheSame(const KelProperties& root)
{
    const QByteArray saved = toJson(root);
    KelModifiedGroup group;
    std::unique_ptr<KelProperties> again;
    try {
        again = fromJson(saved, QStringLiteral("saved"), group);
    } catch (const kelchart::Failure&) {
        fuzzFailure("a saved chart loads", __FILE__, __LINE__);
    }
    FUZZ_CHECK(toJson(*again) == saved);
}

void checkPipeline(KelProperties& root)
{
    auto* chart = dynamic_cast<KelChart*>(&root);
    const kelchart::AxisPairs pairs = kelchart::axisPairsOf(root);
    if (!chart || !pairs.exist())
        return;
    static const kelchart::DataSet sample = kelchart::SampleChart::data();
    kelchart::bindData(chart->variables, pairs, sample);
    const kelchart::Pipeline pipeline(*chart, pairs, {QSize(800, 500), tickCount, {}});
    for (const kelchart::AxisResult& axis : pipeline.axes()) {
        FUZZ_CHECK(axis.min < axis.max);
        for (const kelchart::Tick& tick : axis.ticks)
            FUZZ_CHECK(std::isfinite(tick.value) && std::isfinite(tick.position));
    }
    kelchart::Report::summary(pipeline);
}

} // namespace

int fuzzChartFile(const std::uint8_t* data, std::size_t size)
{
    const QuietLogger quiet;
    const QByteArray json(reinterpret_cast<const char*>(data), static_cast<int>(size));
    KelModifiedGroup group;
    std::unique_ptr<KelProperties> root;
    try {
        root = fromJson(json, QStringLiteral("fuzz"), group);
    } catch (const kelchart::Failure&) {
        return 0;
    }
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
