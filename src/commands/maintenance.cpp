// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Maintenance commands: job ID, and date and time, each an element of its own.

#include "commands/buffer.hpp"

using namespace pxcl;
using namespace pxcl::commands;

// clang-format off
#define JOB_ID                                                    \
        "<zirk:jobID>%s</zirk:jobID>"
#define DATE_TIME                                                 \
        "<zirk:datetime>%s</zirk:datetime>"
// clang-format on

namespace {

// Bounds all parameters with a terminator, and the job ID, and the document, with one hole besides.
constexpr u64 kAreaSize = 2048;
constexpr u64 kSpare = sizeof "%s";

// What the parameters take beside their texts.
constexpr u64 kJobIDTags = sizeof JOB_ID - kSpare;
constexpr u64 kDateTimeTags = sizeof DATE_TIME - kSpare;

// The texts are the job ID, and perhaps date and time.
bool fit_area(Values values) {
  const u64 jobID = kJobIDTags + values.front().size();
  const u64 dateTime = values.size() > 1 ? kDateTimeTags + values.back().size() : 0;
  return jobID + kSpare <= kAreaSize && jobID + dateTime < kAreaSize;
}

// The size alone decides what is asked for, and nothing but the document's bytes is written.
i32 format_maintenance(const Fillable& document, Values values, const Output& out) {
  if (!fit_area(values)) return CLSS_COMMAND_NOT_FORMATTED;
  const u64 length = length_of(document, values);
  const u64 need = length + kSpare;
  if (const i32 status = offer(need, out); status != kWrite) return status;
  if (need > kAreaSize) return CLSS_COMMAND_NOT_FORMATTED;
  fill(document, values, out.buffer);
  *out.length = length;
  return CLSS_COMMAND_OK;
}

bool is_complete(const char* jobID, const Output& out) {
  return jobID != nullptr && out.buffer != nullptr && out.length != nullptr;
}

i32 format_maintenance(const Template<1>& document, const char* jobID, const Output& out) {
  if (!is_complete(jobID, out)) return CLSS_COMMAND_BAD_ARGUMENT;
  const std::string_view values[] = {jobID};
  return format_maintenance(document, values, out);
}

}  // namespace

// clang-format off
#define SET_JOB_CONFIGURATION(datetime)                           \
  PXCL_HEAD_ODD_VENDOR                                            \
    "<zirk:contents>"                                             \
      "<zirk:operation>SetJobConfiguration</zirk:operation>"      \
      "<zirk:param_set servicetype=\"maintenance\">"              \
        JOB_ID                                                    \
        datetime                                                  \
      "</zirk:param_set>"                                         \
    "</zirk:contents>"                                            \
  "</cmd>"

static constexpr Template<1> kSetJobConfiguration = SET_JOB_CONFIGURATION("");
static constexpr Template<2> kSetTimedJobConfiguration = SET_JOB_CONFIGURATION(DATE_TIME);
// clang-format on

i32 CLSS_MakeCommand_SetJobConfiguration_Maintenance(const char* jobID, const char* dateTime,
                                                     char* buffer, u64 size, u64* length) {
  const Output out{buffer, size, length};
  if (dateTime == nullptr) return format_maintenance(kSetJobConfiguration, jobID, out);
  if (!is_complete(jobID, out)) return CLSS_COMMAND_BAD_ARGUMENT;
  const std::string_view values[] = {jobID, dateTime};
  return format_maintenance(kSetTimedJobConfiguration, values, out);
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
        JOB_ID
      "</zirk:param_set>"
    "</zirk:contents>"
  "</cmd>";
// clang-format on

i32 CLSS_MakeCommand_TestPrint(const char* jobID, char* buffer, u64 size, u64* length) {
  return format_maintenance(kTestPrint, jobID, {buffer, size, length});
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
        JOB_ID
      "</zirk:param_set>"
    "</zirk:contents>"
  "</cmd>";
// clang-format on

i32 CLSS_MakeCommand_AutoRegistration(const char* jobID, char* buffer, u64 size, u64* length) {
  return format_maintenance(kAutoRegistration, jobID, {buffer, size, length});
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
        JOB_ID
      "</zirk:param_set>"
    "</zirk:contents>"
  "</cmd>";
// clang-format on

i32 CLSS_MakeCommand_Cleaning(const char* jobID, char* buffer, u64 size, u64* length) {
  return format_maintenance(kCleaning, jobID, {buffer, size, length});
}

i32 PXCL_MakeCommand_Cleaning(const char* jobID, char* buffer, i32 size, u64* length) {
  return CLSS_MakeCommand_Cleaning(jobID, buffer, static_cast<u64>(size), length);
}
