// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "client/text.hpp"

#include <gtest/gtest.h>
#include <pxcl.h>

#include <pugixml.hpp>

#include "client/build.hpp"

namespace pxcl::client {
namespace {

constexpr char kJob[] = "00000042";

struct Row {
  std::string title;
  std::string expected;  // of the description, behind the job ID
};

const Row kTitles[] = {
    {"", ""},
    {"quarterly report", " quarterly report"},
    {"a]]>b", " a]] b"},
    {"]]>]]>", " ]] ]] "},
    {"]]]]>>", " ]]]] >"},
    {"]]&gt;", " ]]&gt;"},
    {"</zirk:job_description><x a=\"'\">&amp;", " </zirk:job_description><x a=\"'\">&amp;"},
    {"<![CDATA[x]]>", " <![CDATA[x]] "},
    {"one\r\ntwo\ttab\x1B[2J\x7F", " one  two tab [2J "},
    {std::string("nul\0nul", 7), " nul nul"},
    {"next\xC2\x85line\xE2\x80\xA8sep", " next line sep"},
    {"\xEF\xBF\xBE", "  "},
    // Broken: a lone byte, a lead at the end, overlong "/", a surrogate, beyond U+10FFFF, a sequence cut short.
    {"a\x80z", " a\xEF\xBF\xBDz"},
    {"a\xC3", " a\xEF\xBF\xBD"},
    {"\xC0\xAFx", " \xEF\xBF\xBD\xEF\xBF\xBDx"},
    {"\xE0\x80\xAFx", " \xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBDx"},
    {"\xED\xA0\x80x", " \xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBDx"},
    {"\xF4\x90\x80\x80x", " \xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBDx"},
    {"\xE2\x82x", " \xEF\xBF\xBDx"},
    {"\xF0\x9F\x96\xA8 \xE4\xBD\xA0", " \xF0\x9F\x96\xA8 \xE4\xBD\xA0"},
    // 64 bytes hold 8 of the ID, a blank and 55 of the title.
    {std::string(100, 'x'), " " + std::string(55, 'x')},
    {std::string(54, 'x') + "\xC3\xA9", " " + std::string(54, 'x')},
    {std::string(53, 'x') + "\xC3\xA9", " " + std::string(53, 'x') + "\xC3\xA9"},
    {std::string(52, 'x') + "\xF0\x9F\x96\xA8", " " + std::string(52, 'x')},
    {std::string(54, 'x') + "\x80", " " + std::string(54, 'x')},
    {std::string(53, 'x') + "]]>", " " + std::string(53, 'x') + "]]"},
};

TEST(JobDescription, ReachesThePrinterAsGoodText) {
  for (const Row& row : kTitles) {
    SCOPED_TRACE(row.title);
    const std::string description = job_description(kJob, row.title);
    EXPECT_EQ(description, kJob + row.expected);
    const auto command =
        build_command([&](char* buffer, std::uint64_t size, std::uint64_t* length) {
          return CLSS_MakeCommand_StartJob3(0, 3, description.c_str(), 2, kJob, "0", buffer, size,
                                            length);
        });
    ASSERT_TRUE(command);
    pugi::xml_document document;
    ASSERT_TRUE(document.load_buffer(command.value().data(), command.value().size()));
    const pugi::xml_node set = document.child("cmd").child("zirk:contents").child("zirk:param_set");
    EXPECT_EQ(set.child("zirk:job_description").child_value(), description);
    EXPECT_STREQ(set.child("vrx:host_environment").child_value(), "linux");
    EXPECT_EQ(std::distance(set.begin(), set.end()), 8);
  }
}

TEST(JobDescription, IsNeverTooLongOrBroken) {
  for (int first = 0; first < 256; ++first) {
    for (std::size_t length = 40; length < 70; ++length) {
      const std::string description =
          job_description(kJob, std::string(length, static_cast<char>(first)));
      EXPECT_LE(description.size(), std::size_t{CLSS_JOB_DESCRIPTION_MAX});
      EXPECT_EQ(clean_line(description), description);
    }
  }
}

TEST(ElementText, IsEscapedAndCutAtWholeEscapes) {
  EXPECT_EQ(element_text("a<b>&\n\"c", 100), "a&lt;b&gt;&amp; \"c");
  EXPECT_EQ(element_text("a&b", 5), "a");
  EXPECT_EQ(element_text("a&b", 6), "a&amp;");
  EXPECT_EQ(element_text("a\xC3\xA9", 2), "a");
}

TEST(Cut, NeverDividesACharacter) {
  const std::string_view text = "\xC3\xA9\xE2\x82\xAC";
  EXPECT_EQ(cut(text, 5), text);
  for (std::size_t limit : {2U, 3U, 4U}) EXPECT_EQ(cut(text, limit), "\xC3\xA9");
  EXPECT_EQ(cut(text, 1), "");
}

}  // namespace
}  // namespace pxcl::client
