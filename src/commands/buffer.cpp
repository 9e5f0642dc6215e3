// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "commands/buffer.hpp"

#include <algorithm>
#include <cstring>
#include <limits>

namespace pxcl::commands {
namespace {

bool has_empty(Values values) {
  return std::any_of(values.begin(), values.end(),
                     [](std::string_view value) { return value.empty(); });
}

using Half [[gnu::vector_size(kBlockSize / 2)]] = u64;

// Reads and writes up to kBlockSize bytes further: a block even where the size is 0.
inline char* append_blocks(char* end, const char* piece, std::size_t size) {
  for (std::size_t done = 0;; done += kBlockSize) {
    Half first, last;
    std::memcpy(&first, piece + done, sizeof first);
    std::memcpy(&last, piece + done + sizeof first, sizeof last);
    std::memcpy(end + done, &first, sizeof first);
    std::memcpy(end + done + sizeof first, &last, sizeof last);
    if (done + kBlockSize >= size) return end + size;
  }
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

// Nearly all texts are too short to be worth a call.
inline char* append(char* end, std::string_view text) {
  const char* const piece = text.data();
  const std::size_t size = text.size();
  if (size > 2 * sizeof(Half)) {
    std::memcpy(end, piece, size);
  } else if (size > 2 * sizeof(u64)) {
    copy_words<Half>(piece, end, size);
  } else if (size >= sizeof(u64)) {
    copy_words<u64>(piece, end, size);
  } else if (size >= sizeof(u32)) {
    copy_words<u32>(piece, end, size);
  } else {
    for (std::size_t i = 0; i < size; ++i) end[i] = piece[i];
  }
  return end + size;
}

void store(std::string_view text, const Output& out) {
  std::memcpy(out.buffer, text.data(), text.size());
}

// How much of the buffer is to be cleared. Callers rely on what large sizes clear: the size goes
// through a signed 32-bit number, so 2^31 to 2^32 clear nothing.
std::size_t cleared_size(const Output& out) {
  const i32 size = static_cast<i32>(out.size);
  return size < 0 ? 0 : static_cast<std::size_t>(size);
}

// The buffer as if it were cleared before the document is written. A terminator follows also where
// nothing is cleared.
void fill_cleared(const Fillable& document, Values values, std::size_t length, const Output& out) {
  const std::size_t cleared = cleared_size(out);
  if (cleared > length) {
    std::memset(out.buffer + length, 0, cleared - length);
  } else {
    out.buffer[length] = 0;  // there is room: more is asked for than the document takes
  }
  fill(document, values, out.buffer);
  *out.length = length;
}

}  // namespace

void fill(const Fillable& document, Values values, char* out) {
  const char* const text = document.text.data();
  const char* source = text;
  const std::string_view* value = values.data();
  for (const Slot& slot : document.slots) {
    const char* const place = text + slot.offset;
    out = append_blocks(out, source, static_cast<std::size_t>(place - source));
    out = append(out, *value++);
    source = place + slot.length;
  }
  std::memcpy(out, source, static_cast<std::size_t>(text + document.text.size() - source));
}

i32 copy_command(const Document& document, const Output& out) {
  if (!is_usable(out)) return CLSS_COMMAND_BAD_ARGUMENT;
  if (const i32 status = offer(document.length, out); status != kWrite) return status;
  store(document.view(), out);
  *out.length = document.length;
  return CLSS_COMMAND_OK;
}

i32 format_command(const Fillable& document, Values values, const Output& out) {
  const u64 length = length_of(document, values);
  const u64 need = length + document.spare;
  if (need >= u64{std::numeric_limits<i32>::max()}) return CLSS_COMMAND_NOT_FORMATTED;
  if (const i32 status = offer(need, out); status != kWrite) return status;
  if (out.buffer == nullptr) return CLSS_COMMAND_BAD_ARGUMENT;
  fill_cleared(document, values, memory_size(length), out);
  return CLSS_COMMAND_OK;
}

i32 rewrite_command(const Fillable& document, Values values, const Output& out) {
  if (!is_usable(out)) return CLSS_COMMAND_BAD_ARGUMENT;
  const u64 length = length_of(document, values);
  if (const i32 status = offer(length + document.spare, out); status != kWrite) return status;

  // What is neither written over nor cleared keeps the document as it stands here.
  const bool refused = has_empty(values);
  if (refused || cleared_size(out) < document.text.size()) store(document.text, out);
  if (refused) return CLSS_COMMAND_NOT_FORMATTED;
  fill_cleared(document, values, memory_size(length), out);
  return CLSS_COMMAND_OK;
}

}  // namespace pxcl::commands
