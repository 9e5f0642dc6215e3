// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The media types that a capability reply lists, with what can be printed on them, and the map of
// two-sided panel media.

#include <iterator>

#include "responses/capability.hpp"

constexpr std::uint16_t glb_supportedPaperTypeTbl[] = {
    1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 25, 26, 27, 28, 29,
};

namespace pxcl::responses {
namespace {

namespace path = keyed::path;

constexpr u16 kRecordVersion = 3;
constexpr u16 kUnsupported = 1;
constexpr u16 kSupported = 2;
constexpr std::size_t kMostKeywords = 4;  // of one element

// The keywords that a type's elements list.
constexpr Dictionary kElementDictionaries[] = {
    dictionary_of<glb_clssdicBorderlessTbl>(CLSS_DICNUM_BORDERLESS),
    dictionary_of<glb_clssdicColormodeTbl>(CLSS_DICNUM_COLORMODE),
    dictionary_of<glb_clssdicDuplexPrintTbl>(CLSS_DICNUM_DUPLEXPRINT),
};
enum Element : std::size_t { kBorderless, kColorModes, kDuplexModes, kElementCount };
static_assert(std::size(kTypeElements) == kElementCount);
static_assert(std::size(kElementDictionaries) == kElementCount);

constexpr Dictionary kTypes = dictionary_of<glb_clssdicPaperTypeTbl>(CLSS_DICNUM_PAPERTYPE);
constexpr Dictionary kStapleSides = dictionary_of<glb_clssdicStapleSideTbl>(CLSS_DICNUM_STAPLESIDE);

constexpr auto kKeys = [] {
  std::array<Key, kCheckKeys + kTypeKeys> keys;
  const std::span all(keys);
  keyed::set_check_keys(all.first<kCheckKeys>(), 0);
  ask_for_types(all.subspan<kCheckKeys>(), 1);
  return keys;
}();

// The keywords of one element, the known ones first and ordered by code.
struct Keywords {
  ItemEntry entries[kMostKeywords] = {};
  std::size_t count = 0;

  std::span<const ItemEntry> all() const { return {entries, count}; }
};

i32 read_keywords(std::string_view text, const Dictionary& dictionary, Keywords& keywords) {
  ItemSet item = {};
  item.dictionary = dictionary.rows;
  item.rowCount = *dictionary.rowCount;
  keywords.count = *dictionary.rowCount - 1u;
  return keyed::decode_into(text, item, 0, std::span(keywords.entries).first(keywords.count),
                            keyed::Keywords::kValues);
}

// Fields of a record that are filled one after the other; what is too much is dropped.
class Fields {
 public:
  explicit Fields(std::span<u16> fields) : fields_(fields) {
    for (u16& field : fields_) field = kUnknownIndex;
  }
  void append(u32 value) {
    if (used_ < fields_.size()) fields_[used_++] = static_cast<u16>(value);
  }

