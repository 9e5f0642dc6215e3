// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Commands that are whole documents as they stand here: the texts in them are placeholders,
// rewritten at their path keys.

#include "commands/buffer.hpp"
#include "dictionaries.h"
#include "keyed/paths.hpp"
#include "keyed/vocabulary.hpp"

using namespace pxcl;
using namespace pxcl::commands;
namespace path = pxcl::keyed::path;

namespace {

// A number as the printer's decimal text: signed, whatever the caller's type.
class Decimal {
 public:
  explicit Decimal(u32 value) {
    const bool negative = static_cast<i32>(value) < 0;
    u32 rest = negative ? 0U - value : value;
    do {
      *--begin_ = static_cast<char>('0' + rest % 10);
      rest /= 10;
    } while (rest != 0);
    if (negative) *--begin_ = '-';
  }
  Decimal(const Decimal&) = delete;
  Decimal& operator=(const Decimal&) = delete;

  operator std::string_view() const { return {begin_, std::end(text_)}; }

 private:
  char text_[11];
  char* begin_ = std::end(text_);
};

}  // namespace

// clang-format off
static constexpr Template<3> kSendData = {
  PXCL_HEAD
    "<zirk:contents>"
      "<zirk:operation>SendData</zirk:operation>"
      "<zirk:param_set servicetype=\"print\">"
        "<zirk:jobID>00000001</zirk:jobID>"
        "<zirk:format>JPEG</zirk:format>"
        "<zirk:datasize>%s</zirk:datasize>"
      "</zirk:param_set>"
    "</zirk:contents>"
  "</cmd>",
  {path::kPrintJobID, path::kFormat, path::kDataSize}};
// clang-format on

static i32 send_data(u16 dataFormat, const char* jobID, u32 dataSize, const Output& out) {
  if (out.length == nullptr || jobID == nullptr || dataSize == 0) return CLSS_COMMAND_BAD_ARGUMENT;
  const Decimal bytes(dataSize);
  const std::string_view format = glb_clssdicDataFormatTbl[dataFormat].keyword;
  return rewrite(kSendData, {jobID, format, bytes}, out);
}

i32 CLSS_MakeCommand_SendDataJPEG(const char* jobID, u32 dataSize, char* buffer, u64 size,
                                  u64* length) {
  return send_data(keyed::kFormatJpeg, jobID, dataSize, {buffer, size, length});
}

i32 CLSS_MakeCommand_SendDataJPEGPAGE(const char* jobID, u32 dataSize, char* buffer, u64 size,
                                      u64* length) {
  return send_data(keyed::kFormatJpegPage, jobID, dataSize, {buffer, size, length});
}

i32 CLSS_MakeCommand_SendDataPWGRaster(const char* jobID, u32 dataSize, char* buffer, u64 size,
                                       u64* length) {
  return send_data(keyed::kFormatPwgRaster, jobID, dataSize, {buffer, size, length});
}

i32 PXCL_GetSendDataPWGRasterCommand(const char* jobID, u32 dataSize, i64 size, char* buffer,
                                     u64* length) {
  if (size < 1) return CLSS_COMMAND_BAD_ARGUMENT;
  const i32 status =
      CLSS_MakeCommand_SendDataPWGRaster(jobID, dataSize, buffer, static_cast<u64>(size), length);
  return status == CLSS_COMMAND_OK ? CLSS_COMMAND_OK : CLSS_COMMAND_BAD_ARGUMENT;
}

// clang-format off
static constexpr Template<4> kSendRawData = {
  PXCL_HEAD
    "<zirk:contents>"
      "<zirk:operation>SendData</zirk:operation>"
      "<zirk:param_set servicetype=\"print\">"
        "<zirk:jobID>00000001</zirk:jobID>"
        "<zirk:format>RAW</zirk:format>"
        "<zirk:datasize>%s</zirk:datasize>"
        "<zirk:datawidth>%s</zirk:datawidth>"
        "<zirk:datalength>%s</zirk:datalength>"
      "</zirk:param_set>"
    "</zirk:contents>"
  "</cmd>",
  {path::kPrintJobID, path::kDataSize, path::kDataWidth, path::kDataLength}};
// clang-format on

i32 CLSS_MakeCommand_SendDataRAW(const char* jobID, u16 width, u16 height, char* buffer, u64 size,
                                 u64* length) {
  if (length == nullptr || jobID == nullptr || width == 0 || height == 0) {
    return CLSS_COMMAND_BAD_ARGUMENT;
  }
  const Decimal columns(width);
  const Decimal rows(height);
  const Decimal bytes(u32{width} * u32{height} * 3);
  return rewrite(kSendRawData, {jobID, bytes, columns, rows}, {buffer, size, length});
}

