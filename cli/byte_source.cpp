// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "cli/byte_source.hpp"

#include <fcntl.h>
#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "cli/text.hpp"

namespace pxcl::cli {

using client::Error;
using client::Fault;
using client::Result;

Result<std::size_t> FileSource::read(std::span<char> buffer) {
  if (!beginning_.empty()) {
    const std::size_t count = beginning_.copy(buffer.data(), buffer.size());
    beginning_.erase(0, count);
    return count;
  }
  if (!wait_readable(file_.get(), -1, cancelled_)) {
    return Error{Fault::kCancelled, "Cancelled while reading the document."};
  }
  const ssize_t count = read_some(file_.get(), buffer);
  if (count < 0) {
    return Error{Fault::kBadInput, filled("The document can't be read: {}.", strerror(errno))};
  }
  return static_cast<std::size_t>(count);
}

bool wait_readable(int first, int second, client::CancelFlag cancelled) {
  constexpr int kLookAtFlag = 100;  // milliseconds
  pollfd files[] = {{first, POLLIN, 0}, {second, POLLIN, 0}};
  while (!client::is_set(cancelled)) {
    if (poll(files, 2, kLookAtFlag) > 0) return true;
  }
  return false;
}

bool can_read(int descriptor) {
  pollfd file = {descriptor, POLLIN, 0};
  return poll(&file, 1, 0) > 0;
}

ssize_t read_some(int descriptor, std::span<char> buffer) {
  ssize_t count = 0;
  do {
    count = ::read(descriptor, buffer.data(), buffer.size());
  } while (count < 0 && errno == EINTR);
  return count;
}

Descriptor temporary_file() {
  const char* folder = std::getenv("TMPDIR");
  std::string path = folder != nullptr && *folder != '\0' ? folder : "/tmp";
  path += "/pxcl-XXXXXX";
  Descriptor file(mkostemp(path.data(), O_CLOEXEC));
  if (file.is_open()) unlink(path.c_str());
  return file;
}

}  // namespace pxcl::cli
