// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

#include "client/result.hpp"

namespace pxcl::client {

/// The longest reply that is taken from a printer, in bytes; a longer one is refused (Fault::kBadReply).
inline constexpr std::size_t kLongestReply = std::size_t{4} << 20;

/// The way to a printer: carries one command there and its reply back.
class Channel {
 public:
  Channel() = default;
  Channel(const Channel&) = delete;
  Channel& operator=(const Channel&) = delete;
  virtual ~Channel() = default;

  /// Sends one command document, and right behind it the data that it announces (empty for all but SendData), and waits
  /// for the reply document. Everything together ends within the channel's total time-out.
  ///
  /// Returns the reply as the printer sent it, at most kLongestReply bytes, unread; or kUnreachable (no connection, no
  /// answer in time, connection broken) or kBadReply (longer than kLongestReply, or the transport's own refusal).
  virtual Result<std::string> exchange(std::string_view command, std::string_view data) = 0;

  /// The same for a command that has to get through after the caller has stopped (CancelJob): a channel with a cancel flag
  /// does not look at it, and one with a time-out takes `limit` in its place.
  virtual Result<std::string> exchange_regardless(std::string_view command,
                                                  std::chrono::milliseconds limit) {
    static_cast<void>(limit);
    return exchange(command, {});
  }

  /// The printer's IEEE 1284 device ID, without its two length bytes; kUnreachable when this way has none to give.
  virtual Result<std::string> device_id() = 0;
};

}  // namespace pxcl::client
