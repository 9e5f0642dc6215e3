// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "printer/keywords.hpp"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace pxcl::printer {

namespace {

struct NamespaceRow {
  Namespace space;
  std::string_view prefix;
  std::string_view uri;
};

constexpr NamespaceRow kNamespaces[] = {
    {Namespace::kCommon, "zirk", PXCL_NAMESPACE_HOST "/ns/cmd/2008/07/common/"},
    {Namespace::kVendor, "vrx", PXCL_NAMESPACE_HOST "/ns/cmd/2008/07/vaslo/"},
    {Namespace::kSchema, "tolm", PXCL_NAMESPACE_HOST "/ns/wdp/2008/01/print/"},
};

constexpr const NamespaceRow& row_of(Namespace space) {
  return kNamespaces[static_cast<std::size_t>(space)];
}

std::optional<Namespace> find_namespace(std::string_view text,
                                        std::string_view NamespaceRow::*field) {
  const auto row = std::ranges::find(kNamespaces, text, field);
  if (row == std::end(kNamespaces)) return std::nullopt;
  return row->space;
}

// In the order of Service.
constexpr std::string_view kServiceWords[] = {"print", "device", "maintenance"};

// The sizes and types that the protocol has words for, whatever a printer has.
constexpr std::string_view kPaperSizeWords[] = {
    "na_letter_8.5x11in",     "na_legal_8.5x14in",
    "iso_a5_148x210mm",       "iso_a4_210x297mm",
    "iso_a3_297x420mm",       "custom_vaslo_329x483mm",
    "jis_b5_182x257mm",       "jis_b4_257x364mm",
    "na_index-4x6_4x6in",     "na_5x7_5x7in",
    "custom_vaslo_203x254mm", "custom_vaslo_254x304mm",
    "custom_vaslo_355x431mm", "custom_vaslo_89x127mm",
    "custom_vaslo_127x178mm", "jpn_hagaki_100x148mm",
    "custom_vaslo_54x86mm",   "custom_vaslo_55x91mm",
    "custom_vaslo_101x180mm", "na_number-10_4.125x9.5in",
    "iso_dl_110x220mm",       "na_executive_7.25x10.5in",
    "iso_a6_105x148mm",       "custom_vaslo_215.9x317.5mm",
    "custom_vaslo_216x355mm", "na_oficio_8.5x13.4in",
    "na_foolscap_8.5x13in",   "custom_vaslo_215x345mm",
    "custom_vaslo_127x127mm", "na_ledger_11x17in",
    "custom_vaslo_7x10in",    "custom_vaslo_4x4in",
    "custom_vaslo_12x12in",   "custom_vaslo_89x89mm",
};

constexpr std::string_view kPaperTypeWords[] = {
    "stationery",
    "photographic",
    "auto",
    "custom-media-type-vaslo-1",
    "custom-media-type-vaslo-2",
    "custom-media-type-vaslo-3",
    "custom-media-type-vaslo-4",
    "custom-media-type-vaslo-5",
    "custom-media-type-vaslo-6",
    "custom-media-type-vaslo-9",
    "custom-media-type-vaslo-11",
    "custom-media-type-vaslo-12",
    "custom-media-type-vaslo-14",
    "custom-media-type-vaslo-15",
    "custom-media-type-vaslo-16",
    "custom-media-type-vaslo-17",
    "custom-media-type-vaslo-18",
    "custom-media-type-vaslo-19",
    "custom-media-type-vaslo-33",
    "custom-media-type-vaslo-34",
    "custom-media-type-vaslo-43",
    "custom-media-type-vaslo-45",
    "custom-media-type-vaslo-49",
    "custom-media-type-vaslo-55",
    "custom-media-type-vaslo-custom",
};

constexpr std::string_view kPanelTypeWords[] = {
    "custom-media-type-vaslo-37", "custom-media-type-vaslo-39", "custom-media-type-vaslo-41"};
constexpr std::string_view kColorModeWords[] = {"color", "monochrome", "warmblack", "coldblack"};
constexpr std::string_view kSwitchWords[] = {"OFF", "ON"};
constexpr std::string_view kStapleSideWords[] = {"longside", "shortside"};
// "PING" is what printers say.
constexpr std::string_view kDataFormatWords[] = {"RAW",  "JPEG", "JPEGPAGE", "PWGRaster",
                                                 "TIFF", "PING", "SGRaster", "PDF"};
constexpr std::string_view kReceivedFormatWords[] = {"RAW", "JPEG", "JPEGPAGE", "PWGRaster"};
constexpr std::string_view kPreparationWords[] = {"manualfeed", "disc"};
constexpr std::string_view kHostWords[] = {"windows", "mac",     "linux", "windows_mobile",
                                           "ios",     "android", "other"};
constexpr std::string_view kMismatchModeWords[] = {"auto", "none"};
constexpr std::string_view kAgreementWords[] = {"unknown", "disagree", "agree"};
constexpr std::string_view kInkStateWords[] = {"AC", "DC", "UD", "CE"};
constexpr std::string_view kInkGroupWords[] = {"all", "inkgroup1", "inkgroup2", "inkgroup3"};
constexpr std::string_view kTestPatternWords[] = {"nozzle_check", "auto_registration"};
// "DeivceUseOtherJob" is what printers say.
constexpr std::string_view kRefusalWords[] = {
    "DeivceUseOtherJob", "ParameterError", "NotSupportService", "NotSupportOperation",
    "NotStart",          "IllegalJobID",   "IllegalOperation",  "DataSizeOver",
    "Initializing",      "Suspended",      "ShuttingDown"};

}  // namespace

