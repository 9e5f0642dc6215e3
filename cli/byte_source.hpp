// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <unistd.h>

#include <cstddef>
#include <span>
#include <string>
#include <utility>

#include "client/result.hpp"
#include "client/waiting.hpp"

namespace pxcl::cli {

/// An open file that closes itself.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor() {
    if (number_ >= 0) ::close(number_);
  }
  [[nodiscard]] int get() const { return number_; }
  [[nodiscard]] bool is_open() const { return number_ >= 0; }

 private:
  int number_;
};

/// Where the bytes of a raster come from.
class ByteSource {
 public:
  ByteSource() = default;
  ByteSource(const ByteSource&) = delete;
  ByteSource& operator=(const ByteSource&) = delete;
  virtual ~ByteSource() = default;

  /// The next bytes, 1 to buffer.size(); 0 at the end, once it is sure that nothing is missing.
  virtual client::Result<std::size_t> read(std::span<char> buffer) = 0;
};

/// The bytes of a file or a pipe behind those that have been read from it already.
class FileSource : public ByteSource {
 public:
  FileSource(Descriptor file, std::string beginning, client::CancelFlag cancelled)
      : file_(std::move(file)), beginning_(std::move(beginning)), cancelled_(cancelled) {}

  client::Result<std::size_t> read(std::span<char> buffer) override;

 private:
  Descriptor file_;
  std::string beginning_;
  client::CancelFlag cancelled_;
};

/// Waits until one of two descriptors can be read; looks at the flag all the while. False: the flag is set.
bool wait_readable(int first, int second, client::CancelFlag cancelled);

/// Whether a read would not wait.
bool can_read(int descriptor);

/// read(2) that goes on after a signal.
ssize_t read_some(int descriptor, std::span<char> buffer);

/// A file of its own that goes away by itself, in $TMPDIR or /tmp; not open when there can't be one (errno says why).
Descriptor temporary_file();

}  // namespace pxcl::cli
