// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Yes or no: is a value listed in a capability element, or is the element there at all.

#include "keyed/items.hpp"
#include "responses/fields.hpp"

namespace pxcl::responses {
namespace {

namespace path = keyed::path;

// A capability element: its template, its name, and the keywords that it may list; without them
// only its presence is asked for.
struct Capability {
  const char* pathTemplate;
  const char* name;
  Dictionary dictionary;
};

constexpr Dictionary kFormats = dictionary_of<glb_clssdicDataFormatTbl>(CLSS_DICNUM_DATAFORMAT);
constexpr Dictionary kNextPages = dictionary_of<glb_clssdicNextpageTbl>(CLSS_DICNUM_NEXTPAGE);
constexpr Dictionary kPreparations =
    dictionary_of<glb_clssdicPrintPreparationTbl>(CLSS_DICNUM_PRINT_PREPARATION);
constexpr Dictionary kGuides =
    dictionary_of<glb_clssdicDeviceSideGuideTbl>(CLSS_DICNUM_DEVICE_SIDE_GUIDE);
constexpr Dictionary kHosts =
    dictionary_of<glb_clssdicHostEnvironmentTbl>(CLSS_DICNUM_HOST_ENVIRONMENT);
constexpr Dictionary kMismatchModes =
    dictionary_of<glb_clssdicMismatchModeTbl>(CLSS_DICNUM_MISMATCH_MODE);
constexpr Dictionary kDiscLabels =
    dictionary_of<glb_clssdicPaperTypeDiscLabelPrintTbl>(CLSS_NUM_PAPERTYPE_DISC_LABEL_PRINT);

// clang-format off
constexpr Capability kFormatType =             {path::kPrintItem,       "support_data_format", kFormats};
constexpr Capability kNextPage =               {path::kPrintItem,       "nextpage",            kNextPages};
constexpr Capability kPrintPreparation =       {path::kPrintItem,       "printpreparation",    kPreparations};
constexpr Capability kMismatchMode =           {path::kPrintItem,       "mismatch_mode",       kMismatchModes};
constexpr Capability kDeviceSideGuide =        {path::kDiscSideGuide,   "device_side_guide",   kGuides};
constexpr Capability kHostEnvironment =        {path::kPrintItem,       "host_environment",    kHosts};
constexpr Capability kMaintenanceEnvironment = {path::kMaintenanceItem, "host_environment",    kHosts};
constexpr Capability kDiscLabelPrint =         {path::kPrintItem,       "papertype",           kDiscLabels};
constexpr Capability kJobQueue =               {path::kPrintItem,       "job_queue",           {}};
constexpr Capability kDateTime =               {path::kPrintItem,       "datetime",            {}};
constexpr Capability kMaintenanceDateTime =    {path::kMaintenanceItem, "datetime",            {}};
// clang-format on

constexpr i32 kFoldedFailure = 0;  // what those that return the value make of every failure

ItemSet request_for(const Capability& capability) {
  ItemSet item = {};
  item.pathTemplate = capability.pathTemplate;
  item.itemName = capability.name;
  item.mode = keyed::kPresenceMode;
  if (capability.dictionary.rows != nullptr) {
    item.mode = keyed::kListMode;
    item.dictionary = capability.dictionary.rows;
    item.rowCount = *capability.dictionary.rowCount;
  }
  return item;
}

i32 test(const char* document, u64 length, const Capability& capability, u16 value) {
  const ItemSet item = request_for(capability);
  return checkSuport(document, length, keyed::kOperationGetCapabilityResponse, &item, value);
}

i32 is_listed(const char* document, u64 length, const Capability& capability, u16 value) {
  const i32 answer = test(document, length, capability, value);
  return answer == keyed::kNotListed ? keyed::kNotSupported : answer;
}

i32 is_there(const char* document, u64 length, const Capability& capability) {
  return is_listed(document, length, capability, keyed::kPresent);
}

// Callers can't tell a failure from a value that is not supported, and are not meant to.
i32 value_if_listed(const char* document, u64 length, const Capability& capability, u16 value) {
  return test(document, length, capability, value) == keyed::kSupported ? value : kFoldedFailure;
}

// Where the reply lists only other environments, the answer is that of "other".
i32 host_environment(const char* document, u64 length, const Capability& capability, u16 value) {
  const i32 answer = test(document, length, capability, value);
  if (answer == keyed::kNotSupported) return keyed::kHostOther;
  return answer == keyed::kSupported ? value : kFoldedFailure;
}

constexpr i32 kLow16Bits = 0xFFFF;

}  // namespace
}  // namespace pxcl::responses

