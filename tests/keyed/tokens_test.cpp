// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "keyed.h"
#include "support.hpp"

namespace {

using pxcl_test::ExactBlock;

int size_of(const ExactBlock& block) {
  return static_cast<int>(block.size());
}

TEST(GetToken, CutsOneField) {
  constexpr int kNone = -1;
  const struct {
    const char* text;
    const char* start;
    const char* end;
    int occurrence;
    int at;
    unsigned length;
  } cases[] = {
      {"MFG:X;CMD:A,B;SOJ:Z;", "CMD:", ";", 0, 10, 3},
      {"MFG:X;CMD:A,B;SOJ:Z;", "CMD:", ";", 1, kNone, 0},
      {"MFG:X;CMD:A,B;SOJ:Z;", "cmd:", ";", 0, kNone, 0},
      {"CMD:A;CMD:;CMD:B;", "CMD:", ";", 1, 10, 0},
      {"CMD:A;CMD:;CMD:B;", "CMD:", ";", 2, 15, 1},
      {"MFG:X;CMD:", "CMD:", ";", 0, kNone, 0},    // nothing follows
      {"MFG:X;CMD:A", "CMD:", ";", 0, kNone, 0},   // no end: not the rest of the text
      {"MFG:X;CMD:A", "CMD:", "AB", 0, kNone, 0},  // the end token is longer than the rest
      {"aaaa;", "aa", ";", 1, 4, 0},               // occurrences do not overlap
      {"aaa;", "aa", ";", 1, kNone, 0},
      {"ab;;", "ab", ";;", 0, 2, 0},
      {"abc", "a", "", 0, 1, 0},
      {"abc", "", "c", 7, 0, 2},
      {"abc", "abcd", ";", 0, kNone, 0},
      {"a1b", "a", "b", -1, kNone, 0},
  };
  for (const auto& [text, start, end, occurrence, at, length] : cases) {
    const ExactBlock block(text);
    std::uint32_t found = 99;
    const char* field = getToken(block.data(), size_of(block), start, end, occurrence, &found);
    EXPECT_EQ(field == nullptr ? kNone : field - block.data(), at) << text;
    EXPECT_EQ(found, length) << text;
  }
  for (const int none : {0, -1, INT_MIN}) {
    std::uint32_t found = 99;
    EXPECT_EQ(getToken("a1b", none, "a", "b", 0, &found), nullptr) << none;
    EXPECT_EQ(found, 0u) << none;
  }
}

TEST(GetTokenTotal, CountsWithoutOverlap) {
  EXPECT_EQ(getTokenTotal("aaaa", 4, "aa"), 2u);
  EXPECT_EQ(getTokenTotal("aaaa", 3, "aa"), 1u);
  EXPECT_EQ(getTokenTotal("aaaa", 1, "aa"), 0u);
  EXPECT_EQ(getTokenTotal("aaaa", 4, ""), 0u);
  EXPECT_EQ(getTokenTotal(std::string(1'000'000, 'a').c_str(), 1'000'000, "a"), 1'000'000u);
}

TEST(SearchString, FindsTheFirstListedWordWithoutWhiteSpace) {
  const char* tokens[] = {"ZIRK;", "ZIRK,", nullptr};
  const char* words[] = {"b c", "zz", "cd", "abcd", nullptr};
  const char* none[] = {nullptr};
  const ExactBlock id("CMD:KWNP, ZIRK;"), spread(" a\tb\nc\rd ");
  EXPECT_EQ(searchString(id.data(), size_of(id), tokens), 0);
  EXPECT_EQ(searchString(id.data(), size_of(id) - 1, tokens), -1);
  EXPECT_EQ(searchString("a\0ZIRK;", 7, tokens), -1);
  EXPECT_EQ(searchString(spread.data(), size_of(spread), words), 2);  // in the order of the list
  EXPECT_EQ(searchString(id.data(), size_of(id), none), -1);
}

}  // namespace
