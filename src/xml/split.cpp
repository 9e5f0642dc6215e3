// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The pieces of a start tag: name, attributes, qualified names and quoted values.

#include "xml/attributes.hpp"
#include "xml/elements.hpp"
#include "xml/status.hpp"

namespace pxcl::xml {

std::string_view until_space(std::string_view text) {
  std::size_t length = 0;
  while (length < text.size() && !is_space(text[length])) ++length;
  return slice(text, 0, length);
}

QualifiedName split_qualified(std::string_view name) {
  const char* colon = find_byte(name, ':');
  if (colon == nullptr) return {{}, name};
  const std::size_t prefixLength = static_cast<std::size_t>(colon - name.data());
  return {slice(name, 0, prefixLength), from(name, prefixLength + 1)};
}

bool split(std::string_view text, AttributeBlock& block, ClXmlElement& element) {
  element = {};
  const i32 count = ClXmlSplit_Element(text.data(), text.size(), nullptr);
  if (count > 0) {
    element.attributes = block.reserve(static_cast<u32>(count));
    if (element.attributes == nullptr) return false;
    element.attributeCount = static_cast<u32>(count);
  }
  ClXmlSplit_Element(text.data(), text.size(), &element);
  return true;
}

namespace {

void clear(ClXmlElement& element) {
  element.name = nullptr;
  element.nameLength = 0;
  if (element.attributes == nullptr) return;
  for (u32 i = 0; i < element.attributeCount; ++i) element.attributes[i] = {};
}

void store(ClXmlElement& element, i32 index, const SplitAttribute& attribute) {
  if (element.attributes == nullptr || static_cast<u32>(index) >= element.attributeCount) return;
  element.attributes[index] = {attribute.name.data(), attribute.name.size(), attribute.value.data(),
                               attribute.value.size()};
}

}  // namespace
}  // namespace pxcl::xml

using namespace pxcl;
using namespace pxcl::xml;

extern "C" {

int32_t ClXmlSplit_Element(const char* text, uint64_t length, ClXmlElement* element) {
  if (text == nullptr || length == 0 || !fits_memory(length)) return kUnclosedValue;
  const std::string_view all = as_view(text, length);
  const std::string_view name = until_space(all);
  if (element != nullptr) {
    element->name = name.data();
    element->nameLength = name.size();
  }
  AttributeSplitter splitter(from(all, name.size()));
  SplitAttribute attribute;
  i32 count = 0;
  for (; splitter.next(attribute); ++count) {
    if (element != nullptr) store(*element, count, attribute);
  }
  if (!splitter.failed()) return count;
  if (element != nullptr) clear(*element);
  return kUnclosedValue;
}

int32_t ClXmlSplit_QName(const char* qname, uint64_t length, const char** prefix,
                         uint64_t* prefixLength, const char** local, uint64_t* localLength) {
  const bool wantsPrefix = prefix != nullptr && prefixLength != nullptr;
  const bool wantsLocal = local != nullptr && localLength != nullptr;
  if (qname == nullptr || length == 0 || (!wantsPrefix && !wantsLocal)) return 0;
  if (!fits_memory(length)) return 0;
  const QualifiedName name = split_qualified(as_view(qname, length));
  if (wantsPrefix && !name.prefix.empty()) {
    *prefix = name.prefix.data();
    *prefixLength = name.prefix.size();
  }
  if (wantsLocal && !name.local.empty()) {
    *local = name.local.data();
    *localLength = name.local.size();
  }
  return 1;
}

int32_t ClXmlPare_AttValue(const char* value, uint64_t length, const char** inner,
                           uint64_t* innerLength) {
  if (value == nullptr || inner == nullptr || innerLength == nullptr) return 0;
  const std::string_view quoted = as_view(value, length);
  if (!is_quoted(quoted)) return 0;
  const std::string_view text = inner_value(quoted);
  *inner = text.data();
  *innerLength = text.size();
  return 1;
}

}  // extern "C"
