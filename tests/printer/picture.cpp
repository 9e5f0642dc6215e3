// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "picture.hpp"

#include <png.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <string>

namespace pxcl::printer {

Picture read_png(const std::filesystem::path& path) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  if (png_image_begin_read_from_file(&image, path.c_str()) == 0) return {};
  image.format &= PNG_FORMAT_FLAG_COLOR;
  const unsigned channels = PNG_IMAGE_PIXEL_CHANNELS(image.format);
  Picture picture{image.width, image.height, channels, {}};
  picture.pixels.resize(std::size_t{picture.width} * picture.height * channels);
  const bool read = png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, nullptr) != 0;
  return read ? picture : Picture{};
}

Picture read_ppm(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::string magic;
  unsigned most = 0;
  Picture picture;
  file >> magic >> picture.width >> picture.height >> most;
  if (!file || magic != "P6" || most != 255) return {};
  file.get();
  picture.channels = 3;
  picture.pixels.resize(std::size_t{picture.width} * picture.height * 3);
  file.read(reinterpret_cast<char*>(picture.pixels.data()),
            static_cast<std::streamsize>(picture.pixels.size()));
  return file ? picture : Picture{};
}

double mean_difference(const Picture& a, const Picture& b) {
  const auto [width, widest] = std::minmax(a.width, b.width);
  const auto [height, highest] = std::minmax(a.height, b.height);
  if (width == 0 || height == 0 || widest - width > 1 || highest - height > 1 ||
      a.channels != b.channels) {
    return 255;
  }
  const std::size_t row = std::size_t{width} * a.channels;
  double sum = 0;
  for (std::size_t y = 0; y < height; ++y) {
    const std::uint8_t* const in_a = a.pixels.data() + y * a.width * a.channels;
    const std::uint8_t* const in_b = b.pixels.data() + y * b.width * b.channels;
    for (std::size_t x = 0; x < row; ++x) sum += std::abs(in_a[x] - in_b[x]);
  }
  return sum / static_cast<double>(row * height);
}

}  // namespace pxcl::printer
