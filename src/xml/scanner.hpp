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
  kHasValue = 1,   // a match with status 1; as the next for lists only
  kHasRange = 2,   // a match with a length
  kMetNoPath = 4,  // the path is null, and an event came upon it
  kKeyInPath = 8,  // the key stands in the path buffer, not in the document
};

// The key of the open element that matches a target of Collect::kEach; at most one does, since a path
// leads to one depth. Of length 0: what is found there is found at every key.
struct FoundKey {
  u32 begin;
  u32 length;
};

// What was found for one target.
struct Finding {
  union {
    void* list;  // matches or ranges, by the target's `collect`; none while `capacity` is 0
    FoundKey key;
  };
  u32 count;  // of all matches, whatever is collected
  u32 capacity;
  u32 firstOffset;
  u32 firstLength;
  u32 lastSerial;
  i16 firstStatus;
  u8 flags;
};
static_assert(sizeof(Finding) <= 32, "all are zeroed for every scan");

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
