// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The engine as the library itself uses it: any number of paths, single and list alike, in one
// scan.

#pragma once

#include <algorithm>
#include <iterator>

#include "clxml.h"
#include "util/owned.hpp"
#include "util/types.hpp"
#include "xml/plan.hpp"
#include "xml/scanner.hpp"

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

// Takes the texts of a key of Wanted::kEach, in the order of the document.
struct Reader {
  void (*take)(void* self, const EachText& text);
  void* self;
};

// The answer to a key, all zeros when nothing is found. The list of Wanted::kAll is the caller's:
// ranges, or null without a match.
using Answer = Finding;

// Gives the lists back.
inline void release(std::span<Answer> answers) {
  for (Answer& answer : answers) {
    if (answer.capacity != 0) KWVSDisposePTRX(answer.list);
  }
}

// Answers to keys that are known when the library is compiled, and the lists that they hold.
template <const auto& kKeys>
class Answers {
 public:
  Answers() {
    for (Answer& answer : lists()) answer.capacity = 0;  // there may be no scan after all
  }
  Answers(const Answers&) = delete;
  Answers& operator=(const Answers&) = delete;
  ~Answers() { release(lists()); }

  std::span<Answer, std::size(kKeys)> all() { return answers_; }

 private:
  static constexpr bool holds_list(const Key& key) { return key.wanted == Wanted::kAll; }

  // From the first one that holds a list to the last.
  std::span<Answer> lists() {
    constexpr auto kFirst = std::find_if(std::begin(kKeys), std::end(kKeys), holds_list);
    constexpr auto kLast = std::find_if(std::rbegin(kKeys), std::rend(kKeys), holds_list);
    constexpr std::size_t kBegin = static_cast<std::size_t>(kFirst - std::begin(kKeys));
    constexpr std::size_t kEnd = static_cast<std::size_t>(std::rend(kKeys) - kLast);
    return std::span(answers_).subspan(kBegin, kEnd == 0 ? 0 : kEnd - kBegin);
  }

  Answer answers_[std::size(kKeys)];  // scan() sets them
};

// Scans the document once for every key. The answers are in the keys' order, and set anew; `readers`
// is null, or as many, of which those of Wanted::kEach are looked at. `flags` is 0 or
// CL_XML_COM_FLAG; the result is that of ClXmlParse, and answers keep what was found before a
// failure.
i32 scan(std::string_view document, u32 flags, std::span<const Key> keys, std::span<Answer> answers,
         u64* stopPosition, const Reader* readers = nullptr);

// The same for keys that a plan was made of beforehand.
i32 scan(std::string_view document, const Plan& plan, std::span<Answer> answers, u64* stopPosition,
         const Reader* readers = nullptr);

}  // namespace pxcl::xml
