// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The data of the page that is being received, in a temporary file, and the pictures that pages become.

#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pxcl::printer {

/// The most data that one page may have.
inline constexpr std::uint64_t kMostPageData = std::uint64_t{512} << 20;

/// The form in which a page's data came.
struct PageFormat {
  std::string name;         ///< "PWGRaster", "JPEG", "JPEGPAGE" or "RAW".
  std::uint64_t width = 0;  ///< Of RAW: pixels of three bytes each.
  std::uint64_t height = 0;
};

class PageSpool {
 public:
  /// The folder `output` is made when it is missing; throws std::filesystem::filesystem_error when it can't be.
  explicit PageSpool(std::filesystem::path output);
  PageSpool(const PageSpool&) = delete;
  PageSpool& operator=(const PageSpool&) = delete;
  ~PageSpool();

  /// Whether the data could be kept.
  [[nodiscard]] bool append(std::string_view data);
  [[nodiscard]] std::uint64_t size() const { return size_; }

  /// Makes the page's picture. One sentence when the data is no page; the data is gone in any case.
  [[nodiscard]] std::optional<std::string> render(const PageFormat& format);
  void discard();

  [[nodiscard]] const std::vector<std::filesystem::path>& pages() const { return pages_; }

 private:
  [[nodiscard]] std::optional<std::string> render_raster();
  [[nodiscard]] std::optional<std::string> keep(std::string_view beginning, std::string_view header,
                                                std::string_view extension);
  [[nodiscard]] std::filesystem::path next_page(std::string_view extension) const;

  std::filesystem::path output_;
  std::filesystem::path spool_;  ///< Empty while there is no file.
  std::ofstream file_;
  std::uint64_t size_ = 0;
  std::vector<std::filesystem::path> pages_;
};

}  // namespace pxcl::printer
