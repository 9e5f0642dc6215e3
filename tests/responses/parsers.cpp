// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "parsers.hpp"

#define PRINT "cmd/zirk:contents/zirk:param_set servicetype=\"print\""

namespace {

constexpr const char* kHead = "startjob_ok.xml";
constexpr const char* kStatus = "status_busy.xml";
constexpr const char* kCapability = "capability_small.xml";
constexpr const char* kJob = "00000034";

const std::set<int> kHeadStatuses = {0, -2, -5, -9, -10, -13, -15, -16};
const std::set<int> kListStatuses = {0, -2, -3, -5, -6, -7};
const std::set<int> kYesNo = {1, 2, -2, -5, -6};
const std::set<int> kHost = {0, 3, 7};

int common_status(const char* document, uint64_t length) {
  static constexpr char kPath[] = PRINT "/zirk:status";
  const ClssKeyValue status = {kPath, sizeof kPath - 1, nullptr, 0};
  const ClssKeyValue absent = {kPath, 17, nullptr, 0};  // no reply has text there
  const ClssKeyValue keys[5] = {status, status, absent, absent, absent};
  ClssStatusCommon record;
  return parseCommonStatusResponse(document, length, keys, 5, &record);
}

int head(const char* document, uint64_t length) {
  uint64_t position;
  ClssResponseCommon record = {};
  return CLSS_ParseResponseCommon(document, length, &position, &record);
}

int info(const char* document, uint64_t length) {
  uint16_t operation, detail;
  uint16_t* reference = &detail;
  char jobID[9];
  return PXCL_GetInfoResponse(document, static_cast<int32_t>(length), &operation, jobID,
                              &reference);
}

int job_ids(const char* document, uint64_t length) {
  char slots[3][9];
  int32_t count = 3;
  return CLSS_ParseJobIDListResponse(document, length, slots, &count);
}

template <auto parse>
int status(const char* document, uint64_t length) {
  ClssStatus record = {};
  return parse(document, length, kJob, &record);
}

template <auto wrapper>
int wrapped_status(const char* document, uint64_t length) {
  uint32_t code, detail;
  char supportCode[11] = {}, jobID[9] = {};
  return wrapper(document, static_cast<int32_t>(length), kJob, &code, &detail, supportCode, jobID);
}

template <typename Record, auto parse, int32_t index>
int one(const char* document, uint64_t length) {
  Record record = {};
  record.version = 3;
  int32_t place = index;
  return parse(document, length, &place, &record);
}

template <typename Record, auto parse>
int all(const char* document, uint64_t length) {
  Record records[8] = {};
  for (Record& record : records) record.version = 3;
  int32_t count = 8;
  return parse(document, length, records, &count);
}

int pixels(const char* document, uint64_t length) {
  uint16_t values[4];
  return CLSS_ParseCapabilityResponsePrint_Pixels(document, length, &values[0], &values[1],
                                                  &values[2], &values[3]);
}

template <typename Read>
int items(const char* elements, Read read) {
  ItemSet sets[2] = {{nullptr, nullptr, 0, elements, "papersize", 0, glb_clssdicPaperSizeTbl,
                      CLSS_DICNUM_PAPERSIZE},
                     {nullptr, nullptr, 0, elements, "printcolormode", 1, glb_clssdicColormodeTbl,
                      CLSS_DICNUM_COLORMODE}};
  const int status = read(sets);
  ReleaseItemSetList(sets, 2);
  return status;
}

template <auto parse, uint16_t value>
int flag(const char* document, uint64_t length) {
  return parse(document, length, value);
}

}  // namespace

