// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "printer/profile.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <stdexcept>

#include "dialogue.hpp"

namespace pxcl::printer {

namespace {

constexpr std::string_view kSmall = R"({
  "model": "Test",
  "device_id": "MFG:X;CMD:ZIRK;MDL:Test;",
  "sizes": [{"keyword": "iso_a4_210x297mm", "in": "zirk", "border": {"area": [4761, 6816], "margin": [100, 100, 100, 100]}}],
  "types": [{"keyword": "stationery", "in": "vrx", "borderless": ["OFF"], "color": ["color"]}],
  "bins": [{"size": "iso_a4_210x297mm", "type": "stationery", "sheets": 3, "capacity": 10}],
  "inks": [{"color": "black", "level": 50, "tca": "AC"}],
  "media_maps": [{"panel": "custom-media-type-vaslo-37", "front": "stationery", "back": "stationery"}],
  "pixels": {"most": [100, 200]},
  "print": {"formats": ["PWGRaster"], "date_time": true}
})";

std::string small_with(std::string_view part, std::string_view instead) {
  return with(std::string(kSmall), part, instead);
}

std::string complaint(const std::string& json) {
  try {
    static_cast<void>(profile_from_json(json, "small"));
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "";
}

TEST(Profile, IsRead) {
  const Profile profile = profile_from_json(kSmall, "small");
  EXPECT_EQ(profile.model, "Test");
  ASSERT_EQ(profile.sizes.size(), 1U);
  EXPECT_EQ(profile.sizes[0].space, Namespace::kCommon);
  EXPECT_FALSE(profile.sizes[0].borderless);
  EXPECT_EQ(profile.sizes[0].border->area[1], 6816U);
  EXPECT_EQ(profile.types[0].space, Namespace::kVendor);
  EXPECT_EQ(profile.bins[0].sheets, 3U);
  EXPECT_EQ(profile.pixels->most[1], 200);
  EXPECT_TRUE(profile.print.date_time);
  EXPECT_FALSE(profile.print.job_queue);
  EXPECT_TRUE(profile.print.next_page.empty());
}

TEST(Profile, ComplaintsNameTheField) {
  const struct {
    const char* part;
    const char* instead;
    const char* expected;
  } cases[] = {
      {"\"model\": \"Test\",", "", "lacks the field \"model\""},
      {"\"Test\"", "\"\"", "small:.model is empty"},
      {"\"Test\"", "\"a\\nb\"", "small:.model is empty or not one line"},
      {"\"model\"", "\"modell\"", ".modell is no known field"},
      {"CMD:ZIRK;", "CMD:ZIRKX;", ".device_id is not a device ID"},
      {"MDL:Test;", "MDL:Test", ".device_id is not a device ID"},
      {"iso_a4_210x297mm", "iso_a4", ".sizes[0].keyword is \"iso_a4\""},
      {"\"zirk\"", "\"zork\"", ".sizes[0].in is \"zork\", not one of zirk,vrx,tolm"},
      {"4761", "4700", ".sizes[0].border and its margins do not make the whole paper"},
      {"[4761, 6816]", "[0, 6816]", ".sizes[0].border.area is empty"},
      {"[4761, 6816]", "[4761]", ".sizes[0].border.area does not hold 2 numbers"},
      {"4761", "-4761", ".sizes[0].border.area[0] is not a number from 0"},
      {"4761", "4761.5", ".sizes[0].border.area[0] is not a number from 0"},
      {"\"border\"", "\"duplex\"", ".sizes[0] has neither"},
      {"[\"OFF\"]", "[]", ".types[0] allows neither borderless"},
      {"[\"OFF\"]", "[\"OFF\",\"OFF\"]", ".types[0].borderless[1] is listed twice"},
      {"[\"color\"]", "[\"colour\"]", ".types[0].color[0] is \"colour\""},
      {"\"sheets\": 3", "\"sheets\": 11", ".bins[0].sheets is not a number from 0 to 10"},
      {"\"size\": \"iso_a4_210x297mm\"", "\"size\": \"iso_a5_148x210mm\"",
       ".bins[0].size is not one of the printer's"},
      {"\"type\": \"stationery\"", "\"type\": \"photographic\"", ".bins[0].type is neither"},
      {"\"level\": 50", "\"level\": 101", ".inks[0].level is not a number from 0 to 100"},
      {"\"AC\"", "\"XX\"", ".inks[0].tca is \"XX\""},
      {"\"panel\": \"custom-media-type-vaslo-37\"", "\"panel\": \"stationery\"",
       ".media_maps[0].panel"},
      {"\"back\": \"stationery\"", "\"back\": \"photographic\"",
       ".media_maps[0].back is not one of"},
      {"[100, 200]", "[100, 65536]", ".pixels.most[1] is not a number from 0 to 65535"},
      {"[\"PWGRaster\"]", "[\"TIFF\"]", ".print.formats[0] is \"TIFF\""},
      {"\"date_time\": true", "\"date_time\": \"yes\"",
       ".print.date_time is neither true nor false"},
      {"\"date_time\": true}", "\"date_time\": true", "The profile small is not JSON"},
  };
  for (const auto& test : cases) {
    EXPECT_NE(complaint(small_with(test.part, test.instead)).find(test.expected), std::string::npos)
        << complaint(small_with(test.part, test.instead)) << "\nexpected: " << test.expected;
  }
  EXPECT_NE(complaint("[]").find("is not an object"), std::string::npos);
  EXPECT_NE(complaint(std::string(100'000, '[')).find("is not JSON"), std::string::npos);
}

TEST(Profile, ListsHaveLimits) {
  const std::string bin = R"({"capacity": 1},)";
  std::string bins;
  for (int i = 0; i < 7; ++i) bins += bin;
  EXPECT_NE(complaint(small_with("\"bins\": [", "\"bins\": [" + bins)).find("1 to 7 bins"),
            std::string::npos);
  const std::string ink = R"({"color": "black", "level": 1, "tca": "AC"},)";
  EXPECT_NE(
      complaint(small_with("\"inks\": [", "\"inks\": [" + ink)).find(".inks[1] is there twice"),
      std::string::npos);
}

TEST(Profile, ComesFromAFile) {
  const Folder folder;
  const auto path = folder.path() / "small.json";
  std::ofstream(path) << kSmall;
  EXPECT_EQ(profile_from_file(path).model, "Test");
  std::ofstream(path) << std::string(2 << 20, ' ');
  EXPECT_THROW(static_cast<void>(profile_from_file(path)), std::runtime_error);
  EXPECT_THROW(static_cast<void>(profile_from_file(folder.path() / "none")), std::runtime_error);
  EXPECT_THROW(static_cast<void>(profile_from_file(folder.path())), std::runtime_error);
}

}  // namespace

}  // namespace pxcl::printer
