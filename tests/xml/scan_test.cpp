// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// What whole documents answer, through the request functions.

#include <gtest/gtest.h>

#include "engine_routes.hpp"
#include "support.hpp"

namespace {

using pxcl_test::EngineCase;
using pxcl_test::Request;
using pxcl_test::Texts;

constexpr std::string_view kHead = "<?xml ?>";

// "status [value][value]" for each path of a list request, after "result@stop".
std::string answer(const EngineCase& one) {
  const Texts texts(one);
  Request<ClXmlListParameter> request(texts);
  const int result = pxcl_test::ask(request, one.flags != 0);
  std::ostringstream text;
  text << result << '@' << request.record.stopPosition;
  for (const ClXmlListParameter& parameter : request.parameters) {
    text << ' ' << parameter.status;
    for (std::uint32_t i = 0; i < parameter.rangeCount; ++i) {
      const ClXmlValueRange& range = parameter.ranges[i];
      text << '[' << one.document.substr(range.offset, range.length) << ']';
    }
  }
  return text.str();
}

std::string answer(std::string_view path, std::string_view body, std::uint32_t flags = 0) {
  return answer({flags, {std::string(path)}, 0, std::string(kHead) + std::string(body)});
}

// Results and stop positions; the stop position counts from behind the declaration.
TEST(Scan, ResultsAndStopPositions) {
  const struct {
    const char* body;
    int result;
    std::size_t stop;
    const char* what;
  } kRows[] = {
      {"<cmd></cmd>tail", 0, 11, "stops behind the root"},
      {"<cmd><a>", 0, 8, "open elements are no error"},
      {"", 0, 0, "nothing but the declaration"},
      {"  <", -5, 2, "\"<\" at the end"},
      {"<!", -5, 0, "\"<!\" at the end"},
      {"<!>", -5, 0, "nothing in it"},
      {"<!x", -6, 0, "no \">\""},
      {"<cmd", -6, 0, "no \">\""},
      {"<cmd><![CDATA[x]>", -6, 5, "no \"]]>\""},
      {"<cmd><![CDATA[>", -6, 5, "nothing but a \">\""},
      {"<cmd><![CDATA[]]></cmd>", -2, 16, "an empty section"},
      {"<cmd>text", -6, 5, "text to the end"},
      {"<cmd>a</cmd><", 0, 12, "not looked at behind the root"},
      {"<_a>", -7, 0, "not a letter"},
      {"<cmd><a b=\"x>y\"></a></cmd>", -7, 12, "the tag ends at the first \">\""},
      {"<cmd a b=\"x\">", -8, 12, "white space in a name"},
      {"<cmd a>", -8, 6, "no value"},
      {"<cmd a=\"<\">", -8, 10, "\"<\" in a value"},
      {"<cmd =\"v\">", -2, 9, "no name"},
      {"<cmd><a></b></cmd>", -10, 11, "another element's end tag"},
      {"<cmd></>", -2, 7, "an end tag without a name"},
      {"</cmd>", -2, 5, "no element is open"},
      {"<root></root>", -13, 5, "not cmd"},
      {"<cmdx></cmdx>", -13, 12, "opens as cmd, can't close"},
      {"<cmd></cmd >", -13, 11, "white space in the root's end tag"},
      {"<cmd/>", -13, 5, "closes by itself"},
      {"<cmd a='x'></cmd>", 0, 17, "single quotes: no attribute"},
      {"<!-- a > b --><cmd>", 0, 19, "the comment ends at its first \">\""},
  };
  for (const auto& row : kRows) {
    const std::string expected =
        std::to_string(row.result) + "@" + std::to_string(kHead.size() + row.stop) + " ";
    EXPECT_EQ(answer("cmd/x/y", row.body).substr(0, expected.size()), expected)
        << row.body << ": " << row.what;
  }
}

TEST(Scan, Declarations) {
  const char* const kRows[][2] = {{"<?xml", "-5@0 -101"},
                                  {"<?xml?><cmd></cmd>", "-3@0 -101"},
                                  {"<cmd></cmd>", "-3@0 -101"},
                                  {" <?xml ?><cmd></cmd>", "-4@1 -101"},
                                  {"xxx<?xml", "-3@0 -101"},
                                  {"<?xml\t", "-6@0 -101"},
                                  {"\xEF\xBB\xBF<?xml ?>", "-4@3 -101"}};
  for (const auto& row : kRows) EXPECT_EQ(answer({0, {"cmd"}, 0, row[0]}), row[1]) << row[0];
}

TEST(Scan, Values) {
  const struct {
    const char* path;
    const char* body;
    const char* expected;
    const char* what;
  } kRows[] = {
      {"cmd/a", "<cmd><a> x y\r\n</a><a>z</a></cmd>", "1[x y][z]", "trimmed, every one"},
      {"cmd/a", "<cmd><a>&amp;</a></cmd>", "1[&amp;]", "entities stay"},
      {"cmd/a", "<cmd><a>1<b/></a></cmd>", "1[1][]", "the end tag finds another serial"},
      {"cmd/a", "<cmd><a>1</a></cmd>", "1[1]", "the end tag finds this one"},
      {"cmd/a", "<cmd><a> </a></cmd>", "-102[]", "white space is no text"},
      {"cmd/a", "<cmd><a/></cmd>", "-103[]", "an empty-element tag"},
      {"cmd/a", "<cmd><a/><a></a></cmd>", "-103[][]", "the first one's status"},
      {"cmd/a", "<cmd><a/><a>x</a></cmd>", "1[][x]", "any value counts"},
      {"cmd/a", "<cmd><a><![CDATA[ <x> ]]>y</a></cmd>", "1[ <x> ][y]", "sections are not trimmed"},
      {"cmd/a", "x<cmd></cmd>", "1[x]", "text before the root is everyone's"},
      {"cmd", "<cmd><!-- a > b --></cmd>", "1[b -->]", "what follows a comment's first \">\""},
      {"cmd/a k", "<cmd><a k=\"v\" l=\"w\"/></cmd>", "1[\"v\"]", "with its quotes"},
      {"cmd/a k", "<cmd><a l=\"w\"/></cmd>", "-101", "not among the attributes"},
      {"cmd/a k", "<cmd><a k=\"v\" k=\"w\"/></cmd>", "1[\"v\"]", "the first of that name"},
      {"cmd/a k", "<cmd><a k=\"\">x</a></cmd>", "1[\"\"]", "quotes are a value"},
      {"cmd/a zirk:k", "<cmd xmlns:p=\"%C\"><a p:k=\"v\"/></cmd>", "-101",
       "attribute names are looked up as written"},
      {"cmd/zirk:a", "<cmd xmlns:p=\"%C\"><p:a>x</p:a></cmd>", "1[x]", "any prefix"},
      {"cmd/zirk:a", "<cmd xmlns:pre=\"%C\"><p:a>x</p:a></cmd>", "1[x]", "the beginning of one"},
      {"cmd/p:a", "<cmd xmlns:pre=\"%C\"><prefix:a>x</prefix:a><p:a>y</p:a></cmd>", "-101",
       "unknown"},
      {"cmd/zirk:a", "<cmd xmlns=\"%C\"><xmlns:a>x</xmlns:a></cmd>", "1[x]",
       "a default one is \"xmlns\""},
      {"cmd/zirk:a", "<cmd><b xmlns:p=\"%C\"></b><p:a>x</p:a></cmd>", "1[x]", "declared for good"},
      {"cmd/a/b", "<cmd><a k=\"v\"><b>x</b></a></cmd>", "-101", "attributes must be named"},
      {"cmd/a k=\"v\"/b", "<cmd><a k=\"v\"><b>x</b></a></cmd>", "1[x]", "and then match"},
      {"cmd/", "<cmd>1<a>2<b>3</b></a></cmd>", "1[2][3]", "all that is below"},
  };
  for (const auto& row : kRows) {
    std::string body = row.body;
    if (const std::size_t at = body.find("%C"); at != body.npos)
      body.replace(at, 2, clNsTable[0].uri);
    const std::string got = answer(row.path, body);
    EXPECT_EQ(got.substr(got.find(' ') + 1), row.expected)
        << row.path << " " << body << ": " << row.what;
  }
}

TEST(Scan, DeclaringElementKeepsItsOwnName) {
  const std::string body =
      std::string("<cmd><p:a xmlns:p=\"") + clNsTable[0].uri + "\"><p:b>x</p:b></p:a>";
  EXPECT_EQ(answer("cmd/p:a/zirk:b", body),
            "-10@" + std::to_string(kHead.size() + body.size() - 1) + " 1[x]");
}

TEST(Scan, EmptyElementServesTheFirstTargetOnly) {
  EXPECT_EQ(answer({0, {"cmd/a", "cmd/a", "cmd/b", "cmd/b"}, 0, "<?xml ?><cmd><a/><b>x</b></cmd>"}),
            "0@31 -103[] -101 1[x] 1[x]");
}

TEST(Scan, NullLaterPath) {
  const EngineCase one = {0, {"cmd/a", "cmd/b"}, 1, "<?xml ?><cmd><a></a>x</cmd>"};
  EXPECT_EQ(answer(one), "-9@20 -102[] -101");
  const Texts texts(one);
  Request<ClXmlParameter> request(texts);
  EXPECT_EQ(ClXmlRequestParameter(&request.record), -9);
  EXPECT_EQ(request.parameters[1].status, -9);
  request.parameters[1].pathLength = ~std::uint64_t{0};  // of nothing
  EXPECT_EQ(ClXmlRequestParameter(&request.record), -9);
  EXPECT_EQ(request.parameters[1].status, -9);
  EXPECT_EQ(answer({0, {"cmd/b", "cmd/b"}, 1, one.document}), "-2@19 -101 -101");
}

TEST(Scan, AnyRoot) {
  EXPECT_EQ(answer("root/a", "<root><a>x</a></root >y", CL_XML_COM_FLAG), "0@30 1[x]");
  EXPECT_EQ(answer("root", "<root/>y", CL_XML_COM_FLAG), "0@15 -103[]");
}

// Of a run that a caller has filled: what has no place in the document is no value.
TEST(Requests, AMatchWithoutPlaceIsNoValue) {
  const Texts texts({0, {"cmd/a"}, 0, "<?xml ?><cmd></cmd>"});
  Request<ClXmlListParameter> request(texts);
  ClXmlParserData* data = nullptr;
  ASSERT_EQ(ClXmlInitializeParserData(&data, 0, nullptr, &request.record), 0);
  data->targets[0].matches = static_cast<ClXmlMatch*>(ClXmlMemAlloc(sizeof(ClXmlMatch)));
  *data->targets[0].matches = {1, 0, 5, -102};
  data->targets[0].matchCount = 1;
  EXPECT_EQ(ClXmlStoreParserData(data, nullptr, &request.record), 0);
  EXPECT_EQ(request.parameters[0].status, -102);
  ClXmlUnInitializeParserData(data);
}

TEST(Requests, ListsMustHoldNoRanges) {
  const Texts texts({0, {"cmd/a"}, 0, "<?xml ?><cmd><a>x</a></cmd>"});
  Request<ClXmlListParameter> request(texts);
  EXPECT_EQ(ClXmlRequestParameterList(&request.record), 0);
  EXPECT_EQ(ClXmlRequestParameterList(&request.record), -2);
  EXPECT_EQ(ClComXmlRequestParameterListFree(&request.record), 0);
  EXPECT_NE(request.parameters[0].ranges, nullptr) << "freed pointers stay";
  request.parameters[0].ranges = nullptr;
  request.record.parameterCount = 0;
  EXPECT_EQ(ClXmlRequestParameterListFree(&request.record), 0);
}

}  // namespace
