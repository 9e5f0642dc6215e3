// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Status of the printer, the paper in its bins, its inks, and the block of one job.

#include <cstddef>
#include <cstring>
#include <iterator>

#include "responses/fields.hpp"

namespace pxcl::responses {
namespace {

namespace path = keyed::path;

// How a value becomes a member of the record.
enum class Reads : u8 {
  kKeyword,  // u16: its row index; kUnknownIndex when absent
  kText,     // terminated, zero-padded when absent
  kNumber,   // i32; kAbsentNumber when absent
};
constexpr i32 kAbsentNumber = -1;

// The member that a value goes to.
struct Member {
  Reads reads;
  Dictionary dictionary;
  std::size_t offset;
  std::size_t size;
};
#define PXCL_MEMBER(record, member) offsetof(record, member), sizeof(record::member)

i32 store(const Member& member, std::string_view document, const Answer& key, void* record) {
  char* destination = static_cast<char*>(record) + member.offset;
  const bool found = is_found(key);
  const std::string_view text = text_of(document, key);
  if (member.reads == Reads::kKeyword) {
    const u16 index = found ? index_in(member.dictionary, text) : kUnknownIndex;
    std::memcpy(destination, &index, sizeof index);
  } else if (member.reads == Reads::kNumber) {
    const i32 number = found ? static_cast<i32>(keyed::read_number(text)) : kAbsentNumber;
    std::memcpy(destination, &number, sizeof number);
  } else if (!found) {
    std::memset(destination, 0, member.size);
  } else if (!keyed::copy_value(text, destination, member.size)) {
    return kTooLong;
  }
  return kOk;
}

// --- The status block ----------------------------------------------------------------------------

constexpr Dictionary kStatuses = dictionary_of<glb_clssdicStatusTbl>(CLSS_DICNUM_STATUS);
constexpr Dictionary kStatusDetails =
    dictionary_of<glb_clssdicStatusDetailTbl>(CLSS_DICNUM_STATUSDETAIL);
constexpr Dictionary kProgress = dictionary_of<glb_clssdicJobProgressTbl>(CLSS_DICNUM_JOBPROGRESS);

struct CommonField {
  std::string_view path;  // of the print service; other services hand in their own
  Member member;
};

// clang-format off
constexpr CommonField kCommon[] = {
    {path::kStatus,
     {Reads::kKeyword, kStatuses, PXCL_MEMBER(ClssStatusCommon, status)}},
    {path::kStatusDetail,
     {Reads::kKeyword, kStatusDetails, PXCL_MEMBER(ClssStatusCommon, statusDetail)}},
    {path::kJobStatusJobID[keyed::kServicePrint],
     {Reads::kText, {}, PXCL_MEMBER(ClssStatusCommon, jobID)}},
    {path::kJobProgress,
     {Reads::kKeyword, kProgress, PXCL_MEMBER(ClssStatusCommon, jobProgress)}},
    {path::kSupportCode,
     {Reads::kText, {}, PXCL_MEMBER(ClssStatusCommon, supportCode)}},
};
// clang-format on
constexpr std::size_t kCommonKeys = std::size(kCommon);

// Printers send this support code when the loaded paper is not the one asked for, with whatever
// status detail they happen to have.
constexpr char kMismatchSupportCode[] = "4103";

i32 expect_status_reply(std::string_view document, std::span<const Answer, kOperationKeys> keys) {
  u16 operation = kUnknownIndex;
  u16 serviceType = kUnknownIndex;
  const i32 status = read_operation(document, keys, operation, serviceType);
  if (status != kOk) return status;
  return operation == keyed::kOperationGetStatusResponse ? kOk : kUnknownOperation;
}

i32 read_common(std::string_view document, std::span<const Answer> keys, ClssStatusCommon& record) {
  for (std::size_t i = 0; i < kCommonKeys; ++i) {
    const i32 status = store(kCommon[i].member, document, keys[i], &record);
    if (status != kOk) return status;
  }
  if (std::strcmp(record.supportCode, kMismatchSupportCode) == 0) {
    record.statusDetail = keyed::kStatusDetailCustomMismatch;
  }
  return kOk;
}

i32 check_keys(std::span<const ClssKeyValue> keys) {
  if (keys.data() == nullptr || keys.size() < kCommonKeys) return kBadArgument;
  for (const ClssKeyValue& key : keys) {
    if (key.key == nullptr || key.keyLength == 0) return kBadKey;
    if (!fits_memory(key.keyLength)) return kBadKey;
    if ((key.value == nullptr) != (key.valueLength == 0)) return kBadKey;
  }
  return kOk;
}

// --- The loaded paper ----------------------------------------------------------------------------

constexpr Dictionary kPaperTypes = dictionary_of<glb_clssdicPaperTypeTbl>(CLSS_DICNUM_PAPERTYPE);
constexpr Dictionary kPanelMedia =
    dictionary_of<glb_clssdicPanelMedia>(CLSS_DICNUM_PANEL_PAPERTYPE);
constexpr Dictionary kPaperSizes = dictionary_of<glb_clssdicPaperSizeTbl>(CLSS_DICNUM_PAPERSIZE);

constexpr std::size_t kBinCount = std::size(path::kBins);
constexpr std::size_t kBinKeys = 2 * kBinCount;  // type and size of each

struct Paper {
  u16 type = kUnknownIndex;
  u16 size = kUnknownIndex;
  u16 panel = 0;
};

Paper read_bin(std::string_view document, const Answer& type, const Answer& size) {
  Paper paper;
  if (is_found(type)) {
    const std::string_view text = text_of(document, type);
    paper.type = index_in(kPaperTypes, text);
    if (paper.type == kUnknownIndex) {
      paper.type = index_in(kPanelMedia, text);
      paper.panel = paper.type == kUnknownIndex ? 0 : 1;
    }
  }
  if (is_found(size)) paper.size = index_in(kPaperSizes, text_of(document, size));
  return paper;
}

void store_slot(ClssStatus& record, std::size_t slot, const Paper& paper) {
  record.currentPaperType[slot] = paper.type;
  record.currentPaperSize[slot] = paper.size;
  record.panelMedia[slot] = paper.panel;
}

// Known bins are packed from the first slot on; the slot behind them ends the list.
void read_bins(std::string_view document, std::span<const Answer> keys, ClssStatus& record) {
  std::size_t slot = 0;
  for (std::size_t bin = 0; bin < kBinCount; ++bin) {
    store_slot(record, slot, {});
    const Answer& type = keys[2 * bin];
    const Answer& size = keys[2 * bin + 1];
    if (!is_present(type) && !is_present(size)) return;
    const Paper paper = read_bin(document, type, size);
    if (paper.type == kUnknownIndex || paper.size == kUnknownIndex) continue;
    store_slot(record, slot++, paper);
  }
}

// --- Inks and status details ---------------------------------------------------------------------

constexpr Dictionary kInkStates = dictionary_of<glb_clssdicTCATbl>(CLSS_DICNUM_TCA);

constexpr u16 kInkAbsent = kUnknownIndex;
constexpr u16 kInkNotAllAc = 1;
constexpr u16 kInkAllAc = 2;

// The walk ends at the first value that is not "AC", an unknown keyword included. An empty value
// does not end it: callers rely on both.
u16 read_inks(std::string_view document, const Answer& inks) {
  const std::span<const ClXmlValueRange> values = ranges_of(inks);
  if (values.empty()) return kInkAbsent;
  for (const ClXmlValueRange& value : values) {
    if (value.length == 0) continue;
    if (index_in(kInkStates, text_of(document, value)) != keyed::kInkAc) return kInkNotAllAc;
  }
  return kInkAllAc;
}

// Only the lengths of the two lists are held against each other; neither is reported.
i32 check_status_details(const Answer& items, const Answer& errorCodes) {
  if (items.count == 0 || errorCodes.count == 0) return kOk;
  return items.count == errorCodes.count ? kOk : kUnevenLists;
}

// --- The block of one job ------------------------------------------------------------------------

constexpr Dictionary kStates = dictionary_of<glb_clssdicStateTbl>(CLSS_DICNUM_STATE);

struct JobField {
  std::string_view path::JobPaths::*path;
  Member member;
};

// clang-format off
constexpr JobField kJob[] = {
    {&path::JobPaths::progress,
     {Reads::kKeyword, kProgress, PXCL_MEMBER(ClssStatus, common.jobProgress)}},
    {&path::JobPaths::state,
     {Reads::kKeyword, kStates, PXCL_MEMBER(ClssStatus, jobState)}},
    {&path::JobPaths::completeImpression,
     {Reads::kNumber, {}, PXCL_MEMBER(ClssStatus, completeImpression)}},
};
// clang-format on
constexpr std::size_t kJobIDAt = 0;
constexpr std::size_t kDescriptionAt = 1;
constexpr std::size_t kJobFieldsAt = 2;
constexpr std::size_t kJobKeys = kJobFieldsAt + std::size(kJob);

constexpr void ask_for_job(std::span<Key> keys, const path::JobPaths& paths, u32 group) {
  keys[kJobIDAt].path = paths.jobID;
  keys[kDescriptionAt].path = paths.description;
  for (std::size_t i = 0; i < std::size(kJob); ++i)
    keys[kJobFieldsAt + i].path = paths.*kJob[i].path;
  for (Key& key : keys) key.group = group;
}

constexpr auto kMaintenanceKeys = [] {
  std::array<Key, kJobKeys> keys;
  ask_for_job(keys, path::kMaintenanceJob, 0);
  return keys;
}();

// The identifier inside its quotes, as far as the field holds it.
void store_job_id(std::string_view quoted, char (&jobID)[9]) {
  const std::string_view inside = slice(quoted, 1, quoted.size() - 2);
  const std::size_t length = inside.size() < sizeof jobID - 1 ? inside.size() : sizeof jobID - 1;
  std::memcpy(jobID, inside.data(), length);
  jobID[length] = '\0';
}

i32 read_job(std::string_view document, std::span<const Answer> keys, std::string_view jobID,
             ClssStatus& record) {
  if (!is_found(keys[kJobIDAt]) || !is_found(keys[kDescriptionAt])) return kNoJobBlock;
  if (!text_of(document, keys[kDescriptionAt]).starts_with(jobID)) return kNoJobBlock;
  store_job_id(text_of(document, keys[kJobIDAt]), record.common.jobID);
  for (std::size_t i = 0; i < std::size(kJob); ++i) {
    store(kJob[i].member, document, keys[kJobFieldsAt + i], &record);
  }
  return kOk;
}

// --- The print status reply ----------------------------------------------------------------------

// Where each part of the one request stands. Each part is a group: an empty element serves only the
// first key of a group that matches it.
constexpr std::size_t kCommonAt = kOperationKeys;
constexpr std::size_t kBinsAt = kCommonAt + kCommonKeys;
constexpr std::size_t kInksAt = kBinsAt + kBinKeys;
constexpr std::size_t kItemsAt = kInksAt + 1;
constexpr std::size_t kErrorCodesAt = kItemsAt + 1;
constexpr std::size_t kPrintJobAt = kErrorCodesAt + 1;
constexpr std::size_t kStatusAndJobKeys = kPrintJobAt + kJobKeys;

enum Group : u32 {
  kOperationGroup,
  kCommonGroup,
  kBinGroup,
  kInkGroup,
  kItemGroup,
  kCodeGroup,
  kJobGroup
};

// The job's block is asked for every time: who does not want it takes no notice.
constexpr auto kStatusKeys = [] {
  std::array<Key, kStatusAndJobKeys> all;
  const std::span<Key> keys(all);
  ask_for_operation(keys.first<kOperationKeys>(), kOperationGroup);
  for (std::size_t i = 0; i < kCommonKeys; ++i) {
    keys[kCommonAt + i].path = kCommon[i].path;
    keys[kCommonAt + i].group = kCommonGroup;
  }
  for (std::size_t bin = 0; bin < kBinCount; ++bin) {
    keys[kBinsAt + 2 * bin].path = path::kBins[bin].paperType;
    keys[kBinsAt + 2 * bin + 1].path = path::kBins[bin].paperSize;
  }
  for (Key& key : keys.subspan<kBinsAt, kBinKeys>()) key.group = kBinGroup;
  keys[kInksAt].path = path::kInk;
  keys[kInksAt].group = kInkGroup;
  keys[kItemsAt].path = path::kStatusItemID;
  keys[kItemsAt].group = kItemGroup;
  keys[kErrorCodesAt].path = path::kStatusErrorCode;
  keys[kErrorCodesAt].group = kCodeGroup;
  keys[kInksAt].wanted = xml::Wanted::kAll;
  ask_for_job(keys.subspan<kPrintJobAt>(), path::kPrintJob, kJobGroup);
  return all;
}();

void clear_status(ClssStatus& record) {
  store_slot(record, 0, {kUnknownIndex, kUnknownIndex, kUnknownIndex});
  record.inkState = kInkNotAllAc;
  record.completeImpression = kAbsentNumber;
  record.jobState = kUnknownIndex;
}

i32 read_status(std::string_view document, std::span<const Answer> keys, ClssStatus& record) {
  i32 status = expect_status_reply(document, keys.first<kOperationKeys>());
  if (status != kOk) return status;
  status = read_common(document, keys.subspan<kCommonAt, kCommonKeys>(), record.common);
  if (status != kOk) return status;
  read_bins(document, keys.subspan<kBinsAt, kBinKeys>(), record);
  record.inkState = read_inks(document, keys[kInksAt]);
  return check_status_details(keys[kItemsAt], keys[kErrorCodesAt]);
}

i32 parse_print(std::string_view document, ClssStatus& record) {
  clear_status(record);
  Answers<kStatusKeys> answers;
  const i32 status = keyed::ask(document, xml::kPlanOf<kStatusKeys>, answers.all());
  return status == kOk ? read_status(document, answers.all(), record) : status;
}

i32 parse_print_job(std::string_view document, std::string_view jobID, ClssStatus& record) {
  clear_status(record);
  Answers<kStatusKeys> answers;
  const std::span keys = answers.all();
  i32 status = keyed::ask(document, xml::kPlanOf<kStatusKeys>, keys);
  if (status == kOk) status = read_status(document, keys, record);
  if (status != kOk) return status;
  return read_job(document, keys.subspan<kPrintJobAt>(), jobID, record);
}

// --- What the wrappers hand out ------------------------------------------------------------------

// Texts go without terminator: the caller has cleared its buffers.
void copy_out(const ClssStatusCommon& common, u32& status, u32& statusDetail, char* supportCode,
              char* jobID) {
  status = common.status;
  statusDetail = common.statusDetail;
  std::memcpy(jobID, common.jobID, std::strlen(common.jobID));
  std::memcpy(supportCode, common.supportCode, std::strlen(common.supportCode));
}

}  // namespace
}  // namespace pxcl::responses

