// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The record of one run: made from the caller's request, moved back into it, released.

#include <algorithm>

#include "xml/scan.hpp"
#include "xml/status.hpp"

namespace pxcl::xml {
namespace {

// Single and list parameters begin alike: with the path.
template <typename Parameter>
bool is_complete(const ClXmlRequest& request) {
  const auto* first = static_cast<const Parameter*>(request.parameters);
  return request.document != nullptr && request.documentLength != 0 &&
         request.parameterCount != 0 && first != nullptr && first->path != nullptr &&
         first->pathLength != 0;
}

ClXmlParserData* make_run(u32 flags, const ClXmlRequest& request) {
  auto* data = static_cast<ClXmlParserData*>(ClXmlMemAlloc(sizeof(ClXmlParserData)));
  if (data == nullptr) return nullptr;
  data->flags = flags;
  data->document = static_cast<ClXmlDocument*>(ClXmlMemAlloc(sizeof(ClXmlDocument)));
  data->targets = Owned<ClXmlTarget>::allocate(request.parameterCount).release();
  data->targetCount = request.parameterCount;
  ClXmlInitializeNameSpaceTable(&data->nameSpaceTable);
  if (data->document == nullptr || data->targets == nullptr || data->nameSpaceTable == nullptr) {
    ClXmlUnInitializeParserData(data);
    return nullptr;
  }
  *data->document = {request.document, request.documentLength, 0};
  return data;
}

void set_path(ClXmlTarget& target, const char* path, u64 length) {
  target.path = path;
  target.pathLength = length;
  const i32 isAttribute = ClXmlChkTargetPathRequestAttValue(&target, &target.attributeName,
                                                            &target.attributeNameLength);
  target.kind = static_cast<u32>(isAttribute);
}

template <typename Parameter>
i32 initialize(ClXmlParserData*& out, u32 flags, const ClXmlRequest& request) {
  if (!is_complete<Parameter>(request)) return kBadArgument;
  ClXmlParserData* data = make_run(flags, request);
  if (data == nullptr) return kNoMemory;
  const auto* parameters = static_cast<const Parameter*>(request.parameters);
  for (u32 i = 0; i < request.parameterCount; ++i) {
    set_path(data->targets[i], parameters[i].path, parameters[i].pathLength);
  }
  out = data;
  return kSuccess;
}

void release_matches(ClXmlTarget& target) {
  ClXmlMemFree(target.matches);
  target.matches = nullptr;
}

// Only the first match reaches the caller.
void store(ClXmlTarget& target, ClXmlParameter& parameter) {
  ClXmlMatch match = {0, 0, 0, target.status == 0 ? kNotFound : target.status};
  if (target.matches != nullptr) match = target.matches[0];
  parameter.valueOffset = match.offset;
  parameter.valueLength = match.length;
  parameter.status = match.status;
  release_matches(target);
}

bool is_value(const ClXmlMatch& match) {
  return match.offset != 0 && match.length != 0;
}

// Without memory for the ranges the record's status stays as it is: readers look at the ranges.
void store(ClXmlTarget& target, ClXmlListParameter& parameter) {
  if (target.matches == nullptr) {
    parameter.status = kNotFound;
    return;
  }
  const std::span matches(target.matches, target.matchCount);
  parameter.rangeCount = target.matchCount;
  parameter.ranges = Owned<ClXmlValueRange>::allocate(target.matchCount).release();
  if (parameter.ranges != nullptr) {
    std::transform(matches.begin(), matches.end(), parameter.ranges, [](const ClXmlMatch& match) {
      return ClXmlValueRange{match.offset, match.length};
    });
    const bool found = std::any_of(matches.begin(), matches.end(), is_value);
    parameter.status = found ? kFound : matches.front().status;
  }
  release_matches(target);
}

template <typename Parameter>
i32 store_all(ClXmlParserData& data, ClXmlRequest& request) {
  auto* parameters = static_cast<Parameter*>(request.parameters);
  if (parameters == nullptr || data.targets == nullptr) return kBadArgument;
  request.stopPosition = data.document->stopPosition;
  const u32 count = std::min(data.targetCount, request.parameterCount);
  for (u32 i = 0; i < count; ++i) store(data.targets[i], parameters[i]);
  return kSuccess;
}

}  // namespace
}  // namespace pxcl::xml

using namespace pxcl;
using namespace pxcl::xml;

extern "C" {

void* ClXmlMemAlloc(uint64_t size) {
  return KWVSNewPTRX(size);
}

void ClXmlMemFree(void* block) {
  KWVSDisposePTRX(block);
}

int32_t ClXmlInitializeParserData(ClXmlParserData** out, uint32_t flags,
                                  const ClXmlRequest* request, const ClXmlRequest* listRequest) {
  if (out == nullptr || (request == nullptr) == (listRequest == nullptr)) return kBadArgument;
  if (request != nullptr) return initialize<ClXmlParameter>(*out, flags, *request);
  return initialize<ClXmlListParameter>(*out, flags, *listRequest);
}

void ClXmlUnInitializeParserData(ClXmlParserData* data) {
  if (data == nullptr) return;
  ClXmlMemFree(data->document);
  ClXmlMemFree(data->targets);
  ClXmlUnInitializeNameSpaceTable(data->nameSpaceTable);
  ClXmlMemFree(data);
}

int32_t ClXmlStoreParserData(ClXmlParserData* data, ClXmlRequest* request,
                             ClXmlRequest* listRequest) {
  if ((request == nullptr) == (listRequest == nullptr)) return kBadArgument;
  if (data == nullptr || data->document == nullptr || data->targetCount == 0) return kBadArgument;
  if (request != nullptr) return store_all<ClXmlParameter>(*data, *request);
  return store_all<ClXmlListParameter>(*data, *listRequest);
}

int32_t ClXmlRequestParameterListFree(ClXmlRequest* listRequest) {
  if (listRequest == nullptr) return kBadArgument;
  auto* parameters = static_cast<ClXmlListParameter*>(listRequest->parameters);
  if (parameters == nullptr) return kSuccess;
  for (u32 i = 0; i < listRequest->parameterCount; ++i) ClXmlMemFree(parameters[i].ranges);
  return kSuccess;
}

int32_t ClComXmlRequestParameterListFree(ClXmlRequest* listRequest) {
  return ClXmlRequestParameterListFree(listRequest);
}

}  // extern "C"
