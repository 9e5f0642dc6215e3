// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "printer/page_renderer.hpp"

#include <cups/raster.h>

#include <bit>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>
#include <stdexcept>

#include "printer/pixels.hpp"
#include "printer/png.hpp"

namespace pxcl::printer {
namespace {

// Widest line, in pixels: bounds the memory. A printer 44 inches wide has 52,800 at 1200 dots per inch.
constexpr unsigned kWidest = 65'535;

// Some programs fill lines up to a multiple of a few bytes.
constexpr unsigned kMostPadding = 64;

struct ColorName {
  unsigned number;
  ColorSpace space;
};

constexpr ColorName kColorNames[] = {
    {CUPS_CSPACE_W, ColorSpace::kWhite},  {CUPS_CSPACE_SW, ColorSpace::kWhite},
    {CUPS_CSPACE_K, ColorSpace::kBlack},  {CUPS_CSPACE_RGB, ColorSpace::kRgb},
    {CUPS_CSPACE_SRGB, ColorSpace::kRgb}, {CUPS_CSPACE_ADOBERGB, ColorSpace::kAdobeRgb},
    {CUPS_CSPACE_CMY, ColorSpace::kCmy},  {CUPS_CSPACE_CMYK, ColorSpace::kCmyk},
};

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
struct CloseRaster {
  void operator()(cups_raster_t* raster) const { cupsRasterClose(raster); }
};

std::string page_words(std::size_t index) {
  return "Page " + std::to_string(index + 1) + " of the raster";
}

// A raster file, read page by page. Failures are thrown with their sentence.
class RasterFile {
 public:
  explicit RasterFile(const std::filesystem::path& path);

  // The header of the next page; none at the end of the file.
  std::optional<cups_page_header2_t> next_page();

  // Reads the next line of pixels of the page.
  void read_line(std::span<std::uint8_t> line);

 private:
  static ssize_t read_bytes(void* self, unsigned char* buffer, std::size_t size);
  [[noreturn]] void fail(const std::string& what) const;

