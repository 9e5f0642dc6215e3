// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Operations and their answers: the pair tables, and which operation and service a reply is about.

#include <iterator>

#include "responses/fields.hpp"

namespace {

constexpr ClssOperationInfo kUnused = {0, 0};
constexpr ClssOperationInfo answered_by(uint32_t response) {
  return {response, 0};
}
constexpr ClssOperationInfo answers(uint32_t command) {
  return {command, 1};
}

}  // namespace

// clang-format off

constexpr ClssOperationInfo glb_OperationInfoTbl[] = {
  /*  0 */ kUnused,
  /*  1 GetCapability */ answered_by(2),
  /*  2 GetCapabilityResponse */ answers(1),
  /*  3 GetConfiguration */ answered_by(4),
  /*  4 GetConfigurationResponse */ answers(3),
  /*  5 SetConfiguration */ answered_by(6),
  /*  6 SetConfigurationResponse */ answers(5),
  /*  7 StartJob */ answered_by(8),
  /*  8 StartJobResponse */ answers(7),
  /*  9 EndJob */ answered_by(10),
  /* 10 EndJobResponse */ answers(9),
  /* 11 SendData */ answered_by(12),
  /* 12 SendDataResponse */ answers(11),
  /* 13 GetStatus */ answered_by(14),
  /* 14 GetStatusResponse */ answers(13),
  /* 15 */ kUnused,
  /* 16 */ kUnused,
  /* 17 */ kUnused,
  /* 18 */ kUnused,
  /* 19 PowerOff */ answered_by(20),
  /* 20 PowerOffResponse */ answers(19),
  /* 21 VendorCmd */ answered_by(22),
  /* 22 VendorCmdResponse */ answers(21),
  /* 23 SetJobConfiguration */ answered_by(24),
  /* 24 SetJobConfigurationResponse */ answers(23),
  /* 25 CancelJob */ answered_by(26),
  /* 26 CancelJobResponse */ answers(25),
};

constexpr ClssOperationInfo glb_IJOperationInfoTbl[] = {
  /* 0 */ kUnused,
  /* 1 ModeShift */ answered_by(2),
  /* 2 ModeShiftResponse */ answers(1),
  /* 3 FRomUpMode */ answered_by(4),
  /* 4 FRomUpModeResponse */ answers(3),
};

// clang-format on

namespace pxcl::responses {
namespace {

// A pair points at each other, a command at a response.
constexpr bool is_paired(std::span<const ClssOperationInfo> table) {
  for (std::size_t row = 0; row < table.size(); ++row) {
    const ClssOperationInfo& own = table[row];
    if (own.partner == 0 && own.isResponse == 0) continue;
    const ClssOperationInfo& partner = table[own.partner];
    if (partner.partner != row || partner.isResponse == own.isResponse) return false;
  }
  return true;
}
static_assert(std::size(glb_OperationInfoTbl) == keyed::kOperationRows);
static_assert(std::size(glb_IJOperationInfoTbl) == keyed::kIJOperationRows);
static_assert(is_paired(glb_OperationInfoTbl) && is_paired(glb_IJOperationInfoTbl));

constexpr Dictionary kOperations = dictionary_of<glb_clssdicOperationTbl>(CLSS_DICNUM_OPERATION);

constexpr auto kKeys = [] {
  std::array<Key, kOperationKeys> keys;
  ask_for_operation(std::span(keys), 0);
  return keys;
}();

}  // namespace

i32 read_operation(std::string_view document, std::span<const Answer, kOperationKeys> keys,
                   u16& operation, u16& serviceType) {
  if (!is_found(keys[0])) return kNoOperation;
  const u16 found = index_in(kOperations, text_of(document, keys[0]));
  if (found == kUnknownIndex) return kUnknownOperation;
  if (glb_OperationInfoTbl[found].isResponse == 0) return kNotAResponse;
  operation = found;
  for (u16 service = 0; service < keyed::path::kServices; ++service) {
    if (!is_present(keys[1 + service])) continue;
    serviceType = service;
    return kOk;
  }
  return kNoService;
}

}  // namespace pxcl::responses

using namespace pxcl;
using namespace pxcl::responses;

int32_t CLSS_GetOperationPair(uint16_t operation) {
  if (operation >= keyed::kOperationRows) return kBadArgument;
  return static_cast<u16>(glb_OperationInfoTbl[operation].partner);
}

int32_t CLSS_GetCommandOperationPair(uint16_t operation) {
  if (operation < keyed::kOperationRows && glb_OperationInfoTbl[operation].isResponse != 0) {
    return kBadArgument;
  }
  return CLSS_GetOperationPair(operation);
}

int32_t getOperation_ServiceType(const char* document, uint64_t length, uint16_t* operation,
                                 uint16_t* serviceType) {
  if (operation != nullptr) *operation = kUnknownIndex;
  if (serviceType != nullptr) *serviceType = kUnknownIndex;
  if (document == nullptr || length == 0 || operation == nullptr || serviceType == nullptr) {
    return kBadArgument;
  }
  const std::string_view reply = as_view(document, length);
  Answers<kKeys> answers;
  const i32 status = keyed::ask(reply, xml::kPlanOf<kKeys>, answers.all());
  return status == kOk ? read_operation(reply, answers.all(), *operation, *serviceType) : status;
}
