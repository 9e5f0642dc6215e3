// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

#include <algorithm>

#include "engine_routes.hpp"
#include "support.hpp"

namespace {

using pxcl_test::ExactBlock;
using pxcl_test::Request;
using pxcl_test::Texts;

constexpr std::string_view kHead = "<?xml ?>";
constexpr int kTooSmall = -12;

struct Replacement {
  std::string path;
  std::string value;
};

// A replacement of values by path, into a buffer of the caller's size.
struct Job {
  Job(std::string_view body, const std::vector<Replacement>& replacements)
      : values(replacements), texts(make_case(body, replacements)), request(texts) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      request.parameters[i].newValue = values[i].value.data();
      request.parameters[i].newValueLength = values[i].value.size();
    }
  }

  static pxcl_test::EngineCase make_case(std::string_view body,
                                         const std::vector<Replacement>& replacements) {
    pxcl_test::EngineCase one;
    one.document = std::string(kHead) + std::string(body);
    for (const Replacement& replacement : replacements) one.paths.push_back(replacement.path);
    return one;
  }

  int write(char* output, std::size_t size) {
    request.record.output = output;
    request.record.outputSize = size;
    return ClXmlReplaceParameter(&request.record);
  }

  // The new document without its declaration, or the status.
  std::string run() {
    std::string output(1024, '#');
    const int result = write(output.data(), output.size());
    if (result != 0) return std::to_string(result);
    return output.substr(kHead.size(), request.record.outputSize - kHead.size());
  }

  std::vector<Replacement> values;
  Texts texts;
  Request<ClXmlParameter> request;
};

TEST(Writer, ReplacesValues) {
  const struct {
    const char* body;
    std::vector<Replacement> replacements;
    const char* expected;
  } kRows[] = {
      {"<cmd><a>x</a></cmd>", {{"cmd/a", "longer"}}, "<cmd><a>longer</a></cmd>"},
      {"<cmd><a>longer</a>t</cmd>", {{"cmd/a", "x"}}, "<cmd><a>x</a>t</cmd>"},
      {"<cmd><a>x</a><b>y</b></cmd>",
       {{"cmd/b", "bb"}, {"cmd/a", "aaa"}},
       "<cmd><a>aaa</a><b>bb</b></cmd>"},
      {"<cmd><a></a></cmd>", {{"cmd/a", "v"}}, "<cmd><a>v</a></cmd>"},
      {"<cmd><a/></cmd>", {{"cmd/a", "v"}}, "<cmd><a>v</a></cmd>"},
      {"<cmd><p:a /></cmd>", {{"cmd/p:a", "v"}}, "<cmd><p:a >v</p:a></cmd>"},
      {"<cmd><a \t/>t</cmd>", {{"cmd/a", "v"}}, "<cmd><a \t>v</a>t</cmd>"},
      {"<cmd><a x=\"b/c\"/></cmd>", {{"cmd/a x=\"b/c\"", "v"}}, "<cmd><a x=\"b/c\">v</a></cmd>"},
      {"<cmd><a x=\"b/c\" /></cmd>", {{"cmd/a x=\"b/c\"", "v"}}, "<cmd><a x=\"b/c\" >v</a></cmd>"},
      {"<cmd>a > b<a <x=\"1\" /></cmd>",
       {{"cmd/a <x=\"1\"", "v"}},
       "<cmd>a > b<a <x=\"1\" >v</a></cmd>"},
      {"<cmd><a x=\"1\"/></cmd>",
       {{"cmd/a x", "\"2\""}, {"cmd/a x=\"1\"", "v"}},
       "<cmd><a x=\"2\">v</a></cmd>"},
      {"<cmd><a/><b/></cmd>", {{"cmd/a", "1"}, {"cmd/b", "22"}}, "<cmd><a>1</a><b>22</b></cmd>"},
      {"<cmd><a>x</a></cmd>", {{"cmd/b", "v"}, {"cmd/c", "w"}}, "<cmd><a>x</a></cmd>"},
      {"<cmd><a>x</a></cmd>", {{"cmd/a", ""}}, "<cmd><a>x</a></cmd>"},
      {"<cmd><a>x</a></cmd>", {{"cmd/a", "first"}, {"cmd/a", "2"}}, "<cmd><a>2</a></cmd>"},
      {"<cmd><a>x</a><b>y</b></cmd>",
       {{"cmd/a", "vv"}, {"cmd/b", ""}},
       "<cmd><a>vv</a><b>y</b></cmd>"},
      {"<cmd><a></b></cmd>", {{"cmd/a", "v"}}, "-10"},
  };
  for (const auto& row : kRows)
    EXPECT_EQ(Job(row.body, row.replacements).run(), row.expected) << row.body;
}

