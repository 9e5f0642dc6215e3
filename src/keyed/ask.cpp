// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "keyed/ask.hpp"

namespace pxcl::keyed {

i32 ask(std::string_view document, std::span<const xml::Key> keys, std::span<xml::Answer> answers) {
  return xml::scan(document, 0, keys, answers, nullptr) == kOk ? kOk : kBadArgument;
}

i32 ask(std::string_view document, const xml::Plan& plan, std::span<xml::Answer> answers,
        u64* stopPosition, const xml::Reader* readers) {
  return xml::scan(document, plan, answers, stopPosition, readers) == kOk ? kOk : kBadArgument;
}

bool KeyList::allocate(std::size_t count) {
  keys_ = Owned<xml::Key>::allocate(count);
  answers_ = Owned<xml::Answer>::allocate(count);
  if (!keys_ || !answers_) return false;
  count_ = count;
  return true;
}

}  // namespace pxcl::keyed
