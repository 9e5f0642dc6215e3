// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <algorithm>

#include "commands/buffer.hpp"
#include "dictionaries.h"
#include "keyed/vocabulary.hpp"
#include "responses.h"
#include "util/owned.hpp"

using namespace pxcl;
using namespace pxcl::commands;

// clang-format off
static constexpr Template<7> kSetConfiguration =
  PXCL_HEAD
    "<zirk:contents>"
      "<zirk:operation>SetConfiguration</zirk:operation>"
      "<zirk:param_set servicetype=\"print\">"
        "<zirk:jobID>%s</zirk:jobID>"
        "<zirk:papersize>%s</zirk:papersize>"
        "<zirk:papertype>%s</zirk:papertype>"
        "<zirk:borderlessprint>%s</zirk:borderlessprint>"
        "<zirk:printcolormode>%s</zirk:printcolormode>"
        "<zirk:duplexprint>%s</zirk:duplexprint>"
        "<zirk:stapleside>%s</zirk:stapleside>"
      "</zirk:param_set>"
    "</zirk:contents>"
  "</cmd>";
// clang-format on

namespace {

// ---- The places of that document ----

// The elements with a hole, in their order.
enum Element {
  kJobID,
  kPaperSize,
  kPaperType,
  kBorderless,
  kColorMode,
  kDuplex,
  kStapleSide,
  kElements
};
constexpr std::string_view kNames[kElements] = {
    "zirk:jobID",          "zirk:papersize",   "zirk:papertype", "zirk:borderlessprint",
    "zirk:printcolormode", "zirk:duplexprint", "zirk:stapleside"};

// Whether a namespace may be chosen for the element, so that another prefix may stand in its tags.
constexpr bool is_prefixed(std::size_t element) {
  return element != kJobID && element != kStapleSide;
}
constexpr std::size_t kPrefixed = kElements - 2;
constexpr std::size_t kPrefixSize = sizeof "zirk" - 1;
constexpr std::size_t kHoleSize = sizeof "%s" - 1;

struct ElementPlaces {
  Slot prefix, text, endPrefix;
};

// An element that is not sent is one place as a whole, for no text.
consteval ElementPlaces find_places(std::size_t element, bool sent) {
  const std::string_view text = kSetConfiguration.view();
  Tag tag = next_tag(text, 0);
  while (tag.end != 0 && tag.inside != kNames[element]) tag = next_tag(text, tag.end);
  const Slot hole = kSetConfiguration.slots[element];
  if (tag.end != hole.offset) key_leads_nowhere();
  const std::size_t begin = tag.end - tag.inside.size() - 1;
  const std::size_t close = tag.end + kHoleSize + 2;
  if (sent)
    return {make_slot(begin, begin + kPrefixSize), hole, make_slot(close, close + kPrefixSize)};
  const std::size_t end = next_tag(text, tag.end).end;
  return {make_slot(begin - 1, begin - 1), make_slot(begin - 1, end), make_slot(end, end)};
}

consteval Slot find_declarations() {
  const Tag declaration = next_tag(kSetConfiguration.view(), 0);
  const std::size_t end = next_tag(kSetConfiguration.view(), declaration.end).end - 1;
  return make_slot(end - (sizeof PXCL_ZIRK - 1), end);
}

// The document with all or some of its elements. Callers are asked for as much as if declarations
// and prefixes were holes too, whatever namespaces are chosen.
struct Variant {
  Places<kElements> common = {};                      // texts
  Places<1 + kElements + 2 * kPrefixed> chosen = {};  // declarations; texts with prefixes around

