// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// `pxcl printer`: serves the virtual printer.

#include "cli/connection.hpp"
#include "cli/output.hpp"
#include "cli/signals.hpp"
#include "cli/text.hpp"
#include "printer/http_server.hpp"
#include "printer/profile.hpp"

namespace pxcl::cli {

namespace {

using Kind = Option::Kind;

ExitCode run(const Arguments& arguments) {
  const AwaitedSignals signals({SIGINT, SIGTERM, SIGHUP, SIGUSR1});
  const auto printer =
      make_virtual_printer(arguments.text("--profile", "office"),
                           arguments.text("--output", "pxcl-pages"), arguments.all("--fault"));
  try {
    printer::HttpServer server(*printer, static_cast<std::uint16_t>(arguments.number("--port", 0)));
    const std::string uri = filled("http://127.0.0.1:{}", server.port());
    if (arguments.has("--json")) {
      print(to_json(Value::Object{{"uri", uri}}, true) + "\n");
    } else {
      print(uri + "\n");
    }
    finish_output();
    while (signals.wait() == SIGUSR1) printer->attend();
    server.stop();
  } catch (const std::runtime_error& error) {
    throw Failure{kUsage, printable(error.what())};
  }
  return kOk;
}

}  // namespace

std::vector<Command> server_commands() {
  return {
      {"printer",
       "Serve a virtual printer on this machine, until interrupted; SIGUSR1 attends to it",
       "  pxcl printer --profile photo --port 8080 --output pages\n"
       "  pxcl printer --fault 'paper-out at page 2' --fault 'drip reply to GetStatus every 5 ms'",
       {{.name = "--profile",
         .help = "Name of a profile, or its JSON file; office unless given",
         .choices = profile_choices},
        {.name = "--port",
         .kind = Kind::kNumber,
         .help = "Port, any free one unless given",
         .least = 0,
         .most = 65535},
        {.name = "--output", .help = "Folder for the pages as PNG, pxcl-pages unless given"},
        {.name = "--fault",
         .help = "What goes wrong; may be given more than once",
         .repeated = true},
        json_option()},
       run},
  };
}

}  // namespace pxcl::cli
