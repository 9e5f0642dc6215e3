// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Both routes of the engine on the fuzz target's seeds and on random documents that are rich in
// oddities.

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <random>
#include <unordered_map>

#include "engine_routes.hpp"
#include "support.hpp"
#include "xml/plan.hpp"
#include "xml/shapes.hpp"

namespace {

using pxcl_test::EngineCase;

std::string in_document(const std::string& root, const std::string& inside) {
  return "<?xml version=\"1.0\"?><cmd" + root + ">" + inside + "</cmd>";
}

// The row as often as it takes to make the scan look for what repeats itself.
std::string many_of(const std::string& row) {
  std::string rows;
  while (rows.size() < pxcl::xml::kShortestRepeating) rows += row;
  return rows;
}

TEST(Routes, AgreeOnEverySeed) {
  for (const std::string& file : pxcl_test::list_data("engine")) {
    const EngineCase seed = pxcl_test::read_engine_case(pxcl_test::read_data(file));
    EXPECT_EQ(pxcl_test::compare_routes(seed), "") << file;
  }
}

TEST(Routes, AgreeOnEverySeedCutAtEveryByte) {
  for (const std::string& file : pxcl_test::list_data("engine")) {
    const EngineCase seed = pxcl_test::read_engine_case(pxcl_test::read_data(file));
    EngineCase cut = seed;
    for (std::size_t length = 0; length < seed.document.size(); ++length) {
      cut.document = seed.document.substr(0, length);
      const pxcl_test::Texts texts(cut);
      ASSERT_EQ(pxcl_test::compare_requests<ClXmlListParameter>(texts, cut.flags), "")
          << file << " cut at " << length;
    }
  }
}

// A document from a small grammar; names and prefixes are few, so that things meet.
class Generator {
 public:
  enum Kind { kAny, kZeroBytes, kLists };

  explicit Generator(std::uint32_t seed, Kind kind) : random_(seed), kind_(kind) {}

  EngineCase make() {
    EngineCase result;
    result.flags = chance(5) ? CL_XML_COM_FLAG : 0;
    result.document = kind_ == kLists ? lists() : document(result.flags != 0);
    const std::vector<std::string> seen = paths_of(result);
    const std::size_t count = 1 + below(6);
    while (result.paths.size() < count) {
      result.paths.push_back(vary(seen.empty() ? "cmd/a" : seen[below(seen.size())]));
    }
    if (count > 1 && chance(30)) result.nullPath = 1 + below(count - 1);
    return result;
  }

 private:
  std::size_t below(std::size_t limit) { return random_() % limit; }
  bool chance(std::size_t of) { return below(of) == 0; }
  template <std::size_t N>
  std::string pick(const char* const (&choices)[N]) {
    return choices[below(N)];
  }

  std::string name() {
    static const char* const kPlain[] = {"a",
                                         "b",
                                         "c",
                                         "p:a",
                                         "p:b",
                                         "q:a",
                                         "zirk:a",
                                         "zi:a",
                                         "p:name_of_more_than_16",
                                         "name_of_more_than_thirty_two_bytes"};
    static const char* const kOdd[] = {"a/b", "a\"",     "b\"c",  "a/",      "a//b",
                                       "a:",  "xmlns:a", "p",     "a=b",     "pp:a",
                                       "a'",  "vrx:b",   "a:b:c", "b\"/c\"", "a<b"};
    return chance(8) ? pick(kOdd) : pick(kPlain);
  }

  std::string declaration() {
    static const char* const kPrefix[] = {"xmlns:p",     "xmlns:q",   "xmlns:zirk",
                                          "xmlns:pp",    "xmlns",     "xmlnsx",
                                          "xmlns:zirkx", "xmlns:\"p", "xmlnsx:b"};
    std::string uri = chance(8) ? "http://elsewhere/" : clNsTable[below(4)].uri;
    if (chance(4)) uri.pop_back();
    return pick(kPrefix) + "=\"" + (chance(6) ? " " : "") + uri + "\"";
  }

  std::string attribute() {
    static const char* const kPlain[] = {
        "k=\"v\"",   "l=\"w\"",   "k=\"w\"",
        "p:k=\"v\"", "k=\"x\"",   "k=\"value-of.more,than 16\"",
        "k=\"q:x\"", "k=\"p:x\"", "name_of_more_than_16=\"v\"",
    };
    static const char* const kOdd[] = {
        "k=\"\"",         "k=\" v \"",   "k='v'",    "k='v' l=\"v\"", "k = \"v\"", "k=\"v/w\"",
        "k=\"v\"k=\"w\"", "k\"=\"v\"",   "k/=\"v\"", "k=zz\"v\"",     "k=\":x\"",  "k=\"q:\"",
        "\"p:k=\"v\"",    "k=\"ikw:x\"", "<k=\"v\"", "k=\"p:v/\"",    "k=\"v'w\""};
    static const char* const kBad[] = {"k",       "k=\"v",        "k l=\"v\"", "=\"v\"",
                                       "k=\"<\"", "xmlns:=\"u\"", "=k=\"v\""};
    if (chance(5)) return declaration();
    if (chance(150)) return pick(kBad);
    return chance(5) ? pick(kOdd) : pick(kPlain);
  }

  std::string attributes() {
    static const char* const kGap[] = {" ", " ", " ", "  ", "\n", "\t "};
    std::string text;
    for (std::size_t count = chance(3) ? below(4) : below(2); count != 0; --count) {
      text += pick(kGap) + attribute();
    }
    return text;
  }

