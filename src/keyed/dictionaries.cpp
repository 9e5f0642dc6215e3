// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Every word of the protocol. The number before a row is its index, which is what records and
// parameters hold; the one behind it is its protocol code. A new keyword takes an unused row or
// goes to the end: an index, once given away, never changes.

#include "dictionaries.h"

#include <iterator>
#include <string_view>

#include "keyed/vocabulary.hpp"
#include "keyed/word_index.hpp"
#include "xml/namespaces.hpp"

namespace {

using pxcl::keyed::kNoCode;

constexpr ClssDicRow kUnused = {nullptr, kNoCode};

}  // namespace

// clang-format off

constexpr ClssDicRow glb_clssdicServiceTypeTbl[] = {
  /*  0 */ {"print", kNoCode},
  /*  1 */ {"device", kNoCode},
  /*  2 */ {"scan", kNoCode},
  /*  3 */ {"maintenance", kNoCode},
  /*  4 */ {"media", kNoCode},
  /*  5 */ {"joblog", kNoCode},
  /*  6 */ {"counter", kNoCode},
  /*  7 */ {"pli", kNoCode},
  /*  8 */ {"remotesetup", kNoCode},
  /*  9 */ {"fax", kNoCode},
};

constexpr ClssDicRow glb_clssdicInkgroupTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"all", kNoCode},
  /*  2 */ {"inkgroup1", kNoCode},
  /*  3 */ {"inkgroup2", kNoCode},
  /*  4 */ {"inkgroup3", kNoCode},
};

constexpr ClssDicRow glb_clssdicInputbinTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"auto", kNoCode},
  /*  2 */ {"inputbin_p1", kNoCode},
  /*  3 */ {"inputbin_p2", kNoCode},
  /*  4 */ {"inputbin_p3", kNoCode},
  /*  5 */ {"inputbin_p4", kNoCode},
};

constexpr ClssDicRow glb_clssdicPaperTypeDiscLabelPrintTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"custom-media-type-vaslo-33", 251},
  /*  2 */ {"custom-media-type-vaslo-34", 252},
};

constexpr ClssDicRow glb_clssdicPaperTypeTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"stationery", 1},
  /*  2 */ {"custom-media-type-vaslo-3", 2},
  /*  3 */ {"custom-media-type-vaslo-4", 3},
  /*  4 */ {"custom-media-type-vaslo-16", 4},
  /*  5 */ {"custom-media-type-vaslo-5", 5},
  /*  6 */ {"custom-media-type-vaslo-2", 7},
  /*  7 */ {"custom-media-type-vaslo-1", 8},
  /*  8 */ {"custom-media-type-vaslo-17", 9},
  /*  9 */ {"custom-media-type-vaslo-6", 10},
  /* 10 */ {"custom-media-type-vaslo-14", 11},
  /* 11 */ {"custom-media-type-vaslo-15", 12},
  /* 12 */ {"photographic", 13},
  /* 13 */ {"custom-media-type-vaslo-11", 150},
  /* 14 */ {"custom-media-type-vaslo-12", 151},
  /* 15 */ {"custom-media-type-vaslo-9", 250},
  /* 16 */ {"custom-media-type-vaslo-19", 270},
  /* 17 */ {"custom-media-type-vaslo-18", 100},
  /* 18 */ {"custom-media-type-vaslo-43", 200},
  /* 19 */ kUnused,
  /* 20 */ kUnused,
  /* 21 */ kUnused,
  /* 22 */ kUnused,
  /* 23 */ kUnused,
  /* 24 */ kUnused,
  /* 25 */ {"custom-media-type-vaslo-45", 300},
  /* 26 */ {"custom-media-type-vaslo-49", 350},
  /* 27 */ {"auto", 400},
  /* 28 */ {"custom-media-type-vaslo-custom", 450},
  /* 29 */ {"custom-media-type-vaslo-55", 6},
};

