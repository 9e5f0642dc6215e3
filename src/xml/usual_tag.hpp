// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Start tags of the usual form, without attribute or with one, read by masks alone: what they match
// and what comes of them.

#pragma once

#include "xml/marks.hpp"
#include "xml/matching.hpp"
#include "xml/scan.hpp"
#include "xml/scan_state.hpp"
#include "xml/status.hpp"

namespace pxcl::xml {

inline constexpr i32 kUnusual = 1;  // not for the fast loop

// The loop is as fast as it is since its cursor stays in registers: what it does for nearly every tag
// is part of it, also where several call it, and what is rare is a function apart. A debug build has
// every function once.
#if defined(__OPTIMIZE__)
#define PXCL_INLINED [[gnu::always_inline]] inline
#else
#define PXCL_INLINED inline
#endif

// The fast loop reads up to two lanes from a tag's name on, and the byte behind them: this far from
// the document's end it stops. The name of an attribute is read by two lanes, its value by four.
inline constexpr u32 kReach = 2 * kLane + 3;
inline constexpr u32 kAttributeReach = 4 * kLane + kBlock + 4;

// Where the fast loop stands.
struct Cursor {
  const char* text;
  const char* at;     // behind the markup taken last
  const char* limit;  // up to here the loop may read kReach bytes
  OpenElement* top;   // the innermost element
};

inline u32 offset_of(const Cursor& cursor, const char* at) {
  return static_cast<u32>(at - cursor.text);
}

// The bits of the first `length` bytes, fewer than kBlock.
inline constexpr u64 bits_below(u32 length) {
  return (u64{1} << length) - 1;
}

// Whether `length` bytes, 2 * kLane at most, are the same; both sides are readable to that length.
inline bool same_name(const char* a, const char* b, u32 length) {
  if (length > kLane) {
    if (same_lane(a, b) != bits_below(kLane)) return false;
    a += kLane;
    b += kLane;
    length -= kLane;
  }
  return (~u64{same_lane(a, b)} & bits_below(length)) == 0;
}

// --- A start tag of the usual form ---

// A start tag without attribute or with one, `name attribute="value"`. Offsets into it, from its
// name on.
struct Tag {
  const char* text;
  u32 offset;
  u32 nameLength;
  u32 valueBegin;  // 0 without an attribute
  u32 valueEnd;    // where the closing quote is
  u32 length;      // with the ">"