using namespace pxcl;
using namespace pxcl::responses;

int32_t parseCommonStatusResponse(const char* document, uint64_t length, const ClssKeyValue* keys,
                                  uint32_t keyCount, ClssStatusCommon* record) {
  if (document == nullptr || length == 0 || record == nullptr) return kBadArgument;
  const std::string_view reply = as_view(document, length);
  const i32 keyStatus = check_keys({keys, keyCount});
  constexpr std::size_t kAllKeys = kOperationKeys + kCommonKeys;
  Key asked[kAllKeys];
  Answer answers[kAllKeys];
  const std::span all(answers);
  ask_for_operation(std::span(asked).first<kOperationKeys>(), kOperationGroup);
  for (std::size_t i = 0; i < kCommonKeys && keyStatus == kOk; ++i) {
    asked[kCommonAt + i].path = as_view(keys[i].key, keys[i].keyLength);
    asked[kCommonAt + i].group = kCommonGroup;
  }
  const std::size_t count = keyStatus == kOk ? kAllKeys : kOperationKeys;
  i32 status = keyed::ask(reply, std::span(asked).first(count), answers);
  if (status == kOk) status = expect_status_reply(reply, all.first<kOperationKeys>());
  if (status == kOk) status = keyStatus;
  return status == kOk ? read_common(reply, all.subspan(kCommonAt), *record) : status;
}

