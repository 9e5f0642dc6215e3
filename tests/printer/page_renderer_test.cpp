// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "printer/page_renderer.hpp"

#include <gtest/gtest.h>
#include <png.h>

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "dialogue.hpp"
#include "rasters.hpp"

namespace pxcl::printer {
namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<std::uint8_t>;

// A folder of the test's own, for rasters and pictures.
class PageRenderer : public testing::Test {
 protected:
  PageRenderer() { fs::create_directory(path_ / "pages"); }

  [[nodiscard]] fs::path page(std::size_t index) const {
    return path_ / "pages" / (std::to_string(index) + ".png");
  }

  [[nodiscard]] Rendering render(const std::string& raster) const {
    std::ofstream(path_ / "raster", std::ios::binary) << raster;
    return render_pages(
        path_ / "raster", [this](std::size_t index) { return page(index); }, 2);
  }

  [[nodiscard]] std::size_t files() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(path_ / "pages"), {}));
  }

  const Folder folder_;
  const fs::path path_ = folder_.path();
};

std::string read_file(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

struct Picture {
  unsigned height = 0;
  unsigned channels = 0;  // 1: gray, 3: RGB
  Bytes pixels;
};

Picture read_png(const fs::path& path) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  if (png_image_begin_read_from_file(&image, path.c_str()) == 0) return {};
  image.format &= PNG_FORMAT_FLAG_COLOR;
  Picture picture{image.height, PNG_IMAGE_PIXEL_CHANNELS(image.format), {}};
  picture.pixels.resize(PNG_IMAGE_SIZE(image));
  EXPECT_NE(png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, nullptr), 0) << path;
  return picture;
}

std::string bytes(std::initializer_list<unsigned> values) {
  std::string result;
  for (const unsigned value : values) result += static_cast<char>(value);
  return result;
}

// A page of 3 x 2 gray pixels.
RasterPage small_page() {
  RasterPage page;
  page.width = 3;
  page.height = 2;
  page.bytes_per_line = 3;
  page.lines = {bytes({0, 100, 255}), bytes({7, 8, 9})};
  return page;
}

// ------------------------------------------------------------------------------ what pixels become

enum ColorSpace : unsigned {
  kWhite = 0,
  kRgb = 1,
  kBlack = 3,
  kCmy = 4,
  kCmyk = 6,
  kGray = 18,
  kSrgb = 19,
  kAdobe = 20,
};

struct ColorCase {
  ColorSpace space;
  unsigned sample_bits;
  unsigned pixel_bits;
  Bytes line;  // A few pixels,
  unsigned width;
  Bytes expected;  // and what they become: gray when there are as many, else RGB.
};

