// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Print settings completed from a capability reply of 100 KB: the library, which decodes every size
// and type on the way, against parsers whose users look up the one size and the one type that
// they want. All answers are compared before the clock starts.

#include <array>
#include <charconv>
#include <string>
#include <string_view>

#include "device.h"
#include "dictionaries.h"
#include "documents.hpp"
#include "finder.hpp"
#include "harness.hpp"

namespace {

using std::string_view;

constexpr uint16_t kUnset = 65535;
constexpr uint16_t kSize = 4;   // iso_a4_210x297mm
constexpr uint16_t kType = 12;  // photographic
constexpr ClssPrintSettings kWanted = {2, kSize, kType, kUnset, kUnset, 3};

using Answer = std::array<uint16_t, 3>;  // borderless, colour mode, duplex

const std::string& reply() {
  static const std::string document = pxcl_bench::capability_reply(100'000);
  return document;
}

Answer library() {
  ClssPrintSettings settings = kWanted;
  if (CLSS_AutoMakeOtherPrintSettings(0, reply().data(), reply().size(), &settings) != 0) return {};
  return {settings.borderless, settings.colorMode, settings.duplexPrint};
}

// ---- The peers ----

bool lists(string_view values, string_view wanted) {
  while (!values.empty()) {
    const std::size_t comma = values.find(',');
    if (values.substr(0, comma) == wanted) return true;
    if (comma == string_view::npos) return false;
    values.remove_prefix(comma + 1);
  }
  return false;
}

bool has_area(string_view values) {
  const std::size_t comma = values.find(',');
  if (comma == string_view::npos) return false;
  unsigned width = 0, height = 0;
  std::from_chars(values.data(), values.data() + comma, width);
  std::from_chars(values.data() + comma + 1, values.data() + values.size(), height);
  return width != 0 && height != 0;
}

// What the reply says about the size and the type that are wanted.
struct Facts {
  string_view border, borderless, duplexArea, kinds, colors, duplex, stapleSides;
};

Answer choose(const Facts& facts) {
  Answer answer = {kUnset, kUnset, kUnset};
  if (has_area(facts.borderless) && lists(facts.kinds, "ON"))
    answer[0] = 2;
  else if (has_area(facts.border) && lists(facts.kinds, "OFF"))
    answer[0] = 1;
  constexpr std::array kColors = {"color", "monochrome", "warmblack", "coldblack"};
  for (uint16_t row = 0; row < kColors.size() && answer[1] == kUnset; ++row)
    if (lists(facts.colors, kColors[row])) answer[1] = static_cast<uint16_t>(row + 1);
  const bool on = lists(facts.duplex, "ON") && lists(facts.stapleSides, "longside");
  if (on && has_area(facts.duplexArea))
    answer[2] = 3;
  else if (!facts.duplex.empty())
    answer[2] = 1;
  return answer;
}

// Everything that may matter, in the order of the paths: a list, or an element of the wanted size or
// type, is found under one of three namespaces.
constexpr std::array kSpaces = {"zirk:", "vrx:", "tolm:"};
constexpr std::array kSizeElements = {"printarea_border", "printarea_borderless",
                                      "printarea_duplex"};
constexpr std::array kTypeElements = {"borderlessprint", "printcolormode", "duplexprint"};
enum Path : uint32_t {
  kOperation,
  kResponse,
  kStapleSide,
  kSizeLists,
  kSizeFacts = kSizeLists + 3,
  kTypeLists = kSizeFacts + 9,
  kTypeFacts = kTypeLists + 3,
  kPathCount = kTypeFacts + 9,
};

const char* size_keyword() {
  return glb_clssdicPaperSizeTbl[kSize].keyword;
}
const char* type_keyword() {
  return glb_clssdicPaperTypeTbl[kType].keyword;
}

std::vector<std::string> paths() {
  const std::string contents = "cmd/zirk:contents/";
  const std::string print = contents + "zirk:param_set servicetype=\"print\"/";
  std::vector<std::string> all = {contents + "zirk:operation", print + "zirk:response",
                                  print + "zirk:stapleside"};
  const auto add = [&](const std::string& list, const auto& elements, const char* keyword) {
    for (const char* space : kSpaces) all.push_back(print + space + list);
    for (const char* element : elements) {
      for (const char* space : kSpaces)
        all.push_back(print + space + element + " " + list + "=\"" + keyword + "\"");
    }
  };
  add("papersize", kSizeElements, size_keyword());
  add("papertype", kTypeElements, type_keyword());
  return all;
}

Answer complete(const pxcl_bench::Values& values) {
  std::array<string_view, kPathCount> found;
  for (const pxcl_bench::Value& value : values) found[value.path] = value.text;
  if (found[kOperation] != "GetCapabilityResponse" || found[kResponse] != "OK") return {};
  uint32_t size = 0, type = 0;  // the namespaces
  while (size < kSpaces.size() && !lists(found[kSizeLists + size], size_keyword())) ++size;
  while (type < kSpaces.size() && !lists(found[kTypeLists + type], type_keyword())) ++type;
  if (size == kSpaces.size() || type == kSpaces.size()) return {};
  const string_view* sizes = &found[kSizeFacts + size];
  const string_view* types = &found[kTypeFacts + type];
  return choose({sizes[0], sizes[3], sizes[6], types[0], types[3], types[6], found[kStapleSide]});
}

}  // namespace

void pxcl_bench::add_rows() {
  const Answer expected = {2, 1, 3};
  const Task task = {"settings", "print settings completed", reply().size()};
  if (library() != expected) fail("settings: another answer than expected");
  add_row(task, "pxcl", [] { return [] { benchmark::DoNotOptimize(library()); }; });
  for_each_finder(paths(), kNoneKeyed, [&](const char* who, const auto& finder) {
    if (complete(finder->read(reply())) != expected)
      fail(std::string("settings: ") + who + " answers something else");
    add_row(task, who, [finder] {
      return [finder] { benchmark::DoNotOptimize(complete(finder->read(reply()))); };
    });
  });
}
