// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// What the client layer tells of a printer: words are of their dictionaries, never "unknown", and texts are one line of good
// UTF-8 each.

#pragma once

#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "client/print_job.hpp"
#include "support.hpp"

namespace pxcl::client {

using fuzz::is_line;
using fuzz::require;

inline void check(const std::optional<Word>& word, const Dictionary& dictionary) {
  require(!word || dictionary.at(word->row) == word);
}

inline void check(const std::vector<Word>& words, const Dictionary& dictionary) {
  for (const Word& word : words) check(std::optional(word), dictionary);
}

inline void check(const std::optional<std::string>& text) {
  require(!text || (is_line(*text) && !text->empty()));
}

inline void check(const JobStatus& job) {
  require(is_line(job.job_id));
  check(job.progress, job_progresses());
  check(job.state, job_states());
  require(job.impressions.value_or(0) >= 0);
}

inline void check(const Status& status) {
  check(status.state, printer_states());
  check(status.detail, printer_state_details());
  check(status.job_progress, job_progresses());
  check(status.support_code);
  check(status.job_id);
  for (const LoadedPaper& paper : status.paper) {
    check(paper.type, paper.by_panel ? panel_types() : paper_types());
    check(paper.size, paper_sizes());
  }
  if (status.job) check(*status.job);
  require(is_line(attention_sentence(status)));
}

inline void check(const PrintCapability& capability) {
  for (const PaperSize& size : capability.sizes) {
    check(size.size, paper_sizes());
    for (const auto* area : {&size.border, &size.borderless, &size.duplex}) {
      require(!*area || ((*area)->area.width > 0 && (*area)->area.height > 0));
    }
  }
  for (const MediaType& type : capability.media) {
    check(type.type, paper_types());
    check(type.color_modes, color_modes());
    check(type.duplex, duplex_modes());
  }
  check(capability.formats, data_formats());
  check(capability.host_environment, host_environments());
  check(capability.print_preparations, print_preparations());
}

inline void check(const MaintenanceCapability& capability) {
  check(capability.host_environment, host_environments());
}

inline void check(const std::vector<std::string>& jobIDs) {
  for (const std::string& id : jobIDs) require(is_line(id));
}

inline void check(const Identity& identity) {
  require(is_line(identity.device_id));
  check(identity.manufacturer);
  check(identity.model);
}

// An error is one line, too.
template <typename Held>
inline void check(const Result<Held>& result) {
  if (!result) return require(is_line(result.error().message) && !result.error().message.empty());
  if constexpr (!std::is_void_v<Held>) check(result.value());
}

}  // namespace pxcl::client
