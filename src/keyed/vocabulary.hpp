// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Names for the rows of the dictionaries that the code itself speaks of. dictionaries.cpp proves
// that each sits on its keyword.

#pragma once

#include "dictionaries.h"
#include "util/types.hpp"

namespace pxcl::keyed {

inline constexpr u16 kUnknownIndex = 65535;  // a keyword that is absent or in no row
inline constexpr u16 kNoCode = 65535;        // the code of a keyword or number that has none
inline constexpr u16 kIndexNotSet = 0;       // row 0 of all dictionaries but the service types

inline constexpr u16 kServicePrint = 0;
inline constexpr u16 kServiceDevice = 1;
inline constexpr u16 kServiceScan = 2;
inline constexpr u16 kServiceMaintenance = 3;
inline constexpr u16 kServiceCount = 4;  // replies come from these four only

inline constexpr u16 kOperationGetCapabilityResponse = 2;
inline constexpr u16 kOperationGetStatusResponse = 14;
inline constexpr u16 kOperationVendorCmdResponse = 22;
inline constexpr u16 kResponseOk = 1;
inline constexpr u16 kResponseNg = 2;
inline constexpr u16 kIJOperationModeShiftResponse = 2;

inline constexpr u16 kStatusDetailCustomMismatch = 7;
inline constexpr u16 kInkAc = 1;
inline constexpr u16 kHostLinux = 3;
inline constexpr u16 kHostOther = 7;
inline constexpr u16 kFormatRaw = 1;
inline constexpr u16 kFormatJpeg = 2;
inline constexpr u16 kFormatJpegPage = 3;
inline constexpr u16 kFormatPwgRaster = 4;
inline constexpr u16 kBorderlessOff = 1;
inline constexpr u16 kBorderlessOn = 2;
inline constexpr u16 kColorModeColor = 1;
inline constexpr u16 kColorModeMonochrome = 2;
inline constexpr u16 kDuplexOff = 1;
inline constexpr u16 kDuplexOn = 2;
inline constexpr u16 kDuplexLongSide = 3;
inline constexpr u16 kDuplexShortSide = 4;
inline constexpr u16 kStapleLongSide = 1;
inline constexpr u16 kStapleShortSide = 2;
inline constexpr u16 kPaperSizeA4 = 4;
inline constexpr u16 kPaperTypeStationery = 1;

inline constexpr u16 kNameSpaceCommon = 0;  // "zirk"
inline constexpr u16 kNameSpaceVendor = 1;  // "vrx"
inline constexpr u16 kNameSpaceSchema = 2;  // "tolm"
inline constexpr u16 kNameSpaceCount = 3;

// The row counts, for tables that run parallel to a dictionary. Elsewhere use the exported ones.
inline constexpr u16 kOperationRows = 27;
inline constexpr u16 kIJOperationRows = 5;
inline constexpr u16 kPaperSizeRows = 83;
inline constexpr u16 kPaperTypeRows = 30;

}  // namespace pxcl::keyed
