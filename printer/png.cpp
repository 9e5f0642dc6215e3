// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "printer/png.hpp"

#include <png.h>

#include <array>
#include <cerrno>
#include <cmath>
#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>

namespace pxcl::printer {
namespace {

// Pages are drawings on white: a higher level costs much time for little.
constexpr int kCompression = 3;

struct Failure {
  std::array<char, 200> message{};
};

// libpng wants this to jump and not to return; the destination is one of the guarded functions below.
[[noreturn]] void on_error(png_structp png, png_const_charp message) {
  auto* const failure = static_cast<Failure*>(png_get_error_ptr(png));
  std::snprintf(failure->message.data(), failure->message.size(), "%s", message);
  png_longjmp(png, 1);
}

void on_warning(png_structp /*png*/, png_const_charp /*message*/) {}

png_uint_32 dots_per_metre(unsigned dots_per_inch) {
  return static_cast<png_uint_32>(std::lround(dots_per_inch / 0.0254));
}

void set_up(png_structp png, png_infop info, const PngSize& size) {
  png_set_user_limits(png, size.width, size.height);
  png_set_IHDR(png, info, size.width, size.height, 8,
               size.channels == 1 ? PNG_COLOR_TYPE_GRAY : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_set_sRGB(png, info, PNG_sRGB_INTENT_PERCEPTUAL);
  if (size.x_resolution != 0 && size.y_resolution != 0) {
    png_set_pHYs(png, info, dots_per_metre(size.x_resolution), dots_per_metre(size.y_resolution),
                 PNG_RESOLUTION_METER);
  }
  png_set_compression_level(png, kCompression);
  png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_SUB | PNG_FILTER_UP);
}

// Each of these three is where libpng jumps on an error: nothing in them has a destructor that the jump would skip.

bool guarded_start(png_structp png, png_infop info, std::FILE* file, const PngSize& size) {
  if (setjmp(png_jmpbuf(png)) != 0) return false;
  png_init_io(png, file);
  set_up(png, info, size);
  png_write_info(png, info);
  return true;
}

bool guarded_row(png_structp png, const std::uint8_t* row) {
  if (setjmp(png_jmpbuf(png)) != 0) return false;
  png_write_row(png, row);
  return true;
}

bool guarded_end(png_structp png, png_infop info) {
  if (setjmp(png_jmpbuf(png)) != 0) return false;
  png_write_end(png, info);
  return true;
}

}  // namespace

class PngFile::State {
 public:
  explicit State(std::filesystem::path path) : path_(std::move(path)) {}
  State(const State&) = delete;
  State& operator=(const State&) = delete;
  ~State();

  void start(const PngSize& size);
  void write_row(const std::uint8_t* row) { check(guarded_row(png_, row)); }
  void finish();

 private:
  void check(bool well) const {
    if (!well) fail(std::ferror(file_) != 0 ? std::strerror(errno) : failure_.message.data());
  }
  [[noreturn]] void fail(const std::string& reason) const {
    throw std::runtime_error("The page can't be written to " + path_.string() + ": " + reason +
                             ".");
  }

  std::filesystem::path path_;
  std::FILE* file_ = nullptr;
  png_structp png_ = nullptr;
  png_infop info_ = nullptr;
  Failure failure_;
};

PngFile::State::~State() {
  png_destroy_write_struct(&png_, &info_);
  if (file_ == nullptr) return;
  std::fclose(file_);
  std::error_code ignored;
  // What is not a regular file was not made here.
  if (std::filesystem::is_regular_file(path_, ignored)) std::filesystem::remove(path_, ignored);
}

void PngFile::State::start(const PngSize& size) {
  file_ = std::fopen(path_.c_str(), "wb");
  if (file_ == nullptr) fail(std::strerror(errno));
  png_ = png_create_write_struct(PNG_LIBPNG_VER_STRING, &failure_, on_error, on_warning);
  info_ = png_ == nullptr ? nullptr : png_create_info_struct(png_);
  if (info_ == nullptr) fail("out of memory");
  check(guarded_start(png_, info_, file_, size));
}

void PngFile::State::finish() {
  check(guarded_end(png_, info_));
  // The last bytes reach the disk only here.
  if (std::fflush(file_) != 0) fail(std::strerror(errno));
  std::fclose(std::exchange(file_, nullptr));
}

PngFile::PngFile(std::filesystem::path path, const PngSize& size)
    : state_(std::make_unique<State>(std::move(path))) {
  state_->start(size);
}

PngFile::~PngFile() = default;

void PngFile::write_row(std::span<const std::uint8_t> row) {
  state_->write_row(row.data());
}

void PngFile::finish() {
  state_->finish();
}

}  // namespace pxcl::printer