TEST(Writer, FitsExactly) {
  for (const char* body : {"<cmd><a>x</a><b>long</b></cmd>", "<cmd><a  /><b></b></cmd>"}) {
    Job job(body, {{"cmd/a", "value"}, {"cmd/b", "b"}});
    const std::size_t needed = job.run().size() + kHead.size();
    const auto write = [&](char* output, std::size_t size) {
      const int result = job.write(output, size);
      EXPECT_EQ(job.request.record.outputSize, needed);
      if (result != kTooSmall) return result;
      const std::string_view document(job.texts.document.get(), job.texts.length);
      const std::string_view begun = document.substr(0, size);
      EXPECT_EQ(std::string_view(output, begun.size()), begun);
      return result;
    };
    pxcl_test::fits_at_every_capacity(needed, write, kTooSmall);
  }
}

TEST(Writer, RecordsOfOnePathPointerShareTheLastPlace) {
  Job job("<cmd><a>x</a><b>y</b></cmd>", {{"cmd/a", "first"}, {"cmd/b", "second"}});
  char output[64];
  ASSERT_EQ(job.write(output, sizeof output), 0);
  const std::uint64_t second = job.request.parameters[1].newValueOffset;
  job.request.parameters[0].path = job.request.parameters[1].path;
  job.request.record.outputSize = sizeof output;
  EXPECT_EQ(ClXmlWrite(&job.request.record), 0);
  EXPECT_EQ(job.request.parameters[0].newValueOffset, second);
}

// Whatever the order of the path pointers is.
TEST(Writer, EveryRecordTellsWhereItsValueStands) {
  static constexpr std::string_view kPaths = "cmd/acmd/bcmd/c";
  std::size_t order[] = {0, 1, 2};
  do {
    Job job("<cmd><a>x</a><b/><c>z</c></cmd>", {{"cmd/a", "1"}, {"cmd/b", "22"}, {"cmd/c", "333"}});
    for (std::size_t i = 0; i < std::size(order); ++i) {
      job.request.parameters[i].path = kPaths.data() + 5 * order[i];
      job.request.parameters[i].newValue = job.values[order[i]].value.data();
      job.request.parameters[i].newValueLength = job.values[order[i]].value.size();
    }
    const std::string written = job.run();
    EXPECT_EQ(written, "<cmd><a>1</a><b>22</b><c>333</c></cmd>");
    for (const ClXmlParameter& parameter : job.request.parameters) {
      const std::string_view value(parameter.newValue, parameter.newValueLength);
      EXPECT_EQ(written.substr(parameter.newValueOffset - kHead.size(), value.size()), value);
      EXPECT_EQ(parameter.status, 1);
    }
  } while (std::next_permutation(std::begin(order), std::end(order)));
}

TEST(Writer, TheLaterRecordOfOnePathPointerIsWritten) {
  Job job("<cmd><a>x</a></cmd>", {{"cmd/a", "first"}, {"cmd/a", "second"}, {"cmd/a", "third"}});
  for (ClXmlParameter& parameter : job.request.parameters) {
    parameter.path = job.request.parameters[0].path;
  }
  EXPECT_EQ(job.run(), "<cmd><a>third</a></cmd>");
  for (const ClXmlParameter& parameter : job.request.parameters) {
    EXPECT_EQ(parameter.newValueOffset, kHead.size() + 8);
  }
}

TEST(Writer, RefusesRangesThatCannotBe) {
  constexpr std::uint64_t kHuge = ~std::uint64_t{0};
  const struct {
    std::uint64_t offset, length;
    int status;
  } kRows[] = {{20, 11, 1},   {kHuge, 1, 1}, {9, kHuge, 1}, {15, 3, 1},    {28, 0, -103},
               {29, 0, -103}, {30, 0, -103}, {27, 0, -103}, {26, 0, -103}, {12, 0, -103}};
  for (const auto& row : kRows) {
    Job job("<cmd><a>xyz</a></cmd> ", {{"cmd/a", "value"}, {"cmd/b", "value"}});
    std::string output(64, '#');
    ASSERT_EQ(job.write(output.data(), output.size()), 0);
    ClXmlParameter& damaged = job.request.parameters[1];
    damaged.valueOffset = row.offset;
    damaged.valueLength = row.length;
    damaged.status = row.status;
    output.assign(64, '#');
    job.request.record.outputSize = output.size();
    EXPECT_EQ(ClXmlWrite(&job.request.record), -2) << row.offset;
    EXPECT_EQ(output, std::string(64, '#'));
  }
}