constexpr ClssDicRow glb_clssdicPaperSizeTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"na_letter_8.5x11in", 1},
  /*  2 */ {"na_legal_8.5x14in", 2},
  /*  3 */ {"iso_a5_148x210mm", 6},
  /*  4 */ {"iso_a4_210x297mm", 7},
  /*  5 */ {"iso_a3_297x420mm", 8},
  /*  6 */ {"custom_vaslo_329x483mm", 9},
  /*  7 */ {"jis_b5_182x257mm", 10},
  /*  8 */ {"jis_b4_257x364mm", 11},
  /*  9 */ {"na_index-4x6_4x6in", 50},
  /* 10 */ {"na_5x7_5x7in", 51},
  /* 11 */ {"custom_vaslo_203x254mm", 53},
  /* 12 */ {"custom_vaslo_254x304mm", 54},
  /* 13 */ {"custom_vaslo_355x431mm", 55},
  /* 14 */ {"custom_vaslo_89x127mm", 56},
  /* 15 */ {"custom_vaslo_127x178mm", 57},
  /* 16 */ {"jpn_hagaki_100x148mm", 150},
  /* 17 */ {"custom_vaslo_54x86mm", 250},
  /* 18 */ {"custom_vaslo_55x91mm", 251},
  /* 19 */ {"custom_vaslo_101x180mm", 252},
  /* 20 */ {"na_number-10_4.125x9.5in", 200},
  /* 21 */ {"iso_dl_110x220mm", 201},
  /* 22 */ {"na_executive_7.25x10.5in", 3},
  /* 23 */ {"iso_a6_105x148mm", 5},
  /* 24 */ {"custom_vaslo_215.9x317.5mm", 12},
  /* 25 */ {"custom_vaslo_216x355mm", 13},
  /* 26 */ {"na_oficio_8.5x13.4in", 14},
  /* 27 */ {"na_foolscap_8.5x13in", 15},
  /* 28 */ {"custom_vaslo_215x345mm", 16},
  /* 29 */ {"custom_vaslo_127x127mm", 60},
  /* 30 */ kUnused,
  /* 31 */ kUnused,
  /* 32 */ kUnused,
  /* 33 */ kUnused,
  /* 34 */ kUnused,
  /* 35 */ kUnused,
  /* 36 */ kUnused,
  /* 37 */ kUnused,
  /* 38 */ kUnused,
  /* 39 */ kUnused,
  /* 40 */ kUnused,
  /* 41 */ kUnused,
  /* 42 */ kUnused,
  /* 43 */ kUnused,
  /* 44 */ kUnused,
  /* 45 */ kUnused,
  /* 46 */ kUnused,
  /* 47 */ kUnused,
  /* 48 */ kUnused,
  /* 49 */ {"na_ledger_11x17in", 4},
  /* 50 */ kUnused,
  /* 51 */ kUnused,
  /* 52 */ kUnused,
  /* 53 */ kUnused,
  /* 54 */ kUnused,
  /* 55 */ kUnused,
  /* 56 */ kUnused,
  /* 57 */ kUnused,
  /* 58 */ kUnused,
  /* 59 */ kUnused,
  /* 60 */ kUnused,
  /* 61 */ kUnused,
  /* 62 */ kUnused,
  /* 63 */ kUnused,
  /* 64 */ kUnused,
  /* 65 */ kUnused,
  /* 66 */ kUnused,
  /* 67 */ kUnused,
  /* 68 */ kUnused,
  /* 69 */ kUnused,
  /* 70 */ kUnused,
  /* 71 */ kUnused,
  /* 72 */ kUnused,
  /* 73 */ kUnused,
  /* 74 */ kUnused,
  /* 75 */ kUnused,
  /* 76 */ kUnused,
  /* 77 */ kUnused,
  /* 78 */ {"custom_vaslo_7x10in", 52},
  /* 79 */ {"custom_vaslo_4x4in", 59},
  /* 80 */ {"custom_vaslo_12x12in", 61},
  /* 81 */ kUnused,
  /* 82 */ {"custom_vaslo_89x89mm", 58},
};

