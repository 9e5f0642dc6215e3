// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Keywords, numbers and strings out of an element's text, without an allocation. What counts is the
// text's value: its bytes up to the first comma or zero byte, blanks dropped.

#pragma once

#include "keyed.h"
#include "keyed/vocabulary.hpp"
#include "util/types.hpp"

namespace pxcl::keyed {

struct WordIndex;

inline constexpr u32 kNotANumber = 0x80000000;  // what a text without digits reads as

struct DicMatch {
  u16 index = kUnknownIndex;
  u16 code = kNoCode;
};

inline std::span<const ClssDicRow> rows_of(const ClssDicRow* dictionary, u32 rowCount) {
  return {dictionary, rowCount};
}

// Whether a dictionary's keywords are values, as those of dictionaries.cpp are, or any texts: one
// with a blank or a comma is not found, even where a text is the same.
enum class Keywords : u8 { kAny, kValues };

// The first row that equals the text's value.
DicMatch look_up(std::span<const ClssDicRow> dictionary, std::string_view text,
                 Keywords keywords = Keywords::kAny);
// The same by the dictionary's index, and by a walk through its rows.
DicMatch look_up_indexed(std::span<const ClssDicRow> dictionary, std::string_view text,
                         const WordIndex& index);
DicMatch look_up_row(std::span<const ClssDicRow> dictionary, std::string_view text,
                     Keywords keywords);
// The same where it is known which index the dictionary has; null: none.
inline DicMatch look_up(std::span<const ClssDicRow> dictionary, std::string_view text,
                        Keywords keywords, const WordIndex* index) {
  return index != nullptr ? look_up_indexed(dictionary, text, *index)
                          : look_up_row(dictionary, text, keywords);
}

// The row whose keyword is this very text, kUnknownIndex for none; `index` as above.
u16 find_keyword(std::span<const ClssDicRow> dictionary, std::string_view word,
                 const WordIndex* index);

// The value of a text that is not empty as a decimal number within 32 signed bits.
u32 read_number(std::string_view text);
// The first value of a list that does not begin with a comma. Moves the list on behind it and its
// comma.
u32 take_number(std::string_view& list);

// Bytes of the value.
u64 value_length(std::string_view text);

// Writes the value and its terminator; false, and nothing written, when `size` bytes are too few.
bool copy_value(std::string_view text, char* destination, u64 size);

}  // namespace pxcl::keyed
