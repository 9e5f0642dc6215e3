// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <algorithm>
#include <cstring>

#include "commands/buffer.hpp"
#include "dictionaries.h"
#include "keyed/vocabulary.hpp"
#include "responses.h"

using namespace pxcl;
using namespace pxcl::commands;

// clang-format off
#define SET_CONFIGURATION(modes)                                  \
  PXCL_DECLARATION "<cmd%s>"                                      \
    "<zirk:contents>"                                             \
      "<zirk:operation>SetConfiguration</zirk:operation>"         \
      "<zirk:param_set servicetype=\"print\">"                    \
        "<zirk:jobID>%s</zirk:jobID>"                             \
        "<%s:papersize>%s</%s:papersize>"                         \
        "<%s:papertype>%s</%s:papertype>"                         \
        "<%s:borderlessprint>%s</%s:borderlessprint>"             \
        modes                                                     \
      "</zirk:param_set>"                                         \
    "</zirk:contents>"                                            \
  "</cmd>"
#define COLOR_MODE  "<%s:printcolormode>%s</%s:printcolormode>"
#define DUPLEX      "<%s:duplexprint>%s</%s:duplexprint>"
#define STAPLE_SIDE "<zirk:stapleside>%s</zirk:stapleside>"

static constexpr Template<11> kPaper = SET_CONFIGURATION("");
static constexpr Template<14> kPaperDuplex = SET_CONFIGURATION(DUPLEX);
static constexpr Template<15> kPaperStaple = SET_CONFIGURATION(DUPLEX STAPLE_SIDE);
static constexpr Template<14> kPaperColor = SET_CONFIGURATION(COLOR_MODE);
static constexpr Template<17> kPaperColorDuplex = SET_CONFIGURATION(COLOR_MODE DUPLEX);
static constexpr Template<18> kPaperColorStaple = SET_CONFIGURATION(COLOR_MODE DUPLEX STAPLE_SIDE);

// By whether a colour mode is sent, and whether duplex is not, alone, or with a staple side.
static constexpr Fillable kSetConfiguration[2][3] = {
  {kPaper,      kPaperDuplex,      kPaperStaple},
  {kPaperColor, kPaperColorDuplex, kPaperColorStaple},
};
// clang-format on

namespace {

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
  if (listing.list(reply.data(), reply.size(), nullptr, &count) < 0) return keyed::kNameSpaceCount;
  const u64 room = static_cast<u64>(std::min(count, kMostRecords));
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
  u16 size = keyed::kNameSpaceCommon;
  u16 media = keyed::kNameSpaceCommon;
};

// CLSS_COMMAND_OK, or CLSS_COMMAND_BAD_ARGUMENT where the reply does not list both.
i32 choose_namespaces(std::string_view reply, const ClssConfigurationPaper& paper,
                      NameSpaces& chosen) {
  if (reply.empty()) return CLSS_COMMAND_OK;
  chosen.size = find_namespace<keyed::kPaperSizeRows>(kSizes, reply, paper.paperSize);
  if (chosen.size >= keyed::kNameSpaceCount) return CLSS_COMMAND_BAD_ARGUMENT;
  chosen.media = find_namespace<keyed::kPaperTypeRows>(kTypes, reply, paper.paperType);
  return chosen.media < keyed::kNameSpaceCount ? CLSS_COMMAND_OK : CLSS_COMMAND_BAD_ARGUMENT;
}

// ---- The document ----

struct NameSpace {
  std::string_view prefix;
  std::string_view declaration;
};
constexpr NameSpace kNameSpaces[keyed::kNameSpaceCount] = {
    {"zirk", PXCL_ZIRK}, {"vrx", PXCL_VRX}, {"tolm", PXCL_TOLM}};

struct Declarations {
  char text[2047];
  u64 length = 0;
};

