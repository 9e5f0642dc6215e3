// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <cstring>

#include "keyed.h"
#include "util/owned.hpp"
#include "util/types.hpp"

namespace {

using namespace pxcl;

constexpr i32 kNoWord = -1;  // searchString: none occurs, bad argument or memory is short

// Where a token that is not empty begins in a text; the text's size when it is not there.
std::size_t find(std::string_view text, std::string_view token) {
  const void* at = KWVSForwardSearchData(text.data(), text.size(), token.data(), token.size());
  return at == nullptr ? text.size()
                       : static_cast<std::size_t>(static_cast<const char*>(at) - text.data());
}

// What follows the given occurrence of a token; empty when there is nothing or no such occurrence.
std::string_view behind(std::string_view text, std::string_view token, i32 occurrence) {
  if (token.empty()) return text;  // every occurrence of it is at the beginning
  for (i32 seen = 0;; ++seen) {
    const std::size_t at = find(text, token);
    if (at == text.size()) return {};
    text = from(text, at + token.size());
    if (seen == occurrence) return text;
  }
}

// The text without its white space, zero-terminated.
Owned<char> copy_packed(std::string_view text) {
  Owned<char> copy = Owned<char>::allocate(text.size() + 1);
  if (!copy) return copy;
  char* end = copy.get();
  for (const char byte : text) {
    if (!is_space(byte)) *end++ = byte;
  }
  return copy;
}

}  // namespace

extern "C" {

const char* getToken(const char* text, i32 length, const char* start, const char* end,
                     i32 occurrence, u32* fieldLength) {
  if (fieldLength == nullptr) return nullptr;
  *fieldLength = 0;
  if (text == nullptr || start == nullptr || end == nullptr) return nullptr;
  if (length < 1 || occurrence < 0) return nullptr;
  const std::string_view field =
      behind({text, static_cast<std::size_t>(length)}, start, occurrence);
  if (field.empty()) return nullptr;
  const std::string_view endToken(end);
  if (endToken.empty()) return field.data();
  const std::size_t size = find(field, endToken);
  if (size == field.size()) return nullptr;
  *fieldLength = static_cast<u32>(size);
  return field.data();
}

u32 getTokenTotal(const char* text, u64 length, const char* token) {
  if (text == nullptr || length == 0 || token == nullptr || *token == '\0') return 0;
  const std::string_view word(token);
  u32 total = 0;
  for (std::string_view rest = as_view(text, length);;) {
    const std::size_t at = find(rest, word);
    if (at == rest.size()) return total;
    ++total;
    rest = from(rest, at + word.size());
  }
}

i32 searchString(const char* text, i32 length, const char* const* words) {
  if (text == nullptr || length < 1 || words == nullptr) return kNoWord;
  const Owned<char> packed = copy_packed({text, static_cast<std::size_t>(length)});
  if (!packed) return kNoWord;
  for (i32 index = 0; words[index] != nullptr; ++index) {
    if (std::strstr(packed.get(), words[index]) != nullptr) return index;
  }
  return kNoWord;
}

}  // extern "C"
