// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The two texts that a virtual printer is made from. The first part of the input is a profile, the others are faults. What
// is taken makes a printer that answers.

#include <optional>
#include <stdexcept>
#include <string>

#include "printer/faults.hpp"
#include "printer/virtual_printer.hpp"
#include "pxcl.h"
#include "support.hpp"

namespace {

using namespace pxcl;
using fuzz::require;
using printer::FaultKind;

std::optional<printer::Profile> read_profile(std::string_view json) {
  try {
    return printer::profile_from_json(json, "fuzz");
  } catch (const std::runtime_error& error) {
    require(std::string_view(error.what()).starts_with("The profile fuzz"));
    return std::nullopt;
  }
}

bool is_fault(std::string_view sentence) {
  try {
    const printer::Fault fault = printer::read_fault(sentence);
    const bool isTrouble =
        fault.kind == FaultKind::kTroubleAtPage || fault.kind == FaultKind::kTroubleAfterSends;
    require(fault.operation.empty() == isTrouble);
    return true;
  } catch (const std::invalid_argument& error) {
    // A sentence with a zero byte, which no command line has, ends its message early.
    require(sentence.find('\0') != sentence.npos || std::string_view(error.what()).ends_with('.'));
    return false;
  }
}

std::string capability_command(std::int32_t service) {
  std::string command(1000, '\0');
  std::uint64_t length = 0;
  require(CLSS_MakeCommand_GetCapability(command.data(), command.size(), &length, service) == 0);
  return command.substr(0, length);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const fuzz::Folder folder;
  const auto parts = fuzz::parts_of(fuzz::text_of(data, size));
  std::vector<std::string> faults(parts.begin() + 1, parts.end());
  std::erase_if(faults, [](const std::string& sentence) { return !is_fault(sentence); });
  const std::optional<printer::Profile> profile = read_profile(parts[0]);
  if (!profile) return 0;
  const std::string print = capability_command(0), maintenance = capability_command(3);
  printer::VirtualPrinter sound(*profile, folder.path());
  for (const std::string& command : {print, maintenance}) {
    require(printer::read_xml(sound.answer(command).bytes).root.has_value());
  }
  printer::VirtualPrinter faulty(*profile, folder.path(), faults);
  constexpr std::size_t kLongestAnswer = 11'000'000;
  require(faulty.answer(print).bytes.size() < kLongestAnswer);
  return 0;
}
