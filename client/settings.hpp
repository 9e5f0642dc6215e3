// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <optional>
#include <string>

#include "client/capability.hpp"
#include "client/result.hpp"
#include "client/status.hpp"

namespace pxcl::client {

/// What somebody wants; what is absent is chosen for them.
struct Wishes {
  std::optional<std::string> size;  ///< Keyword of paper_sizes(); absent: that of the loaded paper.
  std::optional<std::string> type;  ///< Keyword of paper_types(); absent: that of the loaded paper.
  std::optional<bool>
      borderless;  ///< Absent: with borders on plain paper, otherwise borderless if possible.
  std::optional<std::string>
      color_mode;  ///< Keyword of color_modes(); absent: "color" or else the paper's first.
  std::optional<DuplexRow> duplex;  ///< kDuplexOn: whichever side the printer offers. Absent: off.
};

/// What a job is printed on, and how: complete, and possible on this printer.
struct Settings {
  Word size;
  Word type;
  bool borderless;
  std::optional<Word> color_mode;  ///< Absent: the paper has no choice.
  std::optional<Word> duplex;      ///< Row of duplex_modes(); absent: the paper has no choice.
  Outline outline;                 ///< The sheet, in hundredths of a millimetre.
  PrintArea
      print_area;  ///< The part of it that this kind of printing reaches, in the printer's units.
};

/// Completes wishes from the loaded paper and from what the printer offers. kUnsuitable, with a sentence that names what is
/// possible instead, when a wish can't be met or the loaded paper leaves a choice open.
Result<Settings> complete_settings(const Wishes& wishes, const PrintCapability& capability,
                                   const Status& status);

}  // namespace pxcl::client
