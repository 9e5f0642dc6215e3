// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "xml/steps.hpp"

#include "xml/attributes.hpp"
#include "xml/document.hpp"
#include "xml/elements.hpp"
#include "xml/status.hpp"

namespace pxcl::xml {
namespace {

constexpr std::string_view kDeclaration = "<?xml";
constexpr std::string_view kShortestDeclaration = "<?xml ";
constexpr std::string_view kCdataBegin = "<![CDATA[";
constexpr std::string_view kCdataEnd = "]]>";
constexpr std::string_view kNameSpaceAttribute = "xmlns";
constexpr i32 kEmptyElementTag = 1;  // of ClXmlChkTargetPathOnly
constexpr i32 kSeparateEndTag = 0;

bool is_letter(char byte) {
  return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
}

bool has_space(std::string_view text) {
  for (const char byte : text) {
    if (is_space(byte)) return true;
  }
  return false;
}

// "<?...>" and "<!...>": ends at the first ">", inside a comment too.
i32 skip_markup(std::string_view rest, u64& position) {
  const std::size_t end = rest.find('>');
  if (end == rest.npos) return kUnterminated;
  position += end;
  return kSuccess;
}

// "<![CDATA[...]]>": its text is stored as it stands.
i32 store_cdata(ClXmlParserData& data, std::string_view rest, u64& position) {
  const std::size_t end = rest.find(kCdataEnd, kCdataBegin.size());
  if (end == rest.npos) return kUnterminated;
  const u64 begin = position + kCdataBegin.size();
  position += end + kCdataEnd.size() - 1;
  return ClXmlStoreValue(&data, begin, end - kCdataBegin.size());
}

// "<!...": a CDATA section, or something to skip.
i32 check_exclamation(ClXmlParserData& data, std::string_view rest, u64& position) {
  constexpr std::size_t kShortest = 3;  // "<!-"
  if (rest.size() < kShortest || rest[2] == '>') return kEndsTooEarly;
  if (rest.starts_with(kCdataBegin)) return store_cdata(data, rest, position);
  return skip_markup(rest, position);
}

// "<name...>" or "</name...>".
i32 check_tag(ClXmlParserData& data, std::string_view rest, u64& position,
              i32 (*parse)(ClXmlParserData*, const u64*, u64)) {
  const std::size_t length = rest.find('>');
  if (length == rest.npos) return kUnterminated;
  const u64 offset = position;
  position += length;
  return parse(&data, &offset, length);
}

// Adds the attributes to the path, namespaces to the table, and serves those who ask for values.
i32 take_attributes(ClXmlParserData& data, ClXmlElement& element) {
  u32 kept = 0;
  for (u32 i = 0; i < element.attributeCount; ++i) {
    ClXmlAttribute& attribute = element.attributes[i];
    i32 isNamespace = 0;
    const i32 status = ClXmlExtractAttribute(&data, &attribute, &isNamespace);
    if (status != kSuccess) return status;
    if (isNamespace == 0) element.attributes[kept++] = attribute;
  }
  return kept == 0 ? kSuccess : ClXmlStoreAttValue(&data, element.attributes, kept);
}

i32 take_namespace(ClXmlParserData& data, ClXmlAttribute& attribute) {
  if (name_of(attribute).find(':') != std::string_view::npos) {
    // Six bytes go, whatever the sixth is: "xmlns:p" and "xmlnsx:p" declare "p" and ":p".
    const std::string_view prefix = from(name_of(attribute), kNameSpaceAttribute.size() + 1);
    attribute.name = prefix.data();
    attribute.nameLength = prefix.size();
  }
  return ClXmlPickupNamespace(&data, attribute.name, attribute.nameLength, attribute.value,
                              attribute.valueLength);
}

// Scans from `position` to the document's end or the first result that is not kSuccess, and leaves
// `position` where that arose.
i32 walk(ClXmlParserData& data, u64& position) {
  const std::string_view text = text_of(data);
  for (; position < text.size(); ++position) {
    const std::size_t at = static_cast<std::size_t>(position);
    if (is_space(text[at])) continue;
    const i32 status =
        text[at] == '<' ? ClXmlCheckElement(&data, &position) : ClXmlPrsParameter(&data, &position);
    if (status != kSuccess) return status;
  }
  return kSuccess;
}

}  // namespace

i32 parse_by_steps(ClXmlParserData& data) {
  i32 status = ClXmlSearchStartPoint(&data);
  if (status != kSuccess) return status;
  u64 position = 0;
  status = walk(data, position);
  data.document->stopPosition = status == kRootClosed ? position + 1 : position;
  ClXmlClearPath(data.currentPath);
  data.currentPath = nullptr;
  return status == kRootClosed ? kSuccess : status;
}

}  // namespace pxcl::xml

using namespace pxcl;
using namespace pxcl::xml;

