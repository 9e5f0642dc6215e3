// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "xml/scan.hpp"
#include "xml/scan_state.hpp"
#include "xml/status.hpp"

namespace pxcl::xml {
namespace {

// --- Recording -----------------------------------------------------------------------------------

template <typename Record>
bool append(Target& target, const Record& record) {
  if (target.count == target.capacity) {
    const u32 larger = target.capacity == 0 ? 4 : target.capacity * 2;
    Owned<Record> block = Owned<Record>::allocate(larger);
    if (larger < target.capacity || !block) return false;
    if (target.count != 0) std::memcpy(block.get(), target.list, target.count * sizeof(Record));
    KWVSDisposePTRX(target.list);
    target.list = block.release();
    target.capacity = larger;
  }
  static_cast<Record*>(target.list)[target.count] = record;
  return true;
}

void give(const Scan& scan, const Target& target, u32 offset, u32 length, i32 status) {
  const char* text = (target.flags & kKeyInPath) != 0 ? scan.path.begin() : scan.document.data();
  const Query& query = *target.query;
  query.take(query.reader, {{text + target.keyBegin, target.keyLength}, offset, length, status});
}

}  // namespace

bool record(Scan& scan, u32 number, u32 offset, u32 length, i32 status) {
  Target& target = scan.index.targets[number];
  if (target.collect == Collect::kEach) give(scan, target, offset, length, status);
  if (target.collect == Collect::kRanges) {
    if (!append(target, ClXmlValueRange{offset, length})) return false;
  } else if (target.collect == Collect::kMatches) {
    if (!append(target, ClXmlMatch{scan.serial, offset, length, status})) return false;
  }
  if (target.count == 0) {
    target.firstOffset = offset;
    target.firstLength = length;
    target.firstStatus = status;
  }
  ++target.count;
  target.lastSerial = scan.serial;
  if (status == kFound) target.flags |= kHasValue;
  if (offset != 0 && length != 0) target.flags |= kHasRange;
  return true;
}

namespace {

// --- Which targets ask for the current element's text --------------------------------------------

template <typename Visit>
bool visit_list(const Scan& scan, u32 first, const Visit& visit) {
  for (u32 target = first; target != kNone; target = scan.index.targets[target].next) {
    if (!visit(target)) return false;
  }
  return true;
}

// A node is asked for whatever its attributes are.
template <typename Visit>
bool visit_node(Scan& scan, u32 number, const Visit& visit) {
  const Node& node = scan.index.nodes[number];
  if ((node.flags & kEachValue) != 0) note_key(scan, node, {}, false);
  return visit_list(scan, node.elementTargets, visit) && visit_list(scan, node.belowTargets, visit);
}

bool is_below(const Scan& scan, u32 number, AliveRange range) {
  for (u32 up = scan.index.nodes[number].parent; up != kNone; up = scan.index.nodes[up].parent) {
    for (u32 i = range.begin; i < range.end; ++i) {
      if (scan.alive[i] == up) return true;
    }
  }
  return false;
}

// A path that ends in "/" matches all that is asked for below the element in front of it.
template <typename Visit>
bool visit_trailing(Scan& scan, const Visit& visit) {
  const AliveRange parents = parent_nodes(scan);
  for (u32 node = 1; node < scan.index.nodes.size; ++node) {
    if (is_below(scan, node, parents) && !visit_node(scan, node, visit)) return false;
  }
  return true;
}

// Before the root element every path matches.
template <typename Visit>
bool visit_all(Scan& scan, const Visit& visit) {
  for (u32 node = 0; node < scan.index.nodes.size; ++node) {
    if (!visit_node(scan, node, visit)) return false;
  }
  return true;
}

template <typename Visit>
bool visit_element_targets(Scan& scan, const Visit& visit) {
  if (scan.depth == 0) return visit_all(scan, visit);
  const OpenElement& top = scan.open[scan.depth - 1];
  for (u32 i = top.aliveBegin; i < scan.aliveTop; ++i) {
    const Node& node = scan.index.nodes[scan.alive[i]];
    if (!visit_list(scan, node.elementTargets, visit)) return false;
  }
  for (const BelowEntry& entry : scan.below) {
    const Node& node = scan.index.nodes[entry.node];
    if (entry.depth < scan.depth && !visit_list(scan, node.belowTargets, visit)) return false;
  }
  return (top.flags & kTrailing) == 0 || visit_trailing(scan, visit);
}

// Marks every null path in front of target `before` as met; true when there is one.
bool meet_null_paths(Scan& scan, u32 before) {
  if (!scan.index.hasNoPath) return false;
  bool met = false;
  for (u32 i = 0; i < scan.index.targets.size && i < before; ++i) {
    Target& target = scan.index.targets[i];
    if ((target.flags & kNoPathGiven) == 0) continue;
    target.flags |= kMetNoPath;
    met = true;
  }
  return met;
}

// The attribute is found by its name in the document, the first of several.
bool store_attribute(Scan& scan, u32 number) {
  const Target& target = scan.index.targets[number];
  const std::string_view wanted = {target.attributeName, target.attributeNameLength};
  const CurrentAttribute* attribute =
      find_attribute(scan, wanted, [&](const CurrentAttribute& candidate) {
        return candidate.nameLength == wanted.size() &&
               equal_bytes(candidate.name, wanted.data(), wanted.size());
      });
  if (attribute == nullptr) return true;
  const u32 offset = static_cast<u32>(attribute->value - scan.document.data());
  return record(scan, number, offset, attribute->valueLength, kFound);
}

// An element that ends without text serves the first target of each group that has nothing of it
// yet.
bool serve_first_of_groups(Scan& scan, u32 offset, i32 status, u32& first) {
  const auto each_candidate = [&](const auto& visit) {
    return visit_element_targets(scan, [&](u32 number) {
      const Target& target = scan.index.targets[number];
      const bool served = target.count != 0 && target.lastSerial == scan.serial;
      return served || visit(number, scan.firstOfGroup[target.group]);
    });
  };
  each_candidate([&](u32 number, u32& best) {
    if (number < best) best = number;
    if (number < first) first = number;
    return true;
  });
  if (first == kNone) return true;
  bool stored = true;
  each_candidate([&](u32 number, u32& best) {
    if (best != number) return true;
    best = kNone;
    return stored = record(scan, number, offset, 0, status);
  });
  return stored;
}

}  // namespace

i32 on_text(Scan& scan, u32 offset, u32 length) {
  const bool stored = visit_element_targets(
      scan, [&](u32 target) { return record(scan, target, offset, length, kFound); });
  if (!stored) return kNoMemory;
  return meet_null_paths(scan, kNone) ? kNoPath : kSuccess;
}

bool on_leaf(Scan& scan, u32 node, u32 offset, u32 length) {
  return visit_list(scan, scan.index.nodes[node].elementTargets,
                    [&](u32 target) { return record(scan, target, offset, length, kFound); });
}

i32 on_attributes(Scan& scan) {
  scan.metAttributes = true;
  const OpenElement& top = scan.open[scan.depth - 1];
  if ((top.flags & kAttributeTargets) == 0) return kSuccess;
  for (u32 i = top.aliveBegin; i < scan.aliveTop; ++i) {
    const Node& node = scan.index.nodes[scan.alive[i]];
    const bool stored = visit_list(scan, node.attributeTargets,
                                   [&](u32 target) { return store_attribute(scan, target); });
    if (!stored) return kNoMemory;
  }
  return kSuccess;
}

i32 on_element_end(Scan& scan, u32 offset, i32 status) {
  u32 first = kNone;
  if (!serve_first_of_groups(scan, offset, status, first)) return kBadArgument;
  return meet_null_paths(scan, first) && first == kNone ? kBadArgument : kSuccess;
}

}  // namespace pxcl::xml
