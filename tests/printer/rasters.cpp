// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "rasters.hpp"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace pxcl::printer {
namespace {

constexpr std::size_t kHeaderSize = 1796;

void put_number(std::string& header, std::size_t offset, unsigned number, RasterForm form) {
  for (std::size_t i = 0; i < 4; ++i) {
    const std::size_t shift = 8 * (form == RasterForm::kCupsLittle ? i : 3 - i);
    header[offset + i] = static_cast<char>(number >> shift);
  }
}

std::string make_header(const RasterPage& page, RasterForm form) {
  std::string header(kHeaderSize, '\0');
  if (form == RasterForm::kPwg) header.replace(0, 9, "PwgRaster");
  const std::pair<std::size_t, unsigned> numbers[] = {
      {276, page.x_resolution}, {280, page.y_resolution},   {340, 1},
      {372, page.width},        {376, page.height},         {384, page.sample_bits},
      {388, page.pixel_bits},   {392, page.bytes_per_line}, {396, page.color_order},
      {400, page.color_space},
  };
  for (const auto& [offset, number] : numbers) put_number(header, offset, number, form);
  return header;
}

// Each pixel, or byte when pixels are smaller, as a run of one.
std::string compress(const std::string& line, std::size_t unit) {
  std::string result(1, '\0');
  for (std::size_t i = 0; i < line.size(); i += unit) {
    result += '\0';
    result += line.substr(i, unit);
  }
  return result;
}

std::string encode(const RasterPage& page, std::string line, RasterForm form) {
  if (form == RasterForm::kPwg) return compress(line, std::max(page.pixel_bits / 8, 1U));
  if (form == RasterForm::kCupsLittle && page.sample_bits == 16) {
    for (std::size_t i = 0; i + 1 < line.size(); i += 2) std::swap(line[i], line[i + 1]);
  }
  return line;
}

}  // namespace

std::string make_raster(const std::vector<RasterPage>& pages, RasterForm form) {
  constexpr const char* kSyncWords[] = {"RaS2", "RaS3", "3SaR"};
  std::string raster = kSyncWords[static_cast<int>(form)];
  for (const RasterPage& page : pages) {
    raster += make_header(page, form);
    for (const std::string& line : page.lines) raster += encode(page, line, form);
  }
  return raster;
}

}  // namespace pxcl::printer
