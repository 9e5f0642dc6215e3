// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The fast route of the engine: one pass over a document, driven by byte masks, against a plan of
// the requested paths. It answers exactly as the step functions do.

#pragma once

#include <algorithm>

#include "clxml.h"
#include "xml/plan.hpp"

namespace pxcl::xml {

enum FindingFlags : u8 {
  kHasValue = 1,   // a match with status 1; as the next not for Collect::kFirst
  kHasRange = 2,   // a match with a length
  kMetNoPath = 4,  // the path is null, and an event came upon it
  kKeyInPath = 8,  // the key stands in the path buffer, not in the document
};

// What was found for one target.
struct Finding {
  void* list;  // matches or ranges, by the target's `collect`
  u32 count;   // of all matches, whatever is collected
  u32 capacity;
  u32 firstOffset;
  u32 firstLength;
  i32 firstStatus;
  u32 lastSerial;
  u32 keyBegin;   // of Collect::kEach: the key of the open element that matches; at most one does,
  u32 keyLength;  // since a path leads to one depth. 0: what is found there is found at every key
  u8 flags;
};

struct Reader;

// Where a scan puts what it finds: zeroed findings, one a target, and as many readers, or null, for
// those of Collect::kEach.
struct Results {
  Finding* findings;
  const Reader* readers;
};

// What a scan leaves behind beside its findings.
struct ScanOutcome {
  i32 status = 0;
  u64 stopPosition = 0;
  u32 serial = 0;
  bool metText = false;        // a text run was held against the targets
  bool metAttributes = false;  // so was an element's attributes
};

// The fast route works with 32-bit offsets; longer documents and paths take the step functions.
inline constexpr u64 kMostBytes = std::min(u64{0xFFFFFF00u}, u64{SIZE_MAX / 2});

// Scans `document`, which begins with its declaration. Declared prefixes go into `table`.
ScanOutcome scan_indexed(const Plan& plan, const Results& results, std::string_view document,
                         u32 flags, ClXmlNameSpaceEntry* table);

}  // namespace pxcl::xml
