// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <string>

#include "dictionaries.h"

// A reply: its frame around the elements of a service block.
inline std::string reply(const std::string& elements, const std::string& response = "OK",
                         const std::string& operation = "GetCapabilityResponse",
                         const std::string& service = "print") {
  std::string text = "<?xml version=\"1.0\" encoding=\"utf-8\" ?><cmd";
  for (int k = 0; k < 3; ++k) {
    text += std::string(" xmlns:") + glb_NameSpacePrefix[k] + "=\"" + glb_NameSpace[k] + "\"";
  }
  return text + "><zirk:contents><zirk:operation>" + operation +
         "</zirk:operation><zirk:param_set servicetype=\"" + service + "\"><zirk:response>" +
         response + "</zirk:response>" + elements + "</zirk:param_set></zirk:contents></cmd>";
}
