// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <pxcl.h>

#include <ctime>

#include "client/attendant.hpp"
#include "client/build.hpp"
#include "client/job.hpp"
#include "client/printer.hpp"
#include "client/reply.hpp"

namespace pxcl::client {
namespace {

constexpr std::chrono::seconds kCancelLimit{5};

// A job without pages: what it is called, what it says and what it does.
struct Order {
  Service service = Service::kMaintenance;
  std::string_view title;
  std::optional<Word> host = std::nullopt;
  std::string time = {};            // empty: not told
  std::string_view operation = {};  // empty: to tell the time is all
  std::int32_t (*build)(const char*, char*, std::uint64_t, std::uint64_t*) = nullptr;
};

Result<Status> maintenance_status(Channel& channel, const std::string& jobID) {
  const auto command = build_command([&](char* buffer, std::uint64_t size, std::uint64_t* length) {
    return CLSS_MakeCommand_GetStatusMaintenance(jobID.c_str(), buffer, size, length);
  });
  const auto reply =
      ask(channel, command, {.operation = "GetStatus", .service = Service::kMaintenance});
  if (!reply) return reply.error();
  Result<Status> status = read_common_status(reply.value(), Service::kMaintenance);
  if (!status) return status;
  const auto job = read_maintenance_job(reply.value(), jobID);
  if (!job) return job.error();
  status.value().job = job.value();
  return status;
}

Result<std::string> job_configuration(const Order& order, const std::string& jobID) {
  const char* const time = order.time.empty() ? nullptr : order.time.c_str();
  if (order.service == Service::kPrint) {
    return build_command([&](char* buffer, std::uint64_t size, std::uint64_t* length) {
      return CLSS_MakeCommand_SetTime(jobID.c_str(), time, buffer, size, length);
    });
  }
  return build_maintenance_command([&](char* buffer, std::uint64_t size, std::uint64_t* length) {
    return CLSS_MakeCommand_SetJobConfiguration_Maintenance(jobID.c_str(), time, buffer, size,
                                                            length);
  });
}

// Has an order carried out, from StartJob to its end.
class OrderRun {
 public:
  OrderRun(Printer& printer, const Order& order, const MaintenanceLimits& limits)
      : printer_(printer),
        order_(order),
        limits_(limits),
        job_(printer.channel(), order.service, new_job_id()),
        attendant_(
            job_.id(), {limits.poll_interval, limits.completion, limits.cancelled},
            [this] { return status(); }, [](const Status&) {}) {}

  Result<void> run() {
    Result<void> done = carry_out();
    if (!done) return job_.abandon(std::move(done).error(), kCancelLimit);
    job_.mark_gone();
    return done;
  }

 private:
  Result<Status> status() {
    if (order_.service == Service::kPrint) return printer_.status_of(job_.id());
    return maintenance_status(printer_.channel(), job_.id());
  }

  Result<void> carry_out() {
    if (Result<void> done = job_.start(order_.title, order_.host); !done) return done;
    if (Result<void> done = configure(); !done) return done;
    if (Result<void> done = work(); !done) return done;
    if (Result<void> done = order(job_.end_command(), "EndJob"); !done) return done;
    Result<void> done = attendant_.watch_to_the_end(limits_.completion);
    if (attendant_.is_gone()) job_.mark_gone();
    return done;
  }

  Result<void> configure() {
    return order(job_configuration(order_, job_.id()), "SetJobConfiguration");
  }

  Result<void> work() {
    if (order_.build == nullptr) return {};
    const auto command =
        build_maintenance_command([this](char* buffer, std::uint64_t size, std::uint64_t* length) {
          return order_.build(job_.id().c_str(), buffer, size, length);
        });
    return order(command, order_.operation);
  }

  Result<void> order(const Result<std::string>& command, std::string_view operation) {
    return attendant_.order(
        printer_.channel(), command,
        {.operation = operation, .service = order_.service, .job_id = job_.id()});
  }

  Printer& printer_;
  const Order& order_;
  const MaintenanceLimits& limits_;
  OpenJob job_;
  Attendant attendant_;
};

// A maintenance job, told what the printer wants to be told.
Result<void> maintain(Printer& printer, Order order, const MaintenanceLimits& limits) {
  const Result<MaintenanceCapability> capability = printer.maintenance_capability();
  if (!capability) return capability.error();
  order.host = capability.value().host_environment;
  if (capability.value().date_time) order.time = date_time(std::time(nullptr));
  return OrderRun(printer, order, limits).run();
}

}  // namespace

Result<void> Printer::clean(const MaintenanceLimits& limits) {
  return maintain(
      *this, {.title = "Cleaning", .operation = "Cleaning", .build = CLSS_MakeCommand_Cleaning},
      limits);
}

Result<void> Printer::nozzle_check(const MaintenanceLimits& limits) {
  return maintain(
      *this,
      {.title = "Nozzle check", .operation = "TestPrint", .build = CLSS_MakeCommand_TestPrint},
      limits);
}

Result<void> Printer::align(const MaintenanceLimits& limits) {
  return maintain(
      *this,
      {.title = "Alignment", .operation = "TestPrint", .build = CLSS_MakeCommand_AutoRegistration},
      limits);
}

// Whichever service takes the time.
Result<void> Printer::set_time(std::time_t time, const MaintenanceLimits& limits) {
  Order order = {.title = "Set time", .time = date_time(time)};
  if (order.time.empty()) {
    return Error{Fault::kBadInput,
                 "This time can't be told in 14 digits. Check the clock of this machine."};
  }
  const Result<MaintenanceCapability> maintenance = maintenance_capability();
  if (!maintenance) return maintenance.error();
  order.host = maintenance.value().host_environment;
  if (maintenance.value().date_time) return OrderRun(*this, order, limits).run();
  const Result<PrintCapability> print = print_capability();
  if (!print) return print.error();
  if (!print.value().date_time) {
    return Error{Fault::kUnsuitable,
                 "This printer's clock can't be set from here. Set it at its panel."};
  }
  order.service = Service::kPrint;
  order.host = print.value().host_environment;
  return OrderRun(*this, order, limits).run();
}

}  // namespace pxcl::client
