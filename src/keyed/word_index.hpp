// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Where a keyword stands in a large dictionary, without a walk through its rows.

#pragma once

#include <array>
#include <string_view>

#include "dictionaries.h"
#include "util/types.hpp"
#include "xml/plan.hpp"

namespace pxcl::keyed {

// Row indices and the lengths of their keywords, each in the first free slot from its keyword's hash
// on.
struct WordIndex {
  static constexpr std::size_t kSlots = 256;
  static constexpr u8 kFree = 255;
  static constexpr std::size_t kShortest = 4;  // bytes of a keyword
  std::array<u8, kSlots> rows;
  std::array<u8, kSlots> lengths;
};

// Keywords of one dictionary differ in length or near their ends.
constexpr std::size_t hash_word(std::string_view word) {
  return xml::hash_bytes(word.data(), static_cast<u32>(word.size())) >> 24;
}

void a_keyword_has_to_be_a_long_value();  // is nowhere: what calls it does not compile

template <std::size_t count>
constexpr WordIndex index_words(const ClssDicRow (&table)[count]) {
  static_assert(count <= WordIndex::kFree / 2);
  WordIndex index = {};
  index.rows.fill(WordIndex::kFree);
  for (std::size_t row = 0; row < count; ++row) {
    if (table[row].keyword == nullptr) continue;
    const std::string_view word = table[row].keyword;
    // Such a keyword is found in a text before it is known what the text's value is.
    if (word.size() < WordIndex::kShortest || word.find_first_of(" ,") != word.npos)
      a_keyword_has_to_be_a_long_value();
    std::size_t slot = hash_word(word);
    while (index.rows[slot] != WordIndex::kFree) slot = (slot + 1) % WordIndex::kSlots;
    index.rows[slot] = static_cast<u8>(row);
    index.lengths[slot] = static_cast<u8>(word.size());
  }
  return index;
}

extern const WordIndex kPaperSizeWords;
extern const WordIndex kPaperTypeWords;
extern const WordIndex kOperationWords;
extern const WordIndex kStatusWords;
extern const WordIndex kStatusDetailWords;
extern const WordIndex kStateWords;
extern const WordIndex kJobProgressWords;
extern const WordIndex kResponseDetailWords;

// The index of a dictionary; null when it has none. It pays from some five long words on.
template <const ClssDicRow (&kDictionary)[]>
inline constexpr const WordIndex* kWordsOf = nullptr;
template <>
inline constexpr const WordIndex* kWordsOf<glb_clssdicPaperSizeTbl> = &kPaperSizeWords;
template <>
inline constexpr const WordIndex* kWordsOf<glb_clssdicPaperTypeTbl> = &kPaperTypeWords;
template <>
inline constexpr const WordIndex* kWordsOf<glb_clssdicOperationTbl> = &kOperationWords;
template <>
inline constexpr const WordIndex* kWordsOf<glb_clssdicStatusTbl> = &kStatusWords;
template <>
inline constexpr const WordIndex* kWordsOf<glb_clssdicStatusDetailTbl> = &kStatusDetailWords;
template <>
inline constexpr const WordIndex* kWordsOf<glb_clssdicStateTbl> = &kStateWords;
template <>
inline constexpr const WordIndex* kWordsOf<glb_clssdicJobProgressTbl> = &kJobProgressWords;
template <>
inline constexpr const WordIndex* kWordsOf<glb_clssdicResponseDetailTbl> = &kResponseDetailWords;

// The same for a dictionary that is known at run time only, if it is one of the large ones.
inline const WordIndex* word_index_of(const ClssDicRow* dictionary) {
  if (dictionary == glb_clssdicPaperSizeTbl) return kWordsOf<glb_clssdicPaperSizeTbl>;
  if (dictionary == glb_clssdicPaperTypeTbl) return kWordsOf<glb_clssdicPaperTypeTbl>;
  if (dictionary == glb_clssdicOperationTbl) return kWordsOf<glb_clssdicOperationTbl>;
  return nullptr;
}

}  // namespace pxcl::keyed
