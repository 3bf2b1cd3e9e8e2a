// Reading a CSV file of three numeric columns into the host's columns, against
// the floor of splitting lines and converting numbers with the C library.

#include "BenchData.h"

#include "CsvImport.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

namespace {

// Files written once per row count, removed when the program ends.
class CsvFiles {
public:
    ~CsvFiles()
    {
        for (const auto& [rows, path] : m_paths)
            std::filesystem::remove(path);
    }

    const std::string& path(std::int64_t rows)
    {
        auto found = m_paths.find(rows);
        if (found == m_paths.end())
            found = m_paths.emplace(rows, write(rows)).first;
        return found->second;
    }

private:
    // "t [s],a [m],b [m]": ascending t, a wave, and every 100th b empty.
    static std::string write(std::int64_t rows)
    {
        const std::filesystem::path path =
            std::filesystem::temp_directory_path() / ("orv-csv-bench-" + std::to_string(rows) + ".csv");
        std::FILE* file = std::fopen(path.c_str(), "w");
        std::fputs("t [s],a [m],b [m]\n", file);
        for (std::int64_t i = 0; i < rows; ++i) {
            if (i % 100 == 0)
                std::fprintf(file, "%lld,%.6g,\n", static_cast<long long>(i), 0.5 + 0.001 * static_cast<double>(i % 997));
            else
                std::fprintf(file, "%lld,%.6g,%.4f\n", static_cast<long long>(i), 0.001 * static_cast<double>(i % 991),
                             1.5 + static_cast<double>(i % 13));
        }
        std::fclose(file);
        return path.string();
    }

    std::map<std::int64_t, std::string> m_paths;
};

CsvFiles files;

void reportPeak(benchmark::State& state, double peak)
{
    state.counters["peak_bytes_per_row"] = peak / static_cast<double>(state.range(0));
}

void CsvRead(benchmark::State& state)
{
    const QString path = QString::fromStdString(files.path(state.range(0)));
    double peak = 0;
    std::size_t held = 0;
    for (auto _ : state) {
        const bench::HeapProbe probe;
        const Orv::Chart::DataSet data = Orv::Chart::CsvImport::read(path).data;
        peak = static_cast<double>(probe.peak());
        held = 0;
        for (const Orv::Chart::DataSeries& series : data.series)
            held += (series.x.values.capacity() + series.y.values.capacity()) * sizeof(float)
                    + (series.x.undefined.capacity() + series.y.undefined.capacity()) / 8;
    }
    bench::reportItems(state, state.range(0), held);
    reportPeak(state, peak);
}

// The least a reader must do: split each line at commas and convert each cell to a float.
void CsvReadFloor(benchmark::State& state)
{
    const std::string& path = files.path(state.range(0));
    double peak = 0;
    for (auto _ : state) {
        const bench::HeapProbe probe;
        std::ifstream in(path);
        std::string line;
        std::getline(in, line);
        std::vector<std::vector<float>> columns(3);
        while (std::getline(in, line)) {
            const char* cell = line.c_str();
            for (std::vector<float>& column : columns) {
                char* end = nullptr;
                column.push_back(std::strtof(cell, &end));
                cell = *end == ',' ? end + 1 : end;
            }
        }
        benchmark::DoNotOptimize(columns.data());
        peak = static_cast<double>(probe.peak());
    }
    bench::reportItems(state, state.range(0), static_cast<std::size_t>(state.range(0)) * 3 * sizeof(float));
    reportPeak(state, peak);
}

} // namespace

BENCHMARK(CsvRead)->Arg(bench::Small)->Arg(bench::Medium)->Unit(benchmark::kMillisecond);
BENCHMARK(CsvReadFloor)->Arg(bench::Small)->Arg(bench::Medium)->Unit(benchmark::kMillisecond);
BENCHMARK(CsvRead)->Arg(bench::Large)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(CsvReadFloor)->Arg(bench::Large)->Iterations(1)->Unit(benchmark::kMillisecond);
