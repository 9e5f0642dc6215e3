// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The linker sends every malloc, calloc and free of a test executable here (see CMakeLists.txt);
// operator new lives in its own library and is not touched.

#include <gtest/gtest.h>

#include "support.hpp"

namespace {

struct Allocations {
  std::size_t made = 0;
  std::size_t live = 0;
  std::size_t failAt = 0;  // 0: none fails
  bool permanent = false;
  bool triggered = false;
} allocations;

bool next_fails() {
  const std::size_t number = ++allocations.made;
  if (allocations.failAt == 0) return false;
  if (number != allocations.failAt && !(allocations.permanent && number > allocations.failAt)) {
    return false;
  }
  allocations.triggered = true;
  return true;
}

void* count_block(void* block) {
  if (block != nullptr) ++allocations.live;
  return block;
}

void expect_clean_run(std::size_t nth, bool permanent, const std::function<void(bool)>& call) {
  SCOPED_TRACE(testing::Message() << "allocation " << nth << " fails"
                                  << (permanent ? " with all that follow" : ""));
  const std::size_t live = pxcl_test::live_blocks();
  bool triggered = false;
  {
    pxcl_test::FailAllocation failure(nth, permanent);
    call(true);
    triggered = failure.triggered();
  }
  EXPECT_TRUE(triggered);
  EXPECT_EQ(pxcl_test::live_blocks(), live);
}

}  // namespace

extern "C" {

void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void __real_free(void* block);
void* __wrap_malloc(std::size_t size);
void* __wrap_calloc(std::size_t count, std::size_t size);
void __wrap_free(void* block);
const char* __asan_default_options();

void* __wrap_malloc(std::size_t size) {
  return next_fails() ? nullptr : count_block(__real_malloc(size));
}

void* __wrap_calloc(std::size_t count, std::size_t size) {
  return next_fails() ? nullptr : count_block(__real_calloc(count, size));
}

void __wrap_free(void* block) {
  if (block != nullptr) --allocations.live;
  __real_free(block);
}

// A request that no machine can satisfy is a failed allocation, as it is without the sanitizer.
const char* __asan_default_options() {
  return "allocator_may_return_null=1";
}

}  // extern "C"

namespace pxcl_test {

std::size_t live_blocks() {
  return allocations.live;
}
std::size_t allocation_count() {
  return allocations.made;
}

FailAllocation::FailAllocation(std::size_t nth, bool permanent) {
  EXPECT_EQ(allocations.failAt, 0U) << "one FailAllocation at a time";
  allocations.failAt = allocations.made + nth;
  allocations.permanent = permanent;
  allocations.triggered = false;
}

FailAllocation::~FailAllocation() {
  allocations.failAt = 0;
}

bool FailAllocation::triggered() const {
  return allocations.triggered;
}

void fails_cleanly_at_every_allocation(const std::function<void(bool failing)>& call) {
  const std::size_t before = allocation_count();
  const std::size_t live = live_blocks();
  call(false);
  const std::size_t count = allocation_count() - before;
  EXPECT_EQ(live_blocks(), live) << "with no failure";
  EXPECT_GT(count, 0U) << "nothing is allocated, nothing can fail";
  for (std::size_t nth = 1; nth <= count && !testing::Test::HasFatalFailure(); ++nth) {
    expect_clean_run(nth, false, call);
    expect_clean_run(nth, true, call);
  }
}

}  // namespace pxcl_test
