// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "cli/signals.hpp"

#include <csignal>

namespace pxcl::cli {

namespace {

std::atomic<bool> flag = false;
static_assert(std::atomic<bool>::is_always_lock_free);  // a signal handler writes it

// As nohup does it, and a shell for what it starts in the background.
bool is_ignored(int number) {
  struct sigaction action = {};
  return sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

void catch_signals() {
  struct sigaction once = {};
  once.sa_handler = [](int) { flag = true; };
  // No SA_RESTART: a read that waits for input ends. One impatient signal more ends the program as ever.
  once.sa_flags = static_cast<int>(SA_RESETHAND);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    if (!is_ignored(signal)) sigaction(signal, &once, nullptr);
  }
  std::signal(SIGPIPE, SIG_IGN);
}

AwaitedSignals::AwaitedSignals(std::initializer_list<int> numbers) {
  sigemptyset(&signals_);
  for (const int number : numbers) {
    if (!is_ignored(number)) sigaddset(&signals_, number);
  }
  pthread_sigmask(SIG_BLOCK, &signals_, nullptr);
}

int AwaitedSignals::wait() const {
  int number = 0;
  while (sigwait(&signals_, &number) != 0) continue;
  return number;
}

client::CancelFlag interrupted() {
  return &flag;
}

}  // namespace pxcl::cli
