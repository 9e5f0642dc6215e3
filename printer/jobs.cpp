// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "printer/jobs.hpp"

#include <algorithm>
#include <charconv>

#include "printer/settings.hpp"

namespace pxcl::printer {

namespace {

constexpr unsigned kPageInk = 1, kCleaningInk = 3;  // percent

bool is_job_id(std::string_view text) {
  return text.size() == 8 && text.find_first_not_of("0123456789") == text.npos;
}

Refusal out_of_order(std::string reason) {
  return {"IllegalOperation", std::move(reason)};
}

Refusal bad_parameter(std::string reason) {
  return {"ParameterError", std::move(reason)};
}

// Digits; the largest number there is when they say more.
std::uint64_t number(std::string_view digits) {
  std::uint64_t value = 0;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return result.ec == std::errc{} ? value : UINT64_MAX;
}

// The data is as long as it was said to be.
std::optional<Refusal> refuse_size(std::uint64_t announced, std::size_t came) {
  if (announced > kLongestData) return Refusal{"DataSizeOver", "the data is too long"};
  if (came > announced) return Refusal{"DataSizeOver", "more data came than was announced"};
  if (came < announced || announced == 0) return bad_parameter("less data came than was announced");
  return std::nullopt;
}

}  // namespace

Jobs::Jobs(const Profile& profile, Supplies& supplies, Faults& faults, PageSpool& spool)
    : profile_(profile), supplies_(supplies), faults_(faults), spool_(spool) {}

Jobs::Outcome Jobs::carry_out(const Command& command, std::string_view data) {
  switch (command.action) {
    case Action::kStartJob:
      return start(command);
    case Action::kFRomUpMode:
    case Action::kHandOverOff:
    case Action::kPowerOff:
      return in_peace();
    default:
      break;
  }
  if (auto refusal = refuse_job(command)) return refusal;
  return in_job(command, data);
}

Jobs::Outcome Jobs::start(const Command& command) {
  const std::string_view id = command.text("jobID");
  if (!is_job_id(id)) return Refusal{"IllegalJobID", "a job ID has eight digits"};
  if (job_) return Refusal{"DeivceUseOtherJob", "the job " + job_->id + " is open"};
  if (auto refusal = refuse_start(profile_, command)) return refusal;
  job_.emplace();
  job_->service = command.service;
  job_->id = id;
  job_->description = command.text("job_description");
  return std::nullopt;
}

Jobs::Outcome Jobs::refuse_job(const Command& command) const {
  if (!job_ || job_->service != command.service) return Refusal{"NotStart", "no job is open"};
  if (command.text("jobID") != job_->id) {
    return Refusal{"IllegalJobID", "the open job is " + job_->id};
  }
  const bool is_spoilt = trouble_ == Trouble::kBadData;
  if (is_spoilt && command.action != Action::kCancelJob) {
    return out_of_order("the job's data was no page; it can only be cancelled");
  }
  return std::nullopt;
}

Jobs::Outcome Jobs::in_job(const Command& command, std::string_view data) {
  switch (command.action) {
    case Action::kSetJobConfiguration:
      return configure_job(command);
    case Action::kSetConfiguration:
      return configure(command);
    case Action::kSetPageConfiguration:
      return begin_page(command);
    case Action::kSendData:
      return send(command, data);
    case Action::kEndJob:
      return end();
    case Action::kCancelJob:
      return cancel();
    case Action::kTestPrint:
      return print_test();
    case Action::kCleaning:
      return clean();
    default:  // ModeShift changes nothing here.
      return std::nullopt;
  }
}

Jobs::Outcome Jobs::configure_job(const Command& command) {
  if (job_->pages > 0) return out_of_order("the job has begun to print");
  if (auto refusal = refuse_job_settings(profile_, command)) return refusal;
  if (command.find("datetime") != nullptr) clock_ = command.text("datetime");
  job_->takes_any_paper = command.text("mismatch_mode") == "auto";
  return std::nullopt;
}

Jobs::Outcome Jobs::configure(const Command& command) {
  if (command.service == Service::kDevice) {
    agreement_ = command.text("selfPLIagreement");
    return std::nullopt;
  }
  if (job_->pages > 0) return out_of_order("the job has begun to print");
  if (auto refusal = refuse_settings(profile_, command)) return refusal;
  job_->settings = PrintSettings{
      std::string(command.text("papersize")), std::string(command.text("papertype")),
      command.text("duplexprint") == "ON", command.text("printcolormode") == "monochrome"};
  return std::nullopt;
}

Jobs::Outcome Jobs::begin_page(const Command& command) {
  if (!job_->settings) return out_of_order("the job's settings have not come");
  if (auto refusal = refuse_page_settings(profile_, command)) return refusal;
  if (job_->had_last_page) return out_of_order("the page before said that none follows");
  if (auto refusal = finish_page()) return refusal;
  ++job_->pages;
  job_->page.emplace();
  job_->expects_page = command.text("nextpage") == "ON";
  job_->had_last_page = command.text("nextpage") == "OFF";
  trouble_ = faults_.take_at_page(job_->pages);
  if (!trouble_) feed_page();
  return std::nullopt;
}

PaperWish Jobs::wish() const {
  return {job_->settings->size, job_->settings->type, job_->takes_any_paper};
}

// The second side of a sheet needs none of its own.
void Jobs::feed_page() {
  const bool is_back = job_->settings->is_duplex && job_->pages % 2 == 0;
  if (!is_back) trouble_ = supplies_.feed(wish());
  job_->page->is_fed = !trouble_;
}

Jobs::Outcome Jobs::send(const Command& command, std::string_view data) {
  if (auto refusal = refuse_size(number(command.text("datasize")), data.size())) return refusal;
  if (!job_->page) return out_of_order("no page has begun");
  if (spool_.size() + data.size() > kMostPageData) {
    return Refusal{"DataSizeOver", "the page has too much data"};
  }
  if (auto refusal = take_format(command, data)) return refusal;
  if (!spool_.append(data)) return Refusal{"Suspended", "the data can't be kept on this machine"};
  if (const auto trouble = faults_.take_after_sends(++job_->sends)) trouble_ = trouble;
  return std::nullopt;
}

// All of a page has one format. RAW comes in bands of one width.
Jobs::Outcome Jobs::take_format(const Command& command, std::string_view data) {
  const std::string format(command.text("format"));
  const auto& known = profile_.print.formats;
  if (std::ranges::find(known, format) == known.end()) {
    return bad_parameter("format is not what the printer announced");
  }
  PageFormat& page = job_->page->format;
  if (has_page_data() && page.name != format) return bad_parameter("the page has another format");
  const bool is_raw = format == "RAW";
  if (is_raw != (command.find("datawidth") != nullptr)) {
    return bad_parameter("datawidth and datalength belong to RAW");
  }
  const std::uint64_t width = is_raw ? number(command.text("datawidth")) : 0;
  const std::uint64_t height = is_raw ? number(command.text("datalength")) : 0;
  if (is_raw && (width == 0 || width > data.size() || height > data.size() ||
                 width * height * 3 != data.size() || (has_page_data() && width != page.width))) {
    return bad_parameter("datawidth and datalength do not fit the data");
  }
  page = {format, width, has_page_data() ? page.height + height : height};
  return std::nullopt;
}

Jobs::Outcome Jobs::suspended() const {
  return Refusal{"Suspended",
                 "the printer waits for a person: " + std::string(row_of(*trouble_).name)};
}

Jobs::Outcome Jobs::finish_page() {
  if (trouble_) return suspended();
  if (!job_->page) return std::nullopt;
  if (!has_page_data()) return out_of_order("the page has no data");
  trouble_ = supplies_.use_ink(kPageInk, job_->settings->is_black_only);
  if (trouble_) return suspended();
  const auto error = spool_.render(job_->page->format);
  job_->page.reset();
  if (error) {
    trouble_ = Trouble::kBadData;
    return bad_parameter("the page can't be read: " + *error);
  }
  ++job_->impressions;
  return std::nullopt;
}

Jobs::Outcome Jobs::end() {
  if (auto refusal = finish_page()) return refusal;
  if (job_->expects_page) return out_of_order("the page before said that another follows");
  job_.reset();
  return std::nullopt;
}

Jobs::Outcome Jobs::cancel() {
  spool_.discard();
  trouble_.reset();
  job_.reset();
  return std::nullopt;
}

Jobs::Outcome Jobs::print_test() {
  if (trouble_) return suspended();
  trouble_ = faults_.take_at_page(++job_->pages);
  if (!trouble_) trouble_ = supplies_.feed_any();
  if (!trouble_) trouble_ = supplies_.use_ink(kPageInk, false);
  if (trouble_) return suspended();
  ++job_->impressions;
  return std::nullopt;
}

Jobs::Outcome Jobs::clean() {
  if (!trouble_) trouble_ = supplies_.use_ink(kCleaningInk, false);
  return trouble_ ? suspended() : std::nullopt;
}

Jobs::Outcome Jobs::in_peace() const {
  if (!job_) return std::nullopt;
  return Refusal{"DeivceUseOtherJob", "the job " + job_->id + " is open"};
}

void Jobs::attend() {
  const bool is_printing = job_ && job_->settings;
  supplies_.refill(is_printing ? std::optional(wish()) : std::nullopt);
  if (trouble_ == Trouble::kBadData) return;
  trouble_.reset();
  if (job_ && job_->page && !job_->page->is_fed) feed_page();
}

}  // namespace pxcl::printer
