// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "keyed/ask.hpp"

#include <memory>

namespace pxcl::keyed {

i32 ask(std::string_view document, std::span<xml::Query> keys) {
  return xml::scan(document, 0, keys, nullptr) == kOk ? kOk : kBadArgument;
}

i32 ask(std::string_view document, const xml::Plan& plan, std::span<xml::Query> keys,
        u64* stopPosition) {
  return xml::scan(document, plan, keys, stopPosition) == kOk ? kOk : kBadArgument;
}

// The counts are made of 32-bit numbers: the size does not overflow.
bool KeyList::allocate(u64 count) {
  xml::Query* block = static_cast<xml::Query*>(KWVSNewPTRX(count * sizeof(xml::Query)));
  if (block == nullptr) return false;
  std::uninitialized_value_construct_n(block, count);
  keys_ = {block, count};
  return true;
}

KeyList::~KeyList() {
  std::destroy(keys_.begin(), keys_.end());
  KWVSDisposePTRX(keys_.data());
}

}  // namespace pxcl::keyed
