// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The comparison of engine.cpp on a document made of words, with paths to its own elements: what
// single bytes rarely come upon. The answers by a plan that the compiler made are compared, too. The
// first byte is the flags (below 32: any root), the second one what the root declares, each further one
// a word.

#include <iterator>

#include "engine_routes.hpp"
#include "fixed_plans.hpp"
#include "target.hpp"

namespace {

// kAttribute also stands for anything else in a tag that is open; every other word ends the tag, as
// far as it writes. kAgain repeats the element that was closed last, kAlike with other values; kMore
// lengthens the last path.
enum Kind { kOpen, kDeclare, kAttribute, kText, kClose, kAgain, kAlike, kAsk, kMore };

struct Word {
  Kind kind;
  const char* text;
  const char* asked = text;  // in a path: table prefixes, no declarations; kDeclare: row of the URI
};

// clang-format off
const Word kWords[] = {
  {kOpen, "b"}, {kOpen, "c"}, {kOpen, "zirk:b"}, {kOpen, "p:b", "zirk:b"}, {kOpen, "zi:b"},
  {kOpen, "q:item_of_many", "vrx:item_of_many"}, {kOpen, "zirk:a_rather_long_name_here"}, {kOpen, "vrx:b"},
  {kOpen, "vrx:b:c"}, {kOpen, "b-c.d"}, {kOpen, "b/c"}, {kOpen, "p:b", "ikw:b"},
  {kDeclare, "xmlns:p", "0"}, {kDeclare, "xmlns:zirk", "0"}, {kDeclare, "xmlns:zirk", "3"},
  {kDeclare, "xmlns:zirk", "4"}, {kDeclare, "xmlns:q", "1"}, {kDeclare, "xmlns:p", "3"},
  {kDeclare, "xmlns:zi", "2"}, {kDeclare, "xmlns", "0"}, {kDeclare, "xmlns:vrx", "0"},
  {kDeclare, "xmlns:\"p", "1"},
  {kAttribute, " k=\"v\""}, {kAttribute, " l=\"w\""}, {kAttribute, " k=\"v\"", " k"}, {kAttribute, " k=\"w\""},
  {kAttribute, " zirk:k=\"v\""}, {kAttribute, " zirk:k=\"v\"", " ikw:k=\"v\""},
  {kAttribute, " p:k=\"v\"", " zirk:k=\"v\""}, {kAttribute, " k=\"p:x\"", " k=\"ikw:x\""},
  {kAttribute, " k=\"ikw:x\""}, {kAttribute, " k=\":x\""}, {kAttribute, " =k=\"v\"", " k=\"v\""},
  {kAttribute, " k==\"v\""}, {kAttribute, " k=\"\""}, {kAttribute, " k=\" v \"", " k=\"v\""},
  {kAttribute, " k=\"v \"", " k=\"v\""}, {kAttribute, " k='v'"}, {kAttribute, " k=\"value-of.more,than 16/x\""},
  {kAttribute, " physicalinputbin=\"a value that has thirty-two and more bytes\""}, {kAttribute, " k=\"v/w\""},
  {kAttribute, " k=\"v>w\""}, {kAttribute, " k=\"<\""}, {kAttribute, "k=\"v\""}, {kAttribute, " xk=\"v\""},
  {kAttribute, " k-l.m=\"v\""}, {kAttribute, " "}, {kAttribute, "\t", ""}, {kAttribute, "\""},
  {kAttribute, "'"}, {kAttribute, "="}, {kAttribute, "/"}, {kAttribute, ":"}, {kAttribute, "k"},
  {kText, ""}, {kText, "t"}, {kText, " t "}, {kText, "\n"}, {kText, "a > b"},
  {kText, "a longer text, 1/2 \"of\" a line's length"}, {kText, "<!-- x -->"}, {kText, "<!-- <b> -->"},
  {kText, "<![CDATA[x]]>"}, {kText, "<![CDATA[]]>"}, {kText, "<![CDATA[</b>]]>"}, {kText, "<!b>"},
  {kText, "<?b k?>"}, {kText, "<"}, {kText, "</b>"},
  {kClose, ""}, {kClose, ""}, {kClose, ""}, {kClose, " "}, {kClose, "/"}, {kAgain, ""}, {kAgain, ""}, {kAlike, "w"},
  {kAlike, "a value that has thirty-two and more bytes"}, {kAlike, "ikw:x"}, {kAlike, ""},
  {kAsk, ""}, {kAsk, ""}, {kAsk, "="}, {kAsk, " "}, {kMore, " k"}, {kMore, " k=\"v\""}, {kMore, " l=\"w\""},
  {kMore, " zirk:k"}, {kMore, "/"}, {kMore, "/b"}, {kMore, "/zirk:b"}, {kMore, "/zirk:item_of_many k"},
  {kMore, "  l"}, {kMore, "x"}, {kMore, " ="}, {kMore, "\""},
};
// clang-format on

struct Element {
  std::string name, asked;
  std::size_t begin;
};

struct Writer {
  void end_tag() {
    if (inTag) document += '>';
    inTag = false;
  }

