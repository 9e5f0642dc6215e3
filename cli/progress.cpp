// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "cli/progress.hpp"

#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "cli/output.hpp"
#include "cli/text.hpp"

namespace pxcl::cli {

namespace {

constexpr std::uint64_t kCells = 24;

std::string bar(std::uint64_t part, std::uint64_t whole) {
  const std::uint64_t full = whole == 0 ? 0 : std::min(kCells, part * kCells / whole);
  std::string cells;
  for (std::uint64_t i = 0; i < kCells; ++i) cells += i < full ? "█" : "░";
  return cells;
}

std::string doing(const client::Progress& progress) {
  if (progress.status && progress.status->job && progress.status->job->state) {
    return std::string(progress.status->job->state->keyword);
  }
  return progress.all_sent ? "printing" : "sending";
}

std::string line(const client::Progress& progress) {
  const std::uint64_t percent =
      progress.page_size == 0 ? 0 : progress.page_sent * 100 / progress.page_size;
  return filled("{} page {} {:3} %  {}", bar(progress.page_sent, progress.page_size), progress.page,
                percent, doing(progress));
}

}  // namespace

ProgressBar::ProgressBar() : terminal_(isatty(STDERR_FILENO) == 1) {}
ProgressBar::~ProgressBar() {
  clear();
}

void ProgressBar::show(const client::Progress& progress) {
  const std::string attention = printable(progress.attention.value_or(""));
  if (attention != attention_ && !attention.empty()) {
    clear();
    complain(attention);
  }
  attention_ = attention;
  if (terminal_) draw(line(progress));
}

void ProgressBar::draw(const std::string& line) {
  if (line == drawn_) return;
  fputs(("\r\x1B[K" + line).c_str(), stderr);
  fflush(stderr);
  drawn_ = line;
}

void ProgressBar::clear() {
  if (drawn_.empty()) return;
  fputs("\r\x1B[K", stderr);
  fflush(stderr);
  drawn_.clear();
}

}  // namespace pxcl::cli
