// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The engine as the library itself uses it: any number of paths, single and list alike, in one
// scan.

#pragma once

#include "clxml.h"
#include "util/owned.hpp"
#include "util/types.hpp"
#include "xml/plan.hpp"

namespace pxcl::xml {

// Results of one path (ClXmlParameter::status and its like).
inline constexpr i32 kFound = 1;
inline constexpr i32 kNotFound = -101;
inline constexpr i32 kEmptyElement = -102;  // <name></name>
inline constexpr i32 kEmptyTag = -103;      // <name/>
inline constexpr i32 kNoPath = -9;

// What one path asks for. kEach is as many list requests as there are keywords: its path ends in an
// element with one attribute, named without value (".../zirk:margin_border papersize"), and it
// finds the texts of every element with that name which has this attribute and no other. The key of
// a text is the attribute's value. The texts with the key K and those without a key are, in this
// order, what the path with the value written out (...papersize="K") finds, for every K without a
// ":".
enum class Wanted : u8 { kFirst, kAll, kEach };

// One finding of Wanted::kEach.
struct EachText {
  std::string_view
      key;  // without its quotes; empty: found at every key. Gone when the scan goes on
  u64 offset;
  u64 length;  // 0 unless the status is kFound
  i32 status;  // kFound, kEmptyElement or kEmptyTag
};

constexpr Collect collect_for(Wanted wanted) {
  if (wanted == Wanted::kAll) return Collect::kRanges;
  return wanted == Wanted::kEach ? Collect::kEach : Collect::kFirst;
}

// One requested path.
struct Key {
  std::string_view path = {};
  Wanted wanted = Wanted::kFirst;
  // An empty element serves only the first query of each group that matches it. Queries that would
  // have been requests of their own are put into groups of their own, so that they answer alike. Of
  // kEach, each key counts as a request of its own: no other query has its group.
  u32 group = 0;
};

// The answer to a key; it holds one at most.
struct Answer {
  // Wanted::kEach: takes the texts, in the order of the document; null: nobody wants them.
  void (*take)(void* reader, const EachText& text) = nullptr;
  void* reader = nullptr;

  Owned<ClXmlValueRange> ranges = {};  // Wanted::kAll: every match; null when there is none
  u32 rangeCount = 0;
  i32 status = 0;  // of the first match; 0 without one
  u32 offset = 0;  // of the first match, in bytes from the start of the document
  u32 length = 0;
};

// Scans the document once for every key; the answers are in the keys' order. `flags` is 0 or
// CL_XML_COM_FLAG; the result is that of ClXmlParse, and answers keep what was found before a
// failure.
i32 scan(std::string_view document, u32 flags, std::span<const Key> keys, std::span<Answer> answers,
         u64* stopPosition);

// The same for keys that a plan was made of beforehand.
i32 scan(std::string_view document, const Plan& plan, std::span<Answer> answers, u64* stopPosition);

}  // namespace pxcl::xml
