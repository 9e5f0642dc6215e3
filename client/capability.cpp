// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "client/capability.hpp"

#include <pxcl.h>

#include <algorithm>
#include <limits>

#include "client/reply.hpp"

namespace pxcl::client {
namespace {

constexpr std::uint16_t kRecordVersion = 3;
constexpr std::uint16_t kLinux = 3;
constexpr std::uint16_t kMismatchNone = 2;
constexpr std::uint16_t kOff = 1, kOn = 2;  // of the switches in nextpage and device_side_guide
constexpr std::int32_t kYes = 2;
constexpr std::int32_t kNothingListed = -7;

Error unreadable() {
  return {Fault::kBadReply,
          "What the printer says that it can do is not to be understood. Try again; if it stays "
          "so, update its firmware."};
}

std::optional<PrintArea> print_area(const std::uint32_t (&area)[2],
                                    const std::uint32_t (&margins)[4]) {
  if (area[0] == 0 || area[1] == 0) return std::nullopt;
  return PrintArea{{area[0], area[1]}, std::to_array(margins)};
}

PaperSize size_of(const ClssPaperSize& record, const Word& word) {
  return {.size = word,
          .outline = outline_of(record.paperSize),
          .border = print_area(record.printAreaBorder, record.marginBorder),
          .borderless = print_area(record.printAreaBorderless, record.marginBorderless),
          .duplex = print_area(record.printAreaDuplex, record.marginDuplex)};
}

template <std::size_t count>
std::vector<Word> words_of(const Dictionary& dictionary, const std::uint16_t (&rows)[count]) {
  std::vector<Word> words;
  for (const std::uint16_t row : rows) {
    const std::optional<Word> word = dictionary.at(row);
    if (!word) break;
    words.push_back(*word);
  }
  return words;
}

MediaType media_of(const ClssMediaType& record, const Word& word) {
  return {.type = word,
          .border = record.borderlessOff == kYes,
          .borderless = record.borderlessOn == kYes,
          .color_modes = words_of(color_modes(), record.colorModes),
          .duplex = words_of(duplex_modes(), record.duplexModes)};
}

// All records of a reply by one of the calls that decode them at once; none when it lists nothing or can't be read.
template <typename Record, typename Decode>
std::optional<std::vector<Record>> records_of(std::string_view document, Decode decode) {
  std::int32_t count = 0;
  const std::int32_t status = decode(document.data(), document.size(), nullptr, &count);
  if (status == kNothingListed) return std::vector<Record>();
  if (status != 0 || count < 0) return std::nullopt;
  std::vector<Record> records(static_cast<std::size_t>(count));
  for (Record& record : records) record.version = kRecordVersion;
  if (count > 0 && decode(document.data(), document.size(), records.data(), &count) != 0) {
    return std::nullopt;
  }
  return records;
}

bool read_sizes(std::string_view document, PrintCapability& capability) {
  const auto records =
      records_of<ClssPaperSize>(document, PXCL_ParseCapabilityResponsePrint_PaperSizes);
  if (!records) return false;
  for (const ClssPaperSize& record : *records) {
    const std::optional<Word> word = paper_sizes().at(record.paperSize);
    if (word) capability.sizes.push_back(size_of(record, *word));
  }
  return true;
}

bool read_media(std::string_view document, PrintCapability& capability) {
  const auto records =
      records_of<ClssMediaType>(document, PXCL_ParseCapabilityResponsePrint_MediaTypes);
  if (!records) return false;
  for (const ClssMediaType& record : *records) {
    const std::optional<Word> word = paper_types().at(record.paperType);
    if (word) capability.media.push_back(media_of(record, *word));
  }
  return true;
}

bool read_pixels(std::string_view document, PrintCapability& capability) {
  std::uint16_t least[2] = {}, most[2] = {};
  const std::int32_t status = CLSS_ParseCapabilityResponsePrint_Pixels(
      document.data(), document.size(), &least[0], &least[1], &most[0], &most[1]);
  if (status == kNothingListed) return true;
  if (status != 0) return false;
  capability.max_pixels = Area{most[0], most[1]};
  if (least[0] != 0 && least[1] != 0) capability.min_pixels = Area{least[0], least[1]};
  return true;
}

// The rows of a dictionary that `is_listed` says the reply lists.
template <typename IsListed>
std::vector<Word> listed(const Dictionary& dictionary, IsListed isListed) {
  std::vector<Word> words;
  for (std::uint16_t row = 1; row < dictionary.count; ++row) {
    const std::optional<Word> word = dictionary.at(row);
    if (word && isListed(row)) words.push_back(*word);
  }
  return words;
}

void read_features(std::string_view document, PrintCapability& capability) {
  const char* const text = document.data();
  const std::uint64_t length = document.size();
  capability.formats = listed(data_formats(), [=](std::uint16_t row) {
    return CLSS_ParseCapabilityResponsePrint_FormatType(text, length, row) == kYes;
  });
  capability.print_preparations = listed(print_preparations(), [=](std::uint16_t row) {
    return CLSS_ParseCapabilityResponsePrint_PrintPreparation(text, length, row) == row;
  });
  const auto host = CLSS_ParseCapabilityResponsePrint_HostEnvironment(text, length, kLinux);
  capability.host_environment = host_environments().at(static_cast<std::uint16_t>(host));
  capability.next_page = CLSS_ParseCapabilityResponsePrint_NextPage(text, length, kOff) == kOff &&
                         CLSS_ParseCapabilityResponsePrint_NextPage(text, length, kOn) == kOn;
  capability.job_queue = CLSS_ParseCapabilityResponsePrint_JobQueue(text, length) == kYes;
  capability.date_time = CLSS_ParseCapabilityResponsePrint_DateTime(text, length) == kYes;
  capability.mismatch_none =
      CLSS_ParseCapabilityResponsePrint_MismatchMode(text, length, kMismatchNone) == kMismatchNone;
  capability.disc_labels = CLSS_ParseCapabilityResponsePrint_IsDiscLabelPrint(text, length) == kYes;
  capability.disc_guide =
      CLSS_ParseCapabilityResponsePrint_DVD_DeviceSideGuide(text, length, kOn) == kOn;
}

}  // namespace

std::optional<Outline> outline_of(std::uint16_t paperSize) {
  const std::uint64_t both = CLSS_GetPaperOutwardSize(paperSize);
  const auto width = static_cast<std::int32_t>(both & 0xFFFFFFFF);
  const auto height = static_cast<std::int32_t>(both >> 32);
  if (width <= 0 || height <= 0) return std::nullopt;
  return Outline{width, height};
}

Result<PrintCapability> read_print_capability(std::string document) {
  const Asked asked = {.operation = "GetCapability", .service = Service::kPrint};
  if (Result<void> good = check_reply(document, asked); !good) return std::move(good).error();
  PrintCapability capability = {};
  if (!read_sizes(document, capability) || !read_media(document, capability) ||
      !read_pixels(document, capability)) {
    return unreadable();
  }
  read_features(document, capability);
  capability.document = std::move(document);
  return capability;
}

Result<MaintenanceCapability> read_maintenance_capability(std::string document) {
  const Asked asked = {.operation = "GetCapability", .service = Service::kMaintenance};
  if (Result<void> good = check_reply(document, asked); !good) return std::move(good).error();
  MaintenanceCapability capability = {};
  const auto host = CLSS_ParseCapabilityResponseMaintenance_HostEnvironment(
      document.data(), document.size(), kLinux);
  capability.host_environment = host_environments().at(static_cast<std::uint16_t>(host));
  capability.date_time =
      CLSS_ParseCapabilityResponseMaintenance_DateTime(document.data(), document.size()) == kYes;
  capability.document = std::move(document);
  return capability;
}

}  // namespace pxcl::client