constexpr Keywords kPaperSizes = kPaperSizeWords;
constexpr Keywords kPaperTypes = kPaperTypeWords;
constexpr Keywords kPanelTypes = kPanelTypeWords;
constexpr Keywords kColorModes = kColorModeWords;
constexpr Keywords kSwitches = kSwitchWords;
constexpr Keywords kStapleSides = kStapleSideWords;
constexpr Keywords kDataFormats = kDataFormatWords;
constexpr Keywords kReceivedFormats = kReceivedFormatWords;
constexpr Keywords kPreparations = kPreparationWords;
constexpr Keywords kHosts = kHostWords;
constexpr Keywords kMismatchModes = kMismatchModeWords;
constexpr Keywords kAgreements = kAgreementWords;
constexpr Keywords kInkStates = kInkStateWords;
constexpr Keywords kInkGroups = kInkGroupWords;
constexpr Keywords kTestPatterns = kTestPatternWords;
constexpr Keywords kRefusals = kRefusalWords;

std::string_view prefix_of(Namespace space) {
  return row_of(space).prefix;
}

std::string_view uri_of(Namespace space) {
  return row_of(space).uri;
}

std::optional<Namespace> namespace_of_prefix(std::string_view prefix) {
  return find_namespace(prefix, &NamespaceRow::prefix);
}

std::optional<Namespace> namespace_of_uri(std::string_view uri) {
  return find_namespace(uri, &NamespaceRow::uri);
}

std::optional<Service> service_of(std::string_view word) {
  const auto at = std::ranges::find(kServiceWords, word);
  if (at == std::end(kServiceWords)) return std::nullopt;
  return static_cast<Service>(at - std::begin(kServiceWords));
}

bool is_one_of(std::string_view word, Keywords words) {
  return std::ranges::find(words, word) != words.end();
}

std::string listed(Keywords words) {
  std::string list;
  for (const std::string_view word : words) {
    if (!list.empty()) list += ',';
    list += word;
  }
  return list;
}

std::optional<Extent> extent_of(std::string_view paper_size) {
  constexpr double kUnitsPerInch = 600, kMillimetresPerInch = 25.4;
  if (!paper_size.ends_with("mm") && !paper_size.ends_with("in")) return std::nullopt;
  const double unit =
      paper_size.ends_with("in") ? kUnitsPerInch : kUnitsPerInch / kMillimetresPerInch;
  const std::string_view digits = paper_size.substr(paper_size.rfind('_') + 1);
  const char* const end = digits.data() + digits.size();
  Extent extent{};
  const auto width = std::from_chars(digits.data(), end, extent.width);
  if (width.ec != std::errc{} || width.ptr == end || *width.ptr != 'x') return std::nullopt;
  if (std::from_chars(width.ptr + 1, end, extent.height).ec != std::errc{}) return std::nullopt;
  return Extent{extent.width * unit, extent.height * unit};
}

}  // namespace pxcl::printer
