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
  if (document.starts_with(kMark) && is_space(document[kMark.size()])) return {kSuccess, 0};
  const void* found = memmem(document.data(), document.size(), kMark.data(), kMark.size());
  if (found == nullptr) return {kNoDeclaration, 0};
  const auto at = static_cast<std::size_t>(static_cast<const char*>(found) - document.data());
  const std::size_t behind = at + kMark.size();
  if (behind >= document.size() || !is_space(document[behind])) return {kNoDeclaration, 0};
  return {kMisplacedDeclaration, at};
}

bool fits(std::string_view document) {
  return document.size() <= kMostBytes;
}

// What a scan finds, one a target; usual requests need no block for it.
class Findings {
 public:
  // Zeroes `count` findings; false when memory is short.
  bool reserve(u64 count) {
    if (!findings_.reserve(count)) return false;
    findings_.size = static_cast<u32>(count);
    std::memset(static_cast<void*>(findings_.begin()), 0,
                static_cast<std::size_t>(count * sizeof(Finding)));
    return true;
  }
  Finding* begin() { return findings_.begin(); }
  const Finding& operator[](u32 target) const {
    return target < findings_.size ? findings_[target] : kNothing;
  }

 private:
  static constexpr Finding kNothing = {};
  GrowingArray<Finding, 32> findings_;
};

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
    const TargetKind kind = {target.kind == 1,
                             as_view(target.attributeName, target.attributeNameLength)};
    if (!add_target(index, as_view(target.path, target.pathLength), Collect::kMatches, 0, &kind)) {
      return false;
    }
  }
  return true;
}

i32 status_of(const Finding& finding, const Target& target, const ScanOutcome& outcome) {
  if ((finding.flags & kHasValue) != 0) return kFound;
  if ((finding.flags & kMetNoPath) != 0) return kNoPath;
  if (target.hasNoPath) return 0;
  const bool met = target.isAttribute ? outcome.metAttributes : outcome.metText;
  return met ? kNotFound : 0;
}

