// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// What the readers of paper sizes and media types share: a list of keywords, and elements that
// repeat for every keyword of the list.

#pragma once

#include <iterator>

#include "keyed/items.hpp"
#include "responses/fields.hpp"

namespace pxcl::responses {

using keyed::kNameSpaceCount;
using xml::Reader;

// The values of one item, in the order in which indices count them.
struct Entries {
  Owned<ItemEntry> block = {};
  u32 count = 0;

  std::span<const ItemEntry> all() const { return {block.get(), count}; }
};

// The keys that tell whether a reply is a good answer to "GetCapability" come first in every
// request.
using keyed::kCheckKeys;
inline i32 check_reply(std::string_view document, std::span<const Answer, kCheckKeys> keys) {
  return keyed::check_operation_and_response(document, keys,
                                             keyed::kOperationGetCapabilityResponse);
}

template <typename AnyKey>
constexpr void ask_for_item(std::span<AnyKey, kNameSpaceCount> keys,
                            const keyed::path::ItemPaths& paths, u32 group) {
  for (u16 space = 0; space < kNameSpaceCount; ++space) {
    keys[space].path = paths[space];
    keys[space].group = group;
  }
}
// kOk or kNoMemory.
i32 read_item(std::string_view document, std::span<const Answer, kNameSpaceCount> keys,
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

// Sets `keys`, one for each element and namespace; their groups begin with `group`.
template <typename AnyKey>
constexpr void ask_for_elements(std::span<const keyed::path::ItemPaths> paths,
                                std::span<AnyKey> keys, u32 group) {
  for (std::size_t i = 0; i < keys.size(); ++i) {
    keys[i].path = paths[i % paths.size()][i / paths.size()];
    keys[i].wanted = xml::Wanted::kEach;
    keys[i].group = group + static_cast<u32>(i);
  }
}

// The elements of every keyword under every namespace, from one scan.
class KeywordTexts {
 public:
  KeywordTexts() = default;
  KeywordTexts(const KeywordTexts&) = delete;
  KeywordTexts& operator=(const KeywordTexts&) = delete;

  // Makes the readers of the elements' keys, which ask_for_elements() has set, hand their texts to
  // this. False when memory is short. To be called once.
  bool attend(const KeywordElements& elements, std::span<Reader> readers);
  void texts_of(std::string_view document, const ItemEntry& keyword, ElementTexts& texts) const;

 private:
  // The first text of an element; what follows it does not count.
  struct First {
    u32 offset;  // 0: none yet
    u32 length;  // 0: there but empty
  };
  // One element under one namespace.
  struct Column {
    KeywordTexts* owner = nullptr;
    First* rows = nullptr;  // by the dictionary's rows
    bool isFull = false;
  };

  static void take(void* column, const xml::EachText& text);
  u16 row_of(std::string_view keyword);  // kUnknownIndex for a text that is no keyword

  Column columns_[kNameSpaceCount * kMostElements];
  Dictionary dictionary_ = {};
  // The keyword met last: the elements of one mostly stand together.
  u16 lastRow_ = keyed::kUnknownIndex;
  u64 lastLength_ = 0;
  u64 elementCount_ = 0;
  Owned<First> rows_;
};

// --- Paper sizes ---------------------------------------------------------------------------------

inline constexpr keyed::path::ItemPaths kSizeElements[] = {
    keyed::path::kPrintAreaBorder, keyed::path::kPrintAreaBorderless, keyed::path::kPrintAreaDuplex,
    keyed::path::kMarginBorder,    keyed::path::kMarginBorderless,    keyed::path::kMarginDuplex,
};
inline constexpr u64 kSizeListKeys = kNameSpaceCount;
inline constexpr u64 kSizeKeys = kSizeListKeys + std::size(kSizeElements) * kNameSpaceCount;

// Takes as many groups as keys.
template <typename AnyKey>
constexpr void ask_for_sizes(std::span<AnyKey, kSizeKeys> keys, u32 group) {
  ask_for_item(keys.template first<kNameSpaceCount>(), keyed::path::kPaperSizes, group);
  ask_for_elements(kSizeElements, std::span<AnyKey>(keys.template subspan<kSizeListKeys>()),
                   group + kSizeListKeys);
}

// What a reply says of all sizes.
struct SizeReply {
  Entries sizes;
  KeywordTexts elements;

  // Before the scan, for the elements.
  bool attend(std::span<Reader, kSizeKeys> readers);
  // After it; kNothingListed when there is no size.
  i32 read_list(std::string_view document, std::span<const Answer, kSizeKeys> keys);
  i32 decode(std::string_view document, const ItemEntry& size, ClssPaperSize& record) const;
};

// --- Media types ---------------------------------------------------------------------------------

inline constexpr keyed::path::ItemPaths kTypeElements[] = {
    keyed::path::kBorderlessPrint,
    keyed::path::kPrintColorMode,
    keyed::path::kDuplexPrint,
};
inline constexpr u64 kTypeListKeys = 2 * kNameSpaceCount;  // types and staple sides
inline constexpr u64 kTypeKeys = kTypeListKeys + std::size(kTypeElements) * kNameSpaceCount;

// Takes as many groups as keys.
template <typename AnyKey>
constexpr void ask_for_types(std::span<AnyKey, kTypeKeys> keys, u32 group) {
  ask_for_item(keys.template first<kNameSpaceCount>(), keyed::path::kPaperTypes, group);
  ask_for_item(keys.template subspan<kNameSpaceCount, kNameSpaceCount>(), keyed::path::kStapleSides,
               group + 1);
  ask_for_elements(kTypeElements, std::span<AnyKey>(keys.template subspan<kTypeListKeys>()),
                   group + kTypeListKeys);
}

// What a reply says of all types.
struct TypeReply {
  Entries types;
  Entries stapleSides;
  KeywordTexts elements;

  // As those of SizeReply.
  bool attend(std::span<Reader, kTypeKeys> readers);
  i32 read_list(std::string_view document, std::span<const Answer, kTypeKeys> keys);
  i32 decode(std::string_view document, const ItemEntry& type, ClssMediaType& record) const;
};

// Reads the lists of a SizeReply or TypeReply by its keys' plan and, where they are wanted, the
// elements of their entries: one scan.
template <const auto& kKeys, typename Reply>
i32 read_listed(std::string_view document, const xml::Plan& plan, bool withElements, Reply& reply) {
  Answers<kKeys> answers;
  const std::span all = answers.all();
  Reader readers[std::size(kKeys)];
  const std::span attended(readers);
  if (withElements && !reply.attend(attended.template subspan<kCheckKeys>())) return kNoMemory;
  i32 status = keyed::ask(document, plan, all, nullptr, withElements ? readers : nullptr);
  if (status == kOk) status = check_reply(document, all.template first<kCheckKeys>());
  if (status != kOk) return status;
  return reply.read_list(document, all.template subspan<kCheckKeys>());
}

// --- One entry or all ----------------------------------------------------------------------------

// An index of an entry as callers hand it in: kCountQuery asks for the number of entries.
inline constexpr i32 kCountQuery = -1;
inline constexpr i32 kLastIndex = 65535;
inline bool is_index(const i32* index) {
  return index != nullptr && *index >= kCountQuery && *index <= kLastIndex;
}

// The number of entries, from the parser of one of them; `count` stays when the reply is refused.
template <typename Record>
i32 count_entries(std::string_view document, i32 (*parse)(std::string_view, i32&, Record*),
                  i32& count) {
  i32 index = kCountQuery;
  const i32 status = parse(document, index, nullptr);
  if (status == kOk) count = index;
  if (status == kNothingListed) count = 0;
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
