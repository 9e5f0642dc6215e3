// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// What the targets of the tools share.

#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <string>
#include <string_view>
#include <vector>

#include "fuzz/target.hpp"
#include "printer/xml.hpp"
#include "tests/support/folder.hpp"

namespace pxcl::fuzz {

/// The parts of an input: FF FE, which is in no text, stands between them.
inline std::vector<std::string_view> parts_of(std::string_view input) {
  constexpr std::string_view kBetween = "\xFF\xFE";
  std::vector<std::string_view> parts;
  std::size_t begin = 0;
  for (std::size_t end; (end = input.find(kBetween, begin)) != input.npos;) {
    parts.push_back(input.substr(begin, end - begin));
    begin = end + kBetween.size();
  }
  parts.push_back(input.substr(begin));
  return parts;
}

/// Whether this is one line of good UTF-8, without control characters: those of one byte and those of two.
inline bool is_line(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte < 0x20 || byte == 0x7F) return false;
    const bool isSecond = i > 0 && text[i - 1] == '\xC2';
    if (isSecond && byte < 0xA0) return false;
  }
  return printer::is_xml_text(text);
}

using pxcl::Folder;

/// A file that lies in memory.
struct MemoryFile {
  const int number = memfd_create("memory", 0);
  const std::string path = "/proc/self/fd/" + std::to_string(number);

  void fill(std::string_view bytes) const {
    require(ftruncate(number, 0) == 0);
    require(pwrite(number, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()));
  }
};

}  // namespace pxcl::fuzz
