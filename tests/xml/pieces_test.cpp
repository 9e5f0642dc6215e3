// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The step functions one at a time: pieces of a start tag, paths, comparisons.

#include <gtest/gtest.h>

#include "clxml.h"
#include "support.hpp"

namespace {

using pxcl_test::ExactBlock;

std::string text(const char* begin, std::uint64_t length) {
  return begin == nullptr ? "-" : std::string(begin, length);
}

// "name|attribute=value|attribute-" as ClXmlSplit_Element stores it, and its result.
std::string split(std::string_view inside, std::uint32_t capacity = 8) {
  const ExactBlock block(inside);
  ClXmlAttribute attributes[8] = {};
  ClXmlElement element = {nullptr, 0, attributes, capacity};
  const int counted = ClXmlSplit_Element(block.data(), block.size(), nullptr);
  const int count = ClXmlSplit_Element(block.data(), block.size(), &element);
  EXPECT_EQ(counted, count) << inside;
  std::string result = std::to_string(count) + " " + text(element.name, element.nameLength);
  for (const ClXmlAttribute& attribute : attributes) {
    if (attribute.name == nullptr) continue;
    result += '|';
    result += text(attribute.name, attribute.nameLength);
    result += attribute.value == nullptr ? '-' : '=';
    if (attribute.value != nullptr) result += text(attribute.value, attribute.valueLength);
  }
  return result;
}

TEST(Split, Elements) {
  const struct {
    const char* inside;
    const char* expected;
  } kRows[] = {
      {"a", "0 a"},
      {"a \t\r\n", "0 a"},
      {" a", "1 |a-"},  // leading white space is not skipped: the name is empty
      {"a b", "1 a|b-"},
      {"a b c ", "1 a|b c-"},  // without "=" all the rest is one name
      {"a b=\"x\"", "1 a|b=\"x\""},
      {"a\nb = \"x\"c=\"y z\"", "2 a|b=\"x\"|c=\"y z\""},
      {"a b=junk\"x\" c", "2 a|b=\"x\"|c-"},  // what stands between "=" and the quote is ignored
      {"a b='x'", "0 a"},                     // single quotes delimit nothing
      {"a b='x' c=\"y\"", "1 a|b=\"y\""},
      {"a =\"x\"", "1 a|=\"x\""},
      {"a b=\"\" c=", "1 a|b=\"\""},
      {"a b=\"x", "-1 -"},
      {"a b=\"x\" c=\"", "-1 -"},
  };
  for (const auto& row : kRows) EXPECT_EQ(split(row.inside), row.expected) << row.inside;
  EXPECT_EQ(split("a b=\"x\" c=\"y\"", 1), "2 a|b=\"x\"");
}

std::string split_name(std::string_view name) {
  const ExactBlock block(name);
  const char* prefix = nullptr;
  const char* local = nullptr;
  std::uint64_t prefixLength = 0;
  std::uint64_t localLength = 0;
  const int result =
      ClXmlSplit_QName(block.data(), block.size(), &prefix, &prefixLength, &local, &localLength);
  return std::to_string(result) + " " + text(prefix, prefixLength) + " " + text(local, localLength);
}

TEST(Split, QualifiedNames) {
  const char* const kRows[][2] = {{"a:b", "1 a b"}, {"b", "1 - b"}, {":b", "1 - b"},
                                  {"a:", "1 a -"},  {":", "1 - -"}, {"a:b:c", "1 a b:c"},
                                  {"", "0 - -"}};
  for (const auto& row : kRows) EXPECT_EQ(split_name(row[0]), row[1]) << row[0];
  const char* local = nullptr;
  std::uint64_t length = 0;
  EXPECT_EQ(ClXmlSplit_QName("a:b", 3, nullptr, nullptr, &local, &length), 1);
  EXPECT_EQ(ClXmlSplit_QName("a:b", 3, nullptr, &length, nullptr, nullptr), 0);
  EXPECT_EQ(text(local, length), "b");
}

TEST(Split, QuotedValues) {
  const char* const kRows[][2] = {
      {"\"\"", "1 "}, {"\" x y\t\"", "1 x y"}, {"\"  \"", "1 "},       {"\"", "0 -"},
      {"'x'", "0 -"}, {"\"x", "0 -"},          {"\"a\"b\"", "1 a\"b"}, {"", "0 -"}};
  for (const auto& row : kRows) {
    const ExactBlock block(row[0]);
    const char* inner = nullptr;
    std::uint64_t length = 0;
    const int result = ClXmlPare_AttValue(block.data(), block.size(), &inner, &length);
    EXPECT_EQ(std::to_string(result) + " " + text(inner, length), row[1]) << row[0];
  }
}

// A bare record over a document, without a parser.
struct BareRun {
  explicit BareRun(std::string_view document, std::uint32_t flags = 0) : block(document) {
    record.document = &descriptor;
    record.flags = flags;
    ClXmlInitializeNameSpaceTable(&record.nameSpaceTable);
  }
  ~BareRun() {
    ClXmlClearPath(record.currentPath);
    ClXmlUnInitializeNameSpaceTable(record.nameSpaceTable);
  }
  int add(const char* separator, std::string_view name) {
    return ClXmlAddPath(&record, separator, name.data(), name.size());
  }
  int declare(std::string_view prefix, int row) {
    const std::string value = std::string("\"") + clNsTable[row].uri + "\"";
    return ClXmlPickupNamespace(&record, prefix.data(), prefix.size(), value.data(), value.size());
  }
  // `name` is closed by what follows it in a literal.
  int remove(std::string_view name, std::size_t length) {
    return ClXmlRemovePath(&record, name.data(), length);
  }
  std::string path() const { return record.currentPath == nullptr ? "-" : record.currentPath; }

