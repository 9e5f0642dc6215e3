// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "printer/keywords.hpp"
#include "printer/profile.hpp"
#include "printer/reply.hpp"

namespace pxcl::printer {

/// Announces what the printer offers in one of its services.
void add_capability(Reply& reply, const Profile& profile, Service service);

}  // namespace pxcl::printer
