// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

#include <cstring>

#include "../keyed/reply.hpp"
#include "dictionaries.h"
#include "responses.h"
#include "support.hpp"

namespace {

std::string file(const char* name) {
  return pxcl_test::read_data(std::string("replies/") + name);
}

template <typename Numbers>
std::string words(const Numbers& numbers) {
  std::string text;
  for (const auto number : numbers) text += (text.empty() ? "" : ",") + std::to_string(number);
  return text + " ";
}

ClssPaperSize blank_size() {
  ClssPaperSize record;
  std::memset(&record, 0xEE, sizeof record);
  record.version = 3;
  return record;
}

std::string words(const ClssPaperSize& r) {
  return std::to_string(r.paperSize) + "@" + std::to_string(r.sizeItemTag) + " " +
         words(r.printAreaBorder) + words(r.printAreaBorderless) + words(r.printAreaDuplex) +
         words(r.marginBorder) + words(r.marginBorderless) + words(r.marginDuplex);
}

std::string size_at(const std::string& text, int32_t index) {
  ClssPaperSize record = blank_size();
  const int status =
      CLSS_ParseCapabilityResponsePrint_PaperSize(text.data(), text.size(), &index, &record);
  std::string result = std::to_string(status);
  return status == 0 ? result + ": " + words(record) : result;
}

int count_of(const std::string& text) {
  int32_t index = -1;
  const int status =
      CLSS_ParseCapabilityResponsePrint_PaperSize(text.data(), text.size(), &index, nullptr);
  return status == 0 ? index : status;
}

TEST(PaperSize, Files) {
  const std::string small = file("capability_small.xml"), other = file("capability_other_hand.xml");
  EXPECT_EQ(count_of(small), 3);  // the napkin is dropped
  EXPECT_EQ(size_at(small, 0), "0: 1@0 4900,6400 0,0 0,0 150,151,152,153 0,0,0,0 0,0,0,0 ");
  EXPECT_EQ(size_at(small, 1),
            "0: 4@0 4760,6814 5100,7156 4760,6572 120,121,122,123 0,1,2,3 360,361,362,363 ");
  EXPECT_EQ(size_at(small, 2), "0: 10@1 2840,4000 3140,4340 0,0 80,81,82,83 4,5,6,7 0,0,0,0 ");
  EXPECT_EQ(size_at(small, 3), "-2");
  // Each size reads its areas and margins under its own namespace; only the first text of an
  // element counts, and an attribute in excess hides it.
  EXPECT_EQ(count_of(other), 4);
  EXPECT_EQ(size_at(other, 0), "0: 3@2 1,2 0,0 0,0 0,0,0,0 0,0,0,0 0,0,0,0 ");
  EXPECT_EQ(size_at(other, 1), "0: 4@0 40,50 0,0 60,70 5,6,7,8 0,0,0,0 0,0,0,0 ");
  EXPECT_EQ(size_at(other, 2), "0: 4@1 0,0 0,0 0,0 0,0,0,0 0,0,0,0 0,0,0,0 ");
  EXPECT_EQ(size_at(other, 3), "0: 7@0 0,0 0,0 0,0 0,0,0,0 0,0,0,0 0,0,0,0 ");
}

TEST(PaperSize, AKeywordThatBeginsLikeTheOneBeforeIsAnother) {
  std::string text = "<zirk:papersize>iso_a4_210x297mm</zirk:papersize>";
  for (const char* key :
       {"border papersize=\"iso_a4_210x297mm", "borderless papersize=\"iso_a4_210x297mm2",
        "duplex papersize=\"iso_a4_210x297m"}) {
    text += "<zirk:printarea_" + std::string(key) + "\">1,2</zirk:printarea_" +
            std::string(key, std::strcspn(key, " ")) + ">";
  }
  EXPECT_EQ(size_at(reply(text), 0), "0: 4@0 1,2 0,0 0,0 0,0,0,0 0,0,0,0 0,0,0,0 ");
}

TEST(PaperSize, TooFewNumbersKeepWhatCameBefore) {
  const std::string text = file("capability_damaged_sizes.xml");
  EXPECT_EQ(size_at(text, 0), "0: 1@0 1,2 3,4 5,6 7,8,9,10 11,12,13,14 15,16,17,18 ");
  ClssPaperSize record = blank_size();
  int32_t index = 1;
  EXPECT_EQ(CLSS_ParseCapabilityResponsePrint_PaperSize(text.data(), text.size(), &index, &record),
            -3);
  ClssPaperSize expected = blank_size();
  expected.paperSize = 4;
  expected.sizeItemTag = 0;
  for (uint32_t i = 0; i < 2; ++i) {
    expected.printAreaBorder[i] = 1 + i;
    expected.printAreaBorderless[i] = 3 + i;
    expected.printAreaDuplex[i] = 5 + i;
  }
  for (uint32_t i = 0; i < 4; ++i) {
    expected.marginBorder[i] = 7 + i;
    expected.marginBorderless[i] = 11 + i;
  }
  EXPECT_EQ(words(record), words(expected));
  // Too many are refused before anything is stored.
  record = blank_size();
  index = 2;
  EXPECT_EQ(CLSS_ParseCapabilityResponsePrint_PaperSize(text.data(), text.size(), &index, &record),
            -2);
  EXPECT_EQ(words(record), words(blank_size()));
}

TEST(PaperSize, Arguments) {
  const std::string text = file("capability_small.xml");
  const auto parse = [&](int32_t index, uint16_t version) {
    ClssPaperSize record = blank_size();
    record.version = version;
    return CLSS_ParseCapabilityResponsePrint_PaperSize(text.data(), text.size(), &index, &record);
  };
  EXPECT_EQ(parse(0, 2), -8);
  EXPECT_EQ(parse(-1, 2), 0);
  EXPECT_EQ(parse(-2, 3), -2);
  EXPECT_EQ(parse(65536, 3), -2);
  EXPECT_EQ(count_of(reply("<zirk:papersize>napkin, ,</zirk:papersize>")), -7);
  EXPECT_EQ(count_of(reply("<zirk:papersize/>")), -7);
  EXPECT_EQ(count_of(reply("", "NG")), -6);
  EXPECT_EQ(count_of(reply("", "OK", "GetStatusResponse")), -5);
}

std::string type_at(const std::string& text, int32_t index) {
  ClssMediaType r = {};
  r.version = 3;
  const int status =
      CLSS_ParseCapabilityResponsePrint_MediaType(text.data(), text.size(), &index, &r);
  if (status != 0) return "status " + std::to_string(status);
  std::string result = std::to_string(r.paperType) + "@" + std::to_string(r.nameSpace) + " off" +
                       std::to_string(r.borderlessOff) + " on" + std::to_string(r.borderlessOn);
  for (const auto* modes : {&r.colorModes, &r.duplexModes}) {
    result += modes == &r.colorModes ? " color" : " duplex";
    int used = 0;
    for (const uint16_t mode : *modes) used += mode != 65535;
    for (int i = 0; i < used; ++i) result += " " + std::to_string((*modes)[i]);
  }
  return result;
}

TEST(MediaType, Files) {
  const std::string small = file("capability_small.xml"), other = file("capability_other_hand.xml");
  EXPECT_EQ(type_at(small, 0), "1@0 off2 on1 color 1 2 duplex 1 3 4");
  EXPECT_EQ(type_at(small, 1), "12@1 off2 on2 color 1 3 duplex");
  EXPECT_EQ(type_at(small, 2), "status -2");
  EXPECT_EQ(type_at(other, 0), "1@0 off1 on1 color 1 4 duplex");
  EXPECT_EQ(type_at(other, 1), "1@1 off1 on1 color 2 duplex 2");
  EXPECT_EQ(type_at(file("capability_damaged_sizes.xml"), -1), "status -7");
}

TEST(MediaType, StapleSidesSpreadOn) {
  const auto type = [](const std::string& sides, const char* duplex) {
    const std::string words =
        type_at(reply("<zirk:papertype>auto</zirk:papertype>" + sides +
                      "<zirk:duplexprint papertype=\"auto\">" + duplex + "</zirk:duplexprint>"),
                0);
    return words.substr(words.find("duplex") == words.npos ? 0 : words.find("duplex"));
  };
  const std::string side = "<zirk:stapleside>shortside</zirk:stapleside>";
  EXPECT_EQ(type("", "OFF,ON"), "duplex 1 2");
  EXPECT_EQ(type(side, "ON,OFF"), "duplex 1 4");
  EXPECT_EQ(type(side + "<vrx:stapleside>longside,shortside</vrx:stapleside>", "ON,ON"),
            "duplex 3 4 4 3 4 4");
  EXPECT_EQ(type("", "ON,ON,ON,ON,ON"), "status -2");
  std::string sides = "<zirk:stapleside>", most = "duplex";
  for (int i = 0; i < 30; ++i) sides += "longside,";
  for (int i = 0; i < 21; ++i) most += " 3";
  EXPECT_EQ(type(sides + "</zirk:stapleside>", "ON"), most) << "what is too much is dropped";
}

TEST(Pixels, MostAndLeast) {
  const auto pixels = [](const std::string& elements) {
    const std::string text = reply(elements);
    uint16_t v[4] = {9, 9, 9, 9};
    const int status = CLSS_ParseCapabilityResponsePrint_Pixels(text.data(), text.size(), &v[0],
                                                                &v[1], &v[2], &v[3]);
    return std::to_string(status) + ": " + words(v);
  };
  const auto max = [](const char* text) {
    return "<zirk:max_pixels>" + std::string(text) + "</zirk:max_pixels>";
  };
  const auto min = [](const char* text) {
    return "<vrx:min_pixels>" + std::string(text) + "</vrx:min_pixels>";
  };
  EXPECT_EQ(pixels(max("5100,7020") + min("128, ,256")), "0: 128,256,5100,7020 ");
  EXPECT_EQ(pixels(max("70000,1")), "0: 0,0,4464,1 ");
  EXPECT_EQ(pixels(max("1") + "<tolm:max_pixels>2</tolm:max_pixels>"), "0: 0,0,1,2 ");
  EXPECT_EQ(pixels(min("1,2")), "-7: 9,9,0,0 ");
  EXPECT_EQ(pixels(max("1,2,3")), "-3: 9,9,0,0 ");
  EXPECT_EQ(pixels(max("1,2") + min("3")), "-3: 0,0,1,2 ");
  EXPECT_EQ(pixels("<a>"), "-2: 9,9,9,9 ");
}

TEST(MediaMap, IsReportedOnlyWithBothSides) {
  const auto map = [](const std::string& text, uint16_t panel) {
    ClssMediaMap r = {0, 9, 9, 9, 9};
    const int status =
        CLSS_ParseCapabilityResponsePrint_MediaMap(text.data(), text.size(), panel, &r);
    return std::to_string(status) + ": " +
           words(std::vector{r.frontType, r.backType, r.frontTag, r.backTag});
  };
  const std::string text = file("capability_small.xml");
  EXPECT_EQ(map(text, 1), "0: 12,1,1,1 ");
  EXPECT_EQ(map(text, 2), "0: 65535,65535,1,1 ");
  EXPECT_EQ(map(text, 3), "0: 65535,65535,1,1 ");
  EXPECT_EQ(map(text, 0), "0: 65535,65535,1,1 ");
  EXPECT_EQ(map(text, 4), "-2: 9,9,9,9 ");
  EXPECT_EQ(map("<?xml ?>?", 1), "-2: 65535,65535,65535,9 ");
  ClssMediaMap record = {1, 9, 9, 9, 9};
  EXPECT_EQ(CLSS_ParseCapabilityResponsePrint_MediaMap(text.data(), text.size(), 1, &record), -8);
}

TEST(Support, Flags) {
  const auto element = [](const char* name, const char* text) {
    return reply("<zirk:" + std::string(name) + ">" + text + "</zirk:" + name + ">");
  };
  const std::string small = file("capability_small.xml"), other = file("capability_other_hand.xml"),
                    none = reply(""), maintenance = file("capability_maintenance.xml"),
                    bad = "<?xml ?><cmd>x";
  const auto flag = [](auto parse, const std::string& text, auto... value) {
    return parse(text.data(), text.size(), static_cast<uint16_t>(value)...);
  };
#define PRINT(name) CLSS_ParseCapabilityResponsePrint_##name
#define MAINTENANCE(name) CLSS_ParseCapabilityResponseMaintenance_##name
  EXPECT_EQ(flag(PRINT(FormatType), small, 8), 2);
  EXPECT_EQ(flag(PRINT(FormatType), small, 2), 1);
  EXPECT_EQ(flag(PRINT(FormatType), none, 8), 1);
  EXPECT_EQ(flag(PRINT(FormatType), small, 9), -2);
  EXPECT_EQ(flag(PRINT(FormatType), bad, 8), -2);
  EXPECT_EQ(flag(PRINT(FormatType), reply("", "NG"), 8), -6);
  EXPECT_EQ(flag(PRINT(NextPage), small, 2), 2);
  EXPECT_EQ(flag(PRINT(NextPage), element("nextpage", "OFF"), 2), 0);
  EXPECT_EQ(flag(PRINT(PrintPreparation), small, 2), 2);
  EXPECT_EQ(flag(PRINT(PrintPreparation), small, 1), 0);
  EXPECT_EQ(flag(PRINT(MismatchMode), small, 2), 2);
  EXPECT_EQ(flag(PRINT(MismatchMode), small, 1), 0);
  EXPECT_EQ(flag(PRINT(DVD_DeviceSideGuide), small, 1), 1);
  EXPECT_EQ(flag(PRINT(DVD_DeviceSideGuide), small, 2), 0);
  EXPECT_EQ(flag(PRINT(JobQueue), small), 2);
  EXPECT_EQ(flag(PRINT(JobQueue), none), 1);
  EXPECT_EQ(flag(PRINT(DateTime), small), 2);
  EXPECT_EQ(flag(PRINT(DateTime), maintenance), 1);
  EXPECT_EQ(flag(MAINTENANCE(DateTime), maintenance), 2);
  EXPECT_EQ(flag(MAINTENANCE(DateTime), small), 1);
  EXPECT_EQ(flag(MAINTENANCE(DateTime), bad), -2);
  EXPECT_EQ(flag(PRINT(IsDiscLabelPrint), small), 2);
  EXPECT_EQ(flag(PRINT(IsDiscLabelPrint), other), 1);
  EXPECT_EQ(flag(PRINT(IsDiscLabelPrint), bad), -2);
}

TEST(Support, HostEnvironmentThatOthersHaveIsOther) {
  const std::string small = file("capability_small.xml"), other = file("capability_other_hand.xml"),
                    maintenance = file("capability_maintenance.xml");
  const auto print = [](const std::string& text) {
    return PXCL_ParseCapabilityResponsePrint_HostEnv(text.data(),
                                                     static_cast<uint32_t>(text.size()));
  };
  EXPECT_EQ(print(small), 3);
  EXPECT_EQ(print(other), 7);
  EXPECT_EQ(print(maintenance), 0);
  EXPECT_EQ(print(small.substr(9)), 0);
  EXPECT_EQ(PXCL_ParseCapabilityResponseMaintenance_HostEnv(
                maintenance.data(), static_cast<uint32_t>(maintenance.size())),
            3);
  EXPECT_EQ(CLSS_ParseCapabilityResponsePrint_HostEnvironment(small.data(), small.size(), 8), 0);
}

TEST(Support, WrappersTakeNoNegativeLength) {
  const std::string small = file("capability_small.xml");
  const int32_t size = static_cast<int32_t>(small.size());
  EXPECT_EQ(PXCL_ParseCapabilityResponsePrint_DateTime(small.data(), size), 2);
  EXPECT_EQ(PXCL_ParseCapabilityResponsePrint_DateTime(small.data(), -1), -2);
  EXPECT_EQ(PXCL_ParseCapabilityResponseMaintenance_DateTime(small.data(), size), 1);
  EXPECT_EQ(PXCL_ParseCapabilityResponseMaintenance_DateTime(small.data(), -size), -2);
  EXPECT_EQ(
      PXCL_ParseCapabilityResponsePrint_MismatchMode(small.data(), static_cast<uint32_t>(size), 2),
      2);
}

TEST(SupportedTables, AreWhatTheirCountsSay) {
  EXPECT_EQ(CLSS_GetParsePossibleSizeNum(), CLSS_NUM_PAPERSIZE);
  EXPECT_EQ(CLSS_GetParsePossibleMediaNum(), CLSS_NUM_PAPERTYPE);
  std::string sizes, types, allSizes, knownTypes;
  for (int i = 0; i < 81; ++i) sizes += std::to_string(CLSS_GetParsePossibleSize()[i]) + " ";
  for (int i = 0; i < 23; ++i) types += std::to_string(CLSS_GetParsePossibleMedia()[i]) + " ";
  for (int i = 1; i < CLSS_DICNUM_PAPERSIZE; ++i)
    allSizes += i == 30 ? "" : std::to_string(i) + " ";
  for (int i = 1; i < CLSS_DICNUM_PAPERTYPE; ++i)
    knownTypes += glb_clssdicPaperTypeTbl[i].keyword ? std::to_string(i) + " " : "";
  EXPECT_EQ(sizes, allSizes);
  EXPECT_EQ(types, knownTypes);
}

}  // namespace
