// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <atomic>
#include <chrono>
#include <string>

namespace pxcl::client {

/// A flag of the caller's that stops what is under way once it is true; may be null. A signal handler may set it.
using CancelFlag = const std::atomic<bool>*;

inline bool is_set(CancelFlag flag) {
  return flag != nullptr && flag->load();
}

/// Sleeps for `time`, or until the flag is set. Returns whether it was not.
bool pause_for(std::chrono::milliseconds time, CancelFlag cancelled);

/// A time limit for a sentence: "30 s" or "1500 ms".
std::string name_of_limit(std::chrono::milliseconds limit);

}  // namespace pxcl::client
