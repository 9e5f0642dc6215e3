// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Plans that the compiler made against the same keys handed in one by one, and their two ways to
// read an element.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "engine_routes.hpp"
#include "fixed_plans.hpp"
#include "support.hpp"
#include "xml/index.hpp"
#include "xml/shapes.hpp"

namespace {

using pxcl::xml::kShortestRepeating;
using pxcl_test::Key;
using pxcl_test::kKeys;

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
        EXPECT_EQ(pxcl_test::answers_of_fixed_plan(text), pxcl_test::answers_of_keys(text)) << text;
      }
    }
  }
}

// An element that stands where its node is expected is taken by its bytes alone, but not one that differs
// in a byte, stands elsewhere, has a prefix that means another, or is cut off by the document's end.
TEST(FixedPlan, AnswersAsKeysHandedInDoWhateverTheOrder) {
  const std::string pieces[] = {
      "<zirk:b>",
      "</zirk:b>",
      "<vrx:c>1</vrx:c>",
      "<c>",
      "</c>",
      "<zirk:b k=\"v\">2</zirk:b>",
      "<zirk:b k=\"w\">",
      "<zirk:b k=\"w\"><zirk:c>3</zirk:c>",
      "<zirk:c>4</zirk:c>",
      "<zirk:c></zirk:c>",
      "<zirk:c> </zirk:c>",
      "<zirk:c>5</zirk:c >",
      "<zirk:name_of_20_bytes>",
      "</zirk:name_of_20_bytes>",
      "<vrx:item_of_many k=\"value-of.more\">6</vrx:item_of_many>",
      "<vrx:item_of_many k=\"value-of.more\">",
      "<zirk:a_rather_long_name_here>7</zirk:a_rather_long_name_here>",
      "<vrx:b>8</vrx:b>",
      "<vrx:b/>",
      "<vrx:bb>9</vrx:bb>",
      "<vrx:b k=\"v\">10</vrx:b>",
      "<vrx:b>8</vrx:b><zirk:name_of_more_than_two_lanes>11</zirk:name_of_more_than_two_lanes>",
      "<vrx:b>8</vrx:b><zirk:name_of_more_than_two_lanes>12</zirk:name_of_more_than_two_lanex>",
      "<zirk:b k=\"w\" l=\"v\">13</zirk:b>",
      "<zirk:b k='w'>14</zirk:b>",
      "<zi:b k=\"w\">15</zi:b>",
      "<x xmlns:zirk=\"" + std::string(clNsTable[1].uri) + "\">",
      "</x>",
      "<zirk:a>",
      "<zirk:a>t<zirk:item_of_many k=\"v\">16<zirk:b>17</zirk:b>",
      "</zirk:item_of_many></zirk:a>",
      "</zirk:b><vrx:c k=\"v/w\">18</vrx:c>",
      "</zirk:b><vrx:c k=\"v/w\">18</vrx:c><vrx:c k=\"v>w\">19</vrx:c>",
      "<zirk:name_of_more_than_two_lanes>t</zirk:name_of_more_than_two_lanes></zirk:b><vrx:c "
      "k=\"v<w\">20</vrx:c>",
      "<vrx:f>20</vrx:f><vrx:c k=\"x\">21</vrx:c><vrx:c k=\"ikw:x\">22</vrx:c>",
      "<vrx:e>30</vrx:e><vrx:f>g>31</vrx:f>",
      "<vrx:c k=\"x\">23</vrx:c>",
      "<vrx:c k=\"x\">24</vrx:c><vrx:d k=\"w\">25</vrx:d>",
      "<vrx:d l=\"x\"><vrx:c>26</vrx:c></vrx:d><vrx:d k=\"w\"><vrx:b>27</vrx:b></vrx:d>",
      "<vrx:d k=\"u\"><vrx:b>28</vrx:b></vrx:d><vrx:c xmlns=\"v\">29</vrx:c>",
      "text"};
  std::vector<std::string> paths;
  for (const Key& key : kKeys) paths.push_back(std::string(key.path));
  std::minstd_rand random(1);
  std::size_t found = 0;
  for (int round = 0; round < 20000; ++round) {
    std::string text = "<?xml ?><cmd><zirk:b>";
    for (auto count = 2 + random() % 10; count != 0; --count) {
      text += pieces[random() % std::size(pieces)];
    }
    text += "</zirk:b></cmd>" + std::string(random() % 2 == 0 ? 80 : 0, ' ');
    if (random() % 4 == 0) text.resize(text.size() - random() % 20);
    if (random() % 4 == 0) text[21 + random() % (text.size() - 21)] = "<>/\"= :x"[random() % 8];
    const std::vector<char> exact(text.begin(), text.end());
    const std::string_view document(exact.data(), exact.size());
    const std::string answers = pxcl_test::answers_of_fixed_plan(document);
    ASSERT_EQ(answers, pxcl_test::answers_of_keys(document)) << text;
    if (round % 20 == 0) {
      ASSERT_EQ(pxcl_test::compare_scan({0, paths, 0, text}), "");
    }
    found += static_cast<std::size_t>(std::count(answers.begin(), answers.end(), '\n')) - 1;
  }
  EXPECT_GT(found, 15000u);
}

// Nor is anything expected where a document repeats itself: the scan learns what follows what.
TEST(FixedPlan, AnswersAsKeysHandedInDoInLists) {
  const std::string leaves[] = {
      "<vrx:c>1</vrx:c>",
      "<zirk:b k=\"v\">2</zirk:b>",
      "<zirk:b k=\"w\"><zirk:c>3</zirk:c></zirk:b>",
      "<zirk:a_rather_long_name_here>4</zirk:a_rather_long_name_here>",
      "<vrx:b>5</vrx:b>",
      "<vrx:b></vrx:b>",
      "<vrx:x>6</vrx:x>",
      "<zirk:b>7</zirk:b>",
      "<zirk:item_of_many k=\"v\"><zirk:b>8</zirk:b></zirk:item_of_many>"};
  std::minstd_rand random(1);
  for (int round = 0; round < 500; ++round) {
    std::string text = "<?xml ?><cmd>";
    while (text.size() < kShortestRepeating) {
      const std::string name = random() % 2 == 0 ? "zirk:a>" : "zirk:b>";
      std::string element = "<" + name;
      for (auto count = random() % 6; count != 0; --count)
        element += leaves[random() % std::size(leaves)];
      element += "</" + name;
      for (auto count = 1 + random() % 8; count != 0; --count) text += element;
    }
    text += "</cmd>";
    ASSERT_EQ(pxcl_test::answers_of_fixed_plan(text), pxcl_test::answers_of_keys(text)) << text;
  }
}

// An element that several keys name is one node, whoever made the plan.
TEST(FixedPlan, HasAsManyNodesAsOneOfKeysHandedIn) {
  pxcl::xml::Index index;
  ASSERT_TRUE(start_index(index, kKeys.size()));
  for (const Key& key : kKeys) {
    ASSERT_TRUE(add_target(index, key.path, pxcl::xml::collect_for(key.wanted), key.group));
  }
  EXPECT_EQ(index.plan().nodeCount, pxcl::xml::kPlanOf<kKeys>.nodeCount);
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
                                "<",
                                ">",
                                ";",
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
