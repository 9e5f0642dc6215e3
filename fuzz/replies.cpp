// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Replies as they come off the wire, FAMILY parsers a target: each returns a status that its
// documentation lists, and calls that answer the same question agree.

#include <algorithm>
#include <cstring>
#include <vector>

#include "parsers.hpp"
#include "target.hpp"

using pxcl::fuzz::require;

namespace {

constexpr Family kFamily = Family::FAMILY;

// Every entry by its index, up to the first that fails, against all of them at once.
template <typename Record>
void compare(const char* document, uint64_t length,
             int32_t (*one)(const char*, uint64_t, int32_t*, Record*),
             int32_t (*all)(const char*, uint64_t, Record*, int32_t*)) {
  int32_t index = -1;
  int32_t status = one(document, length, &index, nullptr);
  if (status != 0) return;
  Record blank;
  std::memset(&blank, 0, sizeof blank);
  blank.version = 3;
  std::vector<Record> expected(static_cast<std::size_t>(std::min(index, 16)), blank),
      got = expected;
  int32_t count = static_cast<int32_t>(got.size()), good = 0;
  while (good < count && status == 0) {
    status = one(document, length, &good, &expected[static_cast<std::size_t>(good)]);
    if (status == 0) ++good;
  }
  require(all(document, length, got.data(), &count) == status);
  require(count == good);
  require(std::memcmp(got.data(), expected.data(), got.size() * sizeof(Record)) == 0);
}

void compare_heads(const char* document, uint64_t length) {
  uint16_t operation = 0, service = 0;
  uint64_t position = 0;
  ClssResponseCommon record = {};
  const int32_t whole = CLSS_ParseResponseCommon(document, length, &position, &record);
  const int32_t part = getOperation_ServiceType(document, length, &operation, &service);
  require(part == 0 || part == whole);
  require(operation == record.operation && service == record.serviceType && position <= length);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  const char* document = reinterpret_cast<const char*>(data);
  for (const Parser& parser : parsers()) {
    if (parser.family == kFamily) require(parser.statuses.count(parser.call(document, size)));
  }
  if (kFamily == Family::kHead && size != 0) compare_heads(document, size);
  if (kFamily == Family::kCapability) {
    compare(document, size, CLSS_ParseCapabilityResponsePrint_PaperSize,
            PXCL_ParseCapabilityResponsePrint_PaperSizes);
    compare(document, size, CLSS_ParseCapabilityResponsePrint_MediaType,
            PXCL_ParseCapabilityResponsePrint_MediaTypes);
  }
  return 0;
}
