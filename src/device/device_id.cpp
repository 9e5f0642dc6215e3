// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <limits>

#include "device.h"
#include "keyed.h"
#include "util/types.hpp"

namespace {

using pxcl::i16;
using pxcl::i32;
using pxcl::i64;
using pxcl::u32;

constexpr i32 kOlderProtocol = 1;
constexpr i32 kNewerProtocol = 2;
constexpr i32 kNoFeature = 1;
constexpr i32 kHasFeature = 2;
constexpr i32 kNotListed = 0;
constexpr i32 kListed = 1;
constexpr i32 kNoVersion = -1;  // the model is not listed, or the selector is not kSelected
constexpr i32 kNoWord = -1;     // of searchString

constexpr i16 kSelected = 1;

// The position of the first of `words` in the text, or kNoWord. The search below takes 32-bit
// lengths; a longer text must not be cut down to one that happens to fit.
i32 find_word(const char* text, i64 length, const char* const* words) {
  if (length < 1 || length > std::numeric_limits<i32>::max()) return kNoWord;
  return searchString(text, static_cast<i32>(length), words);
}

bool has_word(const char* text, i64 length, const char* const* words) {
  return find_word(text, length, words) != kNoWord;
}

i32 has_word_in_field(const char* deviceID, i64 length, const char* key, const char* const* words) {
  if (length > std::numeric_limits<i32>::max() || length < 1) return kNoFeature;
  u32 fieldLength = 0;
  const char* field = getToken(deviceID, static_cast<i32>(length), key, ";", 0, &fieldLength);
  if (field == nullptr) return kNoFeature;
  // One byte more: the field's ";" is what closes its last word.
  return has_word(field, i64{fieldLength} + 1, words) ? kHasFeature : kNoFeature;
}

}  // namespace

int32_t CLSS_GetProtocol(const char* deviceID, int64_t length) {
  if (has_word(deviceID, length, PROTOCOL_DEVICEID_OLD)) return kOlderProtocol;
  return has_word(deviceID, length, PROTOCOL_DEVICEID_NEW) ? kNewerProtocol : kOlderProtocol;
}

int32_t PXCL_GetProtocol(const char* deviceID, int64_t length) {
  return CLSS_GetProtocol(deviceID, length);
}

int32_t CLSS_HasZIRK(const char* deviceID, int64_t length) {
  return has_word_in_field(deviceID, length, "CMD:", ZIRK_DEVICEID);
}

int32_t CLSS_HasPLI(const char* deviceID, int64_t length) {
  return has_word_in_field(deviceID, length, "SOJ:", PLI_DEVICEID);
}

int32_t CLSS_IsSupportMinP(const char* deviceID, int64_t length) {
  return has_word(deviceID, length, MINP_PRINTER_LIST) ? kListed : kNotListed;
}

int32_t CLSS_IsSupportKWNP_From14Autumn(const char* deviceID, int64_t length) {
  return has_word(deviceID, length, KWNP_PRINTER_LIST_14AUTUMN) ? kListed : kNotListed;
}

int32_t CLSS_IsSupportCorvel(const char* deviceID, int64_t length, int16_t selector) {
  if (selector != kSelected) return kNotListed;
  return has_word(deviceID, length, CORVEL_PRINTER_LIST) ? kListed : kNotListed;
}

int32_t CLSS_GetCorvelRequestVersionInfo(const char* deviceID, int64_t length, int16_t selector) {
  if (selector != kSelected) return kNoVersion;
  const i32 model = find_word(deviceID, length, CORVEL_PRINTER_LIST);
  return model == kNoWord ? kNoVersion : static_cast<i32>(CORVEL_REQUEST_VERSION_INFO_LIST[model]);
}
