// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "scripted_printer.hpp"

#include <gtest/gtest.h>
#include <pxcl.h>

#include <algorithm>
#include <pugixml.hpp>

namespace pxcl::client {

const std::string kCapability =
    "<zirk:papersize>iso_a4_210x297mm</zirk:papersize><vrx:papersize>na_index-4x6_4x6in</"
    "vrx:papersize>"
    "<zirk:printarea_border papersize=\"iso_a4_210x297mm\">4801,6827</zirk:printarea_border>"
    "<zirk:printarea_duplex papersize=\"iso_a4_210x297mm\">4802,6644</zirk:printarea_duplex>"
    "<zirk:margin_border papersize=\"iso_a4_210x297mm\">71,118,80,81</zirk:margin_border>"
    "<zirk:margin_duplex papersize=\"iso_a4_210x297mm\">119,118,82,83</zirk:margin_duplex>"
    "<vrx:printarea_border papersize=\"na_index-4x6_4x6in\">2240,3411</vrx:printarea_border>"
    "<vrx:printarea_borderless "
    "papersize=\"na_index-4x6_4x6in\">2520,3720</vrx:printarea_borderless>"
    "<vrx:margin_border papersize=\"na_index-4x6_4x6in\">1,2,3,4</vrx:margin_border>"
    "<vrx:margin_borderless papersize=\"na_index-4x6_4x6in\">0,0,0,0</vrx:margin_borderless>"
    "<zirk:papertype>stationery</zirk:papertype><vrx:papertype>photographic</vrx:papertype>"
    "<zirk:borderlessprint papertype=\"stationery\">OFF</zirk:borderlessprint>"
    "<zirk:printcolormode papertype=\"stationery\">color,monochrome</zirk:printcolormode>"
    "<zirk:duplexprint papertype=\"stationery\">OFF,ON</zirk:duplexprint>"
    "<zirk:stapleside>longside,shortside</zirk:stapleside>"
    "<vrx:borderlessprint papertype=\"photographic\">OFF,ON</vrx:borderlessprint>"
    "<vrx:printcolormode papertype=\"photographic\">color</vrx:printcolormode>"
    "<zirk:support_data_format>JPEG,PWGRaster</zirk:support_data_format>"
    "<vrx:nextpage>OFF,ON</vrx:nextpage><zirk:datetime/>"
    "<vrx:host_environment>windows,linux</vrx:host_environment>"
    "<zirk:max_pixels>5100,7020</zirk:max_pixels>";

const std::string kLoaded =
    "<zirk:status>idle</zirk:status>"
    "<zirk:currentpapertype physicalinputbin=\"inputbin_p1\">stationery</zirk:currentpapertype>"
    "<zirk:currentpapersize "
    "physicalinputbin=\"inputbin_p1\">iso_a4_210x297mm</zirk:currentpapersize>"
    "<zirk:currentpapertype physicalinputbin=\"inputbin_p2\">photographic</zirk:currentpapertype>"
    "<zirk:currentpapersize "
    "physicalinputbin=\"inputbin_p2\">na_index-4x6_4x6in</zirk:currentpapersize>";

std::string make_reply(std::string_view operation, std::string_view service, std::string_view body,
                       std::string_view response) {
  std::string reply = "<?xml version=\"1.0\" encoding=\"utf-8\" ?><cmd xmlns:zirk=\"";
  reply +=
      std::string(glb_NameSpace[0]) + "\" xmlns:vrx=\"" + glb_NameSpace[1] + "\"><zirk:contents>";
  reply += "<zirk:operation>" + std::string(operation) +
           "</zirk:operation><zirk:param_set servicetype=\"";
  reply += std::string(service) + "\"><zirk:response>" + std::string(response) +
           "</zirk:response>" + std::string(body) + "</zirk:param_set></zirk:contents></cmd>";
  return reply;
}

void ScriptedPrinter::damage(std::string operation, Damage damage, std::string reason,
                             unsigned first, unsigned last) {
  scripts_.push_back({std::move(operation), damage, std::move(reason), first, last});
}

std::size_t ScriptedPrinter::count(std::string_view operation) const {
  return static_cast<std::size_t>(std::count(operations.begin(), operations.end(), operation));
}

std::string ScriptedPrinter::last(std::string_view operation) const {
  for (std::size_t i = operations.size(); i-- > 0;) {
    if (operations[i] == operation) return commands[i];
  }
  return {};
}

const ScriptedPrinter::Script* ScriptedPrinter::script_for(std::string_view operation) const {
  const std::size_t number = count(operation);
  for (const Script& script : scripts_) {
    if (script.operation == operation && number >= script.first && number <= script.last)
      return &script;
  }
  return nullptr;
}

void ScriptedPrinter::carry_out(std::string_view operation, std::string_view jobID,
                                std::string_view description) {
  if (operation == "StartJob") {
    open_job_ = jobID;
    description_ = repeats_descriptions ? description : "a job";
    closed_ = false;
  } else if (operation == "CancelJob") {
    open_job_.clear();
  } else if (operation == "EndJob") {
    closed_ = true;
    if (statuses_to_the_end == 0) open_job_.clear();
  }
}

std::string ScriptedPrinter::status_body() {
  std::string body = states.front();
  if (states.size() > 1) states.pop_front();
  if (closed_ && statuses_to_the_end > 0 && --statuses_to_the_end == 0) open_job_.clear();
  if (open_job_.empty()) return body;
  return body + "<zirk:jobstatus><zirk:jobID>" + open_job_ +
         "</zirk:jobID></zirk:jobstatus><zirk:jobinfo jobID=\"" + open_job_ +
         "\"><zirk:job_description><![CDATA[" + description_ + "]]></zirk:job_description>" +
         job_elements + "</zirk:jobinfo>";
}

std::string ScriptedPrinter::body_of(std::string_view operation, std::string_view service,
                                     std::string_view jobID) {
  if (operation == "GetStatus") return status_body();
  if (operation == "GetCapability") return service == "print" ? capability : maintenance_capability;
  if (operation == "GetJobIDList") {
    return "<zirk:jobinfo jobID=\"00000011\"/><zirk:jobinfo jobID=\"123\"/><zirk:jobinfo "
           "jobID=\"00000022\"/>";
  }
  return jobID.empty() ? "" : "<zirk:jobID>" + std::string(jobID) + "</zirk:jobID>";
}

namespace {

// The first text between two marks, changed.
std::string with_text(std::string reply, std::string_view before, std::string_view after,
                      std::string_view text) {
  const std::size_t begin = reply.find(before) + before.size();
  const std::size_t end = reply.find(after, begin);
  EXPECT_NE(end, std::string::npos) << before << " in " << reply;
  return end == std::string::npos ? reply : reply.replace(begin, end - begin, text);
}

Result<std::string> spoilt(const std::string& good, Damage damage) {
  switch (damage) {
    case Damage::kWrongOperation: {
      const bool isEnd = good.find(">EndJobResponse<") != std::string::npos;
      return with_text(good, "<zirk:operation>", "<",
                       isEnd ? "StartJobResponse" : "EndJobResponse");
    }
    case Damage::kWrongService:
      return with_text(good, "servicetype=\"", "\"", "scan");
    case Damage::kWrongJob:
      return with_text(good, "<zirk:jobID>", "<", "99999999");
    case Damage::kNoResponse:
      return with_text(good, "<zirk:response>", "<", "");
    case Damage::kCutInHead:
      return good.substr(0, good.find("<zirk:contents>") + 30);
    case Damage::kCutBeforeEnd:
      return good.substr(0, good.size() - 6);
    case Damage::kGarbage:
      return std::string("\x00\xFF<<>&\"cmd </cmd> no reply", 24);
    case Damage::kEmpty:
      return std::string();
    default:
      return Error{Fault::kUnreachable, "Nothing came."};
  }
}

}  // namespace

Result<std::string> ScriptedPrinter::exchange(std::string_view command, std::string_view sent) {
  pugi::xml_document document;
  const pugi::xml_parse_result parsed = document.load_buffer(
      command.data(), command.size(), pugi::parse_default, pugi::encoding_utf8);
  EXPECT_TRUE(parsed) << parsed.description() << " in " << command;
  const pugi::xml_node contents = document.child("cmd").child("zirk:contents");
  const pugi::xml_node set = contents.child("zirk:param_set");
  const std::string word = contents.child("zirk:operation").child_value();
  const std::string operation =
      word == "VendorCmd" ? set.child("vrx:ijoperation").child_value() : word;
  const std::string service = set.attribute("servicetype").value();
  const std::string jobID = set.child("zirk:jobID").child_value();
  operations.push_back(operation);
  commands.emplace_back(command);
  if (operation == "SendData") {
    EXPECT_EQ(std::to_string(sent.size()), set.child("zirk:datasize").child_value());
    data.emplace_back(sent);
  } else {
    EXPECT_TRUE(sent.empty()) << operation;
  }
  if (on_command) on_command(operation);
  const Script* const script = script_for(operation);
  if (script != nullptr && script->damage == Damage::kNg) {
    const std::string detail = script->reason == "-" ? ""
                                                     : "<zirk:response_detail>" + script->reason +
                                                           "</zirk:response_detail>";
    return make_reply(word + "Response", service, detail, "NG");
  }
  if (script != nullptr && script->damage == Damage::kCommandIsLost)
    return spoilt({}, script->damage);
  carry_out(operation, jobID, set.child("zirk:job_description").child_value());
  const std::string good =
      make_reply(word + "Response", service, body_of(operation, service, jobID));
  return script == nullptr ? good : spoilt(good, script->damage);
}

Result<std::string> ScriptedPrinter::device_id() {
  return std::string("MFG:Nobody;CMD:TEXT,ZIRK;SOJ:NOLP;MDL:Scripted\x1B[2J one;");
}

}  // namespace pxcl::client