  consteval Variant(bool colored, bool duplex, bool stapled) {
    const bool sent[kElements] = {true, true, true, true, colored, duplex, stapled};
    std::size_t holes = 1;
    Slot* next = chosen.slots;
    *next++ = find_declarations();
    for (std::size_t i = 0; i < kElements; ++i) {
      const auto [prefix, text, endPrefix] = find_places(i, sent[i]);
      common.slots[i] = text;
      if (is_prefixed(i)) *next++ = prefix;
      *next++ = text;
      if (is_prefixed(i)) *next++ = endPrefix;
      if (sent[i]) holes += is_prefixed(i) ? 3 : 1;
    }
    common.measure(kSetConfiguration.view());
    chosen.measure(kSetConfiguration.view());
    common.spare = chosen.spare = static_cast<u16>(holes * kHoleSize + 1);
  }
};

// By whether a colour mode is sent, and whether duplex is not, alone, or with a staple side.
constexpr Variant kVariants[2][3] = {
    {{false, false, false}, {false, true, false}, {false, true, true}},
    {{true, false, false}, {true, true, false}, {true, true, true}},
};

struct Settings {
  ClssConfigurationPaper paper;
  ClssConfigurationMode mode;
};

bool is_row(u16 index, u16 rows) {
  return index != 0 && index < rows;
}
bool is_row_or_absent(u16 index, u16 rows) {
  return index == CLSS_SETTING_ABSENT || is_row(index, rows);
}

// What is wrong with the settings by themselves. The dictionaries of sizes and types are left for
// later: a reply that does not list them is told first.
i32 check(const Settings& settings) {
  const auto& [paper, mode] = settings;
  if (paper.version != CLSS_CONFIGURATION_VERSION) return CLSS_COMMAND_BAD_VERSION;
  const bool valid = paper.paperSize != CLSS_SETTING_ABSENT &&
                     paper.paperType != CLSS_SETTING_ABSENT &&
                     is_row(paper.borderless, CLSS_DICNUM_BORDERLESS) &&
                     is_row_or_absent(mode.colorMode, CLSS_DICNUM_COLORMODE) &&
                     is_row_or_absent(mode.duplexPrint, CLSS_DICNUM_DUPLEXPRINT);
  return valid ? CLSS_COMMAND_OK : CLSS_COMMAND_BAD_SETTING;
}

// ---- Namespaces, as the printer's capability reply lists size and type ----

// The one-scan call that lists all records of a kind, and what a record holds for us.
template <typename Record>
struct Listing {
  i32 (*list)(const char* document, u64 length, Record* records, i32* count);
  u16 Record::*value;
  u16 Record::*nameSpace;
};
constexpr Listing<ClssPaperSize> kSizes = {PXCL_ParseCapabilityResponsePrint_PaperSizes,
                                           &ClssPaperSize::paperSize, &ClssPaperSize::sizeItemTag};
constexpr Listing<ClssMediaType> kTypes = {PXCL_ParseCapabilityResponsePrint_MediaTypes,
                                           &ClssMediaType::paperType, &ClssMediaType::nameSpace};

constexpr u16 kRecordVersion = 3;    // of both kinds
constexpr i32 kMostRecords = 65536;  // as many as an index of the replies' indexed calls reaches

// The good records before the first bad one; a reply that cannot be read has none.
template <typename Record>
std::span<const Record> list(const Listing<Record>& listing, std::string_view reply,
                             std::span<Record> room) {
  for (Record& record : room) record.version = kRecordVersion;
  i32 count = static_cast<i32>(room.size());
  const i32 status = listing.list(reply.data(), reply.size(), room.data(), &count);
  const auto listed = static_cast<std::size_t>(count);
  // A failure of the whole leaves the count as it was.
  if (status < 0 && listed == room.size()) return {};
  return room.first(listed);
}

// The namespace of the last record that holds `wanted`, or kNameSpaceCount.
template <typename Record>
u16 find_last(const Listing<Record>& listing, std::span<const Record> records, u16 wanted) {
  for (std::size_t i = records.size(); i > 0; --i) {
    const Record& record = records[i - 1];
    if (record.*listing.value == wanted) return record.*listing.nameSpace;
  }
  return keyed::kNameSpaceCount;
}

// A reply may list a keyword more than once: then there are more records than the usual room takes.
template <typename Record>
u16 find_in_long_list(const Listing<Record>& listing, std::string_view reply, u16 wanted) {
  i32 count = 0;
  listing.list(reply.data(), reply.size(), nullptr, &count);  // counts none when it fails
  const auto room = static_cast<std::size_t>(std::min(count, kMostRecords));
  const auto records = Owned<Record>::allocate(room);
  if (!records) return keyed::kNameSpaceCount;
  return find_last(listing, list(listing, reply, {records.get(), room}), wanted);
}

// `Rows` of the dictionary: room for every keyword once.
template <std::size_t Rows, typename Record>
u16 find_namespace(const Listing<Record>& listing, std::string_view reply, u16 wanted) {
  Record usual[Rows] = {};
  const auto records = list(listing, reply, std::span<Record>(usual));
  if (records.size() < Rows) return find_last(listing, records, wanted);
  return find_in_long_list(listing, reply, wanted);
}

struct NameSpaces {
  u16 size;
  u16 media;
};

// CLSS_COMMAND_OK, or CLSS_COMMAND_BAD_ARGUMENT where the reply does not list both.
i32 choose_namespaces(std::string_view reply, const ClssConfigurationPaper& paper,
                      NameSpaces& chosen) {
  chosen.size = find_namespace<keyed::kPaperSizeRows>(kSizes, reply, paper.paperSize);
  if (chosen.size >= keyed::kNameSpaceCount) return CLSS_COMMAND_BAD_ARGUMENT;
  chosen.media = find_namespace<keyed::kPaperTypeRows>(kTypes, reply, paper.paperType);
  return chosen.media < keyed::kNameSpaceCount ? CLSS_COMMAND_OK : CLSS_COMMAND_BAD_ARGUMENT;
}

// ---- The document ----

constexpr std::string_view kPrefixes[keyed::kNameSpaceCount] = {"zirk", "vrx", "tolm"};

// By whether the vendor's and the schema's namespaces are chosen. The common one always is there.
constexpr std::string_view kDeclarations[2][2] = {
    {PXCL_ZIRK, PXCL_ZIRK PXCL_TOLM},
    {PXCL_ZIRK PXCL_VRX, PXCL_ZIRK PXCL_VRX PXCL_TOLM},
};
static_assert(kDeclarations[1][1].size() <= 2047,
              "the build's host for the namespaces is too long");

std::string_view declare(const NameSpaces& chosen) {
  const auto is_chosen = [&](u16 index) { return chosen.size == index || chosen.media == index; };
  return kDeclarations[is_chosen(keyed::kNameSpaceVendor)][is_chosen(keyed::kNameSpaceSchema)];
}

bool is_sent(u16 setting) {
  return setting != CLSS_SETTING_ABSENT;
}
bool has_staple_side(const ClssConfigurationMode& mode) {
  return is_sent(mode.duplexPrint) && mode.duplexPrint >= keyed::kDuplexLongSide;
}

const Variant& pick_variant(const ClssConfigurationMode& mode) {
  return kVariants[is_sent(mode.colorMode)][is_sent(mode.duplexPrint) + has_staple_side(mode)];
}

// The texts of the elements, null for one that is not sent.
struct Texts {
  std::string_view of[kElements];
};

Texts list_texts(const Settings& settings, std::string_view jobID) {
  const auto& [paper, mode] = settings;
  Texts texts;
  texts.of[kJobID] = jobID;
  texts.of[kPaperSize] = keyword_of(glb_clssdicPaperSizeTbl[paper.paperSize]);
  texts.of[kPaperType] = keyword_of(glb_clssdicPaperTypeTbl[paper.paperType]);
  texts.of[kBorderless] = glb_clssdicBorderlessTbl[paper.borderless].keyword;
  if (is_sent(mode.colorMode)) {
    texts.of[kColorMode] = glb_clssdicColormodeTbl[mode.colorMode].keyword;
  }
  if (is_sent(mode.duplexPrint)) {
    texts.of[kDuplex] = glb_clssdicDuplexPrintTbl[mode.duplexPrint].keyword;
  }
  if (has_staple_side(mode)) {
    const int side = mode.duplexPrint - keyed::kDuplexLongSide + keyed::kStapleLongSide;
    texts.of[kStapleSide] = glb_clssdicStapleSideTbl[side].keyword;
  }
  return texts;
}

// The declarations, and the texts between the prefixes of their elements.
struct ChosenTexts {
  std::string_view of[1 + kElements + 2 * kPrefixed];
};

ChosenTexts list_chosen_texts(const Texts& common, const NameSpaces& chosen) {
  ChosenTexts texts;
  std::string_view* next = texts.of;
  *next++ = declare(chosen);
  for (std::size_t i = 0; i < kElements; ++i) {
    const std::string_view text = common.of[i];
    const u16 nameSpace = i == kPaperSize ? chosen.size : chosen.media;
    const std::string_view prefix = text.data() == nullptr ? text : kPrefixes[nameSpace];
    if (is_prefixed(i)) *next++ = prefix;
    *next++ = text;
    if (is_prefixed(i)) *next++ = prefix;
  }
  return texts;
}

i32 check_rows(const ClssConfigurationPaper& paper) {
  const bool valid =
      paper.paperSize < CLSS_DICNUM_PAPERSIZE && paper.paperType < CLSS_DICNUM_PAPERTYPE;
  return valid ? CLSS_COMMAND_OK : CLSS_COMMAND_BAD_SETTING;
}

i32 set_common(const Settings& settings, const char* jobID, const Output& out) {
  if (const i32 status = check(settings); status != CLSS_COMMAND_OK) return status;
  if (const i32 status = check_rows(settings.paper); status != CLSS_COMMAND_OK) return status;
  const Texts texts = list_texts(settings, jobID);
  return format_command(pick_variant(settings.mode).common.in(kSetConfiguration), texts.of, out);
}

i32 set_as_listed(const Settings& settings, const char* jobID, std::string_view reply,
                  const Output& out) {
  if (const i32 status = check(settings); status != CLSS_COMMAND_OK) return status;
  NameSpaces chosen;
  if (const i32 status = choose_namespaces(reply, settings.paper, chosen);
      status != CLSS_COMMAND_OK) {
    return status;
  }
  // What a reply lists are rows of the dictionaries.
  const ChosenTexts texts = list_chosen_texts(list_texts(settings, jobID), chosen);
  return format_command(pick_variant(settings.mode).chosen.in(kSetConfiguration), texts.of, out);
}

}  // namespace

