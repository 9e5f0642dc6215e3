// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Elements and attributes as the step functions hand them around.

#pragma once

#include "clxml.h"
#include "util/owned.hpp"
#include "util/types.hpp"

namespace pxcl::xml {

// A member of a caller's record: null is empty, whatever its length says.
inline std::string_view member(const char* text, u64 length) {
  return text == nullptr ? std::string_view() : as_view(text, length);
}
inline std::string_view name_of(const ClXmlElement& element) {
  return member(element.name, element.nameLength);
}
inline std::string_view name_of(const ClXmlAttribute& attribute) {
  return member(attribute.name, attribute.nameLength);
}
inline std::string_view value_of(const ClXmlAttribute& attribute) {
  return member(attribute.value, attribute.valueLength);
}
inline std::span<const ClXmlAttribute> attributes_of(const ClXmlElement& element) {
  if (element.attributes == nullptr) return {};
  return {element.attributes, element.attributeCount};
}

inline bool is_quoted(std::string_view value) {
  return value.size() >= 2 && value.front() == '"' && value.back() == '"';
}

// The beginning of `text` up to its first white space.
std::string_view until_space(std::string_view text);

// Prefix and local part around the first ":"; a name without one is all local part.
struct QualifiedName {
  std::string_view prefix;
  std::string_view local;
};
QualifiedName split_qualified(std::string_view name);

// Room for the attributes of one element: usual ones stay in the object.
class AttributeBlock {
 public:
  ClXmlAttribute* reserve(u32 count) {
    if (count <= kInline) return inline_;
    block_ = Owned<ClXmlAttribute>::allocate(count);
    return block_.get();
  }

 private:
  static constexpr u32 kInline = 8;
  ClXmlAttribute inline_[kInline] = {};
  Owned<ClXmlAttribute> block_;
};

// Splits the inside of a start tag, or one element of a path, into `element`, whose attributes live
// as long as `block`. The name stays null when the text can't be split; false when memory is short.
bool split(std::string_view text, AttributeBlock& block, ClXmlElement& element);

}  // namespace pxcl::xml
