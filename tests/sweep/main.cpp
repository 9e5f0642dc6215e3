// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// sweep MODE: every exported function, called
//   heap     with exact blocks, for the tools that watch every access
//   pages    with its texts and variables against unreadable pages
//   nulls    with each of its arguments and of their records' members zero in turn, and with each
//            text empty: the answers are those of tests/data/nulls
//   lengths  where addresses have 32 bits, with 2^32 added to each of its lengths and of those of its
//            arguments' records in turn: the answers are those of tests/data/lengths
//   memory   with each of its allocations failing, alone and with all that follow
//   threads  by eight threads at once
// or listed: names

#include <pthread.h>
#include <signal.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>

#include "calls.hpp"

// The C library takes a lock of its own there, which the sanitizer does not see.
extern "C" const char* __tsan_default_suppressions();
const char* __tsan_default_suppressions() {
  return "race:tzset_internal\n";
}

namespace {

using namespace sweep;

// Where we are, for the report of a fault that ends the program.
const Call* current;
std::uint64_t currentFailure;
int faults;

void report(const Call& call, const char* what, std::int64_t value) {
  std::fprintf(stderr, "%s, failure %llu: %s %lld\n", call.name,
               static_cast<unsigned long long>(currentFailure), what,
               static_cast<long long>(value));
  __atomic_add_fetch(&faults, 1, __ATOMIC_RELAXED);
}

void tell_where(int number) {
  if (current != nullptr) report(*current, "crashed", number);
  signal(number, SIG_DFL);
}

struct Outcome {
  std::int64_t answer;
  std::uint64_t digest;
  std::uint64_t allocations;
  bool untouched;
  bool denied;
};

// `untouched` is asked of what has at most `keeps` bytes.
Outcome make(const Call& call, Stage& stage, std::uint64_t keeps = ~std::uint64_t{0}) {
  Allocations& all = allocations();
  const std::int64_t live = all.live;
  Outcome outcome = {};
  bool overrun = false;
  all.made = 0;
  outcome.answer = call.make(stage);
  outcome.allocations = all.made;
  if (all.live != live) report(call, "leaks blocks", all.live - live);
  outcome.untouched = stage.is_untouched(keeps);
  outcome.denied = stage.has_denied();
  stage.note(static_cast<std::uint64_t>(outcome.answer));
  outcome.digest = stage.end(overrun);
  if (overrun) report(call, "writes outside its variables", 0);
  return outcome;
}

Outcome make_well(const Call& call, Stage& stage) {
  current = &call;
  const Outcome outcome = make(call, stage);
  if (outcome.answer != call.answer) report(call, "answers", outcome.answer);
  if (outcome.allocations != 0 && call.shortage.count == 0) {
    report(call, "allocates", static_cast<std::int64_t>(outcome.allocations));
  }
  return outcome;
}

void make_on_heap() {
  Stage filled(Ground::kHeap), bare(Ground::kHeap, false);
  for (const Call& call : calls()) {
    make_well(call, bare);
    if (make_well(call, filled).digest != make_well(call, filled).digest) {
      report(call, "writes something else each time", 0);
    }
  }
}

void make_on_pages() {
  Stage before(Ground::kBeforePage), behind(Ground::kBehindPage);
  for (const Call& call : calls()) {
    if (make_well(call, before).digest != make_well(call, behind).digest) {
      report(call, "writes by where its memory lies", 0);
    }
  }
}

void fail_once(const Call& call, Stage& stage, std::uint64_t nth, bool later) {
  Allocations& all = allocations();
  all.failAt = currentFailure = nth;
  all.failLater = later;
  const Outcome outcome = make(call, stage, call.shortage.keeps);
  all.failAt = 0;
  if (!call.shortage.lists(outcome.answer)) report(call, "answers", outcome.answer);
  if (!outcome.untouched) report(call, "writes", outcome.answer);
  currentFailure = 0;
}

void make_without_memory() {
  Stage stage(Ground::kBeforePage);
  std::uint64_t failures = 0;
  for (const Call& call : calls()) {
    const std::uint64_t count = make_well(call, stage).allocations;
    if (count == 0 && call.shortage.count != 0) report(call, "allocates nothing", 0);
    for (std::uint64_t nth = 1; nth <= count; ++nth) {
      fail_once(call, stage, nth, false);
      fail_once(call, stage, nth, true);
      failures += 2;
    }
  }
  std::printf("%llu allocations failed as documented\n", static_cast<unsigned long long>(failures));
}

// The call's name and its answers, as a line of a file; behind an answer "!": it has written all the
// same.
void change_each(const Call& call, Stage& stage, void (Stage::*change)(std::size_t),
                 char (&line)[512]) {
  current = &call;
  int end = std::snprintf(line, sizeof line, "%s", call.name);
  for (currentFailure = 1;; ++currentFailure) {
    (stage.*change)(currentFailure);
    const Outcome outcome = make(call, stage);
    if (!outcome.denied) break;
    end += std::snprintf(line + end, sizeof line - static_cast<std::size_t>(end), " %lld%s",
                         static_cast<long long>(outcome.answer), outcome.untouched ? "" : "!");
  }
  std::strcat(line, "\n");
}

// What is printed is what the file should hold when an answer is meant to be another.
void make_changed(void (Stage::*change)(std::size_t), const char* answers) {
  Stage stage(Ground::kBeforePage);
  std::FILE* const file = std::fopen(answers, "r");
  char expected[512], line[512];
  for (const Call& call : calls()) {
    change_each(call, stage, change, line);
    std::fputs(line, stdout);
    if (file != nullptr && std::fgets(expected, sizeof expected, file) != nullptr &&
        std::strcmp(line, expected) == 0) {
      continue;
    }
    std::fprintf(stderr, "%s", line);
    report(call, "does not answer as in its line of tests/data", 0);
  }
  if (file != nullptr) std::fclose(file);
}

void make_with_nulls() {
  make_changed(&Stage::deny, PXCL_TEST_DATA "/nulls");
}

void make_with_lengths() {
  make_changed(&Stage::widen, PXCL_TEST_DATA "/lengths");
}

constexpr int kThreads = 8, kRounds = 50;
std::uint64_t expected[512];

// Each thread begins elsewhere in the table.
void* repeat(void* number) {
  Stage stage(Ground::kHeap);
  const std::size_t count = calls().size();
  for (std::size_t i = 0; i < kRounds * count; ++i) {
    const std::size_t index =
        (i + reinterpret_cast<std::size_t>(number) * count / kThreads) % count;
    if (make(calls()[index], stage).digest != expected[index]) {
      report(calls()[index], "answers something else", 0);
    }
  }
  return nullptr;
}

void make_at_once() {
  Stage stage(Ground::kHeap);
  for (std::size_t i = 0; i < calls().size(); ++i) {
    expected[i] = make_well(calls()[i], stage).digest;
  }
  current = nullptr;
  pthread_t threads[kThreads];
  for (std::size_t i = 0; i < kThreads; ++i) {
    pthread_create(&threads[i], nullptr, repeat, reinterpret_cast<void*>(i));
  }
  for (const pthread_t thread : threads) pthread_join(thread, nullptr);
}

void list_names() {
  for (const Call& call : calls()) std::puts(call.name);
}

}  // namespace

int main(int count, char** arguments) {
  constexpr struct {
    const char* name;
    void (*run)();
  } kModes[] = {
      {"heap", make_on_heap},    {"pages", make_on_pages},   {"memory", make_without_memory},
      {"threads", make_at_once}, {"nulls", make_with_nulls}, {"lengths", make_with_lengths},
      {"names", list_names}};
  signal(SIGSEGV, tell_where);
  for (const auto& mode : kModes) {
    if (count != 2 || std::strcmp(arguments[1], mode.name) != 0) continue;
    mode.run();
    return faults == 0 ? 0 : 1;
  }
  std::fprintf(stderr, "usage: sweep heap|pages|nulls|lengths|memory|threads|names\n");
  return 2;
}
