// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "client/attendant.hpp"

#include <utility>

namespace pxcl::client {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

Error stopped() {
  return {Fault::kCancelled, "The job was stopped."};
}

bool is_canceling(const Status& status) {
  return (status.state && *status.state == kCanceling) ||
         (status.job && status.job->progress && *status.job->progress == kJobCanceling);
}

}  // namespace

Attendant::Attendant(std::string jobID, Patience patience, Ask ask, Tell tell)
    : job_id_(std::move(jobID)),
      patience_(patience),
      ask_(std::move(ask)),
      tell_(std::move(tell)) {}

Result<void> Attendant::look() {
  const Clock::time_point end = Clock::now() + patience_.attention_limit;
  while (true) {
    Result<Status> status = ask_();
    if (!status) return std::move(status).error();
    looked_at_ = Clock::now();
    latest_ = std::move(status).value();
    tell_(latest_);
    if (is_set(patience_.cancelled)) return stopped();
    if (!needs_attention(latest_)) return {};
    if (looked_at_ >= end) return Error{Fault::kAttention, attention_sentence(latest_)};
    pause_for(patience_.poll_interval, patience_.cancelled);
  }
}

Result<void> Attendant::look_when_due() {
  if (Clock::now() - looked_at_ < patience_.poll_interval) return {};
  return look();
}

// A printer that is suspended for no reason that its status tells is asked as long as a person would be waited for. The
// time in which one is waited for does not count.
Result<void> Attendant::order(Channel& channel, const Result<std::string>& command,
                              const Asked& asked, std::string_view data) {
  if (!command) return command.error();
  Clock::duration asking{0};
  while (true) {
    if (is_set(patience_.cancelled)) return stopped();
    const Clock::time_point begin = Clock::now();
    const Result<std::string> reply = channel.exchange(command.value(), data);
    if (!reply) return reply.error();
    if (!is_refusal(reply.value(), asked, kSuspended) || asking > patience_.attention_limit) {
      return check_reply(reply.value(), asked);
    }
    asking += Clock::now() - begin + patience_.poll_interval;
    if (Result<void> ready = look(); !ready) return ready;
    pause_for(patience_.poll_interval, patience_.cancelled);
  }
}

// A job whose block is not found may still be the one at work.
bool Attendant::is_done(const Status& status) const {
  if (!status.job) return status.job_id != job_id_;
  return !status.job->progress && status.state && *status.state == kIdle;
}

Result<void> Attendant::watch_to_the_end(milliseconds limit) {
  const Clock::time_point end = Clock::now() + limit;
  bool wasCanceled = false;
  while (true) {
    if (Result<void> seen = look(); !seen) return seen;
    if (is_done(latest_)) break;
    wasCanceled = wasCanceled || is_canceling(latest_);
    if (Clock::now() >= end) {
      return Error{
          Fault::kAttention,
          "The printer did not finish the job in the time that it was given. Look at its panel."};
    }
    pause_for(patience_.poll_interval, patience_.cancelled);
  }
  is_gone_ = true;
  if (wasCanceled) return Error{Fault::kCancelled, "The job was cancelled at the printer."};
  return {};
}

}  // namespace pxcl::client
