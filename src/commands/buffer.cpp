// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "commands/buffer.hpp"

#include <algorithm>
#include <cstring>
#include <limits>

namespace pxcl::commands {
namespace {

u64 total_of(Values values) {
  u64 total = 0;
  for (const std::string_view value : values) total += value.size();
  return total;
}

bool has_empty(Values values) {
  return std::any_of(values.begin(), values.end(),
                     [](std::string_view value) { return value.empty(); });
}

// `size` bytes as two words that overlap: at least one word, at most two.
template <typename Word>
void copy_words(const char* source, char* destination, std::size_t size) {
  Word first, last;
  std::memcpy(&first, source, sizeof(Word));
  std::memcpy(&last, source + size - sizeof(Word), sizeof(Word));
  std::memcpy(destination, &first, sizeof(Word));
  std::memcpy(destination + size - sizeof(Word), &last, sizeof(Word));
}

// Most pieces of a document are a few bytes long, too few for a call.
char* append(char* end, const char* piece, std::size_t size) {
  if (size > 16) {
    std::memcpy(end, piece, size);
  } else if (size >= 8) {
    copy_words<u64>(piece, end, size);
  } else if (size >= 4) {
    copy_words<u32>(piece, end, size);
  } else {
    std::copy(piece, piece + size, end);
  }
  return end + size;
}

void store(std::string_view document, const Output& out) {
  KWVSCopyDataX(document.data(), out.buffer, document.size());
  *out.length = document.size();
}

// Callers rely on what large sizes clear: the size goes through a signed 32-bit number, so 2^31 to
// 2^32 clear nothing. The document is terminated all the same.
void clear_and_store(std::string_view document, const Output& out) {
  KWVSSetData(out.buffer, 0, static_cast<i32>(out.size));
  store(document, out);
  if (out.size > document.size()) out.buffer[document.size()] = 0;
}

}  // namespace

bool is_usable(const Output& out) {
  return out.length != nullptr && (out.buffer == nullptr) == (out.size == 0);
}

i32 offer(u64 need, const Output& out) {
  if (out.size >= need && out.size != 0) return kWrite;
  *out.length = need;
  return out.size == 0 ? CLSS_COMMAND_OK : CLSS_COMMAND_BUFFER_TOO_SMALL;
}

u64 fill(const Fillable& document, Values values, char* out) {
  char* end = out;
  const char* source = document.text.data();
  for (std::size_t i = 0; i < document.slots.size(); ++i) {
    const auto [offset, length] = document.slots[i];
    const char* const slot = document.text.data() + offset;
    end = append(end, source, static_cast<std::size_t>(slot - source));
    end = append(end, values[i].data(), values[i].size());
    source = slot + length;
  }
  const char* const close = document.text.data() + document.text.size();
  end = append(end, source, static_cast<std::size_t>(close - source));
  return static_cast<u64>(end - out);
}

i32 copy_command(const Document& document, const Output& out) {
  if (!is_usable(out)) return CLSS_COMMAND_BAD_ARGUMENT;
  if (const i32 status = offer(document.length, out); status != kWrite) return status;
  store(document.view(), out);
  return CLSS_COMMAND_OK;
}

i32 format_command(const Fillable& document, Values values, const Output& out) {
  if (!is_usable(out)) return CLSS_COMMAND_BAD_ARGUMENT;
  return format_unpaired(document, values, out);
}

i32 format_unpaired(const Fillable& document, Values values, const Output& out) {
  // The holes and a terminator count, so the need is more than the document takes.
  const u64 need = document.text.size() + 1 + total_of(values);
  if (need >= u64{std::numeric_limits<i32>::max()}) return CLSS_COMMAND_NOT_FORMATTED;
  if (const i32 status = offer(need, out); status != kWrite) return status;
  if (out.buffer == nullptr) return CLSS_COMMAND_BAD_ARGUMENT;

  const auto block = Owned<char>::allocate(need + 1);
  if (!block) return CLSS_COMMAND_NO_MEMORY;
  clear_and_store({block.get(), fill(document, values, block.get())}, out);
  return CLSS_COMMAND_OK;
}

i32 rewrite_command(const Fillable& document, Values values, const Output& out) {
  if (!is_usable(out)) return CLSS_COMMAND_BAD_ARGUMENT;
  const u64 need = document.text.size() + total_of(values);
  if (const i32 status = offer(need, out); status != kWrite) return status;

  KWVSCopyDataX(document.text.data(), out.buffer, document.text.size());
  const auto block = Owned<char>::allocate(need);
  if (!block) return CLSS_COMMAND_NO_MEMORY;
  if (has_empty(values)) return CLSS_COMMAND_NOT_FORMATTED;
  clear_and_store({block.get(), fill(document, values, block.get())}, out);
  return CLSS_COMMAND_OK;
}

}  // namespace pxcl::commands