constexpr ClssDicRow glb_clssdicMismatchModeTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"auto", kNoCode},
  /*  2 */ {"none", kNoCode},
};

constexpr ClssDicRow glb_clssdicHostEnvironmentTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"windows", kNoCode},
  /*  2 */ {"mac", kNoCode},
  /*  3 */ {"linux", kNoCode},
  /*  4 */ {"windows_mobile", kNoCode},
  /*  5 */ {"ios", kNoCode},
  /*  6 */ {"android", kNoCode},
  /*  7 */ {"other", kNoCode},
};

constexpr ClssDicRow glb_clssdicMacAddressSortTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"infrastructure_mode", kNoCode},
  /*  2 */ {"access_point_mode", kNoCode},
  /*  3 */ {"wi_fi_direct_mode", kNoCode},
  /*  4 */ kUnused,
};

constexpr ClssDicRow glb_clssdicDeviceSideGuideTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"OFF", kNoCode},
  /*  2 */ {"ON", kNoCode},
};

constexpr ClssDicRow glb_clssdicPrintPreparationTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"manualfeed", kNoCode},
  /*  2 */ {"disc", kNoCode},
};

constexpr ClssDicRow glb_clssdicTCATbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"AC", kNoCode},
  /*  2 */ {"DC", kNoCode},
  /*  3 */ {"UD", kNoCode},
  /*  4 */ {"CE", kNoCode},
};

constexpr ClssDicRow glb_clssdicSubModel[] = {
  /*  0 */ kUnused,
  /*  1 */ {"type1", kNoCode},
  /*  2 */ {"type2", kNoCode},
};

constexpr ClssDicRow glb_clssdicPanelMedia[] = {
  /*  0 */ kUnused,
  /*  1 */ {"custom-media-type-vaslo-37", kNoCode},
  /*  2 */ {"custom-media-type-vaslo-39", kNoCode},
  /*  3 */ {"custom-media-type-vaslo-41", kNoCode},
};

constexpr ClssDicRow glb_clssdicRemoteUIGuideTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"certification", kNoCode},
};

constexpr ClssDicRow glb_clssdicRemoteUIpagelinkTypeATbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"maintenance_typeA", kNoCode},
  /*  2 */ {"joblog_typeA", kNoCode},
  /*  3 */ {"joblist_typeA", kNoCode},
  /*  4 */ {"hddinfo_typeA", kNoCode},
  /*  5 */ {"eidinfo_typeA", kNoCode},
  /*  6 */ {"ijcpcregistration_typeA", kNoCode},
  /*  7 */ {"downloadcertificate_typeA", kNoCode},
};

constexpr ClssDicRow glb_clssdicRemoteUIpagelinkTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"maintenance", kNoCode},
  /*  2 */ {"joblog", kNoCode},
  /*  3 */ {"joblist", kNoCode},
  /*  4 */ {"hddinfo", kNoCode},
  /*  5 */ {"eidinfo", kNoCode},
  /*  6 */ {"ijcpcregistration", kNoCode},
  /*  7 */ {"downloadcertificate", kNoCode},
};

constexpr ClssDicRow glb_clssdicNextpageTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"OFF", kNoCode},
  /*  2 */ {"ON", kNoCode},
};

constexpr ClssDicRow glb_clssdicPLIagreementTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"unknown", kNoCode},
  /*  2 */ {"disagree", kNoCode},
  /*  3 */ {"agree", kNoCode},
};

constexpr ClssDicRow glb_clssdicStapleSideTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"longside", 1},
  /*  2 */ {"shortside", 2},
};

// Rows 3 and 4 are what "ON" becomes with a staple side; a look-up never gets there.
constexpr ClssDicRow glb_clssdicDuplexPrintTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"OFF", 1},
  /*  2 */ {"ON", 2},
  /*  3 */ {"ON", 3},
  /*  4 */ {"ON", 4},
};

constexpr ClssDicRow glb_clssdicColormodeTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"color", 1},
  /*  2 */ {"monochrome", 2},
  /*  3 */ {"warmblack", 3},
  /*  4 */ {"coldblack", 4},
};

