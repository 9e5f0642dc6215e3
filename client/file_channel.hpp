// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "client/channel.hpp"
#include "client/waiting.hpp"

namespace pxcl::client {

/// A printer behind a device file, such as that of an USB printer: commands are written there, and each reply is read up to
/// the end of its document.
///
/// There is no framing but the documents' own, so an exchange that was broken off (time-out, cancel) leaves a printer
/// that still waits for announced data. The next exchange makes up for it first: it sends what is left, zeros for data,
/// and throws the reply to it away. Bytes that lie there before a command are thrown away too.
class FileChannel : public Channel {
 public:
  struct Options {
    std::chrono::milliseconds time_out = std::chrono::seconds(30);  ///< For one exchange.
    CancelFlag cancelled =
        nullptr;  ///< Ends an exchange within a tenth of a second: Fault::kCancelled.
  };

  static Result<std::unique_ptr<FileChannel>> open(const std::string& path, Options options);

  /// Takes over a descriptor that is open for reading and writing; `name` is what messages call it. A program that hands
  /// in a socket or a pipe ignores SIGPIPE.
  FileChannel(int descriptor, std::string name, Options options);
  ~FileChannel() override;

  Result<std::string> exchange(std::string_view command, std::string_view data) override;
  Result<std::string> exchange_regardless(std::string_view command,
                                          std::chrono::milliseconds limit) override;
  /// What the driver of a printer port tells.
  Result<std::string> device_id() override;

 private:
  class Exchange;

  int descriptor_;
  std::string name_;
  Options options_;
  bool is_device_ = false;
  std::string unsent_command_;   // of an exchange that was broken off
  std::size_t unsent_data_ = 0;  // bytes that it announced
  bool awaits_reply_ = false;    // whether the printer has yet to answer it
};

}  // namespace pxcl::client
