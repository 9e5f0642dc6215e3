// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "printer/keywords.hpp"

namespace pxcl::printer {

struct Attribute {
  std::string_view name;
  std::string_view value;
};

/// Writes one reply document. Element names carry the prefixes "zirk:", "vrx:" and "tolm:"; the tree is closed by
/// finish(), so a reply is well-formed whatever is put into it.
class Reply {
 public:
  /// The frame: `operation` is the whole word, "GetStatusResponse".
  Reply(std::string_view operation, std::string_view service);

  void open(std::string_view name, const std::vector<Attribute>& attributes = {});
  void close();

  void add(std::string_view name, std::string_view text,
           const std::vector<Attribute>& attributes = {});
  void add(std::string_view name, unsigned number);
  /// The text as a CDATA section, for those who read no entities.
  void add_raw(std::string_view name, std::string_view text);
  /// The words with commas between; nothing when there are none.
  void add_list(std::string_view name, const std::vector<std::string>& words,
                const std::vector<Attribute>& attributes = {});

  [[nodiscard]] std::string finish() &&;

 private:
  std::string text_;
  std::vector<std::string> open_;
};

/// "zirk:papersize" and its like.
[[nodiscard]] std::string qualified(Namespace space, std::string_view name);

}  // namespace pxcl::printer