constexpr ClssDicRow glb_clssdicBorderlessTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"OFF", 1},
  /*  2 */ {"ON", 2},
};

constexpr ClssDicRow glb_clssdicDataFormatTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"RAW", kNoCode},
  /*  2 */ {"JPEG", kNoCode},
  /*  3 */ {"JPEGPAGE", kNoCode},
  /*  4 */ {"PWGRaster", kNoCode},
  /*  5 */ {"TIFF", kNoCode},
  /*  6 */ {"PING", kNoCode},  // so spelled by printers
  /*  7 */ {"SGRaster", kNoCode},
  /*  8 */ {"PDF", kNoCode},
};

constexpr ClssDicRow glb_clssdicJobProgressTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"processing", kNoCode},
  /*  2 */ {"stopped", kNoCode},
  /*  3 */ {"canceling", kNoCode},
  /*  4 */ {"busying", kNoCode},
};

constexpr ClssDicRow glb_clssdicStatusDetailTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"AttentionRequired", kNoCode},
  /*  2 */ {"MediaJam", kNoCode},
  /*  3 */ {"DoorOpen", kNoCode},
  /*  4 */ {"MediaEmpty", kNoCode},
  /*  5 */ {"MarkerSupplyAttention", kNoCode},
  /*  6 */ {"DeviceBusy", kNoCode},
  /*  7 */ {"CUSTOM_MISMATCH", kNoCode},
};

constexpr ClssDicRow glb_clssdicStateTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"waitingrender", kNoCode},
  /*  2 */ {"rendering", kNoCode},
  /*  3 */ {"waitingprint", kNoCode},
  /*  4 */ {"printing", kNoCode},
  /*  5 */ {"held", kNoCode},
  /*  6 */ {"storing", kNoCode},
  /*  7 */ {"preparing", kNoCode},
  /*  8 */ {"busying", kNoCode},
};

constexpr ClssDicRow glb_clssdicStatusTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"idle", kNoCode},
  /*  2 */ {"processing", kNoCode},
  /*  3 */ {"stopped", kNoCode},
  /*  4 */ {"notready", kNoCode},
  /*  5 */ {"busying", kNoCode},
  /*  6 */ {"canceling", kNoCode},
};

constexpr ClssDicRow glb_clssdicResponseDetailTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"DeivceUseOtherJob", kNoCode},  // so spelled by printers
  /*  2 */ {"ParameterError", kNoCode},
  /*  3 */ {"NotSupportService", kNoCode},
  /*  4 */ {"NotSupportOperation", kNoCode},
  /*  5 */ {"NotStart", kNoCode},
  /*  6 */ {"IllegalJobID", kNoCode},
  /*  7 */ {"IllegalOperation", kNoCode},
  /*  8 */ {"DataSizeOver", kNoCode},
  /*  9 */ {"Initializing", kNoCode},
  /* 10 */ {"Suspended", kNoCode},
  /* 11 */ {"ShuttingDown", kNoCode},
};

constexpr ClssDicRow glb_clssdicResponseTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"OK", kNoCode},
  /*  2 */ {"NG", kNoCode},
};

constexpr ClssDicRow glb_clssdicIJOperationTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"ModeShift", kNoCode},
  /*  2 */ {"ModeShiftResponse", kNoCode},
  /*  3 */ {"FRomUpMode", kNoCode},  // so spelled by printers
  /*  4 */ {"FRomUpModeResponse", kNoCode},
};

