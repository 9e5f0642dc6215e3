// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "documents.hpp"

#include <array>
#include <cstdio>

namespace pxcl_bench {
namespace {

const std::string kHost = "http://www.example.com";
const std::string kContents = "cmd/zirk:contents/";
const std::string kPrint = kContents + "zirk:param_set servicetype=\"print\"/";

constexpr std::array kSpaces = {"zirk:", "vrx:", "tolm:"};
enum Space : std::size_t { kZirk, kVrx, kTolm };

struct Keyword {
  Space space;
  const char* name;
};

// clang-format off
constexpr std::array<Keyword, 34> kSizes = {{
    {kZirk, "na_letter_8.5x11in"},
    {kZirk, "na_legal_8.5x14in"},
    {kZirk, "iso_a5_148x210mm"},
    {kZirk, "iso_a4_210x297mm"},
    {kZirk, "iso_a3_297x420mm"},
    {kVrx,  "custom_vaslo_329x483mm"},
    {kZirk, "jis_b5_182x257mm"},
    {kZirk, "jis_b4_257x364mm"},
    {kTolm, "na_index-4x6_4x6in"},
    {kTolm, "na_5x7_5x7in"},
    {kVrx,  "custom_vaslo_203x254mm"},
    {kVrx,  "custom_vaslo_254x304mm"},
    {kVrx,  "custom_vaslo_355x431mm"},
    {kVrx,  "custom_vaslo_89x127mm"},
    {kVrx,  "custom_vaslo_127x178mm"},
    {kTolm, "jpn_hagaki_100x148mm"},
    {kVrx,  "custom_vaslo_54x86mm"},
    {kVrx,  "custom_vaslo_55x91mm"},
    {kVrx,  "custom_vaslo_101x180mm"},
    {kTolm, "na_number-10_4.125x9.5in"},
    {kTolm, "iso_dl_110x220mm"},
    {kZirk, "na_executive_7.25x10.5in"},
    {kZirk, "iso_a6_105x148mm"},
    {kVrx,  "custom_vaslo_215.9x317.5mm"},
    {kVrx,  "custom_vaslo_216x355mm"},
    {kTolm, "na_oficio_8.5x13.4in"},
    {kTolm, "na_foolscap_8.5x13in"},
    {kVrx,  "custom_vaslo_215x345mm"},
    {kVrx,  "custom_vaslo_127x127mm"},
    {kZirk, "na_ledger_11x17in"},
    {kVrx,  "custom_vaslo_7x10in"},
    {kVrx,  "custom_vaslo_4x4in"},
    {kVrx,  "custom_vaslo_12x12in"},
    {kVrx,  "custom_vaslo_89x89mm"},
}};

constexpr std::array<Keyword, 23> kTypes = {{
    {kZirk, "stationery"},
    {kVrx,  "custom-media-type-vaslo-3"},
    {kVrx,  "custom-media-type-vaslo-4"},
    {kVrx,  "custom-media-type-vaslo-16"},
    {kVrx,  "custom-media-type-vaslo-5"},
    {kVrx,  "custom-media-type-vaslo-2"},
    {kVrx,  "custom-media-type-vaslo-1"},
    {kVrx,  "custom-media-type-vaslo-17"},
    {kVrx,  "custom-media-type-vaslo-6"},
    {kVrx,  "custom-media-type-vaslo-14"},
    {kVrx,  "custom-media-type-vaslo-15"},
    {kTolm, "photographic"},
    {kVrx,  "custom-media-type-vaslo-11"},
    {kVrx,  "custom-media-type-vaslo-12"},
    {kVrx,  "custom-media-type-vaslo-9"},
    {kVrx,  "custom-media-type-vaslo-19"},
    {kVrx,  "custom-media-type-vaslo-18"},
    {kVrx,  "custom-media-type-vaslo-43"},
    {kVrx,  "custom-media-type-vaslo-45"},
    {kVrx,  "custom-media-type-vaslo-49"},
    {kTolm, "auto"},
    {kVrx,  "custom-media-type-vaslo-custom"},
    {kVrx,  "custom-media-type-vaslo-55"},
}};

constexpr std::array kPanelMedia = {
    "custom-media-type-vaslo-37", "custom-media-type-vaslo-39", "custom-media-type-vaslo-41"};
constexpr std::array kInks = {"cyan", "magenta", "yellow", "black", "photoblack", "gray"};
constexpr std::array kInkStates = {"AC", "AC", "DC", "AC", "UD", "AC"};

struct Item {
  Space space;
  const char* name;
  const char* value;
};
constexpr std::array<Item, 12> kItems = {{
    {kZirk, "max_pixels",          "13200,19800"},
    {kZirk, "min_pixels",          "128,256"},
    {kZirk, "support_data_format", "RAW,JPEG,JPEGPAGE,PWGRaster,SGRaster"},
    {kVrx,  "nextpage",            "OFF,ON"},
    {kVrx,  "printpreparation",    "manualfeed,disc"},
    {kVrx,  "job_queue",           "ON"},
    {kZirk, "datetime",            "ON"},
    {kVrx,  "host_environment",    "windows,mac,linux,ios,android"},
    {kZirk, "mismatch_mode",       "auto,none"},
    {kZirk, "stapleside",          "longside,shortside"},
    {kTolm, "papersize",           nullptr},  // asked for, but written apart
    {kTolm, "papertype",           nullptr},
}};

constexpr std::array kAreas = {"printarea_border", "printarea_borderless", "printarea_duplex"};
constexpr std::array kMargins = {"margin_border", "margin_borderless", "margin_duplex"};
constexpr std::array kTypeElements = {"borderlessprint", "printcolormode", "duplexprint"};
constexpr std::array kTypeValues = {"OFF,ON", "color,monochrome", "OFF,ON"};
// clang-format on

constexpr std::size_t kOptionsAsked = 42;

std::string number(std::size_t value) {
  return std::to_string(value);
}

std::string eight_digits(std::size_t value) {
  char text[16];
  std::snprintf(text, sizeof text, "%08zu", value % 100'000'000);
  return text;
}

std::string attribute(const std::string& name, const std::string& value) {
  return " " + name + "=\"" + value + "\"";
}

// `tag` is a name with its attributes; the end tag takes the name alone.
std::string element(const std::string& tag, const std::string& content) {
  return "<" + tag + ">" + content + "</" + tag.substr(0, tag.find(' ')) + ">";
}

std::string reply(const std::string& operation, const std::string& parameters) {
  return "<?xml version=\"1.0\" encoding=\"utf-8\" ?>" +
         element("cmd" + attribute("xmlns:zirk", kHost + "/ns/cmd/2008/07/common/") +
                     attribute("xmlns:vrx", kHost + "/ns/cmd/2008/07/vaslo/") +
                     attribute("xmlns:tolm", kHost + "/ns/wdp/2008/01/print/"),
                 element("zirk:contents",
                         element("zirk:operation", operation) +
                             element("zirk:param_set" + attribute("servicetype", "print"),
                                     element("zirk:response", "OK") + parameters)));
}

std::string bin_attribute(std::size_t bin) {
  return attribute("physicalinputbin", "inputbin_p" + number(bin));
}

std::string bins() {
  std::string text;
  for (std::size_t bin = 1; bin <= 7; ++bin) {
    text += element("zirk:currentpapertype" + bin_attribute(bin), kTypes[2 * bin].name);
    text += element("zirk:currentpapersize" + bin_attribute(bin), kSizes[3 * bin].name);
  }
  return text;
}

std::string inks() {
  std::string text;
  for (std::size_t ink = 0; ink < kInks.size(); ++ink) {
    text += element("zirk:ink", element("zirk:color", kInks[ink]) +
                                    element("zirk:level", number(90 - 7 * ink)) +
                                    element("vrx:tca", kInkStates[ink]) +
                                    element("vrx:model", "VK-" + number(310 + ink)));
  }
  return element("zirk:marker_info", text);
}

std::string status_details() {
  std::string text;
  for (std::size_t item = 1; item <= 3; ++item) {
    text += element("zirk:item" + attribute("id", number(item)),
                    element("zirk:error_code", number(1680 + item)) +
                        element("zirk:detail", "MarkerSupplyAttention"));
  }
  return element("zirk:status_detail_list", text);
}

std::string job_block(const std::string& id) {
  return element("zirk:jobinfo" + attribute("jobID", id),
                 element("zirk:job_description", id + " quarterly report") +
                     element("zirk:jobprogress", "processing") +
                     element("zirk:jobprogress_detail", element("zirk:state", "printing")) +
                     element("zirk:complete_impression", "12"));
}

// The keywords of one namespace, as printers list them.
template <typename Keywords>
std::string listed(const Keywords& keywords, Space space) {
  std::string text;
  for (const Keyword& keyword : keywords) {
    if (keyword.space != space) continue;
    if (!text.empty()) text += ',';
    text += keyword.name;
  }
  return text;
}

std::string size_elements(std::size_t index) {
  const Keyword& size = kSizes[index];
  std::string text;
  for (std::size_t kind = 0; kind < 3; ++kind) {
    const std::size_t width = 4000 + 37 * index + 11 * kind;
    text += element(kSpaces[size.space] + (kAreas[kind] + attribute("papersize", size.name)),
                    number(width) + "," + number(width + 1500 + index));
  }
  for (std::size_t kind = 0; kind < 3; ++kind) {
    const std::size_t edge = 340 + index - 100 * kind;
    text += element(
        kSpaces[size.space] + (kMargins[kind] + attribute("papersize", size.name)),
        number(edge) + "," + number(edge + 30) + "," + number(edge + 60) + "," + number(edge + 90));
  }
  return text;
}

std::string type_elements(const Keyword& type) {
  std::string text;
  for (std::size_t kind = 0; kind < kTypeElements.size(); ++kind) {
    text += element(kSpaces[type.space] + (kTypeElements[kind] + attribute("papertype", type.name)),
                    kTypeValues[kind]);
  }
  return text;
}

std::string media_maps() {
  std::string text;
  for (std::size_t panel = 0; panel < kPanelMedia.size(); ++panel) {
    text += element(
        "vrx:mediamap" + attribute("papertype", kPanelMedia[panel]),
        element("vrx:front", kTypes[panel + 1].name) + element("vrx:back", kTypes[panel + 4].name));
  }
  return text;
}

std::string option_name(std::size_t index) {
  return "option_" + eight_digits(index).substr(4);
}

std::string option(std::size_t index) {
  return element("vrx:item" + attribute("name", option_name(index)),
                 element("vrx:choices", "off,on,auto,level" + number(index)) +
                     element("vrx:default", index % 2 == 0 ? "auto" : "off"));
}

}  // namespace

std::string status_reply() {
  return reply("GetStatusResponse",
               element("zirk:status", "processing") + element("zirk:status_detail", "DeviceBusy") +
                   element("zirk:current_support_code", "1681") +
                   element("zirk:jobstatus", element("zirk:jobID", "00000012") +
                                                 element("zirk:jobprogress", "processing")) +
                   bins() + inks() + status_details() + job_block("00000012"));
}

std::vector<std::string> status_paths() {
  std::vector<std::string> paths = {
      kPrint + "zirk:status", kPrint + "zirk:status_detail", kPrint + "zirk:jobstatus/zirk:jobID",
      kPrint + "zirk:jobstatus/zirk:jobprogress", kPrint + "zirk:current_support_code"};
  for (std::size_t bin = 1; bin <= 7; ++bin) {
    paths.push_back(kPrint + "zirk:currentpapertype" + bin_attribute(bin));
    paths.push_back(kPrint + "zirk:currentpapersize" + bin_attribute(bin));
  }
  paths.push_back(kPrint + "zirk:marker_info/zirk:ink/vrx:tca");
  paths.push_back(kPrint + "zirk:status_detail_list/zirk:item id");
  paths.push_back(kPrint + "zirk:status_detail_list/zirk:item id/zirk:error_code");
  const std::string job = kPrint + "zirk:jobinfo jobID";
  for (const char* below : {"", "/zirk:job_description", "/zirk:jobprogress",
                            "/zirk:jobprogress_detail/zirk:state", "/zirk:complete_impression"}) {
    paths.push_back(job + below);
  }
  return paths;
}

std::string job_list_reply(std::size_t jobs) {
  std::string text;
  for (std::size_t job = 1; job <= jobs; ++job) {
    const std::string id = eight_digits(7919 * job);
    text += element("zirk:jobinfo" + attribute("jobID", id), element("zirk:job_description", id));
  }
  return reply("GetStatusResponse", text);
}

std::string job_list_path() {
  return kPrint + "zirk:jobinfo jobID";
}

std::string capability_reply(std::size_t size) {
  std::string text;
  for (Space space : {kZirk, kVrx, kTolm}) {
    text += element(kSpaces[space] + std::string("papersize"), listed(kSizes, space));
    text += element(kSpaces[space] + std::string("papertype"), listed(kTypes, space));
  }
  for (const Item& item : kItems) {
    if (item.value) text += element(kSpaces[item.space] + std::string(item.name), item.value);
  }
  for (std::size_t index = 0; index < kSizes.size(); ++index) text += size_elements(index);
  for (const Keyword& type : kTypes) text += type_elements(type);
  text += media_maps();

  const std::size_t around =
      reply("GetCapabilityResponse", text + element("vrx:option_list", "")).size();
  std::string options;
  for (std::size_t index = 0; around + options.size() < size; ++index) options += option(index);
  return reply("GetCapabilityResponse", text + element("vrx:option_list", options));
}

std::vector<std::string> capability_paths() {
  std::vector<std::string> paths = {kContents + "zirk:operation"};
  for (const char* service : {"print", "device", "scan", "maintenance"}) {
    paths.push_back(kContents + "zirk:param_set" + attribute("servicetype", service) +
                    "/zirk:response");
  }
  for (const char* space : kSpaces) {
    for (const Item& item : kItems) paths.push_back(kPrint + space + item.name);
  }
  for (const Keyword& size : kSizes) {
    const std::string prefix = kPrint + kSpaces[size.space];
    for (const char* area : kAreas)
      paths.push_back(prefix + area + attribute("papersize", size.name));
    for (const char* margin : kMargins)
      paths.push_back(prefix + margin + attribute("papersize", size.name));
  }
  for (const char* space : kSpaces) {
    for (const Keyword& type : kTypes) {
      for (const char* name : kTypeElements)
        paths.push_back(kPrint + space + name + attribute("papertype", type.name));
    }
  }
  for (const char* panel : kPanelMedia) {
    const std::string map = kPrint + "vrx:mediamap" + attribute("papertype", panel);
    paths.push_back(map + "/vrx:front");
    paths.push_back(map + "/vrx:back");
  }
  for (std::size_t index = 0; index < kOptionsAsked; ++index) {
    paths.push_back(kPrint + "vrx:option_list/vrx:item" + attribute("name", option_name(index)) +
                    "/vrx:default");
  }
  return paths;
}

std::string send_data_command() {
  return "<?xml version=\"1.0\" encoding=\"utf-8\" ?>"
         "<cmd xmlns:zirk=\"" +
         kHost + "/ns/cmd/2008/07/common/\" xmlns:vrx=\"" + kHost +
         "/ns/cmd/2008/07/vaslo/\">"
         "<zirk:contents>"
         "<zirk:operation>SendData</zirk:operation>"
         "<zirk:param_set servicetype=\"print\">"
         "<zirk:jobID>00000001</zirk:jobID>"
         "<zirk:format>RAW</zirk:format>"
         "<zirk:datasize>%s</zirk:datasize>"
         "<zirk:datawidth>%s</zirk:datawidth>"
         "<zirk:datalength>%s</zirk:datalength>"
         "</zirk:param_set>"
         "</zirk:contents>"
         "</cmd>";
}

std::vector<Replacement> send_data_values() {
  return {{kPrint + "zirk:jobID", "00000012"},
          {kPrint + "zirk:datasize", "25165824"},
          {kPrint + "zirk:datawidth", "4960"},
          {kPrint + "zirk:datalength", "7016"}};
}

}  // namespace pxcl_bench
