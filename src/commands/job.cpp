// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <cstring>

#include "commands/buffer.hpp"
#include "dictionaries.h"

using namespace pxcl;
using namespace pxcl::commands;

// clang-format off
#define START_JOB(head, detection, description, environment) \
  head                                                       \
    "<zirk:contents>"                                        \
      "<zirk:operation>StartJob</zirk:operation>"            \
      "<zirk:param_set servicetype=\"%s\">"                  \
        "<zirk:jobID>%s</zirk:jobID>"                        \
        "<zirk:bidi>%s</zirk:bidi>"                          \
        detection                                            \
        description                                          \
        environment                                          \
      "</zirk:param_set>"                                    \
    "</zirk:contents>"                                       \
  "</cmd>"
#define MISDETECTION   "<vrx:key_misdetection>ON</vrx:key_misdetection>"
#define UNFORCED_PAPER "<vrx:forcepmdetection>OFF</vrx:forcepmdetection>"
#define DESCRIPTION                                          \
        "<zirk:jobname/>"                                    \
        "<zirk:username/>"                                   \
        "<zirk:computername/>"                               \
        "<zirk:job_description>"                             \
          "<![CDATA[%s]]>"                                   \
        "</zirk:job_description>"
#define ENVIRONMENT    "<vrx:host_environment>%s</vrx:host_environment>"

// By mode. Exactly those that hold a vendor element declare the vendor's namespace.
static constexpr Template<3> kStartJob[] = {
  START_JOB(PXCL_HEAD,        "",                          "",          ""),
  START_JOB(PXCL_HEAD_VENDOR, MISDETECTION,                "",          ""),
  START_JOB(PXCL_HEAD_VENDOR, UNFORCED_PAPER,              "",          ""),
  START_JOB(PXCL_HEAD_VENDOR, MISDETECTION UNFORCED_PAPER, "",          ""),
};
static constexpr Template<4> kStartDescribedJob[] = {
  START_JOB(PXCL_HEAD,        "",                          DESCRIPTION, ""),
  START_JOB(PXCL_HEAD_VENDOR, MISDETECTION,                DESCRIPTION, ""),
  START_JOB(PXCL_HEAD_VENDOR, UNFORCED_PAPER,              DESCRIPTION, ""),
  START_JOB(PXCL_HEAD_VENDOR, MISDETECTION UNFORCED_PAPER, DESCRIPTION, ""),
};
static constexpr Template<5> kStartHostJob[] = {
  START_JOB(PXCL_HEAD_VENDOR, "",                          DESCRIPTION, ENVIRONMENT),
  START_JOB(PXCL_HEAD_VENDOR, MISDETECTION,                DESCRIPTION, ENVIRONMENT),
  START_JOB(PXCL_HEAD_VENDOR, UNFORCED_PAPER,              DESCRIPTION, ENVIRONMENT),
  START_JOB(PXCL_HEAD_VENDOR, MISDETECTION UNFORCED_PAPER, DESCRIPTION, ENVIRONMENT),
};
// clang-format on

namespace {

struct Start {
  u16 serviceType;
  u32 hostEnvironment;  // as the caller gave it: narrowed only once it is known to be a row
  const char* description;
  i16 mode;
  const char* jobID;
  const char* bidi;
};

bool is_service(u16 serviceType) {
  return serviceType < CLSS_NUM_SERVICETYPE_LIST;
}

// CLSS_COMMAND_OK, or the first objection.
i32 check(const Start& start, const Output& out) {
  if (!is_usable(out) || start.jobID == nullptr || start.bidi == nullptr ||
      !is_service(start.serviceType)) {
    return CLSS_COMMAND_BAD_ARGUMENT;
  }
  if (start.description == nullptr && start.hostEnvironment != 0) return CLSS_COMMAND_NOT_ACCEPTED;
  if (start.mode < 0 || start.mode >= i16{std::size(kStartJob)}) return CLSS_COMMAND_NOT_ACCEPTED;
  if (start.description != nullptr &&
      strnlen(start.description, CLSS_JOB_DESCRIPTION_MAX + 1) > CLSS_JOB_DESCRIPTION_MAX) {
    return CLSS_COMMAND_NOT_ACCEPTED;
  }
  const bool known = start.hostEnvironment < CLSS_DICNUM_HOST_ENVIRONMENT;
  return known ? CLSS_COMMAND_OK : CLSS_COMMAND_BAD_ARGUMENT;
}

i32 start_job(const Start& start, const Output& out) {
  if (const i32 status = check(start, out); status != CLSS_COMMAND_OK) return status;
  const std::string_view service = glb_clssdicServiceTypeTbl[start.serviceType].keyword;
  if (start.description == nullptr) {
    return format(kStartJob[start.mode], {service, start.jobID, start.bidi}, out);
  }
  if (start.hostEnvironment == 0) {
    return format(kStartDescribedJob[start.mode],
                  {service, start.jobID, start.bidi, start.description}, out);
  }
  const std::string_view environment = glb_clssdicHostEnvironmentTbl[start.hostEnvironment].keyword;
  return format(kStartHostJob[start.mode],
                {service, start.jobID, start.bidi, start.description, environment}, out);
}

// EndJob and CancelJob.
i32 leave_job(const Template<2>& document, u16 serviceType, const char* jobID, const Output& out) {
  if (!is_usable(out) || jobID == nullptr || !is_service(serviceType)) {
    return CLSS_COMMAND_BAD_ARGUMENT;
  }
  return format(document, {glb_clssdicServiceTypeTbl[serviceType].keyword, jobID}, out);
}

constexpr u16 kPrint = 0;
constexpr u16 kMaintenance = 3;

}  // namespace

