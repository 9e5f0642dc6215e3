// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "cli/command.hpp"
#include "client/channel.hpp"
#include "client/printer.hpp"
#include "client/waiting.hpp"
#include "printer/virtual_printer.hpp"

namespace pxcl::cli {

/// --printer, --timeout and --trace, and --json behind them.
std::vector<Option> connection_options();

/// The options of connection_options() behind others.
std::vector<Option> with_connection(std::vector<Option> options);

/// The way to the printer that a command line names.
class Connection {
 public:
  /// Throws Failure with a sentence when the URI or the trace file can't be used.
  explicit Connection(const Arguments& arguments);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  [[nodiscard]] client::Printer& printer() { return *printer_; }

  /// What a virtual printer has rendered so far; empty for any other.
  [[nodiscard]] std::vector<std::filesystem::path> pages() const;

  /// Sees to it that the trace is complete; throws Failure (kOutputFailed) when it could not be written.
  void close_trace();

 private:
  class Opener;

  std::shared_ptr<printer::VirtualPrinter> virtual_printer_;
  std::filesystem::path made_folder_;  // of a virtual printer, when it was not there before
  std::unique_ptr<client::Channel> way_;
  std::ofstream trace_;
  std::unique_ptr<client::Channel> tracing_;
  std::optional<client::Printer> printer_;
};

/// The kinds of printers' URIs, for completion.
Choices printer_uris();

/// Names of the profiles that are built in, for completion.
Choices profile_choices();

/// The profile of this name, or in this file; throws Failure (kUsage).
printer::Profile find_profile(const std::string& name);

/// A virtual printer; throws Failure (kUsage) when a fault can't be read or the folder can't be made.
std::shared_ptr<printer::VirtualPrinter> make_virtual_printer(
    const std::string& profile, const std::filesystem::path& output,
    const std::vector<std::string>& faults);

/// Ends the command for a failure of the client layer.
[[noreturn]] void fail(const client::Error& error);

template <typename Held>
Held value_or_fail(client::Result<Held> result) {
  if (!result.ok()) fail(result.error());
  return std::move(result).value();
}

inline void succeed_or_fail(const client::Result<void>& result) {
  if (!result.ok()) fail(result.error());
}

}  // namespace pxcl::cli
