// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Whole dialogues with each profile, and that the library reads out of the replies what the profile says.

#include <algorithm>

#include "dialogue.hpp"

namespace pxcl::printer {

namespace {

std::string keyword(const ClssDicRow* dictionary, std::uint16_t row) {
  return row == kUnknown ? "?" : dictionary[row].keyword;
}

class EachProfile : public testing::TestWithParam<std::string> {};

INSTANTIATE_TEST_SUITE_P(Session, EachProfile, testing::ValuesIn(profile_names()),
                         [](const auto& profile) { return profile.param; });

TEST_P(EachProfile, AnnouncesItsSizes) {
  Dialogue dialogue(GetParam());
  const Profile profile = profile_named(GetParam());
  const std::string reply = dialogue.capability();
  std::int32_t count = -1;
  ASSERT_EQ(
      CLSS_ParseCapabilityResponsePrint_PaperSize(reply.data(), reply.size(), &count, nullptr), 0);
  ASSERT_EQ(static_cast<std::size_t>(count), profile.sizes.size());
  for (std::int32_t i = 0; i < count; ++i) {
    ClssPaperSize read = {};
    read.version = 3;
    ASSERT_EQ(CLSS_ParseCapabilityResponsePrint_PaperSize(reply.data(), reply.size(), &i, &read),
              0);
    const PaperSize* size = find_size(profile, keyword(glb_clssdicPaperSizeTbl, read.paperSize));
    ASSERT_NE(size, nullptr);
    const PrintArea none{};
    const PrintArea border = size->border.value_or(none), duplex = size->duplex.value_or(none),
                    borderless = size->borderless.value_or(none);
    EXPECT_EQ(read.sizeItemTag, static_cast<int>(size->space));
    EXPECT_TRUE(std::ranges::equal(read.printAreaBorder, border.area));
    EXPECT_TRUE(std::ranges::equal(read.printAreaBorderless, borderless.area));
    EXPECT_TRUE(std::ranges::equal(read.printAreaDuplex, duplex.area));
    EXPECT_TRUE(std::ranges::equal(read.marginBorder, border.margin));
    EXPECT_TRUE(std::ranges::equal(read.marginBorderless, borderless.margin));
    EXPECT_TRUE(std::ranges::equal(read.marginDuplex, duplex.margin));
  }
}

std::vector<std::string> keywords(const ClssDicRow* dictionary, const std::uint16_t (&rows)[21]) {
  std::vector<std::string> words;
  for (const std::uint16_t row : rows) {
    if (row != kUnknown) words.push_back(keyword(dictionary, row));
  }
  return words;
}

TEST_P(EachProfile, AnnouncesItsTypes) {
  Dialogue dialogue(GetParam());
  const Profile profile = profile_named(GetParam());
  const std::string reply = dialogue.capability();
  const auto is_known = [](const MediaType& type) {
    return type.keyword != "custom-media-type-vaslo-33";
  };
  std::int32_t count = -1;
  ASSERT_EQ(
      CLSS_ParseCapabilityResponsePrint_MediaType(reply.data(), reply.size(), &count, nullptr), 0);
  ASSERT_EQ(count, std::ranges::count_if(profile.types, is_known));
  for (std::int32_t i = 0; i < count; ++i) {
    ClssMediaType read = {};
    read.version = 3;
    ASSERT_EQ(CLSS_ParseCapabilityResponsePrint_MediaType(reply.data(), reply.size(), &i, &read),
              0);
    const MediaType* type = find_type(profile, keyword(glb_clssdicPaperTypeTbl, read.paperType));
    ASSERT_NE(type, nullptr);
    EXPECT_EQ(read.nameSpace, static_cast<int>(type->space));
    EXPECT_EQ(read.borderlessOff == 2, std::ranges::count(type->borderless, "OFF") == 1);
    EXPECT_EQ(read.borderlessOn == 2, std::ranges::count(type->borderless, "ON") == 1);
    auto colors = keywords(glb_clssdicColormodeTbl, read.colorModes), listed = type->color;
    EXPECT_TRUE(std::ranges::is_permutation(colors, listed));
    // With staple sides "ON" is told once for each of them.
    const std::size_t sides = std::max<std::size_t>(profile.print.staple_sides.size(), 1);
    const bool can_duplex = std::ranges::count(type->duplex, "ON") == 1;
    EXPECT_EQ(keywords(glb_clssdicDuplexPrintTbl, read.duplexModes).size(),
              type->duplex.size() + (can_duplex ? sides - 1 : 0));
  }
}

TEST_P(EachProfile, AnnouncesItsFeatures) {
  Dialogue dialogue(GetParam());
  const Profile profile = profile_named(GetParam());
  const std::string print = dialogue.capability(), maintenance = dialogue.capability(kMaintenance);
  const auto lists = [](const std::vector<std::string>& words, const char* word) {
    return std::ranges::find(words, word) != words.end();
  };
#define ASK(function, reply, ...) \
  CLSS_ParseCapabilityResponse##function(reply.data(), reply.size(), ##__VA_ARGS__)
  for (std::uint16_t format = 1; format < CLSS_DICNUM_DATAFORMAT; ++format) {
    EXPECT_EQ(ASK(Print_FormatType, print, format) == 2,
              lists(profile.print.formats, glb_clssdicDataFormatTbl[format].keyword));
  }
  EXPECT_EQ(ASK(Print_NextPage, print, 2) == 2, lists(profile.print.next_page, "ON"));
  EXPECT_EQ(ASK(Print_PrintPreparation, print, 2) == 2,
            lists(profile.print.print_preparation, "disc"));
  EXPECT_EQ(ASK(Print_DVD_DeviceSideGuide, print, 2) == 2, lists(profile.print.disc_guide, "ON"));
  EXPECT_EQ(ASK(Print_JobQueue, print) == 2, profile.print.job_queue);
  EXPECT_EQ(ASK(Print_DateTime, print) == 2, profile.print.date_time);
  EXPECT_EQ(ASK(Maintenance_DateTime, maintenance) == 2, profile.maintenance.date_time);
  EXPECT_EQ(ASK(Print_HostEnvironment, print, 3) == 3, lists(profile.print.hosts, "linux"));
  EXPECT_EQ(ASK(Maintenance_HostEnvironment, maintenance, 3) == 3,
            lists(profile.maintenance.hosts, "linux"));
  EXPECT_EQ(ASK(Print_MismatchMode, print, 1) == 1, lists(profile.print.mismatch_modes, "auto"));
  EXPECT_EQ(ASK(Print_IsDiscLabelPrint, print) == 2,
            find_type(profile, "custom-media-type-vaslo-33") != nullptr);
  std::uint16_t least[2], most[2];
  const std::int32_t pixels = ASK(Print_Pixels, print, &least[0], &least[1], &most[0], &most[1]);
  EXPECT_EQ(pixels == 0, profile.pixels.has_value());
  if (profile.pixels) {
    EXPECT_TRUE(std::ranges::equal(most, profile.pixels->most));
  }
  for (const MediaMap& map : profile.media_maps) {
    std::uint16_t row = 1;
    while (glb_clssdicPanelMedia[row].keyword != map.panel) ++row;
    ClssMediaMap read = {};
    ASSERT_EQ(ASK(Print_MediaMap, print, row, &read), 0);
    EXPECT_EQ(keyword(glb_clssdicPaperTypeTbl, read.frontType), map.front);
    EXPECT_EQ(keyword(glb_clssdicPaperTypeTbl, read.backType), map.back);
  }
#undef ASK
}

TEST_P(EachProfile, TellsItsPaperAndInk) {
  Dialogue dialogue(GetParam());
  const Profile profile = profile_named(GetParam());
  const ClssStatus status = dialogue.status();
  EXPECT_EQ(keyword(glb_clssdicStatusTbl, status.common.status), "idle");
  EXPECT_EQ(status.common.statusDetail, kUnknown);
  EXPECT_STREQ(status.common.supportCode, "");
  std::size_t slot = 0;
  for (const Bin& bin : profile.bins) {
    if (bin.size.empty()) continue;
    const auto* types =
        status.panelMedia[slot] == 1 ? glb_clssdicPanelMedia : glb_clssdicPaperTypeTbl;
    EXPECT_EQ(keyword(types, status.currentPaperType[slot]), bin.type);
    EXPECT_EQ(keyword(glb_clssdicPaperSizeTbl, status.currentPaperSize[slot]), bin.size);
    ++slot;
  }
  EXPECT_EQ(status.currentPaperSize[slot], kUnknown);
  const auto is_full = [](const Ink& ink) { return ink.tca == "AC"; };
  EXPECT_EQ(status.inkState, std::ranges::all_of(profile.inks, is_full) ? 2 : 1);
}

TEST_P(EachProfile, HasADeviceIdOfTheProtocol) {
  const std::string id = Dialogue(GetParam()).printer.device_id();
  EXPECT_EQ(CLSS_HasZIRK(id.data(), static_cast<std::int64_t>(id.size())), 2) << id;
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

TEST_P(EachProfile, AnswersMaintenanceJobs) {
  Dialogue dialogue(GetParam());
  const auto say = [&](auto builder) { return dialogue.outcome_of(built(builder, kJob)); };
  EXPECT_EQ(dialogue.outcome_of(start(kJob, kMaintenance)), "OK");
  EXPECT_EQ(say(CLSS_MakeCommand_TestPrint), "OK");
  EXPECT_EQ(say(CLSS_MakeCommand_AutoRegistration), "OK");
  EXPECT_EQ(say(CLSS_MakeCommand_Cleaning), "OK");
  const std::string reply = dialogue.say(built(CLSS_MakeCommand_GetStatusMaintenance, kJob));
  ClssStatus status = {};
  EXPECT_EQ(CLSS_ParseStatusResponseMaintenance(reply.data(), reply.size(), kJob, &status), 0);
  EXPECT_EQ(status.completeImpression, 2);
  EXPECT_EQ(keyword(glb_clssdicStatusTbl, dialogue.status().common.status), "busying");
  EXPECT_EQ(dialogue.outcome_of(end(kJob, kMaintenance)), "OK");
  EXPECT_TRUE(dialogue.printer.is_idle());
}

// Fixed answers: each operation's, as a printer that has nothing to do gives it.
TEST_P(EachProfile, AnswersWhatNeedsNoJob) {
  Dialogue dialogue(GetParam());
  for (const std::int32_t service : {kPrint, kDevice, kMaintenance}) {
    EXPECT_EQ(outcome(dialogue.capability(service)), "OK");
  }
  for (const std::int32_t service : {kPrint, kDevice}) {
    EXPECT_EQ(dialogue.outcome_of(built_for(CLSS_MakeCommand_GetConfiguration, service)), "OK");
  }
  EXPECT_EQ(dialogue.outcome_of(built(CLSS_MakeCommand_GetStatusDevice)), "OK");
  EXPECT_EQ(dialogue.outcome_of(built(CLSS_MakeCommand_GetJobIDList)), "OK");
  EXPECT_EQ(dialogue.outcome_of(built(CLSS_MakeCommand_Handoveroff)), "OK");
  EXPECT_EQ(dialogue.outcome_of(built(CLSS_MakeCommand_FRomUpMode)), "OK");
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

TEST(Session, ListsTheOpenJob) {
  Dialogue dialogue("photo");
  dialogue.open_job();
  const std::string reply = dialogue.say(built(CLSS_MakeCommand_GetJobIDList));
  char slots[2][9] = {};
  std::int32_t count = 2;
  EXPECT_EQ(CLSS_ParseJobIDListResponse(reply.data(), reply.size(), slots, &count), 0);
  EXPECT_EQ(count, 1);
  EXPECT_STREQ(slots[0], kJob);
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

TEST(Session, NothingIsAnsweredAfterPowerOff) {
  Dialogue dialogue("photo");
  EXPECT_EQ(dialogue.outcome_of(start()), "OK");
  EXPECT_EQ(dialogue.outcome_of(built(CLSS_MakeCommand_PowerOff)), "DeivceUseOtherJob");
  EXPECT_EQ(dialogue.outcome_of(cancel()), "OK");
  EXPECT_EQ(dialogue.outcome_of(built(CLSS_MakeCommand_PowerOff)), "OK");
  const Answer answer = dialogue.printer.answer(built(CLSS_MakeCommand_GetStatusDevice));
  EXPECT_EQ(answer.kind, Answer::Kind::kClose);
  EXPECT_EQ(answer.bytes, "");
}

}  // namespace

}  // namespace pxcl::printer