i32 CLSS_MakeCommand_StartJob3(u16 serviceType, u16 hostEnvironment, const char* jobDescription,
                               i16 mode, const char* jobID, const char* bidi, char* buffer,
                               u64 size, u64* length) {
  return start_job({serviceType, hostEnvironment, jobDescription, mode, jobID, bidi},
                   {buffer, size, length});
}

i32 CLSS_MakeCommand_StartJob2(i16 mode, const char* jobID, const char* bidi, char* buffer,
                               u64 size, u64* length) {
  return start_job({kPrint, 0, nullptr, mode, jobID, bidi}, {buffer, size, length});
}

i32 CLSS_MakeCommand_StartJob(const char* jobID, const char* bidi, char* buffer, u64 size,
                              u64* length) {
  return CLSS_MakeCommand_StartJob2(0, jobID, bidi, buffer, size, length);
}

i32 PXCL_MakeCommand_StartJob3(u32 hostEnvironment, const char* jobDescription, const char* jobID,
                               char* buffer, i32 size, u32* length) {
  if (length == nullptr) return CLSS_COMMAND_BAD_ARGUMENT;
  u64 stored = 0;
  const i32 status = start_job({kPrint, hostEnvironment, jobDescription, 2, jobID, "0"},
                               {buffer, static_cast<u64>(size), &stored});
  *length = static_cast<u32>(stored);
  return status;
}

i32 PXCL_MakeCommand_StartJob3_Maintenance(u32 hostEnvironment, const char* jobDescription,
                                           const char* jobID, char* buffer, u64 size, u64* length) {
  if (length == nullptr) return CLSS_COMMAND_BAD_ARGUMENT;
  *length = 0;
  return start_job({kMaintenance, hostEnvironment, jobDescription, 0, jobID, "0"},
                   {buffer, size, length});
}

// clang-format off
static constexpr Template<2> kEndJob =
  PXCL_HEAD
    "<zirk:contents>"
      "<zirk:operation>EndJob</zirk:operation>"
      "<zirk:param_set servicetype=\"%s\">"
        "<zirk:jobID>%s</zirk:jobID>"
      "</zirk:param_set>"
    "</zirk:contents>"
  "</cmd>";
// clang-format on

i32 CLSS_MakeCommand_EndJob(u16 serviceType, const char* jobID, char* buffer, u64 size,
                            u64* length) {
  return leave_job(kEndJob, serviceType, jobID, {buffer, size, length});
}

i32 PXCL_MakeCommand_EndJob_Maintenance(const char* jobID, char* buffer, u32 size, u64* length) {
  if (length == nullptr) return CLSS_COMMAND_BAD_ARGUMENT;
  *length = 0;
  return CLSS_MakeCommand_EndJob(kMaintenance, jobID, buffer, size, length);
}

// clang-format off
static constexpr Template<2> kCancelJob =
  PXCL_HEAD
    "<zirk:contents>"
      "<zirk:operation>CancelJob</zirk:operation>"
      "<zirk:param_set servicetype=\"%s\">"
        "<zirk:jobID>%s</zirk:jobID>"
      "</zirk:param_set>"
    "</zirk:contents>"
  "</cmd>";
// clang-format on

i32 CLSS_MakeCommand_CancelJob(u16 serviceType, const char* jobID, char* buffer, u64 size,
                               u64* length) {
  return leave_job(kCancelJob, serviceType, jobID, {buffer, size, length});
}

static i32 cancel_job(u16 serviceType, const char* jobID, char* buffer, u32 size, u32* length) {
  if (length == nullptr) return CLSS_COMMAND_BAD_ARGUMENT;
  u64 stored = 0;
  const i32 status = CLSS_MakeCommand_CancelJob(serviceType, jobID, buffer, size, &stored);
  *length = static_cast<u32>(stored);
  return status;
}

i32 PXCL_MakeCommand_CancelJob(const char* jobID, char* buffer, u32 size, u32* length) {
  return cancel_job(kPrint, jobID, buffer, size, length);
}

i32 PXCL_MakeCommand_CancelJob_Maintenance(const char* jobID, char* buffer, u32 size, u32* length) {
  return cancel_job(kMaintenance, jobID, buffer, size, length);
}

// clang-format off
static constexpr Template<3> kModeShift =
  PXCL_HEAD_VENDOR
    "<zirk:contents>"
      "<zirk:operation>VendorCmd</zirk:operation>"
      "<zirk:param_set servicetype=\"%s\">"
        "<zirk:jobID>%s</zirk:jobID>"
        "<vrx:ijoperation>ModeShift</vrx:ijoperation>"
        "<vrx:ijmode>%s</vrx:ijmode>"
      "</zirk:param_set>"
    "</zirk:contents>"
  "</cmd>";
// clang-format on

i32 CLSS_MakeCommand_ModeShift(u16 serviceType, const char* jobID, const char* modeText,
                               char* buffer, u64 size, u64* length) {
  const Output out{buffer, size, length};
  if (!is_usable(out) || jobID == nullptr || modeText == nullptr || !is_service(serviceType)) {
    return CLSS_COMMAND_BAD_ARGUMENT;
  }
  return format(kModeShift, {glb_clssdicServiceTypeTbl[serviceType].keyword, jobID, modeText}, out);
}
