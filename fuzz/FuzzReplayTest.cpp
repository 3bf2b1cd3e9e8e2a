// Runs every checked-in input of every fuzz target: the seed corpora and the
// regressions (inputs that once crashed or hung). One test per target reads
// the folders when it runs, so a file added there is replayed without a
// rebuild. A broken property stops the process; the last file named on
// stderr is the one at fault.

#include "FuzzTargets.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <ostream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

struct Target {
    const char* name;
    int (*run)(const std::uint8_t* data, std::size_t size);
};

// Test output names the target rather than dumping the bytes of the parameter.
void PrintTo(const Target& target, std::ostream* stream)
{
    *stream << target.name;
}

const Target targets[] = {
    {"string_store", fuzzStringStore},
    {"chart_file", fuzzChartFile},
    {"nice_intervals", fuzzNiceIntervals},
    {"pipeline", fuzzPipeline},
    {"csv_import", fuzzCsvImport},
    {"time_text", fuzzTimeText},
};

std::vector<fs::path> filesIn(const char* folder, const Target& target)
{
    std::vector<fs::path> files;
    const fs::path path = fs::path(ORV_FUZZ_DIR) / folder / target.name;
    if (fs::is_directory(path))
        for (const fs::directory_entry& entry : fs::directory_iterator(path))
            if (entry.is_regular_file() && entry.path().filename().string().front() != '.')
                files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

class FuzzReplayTest : public ::testing::TestWithParam<Target> {};

} // namespace

TEST_P(FuzzReplayTest, EveryCheckedInInputRunsWithoutFault)
{
    const Target& target = GetParam();
    std::vector<fs::path> files = filesIn("corpus", target);
    EXPECT_FALSE(files.empty()) << "no seeds for " << target.name;
    const std::vector<fs::path> regressions = filesIn("regressions", target);
    files.insert(files.end(), regressions.begin(), regressions.end());
    for (const fs::path& file : files) {
        std::cerr << "replaying " << file.string() << std::endl;
        std::ifstream stream(file, std::ios::binary);
        ASSERT_TRUE(stream) << file;
        const std::vector<char> bytes((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
        EXPECT_EQ(target.run(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()), 0) << file;
    }
}

INSTANTIATE_TEST_SUITE_P(Targets, FuzzReplayTest, ::testing::ValuesIn(targets),
                         [](const ::testing::TestParamInfo<Target>& info) { return std::string(info.param.name); });
