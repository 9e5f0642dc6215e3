// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// A document and paths of any kind: the indexed engine must answer as the step functions do.

#include "engine_routes.hpp"

#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t kMostBytes = 4096;  // the step functions are slow on purpose
  if (size > kMostBytes) return -1;
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const std::string found = pxcl_test::compare_routes(pxcl_test::read_engine_case(input));
  if (found.empty()) return 0;
  std::fprintf(stderr, "%s", found.c_str());
  __builtin_trap();
}
