// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string_view>

namespace pxcl {

using i16 = std::int16_t;
using i32 = std::int32_t;
using i64 = std::int64_t;
using u8 = std::uint8_t;
using u16 = std::uint16_t;
using u32 = std::uint32_t;
using u64 = std::uint64_t;

// Callers hand in lengths of 64 bits, wherever the library runs. Where addresses have fewer, a length
// may be one that no memory can have: nothing is ever cut down to its low bits.
constexpr bool fits_memory(u64 length) {
  if constexpr (sizeof(std::size_t) == sizeof(u64)) return true;
  return length <= static_cast<u64>(std::numeric_limits<std::ptrdiff_t>::max());
}
// A length that does not fit counts as 0: an empty text, which readers refuse or find nothing in.
constexpr std::size_t memory_size(u64 length) {
  return fits_memory(length) ? static_cast<std::size_t>(length) : 0;
}
constexpr std::string_view as_view(const char* text, u64 length) {
  return {text, memory_size(length)};
}

// std::string_view::substr() refers to the C++ runtime's exceptions; these two do not. What they
// are asked for lies in the text.
constexpr std::string_view from(std::string_view text, u64 begin) {
  return {text.data() + begin, static_cast<std::size_t>(text.size() - begin)};
}
constexpr std::string_view slice(std::string_view text, u64 begin, u64 length) {
  return {text.data() + begin, static_cast<std::size_t>(length)};
}

// The four bytes that the whole library calls white space.
constexpr bool is_space(char byte) {
  return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r';
}

}  // namespace pxcl
