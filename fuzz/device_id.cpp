// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Any text as a device ID: the answers are those that plain searches in it give.

#include <string>
#include <string_view>

#include "device.h"
#include "target.hpp"

using pxcl::fuzz::require;

namespace {

// Words are searched up to a zero byte.
std::string without_blanks(std::string_view text) {
  text = text.substr(0, text.find('\0'));
  std::string result;
  for (const char c : text) {
    if (c != ' ' && c != '\t' && c != '\n' && c != '\r') result += c;
  }
  return result;
}

bool has(std::string_view text, std::string_view word) {
  return text.find(word) != text.npos;
}

// The place of the first word of the list that the text holds, or -1.
int first_of(std::string_view text, const char* const* words) {
  for (int i = 0; words[i] != nullptr; ++i) {
    if (has(text, words[i])) return i;
  }
  return -1;
}

// The first field of the key that a semicolon closes, with the semicolon, without blanks.
std::string field(std::string_view id, std::string_view key) {
  const std::size_t begin = id.find(key);
  if (begin == id.npos) return {};
  const std::size_t end = id.find(';', begin);
  return end == id.npos ? std::string() : without_blanks(id.substr(begin + 4, end + 1 - begin - 4));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const char* const text = reinterpret_cast<const char*>(data);
  const auto length = static_cast<int64_t>(size);
  const std::string_view id(text, size);
  const std::string plain = without_blanks(id);
  const int protocol = !has(plain, "KWNP") && has(plain, "NOLP") ? 2 : 1;
  require(CLSS_GetProtocol(text, length) == protocol && PXCL_GetProtocol(text, length) == protocol);
  require(CLSS_HasZIRK(text, length) == (first_of(field(id, "CMD:"), ZIRK_DEVICEID) < 0 ? 1 : 2));
  require(CLSS_HasPLI(text, length) == (first_of(field(id, "SOJ:"), PLI_DEVICEID) < 0 ? 1 : 2));
  require(CLSS_IsSupportMinP(text, length) == (first_of(plain, MINP_PRINTER_LIST) >= 0));
  require(CLSS_IsSupportKWNP_From14Autumn(text, length) ==
          (first_of(plain, KWNP_PRINTER_LIST_14AUTUMN) >= 0));
  const int corvel = first_of(plain, CORVEL_PRINTER_LIST);
  require(CLSS_IsSupportCorvel(text, length, 1) == (corvel >= 0));
  require(CLSS_GetCorvelRequestVersionInfo(text, length, 1) ==
          (corvel < 0 ? -1 : static_cast<int32_t>(CORVEL_REQUEST_VERSION_INFO_LIST[corvel])));
  return 0;
}
