// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "client/status.hpp"

#include <pxcl.h>

#include <iterator>

#include "client/reply.hpp"
#include "client/text.hpp"

namespace pxcl::client {
namespace {

constexpr std::int32_t kUnevenDetails = -3;

Error unreadable() {
  return {Fault::kBadReply,
          "The printer's status can't be understood. Try again; if it stays so, switch the printer "
          "off and on."};
}

std::optional<std::string> text_of(std::string_view text) {
  if (text.empty()) return std::nullopt;
  return clean_line(text);
}

JobStatus job_of(const ClssStatus& record) {
  return {.job_id = clean_line(record.common.jobID),
          .progress = job_progresses().at(record.common.jobProgress),
          .state = job_states().at(record.jobState),
          .impressions = record.completeImpression < 0 ? std::nullopt
                                                       : std::optional(record.completeImpression)};
}

std::vector<LoadedPaper> paper_of(const ClssStatus& record) {
  std::vector<LoadedPaper> paper;
  for (std::size_t i = 0; i < std::size(record.currentPaperType) - 1; ++i) {
    const bool byPanel = record.panelMedia[i] == 1;
    const auto type = (byPanel ? panel_types() : paper_types()).at(record.currentPaperType[i]);
    const auto size = paper_sizes().at(record.currentPaperSize[i]);
    if (!type || !size) break;
    paper.push_back({*type, *size, byPanel});
  }
  return paper;
}

Status common_of(const ClssStatusCommon& record) {
  Status status;
  status.state = printer_states().at(record.status);
  status.detail = printer_state_details().at(record.statusDetail);
  status.support_code = text_of(record.supportCode);
  status.job_id = text_of(record.jobID);
  status.job_progress = job_progresses().at(record.jobProgress);
  return status;
}

Status status_from(const ClssStatus& record) {
  Status status = common_of(record.common);
  status.paper = paper_of(record);
  if (record.inkState != kNoRow) status.inks_fine = record.inkState == 2;
  return status;
}

// By row of printer_state_details().
struct Cause {
  std::string_view what;
  std::string_view advice;
};
constexpr Cause kCauses[] = {
    {"The printer has stopped", "Look at its panel"},
    {"The printer needs attention", "Look at its panel"},
    {"Paper is jammed in the printer", "Remove it and close the printer"},
    {"A cover of the printer is open", "Close it"},
    {"The printer is out of paper", "Load paper of the job's size and type"},
    {"An ink of the printer needs attention", "Look at its inks and replace what is empty"},
    {"The printer is busy", "Wait until it is ready"},
    {"The paper in the printer is not the job's", "Load paper of the job's size and type"},
};

}  // namespace

Result<Status> read_status(std::string_view document, std::string_view jobID) {
  ClssStatus record = {};
  std::int32_t code = CLSS_ParseStatusResponsePrint(document.data(), document.size(), &record);
  // With a list of details that is out of step the record is complete, but no job is looked for.
  if (code != 0 && (code != kUnevenDetails || !jobID.empty())) return unreadable();
  Status status = status_from(record);
  if (jobID.empty()) return status;
  const std::string job(jobID);
  code = CLSS_ParseStatusResponsePrint2(document.data(), document.size(), job.c_str(), &record);
  if (code < 0) return unreadable();
  if (code == 0) status.job = job_of(record);
  return status;
}

Result<Status> read_common_status(std::string_view document, Service service) {
  const std::string set =
      "cmd/zirk:contents/zirk:param_set servicetype=\"" +
      std::string(service_types().at(static_cast<std::uint16_t>(service))->keyword) + "\"/zirk:";
  const std::string paths[] = {set + "status", set + "status_detail", set + "jobstatus/zirk:jobID",
                               set + "jobstatus/zirk:jobprogress", set + "current_support_code"};
  ClssKeyValue keys[std::size(paths)] = {};
  for (std::size_t i = 0; i < std::size(paths); ++i)
    keys[i] = {paths[i].data(), paths[i].size(), nullptr, 0};
  ClssStatusCommon record = {};
  const std::int32_t code =
      parseCommonStatusResponse(document.data(), document.size(), keys, std::size(paths), &record);
  if (code != 0) return unreadable();
  return common_of(record);
}

Result<std::optional<JobStatus>> read_maintenance_job(std::string_view document,
                                                      std::string_view jobID) {
  ClssStatus record = {};
  const std::string job(jobID);
  const std::int32_t code =
      CLSS_ParseStatusResponseMaintenance(document.data(), document.size(), job.c_str(), &record);
  if (code < 0) return unreadable();
  if (code == 1) return std::optional<JobStatus>();
  return std::optional(job_of(record));
}

bool needs_attention(const Status& status) {
  if (!status.state) return false;
  const bool isBusy = status.detail && *status.detail == kDeviceBusy;
  return *status.state == kStopped || (*status.state == kNotReady && !isBusy);
}

std::string attention_sentence(const Status& status) {
  const std::size_t row = status.detail ? status.detail->row : 0;
  const Cause& cause = kCauses[row < std::size(kCauses) ? row : 0];
  std::string sentence(cause.what);
  if (status.support_code) sentence += " (support code " + *status.support_code + ")";
  return sentence + ". " + std::string(cause.advice) + ".";
}

}  // namespace pxcl::client
