// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Requested paths held against the current one, and what is recorded where they match.

#include <algorithm>
#include <cstring>

#include "xml/attributes.hpp"
#include "xml/document.hpp"
#include "xml/elements.hpp"
#include "xml/namespaces.hpp"
#include "xml/path.hpp"
#include "xml/scan.hpp"
#include "xml/status.hpp"

namespace pxcl::xml {
namespace {

constexpr u32 kAttributeKind = 1;  // of ClXmlTarget

enum class Verdict : u8 { kNo, kYes, kMemoryShort };

bool is_attribute_request(const ClXmlTarget& target) {
  return target.kind == kAttributeKind;
}

bool has_targets(const ClXmlParserData* data) {
  return data != nullptr && data->targets != nullptr && data->targetCount != 0;
}

std::span<ClXmlTarget> targets_of(const ClXmlParserData& data) {
  return {data.targets, data.targetCount};
}

// --- Matching ------------------------------------------------------------------------------------

bool is_in_value_namespace(const ClXmlNameSpaceEntry* row) {
  return row != nullptr && is_same_uri(row->uri, kNamespaces[kValueRow].uri);
}

// Values are qualified names of one namespace only: the requested one with the table's prefix or
// none, the document's with the declared prefix or none.
bool is_same_value(const ClXmlParserData& data, const QualifiedName& requested,
                   const QualifiedName& current) {
  if (requested.local != current.local) return false;
  if (requested.prefix == current.prefix) return true;
  if ((data.flags & CL_XML_COM_FLAG) != 0) return false;
  const ClXmlNameSpaceEntry* table = data.nameSpaceTable;
  return (requested.prefix.empty() ||
          is_in_value_namespace(find_table_prefix(table, requested.prefix))) &&
         (current.prefix.empty() || is_in_value_namespace(find_declared(table, current.prefix)));
}

bool has_partner(const ClXmlParserData& data, const ClXmlAttribute& requested,
                 std::span<const ClXmlAttribute> current, i32& nameOnly) {
  return std::any_of(current.begin(), current.end(), [&](const ClXmlAttribute& candidate) {
    return name_of(candidate) == name_of(requested) &&
           ClXmlCompare_AttValue(&data, &requested, &candidate, &nameOnly) == 1;
  });
}

Verdict match_element(const ClXmlParserData& data, std::string_view requested,
                      std::string_view current) {
  AttributeBlock requestedBlock;
  AttributeBlock currentBlock;
  ClXmlElement wanted;
  ClXmlElement present;
  if (!split(requested, requestedBlock, wanted) || !split(current, currentBlock, present)) {
    return Verdict::kMemoryShort;
  }
  const bool matches = ClXmlCompare_Tag(&data, &wanted, &present) == 1 &&
                       ClXmlCompare_Attribute(&data, &wanted, &present) == 1;
  return matches ? Verdict::kYes : Verdict::kNo;
}

Verdict match_path(const ClXmlParserData& data, std::string_view requested,
                   std::string_view current) {
  while (!requested.empty() && !current.empty()) {
    const std::string_view wanted = first_element(requested);
    const std::string_view present = first_element(current);
    const bool ends = present.size() == current.size();
    if (ends != (wanted.size() == requested.size())) return Verdict::kNo;
    const Verdict verdict = match_element(data, wanted, present);
    if (verdict != Verdict::kYes || ends) return verdict;
    requested = from(requested, wanted.size() + 1);
    current = from(current, present.size() + 1);
  }
  return Verdict::kYes;  // whatever lies below a "/" at the end of the path, or before the root
}

Verdict match_target(const ClXmlParserData& data, const ClXmlTarget& target) {
  if (!fits_memory(target.pathLength)) return Verdict::kNo;
  return match_path(data, as_view(target.path, target.pathLength), current_path(data));
}

// --- Recording -----------------------------------------------------------------------------------

// A caller may free or move the matches at any time, so there is never room to spare.
i32 append_match(ClXmlTarget& target, const ClXmlMatch& match) {
  Owned<ClXmlMatch> grown = Owned<ClXmlMatch>::allocate(u64{target.matchCount} + 1);
  if (!grown) return kNoMemory;
  KWVSCopyDataX(target.matches, grown.get(), u64{target.matchCount} * sizeof(ClXmlMatch));
  grown[target.matchCount++] = match;
  ClXmlMemFree(target.matches);
  target.matches = grown.release();
  return kSuccess;
}

// Records a value, unless it is empty, if the target's path matches the current one.
i32 serve(const ClXmlParserData& data, ClXmlTarget& target, const ClXmlValueRange& value) {
  const Verdict verdict = match_target(data, target);
  if (verdict == Verdict::kMemoryShort) return kNoMemory;
  if (verdict == Verdict::kNo || value.length == 0) {
    if (target.status == 0) target.status = kNotFound;
    return kSuccess;
  }
  const i32 status = append_match(target, {data.serial, value.offset, value.length, kFound});
  if (status == kSuccess) target.status = kFound;
  return status;
}

// Where the value of the attribute that the target asks for stands; length 0 without such an
// attribute.
ClXmlValueRange find_value(const ClXmlParserData& data, const ClXmlTarget& target,
                           std::span<const ClXmlAttribute> attributes) {
  const std::string_view wanted = as_view(target.attributeName, target.attributeNameLength);
  for (const ClXmlAttribute& attribute : attributes) {
    if (attribute.value == nullptr || name_of(attribute) != wanted) continue;
    return {static_cast<u64>(attribute.value - data.document->text), attribute.valueLength};
  }
  return {0, 0};
}

bool are_inside(const ClXmlParserData& data, std::span<const ClXmlAttribute> attributes) {
  return std::all_of(attributes.begin(), attributes.end(), [&](const ClXmlAttribute& attribute) {
    return attribute.value == nullptr || lies_in(data, attribute.value, attribute.valueLength);
  });
}

bool has_match_of(const ClXmlTarget& target, u32 serial) {
  if (target.matches == nullptr) return false;
  return std::any_of(target.matches, target.matches + target.matchCount,
                     [&](const ClXmlMatch& match) { return match.serial == serial; });
}

}  // namespace
}  // namespace pxcl::xml

