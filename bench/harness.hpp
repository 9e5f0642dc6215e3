// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The frame of a benchmark program: its rows, and what it can be told to do with them.

#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <functional>
#include <string>

namespace pxcl_bench {

[[noreturn]] void fail(const std::string& message);

// What everybody in a table's section does. `bytes` are those that are read; 0 when none are.
struct Task {
  std::string name;
  std::string title;
  std::size_t bytes = 0;
};

struct Row {
  std::string name;  // TASK/WHO, or TASK when nobody else does it
  Task task;
  std::function<void(benchmark::State&)> measure;
  std::function<std::function<void(long count)>()> prepare;  // answers with what runs it
};

void add_row(Row row);

// prepare() answers with the timed part, a function of no arguments.
template <typename Prepare>
void add_row(const Task& task, const std::string& who, const Prepare& prepare) {
  add_row({who.empty() ? task.name : task.name + "/" + who, task,
           [prepare](benchmark::State& state) {
             auto run = prepare();
             const auto* seen = &run;  // by the compiler's leave: what it holds is never dead
             benchmark::DoNotOptimize(seen);
             for (auto _ : state) {
               run();
               benchmark::ClobberMemory();
             }
           },
           [prepare] {
             return [run = prepare()](long count) mutable {
               for (; count > 0; --count) {
                 run();
                 benchmark::ClobberMemory();
               }
             };
           }});
}

// Each program's own: compares everybody's answers, then adds the rows.
void add_rows();

}  // namespace pxcl_bench
