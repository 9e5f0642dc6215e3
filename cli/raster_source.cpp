// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "cli/raster_source.hpp"

#include <cups/raster.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <vector>

#include "cli/text.hpp"

namespace pxcl::cli {

namespace {

using client::Error;
using client::Fault;
using client::Page;
using client::Result;
using Header = cups_page_header2_t;

struct CloseRaster {
  void operator()(cups_raster_t* raster) const { cupsRasterClose(raster); }
};
using Raster = std::unique_ptr<cups_raster_t, CloseRaster>;

// A little more than A3 at 1200 dots per inch, in RGB.
constexpr std::uint64_t kLargestPage = 1'000'000'000;  // bytes, not compressed
constexpr unsigned kWidestPage = 65'535;               // pixels

constexpr const char* kNoPages = "The document has no pages.";

Error bad_input(std::string message) {
  return {Fault::kBadInput, std::move(message)};
}

// ---- What a page has to be like ----

// The pixels that PWG raster knows, by CUPS' and by its own name.
struct PixelKind {
  cups_cspace_t cups;
  cups_cspace_t pwg;
  unsigned colors;
  std::array<unsigned, 3> bits;  // of a colour
};
constexpr PixelKind kPixelKinds[] = {
    {CUPS_CSPACE_W, CUPS_CSPACE_SW, 1, {1, 8, 16}},
    {CUPS_CSPACE_SW, CUPS_CSPACE_SW, 1, {1, 8, 16}},
    {CUPS_CSPACE_RGB, CUPS_CSPACE_SRGB, 3, {8, 16}},
    {CUPS_CSPACE_SRGB, CUPS_CSPACE_SRGB, 3, {8, 16}},
    {CUPS_CSPACE_ADOBERGB, CUPS_CSPACE_ADOBERGB, 3, {8, 16}},
    {CUPS_CSPACE_K, CUPS_CSPACE_K, 1, {1, 8, 16}},
    {CUPS_CSPACE_CMYK, CUPS_CSPACE_CMYK, 4, {8, 16}},
};

// A field of an enumerated type holds whatever a stranger's raster has there.
template <typename Field>
unsigned number_in(const Field& field) {
  unsigned number = 0;
  static_assert(sizeof field == sizeof number);
  std::memcpy(&number, &field, sizeof number);
  return number;
}

const PixelKind* find_kind(const Header& header) {
  for (const PixelKind& kind : kPixelKinds) {
    const bool fits = kind.cups == number_in(header.cupsColorSpace) &&
                      number_in(header.cupsColorOrder) == CUPS_ORDER_CHUNKED &&
                      header.cupsBitsPerPixel == kind.colors * header.cupsBitsPerColor;
    if (fits && std::ranges::count(kind.bits, header.cupsBitsPerColor) > 0) return &kind;
  }
  return nullptr;
}

// Bytes of a line without what fills it up.
std::uint64_t line_size(const Header& header) {
  return (std::uint64_t{header.cupsWidth} * header.cupsBitsPerPixel + 7) / 8;
}

Result<void> check(const Header& header, unsigned number) {
  if (find_kind(header) == nullptr) {
    return bad_input(
        filled("Page {} has pixels that can't be sent: colour space {}, order {}, {} "
               "bits a colour. Make it sRGB or gray, 8 bits, chunked.",
               number, number_in(header.cupsColorSpace), number_in(header.cupsColorOrder),
               header.cupsBitsPerColor));
  }
  const std::uint64_t line = line_size(header);
  if (header.cupsWidth == 0 || header.cupsWidth > kWidestPage ||
      line * header.cupsHeight > kLargestPage) {
    return bad_input(filled("Page {} has a size that no page has: {} x {} pixels.", number,
                            header.cupsWidth, header.cupsHeight));
  }
  if (header.cupsBytesPerLine < line || header.cupsBytesPerLine > 2 * line + 64) {
    return bad_input(filled("Page {} has lines of {} bytes; {} pixels take {}.", number,
                            header.cupsBytesPerLine, header.cupsWidth, line));
  }
  return {};
}

// The header of the page alone, as PWG raster has it.
Header pwg_header(const Header& source) {
  Header header = source;
  header.cupsColorSpace = find_kind(source)->pwg;
  header.cupsBytesPerLine = static_cast<unsigned>(line_size(source));
  header.cupsInteger[0] = 1;  // pages in the stream
  return header;
}

// ---- Writing ----

struct PageFile {
  Descriptor file;
  std::uint64_t size = 0;
  int error = 0;

