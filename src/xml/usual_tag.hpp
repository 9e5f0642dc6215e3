// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Start tags of the usual form, without attribute or with one, and leaves, read by masks alone.

#pragma once

#include "xml/marks.hpp"
#include "xml/plan.hpp"

namespace pxcl::xml {

// The fast loop reads up to two lanes from a tag's name on, and the byte behind them: this far from
// the document's end it stops. The name of an attribute is read by two lanes, its value by four.
inline constexpr u32 kReach = 2 * kLane + 3;
inline constexpr u32 kAttributeReach = 4 * kLane + kBlock + 4;

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
  if (quote == kNone || quote < 2 || std::memcmp(attribute + quote - 1, "=\"", 2) != 0)
    return false;
  const char* value = attribute + quote + 1;
  u32 valueLength = plain_value_length(value);
  if (valueLength == 0) valueLength = long_value_length(value);
  tag.nameLength = nameLength;
  tag.valueBegin = nameLength + quote + 2;
  tag.valueEnd = tag.valueBegin + valueLength;
  tag.length = tag.valueEnd + 2;
  return valueLength != 0;
}

// --- Leaves --------------------------------------------------------------------------------------

// The next "<" or ">" from `at` on that the loop may take; null without one.
inline const char* find_tag_mark(const char* at, const char* limit) {
  for (; limit - at >= static_cast<std::ptrdiff_t>(kLane); at += kLane) {
    const u32 marks = tag_lane(at);
    if (marks != 0) return at + lowest(marks);
  }
  return nullptr;
}

inline bool is_end_tag(const char* tag) {
  return std::memcmp(tag, "</", 2) == 0;
}

// Where the text ends that begins at `begin`, right behind a start tag, if an end tag follows it; null
// for no text and for any other.
inline const char* find_text_end(const char* limit, const char* begin) {
  if (*begin == '<' || static_cast<u8>(*begin) <= ' ') return nullptr;
  const char* close = find_tag_mark(begin, limit);
  return close != nullptr && is_end_tag(close) ? close : nullptr;
}

// Where the text of a leaf ends whose start tag, with this name, ends in front of `begin`; null for
// every other element.
inline const char* find_leaf_end(const char* limit, const char* name, u32 length,
                                 const char* begin) {
  const char* close = find_text_end(limit, begin);
  if (close == nullptr || close[2 + length] != '>') return nullptr;
  return same_name(name, close + 2, length) ? close : nullptr;
}

// The same behind a tag without attribute, whose name a ">" ends, too.
inline const char* find_plain_leaf_end(const char* limit, const char* name, u32 length) {
  const char* close = find_text_end(limit, name + length + 1);
  return close != nullptr && same_name(name, close + 2, length + 1) ? close : nullptr;
}

}  // namespace pxcl::xml
