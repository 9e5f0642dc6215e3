// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// What the engine's functions return; clxml.h tells the caller's side. Results of one path:
// scan.hpp.

#pragma once

#include "util/types.hpp"

namespace pxcl::xml {

inline constexpr i32 kSuccess = 0;
inline constexpr i32 kRootClosed = 2;             // the scan ends well
inline constexpr i32 kUnclosedValue = -1;         // quoted value without closing quote
inline constexpr i32 kBadArgument = -2;           // null, zero length, out of range
inline constexpr i32 kNoDeclaration = -3;         // no "<?xml" and white space
inline constexpr i32 kMisplacedDeclaration = -4;  // "<?xml" not at offset 0
inline constexpr i32 kEndsTooEarly = -5;          // below 6 bytes; "<" or "<!" at the end
inline constexpr i32 kUnterminated = -6;          // markup without ">", text without "<"
inline constexpr i32 kBadName = -7;               // "<" and no name behind it
inline constexpr i32 kBadAttribute = -8;          // no value, or a byte that may not be there
inline constexpr i32 kMismatchedEndTag = -10;     // not the innermost open element
inline constexpr i32 kNoMemory = -11;
inline constexpr i32 kNoEmptyTag = -11;  // the writer's: no empty-element tag at the position
inline constexpr i32 kOutputTooSmall = -12;
inline constexpr i32 kWrongRoot = -13;  // not <cmd> ... </cmd>

}  // namespace pxcl::xml
