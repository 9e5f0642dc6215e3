// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// What the tests of every layer share: exact blocks, counted and failing allocations, guarded
// buffers and test data.

#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace pxcl_test {

// A heap block of exactly the text's size, without terminator: the address sanitizer sees one byte
// read before or after it, also where the text is empty.
class ExactBlock {
 public:
  explicit ExactBlock(std::string_view text);

  const char* data() const { return data_; }
  char* data() { return data_; }
  std::size_t size() const { return size_; }
  operator std::string_view() const { return {data_, size_}; }

 private:
  std::unique_ptr<char[]> block_;
  char* data_;
  std::size_t size_;
};

// Blocks that the code under test has allocated and not yet freed, and its allocations so far.
std::size_t live_blocks();
std::size_t allocation_count();

// While alive, the `nth` allocation (1 is the next one) of the code under test fails; `permanent`
// makes every later one fail too. Only one may be alive at a time.
class FailAllocation {
 public:
  explicit FailAllocation(std::size_t nth, bool permanent = false);
  FailAllocation(const FailAllocation&) = delete;
  FailAllocation& operator=(const FailAllocation&) = delete;
  ~FailAllocation();

  bool triggered() const;
};

// Runs `call(false)` once to count its allocations, then `call(true)` with each of them failing,
// first alone and then with all that follow. Expects every run to leave live_blocks() as it was,
// and `call` to allocate at all; `call` itself expects its statuses.
void fails_cleanly_at_every_allocation(const std::function<void(bool failing)>& call);

// Runs `write` into buffers of every size from 1 (0 with `zeroToo`) to `needed` + 1 with canaries
// on both sides. Expects `tooSmallStatus` below `needed`, no failure from there on, and whole
// canaries.
void fits_at_every_capacity(std::size_t needed,
                            const std::function<int(char* buffer, std::size_t size)>& write,
                            int tooSmallStatus, bool zeroToo = false);

// The file tests/data/<relativePath>; a failure of the running test when it cannot be read.
std::string read_data(const std::string& relativePath);
// The files of tests/data/<folder> in order, as paths that read_data() takes.
std::vector<std::string> list_data(const std::string& folder);

}  // namespace pxcl_test