// clang-format off
#define SET_PAGE_CONFIGURATION(nextpage, preparation)             \
  PXCL_HEAD_VENDOR                                                \
    "<zirk:contents>"                                             \
      "<zirk:operation>VendorCmd</zirk:operation>"                \
      "<zirk:param_set servicetype=\"print\">"                    \
        "<zirk:jobID>00000001</zirk:jobID>"                       \
        "<vrx:ijoperation>SetPageConfiguration</vrx:ijoperation>" \
        nextpage                                                  \
        preparation                                               \
      "</zirk:param_set>"                                         \
    "</zirk:contents>"                                            \
  "</cmd>"
#define NEXT_PAGE   "<vrx:nextpage>ON</vrx:nextpage>"
#define PREPARATION "<vrx:printpreparation>manualfeed</vrx:printpreparation>"

static constexpr Template<1> kSetPage = {
  SET_PAGE_CONFIGURATION("", ""), {path::kPrintJobID}};
static constexpr Template<2> kSetNextPage = {
  SET_PAGE_CONFIGURATION(NEXT_PAGE, ""), {path::kPrintJobID, path::kNextPage}};
static constexpr Template<2> kSetPreparedPage = {
  SET_PAGE_CONFIGURATION("", PREPARATION), {path::kPrintJobID, path::kPrintPreparation}};
static constexpr Template<3> kSetPreparedNextPage = {
  SET_PAGE_CONFIGURATION(NEXT_PAGE, PREPARATION),
  {path::kPrintJobID, path::kNextPage, path::kPrintPreparation}};
// clang-format on

i32 CLSS_MakeCommand_SetPageConfiguration2(const char* jobID, u16 nextPage, u16 printPreparation,
                                           char* buffer, u64 size, u64* length) {
  if (length == nullptr || jobID == nullptr || nextPage >= CLSS_DICNUM_NEXTPAGE ||
      printPreparation >= CLSS_DICNUM_PRINT_PREPARATION) {
    return CLSS_COMMAND_BAD_ARGUMENT;
  }
  const Output out{buffer, size, length};
  const std::string_view next = keyword_of(glb_clssdicNextpageTbl[nextPage]);
  const std::string_view preparation = keyword_of(glb_clssdicPrintPreparationTbl[printPreparation]);
  if (nextPage == 0 && printPreparation == 0) return rewrite(kSetPage, {jobID}, out);
  if (printPreparation == 0) return rewrite(kSetNextPage, {jobID, next}, out);
  if (nextPage == 0) return rewrite(kSetPreparedPage, {jobID, preparation}, out);
  return rewrite(kSetPreparedNextPage, {jobID, next, preparation}, out);
}

i32 CLSS_MakeCommand_SetPageConfiguration(const char* jobID, u16 nextPage, char* buffer, u64 size,
                                          u64* length) {
  return CLSS_MakeCommand_SetPageConfiguration2(jobID, nextPage, 0, buffer, size, length);
}

i32 PXCL_GetSetPageConfigurationCommand(const char* jobID, u16 nextPage, char* buffer, u64 size,
                                        u64* length) {
  const i32 status = CLSS_MakeCommand_SetPageConfiguration(jobID, nextPage, buffer, size, length);
  return status == CLSS_COMMAND_OK ? CLSS_COMMAND_OK : CLSS_COMMAND_BAD_ARGUMENT;
}

// clang-format off
#define SET_JOB_CONFIGURATION(head, datetime, guide)              \
  head                                                            \
    "<zirk:contents>"                                             \
      "<zirk:operation>SetJobConfiguration</zirk:operation>"      \
      "<zirk:param_set servicetype=\"print\">"                    \
        "<zirk:jobID>00000001</zirk:jobID>"                       \
        "<zirk:mismatch_mode>none</zirk:mismatch_mode>"           \
        datetime                                                  \
        guide                                                     \
      "</zirk:param_set>"                                         \
    "</zirk:contents>"                                            \
  "</cmd>"
#define DATE_TIME                                                 \
        "<zirk:datetime></zirk:datetime>"
#define SIDE_GUIDE                                                \
        "<vrx:device_side_guide>"                                 \
          "<vrx:item name=\"disc\"></vrx:item>"                   \
        "</vrx:device_side_guide>"

static constexpr Template<1> kSetJob = {
  SET_JOB_CONFIGURATION(PXCL_HEAD_TIGHT, "", ""), {path::kPrintJobID}};
static constexpr Template<2> kSetTimedJob = {
  SET_JOB_CONFIGURATION(PXCL_HEAD_TIGHT, DATE_TIME, ""), {path::kPrintJobID, path::kDateTime}};
