// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The jobs of a printer and what each may do next.
//
// One job is open at a time, of whatever service. A print job goes
//
//     StartJob, [SetJobConfiguration], SetConfiguration, { SetPageConfiguration, SendData... }, EndJob
//
// with ModeShift anywhere. SetPageConfiguration feeds the paper of its page; the next one, or EndJob, ends the page: its data
// is made a picture, its ink is used. Where something is wrong with the printer the status says so at once and data is
// still taken, but the page can't end: "Suspended", until a person comes (attend()) or CancelJob. Data that is no page
// spoils the job: "ParameterError" at the page's end, and only CancelJob is left.

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "printer/command.hpp"
#include "printer/faults.hpp"
#include "printer/page_spool.hpp"
#include "printer/profile.hpp"
#include "printer/supplies.hpp"

namespace pxcl::printer {

/// The most data of one SendData.
inline constexpr std::size_t kLongestData = std::size_t{32} << 20;

struct PrintSettings {
  std::string size;
  std::string type;
  bool is_duplex = false;
  bool is_black_only = false;
};

struct Page {
  bool is_fed = false;  ///< Its paper has been taken.
  PageFormat format;
};

struct Job {
  Service service{};
  std::string id;
  std::string description;
  bool takes_any_paper = false;
  std::optional<PrintSettings> settings;
  std::optional<Page> page;    ///< That is being received.
  bool expects_page = false;   ///< The last page said that another follows.
  bool had_last_page = false;  ///< The last page said that none follows.
  unsigned pages = 0;          ///< Begun.
  unsigned sends = 0;
  unsigned impressions = 0;  ///< Completed.
};

class Jobs {
 public:
  Jobs(const Profile& profile, Supplies& supplies, Faults& faults, PageSpool& spool);

  /// Carries out what is not a question. `data` is what came behind the document.
  [[nodiscard]] std::optional<Refusal> carry_out(const Command& command, std::string_view data);

  void attend();

  [[nodiscard]] const std::optional<Job>& job() const { return job_; }
  [[nodiscard]] std::optional<Trouble> trouble() const { return trouble_; }
  [[nodiscard]] bool has_page_data() const { return spool_.size() > 0; }
  /// The date and time that was set, 14 digits; empty until then.
  [[nodiscard]] const std::string& clock() const { return clock_; }
  [[nodiscard]] const std::string& agreement() const { return agreement_; }

 private:
  using Outcome = std::optional<Refusal>;

  Outcome start(const Command& command);
  Outcome refuse_job(const Command& command) const;
  Outcome in_job(const Command& command, std::string_view data);
  Outcome configure_job(const Command& command);
  Outcome configure(const Command& command);
  Outcome begin_page(const Command& command);
  Outcome send(const Command& command, std::string_view data);
  Outcome take_format(const Command& command, std::string_view data);
  Outcome finish_page();
  Outcome end();
  Outcome cancel();
  Outcome print_test();
  Outcome clean();
  Outcome in_peace() const;
  void feed_page();
  PaperWish wish() const;
  Outcome suspended() const;

  const Profile& profile_;
  Supplies& supplies_;
  Faults& faults_;
  PageSpool& spool_;
  std::optional<Job> job_;
  std::optional<Trouble> trouble_;
  std::string clock_;
  std::string agreement_ = "unknown";
};

}  // namespace pxcl::printer
