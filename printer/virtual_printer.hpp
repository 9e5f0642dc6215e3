// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "printer/profile.hpp"

namespace pxcl::printer {

/// What comes back for one request.
struct Answer {
  enum class Kind {
    kReply,     ///< `bytes` at once.
    kDrip,      ///< `bytes`, one every `interval`.
    kNoAnswer,  ///< Nothing, and the connection stays open.
    kClose,  ///< `bytes` (perhaps none), then the connection is closed before the reply is complete.
  };
  Kind kind = Kind::kReply;
  std::string bytes;
  std::chrono::milliseconds interval{0};
  bool bad_request =
      false;  ///< The request is no command: `bytes` is a sentence that says why, not a reply.
};

/// A printer of one profile, in this process. Calls may come from several threads; each request is answered as a whole.
class VirtualPrinter {
 public:
  /// Pages are rendered to PNG files in `output`, which is made when it is missing. `faults` are sentences of the fault
  /// language (see faults.hpp); throws std::invalid_argument with a sentence when one can't be read.
  VirtualPrinter(Profile profile, std::filesystem::path output,
                 const std::vector<std::string>& faults = {});
  ~VirtualPrinter();

  /// Answers one request: a command document, and right behind it the data that it announces. A request that is too
  /// long, or no command at all, is answered as well. After PowerOff every connection is closed without a byte.
  [[nodiscard]] Answer answer(std::string_view request);

  /// The device ID, without its two length bytes.
  [[nodiscard]] std::string device_id() const;

  /// The files of the pages made so far, oldest first: PNG of raster, and what came as JPEG or RAW as .jpg and .ppm.
  [[nodiscard]] std::vector<std::filesystem::path> pages() const;

  /// Whether no job is open, of any service.
  [[nodiscard]] bool is_idle() const;

  /// One line for each request so far, at most the last thousand: what it was, and what came of it and why.
  [[nodiscard]] std::vector<std::string> log() const;

  /// A person comes: fills every bin, clears the paper path, closes the cover, replaces empty inks. A stopped job goes on.
  void attend();

 private:
  class State;
  std::unique_ptr<State> state_;
};

}  // namespace pxcl::printer
