// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

#include "client/channel.hpp"
#include "client/waiting.hpp"
#include "printer/virtual_printer.hpp"

namespace pxcl::cli {

/// The way to a virtual printer in this process. It takes its time: a printer that drips or does not answer is waited for
/// as long as any other.
class VirtualChannel : public client::Channel {
 public:
  struct Options {
    std::chrono::milliseconds time_out = std::chrono::seconds(30);  ///< For one exchange.
    client::CancelFlag cancelled = nullptr;  ///< Ends waiting: client::Fault::kCancelled.
  };

  VirtualChannel(std::shared_ptr<printer::VirtualPrinter> printer, Options options);

  client::Result<std::string> exchange(std::string_view command, std::string_view data) override;
  client::Result<std::string> exchange_regardless(std::string_view command,
                                                  std::chrono::milliseconds limit) override;
  client::Result<std::string> device_id() override;

 private:
  std::shared_ptr<printer::VirtualPrinter> printer_;
  Options options_;
};

}  // namespace pxcl::cli
