// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "xml/namespaces.hpp"

#include "util/owned.hpp"
#include "xml/attributes.hpp"
#include "xml/status.hpp"

namespace pxcl::xml {
namespace {

std::string_view drop_last_slash(std::string_view uri) {
  if (uri.back() == '/') uri.remove_suffix(1);
  return uri;
}

constexpr ClXmlNameSpaceEntry undeclared(const Namespace& own) {
  return {own.uri.data(), own.prefix.data(), nullptr, 0};
}

}  // namespace

bool is_same_uri(std::string_view a, std::string_view b) {
  return !a.empty() && !b.empty() && drop_last_slash(a) == drop_last_slash(b);
}

const ClXmlNameSpaceEntry* find_declared(const ClXmlNameSpaceEntry* table,
                                         std::string_view prefix) {
  if (table == nullptr || prefix.empty()) return nullptr;
  for (const ClXmlNameSpaceEntry* row = table; row->uri != nullptr; ++row) {
    if (row->declaredPrefix == nullptr) continue;
    const std::string_view declared = as_view(row->declaredPrefix, row->declaredPrefixLength);
    if (declared.starts_with(prefix)) return row;
  }
  return nullptr;
}

const ClXmlNameSpaceEntry* find_table_prefix(const ClXmlNameSpaceEntry* table,
                                             std::string_view prefix) {
  if (table == nullptr) return nullptr;
  for (const ClXmlNameSpaceEntry* row = table; row->uri != nullptr; ++row) {
    if (prefix == row->prefix) return row;
  }
  return nullptr;
}

}  // namespace pxcl::xml

using namespace pxcl;
using namespace pxcl::xml;

extern "C" {

constexpr ClXmlNameSpaceEntry clNsTable[5] = {
    undeclared(kNamespaces[0]),
    undeclared(kNamespaces[1]),
    undeclared(kNamespaces[2]),
    undeclared(kNamespaces[3]),
    {},
};
static_assert(clNsTable[4].uri == nullptr, "the table is walked up to its null row");

int32_t ClXmlInitializeNameSpaceTable(ClXmlNameSpaceEntry** out) {
  if (out == nullptr) return 0;
  *out = static_cast<ClXmlNameSpaceEntry*>(ClXmlMemAlloc(sizeof clNsTable));
  if (*out == nullptr) return 0;
  KWVSCopyDataX(clNsTable, *out, sizeof clNsTable);
  return 1;
}

void ClXmlUnInitializeNameSpaceTable(ClXmlNameSpaceEntry* table) {
  ClXmlMemFree(table);
}

int32_t ClXmlPickupNamespace(ClXmlParserData* data, const char* prefix, uint64_t prefixLength,
                             const char* value, uint64_t valueLength) {
  constexpr u64 kTwoQuotes = 2;
  if (data == nullptr || data->nameSpaceTable == nullptr || prefix == nullptr ||
      prefixLength == 0 || value == nullptr || valueLength < kTwoQuotes) {
    return kBadArgument;
  }
  if (!fits_memory(prefixLength)) return kBadArgument;
  const std::string_view uri = inner_value(as_view(value, valueLength));
  for (ClXmlNameSpaceEntry* row = data->nameSpaceTable; row->uri != nullptr; ++row) {
    if (!is_same_uri(uri, row->uri)) continue;
    if (row->declaredPrefix == nullptr || row->declaredPrefixLength == 0) {
      row->declaredPrefix = prefix;
      row->declaredPrefixLength = prefixLength;
    }
    break;
  }
  return kSuccess;
}

int32_t ClXmlIsKnownNicknameNs(const ClXmlParserData* data, const char* prefix, uint64_t length,
                               uint32_t* index) {
  if (data == nullptr || prefix == nullptr || index == nullptr) return 0;
  const ClXmlNameSpaceEntry* row = find_declared(data->nameSpaceTable, as_view(prefix, length));
  if (row == nullptr) return 0;
  *index = static_cast<uint32_t>(row - data->nameSpaceTable);
  return 1;
}

int32_t ClXmlCompare_Uri(const char* a, uint64_t aLength, const char* b, uint64_t bLength) {
  if (a == nullptr || b == nullptr) return 0;
  return is_same_uri(as_view(a, aLength), as_view(b, bLength)) ? 1 : 0;
}

}  // extern "C"