constexpr ClssDicRow glb_clssdicOperationTbl[] = {
  /*  0 */ kUnused,
  /*  1 */ {"GetCapability", kNoCode},
  /*  2 */ {"GetCapabilityResponse", kNoCode},
  /*  3 */ {"GetConfiguration", kNoCode},
  /*  4 */ {"GetConfigurationResponse", kNoCode},
  /*  5 */ {"SetConfiguration", kNoCode},
  /*  6 */ {"SetConfigurationResponse", kNoCode},
  /*  7 */ {"StartJob", kNoCode},
  /*  8 */ {"StartJobResponse", kNoCode},
  /*  9 */ {"EndJob", kNoCode},
  /* 10 */ {"EndJobResponse", kNoCode},
  /* 11 */ {"SendData", kNoCode},
  /* 12 */ {"SendDataResponse", kNoCode},
  /* 13 */ {"GetStatus", kNoCode},
  /* 14 */ {"GetStatusResponse", kNoCode},
  /* 15 */ kUnused,
  /* 16 */ kUnused,
  /* 17 */ kUnused,
  /* 18 */ kUnused,
  /* 19 */ {"PowerOff", kNoCode},
  /* 20 */ {"PowerOffResponse", kNoCode},
  /* 21 */ {"VendorCmd", kNoCode},
  /* 22 */ {"VendorCmdResponse", kNoCode},
  /* 23 */ {"SetJobConfiguration", kNoCode},
  /* 24 */ {"SetJobConfigurationResponse", kNoCode},
  /* 25 */ {"CancelJob", kNoCode},
  /* 26 */ {"CancelJobResponse", kNoCode},
};

// The counts are part of the interface: each is spelled out, and held against its table below.
constexpr std::uint16_t CLSS_NUM_SERVICETYPE_LIST           = 10;
constexpr std::uint16_t CLSS_DICNUM_INKGROUP                = 5;
constexpr std::uint16_t CLSS_DICNUM_INPUTBIN                = 6;
constexpr std::uint16_t CLSS_NUM_PAPERTYPE_DISC_LABEL_PRINT = 3;
constexpr std::uint16_t CLSS_DICNUM_PAPERTYPE               = 30;
constexpr std::uint16_t CLSS_DICNUM_PAPERSIZE               = 83;
constexpr std::uint16_t CLSS_DICNUM_MISMATCH_MODE           = 3;
constexpr std::uint16_t CLSS_DICNUM_HOST_ENVIRONMENT        = 8;
constexpr std::uint16_t CLSS_DICNUM_MACADDRESS_SORT         = 5;
constexpr std::uint16_t CLSS_DICNUM_DEVICE_SIDE_GUIDE       = 3;
constexpr std::uint16_t CLSS_DICNUM_PRINT_PREPARATION       = 3;
constexpr std::uint16_t CLSS_DICNUM_TCA                     = 5;
constexpr std::uint16_t CLSS_DICNUM_SUBMODEL                = 3;
constexpr std::uint16_t CLSS_DICNUM_PANEL_PAPERTYPE         = 4;
constexpr std::uint16_t CLSS_DICNUM_REMOTEUI_GUIDE          = 2;
constexpr std::uint16_t CLSS_DICNUM_REMOTEUI_PAGELINK_TYPEA = 8;
constexpr std::uint16_t CLSS_DICNUM_REMOTEUI_PAGELINK       = 8;
constexpr std::uint16_t CLSS_DICNUM_NEXTPAGE                = 3;
constexpr std::uint16_t CLSS_DICNUM_PLI_AGR                 = 4;
constexpr std::uint16_t CLSS_DICNUM_STAPLESIDE              = 3;
constexpr std::uint16_t CLSS_DICNUM_DUPLEXPRINT             = 5;
constexpr std::uint16_t CLSS_DICNUM_COLORMODE               = 5;
constexpr std::uint16_t CLSS_DICNUM_BORDERLESS              = 3;
constexpr std::uint16_t CLSS_DICNUM_DATAFORMAT              = 9;
constexpr std::uint16_t CLSS_DICNUM_JOBPROGRESS             = 5;
constexpr std::uint16_t CLSS_DICNUM_STATUSDETAIL            = 8;
constexpr std::uint16_t CLSS_DICNUM_STATE                   = 9;
constexpr std::uint16_t CLSS_DICNUM_STATUS                  = 7;
constexpr std::uint16_t CLSS_DICNUM_RESDETAIL               = 12;
constexpr std::uint16_t CLSS_DICNUM_RESPONSE                = 3;
constexpr std::uint16_t CLSS_DICNUM_IJOPERATION             = 5;
constexpr std::uint16_t CLSS_DICNUM_OPERATION               = 27;

