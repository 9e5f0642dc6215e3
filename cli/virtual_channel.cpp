// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "cli/virtual_channel.hpp"

#include <cstdint>
#include <utility>

namespace pxcl::cli {

namespace {

using client::Error;
using client::Fault;
using client::Result;
using printer::Answer;
using Options = VirtualChannel::Options;

Result<std::string> whole(std::string reply) {
  if (reply.size() > client::kLongestReply) {
    return Error{Fault::kBadReply, "The printer's reply is longer than 4 MiB; it was not read."};
  }
  return reply;
}

Error cancelled() {
  return {Fault::kCancelled, "Cancelled while waiting for the printer."};
}

Error wait_in_vain(const Options& options) {
  if (!client::pause_for(options.time_out, options.cancelled)) return cancelled();
  return {Fault::kUnreachable,
          "The printer did not answer in time. See whether it is on and not busy."};
}

// What would not arrive in time is known from the number of bytes alone.
Result<std::string> drip(Answer answer, const Options& options) {
  const auto bytes = static_cast<std::int64_t>(answer.bytes.size());
  const auto interval = answer.interval.count();
  if (interval > 0 && bytes > options.time_out.count() / interval) return wait_in_vain(options);
  if (!client::pause_for(answer.interval * bytes, options.cancelled)) return cancelled();
  return whole(std::move(answer.bytes));
}

Result<std::string> received(Answer answer, const Options& options) {
  if (answer.bad_request) {
    return Error{Fault::kBadReply, "The printer did not take the command: " + answer.bytes};
  }
  switch (answer.kind) {
    case Answer::Kind::kReply:
      return whole(std::move(answer.bytes));
    case Answer::Kind::kDrip:
      return drip(std::move(answer), options);
    case Answer::Kind::kNoAnswer:
      return wait_in_vain(options);
    case Answer::Kind::kClose:
      break;
  }
  return Error{Fault::kUnreachable, "The printer closed the connection before it had answered."};
}

}  // namespace

VirtualChannel::VirtualChannel(std::shared_ptr<printer::VirtualPrinter> printer, Options options)
    : printer_(std::move(printer)), options_(options) {}

Result<std::string> VirtualChannel::exchange(std::string_view command, std::string_view data) {
  if (client::is_set(options_.cancelled)) return cancelled();
  std::string request(command);
  request += data;
  return received(printer_->answer(request), options_);
}

Result<std::string> VirtualChannel::exchange_regardless(std::string_view command,
                                                        std::chrono::milliseconds limit) {
  return received(printer_->answer(command), {.time_out = limit, .cancelled = nullptr});
}

Result<std::string> VirtualChannel::device_id() {
  return printer_->device_id();
}

}  // namespace pxcl::cli
