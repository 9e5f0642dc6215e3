// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <cstring>

#include "util/owned.hpp"
#include "util/types.hpp"

namespace pxcl {

// An array that grows by doubling. Its first `Inline` records live in the object, so that a usual
// document is scanned without a single allocation. Records that were not written yet hold anything.
template <typename Record, u32 Inline>
struct GrowingArray {
  u32 size = 0;
  u32 capacity = Inline;

  GrowingArray() : records_(inline_) {}
  GrowingArray(const GrowingArray&) = delete;
  GrowingArray& operator=(const GrowingArray&) = delete;
  ~GrowingArray() { dispose(); }

  Record& operator[](u64 index) { return records_[index]; }
  const Record& operator[](u64 index) const { return records_[index]; }
  Record* begin() { return records_; }
  Record* end() { return records_ + size; }
  const Record* begin() const { return records_; }
  const Record* end() const { return records_ + size; }
  Record& back() { return records_[size - 1]; }

  // Room for `wanted` records in all; false when memory is short, with the contents as they were.
  bool reserve(u64 wanted) { return wanted <= capacity || grow(wanted); }

  bool push(const Record& record) {
    if (size == capacity && !grow(u64{size} + 1)) return false;
    records_[size++] = record;
    return true;
  }

 private:
  bool grow(u64 wanted) {
    constexpr u64 kMost = ~u32{0};
    if (wanted > kMost) return false;
    u64 larger = u64{capacity} * 2;
    if (larger < wanted) larger = wanted;
    if (larger > kMost) larger = kMost;
    Owned<Record> block = Owned<Record>::allocate_unfilled(larger);
    if (!block) return false;
    std::memcpy(static_cast<void*>(block.get()), records_, size * sizeof(Record));
    dispose();
    records_ = block.release();
    capacity = static_cast<u32>(larger);
    return true;
  }

  // Gives the records back if they are not those in the object.
  void dispose() {
    if (records_ != inline_) KWVSDisposePTRX(records_);
  }

  Record* records_;
  Record inline_[Inline];
};

}  // namespace pxcl
