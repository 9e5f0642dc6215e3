// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "client/result.hpp"

namespace pxcl::client {

/// One page to print: a PWG raster stream of its own, sync word included.
struct Page {
  std::uint64_t size;    ///< Bytes that PageSource::read gives for it, 1 or more.
  bool another_follows;  ///< Whether it is not the last one.
};

/// Where the pages of a job come from, one after another, in pieces of any size.
class PageSource {
 public:
  PageSource() = default;
  PageSource(const PageSource&) = delete;
  PageSource& operator=(const PageSource&) = delete;
  virtual ~PageSource() = default;

  /// Goes to the next page; none when all have been given.
  virtual Result<std::optional<Page>> next_page() = 0;

  /// The next bytes of the current page, 1 to buffer.size(); 0 at its end.
  virtual Result<std::size_t> read(std::span<char> buffer) = 0;
};

}  // namespace pxcl::client
