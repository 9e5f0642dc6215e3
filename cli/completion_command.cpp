// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// `pxcl complete`: what the shell's completion asks for. The words that can be typed stand in the table of commands
// alone.

#include <algorithm>
#include <set>

#include "cli/command.hpp"
#include "cli/output.hpp"

namespace pxcl::cli {

namespace {

using Words = std::vector<std::string>;

// The command that the words name, perhaps with a group before it.
const Command* find_command(const Words& words) {
  for (const Command& command : all_commands()) {
    if (!words.empty() && command.name == words[0]) return &command;
    if (words.size() > 1 && command.name == words[0] + " " + words[1]) return &command;
  }
  return nullptr;
}

// The first words of all commands, or the second ones of a group.
Words command_words(const Words& words) {
  std::set<std::string> found;
  for (const Command& command : all_commands()) {
    if (command.hidden) continue;
    const std::size_t blank = command.name.find(' ');
    if (words.empty()) found.insert(command.name.substr(0, blank));
    if (!words.empty() && blank != std::string::npos && command.name.substr(0, blank) == words[0]) {
      found.insert(command.name.substr(blank + 1));
    }
  }
  return {found.begin(), found.end()};
}

const Option* find_option(const Command& command, std::string_view name) {
  const auto found = std::ranges::find(command.options, name, &Option::name);
  return found == command.options.end() ? nullptr : &*found;
}

Words names(const Choices& choices) {
  Words words;
  for (const Choice& choice : choices) words.push_back(choice.name);
  return words;
}

// What can follow the words: the names of commands, the keywords of the option that is last, or the options.
Words candidates(const Words& words) {
  const Command* command = find_command(words);
  if (command == nullptr) return command_words(words);
  const Option* last = find_option(*command, words.back());
  if (last != nullptr && last->kind != Option::Kind::kFlag) {
    return last->choices ? names(last->choices()) : Words{};
  }
  Words options;
  for (const Option& option : command->options) {
    if (!option.is_positional()) options.push_back(option.name);
  }
  options.emplace_back("--help");
  return options;
}

ExitCode complete(const Arguments& arguments) {
  for (const std::string& word : candidates(arguments.all("WORD"))) print(word + "\n");
  return kOk;
}

}  // namespace

std::vector<Command> completion_commands() {
  return {
      {"complete",
       "List the words that can follow those of a command line",
       "  pxcl complete -- print --size",
       {{.name = "WORD", .help = "Words behind pxcl", .repeated = true}},
       complete,
       true},
  };
}

}  // namespace pxcl::cli
