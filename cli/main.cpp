// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <clocale>
#include <exception>
#include <string_view>

#include "cli/options.hpp"
#include "cli/output.hpp"
#include "cli/signals.hpp"

namespace pxcl::cli {

namespace {

ExitCode run(int argc, char** argv) {
  const auto asked = read_command_line(argc, argv);
  ExitCode code = kOk;
  if (const auto* text = std::get_if<std::string>(&asked)) {
    print(*text);
  } else {
    const Invocation& invocation = std::get<Invocation>(asked);
    code = invocation.command->run(invocation.arguments);
  }
  finish_output();
  return code;
}

// A command line that can't be read may still have asked for JSON.
bool wants_json(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    if (argv[i] == std::string_view("--json")) return true;
  }
  return false;
}

ExitCode report(const Failure& failure, bool json) {
  complain(failure.message);
  if (!json || failure.code == kOutputFailed) return failure.code;
  try {
    print(to_json(Value::Object{{"error", failure.message}, {"exit_code", int{failure.code}}}) +
          "\n");
    finish_output();
  } catch (const Failure& unwritten) {
    complain(unwritten.message);
  }
  return failure.code;
}

ExitCode run_and_report(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const Failure& failure) {
    return report(failure, wants_json(argc, argv));
  } catch (const std::exception& error) {  // memory, the standard library
    return report({kUsage, error.what()}, wants_json(argc, argv));
  }
}

}  // namespace

}  // namespace pxcl::cli

int main(int argc, char** argv) {
  std::setlocale(LC_CTYPE, "C.UTF-8");
  pxcl::cli::catch_signals();
  return pxcl::cli::run_and_report(argc, argv);
}
