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

// The fast loop reads up to two lanes from a tag's name on, and the byte behind them: this far from
// the document's end it stops. A tag with an attribute is read by four lanes, its value by lanes of
// its own.
inline constexpr u32 kReach = 2 * kLane + 3;
inline constexpr u32 kAttributeReach = 5 * kLane;

// Where the fast loop stands.
struct Cursor {
  const char* text;
  OpenElement* top;  // the innermost element
  u32 at;            // behind the markup taken last
  u32 limit;         // up to here the loop may read kReach bytes
};

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

// White space at a value's edges is not for the fast loop.
inline bool has_clean_edges(const char* value, u32 length) {
  return static_cast<u8>(value[0]) > ' ' && static_cast<u8>(value[length - 1]) > ' ';
}

// NUL bytes in a value are not either, nor are values that may be qualified names.
inline bool is_clean_value(const char* value, u32 length) {
  if (!has_clean_edges(value, length)) return false;
  u32 at = 0;
  for (; at + kLane < length; at += kLane) {
    if (value_lane(value + at) != 0) return false;
  }
  return (value_lane(value + at) & bits_below(length - at)) == 0;
}

// Reads `name attribute="value"`, which is `length` long; false for any other tag, and for an
// attribute that may declare a namespace or has no name. `low` marks the tag's bytes up to "/";
// there is one.
inline bool read_attribute(Tag& tag, u32 length, u64 low) {
  const char* text = tag.text;
  const u32 blank = lowest(low);
  const u64 rest = low & (low - 1);
  if (rest == 0 || blank > 2 * kLane) return false;
  const u32 quote = lowest(rest);
  if (quote + 2 >= length || quote < blank + 3 || text[blank] != ' ' || text[quote] != '"' ||
      text[quote - 1] != '=' || text[length - 1] != '"' || text[blank + 1] == 'x' ||
      text[blank + 1] == '=') {
    return false;
  }
  tag.nameLength = blank;
  tag.valueBegin = quote + 1;
  tag.valueEnd = length - 1;
  return is_clean_value(tag.value(), tag.valueLength());
}

// The marks of a start tag from its name on, as many lanes as its end takes, four at most, two
// unless it may be long.
inline TagMarks read_marks(const char* name, bool mayBeLong) {
  TagMarks marks = tag_marks(name, 0);
  if (marks.tag != 0) return marks;
  marks |= tag_marks(name, 1);
  if (marks.tag != 0 || !mayBeLong) return marks;
  marks |= tag_marks(name, 2);
  if (marks.tag != 0) return marks;
  marks |= tag_marks(name, 3);
  return marks;
}