  std::string text() {
    static const char* const kTexts[] = {"", "", "", "t", " t ", "\r\n", "a > b", "&amp;", "x\ty "};
    static const char* const kMarkup[] = {
        "<!-- a > b -->",         "<!-- x -->",    "<!---->", "<?pi x?>", "<![CDATA[x]]>",
        "<![CDATA[ <a> ]] > ]]>", "<![CDATA[a/]]>"};
    static const char* const kBad[] = {"<![CDATA[]]>", "<!>", "< a>", "<", "<_a>", "</>", "</b >"};
    if (chance(200)) return pick(kBad);
    return chance(8) ? pick(kTexts) + pick(kMarkup) + pick(kTexts) : pick(kTexts);
  }

  std::string end_tag(const std::string& of) {
    if (chance(60)) return "</" + name() + ">";
    if (chance(40)) return "";
    return "</" + of + (chance(12) ? " >" : ">");
  }

  std::string element(std::size_t depth) {
    const std::string own = name();
    const std::string start = "<" + own + attributes();
    if (chance(5)) return start + (chance(2) ? "/>" : " />");
    std::string inside = text();
    for (std::size_t count = depth == 0 ? 0 : below(4); count != 0; --count) {
      inside += element(depth - 1) + text();
    }
    return start + ">" + inside + end_tag(own);
  }

  std::string document(bool anyRoot) {
    std::string root = anyRoot && chance(2) ? name() : "cmd";
    if (chance(60)) root = "cmdx";
    std::string result = "<?xml version=\"1.0\"?>" + (chance(12) ? text() : "") + "<" + root;
    for (std::size_t count = below(4); count != 0; --count) result += " " + declaration();
    if (chance(10)) result += attributes();
    result += ">" + text();
    for (std::size_t count = 1 + below(4); count != 0; --count) result += element(3) + text();
    result += end_tag(root) + (chance(10) ? "tail" : "");
    for (char& byte : result) {
      if (kind_ == kZeroBytes && chance(400)) byte = '\0';
    }
    return result;
  }

  // A row of a list, with a "*" for each value.
  std::string row(std::size_t depth) {
    static const char* const kNames[] = {"a", "b", "p:a", "zirk:a", "q:name_of_more_than_16"};
    static const char* const kAttributes[] = {"",         "",         "",
                                              " k=\"*\"", " l=\"*\"", " p:attribute=\"*\""};
    static const char* const kGap[] = {"", "", "\n  "};
    const std::string own = pick(kNames);
    std::string text = "<" + own + pick(kAttributes) + ">";
    const std::size_t children = depth == 0 ? 0 : below(4);
    const std::string gap = pick(kGap);
    for (std::size_t i = 0; i < children; ++i) text += gap + row(depth - 1);
    return text + (children == 0 ? "*" : gap) + "</" + own + ">" + gap;
  }

  // The row with values, sometimes with a slip.
  std::string filled(std::string text) {
    static const char* const kValues[] = {"v",
                                          "w",
                                          "v",
                                          "w",
                                          "x",
                                          "17",
                                          "four",
                                          "value-of.more,than 16",
                                          "a value of many more bytes than thirty-two"};
    static const char* const kOdd[] = {
        "", " v", "v ", "p:v", "q:", "v/w", "v>w", "<b/>", "<b>v</b>"};
    static const char* const kSlips[] = {"<a/>",
                                         "<a></a>",
                                         " ",
                                         "t",
                                         "<!-- x -->",
                                         "<![CDATA[x]]>",
                                         "<a k=\"v\" l=\"w\">v</a>",
                                         "<b>v</b>",
                                         "<b k=\"v\"/>"};
    for (std::size_t at = text.find('*'); at != text.npos; at = text.find('*', at + 1)) {
      const std::string value = chance(25) ? pick(kOdd) : pick(kValues);
      text.replace(at, 1, value);
      at += value.size();
    }
    if (chance(12))
      text.insert(text.find(chance(2) ? '<' : '>', below(text.size() / 2)), pick(kSlips));
    if (chance(300)) text.erase(below(text.size()), 1);
    return text;
  }

  // Some are so long that the scan looks for what repeats itself.
  std::string lists() {
    std::string result = "<?xml version=\"1.0\"?><cmd " + declaration() + " " + declaration() + ">";
    const std::size_t least = below(8) == 0 ? pxcl::xml::kShortestRepeating : 1000;
    while (result.size() < least) {
      const std::string one = row(3), other = row(2);
      for (std::size_t count = 2 + below(12); count != 0; --count) {
        result += filled(one);
        if (chance(3)) result += filled(other);
      }
      if (chance(6)) result += "<a " + declaration() + "></a>";
    }
    return result + "</cmd>";
  }

  // Every current path that the step functions go through.
  static std::vector<std::string> paths_of(const EngineCase& one) {
    const pxcl_test::Texts texts({one.flags, {"x"}, 0, one.document});
    pxcl_test::Request<ClXmlParameter> request(texts);
    ClXmlParserData* data = nullptr;
    std::vector<std::string> seen;
    if (ClXmlInitializeParserData(&data, one.flags, &request.record, nullptr) != 0) return seen;
    for (std::uint64_t at = 0; at < one.document.size(); ++at) {
      if (one.document[at] == '<' && ClXmlCheckElement(data, &at) != 0) break;
      if (data->currentPath != nullptr) seen.emplace_back(data->currentPath);
    }
    ClXmlClearPath(data->currentPath);
    ClXmlStoreParserData(data, &request.record, nullptr);
    ClXmlUnInitializeParserData(data);
    return seen;
  }

  std::string vary(std::string path) {
    static const char* const kAppended[] = {" k",      " l",       "/",    "//",   "/a",
                                            "/zirk:a", " k=\"v\"", "/b k", " p:k", " zirk:k"};
    if (chance(3)) path += pick(kAppended);
    if (chance(6)) path += pick(kAppended);
    if (chance(8)) path.erase(below(path.size()));
    if (path.size() > 2 && chance(12)) path.erase(below(path.size()), 1);
    if (const std::size_t value = path.find("=\""); value != path.npos && chance(6)) {
      path.erase(value, path.find('"', value + 2) - value + 1);
    }
    return path.empty() ? "cmd" : path;
  }

