// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "client/words.hpp"

namespace pxcl::cli {

using client::Dictionary;

/// A name that stands for a row of a dictionary.
struct Choice {
  std::string name;
  std::uint16_t row;
};
using Choices = std::vector<Choice>;

/// Every keyword of a dictionary.
Choices all_keywords(Dictionary dictionary);

/// The row that a name stands for, whatever its case. What several rows go by names none of them.
std::optional<std::uint16_t> find_choice(const Choices& choices, std::string_view name);

/// What a person may call things. The first name of a row is its keyword.
Choices size_choices();  ///< Also by the part that people know: "a4", "letter", "4x6in".
Choices type_choices();
Choices color_choices();
Choices on_or_off();
Choices duplex_choices();  ///< "off", "on", "long", "short".
Choices host_environments();
Choices preparations();
Choices agreements();
Choices all_services();
Choices services_with_capability();
Choices services_with_configuration();
Choices services_with_status();

}  // namespace pxcl::cli
