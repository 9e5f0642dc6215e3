// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>

#include "pxcl.h"
#include "support.hpp"

using namespace pxcl_test;

namespace {

struct Found {
  std::int32_t status;
  std::string value;  // the whole block of `status` bytes
};

Found look_up_in(const std::string& path, const std::string& tag, std::int32_t decode = 0) {
  char mark = 0;
  char* result = &mark;
  const std::int32_t status =
      PXCL_GetStringWithTagFromFile(path.c_str(), tag.c_str(), decode, &result);
  EXPECT_EQ(result == nullptr, status < 0);
  if (status < 0) return {status, ""};
  const std::string value(result, static_cast<std::size_t>(status));
  EXPECT_EQ(result[status], 0);
  free(result);
  return {status, value};
}

class TaggedFile : public testing::Test {
 protected:
  void SetUp() override { path_ = testing::TempDir() + "pxcl-tagged-" + std::to_string(getpid()); }
  void TearDown() override { unlink(path_.c_str()); }

  Found look_up(const std::string& text, const std::string& tag, std::int32_t decode = 0) {
    std::ofstream(path_, std::ios::binary) << text;
    return look_up_in(path_, tag, decode);
  }
  std::string path_;
};

TEST_F(TaggedFile, HoldsValuesOfALineAndBlocks) {
  const std::string line1023(1023 - 6, 'x');  // with its lead and marker
  const struct {
    const char* why;
    std::string text;
    std::string value;  // empty: -1
  } kCases[] = {
      {"one line", "*% #T:abc\n", "abc"},
      {"no line feed", "*% #T:abc", "abc"},
      {"carriage return stays", "*% #T:abc\r\n", "abc\r"},
      {"among others", "#T:no\n% #T:no\n *% #T:no\n*% T:no\n*% #TT:no\n*% #T:abc\n", "abc"},
      {"first one wins", "*% #T:ab\n*% #T:cd\n", "ab"},
      {"zero byte inside", std::string("*% #T:a\0b\n", 10), std::string("a\0b", 3)},
      {"block", "*% #T>\n*% ab\n*% cd\n*% #<T\n", "abcd"},
      {"block without last line feed", "*% #T>\n*% ab\n*% #<T", "ab"},
      {"block skips other lines", "*% #T>\n*% ab\nno\n\n*%\n*% \n*% cd\n*% #<T\n", "abcd"},
      {"block takes other tags", "*% #T>\n*% #S:x\n*% #<S\n*% #<T\n", "#S:x#<S"},
      {"text behind the markers", "*% #T>ignored\n*% ab\n*% #<Trest\n", "ab"},
      {"line before block", "*% #T:ab\n*% #T>\n*% cd\n*% #<T\n", "ab"},
      {"1023 bytes and a line feed", "*% #T:" + line1023 + "\nno\n", line1023},
      {"1024 bytes and a line feed", "*% #T:" + line1023 + "y\nno\n", line1023 + "y"},
      {"1024 bytes at the end", "*% #T:" + line1023 + "y", line1023 + "y"},
      {"1025 bytes are cut", "*% #T:" + line1023 + "yz\n", line1023 + "y"},
      {"what is cut off begins a line", std::string(1024, 'x') + "*% #T:ab\n", "ab"},
      {"a long line in a block", "*% #T>\n*% " + std::string(1021, 'x') + "*% y\n*% #<T\n",
       std::string(1021, 'x') + "y"},
      {"empty file", "", ""},
      {"other tag", "*% #S:abc\n", ""},
      {"other tag, no line feed", "*% #S:abc", ""},
      {"empty value", "*% #T:\n", ""},
      {"empty block", "*% #T>\n*% #<T\n", ""},
      {"open block", "*% #T>\n*% ab\n", ""},
      {"open block, no line feed", "*% #T>\n*% ab", ""},
      {"end without start", "*% ab\n*% #<T\n", ""},
  };
  for (const auto& c : kCases) {
    const Found found = look_up(c.text, "T");
    EXPECT_EQ(found.status, c.value.empty() ? -1 : static_cast<std::int32_t>(c.value.size()))
        << c.why;
    EXPECT_EQ(found.value, c.value) << c.why;
  }
}

// A marker is cut after 126 bytes. Then nothing tells a line's value from the start of a block.
TEST_F(TaggedFile, CutsLongTags) {
  const std::string tag(200, 't');
  const std::string cut = "#" + tag.substr(0, 125), end = "#<" + tag.substr(0, 124);
  EXPECT_EQ(look_up("*% " + cut + "\n*% ab\n*% " + end + "\n", tag).value, "ab");
  EXPECT_EQ(look_up("*% #" + tag + ":x\n*% ab\n*% #<" + tag + "\n", tag).value, "ab");
  EXPECT_EQ(look_up("*% " + cut.substr(0, 125) + ":x\n", tag).status, -1);
  const std::string longest(124, 't');
  EXPECT_EQ(look_up("*% #" + longest + ":x\n", longest).value, "x");
}

TEST_F(TaggedFile, IsDecodedOnRequest) {
  const std::string text = "*% #T>\n*% dfd\n*% b=aaaa\n*% aank\n*% #<T\n";
  EXPECT_EQ(look_up(text, "T", 1).value, "ok");
  EXPECT_EQ(look_up(text, "T", 2).value, "dfdb=aaaaaank");
  EXPECT_EQ(look_up("*% #T:dfdb=aaaaaanj\n", "T", 1).status, -1);
  EXPECT_EQ(look_up("*% #T:short\n", "T", 1).status, -1);
  EXPECT_EQ(look_up("*% #T:=aaaaaaaa\n", "T", 1).status, 0) << "no data is a value";
}

// The file is read twice: for the length, then for the value, which has room for that many bytes.
TEST_F(TaggedFile, MayChangeWhileItIsRead) {
  const struct {
    const char* then;
    Found found;
  } kRows[] = {{"*% #T:ab\n", {2, "ab"}},
               {"*% #T:a\n", {1, "a"}},
               {"*% #T:abcd\n", {-1, ""}},
               {"", {-1, ""}}};
  for (const auto& row : kRows) {
    ASSERT_EQ(mkfifo(path_.c_str(), 0600), 0);
    std::thread writer([&] {
      const int first = open(path_.c_str(), O_WRONLY);
      unlink(path_.c_str());
      std::ofstream(path_) << row.then;
      EXPECT_EQ(write(first, "*% #T:xy\n", 9), 9);
      close(first);
    });
    const Found got = look_up_in(path_, "T");
    writer.join();
    unlink(path_.c_str());
    EXPECT_EQ(got.status, row.found.status) << row.then;
    EXPECT_EQ(got.value, row.found.value);
  }
}

TEST_F(TaggedFile, MayBeNoFile) {
  EXPECT_EQ(look_up_in(testing::TempDir(), "T").status, -1);
  EXPECT_EQ(look_up_in(path_ + "-missing", "T").status, -1);
  EXPECT_EQ(look_up_in("", "T").status, -1);
}

}  // namespace
