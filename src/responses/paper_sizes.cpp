// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The paper sizes that a capability reply lists, with their printable areas and margins.

#include <cstddef>
#include <cstring>
#include <iterator>

#include "responses/capability.hpp"

// Every row of the dictionary but 30, also the unused ones: drivers count on the positions.
constexpr std::uint16_t glb_supportedPaperSizeTbl[] = {
    1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21,
    22, 23, 24, 25, 26, 27, 28, 29, 31, 32, 33, 34, 35, 36, 37, 38, 39, 40, 41, 42, 43,
    44, 45, 46, 47, 48, 49, 50, 51, 52, 53, 54, 55, 56, 57, 58, 59, 60, 61, 62, 63, 64,
    65, 66, 67, 68, 69, 70, 71, 72, 73, 74, 75, 76, 77, 78, 79, 80, 81, 82,
};

namespace pxcl::responses {
namespace {

constexpr u16 kRecordVersion = 3;
constexpr std::size_t kMostNumbers = 4;

// The members that the numbers of a size's elements fill.
struct Numbers {
  std::size_t offset;
  std::size_t count;
};
#define PXCL_NUMBERS(member) \
  { offsetof(ClssPaperSize, member), sizeof(ClssPaperSize::member) / sizeof(u32) }
constexpr Numbers kNumbers[] = {
    PXCL_NUMBERS(printAreaBorder), PXCL_NUMBERS(printAreaBorderless), PXCL_NUMBERS(printAreaDuplex),
    PXCL_NUMBERS(marginBorder),    PXCL_NUMBERS(marginBorderless),    PXCL_NUMBERS(marginDuplex),
};
static_assert(std::size(kSizeElements) == std::size(kNumbers));
static_assert(std::size(kSizeElements) <= kMostElements);

constexpr Dictionary kSizes = dictionary_of<glb_clssdicPaperSizeTbl>(CLSS_DICNUM_PAPERSIZE);

constexpr auto kKeys = [] {
  std::array<Key, kCheckKeys + kSizeKeys> keys;
  const std::span all(keys);
  keyed::set_check_keys(all.first<kCheckKeys>(), 0);
  ask_for_sizes(all.subspan<kCheckKeys>(), 1);
  return keys;
}();

// The numbers of one element. An absent or empty one reads as zeros, so that a size without
// borderless or duplex print stays usable.
struct Area {
  u32 numbers[kMostNumbers] = {};
  std::size_t count = 0;
};

i32 read_area(std::string_view text, std::size_t wanted, Area& area) {
  if (text.empty()) area.count = wanted;
  while (!text.empty()) {
    if (text.front() == ',') {
      text.remove_prefix(1);
      continue;
    }
    if (area.count == wanted) return kTooManyValues;
    area.numbers[area.count++] = keyed::take_number(text);
  }
  return kOk;
}

i32 decode_size(const ItemEntry& size, const ElementTexts& texts, ClssPaperSize& record) {
  if (record.version != kRecordVersion) return kBadRecord;
  Area areas[std::size(kNumbers)];
  for (std::size_t i = 0; i < std::size(kNumbers); ++i) {
    const i32 status = read_area(texts[i], kNumbers[i].count, areas[i]);
    if (status != kOk) return status;
  }
  record.paperSize = static_cast<u16>(size.value);
  record.sizeItemTag = size.nameSpace;
  for (std::size_t i = 0; i < std::size(kNumbers); ++i) {
    if (areas[i].count != kNumbers[i].count) return kTooFewValues;
    std::memcpy(reinterpret_cast<char*>(&record) + kNumbers[i].offset, areas[i].numbers,
                areas[i].count * sizeof(u32));
  }
  return kOk;
}

i32 read_reply(std::string_view document, bool withElements, SizeReply& reply) {
  return read_listed<kKeys>(document, xml::kPlanOf<kKeys>, withElements, reply);
}

i32 parse_size(std::string_view document, i32& index, ClssPaperSize* record) {
  SizeReply reply;
  const i32 status = read_reply(document, index != kCountQuery && record != nullptr, reply);
  if (status != kOk) return status;
  const Entries& sizes = reply.sizes;
  if (index == kCountQuery) {
    index = static_cast<i32>(sizes.count);
    return kOk;
  }
  if (record == nullptr || static_cast<u32>(index) >= sizes.count) return kBadArgument;
  return reply.decode(document, sizes.block[static_cast<u32>(index)], *record);
}

i32 parse_all_sizes(std::string_view document, ClssPaperSize* records, i32& count) {
  SizeReply reply;
  const i32 status = read_reply(document, true, reply);
  if (status == kNothingListed) count = 0;
  if (status != kOk) return status;
  return fill_records(reply.sizes.all(), records, count,
                      [&](const ItemEntry& size, ClssPaperSize& record) {
                        return reply.decode(document, size, record);
                      });
}

}  // namespace

bool SizeReply::attend(std::span<Reader, kSizeKeys> readers) {
  return elements.attend({kSizeElements, kSizes}, readers.subspan<kSizeListKeys>());
}

i32 SizeReply::read_list(std::string_view document, std::span<const Answer, kSizeKeys> keys) {
  const i32 status = read_item(document, keys.first<kNameSpaceCount>(), kSizes, sizes);
  return status == kOk && sizes.count == 0 ? kNothingListed : status;
}

i32 SizeReply::decode(std::string_view document, const ItemEntry& size,
                      ClssPaperSize& record) const {
  ElementTexts texts;
  elements.texts_of(document, size, texts);
  return decode_size(size, texts, record);
}

}  // namespace pxcl::responses

using namespace pxcl;
using namespace pxcl::responses;

const uint16_t* CLSS_GetParsePossibleSize(void) {
  return glb_supportedPaperSizeTbl;
}

int32_t CLSS_GetParsePossibleSizeNum(void) {
  return std::size(glb_supportedPaperSizeTbl);
}

int32_t CLSS_ParseCapabilityResponsePrint_PaperSize(const char* document, uint64_t length,
                                                    int32_t* index, ClssPaperSize* record) {
  if (document == nullptr || length == 0 || !is_index(index)) return kBadArgument;
  return parse_size(as_view(document, length), *index, record);
}

int32_t PXCL_ParseCapabilityResponsePrint_PaperSizes(const char* document, uint64_t length,
                                                     ClssPaperSize* records, int32_t* count) {
  if (document == nullptr || length == 0 || count == nullptr) return kBadArgument;
  if (records == nullptr || *count < 1)
    return count_entries(as_view(document, length), parse_size, *count);
  return parse_all_sizes(as_view(document, length), records, *count);
}