constexpr std::uint16_t CLSS_NUM_PAPERTYPE                  = 23;
constexpr std::uint16_t CLSS_NUM_PAPERSIZE                  = 81;
constexpr std::uint16_t CLSS_NUM_PAPERSIZE2                 = 83;

constexpr const char* const glb_NameSpacePrefix[] = {
  /* 0 */ "zirk",
  /* 1 */ "vrx",
  /* 2 */ "tolm",
};

constexpr const char* const glb_NameSpace[] = {
  /* 0 */ PXCL_URI_COMMON,
  /* 1 */ PXCL_URI_VENDOR,
  /* 2 */ PXCL_URI_PRINT,
};

// clang-format on

namespace {

// As keywords are written, whole and with their case.
constexpr bool is_same(const char* first, const char* second) {
  if (first == nullptr || second == nullptr) return false;
  return std::string_view(first) == second;
}

template <std::size_t rows>
constexpr bool has_no_duplicate(const ClssDicRow (&table)[rows]) {
  for (std::size_t i = 0; i < rows; ++i) {
    for (std::size_t j = i + 1; j < rows; ++j) {
      if (is_same(table[i].keyword, table[j].keyword)) return false;
    }
  }
  return true;
}

// A blank or a comma would never be found: a text's value has none.
template <std::size_t rows>
constexpr bool has_values_only(const ClssDicRow (&table)[rows]) {
  for (const ClssDicRow& row : table) {
    const std::string_view word = row.keyword == nullptr ? "" : row.keyword;
    if (word.find_first_of(" ,") != word.npos) return false;
  }
  return true;
}

// A table is sound when its count is right, row 0 is free and no keyword hides another.
template <std::size_t rows>
constexpr bool is_sound(const ClssDicRow (&table)[rows], std::uint16_t count) {
  return rows == count && table[0].keyword == nullptr && has_no_duplicate(table) &&
         has_values_only(table);
}

// What names the elements of a size or type is told from a namespace prefix by the ":" alone.
template <std::size_t rows>
constexpr bool has_no_colon(const ClssDicRow (&table)[rows]) {
  for (const ClssDicRow& row : table) {
    if (row.keyword == nullptr) continue;
    for (const char byte : std::string_view(row.keyword)) {
      if (byte == ':') return false;
    }
  }
  return true;
}
static_assert(has_no_colon(glb_clssdicPaperSizeTbl) && has_no_colon(glb_clssdicPaperTypeTbl));

static_assert(std::size(glb_clssdicServiceTypeTbl) == CLSS_NUM_SERVICETYPE_LIST);
static_assert(has_no_duplicate(glb_clssdicServiceTypeTbl));
static_assert(has_values_only(glb_clssdicServiceTypeTbl));
static_assert(std::size(glb_clssdicDuplexPrintTbl) == CLSS_DICNUM_DUPLEXPRINT);
static_assert(has_values_only(glb_clssdicDuplexPrintTbl));
static_assert(is_sound(glb_clssdicInkgroupTbl, CLSS_DICNUM_INKGROUP));
static_assert(is_sound(glb_clssdicInputbinTbl, CLSS_DICNUM_INPUTBIN));
static_assert(is_sound(glb_clssdicPaperTypeDiscLabelPrintTbl, CLSS_NUM_PAPERTYPE_DISC_LABEL_PRINT));
static_assert(is_sound(glb_clssdicPaperTypeTbl, CLSS_DICNUM_PAPERTYPE));
static_assert(is_sound(glb_clssdicPaperSizeTbl, CLSS_DICNUM_PAPERSIZE));
static_assert(is_sound(glb_clssdicMismatchModeTbl, CLSS_DICNUM_MISMATCH_MODE));
static_assert(is_sound(glb_clssdicHostEnvironmentTbl, CLSS_DICNUM_HOST_ENVIRONMENT));
static_assert(is_sound(glb_clssdicMacAddressSortTbl, CLSS_DICNUM_MACADDRESS_SORT));
static_assert(is_sound(glb_clssdicDeviceSideGuideTbl, CLSS_DICNUM_DEVICE_SIDE_GUIDE));
static_assert(is_sound(glb_clssdicPrintPreparationTbl, CLSS_DICNUM_PRINT_PREPARATION));
static_assert(is_sound(glb_clssdicTCATbl, CLSS_DICNUM_TCA));
static_assert(is_sound(glb_clssdicSubModel, CLSS_DICNUM_SUBMODEL));
static_assert(is_sound(glb_clssdicPanelMedia, CLSS_DICNUM_PANEL_PAPERTYPE));
static_assert(is_sound(glb_clssdicRemoteUIGuideTbl, CLSS_DICNUM_REMOTEUI_GUIDE));
static_assert(is_sound(glb_clssdicRemoteUIpagelinkTypeATbl, CLSS_DICNUM_REMOTEUI_PAGELINK_TYPEA));
static_assert(is_sound(glb_clssdicRemoteUIpagelinkTbl, CLSS_DICNUM_REMOTEUI_PAGELINK));
static_assert(is_sound(glb_clssdicNextpageTbl, CLSS_DICNUM_NEXTPAGE));
static_assert(is_sound(glb_clssdicPLIagreementTbl, CLSS_DICNUM_PLI_AGR));
static_assert(is_sound(glb_clssdicStapleSideTbl, CLSS_DICNUM_STAPLESIDE));
static_assert(is_sound(glb_clssdicColormodeTbl, CLSS_DICNUM_COLORMODE));
static_assert(is_sound(glb_clssdicBorderlessTbl, CLSS_DICNUM_BORDERLESS));
static_assert(is_sound(glb_clssdicDataFormatTbl, CLSS_DICNUM_DATAFORMAT));
static_assert(is_sound(glb_clssdicJobProgressTbl, CLSS_DICNUM_JOBPROGRESS));
static_assert(is_sound(glb_clssdicStatusDetailTbl, CLSS_DICNUM_STATUSDETAIL));
static_assert(is_sound(glb_clssdicStateTbl, CLSS_DICNUM_STATE));
static_assert(is_sound(glb_clssdicStatusTbl, CLSS_DICNUM_STATUS));
static_assert(is_sound(glb_clssdicResponseDetailTbl, CLSS_DICNUM_RESDETAIL));
static_assert(is_sound(glb_clssdicResponseTbl, CLSS_DICNUM_RESPONSE));
static_assert(is_sound(glb_clssdicIJOperationTbl, CLSS_DICNUM_IJOPERATION));
static_assert(is_sound(glb_clssdicOperationTbl, CLSS_DICNUM_OPERATION));

using namespace pxcl::keyed;

static_assert(is_same(glb_clssdicServiceTypeTbl[kServicePrint].keyword, "print"));
static_assert(is_same(glb_clssdicServiceTypeTbl[kServiceDevice].keyword, "device"));
static_assert(is_same(glb_clssdicServiceTypeTbl[kServiceScan].keyword, "scan"));
static_assert(is_same(glb_clssdicServiceTypeTbl[kServiceMaintenance].keyword, "maintenance"));
static_assert(is_same(glb_clssdicOperationTbl[kOperationGetCapabilityResponse].keyword,
                      "GetCapabilityResponse"));
static_assert(is_same(glb_clssdicOperationTbl[kOperationGetStatusResponse].keyword,
                      "GetStatusResponse"));
static_assert(is_same(glb_clssdicOperationTbl[kOperationVendorCmdResponse].keyword,
                      "VendorCmdResponse"));
static_assert(is_same(glb_clssdicResponseTbl[kResponseOk].keyword, "OK"));
static_assert(is_same(glb_clssdicResponseTbl[kResponseNg].keyword, "NG"));
static_assert(is_same(glb_clssdicIJOperationTbl[kIJOperationModeShiftResponse].keyword,
                      "ModeShiftResponse"));
static_assert(is_same(glb_clssdicStatusDetailTbl[kStatusDetailCustomMismatch].keyword,
                      "CUSTOM_MISMATCH"));
static_assert(is_same(glb_clssdicTCATbl[kInkAc].keyword, "AC"));
static_assert(is_same(glb_clssdicHostEnvironmentTbl[kHostLinux].keyword, "linux"));
static_assert(is_same(glb_clssdicHostEnvironmentTbl[kHostOther].keyword, "other"));
static_assert(is_same(glb_clssdicDataFormatTbl[kFormatRaw].keyword, "RAW"));
static_assert(is_same(glb_clssdicDataFormatTbl[kFormatJpeg].keyword, "JPEG"));
static_assert(is_same(glb_clssdicDataFormatTbl[kFormatJpegPage].keyword, "JPEGPAGE"));
static_assert(is_same(glb_clssdicDataFormatTbl[kFormatPwgRaster].keyword, "PWGRaster"));
static_assert(is_same(glb_clssdicBorderlessTbl[kBorderlessOff].keyword, "OFF"));
static_assert(is_same(glb_clssdicBorderlessTbl[kBorderlessOn].keyword, "ON"));
static_assert(is_same(glb_clssdicColormodeTbl[kColorModeColor].keyword, "color"));
static_assert(is_same(glb_clssdicColormodeTbl[kColorModeMonochrome].keyword, "monochrome"));
static_assert(is_same(glb_clssdicDuplexPrintTbl[kDuplexOff].keyword, "OFF"));
static_assert(is_same(glb_clssdicDuplexPrintTbl[kDuplexOn].keyword, "ON"));
static_assert(is_same(glb_clssdicDuplexPrintTbl[kDuplexLongSide].keyword, "ON"));
static_assert(is_same(glb_clssdicDuplexPrintTbl[kDuplexShortSide].keyword, "ON"));
static_assert(is_same(glb_clssdicStapleSideTbl[kStapleLongSide].keyword, "longside"));
static_assert(is_same(glb_clssdicStapleSideTbl[kStapleShortSide].keyword, "shortside"));
static_assert(is_same(glb_clssdicPaperSizeTbl[kPaperSizeA4].keyword, "iso_a4_210x297mm"));
static_assert(is_same(glb_clssdicPaperTypeTbl[kPaperTypeStationery].keyword, "stationery"));
static_assert(is_same(glb_NameSpacePrefix[kNameSpaceCommon], "zirk"));
static_assert(is_same(glb_NameSpacePrefix[kNameSpaceVendor], "vrx"));
static_assert(is_same(glb_NameSpacePrefix[kNameSpaceSchema], "tolm"));

static_assert(kOperationRows == CLSS_DICNUM_OPERATION);
static_assert(kIJOperationRows == CLSS_DICNUM_IJOPERATION);
static_assert(kPaperSizeRows == CLSS_DICNUM_PAPERSIZE);
static_assert(kPaperTypeRows == CLSS_DICNUM_PAPERTYPE);

}  // namespace

namespace pxcl::keyed {

constexpr WordIndex kPaperSizeWords = index_words(glb_clssdicPaperSizeTbl);
constexpr WordIndex kPaperTypeWords = index_words(glb_clssdicPaperTypeTbl);
constexpr WordIndex kOperationWords = index_words(glb_clssdicOperationTbl);
constexpr WordIndex kStatusWords = index_words(glb_clssdicStatusTbl);
constexpr WordIndex kStatusDetailWords = index_words(glb_clssdicStatusDetailTbl);
constexpr WordIndex kStateWords = index_words(glb_clssdicStateTbl);
constexpr WordIndex kJobProgressWords = index_words(glb_clssdicJobProgressTbl);
constexpr WordIndex kResponseDetailWords = index_words(glb_clssdicResponseDetailTbl);

}  // namespace pxcl::keyed
