// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>

#include "device.h"
#include "dictionaries.h"

namespace {

TEST(PaperDimensions, HeightAboveWidth) {
  const struct {
    uint16_t row;
    uint64_t width, height;
  } cases[] = {{4, 21000, 29700}, {9, 10160, 15240}, {36, 70700, 100000}, {82, 8900, 8900}};
  for (const auto& [row, width, height] : cases)
    EXPECT_EQ(CLSS_GetPaperOutwardSize(row), height << 32 | width) << row;
  for (const uint16_t row : std::initializer_list<uint16_t>{0, 81, 83, 65535})
    EXPECT_EQ(CLSS_GetPaperOutwardSize(row), UINT64_MAX) << row;
}

// The keywords end in their dimensions, e.g. "_210x297mm" or "_8.5x11in", to a millimetre.
TEST(PaperDimensions, AgreeWithTheKeywords) {
  for (uint16_t row = 1; row < CLSS_DICNUM_PAPERSIZE; ++row) {
    const char* keyword = glb_clssdicPaperSizeTbl[row].keyword;
    if (keyword == nullptr) continue;
    double width = 0, height = 0;
    char unit[3] = "";
    ASSERT_EQ(std::sscanf(std::strrchr(keyword, '_'), "_%lfx%lf%2s", &width, &height, unit), 3);
    const double hundredths = std::strcmp(unit, "in") == 0 ? 2540 : 100;
    EXPECT_NEAR(glb_PaperOutwardSizeTbl[row].width, width * hundredths, 100) << keyword;
    EXPECT_NEAR(glb_PaperOutwardSizeTbl[row].height, height * hundredths, 100) << keyword;
  }
}

}  // namespace
