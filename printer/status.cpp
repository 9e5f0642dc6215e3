// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "printer/status.hpp"

namespace pxcl::printer {

namespace {

// The open job, if it is the service's.
const Job* job_of(const Jobs& jobs, Service service) {
  return jobs.job() && jobs.job()->service == service ? &*jobs.job() : nullptr;
}

std::string_view status_word(const Jobs& jobs, Service service) {
  if (jobs.trouble()) return "stopped";
  if (job_of(jobs, service) != nullptr) return "processing";
  return jobs.job() ? "busying" : "idle";
}

std::string_view progress_word(const Jobs& jobs) {
  return jobs.trouble() ? "stopped" : "processing";
}

std::string_view state_word(const Jobs& jobs, const Job& job) {
  if (job.pages == 0) return "preparing";
  return job.page && !jobs.has_page_data() ? "waitingrender" : "printing";
}

// What is wrong or soon will be, or null.
const TroubleRow* row_of_all(const Supplies& supplies, const Jobs& jobs) {
  if (jobs.trouble()) return &row_of(*jobs.trouble());
  return supplies.is_ink_low() ? &kInkLow : nullptr;
}

std::string bin_name(std::size_t index) {
  return "inputbin_p" + std::to_string(index + 1);
}

// A bin of which nothing is known still has its two elements, or those behind it would not be looked at.
void add_paper(Reply& reply, const Supplies& supplies, std::string_view type,
               std::string_view size) {
  for (std::size_t i = 0; i < supplies.bins().size(); ++i) {
    const std::string name = bin_name(i);
    reply.add(type, supplies.bins()[i].type, {{"physicalinputbin", name}});
    reply.add(size, supplies.bins()[i].size, {{"physicalinputbin", name}});
  }
}

void add_inks(Reply& reply, const Supplies& supplies) {
  reply.open("zirk:marker_info");
  for (const Ink& ink : supplies.inks()) {
    reply.open("zirk:ink");
    reply.add("zirk:color", ink.color);
    reply.add("zirk:level", ink.level);
    reply.add("vrx:tca", ink.tca);
    reply.close();
  }
  reply.close();
}

void add_details(Reply& reply, const TroubleRow& row) {
  reply.open("zirk:status_detail_list");
  reply.open("zirk:item", {{"id", "1"}});
  reply.add("zirk:error_code", row.support_code);
  reply.close();
  reply.close();
}

// A job without a description is told by its ID.
void add_job(Reply& reply, const Jobs& jobs, const Job& job) {
  reply.open("zirk:jobinfo", {{"jobID", job.id}});
  reply.add_raw("zirk:job_description", job.description.empty() ? job.id : job.description);
  reply.add("zirk:jobprogress", progress_word(jobs));
  reply.open("zirk:jobprogress_detail");
  reply.add("zirk:state", state_word(jobs, job));
  reply.close();
  reply.add("zirk:complete_impression", job.impressions);
  reply.close();
}

void add_current_job(Reply& reply, const Jobs& jobs, const Job& job) {
  reply.open("zirk:jobstatus");
  reply.add("zirk:jobID", job.id);
  reply.add("zirk:jobprogress", progress_word(jobs));
  reply.close();
}

}  // namespace

void add_status(Reply& reply, const Supplies& supplies, const Jobs& jobs, Service service) {
  const TroubleRow* const row = row_of_all(supplies, jobs);
  const Job* const job = job_of(jobs, service);
  reply.add("zirk:status", status_word(jobs, service));
  if (row != nullptr) reply.add("zirk:status_detail", row->status_detail);
  if (row != nullptr) reply.add("zirk:current_support_code", row->support_code);
  if (job != nullptr) add_current_job(reply, jobs, *job);
  if (service == Service::kPrint) {
    add_paper(reply, supplies, "zirk:currentpapertype", "zirk:currentpapersize");
    add_inks(reply, supplies);
  }
  if (row != nullptr) add_details(reply, *row);
  if (job != nullptr) add_job(reply, jobs, *job);
}

void add_job_list(Reply& reply, const Jobs& jobs) {
  if (const Job* const job = job_of(jobs, Service::kPrint)) add_job(reply, jobs, *job);
}

void add_configuration(Reply& reply, const Supplies& supplies, const Jobs& jobs, Service service) {
  if (service == Service::kPrint) {
    add_paper(reply, supplies, "zirk:papertype", "zirk:papersize");
    return;
  }
  reply.add("vrx:selfPLIagreement", jobs.agreement());
  if (!jobs.clock().empty()) reply.add("zirk:datetime", jobs.clock());
}

}  // namespace pxcl::printer
