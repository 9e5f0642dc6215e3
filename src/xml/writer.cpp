// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The new document, written once from left to right with the found values replaced.

#include <algorithm>
#include <cstring>
#include <functional>

#include "xml/attributes.hpp"
#include "xml/elements.hpp"
#include "xml/scan.hpp"
#include "xml/status.hpp"

namespace pxcl::xml {
namespace {

// --- Empty-element tags --------------------------------------------------------------------------

struct EmptyTag {
  u64 nameOffset = 0;
  u64 nameLength = 0;
  u64 slash = 0;  // offset of the "/" in front of the ">"
  bool exists = false;
};

// The "<" of the tag whose inside ends at `position`: the first one behind the ">" of what stands
// before it, as attribute names may hold further ones.
std::size_t find_opening(std::string_view before) {
  const std::size_t end = before.rfind('>');
  return before.find('<', end == before.npos ? 0 : end + 1);
}

// The "/" of the tag, from the position that the scan recorded: the ">" of <a/>, the "/" of <a />
// or white space in front of that "/".
u64 find_slash(const char* buffer, u64 length, u64 position) {
  u64 at = position;
  while (at < length && is_space(buffer[at])) ++at;
  if (at < length && buffer[at] == '/') return at;
  const bool isBehind = at == position && at != 0 && buffer[at] == '>';
  return isBehind && buffer[at - 1] == '/' ? at - 1 : length;
}

// `length` may be that of the buffer or unknown: nothing is read behind the tag.
EmptyTag find_empty_tag(const char* buffer, u64 length, u64 position) {
  if (position >= length) return {};
  const std::size_t opening = find_opening({buffer, position});
  const u64 slash = find_slash(buffer, length, position);
  if (opening == std::string_view::npos || slash == length) return {};
  const std::string_view name =
      until_space(slice({buffer, slash}, opening + 1, slash - opening - 1));
  return {opening + 1, std::min(name.size(), name.find('/')), slash, true};
}

constexpr u64 kUnknownLength = ~u64{0};

EmptyTag find_empty_tag(const char* buffer, const ClXmlParameter& parameter) {
  return find_empty_tag(buffer, kUnknownLength, parameter.newValueOffset);
}

// --- What becomes of each record -----------------------------------------------------------------

bool is_empty(const ClXmlParameter& parameter) {
  return parameter.status == kEmptyElement || parameter.status == kEmptyTag;
}

bool is_applied(const ClXmlParameter& parameter) {
  const bool found =
      parameter.valueOffset != 0 && (parameter.valueLength != 0 || is_empty(parameter));
  return found && parameter.newValue != nullptr && parameter.newValueLength != 0;
}

// One record on its way into the output.
struct Change {
  u32 parameter;  // its index
  i32 status;
  u64 newOffset;
  // What is replaced in the document, for a record that is applied and no later one takes its
  // place.
  bool written;
  u64 begin;
  u64 end;
  std::string_view name;  // of an empty-element tag: the end tag's; null data() otherwise
};

struct Job {
  ClXmlRequest& request;
  std::string_view document;
  std::span<ClXmlParameter> parameters;
  std::span<Change> changes;

