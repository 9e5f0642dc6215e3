// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "stage.hpp"

#include <sys/mman.h>

#include <cstdio>
#include <cstdlib>

// The linker sends every malloc, calloc and free of this program to these (see CMakeLists.txt).
extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void __real_free(void* block);
void* __wrap_malloc(std::size_t size);
void* __wrap_calloc(std::size_t count, std::size_t size);
void __wrap_free(void* block);
}

namespace sweep {
namespace {

constexpr char kFiller = 0x5A;
constexpr std::uint64_t kPage = 4096;
constexpr std::uint64_t kRoom = 4 * kPage;      // of one place
constexpr std::uint64_t kStep = kRoom + kPage;  // and the unreadable page behind it
constexpr std::uint64_t kBasis = 0xCBF29CE484222325, kPrime = 0x100000001B3;

[[noreturn]] void give_up(const char* why) {
  std::perror(why);
  std::abort();
}

std::uint64_t mixed(std::uint64_t digest, const char* bytes, std::uint64_t size) {
  for (std::uint64_t i = 0; i < size; ++i) {
    digest = (digest ^ static_cast<unsigned char>(bytes[i])) * kPrime;
  }
  return digest;
}

bool is_filled(const char* bytes, std::uint64_t size) {
  for (std::uint64_t i = 0; i < size; ++i) {
    if (bytes[i] != kFiller) return false;
  }
  return true;
}

void protect(char* room, int rights) {
  if (mprotect(room, kRoom, rights) != 0) give_up("mprotect");
}

bool next_fails() {
  Allocations& all = allocations();
  const std::uint64_t number = ++all.made;
  return all.failAt != 0 && (number == all.failAt || (all.failLater && number > all.failAt));
}

void* counted(void* block) {
  if (block != nullptr) ++allocations().live;
  return block;
}

}  // namespace

Allocations& allocations() {
  static thread_local Allocations all;
  return all;
}

Stage::Stage(Ground ground, bool fill) : ground_(ground), fill_(fill), digest_(kBasis) {
  if (ground == Ground::kHeap) return;
  constexpr int kMine = MAP_PRIVATE | MAP_ANONYMOUS;
  void* const all = mmap(nullptr, kPage + kPlaces * kStep, PROT_NONE, kMine, -1, 0);
  if (all == MAP_FAILED) give_up("mmap");
  pages_ = static_cast<char*>(all) + kPage;
  for (std::size_t i = 0; i < kPlaces; ++i) protect(room_of(i), PROT_READ | PROT_WRITE);
}

Stage::~Stage() {
  if (pages_ != nullptr) munmap(pages_ - kPage, kPage + kPlaces * kStep);
}

char* Stage::room_of(std::size_t index) const {
  return pages_ + index * kStep;
}

char* Stage::place(std::uint64_t size, Place::Use use) {
  if (used_ == kPlaces || size > kRoom) give_up("a call needs more room");
  char* begin = nullptr;
  if (ground_ == Ground::kHeap) {
    begin = static_cast<char*>(__real_malloc(size));
    if (begin == nullptr) give_up("malloc");
  } else {
    begin = room_of(used_);
    std::memset(begin, kFiller, kRoom);
    if (ground_ == Ground::kBeforePage) begin += kRoom - size;
  }
  places_[used_++] = {begin, size, 0, use};
  return begin;
}

void* Stage::read_only(const void* bytes, std::uint64_t size) {
  char* const begin = place(size, Place::Use::kRead);
  if (size != 0) std::memcpy(begin, bytes, size);
  if (ground_ != Ground::kHeap) protect(room_of(used_ - 1), PROT_READ);
  return begin;
}

void* Stage::written(std::uint64_t size, const void* initial) {
  char* const begin = place(size, Place::Use::kWritten);
  if (initial != nullptr) {
    std::memcpy(begin, initial, size);
  } else if (fill_) {
    std::memset(begin, kFiller, size);
  }
  if (fill_) places_[used_ - 1].before = mixed(kBasis, begin, size);
  return begin;
}

void* Stage::recorded(std::uint64_t size) {
  return place(size, Place::Use::kRecord);
}

Text Stage::in(std::string_view text) {
  return {static_cast<const char*>(read_only(text.data(), text.size())), {text.size()}};
}

Text Stage::sized(std::string_view text) {
  return in(!widens_ && next_is_denied() ? std::string_view() : text);
}

const char* Stage::string(const char* text) {
  if (!widens_ && next_is_denied()) text = "";
  return in({text, std::strlen(text) + 1}).data;
}

std::size_t Stage::find(const void* record) const {
  std::size_t i = 0;
  while (i < used_ && places_[i].begin != record) ++i;
  return i;
}

void Stage::put(char* word, std::uint64_t value) {
  for (std::size_t i = 0; ground_ != Ground::kHeap && i < used_; ++i) {
    const auto offset =
        reinterpret_cast<std::uintptr_t>(word) - reinterpret_cast<std::uintptr_t>(room_of(i));
    if (places_[i].use != Place::Use::kRead || offset >= kRoom) continue;
    protect(room_of(i), PROT_READ | PROT_WRITE);
    std::memcpy(word, &value, sizeof value);
    return protect(room_of(i), PROT_READ);
  }
  std::memcpy(word, &value, sizeof value);
}

char* Stage::buffer(std::string_view initial) {
  return static_cast<char*>(written(initial.size(), initial.data()));
}

bool Stage::is_untouched(std::uint64_t size) const {
  for (std::size_t i = 0; fill_ && i < used_; ++i) {
    const Place& one = places_[i];
    if (one.use != Place::Use::kWritten || one.size > size) continue;
    if (mixed(kBasis, one.begin, one.size) != one.before) return false;
  }
  return true;
}

// Something was written beside the place, in its own pages.
bool Stage::is_overrun(std::size_t index) const {
  const Place& one = places_[index];
  const char* const room = room_of(index);
  const std::uint64_t rest = kRoom - one.size;
  return !is_filled(one.begin == room ? room + one.size : room, rest);
}

void Stage::mix(const void* bytes, std::uint64_t size) {
  digest_ = mixed(digest_, static_cast<const char*>(bytes), size);
}

std::uint64_t Stage::end(bool& overrun) {
  overrun = false;
  for (std::size_t i = 0; i < used_; ++i) {
    const Place& one = places_[i];
    if (fill_ && one.use == Place::Use::kWritten) mix(one.begin, one.size);
    if (ground_ == Ground::kHeap) {
      __real_free(one.begin);
      continue;
    }
    overrun = overrun || is_overrun(i);
    if (one.use == Place::Use::kRead) protect(room_of(i), PROT_READ | PROT_WRITE);
  }
  const std::uint64_t result = digest_;
  digest_ = kBasis;
  used_ = asked_ = 0;
  return result;
}

}  // namespace sweep

void* __wrap_malloc(std::size_t size) {
  return sweep::next_fails() ? nullptr : sweep::counted(__real_malloc(size));
}

void* __wrap_calloc(std::size_t count, std::size_t size) {
  return sweep::next_fails() ? nullptr : sweep::counted(__real_calloc(count, size));
}

void __wrap_free(void* block) {
  if (block != nullptr) --sweep::allocations().live;
  __real_free(block);
}
