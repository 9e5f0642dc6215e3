// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace pxcl::client {

/// What a printer's device ID tells.
struct Identity {
  std::string device_id;                    ///< As the printer gave it.
  std::optional<std::string> manufacturer;  ///< Field MFG.
  std::optional<std::string> model;         ///< Field MDL.
  bool has_new_protocol;                    ///< The newer of the two network protocols.
  bool takes_commands;                      ///< Takes the XML commands ("CMD:" lists ZIRK).
  bool reports_usage;                       ///< Reports usage information ("SOJ:" lists NOLP).
  bool is_min_p;                            ///< Of the family MINP_PRINTER_LIST.
  bool is_kwnp_from_14_autumn;              ///< Of the family KWNP_PRINTER_LIST_14AUTUMN.
  std::optional<std::uint32_t>
      corvel_request_version;  ///< Of the family CORVEL_PRINTER_LIST: its request version.
};

/// Looks into a device ID; every text gives an answer.
Identity read_device_id(std::string_view deviceID);

}  // namespace pxcl::client
