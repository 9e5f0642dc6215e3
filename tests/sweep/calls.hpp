// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// One call of every exported function, as its header describes it.

#pragma once

#include <initializer_list>
#include <span>

#include "stage.hpp"

namespace sweep {

// What a call answers when memory is short. None: it allocates nothing.
struct Shortage {
  std::int64_t answers[3] = {};
  int count = 0;
  std::uint64_t keeps = 0;  // it leaves what it was to write, if no larger than this

  bool lists(std::int64_t answer) const;
};

struct Call {
  const char* name;
  std::int64_t answer;
  Shortage shortage;
  std::int64_t (*make)(Stage& s);  // pointers answer 1, or 0 for null; no result is 0
};

std::span<const Call> calls();

}  // namespace sweep
