// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// A plan that the compiler made against the same keys handed in one by one.

#pragma once

#include <algorithm>
#include <sstream>
#include <string>

#include "answers.hpp"
#include "xml/fixed_plan.hpp"

namespace pxcl_test {

using pxcl::xml::Key;
using pxcl::xml::Wanted;

#define ITEM "cmd/zirk:a/zirk:item_of_many k"

// Every form of a simple key; two keys of one element, one that ends where another goes on, and some
// in the order of documents.
constexpr std::array<Key, 30> kKeys = {{
    {"cmd/zirk:a"},
    {"cmd/zirk:a", Wanted::kAll, 1},
    {"cmd/zirk:a/zirk:b", Wanted::kAll},
    {"cmd/zirk:a/vrx:b", Wanted::kAll, 2},
    {"cmd/zirk:a/b_c", Wanted::kAll},
    {ITEM, Wanted::kAll},
    {ITEM "/vrx:b", Wanted::kAll},
    {ITEM "=\"v\"", Wanted::kAll, 3},
    {ITEM "=\"v\"/zirk:b", Wanted::kAll, 3},
    {ITEM "=\"value-of.more,than 16/x\"", Wanted::kAll},
    {ITEM "=\"ikw:x\"", Wanted::kAll},
    {ITEM, Wanted::kEach, 4},
    {"cmd/zirk:a l=\"w\"/zirk:b", Wanted::kAll},
    {"cmd/zirk:b"},
    {"cmd/zirk:b/vrx:c", Wanted::kAll},
    {"cmd/zirk:b/zirk:b k=\"v\"", Wanted::kAll},
    {"cmd/zirk:b/zirk:b k=\"w\""},
    {"cmd/zirk:b/zirk:b k=\"w\"/zirk:c"},
    {"cmd/zirk:b/zirk:b k=\"w\"/zirk:name_of_20_bytes/vrx:item_of_many k=\"value-of.more\""},
    {"cmd/zirk:b/zirk:a_rather_long_name_here"},
    {"cmd/zirk:b/vrx:b"},
    {"cmd/zirk:b/zirk:name_of_more_than_two_lanes"},
    {"cmd/vrx:c k=\"v/w\"", Wanted::kAll},
    {"cmd/vrx:e"},
    {"cmd/vrx:f"},
    {"cmd/vrx:c k=\"x\""},
    {"cmd/vrx:c k=\"ikw:x\""},
    {"cmd/vrx:d k=\"w\""},
    {"cmd/vrx:d l=\"x\"/vrx:c"},
    {"cmd/vrx:d k/vrx:b"},
}};
#undef ITEM

// What is found, as text.
template <typename Scan>
std::string answers(const Scan& scan) {
  std::ostringstream out;
  pxcl::xml::Answers<kKeys> found;
  pxcl::xml::Reader readers[std::size(kKeys)];
  const pxcl::xml::Reader toText = {[](void* self, const pxcl::xml::EachText& text) {
                                      *static_cast<std::ostringstream*>(self)
                                          << "[" << text.key << "] " << text.offset << '+'
                                          << text.length << ' ' << text.status << '\n';
                                    },
                                    &out};
  std::fill(std::begin(readers), std::end(readers), toText);
  std::uint64_t stop = 0;
  out << "result " << scan(found.all(), readers, &stop);
  out << " at " << stop << '\n';
  for (std::size_t i = 0; i < kKeys.size(); ++i) {
    const pxcl::xml::Answer& answer = found.all()[i];
    if (answer.count == 0) continue;
    out << kKeys[i].path << ": " << answer.count << ' ' << answer.firstStatus << ' '
        << answer.firstOffset << '+' << answer.firstLength;
    if (kKeys[i].wanted == Wanted::kAll) {
      for (const ClXmlValueRange& range : ranges_of(answer)) {
        out << ' ' << range.offset << '+' << range.length;
      }
    }
    out << '\n';
  }
  return out.str();
}

inline std::string answers_of_fixed_plan(std::string_view document) {
  return answers([&](auto found, const auto* readers, std::uint64_t* stop) {
    return pxcl::xml::scan(document, pxcl::xml::kPlanOf<kKeys>, found, stop, readers);
  });
}
inline std::string answers_of_keys(std::string_view document) {
  return answers([&](auto found, const auto* readers, std::uint64_t* stop) {
    return pxcl::xml::scan(document, 0, kKeys, found, stop, readers);
  });
}

}  // namespace pxcl_test
