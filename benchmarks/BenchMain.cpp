// The benchmark program. Qt runs without a display, for the peer libraries'
// widgets.
//
// Freed memory stays with the allocator, as in a host that has been running a
// while, so that the cases measure their own work and not the system's cost of
// handing out fresh pages (high on virtual machines). ORV_BENCH_COLD_HEAP=1
// leaves the allocator as it is.

#include <benchmark/benchmark.h>

#include <QByteArray>
#include <QtGlobal>

#include <malloc.h>

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", QByteArray("offscreen"));
    if (qEnvironmentVariableIntValue("ORV_BENCH_COLD_HEAP") == 0) {
        mallopt(M_MMAP_MAX, 0);
        mallopt(M_TRIM_THRESHOLD, -1);
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
