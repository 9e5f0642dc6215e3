// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The engine as the library itself uses it: any number of paths, single and list alike, in one
// scan.

#pragma once

#include "clxml.h"
#include "util/owned.hpp"
#include "util/types.hpp"

namespace pxcl::xml {

// Results of one path (ClXmlParameter::status and its like).
inline constexpr i32 kFound = 1;
inline constexpr i32 kNotFound = -101;
inline constexpr i32 kEmptyElement = -102;  // <name></name>
inline constexpr i32 kEmptyTag = -103;      // <name/>
inline constexpr i32 kNoPath = -9;

enum class Wanted : u8 { kFirst, kAll };

// One requested path and its answer.
struct Query {
  std::string_view path = {};
  Wanted wanted = Wanted::kFirst;
  // An empty element serves only the first query of each group that matches it. Queries that would
  // have been requests of their own are put into groups of their own, so that they answer alike.
  u32 group = 0;

  i32 status = 0;  // of the first match; kNotFound without one
  u64 offset = 0;  // of the first match, in bytes from the start of the document
  u64 length = 0;
  Owned<ClXmlValueRange> ranges = {};  // Wanted::kAll: every match; null when there is none
  u32 rangeCount = 0;
};

// Scans the document once and answers every query. `flags` is 0 or CL_XML_COM_FLAG; the result is
// that of ClXmlParse, and queries keep what was found before a failure.
i32 scan(std::string_view document, u32 flags, std::span<Query> queries, u64* stopPosition);

}  // namespace pxcl::xml
