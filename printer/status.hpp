// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "printer/jobs.hpp"
#include "printer/keywords.hpp"
#include "printer/reply.hpp"
#include "printer/supplies.hpp"

namespace pxcl::printer {

/// Says how the printer is, as one of its services sees it; the open job is the first and only one told of.
void add_status(Reply& reply, const Supplies& supplies, const Jobs& jobs, Service service);

/// Lists the open print job.
void add_job_list(Reply& reply, const Jobs& jobs);

/// Says how the print or the device service is set.
void add_configuration(Reply& reply, const Supplies& supplies, const Jobs& jobs, Service service);

}  // namespace pxcl::printer
