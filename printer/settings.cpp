// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "printer/settings.hpp"

#include <algorithm>

namespace pxcl::printer {

namespace {

bool lists(const std::vector<std::string>& words, std::string_view word) {
  return std::ranges::find(words, word) != words.end();
}

Refusal not_offered(std::string_view what) {
  return {"ParameterError", std::string(what) + " is not what the printer announced"};
}

// A parameter of a command, if it is there, is one of the announced words.
std::optional<Refusal> refuse_unlisted(const Command& command, std::string_view name,
                                       const std::vector<std::string>& announced) {
  const Parameter* const parameter = command.find(name);
  if (parameter == nullptr || lists(announced, parameter->text)) return std::nullopt;
  return not_offered(name);
}

// The choices of a media type, which come in the type's own namespace.
std::optional<Refusal> refuse_choice(const Command& command, std::string_view name,
                                     const MediaType& type,
                                     const std::vector<std::string>& choices) {
  const Parameter* const parameter = command.find(name);
  if (parameter != nullptr && parameter->space != type.space) return not_offered(name);
  return refuse_unlisted(command, name, choices);
}

std::optional<Refusal> refuse_choices(const Command& command, const MediaType& type) {
  if (auto refusal = refuse_choice(command, "borderlessprint", type, type.borderless)) {
    return refusal;
  }
  if (auto refusal = refuse_choice(command, "printcolormode", type, type.color)) return refusal;
  return refuse_choice(command, "duplexprint", type, type.duplex);
}

// The size has an area for the way of printing.
std::optional<Refusal> refuse_area(const Command& command, const PaperSize& size) {
  const bool is_borderless = command.text("borderlessprint") == "ON";
  if (is_borderless ? !size.borderless : !size.border) return not_offered("borderlessprint");
  if (command.text("duplexprint") == "ON" && !size.duplex) return not_offered("duplexprint");
  return std::nullopt;
}

}  // namespace

std::optional<Refusal> refuse_settings(const Profile& profile, const Command& command) {
  const PaperSize* const size = find_size(profile, command.text("papersize"));
  const MediaType* const type = find_type(profile, command.text("papertype"));
  if (size == nullptr || command.find("papersize")->space != size->space) {
    return not_offered("papersize");
  }
  if (type == nullptr || command.find("papertype")->space != type->space) {
    return not_offered("papertype");
  }
  if (auto refusal = refuse_choices(command, *type)) return refusal;
  if (auto refusal = refuse_area(command, *size)) return refusal;
  if (command.find("stapleside") != nullptr && command.text("duplexprint") != "ON") {
    return not_offered("stapleside");
  }
  return refuse_unlisted(command, "stapleside", profile.print.staple_sides);
}

std::optional<Refusal> refuse_job_settings(const Profile& profile, const Command& command) {
  const bool is_print = command.service == Service::kPrint;
  const bool has_clock = is_print ? profile.print.date_time : profile.maintenance.date_time;
  if (command.find("datetime") != nullptr && !has_clock) return not_offered("datetime");
  // "none" is what every job says, to printers without the choice too.
  if (command.text("mismatch_mode") == "auto") {
    return refuse_unlisted(command, "mismatch_mode", profile.print.mismatch_modes);
  }
  return refuse_unlisted(command, "device_side_guide", profile.print.disc_guide);
}

std::optional<Refusal> refuse_page_settings(const Profile& profile, const Command& command) {
  if (auto refusal = refuse_unlisted(command, "nextpage", profile.print.next_page)) return refusal;
  return refuse_unlisted(command, "printpreparation", profile.print.print_preparation);
}

std::optional<Refusal> refuse_start(const Profile& profile, const Command& command) {
  const std::string_view host = command.text("host_environment");
  if (host.empty() || command.service == Service::kDevice) return std::nullopt;
  const auto& hosts =
      command.service == Service::kPrint ? profile.print.hosts : profile.maintenance.hosts;
  // Whoever is not listed calls itself "other".
  if (hosts.empty() || (host != "other" && !lists(hosts, host))) {
    return not_offered("host_environment");
  }
  return std::nullopt;
}

}  // namespace pxcl::printer
