// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// PROGRAM [--benchmark_...]       measures the time of every row;
// PROGRAM --once ROW COUNT        runs one row COUNT times, for a profiler;
// PROGRAM --count                 runs every row, for bench/instructions.sh and the tests.

#include "harness.hpp"

#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#if __has_include(<valgrind/callgrind.h>)
#include <valgrind/callgrind.h>
#else
#define CALLGRIND_ZERO_STATS
#define CALLGRIND_DUMP_STATS_AT(name)
#endif

namespace pxcl_bench {
namespace {

constexpr long kCountedRuns = 10;  // bench/instructions.sh divides by it

std::vector<Row>& rows() {
  static std::vector<Row> all;
  return all;
}

void run_once(const std::string& name, long count) {
  for (const Row& row : rows()) {
    if (row.name == name) return row.prepare()(count);
  }
  fail("no such row: " + name);
}

void count_instructions() {
  for (const Row& row : rows()) {
    const auto repeat = row.prepare();
    repeat(kCountedRuns);
    CALLGRIND_ZERO_STATS;
    repeat(kCountedRuns);
    CALLGRIND_DUMP_STATS_AT(row.name.c_str());
  }
}

void measure(benchmark::State& state, const Row& row) {
  row.measure(state);
  const auto bytes = static_cast<double>(row.task.bytes);
  state.counters["document"] = bytes;
  state.SetLabel(row.task.title);
}

}  // namespace

void fail(const std::string& message) {
  std::fprintf(stderr, "%s\n", message.c_str());
  std::exit(1);
}

void add_row(Row row) {
  rows().push_back(std::move(row));
}

}  // namespace pxcl_bench

int main(int argc, char** argv) {
  using namespace pxcl_bench;
  // Nobody pays for memory that goes back to the system between calls and is fetched again.
  mallopt(M_TRIM_THRESHOLD, 256 * 1024 * 1024);
  mallopt(M_MMAP_THRESHOLD, 256 * 1024 * 1024);
  add_rows();
  if (argc == 4 && std::strcmp(argv[1], "--once") == 0) {
    run_once(argv[2], std::atol(argv[3]));
    return 0;
  }
  if (argc == 2 && std::strcmp(argv[1], "--count") == 0) {
    count_instructions();
    return 0;
  }
  for (const Row& row : rows()) {
    benchmark::RegisterBenchmark(row.name.c_str(),
                                 [&row](benchmark::State& state) { measure(state, row); });
  }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
}
