// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Item sets: the keys under which an item is asked for, and its texts turned into entries. A reader
// with many items puts all their keys into one request; a text without data is one not found.

#pragma once

#include <array>

#include "keyed.h"
#include "keyed/ask.hpp"
#include "keyed/format.hpp"
#include "keyed/paths.hpp"
#include "keyed/values.hpp"
#include "keyed/vocabulary.hpp"
#include "util/owned.hpp"

namespace pxcl::keyed {

inline constexpr u32 kPresenceMode = 1;  // ItemSet::mode: is the element there
inline constexpr u32 kTextMode = 1;      // read_item_sets_by_attribute: copy the element's text
inline constexpr u32 kListMode = 0;      // either: split the text at commas

inline constexpr u32 kAbsent = 1;  // values in presence mode
inline constexpr u32 kPresent = 2;

// checkSuport
inline constexpr i32 kNotSupported = 1;
inline constexpr i32 kSupported = 2;
inline constexpr i32 kNotListed = 65535;

// ---- The exported readers on a view of the document, with their statuses.

i32 read_item_sets(std::string_view document, u16 operation, std::span<ItemSet> items);
i32 read_item_sets_by_attribute(std::string_view document, std::span<ItemSet> items,
                                const char* attributeValue, u16 nameSpace, u32 mode);
void release_item_sets(std::span<ItemSet> items);

// ---- The same in pieces, for readers whose items share a scan with other keys.

// The five keys that tell whether a reply answers an operation with "OK", and what they answered:
// kOk, kWrongOperation or kNotOk. All five are of group `group`.
inline constexpr std::size_t kCheckKeys = 1 + kServiceCount;
template <typename Key>
constexpr void set_check_keys(std::span<Key, kCheckKeys> keys, u32 group) {
  keys[0].path = path::kOperation;
  for (std::size_t i = 0; i < kServiceCount; ++i) keys[i + 1].path = path::kResponse[i];
  for (Key& key : keys) key.group = group;
}
i32 check_operation_and_response(std::string_view document,
                                 std::span<const xml::Answer, kCheckKeys> keys, u16 operation);

// Bytes that a path key needs at most; 0 when it cannot be formed: no template, or over the limit.
u64 bound_of_path_key(const char* pathTemplate, Arguments arguments);

// Forms a path key in `*room`, which has that many bytes, and moves `*room` behind it. An empty one
// when it cannot be formed.
std::string_view form_path_key(const char* pathTemplate, Arguments arguments, char** room);

// An item's keys, one a namespace; false when one cannot be formed.
u64 bound_of_item_keys(const ItemSet& item);
bool set_item_keys(const ItemSet& item, std::span<xml::Key, kNameSpaceCount> keys, u32 group,
                   char** room);

// An item's texts, by namespace index.
using NameSpaceTexts = std::array<std::string_view, kNameSpaceCount>;
NameSpaceTexts found_texts(std::string_view document,
                           std::span<const xml::Answer, kNameSpaceCount> keys);

// What Get_ItemSet makes of the texts: all their values that are in the dictionary, ordered by
// code, those without one first. kOk, kNoMemory or kBadArgument; the item is changed with kOk only.
i32 decode_list(const NameSpaceTexts& texts, ItemSet* item, Keywords keywords = Keywords::kAny);

// What Get_ItemSetByReq makes of one text: its values, those with a code first, then fillers.
// kBadArgument when there are more values than entries.
i32 decode_into(std::string_view text, const ItemSet& item, u16 nameSpace,
                std::span<ItemEntry> entries, Keywords keywords = Keywords::kAny);

}  // namespace pxcl::keyed