using namespace pxcl;
using namespace pxcl::responses;

int32_t CLSS_ParseCapabilityResponsePrint_FormatType(const char* document, uint64_t length,
                                                     uint16_t value) {
  return is_listed(document, length, kFormatType, value);
}

int32_t CLSS_ParseCapabilityResponsePrint_NextPage(const char* document, uint64_t length,
                                                   uint16_t value) {
  return value_if_listed(document, length, kNextPage, value);
}

int32_t CLSS_ParseCapabilityResponsePrint_PrintPreparation(const char* document, uint64_t length,
                                                           uint16_t value) {
  return value_if_listed(document, length, kPrintPreparation, value);
}

int32_t CLSS_ParseCapabilityResponsePrint_MismatchMode(const char* document, uint64_t length,
                                                       uint16_t value) {
  return value_if_listed(document, length, kMismatchMode, value);
}

int32_t CLSS_ParseCapabilityResponsePrint_DVD_DeviceSideGuide(const char* document, uint64_t length,
                                                              uint16_t value) {
  return value_if_listed(document, length, kDeviceSideGuide, value);
}

int32_t CLSS_ParseCapabilityResponsePrint_HostEnvironment(const char* document, uint64_t length,
                                                          uint16_t value) {
  return host_environment(document, length, kHostEnvironment, value);
}

int32_t CLSS_ParseCapabilityResponseMaintenance_HostEnvironment(const char* document,
                                                                uint64_t length, uint16_t value) {
  return host_environment(document, length, kMaintenanceEnvironment, value);
}

int32_t CLSS_ParseCapabilityResponsePrint_JobQueue(const char* document, uint64_t length) {
  return is_there(document, length, kJobQueue);
}

int32_t CLSS_ParseCapabilityResponsePrint_DateTime(const char* document, uint64_t length) {
  return is_there(document, length, kDateTime);
}

int32_t CLSS_ParseCapabilityResponseMaintenance_DateTime(const char* document, uint64_t length) {
  return is_there(document, length, kMaintenanceDateTime);
}

int32_t CLSS_ParseCapabilityResponsePrint_IsDiscLabelPrint(const char* document, uint64_t length) {
  if (document == nullptr || length == 0) return kBadArgument;
  ItemSet item = request_for(kDiscLabelPrint);
  const i32 status =
      Get_ItemSetList(document, length, keyed::kOperationGetCapabilityResponse, &item, 1);
  const i32 answer = item.entryCount > 0 ? keyed::kSupported : keyed::kNotSupported;
  ReleaseItemSetList(&item, 1);
  return status == kOk ? answer : status;
}

int32_t PXCL_ParseCapabilityResponsePrint_HostEnv(const char* document, uint32_t length) {
  return kLow16Bits &
         CLSS_ParseCapabilityResponsePrint_HostEnvironment(document, length, keyed::kHostLinux);
}

int32_t PXCL_ParseCapabilityResponseMaintenance_HostEnv(const char* document, uint32_t length) {
  return kLow16Bits & CLSS_ParseCapabilityResponseMaintenance_HostEnvironment(document, length,
                                                                              keyed::kHostLinux);
}

int32_t PXCL_ParseCapabilityResponsePrint_MismatchMode(const char* document, uint32_t length,
                                                       uint16_t mode) {
  return kLow16Bits & CLSS_ParseCapabilityResponsePrint_MismatchMode(document, length, mode);
}

int32_t PXCL_ParseCapabilityResponsePrint_DateTime(const char* document, int32_t length) {
  if (length < 0) return kBadArgument;
  return CLSS_ParseCapabilityResponsePrint_DateTime(document, static_cast<u64>(length));
}

int32_t PXCL_ParseCapabilityResponseMaintenance_DateTime(const char* document, int32_t length) {
  if (length < 0) return kBadArgument;
  return CLSS_ParseCapabilityResponseMaintenance_DateTime(document, static_cast<u64>(length));
}
