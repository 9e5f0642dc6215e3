// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Pages that are held in memory, and given in pieces of any size.

#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "client/page_source.hpp"

namespace pxcl::client {

class MemoryPages : public PageSource {
 public:
  explicit MemoryPages(std::vector<std::string> pages, std::size_t piece = 1000)
      : pages_(std::move(pages)), piece_(piece) {}

  Result<std::optional<Page>> next_page() override {
    if (next_ == pages_.size()) return std::optional<Page>();
    rest_ = pages_[next_++];
    return std::optional(Page{rest_.size(), next_ < pages_.size()});
  }

  Result<std::size_t> read(std::span<char> buffer) override {
    const std::size_t count = std::min({buffer.size(), rest_.size(), piece_});
    std::copy_n(rest_.data(), count, buffer.data());
    rest_.remove_prefix(count);
    return count;
  }

 private:
  std::vector<std::string> pages_;
  std::size_t piece_;
  std::size_t next_ = 0;
  std::string_view rest_;
};

}  // namespace pxcl::client
