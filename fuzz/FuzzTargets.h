#pragma once
// The bodies of the fuzz targets. Each takes one input and returns 0; a broken
// property of the code under test stops the process (see FUZZ_CHECK). The
// replay tests call them on the checked-in inputs, libFuzzer on new ones.

#include <cstddef>
#include <cstdint>

int fuzzStringStore(const std::uint8_t* data, std::size_t size);
int fuzzChartFile(const std::uint8_t* data, std::size_t size);
int fuzzNiceIntervals(const std::uint8_t* data, std::size_t size);
int fuzzPipeline(const std::uint8_t* data, std::size_t size);
int fuzzCsvImport(const std::uint8_t* data, std::size_t size);
int fuzzTimeText(const std::uint8_t* data, std::size_t size);
