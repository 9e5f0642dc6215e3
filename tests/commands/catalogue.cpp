// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "catalogue.hpp"

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

constexpr const char* kTitle = "Sheet 3 <of> 5 & more";

using enum Kind;

// A builder with its arguments; b, s and l are buffer, size and length.
#define CALL(...) [=](Buffer b, Size s, Length l) { return CLSS_MakeCommand_##__VA_ARGS__; }

Call configure(ClssConfigurationPaper paper, ClssConfigurationMode mode) {
  return CALL(SetConfigurationNS(paper, mode, kJob, nullptr, 0, b, s, l));
}

Command configure_as_told(std::string file, ClssConfigurationPaper paper,
                          ClssConfigurationMode mode) {
  return {
      file, kFormatted,
      CALL(SetConfigurationNS(paper, mode, kJob, kCapability.data(), kCapability.size(), b, s, l)),
      true};
}

constexpr std::uint16_t kLetter = 1, kA3 = 5, kA4 = 4, kStationery = 1, kPhotographic = 12;
constexpr ClssConfigurationPaper kPlain = {2, kA4, kStationery, 1};
constexpr ClssConfigurationPaper kBorderless = {2, kA4, kStationery, 2};

std::vector<Command> list_all() {
  return {
      {"GetCapability_print", kFixed, CALL(GetCapability(b, s, l, 0))},
      {"GetCapability_device", kFixed, CALL(GetCapability(b, s, l, 1))},
      {"GetCapability_maintenance", kFixed, CALL(GetCapability(b, s, l, 3))},
      {"GetConfiguration_print", kFixed, CALL(GetConfiguration(b, s, l, 0))},
      {"GetConfiguration_device", kFixed, CALL(GetConfiguration(b, s, l, 1))},
      {"PowerOff", kFixed, CLSS_MakeCommand_PowerOff},
      {"FRomUpMode", kFixed, CLSS_MakeCommand_FRomUpMode},
      {"Handoveroff", kFixed, CLSS_MakeCommand_Handoveroff},
      {"GetStatusDevice", kFixed, CLSS_MakeCommand_GetStatusDevice},
      {"GetJobIDList", kFixed, CLSS_MakeCommand_GetJobIDList},
      {"GetStatus_print", kFixed, CALL(GetStatusPrint(nullptr, b, s, l))},
      {"GetStatus_maintenance", kFixed, CALL(GetStatusMaintenance(nullptr, b, s, l))},

      {"StartJob_0", kFormatted, CALL(StartJob(kJob, "1", b, s, l))},
      {"StartJob_1", kFormatted, CALL(StartJob2(1, kJob, "1", b, s, l))},
      {"StartJob_2", kFormatted, CALL(StartJob2(2, kJob, "1", b, s, l))},
      {"StartJob_3", kFormatted, CALL(StartJob2(3, kJob, "1", b, s, l))},
      {"StartJob_0_described", kFormatted, CALL(StartJob3(3, 0, kTitle, 0, kJob, "1", b, s, l))},
      {"StartJob_1_described", kFormatted, CALL(StartJob3(3, 0, kTitle, 1, kJob, "1", b, s, l))},
      {"StartJob_2_described", kFormatted, CALL(StartJob3(3, 0, kTitle, 2, kJob, "1", b, s, l))},
      {"StartJob_3_described", kFormatted, CALL(StartJob3(3, 0, kTitle, 3, kJob, "1", b, s, l))},
      {"StartJob_0_host", kFormatted, CALL(StartJob3(2, 1, kTitle, 0, kJob, "1", b, s, l))},
      {"StartJob_1_host", kFormatted, CALL(StartJob3(2, 2, kTitle, 1, kJob, "1", b, s, l))},
      {"StartJob_2_host", kFormatted, CALL(StartJob3(2, 3, kTitle, 2, kJob, "1", b, s, l))},
      {"StartJob_3_host", kFormatted, CALL(StartJob3(2, 7, kTitle, 3, kJob, "1", b, s, l))},
      {"EndJob_print", kFormatted, CALL(EndJob(0, kJob, b, s, l))},
      {"EndJob_fax", kFormatted, CALL(EndJob(9, kJob, b, s, l))},
      {"CancelJob_maintenance", kFormatted, CALL(CancelJob(3, kJob, b, s, l))},
      {"ModeShift", kFormatted, CALL(ModeShift(1, kJob, "1", b, s, l))},

      {"SendDataJPEG", kKeyed, CALL(SendDataJPEG(kJob, 1234, b, s, l))},
      {"SendDataJPEGPAGE", kKeyed, CALL(SendDataJPEGPAGE(kJob, 2147483647, b, s, l))},
      // The printer reads the size as a signed number.
      {"SendDataPWGRaster", kKeyed, CALL(SendDataPWGRaster(kJob, 3000000000, b, s, l))},
      {"SendDataRAW", kKeyed, CALL(SendDataRAW(kJob, 100, 50, b, s, l))},
      {"SetPageConfiguration", kKeyed, CALL(SetPageConfiguration(kJob, 0, b, s, l))},
      {"SetPageConfiguration_next", kKeyed, CALL(SetPageConfiguration2(kJob, 1, 0, b, s, l))},
      {"SetPageConfiguration_preparation", kKeyed,
       CALL(SetPageConfiguration2(kJob, 0, 2, b, s, l))},
      {"SetPageConfiguration_both", kKeyed, CALL(SetPageConfiguration2(kJob, 2, 1, b, s, l))},
      {"SetJobConfiguration", kKeyed, CALL(SetJobConfiguration(kJob, nullptr, 0, b, s, l))},
      {"SetJobConfiguration_time", kKeyed, CALL(SetTime(kJob, kTime, b, s, l))},
      {"SetJobConfiguration_guide", kKeyed, CALL(SetJobConfiguration(kJob, nullptr, 1, b, s, l))},
      {"SetJobConfiguration_both", kKeyed, CALL(SetJobConfiguration(kJob, kTime, 2, b, s, l))},
      {"GetStatus_print_job", kKeyed, CALL(GetStatusPrint(kJob, b, s, l))},
      {"GetStatus_maintenance_job", kKeyed, CALL(GetStatusMaintenance(kJob, b, s, l))},

      {"SetConfiguration", kFormatted, configure(kPlain, {kAbsent, kAbsent})},
      {"SetConfiguration_color", kFormatted, configure(kPlain, {2, kAbsent})},
      {"SetConfiguration_duplex", kFormatted, configure(kPlain, {kAbsent, 2})},
      {"SetConfiguration_staple", kFormatted, configure(kPlain, {kAbsent, 4})},
      {"SetConfiguration_color_duplex", kFormatted, configure(kBorderless, {1, 1})},
      {"SetConfiguration_color_staple", kFormatted, configure(kBorderless, {4, 3})},
      {"SetConfiguration_unused_rows", kFormatted, configure({2, 30, 19, 1}, {kAbsent, kAbsent})},
      configure_as_told("SetConfiguration_schema_size", kPlain, {kAbsent, kAbsent}),
      configure_as_told("SetConfiguration_all_namespaces", {2, kA4, kPhotographic, 2}, {1, 4}),
      configure_as_told("SetConfiguration_vendor", {2, kA3, kPhotographic, 2}, {1, 1}),
      configure_as_told("SetConfiguration_common", {2, kLetter, kStationery, 1},
                        {kAbsent, kAbsent}),
      {"SetConfiguration_device", kFormatted, CALL(SetConfigurationDevice({1, 2}, kJob, b, s, l))},

      {"SetJobConfiguration_Maintenance", kMaintenance,
       CALL(SetJobConfiguration_Maintenance(kJob, nullptr, b, s, l))},
      {"SetJobConfiguration_Maintenance_time", kMaintenance,
       CALL(SetJobConfiguration_Maintenance(kJob, kTime, b, s, l))},
      {"TestPrint", kMaintenance, CALL(TestPrint(kJob, b, s, l))},
      {"AutoRegistration", kMaintenance, CALL(AutoRegistration(kJob, b, s, l))},
      {"Cleaning", kMaintenance, CALL(Cleaning(kJob, b, s, l))},
  };
}

}  // namespace

const std::vector<Command>& catalogue() {
  static const std::vector<Command> all = list_all();
  return all;
}

Made make(const Call& call, Size size) {
  std::string buffer(4096, kFiller);
  std::uint64_t length = kUnwritten;
  const std::int32_t status = call(buffer.data(), size, &length);
  return {status, length, buffer.substr(0, status == 0 ? length : 0), buffer};
}

}  // namespace pxcl_test
