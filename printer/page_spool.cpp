// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "printer/page_spool.hpp"

#include <stdlib.h>
#include <unistd.h>

#include <iomanip>
#include <sstream>
#include <utility>

#include "printer/page_renderer.hpp"

namespace pxcl::printer {

namespace {

namespace fs = std::filesystem;

std::string beginning_of(const fs::path& path, std::size_t size) {
  std::ifstream file(path, std::ios::binary);
  std::string bytes(size, '\0');
  file.read(bytes.data(), static_cast<std::streamsize>(size));
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  return bytes;
}

// An empty file that is nobody else's; an empty path when there can be none.
fs::path make_file() {
  std::error_code error;
  std::string name = (fs::temp_directory_path(error) / "pxcl-page-XXXXXX").string();
  const int descriptor = error ? -1 : ::mkstemp(name.data());
  if (descriptor < 0) return {};
  ::close(descriptor);
  return name;
}

}  // namespace

PageSpool::PageSpool(fs::path output) : output_(std::move(output)) {
  fs::create_directories(output_);
}

PageSpool::~PageSpool() {
  discard();
}

bool PageSpool::append(std::string_view data) {
  if (spool_.empty()) {
    spool_ = make_file();
    file_ = std::ofstream(spool_, std::ios::binary | std::ios::trunc);
  }
  file_.write(data.data(), static_cast<std::streamsize>(data.size()));
  size_ += data.size();
  return file_.good();
}

std::optional<std::string> PageSpool::render(const PageFormat& format) {
  file_.close();
  std::optional<std::string> error;
  if (format.name == "PWGRaster") {
    error = render_raster();
  } else if (format.name == "RAW") {
    const std::string sides = std::to_string(format.width) + " " + std::to_string(format.height);
    const bool is_whole = size_ == 3 * format.width * format.height;
    error = is_whole ? keep("", "P6\n" + sides + "\n255\n", ".ppm")
                     : "The raw data is not as long as its width and length say.";
  } else {
    error = keep("\xFF\xD8\xFF", "", ".jpg");
  }
  discard();
  return error;
}

std::optional<std::string> PageSpool::render_raster() {
  if (beginning_of(spool_, 4) != "RaS2") return "The data is not a PWG raster.";
  const fs::path path = next_page(".png");
  const Rendering rendering = render_pages(
      spool_, [&](std::size_t) { return path; }, 1);
  if (rendering.error.empty() && rendering.pages.size() == 1) {
    pages_.push_back(path);
    return std::nullopt;
  }
  std::error_code ignored;
  fs::remove(path, ignored);
  return rendering.error.empty() ? "The raster holds no page." : rendering.error;
}

// The data as it is, as a file of its own behind `header`.
std::optional<std::string> PageSpool::keep(std::string_view beginning, std::string_view header,
                                           std::string_view extension) {
  if (beginning_of(spool_, beginning.size()) != beginning) return "The data is not of its format.";
  const fs::path path = next_page(extension);
  std::ofstream picture(path, std::ios::binary | std::ios::trunc);
  picture << header << std::ifstream(spool_, std::ios::binary).rdbuf();
  picture.close();
  if (!picture) return "The page can't be written.";
  pages_.push_back(path);
  return std::nullopt;
}

void PageSpool::discard() {
  file_.close();
  std::error_code ignored;
  if (!spool_.empty()) fs::remove(spool_, ignored);
  spool_.clear();
  size_ = 0;
}

fs::path PageSpool::next_page(std::string_view extension) const {
  std::ostringstream name;
  name << "page-" << std::setw(4) << std::setfill('0') << pages_.size() + 1 << extension;
  return output_ / name.str();
}

}  // namespace pxcl::printer
