// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

#include <string>

#include "kwvs.h"
#include "support.hpp"
#include "util/owned.hpp"

namespace {

using pxcl_test::live_blocks;

TEST(Blocks, AreZeroFilledAndGivenBack) {
  const std::size_t live = live_blocks();
  void* handle = KWVSNewHNDL(40);
  void* const blocks[] = {KWVSNewPTR(40), KWVSNewPTRX(40), handle};
  EXPECT_EQ(live_blocks(), live + 3);
  for (void* block : blocks) {
    EXPECT_EQ(std::string(static_cast<char*>(block), 40), std::string(40, '\0'));
  }
  EXPECT_EQ(KWVSLockHNDL(handle), handle);
  EXPECT_EQ(KWVSUnlockHNDL(handle), handle);

  KWVSDisposePTR(blocks[0]);
  KWVSDisposePTRX(blocks[1]);
  KWVSDisposeHNDL(&handle);
  EXPECT_EQ(handle, nullptr);
  KWVSDisposeHNDL(&handle);
  EXPECT_EQ(live_blocks(), live);
}

TEST(Blocks, SizesFromOneUpOnly) {
  EXPECT_EQ(KWVSNewHNDL(-5), nullptr);
  EXPECT_EQ(KWVSNewPTR(-5), nullptr);
  EXPECT_EQ(KWVSNewPTRX(UINT64_MAX), nullptr);
  EXPECT_EQ(pxcl::Owned<pxcl::u64>::allocate(UINT64_MAX / 8 + 2).get(),
            nullptr);  // wraps to 8 bytes
  void* const smallest = KWVSNewPTR(1);
  EXPECT_NE(smallest, nullptr);
  KWVSDisposePTR(smallest);
  KWVSDisposeHNDL(nullptr);
  KWVSDisposePTR(nullptr);
  KWVSDisposePTRX(nullptr);
}

// Whoever fails an allocation by its number counts on it.
TEST(Blocks, EachIsOneAllocation) {
  for (void* (*allocate)() : {+[] { return KWVSNewHNDL(8); }, +[] { return KWVSNewPTR(8); },
                              +[] { return KWVSNewPTRX(8); }}) {
    const std::size_t before = pxcl_test::allocation_count();
    KWVSDisposePTRX(allocate());
    EXPECT_EQ(pxcl_test::allocation_count(), before + 1);
  }
}

TEST(Blocks, OwnedGivesBackOnceWhateverMoves) {
  const std::size_t live = live_blocks();
  {
    auto first = pxcl::Owned<pxcl::u32>::allocate(3);
    auto second = pxcl::Owned<pxcl::u32>::allocate(5);
    second = std::move(first);
    EXPECT_EQ(live_blocks(), live + 1);
    EXPECT_FALSE(first);
    KWVSDisposePTRX(second.release());
    EXPECT_FALSE(second);
    second.reset(static_cast<pxcl::u32*>(KWVSNewPTRX(4)));
  }
  EXPECT_EQ(live_blocks(), live);
}

TEST(SystemInfo, KnowsOneSelector) {
  for (const auto& [selector, value, status] :
       {std::tuple(1, 3U, 0), {0, 0U, -128}, {2, 0U, -128}, {-1, 0U, -128}}) {
    uint32_t stored = 77;
    EXPECT_EQ(KWVSGetSystemInfo(selector, &stored), status) << selector;
    EXPECT_EQ(stored, value) << selector;
  }
  EXPECT_EQ(std::string(kwvs_version), "ver2.00 (2009_0518)");
}

}  // namespace
