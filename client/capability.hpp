// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "client/result.hpp"
#include "client/words.hpp"

namespace pxcl::client {

/// Two numbers as the printer states them: width and height, in its own units (pixels of its printing resolution).
struct Area {
  std::uint32_t width;
  std::uint32_t height;
};

/// Where one kind of printing may put ink on a sheet, in the printer's units.
struct PrintArea {
  Area area;
  std::array<std::uint32_t, 4> margins;  ///< In the printer's order.
};

/// Outer dimensions of a sheet in hundredths of a millimetre.
struct Outline {
  std::int32_t width;
  std::int32_t height;
};

/// The outer dimensions of a row of the paper sizes; none when they are not known.
std::optional<Outline> outline_of(std::uint16_t paperSize);

/// A paper size that the printer offers.
struct PaperSize {
  Word size;
  std::optional<Outline> outline;
  std::optional<PrintArea>
      border;  ///< Printing with borders; none when the size can't be printed so.
  std::optional<PrintArea> borderless;  ///< Borderless printing.
  std::optional<PrintArea> duplex;      ///< Printing on both sides.
};

/// A media type that the printer offers.
struct MediaType {
  Word type;
  bool border;                    ///< Can be printed with borders.
  bool borderless;                ///< Can be printed without.
  std::vector<Word> color_modes;  ///< Rows of color_modes().
  std::vector<Word> duplex;  ///< Rows of duplex_modes(); all but kDuplexOff have the keyword "ON".
};

/// What the print service can do.
struct PrintCapability {
  std::string document;  ///< The reply itself; some commands are made from it.
  std::vector<PaperSize> sizes;
  std::vector<MediaType> media;
  std::vector<Word> formats;  ///< Forms in which pages can be sent.
  std::optional<Area> min_pixels;
  std::optional<Area> max_pixels;
  std::optional<Word>
      host_environment;  ///< What a job from here names: "linux", or "other"; none: it is not told.
  std::vector<Word> print_preparations;  ///< What can be asked to be loaded by hand before a page.
  bool next_page;                        ///< Takes word of whether another page follows.
  bool job_queue;
  bool date_time;  ///< Takes the time with a job.
  bool
      mismatch_none;  ///< Knows the mode for other paper than the job's that jobs from here name, "none".
  bool disc_labels;  ///< Has media for disc labels.
  bool disc_guide;   ///< Guides its user through loading a disc.
};

/// What the maintenance service can do.
struct MaintenanceCapability {
  std::string document;
  std::optional<Word> host_environment;
  bool date_time;
};

/// Reads the answer to GetCapability; kBadReply when it is none, or can't be read as a whole, and kRefused for "NG".
Result<PrintCapability> read_print_capability(std::string document);
Result<MaintenanceCapability> read_maintenance_capability(std::string document);

}  // namespace pxcl::client
