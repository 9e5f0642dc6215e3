// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "commands/buffer.hpp"

namespace pxcl::commands {
namespace {

// What a selector asks for.
struct Selection {
  i32 selector;
  Document document;
};

i32 copy_selected(std::span<const Selection> selections, i32 selector, const Output& out) {
  for (const Selection& selection : selections) {
    if (selection.selector == selector) return copy_command(selection.document, out);
  }
  return CLSS_COMMAND_BAD_ARGUMENT;
}

}  // namespace
}  // namespace pxcl::commands

using namespace pxcl;
using namespace pxcl::commands;

// clang-format off
#define GET_CAPABILITY(servicetype)                          \
  PXCL_HEAD                                                  \
    "<zirk:contents>"                                        \
      "<zirk:operation>GetCapability</zirk:operation>"       \
      "<zirk:param_set servicetype=\"" servicetype "\">"     \
      "</zirk:param_set>"                                    \
    "</zirk:contents>"                                       \
  "</cmd>"
// clang-format on

static constexpr Selection kGetCapability[] = {
    {0, GET_CAPABILITY("print")},
    {1, GET_CAPABILITY("device")},
    {3, GET_CAPABILITY("maintenance")},
};

i32 CLSS_MakeCommand_GetCapability(char* buffer, u64 size, u64* length, i32 selector) {
  return copy_selected(kGetCapability, selector, {buffer, size, length});
}

i32 PXCL_MakeGetCapabilityCommand(char* buffer, u32 size, u32* length, u32 selector) {
  if (size == 0 || length == nullptr) return CLSS_COMMAND_BAD_ARGUMENT;
  u64 stored = 0;
  const i32 status =
      CLSS_MakeCommand_GetCapability(buffer, size, &stored, static_cast<i32>(selector));
  *length = static_cast<u32>(stored);
  return status;
}

// clang-format off
#define GET_CONFIGURATION(servicetype)                       \
  PXCL_HEAD                                                  \
    "<zirk:contents>"                                        \
      "<zirk:operation>GetConfiguration</zirk:operation>"    \
      "<zirk:param_set servicetype=\"" servicetype "\">"     \
      "</zirk:param_set>"                                    \
    "</zirk:contents>"                                       \
  "</cmd>"
// clang-format on

static constexpr Selection kGetConfiguration[] = {
    {0, GET_CONFIGURATION("print")},
    {1, GET_CONFIGURATION("device")},
};

i32 CLSS_MakeCommand_GetConfiguration(char* buffer, u64 size, u64* length, i32 selector) {
  return copy_selected(kGetConfiguration, selector, {buffer, size, length});
}

// clang-format off
static constexpr Document kPowerOff =
  PXCL_HEAD
    "<zirk:contents>"
      "<zirk:operation>PowerOff</zirk:operation>"
      "<zirk:param_set servicetype=\"device\">"
      "</zirk:param_set>"
    "</zirk:contents>"
  "</cmd>";
// clang-format on

i32 CLSS_MakeCommand_PowerOff(char* buffer, u64 size, u64* length) {
  return copy_command(kPowerOff, {buffer, size, length});
}

// clang-format off
static constexpr Document kFRomUpMode =
  PXCL_HEAD_VENDOR
    "<zirk:contents>"
      "<zirk:operation>VendorCmd</zirk:operation>"
      "<zirk:param_set servicetype=\"device\">"
        "<vrx:ijoperation>FRomUpMode</vrx:ijoperation>"
      "</zirk:param_set>"
    "</zirk:contents>"
  "</cmd>";
// clang-format on

i32 CLSS_MakeCommand_FRomUpMode(char* buffer, u64 size, u64* length) {
  return copy_command(kFRomUpMode, {buffer, size, length});
}

// clang-format off
static constexpr Document kHandOverOff =
  PXCL_HEAD_VENDOR
    "<zirk:contents>"
      "<zirk:operation>VendorCmd</zirk:operation>"
      "<zirk:param_set servicetype=\"device\">"
        "<vrx:ijoperation>HandOverOff</vrx:ijoperation>"
      "</zirk:param_set>"
    "</zirk:contents>"
  "</cmd>";
// clang-format on

i32 CLSS_MakeCommand_Handoveroff(char* buffer, u64 size, u64* length) {
  return copy_command(kHandOverOff, {buffer, size, length});
}

// clang-format off
static constexpr Document kGetStatusDevice =
  PXCL_HEAD
    "<zirk:contents>"
      "<zirk:operation>GetStatus</zirk:operation>"
      "<zirk:param_set servicetype=\"device\">"
      "</zirk:param_set>"
    "</zirk:contents>"
  "</cmd>";
// clang-format on

i32 CLSS_MakeCommand_GetStatusDevice(char* buffer, u64 size, u64* length) {
  return copy_command(kGetStatusDevice, {buffer, size, length});
}

// clang-format off
static constexpr Document kGetJobIDList =
  PXCL_HEAD
    "<zirk:contents>"
      "<zirk:operation>GetJobIDList</zirk:operation>"
      "<zirk:param_set servicetype=\"print\">"
      "</zirk:param_set>"
    "</zirk:contents>"
  "</cmd>";
// clang-format on

i32 CLSS_MakeCommand_GetJobIDList(char* buffer, u64 size, u64* length) {
  return copy_command(kGetJobIDList, {buffer, size, length});
}
