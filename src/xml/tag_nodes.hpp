// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Which nodes a start tag of the usual form matches. Mostly the bytes tell: a node whose element is
// written as the tag is, found by one look-up below the only node of the element around it. What they
// do not tell, another prefix, several nodes, goes to a look-up that knows all rules.

#pragma once

#include "xml/matching.hpp"
#include "xml/scan.hpp"
#include "xml/scan_state.hpp"
#include "xml/usual_tag.hpp"

namespace pxcl::xml {

// --- Names ---------------------------------------------------------------------------------------

// The first colon of a name of up to 2 * kLane bytes; kNone without one.
inline u32 plain_colon(const char* text, u32 length) {
  const u64 lanes = u64{colon_lane(text)} | u64{colon_lane(text + kLane)} << kLane;
  const u64 colon = lanes & bits_below(length);
  return colon == 0 ? kNone : lowest(colon);
}

// Whether a name begins with one of the two prefixes that are known to stand as they are.
inline bool keeps_prefix(const Scan& scan, const char* name) {
  const u64 word = load_bytes(name, 8);
  return (word & scan.known[0].mask) == scan.known[0].word ||
         (word & scan.known[1].mask) == scan.known[1].word;
}

// Keeps a prefix in mind: most tags have the same few.
inline void know_prefix(Scan& scan, const char* name, u32 length) {
  scan.known[1] = scan.known[0];
  scan.known[0].mask = (u64{1} << 8 * length) - 1;
  scan.known[0].word = load_bytes(name, 8) & scan.known[0].mask;
}

// Reads a name whose prefix is not one of the two, and keeps that in mind if it stands as it is.
[[gnu::noinline]] inline NameKey read_other_name(Scan& scan, const char* text, u32 length) {
  const u32 colon = plain_colon(text, length);
  const u32 row = colon == kNone ? kNone : find_other_row(scan, text, colon);
  if (kLittleEndian && colon < 7 && row == kNone) know_prefix(scan, text, colon + 1);
  return {length, colon, row, hash_name(spell({text, length}, colon, row))};
}

inline NameKey read_name(Scan& scan, const char* text, u32 length) {
  if (!keeps_prefix(scan, text)) return read_other_name(scan, text, length);
  return {length, kNone, kNone, hash_readable(text, length)};
}

inline bool has_name(const Node& node, const char* text, const NameKey& name) {
  return names_match(node, {text, name.length}, name.colon, name.row);
}

// --- By the bytes --------------------------------------------------------------------------------

// What a look-up by the bytes tells where they are not enough.
inline constexpr u32 kUnclear = kNone - 1;

// Whether `length` bytes of a tag are those of a node's element, which is readable to there only.
inline bool same_element(const char* tag, const char* element, u32 length) {
  return length >= kLane ? same_bytes(tag, element, length) : equal_bytes(tag, element, length);
}

// What the nodes that a tag matches in one way are looked up by: `compared` bytes of it are the element
// of a node that is written as the tag is.
struct LookUp {
  u32 key;
  u32 compared;
};
inline LookUp by_name(u32 parent, u32 nameHash, u32 length) {
  return {element_key(parent, nameHash, kPlainKey), length};
}
inline LookUp by_attribute(u32 parent, u32 nameHash, const Tag& tag) {
  return {element_key(parent, nameHash, kNamedKey), tag.valueBegin - 2};
}
inline LookUp by_value(u32 parent, u32 nameHash, const Tag& tag) {
  const u32 valueHash = hash_readable(tag.value(), tag.valueLength());
  return {valued_key(element_key(parent, nameHash, kValuedKey), valueHash), tag.valueEnd + 1};
}

// The node below `parent` that is looked up so; kNone, or kUnclear. The tag's name stands as it is.
inline u32 find_node(const Scan& scan, u32 parent, const char* tag, LookUp by) {
  u32 found = scan.plan.buckets[bucket_of(by.key, scan.plan.bucketMask)];
  for (; found != kNone; found = scan.plan.nodes[found].nextInBucket) {
    const Node& node = scan.plan.nodes[found];
    if (node.key != by.key || node.parent != parent) continue;
    const bool isSame = node.textLength == by.compared && (node.flags & kSimple) != 0 &&
                        same_element(tag, node.text, by.compared);
    return isSame ? found : kUnclear;
  }
  return kNone;
}

// The node of `element`, the innermost one, if it has one only and a name below it stands as it is;
// else kUnclear.
inline u32 only_node(const Scan& scan, const OpenElement& element, const char* name) {
  const bool isOnly = scan.aliveTop - element.aliveBegin == 1 && keeps_prefix(scan, name);
  return isOnly ? scan.alive[element.aliveBegin] : kUnclear;
}

// The node that a tag below `element` matches, and that alone; kNone, or kUnclear.
inline u32 find_plain_node(const Scan& scan, const OpenElement& element, const char* name,
                           u32 length) {
  if ((element.flags & kPlainChildren) == 0) return kNone;
  const u32 parent = only_node(scan, element, name);
  if (parent == kUnclear) return kUnclear;
  return find_node(scan, parent, name, by_name(parent, hash_readable(name, length), length));
}
inline u32 find_attribute_node(const Scan& scan, const OpenElement& element, const Tag& tag) {
  if ((element.flags & kAttributeChildren) == 0) return kNone;
  const u32 parent = only_node(scan, element, tag.text);
  if (parent == kUnclear) return kUnclear;
  const u32 hash = hash_readable(tag.text, tag.nameLength);
  u32 valued = kNone, named = kNone;
  if ((element.flags & kValuedChildren) != 0)
    valued = find_node(scan, parent, tag.text, by_value(parent, hash, tag));
  if ((element.flags & kNamedChildren) != 0)
    named = find_node(scan, parent, tag.text, by_attribute(parent, hash, tag));
  if (named == kNone) return valued;
  return valued == kNone ? named : kUnclear;
}

// Whether something asks for an attribute that has the value of `node`, which stands below `element`: a
// target, or a node of the same element that names one without value.
[[gnu::noinline]] inline bool is_attribute_wanted(const Scan& scan, const OpenElement& element,
                                                  const Node& node) {
  if ((node.flags & kAttributeTargets) != 0) return true;
  if ((element.flags & kNamedChildren) == 0) return false;
  const u32 nameHash = hash_bytes(node.text, node.nameLength);
  const u32 key = element_key(node.parent, nameHash, kNamedKey);
  for (u32 i = scan.plan.buckets[bucket_of(key, scan.plan.bucketMask)]; i != kNone;
       i = scan.plan.nodes[i].nextInBucket) {
    if (scan.plan.nodes[i].key == key) return true;
  }
  return false;
}

// Whether a tag below `element` has exactly the bytes of `node`, which is expected, and matches that
// alone.
inline bool is_exactly(const Scan& scan, const OpenElement& element, const char* name,
                       const Node& node) {
  const u32 length = node.textLength;
  return scan.aliveTop - element.aliveBegin == 1 && scan.alive[element.aliveBegin] == node.parent &&
         name + length < scan.limit + kReach - 1 && same_element(name, node.text, length) &&
         name[length] == '>' && keeps_prefix(scan, name) &&
         ((node.flags & kMaybeWanted) == 0 || !is_attribute_wanted(scan, element, node));
}

// --- By all rules --------------------------------------------------------------------------------

// Calls visit(number, node) for the nodes with this key below `parent`.
template <typename Visit>
inline void visit_bucket(const Scan& scan, u32 parent, u32 key, const Visit& visit) {
  u32 found = scan.plan.buckets[bucket_of(key, scan.plan.bucketMask)];
  for (; found != kNone; found = scan.plan.nodes[found].nextInBucket) {
    const Node& node = scan.plan.nodes[found];
    if (node.key == key && node.parent == parent) visit(found, node);
  }
}

// The attribute's name as the document writes it: up to the first "=".
inline std::string_view attribute_name(const Tag& tag) {
  const std::string_view text = {tag.attribute(), tag.attributeLength()};
  const char* equals = find_byte(text, '=');
  return equals == nullptr ? text : slice(text, 0, static_cast<std::size_t>(equals - text.data()));
}

// The attribute as the general functions want it.
inline void take_attribute(Scan& scan, const Tag& tag) {
  const std::string_view name = attribute_name(tag);
  const PathName spelled = resolve(scan, name, find_colon(name), scan.generation);
  CurrentAttribute& attribute = scan.attributes[0];
  attribute = {};
  attribute.name = name.data();
  attribute.nameLength = static_cast<u32>(name.size());
  attribute.prefix = spelled.prefix.data();
  attribute.prefixLength = static_cast<u32>(spelled.prefix.size());
  attribute.rest = static_cast<u32>(name.size() - spelled.rest.size());
  attribute.value = tag.value() - 1;
  attribute.valueLength = tag.valueLength() + 2;
  scan.attributes.size = 1;
}

// note_key() for a value that holds no ":".
inline void note_plain_key(Scan& scan, const Node& node, const Tag& tag) {
  for (u32 i = node.elementTargets; i != kNone; i = scan.plan.targets[i].next) {
    Finding& finding = scan.findings[i];
    finding.key = {tag.offset + tag.valueBegin, tag.valueLength()};
    finding.flags = static_cast<u8>(finding.flags & ~kKeyInPath);
  }
}

// Whether the tag is the node's element, however that is written.
inline bool is_element(Scan& scan, const Tag& tag, const NameKey& name, const Node& node) {
  if ((node.flags & kImpossible) != 0 || !has_name(node, tag.text, name)) return false;
  take_attribute(scan, tag);
  return attributes_match(scan, node);
}

[[gnu::noinline]] inline u32* append_unclear(Scan& scan, Tag tag, const NameKey& name, u32 key,
                                             u32 parent, u32* out) {
  visit_bucket(scan, parent, key, [&](u32 number, const Node& node) {
    if (is_element(scan, tag, name, node)) *out++ = number;
  });
  return out;
}

// Appends the nodes below `parent` that a tag with an attribute matches and is looked up so.
inline u32* append_nodes(Scan& scan, const Tag& tag, const NameKey& name, u32 parent, LookUp by,
                         u32* out) {
  const u32 found = name.row == kNone ? find_node(scan, parent, tag.text, by) : kUnclear;
  if (found == kUnclear) return append_unclear(scan, tag, name, by.key, parent, out);
  if (found == kNone) return out;
  const Node& node = scan.plan.nodes[found];
  if ((node.flags & kEachValue) != 0) note_plain_key(scan, node, tag);
  *out = found;
  return out + 1;
}

// A tag's nodes, behind the last ones alive: those that it matches by its value come first.
struct Matched {
  u32* named;
  u32* end;
};

// Puts the nodes that a tag with an attribute matches behind those alive.
[[gnu::noinline]] inline Matched look_up_attribute(Scan& scan, const OpenElement& element,
                                                   const Tag& tag) {
  const NameKey name = read_name(scan, tag.text, tag.nameLength);
  u32* const parentsEnd = scan.alive.begin() + scan.aliveTop;
  Matched matched = {parentsEnd, parentsEnd};
  for (const u32* at = scan.alive.begin() + element.aliveBegin; at != parentsEnd; ++at) {
    const u32 parent = *at;
    const u32 children = scan.plan.nodes[parent].flags;
    u32* end = matched.end;
    if ((children & kValuedChildren) != 0)
      end = append_nodes(scan, tag, name, parent, by_value(parent, name.hash, tag), end);
    matched.named = end;
    if ((children & kNamedChildren) != 0)
      end = append_nodes(scan, tag, name, parent, by_attribute(parent, name.hash, tag), end);
    matched.end = end;
  }
  return matched;
}

// The same for a tag without attribute.
[[gnu::noinline]] inline Matched look_up_plain(Scan& scan, const OpenElement& element,
                                               const char* text, u32 length) {
  const NameKey name = read_name(scan, text, length);
  u32* const parentsEnd = scan.alive.begin() + scan.aliveTop;
  u32* end = parentsEnd;
  for (const u32* at = scan.alive.begin() + element.aliveBegin; at != parentsEnd; ++at) {
    visit_bucket(scan, *at, by_name(*at, name.hash, length).key, [&](u32 number, const Node& node) {
      if ((node.flags & kImpossible) == 0 && has_name(node, text, name)) *end++ = number;
    });
  }
  return {parentsEnd, end};
}

// All nodes of a tag, of which the bytes told `number`, or kUnclear.
inline Matched nodes_of(Scan& scan, const OpenElement& element, const Tag& tag, u32 number) {
  if (number == kUnclear) {
    return tag.has_attribute() ? look_up_attribute(scan, element, tag)
                               : look_up_plain(scan, element, tag.text, tag.nameLength);
  }
  u32* const nodes = scan.alive.begin() + scan.aliveTop;
  if (number == kNone) return {nodes, nodes};
  const Node& node = scan.plan.nodes[number];
  if ((node.flags & kEachValue) != 0) note_plain_key(scan, node, tag);
  *nodes = number;
  const bool isValued = child_flag(node.key) == kValuedChildren;
  return {isValued ? nodes + 1 : nodes, nodes + 1};
}

}  // namespace pxcl::xml
