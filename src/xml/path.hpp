// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Paths as text: elements separated by each "/" before which an even number of double quotes
// stands.

#pragma once

#include "clxml.h"
#include "util/types.hpp"

namespace pxcl::xml {

// The path of the open elements; empty before the root.
std::string_view current_path(const ClXmlParserData& data);

// The path up to its first separating "/", or all of it.
std::string_view first_element(std::string_view path);
// What follows the last separating "/"; empty when the path ends in one.
std::string_view last_element(std::string_view path);

}  // namespace pxcl::xml
