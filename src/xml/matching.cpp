// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "xml/matching.hpp"

#include <bit>

#include "xml/namespaces.hpp"

namespace pxcl::xml {
namespace {

struct QualifiedName {
  std::string_view prefix;
  std::string_view local;
};

QualifiedName split_value(std::string_view value) {
  const u32 colon = find_colon(value);
  if (colon == kNone) return {{}, value};
  return {{value.data(), colon}, from(value, colon + 1)};
}

// The keyword without ":" that a value answers; the value itself when it answers none.
std::string_view key_of(const Scan& scan, std::string_view value) {
  const QualifiedName name = split_value(value);
  if (name.local.empty()) return value;
  const bool unprefixed = name.prefix.empty();
  if (!unprefixed && (scan.flags & CL_XML_COM_FLAG) != 0) return value;
  if (unprefixed || find_row(scan, name.prefix, scan.generation) == kValueRow) {
    return name.local;
  }
  return value;
}

bool has_attribute(const Scan& scan, const RequestedAttribute& requested) {
  const std::string_view name = {requested.name, requested.nameLength};
  const auto answers = [&](const CurrentAttribute& attribute) {
    return spells(path_name(attribute), name) &&
           value_matches(scan, requested, {attribute.value, attribute.valueLength});
  };
  return find_attribute(scan, name, answers) != nullptr;
}

}  // namespace

bool index_attributes(Scan& scan) {
  const u32 count = scan.attributes.size;
  const u64 buckets = std::bit_ceil(u64{count});
  if (!scan.attributeBuckets.reserve(buckets)) return false;
  scan.attributeBuckets.size = static_cast<u32>(buckets);
  for (u32& bucket : scan.attributeBuckets) bucket = kNone;
  for (u32 i = count; i-- != 0;) {
    CurrentAttribute& attribute = scan.attributes[i];
    const u32 hash = hash_local({attribute.name, attribute.nameLength});
    u32& bucket = scan.attributeBuckets[hash & (buckets - 1)];
    attribute.next = bucket;
    bucket = i;
  }
  return true;
}

bool attributes_match(Scan& scan, const Node& node) {
  if (node.attributeCount != scan.attributes.size && (node.flags & kNameOnly) == 0) return false;
  for (u32 i = 0; i < node.attributeCount; ++i) {
    if (!has_attribute(scan, scan.plan.attributes[node.firstAttribute + i])) return false;
  }
  if ((node.flags & kEachValue) == 0) return true;
  const CurrentAttribute& attribute = scan.attributes[0];
  const std::string_view value = inner_value({attribute.value, attribute.valueLength});
  note_key(scan, node, value, false);
  return !value.empty();
}

void note_key(Scan& scan, const Node& node, std::string_view value, bool inPath) {
  const std::string_view key = key_of(scan, value);
  const char* text = inPath ? scan.path.begin() : scan.document.data();
  for (u32 i = node.elementTargets; i != kNone; i = scan.plan.targets[i].next) {
    Finding& finding = scan.findings[i];
    finding.key.begin = key.empty() ? 0 : static_cast<u32>(key.data() - text);
    finding.key.length = static_cast<u32>(key.size());
    finding.flags =
        static_cast<u8>(inPath ? finding.flags | kKeyInPath : finding.flags & ~kKeyInPath);
  }
}

bool same_qualified_name(const Scan& scan, std::string_view requested, std::string_view current) {
  const QualifiedName wanted = split_value(requested);
  const QualifiedName found = split_value(current);
  if (wanted.local != found.local) return false;
  if (wanted.prefix == found.prefix) return true;
  if ((scan.flags & CL_XML_COM_FLAG) != 0) return false;
  const bool wantedThere = wanted.prefix.empty() || wanted.prefix == kNamespaces[kValueRow].prefix;
  const bool foundThere =
      found.prefix.empty() || find_row(scan, found.prefix, scan.generation) == kValueRow;
  return wantedThere && foundThere;
}

}  // namespace pxcl::xml
