// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "client/printer.hpp"

#include <pxcl.h>

#include <array>
#include <cstdint>

#include "client/build.hpp"
#include "client/reply.hpp"
#include "client/text.hpp"

namespace pxcl::client {
namespace {

Result<std::string> capability_reply(Channel& channel, Service service) {
  const auto command = build_command([=](char* buffer, std::uint64_t size, std::uint64_t* length) {
    return CLSS_MakeCommand_GetCapability(buffer, size, length, static_cast<std::int32_t>(service));
  });
  return ask(channel, command, {.operation = "GetCapability", .service = service});
}

Result<Status> print_status(Channel& channel, const std::string& jobID) {
  const auto command = build_command([&](char* buffer, std::uint64_t size, std::uint64_t* length) {
    return CLSS_MakeCommand_GetStatusPrint(jobID.empty() ? nullptr : jobID.c_str(), buffer, size,
                                           length);
  });
  const auto reply = ask(channel, command, {.operation = "GetStatus", .service = Service::kPrint});
  if (!reply) return reply.error();
  return read_status(reply.value(), jobID);
}

Error no_job_id(std::string_view text) {
  return {Fault::kBadInput,
          "\"" + clean_line(text) +
              "\" is no job ID: one has 8 letters or digits, as the list of jobs shows it."};
}

Result<std::vector<std::string>> read_job_ids(std::string_view reply) {
  std::int32_t count = 0;
  std::int32_t status = CLSS_ParseJobIDListResponse(reply.data(), reply.size(), nullptr, &count);
  std::vector<std::array<char, 9>> slots(count > 0 ? static_cast<std::size_t>(count) : 0);
  if (status == 0 && count > 0) {
    auto* const first = reinterpret_cast<char(*)[9]>(slots.data());
    status = CLSS_ParseJobIDListResponse(reply.data(), reply.size(), first, &count);
  }
  if (status != 0)
    return Error{Fault::kBadReply, "The printer's list of jobs can't be understood. Try again."};
  slots.resize(static_cast<std::size_t>(count));
  std::vector<std::string> ids;
  ids.reserve(slots.size());
  for (const auto& slot : slots) ids.push_back(clean_line(slot.data()));
  return ids;
}

}  // namespace

Result<Identity> Printer::identity() {
  const Result<std::string> text = channel_.device_id();
  if (!text) return text.error();
  return read_device_id(text.value());
}

Result<PrintCapability> Printer::print_capability() {
  Result<std::string> reply = capability_reply(channel_, Service::kPrint);
  if (!reply) return std::move(reply).error();
  return read_print_capability(std::move(reply).value());
}

Result<MaintenanceCapability> Printer::maintenance_capability() {
  Result<std::string> reply = capability_reply(channel_, Service::kMaintenance);
  if (!reply) return std::move(reply).error();
  return read_maintenance_capability(std::move(reply).value());
}

Result<Status> Printer::status() {
  return print_status(channel_, {});
}

Result<Status> Printer::status_of(std::string_view jobID) {
  if (!is_job_id(jobID)) return no_job_id(jobID);
  return print_status(channel_, std::string(jobID));
}

Result<std::vector<std::string>> Printer::job_ids() {
  const auto command = build_command(CLSS_MakeCommand_GetJobIDList);
  const auto reply =
      ask(channel_, command, {.operation = "GetJobIDList", .service = Service::kPrint});
  if (!reply) return reply.error();
  return read_job_ids(reply.value());
}

Result<void> Printer::cancel(std::string_view jobID) {
  if (!is_job_id(jobID)) return no_job_id(jobID);
  const std::string id(jobID);
  const auto command = build_command([&](char* buffer, std::uint64_t size, std::uint64_t* length) {
    return CLSS_MakeCommand_CancelJob(static_cast<std::uint16_t>(Service::kPrint), id.c_str(),
                                      buffer, size, length);
  });
  const auto reply =
      ask(channel_, command, {.operation = "CancelJob", .service = Service::kPrint, .job_id = id});
  if (!reply) return reply.error();
  return {};
}

Result<void> Printer::power_off() {
  const auto reply = ask(channel_, build_command(CLSS_MakeCommand_PowerOff),
                         {.operation = "PowerOff", .service = Service::kDevice});
  if (!reply) return reply.error();
  return {};
}

}  // namespace pxcl::client