i32 parse_fresh(ClXmlParserData& data) {
  const std::string_view document = as_view(data.document->text, data.document->length);
  const Declaration declaration = check_declaration(document);
  if (declaration.status != kSuccess) {
    data.document->stopPosition = declaration.stopPosition;
    return declaration.status;
  }
  Index index;
  Findings findings;
  ScanOutcome outcome;
  outcome.status = kNoMemory;
  if (findings.reserve(data.targetCount) && index_targets(index, data)) {
    outcome = scan_indexed(index.plan(), {findings.begin(), nullptr}, document, data.flags,
                           data.nameSpaceTable);
  }
  data.document->stopPosition = outcome.stopPosition;
  data.serial = outcome.serial;
  for (u32 i = 0; i < index.targets.size; ++i) {
    const Finding& finding = findings[i];
    data.targets[i].matches = static_cast<ClXmlMatch*>(finding.list);
    data.targets[i].matchCount = finding.count;
    data.targets[i].status = status_of(finding, index.targets[i], outcome);
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
  static_assert(offsetof(Parameter, path) == offsetof(PathRecord, text) &&
                offsetof(Parameter, pathLength) == offsetof(PathRecord, length));
  return start_index(index, request.parameterCount) &&
         add_targets(index, {request.parameters, sizeof(Parameter), request.parameterCount},
                     collect);
}

// One run over a document by the plan that `make_plan` gives, null when memory is short. It may set
// `results`.
template <typename MakePlan>
ScanOutcome run(std::string_view document, u32 flags, const Results& results,
                const MakePlan& make_plan) {
  const Declaration declaration = check_declaration(document);
  ScanOutcome outcome;
  outcome.status = declaration.status;
  outcome.stopPosition = declaration.stopPosition;
  if (declaration.status != kSuccess) return outcome;
  outcome.status = kNoMemory;
  const Plan* plan = make_plan();
  if (plan == nullptr) return outcome;
  ClXmlNameSpaceEntry table[kNamespaceCount];  // the run's own; it writes what it reads
  return scan_indexed(*plan, results, document, flags, table);
}

// One run over a valid request's document.
template <typename Parameter>
ScanOutcome run_request(Findings& findings, ClXmlRequest& request, Collect collect, u32 flags) {
  Index index;
  Plan plan;
  Results results = {};
  const auto make_plan = [&]() -> const Plan* {
    if (!index_parameters<Parameter>(index, request, collect)) return nullptr;
    if (!findings.reserve(request.parameterCount)) return nullptr;
    results.findings = findings.begin();
    plan = index.plan();
    return &plan;
  };
  const ScanOutcome outcome =
      run(as_view(request.document, request.documentLength), flags, results, make_plan);
  request.stopPosition = outcome.stopPosition;
  return outcome;
}

i32 result_of(const Finding& finding) {
  if (finding.count != 0) return finding.firstStatus;
  return (finding.flags & kMetNoPath) != 0 ? kNoPath : kNotFound;
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
  Findings findings;
  const ScanOutcome outcome =
      run_request<ClXmlParameter>(findings, *request, Collect::kFirst, flags);
  ClXmlParameter* parameters = static_cast<ClXmlParameter*>(request->parameters);
  for (u32 i = 0; i < request->parameterCount; ++i) {
    const Finding& finding = findings[i];
    parameters[i].valueOffset = finding.firstOffset;
    parameters[i].valueLength = finding.firstLength;
    parameters[i].status = result_of(finding);
  }
  return outcome.status;
}

void store_ranges(ClXmlListParameter& parameter, const Finding& finding) {
  parameter.status = kNotFound;
  if (finding.count == 0) return;
  parameter.ranges = static_cast<ClXmlValueRange*>(finding.list);
  parameter.rangeCount = finding.count;
  parameter.status = (finding.flags & kHasRange) != 0 ? kFound : finding.firstStatus;
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
  Findings findings;
  const ScanOutcome outcome =
      run_request<ClXmlListParameter>(findings, *request, Collect::kRanges, flags);
  ClXmlListParameter* parameters = static_cast<ClXmlListParameter*>(request->parameters);
  for (u32 i = 0; i < request->parameterCount; ++i) store_ranges(parameters[i], findings[i]);
  return outcome.status;
}

// --- The library's own requests ------------------------------------------------------------------

bool index_keys(Index& index, std::span<const Key> keys) {
  if (!start_index(index, keys.size())) return false;
  for (const Key& key : keys) {
    if (!add_target(index, key.path, collect_for(key.wanted), key.group)) return false;
  }
  return true;
}

template <typename MakePlan>
i32 scan(std::string_view document, u32 flags, const Results& results, u64* stopPosition,
         const MakePlan& make_plan) {
  if (document.empty() || !fits(document)) return kBadArgument;
  const ScanOutcome outcome = run(document, flags, results, make_plan);
  if (stopPosition != nullptr) *stopPosition = outcome.stopPosition;
  return outcome.status;
}

void clear(std::span<Answer> answers) {
  std::memset(static_cast<void*>(answers.data()), 0, answers.size_bytes());
}

}  // namespace

i32 scan(std::string_view document, u32 flags, std::span<const Key> keys, std::span<Answer> answers,
         u64* stopPosition, const Reader* readers) {
  if (keys.empty()) return kBadArgument;
  clear(answers);
  Index index;
  Plan plan;
  return scan(document, flags, {answers.data(), readers}, stopPosition, [&]() -> const Plan* {
    if (!index_keys(index, keys)) return nullptr;
    plan = index.plan();
    return &plan;
  });
}

i32 scan(std::string_view document, const Plan& fixed, std::span<Answer> answers, u64* stopPosition,
         const Reader* readers) {
  clear(answers);
  return scan(document, 0, {answers.data(), readers}, stopPosition, [&] { return &fixed; });
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