using namespace pxcl;
using namespace pxcl::xml;

extern "C" {

int32_t ClXmlChkTargetPathRequestAttValue(const ClXmlTarget* target, const char** name,
                                          uint64_t* nameLength) {
  if (target == nullptr || target->path == nullptr || name == nullptr || nameLength == nullptr) {
    return 0;
  }
  const std::string_view element = last_element(as_view(target->path, target->pathLength));
  AttributeSplitter splitter(from(element, until_space(element).size()));
  std::string_view found;
  for (SplitAttribute attribute; splitter.next(attribute);) {
    if (attribute.value.data() == nullptr) found = attribute.name;
  }
  if (splitter.failed() || found.empty()) return 0;
  *name = found.data();
  *nameLength = found.size();
  return 1;
}

int32_t ClXmlStoreValuePathCompare(const ClXmlParserData* data, uint32_t targetIndex) {
  if (!has_targets(data) || targetIndex >= data->targetCount) return 0;
  const ClXmlTarget& target = data->targets[targetIndex];
  return target.path != nullptr && match_target(*data, target) == Verdict::kYes ? 1 : 0;
}

int32_t ClXmlCompare_Tag(const ClXmlParserData*, const ClXmlElement* requested,
                         const ClXmlElement* current) {
  if (requested == nullptr || current == nullptr) return 0;
  return !name_of(*requested).empty() && name_of(*requested) == name_of(*current) ? 1 : 0;
}

int32_t ClXmlCompare_Attribute(const ClXmlParserData* data, const ClXmlElement* requested,
                               const ClXmlElement* current) {
  if (data == nullptr || requested == nullptr || current == nullptr) return 0;
  const std::span wanted = attributes_of(*requested);
  const std::span present = attributes_of(*current);
  if (wanted.empty()) return present.empty() ? 1 : 0;
  i32 nameOnly = 0;
  for (const ClXmlAttribute& attribute : wanted) {
    if (!has_partner(*data, attribute, present, nameOnly)) return 0;
  }
  return wanted.size() == present.size() || nameOnly != 0 ? 1 : 0;
}

int32_t ClXmlCompare_AttValue(const ClXmlParserData* data, const ClXmlAttribute* requested,
                              const ClXmlAttribute* current, int32_t* nameOnly) {
  if (data == nullptr || requested == nullptr || current == nullptr || nameOnly == nullptr) {
    return 0;
  }
  if (!fits_memory(requested->valueLength)) return 0;
  if (!is_quoted(value_of(*requested))) {
    *nameOnly = 1;
    return memory_size(current->valueLength) != 0 ? 1 : 0;
  }
  const std::string_view wanted = inner_value(value_of(*requested));
  const std::string_view present = inner_value(value_of(*current));
  if (wanted.empty() || present.empty()) return 0;
  return is_same_value(*data, split_qualified(wanted), split_qualified(present)) ? 1 : 0;
}

int32_t ClXmlStoreValue(ClXmlParserData* data, uint64_t offset, uint64_t length) {
  if (!has_targets(data) || offset == 0 || length == 0 || !is_inside(*data, offset, length)) {
    return kBadArgument;
  }
  i32 result = kSuccess;
  for (ClXmlTarget& target : targets_of(*data)) {
    if (target.path == nullptr) {
      result = target.status = kNoPath;
    } else if (!is_attribute_request(target)) {
      const i32 status = serve(*data, target, {offset, length});
      if (status != kSuccess) return status;
    }
  }
  return result;
}

int32_t ClXmlStoreAttValue(ClXmlParserData* data, const ClXmlAttribute* attributes,
                           uint32_t count) {
  if (!has_targets(data) || !has_document(data) || attributes == nullptr || count == 0 ||
      !are_inside(*data, {attributes, count})) {
    return kBadArgument;
  }
  i32 result = kSuccess;
  for (ClXmlTarget& target : targets_of(*data)) {
    if (!is_attribute_request(target)) continue;
    if (target.path == nullptr) {
      result = target.status = kNoPath;
      continue;
    }
    const i32 status = serve(*data, target, find_value(*data, target, {attributes, count}));
    if (status != kSuccess) return status;
  }
  return result;
}

int32_t ClXmlChkTargetPathOnly(ClXmlParserData* data, uint64_t offset, int32_t empty) {
  if (!has_targets(data) || !is_inside(*data, offset, 0)) return kBadArgument;
  i32 result = kSuccess;
  for (ClXmlTarget& target : targets_of(*data)) {
    if (target.path == nullptr) {
      result = target.status = kNoPath;
      continue;
    }
    if (is_attribute_request(target) || has_match_of(target, data->serial)) continue;
    const Verdict verdict = match_target(*data, target);
    if (verdict == Verdict::kMemoryShort) return kNoMemory;
    // Only the first target is served.
    if (verdict == Verdict::kYes) {
      return append_match(target,
                          {data->serial, offset, 0, empty == 1 ? kEmptyTag : kEmptyElement});
    }
  }
  return result;
}

}  // extern "C"
