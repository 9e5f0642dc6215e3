// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "keyed.h"
#include "kwvs.h"
#include "support.hpp"

namespace {

using namespace std::string_literals;
using pxcl_test::ExactBlock;

struct Dictionary {
  const ClssDicRow* rows;
  std::uint16_t count;
  std::uint32_t checksum = 0;  // of its keywords and codes
};

const Dictionary kDictionaries[] = {
    {glb_clssdicServiceTypeTbl, CLSS_NUM_SERVICETYPE_LIST, 0x651D2D98},
    {glb_clssdicInkgroupTbl, CLSS_DICNUM_INKGROUP, 0x9AD1C06C},
    {glb_clssdicInputbinTbl, CLSS_DICNUM_INPUTBIN, 0x0229D5D6},
    {glb_clssdicPaperTypeDiscLabelPrintTbl, CLSS_NUM_PAPERTYPE_DISC_LABEL_PRINT, 0x94C31432},
    {glb_clssdicPaperTypeTbl, CLSS_DICNUM_PAPERTYPE, 0xAD8CFDC5},
    {glb_clssdicPaperSizeTbl, CLSS_DICNUM_PAPERSIZE, 0x02B19269},
    {glb_clssdicMismatchModeTbl, CLSS_DICNUM_MISMATCH_MODE, 0x0CDF775D},
    {glb_clssdicHostEnvironmentTbl, CLSS_DICNUM_HOST_ENVIRONMENT, 0xBDE08771},
    {glb_clssdicMacAddressSortTbl, CLSS_DICNUM_MACADDRESS_SORT, 0x6D2632EA},
    {glb_clssdicDeviceSideGuideTbl, CLSS_DICNUM_DEVICE_SIDE_GUIDE, 0x7E7799CE},
    {glb_clssdicPrintPreparationTbl, CLSS_DICNUM_PRINT_PREPARATION, 0xB23FB535},
    {glb_clssdicTCATbl, CLSS_DICNUM_TCA, 0x3073E884},
    {glb_clssdicSubModel, CLSS_DICNUM_SUBMODEL, 0x9DD06F19},
    {glb_clssdicPanelMedia, CLSS_DICNUM_PANEL_PAPERTYPE, 0x018809D4},
    {glb_clssdicRemoteUIGuideTbl, CLSS_DICNUM_REMOTEUI_GUIDE, 0x9CBBA485},
    {glb_clssdicRemoteUIpagelinkTypeATbl, CLSS_DICNUM_REMOTEUI_PAGELINK_TYPEA, 0xBAB41045},
    {glb_clssdicRemoteUIpagelinkTbl, CLSS_DICNUM_REMOTEUI_PAGELINK, 0xAF4454B1},
    {glb_clssdicNextpageTbl, CLSS_DICNUM_NEXTPAGE, 0x7E7799CE},
    {glb_clssdicPLIagreementTbl, CLSS_DICNUM_PLI_AGR, 0x85BC3347},
    {glb_clssdicStapleSideTbl, CLSS_DICNUM_STAPLESIDE, 0xB648945B},
    {glb_clssdicDuplexPrintTbl, CLSS_DICNUM_DUPLEXPRINT, 0x6CE30406},
    {glb_clssdicColormodeTbl, CLSS_DICNUM_COLORMODE, 0x47540047},
    {glb_clssdicBorderlessTbl, CLSS_DICNUM_BORDERLESS, 0xA8565EEF},
    {glb_clssdicDataFormatTbl, CLSS_DICNUM_DATAFORMAT, 0x6309B162},
    {glb_clssdicJobProgressTbl, CLSS_DICNUM_JOBPROGRESS, 0x8D6A81C3},
    {glb_clssdicStatusDetailTbl, CLSS_DICNUM_STATUSDETAIL, 0xDA088509},
    {glb_clssdicStateTbl, CLSS_DICNUM_STATE, 0x27504DA2},
    {glb_clssdicStatusTbl, CLSS_DICNUM_STATUS, 0x62647F3D},
    {glb_clssdicResponseDetailTbl, CLSS_DICNUM_RESDETAIL, 0x0377E21B},
    {glb_clssdicResponseTbl, CLSS_DICNUM_RESPONSE, 0xE53BC6B7},
    {glb_clssdicIJOperationTbl, CLSS_DICNUM_IJOPERATION, 0x707C3E90},
    {glb_clssdicOperationTbl, CLSS_DICNUM_OPERATION, 0xA60942B9},
};

struct Found {
  int index;
  int code;
  bool operator==(const Found&) const = default;
};

Found look_up(const Dictionary& dictionary, const std::string& text) {
  const ExactBlock block(text);
  std::uint16_t index = 1234;
  std::uint16_t code = 1234;
  EXPECT_EQ(
      GetVasloID(dictionary.rows, dictionary.count, block.data(), block.size(), &index, &code), 0);
  return {index, code};
}

std::string spread(const std::string& word) {
  std::string text;
  for (const char byte : word) text += byte + "  "s;
  return text + ", other";
}

constexpr Found kNone = {65535, 65535};

// Printers send and expect these very keywords; callers compare the codes.
TEST(Dictionaries, HoldTheKeywordsAndCodesOfTheProtocol) {
  for (const Dictionary& dictionary : kDictionaries) {
    std::uint32_t sum = 2166136261;
    const auto add = [&sum](std::uint32_t value) { sum = (sum ^ value) * 16777619; };
    for (std::uint16_t row = 0; row < dictionary.count; ++row) {
      const char* const keyword = dictionary.rows[row].keyword;
      for (const char byte : std::string_view(keyword == nullptr ? "" : keyword)) {
        add(static_cast<unsigned char>(byte));
      }
      add(dictionary.rows[row].code);
    }
    EXPECT_EQ(sum, dictionary.checksum) << "table " << &dictionary - kDictionaries;
  }
}

TEST(GetVasloID, FindsEveryRowWithAndWithoutBlanks) {
  for (const Dictionary& dictionary : kDictionaries) {
    for (std::uint16_t row = 0; row < dictionary.count; ++row) {
      if (dictionary.rows[row].keyword == nullptr) continue;
      const std::string keyword = dictionary.rows[row].keyword;
      const int first = keyword == "ON" ? 2 : row;
      const Found expected = {first, dictionary.rows[first].code};
      EXPECT_EQ(look_up(dictionary, keyword), expected) << keyword;
      EXPECT_EQ(look_up(dictionary, spread(keyword)), expected) << keyword;
      EXPECT_EQ(look_up(dictionary, keyword.substr(1)), kNone) << keyword;
      EXPECT_EQ(look_up(dictionary, keyword + "x"), kNone) << keyword;
      for (std::size_t i = 0; i < keyword.size(); ++i) {
        std::string other = keyword;
        other[i] = '?';
        EXPECT_EQ(look_up(dictionary, other), kNone) << other;
      }
    }
  }
}

TEST(GetVasloID, TakesTheValueOnly) {
  const struct {
    Dictionary dictionary;
    std::string text;
    Found found;
  } cases[] = {
      {{glb_clssdicOperationTbl, 27}, "GetStatus", {13, 65535}},
      {{glb_clssdicOperationTbl, 27}, "getstatus", kNone},
      {{glb_clssdicOperationTbl, 13}, "GetStatus", kNone},  // past the row count
      {{glb_clssdicPaperSizeTbl, 83}, "  iso_a4_210x297mm ", {4, 7}},
      {{glb_clssdicPaperSizeTbl, 83}, "na_ledger_11x17in", {49, 4}},
      {{glb_clssdicDuplexPrintTbl, 5}, "ON", {2, 2}},
      {{glb_clssdicServiceTypeTbl, 10}, "print", {0, 65535}},
      {{glb_clssdicResponseTbl, 3}, "OK,NG", {1, 65535}},
      {{glb_clssdicResponseTbl, 3}, "OK\0NG"s, {1, 65535}},  // a zero byte ends it as well
      {{glb_clssdicResponseTbl, 3}, "OK\0"s, {1, 65535}},
      {{glb_clssdicResponseTbl, 3}, "OK,", {1, 65535}},
      {{glb_clssdicResponseTbl, 3}, "O K", {1, 65535}},
      {{glb_clssdicResponseTbl, 3}, "\tOK", kNone},  // only blanks are dropped
      {{glb_clssdicResponseTbl, 3}, ",OK", kNone},
      {{glb_clssdicResponseTbl, 3}, " ", kNone},
      {{glb_clssdicResponseTbl, 3}, std::string(1'000'000, ' ') + "OK", {1, 65535}},
      {{glb_clssdicResponseTbl, 3}, std::string(1'000'000, 'O'), kNone},
  };
  for (const auto& [dictionary, text, found] : cases) {
    EXPECT_EQ(look_up(dictionary, text), found) << text.substr(0, 40);
  }
}

TEST(GetVasloID, FindsKeywordsOfAnyLengthInOtherDictionaries) {
  const std::string longWord(300, 'k'), edge(128, 'k');
  const ClssDicRow rows[] = {{"", 5},      {edge.c_str(), 6}, {longWord.c_str(), 7},
                             {nullptr, 8}, {"a b", 9},        {"a,b", 10},
                             {"ab", 11}};
  EXPECT_EQ(look_up({rows, 1}, ","), (Found{0, 5}));
  EXPECT_EQ(look_up({rows, 3}, spread(edge)), (Found{1, 6}));
  EXPECT_EQ(look_up({rows, 7}, "a b"), (Found{6, 11})) << "no value holds a blank";
  EXPECT_EQ(look_up({rows, 7}, "a,b"), kNone);
  for (const std::string& text : {longWord, spread(longWord)}) {
    EXPECT_EQ(look_up({rows, 3}, text), (Found{2, 7}));
    EXPECT_EQ(look_up({rows + 2, 2}, "k" + text), kNone);
    EXPECT_EQ(look_up({rows + 2, 1}, text.substr(1)), kNone);
  }
}

std::uint32_t number_of(const std::string& text) {
  const ExactBlock block(text);
  std::uint32_t value = 1234;
  EXPECT_EQ(GetValue(block.data(), block.size(), &value), 0) << text;
  return value;
}

TEST(GetValue, ReadsAsTheConversionOfAWorkingCopyDoes) {
  std::istringstream texts(
      "4 0;abc;0;-7; - 7;+12,3;2147483647;2147483648;-2147483648;-2147483649;99999999999999999999;"
      "\t\r\n5;5\t6;--5;,5;1\0002;0x10;007; ;\0005;-;+ +1"s);
  for (std::string text; std::getline(texts, text, ';');) {
    const ExactBlock block(text);
    char* copy = CopyValueText(block.data(), block.size());
    ASSERT_NE(copy, nullptr);
    const auto expected = static_cast<std::uint32_t>(
        KWVSStringTo4s(copy, block.size() + 1, nullptr, KWVS_READ_DECIMAL));
    KWVSDisposePTRX(copy);
    EXPECT_EQ(number_of(text), expected) << text;
  }
  EXPECT_EQ(number_of("4 0"), 40u);
  EXPECT_EQ(number_of("abc"), 0x80000000u);
  EXPECT_EQ(number_of("-7"), 0xFFFFFFF9u);
  EXPECT_EQ(number_of(std::string(100'000, '0') + "9 , 1"), 9u);
}

TEST(SetStringValue, FitsAtEveryCapacity) {
  for (const auto& [source, value] : {std::pair("a b c, d", "abc"s), std::pair(" ,x", ""s)}) {
    const ExactBlock text(source);
    for (int size = -1; size <= 5; ++size) {
      const bool fits = size > static_cast<int>(value.size());
      std::string out = "######", expected = out;
      EXPECT_EQ(SetStringValue(text.data(), text.size(), out.data(), size), fits ? 1 : 0) << size;
      if (fits) expected.replace(0, value.size() + 1, value + '\0');
      EXPECT_EQ(out, expected) << size;
    }
  }
}

TEST(CheckJobID, ComparesEightDigits) {
  const struct {
    const char* expected;
    std::string text;
    int status;
  } cases[] = {
      {"00000012", "00000012", 0},
      {"00000013", "00000012", 1},
      {"12", "00000012", 1},
      {"000000121", "00000012", 1},
      {nullptr, "00000012", 0},
      {nullptr, "0000 0012,x", 0},
      {"0000001A", "0000001A", -2},
      {nullptr, "123", -2},
      {nullptr, "000000123", -2},
      {nullptr,
       "0000\0"
       "0012"s,
       -2},
      {nullptr, ",00000012", -2},
  };
  for (const auto& [expected, text, status] : cases) {
    const ExactBlock block(text);
    EXPECT_EQ(CheckJobID(expected, block.data(), block.size()), status) << text;
  }
}

TEST(GetIdOrValue, ReadsByDictionaryOrAsANumber) {
  std::uint32_t value = 0;
  std::uint16_t code = 0;
  EXPECT_EQ(GetIdOrValue(glb_clssdicColormodeTbl, 5, "monochrome", 10, &value, &code), 0);
  EXPECT_EQ(value, 2u);
  EXPECT_EQ(code, 2);
  EXPECT_EQ(GetIdOrValue(glb_clssdicColormodeTbl, 5, "sepia", 5, &value, &code), 0);
  EXPECT_EQ(value, 65535u);
  EXPECT_EQ(code, 65535);
  EXPECT_EQ(GetIdOrValue(glb_clssdicColormodeTbl, 0, "sepia", 5, &value, &code), -2);
  EXPECT_EQ(GetIdOrValue(glb_clssdicColormodeTbl, 5, "sepia", 5, nullptr, &code), -2);
  EXPECT_EQ(GetIdOrValue(nullptr, 0, "70000", 5, &value, &code), 0);
  EXPECT_EQ(value, 70000u);
  EXPECT_EQ(code, 65535);
}

TEST(CopyValueText, CopiesUpToTheFirstComma) {
  EXPECT_EQ(CopyValueText("a", ~std::uint64_t{0}), nullptr);
  const ExactBlock text("  ON\t ,x"s);
  char* const copy = CopyValueText(text.data(), text.size());
  EXPECT_STREQ(copy, "ON\t");
  KWVSDisposePTRX(copy);
}

}  // namespace
