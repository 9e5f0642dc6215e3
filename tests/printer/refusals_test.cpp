// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// What is out of order, out of range or not offered is refused with the detail that says so, and the job that was open
// before goes on.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

#include "dialogue.hpp"

namespace pxcl::printer {

namespace {

constexpr char kOther[] = "00000043";
constexpr std::uint16_t kFax = 9, kA4 = 4, kPlain = 1, kPhotographic = 12;

std::string plain_settings() {
  const ClssConfigurationPaper paper = {2, kA4, kPlain, 1};
  return built(CLSS_MakeCommand_SetConfigurationNS, paper, ClssConfigurationMode{1, kUnknown}, kJob,
               static_cast<const char*>(nullptr), std::uint64_t{0});
}

std::string job_settings(const char* time = nullptr, std::uint16_t guide = 0) {
  return built(CLSS_MakeCommand_SetJobConfiguration, kJob, time, guide);
}

std::string test_print() {
  return built(CLSS_MakeCommand_TestPrint, kJob);
}

// A job whose last page is open, and what follows.
std::vector<std::string> in_page(std::vector<std::string> steps) {
  steps.insert(steps.begin(), {start(), plain_settings(), page(kLastPage)});
  return steps;
}

// As many steps as needed; the last one is judged, the others are "OK".
struct Case {
  const char* name;
  std::vector<std::string> steps;
  const char* expected = "ParameterError";  // as most are
  const char* profile = "photo";
};

std::vector<Case> cases_of_order() {
  const std::string raster = raster_page();
  return {
      {"EndWithoutStart", {end()}, "NotStart"},
      {"CancelWithoutStart", {cancel()}, "NotStart"},
      {"SettingsWithoutStart", {plain_settings()}, "NotStart"},
      {"PageWithoutStart", {page(kLastPage)}, "NotStart"},
      {"DataWithoutStart", {send(raster)}, "NotStart"},
      {"TestPrintWithoutStart", {test_print()}, "NotStart"},
      {"EndTwice", {start(), end(), end()}, "NotStart"},
      {"EndOfAnotherService", {start(), end(kJob, kMaintenance)}, "NotStart"},
      {"TestPrintInPrintJob", {start(), test_print()}, "NotStart"},
      {"SecondStart", {start(), start(kOther)}, "DeivceUseOtherJob"},
      {"SameStartTwice", {start(), start()}, "DeivceUseOtherJob"},
      {"MaintenanceBesidePrint", {start(), start(kOther, kMaintenance)}, "DeivceUseOtherJob"},
      {"UpdateBesidePrint", {start(), built(CLSS_MakeCommand_FRomUpMode)}, "DeivceUseOtherJob"},
      {"PowerOffBesidePrint", {start(), built(CLSS_MakeCommand_PowerOff)}, "DeivceUseOtherJob"},
      {"EndOfAnotherJob", {start(), end(kOther)}, "IllegalJobID"},
      {"CancelOfAnotherJob", {start(), cancel(kOther)}, "IllegalJobID"},
      {"ShortJobId", {start("0000042")}, "IllegalJobID"},
      {"JobIdOfLetters", {start("0000004A")}, "IllegalJobID"},
      {"PageWithoutSettings", {start(), page(kLastPage)}, "IllegalOperation"},
      {"DataWithoutPage", {start(), plain_settings(), send(raster)}, "IllegalOperation"},
      {"PageBehindTheLast", in_page({send(raster), page(kLastPage)}), "IllegalOperation"},
      {"EndBeforeTheLastPage",
       {start(), plain_settings(), page(kAnotherFollows), send(raster), end()},
       "IllegalOperation"},
      {"PageWithoutData", in_page({end()}), "IllegalOperation"},
      {"SettingsBehindAPage", in_page({plain_settings()}), "IllegalOperation"},
      {"JobSettingsBehindAPage", in_page({job_settings()}), "IllegalOperation"},
  };
}

std::vector<Case> cases_of_settings() {
  const std::string plain = plain_settings();
  const auto office = [](const char* part, const char* instead) {
    return std::vector{start(), with(plain_settings(), part, instead)};
  };
  const auto host = [](std::uint16_t service) {
    return built(CLSS_MakeCommand_StartJob3, service, std::uint16_t{3}, "00000042 x",
                 std::int16_t{0}, kJob, "0");
  };
  const auto schema = [](const std::string& text) {
    return with(with(with(text, "><zirk:contents",
                          " xmlns:tolm=\"" + std::string(glb_NameSpace[2]) + "\"><zirk:contents"),
                     "<zirk:papersize>", "<tolm:papersize>"),
                "</zirk:papersize>", "</tolm:papersize>");
  };
  return {
      {"SizeNotOffered", office("iso_a4_210x297mm", "iso_a3_297x420mm")},
      {"SizeUnknown", office("iso_a4_210x297mm", "iso_a4")},
      {"SizeOfAnotherNamespace", {start(), schema(plain)}},
      {"TypeNotOffered", office("stationery", "custom-media-type-vaslo-9")},
      {"TypeEmpty", office("stationery", "")},
      {"BorderlessOnPlainPaper", office(">OFF<", ">ON<")},
      {"ColorUnknown", office(">color<", ">colour<")},
      {"ColorNotOffered", office(">color<", ">warmblack<")},
      {"DuplexNotOffered",
       office("</zirk:param_set>", "<zirk:duplexprint>ON</zirk:duplexprint></zirk:param_set>")},
      {"SizeWithoutDuplexArea",
       {start(),
        with(with(plain_settings(), "iso_a4_210x297mm", "iso_a5_148x210mm"), "</zirk:param_set>",
             "<zirk:duplexprint>ON</zirk:duplexprint></zirk:param_set>")},
       "ParameterError",
       "office"},
      {"StapleWithoutDuplex",
       office("</zirk:param_set>",
              "<zirk:duplexprint>OFF</zirk:duplexprint>"
              "<zirk:stapleside>longside</zirk:stapleside></zirk:param_set>"),
       "ParameterError", "office"},
      {"GuideNotOffered", {start(), job_settings(nullptr, 2)}},
      {"GuideOffered", {start(), job_settings(nullptr, 2)}, "OK", "wide"},
      {"ClockNotOffered", {start(), job_settings("20260704123000")}, "ParameterError", "wide"},
      {"ClockOffered", {start(), job_settings("20260704123000")}, "OK"},
      {"ClockOfNoDate", {start(), job_settings("20261304123000")}},
      {"MismatchModeNotOffered",
       {start(), with(job_settings(), ">none<", ">auto<")},
       "ParameterError",
       "office"},
      {"MismatchModeOffered", {start(), with(job_settings(), ">none<", ">auto<")}, "OK"},
      {"HostNotOffered", {host(kPrint)}, "ParameterError", "wide"},
      {"HostOffered", {host(kPrint)}, "OK"},
      {"HostOfMaintenanceNotOffered", {host(kMaintenance)}, "ParameterError", "wide"},
      {"PreparationNotOffered",
       {start(), plain,
        built(CLSS_MakeCommand_SetPageConfiguration2, kJob, kLastPage, std::uint16_t{2})}},
      {"PreparationOffered",
       {start(), plain,
        built(CLSS_MakeCommand_SetPageConfiguration2, kJob, kLastPage, std::uint16_t{2})},
       "OK",
       "wide"},
  };
}

std::vector<Case> cases_of_data() {
  const std::string raster = send(raster_page());
  const std::string raw =
      built(CLSS_MakeCommand_SendDataRAW, kJob, std::uint16_t{2}, std::uint16_t{1});
  const auto announced = [](std::uint32_t size) {
    return built(CLSS_MakeCommand_SendDataPWGRaster, kJob, size);
  };
  return {
      {"MoreThanAnnounced", in_page({raster + "x"}), "DataSizeOver"},
      {"LessThanAnnounced", in_page({raster.substr(0, raster.size() - 1)})},
      {"NothingCame", in_page({announced(100)})},
      {"TooMuchAnnounced", in_page({announced(2'000'000'000)}), "DataSizeOver"},
      {"NegativeSize", in_page({announced(3'000'000'000)})},
      {"SizeOfManyDigits", in_page({with(announced(100), ">100<", ">99999999999999999999999999<")}),
       "DataSizeOver"},
      {"FormatNotOffered", in_page({raw + "123456"}), "ParameterError", "office"},
      {"RawOfAnotherSize", in_page({with(raw, ">6<", ">5<") + "12345"})},
      {"RawWithoutSides", in_page({with(with(raw, "<zirk:datawidth>2</zirk:datawidth>", ""),
                                        "<zirk:datalength>1</zirk:datalength>", "") +
                                   "123456"})},
      {"RasterWithSides", in_page({with(raw, ">RAW<", ">PWGRaster<") + "123456"})},
      {"TwoFormatsInAPage", in_page({raster, raw + "123456"})},
      {"DataBehindAnotherCommand", {start() + "x"}},
      {"RawBandsOfTwoWidths", in_page({raw + "123456", built(CLSS_MakeCommand_SendDataRAW, kJob,
                                                             std::uint16_t{1}, std::uint16_t{2}) +
                                                           "123456"})},
      {"RasterOfAnotherForm", in_page({send(raster_page(RasterForm::kCups)), end()})},
      {"NoRaster", in_page({send("RaSx, then nothing"), end()})},
      {"HalfARaster", in_page({send(raster_page().substr(0, 1900)), end()})},
      {"TwoPagesInOne", in_page({send(raster_page() + raster_page().substr(4)), end()})},
      {"NoJpeg",
       {start(), plain_settings(), page(kLastPage),
        built(CLSS_MakeCommand_SendDataJPEG, kJob, std::uint32_t{6}) + "JFIF??", end()}},
      {"NothingIsLeftOfACancelledPage",
       {start(), plain_settings(), page(kAnotherFollows), send("no raster"), cancel(), start(),
        plain_settings(), page(kLastPage), send(raster_page()), end()},
       "OK"},
  };
}

// One thing in a good document is changed.
std::vector<Case> cases_of_documents() {
  const std::string good = start();
  const auto changed = [&](const char* part, const char* instead) {
    return std::vector{with(good, part, instead)};
  };
  return {
      {"OperationUnknown", changed("StartJob<", "StartWork<"), "NotSupportOperation"},
      {"OperationOfAnotherService",
       {with(built(CLSS_MakeCommand_PowerOff), "\"device\"", "\"print\"")},
       "NotSupportOperation"},
      {"VendorOperationUnknown",
       {with(built(CLSS_MakeCommand_Handoveroff), "HandOverOff", "HandOver")},
       "NotSupportOperation"},
      {"VendorOperationMissing",
       {with(built(CLSS_MakeCommand_Handoveroff), "<vrx:ijoperation>HandOverOff</vrx:ijoperation>",
             "")},
       "NotSupportOperation"},
      {"ServiceOfAFax", {end(kJob, kFax)}, "NotSupportService"},
      {"ServiceOfOthers", changed("\"print\"", "\"scan\""), "NotSupportService"},
      {"DeclarationOfAnotherCommand", changed(R"("utf-8" ?>)", R"("utf-8"?>)")},
      {"OddEncodingMissing",
       {start(kJob, kMaintenance), with(built(CLSS_MakeCommand_SetJobConfiguration_Maintenance,
                                              kJob, static_cast<const char*>(nullptr)),
                                        "job_descriptionutf-8", "utf-8")}},
      {"JobIdMissing", changed("<zirk:jobID>00000042</zirk:jobID>", "")},
      {"JobIdOfVendors",
       changed("<zirk:jobID>00000042</zirk:jobID>", "<vrx:jobID>00000042</vrx:jobID>")},
      {"JobIdWithAttribute", changed("<zirk:jobID>", "<zirk:jobID a=\"1\">")},
      {"BidiEmpty", changed("<zirk:bidi>0<", "<zirk:bidi><")},
      {"BidiHoldsAnElement", changed("<zirk:bidi>0<", "<zirk:bidi><zirk:x/><")},
      {"SwitchUnknown", changed(">OFF<", ">Off<")},
      {"OrderChanged", changed("<zirk:jobID>00000042</zirk:jobID><zirk:bidi>0</zirk:bidi>",
                               "<zirk:bidi>0</zirk:bidi><zirk:jobID>00000042</zirk:jobID>")},
      {"DescriptionAlone", changed("<zirk:jobname/><zirk:username/>", "")},
      {"HostWithoutDescription",
       {with(built(CLSS_MakeCommand_StartJob2, std::int16_t{2}, kJob, "0"), "</zirk:param_set>",
             "<vrx:host_environment>linux</vrx:host_environment></zirk:param_set>")}},
      {"SomethingMore", changed("</zirk:param_set>", "<zirk:more>1</zirk:more></zirk:param_set>")},
      {"ParametersOfNone",
       {with(built(CLSS_MakeCommand_PowerOff), "</zirk:param_set>",
             "<zirk:jobID>00000042</zirk:jobID></zirk:param_set>")}},
      {"GuideOfAnotherThing",
       {start(), with(job_settings(nullptr, 2), "\"disc\"", "\"disk\"")},
       "ParameterError",
       "wide"},
      {"CharactersMayBeNumbers", changed(">0</zirk:bidi>", ">&#48;&#x30;</zirk:bidi>"), "OK"},
      {"NumbersOfNothing",
       {with(built(CLSS_MakeCommand_StartJob2, std::int16_t{2}, kJob, "0"), ">0<", ">&#x20;<")}},
      {"PrefixesMayDiffer",
       {R"(<?xml version="1.0" encoding="utf-8" ?><cmd xmlns:a=")" + std::string(glb_NameSpace[0]) +
        "\">"
        R"(<a:contents> <a:operation>GetStatus</a:operation><a:param_set servicetype="print"/></a:contents></cmd>)"},
       "OK"},
  };
}

class Refusals : public testing::TestWithParam<Case> {};

TEST_P(Refusals, AreOfTheirKind) {
  Dialogue dialogue(GetParam().profile);
  const auto& steps = GetParam().steps;
  for (std::size_t i = 0; i + 1 < steps.size(); ++i) {
    ASSERT_EQ(dialogue.outcome_of(steps[i]), "OK") << dialogue.printer.log().back();
  }
  EXPECT_EQ(dialogue.outcome_of(steps.back()), GetParam().expected)
      << dialogue.printer.log().back();
  if (!dialogue.printer.is_idle() && GetParam().expected != std::string("OK")) {
    const bool is_print = dialogue.outcome_of(cancel()) == "OK";
    EXPECT_TRUE(is_print || dialogue.outcome_of(cancel(kJob, kMaintenance)) == "OK");
    EXPECT_TRUE(dialogue.printer.is_idle());
  }
}

const auto kName = [](const auto& test) { return test.param.name; };
INSTANTIATE_TEST_SUITE_P(Order, Refusals, testing::ValuesIn(cases_of_order()), kName);
INSTANTIATE_TEST_SUITE_P(Settings, Refusals, testing::ValuesIn(cases_of_settings()), kName);
INSTANTIATE_TEST_SUITE_P(Data, Refusals, testing::ValuesIn(cases_of_data()), kName);
INSTANTIATE_TEST_SUITE_P(Documents, Refusals, testing::ValuesIn(cases_of_documents()), kName);

TEST(SpoiltJob, CanOnlyBeCancelled) {
  Dialogue dialogue("photo");
  dialogue.open_job();
  EXPECT_EQ(dialogue.outcome_of(page(kAnotherFollows)), "OK");
  EXPECT_EQ(dialogue.outcome_of(send("no raster")), "OK");
  EXPECT_EQ(dialogue.outcome_of(page(kLastPage)), "ParameterError");
  for (int i = 0; i < 2; ++i) {
    const ClssStatus status = dialogue.status();
    EXPECT_STREQ(glb_clssdicStatusTbl[status.common.status].keyword, "stopped");
    EXPECT_STREQ(glb_clssdicStatusDetailTbl[status.common.statusDetail].keyword,
                 "AttentionRequired");
    for (const std::string& request : {page(kLastPage), send(raster_page()), end()}) {
      EXPECT_EQ(dialogue.outcome_of(request), "IllegalOperation");
    }
    dialogue.printer.attend();  // Nobody can help.
  }
  EXPECT_EQ(dialogue.outcome_of(cancel()), "OK");
  EXPECT_TRUE(dialogue.printer.pages().empty());
}

// Every command that the library can write, as its own tests keep them. Without an open job most are "NotStart", but all
// are understood.
TEST(Commands, OfTheLibraryAreUnderstood) {
  const std::map<std::string, std::string> refused = {
      {"EndJob_fax", "NotSupportService"},
      {"StartJob_0_host", "NotSupportService"},  // of the scan service
      {"StartJob_1_host", "NotSupportService"},
      {"StartJob_2_host", "NotSupportService"},
      {"StartJob_3_host", "NotSupportService"},
      {"SendDataPWGRaster", "ParameterError"},  // of a negative size
      {"SetConfiguration_unused_rows", "ParameterError"},
  };
  std::size_t count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(PXCL_TEST_DATA "/commands")) {
    std::ifstream file(entry.path());
    const std::string document(std::istreambuf_iterator<char>(file), {});
    Dialogue dialogue("wide");
    const std::string result = dialogue.outcome_of(document);
    const auto expected = refused.find(entry.path().stem().string());
    if (expected != refused.end()) {
      EXPECT_EQ(result, expected->second) << document;
    } else {
      EXPECT_TRUE(result == "OK" || result == "NotStart") << result << " to " << document;
    }
    ++count;
  }
  EXPECT_GT(count, 50U);
}

// No bin holds it: the status says so, and a person or another mismatch mode helps.
TEST(Mismatch, StopsTheJob) {
  Dialogue dialogue("photo");
  dialogue.open_job(kA4, kPhotographic);
  EXPECT_EQ(dialogue.send_page(kLastPage), "OK");
  const ClssStatus status = dialogue.status();
  EXPECT_STREQ(glb_clssdicStatusTbl[status.common.status].keyword, "stopped");
  EXPECT_STREQ(glb_clssdicJobProgressTbl[status.common.jobProgress].keyword, "stopped");
  EXPECT_STREQ(glb_clssdicStatusDetailTbl[status.common.statusDetail].keyword, "CUSTOM_MISMATCH");
  EXPECT_STREQ(status.common.supportCode, "4103");
  EXPECT_EQ(dialogue.outcome_of(end()), "Suspended");
  dialogue.printer.attend();
  EXPECT_EQ(dialogue.status().currentPaperType[0], kPhotographic);
  EXPECT_EQ(dialogue.outcome_of(end()), "OK");
}

TEST(Mismatch, ModeAutoTakesWhatThereIs) {
  Dialogue dialogue("photo");
  dialogue.open_job(kA4, kPhotographic);
  EXPECT_EQ(dialogue.outcome_of(with(job_settings(), ">none<", ">auto<")), "OK");
  EXPECT_EQ(dialogue.send_page(kLastPage), "OK");
  EXPECT_EQ(dialogue.outcome_of(end()), "OK");
}

}  // namespace

}  // namespace pxcl::printer
