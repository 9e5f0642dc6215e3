// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <cstdint>
#include <span>

namespace pxcl::printer {

enum class ColorSpace {
  kWhite,     ///< Gray, 0 is black.
  kBlack,     ///< Gray, 0 is white.
  kRgb,       ///< sRGB, or a device's RGB taken for it.
  kAdobeRgb,  ///< The wider RGB, with a gamma of 2.2.
  kCmy,
  kCmyk,
};

/// How a page's pixels lie in its lines: sample by sample, pixel by pixel.
struct PixelFormat {
  ColorSpace space;
  unsigned sample_bits;  ///< 1, 2, 4, 8, or 16 in this machine's byte order.
  unsigned pixel_bits;   ///< Samples of less than 8 bits lie in the low bits of their pixel.
};

/// Whether convert_line() takes pixels of this format.
[[nodiscard]] bool is_known(const PixelFormat& format);

/// 1 when pixels of this colour space become gray, 3 when they become RGB.
[[nodiscard]] unsigned channels(ColorSpace space);

/// Bytes of a line of `width` pixels.
[[nodiscard]] std::uint64_t line_bytes(const PixelFormat& format, unsigned width);

/// Converts the pixels of `line` to 8-bit gray or sRGB, as many as `pixels` holds.
void convert_line(const PixelFormat& format, std::span<const std::uint8_t> line,
                  std::span<std::uint8_t> pixels);

}  // namespace pxcl::printer
