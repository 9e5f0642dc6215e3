// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The pixel limits that a capability reply states.

#include <iterator>

#include "keyed/items.hpp"
#include "responses/fields.hpp"

namespace pxcl::responses {
namespace {

constexpr const char* kLimits[] = {"max_pixels", "min_pixels"};
enum Limit : std::size_t { kMax, kMin, kLimitCount };
static_assert(std::size(kLimits) == kLimitCount);

constexpr u32 kPair = 2;

struct Pair {
  u16& first;
  u16& second;
};

void clear(Pair pair) {
  pair.first = pair.second = 0;
}

i32 store_pair(const ItemSet& limit, Pair pair) {
  if (limit.entryCount != kPair) return kTooFewValues;
  pair.first = static_cast<u16>(limit.entries[0].value);
  pair.second = static_cast<u16>(limit.entries[1].value);
  return kOk;
}

i32 store_limits(const ItemSet (&limits)[kLimitCount], Pair min, Pair max) {
  clear(max);
  if (limits[kMax].entryCount == 0) return kNothingListed;
  const i32 status = store_pair(limits[kMax], max);
  if (status != kOk) return status;
  clear(min);
  return limits[kMin].entryCount == 0 ? kOk : store_pair(limits[kMin], min);
}

}  // namespace
}  // namespace pxcl::responses

using namespace pxcl;
using namespace pxcl::responses;

int32_t CLSS_ParseCapabilityResponsePrint_Pixels(const char* document, uint64_t length,
                                                 uint16_t* minFirst, uint16_t* minSecond,
                                                 uint16_t* maxFirst, uint16_t* maxSecond) {
  if (document == nullptr || length == 0 || minFirst == nullptr || minSecond == nullptr ||
      maxFirst == nullptr || maxSecond == nullptr) {
    return kBadArgument;
  }
  ItemSet limits[kLimitCount] = {};
  for (std::size_t i = 0; i < kLimitCount; ++i) {
    limits[i].pathTemplate = keyed::path::kPrintItem;
    limits[i].itemName = kLimits[i];
  }
  i32 status = Get_ItemSetList(document, length, keyed::kOperationGetCapabilityResponse, limits,
                               kLimitCount);
  if (status == kOk)
    status = store_limits(limits, {*minFirst, *minSecond}, {*maxFirst, *maxSecond});
  ReleaseItemSetList(limits, kLimitCount);
  return status;
}
