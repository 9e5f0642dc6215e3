// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// What the printer is asked and told, but for printing: every reply damaged in every way.

#include "client/printer.hpp"

#include <gtest/gtest.h>

#include <map>

#include "scripted_printer.hpp"

namespace pxcl::client {
namespace {

using namespace std::chrono_literals;

constexpr MaintenanceLimits kPatient = {
    .completion = 20s, .poll_interval = 1ms, .cancelled = nullptr};
constexpr MaintenanceLimits kShort = {
    .completion = 50ms, .poll_interval = 1ms, .cancelled = nullptr};

struct Call {
  const char* name;
  const char* operation;  // whose reply is damaged
  bool has_job;           // the reply names a job
  bool cancels;           // a damaged reply leaves a job that has to be cancelled
  std::function<std::optional<Error>(Printer&)> make;
};

template <typename Value>
std::optional<Error> error_of(const Result<Value>& result) {
  return result ? std::nullopt : std::optional(result.error());
}

std::optional<Error> clean(Printer& p) {
  return error_of(p.clean(kPatient));
}

// The time is told by a maintenance job or, where the maintenance service takes none, by a print job.
const Call kCalls[] = {
#define CALL(call) [](Printer& p) { return error_of(p.call); }
    {"print_capability", "GetCapability", false, false, CALL(print_capability())},
    {"maintenance_capability", "GetCapability", false, false, CALL(maintenance_capability())},
    {"status", "GetStatus", false, false, CALL(status())},
    {"status_of", "GetStatus", false, false, CALL(status_of("00000042"))},
    {"job_ids", "GetJobIDList", false, false, CALL(job_ids())},
    {"cancel", "CancelJob", true, false, CALL(cancel("00000042"))},
    {"power_off", "PowerOff", false, false, CALL(power_off())},
    {"clean", "GetCapability", false, false, clean},
    {"clean", "StartJob", true, true, clean},
    {"clean", "SetJobConfiguration", true, true, clean},
    {"clean", "Cleaning", true, true, clean},
    {"clean", "EndJob", true, true, clean},
    {"clean", "GetStatus", false, true, clean},
    {"nozzle_check", "TestPrint", true, true, CALL(nozzle_check(kPatient))},
    {"align", "TestPrint", true, true, CALL(align(kPatient))},
    {"set_time", "SetJobConfiguration", true, true, CALL(set_time(0, kPatient))},
#undef CALL
};

void make_good(ScriptedPrinter& channel) {
  channel.capability = kCapability;
  channel.maintenance_capability =
      "<zirk:datetime/><zirk:host_environment>linux</zirk:host_environment>";
}

TEST(Calls, SucceedWithGoodReplies) {
  for (const Call& call : kCalls) {
    SCOPED_TRACE(call.name);
    ScriptedPrinter channel;
    make_good(channel);
    Printer printer(channel);
    const auto error = call.make(printer);
    EXPECT_FALSE(error) << error->message;
    EXPECT_FALSE(channel.has_open_job());
  }
}

TEST(Calls, TellDamagedRepliesApart) {
  for (const Call& call : kCalls) {
    for (const DamageRow& row : kDamageRows) {
      if (row.damage == Damage::kWrongJob && !call.has_job) continue;
      SCOPED_TRACE(std::string(call.name) + ", " + call.operation + ", damage " +
                   std::to_string(static_cast<int>(row.damage)));
      ScriptedPrinter channel;
      make_good(channel);
      channel.damage(call.operation, row.damage, "IllegalOperation");
      // The job is still there when its status is asked for.
      channel.statuses_to_the_end = 1000;
      Printer printer(channel);
      const auto error = call.make(printer);
      ASSERT_TRUE(error);
      EXPECT_EQ(error->fault, row.fault) << error->message;
      EXPECT_TRUE(error->message.ends_with('.')) << error->message;
      const bool wasRefusedAtOnce =
          row.damage == Damage::kNg && std::string_view(call.operation) == "StartJob";
      if (std::string_view(call.operation) != "CancelJob") {
        EXPECT_EQ(channel.count("CancelJob"), call.cancels && !wasRefusedAtOnce ? 1U : 0U);
      }
      EXPECT_FALSE(channel.has_open_job());
    }
  }
}

// Those that we know, and any other.
TEST(Refusals, GiveThePrintersReason) {
  std::vector<std::string> reasons = {"-", "", "OutOfCheese", "A\x1B[2J\x01"};
  const std::size_t unknown = reasons.size();
  for (std::uint16_t row = 1; row < refusals().count; ++row) {
    reasons.emplace_back(refusals().at(row)->keyword);
  }
  for (std::size_t i = 0; i < reasons.size(); ++i) {
    for (const char* operation : {"PowerOff", "GetJobIDList"}) {
      ScriptedPrinter channel;
      channel.damage(operation, Damage::kNg, reasons[i]);
      Printer printer(channel);
      const auto error =
          operation[0] == 'P' ? error_of(printer.power_off()) : error_of(printer.job_ids());
      ASSERT_TRUE(error);
      EXPECT_EQ(error->fault, Fault::kRefused) << error->message;
      EXPECT_EQ(error->message.find('\x1B'), std::string::npos);
      if (i < unknown) continue;
      EXPECT_NE(error->message.find("(" + reasons[i] + ")"), std::string::npos) << error->message;
      EXPECT_NE(error->message.find(operation), std::string::npos) << error->message;
    }
  }
}

TEST(Maintenance, GoesThroughItsSteps) {
  ScriptedPrinter channel;
  make_good(channel);
  channel.statuses_to_the_end = 3;
  Printer printer(channel);
  ASSERT_TRUE(printer.clean(kPatient));
  const std::vector<std::string> steps = {"GetCapability", "StartJob", "SetJobConfiguration",
                                          "Cleaning",      "EndJob",   "GetStatus",
                                          "GetStatus",     "GetStatus"};
  EXPECT_EQ(channel.operations, steps);
  for (const std::string& command : channel.commands) {
    EXPECT_NE(command.find("servicetype=\"maintenance\""), std::string::npos) << command;
  }
  EXPECT_NE(channel.last("StartJob").find("<vrx:host_environment>linux<"), std::string::npos);
  EXPECT_NE(channel.last("SetJobConfiguration").find("<zirk:datetime>20"), std::string::npos);
}

TEST(Maintenance, TellsThePrinterOnlyWhatItAsksFor) {
  ScriptedPrinter channel;
  Printer printer(channel);
  ASSERT_TRUE(printer.align(kPatient));
  EXPECT_EQ(channel.last("StartJob").find("host_environment"), std::string::npos);
  EXPECT_EQ(channel.last("SetJobConfiguration").find("datetime"), std::string::npos);
  EXPECT_NE(channel.last("TestPrint").find("auto_registration"), std::string::npos);
}

TEST(Maintenance, ThatNeverEndsIsCancelled) {
  ScriptedPrinter channel;
  channel.statuses_to_the_end = 1000000;
  Printer printer(channel);
  const auto error = error_of(printer.nozzle_check(kShort));
  ASSERT_TRUE(error);
  EXPECT_EQ(error->fault, Fault::kAttention) << error->message;
  EXPECT_EQ(channel.count("CancelJob"), 1U);
}

TEST(Maintenance, WithoutPaperWaitsAndThenSaysSo) {
  ScriptedPrinter channel;
  channel.states = {
      "<zirk:status>stopped</zirk:status><zirk:status_detail>MediaEmpty</zirk:status_detail>"};
  channel.damage("TestPrint", Damage::kNg, "Suspended");
  Printer printer(channel);
  const auto error = error_of(printer.nozzle_check(kShort));
  ASSERT_TRUE(error);
  EXPECT_EQ(error->fault, Fault::kAttention) << error->message;
  EXPECT_NE(error->message.find("out of paper"), std::string::npos) << error->message;
  EXPECT_GT(channel.count("GetStatus"), 1U);
  EXPECT_EQ(channel.count("CancelJob"), 1U);
}

TEST(SetTime, GoesToTheServiceThatTakesIt) {
  constexpr const char* kTakesTime = "<zirk:datetime/>";
  for (const bool maintenance : {true, false}) {
    ScriptedPrinter channel;
    (maintenance ? channel.maintenance_capability : channel.capability) = kTakesTime;
    Printer printer(channel);
    const auto error = error_of(printer.set_time(0, kPatient));
    EXPECT_FALSE(error) << error->message;
    const std::string command = channel.last("SetJobConfiguration");
    EXPECT_NE(command.find(maintenance ? "servicetype=\"maintenance" : "servicetype=\"print"),
              std::string::npos)
        << command;
    EXPECT_TRUE(command.find("<zirk:datetime>19700101") != std::string::npos ||
                command.find("<zirk:datetime>19691231") != std::string::npos)
        << command;
    EXPECT_FALSE(channel.has_open_job());
  }
  ScriptedPrinter neither;
  Printer printer(neither);
  EXPECT_EQ(error_of(printer.set_time(0, kPatient))->fault, Fault::kUnsuitable);
  EXPECT_EQ(neither.count("StartJob"), 0U);
}

TEST(Jobs, AreListedAndCancelledById) {
  ScriptedPrinter channel;
  Printer printer(channel);
  EXPECT_EQ(printer.job_ids().value(), (std::vector<std::string>{"00000011", "00000022"}));
  for (const char* id : {"", "123", "000000011", "0000<b/>", "0000\n111", "0000 011"}) {
    EXPECT_EQ(error_of(printer.cancel(id))->fault, Fault::kBadInput) << id;
    EXPECT_EQ(error_of(printer.status_of(id))->fault, Fault::kBadInput) << id;
  }
  EXPECT_EQ(channel.operations.size(), 1U);
}

TEST(Identity, TellsWhatIsInADeviceId) {
  ScriptedPrinter channel;
  const Identity identity = Printer(channel).identity().value();
  EXPECT_TRUE(identity.takes_commands);
  EXPECT_TRUE(identity.reports_usage);
  EXPECT_TRUE(identity.has_new_protocol);
  EXPECT_FALSE(identity.is_min_p);
  EXPECT_FALSE(identity.corvel_request_version);
  EXPECT_EQ(identity.manufacturer, "Nobody");
  EXPECT_EQ(identity.model, "Scripted [2J one");
}

TEST(Identity, KnowsTheFamilies) {
  const std::string corvel = std::string("CMD:TEXT;MDL:") + CORVEL_PRINTER_LIST[7] + ";";
  EXPECT_EQ(read_device_id(corvel).corvel_request_version, 2U);
  EXPECT_FALSE(read_device_id(corvel).takes_commands);
  EXPECT_TRUE(read_device_id(std::string("MDL:") + MINP_PRINTER_LIST[0] + ";").is_min_p);
  EXPECT_TRUE(read_device_id(std::string("MDL:") + KWNP_PRINTER_LIST_14AUTUMN[28] + ";")
                  .is_kwnp_from_14_autumn);
  EXPECT_FALSE(read_device_id("").model);
}

}  // namespace
}  // namespace pxcl::client
