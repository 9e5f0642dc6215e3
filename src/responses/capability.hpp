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
// given by its path keys up to the attribute's name, one a namespace.
struct KeywordElements {
  std::span<const keyed::path::ItemPaths> paths;
  Dictionary dictionary;
};
inline constexpr std::size_t kMostElements = 6;

// The texts of one keyword's elements; one without data is not found.
using ElementTexts = std::string_view[kMostElements];

// The elements of every keyword under every namespace, from one scan.
class KeywordTexts {
 public:
  KeywordTexts() = default;
  KeywordTexts(const KeywordTexts&) = delete;
  KeywordTexts& operator=(const KeywordTexts&) = delete;

  // Makes `keys`, one for each element and namespace, ask for the texts; their groups begin with
  // `group`. False when memory is short. To be called once.
  bool ask_for(const KeywordElements& elements, std::span<Query> keys, u32 group);
  void texts_of(std::string_view document, const ItemEntry& keyword, ElementTexts& texts) const;

 private:
  // The first text of an element; what follows it does not count.
  struct First {
    u32 offset;  // 0: none yet
    u32 length;  // 0: there but empty
  };
  // One element under one namespace.
  struct Column {
    Dictionary dictionary = {};
    First* rows = nullptr;  // by the dictionary's rows
    bool isFull = false;
  };

  static void take(void* column, const xml::EachText& text);

  Column columns_[kNameSpaceCount * kMostElements];
  u64 elementCount_ = 0;
  Owned<First> rows_;
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
