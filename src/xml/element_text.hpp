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

// The first byte of text[from, end) that `lane` marks; `end` without one.
template <typename Lane>
inline u32 find_by_lanes(std::string_view text, u32 from, u32 end, Lane lane) {
  for (u32 at = from; at < end; at += kLane) {
    u32 marks;
    if (text.size() - at >= kLane) {
      marks = lane(text.data() + at);
    } else {
      const LanePlace place(text, at);
      marks = lane(place.bytes) >> place.dropped;
    }
    if (marks == 0) continue;
    const u32 found = at + lowest(marks);
    return found < end ? found : end;
  }
  return end;
}

// The same, `is` telling the bytes that `lane` marks.
template <typename Lane, typename Is>
constexpr u32 find_marked(std::string_view text, u32 from, u32 end, Lane lane, Is is) {
  if (!std::is_constant_evaluated()) return find_by_lanes(text, from, end, lane);
  while (from < end && !is(text[from])) ++from;
  return from;
}

// The bytes up to "/": what ends a name or a value is among them.
constexpr u32 find_low(std::string_view text, u32 from) {
  return find_marked(text, from, static_cast<u32>(text.size()), low_lane,
                     [](char byte) { return static_cast<u8>(byte) <= '/'; });
}

// The bytes that a usual value does not hold: a double quote, a colon, NUL.
constexpr u32 find_value_end(std::string_view text, u32 from) {
  return find_marked(text, from, static_cast<u32>(text.size()), value_lane,
                     [](char byte) { return byte == '"' || byte == ':' || byte == '\0'; });
}

constexpr u32 find_colon(std::string_view text, u32 from, u32 end) {
  return find_marked(text, from, end, colon_lane, [](char byte) { return byte == ':'; });
}

constexpr bool is_plain_attribute_name(std::string_view text, u32 from, u32 end) {
  return from != end && find_marked(text, from, end, attribute_lane,
                                    [](char byte) { return byte == '=' || byte == ':'; }) == end;
}

// Where the local part of text[begin, end) begins.
constexpr u32 find_local(std::string_view text, u32 begin, u32 end) {
  const u32 colon = find_colon(text, begin, end);
  return colon == end ? begin : colon + 1;
}

// Whether an element ends at `at`.
constexpr bool is_element_end(std::string_view path, u32 at) {
  return at == path.size() || path[at] == '/';
}

// Reads the value whose opening quote stands at `quote`.
constexpr bool read_simple_value(std::string_view path, u32 quote, SimpleElement& element) {
  const u32 size = static_cast<u32>(path.size());
  element.valueLocal = quote + 1;
  u32 close = find_value_end(path, quote + 1);
  if (close < size && path[close] == ':') {
    element.valueLocal = close + 1;
    while (close < size && path[close] != '"') close = find_value_end(path, close + 1);
  }
  if (close == size || path[close] != '"' || close == quote + 1 || !is_element_end(path, close + 1))
    return false;
  if (is_space(path[quote + 1]) || is_space(path[close - 1])) return false;
  element.end = close + 1;
  element.valueBegin = quote + 1;
  element.valueEnd = close;
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
  return is_plain_attribute_name(path, attribute, stop - 1) &&
         read_simple_value(path, stop, element);
}

}  // namespace pxcl::xml
