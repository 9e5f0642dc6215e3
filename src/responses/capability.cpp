// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "responses/capability.hpp"

#include "keyed/values.hpp"
#include "xml/plan.hpp"

namespace pxcl::responses {

i32 read_item(std::string_view document, std::span<const Answer, kNameSpaceCount> keys,
              const Dictionary& dictionary, Entries& entries) {
  ItemSet item = {};
  item.dictionary = dictionary.rows;
  item.rowCount = *dictionary.rowCount;
  const i32 status =
      keyed::decode_list(keyed::found_texts(document, keys), &item, keyed::Keywords::kValues);
  entries.block.reset(item.entries);
  entries.count = item.entryCount;
  return status;
}

bool KeywordTexts::attend(const KeywordElements& elements, std::span<Reader> readers) {
  const u64 rowCount = *elements.dictionary.rowCount;
  dictionary_ = elements.dictionary;
  elementCount_ = elements.paths.size();
  rows_ = Owned<First>::allocate(readers.size() * rowCount);
  if (!rows_) return false;
  for (std::size_t i = 0; i < readers.size(); ++i) {
    columns_[i] = {this, rows_.get() + i * rowCount};
    readers[i] = {take, &columns_[i]};
  }
  return true;
}

u16 KeywordTexts::row_of(std::string_view keyword) {
  if (keyword.size() == lastLength_ &&
      xml::equal_bytes(keyword.data(), dictionary_.rows[lastRow_].keyword, lastLength_)) {
    return lastRow_;
  }
  const u16 row =
      keyed::find_keyword({dictionary_.rows, *dictionary_.rowCount}, keyword, dictionary_.words);
  if (row != keyed::kUnknownIndex) {
    lastRow_ = row;
    lastLength_ = keyword.size();
  }
  return row;
}

void KeywordTexts::take(void* self, const xml::EachText& text) {
  Column& column = *static_cast<Column*>(self);
  const auto keep = [&](u64 row) {
    First& first = column.rows[row];
    if (first.offset == 0) first = {static_cast<u32>(text.offset), static_cast<u32>(text.length)};
  };
  if (!text.key.empty()) {
    const u16 row = column.owner->row_of(text.key);
    if (row != keyed::kUnknownIndex) keep(row);
  } else if (!column.isFull) {
    for (u64 row = 0; row < *column.owner->dictionary_.rowCount; ++row) keep(row);
    column.isFull = true;
  }
}

void KeywordTexts::texts_of(std::string_view document, const ItemEntry& keyword,
                            ElementTexts& texts) const {
  for (u64 i = 0; i < elementCount_; ++i) {
    const First& first = columns_[keyword.nameSpace * elementCount_ + i].rows[keyword.value];
    texts[i] = first.length == 0 ? std::string_view() : slice(document, first.offset, first.length);
  }
}

}  // namespace pxcl::responses
