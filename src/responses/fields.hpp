// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// What the parsers share: their statuses, the form of their tables, and the first questions that
// are put to every reply.

#pragma once

#include "keyed/ask.hpp"
#include "keyed/paths.hpp"
#include "keyed/values.hpp"
#include "keyed/vocabulary.hpp"
#include "keyed/word_index.hpp"
#include "responses.h"
#include "xml/fixed_plan.hpp"

namespace pxcl::responses {

using keyed::is_found;
using keyed::is_present;
using keyed::kUnknownIndex;
using keyed::text_of;
using xml::Answer;
using xml::Answers;
using xml::Key;

inline constexpr i32 kOk = 0;
inline constexpr i32 kNoJobBlock = 1;          // the reply holds no block for this job
inline constexpr i32 kNoJobBlockStatus2 = 10;  // the same, as one wrapper reports it
inline constexpr i32 kNoMemory = -1;
inline constexpr i32 kBadArgument = -2;       // something is missing, or the reply is unreadable
inline constexpr i32 kTooLong = -2;           // a text does not fit its field
inline constexpr i32 kNotAResponse = -2;      // the operation is a command
inline constexpr i32 kNoService = -2;         // no service block
inline constexpr i32 kTooManyValues = -2;     // more values than the record can hold
inline constexpr i32 kUnevenLists = -3;       // two lists that belong together differ in length
inline constexpr i32 kTooFewValues = -3;      // an area, a margin or a pixel pair is not complete
inline constexpr i32 kBadKey = -4;            // a key record without key, or half a value
inline constexpr i32 kUnknownOperation = -5;  // not in the dictionary, or not the one awaited
inline constexpr i32 kNothingListed = -7;     // the reply lists none
inline constexpr i32 kBadRecord = -8;         // the caller's record is not marked as it must be
inline constexpr i32 kNoOperation = -9;
inline constexpr i32 kNoResponse = -10;
inline constexpr i32 kNoDetail = -13;  // "NG" without detail element
inline constexpr i32 kUnknownResponse = -15;
inline constexpr i32 kUnknownDetail = -16;

// A dictionary as the tables name it; without rows: no keyword is wanted.
struct Dictionary {
  const ClssDicRow* rows = nullptr;
  const u16* rowCount = nullptr;
  const keyed::WordIndex* words = nullptr;  // null where the rows are walked through
};

template <const ClssDicRow (&kRows)[]>
constexpr Dictionary dictionary_of(const u16& rowCount) {
  return {kRows, &rowCount, keyed::kWordsOf<kRows>};
}

inline u16 index_in(const Dictionary& dictionary, std::string_view text) {
  const std::span rows = keyed::rows_of(dictionary.rows, *dictionary.rowCount);
  return keyed::look_up(rows, text, keyed::Keywords::kValues, dictionary.words).index;
}

inline std::span<const ClXmlValueRange> ranges_of(const Answer& list) {
  return {static_cast<const ClXmlValueRange*>(list.list), list.count};
}

// --- What a reply answers ------------------------------------------------------------------------

// Operation and service blocks: the keys that come first in every request.
inline constexpr std::size_t kOperationKeys = 1 + keyed::path::kServices;

template <typename Key>
constexpr void ask_for_operation(std::span<Key, kOperationKeys> keys, u32 group) {
  keys[0].path = keyed::path::kOperation;
  for (u16 service = 0; service < keyed::path::kServices; ++service) {
    keys[1 + service].path = keyed::path::kParamSet[service];
  }
  for (Key& key : keys) key.group = group;
}
// Both results are kUnknownIndex until known.
i32 read_operation(std::string_view document, std::span<const Answer, kOperationKeys> keys,
                   u16& operation, u16& serviceType);

}  // namespace pxcl::responses
