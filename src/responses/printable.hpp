// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// What a capability reply says of one media type and one paper size.

#pragma once

#include "responses.h"
#include "util/types.hpp"

namespace pxcl::responses {

// Fills both records as the indexed calls fill them for the first entry that is `type` or `size`,
// from one scan; their versions must be set. An entry in front of it that cannot be decoded ends the
// search. 0, kBadArgument when the reply does not list one of them, or a status of the indexed calls.
i32 find_printable(std::string_view document, u16 type, u16 size, ClssMediaType& media,
                   ClssPaperSize& paper);

}  // namespace pxcl::responses
