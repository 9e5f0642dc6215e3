// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The answers of a scan whose keys are known at run time.

#pragma once

#include <vector>

#include "xml/scan.hpp"

namespace pxcl_test {

struct Answers {
  explicit Answers(std::size_t count) : all(count) {}
  ~Answers() { pxcl::xml::release(all); }
  Answers(const Answers&) = delete;
  Answers& operator=(const Answers&) = delete;

  std::vector<pxcl::xml::Answer> all;
};

inline std::span<const ClXmlValueRange> ranges_of(const pxcl::xml::Answer& list) {
  return {static_cast<const ClXmlValueRange*>(list.list), list.count};
}

}  // namespace pxcl_test