extern "C" {

int32_t ClXmlSearchStartPoint(ClXmlParserData* data) {
  if (!has_document(data)) return kBadArgument;
  const std::string_view text = text_of(*data);
  if (text.size() < kShortestDeclaration.size()) return kEndsTooEarly;
  const std::size_t begin = text.find(kDeclaration);
  if (begin == text.npos) return kNoDeclaration;
  const std::string_view behind = from(text, begin + kDeclaration.size());
  if (behind.empty() || !is_space(behind.front())) return kNoDeclaration;
  if (begin == 0) return kSuccess;
  data->document->stopPosition = begin;
  return kMisplacedDeclaration;
}

int32_t ClXmlCheckElement(ClXmlParserData* data, uint64_t* position) {
  if (!has_document(data) || position == nullptr || !is_inside(*data, *position, 0)) {
    return kBadArgument;
  }
  const std::string_view rest = from(text_of(*data), *position);
  constexpr std::size_t kShortest = 2;  // "<a"
  if (rest.size() < kShortest) return kEndsTooEarly;
  if (rest[1] == '?') return skip_markup(rest, *position);
  if (rest[1] == '!') return check_exclamation(*data, rest, *position);
  if (rest[1] == '/') return check_tag(*data, rest, *position, ClXmlPrsEndElement);
  if (is_letter(rest[1])) return check_tag(*data, rest, *position, ClXmlPrsStartElement);
  return kBadName;
}

int32_t ClXmlPrsStartElement(ClXmlParserData* data, const uint64_t* offset, uint64_t length) {
  if (!has_document(data) || offset == nullptr || length == 0 ||
      !is_inside(*data, *offset, length)) {
    return kBadArgument;
  }
  std::string_view inside = slice(text_of(*data), *offset + 1, length - 1);
  const bool isEmpty = inside.ends_with('/');
  if (isEmpty) inside.remove_suffix(1);
  inside = trim_end(inside);
  AttributeBlock block;
  ClXmlElement element;
  if (!split(inside, block, element)) return kNoMemory;
  if (element.nameLength == 0) return kBadName;
  ++data->serial;
  i32 status = ClXmlAddPath(data, "/", element.name, element.nameLength);
  if (status == kSuccess) status = take_attributes(*data, element);
  if (status != kSuccess || !isEmpty) return status;
  // At the ">" of <a/> and the "/" of <a />: the writer relies on it.
  const u64 end = *offset + 2 + inside.size();
  if (ClXmlChkTargetPathOnly(data, end, kEmptyElementTag) != kSuccess) return kBadArgument;
  return ClXmlRemovePath(data, element.name, element.nameLength);
}

int32_t ClXmlPrsEndElement(ClXmlParserData* data, const uint64_t* offset, uint64_t length) {
  constexpr u64 kOpening = 2;  // "</"
  if (!has_document(data) || offset == nullptr || length < kOpening ||
      !is_inside(*data, *offset, length)) {
    return kBadArgument;
  }
  if (ClXmlChkTargetPathOnly(data, *offset, kSeparateEndTag) != kSuccess) return kBadArgument;
  return ClXmlRemovePath(data, data->document->text + *offset + kOpening, length - kOpening);
}

int32_t ClXmlPrsParameter(ClXmlParserData* data, uint64_t* position) {
  if (!has_document(data) || position == nullptr || !is_inside(*data, *position, 0)) {
    return kBadArgument;
  }
  const u64 begin = *position;
  const std::string_view rest = from(text_of(*data), begin);
  const std::size_t length = rest.find('<');
  if (length == rest.npos) return kUnterminated;
  if (length == 0) return kBadArgument;
  *position = begin + length - 1;
  constexpr std::size_t kTrimmed = 3;  // nothing can be cut off a shorter rest
  std::string_view run = slice(rest, 0, length);
  if (rest.size() >= kTrimmed) run = slice(run, 0, 1 + trim_end(from(run, 1)).size());
  return ClXmlStoreValue(data, begin, run.size());
}

int32_t ClXmlExtractAttribute(ClXmlParserData* data, ClXmlAttribute* attribute,
                              int32_t* isNamespace) {
  if (!has_document(data) || attribute == nullptr || isNamespace == nullptr) return kBadArgument;
  if (value_of(*attribute).empty() || has_space(name_of(*attribute)) ||
      value_of(*attribute).find('<') != std::string_view::npos) {
    return kBadAttribute;
  }
  *isNamespace = name_of(*attribute).starts_with(kNameSpaceAttribute) ? 1 : 0;
  if (*isNamespace == 1) return take_namespace(*data, *attribute);
  const i32 status = ClXmlAddPath(data, " ", attribute->name, attribute->nameLength);
  if (status != kSuccess) return status;
  return ClXmlAddPath(data, "=", attribute->value, attribute->valueLength);
}

}  // extern "C"
