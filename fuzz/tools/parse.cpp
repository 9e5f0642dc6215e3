// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// `pxcl parse` of any file, for a program and for a person: JSON that another reader takes, and a table that does nothing
// to a terminal. Both or neither.

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

#include "cli/command.hpp"
#include "support.hpp"

namespace {

using namespace pxcl;
using fuzz::require;

struct Outcome {
  cli::ExitCode code;
  std::string output;
};

Outcome parse(const std::string& path, bool asJson) {
  static const cli::Command command = cli::reply_commands().at(0);
  cli::Arguments arguments;
  for (const cli::Option& option : command.options) {
    if (option.name == "FILE") arguments.add(option, path);
    if (option.name == "--json" && asJson) arguments.add(option, {});
  }
  char* text = nullptr;
  std::size_t length = 0;
  std::FILE* const terminal = std::exchange(stdout, open_memstream(&text, &length));
  Outcome outcome = {};
  try {
    outcome.code = command.run(arguments);
  } catch (const cli::Failure& failure) {
    require(failure.code == cli::kUsage && fuzz::is_line(failure.message));
    outcome.code = failure.code;
  }
  std::fclose(std::exchange(stdout, terminal));
  outcome.output.assign(text, length);
  std::free(text);
  return outcome;
}

bool is_ascii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return c == '\n' || (c >= ' ' && c <= '~'); });
}

bool are_lines(std::string_view text) {
  for (std::size_t end; (end = text.find('\n')) != text.npos; text.remove_prefix(end + 1)) {
    if (!fuzz::is_line(text.substr(0, end))) return false;
  }
  return text.empty();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const bool hasLocale = std::setlocale(LC_CTYPE, "C.UTF-8") != nullptr;
  static const fuzz::MemoryFile file;
  require(hasLocale);
  file.fill(fuzz::text_of(data, size));
  const Outcome json = parse(file.path, true), table = parse(file.path, false);
  require(json.code == table.code && json.output.empty() == table.output.empty());
  require((json.code == cli::kUsage) == json.output.empty());
  if (json.output.empty()) return 0;
  const auto value = nlohmann::json::parse(json.output, nullptr, false);
  require(value.is_object() && is_ascii(json.output));
  require((json.code == cli::kWarning) == value.contains("problems"));
  require(are_lines(table.output));
  return 0;
}
