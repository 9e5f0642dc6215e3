// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <cstddef>
#include <cstdint>
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

static_assert(sizeof(std::size_t) == sizeof(u64),
              "callers hand in lengths of 64 bits; a narrower size_t would cut them short unseen");

// std::string_view::substr() refers to the C++ runtime's exceptions; these two do not.
constexpr std::string_view from(std::string_view text, std::size_t begin) {
  return {text.data() + begin, text.size() - begin};
}
constexpr std::string_view slice(std::string_view text, std::size_t begin, std::size_t length) {
  return {text.data() + begin, length};
}

// The four bytes that the whole library calls white space.
constexpr bool is_space(char byte) {
  return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r';
}

}  // namespace pxcl
