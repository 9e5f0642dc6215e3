// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <chrono>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>

#include "client/channel.hpp"
#include "client/result.hpp"
#include "client/words.hpp"

namespace pxcl::client {

/// A job of the print or the maintenance service between StartJob and its end: knows whether the printer has to be told to
/// cancel it.
class OpenJob {
 public:
  /// The channel must outlive the job.
  OpenJob(Channel& channel, Service service, std::string id);

  /// Opens it; `host` is what the printer wants to be told of this system, if anything.
  Result<void> start(std::string_view title, std::optional<Word> host);

  /// The command that closes it.
  [[nodiscard]] Result<std::string> end_command() const;

  /// The printer does not know the job any more.
  void mark_gone() { may_be_open_ = false; }

  /// Cancels the job if the printer may have opened it. Returns the error that was the reason, with a word more if the
  /// printer could not be told.
  Error abandon(Error reason, std::chrono::milliseconds limit);

  [[nodiscard]] const std::string& id() const { return id_; }
  [[nodiscard]] Service service() const { return service_; }

 private:
  Result<void> cancel(std::chrono::milliseconds limit);

  Channel& channel_;
  Service service_;
  std::string id_;
  bool may_be_open_ = false;
};

/// The local time as commands hold it, "20260704123000"; empty when it can't be told in 14 digits.
std::string date_time(std::time_t time);

/// An ID for a new job: 8 random digits.
std::string new_job_id();

}  // namespace pxcl::client