  static ssize_t write(void* context, unsigned char* bytes, std::size_t count) {
    auto& page = *static_cast<PageFile*>(context);
    ssize_t written = 0;
    do {
      written = ::write(page.file.get(), bytes, count);
    } while (written < 0 && errno == EINTR);
    if (written < 0) page.error = errno;
    if (written > 0) page.size += static_cast<std::uint64_t>(written);
    return written;
  }
};

Error no_room(int error) {
  return bad_input(filled("There is no room for a page in the folder for temporary files: {}.",
                          strerror(error)));
}

}  // namespace

// ---- Reading ----

class RasterSource::Reader {
 public:
  explicit Reader(std::unique_ptr<ByteSource> bytes)
      : bytes_(std::move(bytes)),
        raster_(cupsRasterOpenIO(&Reader::read_bytes, this, CUPS_RASTER_READ)) {}

  // Goes to the header of the next page; false behind the last one.
  Result<bool> read_header();
  Result<void> copy_lines(cups_raster_t* to);

  [[nodiscard]] const Header& header() const { return header_; }

 private:
  static ssize_t read_bytes(void* context, unsigned char* bytes, std::size_t count);
  Result<bool> fill();
  [[nodiscard]] Error why_not(std::string otherwise) const;

  std::unique_ptr<ByteSource> bytes_;
  std::array<char, 65536> buffer_{};
  std::size_t used_ = 0, filled_ = 0;
  std::uint64_t taken_ = 0;  // bytes that the raster library has had
  std::optional<Error> error_;
  Header header_{};
  Raster raster_;
};

// Fills the empty buffer; false at the end.
Result<bool> RasterSource::Reader::fill() {
  Result<std::size_t> count = bytes_->read(buffer_);
  if (!count.ok()) return count.error();
  used_ = 0;
  filled_ = count.value();
  return filled_ > 0;
}

// Where the library reads ahead it gets one byte a call, so that what it has had is what it has used: only then is a
// stream that ends behind a page told from one that ends inside the next header.
ssize_t RasterSource::Reader::read_bytes(void* context, unsigned char* bytes, std::size_t count) {
  constexpr std::size_t kReadAhead = 65536;  // the least that it reads ahead
  auto& reader = *static_cast<Reader*>(context);
  if (reader.error_) return -1;
  if (reader.used_ == reader.filled_) {
    const Result<bool> more = reader.fill();
    if (!more.ok()) {
      reader.error_ = more.error();
      return -1;
    }
    if (!more.value()) return 0;
  }
  const std::size_t wanted = count >= kReadAhead ? 1 : count;
  const std::size_t given = std::min(wanted, reader.filled_ - reader.used_);
  std::memcpy(bytes, reader.buffer_.data() + reader.used_, given);
  reader.used_ += given;
  reader.taken_ += given;
  return static_cast<ssize_t>(given);
}

Error RasterSource::Reader::why_not(std::string otherwise) const {
  return error_ ? *error_ : bad_input(std::move(otherwise));
}

Result<bool> RasterSource::Reader::read_header() {
  if (!raster_) return why_not(taken_ == 0 ? kNoPages : "This is no raster that can be read.");
  const std::uint64_t before = taken_;
  if (cupsRasterReadHeader2(raster_.get(), &header_) != 0) return true;
  if (error_) return *error_;
  if (taken_ == before) return false;
  return bad_input("The raster is cut short or damaged: a page's header can't be read.");
}

Result<void> RasterSource::Reader::copy_lines(cups_raster_t* to) {
  const auto line = static_cast<unsigned>(line_size(header_));
  std::vector<unsigned char> pixels(header_.cupsBytesPerLine);
  for (unsigned y = 0; y < header_.cupsHeight; ++y) {
    if (cupsRasterReadPixels(raster_.get(), pixels.data(), header_.cupsBytesPerLine) !=
        header_.cupsBytesPerLine) {
      return why_not(
          filled("The raster is cut short or damaged: line {} of {} of a page can't be "
                 "read.",
                 y + 1, header_.cupsHeight));
    }
    if (cupsRasterWritePixels(to, pixels.data(), line) != line) return no_room(ENOSPC);
  }
  return {};
}

// ---- The source ----

RasterSource::RasterSource(std::unique_ptr<Reader> reader) : reader_(std::move(reader)) {}
RasterSource::~RasterSource() = default;

Result<std::unique_ptr<RasterSource>> RasterSource::open(std::unique_ptr<ByteSource> bytes) {
  auto reader = std::make_unique<Reader>(std::move(bytes));
  const Result<bool> first = reader->read_header();
  if (!first.ok()) return first.error();
  if (!first.value()) return bad_input(kNoPages);
  return std::unique_ptr<RasterSource>(new RasterSource(std::move(reader)));
}

std::optional<client::Outline> RasterSource::sheet() const {
  const Header& header = reader_->header();
  const float width =
      header.cupsPageSize[0] > 0 ? header.cupsPageSize[0] : static_cast<float>(header.PageSize[0]);
  const float height =
      header.cupsPageSize[1] > 0 ? header.cupsPageSize[1] : static_cast<float>(header.PageSize[1]);
  constexpr float kPerPoint = 2540.0F / 72;
  constexpr float kShortest = 1;  // point
  constexpr float kLongest = 100'000;
  const auto is_sheet = [](float side) { return side >= kShortest && side < kLongest; };
  if (!is_sheet(width) || !is_sheet(height)) return {};
  return client::Outline{static_cast<std::int32_t>(std::lround(width * kPerPoint)),
                         static_cast<std::int32_t>(std::lround(height * kPerPoint))};
}

// The header of the page was read ahead of it, and the one behind it tells whether another page follows.
Result<std::optional<Page>> RasterSource::next_page() {
  if (last_) return std::optional<Page>();
  ++number_;
  if (const Result<void> good = check(reader_->header(), number_); !good.ok()) return good.error();
  PageFile file{temporary_file()};
  if (!file.file.is_open()) return no_room(errno);
  Raster writer(cupsRasterOpenIO(&PageFile::write, &file, CUPS_RASTER_WRITE_PWG));
  Header header = pwg_header(reader_->header());
  if (!writer || cupsRasterWriteHeader2(writer.get(), &header) == 0) return no_room(file.error);
  const Result<void> copied = reader_->copy_lines(writer.get());
  writer.reset();
  if (file.error != 0) return no_room(file.error);
  if (!copied.ok()) return copied.error();
  const Result<bool> another = reader_->read_header();
  if (!another.ok()) return another.error();
  last_ = !another.value();
  page_ = std::move(file.file);
  if (lseek(page_.get(), 0, SEEK_SET) != 0) return no_room(errno);
  return std::optional<Page>({file.size, another.value()});
}

Result<std::size_t> RasterSource::read(std::span<char> buffer) {
  const ssize_t count = read_some(page_.get(), buffer);
  if (count < 0) return bad_input(filled("A page can't be read back: {}.", strerror(errno)));
  return static_cast<std::size_t>(count);
}

}  // namespace pxcl::cli
