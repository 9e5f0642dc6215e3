// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace pxcl::client {

/// Finds the end of a reply that comes in pieces over a way without framing: the "</cmd>" of its root. Comments, CDATA
/// sections, declarations and quoted values hide what they hold. Each byte is looked at once.
class ReplyEnd {
 public:
  /// Takes the next piece. Returns how much of it belongs to the reply: all of it, or up to the end once that is found.
  std::size_t feed(std::string_view piece);

  [[nodiscard]] bool found() const { return found_; }

 private:
  enum class Where { kText, kMarkup, kHidden, kTag, kValue };

  void take(char byte);
  void take_markup(char byte);
  void take_hidden(char byte);
  void take_tag(char byte);
  void end_tag();
  void hide_until(std::string_view end);

  Where where_ = Where::kText;
  std::string name_;       // what a markup begins with, at most kLongestName bytes
  std::string_view end_;   // of what is hidden
  std::string last_;       // bytes of it, as many as its end has
  char quote_ = 0;         // of the value
  bool is_empty_ = false;  // "<cmd/>"
  std::size_t depth_ = 0;  // of open elements "cmd"
  bool found_ = false;
};

}  // namespace pxcl::client
