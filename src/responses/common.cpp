// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The head that every reply has: result, failure detail, vendor operation and job identifier.

#include <cstring>

#include "responses/fields.hpp"

namespace pxcl::responses {
namespace {

namespace path = keyed::path;

constexpr Dictionary kResponses = dictionary_of<glb_clssdicResponseTbl>(CLSS_DICNUM_RESPONSE);
constexpr Dictionary kDetails = dictionary_of<glb_clssdicResponseDetailTbl>(CLSS_DICNUM_RESDETAIL);
constexpr Dictionary kIJOperations =
    dictionary_of<glb_clssdicIJOperationTbl>(CLSS_DICNUM_IJOPERATION);

// A value of the head: its path key for each service, and what an unknown keyword is answered with.
struct HeadField {
  const std::string_view* paths;
  Dictionary dictionary;
  u16 ClssResponseCommon::*member;
  i32 unknown;
};

enum HeadKey : std::size_t {
  kResponseKey,
  kDetailKey,
  kIJOperationKey,
  kIJResponseKey,
  kJobIDKey,
  kJobStatusJobIDKey,
  kHeadKeys,
};

// clang-format off
constexpr HeadField kHead[kHeadKeys] = {
    {path::kResponse, kResponses, &ClssResponseCommon::response, kUnknownResponse},
    {path::kResponseDetail, kDetails, &ClssResponseCommon::responseDetail, kUnknownDetail},
    {path::kIJOperation, kIJOperations, &ClssResponseCommon::ijOperation, kUnknownOperation},
    {path::kIJResponse, kResponses, &ClssResponseCommon::ijResponse, kUnknownResponse},
    {path::kJobID, {}, nullptr, kTooLong},
    {path::kJobStatusJobID, {}, nullptr, kTooLong},
};
// clang-format on

constexpr std::size_t kAllKeys = kOperationKeys + kHeadKeys * path::kServices;

// The operation, and the heads of all four services: which of them answers is known only after the
// scan.
constexpr auto kKeys = [] {
  std::array<Key, kAllKeys> keys;
  ask_for_operation(std::span(keys).first<kOperationKeys>(), 0);
  for (u16 service = 0; service < path::kServices; ++service) {
    for (std::size_t field = 0; field < kHeadKeys; ++field) {
      Key& key = keys[kOperationKeys + kHeadKeys * service + field];
      key.path = kHead[field].paths[service];
      key.group = 1u + service;
    }
  }
  return keys;
}();

// The head of one service.
struct Head {
  std::string_view document;
  std::span<const Answer> keys;
  ClssResponseCommon& record;

  bool has(HeadKey key) const { return is_found(keys[key]); }
  std::string_view text(HeadKey key) const { return text_of(document, keys[key]); }
};

i32 store_keyword(const Head& head, HeadKey key) {
  const HeadField& field = kHead[key];
  const u16 index = index_in(field.dictionary, head.text(key));
  head.record.*field.member = index;
  return index == kUnknownIndex ? field.unknown : kOk;
}

i32 read_response(const Head& head) {
  if (!head.has(kResponseKey)) return kNoResponse;
  const i32 status = store_keyword(head, kResponseKey);
  if (status != kOk || head.record.response != keyed::kResponseNg) return status;
  if (head.has(kDetailKey)) return store_keyword(head, kDetailKey);
  return is_present(head.keys[kDetailKey]) ? kOk : kNoDetail;
}

i32 read_vendor_operation(const Head& head) {
  if (!head.has(kIJOperationKey)) return kOk;
  const u16 operation = index_in(kIJOperations, head.text(kIJOperationKey));
  if (operation == kUnknownIndex) return kUnknownOperation;
  if (glb_IJOperationInfoTbl[operation].isResponse == 0) return kNotAResponse;
  head.record.ijOperation = operation;
  return head.has(kIJResponseKey) ? store_keyword(head, kIJResponseKey) : kNoResponse;
}

i32 read_job_id(const Head& head) {
  for (const HeadKey key : {kJobIDKey, kJobStatusJobIDKey}) {
    if (!head.has(key)) continue;
    const bool fits =
        keyed::copy_value(head.text(key), head.record.jobID, sizeof head.record.jobID);
    return fits ? kOk : kTooLong;
  }
  std::memset(head.record.jobID, 0, sizeof head.record.jobID);
  return kOk;
}

void clear_record(ClssResponseCommon& record) {
  record.jobID[0] = '\0';
  record.serviceType = record.operation = kUnknownIndex;
  record.response = record.responseDetail = kUnknownIndex;
  record.ijOperation = record.ijResponse = kUnknownIndex;
}

i32 parse_head(std::string_view document, u64& position, ClssResponseCommon& record) {
  Answers<kKeys> answers;
  const std::span all = answers.all();
  u64 stop = 0;
  i32 status = keyed::ask(document, xml::kPlanOf<kKeys>, all, &stop);
  if (status != kOk) return status;
  status =
      read_operation(document, all.first<kOperationKeys>(), record.operation, record.serviceType);
  if (status != kOk) return status;
  const Head head = {
      document, all.subspan(kOperationKeys + kHeadKeys * record.serviceType, kHeadKeys), record};
  if ((status = read_response(head)) != kOk) return status;
  if ((status = read_vendor_operation(head)) != kOk) return status;
  if ((status = read_job_id(head)) != kOk) return status;
  position = stop;
  return kOk;
}

}  // namespace
}  // namespace pxcl::responses

using namespace pxcl;
using namespace pxcl::responses;

int32_t CLSS_ParseResponseCommon(const char* document, uint64_t length, uint64_t* parsePosition,
                                 ClssResponseCommon* record) {
  if (length == 0 || record == nullptr || parsePosition == nullptr) return kBadArgument;
  if (record->reserved != 0) return kBadRecord;
  clear_record(*record);
  *parsePosition = 0;
  if (document == nullptr) return kBadArgument;
  return parse_head(as_view(document, length), *parsePosition, *record);
}

int32_t PXCL_GetInfoResponse(const char* document, int32_t length, uint16_t* operation, char* jobID,
                             uint16_t** responseDetail) {
  if (operation == nullptr || jobID == nullptr || responseDetail == nullptr ||
      *responseDetail == nullptr || length < 0) {
    return kBadArgument;
  }
  ClssResponseCommon record = {};
  uint64_t position = 0;
  const i32 status =
      CLSS_ParseResponseCommon(document, static_cast<u64>(length), &position, &record);
  if (status != kOk) return status;
  *operation = record.operation;
  std::memcpy(jobID, record.jobID, sizeof record.jobID);
  **responseDetail = record.responseDetail;
  return kOk;
}
