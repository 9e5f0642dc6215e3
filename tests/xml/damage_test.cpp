// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Every allocation failed once on what no exported function shows: the plain route and the scan.

#include <gtest/gtest.h>

#include <cctype>

#include "engine_routes.hpp"
#include "support.hpp"

namespace {

using pxcl_test::EngineCase;
using pxcl_test::Request;
using pxcl_test::Texts;

constexpr int kNoMemory = -11;
constexpr int kBadArgument = -2;  // of an empty element that could not be recorded

// More elements, attributes, matches and paths than the engine keeps without allocating.
EngineCase make_large() {
  EngineCase one;
  one.document = "<?xml ?><cmd>";
  std::string path = "cmd";
  for (int i = 0; i < 80; ++i) {
    const std::string name = std::string("e").append(std::to_string(i));
    one.paths.push_back("cmd/" + name);
    one.document += "<" + name + ">value</" + name + ">";
  }
  for (int i = 0; i < 12; ++i) one.document += "<x>" + std::to_string(i) + "</x><y/>";
  one.document += "<many";
  for (int i = 0; i < 40; ++i) one.document += " k" + std::to_string(i) + "=\"v\"";
  one.document += "/>";
  for (int i = 0; i < 100; ++i) {
    one.document += "<d>";
    path += "/d";
  }
  one.document += "<s/\"k=\"v\">odd</s/\"k></cmd>";
  for (const char* more : {"cmd/x", "cmd/y", "cmd/many k3", "cmd/many k1=\"v\" k2"})
    one.paths.push_back(more);
  one.paths.push_back(path);
  return one;
}

bool is_documented(int result, std::string_view document) {
  const bool hasEmptyElement = document.find("/>") != document.npos;
  return result == kNoMemory || (result == kBadArgument && hasEmptyElement);
}

void fail_runs(const Texts& texts, int (*call)(Request<ClXmlListParameter>& request)) {
  int whole = 0;
  pxcl_test::fails_cleanly_at_every_allocation([&](bool failing) {
    Request<ClXmlListParameter> request(texts);
    const int result = call(request);
    if (!failing) whole = result;
    const std::string_view document(texts.document.get(), texts.length);
    EXPECT_TRUE(result == whole || is_documented(result, document)) << result;
  });
}

TEST(ShortMemory, PlainRoute) {
  EngineCase small = make_large();
  small.paths = {"cmd/x", "cmd/y", "cmd/many k1=\"v\" k2", "cmd/many"};
  for (int i = 0; i < 9; ++i) small.paths.back() += " k" + std::to_string(i) + "=\"v\"";
  small.document = small.document.substr(small.document.find("<x>1</x>"));
  small.document = "<?xml ?><cmd>" + small.document;
  fail_runs(Texts(small), [](auto& request) {
    std::string run;
    return pxcl_test::run_plain(request, 0, run);
  });
}

TEST(ShortMemory, RequestsAndRuns) {
  const Texts texts(make_large());
  fail_runs(texts, [](auto& request) { return ClXmlRequestParameterList(&request.record); });
  fail_runs(texts, [](auto& request) {
    std::string run;
    return pxcl_test::run_route(request, 0, ClXmlParse, run);
  });
  // One that the steps have to take.
  fail_runs(Texts({0, {"cmd/a", "cmd/b"}, 1, "<?xml ?><cmd><a>x</a></cmd>"}), [](auto& request) {
    request.parameters[1].pathLength = ~std::uint64_t{0};
    return ClXmlRequestParameterList(&request.record);
  });
}

// Without any of its blocks the scan fails.
void fail_scans(const EngineCase& one) {
  SCOPED_TRACE(one.document);
  pxcl_test::fails_cleanly_at_every_allocation([&](bool failing) {
    std::vector<pxcl::xml::Key> keys;
    for (const std::string& path : one.paths) {
      const auto group = static_cast<std::uint32_t>(keys.size());
      keys.push_back(
          {path, group % 2 == 0 ? pxcl::xml::Wanted::kAll : pxcl::xml::Wanted::kFirst, group});
    }
    pxcl_test::Answers answers(keys.size());
    const int result = pxcl::xml::scan(one.document, 0, keys, answers.all, nullptr);
    EXPECT_TRUE(!failing || is_documented(result, one.document)) << result;
  });
}

TEST(ShortMemory, Scan) {
  fail_scans(make_large());
}

// The one-letter names of elements in a document or a path, with a prefix that is known to stand as it is:
// their tags are told by their bytes.
std::string with_prefixes(const std::string& text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char before = i == 0 ? ' ' : text[i - 1];
    const char next = i + 1 == text.size() ? '/' : text[i + 1];
    const bool isName = (before == '<' || before == '/') && std::isalpha(text[i]) != 0;
    if (isName && std::isalpha(next) == 0) out += "zirk:";
    out += text[i];
  }
  return out;
}

void fail_scans_both_ways(EngineCase one) {
  fail_scans(one);
  one.document = with_prefixes(one.document);
  for (std::string& path : one.paths) path = with_prefixes(path);
  fail_scans(one);
}

