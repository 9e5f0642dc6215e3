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

TEST(OperationPair, CommandsAndResponses) {
  struct {
    int operation, response, partner;
  } const rows[] = {{13, 14, 14}, {14, -2, 13}, {25, 26, 26}, {26, -2, 25},   {19, 20, 20},
                    {0, 0, 0},    {15, 0, 0},   {27, -2, -2}, {65535, -2, -2}};
  for (const auto& row : rows) {
    const uint16_t operation = static_cast<uint16_t>(row.operation);
    EXPECT_EQ(CLSS_GetCommandOperationPair(operation), row.response) << row.operation;
    EXPECT_EQ(CLSS_GetOperationPair(operation), row.partner) << row.operation;
  }
}

TEST(OperationPair, ResponsesAreTheKeywordsThatEndInResponse) {
  const auto agrees = [](const ClssDicRow& row, const ClssOperationInfo& info) {
    return (row.keyword != nullptr && std::string(row.keyword).ends_with("Response")) ==
           (info.isResponse == 1);
  };
  for (int i = 0; i < CLSS_DICNUM_OPERATION; ++i)
    EXPECT_TRUE(agrees(glb_clssdicOperationTbl[i], glb_OperationInfoTbl[i])) << i;
  for (int i = 0; i < CLSS_DICNUM_IJOPERATION; ++i)
    EXPECT_TRUE(agrees(glb_clssdicIJOperationTbl[i], glb_IJOperationInfoTbl[i])) << i;
}

// Decodes a head: its status, then service, operation, response, detail, vendor pair and job; "-"
// is 65535.
std::string head_of(const std::string& text) {
  ClssResponseCommon record;
  std::memset(&record, 0x5A, sizeof record);
  record.reserved = 0;
  uint64_t position = 77;
  const int status = CLSS_ParseResponseCommon(text.data(), text.size(), &position, &record);
  EXPECT_EQ(position, status == 0 ? text.rfind('>') + 1 : 0);
  std::string result = std::to_string(status) + ":";
  for (const uint16_t value : {record.serviceType, record.operation, record.response,
                               record.responseDetail, record.ijOperation, record.ijResponse}) {
    result += value == 65535 ? " -" : " " + std::to_string(value);
  }
  return result + " " + record.jobID;
}

TEST(Head, Decodes) {
  const auto of = [](const char* elements, const char* response = "OK",
                     const char* operation = "StartJobResponse", const char* service = "print") {
    return reply(elements, response, operation, service);
  };
  const std::string mode = "<vrx:ijoperation>ModeShiftResponse</vrx:ijoperation>";
  struct {
    std::string text, head;
  } const rows[] = {
      {file("startjob_ok.xml"), "0: 0 8 1 - - - 00000012"},
      {file("ng_detail.xml"), "0: 0 8 2 1 - - "},
      {file("ng_no_detail.xml"), "-13: 3 26 2 - - - "},
      {file("ng_empty_detail.xml"), "0: 1 10 2 - - - 00000034"},
      {file("modeshift.xml"), "0: 0 22 1 - 2 2 12"},
      {file("status_other_hand.xml"), "0: 0 14 1 - - - "},
      {file("capability_maintenance.xml"), "0: 3 2 1 - - - "},
      {of("", "OK", "StartJobResponse", "scan"), "0: 2 8 1 - - - "},
      {of("", "OK", "StartJob"), "-2: - - - - - - "},
      {of("", "OK", "startjobresponse"), "-5: - - - - - - "},
      {of("", "OK", ""), "-9: - - - - - - "},
      {of("", "OK", "StartJobResponse", "fax"), "-2: - 8 - - - - "},
      {of("", ""), "-10: 0 8 - - - - "},
      {of("", "Ok"), "-15: 0 8 - - - - "},
      {of("<zirk:response_detail>Parameter</zirk:response_detail>", "NG"), "-16: 0 8 2 - - - "},
      {of("<zirk:jobID>123456789</zirk:jobID>"), "-2: 0 8 1 - - - "},
      {of("<zirk:jobID>1 2 3 4 5 6 7 8,9</zirk:jobID>"), "0: 0 8 1 - - - 12345678"},
      {of("<zirk:jobID/><zirk:jobstatus><zirk:jobID>7</zirk:jobID></zirk:jobstatus>"),
       "0: 0 8 1 - - - 7"},
      {of(mode.c_str()), "-10: 0 8 1 - 2 - "},
      {of((mode + "<vrx:ijresponse>?</vrx:ijresponse>").c_str()), "-15: 0 8 1 - 2 - "},
      {of("<vrx:ijoperation>ModeShift</vrx:ijoperation>"), "-2: 0 8 1 - - - "},
      {of("<vrx:ijoperation>modeShift</vrx:ijoperation>"), "-5: 0 8 1 - - - "},
      {"stray text" + file("ng_detail.xml"), "-2: - - - - - - "},
      {"<?xml version=\"1.0\"?> stray <cmd></cmd>", "-5: - - - - - - "},
  };
  for (const auto& row : rows) EXPECT_EQ(head_of(row.text), row.head) << row.text;
}

TEST(Head, OfAnotherVersionIsRefused) {
  const std::string text = file("ng_detail.xml");
  ClssResponseCommon record = {};
  record.reserved = 1;
  uint64_t position = 0;
  EXPECT_EQ(CLSS_ParseResponseCommon(text.data(), text.size(), &position, &record), -8);
}

TEST(Head, InfoResponseWritesOnlyOnSuccess) {
  uint16_t operation = 1, detail = 2;
  uint16_t* reference = &detail;
  char jobID[10] = "zzzzzzzzz";
  const auto info = [&](const std::string& text, int32_t length) {
    return PXCL_GetInfoResponse(text.data(), length, &operation, jobID, &reference);
  };
  const std::string bad = file("ng_no_detail.xml"), good = file("modeshift.xml");
  EXPECT_EQ(info(bad, static_cast<int32_t>(bad.size())), -13);
  EXPECT_EQ(info(good, -1), -2);
  EXPECT_EQ(operation, 1);
  EXPECT_EQ(detail, 2);
  EXPECT_STREQ(jobID, "zzzzzzzzz");
  EXPECT_EQ(info(good, static_cast<int32_t>(good.size())), 0);
  EXPECT_EQ(operation, 22);
  EXPECT_EQ(detail, 65535);
  EXPECT_EQ(std::string(jobID, 10), std::string("12\0\0\0\0\0\0\0\0", 10));
  reference = nullptr;
  EXPECT_EQ(info(good, static_cast<int32_t>(good.size())), -2);
}

}  // namespace
