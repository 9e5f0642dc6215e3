// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Makes a plan of paths that are handed in one by one.

#pragma once

#include "util/growing.hpp"
#include "xml/plan.hpp"

namespace pxcl::xml {

// What a target asks for, where the caller's record states it; else it is taken from the path.
struct TargetKind {
  bool isAttribute;
  std::string_view attributeName;
};

// What a request's parameters begin with.
struct PathRecord {
  const char* text;
  u64 length;
};

struct PathRecords {
  const void* first;
  u64 stride;  // bytes from one to the next
  u32 count;
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
// Appends a target; false when memory is short. A path whose data() is null is none.
bool add_target(Index& index, std::string_view path, Collect collect, u32 group,
                const TargetKind* kind = nullptr);
// Appends the targets of an empty index, none of them Collect::kEach; false when memory is short.
bool add_targets(Index& index, const PathRecords& records, Collect collect);

}  // namespace pxcl::xml
