// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Everything that is asked of a printer, against one that answers anything. The first byte of the input chooses what; see
// ScriptedChannel for the rest. A job that may be open at the end has been cancelled.

#include <chrono>
#include <iterator>
#include <string>

#include "client/print_job.hpp"
#include "memory_pages.hpp"
#include "scripted_channel.hpp"
#include "told.hpp"

namespace {

using namespace pxcl::client;
using pxcl::fuzz::ScriptedChannel;

// Nothing sleeps, and what is waited for ends with the input.
constexpr MaintenanceLimits kLimits = {.poll_interval = std::chrono::milliseconds(0)};

Result<void> print(Printer& printer) {
  const Result<PrintCapability> capability = printer.print_capability();
  if (check(capability); !capability) return capability.error();
  const Result<Status> status = printer.status();
  if (check(status); !status) return status.error();
  const Result<Settings> settings = complete_settings({}, capability.value(), status.value());
  if (!settings) return settings.error();
  PrintOptions options = {.title = "fuzz", .job_id = "00000042", .chunk_size = 7};
  options.poll_interval = kLimits.poll_interval;
  options.on_progress = [](const Progress& progress) {
    require(progress.page_sent <= progress.page_size && progress.page <= 2);
    if (progress.status) check(*progress.status);
    check(progress.attention);
  };
  MemoryPages pages({std::string(10, 'a'), std::string(8, 'b')});
  const auto report = PrintJob(printer, capability.value(), settings.value(), options).print(pages);
  if (!report) return report.error();
  require(report.value().pages == 2 && report.value().bytes == 18);
  return {};
}

// A job that is done is not cancelled, nor is one that was cancelled at the printer; any other is.
void check_end(const Result<void>& done, const ScriptedChannel& channel) {
  check(done);
  if (done.ok() || done.error().fault == Fault::kCancelled) {
    require(!channel.was_cancelled());
  } else {
    require(channel.was_cancelled() || !channel.may_have_job());
  }
}

using Call = void (*)(Printer&, const ScriptedChannel&);
constexpr Call kCalls[] = {
    [](Printer& printer, auto&) { check(printer.identity()); },
    [](Printer& printer, auto&) { check(printer.print_capability()); },
    [](Printer& printer, auto&) { check(printer.maintenance_capability()); },
    [](Printer& printer, auto&) { check(printer.status()); },
    [](Printer& printer, auto&) { check(printer.status_of("00000042")); },
    [](Printer& printer, auto&) { check(printer.job_ids()); },
    [](Printer& printer, auto&) { check(printer.cancel("00000042")); },
    [](Printer& printer, auto&) { check(printer.power_off()); },
    [](Printer& printer, auto& channel) { check_end(printer.set_time(0, kLimits), channel); },
    [](Printer& printer, auto& channel) { check_end(printer.clean(kLimits), channel); },
    [](Printer& printer, auto& channel) { check_end(printer.nozzle_check(kLimits), channel); },
    [](Printer& printer, auto& channel) { check_end(print(printer), channel); },
    [](Printer& printer, auto& channel) { check_end(printer.align(kLimits), channel); },
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  ScriptedChannel channel(pxcl::fuzz::parts_of(pxcl::fuzz::text_of(data + 1, size - 1)));
  Printer printer(channel);
  kCalls[data[0] % std::size(kCalls)](printer, channel);
  return 0;
}
