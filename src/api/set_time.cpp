// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <cstring>
#include <ctime>

#include "pxcl.h"
#include "util/types.hpp"

using namespace pxcl;

namespace {

constexpr i32 kMade = 0;
constexpr i32 kRefused = -1;

// The frame's first seven bytes are an escape sequence of the printer's.
constexpr std::string_view kHead{
    "\x1B[K\x02\x00\x00\x1F"
    "KWLSTART\n"
    "ControlMode=Common\n"
    "SetTime=",
    43};
constexpr std::string_view kTail = "KWLEND\n";
constexpr std::size_t kTimeArea = 16;
// The whole time area counts, though the job holds no terminator: 65 bytes are refused.
constexpr u64 kLeastSize = kHead.size() + kTimeArea + kTail.size();
static_assert(kLeastSize == 66);

// The local time and a line feed; the length, 0 when it cannot be told.
std::size_t tell_time(char (&text)[kTimeArea]) {
  const std::time_t now = std::time(nullptr);
  std::tm local;
  tzset();
  if (localtime_r(&now, &local) == nullptr) return 0;
  return std::strftime(text, sizeof text, "%Y%m%d%H%M%S\n", &local);
}

}  // namespace

i32 PXCL_MakeKWLSetTimeJob(u8* buffer, u64 size, u64* length) {
  if (buffer == nullptr || length == nullptr || size < kLeastSize) return kRefused;
  char text[kTimeArea];
  const std::size_t textLength = tell_time(text);
  if (textLength == 0) return kRefused;
  std::memcpy(buffer, kHead.data(), kHead.size());
  std::memcpy(buffer + kHead.size(), text, textLength);
  std::memcpy(buffer + kHead.size() + textLength, kTail.data(), kTail.size());
  *length = kHead.size() + textLength + kTail.size();
  return kMade;
}
