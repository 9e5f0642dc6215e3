// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <string>
#include <variant>

#include "cli/command.hpp"

namespace pxcl::cli {

/// What a command line asks for.
struct Invocation {
  const Command* command;
  Arguments arguments;
};

/// Reads the command line against all_commands(): what to run, or a text to print instead (--help, --version).
/// Throws Failure (kUsage) with a sentence.
std::variant<Invocation, std::string> read_command_line(int argc, char** argv);

}  // namespace pxcl::cli
