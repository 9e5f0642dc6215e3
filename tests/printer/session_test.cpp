// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Whole dialogues with each profile.

#include "dialogue.hpp"

namespace pxcl::printer {

namespace {

std::string keyword(const ClssDicRow* dictionary, std::uint16_t row) {
  return row == kUnknown ? "?" : dictionary[row].keyword;
}

class EachProfile : public testing::TestWithParam<std::string> {};

INSTANTIATE_TEST_SUITE_P(Session, EachProfile, testing::ValuesIn(profile_names()),
                         [](const auto& profile) { return profile.param; });

TEST_P(EachProfile, AnnouncesItsMediaMaps) {
  Dialogue dialogue(GetParam());
  const std::string reply = dialogue.capability();
  for (const MediaMap& map : profile_named(GetParam()).media_maps) {
    std::uint16_t row = 1;
    while (glb_clssdicPanelMedia[row].keyword != map.panel) ++row;
    ClssMediaMap read = {};
    EXPECT_EQ(CLSS_ParseCapabilityResponsePrint_MediaMap(reply.data(), reply.size(), row, &read),
              0);
    EXPECT_EQ(keyword(glb_clssdicPaperTypeTbl, read.frontType), map.front);
    EXPECT_EQ(keyword(glb_clssdicPaperTypeTbl, read.backType), map.back);
  }
}

void expect_job(Dialogue& dialogue, const char* progress, const char* state, int impressions) {
  const ClssStatus status = dialogue.status();
  EXPECT_STREQ(status.common.jobID, kJob);
  EXPECT_EQ(keyword(glb_clssdicJobProgressTbl, status.common.jobProgress), progress);
  EXPECT_EQ(keyword(glb_clssdicStateTbl, status.jobState), state);
  EXPECT_EQ(status.completeImpression, impressions);
}

TEST_P(EachProfile, PrintsTwoPages) {
  Dialogue dialogue(GetParam());
  dialogue.open_job();
  EXPECT_FALSE(dialogue.printer.is_idle());
  expect_job(dialogue, "processing", "preparing", 0);
  EXPECT_EQ(dialogue.outcome_of(page(kAnotherFollows)), "OK");
  expect_job(dialogue, "processing", "waitingrender", 0);
  const std::string raster = raster_page();
  for (const std::string& piece : {raster.substr(0, 100), raster.substr(100)}) {
    EXPECT_EQ(dialogue.outcome_of(send(piece)), "OK");
  }
  expect_job(dialogue, "processing", "printing", 0);
  EXPECT_EQ(dialogue.send_page(kLastPage), "OK");
  expect_job(dialogue, "processing", "printing", 1);
  EXPECT_EQ(dialogue.outcome_of(end()), "OK");
  EXPECT_TRUE(dialogue.printer.is_idle());
  EXPECT_EQ(keyword(glb_clssdicStatusTbl, dialogue.status().common.status), "idle");
  const auto pages = dialogue.printer.pages();
  ASSERT_EQ(pages.size(), 2U);
  for (const auto& path : pages) EXPECT_GT(std::filesystem::file_size(path), 0U) << path;
}

ClssResponseCommon head_of(const std::string& reply) {
  ClssResponseCommon head = {};
  std::uint64_t position = 0;
  EXPECT_EQ(CLSS_ParseResponseCommon(reply.data(), reply.size(), &position, &head), 0) << reply;
  return head;
}

TEST(Session, VendorOperationsAreRepeatedWhereTheProtocolHasAWordForIt) {
  Dialogue dialogue("photo");
  dialogue.open_job();
  const ClssResponseCommon shift =
      head_of(dialogue.say(built(CLSS_MakeCommand_ModeShift, kPrint, kJob, "1")));
  EXPECT_EQ(keyword(glb_clssdicIJOperationTbl, shift.ijOperation), "ModeShiftResponse");
  EXPECT_EQ(shift.ijResponse, 1);
  EXPECT_STREQ(shift.jobID, kJob);
  EXPECT_EQ(head_of(dialogue.say(page(kLastPage))).ijOperation, kUnknown);
}

// Markup in a description comes back as it went.
TEST(Session, EchoesDescriptions) {
  Dialogue dialogue("photo");
  const std::string description = "00000042 <b>&amp; </cmd> \"\xC3\xA9\"";
  dialogue.say(built(CLSS_MakeCommand_StartJob3, kPrint, std::uint16_t{3}, description.c_str(),
                     std::int16_t{0}, kJob, "0"));
  const std::string reply = dialogue.say(built(CLSS_MakeCommand_GetStatusPrint, kJob));
  EXPECT_EQ(text_at(reply, R"(cmd/zirk:contents/zirk:param_set servicetype="print"/)"
                           R"(zirk:jobinfo jobID/zirk:job_description)"),
            description);
}

TEST(Session, BothSidesUseOneSheet) {
  constexpr std::uint16_t kA4 = 4, kPlain = 1, kLongSide = 3;
  Profile profile = profile_named("office");
  profile.bins[0].sheets = 1;
  Dialogue dialogue(profile);
  dialogue.open_job(kA4, kPlain, kLongSide);
  EXPECT_EQ(dialogue.send_page(kAnotherFollows), "OK");
  EXPECT_EQ(dialogue.send_page(kAnotherFollows), "OK");
  EXPECT_EQ(keyword(glb_clssdicStatusTbl, dialogue.status().common.status), "processing");
  EXPECT_EQ(dialogue.outcome_of(page(kLastPage)), "OK");
  EXPECT_EQ(keyword(glb_clssdicStatusDetailTbl, dialogue.status().common.statusDetail),
            "MediaEmpty");
}

TEST(Session, TheSecondBinServesWhenTheFirstIsEmpty) {
  Profile profile = profile_named("photo");
  profile.bins[1] = profile.bins[0];
  profile.bins[0].sheets = 0;
  Dialogue dialogue(profile);
  dialogue.open_job();
  EXPECT_EQ(dialogue.send_page(kLastPage), "OK");
  EXPECT_EQ(dialogue.outcome_of(end()), "OK");
}

TEST(Session, APanelTypeIsTheTypeOfItsFront) {
  constexpr std::uint16_t kSmall = 9, kPhotographic = 12;
  Dialogue dialogue("office");
  dialogue.open_job(kSmall, kPhotographic);
  EXPECT_EQ(dialogue.send_page(kLastPage), "OK");
  EXPECT_EQ(dialogue.outcome_of(end()), "OK");
}

// The profile of one page's ink: then it asks for attention, then it stops.
TEST(Session, InkRunsLowAndOut) {
  Profile profile = profile_named("photo");
  profile.inks[1].level = 1;
  Dialogue dialogue(profile);
  dialogue.open_job();
  EXPECT_EQ(dialogue.send_page(kAnotherFollows), "OK");
  EXPECT_EQ(dialogue.send_page(kLastPage), "OK");
  const ClssStatus low = dialogue.status();
  EXPECT_EQ(keyword(glb_clssdicStatusTbl, low.common.status), "processing");
  EXPECT_EQ(keyword(glb_clssdicStatusDetailTbl, low.common.statusDetail), "MarkerSupplyAttention");
  EXPECT_EQ(low.inkState, 1);
  EXPECT_EQ(dialogue.outcome_of(end()), "Suspended");
  EXPECT_EQ(keyword(glb_clssdicStatusTbl, dialogue.status().common.status), "stopped");
  dialogue.printer.attend();
  EXPECT_EQ(dialogue.outcome_of(end()), "OK");
  EXPECT_EQ(dialogue.status().inkState, 2);
}

TEST(Session, MonochromeUsesBlackInkAlone) {
  constexpr std::uint16_t kMonochrome = 2;
  Profile profile = profile_named("photo");
  profile.inks[1].level = 0;
  Dialogue dialogue(profile);
  const ClssStatus now = dialogue.status();
  const ClssPrintSettings settings = {
      2, now.currentPaperSize[0], now.currentPaperType[0], 1, kMonochrome, kUnknown};
  const std::string offer = dialogue.capability();
  EXPECT_EQ(dialogue.outcome_of(start()), "OK");
  EXPECT_EQ(dialogue.outcome_of(configure(offer, settings)), "OK");
  EXPECT_EQ(dialogue.send_page(kLastPage), "OK");
  EXPECT_EQ(dialogue.outcome_of(end()), "OK");
}

// Nothing that a profile says can break a reply.
TEST(Session, MarkupInAProfileStaysText) {
  Profile profile = profile_named("photo");
  profile.inks[0].color = "<\"black\"> & ]]>";
  Dialogue dialogue(profile);
  const std::string reply = dialogue.say(built(CLSS_MakeCommand_GetStatusPrint, kJob));
  EXPECT_EQ(text_at(reply, R"(cmd/zirk:contents/zirk:param_set servicetype="print"/)"
                           R"(zirk:marker_info/zirk:ink/zirk:color)"),
            "&lt;&quot;black&quot;&gt; &amp; ]]&gt;");
  EXPECT_EQ(dialogue.status().inkState, 2);
}

TEST(Session, OtherFormatsBecomeFilesOfTheirOwn) {
  Dialogue dialogue("photo");
  dialogue.open_job();
  const std::string jpeg = "\xFF\xD8\xFF\xE0 and so on";
  const auto size = static_cast<std::uint32_t>(jpeg.size());
  EXPECT_EQ(dialogue.outcome_of(page(kAnotherFollows)), "OK");
  EXPECT_EQ(dialogue.outcome_of(built(CLSS_MakeCommand_SendDataJPEGPAGE, kJob, size) + jpeg), "OK");
  EXPECT_EQ(dialogue.outcome_of(page(kLastPage)), "OK");
  const std::string band(std::size_t{7} * 2 * 3, 'x');
  for (int i = 0; i < 2; ++i) {
    const std::string raw =
        built(CLSS_MakeCommand_SendDataRAW, kJob, std::uint16_t{7}, std::uint16_t{2});
    EXPECT_EQ(dialogue.outcome_of(raw + band), "OK");
  }
  EXPECT_EQ(dialogue.outcome_of(end()), "OK");
  const auto pages = dialogue.printer.pages();
  ASSERT_EQ(pages.size(), 2U);
  EXPECT_EQ(pages[0].extension(), ".jpg");
  EXPECT_EQ(std::filesystem::file_size(pages[0]), jpeg.size());
  EXPECT_EQ(pages[1].extension(), ".ppm");
  EXPECT_EQ(std::filesystem::file_size(pages[1]),
            std::string("P6\n7 4\n255\n").size() + 2 * band.size());
}

TEST(Session, SetsTheClockAndTheAgreement) {
  Dialogue dialogue("photo");
  constexpr std::uint16_t kAgree = 3;
  EXPECT_EQ(dialogue.outcome_of(start(kJob, kMaintenance)), "OK");
  EXPECT_EQ(dialogue.outcome_of(
                built(CLSS_MakeCommand_SetJobConfiguration_Maintenance, kJob, "20260704123000")),
            "OK");
  EXPECT_EQ(dialogue.outcome_of(end(kJob, kMaintenance)), "OK");
  EXPECT_EQ(dialogue.outcome_of(start(kJob, kDevice)), "OK");
  EXPECT_EQ(dialogue.outcome_of(built(CLSS_MakeCommand_SetConfigurationDevice,
                                      ClssDeviceSettings{1, kAgree}, kJob)),
            "OK");
  const std::string reply = dialogue.say(built_for(CLSS_MakeCommand_GetConfiguration, kDevice));
  const std::string set = R"(cmd/zirk:contents/zirk:param_set servicetype="device"/)";
  EXPECT_EQ(text_at(reply, set + "zirk:datetime"), "20260704123000");
  EXPECT_EQ(text_at(reply, set + "vrx:selfPLIagreement"), "agree");
}

}  // namespace

}  // namespace pxcl::printer
