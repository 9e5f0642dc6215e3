// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The memory of one call: every text that it reads and every variable that it writes has a place of
// its own. Nothing here needs the C++ runtime library, so that the program runs in every build.

#pragma once

#include <concepts>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace sweep {

// Where a place lies: in a heap block of its exact size, or against an unreadable page. A text is
// read-only there, and what a variable leaves of its pages is checked after the call.
enum class Ground { kHeap, kBeforePage, kBehindPage };

// A text's length, for parameters of any type.
struct Length {
  std::uint64_t value;
  template <std::integral Number>
  operator Number() const {
    return static_cast<Number>(value);
  }
};

struct Text {
  const char* data;
  Length size;
  operator const char*() const { return data; }
};

class Stage {
 public:
  // Without `fill`, what a call is to write is left uninitialised, for the tools that follow that.
  explicit Stage(Ground ground, bool fill = true);
  ~Stage();
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  // Texts and records that the call may only read.
  Text in(std::string_view text);
  Text sized(std::string_view text);  // whose length is taken from here: it may be denied
  const char* string(const char* text);
  template <typename Record, std::size_t count>
  const Record* list(const Record (&records)[count]) {
    return static_cast<const Record*>(read_only(records, sizeof records));
  }

  // What the call is to write: filled, or holding an initial value.
  template <typename Record>
  Record* out() {
    return static_cast<Record*>(written(sizeof(Record)));
  }
  template <typename Record>
  Record* out(const Record& initial) {
    return static_cast<Record*>(written(sizeof initial, &initial));
  }
  // All zeros but for the version in front.
  template <typename Record>
  Record* out_of_version(std::uint16_t version);
  char* buffer(std::uint64_t size) { return static_cast<char*>(written(size)); }
  char* buffer(std::string_view initial);
  // A record that leads to memory, which no two calls put at the same place.
  template <typename Record>
  Record* record(const Record& initial, std::uint64_t count = 1);

  // From now on the `nth` thing that can be denied to a call is: a string or sized() text is empty,
  // what else asks next_is_denied() is zero.
  void deny(std::size_t nth) { denied_ = nth; }
  // The `nth` length that can be too large is larger by 2^32, and nothing is denied.
  void widen(std::size_t nth) {
    denied_ = nth;
    widens_ = true;
  }
  bool widens() const { return widens_; }
  bool denies() const { return denied_ != 0; }
  bool next_is_denied() { return ++asked_ == denied_; }
  bool has_denied() const { return asked_ >= denied_; }  // before the end of the call
  // A record of this stage, and a way to change what the call may only read.
  bool holds(const void* record) const { return find(record) < used_; }
  void put(char* word, std::uint64_t value);

  // One more result of the call.
  void note(std::uint64_t value) { mix(&value, sizeof value); }

  // Does everything of at most `size` bytes that the call was to write hold what it held before?
  bool is_untouched(std::uint64_t size) const;
  // Ends the call: a number made of everything that it wrote and noted. Places are free again.
  std::uint64_t end(bool& overrun);

 private:
  static constexpr std::size_t kPlaces = 24;
  struct Place {
    char* begin;
    std::uint64_t size;
    std::uint64_t before;  // a number made of the contents
    enum class Use { kRead, kWritten, kRecord } use;
  };

  std::size_t find(const void* record) const;
  char* place(std::uint64_t size, Place::Use use);
  void* read_only(const void* bytes, std::uint64_t size);
  void* written(std::uint64_t size, const void* initial = nullptr);
  void* recorded(std::uint64_t size);
  char* room_of(std::size_t index) const;
  bool is_overrun(std::size_t index) const;
  void mix(const void* bytes, std::uint64_t size);

  const Ground ground_;
  const bool fill_;
  char* pages_ = nullptr;
  Place places_[kPlaces];
  std::size_t used_ = 0;
  std::size_t asked_ = 0;
  std::size_t denied_ = 0;  // 0: none
  bool widens_ = false;
  std::uint64_t digest_;
};

template <typename Record>
Record* Stage::out_of_version(std::uint16_t version) {
  char initial[sizeof(Record)] = {};
  std::memcpy(initial, &version, sizeof version);
  return static_cast<Record*>(written(sizeof(Record), initial));
}

template <typename Record>
Record* Stage::record(const Record& initial, std::uint64_t count) {
  Record* const made = static_cast<Record*>(recorded(count * sizeof(Record)));
  for (std::uint64_t i = 0; i < count; ++i) made[i] = initial;
  return made;
}

// ---- The allocations of the code under test, each thread's own ----

struct Allocations {
  std::uint64_t made = 0;
  std::int64_t live = 0;
  std::uint64_t failAt = 0;  // 0: none fails
  bool failLater = false;    // with all that follow
};
Allocations& allocations();

}  // namespace sweep
