// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// A virtual printer that is talked to with the library: its builders write the commands, its parsers read the replies.

#pragma once

#include <gtest/gtest.h>
#include <pxcl.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "printer/virtual_printer.hpp"
#include "rasters.hpp"
#include "tests/support/folder.hpp"

namespace pxcl::printer {

inline constexpr char kJob[] = "00000042";
inline constexpr std::uint16_t kPrint = 0, kDevice = 1, kMaintenance = 3;
inline constexpr std::uint16_t kUnknown = 65535;

/// The document that a builder of the library writes; its last three arguments are buffer, size and length.
template <typename Builder, typename... Arguments>
std::string built(Builder builder, Arguments... arguments) {
  std::string document(4096, '\0');
  std::uint64_t length = 0;
  EXPECT_EQ(builder(arguments..., document.data(), document.size(), &length), 0);
  document.resize(length);
  return document;
}

/// The same of the few builders that take a service behind the length.
template <typename Builder>
std::string built_for(Builder builder, std::int32_t service) {
  const auto reordered = [&](char* buffer, std::uint64_t size, std::uint64_t* length) {
    return builder(buffer, size, length, service);
  };
  return built(reordered);
}

/// The documents that tests need most, of the job kJob.
std::string start(const char* job = kJob, std::uint16_t service = kPrint);
std::string configure(const std::string& capability, const ClssPrintSettings& settings);
std::string page(std::uint16_t next_page);
std::string send(const std::string& data);
std::string end(const char* job = kJob, std::uint16_t service = kPrint);
std::string cancel(const char* job = kJob, std::uint16_t service = kPrint);

inline constexpr std::uint16_t kLastPage = 1, kAnotherFollows = 2;

/// `text` with one part replaced, which must be there.
std::string with(std::string text, std::string_view part, std::string_view instead);

/// A raster of one page.
std::string raster_page(RasterForm form = RasterForm::kPwg);

/// "OK", or the response detail; a sentence when the library can't read the reply.
std::string outcome(const std::string& reply);

/// The text at a path key; empty when there is none.
std::string text_at(const std::string& reply, const std::string& key);

class Dialogue {
 public:
  explicit Dialogue(Profile profile, const std::vector<std::string>& faults = {});
  explicit Dialogue(std::string_view profile, const std::vector<std::string>& faults = {})
      : Dialogue(profile_named(profile), faults) {}

  /// The reply, which has to be one.
  std::string say(const std::string& request);
  std::string outcome_of(const std::string& request) { return outcome(say(request)); }

  /// Opens and configures a job for a paper of the dictionaries, or for what the first bin holds.
  void open_job(std::uint16_t size = kUnknown, std::uint16_t type = kUnknown,
                std::uint16_t duplex = kUnknown);
  /// Begins a page and sends it; what came of the beginning.
  std::string send_page(std::uint16_t next_page);

  /// With the job kJob, if it is open.
  ClssStatus status();
  std::string capability(std::int32_t service = kPrint);

  Folder folder;
  VirtualPrinter printer;
};

}  // namespace pxcl::printer
