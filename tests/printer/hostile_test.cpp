// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Requests that are no commands, or are made to do harm, are answered and change nothing.

#include <iterator>
#include <thread>

#include "dialogue.hpp"

namespace pxcl::printer {

namespace {

std::string repeated(std::string_view text, std::size_t times) {
  std::string all;
  for (std::size_t i = 0; i < times; ++i) all += text;
  return all;
}

constexpr std::string_view kDeclaration = R"(<?xml version="1.0" encoding="utf-8" ?>)";

// A good document with one part replaced.
std::string with(std::string_view part, std::string_view instead) {
  return printer::with(start(), part, instead);
}

struct Case {
  const char* name;
  std::string request;
};

std::vector<Case> cases() {
  const std::string huge(std::size_t{100} << 20, 'x');
  return {
      {"Empty", ""},
      {"Text", "hello"},
      {"Zeros", std::string(1000, '\0')},
      {"AHundredMegabytes", huge},
      {"NoEnd", start().substr(0, start().size() - 1)},
      {"EndBehindTheLimit", "<cmd>" + std::string(std::size_t{1} << 20, ' ') + "</cmd>"},
      {"EndInASection", "<cmd><![CDATA[</cmd>]]>"},
      {"EndInAComment", "<cmd><!-- </cmd> -->"},
      {"OpenSection", "<cmd><![CDATA[</cmd>"},
      {"OnlyTheEnd", "</cmd>"},
      {"DeepNesting", "<cmd>" + repeated("<a>", 2000) + repeated("</a>", 2000) + "</cmd>"},
      {"DeepParameter", with(">0</zirk:bidi>", ">" + repeated("<zirk:a>", 6) +
                                                   repeated("</zirk:a>", 6) + "</zirk:bidi>")},
      {"DeepAndOpen", repeated("<cmd>", 3000) + "</cmd>"},
      {"ManyAttributes", "<cmd " + repeated("a='' ", 3000) + "/></cmd>"},
      {"EntityBomb", R"(<!DOCTYPE cmd [<!ENTITY a "aa"><!ENTITY b "&a;&a;">]><cmd>&b;</cmd>)"},
      {"DocumentType", "<!DOCTYPE cmd>" + start()},
      {"TagsCrossed", with("</zirk:bidi>", "</zirk:bidy>")},
      {"TwoRoots", start().insert(kDeclaration.size(), "<cmd/>")},
      {"AnotherRoot", "<command></command></cmd>"},
      {"RootInANamespace", "<cmd xmlns=\"" + std::string(glb_NameSpace[0]) + "\"></cmd>"},
      {"RootWithAttribute", with("<cmd ", "<cmd a=\"1\" ")},
      {"PrefixNotDeclared", with("xmlns:zirk=", "xmlns:zork=")},
      {"NamespaceOfOthers", with("/ns/cmd/2008/07/common/", "/ns/cmd/2008/07/common")},
      {"OperationOutsideOfTheNamespace", with("<zirk:operation>", "<operation>")},
      {"BareAmpersand", with("a letter", "]]>&<![CDATA[")},
      {"EntityUnknown", with(">0</zirk:bidi>", ">&zero;</zirk:bidi>")},
      {"NumberWithoutDigits", with(">0</zirk:bidi>", ">&#x;</zirk:bidi>")},
      {"NumberWithoutEnd", with(">0</zirk:bidi>", ">&#48</zirk:bidi>")},
      {"ContentsMissing", "<cmd></cmd>"},
      {"ReferenceInAttribute", with("servicetype=\"print\"", "servicetype=\"&print;\"")},
      {"TagInAttribute", with("servicetype=\"print\"", "servicetype=\"<print>\"")},
      {"AttributeTwice",
       with("servicetype=\"print\"", "servicetype=\"print\" servicetype=\"scan\"")},
      {"NoService", with(" servicetype=\"print\"", "")},
      {"NoOperation", with("<zirk:operation>StartJob</zirk:operation>", "")},
      {"OperationOfMarkup", with(">StartJob<", ">&lt;StartJob<")},
      {"OperationOfMegabytes", with(">StartJob<", ">" + std::string(10'000, 'A') + "<")},
      {"TextBesideElements", with("<zirk:bidi>", "x<zirk:bidi>")},
      {"SectionEndInText", with(">0</zirk:bidi>", ">]]></zirk:bidi>")},
      {"BrokenUtf8", with("a letter", "a \xC3(letter")},
      {"OverlongUtf8", with("a letter", "a \xC0\xBCletter")},
      {"HalfASurrogate", with("a letter", "\xED\xA0\x80")},
      {"ControlCharacter", with("a letter", "a\x1B letter")},
  };
}

class NoCommands : public testing::TestWithParam<Case> {};

INSTANTIATE_TEST_SUITE_P(Hostile, NoCommands, testing::ValuesIn(cases()),
                         [](const auto& test) { return test.param.name; });

TEST_P(NoCommands, AreToldSo) {
  Dialogue dialogue("photo");
  const Answer answer = dialogue.printer.answer(GetParam().request);
  EXPECT_EQ(answer.kind, Answer::Kind::kReply);
  EXPECT_TRUE(answer.bad_request) << answer.bytes.substr(0, 500);
  EXPECT_FALSE(answer.bytes.empty());
  EXPECT_LT(answer.bytes.size(), 200U);
  EXPECT_TRUE(dialogue.printer.is_idle());
}

TEST(Hostile, TheLogIsBounded) {
  Dialogue dialogue("photo");
  for (int i = 0; i < 3000; ++i) static_cast<void>(dialogue.printer.answer("x"));
  EXPECT_EQ(dialogue.printer.log().size(), 1000U);
}

TEST(Hostile, ManyThreadsAtOnce) {
  Dialogue dialogue("photo");
  std::vector<int> started(4);
  std::vector<std::jthread> threads;
  for (int& count : started) {
    threads.emplace_back([&dialogue, &count] {
      for (int i = 0; i < 50; ++i) {
        if (outcome(dialogue.printer.answer(start()).bytes) != "OK") continue;
        ++count;
        EXPECT_FALSE(dialogue.printer.is_idle());
        EXPECT_EQ(outcome(dialogue.printer.answer(end()).bytes), "OK");
      }
    });
  }
  threads.clear();
  EXPECT_GT(started[0] + started[1] + started[2] + started[3], 0);
  EXPECT_TRUE(dialogue.printer.is_idle());
}

// The page's data is kept in a file that is gone with the job.
TEST(Hostile, NoFileIsLeftBehind) {
  const Folder folder;
  ::setenv("TMPDIR", folder.path().c_str(), 1);
  {
    VirtualPrinter printer(profile_named("photo"), folder.path() / "output");
    const std::string offer =
        printer.answer(built_for(CLSS_MakeCommand_GetCapability, kPrint)).bytes;
    for (const std::string& request : {start(), configure(offer, {2, 9, 12, 1, 1, kUnknown}),
                                       page(kLastPage), send(raster_page())}) {
      EXPECT_EQ(outcome(printer.answer(request).bytes), "OK");
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2);
  }
  ::unsetenv("TMPDIR");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

}  // namespace

}  // namespace pxcl::printer
