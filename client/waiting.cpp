// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "client/waiting.hpp"

#include <algorithm>
#include <thread>

namespace pxcl::client {

bool pause_for(std::chrono::milliseconds time, CancelFlag cancelled) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point end = Clock::now() + time;
  while (!is_set(cancelled)) {
    const Clock::time_point now = Clock::now();
    if (now >= end) return true;
    std::this_thread::sleep_for(
        std::min<Clock::duration>(end - now, std::chrono::milliseconds(50)));
  }
  return false;
}

std::string name_of_limit(std::chrono::milliseconds limit) {
  const auto count = limit.count();
  return count % 1000 == 0 ? std::to_string(count / 1000) + " s" : std::to_string(count) + " ms";
}

}  // namespace pxcl::client
