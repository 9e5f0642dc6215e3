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
  Node nodes[MostNodes] = {};
  RequestedAttribute attributes[MostNodes] = {};
  Target targets[TargetCount] = {};
  u32 nodeCount = 1;
  u32 attributeCount = 0;
  u32 targetCount = 0;
  u32 groupCount = 1;

  constexpr PlanDraft() { clear(nodes[kRootNode]); }

  static constexpr void clear(Node& node) {
    node.parent = node.nextInBucket = kNone;
    node.elementTargets = node.attributeTargets = node.belowTargets = kNone;
  }

  static constexpr std::string_view attribute_of(std::string_view path,
                                                 const SimpleElement& element) {
    if (!element.has_attribute()) return {};
    return slice(path, element.attributeBegin(), element.attributeEnd - element.attributeBegin());
  }

  static constexpr u32 key_of(std::string_view path, const SimpleElement& element, u32 parent) {
    const auto hash = [path](u32 begin, u32 end) {
      return hash_bytes(path.data() + begin, end - begin);
    };
    const u32 name = hash(element.localBegin, element.nameEnd);
    if (!element.has_attribute()) return element_key(parent, name, kPlainKey);
    if (!element.has_value()) return element_key(parent, name, kNamedKey);
    return valued_key(element_key(parent, name, kValuedKey),
                      hash(element.valueLocal, element.valueEnd));
  }

  constexpr u32 find(std::string_view text, u32 parent, u32 key, bool isEach) const {
    for (u32 i = 1; i < nodeCount; ++i) {
      const Node& node = nodes[i];
      if (node.key == key && node.parent == parent && ((node.flags & kEachValue) != 0) == isEach &&
          std::string_view(node.text, node.textLength) == text) {
        return i;
      }
    }
    return kNone;
  }

  constexpr u32 insert(std::string_view path, const SimpleElement& element, u32 parent, u32 key,
                       bool isEach) {
    Node& node = nodes[nodeCount];
    clear(node);
    node.text = path.data() + element.begin;
    node.textLength = element.end - element.begin;
    node.nameLength = element.nameEnd - element.begin;
    node.localBegin = element.localBegin - element.begin;
    node.parent = parent;
    node.key = key;
    node.firstAttribute = attributeCount;
    node.flags = kSimple;
    nodes[parent].flags |= !element.has_attribute() ? kPlainChildren
                           : element.has_value()    ? kValuedChildren
                                                    : kNamedChildren;
    if (element.has_attribute()) {
      const std::string_view name = attribute_of(path, element);
      const u32 valueLength = element.valueEnd - element.valueBegin;
      const char* value = element.has_value() ? path.data() + element.valueBegin : nullptr;
      attributes[attributeCount++] = {name.data(), value, static_cast<u32>(name.size()),
                                      valueLength};
      node.attributeCount = 1;
      if (!element.has_value()) node.flags |= isEach ? kEachValue : kNameOnly;
    }
    return nodeCount++;
  }

  // Hangs the target under the node of its last element.
  constexpr void attach(u32 node, Target target) {
    u32& list = target.isAttribute ? nodes[node].attributeTargets : nodes[node].elementTargets;
    nodes[node].flags |= target.isAttribute ? kAttributeTargets : kElementTargets;
    target.next = list;
    list = targetCount;
    targets[targetCount++] = target;
  }

  constexpr void add(const Key& key) {
    const bool isEach = key.wanted == Wanted::kEach;
    u32 node = kRootNode;
    SimpleElement element = {};
    for (u32 at = 0; at < key.path.size(); at = element.end + 1) {
      if (!read_simple_element(key.path, at, element)) key_is_not_simple();
      const bool each = isEach && element.end == key.path.size();
      const u32 lookUp = key_of(key.path, element, node);
      const std::string_view text = slice(key.path, at, element.end - at);
      const u32 found = find(text, node, lookUp, each);
      node = found == kNone ? insert(key.path, element, node, lookUp, each) : found;
    }
    if (element.end != key.path.size()) key_is_not_simple();
    const bool isAttribute = !isEach && element.has_attribute() && !element.has_value();
    const std::string_view name =
        isAttribute ? attribute_of(key.path, element) : std::string_view();
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

// The plan of `kKeys`, an array of them.
template <const auto& kKeys>
consteval auto fixed_plan() {
  constexpr auto kDraft = draft_plan<kKeys>();
  FixedPlan<kDraft.nodeCount, kDraft.attributeCount + 1, kDraft.targetCount,
            std::bit_ceil(kDraft.nodeCount * 2)>
      made = {};
  for (u32 i = 0; i < kDraft.attributeCount; ++i) made.attributes[i] = kDraft.attributes[i];
  for (u32 i = 0; i < kDraft.targetCount; ++i) made.targets[i] = kDraft.targets[i];
  for (u32& bucket : made.buckets) bucket = kNone;
  made.nodes[kRootNode] = kDraft.nodes[kRootNode];
  for (u32 i = kRootNode + 1; i < kDraft.nodeCount; ++i) {
    made.nodes[i] = kDraft.nodes[i];
    u32& bucket = made.buckets[bucket_of(made.nodes[i].key, std::size(made.buckets) - 1)];
    made.nodes[i].nextInBucket = bucket;
    bucket = i;
  }
  made.groupCount = kDraft.groupCount;
  return made;
}

}  // namespace pxcl::xml
