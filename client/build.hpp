// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <pxcl.h>

#include <cstdint>
#include <string>

#include "client/result.hpp"

namespace pxcl::client {

/// Makes a command: `build` is a builder with all but its last three arguments, called first for the size, then for the
/// document. Failures can only come from arguments, so they are the caller's: kBadInput.
template <typename Build>
Result<std::string> build_command(Build build) {
  std::uint64_t length = 0;
  std::int32_t status = build(nullptr, std::uint64_t{0}, &length);
  std::string command(length, '\0');
  if (status == CLSS_COMMAND_OK) status = build(command.data(), command.size(), &length);
  if (status != CLSS_COMMAND_OK) {
    return Error{Fault::kBadInput, "The command could not be made from what was given (status " +
                                       std::to_string(status) + ")."};
  }
  command.resize(length);
  return command;
}

/// The same for the maintenance commands, which answer for a size with a buffer of size 0.
template <typename Build>
Result<std::string> build_maintenance_command(Build build) {
  return build_command([&build](char* buffer, std::uint64_t size, std::uint64_t* length) {
    char none = 0;
    return build(buffer == nullptr ? &none : buffer, size, length);
  });
}

}  // namespace pxcl::client