const ColorCase kColorCases[] = {
    {kGray, 8, 8, {0, 100, 255}, 3, {0, 100, 255}},
    {kWhite, 8, 8, {0, 100, 255}, 3, {0, 100, 255}},
    {kBlack, 8, 8, {0, 100, 255}, 3, {255, 155, 0}},
    {kGray, 1, 1, {0b10100000}, 3, {255, 0, 255}},
    {kBlack, 1, 1, {0b10100000}, 3, {0, 255, 0}},
    {kGray, 2, 2, {0b00011000}, 3, {0, 85, 170}},
    {kGray, 4, 4, {0x0F, 0x80}, 3, {0, 255, 136}},
    {kGray, 16, 16, {0x12, 0x34, 0x80, 0, 0xFF, 0xFF}, 3, {18, 128, 255}},
    {kBlack, 16, 16, {0x12, 0x34, 0x80, 0, 0xFF, 0xFF}, 3, {237, 127, 0}},
    {kSrgb, 8, 24, {1, 2, 3, 255, 128, 0}, 2, {1, 2, 3, 255, 128, 0}},
    {kRgb, 8, 24, {1, 2, 3, 255, 128, 0}, 2, {1, 2, 3, 255, 128, 0}},
    {kSrgb, 16, 48, {18, 52, 0, 0, 255, 255, 1, 2, 48, 0, 9, 9}, 2, {18, 0, 255, 1, 48, 9}},
    // A pixel's four bits begin with one that is not used, its byte with two.
    {kSrgb, 1, 4, {0b0100'0011, 0b1001'0000}, 3, {255, 0, 0, 0, 255, 255, 0, 0, 255}},
    {kSrgb, 2, 8, {0b00'11'01'10, 0b00'00'11'00}, 2, {255, 85, 170, 0, 255, 0}},
    // By way of both spaces' XYZ matrices, rounded.
    {kAdobe, 8, 24, {200, 100, 50, 40, 120, 220}, 2, {227, 100, 42, 0, 121, 224}},
    {kAdobe, 8, 24, {180, 170, 90, 128, 128, 128}, 2, {185, 172, 84, 129, 129, 129}},
    {kAdobe, 8, 24, {255, 255, 255, 0, 0, 0}, 2, {255, 255, 255, 0, 0, 0}},
    {kCmy, 8, 24, {255, 0, 0, 10, 20, 30}, 2, {0, 255, 255, 245, 235, 225}},
    {kCmyk, 8, 32, {255, 0, 0, 0, 0, 0, 100, 128}, 2, {0, 255, 255, 127, 127, 77}},
    {kCmyk, 1, 4, {0b1000'0011}, 2, {0, 255, 255, 0, 0, 0}},
    {kCmyk, 16, 64, {255, 255, 0, 0, 0, 0, 0, 0}, 1, {0, 255, 255}},
    {kCmyk, 16, 64, {0, 0, 0, 0, 100, 100, 128, 128}, 1, {127, 127, 77}},
};

TEST_F(PageRenderer, EveryKindOfPixelBecomesGrayOrRgb) {
  for (const RasterForm form : {RasterForm::kPwg, RasterForm::kCups, RasterForm::kCupsLittle}) {
    for (const ColorCase& row : kColorCases) {
      SCOPED_TRACE("space " + std::to_string(row.space) + ", bits " +
                   std::to_string(row.sample_bits) + ", form " +
                   std::to_string(static_cast<int>(form)));
      RasterPage raster;
      raster.width = row.width;
      raster.height = 2;
      raster.sample_bits = row.sample_bits;
      raster.pixel_bits = row.pixel_bits;
      raster.bytes_per_line = static_cast<unsigned>(row.line.size());
      raster.color_space = row.space;
      raster.lines = {std::string(row.line.size(), '\0'), {row.line.begin(), row.line.end()}};
      const Rendering rendering = render(make_raster({raster}, form));
      ASSERT_EQ(rendering.error, "");
      const Picture picture = read_png(page(0));
      ASSERT_EQ(picture.height, 2U);
      EXPECT_EQ(picture.channels, row.expected.size() / row.width);
      EXPECT_EQ(Bytes(picture.pixels.end() - static_cast<std::ptrdiff_t>(row.expected.size()),
                      picture.pixels.end()),
                row.expected);
    }
  }
}

// --------------------------------------------------------------------------------- pages and files

TEST_F(PageRenderer, TellsWhereEachPageIsAndItsSize) {
  RasterPage second = small_page();
  second.width = 2;
  second.height = 1;
  second.bytes_per_line = 2;
  second.lines = {bytes({50, 60})};
  const Rendering rendering = render(make_raster({small_page(), second}, RasterForm::kPwg));
  EXPECT_EQ(rendering.error, "");
  ASSERT_EQ(rendering.pages.size(), 2U);
  EXPECT_EQ(rendering.pages[0].path, page(0));
  EXPECT_EQ(rendering.pages[0].width, 3U);
  EXPECT_EQ(rendering.pages[0].height, 2U);
  EXPECT_EQ(rendering.pages[0].x_resolution, 300U);
  EXPECT_EQ(rendering.pages[0].y_resolution, 600U);
  EXPECT_EQ(read_png(page(0)).pixels, (Bytes{0, 100, 255, 7, 8, 9}));
  EXPECT_EQ(read_png(page(1)).pixels, (Bytes{50, 60}));
}

TEST_F(PageRenderer, NoMorePagesAreMadeThanTheCallerTakes) {
  const Rendering rendering = render(make_raster(std::vector(3, small_page()), RasterForm::kPwg));
  EXPECT_EQ(rendering.error, "Page 3 of the raster is one too many.");
  EXPECT_EQ(rendering.pages.size(), 2U);
  EXPECT_EQ(files(), 2U);
}

TEST_F(PageRenderer, ThePictureNamesItsResolutionInDotsPerMetre) {
  ASSERT_EQ(render(make_raster({small_page()}, RasterForm::kPwg)).error, "");
  EXPECT_NE(
      read_file(page(0)).find(std::string("pHYs") + bytes({0, 0, 0x2E, 0x23, 0, 0, 0x5C, 0x46, 1})),
      std::string::npos);
  RasterPage without = small_page();
  without.x_resolution = 0;
  ASSERT_EQ(render(make_raster({without}, RasterForm::kPwg)).error, "");
  EXPECT_EQ(read_file(page(0)).find("pHYs"), std::string::npos);
}

TEST_F(PageRenderer, LinesMayBeFilledUp) {
  RasterPage padded = small_page();
  padded.bytes_per_line = 8;
  for (std::string& line : padded.lines) line.resize(8, '\x55');
  ASSERT_EQ(render(make_raster({padded}, RasterForm::kCups)).error, "");
  EXPECT_EQ(read_png(page(0)).pixels, (Bytes{0, 100, 255, 7, 8, 9}));
}

TEST_F(PageRenderer, APictureThatCanNotBeWrittenIsASentence) {
  const struct {
    const char* path;
    const char* reason;
  } rows[] = {
      {"/dev/full", "No space left on device"},
      {"/nowhere/page.png", "No such file or directory"},
  };
  // More than the C library keeps to itself, so that a row fails and not only the end.
  RasterPage noise = small_page();
  noise.width = noise.bytes_per_line = 3000;
  noise.height = 100;
  noise.lines.clear();
  std::uint32_t state = 1;
  for (unsigned y = 0; y < noise.height; ++y) {
    std::string& line = noise.lines.emplace_back();
    for (unsigned x = 0; x < noise.width; ++x) {
      state = state * 1664525 + 1013904223;
      line += static_cast<char>(state >> 24);
    }
  }
  for (const RasterPage& raster : {small_page(), noise}) {
    std::ofstream(path_ / "raster", std::ios::binary) << make_raster({raster}, RasterForm::kCups);
    for (const auto& row : rows) {
      const Rendering rendering = render_pages(
          path_ / "raster", [&](std::size_t) { return fs::path(row.path); }, 1);
      EXPECT_TRUE(rendering.pages.empty());
      EXPECT_EQ(rendering.error,
                std::string("The page can't be written to ") + row.path + ": " + row.reason + ".");
    }
  }
  EXPECT_TRUE(fs::exists("/dev/full"));
}

TEST_F(PageRenderer, ARasterThatCanNotBeReadIsASentence) {
  const auto to = [this](std::size_t index) { return page(index); };
  EXPECT_NE(render_pages(path_ / "none", to, 1).error.find("No such file"), std::string::npos);
  EXPECT_NE(render_pages(path_, to, 1).error, "");
}

// --------------------------------------------------------------------------------- hostile rasters

struct HostileCase {
  const char* name;
  void (*damage)(RasterPage& page);
  const char* sentence;  // A part of it.
};

const HostileCase kHostileCases[] = {
    {"no width", [](RasterPage& p) { p.width = 0; }, "Page 1"},
    {"no height", [](RasterPage& p) { p.height = 0; }, "Page 1"},
    {"2^31 lines", [](RasterPage& p) { p.height = 1U << 31; }, "3 x 2147483648 pixels"},
    {"2^32 - 1 lines", [](RasterPage& p) { p.height = 0xFFFFFFFF; }, "no page has"},
    {"2^31 pixels wide", [](RasterPage& p) { p.width = p.bytes_per_line = 1U << 31; }, "Page 1"},
    {"wider than the widest", [](RasterPage& p) { p.width = p.bytes_per_line = 65'536; },
     "65536 x 2 pixels"},
    {"lines of 2^31 bytes", [](RasterPage& p) { p.bytes_per_line = 1U << 31; }, "Page 1"},
    {"lines of no bytes", [](RasterPage& p) { p.bytes_per_line = 0; }, "Page 1"},
    {"lines too short", [](RasterPage& p) { p.bytes_per_line = 2; }, "lines of 2 bytes"},
    {"lines too long", [](RasterPage& p) { p.bytes_per_line = 68; }, "lines of 68 bytes"},
    {"width times bits wraps to the line's length",
     [](RasterPage& p) { p.width = 0x20000003, p.bytes_per_line = 3; }, "Page 1"},
    {"no bits in a sample", [](RasterPage& p) { p.sample_bits = 0; }, "Page 1"},
    {"no bits in a pixel", [](RasterPage& p) { p.pixel_bits = 0; }, "Page 1"},
    {"3 bits in a sample", [](RasterPage& p) { p.sample_bits = 3; }, "Page 1"},
    {"32 bits in a sample", [](RasterPage& p) { p.sample_bits = p.pixel_bits = 32; }, "Page 1"},
    {"a sample of 2^31 bits", [](RasterPage& p) { p.sample_bits = 1U << 31; }, "Page 1"},
    {"pixels of 16 bits with samples of 8", [](RasterPage& p) { p.pixel_bits = 16; }, "Page 1"},
    {"colours in planes", [](RasterPage& p) { p.color_order = 2; }, "in order 2"},
    {"colours in no known order", [](RasterPage& p) { p.color_order = 77; }, "Page 1"},
    {"a device's own ink", [](RasterPage& p) { p.color_space = 48; }, "colour space 48"},
    {"no known colours", [](RasterPage& p) { p.color_space = 0x80000012; }, "Page 1"},
};

TEST_F(PageRenderer, RefusesHostileHeaders) {
  for (const RasterForm form : {RasterForm::kPwg, RasterForm::kCups, RasterForm::kCupsLittle}) {
    for (const HostileCase& row : kHostileCases) {
      SCOPED_TRACE(row.name);
      RasterPage hostile = small_page();
      row.damage(hostile);
      const Rendering rendering = render(make_raster({hostile}, form));
      EXPECT_NE(rendering.error.find(row.sentence), std::string::npos) << rendering.error;
      EXPECT_TRUE(rendering.pages.empty());
      EXPECT_EQ(files(), 0U);
    }
  }
}

TEST_F(PageRenderer, RefusesWhatIsNoRaster) {
  for (const std::string& text :
       {std::string(), std::string("Ra"), std::string("%PDF-1.7\n"), std::string(5000, '\0')}) {
    EXPECT_NE(render(text).error.find("isn't a PWG or CUPS raster"), std::string::npos) << text;
  }
}

TEST_F(PageRenderer, APageBehindAGoodOneIsRefusedAloneAndByItsNumber) {
  RasterPage hostile = small_page();
  hostile.color_space = 48;
  RasterPage senseless = small_page();
  senseless.height = 0;
  for (const RasterPage& second : {hostile, senseless}) {
    const Rendering rendering = render(make_raster({small_page(), second}, RasterForm::kPwg));
    EXPECT_EQ(rendering.error.rfind("Page 2 of the raster has ", 0), 0U) << rendering.error;
    EXPECT_EQ(rendering.pages.size(), 1U);
    EXPECT_EQ(files(), 1U);
  }
}

// Cut at every byte, but for most of those in the middle of the headers, where one is like another.
TEST_F(PageRenderer, TruncationsAreFoundOut) {
  for (const RasterForm form : {RasterForm::kPwg, RasterForm::kCups, RasterForm::kCupsLittle}) {
    const std::string whole = make_raster({small_page(), small_page()}, form);
    const std::size_t one = make_raster({small_page()}, form).size();
    fs::remove(page(0));
    fs::remove(page(1));
    for (std::size_t size = 0; size <= whole.size();
         size += size % one > 30 && size % one < 1700 ? 97 : 1) {
      SCOPED_TRACE(size);
      const Rendering rendering = render(whole.substr(0, size));
      EXPECT_EQ(rendering.error.empty(), size == one || size == whole.size()) << rendering.error;
      EXPECT_EQ(rendering.pages.size(), size == whole.size() ? 2U : size >= one ? 1U : 0U);
      ASSERT_EQ(files(), rendering.pages.size());
    }
  }
}

}  // namespace
}  // namespace pxcl::printer
