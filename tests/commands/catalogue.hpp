// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Every document that the builders make, once: the tests of documents and of buffers walk this
// table.

#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace pxcl_test {

enum class Kind { kFixed, kFormatted, kKeyed, kMaintenance };

struct Command {
  std::string file;     // tests/data/commands/<file>.xml
  std::string builder;  // CLSS_MakeCommand_<builder>
  Kind kind;
  std::function<std::int32_t(char* buffer, std::uint64_t size, std::uint64_t* length)> make;
  bool readsReply = false;
};

const std::vector<Command>& catalogue();

// A capability reply: letter and stationery in the common namespace, photographic and A3 in the
// vendor's, A4 in the print schema's.
extern const std::string kCapability;

// What a call made: its status, its length and its document.
struct Made {
  std::int32_t status;
  std::uint64_t length;
  std::string document;
};
// In a buffer that is large enough; a length that was not written reads kUnwritten.
inline constexpr std::uint64_t kUnwritten = 987654321;
Made make(const Command& command);

}  // namespace pxcl_test
