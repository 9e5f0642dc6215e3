// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// What keeps a raster's few bytes from taking much time or memory. Included by one file of a target.

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

// The raster library takes room for as long a line as a header claims. That much is never used, but here it would be filled.
extern "C" const char* __asan_default_options() {
  return "allocator_may_return_null=1:max_allocation_size_mb=256";
}

namespace pxcl::fuzz {

// Little-endian or big-endian, whichever is less.
inline std::uint64_t number_at(std::string_view raster, std::size_t offset) {
  std::uint64_t low = 0, high = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    const auto byte = static_cast<unsigned char>(raster[offset + i]);
    low |= std::uint64_t{byte} << (8 * i);
    high = high << 8 | byte;
  }
  return std::min(low, high);
}

// Few bytes can stand for many pixels, which takes time and finds nothing.
inline bool is_small(std::string_view raster) {
  constexpr std::size_t kWidth = 376, kHeight = 380;  // of the first page
  constexpr std::uint64_t kMost = 1'000'000;
  return raster.size() < kHeight + 4 ||
         number_at(raster, kWidth) * number_at(raster, kHeight) < kMost;
}

}  // namespace pxcl::fuzz
