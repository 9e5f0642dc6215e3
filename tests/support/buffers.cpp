// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

#include <algorithm>

#include "support.hpp"

namespace pxcl_test {

// An empty text points at the end of a block of one byte: a block of size 0 is not guarded.
ExactBlock::ExactBlock(std::string_view text)
    : block_(new char[std::max<std::size_t>(text.size(), 1)]),
      data_(text.empty() ? block_.get() + 1 : block_.get()),
      size_(text.size()) {
  std::copy(text.begin(), text.end(), data_);
}

void fits_at_every_capacity(std::size_t needed,
                            const std::function<int(char* buffer, std::size_t size)>& write,
                            int tooSmallStatus, bool zeroToo) {
  const std::string canary(32, '\xA5');
  for (std::size_t size = zeroToo ? 0 : 1; size <= needed + 1; ++size) {
    std::string guarded = canary + std::string(size, '\x5A') + canary;
    const int status = write(guarded.data() + canary.size(), size);
    if (size < needed) {
      EXPECT_EQ(status, tooSmallStatus) << "capacity " << size << " of " << needed;
    } else {
      EXPECT_GE(status, 0) << "capacity " << size << " of " << needed;
    }
    EXPECT_EQ(guarded.substr(0, canary.size()), canary) << "before a buffer of " << size;
    EXPECT_EQ(guarded.substr(canary.size() + size), canary) << "after a buffer of " << size;
  }
}

}  // namespace pxcl_test
