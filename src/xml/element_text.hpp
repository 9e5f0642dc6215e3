// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// A requested element with at most one attribute, as nearly all are: read by masks, or byte by byte
// when the library is compiled. Every other element goes the general way.

#pragma once

#include "xml/marks.hpp"
#include "xml/plan.hpp"

namespace pxcl::xml {

// Offsets into the path.
struct SimpleElement {
  u32 begin;
  u32 end;
  u32 nameEnd;
  u32 localBegin;    // behind the name's first ":", or its beginning
  u32 attributeEnd;  // 0: there is none
  u32 valueBegin;    // behind the opening quote; 0: the attribute has no value
  u32 valueEnd;      // at the closing quote
  u32 valueLocal;    // behind the value's first ":", or its beginning

  constexpr bool has_attribute() const { return attributeEnd != 0; }
  constexpr bool has_value() const { return valueBegin != 0; }
  constexpr u32 attributeBegin() const { return nameEnd + 1; }
};

// --- Byte by byte --------------------------------------------------------------------------------

// The first byte of text[from, end) that `is` tells; `end` without one.
template <typename Is>
constexpr u32 find_marked(std::string_view text, u32 from, u32 end, Is is) {
  while (from < end && !is(text[from])) ++from;
  return from;
}

// The bytes up to "/": what ends a name or a value is among them.
constexpr u32 find_low(std::string_view text, u32 from) {
  return find_marked(text, from, static_cast<u32>(text.size()),
                     [](char byte) { return static_cast<u8>(byte) <= '/'; });
}

constexpr u32 find_quote(std::string_view text, u32 from) {
  return find_marked(text, from, static_cast<u32>(text.size()),
                     [](char byte) { return byte == '"'; });
}

constexpr bool is_plain_attribute_name(std::string_view text, u32 from, u32 end) {
  return from != end &&
         find_marked(text, from, end, [](char byte) { return byte == '=' || byte == ':'; }) == end;
}

// Where the local part of text[begin, end) begins.
constexpr u32 find_local(std::string_view text, u32 begin, u32 end) {
  const u32 colon = find_marked(text, begin, end, [](char byte) { return byte == ':'; });
  return colon == end ? begin : colon + 1;
}

// Whether an element ends at `at`.
constexpr bool is_element_end(std::string_view path, u32 at) {
  return at == path.size() || path[at] == '/';
}

// Takes the value between the quotes at `open` and `close`; false when it is not a simple one.
constexpr bool take_simple_value(std::string_view path, u32 open, u32 close, u32 local,
                                 SimpleElement& element) {
  if (close == open + 1 || !is_element_end(path, close + 1)) return false;
  if (is_space(path[open + 1]) || is_space(path[close - 1])) return false;
  element.end = close + 1;
  element.valueBegin = open + 1;
  element.valueEnd = close;
  element.valueLocal = local;
  return true;
}

// Reads the element of `path` from `begin` on; false when it is not as simple as `name`, `name
// attribute` or `name attribute="value"`.
constexpr bool read_simple_element(std::string_view path, u32 begin, SimpleElement& element) {
  element = {};
  element.begin = begin;
  element.nameEnd = element.end = find_low(path, begin);
  if (element.nameEnd == begin) return false;
  element.localBegin = find_local(path, begin, element.nameEnd);
  if (is_element_end(path, element.end)) return true;
  const u32 attribute = element.attributeBegin();
  if (path[element.nameEnd] != ' ') return false;
  const u32 stop = find_low(path, attribute);
  if (is_element_end(path, stop)) {
    element.end = element.attributeEnd = stop;
    return is_plain_attribute_name(path, attribute, stop);
  }
  if (path[stop] != '"' || path[stop - 1] != '=') return false;
  element.attributeEnd = stop - 1;
  const u32 close = find_quote(path, stop + 1);
  return is_plain_attribute_name(path, attribute, stop - 1) && close != path.size() &&
         take_simple_value(path, stop, close, find_local(path, stop + 1, close), element);
}

// --- By masks ------------------------------------------------------------------------------------

// The marks of [from, end).
constexpr u64 marks_between(u64 marks, u32 from, u32 end) {
  return marks >> from << from & ((u64{1} << end) - 1);
}

// Where the local part of the marked text's [begin, end) begins.
inline u32 local_by_marks(const ElementMarks& marks, u32 begin, u32 end) {
  const u64 colons = marks_between(marks.colon, begin, end);
  return colons == 0 ? begin : lowest(colons) + 1;
}

// The same as read_simple_element(), for an element whose end is among the bytes that `marks` has;
// false for every other.
inline bool read_marked_element(std::string_view path, u32 begin, const ElementMarks& marks,
                                SimpleElement& element) {
  element = {};
  const u64 behindName = marks.low & (marks.low - 1);
  const u32 name = lowest(marks.low);
  if (marks.low == 0 || name == 0) return false;
  element.begin = begin;
  element.nameEnd = element.end = begin + name;
  element.localBegin = begin + local_by_marks(marks, 0, name);
  if (is_element_end(path, element.end)) return true;
  if (behindName == 0 || path[element.end] != ' ') return false;
  const u32 stop = lowest(behindName);
  const bool isBare = is_element_end(path, begin + stop);
  if (!isBare && (path[begin + stop] != '"' || path[begin + stop - 1] != '=')) return false;
  const u32 attributeEnd = isBare ? stop : stop - 1;
  if (attributeEnd <= name + 1 || marks_between(marks.inName, name + 1, attributeEnd) != 0) {
    return false;
  }
  element.end = element.attributeEnd = begin + attributeEnd;
  if (isBare) return true;
  const u64 closing = marks.quote & (marks.quote - 1);
  if (closing == 0) return false;
  const u32 close = lowest(closing);
  return take_simple_value(path, begin + stop, begin + close,
                           begin + local_by_marks(marks, stop + 1, close), element);
}

}  // namespace pxcl::xml
