// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

#include "client/channel.hpp"
#include "client/reply.hpp"
#include "client/result.hpp"
#include "client/status.hpp"
#include "client/waiting.hpp"

namespace pxcl::client {

/// How long a job waits for its printer.
struct Patience {
  std::chrono::milliseconds poll_interval;
  std::chrono::milliseconds attention_limit;  ///< For a person to come.
  CancelFlag cancelled;
};

/// Keeps an eye on a printer during one job, and waits while it waits for a person.
class Attendant {
 public:
  using Ask = std::function<Result<Status>()>;      ///< Gets the status, with the job's block.
  using Tell = std::function<void(const Status&)>;  ///< Hears every status.

  Attendant(std::string jobID, Patience patience, Ask ask, Tell tell);

  /// Looks once, or until nobody is waited for any more. kAttention when nobody came, kCancelled when the flag was set.
  Result<void> look();

  /// Looks if the last time was at least an interval ago.
  Result<void> look_when_due();

  /// Sends a command of the job and checks the reply. Where the printer answers that it is suspended, it is asked again
  /// once it goes on.
  Result<void> order(Channel& channel, const Result<std::string>& command, const Asked& asked,
                     std::string_view data = {});

  /// Looks until the printer is done with the closed job. kCancelled when it was cancelled at the printer meanwhile.
  Result<void> watch_to_the_end(std::chrono::milliseconds limit);

  [[nodiscard]] bool is_gone() const { return is_gone_; }

 private:
  bool is_done(const Status& status) const;

  std::string job_id_;
  Patience patience_;
  Ask ask_;
  Tell tell_;
  Status latest_;
  std::chrono::steady_clock::time_point looked_at_;
  bool is_gone_ = false;
};

}  // namespace pxcl::client
