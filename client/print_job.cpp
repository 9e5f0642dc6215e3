// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "client/print_job.hpp"

#include <pxcl.h>

#include <algorithm>
#include <ctime>
#include <exception>
#include <limits>
#include <utility>

#include "client/attendant.hpp"
#include "client/build.hpp"
#include "client/job.hpp"
#include "client/reply.hpp"
#include "client/text.hpp"

namespace pxcl::client {
namespace {

// SendData tells its size in a signed 32-bit number.
constexpr std::size_t kLargestChunk = std::numeric_limits<std::int32_t>::max();
constexpr std::uint16_t kNotSent = CLSS_SETTING_ABSENT;
enum NextPage : std::uint16_t { kNotTold = 0, kNone = 1, kFollows = 2 };

Error bad_source(const std::string& what) {
  return {Fault::kBadInput, what + " The document can't be printed as it is."};
}

}  // namespace

// One way of a job through the printer.
class PrintJob::Run {
 public:
  Run(PrintJob& job, PageSource& pages);

  Result<PrintReport> run();

 private:
  Result<void> carry_out();
  Result<void> check_options() const;
  Result<void> take_first_page();
  Result<void> configure();
  Result<void> send_pages();
  Result<void> begin_page();
  Result<void> send_page_data();
  Result<std::size_t> fill_chunk();
  Result<void> send_chunk(std::size_t length);
  Result<bool> take_next_page();
  Result<void> close();
  Result<void> order(const Result<std::string>& command, const Asked& asked,
                     std::string_view data = {});
  Result<std::string> set_configuration() const;
  Asked asked(std::string_view operation) const;
  void hear(const Status& status);
  void tell() const;