 private:
  std::span<u16> fields_;
  std::size_t used_ = 0;
};

void store_borderless(const Keywords& keywords, ClssMediaType& record) {
  record.borderlessOff = record.borderlessOn = kUnsupported;
  for (const ItemEntry& keyword : keywords.all()) {
    if (keyword.value == keyed::kBorderlessOff) record.borderlessOff = kSupported;
    if (keyword.value == keyed::kBorderlessOn) record.borderlessOn = kSupported;
  }
}

void store_color_modes(const Keywords& keywords, ClssMediaType& record) {
  Fields fields(record.colorModes);
  for (const ItemEntry& keyword : keywords.all()) {
    if (keyword.value != kUnknownIndex) fields.append(keyword.value);
  }
}

// "ON" alone does not say along which edge: the dictionary's rows 3 and 4 do, one a staple side.
void store_duplex_modes(const Keywords& keywords, const Entries& stapleSides,
                        ClssMediaType& record) {
  constexpr u32 kSideToMode = keyed::kDuplexLongSide - keyed::kStapleLongSide;
  Fields fields(record.duplexModes);
  for (const ItemEntry& keyword : keywords.all()) {
    if (keyword.value == kUnknownIndex) continue;
    if (keyword.value != keyed::kDuplexOn || stapleSides.count == 0) fields.append(keyword.value);
    if (keyword.value != keyed::kDuplexOn) continue;
    for (const ItemEntry& side : stapleSides.all()) fields.append(side.value + kSideToMode);
  }
}

i32 decode_type(const ItemEntry& type, const ElementTexts& texts, const Entries& stapleSides,
                ClssMediaType& record) {
  if (record.version != kRecordVersion) return kBadRecord;
  Keywords keywords[kElementCount];
  for (std::size_t i = 0; i < kElementCount; ++i) {
    const i32 status = read_keywords(texts[i], kElementDictionaries[i], keywords[i]);
    if (status != kOk) return status;
  }
  record.paperType = static_cast<u16>(type.value);
  record.nameSpace = type.nameSpace;
  store_borderless(keywords[kBorderless], record);
  store_color_modes(keywords[kColorModes], record);
  store_duplex_modes(keywords[kDuplexModes], stapleSides, record);
  return kOk;
}

i32 read_reply(std::string_view document, bool withElements, TypeReply& reply) {
  return read_listed<kKeys>(document, xml::kPlanOf<kKeys>, withElements, reply);
}

i32 parse_type(std::string_view document, i32& index, ClssMediaType* record) {
  TypeReply reply;
  const i32 status = read_reply(document, index != kCountQuery && record != nullptr, reply);
  if (status != kOk) return status;
  const Entries& types = reply.types;
  if (index == kCountQuery) {
    index = static_cast<i32>(types.count);
    return kOk;
  }
  if (record == nullptr || static_cast<u32>(index) >= types.count) return kBadArgument;
  return reply.decode(document, types.block[static_cast<u32>(index)], *record);
}

i32 parse_all_types(std::string_view document, ClssMediaType* records, i32& count) {
  TypeReply reply;
  const i32 status = read_reply(document, true, reply);
  if (status == kNothingListed) count = 0;
  if (status != kOk) return status;
  return fill_records(reply.types.all(), records, count,
                      [&](const ItemEntry& type, ClssMediaType& record) {
                        return reply.decode(document, type, record);
                      });
}

// --- The map of two-sided panel media ------------------------------------------------------------

constexpr u16 kMapVersion = 0;

constexpr char kMapElement[] = "mediamap papertype";
constexpr const char* kMapSides[] = {path::kPrintItemFront, path::kPrintItemBack};
enum Side : std::size_t { kFront, kBack, kSideCount };
static_assert(std::size(kMapSides) == kSideCount);

// A map is reported only when both sides are known. Callers rely on this as it stands.
void keep_whole_map(ClssMediaMap& map) {
  if (map.frontType != kUnknownIndex && map.backType == kUnknownIndex) {
    map.frontType = kUnknownIndex;
  } else if (map.frontType == kUnknownIndex && map.backType != map.frontType) {
    map.backType = kUnknownIndex;
  }
}

i32 parse_map(std::string_view document, u16 panelMedia, ClssMediaMap& map) {
  map.frontType = map.backType = map.frontTag = kUnknownIndex;
  ItemSet sides[kSideCount] = {};
  for (std::size_t i = 0; i < kSideCount; ++i) {
    sides[i].pathTemplate = kMapSides[i];
    sides[i].itemName = kMapElement;
    sides[i].dictionary = glb_clssdicPaperTypeTbl;
    sides[i].rowCount = CLSS_DICNUM_PAPERTYPE;
  }
  const i32 status =
      keyed::read_item_sets_by_attribute(document, sides, glb_clssdicPanelMedia[panelMedia].keyword,
                                         keyed::kNameSpaceVendor, keyed::kListMode);
  if (status != kOk) return status;
  map.frontType = static_cast<u16>(sides[kFront].entries->value);
  map.frontTag = sides[kFront].entries->nameSpace;
  map.backType = static_cast<u16>(sides[kBack].entries->value);
  map.backTag = sides[kBack].entries->nameSpace;
  keep_whole_map(map);
  ReleaseItemSetList(sides, kSideCount);
  return kOk;
}

}  // namespace

bool TypeReply::attend(std::span<Reader, kTypeKeys> readers) {
  return elements.attend({kTypeElements, kTypes}, readers.subspan<kTypeListKeys>());
}

i32 TypeReply::read_list(std::string_view document, std::span<const Answer, kTypeKeys> keys) {
  i32 status = read_item(document, keys.first<kNameSpaceCount>(), kTypes, types);
  if (status != kOk) return status;
  status = read_item(document, keys.subspan<kNameSpaceCount, kNameSpaceCount>(), kStapleSides,
                     stapleSides);
  return status == kOk && types.count == 0 ? kNothingListed : status;
}

i32 TypeReply::decode(std::string_view document, const ItemEntry& type,
                      ClssMediaType& record) const {
  ElementTexts texts;
  elements.texts_of(document, type, texts);
  return decode_type(type, texts, stapleSides, record);
}

}  // namespace pxcl::responses

using namespace pxcl;
using namespace pxcl::responses;

const uint16_t* CLSS_GetParsePossibleMedia(void) {
  return glb_supportedPaperTypeTbl;
}

int32_t CLSS_GetParsePossibleMediaNum(void) {
  return std::size(glb_supportedPaperTypeTbl);
}

int32_t CLSS_ParseCapabilityResponsePrint_MediaType(const char* document, uint64_t length,
                                                    int32_t* index, ClssMediaType* record) {
  if (document == nullptr || length == 0 || !is_index(index)) return kBadArgument;
  return parse_type(as_view(document, length), *index, record);
}

int32_t PXCL_ParseCapabilityResponsePrint_MediaTypes(const char* document, uint64_t length,
                                                     ClssMediaType* records, int32_t* count) {
  if (document == nullptr || length == 0 || count == nullptr) return kBadArgument;
  if (records == nullptr || *count < 1)
    return count_entries(as_view(document, length), parse_type, *count);
  return parse_all_types(as_view(document, length), records, *count);
}

int32_t CLSS_ParseCapabilityResponsePrint_MediaMap(const char* document, uint64_t length,
                                                   uint16_t panelMediaIndex, ClssMediaMap* record) {
  if (document == nullptr || length == 0 || record == nullptr ||
      panelMediaIndex >= CLSS_DICNUM_PANEL_PAPERTYPE) {
    return kBadArgument;
  }
  if (record->version != kMapVersion) return kBadRecord;
  return parse_map(as_view(document, length), panelMediaIndex, *record);
}