  std::mt19937 random_;
  Kind kind_;
};

// Keys that stand in the path buffer, that are blank, and that are every key after one of them.
TEST(Routes, AgreeOnKeysOfOddElements) {
  for (const char* key : {"v", " v", "v ", "w", "v/x k="}) {
    const std::string path = std::string("cmd/b/a k=\"") + key + '"';
    for (const char* body :
         {"<b/a k=\"v\">x<c/>y</a></b><b><a k=\"v\">x</a></b><b/a k=\" \">z</a></b>",
          "<b><a k=\"v\">x</a></b><b/ >t</ ></b><b><a k=\"w\"/></b>",
          "<b><a k=\" v\">x</a><a k=\"v \">y</a><a k=\"v\">z</a><a k=\"\tv\"/></b>",
          "<b/a k=\"v\"><c/></a></b><b/a k=\":v\">x</a>", "<b/a \"k=\"v\"><x k=\"w\">t</x>"}) {
      const std::string document = std::string("<?xml ?>t<cmd>") + body + "</cmd>";
      EXPECT_EQ(pxcl_test::compare_routes({0, {path}, 0, document}), "") << path << document;
    }
  }
}

// An attribute begins at the blank, whatever stands there, and its name ends at the first "=".
TEST(Routes, AgreeOnEqualSignsInNames) {
  for (const char* attribute : {"=k=\"v\"", "==\"v\"", "k==\"v\"", "k=l=\"v\"", "p:k=l=\"v\""}) {
    for (const char* name : {"b", "c"}) {
      const std::string tag = std::string(name) + " " + attribute + ">t</" + name + ">";
      const std::string document = "<?xml ?><cmd><a><" + tag + "<" + tag + "</a></cmd>";
      const std::string path = "cmd/a/b k";
      EXPECT_EQ(pxcl_test::compare_routes({0, {path, path + "=\"v\""}, 0, document}), "")
          << document;
    }
  }
}

// What the fast loop reads by whole lanes and words, and what it has to leave to the others.
TEST(Routes, AgreeOnOddTags) {
  using namespace std::string_literals;
  const struct {
    const char* path;
    std::string inside;
  } kRows[] = {
      {"cmd/a", "<a><![CDATA[>]]></a><a><![CDATA[]>]]></a>"},
      {"cmd/a", "<a>t>12></a><a>t>/a></a>"},
      {"cmd/a/a", "<a><a><a><a><a><a><a><a><a><a>x</a></a></a></a></a></a></a></a></a>></a>"},
      {"cmd/bb kind", "<b kind=\"1\">x</b><bb kind=\"1\">y</bb><b kind=\"2\">z</b>"},
      {"cmd/name_of_sixteen_ kind_of_sixteen_",
       "<name_of_sixteen_ kind_of_sixteen_=\"1\">x</name_of_sixteen_>"
       "<name_of_sixteen_ kind_of_sixteen_=\"2\">y</name_of_sixteen_>"},
      {"cmd/a :k", "<a :k=\"v\">x</a>"},
      {"cmd/zirk:a", "<p=:a>x</p=:a><p:a>y</p:a>"},
      {"cmd/zi", "<zi>x</p:x>"},
      {"cmd/a k", "<a k\0=\"v\">x</a>"s},
      {"cmd/a k", "<a k\1=\"v\">x</a>"},
      {"cmd/a k", "<a k=\"\">x</a><a k=\"" + std::string(64, 'v') + "\">y</a>"},
      {"cmd/a k", "<a k=\"v w\">x</a><a k=\" v\">y</a><a k=\"v \">z</a><a k=\"v>w\">y</a>"},
      {"cmd/a k", "<a k=\"a value of more than 16>w\">x</a>"},
      {"cmd/a k", "<a k=\"a value of more than 16<w\">x</a>"},
      {"cmd/a k=\"v w\"", "<a k=\"v w\">x</a><a k=\"v w\" l=\"\">y</a><a k=\"v w\" >z</a>"},
      {"cmd/a\1", "<a\1>x</a\1>"},
  };
  // Near the document's end a tag with an attribute is read in another way.
  const std::string root = " xmlns:p=\"" + std::string(clNsTable[0].uri) + "\"";
  for (const auto& [path, inside] : kRows) {
    for (const std::string& behind : {std::string(), "<z>" + std::string(200, 't') + "</z>"}) {
      const std::string document = in_document(root, inside + behind);
      EXPECT_EQ(pxcl_test::compare_routes({0, {path}, 0, document}), "") << document;
    }
  }
}

TEST(Routes, AgreeOnWhatBeginsAName) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string name = {static_cast<char>(byte), 'a'};
    const std::string document = "<?xml ?><cmd><" + name + ">t</" + name + "></cmd>";
    EXPECT_EQ(pxcl_test::compare_routes({0, {"cmd/" + name}, 0, document}), "") << byte;
  }
}

