// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <algorithm>
#include <iterator>
#include <span>

#include "device.h"
#include "responses/printable.hpp"

namespace {

using pxcl::i16;
using pxcl::i32;
using pxcl::u16;
using pxcl::u32;

constexpr i32 kOk = 0;
constexpr i32 kBadArgument = -2;  // null or empty argument, or the reply does not list what is set
constexpr i32 kNoPaper = -7;      // nothing loaded, or nothing that fits a given type or size
constexpr i32 kBadVersion = -8;   // of the settings or of the status
constexpr i32 kNoSinglePaper = -17;  // more than one bin fits, or none when nothing is given

constexpr u16 kUnset = 65535;
constexpr u16 kSettingsVersion = 2;
constexpr u16 kEntryVersion = 3;
constexpr u16 kStatusVersion = 1;
constexpr u16 kSupported = 2;

constexpr u16 kBorderlessOff = 1;
constexpr u16 kBorderlessOn = 2;
constexpr u16 kColor = 1;
constexpr u16 kDuplexOff = 1;

// ---- Completion ----

bool has_area(const u32 (&area)[2]) {
  return area[0] != 0 && area[1] != 0;
}

u16 choose_borderless(const ClssMediaType& media, const ClssPaperSize& size, u16 wish,
                      bool preferBordered) {
  const bool off = has_area(size.printAreaBorder) && media.borderlessOff == kSupported;
  const bool on = has_area(size.printAreaBorderless) && media.borderlessOn == kSupported;
  if (wish == kUnset) wish = preferBordered ? kBorderlessOff : kBorderlessOn;
  if (on && (wish == kBorderlessOn || !off)) return kBorderlessOn;
  return off ? kBorderlessOff : kUnset;
}

u16 choose_color(const ClssMediaType& media, u16 wish) {
  if (wish == kUnset) wish = kColor;
  if (media.colorModes[0] == kUnset) return kUnset;
  const bool offered =
      std::ranges::find(media.colorModes, wish) != std::ranges::end(media.colorModes);
  return offered ? wish : media.colorModes[0];
}

u16 choose_duplex(const ClssMediaType& media, const ClssPaperSize& size, u16 wish) {
  if (media.duplexModes[0] == kUnset) return kUnset;
  if (wish == kUnset || wish == kDuplexOff || !has_area(size.printAreaDuplex)) return kDuplexOff;
  const bool offered =
      std::ranges::find(media.duplexModes, wish) != std::ranges::end(media.duplexModes);
  return offered ? wish : kDuplexOff;
}

// ---- Choice from the loaded paper ----

struct Slot {
  u16 type;
  u16 size;
  bool fromPanel;
};

bool fits_type(const Slot& slot, u16 wanted) {
  return slot.type == wanted;
}
bool fits_size(const Slot& slot, u16 wanted) {
  return slot.size == wanted;
}
// The types are rows of the paper-type dictionary. A slot that was set on the printer's panel holds
// a row of the panel dictionary instead and is compared as it stands: printers rely on it.
bool is_not_plain(const Slot& slot, u16) {
  switch (slot.type) {
    case 1:
    case 15:
      return false;
    case 13:
    case 14:
    case 17:
      return slot.fromPanel;
    case 2:
    case 3:
      return !slot.fromPanel;
    default:
      return true;
  }
}
bool is_plain(const Slot& slot, u16) {
  return (slot.type == 1 && !slot.fromPanel) || slot.type == 15;
}

struct Mode {
  bool (*fits)(const Slot& slot, u16 wanted);
  u16 ClssPrintSettings::*given;  // what the slots are compared with; null: nothing
  u16 ClssPrintSettings::*chosen[2];
  i32 noneFits;
  i16 preferBordered;
};

constexpr auto kType = &ClssPrintSettings::paperType;
constexpr auto kSize = &ClssPrintSettings::paperSize;

// clang-format off
constexpr Mode kModes[] = {
    {fits_type,    kType,   {kSize, kSize}, kNoPaper,       0},
    {fits_size,    kSize,   {kType, kType}, kNoPaper,       0},
    {is_not_plain, nullptr, {kType, kSize}, kNoSinglePaper, 0},
    {is_plain,     nullptr, {kType, kSize}, kNoSinglePaper, 1},
};
// clang-format on

// The one slot that fits; the first slot without a type or size ends the list.
i32 choose_slot(const ClssStatus& status, const Mode& mode, u16 wanted, Slot* chosen) {
  i32 result = mode.noneFits;
  for (std::size_t k = 0; k < std::size(status.currentPaperType); ++k) {
    const Slot slot = {status.currentPaperType[k], status.currentPaperSize[k],
                       status.panelMedia[k] == 1};
    if (slot.type == kUnset || slot.size == kUnset) break;
    if (!mode.fits(slot, wanted)) continue;
    if (result == kOk) return kNoSinglePaper;
    *chosen = slot;
    result = kOk;
  }
  return result;
}

i32 choose_paper(const ClssStatus& status, const Mode& mode, ClssPrintSettings& settings) {
  u16 wanted = 0;
  if (mode.given != nullptr) {
    wanted = settings.*mode.given;
    if (wanted == kUnset) return kBadArgument;
  }
  for (const auto field : mode.chosen) settings.*field = kUnset;
  Slot slot = {};
  const i32 result = choose_slot(status, mode, wanted, &slot);
  if (result != kOk) return result;
  settings.paperType = slot.type;
  settings.paperSize = slot.size;
  return kOk;
}

}  // namespace

int32_t CLSS_initPrintSettings(ClssPrintSettings* record) {
  if (record == nullptr) return kBadArgument;
  if (record->version != kSettingsVersion) return kBadVersion;
  *record = {kSettingsVersion, kUnset, kUnset, kUnset, kUnset, kUnset};
  return kOk;
}

int32_t CLSS_AutoMakeOtherPrintSettings(int16_t preferBordered, const char* document,
                                        uint64_t length, ClssPrintSettings* record) {
  if (document == nullptr || length == 0 || record == nullptr) return kBadArgument;
  if (record->version != kSettingsVersion) return kBadVersion;
  if (record->paperSize == kUnset || record->paperType == kUnset) return kBadArgument;
  ClssMediaType media = {};
  ClssPaperSize size = {};
  media.version = size.version = kEntryVersion;
  if (pxcl::responses::find_printable(pxcl::as_view(document, length), record->paperType,
                                      record->paperSize, media, size) != kOk) {
    return kBadArgument;
  }
  record->borderless = choose_borderless(media, size, record->borderless, preferBordered != 0);
  record->colorMode = choose_color(media, record->colorMode);
  record->duplexPrint = choose_duplex(media, size, record->duplexPrint);
  return kOk;
}

int32_t CLSS_AutoMakePrintSettings(uint16_t mode, const char* document, uint64_t length,
                                   const ClssStatus* status, ClssPrintSettings* record) {
  if (document == nullptr || length == 0 || status == nullptr || record == nullptr)
    return kBadArgument;
  if (record->version != kSettingsVersion || status->leading != kStatusVersion) return kBadVersion;
  if (status->currentPaperType[0] == kUnset || status->currentPaperSize[0] == kUnset)
    return kNoPaper;
  if (mode >= std::size(kModes)) return kBadArgument;
  const i32 result = choose_paper(*status, kModes[mode], *record);
  if (result != kOk) return result;
  return CLSS_AutoMakeOtherPrintSettings(kModes[mode].preferBordered, document, length, record);
}

int32_t CLSS_IsDiscLabelPrintSettings(void) {
  return 0;
}
