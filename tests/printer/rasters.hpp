// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Rasters made byte by byte from the formats' documents, without the library that reads them.

#pragma once

#include <string>
#include <vector>

namespace pxcl::printer {

enum class RasterForm {
  kPwg,         ///< Lines are compressed, numbers have their high byte first.
  kCups,        ///< Plain lines, high byte first.
  kCupsLittle,  ///< Plain lines, low byte first.
};

/// One page. The lines are as long as bytes_per_line says when all is well.
struct RasterPage {
  unsigned width = 0;
  unsigned height = 0;
  unsigned sample_bits = 8;
  unsigned pixel_bits = 8;
  unsigned bytes_per_line = 0;
  unsigned color_order = 0;
  unsigned color_space = 18;
  unsigned x_resolution = 300;
  unsigned y_resolution = 600;
  std::vector<std::string> lines;  ///< 16-bit samples have their high byte first.
};

[[nodiscard]] std::string make_raster(const std::vector<RasterPage>& pages, RasterForm form);

}  // namespace pxcl::printer