// Elements that the index looks up by the same number: names of two lengths in one place, and names in
// two places.
TEST(Routes, AgreeOnElementsOfOneKey) {
  using namespace pxcl::xml;
  std::minstd_rand random(1);
  std::unordered_map<std::uint32_t, std::string> names;  // by their keys below the root element
  std::size_t onePlace = 0, twoPlaces = 0;
  for (int i = 0; i < 300000; ++i) {
    const std::string name = "n" + std::to_string(random() % (i % 2 == 0 ? 100000 : 2000000000));
    const auto key_below = [&](std::uint32_t parent, KeyClass keyClass) {
      const auto length = static_cast<std::uint32_t>(name.size());
      return element_key(parent, hash_bytes(name.data(), length), keyClass);
    };
    const auto agree = [&](const std::string& other) {
      std::string tags;
      for (const std::string& tag : {name, other}) {
        const std::string end = tag + ">";
        tags += "<" + end + "1</" + end + "<p:" + end + "2</p:" + end + "<" + tag + " k=\"v\">3</" +
                end;
      }
      const std::string document = "<?xml ?><cmd xmlns:p=\"" + std::string(clNsTable[0].uri) +
                                   "\">" + tags + "<a>" + tags + "</a>" + tags + "</cmd>";
      const std::vector<std::string> paths = {"cmd/a/" + name,        "cmd/zirk:" + name,
                                              "cmd/a/" + name + " k", "cmd/" + name,
                                              "cmd/" + other,         "cmd/b k"};
      EXPECT_EQ(pxcl_test::compare_routes({0, paths, 0, document}), "") << document;
    };
    const std::string& same = names.try_emplace(key_below(1, kPlainKey), name).first->second;
    if (same.size() != name.size()) agree(same), ++onePlace;
    if (const auto above = names.find(key_below(2, kPlainKey)); above != names.end()) {
      agree(above->second), ++twoPlaces;
    }
  }
  EXPECT_TRUE(onePlace > 0 && twoPlaces > 0) << onePlace << ' ' << twoPlaces;
}

// Names that other prefixes stand for, with the same key: of two lengths, and in two namespaces.
TEST(Routes, AgreeOnResolvedNamesOfOneKey) {
  using namespace pxcl::xml;
  std::minstd_rand random(1);
  std::unordered_map<std::uint32_t, std::string> spelled;
  std::size_t lengths = 0, namespaces = 0;
  for (int i = 0; i < 300000; ++i) {
    const std::string local = ":n" + std::to_string(random() % (i % 4 < 2 ? 100000 : 2000000000));
    const std::string name = (i % 2 == 0 ? "zirk" : "tolm") + local;
    const auto key =
        element_key(1, hash_bytes(name.data(), static_cast<std::uint32_t>(name.size())), kPlainKey);
    const std::string& same = spelled.try_emplace(key, name).first->second;
    if (same == name) continue;
    ++(same.size() != name.size() ? lengths : namespaces);
    std::string document = "<?xml ?><cmd xmlns:p=\"" + std::string(clNsTable[0].uri) +
                           "\" xmlns:q=\"" + clNsTable[2].uri + "\">";
    for (const std::string& each : {name, same}) {
      const std::string tag = (each[0] == 'z' ? "p" : "q") + each.substr(4) + ">";
      document += "<" + tag + each + "</" + tag;
    }
    document += "</cmd>" + std::string(80, ' ');
    for (const std::string& path : {name, same}) {
      EXPECT_EQ(pxcl_test::compare_routes({0, {"cmd/" + path}, 0, document}), "") << document;
    }
  }
  EXPECT_TRUE(lengths > 0 && namespaces > 0) << lengths << ' ' << namespaces;
}

// A value may be chosen by whoever knows the hash: its node was found by the attribute's name as well.
TEST(Routes, AgreeOnAValueWhoseHashIsThatOfItsName) {
  EXPECT_EQ(
      pxcl_test::compare_routes({0,
                                 {"cmd/n347294119 k", "cmd/n347294119 k=\"x\""},
                                 0,
                                 in_document("", "<n347294119 k=\"n1000002260\">t</n347294119>")}),
      "");
}

// "n1902906731" has the hash of "cmd". The long name leaves the last end tag alone near the end.
TEST(Routes, AgreeOnTheEndsOfRoots) {
  const std::vector<std::string> paths = {"cmd/a", "n1902906731/a", "abc/a", "cmd"};
  const std::string name = "b_of_more_than_a_lane_of_text";
  for (const std::string& inside :
       {std::string("<a>1</a>"), std::string(), "<" + name + "><a>1</a></" + name + ">"}) {
    for (const char* root : {"cmd>%</cmd>", "cmd>%</cmx>", "cmd>%</cmd >", "cmd>%</cmd>x",
                             "cmd>%</cmd", "abc>%</abc>", "abc>%</cmd>", "cmdx>%</cmdx>",
                             "n1902906731>%</n1902906731>", "cmd/>%", "cmd >%</cmd>"}) {
      std::string document = std::string("<?xml ?>\n<") + root;
      document.replace(document.find('%'), 1, inside);
      for (const std::uint32_t flags : {0u, unsigned{CL_XML_COM_FLAG}}) {
        EXPECT_EQ(pxcl_test::compare_routes({flags, paths, 0, document}), "") << document;
        EXPECT_EQ(pxcl_test::compare_routes({flags, {"cmd/a"}, 0, document}), "") << document;
      }
    }
  }
}

// A prefix that the document declares for another namespace is another one in the path.
TEST(Routes, AgreeOnTablePrefixesThatMeanAnother) {
  const std::string document =
      "<?xml ?><cmd xmlns:zirk=\"" + std::string(clNsTable[3].uri) +
      R"("><a><b zirk:k="v">t</b><zirk:b k="v">t</zirk:b><zirk:b>t</zirk:b><b k="zirk:">t</b></a></cmd>)";
  std::vector<std::string> paths;
  for (const char* path :
       {"b zirk:k", "b ikw:k", "b zirk:k=\"v\"", "b ikw:k=\"v\"", "zirk:b k", "ikw:b k=\"v\"",
        "zirk:b", "ikw:b", "vrx:b", "b zirk:k=\"ikw:v\"", "b k=\"\""}) {
    paths.push_back(std::string("cmd/a/") + path);
    EXPECT_EQ(pxcl_test::compare_routes({0, {paths.back()}, 0, document}), "") << path;
  }
  EXPECT_EQ(pxcl_test::compare_routes({0, paths, 0, document}), "");
}

