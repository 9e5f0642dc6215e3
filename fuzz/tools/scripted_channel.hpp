// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// A printer that answers with the parts of an input.

#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "client/channel.hpp"
#include "pxcl.h"
#include "support.hpp"

namespace pxcl::fuzz {

/// The first byte of a part says what it is: a whole reply, elements of a good reply to what was asked or of a refusal,
/// or that nothing comes. Behind the last part nothing comes any more.
class ScriptedChannel : public client::Channel {
 public:
  explicit ScriptedChannel(std::vector<std::string_view> parts) : parts_(std::move(parts)) {}

  client::Result<std::string> exchange(std::string_view command, std::string_view) override {
    operation_ = between(command, "<zirk:operation>", "<");
    const std::string_view service = between(command, "servicetype=\"", "\"");
    std::string_view part = next();
    const char form = part.empty() ? '-' : part[0];
    if (!part.empty()) part.remove_prefix(1);
    client::Result<std::string> reply = client::Error{client::Fault::kUnreachable, "Nobody."};
    if (form == 'r') reply = std::string(part);
    if (form == 'o') reply = framed(service, "<zirk:response>OK</zirk:response>", part);
    if (form == 'n') reply = framed(service, "<zirk:response>NG</zirk:response>", part);
    keep_count(reply);
    return reply;
  }

  client::Result<std::string> device_id() override { return std::string(next()); }

  /// Whether the printer was asked to open a job and did not clearly refuse.
  [[nodiscard]] bool may_have_job() const { return may_have_job_; }
  [[nodiscard]] bool was_cancelled() const { return was_cancelled_; }

 private:
  static std::string_view between(std::string_view text, std::string_view mark,
                                  std::string_view end) {
    const std::size_t at = text.find(mark);
    require(at != text.npos);
    text.remove_prefix(at + mark.size());
    return text.substr(0, text.find(end));
  }

  std::string_view next() { return at_ < parts_.size() ? parts_[at_++] : std::string_view(); }

  std::string framed(std::string_view service, std::string_view response, std::string_view body) {
    std::string reply = "<?xml version=\"1.0\" encoding=\"utf-8\" ?><cmd xmlns:zirk=\"";
    reply.append(glb_NameSpace[0]).append("\" xmlns:vrx=\"").append(glb_NameSpace[1]);
    reply.append("\"><zirk:contents><zirk:operation>").append(operation_).append("Response");
    reply.append("</zirk:operation><zirk:param_set servicetype=\"").append(service).append("\">");
    reply.append(response).append(body);
    return reply + "</zirk:param_set></zirk:contents></cmd>";
  }

  // What the printer has done may be more than what its reply says, never less.
  void keep_count(const client::Result<std::string>& reply) {
    if (operation_ == "StartJob") {
      may_have_job_ = !reply.ok() || reply.value().find(">NG<") == std::string::npos;
      was_cancelled_ = false;
    } else if (operation_ == "CancelJob") {
      was_cancelled_ = true;
    }
  }

  std::vector<std::string_view> parts_;
  std::size_t at_ = 0;
  std::string operation_;
  bool may_have_job_ = false;
  bool was_cancelled_ = false;
};

}  // namespace pxcl::fuzz
