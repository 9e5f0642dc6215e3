// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// What the readers of paper sizes and media types share: a list of keywords, and elements that
// repeat for every keyword of the list.

#pragma once

#include "keyed/items.hpp"
#include "responses/fields.hpp"

namespace pxcl::responses {

using keyed::kNameSpaceCount;

// The values of one item, in the order in which indices count them.
struct Entries {
  Owned<ItemEntry> block = {};
  u32 count = 0;

  std::span<const ItemEntry> all() const { return {block.get(), count}; }
};

using ItemKeys = std::span<Query, kNameSpaceCount>;

// The keys that tell whether a reply is a good answer to "GetCapability" come first in every
// request.
using keyed::kCheckKeys;
inline i32 check_reply(std::string_view document, std::span<const Query, kCheckKeys> keys) {
  return keyed::check_operation_and_response(document, keys,
                                             keyed::kOperationGetCapabilityResponse);
}

void ask_for_item(ItemKeys keys, const keyed::path::ItemPaths& paths, u32 group);
// kOk or kNoMemory.
i32 read_item(std::string_view document, std::span<const Query, kNameSpaceCount> keys,
              const Dictionary& dictionary, Entries& entries);

// Elements that name a keyword in their one attribute: <zirk:name attribute="keyword">. Each is
// given by its path keys up to the keyword, one a namespace.
struct KeywordElements {
  std::span<const keyed::path::ItemPaths> stems;
  Dictionary dictionary;
};
inline constexpr std::size_t kMostElements = 6;

// The elements of one keyword; a text without data is one not found.
using ElementTexts = std::string_view[kMostElements];

// Reads the elements of one keyword: kOk, kNoMemory or kBadArgument.
i32 ask_for_keyword(std::string_view document, const KeywordElements& elements,
                    const ItemEntry& keyword, ElementTexts& texts);

// The request that reads a list and the elements of every keyword that may be in it, under whatever
// namespace, in one scan.
class WholeRequest {
 public:
  // Room for `listKeys` keys and those of all elements; false when memory is short.
  bool allocate(u64 listKeys, const KeywordElements& elements);

  std::span<Query> list_keys() const { return keys_.all().first(listKeys_); }
  i32 ask(std::string_view document) const { return keyed::ask(document, keys_.all()); }
  void texts_of(std::string_view document, const ItemEntry& keyword, ElementTexts& texts) const;

 private:
  u64 place_of(u64 nameSpace, u64 element, u64 row) const;

  keyed::KeyList keys_;
  Owned<char> room_;  // the texts of the elements' keys
  u64 listKeys_ = 0;
  u64 elementCount_ = 0;
  u64 rowCount_ = 0;
};

// An index of an entry as callers hand it in: kCountQuery asks for the number of entries.
inline constexpr i32 kCountQuery = -1;
inline bool is_index(const i32* index) {
  return index != nullptr && *index >= kCountQuery && *index <= 65535;
}

// The number of entries, from the parser of one of them; `count` stays when the reply is refused.
template <typename Record>
i32 count_entries(std::string_view document, i32 (*parse)(std::string_view, i32&, Record*),
                  i32& count) {
  i32 index = kCountQuery;
  const i32 status = parse(document, index, nullptr);
  if (status == kOk || status == kNothingListed) count = status == kOk ? index : 0;
  return status;
}

// Decodes as many entries as there are records; `count` is left at the number of good ones.
template <typename Record, typename Decode>
i32 fill_records(std::span<const ItemEntry> entries, Record* records, i32& count,
                 const Decode& decode) {
  const std::size_t room = static_cast<std::size_t>(count);
  count = 0;
  for (const ItemEntry& entry : entries.first(room < entries.size() ? room : entries.size())) {
    const i32 status = decode(entry, records[count]);
    if (status != kOk) return status;
    ++count;
  }
  return kOk;
}

}  // namespace pxcl::responses
