// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "pxcl.h"
#include "support.hpp"

using namespace pxcl_test;

namespace {

const std::uint8_t* bytes_of(const std::string& text) {
  return reinterpret_cast<const std::uint8_t*>(text.data());
}

std::string encode(const std::string& data) {
  std::string text(2 * data.size() + 9, '\x5A');
  EXPECT_EQ(PXCL_EncodeToString(bytes_of(data), data.size(), text.data(), text.size()),
            static_cast<std::int32_t>(text.size()));
  return text;
}

struct Decoded {
  std::int32_t status;
  std::string output;  // the whole of it
};

// Text and output are blocks of exactly their size.
Decoded decode(const std::string& text, std::size_t size) {
  const ExactBlock block(text);
  ExactBlock output(std::string(size, '\x5A'));
  const std::int32_t status = PXCL_DecodeFromString(
      block.data(), block.size(), reinterpret_cast<std::uint8_t*>(output.data()), output.size());
  return {status, std::string(output.data(), output.size())};
}

TEST(TextCode, IsWhatFilesHold) {
  const std::pair<std::string, const char*> kCases[] = {
      {"", "=aaaaaaaa"},
      {std::string(1, '\0'), "fk=aaaaaaaa"},
      {"\x5A", "aa=aaaaaafk"},
      {"\xFF\x01", "kffl=aaaaabaa"},
      {std::string("ok"), "dfdb=aaaaaank"},
  };
  for (const auto& [data, text] : kCases) {
    EXPECT_EQ(encode(data), text);
    EXPECT_EQ(decode(text, data.size()).output, data);
    EXPECT_EQ(decode(text, data.size()).status, static_cast<std::int32_t>(data.size()));
  }
}

TEST(TextCode, ReadsBackWhateverItWrites) {
  std::mt19937 random(1);
  for (std::size_t size = 0; size < 600; ++size) {
    std::string data(size, 0);
    for (char& byte : data) byte = static_cast<char>(random());
    const Decoded decoded = decode(encode(data), size + 3);
    ASSERT_EQ(decoded.status, static_cast<std::int32_t>(size));
    EXPECT_EQ(decoded.output, data + std::string(3, '\0'));
  }
}

TEST(TextCode, IsWrittenAtEveryCapacity) {
  const std::string data = "\x01\xFEmore";
  const std::string text = encode(data);
  fits_at_every_capacity(
      text.size(),
      [&](char* output, std::size_t size) {
        const std::int32_t status = PXCL_EncodeToString(bytes_of(data), data.size(), output, size);
        if (status < 0) {
          EXPECT_EQ(std::string(output, size), std::string(size, '\x5A')) << "touched";
        } else {
          EXPECT_EQ(std::string(output, size), text + std::string(size - text.size(), '\0'));
        }
        return status;
      },
      -1, true);
  fits_at_every_capacity(
      data.size(),
      [&](char* output, std::size_t size) {
        return PXCL_DecodeFromString(text.data(), text.size(),
                                     reinterpret_cast<std::uint8_t*>(output), size);
      },
      -1, true);
}

TEST(TextCode, RefusesDamagedTexts) {
  const std::string kept(8, '\x5A'), cleared(8, '\0');
  const std::string first = std::string("\x5A", 1) + std::string(7, '\0');
  const struct {
    const char* why;
    std::string text;
    std::string output;
  } kCases[] = {
      {"empty", "", kept},
      {"8 characters", "=aaaaaaa", kept},
      {"another sum", "aa=aaaaaafj", cleared},
      {"no data's sum", "=aaaaaaab", cleared},
      {"no end", "aaaaaaaaaaaaaa", cleared},
      {"half a pair", "aaaaaaaaaaaaa", cleared},
      {"no whole sum", "aaaa=aaaaaak", cleared},
      {"end and nothing", "aaaaaaaaaa=", cleared},
      {"bad letter after a byte", "aaqa=aaaaaafk", first},
      {"bad second letter", "aaa`=aaaaaafk", first},
      {"end inside a pair", "aaa=aaaaaafk=", first},
      {"byte beyond ASCII", "aa\xE1\xE1=aaaaaafk", first},
      {"more bytes than the length promises", std::string(24, 'a'), cleared},
  };
  for (const auto& c : kCases) {
    const Decoded decoded = decode(c.text, 8);
    EXPECT_EQ(decoded.status, -1) << c.why;
    EXPECT_EQ(decoded.output, c.output) << c.why;
  }
}

// Letters beyond the sixteen only make another sum, and what follows the sum is not looked at.
TEST(TextCode, TakesTheSumAsItAddsUp) {
  EXPECT_EQ(decode("aa=aaaaaafktail", 8).status, 1);
  EXPECT_EQ(decode("aa=aaaaaaeA", 8).status, -1);
  EXPECT_EQ(decode(std::string("aa=aaaaaae") + static_cast<char>('k' + 16), 8).status, 1);
}

TEST(TextCode, TakesNoDataWithoutABlockAndNoLengthBeyond32Bits) {
  char text[16];
  EXPECT_EQ(PXCL_EncodeToString(nullptr, 0, text, sizeof text), 9);
  EXPECT_EQ(PXCL_DecodeFromString("=aaaaaaaa", 9, nullptr, 0), 0);
  std::uint8_t bytes[16] = {};
  for (const std::uint64_t size : {(1ULL << 30) - 4, 1ULL << 31, 1ULL << 32, ~0ULL, ~0ULL / 2}) {
    EXPECT_EQ(PXCL_EncodeToString(bytes, size, text, ~0ULL), -1) << size;
  }
}

}  // namespace
