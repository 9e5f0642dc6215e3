// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "keyed/ask.hpp"

namespace pxcl::keyed {

bool KeyList::allocate(std::size_t count) {
  keys_ = Owned<xml::Key>::allocate(count);
  answers_ = Owned<xml::Answer>::allocate(count);
  if (!keys_ || !answers_) return false;
  count_ = count;
  return true;
}

}  // namespace pxcl::keyed