void expect_agreement(std::uint32_t firstSeed, std::uint32_t count, Generator::Kind kind) {
  for (std::uint32_t seed = firstSeed; seed < firstSeed + count; ++seed) {
    const EngineCase one = Generator(seed, kind).make();
    std::string paths;
    for (const std::string& path : one.paths) paths += "\n[" + path + "]";
    ASSERT_EQ(pxcl_test::compare_routes(one), "")
        << "seed " << seed << " flags " << one.flags << " null " << one.nullPath << paths << "\n"
        << one.document;
  }
}

// More kinds of tags than the scan keeps in mind; a tag with two attributes is none of them, but the
// element is one.
TEST(Routes, AgreeOnMoreTagsThanAreKept) {
  for (const std::string begin : {"", "<z>v</z>"}) {
    EngineCase one;
    one.document = "<?xml ?><cmd>" + begin;
    for (int i = 0; i < 200; ++i) {
      const std::string leaf = "n" + std::to_string(i) + ">";
      one.document += "<x k=\"v\" l=\"w\"><" + leaf + "v</" + leaf + "</x>";
      if (i % 3 == 0) one.document += "<" + leaf + "w</" + leaf;
    }
    one.document += "</cmd>";
    one.paths = {"cmd/n150", "cmd/x k=\"v\"/n190", "cmd/x l/n3", "cmd/z"};
    EXPECT_EQ(pxcl_test::compare_routes(one), "") << begin;
  }
}

// A tag takes the place, among the 128 that are kept, of the one in front of it: what stands between
// them follows neither.
TEST(Routes, AgreeOnATagInThePlaceOfTheOneBefore) {
  const auto others = [](std::size_t count) {
    std::string text;
    while (count-- != 0) text += "<x k=\"v\" l=\"w\"><n>t</n></x>";
    return text;
  };
  const std::vector<std::string> paths = {"cmd/y k/w k", "cmd/x k=\"v\" l/n/"};
  for (std::size_t before = 126; before < 129; ++before) {
    for (std::size_t between = 125; between < 128; ++between) {
      const std::string inside = others(before) + "<y k=\"1\"><v>1</v></y>" + others(between) +
                                 "<y k=\"1\"><w k=\"2\"><w k=\"3\"><v/></w></w></y>";
      EXPECT_EQ(pxcl_test::compare_routes({0, paths, 0, in_document("", inside)}), "")
          << before << ' ' << between;
    }
  }
}

// Rows that are alike but for one, in the middle.
TEST(Routes, AgreeOnListsWithOneOddRow) {
  const std::vector<std::string> paths = {"cmd/a k",         "cmd/a k=\"v\"/b", "cmd/a k/b",
                                          "cmd/a  k/b",      "cmd/a k/c",       "cmd/d",
                                          "cmd/a k=\"w\"/b", "cmd/a/b"};
  const std::string value(40, 'w'), blanks(150, ' ');
  const std::string rows[] = {
      "<a k=\"w\"><b>y</b><c>z</c></a>",
      "<a k=\"" + value + "\"><b>y</b></a>",
      "<a k=\"x\">" + blanks + "<b>y</b></a>",
      "<a k=\"x\"><b>y<e/></b></a>",
      "<a k=\"x\"><b>y>z</b><c></c></a>",
      "<a k=\"x\"><b>y</b ></a>",
      "<a k=\"x\">t<b>y</b></a>",
      "<a k=\"x\">t</a>",
      "<a k=\"x\"><b> y</b><c>z</c></a>",
      "<a k=\"x\"><b>y \t</b><c>z</c></a>",
      "<a k=\"x\"><b></b><c>z</c></a>",
      "<a k=\"\"><b>y</b><c>z</c></a>",
      "<a k=\"x\"><c>z</c><b>y</b></a>",
      "<a k=\"x\"><b>" + value + "</b></a>",
      "<a k=\"x\"><b>y</b><c>z</c></a><f><g><h><b>y</b></h></g></f>",
      "<a xmlns:z=\"elsewhere\"><b>y</b></a>",
  };
  for (const std::string& odd : rows) {
    for (std::size_t used = 1; used < paths.size(); ++used) {
      EngineCase one = {0, {paths.begin(), paths.end()}, 0, "<?xml ?><cmd>"};
      one.paths.erase(one.paths.begin() + static_cast<std::ptrdiff_t>(used));
      for (int i = 0; i < 120; ++i) {
        one.document += i % 40 == 10 ? odd : "<a k=\"x\"><b>y</b><c>z</c></a><d>t</d>";
      }
      one.document += "</cmd>";
      EXPECT_EQ(pxcl_test::compare_routes(one), "") << odd << " without " << paths[used];
    }
  }
}

TEST(Routes, AgreeOnListsWithOneOddByte) {
  const std::string row = "<a k=\"x\">\n<b>y</b><c>z</c></a><d>t</d>";
  const std::vector<std::string> paths = {"cmd/a k", "cmd/a k/b", "cmd/a k/c", "cmd/d"};
  const std::string rows = many_of(row);
  for (std::size_t at = 0; at < row.size(); ++at) {
    for (const char byte : {'x', '<', '>', '/', ' ', '"'}) {
      std::string odd = rows;
      odd[rows.size() - 6 * row.size() + at] = byte;
      EXPECT_EQ(pxcl_test::compare_routes({0, paths, 0, in_document("", odd)}), "") << at << byte;
    }
  }
  const std::string cut = "<?xml ?><cmd>" + rows + "<a k=\"x\">\n<b>" + std::string(100, 'w');
  EXPECT_EQ(pxcl_test::compare_routes({0, paths, 0, cut}), "");
}

// Some of these tags are looked for where others stand.
TEST(Routes, AgreeOnTagsThatDifferInOneByte) {
  for (const std::size_t length : {2U, 15U, 16U, 30U}) {
    for (const std::size_t at : {std::size_t{0}, length / 2, length - 1}) {
      EngineCase one;
      std::string rows;
      for (char letter = 'A'; letter <= 'z'; ++letter) {
        if (letter > 'Z' && letter < 'a') continue;
        std::string name(length, 'n');
        name[at] = letter;
        if (letter % 4 == 0) one.paths.push_back("cmd/" + name);
        rows += "<" + name + ">" + letter + "</" + name + ">";
      }
      one.document = in_document("", rows + rows + rows);
      EXPECT_EQ(pxcl_test::compare_routes(one), "");
    }
  }
}

