// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <cstdio>
#include <cstring>
#include <limits>

#include "pxcl.h"
#include "util/owned.hpp"
#include "util/types.hpp"

using namespace pxcl;

namespace {

constexpr i32 kRefused = -1;
constexpr i32 kDecode = 1;
constexpr std::size_t kMostLine = 1024;
constexpr std::string_view kLead = "*% ";  // of every line that counts
constexpr u64 kMostValue = std::numeric_limits<i32>::max();

// The next line in `line`, its line feed included; empty at the end and where nothing can be read.
std::string_view read_line(std::FILE* file, char (&line)[kMostLine]) {
  std::size_t length = 0;
  while (length < kMostLine) {
    const int byte = std::getc(file);
    if (byte == EOF) break;
    line[length++] = static_cast<char>(byte);
    if (byte == '\n') break;
  }
  return {line, length};
}

// One form of a tag, as it stands behind the lead. Files are written with this cut: a long tag
// loses its end, and what tells the forms apart with it.
struct Marker {
  Marker(const char* before, const char* tag, const char* after) {
    std::snprintf(text, 127, "%s%s%s", before, tag, after);
  }
  bool begins(std::string_view line) const { return line.starts_with(std::string_view(text)); }
  char text[128];
};

// The value under way: bytes counted, and stored as far as there is room.
struct Value {
  std::span<char> room;
  u64 length = 0;

  void append(std::string_view piece) {
    if (length <= room.size() && piece.size() <= room.size() - length) {
      KWVSCopyDataX(piece.data(), room.data() + length, piece.size());
    }
    length += piece.size();
  }
};

// Whether the value of `tag` is complete in `value`.
bool read_value(std::FILE* file, const char* tag, Value& value) {
  const Marker blockStart("#", tag, ">");
  const Marker blockEnd("#<", tag, "");
  const Marker single("#", tag, ":");
  bool inside = false;
  char area[kMostLine];
  while (true) {
    std::string_view line = read_line(file, area);
    if (line.empty()) return false;
    if (line.ends_with('\n')) line.remove_suffix(1);
    if (!line.starts_with(kLead)) continue;
    line = from(line, kLead.size());
    if (inside) {
      if (blockEnd.begins(line)) return true;
      value.append(line);
    } else if (blockStart.begins(line)) {
      inside = true;
    } else if (single.begins(line)) {
      value.append(from(line, std::strlen(single.text)));
      return true;
    }
  }
}

// The length of the tag's value, which is stored in `room`; an empty room only measures.
i32 read_tagged_value(const char* path, const char* tag, std::span<char> room) {
  std::FILE* const file = std::fopen(path, "r");
  if (file == nullptr) return kRefused;
  Value value{room};
  const bool complete = read_value(file, tag, value);
  std::fclose(file);
  if (!complete || value.length > kMostValue) return kRefused;
  return static_cast<i32>(value.length);
}

// The value as it stands in the file, read anew: its length, or kRefused.
i32 read_text(const char* path, const char* tag, Owned<char>& text) {
  const i32 measured = read_tagged_value(path, tag, {});
  if (measured < 1) return kRefused;
  const std::size_t room = static_cast<std::size_t>(measured);
  text = Owned<char>::allocate(room + 1);
  if (!text) return kRefused;
  // The file may have grown since it was measured.
  const i32 length = read_tagged_value(path, tag, {text.get(), room});
  return length < 1 || length > measured ? kRefused : length;
}

}  // namespace

i32 PXCL_GetStringWithTagFromFile(const char* path, const char* tag, i32 decode, char** result) {
  if (result == nullptr) return kRefused;
  *result = nullptr;
  if (path == nullptr || tag == nullptr) return kRefused;
  Owned<char> text;
  i32 length = read_text(path, tag, text);
  if (length < 0) return kRefused;

  if (decode == kDecode) {
    auto decoded = Owned<char>::allocate(static_cast<u64>(length) + 1);
    if (!decoded) return kRefused;
    length =
        PXCL_DecodeFromString(text.get(), static_cast<u64>(length),
                              reinterpret_cast<u8*>(decoded.get()), static_cast<u64>(length) / 2);
    if (length < 0) return kRefused;
    text = std::move(decoded);
  }
  *result = text.release();
  return length;
}
