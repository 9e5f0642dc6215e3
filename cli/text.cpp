// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "cli/text.hpp"

#include <wchar.h>

#include <algorithm>

#include "client/text.hpp"

namespace pxcl::cli {

namespace {

bool turns_direction(wchar_t c) {
  return c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x2028 && c <= 0x202E) ||
         (c >= 0x2066 && c <= 0x2069) || c == 0xFEFF;
}

// Calls use(bytes, character) for each character; a byte that begins none is one of its own, U+FFFD.
template <typename Use>
void for_each_character(std::string_view text, Use use) {
  while (!text.empty()) {
    mbstate_t state = {};
    wchar_t character = L'\uFFFD';
    std::size_t size = mbrtowc(&character, text.data(), text.size(), &state);
    if (size == 0 || size > text.size()) size = 1;
    use(text.substr(0, size), character);
    text.remove_prefix(size);
  }
}

}  // namespace

std::string printable(std::string_view text) {
  const std::string clean = client::clean_line(text);
  std::string safe;
  for_each_character(clean, [&](std::string_view bytes, wchar_t character) {
    safe += turns_direction(character) ? "\uFFFD" : bytes;
  });
  return safe;
}

std::size_t columns(std::string_view text) {
  std::size_t sum = 0;
  for_each_character(text, [&](std::string_view, wchar_t character) {
    sum += static_cast<std::size_t>(std::max(wcwidth(character), 0));
  });
  return sum;
}

}  // namespace pxcl::cli
