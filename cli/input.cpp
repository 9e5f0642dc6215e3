// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "cli/input.hpp"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "cli/failure.hpp"
#include "cli/signals.hpp"
#include "cli/text.hpp"
#include "client/channel.hpp"

namespace pxcl::cli {

namespace {

[[noreturn]] void fail(const std::string& path) {
  throw Failure{kUsage, filled("{} can't be read: {}.", printable(path), strerror(errno))};
}

std::string read_all(FILE* file, const std::string& path) {
  std::string text;
  std::array<char, 65536> part;
  while (const std::size_t count = fread(part.data(), 1, part.size(), file)) {
    text.append(part.data(), count);
    if (text.size() > client::kLongestReply) {
      throw Failure{kUsage, filled("{} is longer than 4 MiB; it was not read.", printable(path))};
    }
  }
  if (client::is_set(interrupted())) throw Failure{kInterrupted, "Interrupted while reading."};
  if (ferror(file)) fail(path);
  return text;
}

}  // namespace

std::string read_input(const std::string& path) {
  if (path == "-") return read_all(stdin, "Standard input");
  const std::unique_ptr<FILE, int (*)(FILE*)> file(fopen(path.c_str(), "rb"), &fclose);
  if (!file) fail(path);
  return read_all(file.get(), path);
}

}  // namespace pxcl::cli
