// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Start tags whose names hold "/" or a double quote. No printer sends them, but the path's rules
// give them a meaning, and a hostile reply may hold a million of them: each byte is looked at once.

#include "xml/scan_state.hpp"
#include "xml/status.hpp"

namespace pxcl::xml {
namespace {

std::string_view path_text(const Scan& scan, u32 begin, u32 end) {
  return {scan.path.begin() + begin, end - begin};
}

u32 end_of(const OpenElement& element) {
  return element.offset + element.length;
}

template <typename Visit>
void visit_children(Scan& scan, const Visit& visit) {
  const AliveRange parents = parent_nodes(scan);
  for (u32 i = 1; i < scan.plan.nodeCount; ++i) {
    const Node& node = scan.plan.nodes[i];
    if ((node.flags & kImpossible) != 0) continue;
    for (u32 parent = parents.begin; parent < parents.end; ++parent) {
      if (scan.alive[parent] == node.parent) visit(node, i);
    }
  }
}

// The name is complete: notes which nodes have it.
void note_candidates(Scan& scan, std::string_view name) {
  ++scan.irregularCount;
  visit_children(scan, [&](const Node& node, u32 number) {
    if (std::string_view(node.text, node.nameLength) == name) {
      scan.candidateOf[number] = scan.irregularCount;
    }
  });
}

// False for a value that holds no key.
bool note_irregular_key(Scan& scan, const Node& node, std::string_view value) {
  const std::string_view inner = inner_value(value);
  if (!inner.empty()) note_key(scan, node, inner, true);
  return !inner.empty();
}

// An attribute is complete: notes which requested ones it satisfies.
void note_attribute(Scan& scan, std::string_view name, std::string_view value) {
  ++scan.growing.attributeCount;
  visit_children(scan, [&](const Node& node, u32 number) {
    if (scan.candidateOf[number] != scan.irregularCount) return;
    for (u32 i = node.firstAttribute; i < node.firstAttribute + node.attributeCount; ++i) {
      const RequestedAttribute& requested = scan.plan.attributes[i];
      if (std::string_view(requested.name, requested.nameLength) == name &&
          value_matches(scan, requested, value)) {
        if ((node.flags & kEachValue) != 0 && !note_irregular_key(scan, node, value)) continue;
        scan.satisfiedBy[i] = scan.irregularCount;
      }
    }
  });
}

// The steps below each consume one piece of the growing text up to `end`; false: the text ends
// first.

bool take_name(Scan& scan, u32 begin, u32 end) {
  GrowingElement& growing = scan.growing;
  u32 at = growing.parsedTo;
  while (at < end && !is_space(scan.path[at])) ++at;
  growing.parsedTo = growing.nameEnd = at;
  if (at == end) return false;
  growing.phase = GrowingElement::kGap;
  note_candidates(scan, path_text(scan, begin, at));
  return true;
}

bool take_gap(Scan& scan, u32 end) {
  GrowingElement& growing = scan.growing;
  while (growing.parsedTo < end && is_space(scan.path[growing.parsedTo])) ++growing.parsedTo;
  if (growing.parsedTo == end) return false;
  growing.phase = GrowingElement::kAttributeName;
  growing.attributeBegin = growing.parsedTo;
  return true;
}

// Moves on to the byte behind the next `byte`.
bool take_until(Scan& scan, char byte, u32 end) {
  GrowingElement& growing = scan.growing;
  const std::string_view text = path_text(scan, growing.parsedTo, end);
  const char* found = find_byte(text, byte);
  growing.parsedTo =
      found == nullptr ? end : growing.parsedTo + 1 + static_cast<u32>(found - text.data());
  return found != nullptr;
}

bool take_step(Scan& scan, u32 begin, u32 end) {
  GrowingElement& growing = scan.growing;
  switch (growing.phase) {
    case GrowingElement::kName:
      return take_name(scan, begin, end);
    case GrowingElement::kGap:
      return take_gap(scan, end);
    case GrowingElement::kAttributeName:
      if (!take_until(scan, '=', end)) return false;
      growing.attributeEnd = growing.parsedTo - 1;
      growing.phase = GrowingElement::kBeforeValue;
      return true;
    case GrowingElement::kBeforeValue:
      if (!take_until(scan, '"', end)) return false;
      growing.valueBegin = growing.parsedTo - 1;
      growing.phase = GrowingElement::kInValue;
      return true;
    default:  // kInValue
      break;
  }
  if (!take_until(scan, '"', end)) return false;
  note_attribute(scan, trim_end(path_text(scan, growing.attributeBegin, growing.attributeEnd)),
                 path_text(scan, growing.valueBegin, growing.parsedTo));
  growing.phase = GrowingElement::kGap;
  return true;
}

bool all_satisfied(const Scan& scan, const Node& node) {
  for (u32 i = 0; i < node.attributeCount; ++i) {
    if (scan.satisfiedBy[node.firstAttribute + i] != scan.irregularCount) return false;
  }
  return true;
}

// Takes in what the innermost element has grown by and finds the nodes that it matches now.
i32 match_grown(Scan& scan) {
  const OpenElement& top = scan.open[scan.depth - 1];
  const GrowingElement& growing = scan.growing;
  while (take_step(scan, top.offset, end_of(top))) {
  }
  clear_alive(scan);
  if (growing.phase == GrowingElement::kInValue) return kSuccess;
  if (growing.phase == GrowingElement::kName) {
    note_candidates(scan, path_text(scan, top.offset, growing.nameEnd));
  }
  // A last attribute without value counts, but answers nothing.
  const u32 count =
      growing.attributeCount + (growing.phase == GrowingElement::kAttributeName ? 1 : 0);
  bool stored = true;
  visit_children(scan, [&](const Node& node, u32 number) {
    if (scan.candidateOf[number] != scan.irregularCount || !all_satisfied(scan, node)) return;
    const bool admitsMore = (node.flags & kNameOnly) != 0;
    if (node.attributeCount == count || admitsMore) stored &= add_alive(scan, number);
  });
  return stored ? kSuccess : kNoMemory;
}

// Room for what is noted of nodes and attributes; usual documents never need it.
bool reserve_notes(Scan& scan) {
  if (scan.candidateOf) return true;
  scan.satisfiedBy = Owned<u32>::allocate(u64{scan.plan.attributeCount} + 1);
  if (scan.satisfiedBy) scan.candidateOf = Owned<u32>::allocate(scan.plan.nodeCount);
  return static_cast<bool>(scan.candidateOf);
}

i32 open_irregular(Scan& scan, u32 offset) {
  if (!reserve_notes(scan)) return kNoMemory;
  scan.open.size = scan.depth;
  if (!scan.open.push({offset, 0, scan.aliveTop, kNoGeneration, kIrregular, kUnsettled}))
    return kNoMemory;
  ++scan.depth;
  scan.growing = {};
  scan.growing.parsedTo = offset;
  return kSuccess;
}

// The path is a NUL-terminated text: what follows a NUL byte of a name or value never reaches it.
bool append_text(Scan& scan, std::string_view text) {
  const char* end = find_byte(text, '\0');
  if (end != nullptr) text = {text.data(), static_cast<std::size_t>(end - text.data())};
  if (!scan.path.reserve(u64{scan.path.size} + text.size())) return false;
  if (!text.empty()) std::memcpy(scan.path.end(), text.data(), text.size());
  scan.path.size += static_cast<u32>(text.size());
  return true;
}

bool append_attribute(Scan& scan, const CurrentAttribute& attribute) {
  const PathName name = path_name(attribute);
  return append_text(scan, " ") && append_text(scan, name.prefix) && append_text(scan, name.rest) &&
         append_text(scan, "=") &&
         append_text(scan, {attribute.valuePrefix, attribute.valuePrefixLength}) &&
         append_text(scan, from({attribute.value, attribute.valueLength}, attribute.valueRest));
}

bool append_tag(Scan& scan, const PathName& name) {
  if (!append_text(scan, name.prefix) || !append_text(scan, name.rest)) return false;
  for (const CurrentAttribute& attribute : scan.attributes) {
    if (!append_attribute(scan, attribute)) return false;
  }
  return true;
}

// The innermost element's text ends at `end`, for now.
i32 take_element_text(Scan& scan, u32 end) {
  OpenElement& top = scan.open[scan.depth - 1];
  top.length = end - top.offset;
  if (top.length == 0) top.flags |= kTrailing;
  return match_grown(scan);
}

// Cuts the path buffer's text from `at` on into elements, the innermost one going on with it.
i32 cut_into_elements(Scan& scan, u32 at) {
  for (; at < scan.path.size; ++at) {
    const char byte = scan.path[at];
    if (byte == '"') scan.growing.quoted = !scan.growing.quoted;
    if (byte != '/' || scan.growing.quoted) continue;
    i32 status = take_element_text(scan, at);
    if (status == kSuccess) status = open_irregular(scan, at + 1);
    if (status != kSuccess) return status;
  }
  return take_element_text(scan, at);
}

}  // namespace

i32 push_irregular(Scan& scan, const PathName& name) {
  const u32 begin = scan.path.size;
  const bool goesOn = scan.depth != 0 && scan.growing.quoted;
  if (goesOn && !append_text(scan, "/")) return kNoMemory;
  if (!append_tag(scan, name)) return kNoMemory;
  if (!goesOn) {
    const i32 status = open_irregular(scan, begin);
    if (status != kSuccess) return status;
  }
  return cut_into_elements(scan, begin);
}

i32 match_irregular(Scan& scan) {
  const bool quoted = scan.growing.quoted;
  scan.growing = {};
  scan.growing.quoted = quoted;
  scan.growing.parsedTo = scan.open[scan.depth - 1].offset;
  return match_grown(scan);
}

}  // namespace pxcl::xml
