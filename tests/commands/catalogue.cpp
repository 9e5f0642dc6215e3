// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "catalogue.hpp"

#include "commands.h"

namespace pxcl_test {

const std::string kCapability =
    R"(<?xml version="1.0" encoding="utf-8"?><cmd xmlns:zirk="http://www.example.com/ns/cmd/2008/07/common/")"
    R"( xmlns:vrx="http://www.example.com/ns/cmd/2008/07/vaslo/")"
    R"( xmlns:tolm="http://www.example.com/ns/wdp/2008/01/print/"><zirk:contents>)"
    R"(<zirk:operation>GetCapabilityResponse</zirk:operation><zirk:param_set servicetype="print">)"
    R"(<zirk:response>OK</zirk:response>)"
    R"(<zirk:papersize>na_letter_8.5x11in</zirk:papersize>)"
    R"(<tolm:papersize>iso_a4_210x297mm</tolm:papersize>)"
    R"(<vrx:papersize>iso_a3_297x420mm</vrx:papersize>)"
    R"(<zirk:papertype>stationery</zirk:papertype><vrx:papertype>photographic</vrx:papertype>)"
    R"(</zirk:param_set></zirk:contents></cmd>)";

namespace {

constexpr const char* kJob = "00000042";
constexpr const char* kTime = "20240102030405";
constexpr const char* kTitle = "Sheet 3 <of> 5 & more";
constexpr std::uint16_t kAbsent = CLSS_SETTING_ABSENT;

// A builder with its arguments; b, s and l are buffer, size and length.
#define CALL(...) \
  [=](char* b, std::uint64_t s, std::uint64_t* l) { return CLSS_MakeCommand_##__VA_ARGS__; }

void add_fixed(std::vector<Command>& all) {
  const auto add = [&](std::string file, std::string builder, auto call) {
    all.push_back({file, builder, Kind::kFixed, call});
  };
  const auto capability = [](std::int32_t selector) {
    return CALL(GetCapability(b, s, l, selector));
  };
  const auto configuration = [](std::int32_t selector) {
    return CALL(GetConfiguration(b, s, l, selector));
  };
  add("GetCapability_print", "GetCapability", capability(0));
  add("GetCapability_device", "GetCapability", capability(1));
  add("GetCapability_maintenance", "GetCapability", capability(3));
  add("GetConfiguration_print", "GetConfiguration", configuration(0));
  add("GetConfiguration_device", "GetConfiguration", configuration(1));
  add("PowerOff", "PowerOff", CLSS_MakeCommand_PowerOff);
  add("FRomUpMode", "FRomUpMode", CLSS_MakeCommand_FRomUpMode);
  add("Handoveroff", "Handoveroff", CLSS_MakeCommand_Handoveroff);
  add("GetStatusDevice", "GetStatusDevice", CLSS_MakeCommand_GetStatusDevice);
  add("GetJobIDList", "GetJobIDList", CLSS_MakeCommand_GetJobIDList);
  add("GetStatus_print", "GetStatusPrint", CALL(GetStatusPrint(nullptr, b, s, l)));
  add("GetStatus_maintenance", "GetStatusMaintenance",
      CALL(GetStatusMaintenance(nullptr, b, s, l)));
}

void add_jobs(std::vector<Command>& all) {
  const auto add = [&](std::string file, std::string builder, auto call) {
    all.push_back({file, builder, Kind::kFormatted, call});
  };
  constexpr std::uint16_t kHosts[] = {1, 2, 3, 7};
  for (std::int16_t mode = 0; mode < 4; ++mode) {
    const std::string name = "StartJob_" + std::to_string(mode);
    add(name, mode == 0 ? "StartJob" : "StartJob2",
        [=](char* b, std::uint64_t s, std::uint64_t* l) {
          return mode == 0 ? CLSS_MakeCommand_StartJob(kJob, "1", b, s, l)
                           : CLSS_MakeCommand_StartJob2(mode, kJob, "1", b, s, l);
        });
    add(name + "_described", "StartJob3", CALL(StartJob3(3, 0, kTitle, mode, kJob, "1", b, s, l)));
    add(name + "_host", "StartJob3",
        CALL(StartJob3(2, kHosts[mode], kTitle, mode, kJob, "1", b, s, l)));
  }
  add("EndJob_print", "EndJob", CALL(EndJob(0, kJob, b, s, l)));
  add("EndJob_fax", "EndJob", CALL(EndJob(9, kJob, b, s, l)));
  add("CancelJob_maintenance", "CancelJob", CALL(CancelJob(3, kJob, b, s, l)));
  add("ModeShift", "ModeShift", CALL(ModeShift(1, kJob, "1", b, s, l)));
}

void add_keyed(std::vector<Command>& all) {
  const auto add = [&](std::string file, std::string builder, auto call) {
    all.push_back({file, builder, Kind::kKeyed, call});
  };
  const auto page = [](std::uint16_t nextPage, std::uint16_t preparation) {
    return CALL(SetPageConfiguration2(kJob, nextPage, preparation, b, s, l));
  };
  const auto job = [](const char* time, std::uint16_t guide) {
    return CALL(SetJobConfiguration(kJob, time, guide, b, s, l));
  };
  add("SendDataJPEG", "SendDataJPEG", CALL(SendDataJPEG(kJob, 1234, b, s, l)));
  add("SendDataJPEGPAGE", "SendDataJPEGPAGE", CALL(SendDataJPEGPAGE(kJob, 2147483647, b, s, l)));
  // The printer reads the size as a signed number.
  add("SendDataPWGRaster", "SendDataPWGRaster", CALL(SendDataPWGRaster(kJob, 3000000000, b, s, l)));
  add("SendDataRAW", "SendDataRAW", CALL(SendDataRAW(kJob, 100, 50, b, s, l)));
  add("SetPageConfiguration", "SetPageConfiguration", CALL(SetPageConfiguration(kJob, 0, b, s, l)));
  add("SetPageConfiguration_next", "SetPageConfiguration2", page(1, 0));
  add("SetPageConfiguration_preparation", "SetPageConfiguration2", page(0, 2));
  add("SetPageConfiguration_both", "SetPageConfiguration2", page(2, 1));
  add("SetJobConfiguration", "SetJobConfiguration", job(nullptr, 0));
  add("SetJobConfiguration_time", "SetTime", CALL(SetTime(kJob, kTime, b, s, l)));
  add("SetJobConfiguration_guide", "SetJobConfiguration", job(nullptr, 1));
  add("SetJobConfiguration_both", "SetJobConfiguration", job(kTime, 2));
  add("GetStatus_print_job", "GetStatusPrint", CALL(GetStatusPrint(kJob, b, s, l)));
  add("GetStatus_maintenance_job", "GetStatusMaintenance",
      CALL(GetStatusMaintenance(kJob, b, s, l)));
}

void add_configurations(std::vector<Command>& all) {
  const auto add = [&](std::string file, ClssConfigurationPaper paper, ClssConfigurationMode mode,
                       bool replied = false) {
    const auto call = [=](char* b, std::uint64_t s, std::uint64_t* l) {
      return CLSS_MakeCommand_SetConfigurationNS(paper, mode, kJob,
                                                 replied ? kCapability.data() : nullptr,
                                                 replied ? kCapability.size() : 0, b, s, l);
    };
    all.push_back({file, "SetConfigurationNS", Kind::kFormatted, call, replied});
  };
  constexpr std::uint16_t kLetter = 1, kA3 = 5, kA4 = 4, kStationery = 1, kPhotographic = 12;
  const ClssConfigurationPaper plain = {2, kA4, kStationery, 1};
  const ClssConfigurationPaper borderless = {2, kA4, kStationery, 2};
  add("SetConfiguration", plain, {kAbsent, kAbsent});
  add("SetConfiguration_color", plain, {2, kAbsent});
  add("SetConfiguration_duplex", plain, {kAbsent, 2});
  add("SetConfiguration_staple", plain, {kAbsent, 4});
  add("SetConfiguration_color_duplex", borderless, {1, 1});
  add("SetConfiguration_color_staple", borderless, {4, 3});
  add("SetConfiguration_schema_size", plain, {kAbsent, kAbsent}, true);
  add("SetConfiguration_all_namespaces", {2, kA4, kPhotographic, 2}, {1, 4}, true);
  add("SetConfiguration_vendor", {2, kA3, kPhotographic, 2}, {1, 1}, true);
  add("SetConfiguration_common", {2, kLetter, kStationery, 1}, {kAbsent, kAbsent}, true);
  add("SetConfiguration_unused_rows", {2, 30, 19, 1}, {kAbsent, kAbsent});
  all.push_back({"SetConfiguration_device", "SetConfigurationDevice", Kind::kFormatted,
                 CALL(SetConfigurationDevice({1, 2}, kJob, b, s, l))});
}

void add_maintenance(std::vector<Command>& all) {
  const auto add = [&](std::string file, std::string builder, auto call) {
    all.push_back({file, builder, Kind::kMaintenance, call});
  };
  const auto configure = [](const char* time) {
    return CALL(SetJobConfiguration_Maintenance(kJob, time, b, s, l));
  };
  add("SetJobConfiguration_Maintenance", "SetJobConfiguration_Maintenance", configure(nullptr));
  add("SetJobConfiguration_Maintenance_time", "SetJobConfiguration_Maintenance", configure(kTime));
  add("TestPrint", "TestPrint", CALL(TestPrint(kJob, b, s, l)));
  add("AutoRegistration", "AutoRegistration", CALL(AutoRegistration(kJob, b, s, l)));
  add("Cleaning", "Cleaning", CALL(Cleaning(kJob, b, s, l)));
}

std::vector<Command> list_all() {
  std::vector<Command> all;
  add_fixed(all);
  add_jobs(all);
  add_keyed(all);
  add_configurations(all);
  add_maintenance(all);
  return all;
}

}  // namespace

const std::vector<Command>& catalogue() {
  static const std::vector<Command> all = list_all();
  return all;
}

Made make(const Command& command) {
  std::string buffer(4096, '\x5A');
  std::uint64_t length = kUnwritten;
  const std::int32_t status = command.make(buffer.data(), buffer.size(), &length);
  return {status, length, buffer.substr(0, status == 0 ? length : 0)};
}

}  // namespace pxcl_test
