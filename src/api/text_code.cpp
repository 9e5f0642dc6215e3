// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Bytes as letters: two for each byte, "=", and eight for the sum of all bytes.

#include <algorithm>
#include <cstring>
#include <limits>

#include "pxcl.h"
#include "util/types.hpp"

using namespace pxcl;

namespace {

constexpr i32 kRefused = -1;
constexpr u8 kMask = 0x5A;
constexpr u64 kDigits = 8;           // of the checksum
constexpr u64 kFrame = 1 + kDigits;  // "=" and checksum
constexpr u64 kMostResult = std::numeric_limits<i32>::max();

char to_letter(u32 digit) {
  return static_cast<char>('a' + (digit & 15));
}

// The sixteen letters are digits; anything else is a number beyond them.
u32 to_digit(char letter) {
  return static_cast<u32>(static_cast<u8>(letter)) - 'a';
}

i32 refuse_cleared(u8* output, std::size_t size) {
  std::memset(output, 0, size);
  return kRefused;
}

// Letters beyond the sixteen are not refused here: they only make another sum.
u32 read_checksum(std::string_view letters) {
  u32 sum = 0;
  for (const char letter : letters) sum = sum * 16 + to_digit(letter);
  return sum;
}

// Whole pairs from the start of `text` up to its "=".
struct Pairs {
  u64 count = 0;  // decoded so far
  u32 sum = 0;
  enum { kEnded, kBadLetter, kNoEnd } end = kNoEnd;
};

Pairs read_pairs(std::string_view text, u8* output, u64 room) {
  Pairs pairs;
  for (; 2 * pairs.count < text.size(); ++pairs.count) {
    const std::string_view rest = from(text, 2 * pairs.count);
    if (rest[0] == '=') {
      pairs.end = Pairs::kEnded;
      return pairs;
    }
    if (rest.size() < 2 || pairs.count == room) return pairs;
    const u32 high = to_digit(rest[0]);
    const u32 low = to_digit(rest[1]);
    if (high > 15 || low > 15) {
      pairs.end = Pairs::kBadLetter;
      return pairs;
    }
    const u8 byte = static_cast<u8>((high * 16 + low) ^ kMask);
    output[pairs.count] = byte;
    pairs.sum += byte;
  }
  return pairs;
}

}  // namespace

i32 PXCL_EncodeToString(const u8* data, u64 dataLength, char* output, u64 outputSize) {
  if (output == nullptr || (data == nullptr && dataLength != 0)) return kRefused;
  if (dataLength > (kMostResult - kFrame) / 2) return kRefused;
  const u64 length = 2 * dataLength + kFrame;
  if (length > outputSize || !fits_memory(outputSize)) return kRefused;

  std::memset(output, 0, memory_size(outputSize));
  u32 sum = 0;
  for (u64 i = 0; i < dataLength; ++i) {
    const u32 masked = data[i] ^ kMask;
    *output++ = to_letter(masked >> 4);
    *output++ = to_letter(masked);
    sum += data[i];
  }
  *output++ = '=';
  for (u32 shift = 32; shift > 0; shift -= 4) *output++ = to_letter(sum >> (shift - 4));
  return static_cast<i32>(length);
}

i32 PXCL_DecodeFromString(const char* text, u64 textLength, u8* output, u64 outputSize) {
  if (text == nullptr || textLength < kFrame || outputSize < (textLength - kFrame) / 2) {
    return kRefused;
  }
  if (output == nullptr && outputSize != 0) return kRefused;
  if (!fits_memory(outputSize)) return kRefused;
  if (outputSize != 0) std::memset(output, 0, memory_size(outputSize));

  const std::string_view all = as_view(text, textLength);
  const Pairs pairs = read_pairs(all, output, std::min(outputSize, kMostResult));
  if (pairs.end == Pairs::kBadLetter) return kRefused;
  const std::string_view rest = from(all, 2 * pairs.count);
  if (pairs.end != Pairs::kEnded || rest.size() < kFrame ||
      read_checksum(slice(rest, 1, kDigits)) != pairs.sum) {
    return refuse_cleared(output, memory_size(outputSize));
  }
  return static_cast<i32>(pairs.count);
}