int32_t CLSS_ParseStatusResponsePrint(const char* document, uint64_t length, ClssStatus* record) {
  if (document == nullptr || length == 0 || record == nullptr) return kBadArgument;
  return parse_print(as_view(document, length), *record);
}

int32_t CLSS_ParseStatusResponsePrint2(const char* document, uint64_t length, const char* jobID,
                                       ClssStatus* record) {
  if (jobID == nullptr) return CLSS_ParseStatusResponsePrint(document, length, record);
  if (document == nullptr || length == 0 || record == nullptr) return kBadArgument;
  return parse_print_job(as_view(document, length), {jobID, std::strlen(jobID)}, *record);
}

int32_t CLSS_ParseStatusResponseMaintenance(const char* document, uint64_t length,
                                            const char* jobID, ClssStatus* record) {
  if (document == nullptr || length == 0 || jobID == nullptr || record == nullptr) {
    return kBadArgument;
  }
  const std::string_view reply = as_view(document, length);
  Answers<kMaintenanceKeys> answers;
  const std::span keys = answers.all();
  const i32 status = keyed::ask(reply, xml::kPlanOf<kMaintenanceKeys>, keys);
  if (status != kOk) return status;
  return read_job(reply, keys, {jobID, std::strlen(jobID)}, *record);
}

