// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The identifiers of all jobs that a print status reply lists.

#include "responses/fields.hpp"

namespace pxcl::responses {
namespace {

using Slot = char[9];

constexpr std::array<Key, 1> kKeys = {{{keyed::path::kPrintJob.jobID, xml::Wanted::kAll}}};

constexpr u64 kQuotedJobID = 10;  // 8 characters and the two quotes of the attribute

void fill_slots(std::string_view document, std::span<const ClXmlValueRange> jobs,
                std::span<Slot> slots, i32& count) {
  // The bound is on the job's position, jobs with other identifiers included: callers rely on it.
  const std::size_t looked_at = jobs.size() < slots.size() ? jobs.size() : slots.size();
  std::size_t filled = 0;
  for (const ClXmlValueRange& job : jobs.first(looked_at)) {
    if (job.length != kQuotedJobID) continue;
    const std::string_view inside = slice(document, job.offset + 1, job.length - 2);
    keyed::copy_value(inside, slots[filled++], sizeof(Slot));  // 8 bytes never become more
  }
  for (Slot& slot : slots.subspan(filled)) slot[0] = '\0';
  count = static_cast<i32>(filled);
}

}  // namespace
}  // namespace pxcl::responses

using namespace pxcl;
using namespace pxcl::responses;

int32_t CLSS_ParseJobIDListResponse(const char* document, uint64_t length, char (*slots)[9],
                                    int32_t* count) {
  if (length == 0 || document == nullptr || count == nullptr) return kBadArgument;
  const std::string_view reply = as_view(document, length);
  Answers<kKeys> jobs;
  const i32 status = keyed::ask(reply, xml::kPlanOf<kKeys>, jobs.all());
  if (status != kOk) return status;
  const std::span<const ClXmlValueRange> ranges = ranges_of(jobs.all()[0]);
  if (slots == nullptr || *count < 1) {
    *count = static_cast<i32>(ranges.size());
    return kOk;
  }
  fill_slots(reply, ranges, {slots, static_cast<std::size_t>(*count)}, *count);
  return kOk;
}
