// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "client/identity.hpp"

#include <pxcl.h>

#include "client/text.hpp"

namespace pxcl::client {
namespace {

std::optional<std::string> field_of(std::string_view deviceID, const char* key) {
  std::uint32_t length = 0;
  const char* const value =
      getToken(deviceID.data(), static_cast<std::int32_t>(deviceID.size()), key, ";", 0, &length);
  if (value == nullptr || length == 0) return std::nullopt;
  return clean_line({value, length});
}

std::optional<std::uint32_t> corvel_request_version(std::string_view id, std::int64_t length) {
  constexpr std::int16_t kPrinter = 1;
  const std::int32_t version = CLSS_GetCorvelRequestVersionInfo(id.data(), length, kPrinter);
  if (version < 0) return std::nullopt;
  return static_cast<std::uint32_t>(version);
}

}  // namespace

Identity read_device_id(std::string_view deviceID) {
  // Two length bytes before an ID leave room for no more.
  const std::string_view id = deviceID.substr(0, 0xFFFF);
  const auto length = static_cast<std::int64_t>(id.size());
  return {.device_id = clean_line(id),
          .manufacturer = field_of(id, "MFG:"),
          .model = field_of(id, "MDL:"),
          .has_new_protocol = PXCL_GetProtocol(id.data(), length) == 2,
          .takes_commands = CLSS_HasZIRK(id.data(), length) == 2,
          .reports_usage = CLSS_HasPLI(id.data(), length) == 2,
          .is_min_p = CLSS_IsSupportMinP(id.data(), length) == 1,
          .is_kwnp_from_14_autumn = CLSS_IsSupportKWNP_From14Autumn(id.data(), length) == 1,
          .corvel_request_version = corvel_request_version(id, length)};
}

}  // namespace pxcl::client
