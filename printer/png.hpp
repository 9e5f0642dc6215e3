// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>

namespace pxcl::printer {

struct PngSize {
  unsigned width;         ///< Pixels, 1 or more.
  unsigned height;        ///< Pixels, 1 or more.
  unsigned channels;      ///< 1 for gray, 3 for RGB.
  unsigned x_resolution;  ///< Dots per inch; the file names none when this or the next is 0.
  unsigned y_resolution;
};

/// Writes one PNG file of 8 bits a channel, row by row. Every failure is thrown as std::runtime_error with a sentence
/// that names the file; a file that has not been finished is removed.
class PngFile {
 public:
  PngFile(std::filesystem::path path, const PngSize& size);
  ~PngFile();

  /// Writes the next row: width times channels bytes.
  void write_row(std::span<const std::uint8_t> row);

  /// Completes the file after its last row.
  void finish();

 private:
  class State;
  std::unique_ptr<State> state_;
};

}  // namespace pxcl::printer
