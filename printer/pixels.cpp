// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "printer/pixels.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>

namespace pxcl::printer {
namespace {

using Samples = std::array<std::uint8_t, 4>;

unsigned samples(ColorSpace space) {
  return space == ColorSpace::kCmyk ? 4 : channels(space);
}

// The samples of the pixel number `index`, as 8 bits each.
Samples read_pixel(const PixelFormat& format, const std::uint8_t* line, std::size_t index) {
  const std::size_t count = samples(format.space);
  Samples result{};
  if (format.sample_bits == 8) {
    std::copy_n(line + index * count, count, result.begin());
    return result;
  }
  if (format.sample_bits == 16) {
    std::array<std::uint16_t, 4> wide{};
    std::memcpy(wide.data(), line + index * count * 2, count * 2);
    for (std::size_t i = 0; i < count; ++i) {
      result[i] = static_cast<std::uint8_t>((wide[i] * 255U + 32'767U) / 65'535U);
    }
    return result;
  }
  const std::size_t end = (index + 1) * format.pixel_bits;
  unsigned pixel = line[(end - 1) / 8] >> ((8 - end % 8) % 8);
  const unsigned most = (1U << format.sample_bits) - 1;
  for (std::size_t i = count; i-- > 0; pixel >>= format.sample_bits) {
    result[i] = static_cast<std::uint8_t>((pixel & most) * 255U / most);
  }
  return result;
}

std::uint8_t to_byte(double value) {
  return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0, 1.0) * 255));
}

double adobe_to_linear(std::size_t sample) {
  return std::pow(static_cast<double>(sample) / 255, 563.0 / 256);
}

double linear_to_srgb(double value) {
  return value <= 0.0031308 ? 12.92 * value : 1.055 * std::pow(value, 1 / 2.4) - 0.055;
}

// Both ways by table: a page has millions of pixels.
constexpr std::size_t kSteps = 4096;

struct AdobeTables {
  AdobeTables() {
    for (std::size_t i = 0; i < linear.size(); ++i) linear[i] = adobe_to_linear(i);
    for (std::size_t i = 0; i < srgb.size(); ++i) {
      srgb[i] = to_byte(linear_to_srgb(static_cast<double>(i) / kSteps));
    }
  }
  [[nodiscard]] std::uint8_t encode(double value) const {
    return srgb[static_cast<std::size_t>(std::lround(std::clamp(value, 0.0, 1.0) * kSteps))];
  }
  std::array<double, 256> linear{};
  std::array<std::uint8_t, kSteps + 1> srgb{};
};

// Both spaces have the same white and nearly the same green-blue plane, so five numbers of the matrix are 0.
Samples from_adobe(const Samples& in) {
  static const AdobeTables tables;
  const double red = tables.linear[in[0]];
  const double green = tables.linear[in[1]];
  const double blue = tables.linear[in[2]];
  return {tables.encode(1.39836 * red - 0.39836 * green), tables.encode(green),
          tables.encode(1.04293 * blue - 0.04293 * green)};
}

std::uint8_t without_ink(unsigned ink, unsigned black) {
  return static_cast<std::uint8_t>(((255 - ink) * (255 - black) + 127) / 255);
}

Samples to_screen(ColorSpace space, const Samples& in) {
  switch (space) {
    case ColorSpace::kWhite:
    case ColorSpace::kRgb:
      return in;
    case ColorSpace::kAdobeRgb:
      return from_adobe(in);
    case ColorSpace::kBlack:
    case ColorSpace::kCmy:
    case ColorSpace::kCmyk:
      break;
  }
  // Only CMYK has a fourth sample that isn't 0.
  return {without_ink(in[0], in[3]), without_ink(in[1], in[3]), without_ink(in[2], in[3])};
}

}  // namespace

unsigned channels(ColorSpace space) {
  return space == ColorSpace::kWhite || space == ColorSpace::kBlack ? 1 : 3;
}

bool is_known(const PixelFormat& format) {
  const unsigned used = samples(format.space) * format.sample_bits;
  switch (format.sample_bits) {
    case 8:
    case 16:
      return format.pixel_bits == used;
    case 1:
    case 2:
    case 4:
      // Three 1-bit samples fill up half a byte, three 2-bit samples a byte.
      return format.pixel_bits <= 8 &&
             format.pixel_bits == (used == 3 || used == 6 ? used + used / 3 : used);
    default:
      return false;
  }
}

std::uint64_t line_bytes(const PixelFormat& format, unsigned width) {
  return (std::uint64_t{width} * format.pixel_bits + 7) / 8;
}

void convert_line(const PixelFormat& format, std::span<const std::uint8_t> line,
                  std::span<std::uint8_t> pixels) {
  const std::size_t step = channels(format.space);
  for (std::size_t i = 0; i < pixels.size() / step; ++i) {
    const Samples result = to_screen(format.space, read_pixel(format, line.data(), i));
    std::copy_n(result.begin(), step, pixels.begin() + static_cast<std::ptrdiff_t>(i * step));
  }
}

}  // namespace pxcl::printer
