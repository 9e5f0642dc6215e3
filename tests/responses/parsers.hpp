// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Every parser of the layer and of the one below, for the tests that treat them all alike.

#pragma once

#include <functional>
#include <set>
#include <string_view>
#include <vector>

#include "responses.h"

enum class Family { kHead, kStatus, kJobList, kCapability, kSupport };

struct Parser {
  Family family;
  const char* name;
  const char* reply;       // a file of tests/data/replies that it decodes to the end
  std::set<int> statuses;  // that its documentation lists, but for -1, short memory
  std::function<int(const char*, uint64_t)> call;
};

const std::vector<Parser>& parsers();
