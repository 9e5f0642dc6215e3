// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

#include <ctime>
#include <string>
#include <vector>

#include "keyed.h"
#include "reply.hpp"
#include "support.hpp"

namespace {

using namespace std::string_literals;
using pxcl_test::ExactBlock;

#define PRINT "cmd/zirk:contents/zirk:param_set servicetype=\"print\""
constexpr std::uint16_t kGetCapabilityResponse = 2;
constexpr char kItemTemplate[] = PRINT "/%s:%s";
constexpr char kByAttribute[] = PRINT "/%s:%s=\"%s\"";
const std::string kTooLong(2048, 'x');

struct Entry {
  std::uint32_t value;
  int nameSpace;
  int code;
  bool operator==(const Entry&) const = default;
};
using Entries = std::vector<Entry>;

void PrintTo(const Entry& entry, std::ostream* out) {
  *out << entry.value << "/" << entry.nameSpace << "/" << entry.code;
}

Entries entries_of(const ItemSet& item) {
  Entries entries;
  for (std::uint32_t i = 0; item.entries != nullptr && i < item.entryCount; ++i) {
    entries.push_back({item.entries[i].value, item.entries[i].nameSpace, item.entries[i].code});
  }
  return entries;
}

ItemSet item(const char* name, const ClssDicRow* dictionary = nullptr, std::uint32_t rows = 0,
             std::uint32_t mode = 0, const char* pathTemplate = kItemTemplate) {
  return {nullptr, nullptr, 0, pathTemplate, name, mode, dictionary, rows};
}

// Item requests that are released at the end, with the statuses of the calls on a reply.
struct Items {
  std::vector<ItemSet> sets;
  ~Items() { ReleaseItemSetList(sets.data(), static_cast<int>(sets.size())); }

