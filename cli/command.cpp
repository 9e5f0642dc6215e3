// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "cli/command.hpp"

#include <charconv>
#include <utility>

#include "cli/text.hpp"

namespace pxcl::cli {

namespace {

std::int64_t read_number(const Option& option, const std::string& text) {
  std::int64_t number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc{} || stop != end || number < option.least || number > option.most) {
    throw Failure{kUsage, filled("{} takes a number from {} to {}, not \"{}\".", option.name,
                                 option.least, option.most, printable(text))};
  }
  return number;
}

std::int64_t read_keyword(const Option& option, const std::string& text) {
  if (const auto row = find_choice(option.choices(), text)) return *row;
  std::string known = listed_choices(option);
  if (known.empty()) known = "one such as " + option.choices().front().name;
  throw Failure{kUsage,
                filled("{} does not know \"{}\": {}.", option.name, printable(text), known)};
}

}  // namespace

std::string listed_choices(const Option& option) {
  constexpr std::size_t kFew = 12;
  const Choices choices = option.choices();
  std::string names;
  if (choices.size() > kFew) return names;
  for (const Choice& choice : choices) names += (names.empty() ? "" : ", ") + choice.name;
  return names;
}

void Arguments::add(const Option& option, std::string value) {
  std::int64_t number = 0;
  if (option.kind == Option::Kind::kNumber) number = read_number(option, value);
  if (option.kind == Option::Kind::kKeyword) number = read_keyword(option, value);
  given_.emplace(option.name, Given{std::move(value), number});
}

const Arguments::Given* Arguments::find(std::string_view name) const {
  const auto found = given_.find(name);
  return found == given_.end() ? nullptr : &found->second;
}

bool Arguments::has(std::string_view name) const {
  return find(name) != nullptr;
}

std::vector<std::string> Arguments::all(std::string_view name) const {
  std::vector<std::string> texts;
  const auto [first, last] = given_.equal_range(name);
  for (auto it = first; it != last; ++it) texts.push_back(it->second.text);
  return texts;
}

std::string Arguments::text(std::string_view name, std::string_view otherwise) const {
  const Given* given = find(name);
  return given ? given->text : std::string(otherwise);
}

std::int64_t Arguments::number(std::string_view name, std::int64_t otherwise) const {
  const Given* given = find(name);
  return given ? given->number : otherwise;
}

std::uint16_t Arguments::row(std::string_view name, std::uint16_t otherwise) const {
  return static_cast<std::uint16_t>(number(name, otherwise));
}

const std::vector<Command>& all_commands() {
  static const std::vector<Command> commands = [] {
    std::vector<Command> all;
    for (const auto make : {print_commands, printer_commands, server_commands, build_commands,
                            reply_commands, text_commands, completion_commands}) {
      for (Command& command : make()) all.push_back(std::move(command));
    }
    return all;
  }();
  return commands;
}

const std::vector<Group>& all_groups() {
  static const std::vector<Group> groups = {
      {"build", "Write one command document of the protocol to standard output"},
      {"text", "Encode and decode checksummed texts, look tagged values up"},
  };
  return groups;
}

Option json_option() {
  return {.name = "--json", .kind = Option::Kind::kFlag, .help = "Print JSON; unknown is null"};
}

}  // namespace pxcl::cli
