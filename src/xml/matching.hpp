// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The look-up of a start tag's element among the children of a node.

#pragma once

#include "xml/scan_state.hpp"

namespace pxcl::xml {

struct StartTag {
  std::string_view written;     // the name in the document
  std::string_view attributes;  // what follows it, without trailing white space
  u32 colon;                    // in the name; kNone without one
  u32 row;                      // of the name's prefix; kNone for one that the document keeps
  bool irregularName;
};

// Whether scan.attributes answer those that the node names; notes the key of one for every value.
bool attributes_match(Scan& scan, const Node& node);

inline bool is_alive_already(const Scan& scan, u32 node) {
  for (u32 i = scan.open[scan.depth - 1].aliveBegin; i < scan.aliveTop; ++i) {
    if (scan.alive[i] == node) return true;
  }
  return false;
}

// Whether the node has a name of the document with the table's prefix of `row` in place of its own.
inline bool names_match(const Node& node, std::string_view name, u32 colon, u32 row) {
  if (row == kNone) {
    return node.nameLength == name.size() && equal_bytes(node.text, name.data(), name.size());
  }
  const std::string_view prefix = kNamespaces[row].prefix;
  const u32 length = static_cast<u32>(name.size()) - colon;
  return node.nameLength == prefix.size() + length &&
         equal_bytes(node.text, prefix.data(), prefix.size()) &&
         equal_bytes(node.text + prefix.size(), name.data() + colon, length);
}

// Adds the nodes with this key below `parent` that the start tag matches; false when memory is
// short.
inline bool probe(Scan& scan, u32 key, u32 parent, const StartTag& tag) {
  u32 found = scan.plan.buckets[bucket_of(key, scan.plan.bucketMask)];
  for (; found != kNone; found = scan.plan.nodes[found].nextInBucket) {
    const Node& node = scan.plan.nodes[found];
    if (node.key != key || node.parent != parent || (node.flags & kImpossible) != 0) continue;
    if (!names_match(node, tag.written, tag.colon, tag.row)) continue;
    if ((node.attributeCount | scan.attributes.size) != 0 && !attributes_match(scan, node))
      continue;
    if (scan.attributes.size > 1 && is_alive_already(scan, found)) continue;
    if (!add_alive(scan, found)) return false;
  }
  return true;
}

}  // namespace pxcl::xml
