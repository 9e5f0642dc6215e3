// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <limits>
#include <type_traits>
#include <utility>

#include "kwvs.h"
#include "util/types.hpp"

namespace pxcl {

// KWVSNewPTRX without the zeros.
void* new_unfilled(u64 size);

// The library's one owning type: an array of plain records from the utility allocator, given back
// when it goes out of scope. A failed allocation is a null block, never an exception.
template <typename Record>
class Owned {
  static_assert(std::is_trivially_copyable_v<Record>);

 public:
  Owned() = default;
  explicit Owned(Record* block) : block_(block) {}
  Owned(const Owned&) = delete;
  Owned& operator=(const Owned&) = delete;
  Owned(Owned&& other) noexcept : block_(other.release()) {}
  Owned& operator=(Owned&& other) noexcept {
    reset(other.release());
    return *this;
  }
  ~Owned() {
    if (block_ != nullptr) KWVSDisposePTRX(block_);  // mostly there is none
  }

  // `count` zero-filled records; null when memory is short, the size overflows or count is 0.
  static Owned allocate(u64 count) {
    if (count > std::numeric_limits<u64>::max() / sizeof(Record)) return Owned();
    return Owned(static_cast<Record*>(KWVSNewPTRX(count * sizeof(Record))));
  }

  // The same with whatever the block held before, for who writes a record before reading it.
  static Owned allocate_unfilled(u64 count) {
    if (count > std::numeric_limits<u64>::max() / sizeof(Record)) return Owned();
    return Owned(static_cast<Record*>(new_unfilled(count * sizeof(Record))));
  }

  Record* get() const { return block_; }
  Record& operator[](u64 index) const { return block_[index]; }
  Record* operator->() const { return block_; }
  explicit operator bool() const { return block_ != nullptr; }

  Record* release() { return std::exchange(block_, nullptr); }
  void reset(Record* block = nullptr) { KWVSDisposePTRX(std::exchange(block_, block)); }

 private:
  Record* block_ = nullptr;
};

}  // namespace pxcl
