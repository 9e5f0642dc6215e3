// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "printer/virtual_printer.hpp"

namespace pxcl::printer {

/// The longest request that is taken, in bytes; a longer one is answered with HTTP's status 413.
inline constexpr std::size_t kLongestRequest = std::size_t{64} << 20;

/// What a server serves; both are called from several threads at once.
struct Served {
  std::function<Answer(std::string_view request)> answer;
  std::function<std::string()> device_id;
};

/// Serves a printer on this machine's loopback address, from construction to stop():
///
///     POST /            the body is one command document and its data; the response's body is the reply
///     GET /device-id    the device ID as plain text
///
/// Several clients are served at a time.
class HttpServer {
 public:
  /// `port` 0 takes any that is free. Throws std::runtime_error with a sentence when the port can't be had.
  HttpServer(Served served, std::uint16_t port);

  /// Serves `printer`, which outlives the server.
  HttpServer(VirtualPrinter& printer, std::uint16_t port);

  /// Stops.
  ~HttpServer();

  /// The port that is served.
  [[nodiscard]] std::uint16_t port() const;

  /// Closes all connections, whatever is under way, and returns when no thread serves any more. May be called from any
  /// thread and more than once, but not from a signal handler: wait for the signal with sigwait instead.
  void stop();

 private:
  class State;
  std::unique_ptr<State> state_;
};

}  // namespace pxcl::printer
