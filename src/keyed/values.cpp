// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "keyed/values.hpp"

#include <algorithm>
#include <cstring>
#include <limits>

#include "keyed/status.hpp"
#include "keyed/word_index.hpp"
#include "util/owned.hpp"
#include "xml/plan.hpp"

namespace pxcl::keyed {
namespace {

constexpr u64 kJobIDLength = 8;
constexpr u64 kShortWord = 128;  // longer than any keyword of the protocol

// SetStringValue
constexpr i32 kNotCopied = 0;
constexpr i32 kCopied = 1;

// CheckJobID
constexpr i32 kAnotherJobID = 1;

// The bytes of a text's value, one after the other.
class ValueBytes {
 public:
  explicit ValueBytes(std::string_view text) : at_(text.data()), end_(at_ + text.size()) {}

  // The next byte; 0 at the end and from there on.
  char next() {
    while (at_ != end_ && *at_ == ' ') ++at_;
    if (at_ == end_ || *at_ == ',' || *at_ == '\0') return '\0';
    return *at_++;
  }

 private:
  const char* at_;
  const char* end_;
};

// The lowest bit of each byte of `word` that is `byte`, and perhaps of bytes behind it.
constexpr u64 mark_bytes(u64 word, char byte) {
  constexpr u64 kOnes = 0x0101010101010101u;
  const u64 difference = word ^ kOnes * static_cast<u8>(byte);
  return (difference - kOnes) & ~difference & kOnes << 7;
}

constexpr bool ends_value(u64 word) {
  return (mark_bytes(word, ' ') | mark_bytes(word, ',') | mark_bytes(word, '\0')) != 0;
}

// Whether the text is its own value, as nearly every one is: no blank, no comma, no NUL byte.
bool is_whole_value(std::string_view text) {
  constexpr u64 kWidth = sizeof(u64), kHalf = kWidth / 2;
  if (text.size() < kHalf) {
    return std::none_of(text.begin(), text.end(),
                        [](char byte) { return byte == ' ' || byte == ',' || byte == '\0'; });
  }
  const u64 last = text.size() - kWidth;
  if (text.size() < kWidth) {
    const char* end = text.data() + text.size() - kHalf;
    return !ends_value(xml::load_bytes(text.data(), kHalf) << 32 | xml::load_bytes(end, kHalf));
  }
  for (u64 at = 0; at < last; at += kWidth) {
    if (ends_value(xml::load_bytes(text.data() + at, kWidth))) return false;
  }
  return !ends_value(xml::load_bytes(text.data() + last, kWidth));
}

// Copies a value of up to kShortWord bytes; an empty view without data when it is longer.
std::string_view copy_short_word(std::string_view text, char (&word)[kShortWord]) {
  std::size_t length = 0;
  for (const char byte : text) {
    if (byte == ' ') continue;
    if (byte == ',' || byte == '\0') break;
    if (length == kShortWord) return {};
    word[length++] = byte;
  }
  return {word, length};
}

// For any word, one with a NUL byte too. Keywords are short: a call would cost more than the loop.
inline bool is_word(const char* keyword, std::string_view word) {
  for (const char byte : word) {
    if (*keyword != byte || byte == '\0') return false;
    ++keyword;
  }
  return *keyword == '\0';
}

bool is_same_word(const char* keyword, std::string_view text) {
  ValueBytes value(text);
  for (;; ++keyword) {
    const char byte = value.next();
    if (byte != *keyword) return false;
    if (byte == '\0') return true;
  }
}

// Keywords of the protocol are told apart from a long value by their length alone.
bool is_same_long_word(const char* keyword, std::string_view text) {
  return strnlen(keyword, kShortWord + 1) > kShortWord && is_same_word(keyword, text);
}

template <typename IsSame>
inline DicMatch find_row(std::span<const ClssDicRow> dictionary, IsSame is_same) {
  const std::size_t rows = std::min<std::size_t>(dictionary.size(), kUnknownIndex);
  for (std::size_t index = 0; index < rows; ++index) {
    const ClssDicRow& row = dictionary[index];
    if (row.keyword != nullptr && is_same(row.keyword)) return {static_cast<u16>(index), row.code};
  }
  return {};
}

// The same for texts of one length, which an index knows.
inline bool is_same(const char* keyword, const char* word, u64 length) {
  static_assert(WordIndex::kShortest == 4);
  const auto differs = [&](u64 at, u32 width) {
    return xml::load_bytes(keyword + at, width) ^ xml::load_bytes(word + at, width);
  };
  if (length < 8) return (differs(0, 4) | differs(length - 4, 4)) == 0;
  for (u64 at = 0; at + 8 < length; at += 8) {
    if (differs(at, 8) != 0) return false;
  }
  return differs(length - 8, 8) == 0;
}

inline DicMatch find_indexed(std::span<const ClssDicRow> dictionary, const WordIndex& index,
                             std::string_view word) {
  for (std::size_t slot = hash_word(word);; ++slot) {
    const std::size_t at = slot % WordIndex::kSlots;
    const u16 row = index.rows[at];
    if (row == WordIndex::kFree) return {};
    if (row < dictionary.size() && index.lengths[at] == word.size() &&
        is_same(dictionary[row].keyword, word.data(), word.size())) {
      return {row, dictionary[row].code};
    }
  }
}

constexpr bool is_digit(char byte) {
  return byte >= '0' && byte <= '9';
}

bool is_job_id(const char* text) {
  return std::strlen(text) == kJobIDLength && std::all_of(text, text + kJobIDLength, is_digit);
}

DicMatch find_word(std::span<const ClssDicRow> dictionary, std::string_view word,
                   const WordIndex* index) {
  if (index != nullptr) return find_indexed(dictionary, *index, word);
  return find_row(dictionary, [&](const char* keyword) { return is_word(keyword, word); });
}

// What the text's value is, where `whole` is what the text is as it stands.
[[gnu::noinline]] DicMatch find_value(std::span<const ClssDicRow> dictionary, std::string_view text,
                                      DicMatch whole, const WordIndex* index) {
  if (is_whole_value(text)) return whole;
  char buffer[kShortWord];
  const std::string_view word = copy_short_word(text, buffer);
  if (word.data() != nullptr) return find_word(dictionary, word, index);
  return find_row(dictionary,
                  [&](const char* keyword) { return is_same_long_word(keyword, text); });
}

// A value of few digits, which fits in any case; `length` is 0 for any other value.
struct PlainNumber {
  u32 number;
  u32 length;
};

inline PlainNumber read_plain_number(std::string_view text) {
  constexpr std::size_t kSafeDigits = 9;
  const char* const begin = text.data();
  const char* const last = begin + std::min(text.size(), kSafeDigits);
  u32 number = 0;
  const char* at = begin;
  for (; at != last && is_digit(*at); ++at) number = number * 10 + static_cast<u32>(*at - '0');
  const bool isValue = at == begin + text.size() || *at == ',';
  return {number, isValue ? static_cast<u32>(at - begin) : 0};
}

u32 read_any_number(std::string_view text) {
  ValueBytes value(text);
  char byte = value.next();
  while (is_space(byte)) byte = value.next();
  const bool negative = byte == '-';
  if (negative || byte == '+') byte = value.next();
  if (!is_digit(byte)) return kNotANumber;

  const u64 limit = u64{std::numeric_limits<i32>::max()} + (negative ? 1 : 0);
  u64 number = 0;
  for (; is_digit(byte); byte = value.next()) {
    number = std::min(number * 10 + static_cast<u64>(byte - '0'), limit);
  }
  return static_cast<u32>(negative ? 0 - number : number);
}

}  // namespace

DicMatch look_up(std::span<const ClssDicRow> dictionary, std::string_view text, Keywords keywords) {
  return look_up(dictionary, text, keywords, word_index_of(dictionary.data()));
}

// Nothing is called from here but at the end.
DicMatch look_up_indexed(std::span<const ClssDicRow> dictionary, std::string_view text,
                         const WordIndex& index) {
  const DicMatch match = find_indexed(dictionary, index, text);
  return match.index != kUnknownIndex ? match : find_value(dictionary, text, match, &index);
}

DicMatch look_up_row(std::span<const ClssDicRow> dictionary, std::string_view text,
                     Keywords keywords) {
  const DicMatch match =
      find_row(dictionary, [&](const char* keyword) { return is_word(keyword, text); });
  const bool isSure = match.index != kUnknownIndex && keywords == Keywords::kValues;
  return isSure ? match : find_value(dictionary, text, match, nullptr);
}

u16 find_keyword(std::span<const ClssDicRow> dictionary, std::string_view word,
                 const WordIndex* index) {
  return find_word(dictionary, word, index).index;
}

u32 read_number(std::string_view text) {
  const PlainNumber plain = read_plain_number(text);
  return plain.length != 0 ? plain.number : read_any_number(text);
}

u32 take_number(std::string_view& list) {
  const PlainNumber plain = read_plain_number(list);
  const std::size_t length =
      plain.length != 0 ? plain.length : std::min(list.find(','), list.size());
  const u32 number = plain.length != 0 ? plain.number : read_any_number(slice(list, 0, length));
  list = length < list.size() ? from(list, length + 1) : std::string_view();
  return number;
}

u64 value_length(std::string_view text) {
  u64 length = 0;
  for (ValueBytes value(text); value.next() != '\0';) ++length;
  return length;
}

bool copy_value(std::string_view text, char* destination, u64 size) {
  if (is_whole_value(text)) {
    if (text.size() >= size) return false;
    std::memcpy(destination, text.data(), text.size());
    destination[text.size()] = '\0';
    return true;
  }
  if (value_length(text) >= size) return false;
  ValueBytes value(text);
  while ((*destination = value.next()) != '\0') ++destination;
  return true;
}

}  // namespace pxcl::keyed

