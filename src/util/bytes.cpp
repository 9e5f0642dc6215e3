// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Byte order, and copy, fill, compare and search over byte ranges.

#include <cstring>
#include <utility>

#include "kwvs.h"
#include "util/types.hpp"

namespace {

using pxcl::fits_memory;
using pxcl::i32;
using pxcl::memory_size;
using pxcl::u64;
using pxcl::u8;

constexpr i32 kDifferent = 0;
constexpr i32 kEqual = 1;

constexpr u64 size_of(i32 length) {
  return length < 1 ? 0 : static_cast<u64>(length);
}

constexpr bool is_byte_order(i32 code) {
  return code == KWVS_ENDIAN_HOST || code == KWVS_ENDIAN_BIG || code == KWVS_ENDIAN_LITTLE;
}

constexpr i32 resolve_byte_order(i32 code) {
  return code == KWVS_ENDIAN_HOST ? KWVS_ENDIAN_LITTLE : code;
}

bool wraps_around(const void* data, u64 length) {
  return static_cast<std::uintptr_t>(reinterpret_cast<std::uintptr_t>(data) + length) < length;
}

bool is_searchable(const void* data, u64 length) {
  return data != nullptr && memory_size(length) != 0 && !wraps_around(data, length);
}

bool is_searchable(const void* data, u64 length, const void* pattern, u64 patternLength) {
  return data != nullptr && pattern != nullptr && patternLength != 0 && patternLength <= length &&
         fits_memory(length) && !wraps_around(data, length - patternLength);
}

}  // namespace

extern "C" {

int32_t KWVSCheckEndian(int32_t source, int32_t target) {
  if (!is_byte_order(source) || !is_byte_order(target)) return KWVS_BAD_ARGUMENT;
  return resolve_byte_order(source) != resolve_byte_order(target);
}

void KWVSSwapData(void* data, int32_t unit, int32_t count) {
  if (data == nullptr || (unit != 2 && unit != 4)) return;
  const u64 width = static_cast<u64>(unit);
  u8* bytes = static_cast<u8*>(data);
  for (i32 done = 0; done < count; ++done, bytes += width) {
    std::swap(bytes[0], bytes[width - 1]);
    if (width == 4) std::swap(bytes[1], bytes[2]);
  }
}

void KWVSCopyData(const void* source, void* destination, int32_t length) {
  KWVSCopyDataX(source, destination, size_of(length));
}

void KWVSCopyDataX(const void* source, void* destination, uint64_t length) {
  if (source == nullptr || destination == nullptr) return;
  std::memmove(destination, source, memory_size(length));
}

void KWVSSetData(void* destination, uint8_t value, int32_t length) {
  KWVSSetDataX(destination, value, size_of(length));
}

void KWVSSetDataX(void* destination, uint8_t value, uint64_t length) {
  if (destination != nullptr) std::memset(destination, value, memory_size(length));
}

int32_t KWVSCompData(const void* first, const void* second, int32_t length) {
  return KWVSCompDataX(first, second, size_of(length));
}

int32_t KWVSCompDataX(const void* first, const void* second, uint64_t length) {
  if (first == nullptr || second == nullptr) return KWVS_BAD_ARGUMENT;
  if (!fits_memory(length)) return kDifferent;
  return std::memcmp(first, second, memory_size(length)) == 0 ? kEqual : kDifferent;
}

const void* KWVSForwardSearchByte(const void* data, uint64_t length, uint8_t value) {
  return is_searchable(data, length) ? std::memchr(data, value, memory_size(length)) : nullptr;
}

const void* KWVSReverseSearchByte(const void* data, uint64_t length, uint8_t value) {
  return is_searchable(data, length) ? memrchr(data, value, memory_size(length)) : nullptr;
}

const void* KWVSForwardSearchData(const void* data, uint64_t length, const void* pattern,
                                  uint64_t patternLength) {
  if (!is_searchable(data, length, pattern, patternLength)) return nullptr;
  return memmem(data, memory_size(length), pattern, memory_size(patternLength));
}

const void* KWVSReverseSearchData(const void* data, uint64_t length, const void* pattern,
                                  uint64_t patternLength) {
  if (!is_searchable(data, length, pattern, patternLength)) return nullptr;
  const u8* const begin = static_cast<const u8*>(data);
  const u8 lead = *static_cast<const u8*>(pattern);
  const std::size_t size = memory_size(patternLength);
  std::size_t starts = memory_size(length) - size + 1;  // where the pattern could still begin
  while (const void* found = memrchr(begin, lead, starts)) {
    if (std::memcmp(found, pattern, size) == 0) return found;
    starts = static_cast<std::size_t>(static_cast<const u8*>(found) - begin);
  }
  return nullptr;
}

}  // extern "C"