// Matches among elements that are alike, few and so many that the scan follows them.
TEST(ShortMemory, Lists) {
  for (const int rows : {20, 80}) {
    EngineCase one;
    one.document = "<?xml ?><cmd>";
    for (int i = 0; i < rows; ++i) {
      one.document += "<a k=\"v\"><b>1</b><c l=\"w\">2</c><d>3</d></a><e k=\"v\">4</e>";
    }
    one.document += "</cmd>";
    EXPECT_EQ(with_prefixes(one.document).size() >= pxcl::xml::kShortestRepeating, rows == 80);
    for (const char* path : {"cmd/a k", "cmd/a k/b", "cmd/a k/c l=\"w\"", "cmd/a k/c l",
                             "cmd/e k=\"v\"", "cmd/a k/d", "cmd/e k=\"v\" k", "cmd/e k"}) {
      one.paths = {path, "cmd/none k=\"v\""};
      fail_scans_both_ways(one);
    }
  }
}

// One empty element for more groups than are kept without allocating.
TEST(ShortMemory, Groups) {
  EngineCase one;
  one.document = "<?xml ?><cmd><a/></cmd>";
  one.paths.assign(40, "cmd/a");
  fail_scans(one);
}

// More paths than the index keeps without allocating, each form of an element by itself.
TEST(ShortMemory, Paths) {
  for (const char* element : {"", " k", " k=\"v\"", "  k=\"v\" l", "/ k=\"v\"", "/"}) {
    EngineCase one;
    for (int i = 0; i < 140; ++i) one.paths.push_back("cmd/n" + std::to_string(i) + element);
    one.document = "<?xml ?><cmd><n7 k=\"v\">text</n7></cmd>";
    fail_scans(one);
  }
}

// The attributes of one element do not fit where those of a usual request stand.
TEST(ShortMemory, PathsOfManyAttributes) {
  EngineCase one = {0, {"cmd/a"}, 0, "<?xml ?><cmd>text</cmd>"};
  for (int i = 0; i < 80; ++i) one.paths.back() += " k" + std::to_string(i) + "=\"v\"";
  fail_scans(one);
}

TEST(ShortMemory, PathsOfManyElements) {
  EngineCase one = {0, {"cmd"}, 0, "<?xml ?><cmd>text</cmd>"};
  for (int i = 0; i < 200; ++i) one.paths[0] += "/e" + std::to_string(i);
  fail_scans(one);
}

// Texts that elements far apart ask for: before the root, below a path that ends in "/", between tags.
TEST(ShortMemory, Texts) {
  static constexpr const char* kRows[][2] = {{"cmd", "t<cmd>"},
                                             {"cmd/b/", "t<cmd>"},
                                             {"cmd/b/c", "<cmd><b/ >t</ >"},
                                             {"cmd/b/c/", "<cmd><b/ >t</ >"},
                                             {"cmd/b", "<cmd><b><c>x</c>t<c>"},
                                             {"cmd/b k=\"v\"", "<cmd><b k=\"v\">x</b>"}};
  for (const auto& [path, body] : kRows) {
    fail_scans({0, {path}, 0, "<?xml ?>" + std::string(body) + std::string(80, ' ')});
  }
}

// The ninth open element whose path ends in "/" is one too many.
TEST(ShortMemory, PathsThatEndInASeparator) {
  static constexpr const char* kLast[][2] = {
      {"b", "b"},     {"b k", "b k=\"v\""}, {"b k=\"v\"", "b k=\"v\""},
      {"b/c", "b/c"}, {"b/c", "b/c/"},      {"b l=\"w\" k=\"v\"", "b k=\"v\" l=\"w\""}};
  for (const auto& [path, tag] : kLast) {
    EngineCase one;
    std::string above = "cmd/";
    one.document = "<?xml ?><cmd>";
    for (int i = 0; i < 7; ++i, above += "a/", one.document += "<a>") one.paths.push_back(above);
    for (const std::string& last : {above, above + path + "/"}) one.paths.push_back(last);
    one.document += std::string("<") + tag + "><x>text</x>" + std::string(600, ' ');
    fail_scans_both_ways(one);
  }
}

// The same when one tag opens them all, and when an open tag comes to mean them by a declaration.
TEST(ShortMemory, ManyPathsOfOneElementThatEndInASeparator) {
  static constexpr const char* kRows[][2] = {{"k=\"v\"/", "<a k=\"v\">"},
                                             {"k=\"v\"/", "<a k=\"q:v\"><c><b xmlns:q=\"%\">"},
                                             {"k=\"v\"/", "<a/b k=\"q:v\"><b xmlns:q=\"%\">"},
                                             {"/", "<a/b>"}};
  for (const auto& [end, tags] : kRows) {
    EngineCase one;
    for (std::string path = "cmd/a"; path.size() < 20;) one.paths.push_back((path += ' ') + end);
    one.document = std::string("<?xml ?><cmd>") + tags + "<x>text</x>" + std::string(600, ' ');
    const std::size_t at = std::min(one.document.find('%'), one.document.size());
    one.document.replace(at, 1, clNsTable[3].uri);
    fail_scans(one);
  }
}

// The path buffer ends in each part of a tag in turn.
TEST(ShortMemory, IrregularTags) {
  for (std::size_t size = 180; size < 260; ++size) {
    for (const char* prefix : {"z", "\"z"}) {
      fail_scans({0,
                  {"cmd/s"},
                  0,
                  std::string("<?xml ?><cmd xmlns:") + prefix + "=\"" + clNsTable[0].uri +
                      "\"><s/" + std::string(size, 's') +
                      "/\"x z:key=\"z:value\"><z:a/b k=\"v\">"});
    }
  }
  std::string deep;
  for (int i = 0; i < 80; ++i) deep += "a/";
  fail_scans({0, {"cmd/a"}, 0, "<?xml ?><cmd><" + deep + ">"});
}

}  // namespace
