// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The requested paths of one scan as a tree: one node for each distinct element text, found from
// its parent by name and attribute. While the scan descends, an open element carries the nodes that
// it matches, so that its cost hardly depends on the number of targets. A plan is not written to:
// index.hpp makes one of paths that are known at run time only, fixed_plan.hpp makes the others
// when the library is compiled.

#pragma once

#include <bit>
#include <cstring>
#include <type_traits>

#include "util/types.hpp"

namespace pxcl::xml {

inline constexpr u32 kNone = ~u32{0};

// An attribute as a requested element names it.
struct RequestedAttribute {
  const char* name;
  const char* value;  // inside the quotes and the white space there; null for a name alone
  u32 nameLength;
  u32 valueLength;
};

// An open element has the first ones of all nodes that it matches.
enum NodeFlags : u16 {
  kElementTargets = 4,    // some target asks for its text
  kAttributeTargets = 8,  // some target asks for an attribute of it
  kPlainChildren = 16,    // some child names no attribute
  kNamedChildren = 32,    // some child names attributes, all without value
  kValuedChildren = 64,   // some child names an attribute with its value
  kOfElement = 4 | 8 | 16 | 32 | 64,
  kNameOnly = 128,      // this element names an attribute without value: it admits further ones
  kImpossible = 256,    // no element of a document can match this one
  kEachValue = 512,     // its attribute stands for every value, and no other may stand beside it
  kSimple = 1024,       // a tag that is written so means this and, of those with its key, no other
  kOneFirst = 2048,     // one target asks for its text, and for the first one only
  kMaybeWanted = 4096,  // a value is named, but something may ask for the attribute all the same
};

struct Node {
  const char* text;  // the element as requested; its name comes first
  u32 textLength;
  u32 nameLength;
  u32 parent;
  u32 key;
  u32 nextInBucket;
  u32 flags;
  u32 firstAttribute;
  u32 attributeCount;
  u32 elementTargets;    // list of targets that ask for this element's text, kNone for none
  u32 attributeTargets;  // targets that ask for an attribute of it
  u32 belowTargets;      // targets whose path ends in "/": they match every element below
  // The node that the next tag matches in a document that has its elements in the order of the paths,
  // if a tag can be held against its bytes; else 0.
  u32 next;
};
static_assert(sizeof(Node) <= 64, "within a cache line");

enum class Collect : u8 { kFirst, kRanges, kMatches, kEach };

// One requested path.
struct Target {
  const char* attributeName;
  u32 attributeNameLength;
  u32 next;  // in the list of its node
  u32 group;
  Collect collect;
  bool isAttribute;
  bool hasNoPath;  // its path is null
};

// The flags of a node that gets a further target.
constexpr u32 with_target(const Node& node, const Target& target) {
  if (target.isAttribute) return node.flags | kAttributeTargets;
  const bool isOne = node.elementTargets == kNone && target.collect == Collect::kFirst;
  return (node.flags & ~u32{kOneFirst}) | kElementTargets | (isOne ? kOneFirst : 0);
}

struct Plan {
  const Node* nodes;
  const RequestedAttribute* attributes;
  const Target* targets;
  const u32* buckets;
  u32 nodeCount;
  u32 attributeCount;
  u32 targetCount;
  u32 bucketMask;
  u32 groupCount;
  bool hasNoPath;  // some target's path is null
};

inline constexpr u32 kRootNode = 0;
inline constexpr u32 kUsualDepth = 64;  // open elements that a scan has room for in any case

// --- Look-up keys --------------------------------------------------------------------------------

inline constexpr bool kLittleEndian = std::endian::native == std::endian::little;

constexpr u64 join_bytes(const char* bytes, u32 count) {
  u64 value = 0;
  for (u32 i = 0; i < count; ++i) {
    value |= u64{static_cast<u8>(bytes[i])} << 8 * (kLittleEndian ? i : count - 1 - i);
  }
  return value;
}

constexpr u64 load_bytes(const char* bytes, u32 count) {
  if (std::is_constant_evaluated()) return join_bytes(bytes, count);
  u64 value = 0;
  std::memcpy(&value, bytes, count);
  return value;
}

// Of a text's first and last eight bytes and its length: names that stand side by side differ in
// their prefix or near their end, mostly in their last byte. That is turned to where it reaches most
// of the product, and by no whole number of bytes: short texts do not meet themselves there.
constexpr u32 mix_hash(u64 first, u64 last, u32 length) {
  const u64 mixed = first ^ std::rotl(last, 44);
  return static_cast<u32>((mixed * 0x9E3779B97F4A7C15u) >> 32) + length;
}

constexpr u32 hash_bytes(const char* bytes, u32 length) {
  if (length >= 8) {
    return mix_hash(load_bytes(bytes, 8), load_bytes(bytes + length - 8, 8), length);
  }
  u64 value = 0;
  if (kLittleEndian && length >= 4) {
    value = load_bytes(bytes, 4) | load_bytes(bytes + length - 4, 4) << 8 * (length - 4);
  } else {
    for (u32 i = 0; i < length; ++i) value |= u64{static_cast<u8>(bytes[i])} << 8 * i;
  }
  return mix_hash(value, value, length);
}

// The same where eight bytes can be read up to the text's end, and on a little-endian processor.
inline u32 hash_readable(const char* bytes, u32 length) {
  if (!kLittleEndian) return hash_bytes(bytes, length);
  const u64 last = load_bytes(bytes + length - 8, 8);
  if (length >= 8) [[likely]] {
    return mix_hash(load_bytes(bytes, 8), last, length);
  }
  const u64 value = last >> (56 - 8 * length) >> 8;  // in two steps, since the length may be 0
  return mix_hash(value, value, length);
}

// The kind of a key stands in its highest bits: whatever the hashes are, a tag that is looked up by
// its attribute's name and by the value does not find one node twice. There is room for each node
// once. Below that, the children of many parents stand side by side.
enum KeyClass : u32 { kPlainKey = 0, kNamedKey = u32{1} << 30, kValuedKey = u32{2} << 30 };
inline constexpr u32 kHashBits = (u32{1} << 30) - 1;

constexpr u32 element_key(u32 parent, u32 nameHash, KeyClass keyClass) {
  return ((nameHash + parent * 0x9E3779B1u) & kHashBits) | keyClass;
}
constexpr u32 valued_key(u32 elementKey, u32 valueHash) {
  return ((elementKey * 0x85EBCA6Bu + valueHash) & kHashBits) | kValuedKey;
}
constexpr u32 bucket_of(u32 key, u32 bucketMask) {
  return (key ^ key >> 16) & bucketMask;
}

// What a node's parent is told of it.
constexpr u32 child_flag(u32 key) {
  return u32{kPlainChildren} << (key >> 30);
}

// memcmp for the lengths that names have, without a call: two overlapping words at each end.
inline bool equal_bytes(const char* a, const char* b, u64 length) {
  if (length > 32) return std::memcmp(a, b, static_cast<std::size_t>(length)) == 0;
  if (length < 4) {
    return length == 0 ||
           (a[0] == b[0] && a[length / 2] == b[length / 2] && a[length - 1] == b[length - 1]);
  }
  const auto differs = [&](u64 at, u32 width) {
    return load_bytes(a + at, width) ^ load_bytes(b + at, width);
  };
  if (length < 8) return (differs(0, 4) | differs(length - 4, 4)) == 0;
  u64 difference = differs(0, 8) | differs(length - 8, 8);
  if (length > 16) difference |= differs(8, 8) | differs(length - 16, 8);
  return difference == 0;
}

// The same for any length from 4 on, by 16 bytes at a time.
inline bool equal_text(const char* a, const char* b, u64 length) {
  u64 at = 0;
  for (; at + 32 < length; at += 16) {
    if (!equal_bytes(a + at, b + at, 16)) return false;
  }
  return equal_bytes(a + at, b + at, length - at);
}

// What follows the first ":" of a name, or the whole name: the part that no prefix changes.
inline std::string_view local_part(std::string_view name) {
  const void* colon = name.empty() ? nullptr : std::memchr(name.data(), ':', name.size());
  if (colon == nullptr) return name;
  return from(name, static_cast<std::size_t>(static_cast<const char*>(colon) - name.data()) + 1);
}

}  // namespace pxcl::xml
