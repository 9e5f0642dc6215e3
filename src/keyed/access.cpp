// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <algorithm>

#include "keyed.h"
#include "keyed/status.hpp"
#include "util/owned.hpp"

namespace {

using namespace pxcl;
using namespace pxcl::keyed;

using Records = std::span<const ClssKeyValue>;

// ClearCL_XML and ClearCL_XML2
constexpr i32 kNothingToClear = 0;
constexpr i32 kCleared = 1;

bool has_key(const ClssKeyValue& record) {
  return record.key != nullptr && record.keyLength != 0;
}

bool has_key_and_whole_value(const ClssKeyValue& record) {
  return has_key(record) && (record.value == nullptr) == (record.valueLength == 0);
}

bool is_valid(Records records, const ClXmlParameter*) {
  return std::all_of(records.begin(), records.end(), has_key_and_whole_value);
}

bool is_valid(Records records, const ClXmlListParameter*) {
  return std::all_of(records.begin(), records.end(), has_key);
}

void fill(const ClssKeyValue& record, ClXmlParameter* parameter) {
  parameter->path = record.key;
  parameter->pathLength = record.keyLength;
  parameter->newValue = record.value;
  parameter->newValueLength = record.valueLength;
}

void fill(const ClssKeyValue& record, ClXmlListParameter* parameter) {
  parameter->path = record.key;
  parameter->pathLength = record.keyLength;
}

// The work buffer is made for every request, also for one that only asks: `output` is never null.
i32 attach_buffer(Records records, ClXmlRequest* context) {
  const u64 need =
      Get_NeedBufferSize(context->documentLength, records.data(), static_cast<u32>(records.size()));
  context->output = Owned<char>::allocate(need).release();
  if (context->output == nullptr) return kNoMemory;
  context->outputSize = need;
  return kOk;
}

template <typename Parameter>
i32 make_context(const char* document, u64 length, const ClssKeyValue* first, u32 count,
                 ClXmlRequest** context) {
  if (document == nullptr || length == 0 || first == nullptr || count == 0) return kBadArgument;
  if (context == nullptr) return kBadArgument;
  const Records records(first, count);
  Owned<Parameter> parameters = Owned<Parameter>::allocate(count);
  if (!parameters) return kNoMemory;
  if (!is_valid(records, parameters.get())) return kInvalid;
  for (u32 i = 0; i < count; ++i) fill(records[i], &parameters[i]);

  Owned<ClXmlRequest> made = Owned<ClXmlRequest>::allocate(1);
  if (!made) return kNoMemory;
  made->document = document;
  made->documentLength = length;
  const i32 status = attach_buffer(records, made.get());
  if (status != kOk) return status;
  made->parameters = parameters.release();
  made->parameterCount = count;
  *context = made.release();
  return kOk;
}

// Hands the request to the engine; it becomes the caller's only when the engine succeeds.
i32 run(ClXmlRequest* made, i32 (*engine)(ClXmlRequest*), i32 (*clear)(ClXmlRequest*),
        ClXmlRequest** context) {
  if (engine(made) != kOk) {
    clear(made);
    return kBadArgument;
  }
  *context = made;
  return kOk;
}

template <typename Block>
void dispose(Block*& block) {
  KWVSDisposePTRX(std::exchange(block, nullptr));
}

}  // namespace

extern "C" {

u64 Get_NeedBufferSize(u64 documentLength, const ClssKeyValue* records, u32 count) {
  u64 need = documentLength;
  if (records == nullptr) return need;
  for (const ClssKeyValue& record : Records(records, count)) need += record.valueLength;
  return need;
}

i32 SetCL_XML(const char* document, u64 length, const ClssKeyValue* records, u32 count,
              ClXmlRequest** context) {
  return make_context<ClXmlParameter>(document, length, records, count, context);
}

i32 SetCL_XML2(const char* document, u64 length, const ClssKeyValue* records, u32 count,
               ClXmlRequest** context) {
  return make_context<ClXmlListParameter>(document, length, records, count, context);
}

i32 GetXmlDataByKey(const char* document, u64 length, const ClssKeyValue* records, u32 count,
                    ClXmlRequest** context) {
  if (context == nullptr) return kBadArgument;
  ClXmlRequest* made = nullptr;
  const i32 status = SetCL_XML(document, length, records, count, &made);
  return status == kOk ? run(made, ClXmlRequestParameter, ClearCL_XML, context) : status;
}

i32 GetXmlDataByKeyList(const char* document, u64 length, const ClssKeyValue* records, u32 count,
                        ClXmlRequest** context) {
  if (context == nullptr) return kBadArgument;
  ClXmlRequest* made = nullptr;
  const i32 status = SetCL_XML2(document, length, records, count, &made);
  return status == kOk ? run(made, ClXmlRequestParameterList, ClearCL_XML2, context) : status;
}

i32 ReplaceXmlDataByKey(const char* document, u64 length, const ClssKeyValue* records, u32 count,
                        ClXmlRequest** context) {
  if (context == nullptr) return kBadArgument;
  ClXmlRequest* made = nullptr;
  const i32 status = SetCL_XML(document, length, records, count, &made);
  return status == kOk ? run(made, ClXmlReplaceParameter, ClearCL_XML, context) : status;
}

i32 ClearCL_XML(ClXmlRequest* context) {
  if (context == nullptr) return kNothingToClear;
  dispose(context->parameters);
  dispose(context->output);
  dispose(context);
  return kCleared;
}

i32 ClearCL_XML2(ClXmlRequest* context) {
  if (context == nullptr) return kNothingToClear;
  ClXmlRequestParameterListFree(context);
  return ClearCL_XML(context);
}

}  // extern "C"
