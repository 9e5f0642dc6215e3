// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <memory>
#include <optional>
#include <string>

#include "cli/ghostscript.hpp"
#include "cli/raster_source.hpp"
#include "client/waiting.hpp"

namespace pxcl::cli {

/// What is to be printed: raster as it is, PDF and PostScript rendered for the paper. What it is tells its content, not
/// its name.
class Document {
 public:
  /// Opens a file, or standard input for "-". PDF and PostScript that come through a pipe are put into a temporary file, at
  /// most 1 GiB of them.
  static client::Result<Document> open(const std::string& path, client::CancelFlag cancelled);

  /// The sheet that the first page is meant for; none when it does not say.
  [[nodiscard]] client::Result<std::optional<client::Outline>> sheet() const;

  /// Whether it is raster, which is printed as it is; what is rendered is fitted to any sheet.
  [[nodiscard]] bool is_raster() const { return is_raster_; }

  /// The pages. Once, unless the document is_repeatable().
  client::Result<std::unique_ptr<client::PageSource>> pages(const Rendering& rendering);

  /// Whether its pages can be had again: not when it is raster that comes through a pipe.
  [[nodiscard]] bool is_repeatable() const { return seekable_; }

 private:
  Document() = default;
  [[nodiscard]] client::Result<std::unique_ptr<RasterSource>> reopen() const;
  [[nodiscard]] client::Result<std::unique_ptr<RasterSource>> render_on(
      const Rendering& rendering) const;
  client::Result<void> take(std::string beginning);

  client::CancelFlag cancelled_ = nullptr;
  Descriptor file_;
  bool seekable_ = false;
  std::unique_ptr<RasterSource>
      raster_;  // of the first turn; none: the document has to be rendered
  bool is_raster_ = false;
};

}  // namespace pxcl::cli
