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
  if (!fits_memory(position)) return {};
  const std::size_t opening = find_opening(as_view(buffer, position));
  const u64 slash = find_slash(buffer, length, position);
  if (opening == std::string_view::npos || slash == length) return {};
  const std::string_view name =
      until_space(slice(as_view(buffer, slash), opening + 1, slash - opening - 1));
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
  ClXmlParameter* parameter;
  u64 newOffset;
  // What is replaced in the document, for a record that is applied and no later one takes its
  // place.
  u64 begin;
  u64 end;
  const char* name;  // of an empty-element tag: the end tag's; null otherwise
  u64 nameLength;
  i32 status;
  bool written;
};

struct Job {
  ClXmlRequest& request;
  std::string_view document;
  std::span<Change> changes;
};

// How the records stand in the request, mostly as the writer wants them.
struct Order {
  bool byOffset = true;  // in the document
  bool byPath = true;    // and no two with the same path pointer
};

Order list_changes(const Job& job, ClXmlParameter* parameters) {
  Order order;
  u64 offset = 0;
  const char* path = nullptr;
  for (Change& change : job.changes) {
    change.parameter = parameters++;
    change.status = change.parameter->status;
    change.written = false;
    if (change.parameter->valueOffset < offset) order.byOffset = false;
    if (!std::less<const char*>()(path, change.parameter->path)) order.byPath = false;
    offset = change.parameter->valueOffset;
    path = change.parameter->path;
  }
  return order;
}

// Among those with the same offset the place in the request counts.
bool comes_before(const Change& a, const Change& b) {
  const u64 first = a.parameter->valueOffset, second = b.parameter->valueOffset;
  return first != second ? first < second : a.parameter < b.parameter;
}

// No text is longer, and no sum of two overflows.
constexpr u64 kMostBytes = std::min(u64{1} << 62, u64{SIZE_MAX / 2});

// Notes what the record replaces; false when that is not in the document, or no text.
bool locate(const Job& job, Change& change) {
  const ClXmlParameter& parameter = *change.parameter;
  const u64 size = job.document.size();
  if (parameter.newValueLength > kMostBytes) return false;
  if (parameter.valueOffset > size || parameter.valueLength > size - parameter.valueOffset) {
    return false;
  }
  change.begin = parameter.valueOffset;
  change.end = parameter.valueOffset + parameter.valueLength;
  change.name = nullptr;
  if (parameter.status != kEmptyTag) return true;
  const EmptyTag tag = find_empty_tag(job.document.data(), size, parameter.valueOffset);
  const std::size_t close =
      tag.exists ? job.document.find('>', memory_size(tag.slash)) : job.document.npos;
  if (close == job.document.npos) return false;
  change.begin = tag.slash;
  change.end = close + 1;
  change.name = job.document.data() + tag.nameOffset;
  change.nameLength = tag.nameLength;
  return true;
}

bool is_expanded(const Change& change) {
  return change.name != nullptr;
}

constexpr std::string_view kStartTagEnd = ">";
constexpr std::string_view kEndTagBegin = "</";
constexpr std::string_view kEndTagEnd = ">";

u64 size_of(const Change& change) {
  const u64 value = change.parameter->newValueLength;
  if (!is_expanded(change)) return value;
  return value + kStartTagEnd.size() + kEndTagBegin.size() + change.nameLength + kEndTagEnd.size();
}

// Of records for the same value the later one is written; `previous` is the one sorted before.
bool takes_the_place_of(const Change& change, const Change& previous) {
  return change.parameter->valueOffset == previous.parameter->valueOffset;
}