  bool has_attribute() const { return valueBegin != 0; }
  u32 attributeBegin() const { return nameLength + 1; }
  u32 attributeLength() const { return valueBegin - 2 - attributeBegin(); }
  const char* attribute() const { return text + attributeBegin(); }
  u32 valueLength() const { return valueEnd - valueBegin; }
  const char* value() const { return text + valueBegin; }
  u32 end() const { return offset + length; }  // behind the tag, in the document
  // Up to its text, or up to its value.
  u32 shapeLength() const { return has_attribute() ? valueBegin : length; }
};

// Where the first of the bytes of name_end_lane is among two lanes; kNone without one.
inline u32 find_name_end(const char* text) {
  const u32 first = name_end_lane(text);
  if (first != 0) return lowest(first);
  const u32 second = name_end_lane(text + kLane);
  return second != 0 ? kLane + lowest(second) : kNone;
}

// plain_value_length() for a value with white space inside, or a longer one, fewer than kBlock bytes.
[[gnu::noinline]] inline u32 long_value_length(const char* value) {
  for (u32 at = 0; at < kBlock; at += kLane) {
    const u32 marks = value_lane(value + at) | tag_lane(value + at);
    if (marks == 0) continue;
    const u32 length = at + lowest(marks);
    if (length == 0 || !is_value_end(value + length)) return 0;
    const bool hasBlankEdge =
        static_cast<u8>(value[0]) <= ' ' || static_cast<u8>(value[length - 1]) <= ' ';
    return hasBlankEdge ? 0 : length;
  }
  return 0;
}

// Reads the tag with the name at tag.text, which is `nameLength` long, and one attribute; false for
// any other tag, and for an attribute that may declare a namespace or has no name.
inline bool read_attribute_tag(Tag& tag, u32 nameLength) {
  const char* attribute = tag.text + nameLength + 1;
  if (attribute[-1] != ' ' || attribute[0] == 'x' || attribute[0] == '=') return false;
  const u32 quote = find_name_end(attribute);
  if (quote == kNone || quote < 2 || attribute[quote] != '"' || attribute[quote - 1] != '=') {
    return false;
  }
  const char* value = attribute + quote + 1;
  u32 valueLength = plain_value_length(value);
  if (valueLength == 0) valueLength = long_value_length(value);
  tag.nameLength = nameLength;
  tag.valueBegin = nameLength + quote + 2;
  tag.valueEnd = tag.valueBegin + valueLength;
  tag.length = tag.valueEnd + 2;
  return valueLength != 0;
}

// --- Finding the nodes of a tag ---

struct Prefix {
  u32 length;  // with its ":"
  u32 row;     // as NameKey has it
};

// The first colon of a name of up to 2 * kLane bytes; kNone without one.
inline u32 plain_colon(const char* text, u32 length) {
  const u64 lanes = u64{colon_lane(text)} | u64{colon_lane(text + kLane)} << kLane;
  const u64 colon = lanes & bits_below(length);
  return colon == 0 ? kNone : lowest(colon);
}

// Works out the prefix and keeps it in mind when it stands as it is: most tags have the same few.
[[gnu::noinline]] inline Prefix find_prefix(Scan& scan, const char* text, u32 length) {
  const u32 colon = plain_colon(text, length);
  const u32 row = colon == kNone ? kNone : find_other_row(scan, text, colon);
  const Prefix prefix = {colon + 1, row};  // kNone + 1 is 0
  if (!kLittleEndian || colon >= 7 || row != kNone) return prefix;
  scan.known[1] = scan.known[0];
  scan.known[0].mask = (u64{1} << 8 * (colon + 1)) - 1;
  scan.known[0].word = load_bytes(text, 8) & scan.known[0].mask;
  scan.known[0].length = colon + 1;
  return prefix;
}

inline NameKey read_name(Scan& scan, const char* text, u32 length) {
  NameKey name;
  name.length = length;
  name.row = kNone;
  const u64 word = load_bytes(text, 8);
  if ((word & scan.known[0].mask) == scan.known[0].word) {
    name.localBegin = scan.known[0].length;
  } else if ((word & scan.known[1].mask) == scan.known[1].word) {
    name.localBegin = scan.known[1].length;
  } else {
    const Prefix prefix = find_prefix(scan, text, length);
    name.localBegin = prefix.length;
    name.row = prefix.row;
  }
  name.hash = hash_readable(text + name.localBegin, length - name.localBegin);
  return name;
}

[[gnu::noinline]] inline bool has_other_name(const Node& node, const char* text,
                                             const NameKey& name) {
  return names_match(node, {text, name.length}, name.localBegin - 1, name.row);
}

inline bool has_name(const Node& node, const char* text, const NameKey& name) {
  if (name.row != kNone) return has_other_name(node, text, name);
  return node.nameLength == name.length && equal_bytes(node.text, text, name.length);
}

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
    finding.keyBegin = tag.offset + tag.valueBegin;
    finding.keyLength = tag.valueLength();
    finding.flags = static_cast<u8>(finding.flags & ~kKeyInPath);
  }
}

// Whether the node's element, which is not written as the tag is, means the same.
[[gnu::noinline]] inline bool means_the_same(Scan& scan, const Tag& tag, const NameKey& name,
                                             const Node& node) {
  if ((node.flags & kImpossible) != 0 || !has_name(node, tag.text, name)) return false;
  take_attribute(scan, tag);
  return attributes_match(scan, node);
}