// No place, no length where there is a value, no new value: such a record changes nothing.
TEST(Writer, LeavesOutRecordsThatAreNotApplied) {
  const struct {
    std::uint64_t offset, length;
    int status;
    const char* newValue;
  } kRows[] = {
      {0, 3, 1, "v"}, {0, 0, -102, "v"}, {20, 0, 1, "v"}, {20, 0, -101, "v"}, {20, 3, 1, nullptr}};
  for (const auto& row : kRows) {
    Job job("<cmd><a>xyz</a></cmd>", {{"cmd/a", "value"}, {"cmd/b", "v"}});
    std::string output(64, '#');
    ASSERT_EQ(job.write(output.data(), output.size()), 0);
    const std::string expected = output;
    ClXmlParameter& other = job.request.parameters[1];
    other.valueOffset = row.offset;
    other.valueLength = row.length;
    other.status = row.status;
    other.newValue = row.newValue;
    output.assign(64, '#');
    job.request.record.outputSize = output.size();
    EXPECT_EQ(ClXmlWrite(&job.request.record), 0) << row.offset;
    EXPECT_EQ(output, expected) << row.offset;
  }
}

TEST(Writer, RefusesValuesThatNoTextHas) {
  constexpr std::uint64_t kMost = std::min(std::uint64_t{1} << 62, std::uint64_t{SIZE_MAX / 2});
  const struct {
    std::uint64_t a, b;
    int status;
  } kRows[] = {{kMost, 0, kTooSmall}, {kMost + 1, 0, -2}, {kMost, 1, -2}, {1, kMost, -2}};
  for (const auto& row : kRows) {
    Job job("<cmd><a>x</a><b>y</b></cmd>", {{"cmd/a", "v"}, {"cmd/b", "v"}});
    char output[64];
    ASSERT_EQ(job.write(output, sizeof output), 0);
    job.request.parameters[0].newValueLength = row.a;
    job.request.parameters[1].newValueLength = row.b;
    EXPECT_EQ(ClXmlWrite(&job.request.record), row.status) << row.a << ' ' << row.b;
  }
}

TEST(EmptyTag, IsFoundAndExpandedInPlace) {
  const struct {
    const char* tag;  // the position is that of the scan
    std::uint64_t position;
    const char* name;  // null: no such tag
    const char* expanded;
  } kRows[] = {
      {"<a/>", 3, "a", "<a>v</a>"},
      {"<b/><a />", 6, "a", "<b/><a >v</a>"},
      {"<ab  />", 3, "ab", "<ab  >v</ab>"},
      {"<a x=\"b/c\"/>", 11, "a", "<a x=\"b/c\">v</a>"},
      {"<a x=\"b/c\" />", 10, "a", "<a x=\"b/c\" >v</a>"},
      {"<a>", 2, nullptr, ""},
      {"x/<a>", 4, nullptr, ""},
      {"a/>", 2, nullptr, ""},
      {"/>", 0, nullptr, ""},
      {">", 0, nullptr, ""},
      {"<a/ >", 4, nullptr, ""},
      {"<a >", 2, nullptr, ""},
  };
  for (const auto& row : kRows) {
    const std::string_view tag = row.tag;
    const ExactBlock exact(tag);
    ClXmlParameter parameter = {};
    parameter.newValue = "v";
    parameter.newValueLength = 1;
    parameter.newValueOffset = row.position;
    std::uint64_t offset = 0;
    std::uint64_t length = 0;
    const int result = ClXmlCheckEmptyTagSpec(exact.data(), &parameter, &offset, &length);
    EXPECT_EQ(result, row.name == nullptr ? -11 : 0) << tag;
    EXPECT_EQ(result == 0 ? tag.substr(offset, length) : "", result == 0 ? row.name : "");
    std::string buffer = std::string(tag) + std::string(1 + length + 2, '#');
    std::uint64_t end = 0;
    EXPECT_EQ(ClXmlExpandEmptyElement(buffer.data(), &parameter, &end, &length), result);
    if (result != 0) continue;
    EXPECT_EQ(buffer, row.expanded);
    EXPECT_EQ(end, buffer.size());
    EXPECT_EQ(buffer[parameter.newValueOffset], 'v');
  }
}

}  // namespace
