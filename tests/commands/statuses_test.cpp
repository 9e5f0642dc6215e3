// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// What the builders refuse, and in which order.

#include <gtest/gtest.h>

#include "catalogue.hpp"
#include "support.hpp"

using namespace pxcl_test;

namespace {

const std::string kFull(CLSS_JOB_DESCRIPTION_MAX, 'd');
const std::string kTooLong = kFull + 'd';

constexpr std::int32_t kOk = CLSS_COMMAND_OK;
constexpr std::int32_t kArgument = CLSS_COMMAND_BAD_ARGUMENT;
constexpr std::int32_t kNotAccepted = CLSS_COMMAND_NOT_ACCEPTED;
constexpr std::int32_t kSetting = CLSS_COMMAND_BAD_SETTING;
constexpr std::int32_t kVersion = CLSS_COMMAND_BAD_VERSION;
constexpr std::int32_t kNotFormatted = CLSS_COMMAND_NOT_FORMATTED;

TEST(Statuses, OfStartJob) {
  const struct {
    const char* why;
    std::uint16_t service;
    std::uint32_t host;
    const char* description;
    std::int16_t mode;
    const char* job;
    const char* bidi;
    std::int32_t status;
  } kCases[] = {
      {"64 bytes", 0, 3, kFull.c_str(), 2, kJob, "0", kOk},
      {"65 bytes", 0, 3, kTooLong.c_str(), 2, kJob, "0", kNotAccepted},
      {"host without description", 0, 3, nullptr, 2, kJob, "0", kNotAccepted},
      {"mode 4", 0, 0, nullptr, 4, kJob, "0", kNotAccepted},
      {"mode -1", 0, 0, nullptr, -1, kJob, "0", kNotAccepted},
      {"last service", 9, 0, nullptr, 0, kJob, "0", kOk},
      {"service 10", 10, 0, nullptr, 0, kJob, "0", kArgument},
      {"no bidi before mode", 0, 0, nullptr, 4, kJob, nullptr, kArgument},
      {"host 8", 0, 8, "d", 2, kJob, "0", kArgument},
      {"mode before host", 0, 8, "d", 4, kJob, "0", kNotAccepted},
      {"description before host", 0, 8, kTooLong.c_str(), 0, kJob, "0", kNotAccepted},
  };
  for (const auto& c : kCases) {
    const Made made = make([&](Buffer b, Size s, Length l) {
      return CLSS_MakeCommand_StartJob3(c.service, static_cast<std::uint16_t>(c.host),
                                        c.description, c.mode, c.job, c.bidi, b, s, l);
    });
    EXPECT_EQ(made.status, c.status) << c.why;
    EXPECT_TRUE(made.status == kOk || made.length == kUnwritten) << c.why;
  }
}

TEST(Statuses, OfSetConfiguration) {
  const char* const reply = kCapability.data();
  const std::uint64_t size = kCapability.size();
  const struct {
    const char* why;
    ClssConfigurationPaper paper;
    ClssConfigurationMode mode;
    const char* job;
    const char* capability;
    std::uint64_t length;
    std::int32_t status;
  } kCases[] = {
      {"no job before version", {1, 4, 1, 1}, {1, 1}, nullptr, nullptr, 0, kArgument},
      {"reply without length", {2, 4, 1, 1}, {1, 1}, kJob, reply, 0, kArgument},
      {"length without reply", {2, 4, 1, 1}, {1, 1}, kJob, nullptr, 1, kArgument},
      {"version 1 before size", {1, kAbsent, 1, 1}, {1, 1}, kJob, nullptr, 0, kVersion},
      {"no size", {2, kAbsent, 1, 1}, {1, 1}, kJob, nullptr, 0, kSetting},
      {"no type", {2, 4, kAbsent, 1}, {1, 1}, kJob, nullptr, 0, kSetting},
      {"no borderless", {2, 4, 1, kAbsent}, {1, 1}, kJob, nullptr, 0, kSetting},
      {"borderless 0", {2, 4, 1, 0}, {1, 1}, kJob, nullptr, 0, kSetting},
      {"borderless 3", {2, 4, 1, 3}, {1, 1}, kJob, nullptr, 0, kSetting},
      {"colour 0", {2, 4, 1, 1}, {0, 1}, kJob, nullptr, 0, kSetting},
      {"colour 5", {2, 4, 1, 1}, {5, 1}, kJob, nullptr, 0, kSetting},
      {"duplex 0", {2, 4, 1, 1}, {1, 0}, kJob, nullptr, 0, kSetting},
      {"duplex 5", {2, 4, 1, 1}, {1, 5}, kJob, nullptr, 0, kSetting},
      {"setting before reply", {2, 2, 1, 1}, {1, 5}, kJob, reply, size, kSetting},
      {"size not listed", {2, 2, 1, 1}, {1, 1}, kJob, reply, size, kArgument},
      {"type not listed", {2, 4, 2, 1}, {1, 1}, kJob, reply, size, kArgument},
      {"size past its table", {2, 83, 1, 1}, {1, 1}, kJob, nullptr, 0, kSetting},
      {"last size", {2, 82, 1, 1}, {1, 1}, kJob, nullptr, 0, kOk},
      {"type past its table", {2, 4, 30, 1}, {1, 1}, kJob, nullptr, 0, kSetting},
      {"not listed before past its table", {2, 83, 1, 1}, {1, 1}, kJob, reply, size, kArgument},
      {"unused row that no reply lists", {2, 0, 1, 1}, {1, 1}, kJob, reply, size, kArgument},
      {"no reply to GetCapability", {2, 4, 1, 1}, {1, 1}, kJob, "<cmd></cmd>", 11, kArgument},
      {"cut reply", {2, 4, 1, 1}, {1, 1}, kJob, reply, size - 1, kArgument},
  };
  for (const auto& c : kCases) {
    const Made made = make([&](Buffer b, Size s, Length l) {
      return CLSS_MakeCommand_SetConfigurationNS(c.paper, c.mode, c.job, c.capability, c.length, b,
                                                 s, l);
    });
    EXPECT_EQ(made.status, c.status) << c.why;
    EXPECT_TRUE(made.status == kOk || made.length == kUnwritten) << c.why;
  }
}

TEST(Statuses, OfTheOthers) {
  const struct {
    const char* why;
    std::int32_t status;
    Call call;
  } kCases[] = {
#define CALL(...) \
  []([[maybe_unused]] Buffer b, [[maybe_unused]] Size s, Length l) { return __VA_ARGS__; }
      {"capability of scan", kArgument, CALL(CLSS_MakeCommand_GetCapability(b, s, l, 2))},
      {"scan's size", kArgument, CALL(CLSS_MakeCommand_GetCapability(nullptr, 0, l, 2))},
      {"configuration 3", kArgument, CALL(CLSS_MakeCommand_GetConfiguration(b, s, l, 3))},
      {"end, service 10", kArgument, CALL(CLSS_MakeCommand_EndJob(10, kJob, b, s, l))},
      {"shift, service 10", kArgument, CALL(CLSS_MakeCommand_ModeShift(10, kJob, "1", b, s, l))},
      {"no data", kArgument, CALL(CLSS_MakeCommand_SendDataJPEGPAGE(kJob, 0, b, s, l))},
      {"raw, no width", kArgument, CALL(CLSS_MakeCommand_SendDataRAW(kJob, 0, 5, b, s, l))},
      {"raw, no height", kArgument, CALL(CLSS_MakeCommand_SendDataRAW(kJob, 5, 0, b, s, l))},
      {"page 3", kArgument, CALL(CLSS_MakeCommand_SetPageConfiguration2(kJob, 3, 0, b, s, l))},
      {"prepare 3", kArgument, CALL(CLSS_MakeCommand_SetPageConfiguration2(kJob, 0, 3, b, s, l))},
      {"guide 3", kArgument, CALL(CLSS_MakeCommand_SetJobConfiguration(kJob, "t", 3, b, s, l))},
      {"buffer before version", kArgument,
       CALL(CLSS_MakeCommand_SetConfigurationNS({1, 4, 1, 1}, {1, 1}, kJob, nullptr, 0, nullptr, s,
                                                l))},
      {"device, version 2", kVersion,
       CALL(CLSS_MakeCommand_SetConfigurationDevice({2, 0}, kJob, b, s, l))},
      {"device, agreement 0", kSetting,
       CALL(CLSS_MakeCommand_SetConfigurationDevice({1, 0}, kJob, b, s, l))},
      {"device, agreement 4", kSetting,
       CALL(CLSS_MakeCommand_SetConfigurationDevice({1, 4}, kJob, b, s, l))},
      {"device, no agreement", kSetting,
       CALL(CLSS_MakeCommand_SetConfigurationDevice({1, kAbsent}, kJob, b, s, l))},
#undef CALL
  };
  for (const auto& c : kCases) {
    const Made made = make(c.call);
    EXPECT_EQ(made.status, c.status) << c.why;
    EXPECT_EQ(made.length, kUnwritten) << c.why;
  }
}

// An empty text is no value of a key: the document stays as it is written in the library.
TEST(Statuses, OfAnEmptyKeyedTextLeaveTheTemplate) {
  std::string buffer(4096, '\x5A');
  std::uint64_t length = kUnwritten;
  EXPECT_EQ(CLSS_MakeCommand_SendDataJPEG("", 5, buffer.data(), buffer.size(), &length),
            kNotFormatted);
  EXPECT_EQ(length, kUnwritten);
  EXPECT_NE(buffer.find("<zirk:jobID>00000001</zirk:jobID>"), buffer.npos);
  EXPECT_EQ(CLSS_MakeCommand_SendDataJPEG("", 5, nullptr, 0, &length), kOk);
}

// 2048 bytes hold a parameter, all parameters together, and the document with its hole and
// terminator.
TEST(Statuses, OfMaintenanceTextsThatAreTooLong) {
  const auto build = [](std::size_t job, std::size_t time, Size size, Length length) {
    static char buffer[8192];
    return CLSS_MakeCommand_SetJobConfiguration_Maintenance(
        std::string(job, 'j').c_str(), time == 0 ? nullptr : std::string(time, 't').c_str(), buffer,
        size, length);
  };
  constexpr std::size_t kMostJob = 2048 - 1 - sizeof "<zirk:jobID>%s</zirk:jobID>" + 1;
  constexpr std::size_t kTags =
      sizeof "<zirk:jobID></zirk:jobID><zirk:datetime></zirk:datetime>" - 1;
  std::uint64_t length = kUnwritten;
  EXPECT_EQ(build(kMostJob + 1, 0, 0, &length), kNotFormatted) << "one parameter";
  EXPECT_EQ(build(900, 2048 - 900 - kTags, 0, &length), kNotFormatted) << "both together";
  EXPECT_EQ(length, kUnwritten);
  EXPECT_EQ(build(kMostJob, 0, 0, &length), kOk);
  EXPECT_EQ(build(900, 2047 - 900 - kTags, 0, &length), kOk);
  EXPECT_EQ(build(kMostJob, 0, 100, &length), CLSS_COMMAND_BUFFER_TOO_SMALL);
  length = kUnwritten;
  EXPECT_EQ(build(kMostJob, 0, 8192, &length), kNotFormatted) << "the document";
  EXPECT_EQ(length, kUnwritten);

  std::uint64_t need = 0;
  ASSERT_EQ(build(1, 0, 0, &need), kOk);
  EXPECT_EQ(build(1 + 2048 - need, 0, 2048, &length), kOk) << "the longest document";
  EXPECT_EQ(length, 2048U - 3);
  EXPECT_EQ(build(2 + 2048 - need, 0, 2049, &length), kNotFormatted);
}

// A reply that lists each size over and over, which no printer does, is still walked to its end.
TEST(Statuses, OfAReplyWithMoreSizesThanThereAreKeywords) {
  std::string reply = kCapability;
  const std::string letter = "na_letter_8.5x11in";
  const auto at = reply.find(letter);
  for (int i = 0; i < 200; ++i) reply.insert(at, "na_letter_8.5x11in,");
  fails_cleanly_at_every_allocation([&](bool failing) {
    const Made made = make([&](Buffer b, Size s, Length l) {
      return CLSS_MakeCommand_SetConfigurationNS({2, 5, 1, 1}, {kAbsent, kAbsent}, kJob,
                                                 reply.data(), reply.size(), b, s, l);
    });
    EXPECT_EQ(made.status == kOk, !failing);
    EXPECT_NE(made.document.find("<vrx:papersize>iso_a3_297x420mm") == made.document.npos,
              !failing);
  });
}

// The walk ends at the first size that cannot be decoded: sizes before it count, those behind do
// not.
TEST(Statuses, OfAReplyWithABrokenSize) {
  std::string reply = kCapability;
  reply.insert(reply.find("<zirk:papertype>"),
               R"(<tolm:printarea_border papersize="iso_a4_210x297mm">1</tolm:printarea_border>)");
  const auto status = [&](std::uint16_t size) {
    return make([&](Buffer b, Size s, Length l) {
             return CLSS_MakeCommand_SetConfigurationNS({2, size, 1, 1}, {kAbsent, kAbsent}, kJob,
                                                        reply.data(), reply.size(), b, s, l);
           })
        .status;
  };
  EXPECT_EQ(status(1), kOk) << "letter comes first";
  EXPECT_EQ(status(4), kArgument) << "A4 is broken";
  EXPECT_EQ(status(5), kArgument) << "A3 stands behind it";
}

}  // namespace