  void open(const Word& word) {
    end_tag();
    elements.push_back({word.text, word.asked, document.size()});
    document += std::string("<") + word.text;
    inTag = true;
  }

  // The first elements are asked for even if no word says so.
  void close(const std::string& word) {
    constexpr std::size_t kFewPaths = 2;
    if (paths.size() < kFewPaths && elements.size() > 1) ask("");
    if (!inTag || word != "/") end_tag();
    document += inTag ? "/>" : "</" + elements.back().name + word + ">";
    inTag = false;
    last = document.substr(elements.back().begin);
    elements.pop_back();
  }

  // The path to the innermost element; the word is where its last name or attribute ends.
  void ask(const std::string& word) {
    paths.push_back(elements.front().asked);
    for (std::size_t i = 1; i < elements.size(); ++i) paths.back() += "/" + elements[i].asked;
    const std::size_t begin = paths.back().size() - elements.back().asked.size();
    if (!word.empty()) paths.back() = paths.back().substr(0, paths.back().find(word, begin));
  }

  // The element that was closed last, with this in place of each "v" and "t".
  void repeat_with(const std::string& value) {
    for (const char byte : last) {
      if (byte == 'v' || byte == 't') {
        document += value;
      } else {
        document += byte;
      }
    }
  }

  // A row of clNsTable, the one behind them for a foreign URI: without a colon, as plain values are.
  // Beyond no declaration.
  void declare(const std::string& name, int row) {
    constexpr int kForeign = std::size(clNsTable) - 1;
    if (row > kForeign) return;
    document += " " + name + "=\"" + (row < kForeign ? clNsTable[row].uri : "elsewhere") + "\"";
  }

  void take(const Word& word) {
    constexpr std::size_t kMostRepeated = 256;
    if (word.kind == kText || word.kind == kAgain || word.kind == kAlike) end_tag();
    if (word.kind == kText || word.kind == kAttribute) document += word.text;
    if (word.kind == kAttribute && inTag) elements.back().asked += word.asked;
    if (word.kind == kOpen) open(word);
    if (word.kind == kDeclare) declare(word.text, *word.asked - '0');
    if (word.kind == kClose && elements.size() > 1) close(word.text);
    if (word.kind == kAgain && last.size() < kMostRepeated) document += last;
    if (word.kind == kAlike && last.size() < kMostRepeated) repeat_with(word.text);
    if (word.kind == kAsk) ask(word.text);
    if (word.kind == kMore && !paths.empty()) paths.back() += word.text;
  }

  std::string document = "<?xml ?><cmd", last;
  std::vector<Element> elements = {{"cmd", "cmd", 0}};
  std::vector<std::string> paths;
  bool inTag = true;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  Writer writer;
  writer.declare("xmlns:p", data[1] / 8 % 8);
  writer.declare("xmlns:zirk", data[1] % 8);
  for (std::size_t i = 2; i < size; ++i) writer.take(kWords[data[i] % std::size(kWords)]);
  if (writer.paths.empty()) writer.ask("");
  while (!writer.elements.empty()) writer.close("");
  const std::uint32_t flags = data[0] < 32 ? CL_XML_COM_FLAG : 0;
  pxcl_test::require_agreement({flags, writer.paths, 0, writer.document});
  pxcl::fuzz::require(pxcl_test::answers_of_fixed_plan(writer.document) ==
                      pxcl_test::answers_of_keys(writer.document));
  return 0;
}