  ClXmlParameter& parameter(const Change& change) const { return parameters[change.parameter]; }
};

// Records mostly are in order already.
template <typename Before>
void sort(std::span<Change> changes, const Before& before) {
  if (!std::is_sorted(changes.begin(), changes.end(), before)) {
    std::sort(changes.begin(), changes.end(), before);
  }
}

// By offset in the document, then by place in the request.
void sort_by_offset(const Job& job) {
  sort(job.changes, [&](const Change& a, const Change& b) {
    const u64 first = job.parameter(a).valueOffset;
    const u64 second = job.parameter(b).valueOffset;
    return first != second ? first < second : a.parameter < b.parameter;
  });
}

constexpr u64 kMostBytes = u64{1} << 62;  // no text is that long, and no sum of two overflows

// Notes what the record replaces; false when that is not in the document, or no text.
bool locate(const Job& job, Change& change) {
  const ClXmlParameter& parameter = job.parameter(change);
  const u64 size = job.document.size();
  if (parameter.newValueLength > kMostBytes) return false;
  if (parameter.valueOffset > size || parameter.valueLength > size - parameter.valueOffset) {
    return false;
  }
  change.begin = parameter.valueOffset;
  change.end = parameter.valueOffset + parameter.valueLength;
  if (parameter.status != kEmptyTag) return true;
  const EmptyTag tag = find_empty_tag(job.document.data(), size, parameter.valueOffset);
  const std::size_t close = tag.exists ? job.document.find('>', tag.slash) : job.document.npos;
  if (close == job.document.npos) return false;
  change.begin = tag.slash;
  change.end = close + 1;
  change.name = slice(job.document, tag.nameOffset, tag.nameLength);
  return true;
}

bool is_expanded(const Change& change) {
  return change.name.data() != nullptr;
}

constexpr std::string_view kStartTagEnd = ">";
constexpr std::string_view kEndTagBegin = "</";
constexpr std::string_view kEndTagEnd = ">";

u64 size_of(const Job& job, const Change& change) {
  const u64 value = job.parameter(change).newValueLength;
  if (!is_expanded(change)) return value;
  return value + kStartTagEnd.size() + kEndTagBegin.size() + change.name.size() + kEndTagEnd.size();
}

// Of records for the same value the later one is written; `previous` is the one sorted before.
bool takes_the_place_of(const Job& job, const Change& change, const Change& previous) {
  return job.parameter(change).valueOffset == job.parameter(previous).valueOffset;
}

// Works out every record's place in the new document and its size; kBadArgument when a range lies
// outside the document or overlaps another.
i32 plan(const Job& job, u64& needed) {
  u64 written = 0;  // up to here the document is done with
  u64 added = 0;
  u64 removed = 0;
  Change* last = nullptr;
  for (Change& change : job.changes) {
    change.newOffset = job.parameter(change).valueOffset + added - removed;
    if (!is_applied(job.parameter(change))) continue;
    if (!locate(job, change)) return kBadArgument;
    if (last != nullptr && takes_the_place_of(job, change, *last)) {
      last->written = false;
      added -= size_of(job, *last);
      removed -= last->end - last->begin;
      written = last->begin;
    }
    if (change.begin < written) return kBadArgument;
    change.newOffset =
        change.begin + added - removed + (is_expanded(change) ? kStartTagEnd.size() : 0);
    change.written = true;
    change.status = is_empty(job.parameter(change)) ? kFound : change.status;
    added += size_of(job, change);
    if (added > kMostBytes) return kBadArgument;
    removed += change.end - change.begin;
    written = change.end;
    last = &change;
  }
  needed = job.document.size() + added - removed;
  return kSuccess;
}

// --- Writing -------------------------------------------------------------------------------------

char* append(char* end, std::string_view text) {
  if (!text.empty()) std::memcpy(end, text.data(), text.size());
  return end + text.size();
}

char* append_value(const Job& job, const Change& change, char* end) {
  const ClXmlParameter& parameter = job.parameter(change);
  const std::string_view value(parameter.newValue, parameter.newValueLength);
  if (!is_expanded(change)) return append(end, value);
  end = append(append(end, kStartTagEnd), value);
  return append(append(append(end, kEndTagBegin), change.name), kEndTagEnd);
}

void write_document(const Job& job) {
  char* end = job.request.output;
  u64 done = 0;
  for (const Change& change : job.changes) {
    if (!change.written) continue;
    end = append(end, slice(job.document, done, change.begin - done));
    end = append_value(job, change, end);
    done = change.end;
  }
  append(end, from(job.document, done));
}

// --- Reporting -----------------------------------------------------------------------------------

// Callers tell their records apart by the path pointer: those that share one all get what became of
// the one that lies furthest back in the document.
void report(const Job& job) {
  sort(job.changes, [&](const Change& a, const Change& b) {
    const ClXmlParameter& first = job.parameter(a);
    const ClXmlParameter& second = job.parameter(b);
    if (first.path != second.path) return std::less<const char*>()(first.path, second.path);
    if (first.valueOffset != second.valueOffset) return first.valueOffset < second.valueOffset;
    return a.parameter < b.parameter;
  });
  const Change* last = nullptr;
  for (auto change = job.changes.rbegin(); change != job.changes.rend(); ++change) {
    ClXmlParameter& parameter = job.parameter(*change);
    if (last == nullptr || job.parameter(*last).path != parameter.path) last = &*change;
    if (parameter.newValue == nullptr) continue;
    parameter.newValueOffset = last->newOffset;
    parameter.status = last->status;
  }
}

i32 write(const Job& job) {
  for (u32 i = 0; i < job.changes.size(); ++i) {
    job.changes[i] = {i, job.parameters[i].status, 0, false, 0, 0, {}};
  }
  sort_by_offset(job);
  u64 needed = 0;
  const i32 status = plan(job, needed);
  if (status != kSuccess) return status;
  if (job.request.outputSize < needed) {
    append(job.request.output,
           slice(job.document, 0, std::min<u64>(job.document.size(), job.request.outputSize)));
    job.request.outputSize = needed;
    return kOutputTooSmall;
  }
  write_document(job);
  report(job);
  job.request.outputSize = needed;
  return kSuccess;
}

}  // namespace
}  // namespace pxcl::xml

