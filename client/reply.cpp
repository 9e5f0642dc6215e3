// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "client/reply.hpp"

#include <pxcl.h>

#include <array>
#include <memory>
#include <optional>

#include "client/reply_end.hpp"
#include "client/text.hpp"
#include "client/words.hpp"

namespace pxcl::client {
namespace {

enum Answer : std::uint16_t { kOk = 1, kNg = 2 };

// Statuses of CLSS_ParseResponseCommon, see responses.h: "NG" without a detail, and with one that is in no dictionary.
constexpr std::int32_t kNgWithoutDetail = -13;
constexpr std::int32_t kNgWithUnknownDetail = -16;

// By row of refusals(): what it means, and what to do.
struct Reason {
  std::string_view meaning;
  std::string_view advice;
};
constexpr std::string_view kTryLater = "Try again in a moment";
constexpr std::string_view kReport = "Update the printer's firmware, or report this with a trace";
constexpr Reason kReasons[] = {
    {"it gives no reason", kReport},
    {"the printer is busy with another job", "Wait until that has finished, or cancel it"},
    {"it does not take one of the values", "Choose other settings"},
    {"it does not have this service", "Use a printer that has"},
    {"it does not know this command", "Use a printer that does"},
    {"there is no such job open", "It may have been cancelled at the printer; start again"},
    {"it does not know this job", "It may have ended meanwhile; look at the list of jobs"},
    {"the command came out of order", kReport},
    {"the data are too much for it", "Send smaller pieces or less"},
    {"it is still starting up", kTryLater},
    {"it is suspended", "Look at its panel, and try again"},
    {"it is shutting down", "Switch it on and try again"},
};

std::string_view name_of(const Asked& asked) {
  return asked.vendor_operation.empty() ? asked.operation : asked.vendor_operation;
}

Error refused(const Asked& asked, std::optional<Word> detail, std::string_view unknownDetail = {}) {
  const Reason& reason = kReasons[detail && detail->row < std::size(kReasons) ? detail->row : 0];
  std::string message = "The printer refused " + std::string(name_of(asked)) + ": ";
  const std::string_view word = detail ? detail->keyword : unknownDetail;
  message += detail || word.empty() ? reason.meaning : std::string_view("for a reason of its own");
  if (!word.empty()) message += " (" + clean_line(cut(word, 64)) + ")";
  return {Fault::kRefused, message + ". " + std::string(reason.advice) + "."};
}

Error bad_reply(const Asked& asked, const std::string& what) {
  return {Fault::kBadReply, "The printer's answer to " + std::string(name_of(asked)) + " " + what +
                                ". Try again; if it stays so, switch the printer off and on."};
}

Result<void> check_job(const Asked& asked, std::string_view jobID) {
  if (asked.job_id.empty() || jobID.empty() || jobID == asked.job_id) return {};
  return bad_reply(asked, "is about another job, " + clean_line(jobID));
}

// "NG" with a detail that is missing or in no dictionary fails the parser, but its record tells of the "NG".
Result<void> check_known(std::string_view reply, const Asked& asked, std::uint16_t response) {
  ClssResponseCommon head = {};
  std::uint64_t end = 0;
  const std::int32_t status = CLSS_ParseResponseCommon(reply.data(), reply.size(), &end, &head);
  const bool isNg = head.response == kNg &&
                    (status == 0 || status == kNgWithoutDetail || status == kNgWithUnknownDetail);
  if (status != 0 && !isNg) return bad_reply(asked, "can't be understood");
  if (head.operation != response) return bad_reply(asked, "answers another command");
  if (head.serviceType != static_cast<std::uint16_t>(asked.service)) {
    return bad_reply(asked, "comes from another service");
  }
  if (isNg) return refused(asked, refusals().at(head.responseDetail));
  if (head.ijOperation != kNoRow && head.ijResponse != kOk) return refused(asked, std::nullopt);
  return check_job(asked, head.jobID);
}

using KeyedRequest = std::unique_ptr<ClXmlRequest, decltype(&ClearCL_XML)>;

// The first texts at some path keys; those that are absent or empty are empty.
template <std::size_t count>
std::optional<std::array<std::string_view, count>> texts_at(
    std::string_view document, const std::array<std::string, count>& keys) {
  std::array<ClssKeyValue, count> records = {};
  for (std::size_t i = 0; i < count; ++i) records[i] = {keys[i].data(), keys[i].size(), nullptr, 0};
  ClXmlRequest* request = nullptr;
  if (GetXmlDataByKey(document.data(), document.size(), records.data(),
                      static_cast<std::uint32_t>(count), &request) != 0) {
    return std::nullopt;
  }
  const KeyedRequest owner(request, &ClearCL_XML);
  const auto* const found = static_cast<const ClXmlParameter*>(request->parameters);
  std::array<std::string_view, count> texts;
  for (std::size_t i = 0; i < count; ++i) {
    if (found[i].status == 1)
      texts[i] = document.substr(found[i].valueOffset, found[i].valueLength);
  }
  return texts;
}

struct Head {
  std::string_view operation;
  std::string_view response;
  std::string_view detail;
  std::string_view job_id;
};

std::optional<Head> head_by_key(std::string_view reply, Service service) {
  const auto word = service_types().at(static_cast<std::uint16_t>(service));
  const std::string set =
      "cmd/zirk:contents/zirk:param_set servicetype=\"" + std::string(word->keyword) + "\"/";
  const auto texts = texts_at<4>(reply, {"cmd/zirk:contents/zirk:operation", set + "zirk:response",
                                         set + "zirk:response_detail", set + "zirk:jobID"});
  if (!texts) return std::nullopt;
  return Head{(*texts)[0], (*texts)[1], (*texts)[2], (*texts)[3]};
}

// Of operations that the dictionary lacks, the reply's head is read by key.
Result<void> check_unknown(std::string_view reply, const Asked& asked) {
  const std::optional<Head> head = head_by_key(reply, asked.service);
  if (!head) return bad_reply(asked, "can't be understood");
  if (head->operation != std::string(asked.operation) + "Response") {
    return bad_reply(asked, "answers another command");
  }
  if (head->response == "NG") return refused(asked, refusals().find(head->detail), head->detail);
  if (head->response != "OK") return bad_reply(asked, "does not say whether it was done");
  return check_job(asked, head->job_id);
}

// The library reads a document that ends between two elements, too.
bool is_whole(std::string_view reply) {
  ReplyEnd end;
  end.feed(reply);
  return end.found();
}

}  // namespace

Result<void> check_reply(std::string_view reply, const Asked& asked) {
  if (reply.empty()) return bad_reply(asked, "is empty");
  if (!is_whole(reply)) return bad_reply(asked, "is not complete");
  const auto response = operations().find(std::string(asked.operation) + "Response");
  return response ? check_known(reply, asked, response->row) : check_unknown(reply, asked);
}

bool is_refusal(std::string_view reply, const Asked& asked, std::uint16_t reason) {
  const std::optional<Head> head = head_by_key(reply, asked.service);
  return head && head->response == "NG" && refusals().find(head->detail) == refusals().at(reason);
}

Result<std::string> ask(Channel& channel, const Result<std::string>& command, const Asked& asked,
                        std::string_view data) {
  if (!command) return command.error();
  Result<std::string> reply = channel.exchange(command.value(), data);
  if (!reply) return reply;
  if (Result<void> good = check_reply(reply.value(), asked); !good) return std::move(good).error();
  return reply;
}

}  // namespace pxcl::client
