// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// A session with a virtual printer. The first byte of the input chooses the profile, and whether there is trouble with the
// printer; the parts behind it are the requests, and at an empty one a person comes. Whatever was asked, the job that is open
// then can be cancelled.

#include <string>
#include <utility>

#include "client/build.hpp"
#include "printer/virtual_printer.hpp"
#include "pxcl.h"
#include "support.hpp"

namespace {

using namespace pxcl;
using fuzz::require;
using printer::Answer;
using printer::Profile;
using printer::VirtualPrinter;

constexpr std::uint16_t kPrint = 0, kDevice = 1, kMaintenance = 3;

// A reply that is XML in every respect, or a sentence that says why there is none; nothing once the printer is off.
std::string check(Answer answer) {
  if (answer.kind == Answer::Kind::kClose) {
    require(answer.bytes.empty());
  } else if (answer.bad_request) {
    require(answer.bytes.ends_with('.') && answer.bytes.size() < 1000);
  } else {
    require(printer::document_length(answer.bytes) == answer.bytes.size());
    require(printer::read_xml(answer.bytes).root.has_value());
  }
  return std::move(answer.bytes);
}

// The job of a service, as its status names it.
std::string open_job(VirtualPrinter& printer, std::uint16_t service) {
  const auto status = client::build_command([=](auto... buffer) {
    if (service == kDevice) return CLSS_MakeCommand_GetStatusDevice(buffer...);
    return service == kPrint ? CLSS_MakeCommand_GetStatusPrint(nullptr, buffer...)
                             : CLSS_MakeCommand_GetStatusMaintenance(nullptr, buffer...);
  });
  const std::string reply = check(printer.answer(status.value()));
  constexpr std::string_view kMark = "<zirk:jobstatus><zirk:jobID>";
  const std::size_t at = reply.find(kMark);
  return at == reply.npos ? "" : reply.substr(at + kMark.size(), 8);
}

void cancel(VirtualPrinter& printer) {
  for (const std::uint16_t service : {kPrint, kDevice, kMaintenance}) {
    const std::string id = open_job(printer, service);
    if (id.empty()) continue;
    const auto command = client::build_command(
        [&](auto... buffer) { return CLSS_MakeCommand_CancelJob(service, id.c_str(), buffer...); });
    check(printer.answer(command.value()));
  }
  require(printer.is_idle());
}

std::vector<Profile> all_profiles() {
  std::vector<Profile> profiles;
  for (const std::string& name : printer::profile_names()) {
    profiles.push_back(printer::profile_named(name));
  }
  return profiles;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const fuzz::Folder folder;
  static const std::vector<Profile> profiles = all_profiles();
  if (size == 0) return 0;
  std::vector<std::string> troubles;
  if (data[0] >= 0x80) troubles = {"paper-out at page 2", "ink-out after 3 sends once"};
  const Profile& profile = profiles[(data[0] & 0x7F) % profiles.size()];
  VirtualPrinter printer(profile, folder.path(), troubles);
  for (const std::string_view request : fuzz::parts_of(fuzz::text_of(data + 1, size - 1))) {
    if (request.empty()) printer.attend();
    check(printer.answer(request));
  }
  cancel(printer);
  for (const auto& page : printer.pages()) require(std::filesystem::remove(page));
  require(std::filesystem::is_empty(folder.path()));
  return 0;
}
