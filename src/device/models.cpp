// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <iterator>
#include <string_view>

#include "device.h"

constexpr const char* const PROTOCOL_DEVICEID_OLD[] = {"KWNP", nullptr};
constexpr const char* const PROTOCOL_DEVICEID_NEW[] = {"NOLP", nullptr};
constexpr const char* const ZIRK_DEVICEID[] = {"ZIRK;", "ZIRK,", nullptr};
constexpr const char* const PLI_DEVICEID[] = {"NOLP;", "NOLP,", nullptr};

#include "model_lists.inc"  // made from the text files of models/

constexpr uint32_t CORVEL_REQUEST_VERSION_INFO_LIST[] = {0, 0, 1, 1, 1, 1, 2, 2,
                                                         2, 2, 2, 3, 3, 3, 3, 0};

static_assert(std::size(CORVEL_REQUEST_VERSION_INFO_LIST) == std::size(CORVEL_PRINTER_LIST));

namespace {

// A name that contains an earlier one is never found itself: the earlier one answers in its place.
template <std::size_t kCount>
constexpr bool each_name_is_found(const char* const (&names)[kCount]) {
  for (std::size_t later = 1; later + 1 < kCount; ++later)
    for (std::size_t earlier = 0; earlier < later; ++earlier)
      if (std::string_view(names[later]).find(names[earlier]) != std::string_view::npos)
        return false;
  return true;
}
static_assert(each_name_is_found(CORVEL_PRINTER_LIST),
              "a model would get the request version of another: put the longer name first");

}  // namespace
