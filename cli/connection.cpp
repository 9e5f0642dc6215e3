// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "cli/connection.hpp"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include "cli/signals.hpp"
#include "cli/text.hpp"
#include "cli/uri.hpp"
#include "cli/virtual_channel.hpp"
#include "client/file_channel.hpp"
#include "client/http_channel.hpp"
#include "client/trace_channel.hpp"
#include "printer/profile.hpp"

namespace pxcl::cli {

namespace {

using Way = std::unique_ptr<client::Channel>;

std::string named_printer(const Arguments& arguments) {
  if (arguments.has("--printer")) return arguments.text("--printer");
  const char* standard = std::getenv("PXCL_PRINTER");
  if (standard != nullptr && *standard != '\0') return standard;
  throw Failure{kUsage,
                "No printer is named: give --printer URI or set PXCL_PRINTER. Without a "
                "printer of your own, try --printer virtual:office."};
}

ExitCode exit_code(client::Fault fault) {
  switch (fault) {
    case client::Fault::kUnreachable:
    case client::Fault::kBadReply:
      return kUnreachable;
    case client::Fault::kRefused:
    case client::Fault::kAttention:
    case client::Fault::kUnsuitable:
      return kAttention;
    case client::Fault::kBadInput:
      return kUsage;
    case client::Fault::kCancelled:
      break;
  }
  return kInterrupted;
}

[[noreturn]] void fail_trace() {
  throw Failure{kOutputFailed, filled("The trace could not be written: {}.", strerror(errno))};
}

}  // namespace

// Opens each kind of way with the options of its channel.
class Connection::Opener {
 public:
  Opener(Connection& connection, std::chrono::milliseconds timeout)
      : connection_(connection), timeout_(timeout) {}

  Way operator()(const VirtualUri& uri) const {
    if (!std::filesystem::exists(uri.output)) connection_.made_folder_ = uri.output;
    connection_.virtual_printer_ = make_virtual_printer(uri.profile, uri.output, uri.faults);
    return std::make_unique<VirtualChannel>(
        connection_.virtual_printer_,
        VirtualChannel::Options{.time_out = timeout_, .cancelled = interrupted()});
  }
  Way operator()(const HttpUri& uri) const {
    return value_or_fail(client::HttpChannel::open(uri.url, {timeout_, interrupted()}));
  }
  Way operator()(const FileUri& uri) const {
    return value_or_fail(client::FileChannel::open(uri.path, {timeout_, interrupted()}));
  }

 private:
  Connection& connection_;
  std::chrono::milliseconds timeout_;
};

std::vector<Option> connection_options() {
  return {
      {.name = "--printer",
       .help = "URI of the printer: virtual:PROFILE, http://HOST:PORT or "
               "file:/dev/...; else $PXCL_PRINTER is",
       .choices = printer_uris},
      {.name = "--timeout",
       .kind = Option::Kind::kNumber,
       .help = "Seconds for the answer to one command, 30 unless given",
       .least = 1,
       .most = 3600},
      {.name = "--trace", .help = "File that the dialogue with the printer is written to"},
      json_option(),
  };
}

std::vector<Option> with_connection(std::vector<Option> options) {
  for (Option& option : connection_options()) options.push_back(std::move(option));
  return options;
}

Connection::Connection(const Arguments& arguments) {
  const std::chrono::seconds timeout(arguments.number("--timeout", 30));
  const PrinterUri uri = read_printer_uri(named_printer(arguments));
  const bool traced = arguments.has("--trace");
  if (traced) {
    trace_.open(arguments.text("--trace"), std::ios::binary | std::ios::trunc);
    if (!trace_) fail_trace();
  }
  way_ = std::visit(Opener(*this, timeout), uri);
  if (traced) tracing_ = std::make_unique<client::TraceChannel>(*way_, trace_);
  client::Channel* channel = traced ? tracing_.get() : way_.get();
  printer_.emplace(*channel);
}

// A folder that no page came into goes away again.
Connection::~Connection() {
  std::error_code not_empty;
  if (!made_folder_.empty()) std::filesystem::remove(made_folder_, not_empty);
}

std::vector<std::filesystem::path> Connection::pages() const {
  return virtual_printer_ ? virtual_printer_->pages() : std::vector<std::filesystem::path>{};
}

void Connection::close_trace() {
  if (!tracing_) return;
  trace_.flush();
  if (!trace_) fail_trace();
}

Choices printer_uris() {
  Choices choices = {{"http://", 0}, {"file:/dev/", 0}};
  for (const Choice& profile : profile_choices()) choices.push_back({"virtual:" + profile.name, 0});
  return choices;
}

Choices profile_choices() {
  Choices choices;
  for (const std::string& name : printer::profile_names()) choices.push_back({name, 0});
  return choices;
}

printer::Profile find_profile(const std::string& name) {
  try {
    const bool is_path = name.find('/') != name.npos || name.ends_with(".json");
    return is_path ? printer::profile_from_file(name) : printer::profile_named(name);
  } catch (const std::runtime_error& error) {
    throw Failure{kUsage, printable(error.what())};
  }
}

std::shared_ptr<printer::VirtualPrinter> make_virtual_printer(
    const std::string& profile, const std::filesystem::path& output,
    const std::vector<std::string>& faults) {
  try {
    return std::make_shared<printer::VirtualPrinter>(find_profile(profile), output, faults);
  } catch (const std::exception& error) {
    throw Failure{kUsage, printable(error.what())};
  }
}

void fail(const client::Error& error) {
  throw Failure{exit_code(error.fault), printable(error.message)};
}

}  // namespace pxcl::cli