// Declares the common namespace and the chosen ones, each once, in table order; false when they do
// not fit.
bool declare(const NameSpaces& chosen, Declarations& declarations) {
  for (u16 i = 0; i < keyed::kNameSpaceCount; ++i) {
    if (i != keyed::kNameSpaceCommon && i != chosen.size && i != chosen.media) continue;
    const std::string_view text = kNameSpaces[i].declaration;
    if (text.size() > sizeof declarations.text - declarations.length) return false;
    KWVSCopyDataX(text.data(), declarations.text + declarations.length, text.size());
    declarations.length += text.size();
  }
  return true;
}

struct Fields {
  std::string_view texts[std::size(kPaperColorStaple.slots)];
  std::size_t count;
};

// The three holes of one setting's element. An unused row has no keyword.
void add_element(Fields& fields, std::string_view prefix, const ClssDicRow& row) {
  fields.texts[fields.count++] = prefix;
  fields.texts[fields.count++] = row.keyword != nullptr ? row.keyword : "";
  fields.texts[fields.count++] = prefix;
}

Fields fill_fields(const Settings& settings, const NameSpaces& chosen,
                   std::string_view declarations, std::string_view jobID) {
  const auto& [paper, mode] = settings;
  const std::string_view media = kNameSpaces[chosen.media].prefix;
  Fields fields = {{declarations, jobID}, 2};
  add_element(fields, kNameSpaces[chosen.size].prefix, glb_clssdicPaperSizeTbl[paper.paperSize]);
  add_element(fields, media, glb_clssdicPaperTypeTbl[paper.paperType]);
  add_element(fields, media, glb_clssdicBorderlessTbl[paper.borderless]);
  if (mode.colorMode != CLSS_SETTING_ABSENT) {
    add_element(fields, media, glb_clssdicColormodeTbl[mode.colorMode]);
  }
  if (mode.duplexPrint == CLSS_SETTING_ABSENT) return fields;
  add_element(fields, media, glb_clssdicDuplexPrintTbl[mode.duplexPrint]);
  if (mode.duplexPrint >= keyed::kDuplexLongSide) {
    const u16 side = static_cast<u16>(mode.duplexPrint - keyed::kDuplexLongSide + 1);
    fields.texts[fields.count++] = glb_clssdicStapleSideTbl[side].keyword;
  }
  return fields;
}

const Fillable& pick_document(const ClssConfigurationMode& mode) {
  const bool colored = mode.colorMode != CLSS_SETTING_ABSENT;
  if (mode.duplexPrint == CLSS_SETTING_ABSENT) return kSetConfiguration[colored][0];
  return kSetConfiguration[colored][mode.duplexPrint >= keyed::kDuplexLongSide ? 2 : 1];
}

i32 set_configuration(const Settings& settings, const char* jobID, std::string_view reply,
                      const Output& out) {
  if (const i32 status = check(settings); status != CLSS_COMMAND_OK) return status;
  const auto& paper = settings.paper;
  NameSpaces chosen;
  if (const i32 status = choose_namespaces(reply, paper, chosen); status != CLSS_COMMAND_OK) {
    return status;
  }
  if (paper.paperSize >= CLSS_DICNUM_PAPERSIZE || paper.paperType >= CLSS_DICNUM_PAPERTYPE) {
    return CLSS_COMMAND_BAD_SETTING;
  }
  Declarations declarations;
  if (!declare(chosen, declarations)) return CLSS_COMMAND_NOT_FORMATTED;
  const Fields fields =
      fill_fields(settings, chosen, {declarations.text, declarations.length}, jobID);
  return format_command(pick_document(settings.mode), {fields.texts, fields.count}, out);
}

}  // namespace

i32 CLSS_MakeCommand_SetConfigurationNS(ClssConfigurationPaper paper, ClssConfigurationMode mode,
                                        const char* jobID, const char* capability,
                                        u64 capabilityLength, char* buffer, u64 size, u64* length) {
  const Output out{buffer, size, length};
  if (!is_usable(out) || jobID == nullptr || (capability == nullptr) != (capabilityLength == 0)) {
    return CLSS_COMMAND_BAD_ARGUMENT;
  }
  return set_configuration({paper, mode}, jobID, {capability, capabilityLength}, out);
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
  return format_unpaired(kSetDeviceConfiguration, fields, {buffer, size, length});
}
