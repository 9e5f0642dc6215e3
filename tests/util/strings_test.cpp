// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

#include "kwvs.h"

namespace {

TEST(Strings, CompareInTheOrderOfUnsignedBytes) {
  const struct {
    const char *first, *second;
    int result;
  } cases[] = {{"", "", 0},     {"abc", "abc", 0}, {"ab", "abc", -1},      {"abc", "ab", 1},
               {"b", "abc", 1}, {"a", "z", -1},    {"\xE9", "z", 1},       {"z", "\xE9", -1},
               {"", "a", -1},   {"a", "", 1},      {nullptr, "abc", -128}, {"abc", nullptr, -128}};
  for (const auto& row : cases) EXPECT_EQ(KWVSCompString(row.first, row.second), row.result);
}

TEST(Strings, LengthCopyAndAppend) {
  EXPECT_EQ(KWVSGetLenOfString(""), 0);
  EXPECT_EQ(KWVSGetLenOfString("abc"), 3);

  char buffer[8] = "???????";
  EXPECT_EQ(KWVSCopyString("abc", buffer), 3);
  EXPECT_STREQ(buffer, "abc");
  EXPECT_EQ(KWVSCatString("de", buffer), 5);
  EXPECT_STREQ(buffer, "abcde");
  EXPECT_EQ(KWVSCatString("", buffer), 5);
  EXPECT_EQ(buffer[6], '?');
  EXPECT_EQ(KWVSCopyString("", buffer), 0);
  EXPECT_STREQ(buffer, "");
}

}  // namespace
