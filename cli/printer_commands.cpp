// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The commands that ask and look after a printer.

#include <unistd.h>

#include <ctime>

#include "cli/connection.hpp"
#include "cli/input.hpp"
#include "cli/output.hpp"
#include "cli/signals.hpp"
#include "cli/values.hpp"
#include "client/identity.hpp"

namespace pxcl::cli {

namespace {

using Kind = Option::Kind;
using Object = Value::Object;
using client::Result;

// ---- Questions ----

ExitCode severity(const client::Status& status) {
  if (client::needs_attention(status)) return kAttention;
  const bool ink = status.inks_fine == false ||
                   (status.detail && *status.detail == client::kMarkerSupplyAttention);
  return ink ? kWarning : kOk;
}

Value status_value(const client::Status& status) {
  Object object = *value_of(status).as<Object>();
  const bool waits = client::needs_attention(status);
  object.push_back({"needs_attention", waits});
  if (waits) object.push_back({"attention", client::attention_sentence(status)});
  return object;
}

ExitCode watch(const Arguments& arguments, Connection& connection) {
  const std::chrono::seconds interval(arguments.number("--interval", 2));
  const bool json = arguments.has("--json");
  const bool terminal = isatty(STDOUT_FILENO) == 1;
  do {
    const Value value = status_value(value_or_fail(connection.printer().status()));
    if (json) {
      print(to_json(value, true) + "\n");
    } else {
      print((terminal ? "\x1B[H\x1B[J" : "") + to_tables(value) + (terminal ? "" : "\n"));
    }
    finish_output();
  } while (client::pause_for(interval, interrupted()));
  return kInterrupted;
}

ExitCode status(const Arguments& arguments) {
  Connection connection(arguments);
  if (arguments.has("--watch")) return watch(arguments, connection);
  const client::Status answer = value_or_fail(connection.printer().status());
  connection.close_trace();
  show(arguments, status_value(answer));
  return severity(answer);
}

ExitCode capability(const Arguments& arguments) {
  Connection connection(arguments);
  Value value;
  if (arguments.row("--service", 0) == 0) {
    const client::PrintCapability answer = value_or_fail(connection.printer().print_capability());
    value = arguments.has("--json") ? value_of(answer) : summary_of(answer);
  } else {
    value = value_of(value_or_fail(connection.printer().maintenance_capability()));
  }
  connection.close_trace();
  show(arguments, value);
  return kOk;
}

ExitCode jobs(const Arguments& arguments) {
  Connection connection(arguments);
  const std::vector<std::string> ids = value_or_fail(connection.printer().job_ids());
  connection.close_trace();
  show(arguments, Object{{"jobs", list_of_jobs(ids)}});
  return kOk;
}

// Without a text it is the printer's own.
ExitCode device_id(const Arguments& arguments) {
  if (arguments.has("TEXT")) {
    const std::string text = arguments.text("TEXT");
    show(arguments, value_of(client::read_device_id(text == "-" ? read_input(text) : text)));
    return kOk;
  }
  Connection connection(arguments);
  const client::Identity identity = value_or_fail(connection.printer().identity());
  show(arguments, value_of(identity));
  return kOk;
}

// ---- Orders ----

// What was done is told as a sentence, or as JSON.
void confirm(const Arguments& arguments, const std::string& sentence) {
  if (arguments.has("--json")) {
    show(arguments, Object{{"done", sentence}});
  } else {
    print(sentence + "\n");
  }
}

ExitCode cancel(const Arguments& arguments) {
  Connection connection(arguments);
  succeed_or_fail(connection.printer().cancel(arguments.text("JOBID")));
  connection.close_trace();
  confirm(arguments, "The job is cancelled.");
  return kOk;
}

ExitCode power_off(const Arguments& arguments) {
  Connection connection(arguments);
  succeed_or_fail(connection.printer().power_off());
  connection.close_trace();
  confirm(arguments, "The printer switches itself off.");
  return kOk;
}

client::MaintenanceLimits limits(const Arguments& arguments) {
  client::MaintenanceLimits limits;
  limits.completion = std::chrono::seconds(arguments.number("--wait", 300));
  limits.cancelled = interrupted();
  return limits;
}

ExitCode set_time(const Arguments& arguments) {
  Connection connection(arguments);
  succeed_or_fail(connection.printer().set_time(std::time(nullptr), limits(arguments)));
  connection.close_trace();
  confirm(arguments, "The printer's clock is set.");
  return kOk;
}

using Maintenance = Result<void> (client::Printer::*)(const client::MaintenanceLimits&);

template <Maintenance maintain>
ExitCode run_maintenance(const Arguments& arguments, const std::string& sentence) {
  Connection connection(arguments);
  succeed_or_fail((connection.printer().*maintain)(limits(arguments)));
  connection.close_trace();
  confirm(arguments, sentence);
  return kOk;
}

ExitCode clean(const Arguments& arguments) {
  return run_maintenance<&client::Printer::clean>(arguments, "The print heads are clean.");
}

ExitCode nozzle_check(const Arguments& arguments) {
  return run_maintenance<&client::Printer::nozzle_check>(arguments,
                                                         "The nozzle check pattern is printed.");
}

ExitCode align(const Arguments& arguments) {
  return run_maintenance<&client::Printer::align>(arguments, "The print heads are aligned.");
}

// ---- The table ----

Choices services_with_answer() {
  return {{"print", 0}, {"maintenance", 3}};
}

std::vector<Command> questions() {
  return {
      {"status", "Show what the printer is doing, its paper and its inks",
       "  pxcl status --printer http://localhost:8080\n"
       "  pxcl status --watch --interval 5 --json",
       with_connection({{.name = "--watch", .kind = Kind::kFlag, .help = "Go on until interrupted"},
                        {.name = "--interval",
                         .kind = Kind::kNumber,
                         .help = "Seconds from look to look, 2 unless given",
                         .least = 1,
                         .most = 86'400}}),
       status},
      {"capability", "Show what the printer can do",
       "  pxcl capability --printer virtual:photo\n"
       "  pxcl capability --service maintenance --json",
       with_connection({{.name = "--service",
                         .kind = Kind::kKeyword,
                         .help = "Which service, print unless given",
                         .choices = services_with_answer}}),
       capability},
      {"jobs", "List the print jobs that the printer knows",
       "  pxcl jobs --printer http://localhost:8080", with_connection({}), jobs},
      {"device-id", "Tell what a printer is by its IEEE 1284 device ID",
       "  pxcl device-id 'MFG:Acme;MDL:Q1;CMD:ZIRK,NOLP;SOJ:NOLP;'\n"
       "  pxcl device-id --printer virtual:office --json",
       with_connection({{.name = "TEXT",
                         .help = "The device ID, - reads standard input; else the printer's own"}}),
       device_id},
  };
}

std::vector<Command> orders() {
  const Option wait = {.name = "--wait",
                       .kind = Kind::kNumber,
                       .help = "Seconds until it is given up, 300 unless given",
                       .least = 1,
                       .most = 86'400};
  const auto example = [](std::string name) {
    return "  pxcl " + name + " --printer http://localhost:8080";
  };
  return {
      {"cancel", "Cancel a print job", "  pxcl cancel 00000042 --printer http://localhost:8080",
       with_connection(
           {{.name = "JOBID", .help = "ID of the job, see pxcl jobs", .required = true}}),
       cancel},
      {"clean", "Clean the print heads", example("clean"), with_connection({wait}), clean},
      {"nozzle-check", "Print a nozzle check pattern", example("nozzle-check"),
       with_connection({wait}), nozzle_check},
      {"align", "Align the print heads", example("align"), with_connection({wait}), align},
      {"set-time", "Set the printer's clock to the local time", example("set-time"),
       with_connection({wait}), set_time},
      {"power-off", "Switch the printer off", example("power-off"), with_connection({}), power_off},
  };
}

}  // namespace

std::vector<Command> printer_commands() {
  std::vector<Command> commands = questions();
  for (Command& command : orders()) commands.push_back(std::move(command));
  return commands;
}

}  // namespace pxcl::cli
