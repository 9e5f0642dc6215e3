// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The attributes of one element text, one at a time, as the engine reads them everywhere.

#pragma once

#include <cstring>

#include "util/types.hpp"

namespace pxcl::xml {

struct SplitAttribute {
  std::string_view name;
  std::string_view value;  // with its quotes; data() null: an attribute without value
};

inline std::string_view trim_end(std::string_view text) {
  while (!text.empty() && is_space(text.back())) text.remove_suffix(1);
  return text;
}

inline std::string_view trim_begin(std::string_view text) {
  while (!text.empty() && is_space(text.front())) text.remove_prefix(1);
  return text;
}

inline const char* find_byte(std::string_view text, char byte) {
  if (text.empty()) return nullptr;
  return static_cast<const char*>(std::memchr(text.data(), byte, text.size()));
}

// Walks the text that follows an element's name. Only double quotes delimit values; what stands
// between
// "=" and the opening quote is passed over; a name without "=" can only stand last.
class AttributeSplitter {
 public:
  explicit AttributeSplitter(std::string_view text) : rest_(text) {}

  // False at the end, or after a value without closing quote: failed() tells.
  bool next(SplitAttribute& attribute) {
    rest_ = trim_begin(rest_);
    if (rest_.empty()) return false;
    const char* equals = find_byte(rest_, '=');
    if (equals == nullptr) {
      attribute = {trim_end(rest_), {}};
      rest_ = {};
      return true;
    }
    attribute.name = trim_end({rest_.data(), static_cast<std::size_t>(equals - rest_.data())});
    skip_past(equals);
    const char* open = find_byte(rest_, '"');
    if (open == nullptr) return false;
    skip_past(open);
    const char* close = find_byte(rest_, '"');
    if (close == nullptr) {
      failed_ = true;
      return false;
    }
    attribute.value = {open, static_cast<std::size_t>(close - open) + 1};
    skip_past(close);
    return true;
  }

  bool failed() const { return failed_; }
  std::string_view rest() const { return rest_; }

 private:
  void skip_past(const char* byte) {
    rest_.remove_prefix(static_cast<std::size_t>(byte - rest_.data()) + 1);
  }

  std::string_view rest_;
  bool failed_ = false;
};

// A value without its quotes and the white space inside them; empty for one that is not quoted.
inline std::string_view inner_value(std::string_view value) {
  if (value.size() < 2 || value.front() != '"' || value.back() != '"') return {};
  return trim_begin(trim_end(slice(value, 1, value.size() - 2)));
}

}  // namespace pxcl::xml