// A leaf is followed up to its attribute's value, which may be any.
TEST(Routes, AgreeOnListsOfLeavesWithAnOddValue) {
  const std::string row = "<b l=\"w\">1</b>";
  for (const char* value : {"", " ", " w", "w ", "w:w", ":w", "w w", "w<w", "w>w", "w/w"}) {
    const std::string odd = "<b l=\"" + std::string(value) + "\">2</b>";
    const std::string document = in_document("", many_of(row) + odd + odd + many_of(row));
    EXPECT_EQ(pxcl_test::compare_routes({0, {"cmd/b l=\"w\"", "cmd/b l"}, 0, document}), "") << odd;
  }
}

// What the children of such an element match is not told by one of its nodes.
TEST(Routes, AgreeOnListsBelowAnElementThatMatchesTwice) {
  const std::string rows = many_of("<b l=\"w\">1</b><b l=\"x\">2</b>");
  const std::string document = in_document("", "<a k=\"v\">" + rows + "</a>");
  const std::vector<std::string> paths = {"cmd/a k=\"v\"/b l=\"x\"", "cmd/a k/b l=\"w\""};
  EXPECT_EQ(pxcl_test::compare_routes({0, paths, 0, document}), "");
}

// One attribute for two targets, and an element with targets for two attributes.
TEST(Routes, AgreeOnListsWhoseAttributeIsAskedForTwice) {
  const std::string document = in_document("", many_of("<a k=\"v\">1</a>"));
  for (const std::vector<std::string>& paths : std::vector<std::vector<std::string>>{
           {"cmd/a k", "cmd/a k"}, {"cmd/a k", "cmd/a l"}, {"cmd/a l", "cmd/a k"}}) {
    EXPECT_EQ(pxcl_test::compare_routes({0, paths, 0, document}), "") << paths.back();
  }
}

// Their keys tell the beginning and the end of a value, and its length.
TEST(Routes, AgreeOnLongElementsThatDifferInTheMiddle) {
  const std::string plain(56, 'v');
  for (std::size_t at = 0; at < plain.size(); ++at) {
    std::string other = plain;
    other[at] = 'w';
    const std::string first = "a k=\"" + plain + "\"", second = "a k=\"" + other + "\"";
    const std::string inside = "<" + second + ">2</a><" + first + ">1</a>";
    EXPECT_EQ(pxcl_test::compare_routes(
                  {0, {"cmd/" + first, "cmd/" + second}, 0, in_document("", inside)}),
              "")
        << at;
  }
}

// An element that stands where the paths let expect it may be taken by its bytes alone, but for some.
TEST(Routes, AgreeOnElementsThatAreExpected) {
  using namespace std::string_literals;
  std::vector<std::string> elements = {"vrx:c",   "vrx:c-d", "vrx:c'd",
                                       "vrx:c<d", "vrx:c>d", "vrx:c xmlns=\"v\""};
  elements.push_back("vrx:" + std::string(40, 'c'));
  for (const std::string& value :
       {""s, "v"s, "!"s, " v"s, "v w"s, "v/w"s, "v<w"s, "v>w"s, "v;w"s, "v\0w"s, "ikw:v"s}) {
    elements.push_back("vrx:c k=\"" + value + "\"");
  }
  for (const std::string& element : elements) {
    const std::string name = element.substr(0, element.find(' '));
    const std::string tag = "<" + element + ">", endTag = "</" + name + ">";
    std::string another = endTag;
    another[another.size() - 2] = 'x';
    for (const std::string& firstEnd : {endTag, another}) {
      EngineCase one;
      one.document = in_document("", "<vrx:a>1</vrx:a>" + tag + "2" + firstEnd +
                                         "<vrx:b>3</vrx:b>" + tag + "<vrx:d>4</vrx:d>" + endTag) +
                     std::string(200, ' ');
      for (const std::string& other : {""s, "vrx:b"s, name + " k", name + " l"}) {
        for (const bool first : {false, true}) {
          one.paths = {"cmd/vrx:a", "cmd/" + element, "cmd/vrx:b", "cmd/" + element + "/vrx:d"};
          one.paths.insert(first ? one.paths.begin() : one.paths.end(), "cmd/" + other);
          EXPECT_EQ(pxcl_test::compare_routes(one), "") << element << " beside " << other;
        }
      }
    }
  }
}

// Some ask for an attribute whatever its value is, too; some keys meet where they are looked up.
TEST(Routes, AgreeOnManyElementsThatAreExpected) {
  EngineCase one;
  std::string inside;
  for (int i = 0; i < 30; ++i) {
    const std::string name = "vrx:e" + std::to_string(i), element = name + " k=\"v\"";
    one.paths.push_back("cmd/" + element);
    if (i % 10 == 0) one.paths.push_back("cmd/" + name + " k");
    inside += "<" + element + ">" + std::to_string(i) + "</" + name + ">";
  }
  one.document = in_document("", inside);
  EXPECT_EQ(pxcl_test::compare_routes(one), "");
}

// Past some number the index looks attributes up by hash; the first of one name still counts.
TEST(Routes, AgreeOnManyAttributes) {
  EngineCase one;
  std::string tag = "<a";
  for (int i = 0; i < 100; ++i) {
    const std::string name = i % 3 == 0 ? "q:k" : "k";
    tag += " " + name + std::to_string(i % 80) + "=\"v" + std::to_string(i) + "\"";
  }
  one.document = in_document(" xmlns:q=\"http://www.example.com/ns/cmd/2010/05/vaslo/\"",
                             tag + ">text</a>" + tag + "/>");
  one.paths = {"cmd/a k1",           "cmd/a ikw:k3",        "cmd/a q:k3",        "cmd/a k1 k2",
               "cmd/a k1=\"v1\" k2", "cmd/a k1=\"v81\" k5", "cmd/a k9=\"v\" k1", "cmd/a k99"};
  EXPECT_EQ(pxcl_test::compare_routes(one), "");
}

