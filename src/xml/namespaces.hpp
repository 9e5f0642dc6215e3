// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The namespace URIs of the printer's protocol; the build gives scheme and host. Literals, so that
// documents can be put together from them at compile time.

#pragma once

#include "clxml.h"
#include "util/types.hpp"

#define PXCL_URI_COMMON PXCL_NAMESPACE_HOST "/ns/cmd/2008/07/common/"
#define PXCL_URI_VENDOR PXCL_NAMESPACE_HOST "/ns/cmd/2008/07/vaslo/"
#define PXCL_URI_PRINT PXCL_NAMESPACE_HOST "/ns/wdp/2008/01/print/"
#define PXCL_URI_VENDOR_2 PXCL_NAMESPACE_HOST "/ns/cmd/2010/05/vaslo/"

// An attribute that declares a namespace, with the blank in front of it.
#define PXCL_XMLNS(prefix, uri) " xmlns:" prefix "=\"" uri "\""

namespace pxcl::xml {

struct Namespace {
  std::string_view prefix;  // under which requested paths name it
  std::string_view uri;
  std::string_view declaration;  // of that prefix
};
inline constexpr u32 kPrefixAt = 7;  // in a declaration

// The rows of clNsTable.
inline constexpr u32 kNamespaceCount = 4;
inline constexpr Namespace kNamespaces[kNamespaceCount] = {
    {"zirk", PXCL_URI_COMMON, PXCL_XMLNS("zirk", PXCL_URI_COMMON)},
    {"vrx", PXCL_URI_VENDOR, PXCL_XMLNS("vrx", PXCL_URI_VENDOR)},
    {"tolm", PXCL_URI_PRINT, PXCL_XMLNS("tolm", PXCL_URI_PRINT)},
    {"ikw", PXCL_URI_VENDOR_2, PXCL_XMLNS("ikw", PXCL_URI_VENDOR_2)},
};

// The row of the namespace in which qualified names in attribute values are resolved.
inline constexpr u32 kValueRow = 3;
static_assert(kNamespaces[kValueRow].uri == PXCL_URI_VENDOR_2);

// Two URIs are the same when they differ in one "/" at their ends at most.
bool is_same_uri(std::string_view a, std::string_view b);

// The first row whose declared prefix begins with `prefix`; null when there is none. A row is found
// by leading bytes: a document that declares "zirkx" makes "zirk" known too.
const ClXmlNameSpaceEntry* find_declared(const ClXmlNameSpaceEntry* table, std::string_view prefix);

// The row of a table prefix; null when there is none.
const ClXmlNameSpaceEntry* find_table_prefix(const ClXmlNameSpaceEntry* table,
                                             std::string_view prefix);

}  // namespace pxcl::xml
