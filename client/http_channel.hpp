// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "client/channel.hpp"
#include "client/waiting.hpp"

namespace pxcl::client {

/// A printer behind an URL: every command is a POST, the reply is the body of the answer.
class HttpChannel : public Channel {
 public:
  struct Options {
    std::chrono::milliseconds time_out =
        std::chrono::seconds(30);  ///< For one exchange, connecting included.
    CancelFlag cancelled =
        nullptr;  ///< Ends an exchange within a tenth of a second: Fault::kCancelled.
  };

  /// `url` is "http://HOST[:PORT][/PATH]" (or https); kBadInput otherwise. Nothing is connected yet.
  static Result<std::unique_ptr<HttpChannel>> open(std::string url, Options options);
  ~HttpChannel() override;

  Result<std::string> exchange(std::string_view command, std::string_view data) override;
  Result<std::string> exchange_regardless(std::string_view command,
                                          std::chrono::milliseconds limit) override;
  /// From GET /device-id.
  Result<std::string> device_id() override;

 private:
  class Transfer;
  HttpChannel(std::string url, Options options);

  std::string url_;
  Options options_;
};

}  // namespace pxcl::client
