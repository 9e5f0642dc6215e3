// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "device.h"
#include "keyed.h"
#include "support.hpp"

namespace {

using pxcl_test::ExactBlock;
using std::string;

// Calls a device test on a block that holds nothing but the text.
template <typename... Selector>
int32_t ask(int32_t (*test)(const char*, int64_t, Selector...), const string& text,
            Selector... selector) {
  const ExactBlock id(text);
  return test(id.data(), static_cast<int64_t>(id.size()), selector...);
}

string id_of(const string& model) {
  return "MFG:PX;CMD:ZIRK;MDL:" + model + ";CLS:PRINTER;";
}

std::vector<string> names_of(const char* const* list) {
  std::vector<string> names;
  while (*list != nullptr) names.emplace_back(*list++);
  return names;
}

TEST(DeviceId, ProtocolAndCommandSets) {
  const struct {
    string id;
    int32_t protocol, zirk, pli;
  } cases[] = {
      {"MFG:PX;CMD:KWNP,NOLP,ZIRK;SOJ:NOLP;", 1, 2, 2},
      {"MFG:PX;CMD:NOLP,ZIRK;SOJ:CHMP;", 2, 2, 1},
      {"CMD:ZIRK,BJL;SOJ:TXT01,NOLP,CHMP;", 2, 2, 2},
      {"CMD:BJL, ZI RK ;SOJ:\tNOLP\r\n;", 2, 2, 2},  // white space is passed over
      {"CMD:ZIRKX;SOJ:NOLPX;", 2, 1, 1},
      {"CMD:XZIRK;SOJ:XNOLP;", 2, 2, 2},              // nothing delimits on the left
      {"CMD:BJL;SOJ:BJL;X:ZIRK,NOLP;", 2, 1, 1},      // in another field
      {"CMD:BJL;CMD:ZIRK;SOJ:X;SOJ:NOLP;", 2, 1, 1},  // in the second field of that name
      {"CMD:ZIRK", 1, 1, 1},                          // never closed
      {"CMD:;SOJ:;", 1, 1, 1},
      {"CMD:", 1, 1, 1},
      {"cmd:zirk;soj:nolp;", 1, 1, 1},
      {"KWN P", 1, 1, 1},
      {"", 1, 1, 1},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(ask(CLSS_GetProtocol, row.id), row.protocol) << row.id;
    EXPECT_EQ(ask(PXCL_GetProtocol, row.id), row.protocol) << row.id;
    EXPECT_EQ(ask(CLSS_HasZIRK, row.id), row.zirk) << row.id;
    EXPECT_EQ(ask(CLSS_HasPLI, row.id), row.pli) << row.id;
  }
}

TEST(DeviceId, EveryModelIsFoundAtItsPlace) {
  const struct {
    const char* const* list;
    std::size_t count;
  } lists[] = {{MINP_PRINTER_LIST, 85},          {CORVEL_PRINTER_LIST, 15},
               {KWNP_PRINTER_LIST_14AUTUMN, 29}, {supportNetworkSetting, 22},
               {noSupportWebManual, 34},         {UnnecessaryCertification, 6}};
  for (const auto& [list, count] : lists) {
    const auto names = names_of(list);
    EXPECT_EQ(names.size(), count);
    for (std::size_t i = 0; i < names.size(); ++i) {
      const string id = id_of(names[i]);
      EXPECT_EQ(searchString(id.data(), static_cast<int32_t>(id.size()), list),
                static_cast<int32_t>(i))
          << names[i];
    }
  }
}

TEST(DeviceId, CorvelVersions) {
  const int32_t versions[] = {0, 0, 1, 1, 1, 1, 2, 2, 2, 2, 2, 3, 3, 3, 3};
  const int16_t on = 1;
  const auto names = names_of(CORVEL_PRINTER_LIST);
  for (std::size_t i = 0; i < std::size(versions); ++i) {
    EXPECT_EQ(ask(CLSS_GetCorvelRequestVersionInfo, id_of(names[i]), on), versions[i]) << i;
    EXPECT_EQ(ask(CLSS_IsSupportCorvel, id_of(names[i]), on), 1) << i;
    for (const int16_t off : {int16_t{0}, int16_t{2}, int16_t{-1}}) {
      EXPECT_EQ(ask(CLSS_GetCorvelRequestVersionInfo, id_of(names[i]), off), -1) << i;
      EXPECT_EQ(ask(CLSS_IsSupportCorvel, id_of(names[i]), off), 0) << i;
    }
  }
  EXPECT_EQ(ask(CLSS_GetCorvelRequestVersionInfo, id_of("other"), on), -1);
  EXPECT_EQ(CORVEL_REQUEST_VERSION_INFO_LIST[15], 0U);
}

// Whatever keeps a device ID from being read answers "not present"; a length beyond 32 bits must
// not be cut down to one that fits.
TEST(DeviceId, UnreadableIsNotPresent) {
  const string id = "CMD:ZIRK;SOJ:NOLP;MDL:" + string(MINP_PRINTER_LIST[0]) +
                    CORVEL_PRINTER_LIST[0] + KWNP_PRINTER_LIST_14AUTUMN[0];
  const auto expect_answers = [](const char* text, int64_t length, bool present) {
    EXPECT_EQ(CLSS_GetProtocol(text, length), present ? 2 : 1) << length;
    EXPECT_EQ(CLSS_HasZIRK(text, length), present ? 2 : 1) << length;
    EXPECT_EQ(CLSS_HasPLI(text, length), present ? 2 : 1) << length;
    EXPECT_EQ(CLSS_IsSupportMinP(text, length), present ? 1 : 0) << length;
    EXPECT_EQ(CLSS_IsSupportKWNP_From14Autumn(text, length), present ? 1 : 0) << length;
    EXPECT_EQ(CLSS_IsSupportCorvel(text, length, 1), present ? 1 : 0) << length;
    EXPECT_EQ(CLSS_GetCorvelRequestVersionInfo(text, length, 1), present ? 0 : -1) << length;
  };
  const auto size = static_cast<int64_t>(id.size());
  expect_answers(id.data(), size, true);
  for (const int64_t length :
       {int64_t{0}, int64_t{-1}, INT64_MIN, int64_t{1} << 31, (int64_t{1} << 32) + size, INT64_MAX})
    expect_answers(id.data(), length, false);
  expect_answers(nullptr, size, false);
}

}  // namespace