// Whether `length` bytes of a tag are those of a node's element, which is readable to there only.
inline bool same_element(const char* tag, const char* element, u32 length) {
  return length >= kLane ? same_bytes(tag, element, length) : equal_bytes(tag, element, length);
}

// Whether the tag is the node's element. `compared` bytes of it have to be the same where the node
// spells it as the tag does: up to the attribute's value, or with it.
inline bool is_element(Scan& scan, const Tag& tag, const NameKey& name, const Node& node,
                       u32 compared) {
  if (name.row != kNone || node.textLength != compared || (node.flags & kSimple) == 0 ||
      !same_element(tag.text, node.text, compared)) {
    return means_the_same(scan, tag, name, node);
  }
  return true;
}

// Appends the nodes below `parent` that the tag matches by its attribute's name alone, or with the
// value.
inline u32* append_named(Scan& scan, const Tag& tag, const NameKey& name, u32 parent, u32* out) {
  visit_bucket(scan, parent, element_key(parent, name.hash, kNamedKey),
               [&](u32 number, const Node& node) {
                 if (!is_element(scan, tag, name, node, tag.valueBegin - 2)) return;
                 if ((node.flags & kEachValue) != 0) note_plain_key(scan, node, tag);
                 *out++ = number;
               });
  return out;
}
inline u32* append_valued(Scan& scan, const Tag& tag, const NameKey& name, u32 valueHash,
                          u32 parent, u32* out) {
  const u32 key = valued_key(element_key(parent, name.hash, kValuedKey), valueHash);
  visit_bucket(scan, parent, key, [&](u32 number, const Node& node) {
    if (is_element(scan, tag, name, node, tag.valueEnd + 1)) *out++ = number;
  });
  return out;
}

// --- Taking a start tag --------------------------------------------------------------------------

inline bool is_named(const Tag& tag, std::string_view name) {
  if (tag.attributeLength() < name.size()) return false;
  if (tag.attributeLength() > name.size()) return attribute_name(tag) == name;
  return equal_bytes(tag.attribute(), name.data(), name.size());
}

// Gives the tag's attribute to the targets of `node` that ask for it.
inline bool store_attribute(Scan& scan, const Tag& tag, const Node& node) {
  for (u32 number = node.attributeTargets; number != kNone;) {
    const Target& target = scan.plan.targets[number];
    if (is_named(tag, {target.attributeName, target.attributeNameLength}) &&
        !record(scan, number, tag.offset + tag.valueBegin - 1, tag.valueLength() + 2, kFound)) {
      return false;
    }
    number = target.next;
  }
  return true;
}

// Of a tag that is known to have no attribute nothing but its numbers is ever made.
inline bool gives_attribute(const Tag& tag, const Node& node) {
  return tag.has_attribute() && (node.flags & kAttributeTargets) != 0;
}

// Opens an element whose nodes stand behind the last ones alive, up to `end`; false when memory is
// short.
PXCL_INLINED bool open_usual(Scan& scan, OpenElement& opened, const Tag& tag, const u32* end,
                             u32 shape) {
  const u32* node = scan.alive.begin() + scan.aliveTop;
  opened = {tag.offset, tag.nameLength, scan.aliveTop, scan.generation, 0, shape};
  scan.aliveTop = static_cast<u32>(end - scan.alive.begin());
  ++scan.depth;
  if (node == end) return true;
  u32 flags = 0;
  for (; node != end; ++node) {
    const Node& matched = scan.plan.nodes[*node];
    flags |= matched.flags;
    if (gives_attribute(tag, matched) && !store_attribute(scan, tag, matched)) return false;
    if (matched.belowTargets == kNone) continue;
    if (!scan.below.push({*node, scan.depth})) return false;
    refresh_standing(scan);
  }
  opened.flags = static_cast<u16>(flags & kOfElement);
  return true;
}

