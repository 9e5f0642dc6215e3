// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <fmt/format.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace pxcl::cli {

/// The pattern with its {} filled.
template <typename... Values>
std::string filled(fmt::format_string<Values...> pattern, Values&&... values) {
  return fmt::format(pattern, std::forward<Values>(values)...);
}

// The next two go by the character table of the locale, which main sets to UTF-8.

/// The text as it may go to a terminal: one line of UTF-8, without control characters and without those that turn the
/// direction of writing.
std::string printable(std::string_view text);

/// The columns that printable text takes on a terminal.
std::size_t columns(std::string_view text);

}  // namespace pxcl::cli