static constexpr Template<2> kSetGuidedJob = {
  SET_JOB_CONFIGURATION(PXCL_HEAD_TIGHT_VENDOR, "", SIDE_GUIDE),
  {path::kPrintJobID, path::kDiscSideGuide}};
static constexpr Template<3> kSetTimedGuidedJob = {
  SET_JOB_CONFIGURATION(PXCL_HEAD_TIGHT_VENDOR, DATE_TIME, SIDE_GUIDE),
  {path::kPrintJobID, path::kDateTime, path::kDiscSideGuide}};
// clang-format on

i32 CLSS_MakeCommand_SetJobConfiguration(const char* jobID, const char* dateTime,
                                         u16 deviceSideGuide, char* buffer, u64 size, u64* length) {
  if (length == nullptr || jobID == nullptr || deviceSideGuide >= CLSS_DICNUM_DEVICE_SIDE_GUIDE) {
    return CLSS_COMMAND_BAD_ARGUMENT;
  }
  const Output out{buffer, size, length};
  const std::string_view guide = keyword_of(glb_clssdicDeviceSideGuideTbl[deviceSideGuide]);
  if (dateTime == nullptr && deviceSideGuide == 0) return rewrite(kSetJob, {jobID}, out);
  if (deviceSideGuide == 0) return rewrite(kSetTimedJob, {jobID, dateTime}, out);
  if (dateTime == nullptr) return rewrite(kSetGuidedJob, {jobID, guide}, out);
  return rewrite(kSetTimedGuidedJob, {jobID, dateTime, guide}, out);
}

i32 CLSS_MakeCommand_SetTime(const char* jobID, const char* dateTime, char* buffer, u64 size,
                             u64* length) {
  return CLSS_MakeCommand_SetJobConfiguration(jobID, dateTime, 0, buffer, size, length);
}

i32 PXCL_MakeCommand_SetJobConfiguration(const char* jobID, const char* dateTime, char* buffer,
                                         i32 size, u32* length) {
  if (length == nullptr) return CLSS_COMMAND_BAD_ARGUMENT;
  u64 stored = 0;
  const i32 status = CLSS_MakeCommand_SetJobConfiguration(jobID, dateTime, 0, buffer,
                                                          static_cast<u64>(size), &stored);
  *length = static_cast<u32>(stored);
  return status;
}

// clang-format off
#define GET_STATUS(servicetype, job)                              \
  PXCL_HEAD                                                       \
    "<zirk:contents>"                                             \
      "<zirk:operation>GetStatus</zirk:operation>"                \
      "<zirk:param_set servicetype=\"" servicetype "\">"          \
        job                                                       \
      "</zirk:param_set>"                                         \
    "</zirk:contents>"                                            \
  "</cmd>"
#define JOB "<zirk:jobID>00000001</zirk:jobID>"
// clang-format on

// What a service is asked: about itself, or about one of its jobs.
struct StatusQuestion {
  Document plain;
  Template<1> ofJob;
};

static constexpr StatusQuestion kPrintStatus = {GET_STATUS("print", ""),
                                                {GET_STATUS("print", JOB), {path::kPrintJobID}}};
static constexpr StatusQuestion kMaintenanceStatus = {
    GET_STATUS("maintenance", ""), {GET_STATUS("maintenance", JOB), {path::kMaintenanceJobID}}};

static i32 get_status(const StatusQuestion& question, const char* jobID, const Output& out) {
  if (jobID == nullptr) return copy_command(question.plain, out);
  return rewrite(question.ofJob, {jobID}, out);
}

static i32 get_plain_status(const StatusQuestion& question, char* buffer, u32 size, u32* length) {
  if (length == nullptr) return CLSS_COMMAND_BAD_ARGUMENT;
  u64 stored = 0;
  const i32 status = get_status(question, nullptr, {buffer, size, &stored});
  *length = static_cast<u32>(stored);
  return status;
}

i32 CLSS_MakeCommand_GetStatusPrint(const char* jobID, char* buffer, u64 size, u64* length) {
  return get_status(kPrintStatus, jobID, {buffer, size, length});
}

i32 CLSS_MakeCommand_GetStatusMaintenance(const char* jobID, char* buffer, u64 size, u64* length) {
  return get_status(kMaintenanceStatus, jobID, {buffer, size, length});
}

i32 PXCL_MakeCommand_GetStatusPrint(char* buffer, u32 size, u32* length) {
  return get_plain_status(kPrintStatus, buffer, size, length);
}

i32 PXCL_MakeCommand_GetStatusMaintenance(char* buffer, u32 size, u32* length) {
  return get_plain_status(kMaintenanceStatus, buffer, size, length);
}
