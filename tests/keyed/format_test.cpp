// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "keyed.h"
#include "support.hpp"

namespace {

using Arguments = std::vector<const char*>;

struct Case {
  const char* text;
  Arguments arguments;
  int need;
  int result;  // with a buffer of `need` bytes
  const char* filled;
};

const Case kCases[] = {
    {"a%sb%sc", {"x", "yz"}, 11, 6, "axbyzc"},
    {"a%sb%sc", {"x"}, 9, -2, "a%sb%sc"},
    {"[%s]", {nullptr}, 5, 2, "[]"},
    {"100%", {"x"}, 6, 4, "100%"},
    {"%d%%s%s%", {"1", "2"}, 11, 6, "%d%12%"},  // the second "%" of "%%s" begins a marker
    {"%s", {"%s", "unused"}, 11, 2, "%s"},      // what is inserted is not looked at again
    {"", {"x"}, 2, 0, ""},
};

int count_of(const Arguments& arguments) {
  return static_cast<int>(arguments.size());
}

TEST(ClssSprintf, FillsInPlaceWithinTheBound) {
  for (const Case& c : kCases) {
    EXPECT_EQ(Get_NeedBufferSize2(c.text, c.arguments.data(), count_of(c.arguments)), c.need);
    for (int size = c.need - 1; size <= c.need + 1; ++size) {
      const std::size_t bytes =
          std::max<std::size_t>(static_cast<std::size_t>(size), std::strlen(c.text) + 1);
      pxcl_test::ExactBlock buffer(std::string(bytes, '#'));
      std::memcpy(buffer.data(), c.text, std::strlen(c.text) + 1);
      const bool fits = size >= c.need;
      EXPECT_EQ(clss_Sprintf(buffer.data(), size, c.arguments.data(), count_of(c.arguments)),
                fits ? c.result : -4)
          << c.text << " in " << size;
      EXPECT_STREQ(buffer.data(), fits ? c.filled : c.text);
    }
  }
}

TEST(ClssSprintf, RefusesSumsBeyond32Bits) {
  const std::string megabyte(1 << 20, 'x');
  const Arguments arguments(2048, megabyte.c_str());
  char buffer[] = "%s";
  EXPECT_EQ(Get_NeedBufferSize2(buffer, arguments.data(), 2048), -4);
  EXPECT_EQ(Get_NeedBufferSize2(buffer, arguments.data(), 2047), 2047 * (1 << 20) + 3);
  EXPECT_EQ(clss_Sprintf(buffer, INT32_MAX, arguments.data(), 2048), -4);
}

}  // namespace
