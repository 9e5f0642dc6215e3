// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Templates with "%s" as their only marker.

#pragma once

#include "util/types.hpp"

namespace pxcl::keyed {

using Arguments = std::span<const char* const>;  // zero-terminated each, or null

// Bytes that the filled template and its terminating zero need at most: markers and arguments that
// no marker takes are counted too.
u64 bound_of_filled(std::string_view text, Arguments arguments);

// Writes the filled template and a terminating zero to `out`, which has room for the bound. False
// when there are more markers than arguments.
bool fill_template(std::string_view text, Arguments arguments, char* out, std::size_t* length);

}  // namespace pxcl::keyed
