// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// What a job may ask for, given what the printer announced.

#pragma once

#include <optional>

#include "printer/command.hpp"
#include "printer/profile.hpp"

namespace pxcl::printer {

/// Of a SetConfiguration of the print service.
[[nodiscard]] std::optional<Refusal> refuse_settings(const Profile& profile,
                                                     const Command& command);
/// Of a SetJobConfiguration.
[[nodiscard]] std::optional<Refusal> refuse_job_settings(const Profile& profile,
                                                         const Command& command);
/// Of a SetPageConfiguration.
[[nodiscard]] std::optional<Refusal> refuse_page_settings(const Profile& profile,
                                                          const Command& command);
/// Of a StartJob.
[[nodiscard]] std::optional<Refusal> refuse_start(const Profile& profile, const Command& command);

}  // namespace pxcl::printer
