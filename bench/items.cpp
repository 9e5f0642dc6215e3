// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Item sets out of a capability reply, against the price of one scan of it, and look-ups.

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "documents.hpp"
#include "keyed.h"

namespace {

constexpr std::uint16_t kGetCapabilityResponse = 2;
constexpr char kTemplate[] = "cmd/zirk:contents/zirk:param_set servicetype=\"print\"/%s:%s";
constexpr std::string_view kOperation = "cmd/zirk:contents/zirk:operation";

const std::string& document() {
  static const std::string text = pxcl_bench::capability_reply(100'000);
  return text;
}

ItemSet paper_sizes() {
  return {nullptr,
          nullptr,
          0,
          kTemplate,
          "papersize",
          0,
          glb_clssdicPaperSizeTbl,
          CLSS_DICNUM_PAPERSIZE};
}

[[noreturn]] void fail(const char* message) {
  std::fprintf(stderr, "%s\n", message);
  std::exit(1);
}

// One scan of the document for one key, by the engine's own request.
void scan_once() {
  ClXmlParameter parameter = {kOperation.data(), kOperation.size(), 0, 0, nullptr, 0, 0, 0};
  ClXmlRequest request = {document().data(), document().size(), nullptr, 0, &parameter, 1, 0};
  if (ClXmlRequestParameter(&request) != 0 || parameter.status != 1) fail("no operation");
}

void read_items(ItemSet* items, int count) {
  if (Get_ItemSetList(document().data(), document().size(), kGetCapabilityResponse, items, count) !=
      0) {
    fail("no item set");
  }
  for (int i = 0; i < count; ++i) {
    if (items[i].entryCount == 0) fail("an empty item set");
  }
  ReleaseItemSetList(items, count);
}

template <typename Run>
double best_seconds(Run run) {
  double best = 1;
  for (int i = 0; i < 50; ++i) {
    const auto begin = std::chrono::steady_clock::now();
    run();
    best = std::min(
        best, std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
  }
  return best;
}

// `in_scans`: what the call costs, in scans of its document for a single key.
template <typename Run>
void measure(benchmark::State& state, Run run) {
  for (auto _ : state) run();
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(document().size()));
  state.counters["in_scans"] = best_seconds(run) / best_seconds(scan_once);
}

void one_key(benchmark::State& state) {
  measure(state, scan_once);
}

void one_item_set(benchmark::State& state) {
  measure(state, [] {
    ItemSet item = paper_sizes();
    read_items(&item, 1);
  });
}

void eight_item_sets(benchmark::State& state) {
  measure(state, [] {
    ItemSet items[8];
    for (ItemSet& item : items) item = paper_sizes();
    read_items(items, 8);
  });
}

void look_up(benchmark::State& state, std::string_view keyword, std::uint16_t expected) {
  std::uint16_t index = 0, code = 0;
  for (auto _ : state) {
    GetVasloID(glb_clssdicPaperSizeTbl, CLSS_DICNUM_PAPERSIZE, keyword.data(), keyword.size(),
               &index, &code);
    benchmark::DoNotOptimize(index);
  }
  if (index != expected) fail("another row");
}

BENCHMARK(one_key);
BENCHMARK(one_item_set);
BENCHMARK(eight_item_sets);
BENCHMARK_CAPTURE(look_up, first_row, "na_letter_8.5x11in", 1);
BENCHMARK_CAPTURE(look_up, middle_row, "custom_vaslo_215x345mm", 28);
BENCHMARK_CAPTURE(look_up, middle_row_with_blanks, " custom_vaslo_215x345mm , other", 28);
BENCHMARK_CAPTURE(look_up, last_row, "custom_vaslo_89x89mm", 82);
BENCHMARK_CAPTURE(look_up, no_row, "custom_vaslo_999x999mm", 65535);

}  // namespace
