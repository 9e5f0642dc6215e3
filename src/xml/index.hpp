// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Makes a plan of paths that are handed in one by one.

#pragma once

#include "util/growing.hpp"
#include "xml/plan.hpp"

namespace pxcl::xml {

// A target's kind where the caller's record states it, else taken from the path.
struct TargetPath {
  std::string_view path;  // data() null: no path
  bool kindKnown = false;
  bool isAttribute = false;
  std::string_view attributeName = {};
};

struct Index {
  GrowingArray<Node, 64> nodes;
  GrowingArray<RequestedAttribute, 32> attributes;
  GrowingArray<Target, 32> targets;
  GrowingArray<u32, 128> buckets;
  u32 bucketMask = 0;
  u32 groupCount = 1;
  bool hasNoPath = false;

  // The path added last, and where its elements end: the next one mostly shares its beginning.
  std::string_view previous = {};
  u32 previousDepth = 0;
  u32 previousEnd[16];  // just after the "/" that ends the element
  u32 previousNode[16];

  Plan plan() const {
    return {nodes.begin(),   attributes.begin(), targets.begin(), buckets.begin(), nodes.size,
            attributes.size, targets.size,       bucketMask,      groupCount,      hasNoPath};
  }
};

// Prepares an empty index for `targetCount` targets; false when memory is short.
bool start_index(Index& index, u64 targetCount);
// Appends a target; false when memory is short.
bool add_target(Index& index, const TargetPath& path, Collect collect, u32 group);

}  // namespace pxcl::xml
