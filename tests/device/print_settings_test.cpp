// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <string>
#include <vector>

#include "../keyed/reply.hpp"
#include "device.h"
#include "dictionaries.h"
#include "support.hpp"

namespace {

using pxcl_test::ExactBlock;
using std::string;

constexpr uint16_t U = 65535;
constexpr uint16_t kA4 = 4, k5x7 = 10, kHagaki = 16;
constexpr uint16_t kPlain = 1, kCoated = 2, kPhoto = 12;

// What a reply lists for one size: the areas; an empty one is left out.
struct Size {
  string area[3] = {"2000,3000", "2100,3100", "1900,2900"};  // border, borderless, duplex
  string margin = "34,35,30,50";
};
// What a reply lists for one type.
struct Type {
  string borderless = "OFF,ON", color = "color,monochrome", duplex = "OFF,ON";
};

string keyed(const string& name, const string& by, const string& keyword, const string& value) {
  if (value.empty()) return "";
  return "<zirk:" + name + " " + by + "=\"" + keyword + "\">" + value + "</zirk:" + name + ">";
}

string size_text(const string& keyword, const Size& size) {
  string text;
  const char* const kinds[] = {"border", "borderless", "duplex"};
  for (std::size_t i = 0; i < 3; ++i) {
    text += keyed(string("printarea_") + kinds[i], "papersize", keyword, size.area[i]);
    text += keyed(string("margin_") + kinds[i], "papersize", keyword, size.margin);
  }
  return text;
}

string type_text(const string& keyword, const Type& type) {
  return keyed("borderlessprint", "papertype", keyword, type.borderless) +
         keyed("printcolormode", "papertype", keyword, type.color) +
         keyed("duplexprint", "papertype", keyword, type.duplex);
}

string list_text(const string& name, const string& values) {
  return "<zirk:" + name + ">" + values + "</zirk:" + name + ">";
}

// The lists name the rows in the order given.
string capability(const std::vector<std::pair<uint16_t, Size>>& sizes,
                  const std::vector<std::pair<uint16_t, Type>>& types) {
  string sizeList, typeList, text;
  for (const auto& [row, size] : sizes) {
    const string keyword = glb_clssdicPaperSizeTbl[row].keyword;
    sizeList += keyword + ",";
    text += size_text(keyword, size);
  }
  for (const auto& [row, type] : types) {
    const string keyword = glb_clssdicPaperTypeTbl[row].keyword;
    typeList += keyword + ",";
    text += type_text(keyword, type);
  }
  return reply(list_text("papersize", sizeList) + list_text("papertype", typeList) +
               list_text("stapleside", "longside,shortside") + text);
}

string every_paper() {
  std::vector<std::pair<uint16_t, Size>> sizes;
  std::vector<std::pair<uint16_t, Type>> types;
  for (uint16_t row = 1; row < CLSS_DICNUM_PAPERSIZE; ++row)
    if (glb_clssdicPaperSizeTbl[row].keyword != nullptr) sizes.push_back({row, {}});
  for (uint16_t row = 1; row < CLSS_DICNUM_PAPERTYPE; ++row)
    if (glb_clssdicPaperTypeTbl[row].keyword != nullptr) types.push_back({row, {}});
  return capability(sizes, types);
}

using Fields = std::array<uint16_t, 5>;  // size, type, borderless, colour mode, duplex

Fields fields_of(const ClssPrintSettings& record) {
  return {record.paperSize, record.paperType, record.borderless, record.colorMode,
          record.duplexPrint};
}

ClssPrintSettings record_of(const Fields& f, uint16_t version = 2) {
  return {version, f[0], f[1], f[2], f[3], f[4]};
}

int32_t complete(int16_t preferBordered, const string& reply, ClssPrintSettings& record) {
  const ExactBlock block(reply);
  return CLSS_AutoMakeOtherPrintSettings(preferBordered, block.data(), block.size(), &record);
}

TEST(PrintSettings, Init) {
  ClssPrintSettings record = record_of({1, 2, 3, 4, 5});
  EXPECT_EQ(CLSS_initPrintSettings(&record), 0);
  EXPECT_EQ(fields_of(record), (Fields{U, U, U, U, U}));
  record = record_of({1, 2, 3, 4, 5}, 1);
  EXPECT_EQ(CLSS_initPrintSettings(&record), -8);
  EXPECT_EQ(fields_of(record), (Fields{1, 2, 3, 4, 5}));
  EXPECT_EQ(CLSS_IsDiscLabelPrintSettings(), 0);
}

TEST(Completion, ChoosesWhatThePrinterAllows) {
  const string reply = capability({{kA4, {{"2000,3000", "", "1900,2900"}}},
                                   {k5x7, {{"0,5", "12,17", "10,0"}}},
                                   {kHagaki, {{"100,148", "90,138", "0,138"}}}},
                                  {{kPlain, {"OFF"}},
                                   {kCoated, {"ON", "", ""}},
                                   {kPhoto, {"ON,OFF", "monochrome,coldblack", "OFF"}}});
  const struct {
    int16_t preferBordered;
    Fields before;
    std::array<uint16_t, 3> after;
  } cases[] = {
      // nothing wished for: the kind of border follows the preference, then the printer
      {0, {kA4, kPlain, U, U, U}, {1, 1, 1}},
      {0, {kHagaki, kPhoto, U, U, U}, {2, 2, 1}},
      {1, {kHagaki, kPhoto, U, U, U}, {1, 2, 1}},
      {-1, {kHagaki, kPhoto, U, U, U}, {1, 2, 1}},
      {1, {k5x7, kPhoto, U, U, U}, {2, 2, 1}},
      {0, {kA4, kCoated, U, U, U}, {U, U, U}},
      {1, {kHagaki, kCoated, U, U, U}, {2, U, U}},
      // wishes win over the preference, and the printer over wishes
      {0, {kHagaki, kPhoto, 1, 4, 3}, {1, 4, 1}},
      {1, {kHagaki, kPhoto, 2, 3, 3}, {2, 2, 1}},
      {0, {kA4, kPlain, 2, 2, 3}, {1, 2, 3}},
      {0, {kA4, kPlain, 7, 9, 4}, {1, 1, 4}},
      {0, {kA4, kPlain, 0, 0, 2}, {1, 1, 1}},  // "ON" is listed with its staple sides only
      {0, {kA4, kPlain, 1, 1, 1}, {1, 1, 1}},
      {0, {kA4, kPhoto, 1, 2, 3}, {1, 2, 1}},
      {0, {kHagaki, kPlain, 2, 1, 4}, {1, 1, 1}},  // no height to print on both sides
      {0, {k5x7, kPlain, 1, 1, 4}, {U, 1, 1}},
      {0, {kA4, kCoated, 1, 1, 1}, {U, U, U}},
  };
  for (const auto& row : cases) {
    ClssPrintSettings record = record_of(row.before);
    EXPECT_EQ(complete(row.preferBordered, reply, record), 0);
    EXPECT_EQ(fields_of(record),
              (Fields{row.before[0], row.before[1], row.after[0], row.after[1], row.after[2]}))
        << testing::PrintToString(row.before);
  }
}

TEST(Completion, RefusesInOrder) {
  const string whole = capability({{kA4, {}}}, {{kPlain, {}}});
  const Fields good = {kA4, kPlain, 1, 2, 3};
  const struct {
    std::size_t length;
    ClssPrintSettings record;
    int32_t status;
  } cases[] = {
      {whole.size(), record_of({U, U, 1, 2, 3}, 3), -8},
      {whole.size(), record_of({U, kPlain, 1, 2, 3}), -2},
      {whole.size(), record_of({kA4, U, 1, 2, 3}), -2},
      {whole.size(), record_of({k5x7, kPlain, 1, 2, 3}), -2},
      {whole.size(), record_of({kA4, kPhoto, 1, 2, 3}), -2},
      {whole.size(), record_of({0, 0, 1, 2, 3}), -2},
      {whole.size() - 1, record_of(good), -2},
  };
  for (const auto& row : cases) {
    ClssPrintSettings record = row.record;
    EXPECT_EQ(complete(0, whole.substr(0, row.length), record), row.status);
    EXPECT_EQ(fields_of(record), fields_of(row.record));
  }
}

// One entry after the other through the indexed call, until the wanted one or a failure.
template <typename Entry>
bool found_by_index(int32_t (*parse)(const char*, uint64_t, int32_t*, Entry*), const string& reply,
                    uint16_t Entry::*field, uint16_t wanted) {
  for (int32_t index = 0;; ++index) {
    Entry entry = {};
    entry.version = 3;
    if (parse(reply.data(), reply.size(), &index, &entry) < 0) return false;
    if (entry.*field == wanted) return true;
  }
}

string repeated(const string& keyword, int times) {
  string text;
  for (int i = 0; i < times; ++i) text += keyword + ",";
  return text;
}

// Entries are read in the order of their codes: photographic (13) behind the coated type (2), the
// 5x7 card (51) behind A4 (7). An entry that cannot be read hides those behind it, not those
// before.
TEST(Completion, FindsWhatAWalkByIndexFinds) {
  const Type tooManyModes = {"OFF", "color,color,color,color,color", "OFF"};
  const Size shortMargin = {{"1,2", "3,4", "5,6"}, "1,2,3"},
             longArea = {{"1,2,3", "", ""}, "1,2,3,4"};
  const std::map<string, string> replies = {
      {"good", capability({{k5x7, {}}, {kA4, {}}}, {{kPhoto, {}}, {kPlain, {}}})},
      {"bad type in front", capability({{kA4, {}}}, {{kPlain, tooManyModes}, {kPhoto, {}}})},
      {"bad type behind", capability({{kA4, {}}}, {{kPhoto, tooManyModes}, {kPlain, {}}})},
      {"bad size in front", capability({{kA4, shortMargin}, {k5x7, {}}}, {{kPlain, {}}})},
      {"bad size behind", capability({{k5x7, longArea}, {kA4, {}}}, {{kPlain, {}}})},
      {"sizes without elements", capability({{kA4, {{"", "", ""}, ""}}}, {{kPlain, {"", "", ""}}})},
      {"no sizes", capability({}, {{kPlain, {}}})},
      {"no types", capability({{kA4, {}}}, {})},
      {"not OK", reply(list_text("papersize", "iso_a4_210x297mm"), "NG")},
      {"lists repeat themselves",
       reply(list_text("papersize", repeated("iso_a4_210x297mm", 300) + "na_5x7_5x7in") +
             list_text("papertype", repeated("stationery", 200) + "photographic") +
             size_text("iso_a4_210x297mm", {}) + size_text("na_5x7_5x7in", {}) +
             type_text("stationery", {}) + type_text("photographic", {}))},
      {"repeated and bad at the end",
       reply(list_text("papersize", repeated("iso_a4_210x297mm", 97) + "na_5x7_5x7in") +
             list_text("papertype", repeated("stationery", 96) + "photographic") +
             size_text("iso_a4_210x297mm", {}) + size_text("na_5x7_5x7in", shortMargin) +
             type_text("stationery", {}) + type_text("photographic", tooManyModes))},
  };
  int found = 0, missed = 0;
  for (const auto& [name, reply] : replies) {
    for (const uint16_t size : {kA4, k5x7, kHagaki}) {
      for (const uint16_t type : {kPlain, kCoated, kPhoto}) {
        const bool both = found_by_index(CLSS_ParseCapabilityResponsePrint_PaperSize, reply,
                                         &ClssPaperSize::paperSize, size) &&
                          found_by_index(CLSS_ParseCapabilityResponsePrint_MediaType, reply,
                                         &ClssMediaType::paperType, type);
        ClssPrintSettings record = record_of({size, type, U, U, U});
        EXPECT_EQ(complete(0, reply, record), both ? 0 : -2) << name << ' ' << size << ' ' << type;
        ++(both ? found : missed);
      }
    }
  }
  EXPECT_EQ(found, 12);
  EXPECT_EQ(missed, 11 * 9 - 12);
}

struct Slot {
  uint16_t type, size, panel;
};

ClssStatus status_of(const std::vector<Slot>& slots, uint16_t leading = 1) {
  ClssStatus status = {};
  status.leading = leading;
  for (std::size_t k = 0; k < 8; ++k) {
    const Slot slot = k < slots.size() ? slots[k] : Slot{U, U, 0};
    status.currentPaperType[k] = slot.type;
    status.currentPaperSize[k] = slot.size;
    status.panelMedia[k] = slot.panel;
  }
  return status;
}

TEST(ChoiceFromLoadedPaper, PicksTheOneSlotThatFits) {
  const std::vector<Slot> three = {{kPlain, kA4, 0}, {kPhoto, k5x7, 0}, {15, kHagaki, 0}};
  const std::vector<Slot> eight = {{4, 1, 0}, {5, 2, 0}, {6, 3, 0},  {7, 4, 0},
                                   {8, 5, 0}, {9, 6, 0}, {10, 7, 0}, {11, 8, 0}};
  const struct {
    uint16_t mode, size, type;
    std::vector<Slot> slots;
    int32_t status;
    uint16_t sizeAfter, typeAfter;
  } cases[] = {
      // the size for a type
      {0, 49, kPhoto, three, 0, k5x7, kPhoto},
      {0, 49, 11, eight, 0, 8, 11},
      {0, 49, kCoated, three, -7, U, kCoated},
      {0, 49, kPlain, {{kPlain, kA4, 0}, {kPlain, kA4, 0}}, -17, U, kPlain},
      {0, 49, kPlain, {{kPlain, kA4, 1}}, 0, kA4, kPlain},
      {0, 49, kPhoto, {{kPlain, kA4, 0}, {U, k5x7, 0}, {kPhoto, k5x7, 0}}, -7, U, kPhoto},
      {0, 49, kPhoto, {{kPlain, kA4, 0}, {kPhoto, U, 0}, {kPhoto, k5x7, 0}}, -7, U, kPhoto},
      {0, 49, U, three, -2, 49, U},
      {0, 49, 90, {{90, kA4, 0}}, -2, kA4, 90},  // chosen, but the printer does not list it
      // the type for a size
      {1, k5x7, 20, three, 0, k5x7, kPhoto},
      {1, 49, 20, three, -7, 49, U},
      {1, kA4, 20, {{kPlain, kA4, 0}, {kPhoto, kA4, 0}}, -17, kA4, U},
      {1, U, 20, three, -2, U, 20},
      // other than plain paper
      {2, 49, 20, three, 0, k5x7, kPhoto},
      {2, 49, 20, {{kPlain, kA4, 0}, {15, kHagaki, 1}}, -17, U, U},
      {2, 49, 20, {{kPhoto, kA4, 0}, {kPhoto, kA4, 0}}, -17, U, U},
      {2, 49, 20, {{13, 1, 0}, {14, 2, 0}, {17, 3, 0}, {2, 5, 1}, {3, 6, 1}, {18, 7, 0}}, 0, 7, 18},
      {2, 49, 20, {{13, 1, 1}, {14, 2, 0}}, 0, 1, 13},
      {2, 49, 20, {{13, 1, 2}, {14, 2, 1}}, 0, 2, 14},
      {2, 49, 20, {{13, 1, 0}, {17, 2, 1}}, 0, 2, 17},
      {2, 49, 20, {{2, 3, 0}, {3, 2, 1}}, 0, 3, 2},
      {2, 49, 20, {{3, 2, 0}, {kPlain, kA4, 1}}, 0, 2, 3},
      {2, 49, 20, {{4, 2, 1}}, 0, 2, 4},
      // plain paper
      {3, 49, 20, {{kPhoto, k5x7, 0}, {kPlain, kA4, 0}}, 0, kA4, kPlain},
      {3, 49, 20, {{kPlain, kA4, 1}, {15, kHagaki, 0}}, 0, kHagaki, 15},
      {3, 49, 20, {{15, kHagaki, 1}}, 0, kHagaki, 15},
      {3, 49, 20, three, -17, U, U},
      {3, 49, 20, {{kPlain, kA4, 1}, {kPhoto, k5x7, 0}}, -17, U, U},
      {3, 49, 20, {{U, U, 0}, {kPlain, kA4, 0}}, -7, 49, 20},
      {4, 49, 20, three, -2, 49, 20},
  };
  const string reply = every_paper();
  for (const auto& row : cases) {
    const ClssStatus status = status_of(row.slots);
    ClssPrintSettings record = record_of({row.size, row.type, U, U, U});
    EXPECT_EQ(CLSS_AutoMakePrintSettings(row.mode, reply.data(), reply.size(), &status, &record),
              row.status);
    const bool done = row.status == 0;
    const uint16_t border = row.mode == 3 ? 1 : 2;
    EXPECT_EQ(fields_of(record), (Fields{row.sizeAfter, row.typeAfter, done ? border : U,
                                         done ? uint16_t{1} : U, done ? uint16_t{1} : U}))
        << "case " << &row - cases;
  }
}

TEST(ChoiceFromLoadedPaper, RefusesInOrder) {
  const string reply = every_paper();
  const ClssStatus good = status_of({{kPlain, kA4, 0}}), other = status_of({{kPlain, kA4, 0}}, 0);
  const ClssStatus noSize = status_of({{kPlain, U, 0}});
  ClssPrintSettings two = record_of({U, kPlain, U, U, U}),
                    three = record_of({U, kPlain, U, U, U}, 3);
  const struct {
    const ClssStatus* status;
    ClssPrintSettings* record;
    int32_t result;
  } cases[] = {{&noSize, &three, -8}, {&other, &two, -8}, {&noSize, &two, -7}, {&good, &two, -2}};
  for (const auto& row : cases) {
    EXPECT_EQ(CLSS_AutoMakePrintSettings(9, reply.data(), reply.size(), row.status, row.record),
              row.result);
  }
  EXPECT_EQ(fields_of(two), (Fields{U, kPlain, U, U, U}));
}

}  // namespace
