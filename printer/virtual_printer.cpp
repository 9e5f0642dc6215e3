// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "printer/virtual_printer.hpp"

#include <algorithm>
#include <deque>
#include <mutex>
#include <random>
#include <utility>

#include "printer/capability.hpp"
#include "printer/command.hpp"
#include "printer/faults.hpp"
#include "printer/jobs.hpp"
#include "printer/page_spool.hpp"
#include "printer/reply.hpp"
#include "printer/status.hpp"
#include "printer/supplies.hpp"
#include "printer/xml.hpp"

namespace pxcl::printer {

namespace {

constexpr std::size_t kLogLines = 1000;
constexpr std::size_t kHugeReply = 10'000'000;
constexpr std::size_t kGarbage = 2000;

std::string response_name(const Command& command) {
  return command.operation + "Response";
}

bool is_vendor_answered(const Command& command) {
  return command.vendor_operation == "ModeShift" || command.vendor_operation == "FRomUpMode";
}

// The head of the reply, and the whole of it where a command asks nothing. A vendor operation is repeated only where the
// protocol has a word for its response.
Reply begin_reply(const Command& command, const std::optional<Refusal>& refusal) {
  const std::string_view response = refusal ? "NG" : "OK";
  Reply reply(response_name(command), command.service_word);
  reply.add("zirk:response", response);
  if (refusal) reply.add("zirk:response_detail", refusal->detail);
  if (is_vendor_answered(command)) {
    reply.add("vrx:ijoperation", command.vendor_operation + "Response");
    reply.add("vrx:ijresponse", response);
  }
  return reply;
}

// The reply names another operation than the one asked for.
void name_another(std::string& reply, const Command& command) {
  const std::string name = response_name(command);
  const std::string_view other = name == "EndJobResponse" ? "StartJobResponse" : "EndJobResponse";
  const std::size_t at = reply.find(">" + name + "<");
  if (at != reply.npos) reply.replace(at + 1, name.size(), other);
}

// Still XML, but ten megabytes of it.
void blow_up(std::string& reply) {
  constexpr std::string_view kFiller =
      "<zirk:filler>0123456789abcdef0123456789abcdef</zirk:filler>";
  std::string filler;
  filler.reserve(kHugeReply + kFiller.size());
  while (filler.size() < kHugeReply) filler += kFiller;
  reply.insert(reply.rfind("</zirk:param_set>"), filler);
}

std::string garbage() {
  std::string bytes(kGarbage, '\0');
  std::minstd_rand random;
  std::ranges::generate(bytes, [&] { return static_cast<char>(random() >> 8 & 0xFF); });
  return bytes;
}

Answer bad_request(std::string sentence) {
  Answer answer;
  answer.bytes = std::move(sentence);
  answer.bad_request = true;
  return answer;
}

// The answer that the fault makes of a reply.
Answer spoil(std::string reply, const Fault& fault, const Command& command) {
  switch (fault.kind) {
    case FaultKind::kWrongOperation:
      name_another(reply, command);
      break;
    case FaultKind::kCut:
      return {Answer::Kind::kClose, reply.substr(0, reply.size() / 2)};
    case FaultKind::kGarbage:
      return {Answer::Kind::kReply, garbage()};
    case FaultKind::kHuge:
      blow_up(reply);
      break;
    case FaultKind::kDrip:
      return {Answer::Kind::kDrip, std::move(reply), std::chrono::milliseconds(fault.number)};
    case FaultKind::kNoAnswer:
      return {Answer::Kind::kNoAnswer, ""};
    case FaultKind::kClose:
      return {Answer::Kind::kClose, ""};
    default:
      break;
  }
  return {Answer::Kind::kReply, std::move(reply)};
}

std::string name_of(const Command& command) {
  std::string name = command.operation;
  if (!command.vendor_operation.empty()) name += "/" + command.vendor_operation;
  name += " " + command.service_word;
  const std::string_view job = command.text("jobID");
  return job.empty() ? name : name + " " + std::string(job);
}

std::string result_of(const std::optional<Refusal>& refusal) {
  if (!refusal) return "OK";
  return "NG " + std::string(refusal->detail) + ", " + refusal->reason;
}

}  // namespace

class VirtualPrinter::State {
 public:
  State(Profile profile, std::filesystem::path output, const std::vector<std::string>& faults)
      : profile_(std::move(profile)),
        supplies_(profile_),
        faults_(faults),
        spool_(std::move(output)),
        jobs_(profile_, supplies_, faults_, spool_) {}

