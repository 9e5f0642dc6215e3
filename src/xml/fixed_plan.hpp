// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Plans of keys that are known when the library is compiled: constant data, used in place by every
// scan. fixed_plan_test.cpp holds them against those that index.cpp makes.

#pragma once

#include <array>

#include "xml/element_text.hpp"
#include "xml/scan.hpp"

namespace pxcl::xml {

template <u32 NodeCount, u32 AttributeCount, u32 TargetCount, u32 BucketCount>
struct FixedPlan {
  Node nodes[NodeCount];
  RequestedAttribute attributes[AttributeCount];
  Target targets[TargetCount];
  u32 buckets[BucketCount];
  u32 groupCount;

  constexpr Plan plan() const {
    return {nodes,          attributes,  targets,         buckets,    NodeCount,
            AttributeCount, TargetCount, BucketCount - 1, groupCount, false};
  }
};

// Not defined: what calls it does not compile.
void key_is_not_simple();

// A plan while it is made. It holds simple elements only.
template <u32 MostNodes, u32 TargetCount>
struct PlanDraft {
  Node nodes[MostNodes + 1] = {};  // one more than there are, to read the next into
  RequestedAttribute attributes[MostNodes + 1] = {};
  Target targets[TargetCount] = {};
  u32 nodeCount = 1;
  u32 attributeCount = 0;
  u32 targetCount = 0;
  u32 groupCount = 1;

  constexpr PlanDraft() { clear(nodes[kRootNode]); }

  static constexpr void clear(Node& node) {
    node.parent = node.nextInBucket = kNone;
    node.elementTargets = node.attributeTargets = node.belowTargets = kNone;
    node.next = 0;
  }

  constexpr u32 find(Node& wanted) {
    for (u32 i = 1; i < nodeCount; ++i) {
      Node& node = nodes[i];
      if (node.key != wanted.key || node.parent != wanted.parent) continue;
      if ((node.flags & kEachValue) == (wanted.flags & kEachValue) &&
          std::string_view(node.text, node.textLength) ==
              std::string_view(wanted.text, wanted.textLength)) {
        return i;
      }
      node.flags &= ~u32{kSimple};
      wanted.flags &= ~u32{kSimple};
    }
    return kNone;
  }

  // The node of the element that `path` begins with.
  constexpr u32 step(std::string_view path, u32 parent, bool isEach) {
    Node& node = nodes[nodeCount];
    clear(node);
    node.parent = parent;
    if (!read_simple_element(path, node, attributes[attributeCount])) key_is_not_simple();
    if (isEach && node.textLength == path.size()) node.flags = kSimple | kEachValue;
    const u32 found = find(node);
    if (found != kNone) return found;
    node.firstAttribute = attributeCount;
    attributeCount += node.attributeCount;
    nodes[parent].flags |= child_flag(node.key);
    return nodeCount++;
  }

  // Whether some node of the same element names an attribute without value.
  constexpr bool has_named_sibling(const Node& node) const {
    for (u32 i = 1; i < nodeCount; ++i) {
      const Node& other = nodes[i];
      if (other.parent == node.parent && child_flag(other.key) == kNamedChildren &&
          std::string_view(other.text, other.nameLength) ==
              std::string_view(node.text, node.nameLength)) {
        return true;
      }
    }
    return false;
  }

  constexpr u32 depth_of(u32 number) const {
    u32 depth = 0;
    for (; number != kRootNode; number = nodes[number].parent) ++depth;
    return depth;
  }

  // The first child of `parent` behind `number`; 0 without one.
  constexpr u32 next_child(u32 parent, u32 number) const {
    for (u32 i = number + 1; i < nodeCount; ++i) {
      if (nodes[i].parent == parent) return i;
    }
    return 0;
  }

  // Node::next
  constexpr u32 node_behind(u32 number) const {
    u32 found = next_child(number, number);
    for (; found == 0 && number != kRootNode; number = nodes[number].parent) {
      found = next_child(nodes[number].parent, number);
    }
    return found != 0 && is_expectable(nodes[found], depth_of(found)) ? found : 0;
  }

  constexpr std::string_view attribute_name(const Node& node) const {
    const RequestedAttribute& attribute = attributes[node.firstAttribute];
    return {attribute.name, attribute.nameLength};
  }

  // Hangs the target under the node of its last element.
  constexpr void attach(u32 node, Target target) {
    u32& list = target.isAttribute ? nodes[node].attributeTargets : nodes[node].elementTargets;
    nodes[node].flags = with_target(nodes[node], target);
    target.next = list;
    list = targetCount;
    targets[targetCount++] = target;
  }

  constexpr void add(const Key& key) {
    const bool isEach = key.wanted == Wanted::kEach;
    std::string_view rest = key.path;
    u32 node = step(rest, kRootNode, isEach);
    while (nodes[node].textLength != rest.size()) {
      rest = from(rest, nodes[node].textLength + 1);
      node = step(rest, node, isEach);
    }
    const bool isAttribute = (nodes[node].flags & kNameOnly) != 0;
    const std::string_view name = isAttribute ? attribute_name(nodes[node]) : std::string_view();
    if (key.group >= groupCount) groupCount = key.group + 1;
    attach(node, {name.data(), static_cast<u32>(name.size()), kNone, key.group,
                  collect_for(key.wanted), isAttribute, false});
  }
};

template <const auto& kKeys>
consteval auto draft_plan() {
  constexpr u32 kMostNodes = [] {
    u32 count = 1;
    for (const Key& key : kKeys) {
      for (const char byte : key.path) count += byte == '/' ? 1 : 0;
      ++count;
    }
    return count;
  }();
  PlanDraft<kMostNodes, static_cast<u32>(kKeys.size())> draft;
  for (const Key& key : kKeys) draft.add(key);
  return draft;
}

template <const auto& kKeys>
consteval auto make_fixed_plan() {
  constexpr auto kDraft = draft_plan<kKeys>();
  FixedPlan<kDraft.nodeCount, kDraft.attributeCount + 1, kDraft.targetCount,
            std::bit_ceil(kDraft.nodeCount * 4)>
      made = {};
  for (u32 i = 0; i < kDraft.attributeCount; ++i) made.attributes[i] = kDraft.attributes[i];
  for (u32 i = 0; i < kDraft.targetCount; ++i) made.targets[i] = kDraft.targets[i];
  for (u32& bucket : made.buckets) bucket = kNone;
  made.nodes[kRootNode] = kDraft.nodes[kRootNode];
  for (u32 i = kRootNode + 1; i < kDraft.nodeCount; ++i) {
    made.nodes[i] = kDraft.nodes[i];
    made.nodes[i].next = kDraft.node_behind(i);
    // So that no scan has to look, as with the index, which does not know the paths to come.
    if (!kDraft.has_named_sibling(made.nodes[i])) made.nodes[i].flags &= ~u32{kMaybeWanted};
    u32& bucket = made.buckets[bucket_of(made.nodes[i].key, std::size(made.buckets) - 1)];
    made.nodes[i].nextInBucket = bucket;
    bucket = i;
  }
  made.groupCount = kDraft.groupCount;
  return made;
}
template <const auto& kKeys>
inline constexpr auto kMadePlan = make_fixed_plan<kKeys>();

// The plan of `kKeys`, an array of them.
template <const auto& kKeys>
inline constexpr Plan kPlanOf = kMadePlan<kKeys>.plan();

}  // namespace pxcl::xml
