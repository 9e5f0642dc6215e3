// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// What replies turn into: the values of capability and status, and settings made of both.

#include "client/settings.hpp"

#include <gtest/gtest.h>

#include <sstream>

#include "client/printer.hpp"
#include "scripted_printer.hpp"

namespace pxcl::client {
namespace {

Status status_of(const std::string& body) {
  return read_status(status_reply(body)).value();
}

TEST(Capability, ThatCannotBeReadIsABadReply) {
  for (const char* body : {"<zirk:papersize>iso_a4_210x297mm</zirk:papersize><zirk:margin_border "
                           "papersize=\"iso_a4_210x297mm\">1,2,3</zirk:margin_border>",
                           "<zirk:max_pixels>1,2,3</zirk:max_pixels>"}) {
    const auto read = read_print_capability(capability_reply(body));
    ASSERT_FALSE(read);
    EXPECT_EQ(read.error().fault, Fault::kBadReply);
  }
}

// The job's block can't be found then: it is no sign that the job has ended.
TEST(Status, WithUnevenDetailsTellsNothingOfAJob) {
  const std::string reply = status_reply(
      "<zirk:status>idle</zirk:status><zirk:status_detail_list><zirk:item "
      "id=\"1\"><zirk:error_code>7"
      "</zirk:error_code></zirk:item><zirk:item id=\"2\"/></zirk:status_detail_list>");
  EXPECT_EQ(read_status(reply).value().state->keyword, "idle");
  EXPECT_FALSE(read_status(reply, "00000042"));
}

TEST(Attention, SaysWhatToDo) {
  struct Row {
    const char* state;
    const char* detail;
    bool attention;
    const char* words;
  };
  const Row rows[] = {
      {"stopped", "MediaEmpty", true, "out of paper"},
      {"stopped", "DoorOpen", true, "cover"},
      {"stopped", "MediaJam", true, "jammed"},
      {"stopped", "MarkerSupplyAttention", true, "ink"},
      {"stopped", "CUSTOM_MISMATCH", true, "not the job's"},
      {"stopped", "", true, "panel"},
      {"notready", "DoorOpen", true, "cover"},
      {"notready", "DeviceBusy", false, ""},
      {"processing", "MarkerSupplyAttention", false, ""},
      {"idle", "", false, ""},
  };
  for (const Row& row : rows) {
    const Status status = status_of("<zirk:status>" + std::string(row.state) +
                                    "</zirk:status><zirk:status_detail>" + row.detail +
                                    "</zirk:status_detail><zirk:current_support_code>1\x1B"
                                    "7</zirk:current_support_code>");
    EXPECT_EQ(needs_attention(status), row.attention) << row.state << " " << row.detail;
    const std::string sentence = attention_sentence(status);
    EXPECT_NE(sentence.find(row.words), std::string::npos) << sentence;
    EXPECT_NE(sentence.find("(support code 1"), std::string::npos) << sentence;
    EXPECT_EQ(sentence.find('\x1B'), std::string::npos);
  }
}

// ---- Settings

const std::optional<std::string> kAny;
const std::string kA4 = "iso_a4_210x297mm", k4x6 = "na_index-4x6_4x6in", kPlain = "stationery",
                  kPhoto = "photographic";

// With the width of the print area.
std::string told(const Settings& s) {
  std::ostringstream text;
  text << s.size.keyword << ' ' << s.type.keyword << (s.borderless ? " borderless " : " ")
       << s.color_mode->keyword << " duplex " << (s.duplex ? s.duplex->row : 0) << " on "
       << s.print_area.area.width;
  return text.str();
}

struct Wish {
  const char* name;
  Wishes wishes;
  std::string expected;  // of the error: words of its sentence
};

const Wish kWishes[] = {
    {"nothing: the plain paper", {}, kA4 + " stationery color duplex 1 on 4801"},
    {"a type",
     {kAny, kPhoto, {}, {}, {}},
     k4x6 + " photographic borderless color duplex 0 on 2520"},
    {"a size", {k4x6, kAny, {}, {}, {}}, k4x6 + " photographic borderless color duplex 0 on 2520"},
    {"both, loaded or not",
     {k4x6, kPlain, {}, {}, {}},
     k4x6 + " stationery color duplex 1 on 2240"},
    {"with borders", {kAny, kPhoto, false, {}, {}}, k4x6 + " photographic color duplex 0 on 2240"},
    {"monochrome",
     {kAny, kAny, {}, "monochrome", {}},
     kA4 + " stationery monochrome duplex 1 on 4801"},
    {"short side",
     {kAny, kAny, {}, {}, kDuplexShortSide},
     kA4 + " stationery color duplex 4 on 4802"},
    {"some side", {kAny, kAny, {}, {}, kDuplexOn}, kA4 + " stationery color duplex 3 on 4802"},
    {"one side",
     {kAny, kPhoto, {}, {}, kDuplexOff},
     k4x6 + " photographic borderless color duplex 0 on 2520"},
};
const Wish kUnsuitable[] = {
    {"no such size", {"na_letter_8.5x11in", kAny, {}, {}, {}}, kA4},
    {"a size of nobody's", {"A4", kAny, {}, {}, {}}, kA4},
    {"no such type", {kAny, "vellum", {}, {}, {}}, kPhoto},
    {"borderless on plain paper", {kAny, kAny, true, {}, {}}, "only with borders"},
    {"no such colour mode", {kAny, kAny, {}, "sepia", {}}, "color, monochrome"},
    {"not on this paper", {kAny, kPhoto, {}, "monochrome", {}}, "Possible: color."},
    {"two sides of photo paper", {kAny, kPhoto, {}, {}, kDuplexOn}, "one-sided"},
    {"two sides of a size without",
     {k4x6, kPlain, {}, {}, kDuplexLongSide},
     "Possible: one-sided."},
};

TEST(Settings, AreWishesMadeComplete) {
  const PrintCapability capability = read_print_capability(capability_reply(kCapability)).value();
  const Status status = status_of(kLoaded);
  for (const Wish& row : kWishes) {
    const Result<Settings> made = complete_settings(row.wishes, capability, status);
    ASSERT_TRUE(made) << made.error().message;
    EXPECT_EQ(told(made.value()), row.expected) << row.name;
  }
  for (const Wish& row : kUnsuitable) {
    const Result<Settings> made = complete_settings(row.wishes, capability, status);
    ASSERT_FALSE(made) << row.name;
    EXPECT_EQ(made.error().fault, Fault::kUnsuitable);
    EXPECT_NE(made.error().message.find(row.expected), std::string::npos) << made.error().message;
  }
}

std::string bin(int number, const std::string& type, const std::string& size) {
  const std::string name = " physicalinputbin=\"inputbin_p" + std::to_string(number) + "\">";
  return "<zirk:currentpapertype" + name + type + "</zirk:currentpapertype><zirk:currentpapersize" +
         name + size + "</zirk:currentpapersize>";
}

TEST(Settings, DependOnWhatIsLoaded) {
  struct Row {
    std::string loaded;
    Wishes wishes;
    const char* words;  // of the error; null: settings
  };
  const std::string panelPhoto = bin(1, "custom-media-type-vaslo-37", k4x6);
  const Row rows[] = {
      {"", {}, "does not tell which paper"},
      {panelPhoto, {}, "does not tell which paper"},
      {panelPhoto + bin(2, kPhoto, k4x6), {k4x6, kAny, {}, {}, {}}, nullptr},
      {bin(1, kPhoto, k4x6), {}, nullptr},
      {bin(1, kPhoto, k4x6), {kAny, kPlain, {}, {}, {}}, "Load it"},
      {bin(1, kPlain, kA4) + bin(2, kPlain, k4x6), {}, "open which paper"},
      {bin(1, kPlain, kA4) + bin(2, kPhoto, kA4),
       {kA4, kAny, {}, {}, {}},
       "open which paper of the size"},
      {bin(1, kPlain, "iso_a5_148x210mm"), {}, "not what the printer offers"},
      {"", {kA4, kPlain, {}, {}, {}}, nullptr},
  };
  const PrintCapability capability = read_print_capability(capability_reply(kCapability)).value();
  for (const Row& row : rows) {
    SCOPED_TRACE(row.loaded);
    const Result<Settings> made = complete_settings(row.wishes, capability, status_of(row.loaded));
    ASSERT_EQ(made.ok(), row.words == nullptr);
    if (made) continue;
    EXPECT_EQ(made.error().fault, Fault::kUnsuitable);
    EXPECT_NE(made.error().message.find(row.words), std::string::npos) << made.error().message;
  }
}

}  // namespace
}  // namespace pxcl::client
