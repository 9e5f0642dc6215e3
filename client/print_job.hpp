// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "client/capability.hpp"
#include "client/page_source.hpp"
#include "client/printer.hpp"
#include "client/result.hpp"
#include "client/settings.hpp"
#include "client/waiting.hpp"

namespace pxcl::client {

/// How far printing is.
struct Progress {
  unsigned page;            ///< The page being sent, or last sent; from 1.
  bool another_follows;     ///< Whether the document has more pages than that.
  std::uint64_t page_sent;  ///< Bytes of it that the printer has taken.
  std::uint64_t page_size;
  std::uint64_t total_sent;      ///< Bytes of all pages.
  bool all_sent;                 ///< The job is closed; what is left is the printer's work.
  std::optional<Status> status;  ///< The latest status, once there is one.
  std::optional<std::string>
      attention;  ///< The printer waits for a person: a sentence on what for.
};

struct PrintOptions {
  std::string title;   ///< Any text; what the printer shows of it is made safe and cut.
  std::string job_id;  ///< 8 letters or digits; empty: chosen at random.
  std::size_t chunk_size = std::size_t{256} << 10;  ///< Bytes of page data per command; 1 or more.
  std::chrono::milliseconds poll_interval = std::chrono::milliseconds(500);
  std::chrono::milliseconds attention_limit =
      std::chrono::minutes(2);  ///< How long a printer that waits for a person is waited for.
  std::chrono::milliseconds completion_limit =
      std::chrono::minutes(15);  ///< From the last page sent to the job's end.
  std::chrono::milliseconds cancel_limit =
      std::chrono::seconds(5);  ///< For CancelJob after a failure.
  CancelFlag cancelled = nullptr;
  std::function<void(const Progress&)>
      on_progress;  ///< After every chunk and every look at the status; may be empty.
};

/// A job that was printed.
struct PrintReport {
  std::string job_id;
  unsigned pages;
  std::uint64_t bytes;
};

/// Prints a document on a printer.
///
/// The job is opened, configured, fed page by page in chunks, closed and watched until the printer is done with it. On any
/// failure, exceptions of the page source and the callback included, and when the flag is set, the job is cancelled, so
/// that the printer is left idle; the result tells when that could not be done either. A job that the printer refused to
/// open is not cancelled. Memory: one chunk.
class PrintJob {
 public:
  /// All but the options must outlive the job. `capability` is the printer's own, `settings` what complete_settings made
  /// of it.
  PrintJob(Printer& printer, const PrintCapability& capability, const Settings& settings,
           PrintOptions options);

  /// Prints what the source gives.
  Result<PrintReport> print(PageSource& pages);

 private:
  class Run;

  Printer& printer_;
  const PrintCapability& capability_;
  const Settings& settings_;
  PrintOptions options_;
};

}  // namespace pxcl::client
