// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Faults that a printer is told to have, one sentence each:
//
//     TROUBLE at page N                     when page N of a job begins
//     TROUBLE after N sends                 when N pieces of data of a job have come
//     ng DETAIL to OPERATION                refused, and not carried out
//     wrong-operation to OPERATION          the reply names another operation
//     cut reply to OPERATION                half of the reply, then the connection is closed
//     garbage to OPERATION                  bytes that are no reply
//     huge reply to OPERATION               a reply of 10 MB
//     drip reply to OPERATION every N ms    one byte at a time
//     no-answer to OPERATION                nothing comes, the connection stays open
//     close on OPERATION                    the connection is closed without a byte
//
// TROUBLE is paper-out, cover-open, jam or ink-out. DETAIL is a response detail, "DeivceUseOtherJob". OPERATION is the
// name of one, vendor operations included, or "any". " once" or " N times" at the end limits how often it happens; else it
// happens always. All but "ng" carry the command out first: the printer has done it, and only its answer is at fault.
//
// A trouble stops the job until VirtualPrinter::attend() or CancelJob.

#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "printer/trouble.hpp"

namespace pxcl::printer {

enum class FaultKind {
  kTroubleAtPage,
  kTroubleAfterSends,
  kNg,
  kWrongOperation,
  kCut,
  kGarbage,
  kHuge,
  kDrip,
  kNoAnswer,
  kClose,
};

struct Fault {
  FaultKind kind{};
  Trouble trouble{};
  unsigned number = 0;            ///< The page, the sends, or the milliseconds.
  std::string operation;          ///< Or "any".
  std::string_view detail;        ///< Of an "ng".
  std::optional<unsigned> times;  ///< How often it still happens; none: always.
};

/// Throws std::invalid_argument with a sentence when it can't be read.
[[nodiscard]] Fault read_fault(std::string_view sentence);

/// The sentences that there are, for a help text.
[[nodiscard]] std::vector<std::string_view> fault_forms();

class Faults {
 public:
  explicit Faults(const std::vector<std::string>& sentences);

  /// The fault that the answer to this command has; `name` is the operation's, `vendor` the vendor operation's if any.
  [[nodiscard]] std::optional<Fault> take(std::string_view name, std::string_view vendor);
  [[nodiscard]] std::optional<Trouble> take_at_page(unsigned page);
  [[nodiscard]] std::optional<Trouble> take_after_sends(unsigned sends);

 private:
  [[nodiscard]] std::optional<Trouble> take_trouble(FaultKind kind, unsigned number);

  std::vector<Fault> faults_;
};

}  // namespace pxcl::printer
