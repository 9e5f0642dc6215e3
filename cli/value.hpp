// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace pxcl::cli {

/// What a command has to say, whether it is shown as JSON or to a person. Nothing held means "unknown".
class Value {
 public:
  using List = std::vector<Value>;
  using Object = std::vector<std::pair<std::string, Value>>;  // in the order of showing

  Value() = default;
  Value(bool truth) : held_(truth) {}
  template <std::integral Number>
  requires(!std::same_as<Number, bool>) Value(Number number)
      : held_(static_cast<std::int64_t>(number)) {}
  Value(const char* text) : held_(std::string(text)) {}
  Value(std::string_view text) : held_(std::string(text)) {}
  Value(std::string text) : held_(std::move(text)) {}
  Value(List list) : held_(std::move(list)) {}
  Value(Object object) : held_(std::move(object)) {}

  [[nodiscard]] bool known() const { return held_.index() != 0; }

  /// What is held, or null when it is of another kind.
  template <typename Kind>
  [[nodiscard]] const Kind* as() const {
    return std::get_if<Kind>(&held_);
  }

 private:
  std::variant<std::monostate, bool, std::int64_t, std::string, List, Object> held_;
};

/// Text that is unknown when it is empty.
inline Value text_or_unknown(std::string_view text) {
  return text.empty() ? Value() : Value(text);
}

}  // namespace pxcl::cli
