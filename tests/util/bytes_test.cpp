// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

#include <string>

#include "kwvs.h"
#include "support.hpp"

namespace {

using pxcl_test::ExactBlock;
using std::string_view;
using namespace std::string_view_literals;

constexpr string_view kLetters = "abcdefghijklmnop";

TEST(Endian, EveryPairOfCodes) {
  const int expected[4][4] = {// target: host, big, little, unknown
                              {0, 1, 0, -128},
                              {1, 0, 1, -128},
                              {0, 1, 0, -128},
                              {-128, -128, -128, -128}};
  for (int source = 0; source < 4; ++source) {
    for (int target = 0; target < 4; ++target) {
      EXPECT_EQ(KWVSCheckEndian(source, target), expected[source][target]) << source << target;
    }
  }
  EXPECT_EQ(KWVSCheckEndian(-1, 1), -128);
  EXPECT_EQ(KWVSCheckEndian(1, -1), -128);
}

TEST(Swap, ReversesUnitsOfTwoAndFour) {
  const struct {
    int unit, count;
    string_view result;
  } cases[] = {{2, 3, "badcfeghij"}, {2, 5, "badcfehgji"}, {4, 1, "dcbaefghij"},
               {4, 2, "dcbahgfeij"}, {3, 2, "abcdefghij"}, {1, 4, "abcdefghij"},
               {8, 1, "abcdefghij"}, {0, 9, "abcdefghij"}, {2, 0, "abcdefghij"},
               {4, -1, "abcdefghij"}};
  for (const auto& row : cases) {
    ExactBlock block(kLetters.substr(0, 10));
    KWVSSwapData(block.data(), row.unit, row.count);
    EXPECT_EQ(string_view(block), row.result) << row.unit << " x " << row.count;
  }
  KWVSSwapData(nullptr, 2, 1);
}

TEST(Copy, OverlapsInBothDirectionsAndIgnoresEmptyLengths) {
  const struct {
    int source, destination, length;
    string_view result;
  } cases[] = {{0, 2, 10, "ababcdefghijmnop"},
               {2, 0, 10, "cdefghijklklmnop"},
               {0, 1, 15, "aabcdefghijklmno"},
               {4, 0, 12, "efghijklmnopmnop"},
               {3, 3, 9, kLetters},
               {0, 8, 0, kLetters}};
  for (const auto& row : cases) {
    ExactBlock plain(kLetters), wide(kLetters);
    KWVSCopyData(plain.data() + row.source, plain.data() + row.destination, row.length);
    KWVSCopyDataX(wide.data() + row.source, wide.data() + row.destination,
                  static_cast<uint64_t>(row.length));
    EXPECT_EQ(string_view(plain), row.result);
    EXPECT_EQ(string_view(wide), row.result);
  }
  ExactBlock block(kLetters);
  KWVSCopyData(block.data(), block.data() + 4, -3);
  KWVSCopyDataX(nullptr, block.data(), 4);
  KWVSCopyData(block.data(), nullptr, 4);
  EXPECT_EQ(string_view(block), kLetters);
}

TEST(Fill, EveryLengthAtEveryAlignment) {
  for (std::size_t begin = 0; begin < 5; ++begin) {
    for (std::size_t length = 0; begin + length <= kLetters.size(); ++length) {
      ExactBlock plain(kLetters), wide(kLetters);
      KWVSSetData(plain.data() + begin, '*', static_cast<int32_t>(length));
      KWVSSetDataX(wide.data() + begin, '*', length);
      const std::string expected = std::string(kLetters).replace(begin, length, length, '*');
      EXPECT_EQ(string_view(plain), expected);
      EXPECT_EQ(string_view(wide), expected);
    }
  }
  ExactBlock block(kLetters);
  KWVSSetData(block.data(), '*', -1);
  KWVSSetDataX(nullptr, '*', 4);
  EXPECT_EQ(string_view(block), kLetters);
}

TEST(Compare, TellsEqualityOnly) {
  const struct {
    const char *first, *second;
    int length, result;
  } cases[] = {{"abcd", "abcd", 4, 1},  {"abcd", "abce", 4, 0}, {"abce", "abcd", 4, 0},
               {"abcd", "abce", 3, 1},  {"a", "b", 0, 1},       {nullptr, "b", 1, -128},
               {"a", nullptr, 1, -128}, {nullptr, "b", 0, -128}};
  for (const auto& row : cases) {
    EXPECT_EQ(KWVSCompData(row.first, row.second, row.length), row.result);
    EXPECT_EQ(KWVSCompDataX(row.first, row.second, static_cast<uint64_t>(row.length)), row.result);
  }
  EXPECT_EQ(KWVSCompData("a", "b", -1), 1);
}

// Offsets of the first and last place; -1 is none.
struct Places {
  string_view data, pattern;
  int first, last;
};

std::ptrdiff_t place(const ExactBlock& data, const void* found) {
  return found == nullptr ? -1 : static_cast<const char*>(found) - data.data();
}

TEST(Search, FirstAndLastPlace) {
  const Places cases[] = {
      {"a/b/c", "/", 1, 3},       {"abc", "a", 0, 0},        {"abc", "c", 2, 2},
      {"abc", "x", -1, -1},       {"", "x", -1, -1},         {"abc", "", -1, -1},
      {"abcab", "ab", 0, 3},      {"aaaa", "aa", 0, 2},      {"abc", "abc", 0, 0},
      {"abd", "abc", -1, -1},     {"abc", "abcd", -1, -1},   {"xabab", "bab", 2, 2},
      {"a\0b\0"sv, "\0"sv, 1, 3}, {"\xFF\x7F", "\xFF", 0, 0}};
  for (const auto& row : cases) {
    const ExactBlock data(row.data), pattern(row.pattern);
    const auto found = [&](auto search) {
      return place(data, search(data.data(), data.size(), pattern.data(), pattern.size()));
    };
    EXPECT_EQ(found(KWVSForwardSearchData), row.first) << row.data << " " << row.pattern;
    EXPECT_EQ(found(KWVSReverseSearchData), row.last) << row.data << " " << row.pattern;
    if (row.pattern.size() != 1) continue;
    const auto byte = static_cast<uint8_t>(row.pattern[0]);
    EXPECT_EQ(place(data, KWVSForwardSearchByte(data.data(), data.size(), byte)), row.first);
    EXPECT_EQ(place(data, KWVSReverseSearchByte(data.data(), data.size(), byte)), row.last);
  }
}

TEST(Search, NullAndRangesThatWrapAroundFindNothing) {
  for (const uint64_t length : {uint64_t{3}, UINT64_MAX}) {
    const char* const data = length == 3 ? nullptr : "abc";
    EXPECT_EQ(KWVSForwardSearchByte(data, length, 'a'), nullptr);
    EXPECT_EQ(KWVSReverseSearchByte(data, length, 'a'), nullptr);
    EXPECT_EQ(KWVSForwardSearchData(data, length, "a", 1), nullptr);
    EXPECT_EQ(KWVSReverseSearchData(data, length, "a", 1), nullptr);
  }
}

}  // namespace
