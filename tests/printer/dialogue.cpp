// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "dialogue.hpp"

namespace pxcl::printer {

std::string start(const char* job, std::uint16_t service) {
  const std::string description = std::string(job) + " a letter";
  return built(CLSS_MakeCommand_StartJob3, service, std::uint16_t{0}, description.c_str(),
               std::int16_t{2}, job, "0");
}

std::string configure(const std::string& capability, const ClssPrintSettings& s) {
  const ClssConfigurationPaper paper = {2, s.paperSize, s.paperType, s.borderless};
  const ClssConfigurationMode modes = {s.colorMode, s.duplexPrint};
  return built(CLSS_MakeCommand_SetConfigurationNS, paper, modes, kJob, capability.data(),
               std::uint64_t{capability.size()});
}

std::string page(std::uint16_t next_page) {
  return built(CLSS_MakeCommand_SetPageConfiguration, kJob, next_page);
}

std::string send(const std::string& data) {
  const auto size = static_cast<std::uint32_t>(data.size());
  return built(CLSS_MakeCommand_SendDataPWGRaster, kJob, size) + data;
}

std::string end(const char* job, std::uint16_t service) {
  return built(CLSS_MakeCommand_EndJob, service, job);
}

std::string cancel(const char* job, std::uint16_t service) {
  return built(CLSS_MakeCommand_CancelJob, service, job);
}

std::string with(std::string text, std::string_view part, std::string_view instead) {
  const std::size_t at = text.find(part);
  EXPECT_NE(at, text.npos) << part;
  return text.replace(at, part.size(), instead);
}

std::string raster_page(RasterForm form) {
  RasterPage page;
  page.width = page.bytes_per_line = 40;
  page.height = 30;
  page.lines.assign(page.height, std::string(page.width, '\xA0'));
  return make_raster({page}, form);
}

// Some operations have no response in the library's dictionary, and a fax is no service to it: its clients read those
// by key.
std::string outcome(const std::string& reply) {
  const std::string set = R"(cmd/zirk:contents/zirk:param_set servicetype=")";
  ClssResponseCommon head = {};
  std::uint64_t position = 0;
  const std::int32_t status =
      CLSS_ParseResponseCommon(reply.data(), reply.size(), &position, &head);
  if (status == 0) {
    return head.response == 1 ? "OK" : glb_clssdicResponseDetailTbl[head.responseDetail].keyword;
  }
  for (const char* service : {"print", "maintenance", "fax"}) {
    const std::string detail = text_at(reply, set + service + "\"/zirk:response_detail");
    if (!detail.empty()) return detail;
    const std::string response = text_at(reply, set + service + "\"/zirk:response");
    if (!response.empty()) return response;
  }
  return "The library can't read: " + reply;
}

std::string text_at(const std::string& reply, const std::string& key) {
  const ClssKeyValue record = {key.data(), key.size(), nullptr, 0};
  ClXmlRequest* context = nullptr;
  if (GetXmlDataByKey(reply.data(), reply.size(), &record, 1, &context) != 0) return "";
  const auto* found = static_cast<const ClXmlParameter*>(context->parameters);
  std::string text = reply.substr(found->valueOffset, found->status == 1 ? found->valueLength : 0);
  ClearCL_XML(context);
  return text;
}

Dialogue::Dialogue(Profile profile, const std::vector<std::string>& faults)
    : printer(std::move(profile), folder.path() / "output", faults) {}

std::string Dialogue::say(const std::string& request) {
  const Answer answer = printer.answer(request);
  EXPECT_EQ(answer.kind, Answer::Kind::kReply) << request.substr(0, 1000);
  EXPECT_FALSE(answer.bad_request) << answer.bytes;
  return answer.bytes;
}

void Dialogue::open_job(std::uint16_t size, std::uint16_t type, std::uint16_t duplex) {
  const ClssStatus now = status();
  const std::string offer = capability();
  ClssPrintSettings settings = {2,
                                size == kUnknown ? now.currentPaperSize[0] : size,
                                type == kUnknown ? now.currentPaperType[0] : type,
                                kUnknown,
                                kUnknown,
                                duplex};
  ASSERT_EQ(CLSS_AutoMakeOtherPrintSettings(1, offer.data(), offer.size(), &settings), 0);
  ASSERT_EQ(outcome_of(start()), "OK");
  ASSERT_EQ(outcome_of(configure(offer, settings)), "OK");
}

std::string Dialogue::send_page(std::uint16_t next_page) {
  std::string result = outcome_of(page(next_page));
  if (result == "OK") {
    EXPECT_EQ(outcome_of(send(raster_page())), "OK");
  }
  return result;
}

ClssStatus Dialogue::status() {
  const std::string reply = say(built(CLSS_MakeCommand_GetStatusPrint, kJob));
  ClssStatus status = {};
  status.leading = 1;
  const std::int32_t result =
      CLSS_ParseStatusResponsePrint2(reply.data(), reply.size(), kJob, &status);
  EXPECT_TRUE(result == 0 || result == 1) << reply;
  return status;
}

std::string Dialogue::capability(std::int32_t service) {
  return say(built_for(CLSS_MakeCommand_GetCapability, service));
}

}  // namespace pxcl::printer
