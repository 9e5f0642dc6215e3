// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <limits>
#include <string>

#include "pxcl.h"
#include "support.hpp"

namespace {

std::time_t now = 0;

}  // namespace

// The linker sends every call of time() here.
extern "C" std::time_t __wrap_time(std::time_t* stored);
extern "C" std::time_t __wrap_time(std::time_t* stored) {
  if (stored != nullptr) *stored = now;
  return now;
}

namespace {

std::string make_job() {
  char buffer[80];
  std::uint64_t length = 0;
  EXPECT_EQ(PXCL_MakeKWLSetTimeJob(reinterpret_cast<std::uint8_t*>(buffer), 80, &length), 0);
  return std::string(buffer, length);
}

std::string expected_job(const std::string& digits) {
  using namespace std::string_literals;
  return "\x1B[K\x02\0\0\x1F"s + "KWLSTART\nControlMode=Common\nSetTime=" + digits + "\nKWLEND\n";
}

// A zone that changes between two calls is seen by the second.
TEST(SetTime, TellsTheLocalTimeOfTheZoneAtHand) {
  now = 1704164645;  // 2024-01-02 03:04:05 UTC
  setenv("TZ", "UTC0", 1);
  EXPECT_EQ(make_job(), expected_job("20240102030405"));
  setenv("TZ", "TST-5:30", 1);
  EXPECT_EQ(make_job(), expected_job("20240102083405"));
  setenv("TZ", "TST+4", 1);
  EXPECT_EQ(make_job(), expected_job("20240101230405"));
}

// 66 bytes are asked for, though the job takes 65.
TEST(SetTime, WantsOneByteMoreThanItTakes) {
  now = 1704164645;
  pxcl_test::fits_at_every_capacity(
      66,
      [](char* buffer, std::size_t size) {
        std::uint64_t length = 7;
        const std::int32_t status =
            PXCL_MakeKWLSetTimeJob(reinterpret_cast<std::uint8_t*>(buffer), size, &length);
        EXPECT_EQ(length, status == 0 ? 65U : 7U);
        const std::string all(buffer, size);
        EXPECT_EQ(all.find_first_not_of('\x5A', status == 0 ? 65 : 0), all.npos);
        return status;
      },
      -1, true);
}

TEST(SetTime, RefusesATimeThatHasNoFourteenDigits) {
  if (sizeof(std::time_t) == 4) GTEST_SKIP() << "the time ends in 2038";
  std::uint8_t buffer[80] = {};
  std::uint64_t length = 7;
  for (const std::time_t time : {static_cast<std::time_t>(253402300800 + 86400),  // the year 10000
                                 std::numeric_limits<std::time_t>::max()}) {
    now = time;
    EXPECT_EQ(PXCL_MakeKWLSetTimeJob(buffer, sizeof buffer, &length), -1);
  }
  now = 0;
  EXPECT_EQ(length, 7U);
  EXPECT_EQ(buffer[0], 0);
}

}  // namespace
