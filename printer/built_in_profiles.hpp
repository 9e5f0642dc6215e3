// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The files of printer/profiles/, as the build put them into the library.

#pragma once

#include <span>
#include <string_view>

namespace pxcl::printer {

struct BuiltInProfile {
  std::string_view name;
  std::string_view json;
};

[[nodiscard]] std::span<const BuiltInProfile> built_in_profiles();

}  // namespace pxcl::printer
