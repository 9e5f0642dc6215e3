// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <string>

namespace pxcl::cli {

/// What a file holds, or standard input for "-". Throws Failure (kUsage) when it can't be read, is a folder, or holds more
/// than 4 MiB.
std::string read_input(const std::string& path);

}  // namespace pxcl::cli
