// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Every document that the builders make, once: the tests of documents and of buffers walk this
// table.

#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "commands.h"

namespace pxcl_test {

enum class Kind { kFixed, kFormatted, kKeyed, kMaintenance };

// Of a builder: its last arguments, and all of it with the others given.
using Buffer = char*;
using Size = std::uint64_t;
using Length = std::uint64_t*;
using Call = std::function<std::int32_t(Buffer, Size, Length)>;

struct Command {
  std::string file;  // tests/data/commands/<file>.xml
  Kind kind;
  Call make;
  bool readsReply = false;
};

inline constexpr const char* kJob = "00000042";
inline constexpr const char* kTime = "20240102030405";
inline constexpr std::uint16_t kAbsent = CLSS_SETTING_ABSENT;

const std::vector<Command>& catalogue();

// A capability reply: letter and stationery in the common namespace, photographic and A3 in the
// vendor's, A4 in the print schema's.
extern const std::string kCapability;

// What a call made: its status, its length, its document and all of its buffer. What was not
// written reads kUnwritten and kFiller.
inline constexpr std::uint64_t kUnwritten = 987654321;
inline constexpr char kFiller = '\x5A';
struct Made {
  std::int32_t status;
  std::uint64_t length;
  std::string document;
  std::string buffer;
};
Made make(const Call& call, Size size = 4096);

}  // namespace pxcl_test
