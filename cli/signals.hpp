// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <signal.h>

#include <initializer_list>

#include "client/waiting.hpp"

namespace pxcl::cli {

/// From here on SIGINT, SIGTERM and SIGHUP set the flag instead of ending the program, the second one of them ends it, and
/// writing to a pipe that nobody reads is an error like any other.
void catch_signals();

/// What the signals set.
client::CancelFlag interrupted();

/// Signals that are waited for. They stay away from every thread that is started from here on.
class AwaitedSignals {
 public:
  /// Those that this process was started to ignore are not among them.
  explicit AwaitedSignals(std::initializer_list<int> numbers);

  /// Waits for the next one.
  [[nodiscard]] int wait() const;

 private:
  sigset_t signals_;
};

}  // namespace pxcl::cli
