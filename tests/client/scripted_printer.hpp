// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// A printer that answers every command well, but for what a test wants damaged. It reads commands with another parser
// than the library's.

#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "client/channel.hpp"

namespace pxcl::client {

enum class Damage {
  kWrongOperation,
  kWrongService,
  kWrongJob,
  kNoResponse,
  kCutInHead,
  kCutBeforeEnd,
  kGarbage,
  kEmpty,
  kNg,            // refused for the reason that is given, and not carried out
  kUnreachable,   // carried out, but no reply
  kCommandIsLost  // neither
};

/// What each is told as.
struct DamageRow {
  Damage damage;
  Fault fault;
};
inline constexpr DamageRow kDamageRows[] = {
    {Damage::kWrongOperation, Fault::kBadReply},
    {Damage::kWrongService, Fault::kBadReply},
    {Damage::kWrongJob, Fault::kBadReply},
    {Damage::kNoResponse, Fault::kBadReply},
    {Damage::kCutInHead, Fault::kBadReply},
    {Damage::kCutBeforeEnd, Fault::kBadReply},
    {Damage::kGarbage, Fault::kBadReply},
    {Damage::kEmpty, Fault::kBadReply},
    {Damage::kNg, Fault::kRefused},
    {Damage::kUnreachable, Fault::kUnreachable},
    {Damage::kCommandIsLost, Fault::kUnreachable},
};

/// The reply to an operation of a service, around some elements.
std::string make_reply(std::string_view operation, std::string_view service, std::string_view body,
                       std::string_view response = "OK");
inline std::string capability_reply(std::string_view body) {
  return make_reply("GetCapabilityResponse", "print", body);
}
inline std::string status_reply(std::string_view body) {
  return make_reply("GetStatusResponse", "print", body);
}

class ScriptedPrinter : public Channel {
 public:
  /// Damages the replies to an operation (vendor operations by their own names), from the `first` one on.
  void damage(std::string operation, Damage damage, std::string reason = {}, unsigned first = 1,
              unsigned last = ~0U);

  /// What the next status replies hold; the last one stays. Elements behind zirk:response, without the job's.
  std::deque<std::string> states = {"<zirk:status>idle</zirk:status>"};
  std::string capability;  // of the print service: the elements of its reply
  std::string maintenance_capability;
  std::string job_elements = "<zirk:jobprogress>processing</zirk:jobprogress>";  // of a job's block
  bool repeats_descriptions = true;
  unsigned statuses_to_the_end = 0;  // for how many more statuses a closed job is still there

  // What the printer was told.
  std::vector<std::string> operations;
  std::vector<std::string> data;  // of SendData
  std::vector<std::string> commands;
  std::function<void(std::string_view operation)> on_command;

  [[nodiscard]] bool has_open_job() const { return !open_job_.empty(); }
  [[nodiscard]] std::size_t count(std::string_view operation) const;
  /// The last command of an operation; empty when there was none.
  [[nodiscard]] std::string last(std::string_view operation) const;

  Result<std::string> exchange(std::string_view command, std::string_view data) override;
  Result<std::string> device_id() override;

 private:
  struct Script {
    std::string operation;
    Damage damage;
    std::string reason;
    unsigned first;
    unsigned last;
  };

  [[nodiscard]] const Script* script_for(std::string_view operation) const;
  void carry_out(std::string_view operation, std::string_view jobID, std::string_view description);
  std::string body_of(std::string_view operation, std::string_view service, std::string_view jobID);
  std::string status_body();

  std::vector<Script> scripts_;
  std::string open_job_;
  std::string description_;
  bool closed_ = false;
};

/// Capability of a printer with two sizes and two types: A4 and 4x6, plain (duplex) and photo (borderless, of the vendor's
/// namespace).
extern const std::string kCapability;
/// A4 plain in bin 1, 4x6 photo in bin 2.
extern const std::string kLoaded;

}  // namespace pxcl::client