using namespace pxcl;
using namespace pxcl::keyed;

extern "C" {

i32 GetVasloID(const ClssDicRow* dictionary, u32 rowCount, const char* text, u64 length, u16* index,
               u16* code) {
  if (dictionary == nullptr || rowCount == 0 || text == nullptr || length == 0) return kBadArgument;
  if (index == nullptr || code == nullptr || !fits_memory(length)) return kBadArgument;
  const DicMatch match = look_up(rows_of(dictionary, rowCount), as_view(text, length));
  *index = match.index;
  *code = match.code;
  return kOk;
}

i32 GetValue(const char* text, u64 length, u32* value) {
  if (text == nullptr || length == 0 || value == nullptr) return kBadArgument;
  if (!fits_memory(length)) return kBadArgument;
  *value = read_number(as_view(text, length));
  return kOk;
}

i32 SetStringValue(const char* text, u64 length, char* destination, i32 size) {
  if (text == nullptr || length == 0 || destination == nullptr || size < 1) return kNotCopied;
  if (!fits_memory(length)) return kNotCopied;
  const std::string_view all = as_view(text, length);
  return copy_value(all, destination, static_cast<u64>(size)) ? kCopied : kNotCopied;
}

i32 CheckJobID(const char* expected, const char* text, u64 length) {
  if (text == nullptr || length == 0) return kBadArgument;
  char jobID[kJobIDLength + 1];
  const std::string_view all = as_view(text, length);
  if (!copy_value(all, jobID, sizeof jobID) || !is_job_id(jobID)) return kBadArgument;
  if (expected == nullptr) return kOk;
  return std::strcmp(expected, jobID) == 0 ? kOk : kAnotherJobID;
}

i32 GetIdOrValue(const ClssDicRow* dictionary, u32 rowCount, const char* text, u64 length,
                 u32* value, u16* code) {
  if (value == nullptr || code == nullptr) return dictionary != nullptr ? kBadArgument : kInvalid;
  if (dictionary != nullptr) {
    u16 index = kUnknownIndex;
    const i32 status = GetVasloID(dictionary, rowCount, text, length, &index, code);
    if (status == kOk) *value = index;
    return status;
  }
  if (GetValue(text, length, value) != kOk) return kInvalid;
  *code = kNoCode;
  return kOk;
}

char* CopyValueText(const char* text, u64 length) {
  if (text == nullptr || length == 0 || length == std::numeric_limits<u64>::max()) return nullptr;
  Owned<char> copy = Owned<char>::allocate(length + 1);
  if (!copy) return nullptr;
  char* end = copy.get();
  for (const char byte : as_view(text, length)) {
    if (byte == ',') break;
    if (byte != ' ') *end++ = byte;
  }
  return copy.release();
}

}  // extern "C"