  std::unique_ptr<std::FILE, CloseFile> file_;
  std::unique_ptr<cups_raster_t, CloseRaster> raster_;
  std::size_t asked_ = 0;           // Bytes that the raster library asked for last,
  std::size_t got_ = 0;             // and how many of them were left.
  std::size_t header_request_ = 0;  // What it asked for when it read the first header.
  std::size_t headers_ = 0;         // How many it has read.
};

RasterFile::RasterFile(const std::filesystem::path& path) : file_(std::fopen(path.c_str(), "rb")) {
  if (file_ == nullptr) {
    throw std::runtime_error("The raster can't be read from " + path.string() + ": " +
                             std::strerror(errno) + ".");
  }
  raster_.reset(cupsRasterOpenIO(read_bytes, this, CUPS_RASTER_READ));
  if (raster_ == nullptr) {
    throw std::runtime_error("The data isn't a PWG or CUPS raster: it doesn't begin like one.");
  }
}

ssize_t RasterFile::read_bytes(void* self, unsigned char* buffer, std::size_t size) {
  auto& me = *static_cast<RasterFile*>(self);
  me.asked_ = size;
  me.got_ = std::fread(buffer, 1, size, me.file_.get());
  return std::ferror(me.file_.get()) != 0 ? -1 : static_cast<ssize_t>(me.got_);
}

std::optional<cups_page_header2_t> RasterFile::next_page() {
  cups_page_header2_t header;
  if (cupsRasterReadHeader2(raster_.get(), &header) != 0) {
    if (headers_++ == 0) header_request_ = asked_;
    return header;
  }
  if (got_ != 0) fail(page_words(headers_) + " has a header that makes no sense.");
  // To the library a file that ends here and one that ends within a header are the same. Here it asked for as much as
  // it did for the first header, there for the rest of one.
  if (headers_ == 0 || asked_ != header_request_) {
    fail(page_words(headers_) + " ends in its header.");
  }
  return std::nullopt;
}

void RasterFile::read_line(std::span<std::uint8_t> line) {
  const auto size = static_cast<unsigned>(line.size());
  if (cupsRasterReadPixels(raster_.get(), line.data(), size) == size) return;
  fail(page_words(headers_ - 1) + " ends before its last line.");
}

void RasterFile::fail(const std::string& what) const {
  if (std::ferror(file_.get()) != 0) throw std::runtime_error("The raster can't be read.");
  throw std::runtime_error(what);
}

// The number in a field of an enumerated type, which may be none of the type's.
template <typename Field>
unsigned number(const Field& field) {
  static_assert(sizeof(field) == sizeof(unsigned));
  return std::bit_cast<unsigned>(field);
}

PixelFormat format_of(const cups_page_header2_t& header, const std::string& page) {
  const unsigned space = number(header.cupsColorSpace);
  const unsigned order = number(header.cupsColorOrder);
  for (const ColorName& name : kColorNames) {
    const PixelFormat format{name.space, header.cupsBitsPerColor, header.cupsBitsPerPixel};
    if (name.number == space && order == CUPS_ORDER_CHUNKED && is_known(format)) return format;
  }
  throw std::runtime_error(page + " has pixels of a kind that can't be rendered: colour space " +
                           std::to_string(space) + " in order " + std::to_string(order) + ", " +
                           std::to_string(header.cupsBitsPerColor) + " bits a sample, " +
                           std::to_string(header.cupsBitsPerPixel) + " bits a pixel.");
}

void check_size(const cups_page_header2_t& header, const PixelFormat& format,
                const std::string& page) {
  const std::uint64_t pixels = std::uint64_t{header.cupsWidth} * header.cupsHeight;
  if (pixels == 0 || header.cupsWidth > kWidest || pixels > kMostPixels) {
    throw std::runtime_error(page +
                             " has a size that no page has: " + std::to_string(header.cupsWidth) +
                             " x " + std::to_string(header.cupsHeight) + " pixels.");
  }
  const std::uint64_t needed = line_bytes(format, header.cupsWidth);
  if (header.cupsBytesPerLine < needed || header.cupsBytesPerLine > needed + kMostPadding) {
    throw std::runtime_error(page + " has lines of " + std::to_string(header.cupsBytesPerLine) +
                             " bytes where its pixels take " + std::to_string(needed) + ".");
  }
}

RenderedPage render_page(RasterFile& raster, const cups_page_header2_t& header,
                         const std::string& page, const std::filesystem::path& path) {
  const PixelFormat format = format_of(header, page);
  check_size(header, format, page);
  RenderedPage result{path, header.cupsWidth, header.cupsHeight, header.HWResolution[0],
                      header.HWResolution[1]};
  const unsigned step = channels(format.space);
  PngFile png(path, {result.width, result.height, step, result.x_resolution, result.y_resolution});
  std::vector<std::uint8_t> line(header.cupsBytesPerLine);
  std::vector<std::uint8_t> pixels(std::size_t{result.width} * step);
  for (unsigned y = 0; y < result.height; ++y) {
    raster.read_line(line);
    convert_line(format, line, pixels);
    png.write_row(pixels);
  }
  png.finish();
  return result;
}

}  // namespace

Rendering render_pages(const std::filesystem::path& raster, const PagePath& page_path,
                       std::size_t most_pages) {
  Rendering rendering;
  try {
    RasterFile file(raster);
    while (const auto header = file.next_page()) {
      const std::size_t index = rendering.pages.size();
      if (index == most_pages) {
        throw std::runtime_error(page_words(index) + " is one too many.");
      }
      rendering.pages.push_back(render_page(file, *header, page_words(index), page_path(index)));
    }
  } catch (const std::runtime_error& error) {
    rendering.error = error.what();
  }
  return rendering;
}

}  // namespace pxcl::printer
