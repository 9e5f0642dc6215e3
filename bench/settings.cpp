// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Print settings completed from a capability reply of 100 KB: the library, which decodes every size
// and type on the way, against two parsers whose users look up the one size and the one type that
// they want. All answers are compared before the clock starts.

#include <benchmark/benchmark.h>

#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <pugixml.hpp>
#include <rapidxml/rapidxml.hpp>
#include <string>
#include <string_view>

#include "device.h"
#include "dictionaries.h"
#include "documents.hpp"

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

// ---- The peers: a walk over the elements of the print block ----

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

template <typename Dom>
typename Dom::Node find_list(typename Dom::Node block, string_view name, const char* keyword) {
  for (auto node = Dom::first(block); node; node = Dom::next(node)) {
    const string_view qualified = Dom::name(node);
    if (qualified.ends_with(name) && qualified[qualified.size() - name.size() - 1] == ':' &&
        lists(Dom::text(node), keyword))
      return node;
  }
  return {};
}

template <typename Dom>
Answer complete(typename Dom::Node document) {
  const auto contents = Dom::child(Dom::child(document, "cmd"), "zirk:contents");
  const auto block = Dom::child(contents, "zirk:param_set");
  if (Dom::text(Dom::child(contents, "zirk:operation")) != "GetCapabilityResponse" ||
      Dom::attribute(block, "servicetype") != "print" ||
      Dom::text(Dom::child(block, "zirk:response")) != "OK")
    return {};
  const char* size = glb_clssdicPaperSizeTbl[kSize].keyword;
  const char* type = glb_clssdicPaperTypeTbl[kType].keyword;
  const auto sizes = find_list<Dom>(block, "papersize", size);
  const auto types = find_list<Dom>(block, "papertype", type);
  if (!sizes || !types) return {};
  const string_view sizeName = Dom::name(sizes), typeName = Dom::name(types);
  const string_view sizeSpace = sizeName.substr(0, sizeName.find(':') + 1);
  const string_view typeSpace = typeName.substr(0, typeName.find(':') + 1);

  Facts facts;
  const struct {
    string_view space, name, attribute, keyword;
    string_view* fact;
  } wanted[] = {{sizeSpace, "printarea_border", "papersize", size, &facts.border},
                {sizeSpace, "printarea_borderless", "papersize", size, &facts.borderless},
                {sizeSpace, "printarea_duplex", "papersize", size, &facts.duplexArea},
                {typeSpace, "borderlessprint", "papertype", type, &facts.kinds},
                {typeSpace, "printcolormode", "papertype", type, &facts.colors},
                {typeSpace, "duplexprint", "papertype", type, &facts.duplex}};
  for (auto node = Dom::first(block); node; node = Dom::next(node)) {
    const string_view name = Dom::name(node);
    if (name == "zirk:stapleside") facts.stapleSides = Dom::text(node);
    for (const auto& one : wanted)
      if (name.size() == one.space.size() + one.name.size() && name.ends_with(one.name) &&
          name.starts_with(one.space) && Dom::attribute(node, one.attribute) == one.keyword)
        *one.fact = Dom::text(node);
  }
  return choose(facts);
}

struct RapidXml {
  using Node = const rapidxml::xml_node<>*;
  static Node first(Node node) { return node->first_node(); }
  static Node next(Node node) { return node->next_sibling(); }
  static Node child(Node node, string_view name) {
    return node->first_node(name.data(), name.size());
  }
  static string_view name(Node node) { return {node->name(), node->name_size()}; }
  static string_view text(Node node) { return {node->value(), node->value_size()}; }
  static string_view attribute(Node node, string_view name) {
    const auto* found = node->first_attribute(name.data(), name.size());
    return found ? string_view(found->value(), found->value_size()) : string_view();
  }
};

Answer rapidxml_walk() {
  static rapidxml::xml_document<> document;
  static std::string text = reply();
  document.clear();
  // Writes nothing into the text, so that it needs no copy.
  document.parse<rapidxml::parse_fastest | rapidxml::parse_non_destructive>(text.data());
  return complete<RapidXml>(&document);
}

struct PugiXml {
  using Node = pugi::xml_node;
  static Node first(Node node) { return node.first_child(); }
  static Node next(Node node) { return node.next_sibling(); }
  static Node child(Node node, string_view name) { return node.child(name.data()); }
  static string_view name(Node node) { return node.name(); }
  static string_view text(Node node) { return node.child_value(); }
  static string_view attribute(Node node, string_view name) {
    return node.attribute(name.data()).value();
  }
};

Answer pugixml_walk() {
  static pugi::xml_document document;
  static std::string text(reply().size(), '\0');
  std::memcpy(text.data(), reply().data(), text.size());
  document.load_buffer_inplace(text.data(), text.size(),
                               pugi::parse_minimal | pugi::parse_embed_pcdata, pugi::encoding_utf8);
  return complete<PugiXml>(document);
}

void measure(benchmark::State& state, Answer (*answer)()) {
  const Answer expected = {2, 1, 3};
  if (library() != expected || answer() != expected) {
    std::fprintf(stderr, "the answers differ\n");
    std::exit(1);
  }
  for (auto _ : state) benchmark::DoNotOptimize(answer());
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(reply().size()));
}

BENCHMARK_CAPTURE(measure, library, library)->Name("settings/library");
BENCHMARK_CAPTURE(measure, rapidxml, rapidxml_walk)->Name("settings/rapidxml");
BENCHMARK_CAPTURE(measure, pugixml, pugixml_walk)->Name("settings/pugixml");

}  // namespace