// clang-format off
const std::vector<Parser>& parsers() {
  static const std::vector<Parser> all_parsers = {
      {Family::kHead, "getOperation_ServiceType", kHead, {0, -2, -5, -9},
       [](const char* d, uint64_t n) { uint16_t a, b; return getOperation_ServiceType(d, n, &a, &b); }},
      {Family::kHead, "CLSS_ParseResponseCommon", kHead, kHeadStatuses, head},
      {Family::kHead, "PXCL_GetInfoResponse", kHead, kHeadStatuses, info},
      {Family::kStatus, "parseCommonStatusResponse", kStatus, {0, -2, -5, -9}, common_status},
      {Family::kStatus, "CLSS_ParseStatusResponsePrint", kStatus, {0, -2, -3, -5, -9},
       [](const char* d, uint64_t n) { ClssStatus record; return CLSS_ParseStatusResponsePrint(d, n, &record); }},
      {Family::kStatus, "CLSS_ParseStatusResponsePrint2", kStatus, {0, 1, -2, -3, -5, -9}, status<CLSS_ParseStatusResponsePrint2>},
      {Family::kStatus, "CLSS_ParseStatusResponseMaintenance", "status_maintenance.xml", {0, 1, -2},
       status<CLSS_ParseStatusResponseMaintenance>},
      {Family::kJobList, "CLSS_ParseJobIDListResponse", "joblist.xml", {0, -2}, job_ids},
      {Family::kStatus, "PXCL_GetStatus", kStatus, {0, -2, -3, -5, -9},
       [](const char* d, uint64_t n) {
         uint32_t a, b; char code[11];
         return PXCL_GetStatus(d, static_cast<int32_t>(n), &a, &b, code);
       }},
      {Family::kStatus, "PXCL_GetStatus2", kStatus, {0, 10, -2, -3, -5, -9}, wrapped_status<PXCL_GetStatus2>},
      {Family::kStatus, "PXCL_GetStatus_Maintenance", "status_maintenance.xml", {0, 1, -2},
       wrapped_status<PXCL_GetStatus_Maintenance>},
      {Family::kCapability, "PaperSize, count", kCapability, {0, -2, -5, -6, -7},
       one<ClssPaperSize, CLSS_ParseCapabilityResponsePrint_PaperSize, -1>},
      {Family::kCapability, "PaperSize", kCapability, kListStatuses, one<ClssPaperSize, CLSS_ParseCapabilityResponsePrint_PaperSize, 1>},
      {Family::kCapability, "MediaType, count", kCapability, {0, -2, -5, -6, -7},
       one<ClssMediaType, CLSS_ParseCapabilityResponsePrint_MediaType, -1>},
      {Family::kCapability, "MediaType", kCapability, {0, -2, -5, -6, -7},
       one<ClssMediaType, CLSS_ParseCapabilityResponsePrint_MediaType, 0>},
      {Family::kCapability, "PaperSizes", kCapability, kListStatuses, all<ClssPaperSize, PXCL_ParseCapabilityResponsePrint_PaperSizes>},
      {Family::kCapability, "MediaTypes", kCapability, {0, -2, -5, -6, -7},
       all<ClssMediaType, PXCL_ParseCapabilityResponsePrint_MediaTypes>},
      {Family::kCapability, "Pixels", kCapability, kListStatuses, pixels},
      {Family::kCapability, "MediaMap", kCapability, {0, -2},
       [](const char* d, uint64_t n) {
         ClssMediaMap map = {};
         return CLSS_ParseCapabilityResponsePrint_MediaMap(d, n, 1, &map);
       }},
      {Family::kCapability, "Get_ItemSetList", kCapability, {0, -2, -5, -6}, [](const char* d, uint64_t n) {
         return items(PRINT "/%s:%s", [=](ItemSet* sets) { return Get_ItemSetList(d, n, 2, sets, 2); });
       }},
      {Family::kCapability, "Get_ItemSetByReq", kCapability, {0, -2}, [](const char* d, uint64_t n) {
         return items(PRINT "/%s:%s papertype=\"%s\"", [=](ItemSet* sets) { return Get_ItemSetByReq(d, n, sets, 2, "stationery", 0, 0); });
       }},
      {Family::kSupport, "FormatType", kCapability, kYesNo, flag<CLSS_ParseCapabilityResponsePrint_FormatType, 8>},
      {Family::kSupport, "NextPage", kCapability, {0, 2}, flag<CLSS_ParseCapabilityResponsePrint_NextPage, 2>},
      {Family::kSupport, "PrintPreparation", kCapability, {0, 1}, flag<CLSS_ParseCapabilityResponsePrint_PrintPreparation, 1>},
      {Family::kSupport, "MismatchMode", kCapability, {0, 2}, flag<CLSS_ParseCapabilityResponsePrint_MismatchMode, 2>},
      {Family::kSupport, "DeviceSideGuide", kCapability, {0, 1}, flag<CLSS_ParseCapabilityResponsePrint_DVD_DeviceSideGuide, 1>},
      {Family::kSupport, "HostEnvironment", kCapability, kHost, flag<CLSS_ParseCapabilityResponsePrint_HostEnvironment, 3>},
      {Family::kSupport, "Maintenance HostEnvironment", "capability_maintenance.xml", kHost,
       flag<CLSS_ParseCapabilityResponseMaintenance_HostEnvironment, 3>},
      {Family::kSupport, "JobQueue", kCapability, kYesNo, CLSS_ParseCapabilityResponsePrint_JobQueue},
      {Family::kSupport, "DateTime", kCapability, kYesNo, CLSS_ParseCapabilityResponsePrint_DateTime},
      {Family::kSupport, "Maintenance DateTime", "capability_maintenance.xml", kYesNo,
       CLSS_ParseCapabilityResponseMaintenance_DateTime},
      {Family::kSupport, "IsDiscLabelPrint", kCapability, kYesNo, CLSS_ParseCapabilityResponsePrint_IsDiscLabelPrint},
  };
  return all_parsers;
}
// clang-format on
