// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "keyed/ask.hpp"

#include <memory>

namespace pxcl::keyed {

i32 ask(std::string_view document, std::span<const xml::Key> keys, std::span<xml::Answer> answers) {
  return xml::scan(document, 0, keys, answers, nullptr) == kOk ? kOk : kBadArgument;
}

i32 ask(std::string_view document, const xml::Plan& plan, std::span<xml::Answer> answers,
        u64* stopPosition) {
  return xml::scan(document, plan, answers, stopPosition) == kOk ? kOk : kBadArgument;
}

// The counts are made of 32-bit numbers: the sizes do not overflow.
bool KeyList::allocate(u64 count) {
  keys_ = Owned<xml::Key>::allocate(count);
  xml::Answer* block = static_cast<xml::Answer*>(KWVSNewPTRX(count * sizeof(xml::Answer)));
  if (!keys_ || block == nullptr) {
    KWVSDisposePTRX(block);
    return false;
  }
  std::uninitialized_value_construct_n(block, count);
  answers_ = {block, count};
  return true;
}

KeyList::~KeyList() {
  std::destroy(answers_.begin(), answers_.end());
  KWVSDisposePTRX(answers_.data());
}

}  // namespace pxcl::keyed