// More elements in the paths than their number lets the index expect, and than there is room to open.
TEST(Routes, AgreeOnPathsOfManyElements) {
  for (const std::string attribute : {"", " k=\"v\""}) {
    for (const int levels : {100, 400}) {
      EngineCase one;
      std::string inside = "text";
      std::string path = "cmd";
      for (int level = 0; level < levels; ++level) {
        const std::string name = "vrx:e" + std::to_string(levels - 1 - level);
        inside = "<" + name + attribute + ">" + inside + "</" + name + ">";
        path += "/vrx:e" + std::to_string(level) + attribute;
        if (level % 100 == 99) one.paths.push_back(path);
      }
      one.document = in_document("", inside);
      EXPECT_EQ(pxcl_test::compare_routes(one), "");
    }
  }
}

// A root that declares our namespaces alone is read faster than any other.
TEST(Routes, AgreeOnRoots) {
  const std::string uri = std::string(clNsTable[0].uri) + "\"",
                    other = std::string(clNsTable[1].uri) + "\"";
  for (const std::string& declaration : {"xmlns:p=\"" + uri,
                                         "xmlns:p=\"" + uri + " xmlns:q=\"" + other,
                                         "xmlns:p=\"" + uri + " xmlns:q=\"" + uri,
                                         "xmlns:zirk=\"" + uri + " xmlns:vrx=\"" + other,
                                         "xmlns:vrx=\"" + other + " xmlns:zirk=\"" + uri,
                                         "xmlns:vrx=\"" + other + " xmlns:p=\"" + uri,
                                         "xmlns:p=\"" + other + " xmlns:zirk=\"" + uri,
                                         "xmlns:p=\"" + uri + " xmlns:zirk=\"" + uri,
                                         "xmlns:zirk=\"" + uri + " xmlns:zirk=\"" + uri,
                                         "xmlns:zirk=\"" + uri + " xmlns:p=\"" + uri,
                                         "xmlns:zirk=\"" + other + " xmlns:vrx=\"" + uri,
                                         "xmlns:zirk=\"" + uri + "/",
                                         "xmlns:p;9=\"" + uri,
                                         "xmlns:p?=\"" + uri,
                                         "xmlns:>p=\"" + uri,
                                         "xmlns:p=\"" + uri + " k=\"v\"",
                                         "xmlns:p=\"" + uri + "  xmlns:q=\"" + other,
                                         "xmlns:p<=\"" + uri,
                                         "xmlns:p/=\"" + uri,
                                         "xmlns:p:q=\"" + uri,
                                         "xmlns:=\"" + uri,
                                         "xmlns=\"" + uri,
                                         "xmlns:p=\"" + uri + " ",
                                         "xmlns:p =\"" + uri,
                                         "xmlns:p='" + uri,
                                         "xmlns:p= \"" + uri,
                                         "xmlns:p=\"x" + uri,
                                         "xmlns:p=\"" + uri + "x",
                                         std::string("xmlns:p=\""),
                                         std::string("xmlns:p="),
                                         std::string("xmlns:p"),
                                         std::string("xmlns:")}) {
    const std::string document = in_document(" " + declaration, "<p:a>1</p:a><q:a>2</q:a><a>3</a>");
    EXPECT_EQ(pxcl_test::compare_routes({0, {"cmd/zirk:a", "cmd/vrx:a", "cmd/q:a"}, 0, document}),
              "")
        << document;
  }
}

// Prefixes longer than a word, one the beginning of the other.
TEST(Routes, AgreeOnLongPrefixes) {
  EngineCase one;
  one.document =
      in_document(" xmlns:commonprefix=\"http://www.example.com/ns/cmd/2008/07/common/\"",
                  "<commonprefix:a commonprefix:k=\"v\">1</commonprefix:a>"
                  "<commonpref:a>2</commonpref:a><commonprefixes:a>3</"
                  "commonprefixes:a><seventy:a>4</seventy:a>"
                  "<commonprefiy:a>6</commonprefiy:a>"
                  "<b>5</b>") +
      std::string(100, ' ');
  one.paths = {"cmd/zirk:a", "cmd/zirk:a zirk:k=\"v\"", "cmd/commonprefixes:a", "cmd/seventy:a",
               "cmd/b"};
  EXPECT_EQ(pxcl_test::compare_routes(one), "");
}

