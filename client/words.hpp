// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <pxcl.h>

#include <cstdint>
#include <optional>
#include <string_view>

namespace pxcl::client {

/// What the records of `pxcl.h` hold in place of a row: absent, or in no dictionary.
inline constexpr std::uint16_t kNoRow = 65535;

/// A keyword of one of the protocol's dictionaries: its row there and its spelling.
struct Word {
  std::uint16_t row;
  std::string_view keyword;

  friend bool operator==(const Word& word, std::uint16_t other) { return word.row == other; }
  friend bool operator==(const Word& first, const Word& second) = default;
};

/// A dictionary of `pxcl.h` with the number of its rows.
struct Dictionary {
  const ClssDicRow* rows;
  std::uint16_t count;

  /// The keyword in a row; none for a row that is unused or not there, 65535 ("unknown") included.
  [[nodiscard]] std::optional<Word> at(std::uint16_t row) const;

  /// The keyword of this spelling.
  [[nodiscard]] std::optional<Word> find(std::string_view keyword) const;
};

Dictionary paper_sizes();
Dictionary paper_types();
Dictionary panel_types();  ///< Types that are chosen on the printer's panel.
Dictionary color_modes();
Dictionary duplex_modes();
Dictionary data_formats();
Dictionary printer_states();
Dictionary printer_state_details();
Dictionary job_progresses();
Dictionary job_states();
Dictionary host_environments();
Dictionary print_preparations();
Dictionary operations();
Dictionary service_types();
Dictionary refusals();  ///< Why a command was answered "NG".

/// Rows of service_types() that the client speaks to.
enum class Service : std::uint16_t { kPrint = 0, kDevice = 1, kMaintenance = 3 };

/// Rows that the client acts on.
enum PrinterStateRow : std::uint16_t {
  kIdle = 1,
  kProcessing,
  kStopped,
  kNotReady,
  kBusying,
  kCanceling
};
enum StateDetailRow : std::uint16_t {
  kAttentionRequired = 1,
  kMediaJam,
  kDoorOpen,
  kMediaEmpty,
  kMarkerSupplyAttention,
  kDeviceBusy,
  kPaperMismatch
};
enum JobProgressRow : std::uint16_t { kJobProcessing = 1, kJobStopped, kJobCanceling, kJobBusying };
enum DuplexRow : std::uint16_t { kDuplexOff = 1, kDuplexOn, kDuplexLongSide, kDuplexShortSide };
enum BorderlessRow : std::uint16_t { kBorderlessOff = 1, kBorderlessOn };
inline constexpr std::uint16_t kPwgRaster = 4;
inline constexpr std::uint16_t kSuspended = 10;  // of refusals()

}  // namespace pxcl::client
