// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// What every builder makes, and does to buffer and length.

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <set>

#include "catalogue.hpp"
#include "support.hpp"

using namespace pxcl_test;

namespace {

std::string document_of(const Command& command) {
  return read_data("commands/" + command.file + ".xml");
}

TEST(Documents, AreThoseOfTheFiles) {
  std::set<std::string> made;
  for (const Command& command : catalogue()) {
    EXPECT_EQ(make(command.make).document, document_of(command)) << command.file;
    made.insert("commands/" + command.file + ".xml");
  }
  for (const std::string& file : list_data("commands")) {
    EXPECT_TRUE(made.count(file)) << file << " belongs to no builder";
  }
}

std::uint64_t ask_need(const Command& command) {
  char spare = kFiller;
  std::uint64_t need = kUnwritten;
  // Maintenance commands take a buffer with size 0 for the query, all others none.
  char* const buffer = command.kind == Kind::kMaintenance ? &spare : nullptr;
  EXPECT_EQ(command.make(buffer, 0, &need), CLSS_COMMAND_OK);
  EXPECT_EQ(spare, kFiller);
  return need;
}

bool clears(const Command& command) {
  return command.kind == Kind::kFormatted || command.kind == Kind::kKeyed;
}

TEST(Buffers, AreFilledAtEveryCapacity) {
  for (const Command& command : catalogue()) {
    if (command.readsReply) continue;  // slow, and written by the same builder as others here
    SCOPED_TRACE(command.file);
    const std::string document = document_of(command);
    const std::uint64_t need = ask_need(command);
    EXPECT_TRUE(clears(command) || need == document.size() || command.kind == Kind::kMaintenance);
    EXPECT_GE(need, document.size());
    fits_at_every_capacity(
        need,
        [&](char* buffer, std::size_t size) {
          std::uint64_t length = kUnwritten;
          const std::int32_t status = command.make(buffer, size, &length);
          const std::string_view all(buffer, size);
          if (status != CLSS_COMMAND_OK) {
            EXPECT_EQ(length, need);
            EXPECT_EQ(all.find_first_not_of(kFiller), all.npos) << "touched";
            return status;
          }
          EXPECT_EQ(length, document.size());
          EXPECT_TRUE(all.starts_with(document));
          const char after = clears(command) ? 0 : kFiller;
          EXPECT_EQ(all.find_first_not_of(after, document.size()), all.npos);
          return status;
        },
        CLSS_COMMAND_BUFFER_TOO_SMALL);
  }
}

// ---- Sizes that do not fit 32 bits, signed or not ----

constexpr std::uint64_t kTwo31 = std::uint64_t{1} << 31;
constexpr std::uint64_t kTwo32 = std::uint64_t{1} << 32;

// From 2^31 to 2^32 nothing is cleared, so a small buffer will do; the document is terminated
// anyway.
TEST(Buffers, BeyondThirtyOneBitsAreNotCleared) {
  for (const Command& command : catalogue()) {
    for (const std::uint64_t size : {kTwo31, kTwo32 - 1, kTwo32, ~std::uint64_t{0}}) {
      SCOPED_TRACE(command.file + " " + std::to_string(size));
      const std::string document = document_of(command);
      std::string buffer(document.size() + 64, kFiller);
      std::uint64_t length = kUnwritten;
      EXPECT_EQ(command.make(buffer.data(), size, &length), CLSS_COMMAND_OK);
      EXPECT_EQ(length, document.size());
      EXPECT_TRUE(buffer.starts_with(document));
      EXPECT_EQ(buffer[length], clears(command) ? 0 : kFiller);
      // Of a keyed command's template, what the document does not cover is left.
      if (command.kind == Kind::kKeyed) continue;
      EXPECT_EQ(buffer.find_first_not_of(kFiller, length + 1), buffer.npos);
    }
  }
}

TEST(Buffers, BeyondThirtyTwoBitsAreClearedOverTheirLowPart) {
  for (const Command& command : catalogue()) {
    if (!clears(command)) continue;
    SCOPED_TRACE(command.file);
    const std::string document = document_of(command);
    std::string buffer(document.size() + 64, kFiller);
    std::uint64_t length = kUnwritten;
    EXPECT_EQ(command.make(buffer.data(), kTwo32 + document.size() + 32, &length), CLSS_COMMAND_OK);
    EXPECT_EQ(buffer, document + std::string(32, '\0') + std::string(32, kFiller));
  }
}

#if SIZE_MAX > UINT32_MAX
constexpr std::uint64_t kWindow = std::uint64_t{16} << 20;

// 2 GiB of address space on 32 MB: one small file mapped over and over, and an end of its own.
class AliasedBuffer {
 public:
  AliasedBuffer() {
    constexpr int kMine = MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE;
    start_ = static_cast<char*>(mmap(nullptr, kTwo31, PROT_READ | PROT_WRITE, kMine, -1, 0));
    const int file = memfd_create("buffer", 0);
    EXPECT_EQ(ftruncate(file, static_cast<off_t>(kWindow)), 0);
    for (std::uint64_t at = 0; at < kTwo31 - kWindow; at += kWindow) {
      mmap(start_ + at, kWindow, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED, file, 0);
    }
    close(file);
    start_[kTwo31 - 2] = start_[kTwo31 - 1] = kFiller;
  }
  ~AliasedBuffer() { munmap(start_, kTwo31); }
  char* data() const { return start_; }

