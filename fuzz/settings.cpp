// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Print settings completed from any capability reply: twelve bytes are the mode, the wishes and the
// loaded paper, the rest is the reply. What is chosen has a row of its dictionary, or is not set.

#include <cstring>

#include "device.h"
#include "target.hpp"

using pxcl::fuzz::require;

namespace {

constexpr std::size_t kBytes = 12;
constexpr uint16_t kNotSet = 65535;

uint16_t row(uint8_t byte) {
  return byte == 255 ? kNotSet : byte;
}

bool is_row(uint16_t value, uint16_t count) {
  return value == kNotSet || (value != 0 && value < count);
}

void check(const ClssPrintSettings& made, const ClssPrintSettings& asked) {
  require(made.version == 2);
  require(asked.paperSize == kNotSet || made.paperSize == asked.paperSize);
  require(asked.paperType == kNotSet || made.paperType == asked.paperType);
  require(is_row(made.borderless, CLSS_DICNUM_BORDERLESS));
  require(is_row(made.colorMode, CLSS_DICNUM_COLORMODE));
  require(is_row(made.duplexPrint, CLSS_DICNUM_DUPLEXPRINT));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  if (size < kBytes) return 0;
  const char* const reply = reinterpret_cast<const char*>(data) + kBytes;
  const ClssPrintSettings asked = {
      2, row(data[0]), row(data[1]), row(data[2]), row(data[3]), row(data[4])};
  ClssPrintSettings completed = asked, chosen = asked;
  if (CLSS_AutoMakeOtherPrintSettings(data[5] & 1, reply, size - kBytes, &completed) == 0) {
    check(completed, asked);
  } else {
    require(std::memcmp(&completed, &asked, sizeof asked) == 0);
  }
  ClssStatus status;
  std::memset(&status, 0xFF, sizeof status);
  status.leading = 1;
  for (std::size_t i = 0; i < 2; ++i) {
    status.currentPaperType[i] = row(data[6 + 3 * i]);
    status.currentPaperSize[i] = row(data[7 + 3 * i]);
    status.panelMedia[i] = data[8 + 3 * i] & 1;
  }
  const uint16_t mode = data[5] >> 1 & 3;
  if (CLSS_AutoMakePrintSettings(mode, reply, size - kBytes, &status, &chosen) == 0 && mode < 2) {
    const ClssPrintSettings given = {
        2, mode == 1 ? asked.paperSize : kNotSet, mode == 0 ? asked.paperType : kNotSet, 0, 0, 0};
    check(chosen, given);
  }
  return 0;
}