  int list(const std::string& text, std::uint16_t operation = kGetCapabilityResponse) {
    const ExactBlock document(text);
    return Get_ItemSetList(document.data(), document.size(), operation, sets.data(),
                           static_cast<int>(sets.size()));
  }
  int by_attribute(const std::string& text, std::uint16_t nameSpace = 0, std::uint32_t mode = 0) {
    const ExactBlock document(text);
    return Get_ItemSetByReq(document.data(), document.size(), sets.data(),
                            static_cast<std::uint16_t>(sets.size()), "k", nameSpace, mode);
  }
};

#define COLOR_MODES glb_clssdicColormodeTbl, CLSS_DICNUM_COLORMODE

std::string without(std::string text, const std::string& part) {
  return text.replace(text.find(part), part.size(), "");
}

TEST(CheckOpeAndRes, AsksForOperationAndResult) {
  const std::string good = reply("");
  const std::string noResponse = without(good, "<zirk:response>OK</zirk:response>");
  const std::string noOperation =
      without(good, "<zirk:operation>GetCapabilityResponse</zirk:operation>");
  const struct {
    std::string text;
    std::uint16_t operation;
    int status;
  } cases[] = {
      {good, 2, 0},
      {reply("", "OK", "GetCapabilityResponse", "maintenance"), 2, 0},
      {good, 0, -2},
      {good, 27, -2},
      {"", 2, -2},
      {good.substr(0, good.size() - 1), 2, -2},
      {good, 4, -5},
      {good, 15, -5},  // an unused row
      {reply("", "OK", "GetCapability"), 2, -5},
      {reply("", "OK", "Unheard"), 2, -5},
      {reply("", "OK", ""), 2, -5},  // there but empty is not found
      {noOperation, 2, -5},
      {reply("", "NG"), 2, -6},
      {reply("", "ok"), 2, -6},
      {reply("", ""), 2, -6},
      {noResponse, 2, -6},
      {reply("", "OK", "GetCapabilityResponse", "media"), 2, -6},  // none of the four services
      {reply("", "NG", "StartJobResponse"), 2, -5},                // the operation comes first
  };
  for (const auto& [text, operation, status] : cases) {
    const ExactBlock document(text);
    EXPECT_EQ(CheckOpeAndRes(document.data(), document.size(), operation), status) << text;
  }
}

TEST(GetItemSet, ReadsValuesInTheirOrder) {
  const struct {
    const char* elements;
    ItemSet item;
    Entries entries;
  } cases[] = {
      {"<zirk:m>monochrome,color</zirk:m>", item("m", COLOR_MODES), {{1, 0, 1}, {2, 0, 2}}},
      {"<tolm:m> sepia , mono chrome,, ,</tolm:m>", item("m", COLOR_MODES), {{2, 2, 2}}},
      {"<zirk:m>, ,\t,,</zirk:m>", item("m", COLOR_MODES), {}},
      {"<zirk:m></zirk:m><vrx:m/>", item("m", COLOR_MODES), {}},
      {"<zirk:other>color</zirk:other>", item("m", COLOR_MODES), {}},
      {"<vrx:m>color,warmblack</vrx:m><zirk:m>monochrome</zirk:m><tolm:m>color</tolm:m>",
       item("m", COLOR_MODES),
       {{1, 1, 1}, {1, 2, 1}, {2, 0, 2}, {3, 1, 3}}},
      // Without codes, as without a dictionary, the order is that of the text.
      {"<zirk:m>PDF,RAW,JPEG</zirk:m>",
       item("m", glb_clssdicDataFormatTbl, CLSS_DICNUM_DATAFORMAT),
       {{8, 0, -1}, {1, 0, -1}, {2, 0, -1}}},
      {"<tolm:m>5, -1,x</tolm:m><vrx:m>70 000</vrx:m>",
       item("m"),
       {{70000, 1, -1}, {5, 2, -1}, {0xFFFFFFFF, 2, -1}, {0x80000000, 2, -1}}},
      {"<zirk:m></zirk:m><tolm:m/>",
       item("m", COLOR_MODES, 1),
       {{2, 0, -1}, {1, 1, -1}, {2, 2, -1}}},
      {"", item("m", nullptr, 0, 1), {{1, 0, -1}, {1, 1, -1}, {1, 2, -1}}},
      // A template without markers asks for the same element three times.
      {"<zirk:m>7</zirk:m>",
       item("m", nullptr, 0, 0, PRINT "/zirk:m"),
       {{7, 0, -1}, {7, 1, -1}, {7, 2, -1}}},
  };
  for (const auto& [elements, request, entries] : cases) {
    Items items{{request}};
    const ExactBlock document(reply(elements));
    EXPECT_EQ(Get_ItemSet(document.data(), document.size(), &items.sets[0]), 0) << elements;
    EXPECT_EQ(items.sets[0].entryCount, entries.size()) << elements;
    EXPECT_EQ(entries_of(items.sets[0]), entries) << elements;
  }
}

TEST(ItemSets, OrderEntriesWithoutCodeFirstOrLast) {
  const ClssDicRow rows[] = {{nullptr, 65535}, {"a", 9}, {"b", 65535}, {"c", 1}, {nullptr, 65535}};
  Items list{{item("m", rows, 5)}}, fixed{{item("m k", rows, 5, 0, kByAttribute)}};
  EXPECT_EQ(list.list(reply("<zirk:m>a,c,b,e</zirk:m>")), 0);
  EXPECT_EQ(entries_of(list.sets[0]), (Entries{{2, 0, -1}, {3, 0, 1}, {1, 0, 9}}));
  EXPECT_EQ(fixed.by_attribute(reply("<zirk:m k=\"k\">a,b,c</zirk:m>")), 0);
  EXPECT_EQ(entries_of(fixed.sets[0]), (Entries{{3, 0, 1}, {1, 0, 9}, {2, 0, -1}, {65535, 0, -1}}));
}

TEST(GetItemSetList, FailsItemByItem) {
  const ItemSet good = item("m", COLOR_MODES);
  const std::string text = reply("<zirk:m>color</zirk:m>");
  const struct {
    ItemSet bad;
    int status;
  } cases[] = {
      {item("m", COLOR_MODES, 0, nullptr), -4},    {item("m", COLOR_MODES, 0, ""), -4},
      {item("m", COLOR_MODES, 0, "%s%s%s"), -4},   {item(kTooLong.c_str(), COLOR_MODES), -4},
      {item("m", glb_clssdicColormodeTbl, 0), -2},
  };
  for (const auto& [bad, status] : cases) {
    Items items{{good, bad, good}};
    EXPECT_EQ(items.list(text), status);
    EXPECT_EQ(entries_of(items.sets[0]), (Entries{{1, 0, 1}}));
    EXPECT_EQ(items.sets[1].entries, nullptr);
    EXPECT_EQ(items.sets[2].entries, nullptr);
    EXPECT_EQ(items.list(reply("", "NG")), -6);  // the reply is checked before any item
    const ExactBlock document(text);
    EXPECT_EQ(Get_ItemSet(document.data(), document.size(), &items.sets[1]), status);
  }
  EXPECT_EQ(Get_ItemSetList(text.data(), text.size(), 2, nullptr, 0), 0);
}

TEST(GetItemSetList, AllowsPathKeysUpToTheirBound) {
  // Counted with both markers, the prefix and the terminator: 2048 bytes in all.
  const std::string prefix = PRINT "/%s:";
  for (const std::size_t excess : {0u, 1u}) {
    const std::string name(2048 - 1 - sizeof kItemTemplate + 1 - 4 + excess, 'n');
    Items items{{item(name.c_str(), COLOR_MODES)}};
    EXPECT_EQ(items.list(reply("<zirk:" + name + ">color</zirk:" + name + ">")),
              excess == 0 ? 0 : -4);
    EXPECT_EQ(entries_of(items.sets[0]).size(), excess == 0 ? 1u : 0u);
  }
}

std::string by_attribute(const std::string& text, const char* prefix = "zirk") {
  return reply("<"s + prefix + ":m k=\"k\">" + text + "</" + prefix + ":m>");
}

TEST(GetItemSetByReq, FillsEveryEntry) {
  const ItemSet keywords = item("m k", COLOR_MODES, 0, kByAttribute);
  const ItemSet numbers = item("m k", nullptr, 4, 0, kByAttribute);
  const struct {
    std::string text;
    ItemSet item;
    std::uint16_t nameSpace;
    Entries entries;
  } cases[] = {
      {by_attribute("sepia,monochrome, ,,color"),
       keywords,
       0,
       {{1, 0, 1}, {2, 0, 2}, {65535, 0, -1}, {65535, 0, -1}}},
      {by_attribute("color", "vrx"),
       keywords,
       1,
       {{1, 1, 1}, {65535, 1, -1}, {65535, 1, -1}, {65535, 1, -1}}},
      {by_attribute("color", "vrx"), keywords, 0, Entries(4, {65535, 0, -1})},
      {by_attribute(""), keywords, 0, Entries(4, {65535, 0, -1})},
      {by_attribute("9,1,5"), numbers, 0, {{9, 0, -1}, {1, 0, -1}, {5, 0, -1}}},
      {by_attribute("9"), numbers, 0, {{9, 0, -1}, {0, 0, -1}, {0, 0, -1}}},
      {reply(""), numbers, 2, Entries(3, {0, 2, -1})},
      {reply(""), item("m k", nullptr, 1, 0, kByAttribute), 0, {}},
  };
  for (const auto& [text, request, nameSpace, entries] : cases) {
    Items items{{request}};
    EXPECT_EQ(items.by_attribute(text, nameSpace), 0) << text;
    EXPECT_EQ(entries_of(items.sets[0]), entries) << text;
    EXPECT_EQ(items.sets[0].auxiliary, nullptr);
  }
}

TEST(GetItemSetByReq, CopiesTexts) {
  const struct {
    std::string text;
    int status;
    const char* copy;
    int size;
  } cases[] = {
      {by_attribute("a , b,b"), 0, "a , b,b", 8},
      {by_attribute(""), 0, "", 1},
      {reply("<zirk:m k=\"k\"/>"), 0, "", 1},
      {reply("<zirk:m k=\"x\">a</zirk:m>"), 0, nullptr, 0},
      {by_attribute(std::string(65535, 'x')), -2, nullptr, 0},
  };
  for (const auto& [text, status, copy, size] : cases) {
    Items items{{item("m k", nullptr, 0, 0, kByAttribute)}};
    EXPECT_EQ(items.by_attribute(text, 0, 1), status);
    EXPECT_EQ(items.sets[0].entries, nullptr);
    ASSERT_EQ(items.sets[0].auxiliary != nullptr, status == 0);
    if (status != 0) continue;
    EXPECT_STREQ(items.sets[0].auxiliary->text, copy);
    EXPECT_EQ(items.sets[0].auxiliary->size, size);
  }
  Items items{{item("m k", nullptr, 0, 0, kByAttribute)}};
  EXPECT_EQ(items.by_attribute(by_attribute(std::string(65534, 'x')), 0, 1), 0);
  EXPECT_EQ(items.sets[0].auxiliary->size, 65535);
}

TEST(GetItemSetByReq, ReleasesEverythingOnFailure) {
  const ItemSet good = item("m k", COLOR_MODES, 0, kByAttribute);
  const std::string text = by_attribute("color,monochrome");
  const struct {
    ItemSet first, second;
    std::string text;
    int status;
  } cases[] = {
      {good, item("m k", COLOR_MODES, 0, "%s%s%s%s"), text, -4},
      {item("m k", COLOR_MODES, 0, nullptr), good, text, -4},
      {good, good, by_attribute("color,color,color,color,color"), -2},
      {good, item("m k", nullptr, 2, 0, kByAttribute), text, -2},  // two values, room for one
      {item("m k", nullptr, 2, 0, kByAttribute), item("m k", COLOR_MODES, 0, nullptr), text, -2},
      {good, item("m k", nullptr, 1, 0, kByAttribute), text, -2},
      {good, item("m k", nullptr, 0, 0, kByAttribute), text, -2},
      {good, good, text.substr(1), -2},
  };
  for (const auto& [first, second, document, status] : cases) {
    Items items{{first, second}};
    EXPECT_EQ(items.by_attribute(document), status);
    for (const ItemSet& set : items.sets) EXPECT_EQ(set.entries, nullptr);
  }
  Items items{{good}};
  EXPECT_EQ(items.by_attribute(text, 3), -2);
  EXPECT_EQ(items.by_attribute(""), -2);
  EXPECT_EQ(Get_ItemSetByReq(nullptr, 0, items.sets.data(), 0, "k", 3, 0), -4);  // before all else
}

TEST(CheckSuport, LooksForOneValue) {
  const std::string colors = reply("<zirk:m>color,coldblack</zirk:m>");
  const ItemSet modes = item("m", COLOR_MODES), presence = item("m", nullptr, 0, 1);
  const struct {
    std::string text;
    ItemSet item;
    std::uint16_t wanted;
    int status;
  } cases[] = {
      {colors, modes, 4, 2},
      {colors, modes, 2, 1},
      {colors, modes, 5, -2},
      {reply(""), modes, 1, 65535},
      {colors, presence, 2, 2},
      {reply(""), presence, 2, 1},
      {reply("", "NG"), modes, 1, -6},
      {reply("<zirk:m>sepia</zirk:m>"), modes, 1, 65535},
      {"", modes, 1, -2},
  };
  for (auto [text, request, wanted, status] : cases) {
    const ExactBlock document(text);
    // What the item holds is neither freed nor overwritten.
    ItemEntry held = {7, 7, 7};
    request.entries = &held;
    const std::size_t live = pxcl_test::live_blocks();
    EXPECT_EQ(checkSuport(document.data(), document.size(), 2, &request, wanted), status) << text;
    EXPECT_EQ(pxcl_test::live_blocks(), live);
    EXPECT_EQ(request.entries, &held);
  }
}

TEST(ItemSets, AnswerAnEmptyElementToEveryItem) {
  Items items{std::vector<ItemSet>(2, item("m", COLOR_MODES, 1))};
  Items attributed{std::vector<ItemSet>(2, item("m k", COLOR_MODES, 0, kByAttribute))};
  EXPECT_EQ(items.list(reply("<zirk:m/>")), 0);
  EXPECT_EQ(attributed.by_attribute(by_attribute(""), 0, 1), 0);
  for (std::size_t i = 0; i < 2; ++i) {
    EXPECT_EQ(entries_of(items.sets[i]), (Entries{{2, 0, -1}, {1, 1, -1}, {1, 2, -1}}));
    EXPECT_STREQ(attributed.sets[i].auxiliary->text, "");
  }
}

TEST(ItemSets, StayLinearOnHostileLists) {
  const std::string commas(100'000, ','), longWord(1'000'000, 'k');
  std::string values, blanks;
  for (int i = 0; i < 100'000; ++i) values += i % 2 == 0 ? "monochrome," : "color,";
  for (int i = 0; i < 100'000; ++i) blanks += "c o l o r ,  ";
  const struct {
    const std::string& text;
    std::size_t entries;
  } cases[] = {{commas, 0}, {longWord, 0}, {values, 100'000}, {blanks, 100'000}};
  const std::clock_t begin = std::clock();
  for (const auto& [text, entries] : cases) {
    Items items{{item("m", COLOR_MODES)}};
    EXPECT_EQ(items.list(reply("<zirk:m>" + text + "</zirk:m>")), 0);
    EXPECT_EQ(items.sets[0].entryCount, entries);
    ReleaseItemSetList(items.sets.data(), 1);
    items.by_attribute(by_attribute(text));
  }
  EXPECT_LT(std::clock() - begin, 5 * CLOCKS_PER_SEC);
}

}  // namespace
