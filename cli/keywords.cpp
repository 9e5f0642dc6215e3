// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "cli/keywords.hpp"

#include <strings.h>

namespace pxcl::cli {

namespace {

bool same_name(std::string_view a, std::string_view b) {
  return a.size() == b.size() && strncasecmp(a.data(), b.data(), a.size()) == 0;
}

Choices services(std::initializer_list<std::uint16_t> rows) {
  Choices choices;
  for (const std::uint16_t row : rows) {
    choices.push_back({glb_clssdicServiceTypeTbl[row].keyword, row});
  }
  return choices;
}

// "iso_a4_210x297mm" is known as "a4" and as "210x297mm".
void add_parts(Choices& choices, std::string_view name, std::uint16_t row) {
  const std::size_t first = name.find('_');
  const std::size_t last = name.rfind('_');
  if (first == name.npos || first == last) return;
  const std::string_view middle = name.substr(first + 1, last - first - 1);
  const std::string_view dimensions = name.substr(last + 1);
  choices.push_back({std::string(middle), row});
  if (middle != dimensions) choices.push_back({std::string(dimensions), row});
}

}  // namespace

Choices all_keywords(Dictionary dictionary) {
  Choices choices;
  for (std::uint16_t row = 0; row < dictionary.count; ++row) {
    if (const auto word = dictionary.at(row)) choices.push_back({std::string(word->keyword), row});
  }
  return choices;
}

std::optional<std::uint16_t> find_choice(const Choices& choices, std::string_view name) {
  std::optional<std::uint16_t> found;
  for (const Choice& choice : choices) {
    if (!same_name(choice.name, name)) continue;
    if (found && *found != choice.row) return {};
    found = choice.row;
  }
  return found;
}

Choices size_choices() {
  Choices choices = all_keywords(client::paper_sizes());
  const Choices keywords = choices;
  for (const Choice& size : keywords) add_parts(choices, size.name, size.row);
  return choices;
}

Choices type_choices() {
  return all_keywords(client::paper_types());
}
Choices color_choices() {
  return all_keywords(client::color_modes());
}
Choices on_or_off() {
  return {{"off", 1}, {"on", 2}};
}
Choices duplex_choices() {
  return {{"off", 1}, {"on", 2}, {"long", 3}, {"short", 4}};
}

Choices host_environments() {
  return all_keywords({glb_clssdicHostEnvironmentTbl, CLSS_DICNUM_HOST_ENVIRONMENT});
}

Choices preparations() {
  return all_keywords({glb_clssdicPrintPreparationTbl, CLSS_DICNUM_PRINT_PREPARATION});
}

Choices agreements() {
  return all_keywords({glb_clssdicPLIagreementTbl, CLSS_DICNUM_PLI_AGR});
}

Choices all_services() {
  return all_keywords({glb_clssdicServiceTypeTbl, CLSS_NUM_SERVICETYPE_LIST});
}

Choices services_with_capability() {
  return services({0, 1, 3});
}
Choices services_with_configuration() {
  return services({0, 1});
}
Choices services_with_status() {
  return services({0, 1, 3});
}

}  // namespace pxcl::cli