int32_t PXCL_GetStatus(const char* document, int32_t length, uint32_t* status,
                       uint32_t* statusDetail, char* supportCode) {
  if (length < 0 || status == nullptr || statusDetail == nullptr || supportCode == nullptr) {
    return kBadArgument;
  }
  ClssStatus record = {};
  const i32 result = CLSS_ParseStatusResponsePrint(document, static_cast<u64>(length), &record);
  if (result < 0) return result;
  *status = record.common.status;
  *statusDetail = record.common.statusDetail;
  std::memcpy(supportCode, record.common.supportCode, sizeof record.common.supportCode);
  return result;
}

int32_t PXCL_GetStatus2(const char* document, int32_t length, const char* jobID, uint32_t* status,
                        uint32_t* statusDetail, char* supportCode, char* jobIDOut) {
  if (length < 0 || status == nullptr || statusDetail == nullptr || supportCode == nullptr ||
      jobIDOut == nullptr) {
    return kBadArgument;
  }
  ClssStatus record = {};
  record.leading = 1;
  const i32 result =
      CLSS_ParseStatusResponsePrint2(document, static_cast<u64>(length), jobID, &record);
  if (result < 0) return result;
  copy_out(record.common, *status, *statusDetail, supportCode, jobIDOut);
  return result == kNoJobBlock ? kNoJobBlockStatus2 : result;
}

int32_t PXCL_GetStatus_Maintenance(const char* document, int32_t length, const char* jobID,
                                   uint32_t* status, uint32_t* statusDetail, char* supportCode,
                                   char* jobIDOut) {
  if (length < 0 || status == nullptr || statusDetail == nullptr || supportCode == nullptr ||
      jobIDOut == nullptr) {
    return kBadArgument;
  }
  ClssStatus record = {};
  record.leading = 1;
  record.common.status = record.common.statusDetail = kUnknownIndex;
  const i32 result =
      CLSS_ParseStatusResponseMaintenance(document, static_cast<u64>(length), jobID, &record);
  if (result < 0) return result;
  copy_out(record.common, *status, *statusDetail, supportCode, jobIDOut);
  return result;
}
