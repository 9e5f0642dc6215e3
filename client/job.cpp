// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "client/job.hpp"

#include <pxcl.h>

#include <array>
#include <cstdint>
#include <ctime>
#include <random>
#include <utility>

#include "client/build.hpp"
#include "client/reply.hpp"
#include "client/text.hpp"

namespace pxcl::client {
namespace {

// How a job is opened: without word of the paper that was detected for print jobs, and without answers in between.
constexpr std::int16_t kPlainMode = 0;
constexpr std::int16_t kNoForcedDetection = 2;
constexpr const char* kNoBidi = "0";

}  // namespace

OpenJob::OpenJob(Channel& channel, Service service, std::string id)
    : channel_(channel), service_(service), id_(std::move(id)) {}

// Only a clear "NG" says that the job was not opened. Whatever else comes, it may have been.
Result<void> OpenJob::start(std::string_view title, std::optional<Word> host) {
  const std::string description = job_description(id_, title);
  const auto mode = service_ == Service::kPrint ? kNoForcedDetection : kPlainMode;
  const auto command = build_command([&](char* buffer, std::uint64_t size, std::uint64_t* length) {
    return CLSS_MakeCommand_StartJob3(static_cast<std::uint16_t>(service_), host ? host->row : 0,
                                      description.c_str(), mode, id_.c_str(), kNoBidi, buffer, size,
                                      length);
  });
  if (!command) return command.error();
  may_be_open_ = true;
  const auto reply =
      ask(channel_, command, {.operation = "StartJob", .service = service_, .job_id = id_});
  if (reply) return {};
  if (reply.error().fault == Fault::kRefused) may_be_open_ = false;
  return reply.error();
}

Result<std::string> OpenJob::end_command() const {
  return build_command([this](char* buffer, std::uint64_t size, std::uint64_t* length) {
    return CLSS_MakeCommand_EndJob(static_cast<std::uint16_t>(service_), id_.c_str(), buffer, size,
                                   length);
  });
}

Result<void> OpenJob::cancel(std::chrono::milliseconds limit) {
  const auto command =
      build_command([this](char* buffer, std::uint64_t size, std::uint64_t* length) {
        return CLSS_MakeCommand_CancelJob(static_cast<std::uint16_t>(service_), id_.c_str(), buffer,
                                          size, length);
      });
  if (!command) return command.error();
  const auto reply = channel_.exchange_regardless(command.value(), limit);
  if (!reply) return reply.error();
  return check_reply(reply.value(), {.operation = "CancelJob", .service = service_, .job_id = id_});
}

// An "NG" means that the printer has no such job, which is what was wanted.
Error OpenJob::abandon(Error reason, std::chrono::milliseconds limit) {
  if (!std::exchange(may_be_open_, false)) return reason;
  const Result<void> cancelled = cancel(limit);
  if (!cancelled && cancelled.error().fault != Fault::kRefused) {
    reason.message += " The printer did not confirm that it cancelled job " + id_ +
                      "; cancel it at its panel if it stays busy.";
  }
  return reason;
}

std::string date_time(std::time_t time) {
  std::tm local = {};
  std::array<char, 32> text = {};
  tzset();
  if (localtime_r(&time, &local) == nullptr || local.tm_year < -900 || local.tm_year > 8099)
    return {};
  const std::size_t length = std::strftime(text.data(), text.size(), "%Y%m%d%H%M%S", &local);
  return {text.data(), length};
}

std::string new_job_id() {
  std::random_device source;
  const std::string digits = std::to_string(std::uniform_int_distribution(1, 99999999)(source));
  return std::string(8 - digits.size(), '0') + digits;
}

}  // namespace pxcl::client
