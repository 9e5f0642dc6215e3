// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Maintenance commands: parameters formatted one by one, joined, and put into the one hole of a
// document.

#include "commands/buffer.hpp"

using namespace pxcl;
using namespace pxcl::commands;

namespace {

// Bounds a parameter, all parameters together, and the document with its hole and terminator.
constexpr u64 kAreaSize = 2048;

struct Parameters {
  char text[kAreaSize];
  u64 length = 0;
};

// What a document may take at most before it is filled: its holes and a terminator count.
u64 bound_of(const Document& document, std::string_view value) {
  return document.length + 1 + value.size();
}

// clang-format off
constexpr Template<1> kJobID =
        "<zirk:jobID>%s</zirk:jobID>";
constexpr Template<1> kDateTime =
        "<zirk:datetime>%s</zirk:datetime>";
// clang-format on

// Whether `parameter`, its hole filled with `value`, fits its bound and the room behind the others.
bool append(Parameters& parameters, const Template<1>& parameter, std::string_view value) {
  const u64 bound = bound_of(parameter, value);
  const u64 length = bound - 1 - parameter.slots[0].length;
  if (bound > kAreaSize || parameters.length + length >= kAreaSize) return false;
  parameters.length += fill(parameter, {&value, 1}, parameters.text + parameters.length);
  return true;
}

// The size alone decides what is asked for, and nothing but the document's bytes is written.
i32 format_maintenance(const Template<1>& document, const char* jobID, const char* dateTime,
                       const Output& out) {
  if (jobID == nullptr || out.buffer == nullptr || out.length == nullptr) {
    return CLSS_COMMAND_BAD_ARGUMENT;
  }
  Parameters parameters;
  if (!append(parameters, kJobID, jobID) ||
      (dateTime != nullptr && !append(parameters, kDateTime, dateTime))) {
    return CLSS_COMMAND_NOT_FORMATTED;
  }
  const std::string_view value(parameters.text, parameters.length);
  const u64 need = bound_of(document, value);
  if (const i32 status = offer(need, out); status != kWrite) return status;

  const auto block = Owned<char>::allocate(need + 1);
  if (!block) return CLSS_COMMAND_NO_MEMORY;
  if (need > kAreaSize) return CLSS_COMMAND_NOT_FORMATTED;
  *out.length = fill(document, {&value, 1}, block.get());
  KWVSCopyDataX(block.get(), out.buffer, *out.length);
  return CLSS_COMMAND_OK;
}

}  // namespace

// clang-format off
static constexpr Template<1> kSetJobConfiguration =
  PXCL_HEAD_ODD_VENDOR
    "<zirk:contents>"
      "<zirk:operation>SetJobConfiguration</zirk:operation>"
      "<zirk:param_set servicetype=\"maintenance\">"
        "%s"
      "</zirk:param_set>"
    "</zirk:contents>"
  "</cmd>";
// clang-format on

i32 CLSS_MakeCommand_SetJobConfiguration_Maintenance(const char* jobID, const char* dateTime,
                                                     char* buffer, u64 size, u64* length) {
  return format_maintenance(kSetJobConfiguration, jobID, dateTime, {buffer, size, length});
}

i32 PXCL_MakeCommand_SetJobConfiguration_Maintenance(const char* jobID, const char* dateTime,
                                                     char* buffer, i32 size, u64* length) {
  return CLSS_MakeCommand_SetJobConfiguration_Maintenance(jobID, dateTime, buffer,
                                                          static_cast<u64>(size), length);
}

// clang-format off
static constexpr Template<1> kTestPrint =
  PXCL_HEAD_TIGHT
    "<zirk:contents>"
      "<zirk:operation>TestPrint</zirk:operation>"
      "<zirk:param_set servicetype=\"maintenance\">"
        "<zirk:type>nozzle_check</zirk:type>"
        "%s"
      "</zirk:param_set>"
    "</zirk:contents>"
  "</cmd>";
// clang-format on

i32 CLSS_MakeCommand_TestPrint(const char* jobID, char* buffer, u64 size, u64* length) {
  return format_maintenance(kTestPrint, jobID, nullptr, {buffer, size, length});
}

i32 PXCL_MakeCommand_TestPrint(const char* jobID, char* buffer, i32 size, u64* length) {
  return CLSS_MakeCommand_TestPrint(jobID, buffer, static_cast<u64>(size), length);
}

// The printer knows the alignment of its heads as a test print.
// clang-format off
static constexpr Template<1> kAutoRegistration =
  PXCL_HEAD_TIGHT
    "<zirk:contents>"
      "<zirk:operation>TestPrint</zirk:operation>"
      "<zirk:param_set servicetype=\"maintenance\">"
        "<zirk:type>auto_registration</zirk:type>"
        "%s"
      "</zirk:param_set>"
    "</zirk:contents>"
  "</cmd>";
// clang-format on

i32 CLSS_MakeCommand_AutoRegistration(const char* jobID, char* buffer, u64 size, u64* length) {
  return format_maintenance(kAutoRegistration, jobID, nullptr, {buffer, size, length});
}

i32 PXCL_MakeCommand_AutoAlignment(const char* jobID, char* buffer, i32 size, u64* length) {
  return CLSS_MakeCommand_AutoRegistration(jobID, buffer, static_cast<u64>(size), length);
}

// clang-format off
static constexpr Template<1> kCleaning =
  PXCL_HEAD_TIGHT
    "<zirk:contents>"
      "<zirk:operation>Cleaning</zirk:operation>"
      "<zirk:param_set servicetype=\"maintenance\">"
        "<zirk:inkgroup>all</zirk:inkgroup>"
        "<zirk:type>regular</zirk:type>"
        "%s"
      "</zirk:param_set>"
    "</zirk:contents>"
  "</cmd>";
// clang-format on

i32 CLSS_MakeCommand_Cleaning(const char* jobID, char* buffer, u64 size, u64* length) {
  return format_maintenance(kCleaning, jobID, nullptr, {buffer, size, length});
}

i32 PXCL_MakeCommand_Cleaning(const char* jobID, char* buffer, i32 size, u64* length) {
  return CLSS_MakeCommand_Cleaning(jobID, buffer, static_cast<u64>(size), length);
}
