// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <ostream>
#include <string>

#include "client/channel.hpp"

namespace pxcl::client {

/// Writes the dialogue that goes through another channel to a stream, for people to read:
///
///     >>> 4 command, 402 bytes
///     <?xml version="1.0" encoding="utf-8" ?>
///     <cmd xmlns:zirk="http://www.example.com/ns/cmd/2008/07/common/">
///       <zirk:contents>
///         <zirk:operation>SendData</zirk:operation>
///     ...
///     >>> 4 data, 262144 bytes
///     <<< 4 reply, 398 bytes
///     <?xml ...
///
/// Exchanges are numbered from 1. Documents are laid out, one element a line, unless they are already; bytes that do not
/// print are written as \xHH, and what is behind the first 64 KiB is left out and counted. In place of a reply that did not
/// come stands "<<< 4 no reply: " and the sentence of the error.
class TraceChannel : public Channel {
 public:
  /// Both must outlive the channel.
  TraceChannel(Channel& inner, std::ostream& out) : inner_(inner), out_(out) {}

  Result<std::string> exchange(std::string_view command, std::string_view data) override;
  Result<std::string> exchange_regardless(std::string_view command,
                                          std::chrono::milliseconds limit) override;
  Result<std::string> device_id() override;

 private:
  void write_request(std::string_view command, std::size_t dataLength);
  void write_outcome(const Result<std::string>& reply);

  Channel& inner_;
  std::ostream& out_;
  unsigned number_ = 0;
};

}  // namespace pxcl::client
