// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// 32-bit numbers to text and back.

#include <algorithm>
#include <limits>

#include "kwvs.h"
#include "util/types.hpp"

namespace {

using pxcl::i32;
using pxcl::u32;
using pxcl::u64;

constexpr u32 kBaseMask = 0x0F;
constexpr u32 kLayoutMask = 0x60;
constexpr u32 kLayoutPlain = 0;

// The base that each value of a flag's base field, or of a read mode, stands for; 0 is none.
constexpr u32 kBases[] = {0, 10, 8, 16, 2};

constexpr u32 kOctal = 8;
constexpr u32 kDecimal = 10;
constexpr u32 kHexadecimal = 16;

// The digits of a number, least significant first.
struct Digits {
  char text[32];  // enough for base 2
  u32 count = 0;

  Digits(u32 value, u32 base) {
    do {
      text[count++] = "0123456789ABCDEF"[value % base];
      value /= base;
    } while (value != 0);
  }
};

// The value of a digit; anything else is no digit of any base.
constexpr u32 digit_value(char byte) {
  if (byte >= '0' && byte <= '9') return static_cast<u32>(byte - '0');
  if (byte >= 'A' && byte <= 'F') return static_cast<u32>(byte - 'A') + kDecimal;
  if (byte >= 'a' && byte <= 'f') return static_cast<u32>(byte - 'a') + kDecimal;
  return std::numeric_limits<u32>::max();
}

void skip_spaces(std::string_view& rest) {
  while (!rest.empty() && pxcl::is_space(rest.front())) rest.remove_prefix(1);
}

bool take_sign(std::string_view& rest) {
  const bool negative = rest.starts_with('-');
  if (negative || rest.starts_with('+')) rest.remove_prefix(1);
  return negative;
}

// The base to read in, its prefix taken; 0 for an unknown mode. A leading "0" is left: it is a
// digit.
u32 take_base(std::string_view& rest, i32 mode) {
  if (mode < KWVS_READ_BY_PREFIX || mode > KWVS_READ_BINARY) return 0;
  const bool prefixed = rest.starts_with("0x") || rest.starts_with("0X");
  if (prefixed && (mode == KWVS_READ_BY_PREFIX || mode == KWVS_READ_HEXADECIMAL)) {
    rest.remove_prefix(2);
    return kHexadecimal;
  }
  if (mode == KWVS_READ_BY_PREFIX) return rest.starts_with('0') ? kOctal : kDecimal;
  return kBases[mode];
}

// Takes every digit; a number past the limit stays at the limit.
u32 take_digits(std::string_view& rest, u32 base, u32 limit) {
  u32 number = 0;
  for (; !rest.empty() && digit_value(rest.front()) < base; rest.remove_prefix(1)) {
    const u32 digit = digit_value(rest.front());
    const bool fits = number <= limit / base && number * base <= limit - digit;
    number = fits ? number * base + digit : limit;
  }
  return number;
}

}  // namespace

extern "C" {

int32_t KWVS4sToString(int32_t value, char* buffer, uint64_t size, uint32_t flags) {
  const u32 baseField = flags & kBaseMask;
  if (buffer == nullptr || size == 0 || baseField == 0 || baseField > KWVS_BASE_BINARY) {
    return KWVS_BAD_ARGUMENT;
  }
  if (!pxcl::fits_memory(size)) return KWVS_BAD_ARGUMENT;
  const bool negative = baseField == KWVS_BASE_DECIMAL && value < 0;
  const bool terminated = (flags & KWVS_NO_TERMINATOR) == 0;
  const u32 bits = static_cast<u32>(value);
  const Digits digits(negative ? 0U - bits : bits, kBases[baseField]);

  const u64 needed = u64{negative} + u64{terminated} + digits.count;
  if (size < needed) return KWVS_BUFFER_TOO_SMALL;
  const u32 layout = flags & kLayoutMask;
  if (layout != kLayoutPlain && layout != KWVS_PAD_BLANKS && layout != KWVS_PAD_ZEROS) {
    return KWVS_BAD_ARGUMENT;
  }

  char* next = buffer;
  if (layout == KWVS_PAD_BLANKS) next = std::fill_n(next, size - needed, ' ');
  if (negative) *next++ = '-';
  if (layout == KWVS_PAD_ZEROS) next = std::fill_n(next, size - needed, '0');
  next = std::reverse_copy(digits.text, digits.text + digits.count, next);
  if (terminated) *next++ = '\0';
  return static_cast<int32_t>(next - buffer);
}

int32_t KWVSStringTo4s(const char* text, uint64_t length, uint64_t* consumed, int32_t mode) {
  if (consumed != nullptr) *consumed = 0;
  if (text == nullptr) return KWVS_NO_NUMBER;
  std::string_view rest = pxcl::as_view(text, length);
  skip_spaces(rest);
  const bool negative = take_sign(rest);
  const u32 base = take_base(rest, mode);
  if (base == 0 || rest.empty() || digit_value(rest.front()) >= base) return KWVS_NO_NUMBER;

  const u32 limit = static_cast<u32>(std::numeric_limits<i32>::max()) + u32{negative};
  const u32 number = take_digits(rest, base, limit);
  if (consumed != nullptr) *consumed = length - rest.size();
  return static_cast<int32_t>(negative ? 0U - number : number);
}

}  // extern "C"