// A leaf is an element in which nothing but text is. Its text, up to `close`, goes to what asks for
// it without the white space at its end.
PXCL_INLINED bool take_leaf(Scan& scan, const Tag& tag, const char* close, const u32* end) {
  const u32* node = scan.alive.begin() + scan.aliveTop;
  if (node == end) return true;
  while (is_space(close[-1])) --close;
  const u32 length = static_cast<u32>(close - tag.text) - tag.length;
  for (; node != end; ++node) {
    const Node& matched = scan.plan.nodes[*node];
    if (gives_attribute(tag, matched) && !store_attribute(scan, tag, matched)) return false;
    if (!on_leaf(scan, matched, tag.end(), length)) return false;
  }
  return true;
}

// The next "<" or ">" from `at` on that the loop may take; null without one.
inline const char* find_tag_mark(const char* at, const char* limit) {
  for (; limit - at >= static_cast<std::ptrdiff_t>(kLane); at += kLane) {
    const u32 marks = tag_lane(at);
    if (marks != 0) return at + lowest(marks);
  }
  return nullptr;
}

inline bool is_end_tag(const char* tag) {
  return tag[0] == '<' && tag[1] == '/';
}

// Where the text of a leaf ends whose start tag, with this name, ends in front of `begin`; null for
// every other element.
inline const char* find_leaf_end(const char* limit, const char* name, u32 length,
                                 const char* begin) {
  if (*begin == '<' || static_cast<u8>(*begin) <= ' ') return nullptr;
  const char* close = find_tag_mark(begin, limit);
  if (close == nullptr || !is_end_tag(close) || close[2 + length] != '>') return nullptr;
  return same_name(name, close + 2, length) ? close : nullptr;
}

// `taken`: memory was there for all up to the cursor.
inline i32 status_of(Scan& scan, const Cursor& cursor, bool taken) {
  if (taken) return kSuccess;
  scan.position = offset_of(cursor, cursor.at) - 1;
  return kNoMemory;
}

// Opens the element of the tag that the cursor has reached, with its nodes behind the last ones
// alive, up to `end`.
PXCL_INLINED i32 enter(Scan& scan, Cursor& cursor, const Tag& tag, const u32* end, u32 shape) {
  ++scan.serial;
  cursor.at = tag.text + tag.length;
  const bool opened = open_usual(scan, *++cursor.top, tag, end, shape);
  return opened && scan.standing != 0 ? kUnusual : status_of(scan, cursor, opened);
}

// The same for a leaf, whose text ends at `close`.
PXCL_INLINED i32 pass_leaf(Scan& scan, Cursor& cursor, const Tag& tag, const char* close,
                           const u32* end) {
  ++scan.serial;
  scan.metText = true;
  cursor.at = close + tag.nameLength + 3;  // the end tag: "</name>"
  return status_of(scan, cursor, take_leaf(scan, tag, close, end));
}

// A tag's nodes, behind the last ones alive: those that it matches by its value come first.
struct Matched {
  u32* named;
  u32* end;
};

// Appends the nodes below `parent` that the tag matches to those at `out`.
inline Matched append_matched(Scan& scan, const Tag& tag, const NameKey& name, u32 valueHash,
                              u32 parent, u32* out) {
  const u32 children = scan.plan.nodes[parent].flags;
  if ((children & kValuedChildren) != 0)
    out = append_valued(scan, tag, name, valueHash, parent, out);
  u32* const named = out;
  if ((children & kNamedChildren) != 0) out = append_named(scan, tag, name, parent, out);
  return {named, out};
}

