// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <chrono>
#include <ctime>
#include <string>
#include <string_view>
#include <vector>

#include "client/capability.hpp"
#include "client/channel.hpp"
#include "client/identity.hpp"
#include "client/result.hpp"
#include "client/status.hpp"
#include "client/waiting.hpp"

namespace pxcl::client {

/// How long a maintenance job may take.
struct MaintenanceLimits {
  std::chrono::milliseconds completion =
      std::chrono::minutes(5);  ///< Then it is cancelled: kAttention.
  std::chrono::milliseconds poll_interval = std::chrono::seconds(1);
  CancelFlag cancelled = nullptr;
};

/// A printer behind a channel: questions to it and orders but for printing (see print_job.hpp). Holds no state.
///
/// Every reply is checked: it answers the command, for its service and its job, with "OK". An "NG" is kRefused, with the
/// printer's reason in the sentence; anything else that is wrong with a reply is kBadReply.
class Printer {
 public:
  /// The channel must outlive the printer.
  explicit Printer(Channel& channel) : channel_(channel) {}

  Result<Identity> identity();
  Result<PrintCapability> print_capability();
  Result<MaintenanceCapability> maintenance_capability();
  Result<Status> status();

  /// The status, with the block of this job.
  Result<Status> status_of(std::string_view jobID);

  /// The IDs of the print jobs that the printer knows.
  Result<std::vector<std::string>> job_ids();

  /// Cancels a print job, also one of another client's. kBadInput when the ID is none.
  Result<void> cancel(std::string_view jobID);

  Result<void> power_off();

  /// Sets the printer's clock to a local time, by a maintenance job; kUnsuitable when the printer takes none.
  Result<void> set_time(std::time_t time, const MaintenanceLimits& limits = {});

  /// Maintenance jobs: each is opened, waited for and closed; cancelled when something fails on the way.
  Result<void> clean(const MaintenanceLimits& limits = {});
  Result<void> nozzle_check(const MaintenanceLimits& limits = {});
  Result<void> align(const MaintenanceLimits& limits = {});

  [[nodiscard]] Channel& channel() { return channel_; }

 private:
  Channel& channel_;
};

}  // namespace pxcl::client
