// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// An element with at most one attribute, read by masks alone: what nearly every tag and every
// requested element is. Everything else goes the general way.

#pragma once

#include "xml/marks.hpp"

namespace pxcl::xml {

// Offsets into the element's text. An element without attribute has no more than a name; one whose
// attribute has no value has valueBegin 0.
struct SimpleElement {
  u32 nameLength;
  u32 colon;  // of the name's first ":"; kNoColon without one
  u32 attributeBegin;
  u32 attributeEnd;
  u32 valueBegin;  // behind the opening quote
  u32 valueEnd;    // at the closing quote
  u32 valueLocal;  // behind the value's first ":", or its beginning

  bool has_attribute() const { return attributeEnd != 0; }
  bool has_value() const { return valueBegin != 0; }
};

inline constexpr u32 kNoColon = ~u32{0};

inline u32 first_mark(u64 marks) {
  return marks == 0 ? kNoColon : lowest(marks);
}

// Reads the single attribute behind the name; false when it is not as simple as `name="value"` or
// `name`: more attributes, white space where it counts, a prefix, quotes or "/" in its name.
inline bool read_simple_attribute(const TextMarks& marks, u32 length, SimpleElement& element) {
  const u32 begin = element.nameLength + 1;
  const u64 behind = ~bits_below(begin);
  element.attributeBegin = begin;
  element.attributeEnd = length;
  if (marks.equals == 0) {
    return begin < length &&
           ((marks.blank | marks.slash | marks.colon | marks.quote) & behind) == 0;
  }
  const u32 equals = lowest(marks.equals);
  const u64 rest = marks.quote & (marks.quote - 1);
  if (rest == 0 || equals <= begin) return false;
  const u32 open = lowest(marks.quote);
  const u32 close = lowest(rest);
  const u64 inName = behind & bits_below(equals);
  if (open != equals + 1 || close + 1 != length ||
      ((marks.blank | marks.slash | marks.colon) & inName) != 0) {
    return false;
  }
  element.attributeEnd = equals;
  element.valueBegin = open + 1;
  element.valueEnd = close;
  const u64 valueColon = marks.colon & ~bits_below(open);
  element.valueLocal = valueColon == 0 ? open + 1 : lowest(valueColon) + 1;
  const u64 valueEdges = u64{1} << (open + 1) | u64{1} << (close - 1);
  return open + 1 != close && (marks.blank & valueEdges) == 0;
}

// Reads the element whose text has these marks; false when it is not simple.
inline bool read_simple_element(const TextMarks& marks, u32 length, SimpleElement& element) {
  element = {};
  element.nameLength = marks.blank == 0 ? length : lowest(marks.blank);
  const u64 inName = bits_below(element.nameLength);
  element.colon = first_mark(marks.colon & inName);
  if (element.nameLength == 0 || ((marks.quote | marks.slash) & inName) != 0) return false;
  return element.nameLength == length || read_simple_attribute(marks, length, element);
}

}  // namespace pxcl::xml
