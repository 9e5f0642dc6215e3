// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "cli/failure.hpp"
#include "cli/keywords.hpp"

namespace pxcl::cli {

/// One option of a command, or one positional argument.
struct Option {
  enum class Kind { kFlag, kText, kNumber, kKeyword };

  std::string name;  ///< "--size"; without dashes it is a positional argument.
  Kind kind = Kind::kText;
  std::string help;
  bool required = false;
  bool repeated = false;
  std::int64_t least = 0;             ///< Of a number.
  std::int64_t most = 2'147'483'647;  ///< Of a number.
  Choices (*choices)() = nullptr;     ///< Of a keyword; of a text they are what completion offers.

  [[nodiscard]] bool is_positional() const { return !name.starts_with('-'); }
};

/// "a, b, c", what a keyword may be; empty when that is too much to be listed.
std::string listed_choices(const Option& option);

/// What the command line gave for the options of a command. Every value has been checked against its option.
class Arguments {
 public:
  void add(const Option& option, std::string value);

  [[nodiscard]] bool has(std::string_view name) const;
  [[nodiscard]] std::vector<std::string> all(std::string_view name) const;
  [[nodiscard]] std::string text(std::string_view name, std::string_view otherwise = {}) const;
  [[nodiscard]] std::int64_t number(std::string_view name, std::int64_t otherwise) const;
  [[nodiscard]] std::uint16_t row(std::string_view name, std::uint16_t otherwise) const;

 private:
  struct Given {
    std::string text;
    std::int64_t number;  // of a number itself, of a keyword its row
  };
  [[nodiscard]] const Given* find(std::string_view name) const;

  std::multimap<std::string, Given, std::less<>> given_;
};

/// One command of the program.
struct Command {
  std::string name;  ///< "status"; "build start-job" is one of the group "build".
  std::string help;
  std::string example;  ///< Whole command lines.
  std::vector<Option> options;
  std::function<ExitCode(const Arguments&)> run;
  bool hidden = false;
};

/// Every command, in the order of --help.
const std::vector<Command>& all_commands();

/// The first words that several commands share, and what --help says of them.
struct Group {
  std::string name;
  std::string help;
};
const std::vector<Group>& all_groups();

// Of each file of commands.
std::vector<Command> build_commands();
std::vector<Command> reply_commands();
std::vector<Command> text_commands();
std::vector<Command> printer_commands();
std::vector<Command> print_commands();
std::vector<Command> server_commands();
std::vector<Command> completion_commands();

/// --json.
Option json_option();

}  // namespace pxcl::cli
