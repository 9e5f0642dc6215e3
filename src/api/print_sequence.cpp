// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <cstdio>

#include "pxcl.h"
#include "util/types.hpp"

using namespace pxcl;

namespace {

constexpr u16 kPrint = 0;          // service type
constexpr i16 kUnforcedPaper = 2;  // mode of StartJob

// Filters look for these lines: the spellings stay.
constexpr std::string_view kStarted = "DEBUG: getStartJobCommand Successed\n";
constexpr std::string_view kShifted = "DEBUG: ---getVenderCommand Successed---\n";
constexpr std::string_view kEnded = "DEBUG: getEndJobCommand Successed\n";

struct Step {
  i32 status;
  std::string_view message;
};

Step make_step(u64 step, const char* jobID, char* buffer, u64 size, u64* length) {
  switch (step) {
    case 1:
      return {CLSS_MakeCommand_StartJob2(kUnforcedPaper, jobID, "0", buffer, size, length),
              kStarted};
    case 2:
      return {CLSS_MakeCommand_ModeShift(kPrint, jobID, "1", buffer, size, length), kShifted};
    default:
      return {CLSS_MakeCommand_EndJob(kPrint, jobID, buffer, size, length), kEnded};
  }
}

}  // namespace

i32 PXCL_GetPrintCommand(char* buffer, u64 size, u64* length, const char* jobID, u64 step) {
  if (step < 1 || step > 3) return CLSS_COMMAND_OK;
  if (length == nullptr) return CLSS_COMMAND_BAD_ARGUMENT;
  *length = 0;
  const auto [status, message] = make_step(step, jobID, buffer, size, length);
  if (status == CLSS_COMMAND_OK) std::fwrite(message.data(), 1, message.size(), stderr);
  return status;
}
