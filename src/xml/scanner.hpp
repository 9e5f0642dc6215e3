// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The fast route of the engine: one pass over a document, driven by byte masks, against an index of
// the requested paths. It answers exactly as the step functions do.

#pragma once

#include "clxml.h"
#include "xml/index.hpp"

namespace pxcl::xml {

// What a scan leaves behind beside the targets' matches.
struct ScanOutcome {
  i32 status = 0;
  u64 stopPosition = 0;
  u32 serial = 0;
  bool metText = false;        // a text run was held against the targets
  bool metAttributes = false;  // so was an element's attributes
};

// The fast route works with 32-bit offsets; longer documents and paths take the step functions.
inline constexpr u64 kMostBytes = 0xFFFFFF00u;

// Scans `document`, which begins with its declaration. Declared prefixes go into `table`.
ScanOutcome scan_indexed(Index& index, std::string_view document, u32 flags,
                         ClXmlNameSpaceEntry* table);

}  // namespace pxcl::xml
