// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Terminated strings.

#include <cstring>

#include "kwvs.h"
#include "util/types.hpp"

extern "C" {

int32_t KWVSCompString(const char* first, const char* second) {
  if (first == nullptr || second == nullptr) return KWVS_BAD_ARGUMENT;
  const int order = std::strcmp(first, second);
  return (order > 0) - (order < 0);
}

int32_t KWVSGetLenOfString(const char* string) {
  return string == nullptr ? KWVS_BAD_ARGUMENT : static_cast<int32_t>(std::strlen(string));
}

int32_t KWVSCopyString(const char* source, char* destination) {
  if (source == nullptr || destination == nullptr) return KWVS_BAD_ARGUMENT;
  const std::size_t length = std::strlen(source);
  std::memmove(destination, source, length + 1);
  return static_cast<int32_t>(length);
}

int32_t KWVSCatString(const char* source, char* destination) {
  if (source == nullptr || destination == nullptr) return KWVS_BAD_ARGUMENT;
  const std::size_t length = std::strlen(destination);
  return static_cast<int32_t>(length) + KWVSCopyString(source, destination + length);
}

}  // extern "C"
