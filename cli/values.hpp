// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cli/value.hpp"
#include "client/capability.hpp"
#include "client/identity.hpp"
#include "client/status.hpp"

namespace pxcl::cli {

// What a printer tells, as it is shown. Whatever it does not tell is unknown.

Value value_of(const client::Identity& identity);
Value value_of(const client::Status& status);
Value value_of(const client::JobStatus& job);
Value value_of(const client::PrintCapability& capability);
Value value_of(const client::MaintenanceCapability& capability);

/// The same in fewer words, for people: no areas and margins.
Value summary_of(const client::PrintCapability& capability);

/// "off", "on", "long" or "short": all but the first have one keyword in the protocol.
std::string_view duplex_name(const client::Word& mode);

/// One row a job.
Value::List list_of_jobs(const std::vector<std::string>& jobIDs);

}  // namespace pxcl::cli
