// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <memory>
#include <optional>

#include "cli/byte_source.hpp"
#include "client/capability.hpp"
#include "client/page_source.hpp"

namespace pxcl::cli {

/// The pages of a PWG or CUPS raster stream, each as a PWG raster stream of its own.
///
/// One page at a time lies in a temporary file, compressed; memory holds a line of it.
class RasterSource : public client::PageSource {
 public:
  /// Reads the head of the first page; kBadInput when there is none.
  static client::Result<std::unique_ptr<RasterSource>> open(std::unique_ptr<ByteSource> bytes);
  ~RasterSource() override;

  /// The sheet that the first page is meant for; none when the raster does not say.
  [[nodiscard]] std::optional<client::Outline> sheet() const;

  client::Result<std::optional<client::Page>> next_page() override;
  client::Result<std::size_t> read(std::span<char> buffer) override;

 private:
  class Reader;
  explicit RasterSource(std::unique_ptr<Reader> reader);

  std::unique_ptr<Reader> reader_;
  Descriptor page_;  // of the page that is being read
  bool last_ = false;
  unsigned number_ = 0;
};

}  // namespace pxcl::cli
