// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Plans that the compiler made against the same keys handed in one by one, and their two ways to
// read an element.

#include "xml/fixed_plan.hpp"

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <vector>

#include "answers.hpp"
#include "support.hpp"
#include "xml/index.hpp"

namespace {

using pxcl::xml::Answer;
using pxcl::xml::EachText;
using pxcl::xml::Key;
using pxcl::xml::Reader;
using pxcl::xml::Wanted;

#define ITEM "cmd/zirk:a/zirk:item_of_many k"

// Every form of a simple key; two keys of one element, and one that ends where another goes on.
constexpr std::array<Key, 13> kKeys = {{
    {"cmd/zirk:a"},
    {"cmd/zirk:a", Wanted::kAll, 1},
    {"cmd/zirk:a/zirk:b", Wanted::kAll},
    {"cmd/zirk:a/vrx:b", Wanted::kAll, 2},
    {"cmd/zirk:a/b_c", Wanted::kAll},
    {ITEM, Wanted::kAll},
    {ITEM "/vrx:b", Wanted::kAll},
    {ITEM "=\"v\"", Wanted::kAll, 3},
    {ITEM "=\"v\"/zirk:b", Wanted::kAll, 3},
    {ITEM "=\"value-of.more,than 16/x\"", Wanted::kAll},
    {ITEM "=\"ikw:x\"", Wanted::kAll},
    {ITEM, Wanted::kEach, 4},
    {"cmd/zirk:a l=\"w\"/zirk:b", Wanted::kAll},
}};
constexpr auto kPlan = pxcl::xml::fixed_plan<kKeys>();

// What is found, as text.
template <typename Scan>
std::string answers(const Scan& scan) {
  std::ostringstream out;
  pxcl::xml::Answers<kKeys> found;
  Reader readers[std::size(kKeys)];
  readers[11].self = &out;
  readers[11].take = [](void* self, const EachText& text) {
    *static_cast<std::ostringstream*>(self) << "[" << text.key << "] " << text.offset << '+'
                                            << text.length << ' ' << text.status << '\n';
  };
  out << "result " << scan(found.all(), readers) << '\n';
  for (std::size_t i = 0; i < kKeys.size(); ++i) {
    const Answer& answer = found.all()[i];
    out << kKeys[i].path << ": " << answer.firstStatus << ' ' << answer.firstOffset << '+'
        << answer.firstLength;
    if (kKeys[i].wanted == Wanted::kAll) {
      for (const ClXmlValueRange& range : pxcl_test::ranges_of(answer)) {
        out << ' ' << range.offset << '+' << range.length;
      }
    }
    out << '\n';
  }
  return out.str();
}

const std::string kDeclared = " xmlns:p=\"" + std::string(clNsTable[0].uri) + "\" xmlns:vrx=\"" +
                              clNsTable[1].uri + "\" xmlns:i=\"" + clNsTable[3].uri + "\"";

std::string item(const std::string& attributes) {
  return "<p:item_of_many" + attributes + ">t<p:b>1</p:b><vrx:b>22</vrx:b></p:item_of_many>";
}

// What the compiler joins byte by byte is read by words at run time.
TEST(FixedPlan, WordsAreReadAsBytesAre) {
  using namespace pxcl::xml;
  for (const char* bytes : {"\x80zirk:ab", "\0\xFF:\"/ =;", "abcdefgh"}) {
    for (pxcl::u32 count = 0; count <= 8; ++count) {
      EXPECT_EQ(load_bytes(bytes, count), join_bytes(bytes, count)) << bytes << count;
    }
  }
}

TEST(FixedPlan, AnswersAsKeysHandedInDo) {
  std::string inside = "text<p:b>x</p:b><vrx:b>y</vrx:b><b_c/><p:b></p:b>";
  for (const char* attributes :
       {"", " k=\"v\"", " k=\"value-of.more,than 16/x\"", " k=\"i:x\"", " k=\"x\"", "  k='v'",
        " k=\" v \"", " k=\"\"", " k=\"v\" l=\"w\"", " l=\"w\"", " k=\"w\" k=\"v\""}) {
    inside += item(attributes);
  }
  for (const std::string& root : {kDeclared, std::string(" xmlns:zirk=\"u\"")}) {
    for (const std::string& tag : {std::string("p:a"), std::string("zirk:a")}) {
      for (const std::string& attribute : {std::string(), std::string(" l=\"w\"")}) {
        const std::string text = "<?xml ?><cmd" + root + "><" + tag + attribute + ">" + inside +
                                 "</" + tag + "></cmd>" + std::string(80, ' ');
        const auto fixed = [&](std::span<Answer> found, const Reader* readers) {
          return pxcl::xml::scan(text, kPlan.plan(), found, nullptr, readers);
        };
        const auto handed = [&](std::span<Answer> found, const Reader* readers) {
          return pxcl::xml::scan(text, 0, kKeys, found, nullptr, readers);
        };
        EXPECT_EQ(answers(fixed), answers(handed)) << text;
      }
    }
  }
}

// An element that several keys name is one node, whoever made the plan.
TEST(FixedPlan, HasAsManyNodesAsOneOfKeysHandedIn) {
  pxcl::xml::Index index;
  ASSERT_TRUE(start_index(index, kKeys.size()));
  for (const Key& key : kKeys) {
    ASSERT_TRUE(add_target(index, key.path, pxcl::xml::collect_for(key.wanted), key.group));
  }
  EXPECT_EQ(index.plan().nodeCount, kPlan.plan().nodeCount);
}

// What the library does when it is compiled and when it runs is the same reading, up to a block.
TEST(SimpleElement, IsReadByMasksAsByteByByte) {
  using namespace pxcl::xml;
  const std::string pieces[] = {"a",
                                "bb",
                                ":",
                                " ",
                                "=",
                                "\"",
                                "/",
                                "=\"v",
                                "\"/",
                                " k=\"v\"",
                                "-.'",
                                std::string(1, '\0'),
                                "\t",
                                std::string(13, 'c'),
                                "/zirk:item_of_many kind=\"p:value\"",
                                "name attribute/"};
  struct Read {
    Node node = {};
    RequestedAttribute attribute = {};
  };
  std::minstd_rand random(1);
  int simple = 0;
  for (int round = 0; round < 200000; ++round) {
    std::string text = "n";
    for (auto count = random() % 12; count != 0; --count)
      text += pieces[random() % std::size(pieces)];
    const std::vector<char> exact(text.begin(), text.end());
    const std::string_view path(exact.data(), exact.size());
    const auto begin = static_cast<pxcl::u32>(random() % path.size());
    Read bytes, masks;
    const bool isSimple = read_simple_element(pxcl::from(path, begin), bytes.node, bytes.attribute);
    const bool isShort = bytes.node.textLength < kMostRead;
    const bool isMarked = read_marked_element(path, begin, masks.node, masks.attribute);
    EXPECT_TRUE(isMarked == (isSimple && isShort)) << text << " at " << begin;
    if (!isMarked) continue;
    ++simple;
    EXPECT_EQ(std::memcmp(&bytes, &masks, sizeof bytes), 0) << text << " at " << begin;
  }
  EXPECT_GT(simple, 20000);
}

}  // namespace
