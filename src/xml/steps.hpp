// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The plain route of the engine: the scan written with the step functions, one path text at a time.
// It takes whatever the fast route does not, and the fast route is held against it.

#pragma once

#include "clxml.h"
#include "util/types.hpp"

namespace pxcl::xml {

// ClXmlParse, by the step functions.
i32 parse_by_steps(ClXmlParserData& data);

}  // namespace pxcl::xml