i32 CLSS_MakeCommand_SetConfigurationNS(ClssConfigurationPaper paper, ClssConfigurationMode mode,
                                        const char* jobID, const char* capability,
                                        u64 capabilityLength, char* buffer, u64 size, u64* length) {
  const Output out{buffer, size, length};
  if (!is_usable(out) || jobID == nullptr || (capability == nullptr) != (capabilityLength == 0)) {
    return CLSS_COMMAND_BAD_ARGUMENT;
  }
  const Settings settings = {paper, mode};
  if (capability == nullptr) return set_common(settings, jobID, out);
  return set_as_listed(settings, jobID, as_view(capability, capabilityLength), out);
}

i32 PXCL_GetSetConfigurationCommand(const u16* settings, const char* jobID, u64 size,
                                    const char* capability, u64 capabilityLength, char* buffer,
                                    u64* length) {
  if (settings == nullptr) return CLSS_COMMAND_BAD_ARGUMENT;
  const i32 status = CLSS_MakeCommand_SetConfigurationNS(
      {CLSS_CONFIGURATION_VERSION, settings[1], settings[2], settings[3]},
      {settings[4], settings[5]}, jobID, capability, capabilityLength, buffer, size, length);
  return status == CLSS_COMMAND_OK ? CLSS_COMMAND_OK : CLSS_COMMAND_BAD_ARGUMENT;
}