// look_up_attribute() below an element that matches several nodes.
[[gnu::noinline]] inline Matched look_up_below_many(Scan& scan, const OpenElement& element,
                                                    const Tag& tag, const NameKey& name,
                                                    u32 valueHash) {
  const u32* parent = scan.alive.begin() + element.aliveBegin;
  u32* const parentsEnd = scan.alive.begin() + scan.aliveTop;
  Matched matched = {parentsEnd, parentsEnd};
  for (; parent != parentsEnd; ++parent) {
    matched = append_matched(scan, tag, name, valueHash, *parent, matched.end);
  }
  return matched;
}

[[gnu::noinline]] inline Matched look_up_attribute(Scan& scan, const OpenElement& element,
                                                   const Tag& tag) {
  const NameKey name = read_name(scan, tag.text, tag.nameLength);
  const u32 valueHash = hash_readable(tag.value(), tag.valueLength());
  if (scan.aliveTop - element.aliveBegin != 1) {
    return look_up_below_many(scan, element, tag, name, valueHash);
  }
  u32* const end = scan.alive.begin() + scan.aliveTop;
  return append_matched(scan, tag, name, valueHash, end[-1], end);
}

// Appends the nodes below `parent` that a tag without attribute matches whose name, with this hash
// of its local part, stands as it is.
inline u32* append_plain(const Scan& scan, const char* name, u32 length, u32 hash, u32 parent,
                         u32* out) {
  visit_bucket(scan, parent, element_key(parent, hash, kPlainKey),
               [&](u32 number, const Node& node) {
                 if ((node.flags & kImpossible) == 0 && node.nameLength == length &&
                     equal_bytes(node.text, name, length)) {
                   *out++ = number;
                 }
               });
  return out;
}

// Calls append(parent, end) for the nodes of `element` that have children without attribute.
template <typename Append>
inline u32* visit_parents(Scan& scan, const OpenElement& element, const Append& append) {
  const u32* parent = scan.alive.begin() + element.aliveBegin;
  u32* end = scan.alive.begin() + scan.aliveTop;
  const u32* const parentsEnd = end;
  for (; parent != parentsEnd; ++parent) {
    if ((scan.plan.nodes[*parent].flags & kPlainChildren) != 0) end = append(*parent, end);
  }
  return end;
}

// look_up_plain() for a name whose prefix is another one than the last two.
[[gnu::noinline]] inline u32* look_up_other(Scan& scan, const OpenElement& element,
                                            const char* text, u32 length) {
  const NameKey name = read_name(scan, text, length);
  return visit_parents(scan, element, [&](u32 parent, u32* end) {
    visit_bucket(scan, parent, element_key(parent, name.hash, kPlainKey),
                 [&](u32 number, const Node& node) {
                   if ((node.flags & kImpossible) == 0 && has_name(node, text, name))
                     *end++ = number;
                 });
    return end;
  });
}

// look_up_plain() below an element that matches several nodes.
[[gnu::noinline]] inline u32* look_up_below_many(Scan& scan, const OpenElement& element,
                                                 const char* text, u32 length, u32 hash) {
  return visit_parents(scan, element, [&](u32 parent, u32* end) {
    return append_plain(scan, text, length, hash, parent, end);
  });
}

// Puts the nodes that a tag without attribute matches behind those alive, and returns their end.
// Some node of `element` has children without attribute.
inline u32* look_up_plain(Scan& scan, const OpenElement& element, const char* text, u32 length) {
  const u64 word = load_bytes(text, 8);
  u32 local = 0;
  if ((word & scan.known[0].mask) == scan.known[0].word) {
    local = scan.known[0].length;
  } else if ((word & scan.known[1].mask) == scan.known[1].word) {
    local = scan.known[1].length;
  } else {
    return look_up_other(scan, element, text, length);
  }
  const u32 hash = hash_readable(text + local, length - local);
  if (scan.aliveTop - element.aliveBegin != 1) {
    return look_up_below_many(scan, element, text, length, hash);
  }
  u32* const end = scan.alive.begin() + scan.aliveTop;
  return append_plain(scan, text, length, hash, end[-1], end);
}

}  // namespace pxcl::xml
