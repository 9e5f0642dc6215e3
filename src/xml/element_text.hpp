// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// A requested element with at most one attribute, as nearly all are: read by masks, or byte by byte
// when the library is compiled, from one separator to the next. Every other element goes the general
// way.

#pragma once

#include "xml/marks.hpp"
#include "xml/plan.hpp"

namespace pxcl::xml {

// What an element is read from: the rest of a path, or its beginning.
struct ElementText {
  const char* bytes;
  u32 size;

  constexpr char operator[](u32 at) const { return bytes[at]; }
  constexpr bool ends_element(u32 at) const { return at == size || bytes[at] == '/'; }
};

// Reads the value behind the quote at `open`, which was the last separator.
template <typename Separators>
constexpr bool read_value(ElementText text, u32 open, u32 nameHash, Separators& separators,
                          Node& node, RequestedAttribute& attribute) {
  u32 local = open + 1;
  u32 close = separators.next();
  while (close != text.size && text[close] != '"') {
    const char byte = text[close];
    if (byte == '\0' || byte == '<' || byte == '>') return false;  // not in a usual tag
    if (byte == ':' && local == open + 1) local = close + 1;
    close = separators.next();
  }
  // An empty value, and one in white space, are not simple.
  if (close == text.size || static_cast<u8>(text[open + 1]) <= '"' ||
      static_cast<u8>(text[close - 1]) <= ' ') {
    return false;
  }
  attribute.value = text.bytes + open + 1;
  attribute.valueLength = close - open - 1;
  node.flags = kSimple | kMaybeWanted;
  node.textLength = close + 1;
  node.key = valued_key(element_key(node.parent, nameHash, kValuedKey),
                        separators.hash(text.bytes, local, close));
  return text.ends_element(close + 1);
}

// Reads the attribute behind the blank at `blank`, which was the last separator.
template <typename Separators>
constexpr bool read_attribute(ElementText text, u32 blank, u32 nameHash, Separators& separators,
                              Node& node, RequestedAttribute& attribute) {
  const u32 end = separators.next();
  if (end == blank + 1 || text[blank + 1] == 'x') return false;  // it may declare a namespace
  attribute.name = text.bytes + blank + 1;
  attribute.nameLength = end - blank - 1;
  node.attributeCount = 1;
  if (text.ends_element(end)) {
    attribute.value = nullptr;
    attribute.valueLength = 0;
    node.textLength = end;
    node.key = element_key(node.parent, nameHash, kNamedKey);
    node.flags = kSimple | kNameOnly;
    return true;
  }
  if (text[end] != '=' || separators.next() != end + 1) return false;
  if (end + 1 == text.size || text[end + 1] != '"') return false;
  return read_value(text, end + 1, nameHash, separators, node, attribute);
}

// Reads the element that `text` begins with into a node whose parent is known, and its attribute;
// false when it is not as simple as `name`, `name attribute` or `name attribute="value"`, or holds what
// no usual tag does: then its bytes alone would not tell what a tag with them is.
// Separators::next() leads from one separator to the next and to the text's end, where it stops.
template <typename Separators>
constexpr bool read_simple_element(ElementText text, Separators separators, Node& node,
                                   RequestedAttribute& attribute) {
  u32 at = separators.next();
  if (at == 0) return false;
  if (at != text.size && text[at] == ':') at = separators.next();
  node.text = text.bytes;
  node.textLength = node.nameLength = at;
  node.flags = kSimple;
  node.attributeCount = 0;
  const u32 nameHash = separators.hash(text.bytes, 0, at);
  if (text.ends_element(at)) {
    node.key = element_key(node.parent, nameHash, kPlainKey);
    return true;
  }
  return text[at] == ' ' && read_attribute(text, at, nameHash, separators, node, attribute);
}

// Whether tags may be held against the bytes of an element at `depth`, as Node::next asks for: there
// is room to open it.
constexpr bool is_expectable(const Node& node, u32 depth) {
  return (node.flags & (kSimple | kNameOnly | kEachValue)) == kSimple &&
         node.nameLength < 2 * kLane && depth <= kUsualDepth;
}

// --- Byte by byte --------------------------------------------------------------------------------

struct SeparatorBytes {
  ElementText text;
  u32 at = 0;

  static constexpr bool is_separator(char byte) {
    return static_cast<u8>(byte) <= '"' || byte == '/' || (byte >= ':' && byte <= '>');
  }
  constexpr u32 next() {
    while (at < text.size && !is_separator(text[at])) ++at;
    return at++;
  }
  static constexpr u32 hash(const char* bytes, u32 begin, u32 end) {
    return hash_bytes(bytes + begin, end - begin);
  }
};

constexpr bool read_simple_element(std::string_view path, Node& node,
                                   RequestedAttribute& attribute) {
  const ElementText text = {path.data(), static_cast<u32>(path.size())};
  return read_simple_element(text, SeparatorBytes{text}, node, attribute);
}

// --- By masks ------------------------------------------------------------------------------------

struct SeparatorMarks {
  u64 marks;   // not 0 while there is a next one
  u32 before;  // bytes of the path in front of the element

  u32 next() {
    const u32 at = static_cast<u32>(__builtin_ctzll(marks));
    marks &= marks - 1;
    return at;
  }
  u32 hash(const char* bytes, u32 begin, u32 end) const {
    const bool isReadable = before + end >= 8;
    return isReadable ? hash_readable(bytes + begin, end - begin)
                      : hash_bytes(bytes + begin, end - begin);
  }
};

// The same for the element of `path` that begins at `begin`, unless it is long: then it is false.
inline bool read_marked_element(std::string_view path, u32 begin, Node& node,
                                RequestedAttribute& attribute) {
  const u32 rest = static_cast<u32>(path.size()) - begin;
  const ElementText text = {path.data() + begin, rest < kMostRead ? rest : kMostRead};
  const SeparatorMarks marks = {element_marks(path, begin), begin};
  return read_simple_element(text, marks, node, attribute) && node.textLength < kMostRead;
}

}  // namespace pxcl::xml
