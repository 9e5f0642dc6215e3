// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// `pxcl parse`: any reply, its kind found out.

#include <array>
#include <optional>

#include "cli/command.hpp"
#include "cli/input.hpp"
#include "cli/output.hpp"
#include "cli/text.hpp"
#include "cli/values.hpp"
#include "client/words.hpp"
#include "pxcl.h"

namespace pxcl::cli {

namespace {

using client::Dictionary;
using Object = Value::Object;

using client::Result;

// What is shown, and a sentence for each part that could not be read.
struct Reading {
  Object object;
  Value::List problems;

  void add(std::string name, Value value) {
    object.emplace_back(std::move(name), std::move(value));
  }

  template <typename Record>
  void add(std::string name, const Result<Record>& record) {
    if (record.ok()) {
      add(std::move(name), value_of(record.value()));
    } else {
      problems.push_back(record.error().message);
    }
  }
};

Value keyword(Dictionary dictionary, std::uint16_t row) {
  const auto word = dictionary.at(row);
  return word ? Value(word->keyword) : Value();
}

// ---- Single values ----

// The value at a path key; none when it is not there or empty. Throws when the text is no document of the protocol.
std::optional<std::string> read_key(const std::string& reply, const std::string& path) {
  const ClssKeyValue key = {path.data(), path.size(), nullptr, 0};
  ClXmlRequest* context = nullptr;
  if (reply.empty() || GetXmlDataByKey(reply.data(), reply.size(), &key, 1, &context) != 0) {
    throw Failure{kUsage,
                  "This is no reply of the protocol: it is not XML, or its root is not cmd."};
  }
  const auto& found = static_cast<const ClXmlParameter*>(context->parameters)[0];
  std::optional<std::string> value;
  if (found.status == 1) value = reply.substr(found.valueOffset, found.valueLength);
  ClearCL_XML(context);
  return value;
}

std::string service_key(std::string_view service, std::string_view rest) {
  return filled("cmd/zirk:contents/zirk:param_set servicetype=\"{}\"/{}", service, rest);
}

// ---- The head ----

const char* head_problem(std::int32_t status) {
  switch (status) {
    case -2:
      return "The reply has no service block, is a command, or has a job ID that is too long.";
    case -5:
      return "The operation is in no dictionary.";
    case -9:
      return "The reply names no operation.";
    case -10:
      return "The reply does not say whether it is OK.";
    case -13:
      return "The printer refused and gave no reason.";
    case -15:
      return "The result is neither OK nor NG.";
    case -16:
      return "The reason of the refusal is in no dictionary.";
    default:
      return "The head of the reply could not be read.";
  }
}

ClssResponseCommon read_head(const std::string& reply, Reading& reading) {
  ClssResponseCommon head = {};
  head.serviceType = head.operation = head.response = CLSS_SETTING_ABSENT;
  head.responseDetail = head.ijOperation = head.ijResponse = CLSS_SETTING_ABSENT;
  std::uint64_t position = 0;
  const std::int32_t status =
      CLSS_ParseResponseCommon(reply.data(), reply.size(), &position, &head);
  if (status < 0) reading.problems.push_back(head_problem(status));
  return head;
}

void add_head(const ClssResponseCommon& head, const std::string& operation, Reading& reading) {
  const Dictionary services = {glb_clssdicServiceTypeTbl, CLSS_NUM_SERVICETYPE_LIST};
  const Dictionary results = {glb_clssdicResponseTbl, CLSS_DICNUM_RESPONSE};
  const Dictionary vendor = {glb_clssdicIJOperationTbl, CLSS_DICNUM_IJOPERATION};
  reading.add("operation", text_or_unknown(operation));
  reading.add("service", keyword(services, head.serviceType));
  reading.add("response", keyword(results, head.response));
  reading.add("response_detail", keyword(client::refusals(), head.responseDetail));
  reading.add("vendor_operation", keyword(vendor, head.ijOperation));
  reading.add("vendor_response", keyword(results, head.ijResponse));
  reading.add("job", text_or_unknown(head.jobID));
}

// ---- The bodies ----

std::vector<std::string> read_job_ids(const std::string& reply) {
  std::int32_t count = 0;
  if (CLSS_ParseJobIDListResponse(reply.data(), reply.size(), nullptr, &count) < 0) return {};
  std::vector<std::array<char, 9>> slots(static_cast<std::size_t>(count));
  if (slots.empty()) return {};
  auto* texts = reinterpret_cast<char(*)[9]>(slots.data());
  CLSS_ParseJobIDListResponse(reply.data(), reply.size(), texts, &count);
  slots.resize(static_cast<std::size_t>(count));
  std::vector<std::string> ids;
  for (const auto& slot : slots) ids.emplace_back(slot.data());
  return ids;
}

void add_jobs(const std::string& reply, Reading& reading) {
  reading.add("jobs", list_of_jobs(read_job_ids(reply)));
}

void add_print_status(const std::string& reply, const std::string& jobID, Reading& reading) {
  const std::vector<std::string> ids = read_job_ids(reply);
  const std::string first = ids.empty() ? "" : ids.front();
  reading.add("status", client::read_status(reply, jobID.empty() ? first : jobID));
  reading.add("jobs", list_of_jobs(ids));
}

// The five elements of a status in the device's block.
void add_device_status(const std::string& reply, Reading& reading) {
  static constexpr const char* kNames[] = {
      "zirk:status", "zirk:status_detail", "zirk:jobstatus/zirk:jobID",
      "zirk:jobstatus/zirk:jobprogress", "zirk:current_support_code"};
  std::array<std::string, 5> paths;
  std::array<ClssKeyValue, 5> keys;
  for (std::size_t i = 0; i < keys.size(); ++i) {
    paths[i] = service_key("device", kNames[i]);
    keys[i] = {paths[i].data(), paths[i].size(), nullptr, 0};
  }
  ClssStatusCommon status = {};
  if (parseCommonStatusResponse(reply.data(), reply.size(), keys.data(), 5, &status) < 0) {
    reading.problems.push_back("The status could not be read.");
    return;
  }
  reading.add("status",
              Object{{"status", keyword(client::printer_states(), status.status)},
                     {"detail", keyword(client::printer_state_details(), status.statusDetail)},
                     {"support_code", text_or_unknown(status.supportCode)}});
}

// Unless a job is asked for it is the first one that the reply names.
void add_maintenance_status(const std::string& reply, std::string jobID, Reading& reading) {
  if (jobID.empty()) {
    jobID = read_key(reply, service_key("maintenance", "zirk:jobinfo jobID")).value_or("");
    std::erase(jobID, '"');
  }
  const Result<std::optional<client::JobStatus>> job = client::read_maintenance_job(reply, jobID);
  if (!job.ok()) {
    reading.problems.push_back(job.error().message);
  } else {
    reading.add("maintenance_job", job.value() ? value_of(*job.value()) : Value());
  }
}

enum Service : std::uint16_t { kPrint = 0, kDevice = 1, kMaintenance = 3 };

void add_body(const ClssResponseCommon& head, const std::string& reply, const std::string& jobID,
              Reading& reading) {
  constexpr std::uint16_t kGetCapabilityResponse = 2, kGetStatusResponse = 14, kNg = 2;
  if (head.response == kNg) return;
  if (head.operation == kGetStatusResponse) {
    if (head.serviceType == kPrint) add_print_status(reply, jobID, reading);
    if (head.serviceType == kDevice) add_device_status(reply, reading);
    if (head.serviceType == kMaintenance) add_maintenance_status(reply, jobID, reading);
  } else if (head.operation == kGetCapabilityResponse) {
    if (head.serviceType == kPrint) reading.add("capability", client::read_print_capability(reply));
    if (head.serviceType == kMaintenance) {
      reading.add("capability", client::read_maintenance_capability(reply));
    }
  }
}

// Replies to job lists, test prints and cleaning: their operations are in no dictionary.
bool add_unlisted(const std::string& reply, const std::string& operation, Reading& reading) {
  struct Unlisted {
    const char* operation;
    const char* service;
  };
  static constexpr Unlisted kUnlisted[] = {{"GetJobIDListResponse", "print"},
                                           {"TestPrintResponse", "maintenance"},
                                           {"CleaningResponse", "maintenance"}};
  for (const Unlisted& unlisted : kUnlisted) {
    if (operation != unlisted.operation) continue;
    reading.add("operation", operation);
    reading.add("service", unlisted.service);
    for (const char* name : {"response", "response_detail"}) {
      const auto value = read_key(reply, service_key(unlisted.service, filled("zirk:{}", name)));
      reading.add(name, text_or_unknown(value.value_or("")));
    }
    if (operation == kUnlisted[0].operation) add_jobs(reply, reading);
    return true;
  }
  return false;
}

ExitCode parse(const Arguments& arguments) {
  const std::string reply = read_input(arguments.text("FILE"));
  const std::string operation = read_key(reply, "cmd/zirk:contents/zirk:operation").value_or("");
  Reading reading;
  if (!add_unlisted(reply, operation, reading)) {
    const ClssResponseCommon head = read_head(reply, reading);
    add_head(head, operation, reading);
    add_body(head, reply, arguments.text("--job"), reading);
  }
  const bool complete = reading.problems.empty();
  if (!complete) reading.add("problems", reading.problems);
  show(arguments, reading.object);
  return complete ? kOk : kWarning;
}

}  // namespace

std::vector<Command> reply_commands() {
  return {
      {"parse",
       "Read a printer's reply, of whatever kind",
       "  pxcl parse reply.xml\n"
       "  curl -s --data-binary @command.xml http://localhost:8080/ | pxcl parse - --json",
       {{.name = "FILE",
         .help = "The reply, at most 4 MiB; - reads standard input",
         .required = true},
        {.name = "--job", .help = "Job whose block is read, the first one unless given"},
        json_option()},
       parse},
  };
}

}  // namespace pxcl::cli
