// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace pxcl::client {

/// What kind of failure it was: what a program does next depends on it.
enum class Fault {
  kUnreachable,  ///< No connection, no answer in time, or the connection broke.
  kBadReply,     ///< There was an answer, and it is not this protocol's or not the one asked for.
  kRefused,      ///< The printer answered "NG".
  kAttention,    ///< The printer waits for a person: paper, ink, a cover, a jam.
  kUnsuitable,   ///< What was asked for is not what the printer offers or has loaded.
  kBadInput,     ///< The caller's data can't be printed or sent.
  kCancelled,    ///< The caller stopped it.
};

/// A failure: its kind, and one sentence for a person that says what happened and what to do.
struct Error {
  Fault fault;
  std::string message;
};

/// A value, or the error why there is none.
template <typename Value>
class [[nodiscard]] Result {
 public:
  Result(Value value) : held_(std::in_place_index<0>, std::move(value)) {}
  Result(Error error) : held_(std::in_place_index<1>, std::move(error)) {}

  [[nodiscard]] bool ok() const { return held_.index() == 0; }
  explicit operator bool() const { return ok(); }

  [[nodiscard]] const Value& value() const& { return std::get<0>(held_); }
  [[nodiscard]] Value& value() & { return std::get<0>(held_); }
  [[nodiscard]] Value&& value() && { return std::get<0>(std::move(held_)); }
  [[nodiscard]] const Error& error() const& { return std::get<1>(held_); }
  [[nodiscard]] Error&& error() && { return std::get<1>(std::move(held_)); }

 private:
  std::variant<Value, Error> held_;
};

/// Success, or the error.
template <>
class [[nodiscard]] Result<void> {
 public:
  Result() = default;
  Result(Error error) : error_(std::move(error)) {}

  [[nodiscard]] bool ok() const { return !error_.has_value(); }
  explicit operator bool() const { return ok(); }
  [[nodiscard]] const Error& error() const& { return *error_; }
  [[nodiscard]] Error&& error() && { return *std::move(error_); }

 private:
  std::optional<Error> error_;
};

}  // namespace pxcl::client
