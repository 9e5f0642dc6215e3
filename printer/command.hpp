// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Commands as a printer reads them: each operation's parameters, their order, namespaces and values stand in tables.

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "printer/keywords.hpp"

namespace pxcl::printer {

/// The longest command document that is read; the longest that the protocol makes has about two thousand bytes.
inline constexpr std::size_t kLongestCommand = std::size_t{16} << 10;

/// What is to be done. The operation VendorCmd is several.
enum class Action {
  kGetCapability,
  kGetConfiguration,
  kGetStatus,
  kGetJobIdList,
  kStartJob,
  kSetJobConfiguration,
  kSetConfiguration,
  kSetPageConfiguration,
  kSendData,
  kEndJob,
  kCancelJob,
  kTestPrint,
  kCleaning,
  kModeShift,
  kFRomUpMode,
  kHandOverOff,
  kPowerOff,
};

/// Why a command is answered with "NG".
struct Refusal {
  std::string_view detail;  ///< One of kRefusals.
  std::string reason;       ///< For people: a part of a sentence.
};

struct Parameter {
  std::string name;
  Namespace space;
  std::string text;
};

struct Command {
  std::string operation;         ///< As it was sent: a plain word, known or not.
  std::string vendor_operation;  ///< Of a VendorCmd.
  std::string service_word;
  Service service = Service::kPrint;
  Action action = Action::kGetStatus;
  std::vector<Parameter> parameters;

  /// Null when it was left out.
  [[nodiscard]] const Parameter* find(std::string_view name) const;
  /// Empty when it was left out.
  [[nodiscard]] std::string_view text(std::string_view name) const;
};

struct CommandReading {
  std::optional<Command>
      command;  ///< None when nobody can tell what is asked: `error` is a sentence then.
  std::optional<Refusal> refusal;  ///< The command can't be carried out as it stands.
  std::string error;
};

/// Reads a command document, without the data behind it.
[[nodiscard]] CommandReading read_command(std::string_view document);

/// Every operation's name once, as faults name them; the operation VendorCmd by its vendor operations too.
[[nodiscard]] std::vector<std::string_view> operation_names();

}  // namespace pxcl::printer
