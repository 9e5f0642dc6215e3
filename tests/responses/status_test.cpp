// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

#include <cstring>

#include "../keyed/reply.hpp"
#include "responses.h"
#include "support.hpp"

namespace {

std::string file(const char* name) {
  return pxcl_test::read_data(std::string("replies/") + name);
}

std::string number(uint16_t value) {
  return value == 65535 ? "-" : std::to_string(value);
}

// A record in words; fields that were not written since fill() read "?".
constexpr uint16_t kUntouched = 0x5A5A;
ClssStatus fill() {
  ClssStatus record;
  std::memset(&record, 0x5A, sizeof record);
  record.common.jobID[8] = record.common.supportCode[10] = '\0';
  return record;
}
std::string field(uint16_t value) {
  return value == kUntouched ? "?" : number(value);
}

std::string words(const ClssStatus& record) {
  const ClssStatusCommon& common = record.common;
  std::string text = field(common.status) + " " + field(common.statusDetail) +
                     " job=" + common.jobID + "/" + field(common.jobProgress) +
                     " code=" + common.supportCode + " paper=";
  for (int i = 0; i < 8; ++i) {
    if (record.currentPaperType[i] == 65535 || record.currentPaperType[i] == kUntouched) break;
    text += field(record.currentPaperType[i]) + (record.panelMedia[i] ? "p" : "") + "/" +
            field(record.currentPaperSize[i]) + " ";
  }
  return text + "ink=" + field(record.inkState) +
         " done=" + std::to_string(record.completeImpression) + " state=" + field(record.jobState);
}

std::string print_status(const std::string& text, const char* jobID = nullptr) {
  ClssStatus record = fill();
  const int status = CLSS_ParseStatusResponsePrint2(text.data(), text.size(), jobID, &record);
  EXPECT_EQ(record.leading, kUntouched);
  return std::to_string(status) + ": " + words(record);
}

TEST(Status, Files) {
  const std::string papers = "paper=1/4 2p/16 12/10 27/1 5/3 6/7 29/49 ";
  struct {
    const char* name;
    const char* jobID;
    std::string expected;
  } const rows[] = {
      {"status_idle.xml", nullptr, "0: 1 - job=/- code= paper=ink=- done=-1 state=-"},
      {"status_busy.xml", nullptr,
       "0: 2 5 job=00000012/4 code=1681 " + papers + "ink=1 done=-1 state=-"},
      {"status_busy.xml", "00000034",
       "0: 2 5 job=00000034/1 code=1681 " + papers + "ink=1 done=12 state=4"},
      {"status_busy.xml", "0000003",
       "0: 2 5 job=00000034/1 code=1681 " + papers + "ink=1 done=12 state=4"},
      {"status_busy.xml", "00000012",
       "1: 2 5 job=00000012/4 code=1681 " + papers + "ink=1 done=-1 state=-"},
      {"status_other_hand.xml", "00000078",
       "0: 1 - job=00000078/- code=1681 paper=12/10 ink=1 done=12 state=-"},
      {"status_uneven_details.xml", "1", "-3: 3 - job=/- code= paper=1/4 ink=- done=-1 state=-"},
      {"startjob_ok.xml", nullptr,
       "-5: ? ? job=ZZZZZZZZ/? code=ZZZZZZZZZZ paper=ink=1 done=-1 state=-"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(print_status(file(row.name), row.jobID), row.expected) << row.name;
}

std::string status_reply(const std::string& elements) {
  return reply("<zirk:status>idle</zirk:status>" + elements, "OK", "GetStatusResponse");
}

TEST(Status, SupportCode4103IsACustomMismatch) {
  EXPECT_EQ(print_status(file("status_mismatch.xml")),
            "0: 3 7 job=/- code=4103 paper=1/4 12/10 ink=2 done=-1 state=-");
  for (const char* code : {"4103 ,1", "41 03"}) {
    const std::string element = "<zirk:current_support_code>" + std::string(code);
    EXPECT_EQ(print_status(status_reply(element + "</zirk:current_support_code>")).substr(0, 6),
              "0: 1 7");
  }
  EXPECT_EQ(
      print_status(status_reply("<zirk:current_support_code>41030</zirk:current_support_code>"))
          .substr(0, 6),
      "0: 1 -");
}

TEST(Status, TextsThatAreTooLongKeepWhatCameBefore) {
  EXPECT_EQ(print_status(status_reply(
                "<zirk:jobstatus><zirk:jobID>123456789</zirk:jobID></zirk:jobstatus>")),
            "-2: 1 - job=ZZZZZZZZ/? code=ZZZZZZZZZZ paper=ink=1 done=-1 state=-");
  EXPECT_EQ(print_status(
                status_reply("<zirk:current_support_code>12345678901</zirk:current_support_code>")),
            "-2: 1 - job=/- code=ZZZZZZZZZZ paper=ink=1 done=-1 state=-");
}

std::string bin(int number, const char* type, const char* size) {
  const std::string attribute = " physicalinputbin=\"inputbin_p" + std::to_string(number) + "\"";
  const auto element = [&](const std::string& name, const char* text) {
    return text ? "<" + name + attribute + ">" + text + "</" + name + ">" : "";
  };
  return element("zirk:currentpapertype", type) + element("zirk:currentpapersize", size);
}

TEST(Status, KnownBinsArePackedAndTheFirstAbsentOneEndsThem) {
  const char* a4 = "iso_a4_210x297mm";
  struct {
    std::string bins, expected;
  } const rows[] = {
      {bin(1, "stationery", a4) + bin(3, "auto", a4), "1/4 "},
      {bin(1, "stationery", a4) + bin(2, nullptr, a4) + bin(3, "auto", a4), "1/4 27/4 "},
      {bin(1, "auto", nullptr) + bin(2, "auto", "") + bin(3, "", "") + bin(4, "stationery", a4),
       "1/4 "},
      {bin(1, "napkin", a4) + bin(2, "auto", "napkin") + bin(3, "auto", a4), "27/4 "},
      {bin(1, "custom-media-type-vaslo-41", "iso_a5_148x210mm") + bin(2, "auto", a4), "3p/3 27/4 "},
      {bin(2, "auto", a4), ""},
  };
  for (const auto& row : rows) {
    const std::string text = print_status(status_reply(row.bins));
    const std::size_t at = text.find("paper=") + 6;
    EXPECT_EQ(text.substr(at, text.find("ink=") - at), row.expected) << row.bins;
  }
  // A half-known last bin is not left in its slot.
  ClssStatus record = fill();
  std::string bins;
  for (int i = 1; i <= 6; ++i) bins += bin(i, "auto", a4);
  const std::string text = status_reply(bins + bin(7, "auto", "napkin"));
  EXPECT_EQ(CLSS_ParseStatusResponsePrint(text.data(), text.size(), &record), 0);
  EXPECT_EQ(record.currentPaperType[5], 27);
  EXPECT_EQ(record.currentPaperType[6], 65535);
  EXPECT_EQ(record.currentPaperSize[6], 65535);
  EXPECT_EQ(record.panelMedia[6], 0);
  EXPECT_EQ(record.currentPaperType[7], kUntouched);
}

TEST(Status, InkWalkEndsAtTheFirstThatIsNotAc) {
  struct {
    const char* inks;
    const char* state;
  } const rows[] = {{"AC|AC", "2"}, {"AC|DC", "1"},    {"CE|AC", "1"}, {"AC||AC", "2"}, {"|", "2"},
                    {"AC|ac", "1"}, {" A C |AC", "2"}, {"AC,DC", "2"}, {"||UD", "1"}};
  for (const auto& row : rows) {
    std::string elements;
    std::string inks = row.inks;
    for (std::size_t bar; !inks.empty() || elements.empty(); inks.erase(0, bar + 1)) {
      bar = std::min(inks.find('|'), inks.size());
      elements += "<zirk:ink><vrx:tca>" + inks.substr(0, bar) + "</vrx:tca></zirk:ink>";
      if (bar == inks.size()) break;
    }
    const std::string text =
        print_status(status_reply("<zirk:marker_info>" + elements + "</zirk:marker_info>"));
    EXPECT_NE(text.find(std::string("ink=") + row.state), text.npos) << row.inks << " " << text;
  }
}

TEST(Status, DetailListsAreComparedByTheirLengths) {
  const auto details = [](const char* items) {
    return print_status(status_reply(std::string("<zirk:status_detail_list>") + items +
                                     "</zirk:status_detail_list>"))[0];
  };
  const std::string code = "<zirk:error_code>1</zirk:error_code>", none = "<zirk:error_code/>";
  const auto item = [](const std::string& content) {
    return "<zirk:item id=\"1\">" + content + "</zirk:item>";
  };
  EXPECT_EQ(details((item(code) + item(none)).c_str()), '0');
  EXPECT_EQ(details((item("") + item("")).c_str()), '0');
  EXPECT_EQ(details((item(code) + item("")).c_str()), '-');
  EXPECT_EQ(details(item(code + code).c_str()), '-');
}

TEST(Status, CommonBlockOfAnyServiceByTheCallersKeys) {
  const std::string text = reply("<zirk:status>busying</zirk:status><zirk:code>4103</zirk:code>",
                                 "OK", "GetStatusResponse", "device");
  const std::string block = "cmd/zirk:contents/zirk:param_set servicetype=\"device\"/zirk:";
  const std::string paths[] = {block + "status", block + "detail", block + "job",
                               block + "progress", block + "code"};
  ClssKeyValue keys[5];
  for (int i = 0; i < 5; ++i) keys[i] = {paths[i].data(), paths[i].size(), nullptr, 0};
  ClssStatus record = fill();
  const auto parse = [&](const ClssKeyValue* list, uint32_t count, const std::string& document) {
    return parseCommonStatusResponse(document.data(), document.size(), list, count, &record.common);
  };
  EXPECT_EQ(parse(keys, 5, text), 0);
  EXPECT_EQ(words(record).substr(0, 17), "5 7 job=/- code=4");
  EXPECT_EQ(parse(keys, 4, text), -2);
  keys[4].valueLength = 1;
  EXPECT_EQ(parse(keys, 5, text), -4);
  EXPECT_EQ(parse(keys, 5, file("startjob_ok.xml")), -5);
  EXPECT_EQ(parse(keys, 5, "<?xml ?><cmd></cmd>"), -9);
}

TEST(Job, MaintenanceBlockAlone) {
  const std::string text = file("status_maintenance.xml");
  const auto parse = [&](const char* jobID) {
    ClssStatus record = fill();
    const int status =
        CLSS_ParseStatusResponseMaintenance(text.data(), text.size(), jobID, &record);
    return std::to_string(status) + ": " + words(record);
  };
  const std::string rest = " code=ZZZZZZZZZZ paper=ink=? ";
  EXPECT_EQ(parse("00000056"), "0: ? ? job=00000056/2" + rest + "done=-1 state=-");
  EXPECT_EQ(parse(""), "0: ? ? job=00000056/2" + rest + "done=-1 state=-");
  EXPECT_EQ(parse("000000561"), "1: ? ? job=ZZZZZZZZ/?" + rest + "done=1515870810 state=?");
  EXPECT_EQ(parse(nullptr), "-2: ? ? job=ZZZZZZZZ/?" + rest + "done=1515870810 state=?");
}

TEST(Job, IdentifiersOfOtherLengths) {
  for (const auto& [attribute, jobID] :
       {std::pair("123", "123"), {"123456789", "12345678"}, {"", ""}}) {
    const std::string text =
        status_reply("<zirk:jobinfo jobID=\"" + std::string(attribute) +
                     "\"><zirk:job_description>x</zirk:job_description></zirk:jobinfo>");
    ClssStatus record = {};
    EXPECT_EQ(CLSS_ParseStatusResponsePrint2(text.data(), text.size(), "x", &record), 0);
    EXPECT_STREQ(record.common.jobID, jobID);
  }
}

TEST(Wrappers, StatusOfPrintAndMaintenance) {
  const std::string busy = file("status_busy.xml"), other = file("status_maintenance.xml");
  uint32_t status = 9, detail = 9;
  const auto cleared = [&](auto wrapper, const std::string& text, const char* jobID) {
    char code[11] = {}, id[9] = {};
    const int result =
        wrapper(text.data(), static_cast<int32_t>(text.size()), jobID, &status, &detail, code, id);
    return std::to_string(result) + ": " + std::to_string(status) + " " + std::to_string(detail) +
           " " + code + " " + id;
  };
  EXPECT_EQ(cleared(PXCL_GetStatus2, busy, "00000034"), "0: 2 5 1681 00000034");
  EXPECT_EQ(cleared(PXCL_GetStatus2, busy, "99"), "10: 2 5 1681 00000012");
  EXPECT_EQ(cleared(PXCL_GetStatus2, busy, nullptr), "0: 2 5 1681 00000012");
  EXPECT_EQ(cleared(PXCL_GetStatus2, other, "x"), "10: 65535 65535  ");
  EXPECT_EQ(cleared(PXCL_GetStatus_Maintenance, other, "00000056"), "0: 65535 65535  00000056");
  status = detail = 9;
  EXPECT_EQ(cleared(PXCL_GetStatus_Maintenance, other, "99"), "1: 65535 65535  ");
  status = detail = 9;
  EXPECT_EQ(cleared(PXCL_GetStatus2, file("startjob_ok.xml"), "99"), "-5: 9 9  ");

  char code[12] = "xxxxxxxxxxx";
  EXPECT_EQ(PXCL_GetStatus(busy.data(), static_cast<int32_t>(busy.size()), &status, &detail, code),
            0);
  EXPECT_EQ(std::string(code, 12), std::string("1681\0\0\0\0\0\0\0\0", 12));
  EXPECT_EQ(PXCL_GetStatus(busy.data(), -1, &status, &detail, code), -2);
  EXPECT_EQ(PXCL_GetStatus2(busy.data(), -1, nullptr, &status, &detail, code, code), -2);
  EXPECT_EQ(PXCL_GetStatus_Maintenance(busy.data(), -1, "", &status, &detail, code, code), -2);
}

std::string job_list(const std::string& text, int32_t count) {
  char slots[6][9];
  for (auto& slot : slots) std::strcpy(slot, "~");
  const int status = CLSS_ParseJobIDListResponse(text.data(), text.size(), slots, &count);
  std::string words = std::to_string(status) + ": " + std::to_string(count);
  for (const auto& slot : slots) words += std::string(" ") + slot;
  return words;
}

TEST(JobList, TheBoundIsOnThePositionNotOnTheSlotsFilled) {
  const std::string text = file("joblist.xml");
  EXPECT_EQ(job_list(text, 6), "0: 4 00000011 00000022 00000033 00000044  ");
  EXPECT_EQ(job_list(text, 3), "0: 2 00000011 00000022  ~ ~ ~");
  EXPECT_EQ(job_list(text, 1), "0: 1 00000011 ~ ~ ~ ~ ~");
  EXPECT_EQ(job_list(text, 0), "0: 5 ~ ~ ~ ~ ~ ~");
  EXPECT_EQ(job_list(text, -4), "0: 5 ~ ~ ~ ~ ~ ~");
  EXPECT_EQ(job_list(file("status_idle.xml"), 2), "0: 0   ~ ~ ~ ~");
  EXPECT_EQ(job_list("<?xml ?>", 2), "0: 0   ~ ~ ~ ~");
  EXPECT_EQ(job_list("", 2), "-2: 2 ~ ~ ~ ~ ~ ~");
  int32_t count = 9;
  EXPECT_EQ(CLSS_ParseJobIDListResponse(text.data(), text.size(), nullptr, &count), 0);
  EXPECT_EQ(count, 5);
}

}  // namespace
