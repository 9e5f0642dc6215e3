// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <string>

#include "client/print_job.hpp"

namespace pxcl::cli {

/// Shows on standard error how far printing is: a bar when that is a terminal. What the printer waits for is told anyway,
/// once for each cause.
class ProgressBar {
 public:
  ProgressBar();
  ~ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  void show(const client::Progress& progress);

  /// Takes the bar off the terminal.
  void clear();

 private:
  void draw(const std::string& line);

  bool terminal_;
  std::string drawn_;
  std::string attention_;
};

}  // namespace pxcl::cli
