// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// What comes of a start tag of the usual form.

#pragma once

#include "xml/status.hpp"
#include "xml/tag_nodes.hpp"

namespace pxcl::xml {

inline constexpr i32 kUnusual = 1;  // not for the fast loop

// The loop is as fast as it is since its cursor stays in registers: what it does for nearly every tag
// is part of it, also where several call it, and what is rare is a function apart. A debug build has
// every function once.
#if defined(__OPTIMIZE__)
#define PXCL_INLINED [[gnu::always_inline]] inline
#else
#define PXCL_INLINED inline
#endif

// Where the fast loop stands.
struct Cursor {
  const char* at;    // behind the markup taken last
  OpenElement* top;  // the innermost element
};

inline u32 offset_of(const Scan& scan, const char* at) {
  return static_cast<u32>(at - scan.document.data());
}

// `taken`: memory was there for all up to the cursor.
inline i32 status_of(Scan& scan, const Cursor& cursor, bool taken) {
  if (taken) return kSuccess;
  scan.position = offset_of(scan, cursor.at) - 1;
  return kNoMemory;
}

// --- What asks for it ----------------------------------------------------------------------------

inline bool is_named(const Tag& tag, std::string_view name) {
  if (tag.attributeLength() < name.size()) return false;
  if (tag.attributeLength() > name.size()) return attribute_name(tag) == name;
  return equal_bytes(tag.attribute(), name.data(), name.size());
}

// Gives the tag's attribute to the targets of `node` that ask for it.
inline bool store_attribute(Scan& scan, const Tag& tag, const Node& node) {
  for (u32 number = node.attributeTargets; number != kNone;) {
    const Target& target = scan.plan.targets[number];
    if (is_named(tag, {target.attributeName, target.attributeNameLength}) &&
        !record(scan, number, tag.offset + tag.valueBegin - 1, tag.valueLength() + 2, kFound)) {
      return false;
    }
    number = target.next;
  }
  return true;
}

// The same, and to the targets that want it as the key, for the one node that a tag matches.
[[gnu::noinline]] inline bool serve_attribute(Scan& scan, Tag tag, const Node& node) {
  if ((node.flags & kEachValue) != 0) note_plain_key(scan, node, tag);
  return store_attribute(scan, tag, node);
}
PXCL_INLINED bool serve_tag(Scan& scan, const Tag& tag, const Node& node) {
  const bool isWanted = (node.flags & (kAttributeTargets | kEachValue)) != 0;
  return !tag.has_attribute() || !isWanted || serve_attribute(scan, tag, node);
}

// The length of a leaf's text, up to `close`, without the white space at its end.
inline u32 text_length(const Tag& tag, const char* close) {
  while (is_space(close[-1])) --close;
  return static_cast<u32>(close - tag.text) - tag.length;
}

// --- A tag that matches one node, or none --------------------------------------------------------

// Notes that some target asks for every text below `node`, that of the innermost element.
[[gnu::noinline]] inline bool ask_below(Scan& scan, u32 node) {
  const bool stored = scan.below.push({node, scan.depth});
  refresh_standing(scan);
  return stored;
}

// Takes the tag that the cursor has reached and the node that it matches, `number`, or kNone. A leaf's
// text ends at `close`, which is null for every other element.
PXCL_INLINED i32 take_only(Scan& scan, Cursor& cursor, const Tag& tag, const char* close,
                           u32 number) {
  ++scan.serial;
  if (close != nullptr) {
    scan.metText = true;
    cursor.at = close + tag.nameLength + 3;  // the end tag: "</name>"
    if (number == kNone) return kSuccess;
    const Node& node = scan.plan.nodes[number];
    scan.nextNode = node.next;
    if (!serve_tag(scan, tag, node)) return status_of(scan, cursor, false);
    if ((node.flags & kElementTargets) == 0) return kSuccess;
    const bool stored = on_leaf(scan, node, tag.end(), text_length(tag, close));
    return status_of(scan, cursor, stored);
  }
  cursor.at = tag.text + tag.length;
  ++scan.depth;
  OpenElement& opened = *++cursor.top;
  opened = {tag.offset, tag.nameLength, scan.aliveTop, scan.generation, 0, kUnsettled};
  if (number == kNone) return kSuccess;
  const Node& node = scan.plan.nodes[number];
  scan.nextNode = node.next;
  scan.alive[scan.aliveTop++] = number;
  opened.flags = static_cast<u16>(node.flags & kOfElement);
  if (!serve_tag(scan, tag, node)) return status_of(scan, cursor, false);
  if (node.belowTargets == kNone) return kSuccess;
  ask_below(scan, number);  // the first fits, and with one the loop ends
  return kUnusual;
}

// --- Any tag -------------------------------------------------------------------------------------

// Opens an element whose nodes stand behind the last ones alive, up to `end`; false when memory is
// short.
inline bool open_usual(Scan& scan, OpenElement& opened, const Tag& tag, const u32* end, u32 shape) {
  const u32* node = scan.alive.begin() + scan.aliveTop;
  opened = {tag.offset, tag.nameLength, scan.aliveTop, scan.generation, 0, shape};
  scan.aliveTop = static_cast<u32>(end - scan.alive.begin());
  ++scan.depth;
  u32 flags = 0;
  for (; node != end; ++node) {
    const Node& matched = scan.plan.nodes[*node];
    flags |= matched.flags;
    if (tag.has_attribute() && !store_attribute(scan, tag, matched)) return false;
    if (matched.belowTargets != kNone && !ask_below(scan, *node)) return false;
  }
  opened.flags = static_cast<u16>(flags & kOfElement);
  return true;
}

// Gives a leaf's text, up to `close`, to what asks for it.
inline bool serve_leaf(Scan& scan, const Tag& tag, const char* close, const u32* end) {
  const u32* node = scan.alive.begin() + scan.aliveTop;
  if (node == end) return true;
  const u32 length = text_length(tag, close);
  for (; node != end; ++node) {
    const Node& matched = scan.plan.nodes[*node];
    if (tag.has_attribute() && !store_attribute(scan, tag, matched)) return false;
    if (!on_leaf(scan, matched, tag.end(), length)) return false;
  }
  return true;
}

// Takes the tag that the cursor has reached, with its nodes behind the last ones alive, up to `end`.
inline i32 take_tag(Scan& scan, Cursor& cursor, const Tag& tag, const char* close, const u32* end,
                    u32 shape) {
  ++scan.serial;
  if (close != nullptr) {
    scan.metText = true;
    cursor.at = close + tag.nameLength + 3;
    return status_of(scan, cursor, serve_leaf(scan, tag, close, end));
  }
  cursor.at = tag.text + tag.length;
  const bool opened = open_usual(scan, *++cursor.top, tag, end, shape);
  return opened && scan.standing != 0 ? kUnusual : status_of(scan, cursor, opened);
}

}  // namespace pxcl::xml
