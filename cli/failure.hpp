// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <string>

namespace pxcl::cli {

/// How the program ends.
enum ExitCode {
  kOk = 0,
  kWarning = 1,    ///< Done, but something wants a look: ink is low, part of a reply can't be read.
  kAttention = 2,  ///< The printer waits for a person, or refused.
  kUnreachable = 3,    ///< No printer, or no sensible reply.
  kUsage = 64,         ///< The command line or the input can't be used.
  kOutputFailed = 74,  ///< What was to be said could not be written.
  kInterrupted = 130,
};

/// Thrown to end the command: one sentence for a person.
struct Failure {
  ExitCode code;
  std::string message;
};

}  // namespace pxcl::cli