 private:
  char* start_;
};

TEST(Buffers, NeverHoldTextsOfThirtyOneBits) {
  const AliasedBuffer text;
  for (const std::uint64_t window : {std::uint64_t{0}, kTwo31 - kWindow}) {
    std::memset(text.data() + window, 'x', kWindow);
  }
  text.data()[kTwo31 - 1] = 0;
  std::uint64_t length = kUnwritten;
  EXPECT_EQ(CLSS_MakeCommand_EndJob(0, text.data(), nullptr, 0, &length),
            CLSS_COMMAND_NOT_FORMATTED);
  EXPECT_EQ(length, kUnwritten);
}

TEST(Buffers, OfThirtyOneBitsAreClearedToTheirEnd) {
  const AliasedBuffer buffer;
  std::uint64_t length = 0;
  EXPECT_EQ(CLSS_MakeCommand_EndJob(0, kJob, buffer.data(), kTwo31 - 1, &length), CLSS_COMMAND_OK);
  const std::string document = read_data("commands/EndJob_print.xml");
  EXPECT_EQ(std::string(buffer.data(), length + 1), document + '\0');
  EXPECT_EQ(buffer.data()[kTwo31 - 2], 0);
  EXPECT_EQ(buffer.data()[kTwo31 - 1], kFiller);
}
#endif

// ---- Texts ----

// Whichever way texts of a length are copied: as they are given, none reads past its end, none
// writes past the need.
TEST(Buffers, TakeTextsOfEveryLength) {
  const struct {
    const char* file;
    std::int32_t (*make)(const char* job, Buffer buffer, Size size, Length length);
  } kCases[] = {
      {"EndJob_print", [](const char* job, Buffer b, Size s,
                          Length l) { return CLSS_MakeCommand_EndJob(0, job, b, s, l); }},
      {"GetStatus_print_job", CLSS_MakeCommand_GetStatusPrint},
      {"Cleaning", CLSS_MakeCommand_Cleaning},
  };
  const std::string letters = "<&>\"%s</a>abcdefghijklmnop0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ+-";
  const std::string texts = letters + letters;
  for (const auto& c : kCases) {
    for (std::size_t size = 1; size <= texts.size(); ++size) {
      SCOPED_TRACE(c.file + (" " + std::to_string(size)));
      const ExactBlock text(texts.substr(0, size) + '\0');
      std::string expected = read_data("commands/" + std::string(c.file) + ".xml");
      expected.replace(expected.find("00000042"), 8, texts, 0, size);
      char byte = kFiller;
      std::uint64_t need = 0;
      EXPECT_EQ(c.make(text.data(), &byte, 1, &need), CLSS_COMMAND_BUFFER_TOO_SMALL);
      std::vector<char> buffer(need, kFiller);
      std::uint64_t length = 0;
      EXPECT_EQ(c.make(text.data(), buffer.data(), need, &length), CLSS_COMMAND_OK);
      EXPECT_EQ(std::string(buffer.data(), length), expected);
    }
  }
}

}  // namespace
