// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Blocks, mostly zero-filled: the library's only way to the system's allocator.

#include <cstdlib>
#include <cstring>
#include <utility>

#include "kwvs.h"
#include "util/owned.hpp"
#include "util/types.hpp"

namespace {

constexpr pxcl::i32 kSystemSelector = 1;
constexpr pxcl::u32 kSystemValue = 3;

// The C library keeps blocks up to this size at hand for malloc, but takes the long way in calloc.
constexpr pxcl::u64 kSmall = 1024;

}  // namespace

void* pxcl::new_unfilled(u64 size) {
  return memory_size(size) == 0 ? nullptr : std::malloc(memory_size(size));
}

extern "C" {

constexpr char kwvs_version[] = "ver2.00 (2009_0518)";
static_assert(sizeof(kwvs_version) == 20);

int32_t KWVSGetSystemInfo(int32_t selector, uint32_t* value) {
  if (value == nullptr) return KWVS_BAD_ARGUMENT;
  const bool known = selector == kSystemSelector;
  *value = known ? kSystemValue : 0;
  return known ? KWVS_OK : KWVS_BAD_ARGUMENT;
}

void* KWVSNewHNDL(int32_t size) {
  return KWVSNewPTR(size);
}

void KWVSDisposeHNDL(void** handle) {
  if (handle != nullptr) KWVSDisposePTRX(std::exchange(*handle, nullptr));
}

void* KWVSLockHNDL(void* handle) {
  return handle;
}
void* KWVSUnlockHNDL(void* handle) {
  return handle;
}

void* KWVSNewPTR(int32_t size) {
  return size < 1 ? nullptr : KWVSNewPTRX(static_cast<uint64_t>(size));
}

void KWVSDisposePTR(void* block) {
  KWVSDisposePTRX(block);
}

void* KWVSNewPTRX(uint64_t size) {
  const std::size_t bytes = pxcl::memory_size(size);
  if (bytes > kSmall) return std::calloc(1, bytes);
  void* block = pxcl::new_unfilled(bytes);
  return block == nullptr ? nullptr : std::memset(block, 0, bytes);
}

void KWVSDisposePTRX(void* block) {
  std::free(block);
}

}  // extern "C"
