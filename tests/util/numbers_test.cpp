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

constexpr uint32_t kRaw = KWVS_NO_TERMINATOR;

TEST(NumberToText, BasesLayoutsAndTermination) {
  const struct {
    int32_t value;
    uint64_t size;
    uint32_t flags;
    string_view written;
  } cases[] = {
      {-45, 8, 1, "-45\0"sv},
      {0, 2, 1, "0\0"sv},
      {0, 1, 1 + kRaw, "0"},
      {INT32_MAX, 11, 1, "2147483647\0"sv},
      {INT32_MIN, 11, 1 + kRaw, "-2147483648"},
      {255, 2, 3 + kRaw, "FF"},
      {-1, 9, 3, "FFFFFFFF\0"sv},
      {-1, 40, 4 + kRaw, "11111111111111111111111111111111"},
      {-1, 12, 2, "37777777777\0"sv},
      {7, 5, 1 + 64, "   7\0"sv},
      {-7, 5, 1 + 64, "  -7\0"sv},
      {7, 5, 1 + 96, "0007\0"sv},
      {-7, 5, 1 + 96, "-007\0"sv},
      {-7, 5, 1 + 96 + kRaw, "-0007"},
      {10, 4, 3 + 64 + kRaw, "   A"},
      {-7, 3, 1 + 64, "-7\0"sv},
      {5, 4, 1 + 0xFFFFFF80, "5\0"sv},  // the bits above the layout mean nothing
  };
  for (const auto& row : cases) {
    ExactBlock buffer(std::string(row.size, '?'));
    EXPECT_EQ(KWVS4sToString(row.value, buffer.data(), row.size, row.flags),
              static_cast<int32_t>(row.written.size()));
    EXPECT_EQ(string_view(buffer).substr(0, row.written.size()), row.written) << row.value;
    EXPECT_EQ(string_view(buffer).substr(row.written.size()),
              std::string(row.size - row.written.size(), '?'));
  }
}

TEST(NumberToText, BadArgumentsAndSmallBuffers) {
  const struct {
    int32_t value;
    uint64_t size;
    uint32_t flags;
    int32_t status;
  } cases[] = {{1, 8, 0, -128},      {1, 8, 5, -128},   {1, 8, 15, -128}, {1, 8, 1 + 32, -128},
               {1, 0, 1, -128},      {255, 2, 3, -158}, {-7, 2, 1, -158}, {-7, 1, 1 + kRaw, -158},
               {-7, 2, 1 + 32, -158}};  // the size is tested before the layout
  for (const auto& row : cases) {
    ExactBlock buffer(std::string(row.size, '?'));
    EXPECT_EQ(KWVS4sToString(row.value, buffer.data(), row.size, row.flags), row.status);
    EXPECT_EQ(string_view(buffer), std::string(row.size, '?'));
  }
}

TEST(NumberToText, FitsAtEveryCapacity) {
  for (const uint32_t layout : {0U, 64U, 96U}) {
    pxcl_test::fits_at_every_capacity(
        7,
        [layout](char* buffer, std::size_t size) {
          return KWVS4sToString(-12345, buffer, size, KWVS_BASE_DECIMAL + layout);
        },
        KWVS_BUFFER_TOO_SMALL);
  }
}

TEST(TextToNumber, ValuesAndConsumedCounts) {
  const struct {
    string_view text;
    int32_t mode, value;
    uint64_t consumed;
  } cases[] = {
      // white space, sign, where it stops
      {"  -12abc", 1, -12, 5},
      {" \t\r\n+7", 1, 7, 6},
      {"12 34", 1, 12, 2},
      {"-0", 1, 0, 2},
      {"12\0"sv, 1, 12, 2},
      // bases and prefixes
      {"0x1F", 0, 31, 4},
      {"-0X1f", 0, -31, 5},
      {"017", 0, 15, 3},
      {"08", 0, 0, 1},
      {"0", 0, 0, 1},
      {"19", 0, 19, 2},
      {"0x1F", 3, 31, 4},
      {"1Fg", 3, 31, 2},
      {"0x1F", 1, 0, 1},
      {"0x1F", 2, 0, 1},
      {"0x1F", 4, 0, 1},
      {"0x"sv.substr(0, 1), 0, 0, 1},
      {"778", 2, 63, 2},
      {"1012", 4, 5, 3},
      {"12", 4, 1, 1},
      {"9:", 1, 9, 1},
      {"9@AFG", 3, 9, 1},
      // saturation, every digit consumed
      {"2147483640", 1, 2147483640, 10},
      {"2147483647", 1, INT32_MAX, 10},
      {"2147483648", 1, INT32_MAX, 10},
      {"99999999999", 1, INT32_MAX, 11},
      {"-2147483648", 1, INT32_MIN, 11},
      {"-2147483649", 1, INT32_MIN, 11},
      {"-2147483647", 1, -INT32_MAX, 11},
      {"FFFFFFFF7", 3, INT32_MAX, 9},
      {"40000000000", 2, INT32_MAX, 11},
      {"-100000000000000000000000000000000", 4, INT32_MIN, 34},
  };
  for (const auto& row : cases) {
    const ExactBlock text(row.text);
    uint64_t consumed = 99;
    EXPECT_EQ(KWVSStringTo4s(text.data(), text.size(), &consumed, row.mode), row.value) << row.text;
    EXPECT_EQ(consumed, row.consumed) << row.text;
    EXPECT_EQ(KWVSStringTo4s(text.data(), text.size(), nullptr, row.mode), row.value) << row.text;
  }
}

// Exact blocks: nothing at or past the end is read, wherever the text ends.
TEST(TextToNumber, NoDigitsIsAnErrorWithNothingConsumed) {
  const struct {
    string_view text;
    int32_t mode;
  } cases[] = {{"x", 1},   {"", 1},   {"   ", 1}, {" \t\r\n", 0}, {"-", 1},   {"+-5", 1},
               {"- 5", 1}, {"0x", 0}, {"0x", 3},  {"-0xg", 0},    {"\v5", 1}, {"\f5", 1},
               {"9", 2},   {"2", 4},  {"g", 3},   {"\xB2", 1},    {"/", 1},   {"`", 3},
               {"@", 3},   {"5", 5},  {"5", -1}};
  for (const auto& row : cases) {
    const ExactBlock text(row.text);
    uint64_t consumed = 99;
    EXPECT_EQ(KWVSStringTo4s(text.data(), text.size(), &consumed, row.mode), INT32_MIN) << row.text;
    EXPECT_EQ(consumed, 0U) << row.text;
  }
}

}  // namespace
