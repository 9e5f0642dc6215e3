// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "keyed/ask.hpp"

#include <memory>

namespace pxcl::keyed {

i32 ask(std::string_view document, std::span<xml::Query> keys, u64* stopPosition) {
  if (document.data() == nullptr || document.empty() || keys.empty()) return kBadArgument;
  u64 stop = 0;
  const i32 status = xml::scan(document, 0, keys, &stop);
  if (stopPosition != nullptr) *stopPosition = stop;
  return status == kOk ? kOk : kBadArgument;
}

i32 ask(std::string_view document, const xml::Plan& plan, std::span<xml::Query> keys,
        u64* stopPosition) {
  if (document.data() == nullptr || document.empty()) return kBadArgument;
  u64 stop = 0;
  const i32 status = xml::scan(document, plan, keys, &stop);
  if (stopPosition != nullptr) *stopPosition = stop;
  return status == kOk ? kOk : kBadArgument;
}

bool KeyList::allocate(u64 count) {
  if (count > ~u64{0} / sizeof(xml::Query)) return false;
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