  const PrintJob& self_;
  PageSource& pages_;
  OpenJob job_;
  Attendant attendant_;
  Progress progress_ = {};
  std::string chunk_;
};

PrintJob::Run::Run(PrintJob& job, PageSource& pages)
    : self_(job),
      pages_(pages),
      job_(job.printer_.channel(), Service::kPrint,
           job.options_.job_id.empty() ? new_job_id() : job.options_.job_id),
      attendant_(
          job_.id(),
          {job.options_.poll_interval, job.options_.attention_limit, job.options_.cancelled},
          [this] { return self_.printer_.status_of(job_.id()); },
          [this](const Status& status) { hear(status); }) {}

// Page sources and callbacks are others' code: what they throw is a failure like any other.
Result<PrintReport> PrintJob::Run::run() {
  Result<void> done;
  try {
    done = carry_out();
  } catch (const std::exception& thrown) {
    done = bad_source("The pages could not be made: " + clean_line(thrown.what()) + ".");
  } catch (...) {
    done = bad_source("The pages could not be made.");
  }
  if (attendant_.is_gone()) job_.mark_gone();
  if (!done) return job_.abandon(std::move(done).error(), self_.options_.cancel_limit);
  return PrintReport{job_.id(), progress_.page, progress_.total_sent};
}

Result<void> PrintJob::Run::carry_out() {
  if (Result<void> good = check_options(); !good) return good;
  if (Result<void> good = take_first_page(); !good) return good;
  if (Result<void> ready = attendant_.look(); !ready) return ready;
  if (Result<void> open = job_.start(self_.options_.title, self_.capability_.host_environment);
      !open)
    return open;
  if (Result<void> done = configure(); !done) return done;
  if (Result<void> done = send_pages(); !done) return done;
  return close();
}

Result<void> PrintJob::Run::check_options() const {
  if (!is_job_id(job_.id())) {
    return Error{Fault::kBadInput,
                 "\"" + clean_line(job_.id()) + "\" is no job ID: one has 8 letters or digits."};
  }
  const auto& formats = self_.capability_.formats;
  const auto isRaster = [](const Word& format) { return format == kPwgRaster; };
  if (std::none_of(formats.begin(), formats.end(), isRaster)) {
    return Error{Fault::kUnsuitable,
                 "This printer does not take PWG raster pages. Use another printer."};
  }
  return {};
}

// Before the job is opened, so that a document without pages never gets to the printer.
Result<void> PrintJob::Run::take_first_page() {
  const Result<bool> page = take_next_page();
  if (!page) return page.error();
  if (!page.value()) return bad_source("There is no page to print.");
  chunk_.resize(std::clamp<std::size_t>(self_.options_.chunk_size, 1, kLargestChunk));
  return {};
}

Result<bool> PrintJob::Run::take_next_page() {
  const Result<std::optional<Page>> page = pages_.next_page();
  if (!page) return page.error();
  if (!page.value()) return false;
  if (page.value()->size == 0)
    return bad_source("Page " + std::to_string(progress_.page + 1) + " is empty.");
  ++progress_.page;
  progress_.another_follows = page.value()->another_follows;
  progress_.page_sent = 0;
  progress_.page_size = page.value()->size;
  return true;
}

Asked PrintJob::Run::asked(std::string_view operation) const {
  return {.operation = operation, .service = Service::kPrint, .job_id = job_.id()};
}

Result<void> PrintJob::Run::order(const Result<std::string>& command, const Asked& asked,
                                  std::string_view data) {
  return attendant_.order(self_.printer_.channel(), command, asked, data);
}

Result<void> PrintJob::Run::configure() {
  const std::string time = self_.capability_.date_time ? date_time(std::time(nullptr)) : "";
  const auto command = build_command([&](char* buffer, std::uint64_t size, std::uint64_t* length) {
    return CLSS_MakeCommand_SetTime(job_.id().c_str(), time.empty() ? nullptr : time.c_str(),
                                    buffer, size, length);
  });
  if (Result<void> done = order(command, asked("SetJobConfiguration")); !done) return done;
  return order(set_configuration(), asked("SetConfiguration"));
}

Result<std::string> PrintJob::Run::set_configuration() const {
  const Settings& settings = self_.settings_;
  const ClssConfigurationPaper paper = {
      CLSS_CONFIGURATION_VERSION, settings.size.row, settings.type.row,
      settings.borderless ? std::uint16_t{kBorderlessOn} : std::uint16_t{kBorderlessOff}};
  const ClssConfigurationMode mode = {settings.color_mode ? settings.color_mode->row : kNotSent,
                                      settings.duplex ? settings.duplex->row : kNotSent};
  const std::string& capability = self_.capability_.document;
  return build_command([&](char* buffer, std::uint64_t size, std::uint64_t* length) {
    return CLSS_MakeCommand_SetConfigurationNS(paper, mode, job_.id().c_str(), capability.data(),
                                               capability.size(), buffer, size, length);
  });
}

Result<void> PrintJob::Run::send_pages() {
  while (true) {
    if (Result<void> done = begin_page(); !done) return done;
    if (Result<void> done = send_page_data(); !done) return done;
    const bool expected = progress_.another_follows;
    const Result<bool> next = take_next_page();
    if (!next) return next.error();
    if (next.value() != expected) {
      return bad_source(expected ? "A page is missing at its end."
                                 : "It has more pages than it said.");
    }
    if (!expected) return {};
  }
}

Result<void> PrintJob::Run::begin_page() {
  const NextPage next = !self_.capability_.next_page ? kNotTold
                        : progress_.another_follows  ? kFollows
                                                     : kNone;
  const auto command = build_command([&](char* buffer, std::uint64_t size, std::uint64_t* length) {
    return CLSS_MakeCommand_SetPageConfiguration(job_.id().c_str(), next, buffer, size, length);
  });
  Asked asked = this->asked("VendorCmd");
  asked.vendor_operation = "SetPageConfiguration";
  return order(command, asked);
}

Result<void> PrintJob::Run::send_page_data() {
  while (true) {
    const Result<std::size_t> length = fill_chunk();
    if (!length) return length.error();
    if (length.value() == 0) break;
    if (Result<void> sent = send_chunk(length.value()); !sent) return sent;
    if (Result<void> seen = attendant_.look_when_due(); !seen) return seen;
  }
  if (progress_.page_sent != progress_.page_size) {
    return bad_source("Page " + std::to_string(progress_.page) + " ends too early.");
  }
  return {};
}

// The next piece of the page, as long as a chunk unless the page ends.
Result<std::size_t> PrintJob::Run::fill_chunk() {
  std::size_t length = 0;
  while (length < chunk_.size()) {
    const std::span<char> room = std::span(chunk_).subspan(length);
    const Result<std::size_t> count = pages_.read(room);
    if (!count) return count.error();
    if (count.value() == 0) break;
    if (count.value() > room.size() ||
        count.value() > progress_.page_size - progress_.page_sent - length) {
      return bad_source("Page " + std::to_string(progress_.page) + " is longer than it said.");
    }
    length += count.value();
  }
  return length;
}

Result<void> PrintJob::Run::send_chunk(std::size_t length) {
  const auto command = build_command([&](char* buffer, std::uint64_t size, std::uint64_t* needed) {
    return CLSS_MakeCommand_SendDataPWGRaster(job_.id().c_str(), static_cast<std::uint32_t>(length),
                                              buffer, size, needed);
  });
  const std::string_view data = std::string_view(chunk_).substr(0, length);
  if (Result<void> sent = order(command, asked("SendData"), data); !sent) return sent;
  progress_.page_sent += length;
  progress_.total_sent += length;
  tell();
  return {};
}

Result<void> PrintJob::Run::close() {
  if (Result<void> closed = order(job_.end_command(), asked("EndJob")); !closed) return closed;
  progress_.all_sent = true;
  return attendant_.watch_to_the_end(self_.options_.completion_limit);
}

void PrintJob::Run::hear(const Status& status) {
  progress_.status = status;
  progress_.attention.reset();
  if (needs_attention(status)) progress_.attention = attention_sentence(status);
  tell();
}

void PrintJob::Run::tell() const {
  if (self_.options_.on_progress) self_.options_.on_progress(progress_);
}

PrintJob::PrintJob(Printer& printer, const PrintCapability& capability, const Settings& settings,
                   PrintOptions options)
    : printer_(printer),
      capability_(capability),
      settings_(settings),
      options_(std::move(options)) {}

Result<PrintReport> PrintJob::print(PageSource& pages) {
  return Run(*this, pages).run();
}

}  // namespace pxcl::client
