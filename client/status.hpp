// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "client/result.hpp"
#include "client/words.hpp"

namespace pxcl::client {

/// Paper in one of the printer's bins.
struct LoadedPaper {
  Word type;      ///< Row of paper_types(), or of panel_types() when `by_panel`.
  Word size;      ///< Row of paper_sizes().
  bool by_panel;  ///< The type is one that only the printer's panel knows.
};

/// How far a job is.
struct JobStatus {
  std::string job_id;
  std::optional<Word> progress;             ///< Row of job_progresses().
  std::optional<Word> state;                ///< Row of job_states().
  std::optional<std::int32_t> impressions;  ///< Completed so far.
};

/// What the print service is doing. Everything that the printer does not tell, or tells in words that are in no
/// dictionary, is absent.
struct Status {
  std::optional<Word> state;                ///< Row of printer_states().
  std::optional<Word> detail;               ///< Row of printer_state_details().
  std::optional<std::string> support_code;  ///< The maker's own number of the cause.
  std::optional<std::string> job_id;        ///< The job at work.
  std::optional<Word> job_progress;         ///< Its progress, row of job_progresses().
  std::vector<LoadedPaper> paper;           ///< The bins whose paper is known, in their order.
  std::optional<bool> inks_fine;            ///< Whether every ink is; false when one needs a look.
  std::optional<JobStatus>
      job;  ///< The job that was asked for; none when the printer does not know it (any more).
};

/// Reads the answer to GetStatus of the print service, and the block of one job when its ID is given. kBadReply when it is
/// none or can't be read.
Result<Status> read_status(std::string_view document, std::string_view jobID = {});

/// Reads no more than what the status of every service has: state, detail, support code, job at work.
Result<Status> read_common_status(std::string_view document, Service service);

/// Reads one job's block in the answer to GetStatus of the maintenance service; none when the printer does not know
/// the job (any more).
Result<std::optional<JobStatus>> read_maintenance_job(std::string_view document,
                                                      std::string_view jobID);

/// Whether the printer waits for a person.
bool needs_attention(const Status& status);

/// A sentence on what it waits for: the cause, the support code, what to do.
std::string attention_sentence(const Status& status);

}  // namespace pxcl::client
