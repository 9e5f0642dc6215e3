// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The pages of a raster, PWG or CUPS: each that is rendered is a file that is there, and nothing else is left.

#include <string>

#include "printer/page_renderer.hpp"
#include "small_raster.hpp"
#include "support.hpp"

using namespace pxcl;
using fuzz::require;

namespace {

constexpr std::size_t kMostPages = 3;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const fuzz::Folder folder;
  static const fuzz::MemoryFile file;
  const auto path_of = [](std::size_t index) {
    return folder.path() / (std::to_string(index) + ".png");
  };
  const std::string_view raster = fuzz::text_of(data, size);
  if (!fuzz::is_small(raster)) return 0;
  file.fill(raster);
  const printer::Rendering rendering = printer::render_pages(file.path, path_of, kMostPages);
  require(rendering.pages.size() <= kMostPages);
  require(rendering.error.empty() || rendering.error.ends_with('.'));
  for (const printer::RenderedPage& page : rendering.pages) {
    require(page.width > 0 && page.height > 0 &&
            std::uint64_t{page.width} * page.height <= printer::kMostPixels);
    require(std::filesystem::file_size(page.path) > 0);
    std::filesystem::remove(page.path);
  }
  require(std::filesystem::is_empty(folder.path()));
  return 0;
}