using namespace pxcl;
using namespace pxcl::xml;

extern "C" {

int32_t ClXmlWrite(ClXmlRequest* request) {
  if (request == nullptr || request->document == nullptr || request->output == nullptr ||
      request->outputSize == 0 || request->parameters == nullptr || request->parameterCount == 0) {
    return kBadArgument;
  }
  constexpr u32 kUsual = 16;
  const u32 count = request->parameterCount;
  const std::string_view document(request->document, request->documentLength);
  const std::span parameters(static_cast<ClXmlParameter*>(request->parameters), count);
  Change usual[kUsual];
  if (count <= kUsual) return write({*request, document, parameters, {usual, count}});
  Owned<Change> block = Owned<Change>::allocate(count);
  return block ? write({*request, document, parameters, {block.get(), count}}) : kNoMemory;
}

int32_t ClXmlCheckEmptyTagSpec(const char* buffer, const ClXmlParameter* parameter,
                               uint64_t* nameOffset, uint64_t* nameLength) {
  if (buffer == nullptr || parameter == nullptr || nameOffset == nullptr || nameLength == nullptr) {
    return kBadArgument;
  }
  const EmptyTag tag = find_empty_tag(buffer, *parameter);
  if (!tag.exists) return kNoEmptyTag;
  *nameOffset = tag.nameOffset;
  *nameLength = tag.nameLength;
  return kSuccess;
}

int32_t ClXmlExpandEmptyElement(char* buffer, ClXmlParameter* parameter, uint64_t* end,
                                uint64_t* nameLength) {
  if (buffer == nullptr || parameter == nullptr || parameter->newValue == nullptr ||
      end == nullptr || nameLength == nullptr) {
    return kBadArgument;
  }
  const EmptyTag tag = find_empty_tag(buffer, *parameter);
  if (!tag.exists) return kNoEmptyTag;
  char* at = append(buffer + tag.slash, kStartTagEnd);
  parameter->newValueOffset = static_cast<u64>(at - buffer);
  at = append(append(at, {parameter->newValue, parameter->newValueLength}), kEndTagBegin);
  at = append(append(at, {buffer + tag.nameOffset, tag.nameLength}), kEndTagEnd);
  *end = static_cast<u64>(at - buffer);
  *nameLength = tag.nameLength;
  return kSuccess;
}

}  // extern "C"
