// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace pxcl::printer {

/// The most pixels that a page may have: a little more than A3 has at 1200 dots per inch.
inline constexpr std::uint64_t kMostPixels = 300'000'000;

/// One page as it lies in its PNG file.
struct RenderedPage {
  std::filesystem::path path;
  unsigned width;         ///< Pixels.
  unsigned height;        ///< Pixels.
  unsigned x_resolution;  ///< Dots per inch across; 0 when the raster names none.
  unsigned y_resolution;  ///< Dots per inch along the feed; 0 when the raster names none.
};

struct Rendering {
  std::vector<RenderedPage> pages;  ///< The complete ones, in order, also when a later one failed.
  std::string error;  ///< One sentence that says what is wrong; empty when all is well.
};

/// The path of a page's PNG file; `index` counts the raster's pages from 0.
using PagePath = std::function<std::filesystem::path(std::size_t index)>;

/// Renders the pages of the PWG or CUPS raster file `raster`, at most `most_pages`, each to a PNG file of 8-bit gray or
/// RGB. The folder of each path exists; a file that is there already is replaced, and one that can't be completed is
/// removed.
///
/// A page's dots are taken as they are sent, in the order in which the paper is fed: a back side that the sender has
/// turned or mirrored for the duplexer stays so. Memory is bounded by one line of pixels, not by the page.
[[nodiscard]] Rendering render_pages(const std::filesystem::path& raster, const PagePath& page_path,
                                     std::size_t most_pages);

}  // namespace pxcl::printer
