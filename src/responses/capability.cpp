// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "responses/capability.hpp"

#include <cstring>

namespace pxcl::responses {
namespace {

std::string_view keyword_of(const Dictionary& dictionary, u64 row) {
  const char* keyword = dictionary.rows[row].keyword;
  return keyword == nullptr ? std::string_view() : std::string_view(keyword, std::strlen(keyword));
}

// A key is its stem, the keyword and the quote that closes the attribute.
u64 key_length(std::string_view stem, std::string_view keyword) {
  return stem.size() + keyword.size() + 1;
}

std::string_view write_key(std::string_view stem, std::string_view keyword, char* room) {
  std::memcpy(room, stem.data(), stem.size());
  std::memcpy(room + stem.size(), keyword.data(), keyword.size());
  room[stem.size() + keyword.size()] = '"';
  return {room, key_length(stem, keyword)};
}

// Calls `visit` for every element under every namespace with every row, in the order of the keys.
// An unused row has no keyword, and a key that matches nothing.
template <typename Visit>
void for_each_key(const KeywordElements& elements, const Visit& visit) {
  u64 place = 0;
  for (u16 space = 0; space < kNameSpaceCount; ++space) {
    for (const auto& stems : elements.stems) {
      for (u64 row = 0; row < *elements.dictionary.rowCount; ++row) {
        visit(place++, stems[space], keyword_of(elements.dictionary, row));
      }
    }
  }
}

}  // namespace

void ask_for_item(ItemKeys keys, const keyed::path::ItemPaths& paths, u32 group) {
  for (u16 space = 0; space < kNameSpaceCount; ++space) {
    keys[space].path = paths[space];
    keys[space].group = group;
  }
}

i32 read_item(std::string_view document, std::span<const Query, kNameSpaceCount> keys,
              const Dictionary& dictionary, Entries& entries) {
  ItemSet item = {};
  item.dictionary = dictionary.rows;
  item.rowCount = *dictionary.rowCount;
  const i32 status = keyed::decode_list(keyed::found_texts(document, keys), &item);
  entries.block.reset(item.entries);
  entries.count = item.entryCount;
  return status;
}

i32 ask_for_keyword(std::string_view document, const KeywordElements& elements,
                    const ItemEntry& keyword, ElementTexts& texts) {
  const std::string_view word = keyword_of(elements.dictionary, keyword.value);
  const std::size_t count = elements.stems.size();
  u64 need = 0;
  for (const auto& stems : elements.stems) need += key_length(stems[keyword.nameSpace], word);
  const Owned<char> room = Owned<char>::allocate(need);
  if (!room) return kNoMemory;
  Query keys[kMostElements];
  char* next = room.get();
  for (std::size_t i = 0; i < count; ++i) {
    keys[i].path = write_key(elements.stems[i][keyword.nameSpace], word, next);
    keys[i].group = static_cast<u32>(i);
    next += keys[i].path.size();
  }
  const i32 status = keyed::ask(document, std::span(keys).first(count));
  for (std::size_t i = 0; i < count; ++i) texts[i] = keyed::found_text(document, keys[i]);
  return status;
}

u64 WholeRequest::place_of(u64 nameSpace, u64 element, u64 row) const {
  return listKeys_ + (nameSpace * elementCount_ + element) * rowCount_ + row;
}

bool WholeRequest::allocate(u64 listKeys, const KeywordElements& elements) {
  listKeys_ = listKeys;
  elementCount_ = elements.stems.size();
  rowCount_ = *elements.dictionary.rowCount;
  u64 need = 0;
  for_each_key(elements, [&](u64, std::string_view stem, std::string_view word) {
    need += key_length(stem, word);
  });
  room_ = Owned<char>::allocate(need);
  if (!room_ || !keys_.allocate(place_of(kNameSpaceCount, 0, 0))) return false;
  char* next = room_.get();
  for_each_key(elements, [&](u64 place, std::string_view stem, std::string_view word) {
    Query& key = keys_.all()[listKeys_ + place];
    key.path = write_key(stem, word, next);
    key.group = static_cast<u32>(listKeys_ + place);
    next += key.path.size();
  });
  return true;
}

void WholeRequest::texts_of(std::string_view document, const ItemEntry& keyword,
                            ElementTexts& texts) const {
  for (u64 i = 0; i < elementCount_; ++i) {
    const Query& key = keys_.all()[place_of(keyword.nameSpace, i, keyword.value)];
    texts[i] = keyed::found_text(document, key);
  }
}

}  // namespace pxcl::responses