  Answer answer(std::string_view request) {
    if (is_off_) return {Answer::Kind::kClose, ""};
    const auto length = document_length(request.substr(0, kLongestCommand));
    if (!length) return refuse("The request does not begin with a command document.");
    CommandReading reading = read_command(request.substr(0, *length));
    if (!reading.command) return refuse(reading.error);
    const std::string_view data = request.substr(*length);
    if (!reading.refusal && !data.empty() && reading.command->action != Action::kSendData) {
      reading.refusal = Refusal{"ParameterError", "there is data behind a command that has none"};
    }
    return respond(*reading.command, reading.refusal, data);
  }

  std::mutex mutex;

  const Profile& profile() const { return profile_; }
  const PageSpool& spool() const { return spool_; }
  Jobs& jobs() { return jobs_; }
  const std::deque<std::string>& log() const { return log_; }

 private:
  Answer refuse(const std::string& sentence) {
    note("no command: " + sentence);
    return bad_request(sentence);
  }

  Answer respond(const Command& command, std::optional<Refusal> refusal, std::string_view data) {
    const auto fault = faults_.take(command.operation, command.vendor_operation);
    if (fault && fault->kind == FaultKind::kNg) refusal = Refusal{fault->detail, "as scripted"};
    if (!refusal) refusal = carry_out(command, data);
    note(name_of(command) + ": " + result_of(refusal) + (fault ? " (with a fault)" : ""));
    Reply reply = begin_reply(command, refusal);
    if (!refusal) add_body(reply, command);
    std::string bytes = std::move(reply).finish();
    if (fault) return spoil(std::move(bytes), *fault, command);
    return {Answer::Kind::kReply, std::move(bytes)};
  }

  std::optional<Refusal> carry_out(const Command& command, std::string_view data) {
    if (is_question(command.action)) return std::nullopt;
    auto refusal = jobs_.carry_out(command, data);
    is_off_ = !refusal && command.action == Action::kPowerOff;
    return refusal;
  }

  static bool is_question(Action action) {
    return action == Action::kGetCapability || action == Action::kGetConfiguration ||
           action == Action::kGetStatus || action == Action::kGetJobIdList;
  }

  void add_body(Reply& reply, const Command& command) {
    switch (command.action) {
      case Action::kGetCapability:
        return add_capability(reply, profile_, command.service);
      case Action::kGetConfiguration:
        return add_configuration(reply, supplies_, jobs_, command.service);
      case Action::kGetStatus:
        return add_status(reply, supplies_, jobs_, command.service);
      case Action::kGetJobIdList:
        return add_job_list(reply, jobs_);
      default:
        if (command.find("jobID") != nullptr) reply.add("zirk:jobID", command.text("jobID"));
    }
  }

  void note(std::string line) {
    if (log_.size() == kLogLines) log_.pop_front();
    log_.push_back(std::move(line));
  }

  const Profile profile_;
  Supplies supplies_;
  Faults faults_;
  PageSpool spool_;
  Jobs jobs_;
  std::deque<std::string> log_;
  bool is_off_ = false;
};

VirtualPrinter::VirtualPrinter(Profile profile, std::filesystem::path output,
                               const std::vector<std::string>& faults)
    : state_(std::make_unique<State>(std::move(profile), std::move(output), faults)) {}

VirtualPrinter::~VirtualPrinter() = default;

Answer VirtualPrinter::answer(std::string_view request) {
  const std::lock_guard lock(state_->mutex);
  return state_->answer(request);
}

std::string VirtualPrinter::device_id() const {
  return state_->profile().device_id;
}

std::vector<std::filesystem::path> VirtualPrinter::pages() const {
  const std::lock_guard lock(state_->mutex);
  return state_->spool().pages();
}

bool VirtualPrinter::is_idle() const {
  const std::lock_guard lock(state_->mutex);
  return !state_->jobs().job();
}

std::vector<std::string> VirtualPrinter::log() const {
  const std::lock_guard lock(state_->mutex);
  return {state_->log().begin(), state_->log().end()};
}

void VirtualPrinter::attend() {
  const std::lock_guard lock(state_->mutex);
  state_->jobs().attend();
}

}  // namespace pxcl::printer