// A run that a caller has altered goes on as the steps would.
TEST(Routes, AgreeOnRunsThatAreNotFresh) {
  static const ClXmlMatch kMatch = {1, 9, 2, 1};
  static void (*const kAlter[])(ClXmlParserData&) = {
      [](ClXmlParserData& run) { run.serial = 7; },
      [](ClXmlParserData& run) { run.nameSpaceTable[0].prefix = "q"; },
      [](ClXmlParserData& run) { run.targets[1].kind = 1; },
      [](ClXmlParserData& run) { run.targets[1].kind = 2; },
      [](ClXmlParserData& run) { run.targets[2].path = "cmd/a/"; },
      [](ClXmlParserData& run) { run.targets[2].pathLength = 0; },
      // The attribute of a path that names none.
      [](ClXmlParserData& run) { run.targets[2].pathLength = 5; },
      [](ClXmlParserData& run) {
        run.targets[2].attributeName = "k=";
        run.targets[2].attributeNameLength = 2;
      },
      [](ClXmlParserData& run) { run.targets[2].attributeNameLength = std::uint64_t{1} << 32; },
      // Nothing behind its second "/" is looked at.
      [](ClXmlParserData& run) {
        run.targets[0].path = "cmd/a/";
        run.targets[0].pathLength = std::uint64_t{1} << 32;
      },
      [](ClXmlParserData& run) { run.targets[0].matchCount = 1; },
      [](ClXmlParserData& run) { run.targets[1].path = nullptr; },
      [](ClXmlParserData& run) {
        run.targets[1].path = nullptr;
        run.targets[1].kind = 1;
      },
      [](ClXmlParserData& run) { run.targets[0].status = 1; },
      [](ClXmlParserData& run) { run.targets[2].kind = 0; },
      [](ClXmlParserData& run) { ClXmlAddPath(&run, "/", "cmd", 3); },
      [](ClXmlParserData& run) {
        run.targets[0].matches = static_cast<ClXmlMatch*>(ClXmlMemAlloc(sizeof kMatch));
        *run.targets[0].matches = kMatch;
        run.targets[0].matchCount = 1;
      },
  };
  const std::size_t blanks[] = {100, pxcl::xml::kShortestRepeating};
  const std::vector<std::string> paths[] = {{"cmd/a", "cmd/zirk:b", "cmd/a k"},
                                            {"cmd/a k", "cmd/a k", "cmd/a k"}};
  for (std::size_t i = 0; i < 4 * std::size(kAlter); ++i) {
    const auto alter = kAlter[i / 4];
    const pxcl_test::Texts texts(
        {0, paths[i / 2 % 2], 0,
         in_document(" xmlns:p=\"http://www.example.com/ns/cmd/2008/07/common/\"",
                     "<a k=\"v\">1</a><p:b>2</p:b><a/><a>k=4</a><q:b>3</q:b>") +
             std::string(blanks[i % 2], ' ')});
    const auto run = [&](std::int32_t (*parse)(ClXmlParserData*)) {
      pxcl_test::Request<ClXmlParameter> request(texts);
      std::string left;
      pxcl_test::run_route(
          request, 0, [&](ClXmlParserData* data) { return alter(*data), parse(data); }, left);
      return left;
    };
    EXPECT_EQ(run(ClXmlParse), run(pxcl_test::parse_plain)) << i;
  }
}

#if SIZE_MAX > UINT32_MAX
// Only its beginning is there: nothing behind the root is looked at.
TEST(Requests, TakeDocumentsBeyondThirtyTwoBits) {
  constexpr std::string_view kBegin = "<?xml ?><cmd><a>value</a></cmd>";
  constexpr std::size_t kSize = (std::size_t{1} << 32) + 1;
  constexpr int kMine = MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE;
  void* const room = mmap(nullptr, kSize, PROT_READ | PROT_WRITE, kMine, -1, 0);
  ASSERT_NE(room, MAP_FAILED);
  std::memcpy(room, kBegin.data(), kBegin.size());
  pxcl_test::Request<ClXmlParameter> single(pxcl_test::Texts({0, {"cmd/a"}, 0, ""}));
  pxcl_test::Request<ClXmlListParameter> list(pxcl_test::Texts({0, {"cmd/a"}, 0, ""}));
  single.parameters[0].path = list.parameters[0].path = "cmd/a";
  single.record.document = list.record.document = static_cast<const char*>(room);
  single.record.documentLength = list.record.documentLength = kSize;
  EXPECT_EQ(ClXmlRequestParameter(&single.record), 0);
  EXPECT_EQ(ClXmlRequestParameterList(&list.record), 0);
  EXPECT_EQ(single.parameters[0].valueOffset, kBegin.find("value"));
  ASSERT_EQ(list.parameters[0].rangeCount, 1U);
  EXPECT_EQ(list.parameters[0].ranges[0].length, 5U);
  const pxcl::xml::Key keys[] = {{"cmd/a"}};
  pxcl::xml::Answer answers[1];
  const char* const begin = static_cast<const char*>(room);
  EXPECT_EQ(pxcl::xml::scan({begin, kSize}, 0, keys, answers, nullptr), -2);
  EXPECT_EQ(pxcl::xml::scan({begin, 0}, 0, keys, answers, nullptr), -2);
  EXPECT_EQ(pxcl::xml::scan({begin, kBegin.size()}, 0, {}, {}, nullptr), -2);
  munmap(room, kSize);
}
#endif

// The bytes are looked at in blocks of 16 and 64: names, values and texts end around their edges.
TEST(Routes, AgreeAtTheEdgesOfBlocks) {
  constexpr const char* kRoot = " xmlns:p=\"http://www.example.com/ns/cmd/2008/07/common/\"";
  for (std::size_t size = 1; size < 72; ++size) {
    const std::string name(size, 'a'), key = std::string(size, 'k') + ":k", text(3 * size, 'x');
    const std::string value = "\"" + std::string(size, 'v') + "\"";
    for (const std::string& end : {name, std::string(size - 1, 'a') + "b", name + "a"}) {
      EngineCase one;
      one.document = in_document(kRoot, text + "<p:" + name + " " + key + "=" + value + ">" + text +
                                            " \t " + "</p:" + end + "><" + name + "/>");
      const std::string path = "cmd/zirk:" + name;
      one.paths = {path,
                   path + " " + key,
                   path + " " + key + "=" + value,
                   "cmd/" + name,
                   path + " " + key + "=" + value + "a",
                   path + "a"};
      EXPECT_EQ(pxcl_test::compare_routes(one), "") << size;
    }
  }
}

TEST(Routes, AgreeOnRandomDocuments) {
  expect_agreement(1, 4000, Generator::kAny);
}

TEST(Routes, AgreeOnRandomLists) {
  expect_agreement(1, 1000, Generator::kLists);
}

TEST(Routes, AgreeOnRandomDocumentsWithZeroBytes) {
  expect_agreement(1, 1000, Generator::kZeroBytes);
}

}  // namespace
