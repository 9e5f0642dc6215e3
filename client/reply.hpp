// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "client/channel.hpp"
#include "client/result.hpp"
#include "client/words.hpp"

namespace pxcl::client {

/// What a command is, so that its reply can be told from others.
struct Asked {
  std::string_view
      operation;  ///< As the protocol names it; the reply names it with "Response" behind it.
  Service service;
  std::string_view job_id = {};            ///< Empty: whichever.
  std::string_view vendor_operation = {};  ///< Of a VendorCmd.
};

/// Whether a reply says "OK" to what was asked: kRefused for "NG", with the printer's reason in the sentence; kBadReply
/// for anything else than a reply to that.
Result<void> check_reply(std::string_view reply, const Asked& asked);

/// Whether a reply to that is an "NG" for this reason, a row of refusals().
bool is_refusal(std::string_view reply, const Asked& asked, std::uint16_t reason);

/// Sends a command, with its data, and checks the reply. A command that could not be made is passed on.
Result<std::string> ask(Channel& channel, const Result<std::string>& command, const Asked& asked,
                        std::string_view data = {});

}  // namespace pxcl::client