// Reads the tag with the name at tag.text; false for one that is not for the fast loop.
inline bool read_tag(Tag& tag, bool mayBeLong) {
  const TagMarks marks = read_marks(tag.text, mayBeLong);
  if (marks.tag == 0) return false;
  const u32 length = lowest(marks.tag);
  if (tag.text[length] != '>') return false;
  tag.length = length + 1;
  tag.valueBegin = 0;
  tag.nameLength = length;
  const u64 low = marks.low & bits_below(length);
  if (low == 0) return length <= 2 * kLane;
  return mayBeLong && read_attribute(tag, length, low);
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

// Appends the nodes below `parent` that a tag without attribute matches.
inline u32* append_plain(const Scan& scan, const Tag& tag, const NameKey& name, u32 parent,
                         u32* out) {
  visit_bucket(scan, parent, element_key(parent, name.hash, kPlainKey),
               [&](u32 number, const Node& node) {
                 if ((node.flags & kImpossible) != 0 || !has_name(node, tag.text, name)) return;
                 *out++ = number;
               });
  return out;
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

// Whether the tag is the node's element. `compared` bytes of it have to be the same where the node
// spells it as the tag does: up to the attribute's value, or with it.
inline bool is_element(Scan& scan, const Tag& tag, const NameKey& name, const Node& node,
                       u32 compared) {
  if (name.row != kNone || node.textLength != compared || (node.flags & kSimple) == 0 ||
      !equal_text(tag.text, node.text, compared)) {
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
inline u32* append_valued(Scan& scan, const Tag& tag, const NameKey& name, u32 parent, u32* out) {
  const u32 key = valued_key(element_key(parent, name.hash, kValuedKey),
                             hash_readable(tag.value(), tag.valueLength()));
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

// Gives the tag's attribute, if it has one, to the targets of `node` that ask for it.
inline bool store_attribute(Scan& scan, const Tag& tag, const Node& node) {
  if (!tag.has_attribute()) return true;
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

// Opens an element whose nodes stand behind the last ones alive, up to `end`; false when memory is
// short.
inline bool open_usual(Scan& scan, OpenElement& opened, const Tag& tag, const u32* end, u32 shape) {
  const u32* node = scan.alive.begin() + scan.aliveTop;
  opened = {tag.offset, tag.nameLength, scan.aliveTop, scan.generation, 0, shape};
  scan.aliveTop = static_cast<u32>(end - scan.alive.begin());
  ++scan.depth;
  if (node == end) return true;
  u32 flags = 0;
  for (; node != end; ++node) {
    const Node& matched = scan.plan.nodes[*node];
    flags |= matched.flags;
    if ((matched.flags & kAttributeTargets) != 0 && !store_attribute(scan, tag, matched))
      return false;
    if (matched.belowTargets == kNone) continue;
    if (!scan.below.push({*node, scan.depth})) return false;
    refresh_standing(scan);
  }
  opened.flags = static_cast<u16>(flags & kOfElement);
  return true;
}

// A leaf is an element in which nothing but text is. Its text, [begin, close), goes to what asks for
// it without the white space at its end.
inline bool take_leaf(Scan& scan, const Tag& tag, u32 close, const u32* end) {
  const u32* node = scan.alive.begin() + scan.aliveTop;
  if (node == end) return true;
  const u32 begin = tag.end();
  while (is_space(scan.document[close - 1])) --close;
  for (; node != end; ++node) {
    const Node& matched = scan.plan.nodes[*node];
    if ((matched.flags & kAttributeTargets) != 0 && !store_attribute(scan, tag, matched))
      return false;
    if (!on_leaf(scan, matched, begin, close - begin)) return false;
  }
  return true;
}

// The next "<" or ">" from `at` on that the loop may take; kNone without one.
inline u32 find_tag_mark(const Cursor& cursor, u32 at) {
  for (; at + kLane <= cursor.limit; at += kLane) {
    const u32 marks = tag_lane(cursor.text + at);
    if (marks != 0) return at + lowest(marks);
  }
  return kNone;
}

inline bool is_end_tag(const char* tag) {
  return tag[0] == '<' && tag[1] == '/';
}

// Where the text of a leaf ends whose start tag, with this name, ends in front of `begin`; 0 for
// every other element.
inline u32 find_leaf_end(const Cursor& cursor, const char* name, u32 length, u32 begin) {
  const char* text = cursor.text;
  if (text[begin] == '<' || static_cast<u8>(text[begin]) <= ' ') return 0;
  const u32 close = find_tag_mark(cursor, begin);
  if (close == kNone || !is_end_tag(text + close) || text[close + 2 + length] != '>') return 0;
  return same_name(name, text + close + 2, length) ? close : 0;
}

// Moves on behind a tag; `taken`: memory was there.
inline i32 pass(Scan& scan, Cursor& cursor, u32 end, bool taken) {
  cursor.at = end;
  if (taken) return kSuccess;
  scan.position = end - 1;
  return kNoMemory;
}

// Opens the element of the tag that the cursor has reached, with its nodes behind the last ones
// alive, up to `end`.
inline i32 enter(Scan& scan, Cursor& cursor, const Tag& tag, const u32* end, u32 shape) {
  ++scan.serial;
  ++cursor.top;
  const bool opened = open_usual(scan, *cursor.top, tag, end, shape);
  const i32 status = pass(scan, cursor, tag.end(), opened);
  return status == kSuccess && scan.standing != 0 ? kUnusual : status;
}

// The same for a leaf, whose text ends at `close`.
inline i32 pass_leaf(Scan& scan, Cursor& cursor, const Tag& tag, u32 close, const u32* end) {
  ++scan.serial;
  scan.metText = true;
  const bool taken = take_leaf(scan, tag, close, end);
  return pass(scan, cursor, close + tag.nameLength + 3, taken);  // the end tag: "</name>"
}

// A tag's nodes, behind the last ones alive: those that it matches by its value come first.
struct Matched {
  u32* named;
  u32* end;
};

inline Matched look_up_attribute(Scan& scan, const OpenElement& element, const Tag& tag) {
  const NameKey name = read_name(scan, tag.text, tag.nameLength);
  const u32* parent = scan.alive.begin() + element.aliveBegin;
  const u32* parentsEnd = scan.alive.begin() + scan.aliveTop;
  u32* end = scan.alive.begin() + scan.aliveTop;
  u32* named = end;
  for (; parent != parentsEnd; ++parent) {
    const u32 children = scan.plan.nodes[*parent].flags;
    if ((children & kValuedChildren) != 0) end = append_valued(scan, tag, name, *parent, end);
    named = end;
    if ((children & kNamedChildren) != 0) end = append_named(scan, tag, name, *parent, end);
  }
  return {named, end};
}

inline u32* look_up_plain(Scan& scan, const OpenElement& element, const Tag& tag) {
  const NameKey name = read_name(scan, tag.text, tag.nameLength);
  const u32* parent = scan.alive.begin() + element.aliveBegin;
  const u32* parentsEnd = scan.alive.begin() + scan.aliveTop;
  u32* end = scan.alive.begin() + scan.aliveTop;
  for (; parent != parentsEnd; ++parent) {
    if ((scan.plan.nodes[*parent].flags & kPlainChildren) == 0) continue;
    end = append_plain(scan, tag, name, *parent, end);
  }
  return end;
}

}  // namespace pxcl::xml
