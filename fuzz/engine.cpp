// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// A document and paths of any kind: the indexed engine must answer as the step functions do.

#include "engine_routes.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t kMostBytes = 4096;  // the step functions are slow on purpose
  if (size > kMostBytes) return -1;
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  pxcl_test::EngineCase one = pxcl_test::read_engine_case(input);
  pxcl_test::require_agreement(one);
  return 0;
}
