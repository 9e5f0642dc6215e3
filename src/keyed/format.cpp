// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "keyed/format.hpp"

#include <algorithm>
#include <cstring>
#include <limits>

#include "keyed.h"
#include "keyed/status.hpp"
#include "util/owned.hpp"

namespace pxcl::keyed {
namespace {

constexpr std::string_view kMarker = "%s";

char* append(char* out, std::string_view text) {
  if (!text.empty()) std::memcpy(out, text.data(), text.size());
  return out + text.size();
}

std::string_view view_of(const char* argument) {
  return argument != nullptr ? std::string_view(argument) : std::string_view();
}

// Offset of the first marker from `begin` on; the text's size when there is none.
std::size_t find_marker(std::string_view text, std::size_t begin) {
  return std::min(text.find(kMarker, begin), text.size());
}

Arguments arguments_of(const char* const* arguments, i32 count) {
  if (arguments == nullptr || count < 1) return {};
  return {arguments, static_cast<std::size_t>(count)};
}

constexpr bool fits_i32(u64 bytes) {
  return bytes <= u64{std::numeric_limits<i32>::max()};
}

}  // namespace

u64 bound_of_filled(std::string_view text, Arguments arguments) {
  u64 bound = text.size() + 1;
  for (const char* argument : arguments) bound += view_of(argument).size();
  return bound;
}

bool fill_template(std::string_view text, Arguments arguments, char* out, std::size_t* length) {
  char* end = out;
  std::size_t next = 0;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t marker = find_marker(text, begin);
    end = append(end, slice(text, begin, marker - begin));
    if (marker == text.size()) break;
    if (next == arguments.size()) return false;
    end = append(end, view_of(arguments[next++]));
    begin = marker + kMarker.size();
  }
  *end = '\0';
  *length = static_cast<std::size_t>(end - out);
  return true;
}

}  // namespace pxcl::keyed

using namespace pxcl;
using namespace pxcl::keyed;

extern "C" {

i32 Get_NeedBufferSize2(const char* text, const char* const* arguments, i32 count) {
  if (text == nullptr) return kBadArgument;
  const u64 bound = bound_of_filled(text, arguments_of(arguments, count));
  return fits_i32(bound) ? static_cast<i32>(bound) : kInvalid;
}

i32 clss_Sprintf(char* buffer, i32 size, const char* const* arguments, i32 count) {
  if (buffer == nullptr || size < 1 || arguments == nullptr || count < 1) return kBadArgument;
  const std::string_view text(buffer);
  const Arguments views = arguments_of(arguments, count);
  const u64 bound = bound_of_filled(text, views);
  // On the bound, not on the exact size: callers size their buffers by Get_NeedBufferSize2.
  if (static_cast<u64>(size) < bound) return kInvalid;
  const Owned<char> scratch = Owned<char>::allocate(bound);
  if (!scratch) return kNoMemory;
  std::size_t length = 0;
  if (!fill_template(text, views, scratch.get(), &length)) return kBadArgument;
  std::memcpy(buffer, scratch.get(), length + 1);
  return static_cast<i32>(length);
}

}  // extern "C"
