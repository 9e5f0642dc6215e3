// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// What the functions of this layer return.

#pragma once

#include "util/types.hpp"

namespace pxcl::keyed {

inline constexpr i32 kOk = 0;
inline constexpr i32 kNoMemory = -1;        // a block of this layer could not be allocated
inline constexpr i32 kBadArgument = -2;     // null or empty argument, or any failure of the engine
inline constexpr i32 kInvalid = -4;         // key record, buffer or path key that cannot be used
inline constexpr i32 kWrongOperation = -5;  // the reply answers nothing, or something else
inline constexpr i32 kNotOk = -6;           // the reply's result is absent or not "OK"

}  // namespace pxcl::keyed
