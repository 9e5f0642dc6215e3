// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The ways of a document into the caller's buffer (commands.h tells them apart).

#pragma once

#include "commands.h"
#include "commands/document.hpp"
#include "dictionaries.h"
#include "util/types.hpp"

namespace pxcl::commands {

// The caller's buffer as every builder takes it.
struct Output {
  char* buffer;
  u64 size;
  u64* length;
};

// The texts for a document's places, one each.
using Values = std::span<const std::string_view>;

// Unused rows of a dictionary have no keyword.
inline std::string_view keyword_of(const ClssDicRow& row) {
  return row.keyword != nullptr ? row.keyword : "";
}

// Whether there is a length to store to, and buffer and size are both given or both not.
inline bool is_usable(const Output& out) {
  return out.length != nullptr && (out.buffer == nullptr) == (out.size == 0);
}

// Room for the document, which is never empty: kWrite. Otherwise the builder's status: the size
// query answered or a buffer that is too small, the need stored in both.
inline constexpr i32 kWrite = 1;
inline i32 offer(u64 need, const Output& out) {
  if (out.size >= need) return kWrite;
  *out.length = need;
  return out.size == 0 ? CLSS_COMMAND_OK : CLSS_COMMAND_BUFFER_TOO_SMALL;
}

// Fixed: the document as it is, nothing after it.
i32 copy_command(const Document& document, const Output& out);

// The length of the document with a value in each of its places.
inline u64 length_of(const Fillable& document, Values values) {
  u64 length = document.kept;
  for (const std::string_view value : values) length += value.size();
  return length;
}

// That document, written to `out`.
void fill(const Fillable& document, Values values, char* out);

// Formatted: the holes filled, zeros after the document. Does without is_usable(): refuses only the
// null buffer that it would write to.
i32 format_command(const Fillable& document, Values values, const Output& out);

// Keyed: the texts at the path keys rewritten, zeros after the document. An empty value is refused;
// on a failure the buffer is left with the document as it stands here.
i32 rewrite_command(const Fillable& document, Values values, const Output& out);

template <std::size_t Slots>
i32 format(const Template<Slots>& document, const std::string_view (&values)[Slots],
           const Output& out) {
  return format_command(document, values, out);
}
template <std::size_t Slots>
i32 rewrite(const Template<Slots>& document, const std::string_view (&values)[Slots],
            const Output& out) {
  return rewrite_command(document, values, out);
}

}  // namespace pxcl::commands
