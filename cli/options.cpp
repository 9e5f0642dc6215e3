// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "cli/options.hpp"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <list>
#include <map>

#include "cli/text.hpp"

namespace pxcl::cli {

namespace {

constexpr const char* kExitCodes =
    R"(Exit codes:
  0    all is well
  1    done, but something wants a look: low ink, part of a reply that can't be read
  2    the printer waits for a person, or it refused
  3    no printer, or no sensible reply
  64   the command line or the input can't be used
  74   the output could not be written
  130  interrupted; a job that was under way has been cancelled

'pxcl COMMAND --help' tells of one command.)";

// Where the parser puts what it reads for one command.
struct Slots {
  const Command* command;
  CLI::App* app;
  std::map<std::string, std::vector<std::string>> values;
  std::map<std::string, bool> flags;
};

std::string type_name(const Option& option) {
  switch (option.kind) {
    case Option::Kind::kNumber:
      return "NUMBER";
    case Option::Kind::kKeyword:
      return "KEYWORD";
    default:
      return "TEXT";
  }
}

std::string help_text(const Option& option) {
  const bool keyword = option.kind == Option::Kind::kKeyword;
  const std::string choices = keyword ? listed_choices(option) : "";
  return choices.empty() ? option.help : filled("{}: {}", option.help, choices);
}

void add_option(Slots& slots, const Option& option) {
  if (option.kind == Option::Kind::kFlag) {
    slots.app->add_flag(option.name, slots.flags[option.name], option.help);
    return;
  }
  std::vector<std::string>& values = slots.values[option.name];
  CLI::Option* added =
      option.repeated
          ? slots.app->add_option(option.name, values, help_text(option))
          : slots.app->add_option_function<std::string>(
                option.name, [&values](const std::string& value) { values.push_back(value); },
                help_text(option));
  added->required(option.required)->type_name(option.is_positional() ? "" : type_name(option));
  if (option.repeated && !option.is_positional()) {
    added->expected(1)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  }
}

CLI::App* find_group(CLI::App& root, const std::string& name) {
  const auto found = root.get_subcommands([&](CLI::App* app) { return app->get_name() == name; });
  if (!found.empty()) return found.front();
  const auto group = std::ranges::find(all_groups(), name, &Group::name);
  CLI::App* added = root.add_subcommand(group->name, group->help);
  added->require_subcommand(1)->group("Commands");
  return added;
}

// The application that the command's name hangs from, and the rest of the name.
std::pair<CLI::App*, std::string> place(CLI::App& root, const std::string& name) {
  const std::size_t blank = name.find(' ');
  if (blank == name.npos) return {&root, name};
  return {find_group(root, name.substr(0, blank)), name.substr(blank + 1)};
}

void add_command(CLI::App& root, const Command& command, std::list<Slots>& all) {
  const auto [parent, name] = place(root, command.name);
  CLI::App* app = parent->add_subcommand(name, command.help);
  app->group(command.hidden ? "" : "Commands");
  app->footer("Examples:\n" + command.example);
  Slots& slots = all.emplace_back(Slots{&command, app, {}, {}});
  for (const Option& option : command.options) add_option(slots, option);
}

Invocation collect(const Slots& slots) {
  Invocation invocation{slots.command, {}};
  for (const Option& option : slots.command->options) {
    if (const auto flag = slots.flags.find(option.name); flag != slots.flags.end()) {
      if (flag->second) invocation.arguments.add(option, "");
      continue;
    }
    for (const std::string& value : slots.values.at(option.name)) {
      invocation.arguments.add(option, value);
    }
  }
  return invocation;
}

// How many words of the command line an option of some command takes; 0 for what is none.
std::ptrdiff_t words_of_option(std::string_view word) {
  const std::string_view name = word.substr(0, word.find('='));
  for (const Command& command : all_commands()) {
    for (const Option& option : command.options) {
      if (option.is_positional() || option.name != name) continue;
      return name == word && option.kind != Option::Kind::kFlag ? 2 : 1;
    }
  }
  return 0;
}

// The parser misses a command where there is one that it does not know.
Failure usage_failure(const CLI::App& root, const CLI::ParseError& error) {
  std::string where = "pxcl";
  const CLI::App* app = &root;
  while (!app->get_subcommands().empty()) {
    app = app->get_subcommands().front();
    where += " " + app->get_name();
  }
  std::string what = printable(error.what());
  const std::vector<std::string> unknown = app->remaining();
  const bool lacks_command = !app->get_subcommands({}).empty();
  const bool is_missing = unknown.empty() || words_of_option(unknown.front()) != 0;
  if (lacks_command && is_missing) what = "A command is missing";
  if (lacks_command && !is_missing) {
    what = filled("There is no command \"{}\"", printable(unknown.front()));
  }
  while (what.ends_with('.')) what.pop_back();
  return {kUsage, filled("{}; '{} --help' tells more.", what, where)};
}

// The words of its help that the parser would choose otherwise.
void set_labels(CLI::App& root) {
  root.get_formatter()->label("SUBCOMMAND", "COMMAND");
  root.get_formatter()->label("Positionals", "Arguments");
  root.get_formatter()->label("REQUIRED", "(required)");
}

// Options may stand in front of their command too: there the parser has them behind it.
std::vector<const char*> command_first(int argc, char** argv) {
  std::vector<const char*> words(argv, argv + argc);
  const auto begin = words.begin() + std::min(argc, 1);
  auto command = begin;
  while (command != words.end()) {
    const std::ptrdiff_t taken = words_of_option(*command);
    if (taken == 0) break;
    command += std::min(taken, words.end() - command);
  }
  std::rotate(begin, command, std::find(command, words.end(), std::string_view("--")));
  return words;
}

}  // namespace

std::variant<Invocation, std::string> read_command_line(int argc, char** argv) {
  CLI::App root(
      "Prints on, asks and looks after inkjet printers that speak the XML command protocol.",
      "pxcl");
  root.set_version_flag("--version", "pxcl " PXCL_VERSION);
  root.require_subcommand(1);
  root.footer(kExitCodes);
  set_labels(root);
  std::list<Slots> all;
  for (const Command& command : all_commands()) add_command(root, command, all);
  const std::vector<const char*> words = command_first(argc, argv);
  try {
    root.parse(static_cast<int>(words.size()), words.data());
  } catch (const CLI::CallForHelp&) {
    return root.help();
  } catch (const CLI::CallForVersion& version) {
    return std::string(version.what()) + "\n";
  } catch (const CLI::ParseError& error) {
    throw usage_failure(root, error);
  }
  for (const Slots& slots : all) {
    if (slots.app->parsed()) return collect(slots);
  }
  throw Failure{kUsage, "No command was given."};
}

}  // namespace pxcl::cli
