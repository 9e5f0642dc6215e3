// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The engine's entry points. All of them take the fast route; a record that it cannot express (one
// that a caller filled by hand, or a document of 4 GiB) takes the step functions.

#include <cstring>

#include "xml/index.hpp"
#include "xml/namespaces.hpp"
#include "xml/scan.hpp"
#include "xml/scanner.hpp"
#include "xml/status.hpp"
#include "xml/steps.hpp"

namespace pxcl::xml {
namespace {

struct Declaration {
  i32 status;
  u64 stopPosition;
};

// A document begins with "<?xml" and white space, without a byte-order mark.
Declaration check_declaration(std::string_view document) {
  constexpr std::string_view kMark = "<?xml";
  if (document.size() <= kMark.size()) return {kEndsTooEarly, 0};
  const void* found = memmem(document.data(), document.size(), kMark.data(), kMark.size());
  if (found == nullptr) return {kNoDeclaration, 0};
  const u64 at = static_cast<u64>(static_cast<const char*>(found) - document.data());
  const u64 behind = at + kMark.size();
  if (behind >= document.size() || !is_space(document[behind])) return {kNoDeclaration, 0};
  return at == 0 ? Declaration{kSuccess, 0} : Declaration{kMisplacedDeclaration, at};
}

bool fits(std::string_view document) {
  return document.size() <= kMostBytes;
}

// --- ClXmlParse ----------------------------------------------------------------------------------

bool is_fresh_table(const ClXmlNameSpaceEntry* table) {
  return table != nullptr && std::memcmp(table, clNsTable, sizeof clNsTable) == 0;
}

bool is_plain(const ClXmlTarget& target) {
  if (target.matches != nullptr || target.matchCount != 0 || target.status != 0) return false;
  if (target.path == nullptr) return target.kind == 0;
  if (target.pathLength > kMostBytes || target.attributeNameLength > kMostBytes) return false;
  if (target.kind == 0) return true;
  return target.kind == 1 && target.attributeName != nullptr && target.pathLength != 0 &&
         target.path[target.pathLength - 1] != '/';
}

// Whether the record is as ClXmlInitializeParserData makes it.
bool is_fresh(const ClXmlParserData& data) {
  if (data.serial != 0 || data.currentPath != nullptr || data.targets == nullptr ||
      data.targetCount == 0 || data.document->text == nullptr ||
      data.document->length > kMostBytes || !is_fresh_table(data.nameSpaceTable)) {
    return false;
  }
  for (u32 i = 0; i < data.targetCount; ++i) {
    if (!is_plain(data.targets[i])) return false;
  }
  return true;
}

bool index_targets(Index& index, const ClXmlParserData& data) {
  if (!start_index(index, data.targetCount)) return false;
  for (u32 i = 0; i < data.targetCount; ++i) {
    const ClXmlTarget& target = data.targets[i];
    const TargetPath path = {{target.path, target.path == nullptr ? 0 : target.pathLength},
                             true,
                             target.kind == 1,
                             {target.attributeName, target.attributeNameLength}};
    if (!add_target(index, path, Collect::kMatches, 0)) return false;
  }
  return true;
}

i32 status_of(const Target& target, const ScanOutcome& outcome) {
  if ((target.flags & kHasValue) != 0) return kFound;
  if ((target.flags & kMetNoPath) != 0) return kNoPath;
  if ((target.flags & kNoPathGiven) != 0) return 0;
  const bool met = target.isAttribute != 0 ? outcome.metAttributes : outcome.metText;
  return met ? kNotFound : 0;
}

i32 parse_fresh(ClXmlParserData& data) {
  const std::string_view document = {data.document->text, data.document->length};
  const Declaration declaration = check_declaration(document);
  if (declaration.status != kSuccess) {
    data.document->stopPosition = declaration.stopPosition;
    return declaration.status;
  }
  Index index;
  ScanOutcome outcome;
  outcome.status = kNoMemory;
  if (index_targets(index, data)) {
    outcome = scan_indexed(index, document, data.flags, data.nameSpaceTable);
  }
  data.document->stopPosition = outcome.stopPosition;
  data.serial = outcome.serial;
  for (u32 i = 0; i < index.targets.size; ++i) {
    const Target& target = index.targets[i];
    data.targets[i].matches = static_cast<ClXmlMatch*>(target.list);
    data.targets[i].matchCount = target.count;
    data.targets[i].status = status_of(target, outcome);
  }
  return outcome.status;
}

// --- Requests ------------------------------------------------------------------------------------

// What ClXmlInitializeParserData asks of a request. Paths after the first may be null.
template <typename Parameter>
bool is_valid(const ClXmlRequest* request) {
  if (request == nullptr || request->document == nullptr || request->documentLength == 0 ||
      request->parameterCount == 0 || request->parameters == nullptr) {
    return false;
  }
  const Parameter& first = *static_cast<const Parameter*>(request->parameters);
  return first.path != nullptr && first.pathLength != 0;
}

template <typename Parameter>
bool is_indexable(const ClXmlRequest& request) {
  if (request.documentLength > kMostBytes) return false;
  const Parameter* parameters = static_cast<const Parameter*>(request.parameters);
  for (u32 i = 0; i < request.parameterCount; ++i) {
    if (parameters[i].pathLength > kMostBytes) return false;
  }
  return true;
}

template <typename Parameter>
bool index_parameters(Index& index, const ClXmlRequest& request, Collect collect) {
  if (!start_index(index, request.parameterCount)) return false;
  const Parameter* parameters = static_cast<const Parameter*>(request.parameters);
  for (u32 i = 0; i < request.parameterCount; ++i) {
    const Parameter& parameter = parameters[i];
    const u64 length = parameter.path == nullptr ? 0 : parameter.pathLength;
    if (!add_target(index, {{parameter.path, length}}, collect, 0)) return false;
  }
  return true;
}

// One run over a valid request's document. The namespace table is the run's own.
template <typename Parameter>
ScanOutcome run_request(Index& index, ClXmlRequest& request, Collect collect, u32 flags) {
  const std::string_view document = {request.document, request.documentLength};
  const Declaration declaration = check_declaration(document);
  ScanOutcome outcome;
  outcome.status = declaration.status;
  outcome.stopPosition = declaration.stopPosition;
  if (declaration.status != kSuccess) return outcome;
  outcome.status = kNoMemory;
  if (!index_parameters<Parameter>(index, request, collect)) return outcome;
  ClXmlNameSpaceEntry table[sizeof clNsTable / sizeof clNsTable[0]];
  std::memcpy(table, clNsTable, sizeof table);
  return scan_indexed(index, document, flags, table);
}

i32 result_of(const Target& target) {
  if (target.count != 0) return target.firstStatus;
  return (target.flags & kMetNoPath) != 0 ? kNoPath : kNotFound;
}

i32 request_by_steps(ClXmlRequest* request, ClXmlRequest* listRequest, u32 flags) {
  ClXmlParserData* data = nullptr;
  const i32 refused = ClXmlInitializeParserData(&data, flags, request, listRequest);
  if (refused != kSuccess) return refused;
  const i32 result = ClXmlParse(data);
  ClXmlStoreParserData(data, request, listRequest);
  ClXmlUnInitializeParserData(data);
  return result;
}

i32 request_values(ClXmlRequest* request, u32 flags) {
  if (!is_valid<ClXmlParameter>(request)) return kBadArgument;
  if (!is_indexable<ClXmlParameter>(*request)) return request_by_steps(request, nullptr, flags);
  Index index;
  const ScanOutcome outcome = run_request<ClXmlParameter>(index, *request, Collect::kFirst, flags);
  request->stopPosition = outcome.stopPosition;
  ClXmlParameter* parameters = static_cast<ClXmlParameter*>(request->parameters);
  for (u32 i = 0; i < request->parameterCount; ++i) {
    const Target none = {};
    const Target& target = i < index.targets.size ? index.targets[i] : none;
    parameters[i].valueOffset = target.firstOffset;
    parameters[i].valueLength = target.firstLength;
    parameters[i].status = result_of(target);
  }
  return outcome.status;
}

void store_ranges(ClXmlListParameter& parameter, const Target& target) {
  parameter.status = kNotFound;
  if (target.count == 0) return;
  parameter.ranges = static_cast<ClXmlValueRange*>(target.list);
  parameter.rangeCount = target.count;
  parameter.status = (target.flags & kHasRange) != 0 ? kFound : target.firstStatus;
}

bool has_ranges(const ClXmlRequest& request) {
  const ClXmlListParameter* parameters = static_cast<const ClXmlListParameter*>(request.parameters);
  for (u32 i = 0; parameters != nullptr && i < request.parameterCount; ++i) {
    if (parameters[i].ranges != nullptr) return true;
  }
  return false;
}

i32 request_lists(ClXmlRequest* request, u32 flags) {
  if (request == nullptr || has_ranges(*request)) return kBadArgument;
  if (!is_valid<ClXmlListParameter>(request)) return kBadArgument;
  if (!is_indexable<ClXmlListParameter>(*request)) return request_by_steps(nullptr, request, flags);
  Index index;
  const ScanOutcome outcome =
      run_request<ClXmlListParameter>(index, *request, Collect::kRanges, flags);
  request->stopPosition = outcome.stopPosition;
  ClXmlListParameter* parameters = static_cast<ClXmlListParameter*>(request->parameters);
  for (u32 i = 0; i < request->parameterCount; ++i) {
    const Target none = {};
    store_ranges(parameters[i], i < index.targets.size ? index.targets[i] : none);
  }
  return outcome.status;
}

// --- The library's own requests ------------------------------------------------------------------

Collect collect_for(Wanted wanted) {
  switch (wanted) {
    case Wanted::kFirst:
      return Collect::kFirst;
    case Wanted::kAll:
      return Collect::kRanges;
    case Wanted::kEach:
      return Collect::kEach;
  }
  return Collect::kFirst;
}

bool index_queries(Index& index, std::span<const Query> queries) {
  if (!start_index(index, queries.size())) return false;
  for (const Query& query : queries) {
    if (!add_target(index, {query.path}, collect_for(query.wanted), query.group)) return false;
    if (query.wanted == Wanted::kEach) index.targets.back().query = &query;
  }
  return true;
}

void answer(Query& query, const Target& target) {
  query.status = result_of(target);
  query.offset = target.firstOffset;
  query.length = target.firstLength;
  query.ranges.reset(static_cast<ClXmlValueRange*>(target.list));
  query.rangeCount = query.wanted == Wanted::kAll ? target.count : 0;
}

}  // namespace

i32 scan(std::string_view document, u32 flags, std::span<Query> queries, u64* stopPosition) {
  if (document.empty() || queries.empty() || !fits(document)) return kBadArgument;
  const Declaration declaration = check_declaration(document);
  ScanOutcome outcome;
  outcome.status = declaration.status;
  outcome.stopPosition = declaration.stopPosition;
  Index index;
  if (declaration.status == kSuccess) {
    outcome.status = kNoMemory;
    ClXmlNameSpaceEntry table[sizeof clNsTable / sizeof clNsTable[0]];
    std::memcpy(table, clNsTable, sizeof table);
    if (index_queries(index, queries)) outcome = scan_indexed(index, document, flags, table);
  }
  const Target none = {};
  for (std::size_t i = 0; i < queries.size(); ++i) {
    answer(queries[i], i < index.targets.size ? index.targets[i] : none);
  }
  if (stopPosition != nullptr) *stopPosition = outcome.stopPosition;
  return outcome.status;
}

}  // namespace pxcl::xml

int32_t ClXmlParse(ClXmlParserData* data) {
  using namespace pxcl::xml;
  if (data == nullptr || data->document == nullptr) return kBadArgument;
  return is_fresh(*data) ? parse_fresh(*data) : parse_by_steps(*data);
}

int32_t ClXmlRequestParameter(ClXmlRequest* request) {
  return pxcl::xml::request_values(request, 0);
}

int32_t ClComXmlRequestParameter(ClXmlRequest* request) {
  return pxcl::xml::request_values(request, CL_XML_COM_FLAG);
}

int32_t ClXmlRequestParameterList(ClXmlRequest* listRequest) {
  return pxcl::xml::request_lists(listRequest, 0);
}

int32_t ClComXmlRequestParameterList(ClXmlRequest* listRequest) {
  return pxcl::xml::request_lists(listRequest, CL_XML_COM_FLAG);
}

int32_t ClXmlReplaceParameter(ClXmlRequest* request) {
  const int32_t result = pxcl::xml::request_values(request, 0);
  return result == pxcl::xml::kSuccess ? ClXmlWrite(request) : result;
}