  ExactBlock block;
  ClXmlDocument descriptor = {block.data(), block.size(), 0};
  ClXmlParserData record = {};
};

TEST(Namespaces, FirstDeclarationHoldsAndLeadingBytesFindIt) {
  BareRun run("");
  EXPECT_EQ(run.declare("zirkx", 1), 0);
  EXPECT_EQ(run.declare("other", 1), 0);
  EXPECT_EQ(run.declare("p", 0), 0);
  const struct {
    const char* prefix;
    int known;
    std::uint32_t row;
  } kRows[] = {{"zirkx", 1, 1},  {"zirk", 1, 1},  {"z", 1, 1},  {"p", 1, 0},
               {"zirkxy", 0, 9}, {"other", 0, 9}, {"pp", 0, 9}, {"", 0, 9}};
  for (const auto& row : kRows) {
    const ExactBlock prefix(row.prefix);
    std::uint32_t index = 9;
    EXPECT_EQ(ClXmlIsKnownNicknameNs(&run.record, prefix.data(), prefix.size(), &index), row.known);
    EXPECT_EQ(index, row.row) << row.prefix;
  }
  EXPECT_EQ(ClXmlPickupNamespace(&run.record, "x", 1, "\"", 1), -2);
  EXPECT_EQ(ClXmlPickupNamespace(&run.record, "x", 0, "\"u\"", 3), -2);
  EXPECT_EQ(ClXmlPickupNamespace(&run.record, "x", 1, "\"u\"", 3), 0);

  ClXmlNameSpaceEntry& third = run.record.nameSpaceTable[2];
  const std::string quoted = std::string("\"") + third.uri + "\"";
  for (const std::string& value : {quoted.substr(1), quoted.substr(0, quoted.size() - 1)}) {
    EXPECT_EQ(ClXmlPickupNamespace(&run.record, "x", 1, value.data(), value.size()), 0);
    EXPECT_EQ(third.declaredPrefix, nullptr) << value;
  }
  third.declaredPrefix = "nothing";  // a caller's: a prefix without length is none
  EXPECT_EQ(run.declare("x", 2), 0);
  EXPECT_EQ(third.declaredPrefixLength, 1u);
}

TEST(Namespaces, ARunMayHaveNone) {
  ClXmlParserData none = {};
  const ClXmlAttribute requested = {"k", 1, "\"ikw:v\"", 7}, current = {"k", 1, "\"v\"", 3};
  std::int32_t nameOnly = 0;
  std::uint32_t index = 9;
  EXPECT_EQ(ClXmlCompare_AttValue(&none, &requested, &current, &nameOnly), 0);
  EXPECT_EQ(ClXmlCompare_AttValue(&none, &current, &current, &nameOnly), 1);
  EXPECT_EQ(ClXmlIsKnownNicknameNs(&none, "p", 1, &index), 0);
}

TEST(Path, GrowsAndShrinks) {
  BareRun run("");
  EXPECT_EQ(run.add("/", "cm"), -13);
  EXPECT_EQ(run.add("/", "cmdx"), 0);  // three bytes are looked at
  EXPECT_EQ(run.declare("p", 0), 0);
  EXPECT_EQ(run.add("/", "p:a"), 0);
  EXPECT_EQ(run.add(" ", "p:k"), 0);
  EXPECT_EQ(run.add("=", "\"p:v/w\""), 0);  // the opening quote is part of the prefix
  EXPECT_EQ(run.add("/", "b:p:c"), 0);
  EXPECT_EQ(run.path(), "cmdx/zirk:a zirk:k=\"p:v/w\"/b:p:c");
  EXPECT_EQ(run.add("/", ""), -2);

  EXPECT_EQ(run.remove("b:p", 3), -10);
  EXPECT_EQ(run.remove("b:p:c d>", 7), 0);
  EXPECT_EQ(run.remove("zirk:a>", 6), 0) << "an undeclared prefix is compared as it stands";
  EXPECT_EQ(run.path(), "cmdx");
  EXPECT_EQ(run.remove("cmdx>", 4), -13);
  EXPECT_EQ(run.add("/", "p:a"), 0);
  EXPECT_EQ(run.remove("p:a", 3), 0);
  EXPECT_EQ(run.remove("", 0), -2);
}

TEST(Path, ElementClosesByAPrefixThatBeginsADeclaredOne) {
  BareRun run("");
  EXPECT_EQ(run.add("/", "cmd"), 0);
  EXPECT_EQ(run.declare("prefix", 0), 0);
  EXPECT_EQ(run.add("/", "pre:a"), 0);
  EXPECT_EQ(run.path(), "cmd/zirk:a");
  EXPECT_EQ(run.remove("other:a", 7), -10);
  EXPECT_EQ(run.remove("p:a", 3), 0);
  EXPECT_EQ(run.add("/", "b:a"), 0);  // kept as written before its prefix is declared
  EXPECT_EQ(run.declare("b", 1), 0);
  EXPECT_EQ(run.remove("b:a", 3), -10);
}

TEST(Path, RootClosesWithTheByteBehindItsName) {
  const std::string_view kNames[] = {"cmd>", "cmd >", "cmd/>"};
  for (const std::string_view name : kNames) {
    BareRun run(name);
    EXPECT_EQ(run.add("/", "cmd"), 0);
    EXPECT_EQ(ClXmlRemovePath(&run.record, run.block.data(), 3), name == "cmd>" ? 2 : -13) << name;
  }
  BareRun cut("cmd");  // the document ends behind the name
  EXPECT_EQ(cut.add("/", "cmd"), 0);
  EXPECT_EQ(ClXmlRemovePath(&cut.record, cut.block.data(), 3), -13);
  EXPECT_EQ(ClXmlRemovePath(&cut.record, cut.block.data(), 4), -2);
  cut.record.document = nullptr;  // then nothing has an end
  EXPECT_EQ(cut.remove("cmd>", 3), 2);
  BareRun other("a>");  // a caller's own path: no byte behind a short name is looked at
  other.record.currentPath = static_cast<char*>(ClXmlMemAlloc(2));
  other.record.currentPath[0] = 'a';
  EXPECT_EQ(ClXmlRemovePath(&other.record, other.block.data(), 1), -13);
  BareRun any("", CL_XML_COM_FLAG);
  EXPECT_EQ(any.add("/", "root"), 0);
  EXPECT_EQ(any.remove("root ", 5), 2);
}

// Whether the path matches the current one, which is set as it stands.
bool matches(std::string_view path, std::string_view current, std::uint32_t flags = 0) {
  BareRun run("", flags);
  run.declare("q", 3);
  run.declare("p", 0);
  const ExactBlock block(path);
  ClXmlTarget target = {};
  target.path = block.data();
  target.pathLength = block.size();
  run.record.targets = &target;
  run.record.targetCount = 1;
  run.record.currentPath = static_cast<char*>(ClXmlMemAlloc(current.size() + 1));
  current.copy(run.record.currentPath, current.size());
  return ClXmlStoreValuePathCompare(&run.record, 0) == 1;
}

TEST(Target, PathAgainstCurrentPath) {
  const struct {
    bool expected;
    const char* path;
    const char* current;
  } kRows[] = {
      {true, "cmd/a", "cmd/a"},
      {false, "cmd/a", "cmd/A"},
      {false, "cmd/a", "cmd/a/b"},
      {false, "cmd/a/b", "cmd/a"},
      {true, "", "cmd/a"},
      {true, "cmd/a", ""},
      {true, "cmd/", "cmd/a/b"},
      {false, "cmd/a/", "cmd/a"},
      {true, "cmd/a/", "cmd/a/"},
      {false, "cmd//b", "cmd/a/b"},
      {false, "cmd/a", "cmd/a k=\"v\""},
      {false, "cmd/a k=\"v\"", "cmd/a"},
      {true, "cmd/a k=\"v\"/b", "cmd/a k=\"v\"/b"},
      {true, "cmd/a k=\" v\"", "cmd/a  k = \"v \""},
      {true, "cmd/a l=\"w\" k=\"v\"", "cmd/a k=\"v\" l=\"w\""},
      {false, "cmd/a k=\"v\"", "cmd/a k=\"v\" l=\"w\""},
      {true, "cmd/a k", "cmd/a k=\"v\" l=\"w\""},
      {true, "cmd/a k=\"v\" l", "cmd/a k=\"v\" l=\"w\" m=\"x\""},
      {false, "cmd/a k=\"v\" l", "cmd/a k=\"w\" l=\"w\""},
      {true, "cmd/a k=\"w\"", "cmd/a k=\"w\""},
      {true, "cmd/a k=\"w\" k=\"v\"", "cmd/a k=\"v\" k=\"w\""},  // any of the same name will do
      {true, "cmd/a k", "cmd/a k=\"\""},                         // quotes count: it has a value
      {false, "cmd/a k=\"\"", "cmd/a k=\"\""},                   // a requested value is never empty
      {false, "cmd/a k=\" \"", "cmd/a k=\"v\""},
      {true, "cmd/a k=\"q:v\"", "cmd/a k=\"q:v\""},
      {true, "cmd/a k=\"ikw:v\"", "cmd/a k=\"q:v\""},
      {true, "cmd/a k=\"v\"", "cmd/a k=\"q:v\""},
      {true, "cmd/a k=\"ikw:v\"", "cmd/a k=\"v\""},
      {false, "cmd/a k=\"ikw:v\"", "cmd/a k=\"q:w\""},
      {false, "cmd/a k=\"zirk:v\"", "cmd/a k=\"p:v\""},
      {false, "cmd/a k=\"q:v\"",
       "cmd/a k=\"v\""},  // the document's prefix, where the table's is due
      {true, "cmd/a k=\":v\"", "cmd/a k=\"v\""},
      {false, "cmd/a k=\"v", "cmd/a k=\"v"},
      {true, "cmd/a k=\"x/y\"/b", "cmd/a k=\"x/y\"/b"},
  };
  for (const auto& row : kRows) {
    EXPECT_EQ(matches(row.path, row.current), row.expected) << row.path << " | " << row.current;
  }
  EXPECT_TRUE(matches("root k=\"q:v\"", "root k=\"q:v\"", CL_XML_COM_FLAG));
  EXPECT_FALSE(matches("root k=\"ikw:v\"", "root k=\"q:v\"", CL_XML_COM_FLAG));
}

TEST(Steps, RefuseWhatLiesOutsideTheDocument) {
  BareRun run("<?xml ?><cmd>t<a k=\"v\"/></cmd>");
  ClXmlTarget target = {};
  target.path = "cmd";
  target.pathLength = 3;
  run.record.targets = &target;
  run.record.targetCount = 1;
  const std::uint64_t size = run.block.size();
  for (const std::uint64_t offset : {size, size + 1, ~std::uint64_t{0}}) {
    for (const std::uint64_t length : {std::uint64_t{5}, size, ~std::uint64_t{0}}) {
      EXPECT_EQ(ClXmlStoreValue(&run.record, offset, length), -2);
      EXPECT_EQ(ClXmlPrsStartElement(&run.record, &offset, length), -2);
      EXPECT_EQ(ClXmlPrsEndElement(&run.record, &offset, length), -2);
    }
    std::uint64_t position = offset;
    EXPECT_EQ(ClXmlCheckElement(&run.record, &position), offset == size ? -5 : -2);
    EXPECT_EQ(ClXmlPrsParameter(&run.record, &position), offset == size ? -6 : -2);
    EXPECT_EQ(ClXmlChkTargetPathOnly(&run.record, offset, 0), offset == size ? 0 : -2);
  }
  const ClXmlAttribute elsewhere = {"k", 1, "\"v\"", 3};
  EXPECT_EQ(ClXmlStoreAttValue(&run.record, &elsewhere, 1), -2);
  EXPECT_EQ(target.matchCount, 1u) << "an element may end where the document does";
  ClXmlMemFree(target.matches);
  EXPECT_EQ(ClXmlStoreValuePathCompare(&run.record, 0), 1) << "before the root";
  EXPECT_EQ(ClXmlStoreValuePathCompare(&run.record, 1), 0);
}

TEST(Steps, ATargetWithoutPathIsMetByAttributesWhenItAsksForOne) {
  BareRun run("<?xml ?><cmd k=\"v\"/>");
  ClXmlTarget targets[2] = {};
  run.record.targets = targets;
  run.record.targetCount = 2;
  const ClXmlAttribute attribute = {"k", 1, run.block.data() + 15, 3};
  EXPECT_EQ(ClXmlStoreAttValue(&run.record, &attribute, 1), 0);
  targets[1].kind = 1;
  EXPECT_EQ(ClXmlStoreAttValue(&run.record, &attribute, 1), -9);
  EXPECT_TRUE(targets[0].status == 0 && targets[1].status == -9);
}

TEST(Steps, NamespaceDeclarationsLoseSixBytes) {
  BareRun run("");
  EXPECT_EQ(run.add("/", "cmd"), 0);
  const std::string uri = std::string("\"") + clNsTable[0].uri + "\"";
  const struct {
    const char* name;
    const char* left;
    int result;
  } kRows[] = {{"xmlns", "xmlns", 0},
               {"xmlnsp", "xmlnsp", 0},
               {"xmlns:p", "p", 0},
               {"xmlnsp:q", ":q", 0},
               {"xmlns:", "", -2}};
  for (const auto& row : kRows) {
    ClXmlAttribute attribute = {row.name, std::string_view(row.name).size(), uri.data(),
                                uri.size()};
    std::int32_t isNamespace = 9;
    EXPECT_EQ(ClXmlExtractAttribute(&run.record, &attribute, &isNamespace), row.result) << row.name;
    EXPECT_EQ(std::string(attribute.name, attribute.nameLength), row.left);
    EXPECT_EQ(isNamespace, 1);
  }
  EXPECT_EQ(run.path(), "cmd");
  EXPECT_EQ(std::string(run.record.nameSpaceTable[0].declaredPrefix, 5), "xmlns");
}

}  // namespace
