// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// What may be wrong with a printer, and how its status says so.

#pragma once

#include <string_view>

namespace pxcl::printer {

/// Rows of kTroubles.
enum class Trouble { kPaperOut, kCoverOpen, kJam, kInkOut, kMismatch, kBadData };

struct TroubleRow {
  std::string_view name;  ///< For faults and logs.
  std::string_view status_detail;
  std::string_view support_code;
};

inline constexpr TroubleRow kTroubles[] = {
    {"paper-out", "MediaEmpty", "1003"},
    {"cover-open", "DoorOpen", "1202"},
    {"jam", "MediaJam", "1303"},
    {"ink-out", "MarkerSupplyAttention", "1688"},
    {"mismatch", "CUSTOM_MISMATCH", "4103"},
    {"bad-data", "AttentionRequired", "5012"},
};

/// An ink runs low: no trouble yet.
inline constexpr TroubleRow kInkLow = {"ink-low", "MarkerSupplyAttention", "1681"};

constexpr const TroubleRow& row_of(Trouble trouble) {
  return kTroubles[static_cast<int>(trouble)];
}

}  // namespace pxcl::printer
