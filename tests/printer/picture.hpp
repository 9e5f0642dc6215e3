// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Pictures, read and compared.

#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

namespace pxcl::printer {

struct Picture {
  unsigned width = 0;
  unsigned height = 0;
  unsigned channels = 0;  ///< 1: gray, 3: RGB.
  std::vector<std::uint8_t> pixels;
};

/// A PNG file's picture; of no size when it can't be read to its end.
[[nodiscard]] Picture read_png(const std::filesystem::path& path);

/// The picture of a binary PPM file of 8 bits.
[[nodiscard]] Picture read_ppm(const std::filesystem::path& path);

/// How far two pictures are apart, as the mean over all channels of all pixels that both have, in steps of 255. Their
/// sizes may differ by one pixel, as programs round the size of a page; else, or when one has no pixels, 255.
[[nodiscard]] double mean_difference(const Picture& a, const Picture& b);

}  // namespace pxcl::printer
