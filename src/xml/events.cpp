// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "xml/scan.hpp"
#include "xml/scan_state.hpp"
#include "xml/status.hpp"

namespace pxcl::xml {
namespace {

// --- Recording -----------------------------------------------------------------------------------

constexpr u32 kFewest = 8;  // records that a list has room for

[[gnu::noinline]] bool grow_list(Finding& finding, u64 recordSize) {
  const u32 larger = finding.capacity == 0 ? kFewest : finding.capacity * 2;
  if (larger < finding.capacity) return false;
  Owned<char> block = Owned<char>::allocate_unfilled(larger * recordSize);
  if (!block) return false;
  if (finding.count != 0)
    std::memcpy(block.get(), finding.list, static_cast<std::size_t>(finding.count * recordSize));
  KWVSDisposePTRX(finding.list);
  finding.list = block.release();
  finding.capacity = larger;
  return true;
}

template <typename Record>
inline bool append(Finding& finding, const Record& record) {
  if (finding.count == finding.capacity && !grow_list(finding, sizeof(Record))) return false;
  static_cast<Record*>(finding.list)[finding.count] = record;
  return true;
}

// The key that was noted for a target of Collect::kEach.
inline std::string_view key_of(const Scan& scan, const Finding& finding) {
  const char* text = (finding.flags & kKeyInPath) != 0 ? scan.path.begin() : scan.document.data();
  return {text + finding.key.begin, finding.key.length};
}

}  // namespace

bool collect(Scan& scan, u32 number, u32 offset, u32 length, i32 status) {
  Finding& finding = scan.findings[number];
  const Collect wanted = scan.plan.targets[number].collect;
  if (wanted == Collect::kEach) {
    give(scan, number, {key_of(scan, finding), offset, length, status});
    return true;
  }
  const bool stored = wanted == Collect::kRanges
                          ? append(finding, ClXmlValueRange{offset, length})
                          : append(finding, ClXmlMatch{scan.serial, offset, length, status});
  if (stored) note_listed(finding, length, status);
  return stored;
}

namespace {

// --- Which targets ask for the current element's text --------------------------------------------

// A node is asked for whatever its attributes are.
template <typename Visit>
bool visit_node(Scan& scan, u32 number, const Visit& visit) {
  const Node& node = scan.plan.nodes[number];
  if ((node.flags & kEachValue) != 0) note_key(scan, node, {}, false);
  return visit_list(scan, node.elementTargets, visit) && visit_list(scan, node.belowTargets, visit);
}

bool is_below(const Scan& scan, u32 number, AliveRange range) {
  for (u32 up = scan.plan.nodes[number].parent; up != kNone; up = scan.plan.nodes[up].parent) {
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
  for (u32 node = 1; node < scan.plan.nodeCount; ++node) {
    if (is_below(scan, node, parents) && !visit_node(scan, node, visit)) return false;
  }
  return true;
}

// Before the root element every path matches.
template <typename Visit>
bool visit_all(Scan& scan, const Visit& visit) {
  for (u32 node = 0; node < scan.plan.nodeCount; ++node) {
    if (!visit_node(scan, node, visit)) return false;
  }
  return true;
}

template <typename Visit>
bool visit_element_targets(Scan& scan, const Visit& visit) {
  if (scan.depth == 0) return visit_all(scan, visit);
  const OpenElement& top = scan.open[scan.depth - 1];
  for (u32 i = top.aliveBegin; i < scan.aliveTop; ++i) {
    const Node& node = scan.plan.nodes[scan.alive[i]];
    if (!visit_list(scan, node.elementTargets, visit)) return false;
  }
  for (const BelowEntry& entry : scan.below) {
    const Node& node = scan.plan.nodes[entry.node];
    if (entry.depth < scan.depth && !visit_list(scan, node.belowTargets, visit)) return false;
  }
  return (top.flags & kTrailing) == 0 || visit_trailing(scan, visit);
}

// Marks every null path in front of target `before` as met; true when there is one.
bool meet_null_paths(Scan& scan, u32 before) {
  if (!scan.plan.hasNoPath) return false;
  bool met = false;
  for (u32 i = 0; i < scan.plan.targetCount && i < before; ++i) {
    if (!scan.plan.targets[i].hasNoPath) continue;
    scan.findings[i].flags |= kMetNoPath;
    met = true;
  }
  return met;
}

// The attribute is found by its name in the document, the first of several.
bool store_attribute(Scan& scan, u32 number) {
  const Target& target = scan.plan.targets[number];
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

// Whether a target has something of the innermost element already.
bool is_served(const Scan& scan, u32 number) {
  const Finding& finding = scan.findings[number];
  return finding.count != 0 && finding.lastSerial == scan.serial;
}

// The target that asks for the innermost element's text, where it is the only one, as it mostly is;
// kNone for several. To be asked for an element that is asked for.
u32 only_target(const Scan& scan) {
  if (scan.depth == 0 || scan.standing != 0) return kNone;
  const OpenElement& top = scan.open[scan.depth - 1];
  if ((top.flags & kTrailing) != 0 || scan.aliveTop != top.aliveBegin + 1) return kNone;
  const u32 target = scan.plan.nodes[scan.alive[top.aliveBegin]].elementTargets;
  return scan.plan.targets[target].next == kNone ? target : kNone;
}

// Sets scan.firstOfGroup once; false when memory is short.
bool prepare_groups(Scan& scan) {
  const u32 count = scan.plan.groupCount;
  if (scan.firstOfGroup.size == count) return true;
  if (!scan.firstOfGroup.reserve(count)) return false;
  scan.firstOfGroup.size = count;
  for (u32& first : scan.firstOfGroup) first = kNone;
  return true;
}

// An element that ends without text serves the first target of each group that has nothing of it
// yet.
bool serve_first_of_groups(Scan& scan, u32 offset, i32 status, u32& first) {
  if (!prepare_groups(scan)) return false;
  const auto each_candidate = [&](const auto& visit) {
    visit_element_targets(scan, [&](u32 number) {
      if (!is_served(scan, number))
        visit(number, scan.firstOfGroup[scan.plan.targets[number].group]);
      return true;
    });
  };
  each_candidate([&](u32 number, u32& best) {
    if (number < best) best = number;
    if (number < first) first = number;
  });
  if (first == kNone) return true;
  bool stored = true;
  each_candidate([&](u32 number, u32& best) {
    if (best != number) return;
    best = kNone;
    stored &= record(scan, number, offset, 0, status);
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

i32 on_attributes(Scan& scan) {
  scan.metAttributes = true;
  const OpenElement& top = scan.open[scan.depth - 1];
  if ((top.flags & kAttributeTargets) == 0) return kSuccess;
  for (u32 i = top.aliveBegin; i < scan.aliveTop; ++i) {
    const Node& node = scan.plan.nodes[scan.alive[i]];
    const bool stored = visit_list(scan, node.attributeTargets,
                                   [&](u32 target) { return store_attribute(scan, target); });
    if (!stored) return kNoMemory;
  }
  return kSuccess;
}

i32 on_element_end(Scan& scan, u32 offset, i32 status) {
  const u32 only = only_target(scan);
  if (only != kNone) {
    const bool stored = is_served(scan, only) || record(scan, only, offset, 0, status);
    return stored ? kSuccess : kBadArgument;
  }
  u32 first = kNone;
  if (!serve_first_of_groups(scan, offset, status, first)) return kBadArgument;
  return meet_null_paths(scan, first) && first == kNone ? kBadArgument : kSuccess;
}

}  // namespace pxcl::xml