// Works out every record's place in the new document and its size; kBadArgument when a range lies
// outside the document or overlaps another.
i32 plan(const Job& job, u64& needed) {
  u64 written = 0;  // up to here the document is done with
  u64 added = 0;
  u64 removed = 0;
  Change* last = nullptr;
  for (Change& change : job.changes) {
    change.newOffset = change.parameter->valueOffset + added - removed;
    if (!is_applied(*change.parameter)) continue;
    if (!locate(job, change)) return kBadArgument;
    if (last != nullptr && takes_the_place_of(change, *last)) {
      last->written = false;
      added -= size_of(*last);
      removed -= last->end - last->begin;
      written = last->begin;
    }
    if (change.begin < written) return kBadArgument;
    change.newOffset =
        change.begin + added - removed + (is_expanded(change) ? kStartTagEnd.size() : 0);
    change.written = true;
    change.status = is_empty(*change.parameter) ? kFound : change.status;
    added += size_of(change);
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

char* append_value(const Change& change, char* end) {
  const std::string_view value =
      as_view(change.parameter->newValue, change.parameter->newValueLength);
  if (!is_expanded(change)) return append(end, value);
  end = append(append(end, kStartTagEnd), value);
  return append(append(append(end, kEndTagBegin), as_view(change.name, change.nameLength)),
                kEndTagEnd);
}

void write_document(const Job& job) {
  char* end = job.request.output;
  u64 done = 0;
  for (const Change& change : job.changes) {
    if (!change.written) continue;
    end = append(end, slice(job.document, done, change.begin - done));
    end = append_value(change, end);
    done = change.end;
  }
  append(end, from(job.document, done));
}

// --- Reporting -----------------------------------------------------------------------------------

void report(ClXmlParameter& parameter, const Change& change) {
  if (parameter.newValue == nullptr) return;
  parameter.newValueOffset = change.newOffset;
  parameter.status = change.status;
}

bool comes_before_by_path(const Change& a, const Change& b) {
  const char* first = a.parameter->path;
  const char* second = b.parameter->path;
  return first != second ? std::less<const char*>()(first, second) : comes_before(a, b);
}

// Callers tell their records apart by the path pointer: those that share one all get what became of
// the one that lies furthest back in the document.
void report_by_path(std::span<Change> changes) {
  std::sort(changes.begin(), changes.end(), comes_before_by_path);
  const Change* last = &changes.back();
  for (auto change = changes.rbegin(); change != changes.rend(); ++change) {
    if (last->parameter->path != change->parameter->path) last = &*change;
    report(*change->parameter, *last);
  }
}

void report_all(const Job& job, bool byPath) {
  if (!byPath) return report_by_path(job.changes);
  for (const Change& change : job.changes) report(*change.parameter, change);
}

i32 write(const Job& job, ClXmlParameter* parameters) {
  const Order order = list_changes(job, parameters);
  if (!order.byOffset) std::sort(job.changes.begin(), job.changes.end(), comes_before);
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
  report_all(job, order.byPath);
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
  if (!fits_memory(request->documentLength)) return kBadArgument;
  const std::string_view document = as_view(request->document, request->documentLength);
  ClXmlParameter* parameters = static_cast<ClXmlParameter*>(request->parameters);
  Change usual[kUsual];
  if (count <= kUsual) return write({*request, document, {usual, count}}, parameters);
  Owned<Change> block = Owned<Change>::allocate(count);
  return block ? write({*request, document, {block.get(), count}}, parameters) : kNoMemory;
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
  if (!fits_memory(parameter->newValueLength)) return kBadArgument;
  const EmptyTag tag = find_empty_tag(buffer, *parameter);
  if (!tag.exists) return kNoEmptyTag;
  char* at = append(buffer + tag.slash, kStartTagEnd);
  parameter->newValueOffset = static_cast<u64>(at - buffer);
  at = append(append(at, as_view(parameter->newValue, parameter->newValueLength)), kEndTagBegin);
  at = append(append(at, as_view(buffer + tag.nameOffset, tag.nameLength)), kEndTagEnd);
  *end = static_cast<u64>(at - buffer);
  *nameLength = tag.nameLength;
  return kSuccess;
}

}  // extern "C"
