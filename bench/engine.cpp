// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The engine against other parsers at the same jobs. Before a case is timed, everybody's answers
// are compared. `engine --once CASE/NAME COUNT` runs one of them COUNT times, for a profiler.

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "contender.hpp"
#include "documents.hpp"

namespace {

using namespace pxcl_bench;

struct Entry {
  const char* name;
  MakeContender make;
  bool answers = true;
};
constexpr std::array<Entry, 7> kEntries = {{
    {"engine", make_engine},
    {"rapidxml", make_rapidxml},
    {"rapidxml_copying", make_rapidxml_copying},
    {"pugixml", make_pugixml},
    {"expat", make_expat},
    {"libxml2", make_libxml2},
    {"floor", make_floor, false},
}};

struct Case {
  const char* name;
  Question question;
};

Question replace_question() {
  Question question = {Job::kReplace, send_data_command(), {}, {}};
  for (const Replacement& replacement : send_data_values()) {
    question.paths.push_back(replacement.path);
    question.values.push_back(replacement.value);
  }
  return question;
}

const std::vector<Case>& cases() {
  static const std::vector<Case> all = {
      {"status", {Job::kFirst, status_reply(), status_paths(), {}}},
      {"job_list", {Job::kEvery, job_list_reply(500), {job_list_path()}, {}}},
      {"capability", {Job::kFirst, capability_reply(100'000), capability_paths(), {}}},
      {"replace", replace_question()},
  };
  return all;
}

[[noreturn]] void fail(const std::string& message) {
  std::fprintf(stderr, "%s\n", message.c_str());
  std::exit(1);
}

// The first entry's answers are the measure of the others'.
void compare_answers(const Case& benchmark_case) {
  std::vector<std::string> expected;
  for (const Entry& entry : kEntries) {
    if (!entry.answers) continue;
    const auto contender = entry.make(benchmark_case.question);
    contender->run();
    contender->run();
    const std::vector<std::string> results = contender->results();
    if (expected.empty()) expected = results;
    if (results == expected) continue;
    std::size_t index = 0;
    while (index < expected.size() && index < results.size() && expected[index] == results[index])
      ++index;
    const auto shown = [index](const std::vector<std::string>& list) {
      return index < list.size() ? list[index] : std::string("(nothing)");
    };
    fail(std::string(benchmark_case.name) + "/" + entry.name + " differs from " + kEntries[0].name +
         " at answer " + std::to_string(index) + ": " + shown(results) + ", not " +
         shown(expected));
  }
}

void measure(benchmark::State& state, const Case& benchmark_case, const Entry& entry) {
  const auto contender = entry.make(benchmark_case.question);
  for (auto _ : state) {
    contender->run();
    benchmark::ClobberMemory();
  }
  const auto runs = static_cast<std::int64_t>(state.iterations());
  const auto bytes = static_cast<std::int64_t>(benchmark_case.question.document.size());
  const auto answers = static_cast<std::int64_t>(contender->results().size());
  state.SetBytesProcessed(runs * bytes);
  if (entry.answers) state.SetItemsProcessed(runs * answers);
  state.counters["document"] = static_cast<double>(bytes);
}

int run_once(const std::string& wanted, long count) {
  for (const Case& benchmark_case : cases()) {
    for (const Entry& entry : kEntries) {
      if (wanted != std::string(benchmark_case.name) + "/" + entry.name) continue;
      const auto contender = entry.make(benchmark_case.question);
      for (long run = 0; run < count; ++run) contender->run();
      return 0;
    }
  }
  fail("no such case: " + wanted);
}

}  // namespace

int main(int argc, char** argv) {
  // Nobody pays for memory that goes back to the system between calls and is fetched again.
  mallopt(M_TRIM_THRESHOLD, 256 * 1024 * 1024);
  mallopt(M_MMAP_THRESHOLD, 256 * 1024 * 1024);
  if (argc == 4 && std::strcmp(argv[1], "--once") == 0) {
    return run_once(argv[2], std::atol(argv[3]));
  }
  for (const Case& benchmark_case : cases()) {
    compare_answers(benchmark_case);
    for (const Entry& entry : kEntries) {
      benchmark::RegisterBenchmark(
          (std::string(benchmark_case.name) + "/" + entry.name).c_str(),
          [&](benchmark::State& state) { measure(state, benchmark_case, entry); });
    }
  }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
}
