// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The requested paths of one scan as a tree: one node for each distinct element text, found from
// its parent by name and attribute. While the scan descends, an open element carries the nodes that
// it matches, so that its cost hardly depends on the number of targets.

#pragma once

#include <bit>
#include <cstring>

#include "util/growing.hpp"
#include "util/types.hpp"

namespace pxcl::xml {

inline constexpr u32 kNone = ~u32{0};

// An attribute as a requested element names it.
struct RequestedAttribute {
  const char* name;
  const char* value;  // inside the quotes and the white space there; null for a name alone
  u32 nameLength;
  u32 valueLength;
  u32 satisfiedBy;  // the irregular element (its number) that has this attribute; 0 for none yet
};

enum NodeFlags : u32 {
  kPlainChildren = 1,   // some child names no attribute
  kNamedChildren = 2,   // some child names attributes, all without value
  kValuedChildren = 4,  // some child names an attribute with its value
  kAnyChildren = 7,
  kNameOnly = 8,     // this element names an attribute without value: it admits further ones
  kImpossible = 16,  // no element of a document can match this one
  kEachValue = 32,   // its attribute stands for every value, and no other may stand beside it
};

struct Node {
  const char* text;  // the element as requested; its name comes first
  u32 textLength;
  u32 nameLength;
  u32 localBegin;  // behind the name's ":"
  u32 parent;
  u32 key;
  u32 nextInBucket;
  u32 flags;
  u32 firstAttribute;
  u32 attributeCount;
  u32 elementTargets;    // list of targets that ask for this element's text, kNone for none
  u32 attributeTargets;  // targets that ask for an attribute of it
  u32 belowTargets;      // targets whose path ends in "/": they match every element below
  u32 candidateOf;       // the irregular element (its number) whose name this node has
};
static_assert(sizeof(Node) <= 64, "within a cache line");

enum class Collect : u8 { kFirst, kRanges, kMatches, kEach };

enum TargetFlags : u8 {
  kHasValue = 1,     // a match with status 1
  kHasRange = 2,     // a match with non-zero offset and length
  kNoPathGiven = 4,  // its path is null
  kMetNoPath = 8,    // and an event came upon it
  kKeyInPath = 16,   // its key stands in the path buffer, not in the document
};

struct Query;

// One requested path: what is asked, then what was found.
struct Target {
  const char* attributeName;
  u32 attributeNameLength;
  u32 next;            // in the list of its node
  void* list;          // matches or ranges, by `collect`
  const Query* query;  // of Collect::kEach: takes what is found
  u32 count;
  u32 capacity;
  u32 firstOffset;
  u32 firstLength;
  i32 firstStatus;
  u32 lastSerial;
  u32 group;
  u32 keyBegin;   // of Collect::kEach: the key of the open element that matches; at most one does,
  u32 keyLength;  // since a path leads to one depth. 0: what is found there is found at every key
  Collect collect;
  u8 isAttribute;
  u8 flags;
};

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
  bool hasNoPath = false;  // some target's path is null

  // The path added last, and where its elements end: the next one mostly shares its beginning.
  std::string_view previous = {};
  u32 previousDepth = 0;
  u32 previousEnd[16] = {};  // just after the "/" that ends the element
  u32 previousNode[16] = {};
};

inline constexpr u32 kRootNode = 0;

// Prepares an empty index for `targetCount` targets; false when memory is short.
bool start_index(Index& index, u64 targetCount);
// Appends a target; false when memory is short.
bool add_target(Index& index, const TargetPath& path, Collect collect, u32 group);

// --- Look-up keys --------------------------------------------------------------------------------

inline u64 load_bytes(const char* bytes, u32 count) {
  u64 value = 0;
  std::memcpy(&value, bytes, count);
  return value;
}

// Of a text's first and last eight bytes and its length: names that stand side by side differ
// there.
inline u32 mix_hash(u64 low, u64 high, u32 length) {
  const u64 mixed = low * 0x9E3779B97F4A7C15u + high * 0xC2B2AE3D27D4EB4Fu;
  return static_cast<u32>(mixed >> 32) + length;
}

inline u32 hash_bytes(const char* bytes, u32 length) {
  if (length >= 8) {
    return mix_hash(load_bytes(bytes, 8), load_bytes(bytes + length - 8, 8), length);
  }
  u64 value = 0;
  for (u32 i = 0; i < length; ++i) value |= u64{static_cast<u8>(bytes[i])} << 8 * i;
  return mix_hash(value, value, length);
}

// The same where eight bytes can be read from `bytes` on, and on a little-endian processor.
inline u32 hash_readable(const char* bytes, u32 length) {
  if (std::endian::native != std::endian::little) return hash_bytes(bytes, length);
  const u64 first = load_bytes(bytes, 8);
  if (length >= 8) return mix_hash(first, load_bytes(bytes + length - 8, 8), length);
  const u64 value = first & ((u64{1} << 8 * length) - 1);
  return mix_hash(value, value, length);
}

enum KeyClass : u32 { kPlainKey = 0, kNamedKey = 0xB5297A4Du, kValuedKey = 0x68E31DA4u };

inline u32 element_key(u32 parent, u32 nameHash, KeyClass keyClass) {
  return nameHash + parent * 0x9E3779B1u + keyClass;
}
inline u32 valued_key(u32 elementKey, u32 attributeNameHash, u32 valueHash) {
  return (elementKey ^ attributeNameHash >> 7) * 0x85EBCA6Bu + valueHash;
}
inline u32 bucket_of(const Index& index, u32 key) {
  return (key ^ key >> 16) & index.bucketMask;
}

// memcmp for the lengths that names have, without a call: two overlapping words at each end.
inline bool equal_bytes(const char* a, const char* b, u64 length) {
  if (length < 4 || length > 32) return length == 0 || std::memcmp(a, b, length) == 0;
  const auto differs = [&](u64 at, u32 width) {
    return load_bytes(a + at, width) ^ load_bytes(b + at, width);
  };
  if (length < 8) return (differs(0, 4) | differs(length - 4, 4)) == 0;
  u64 difference = differs(0, 8) | differs(length - 8, 8);
  if (length > 16) difference |= differs(8, 8) | differs(length - 16, 8);
  return difference == 0;
}

// What follows the first ":" of a name, or the whole name: the part that no prefix changes.
inline std::string_view local_part(std::string_view name) {
  const void* colon = name.empty() ? nullptr : std::memchr(name.data(), ':', name.size());
  if (colon == nullptr) return name;
  return from(name, static_cast<std::size_t>(static_cast<const char*>(colon) - name.data()) + 1);
}

}  // namespace pxcl::xml
