// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "cli/output.hpp"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "cli/text.hpp"

namespace pxcl::cli {

namespace {

[[noreturn]] void fail() {
  throw Failure{kOutputFailed, filled("The output could not be written: {}.", strerror(errno))};
}

}  // namespace

void print(std::string_view text) {
  if (fwrite(text.data(), 1, text.size(), stdout) != text.size()) fail();
}

void finish_output() {
  if (fflush(stdout) != 0 || ferror(stdout)) fail();
}

void show(const Arguments& arguments, const Value& value) {
  print(arguments.has("--json") ? to_json(value) + "\n" : to_tables(value));
}

void complain(std::string_view sentence) {
  const std::string line = filled("pxcl: {}\n", sentence);
  fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace pxcl::cli