// clang-format off
static constexpr Template<2> kSetDeviceConfiguration =
  PXCL_HEAD_VENDOR
    "<zirk:contents>"
      "<zirk:operation>SetConfiguration</zirk:operation>"
      "<zirk:param_set servicetype=\"device\">"
        "<zirk:jobID>%s</zirk:jobID>"
        "<vrx:selfPLIagreement>%s</vrx:selfPLIagreement>"
      "</zirk:param_set>"
    "</zirk:contents>"
  "</cmd>";
// clang-format on

i32 CLSS_MakeCommand_SetConfigurationDevice(ClssDeviceSettings settings, const char* jobID,
                                            char* buffer, u64 size, u64* length) {
  if (length == nullptr || jobID == nullptr) return CLSS_COMMAND_BAD_ARGUMENT;
  if (settings.version != CLSS_DEVICE_SETTINGS_VERSION) return CLSS_COMMAND_BAD_VERSION;
  if (!is_row(settings.pliAgreement, CLSS_DICNUM_PLI_AGR)) return CLSS_COMMAND_BAD_SETTING;
  const std::string_view fields[] = {jobID,
                                     glb_clssdicPLIagreementTbl[settings.pliAgreement].keyword};
  return format_command(kSetDeviceConfiguration, fields, {buffer, size, length});
}
