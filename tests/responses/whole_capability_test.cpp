// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The calls that decode every size or type at once, held against those that decode one.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>

#include "../keyed/reply.hpp"
#include "keyed/paths.hpp"
#include "responses.h"
#include "responses/capability.hpp"
#include "support.hpp"

namespace {

// Random replies: the elements of a few sizes and types, well-formed or not, in any order.
class Capabilities {
 public:
  explicit Capabilities(unsigned seed) : random_(seed) {}

  std::string next() {
    const int wildness = below(3);
    std::vector<std::string> elements;
    for (const char* list : {"papersize", "papertype", "stapleside"}) {
      for (int i = below(4); i > 0; --i) elements.push_back(element(list, "", keywords(list)));
    }
    for (int i = below(40); i > 0; --i) {
      const bool size = below(2) != 0;
      const char* list = size ? "papersize" : "papertype";
      const std::string name = pick(size ? kSizeElements : kTypeElements);
      elements.push_back(element(name, attribute(list, wildness), value(name, wildness)));
    }
    std::shuffle(elements.begin(), elements.end(), random_);
    std::string all;
    for (const std::string& text : elements) all += text;
    std::string text = reply(all, chance(20) ? "NG" : "OK");
    const std::string second = " xmlns:q=\"http://www.example.com/ns/cmd/2010/05/vaslo/\"";
    if (chance(4)) {  // from some element on
      text.insert(std::min(text.find("printarea_border ") + 16, text.find("print\">") + 6), second);
    } else if (!chance(3)) {
      text.insert(text.find("<cmd") + 4, second);
    }
    if (wildness == 2 && chance(4)) {
      text.insert(text.find("<cmd"),
                  pick({"iso_a4_210x297mm,auto", "iso_a4_210x297mm<!-- -->auto"}));
    }
    return text;
  }

 private:
  using Names = std::vector<const char*>;
  static inline const Names kSizeElements = {"printarea_border",  "printarea_borderless",
                                             "printarea_duplex",  "margin_border",
                                             "margin_borderless", "margin_duplex"};
  static inline const Names kTypeElements = {"borderlessprint", "printcolormode", "duplexprint"};

  int below(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }
  bool chance(int oneIn) { return below(oneIn) == 0; }
  std::string pick(const Names& names) {
    return names[static_cast<std::size_t>(below(static_cast<int>(names.size())))];
  }

  std::string keyword(const std::string& list) {
    if (list == "papersize")
      return pick({"iso_a4_210x297mm", "iso_a5_148x210mm", "na_5x7_5x7in", "napkin"});
    if (list == "papertype") return pick({"stationery", "photographic", "auto", "Auto"});
    return pick({"longside", "shortside"});
  }
  std::string keywords(const std::string& list) {
    std::string text;
    for (int i = below(5); i > 0; --i) text += keyword(list) + pick({",", ", ", ",,", " ,\n"});
    return text;
  }

  static std::string filled(std::string text, const std::string& part, const std::string& value) {
    const std::size_t at = text.find(part);
    return at == text.npos ? text : text.replace(at, part.size(), value);
  }

  std::string attribute(const std::string& name, int wildness) {
    std::string form = "NAME=\"WORD\"";
    if (wildness != 0 && chance(3)) {
      form = pick({"NAME=\"q:WORD\"", "NAME=\":WORD\"", "NAME=\"zirk:WORD\"", "NAME=\"\tWORD \"",
                   "NAME=\"WORD\" note=\"x\"", "xmlns:z=\"urn:x\" NAME=\"WORD\"",
                   "vrx:NAME=\"WORD\"", "a/b=\"1\" NAME=\"WORD\"", "NAME='x' \"WORD\"",
                   wildness == 2 ? "a\"=\"1\" NAME=\"WORD\"" : "NAME=\"WORD\""});
    }
    return " " + filled(filled(form, "NAME", name), "WORD", keyword(name));
  }

  std::string value(const std::string& name, int wildness) {
    if (std::find(kTypeElements.begin(), kTypeElements.end(), name) != kTypeElements.end()) {
      return pick({"OFF", "ON,OFF", "ON", "color", "coldblack,color,sepia",
                   "color,color,color,color,color", " ", ""});
    }
    std::string numbers = std::to_string(below(9000));
    int count = name.starts_with("margin") ? 4 : 2;
    if (wildness != 0 && chance(8)) count += below(3) - 1;
    for (int i = 1; i < count; ++i) numbers += "," + std::to_string(below(9000));
    if (wildness == 0 || !chance(3)) return numbers;
    const std::string form =
        pick({"<![CDATA[N]]>", "<!-- note -->N<b/>7,7",
              "<c><b papersize=\"iso_a4_210x297mm\">1</b></c> N ", "<b/>", " , N,", ""});
    return filled(form, "N", numbers);
  }

  std::string element(const std::string& name, const std::string& attributes,
                      const std::string& text) {
    const std::string tag = pick({"zirk:", "zirk:", "vrx:", "tolm:"}) + name;
    if (text.empty() && chance(2)) return "<" + tag + attributes + (chance(2) ? "/>" : " />");
    return "<" + tag + attributes + ">" + text + "</" + tag + ">\n";
  }

  std::mt19937 random_;
};

template <typename Record>
struct Calls {
  int32_t (*one)(const char*, uint64_t, int32_t*, Record*);
  int32_t (*all)(const char*, uint64_t, Record*, int32_t*);
};

template <typename Record>
Record blank(uint16_t version = 3) {
  Record record;
  std::memset(&record, 0xEE, sizeof record);
  record.version = version;
  return record;
}

// What the call that decodes all has to give, by the call that decodes one: status, count, records.
template <typename Record>
std::pair<int, std::vector<Record>> by_index(const Calls<Record>& calls, const std::string& text,
                                             std::vector<Record> records) {
  int32_t index = -1;
  const int status = calls.one(text.data(), text.size(), &index, nullptr);
  if (status != 0) return {status, {}};
  records.resize(std::min(records.size(), static_cast<std::size_t>(index)));
  for (index = 0; index < static_cast<int32_t>(records.size()); ++index) {
    Record& record = records[static_cast<std::size_t>(index)];
    const int result = calls.one(text.data(), text.size(), &index, &record);
    if (result == 0) continue;
    records.resize(static_cast<std::size_t>(index));
    return {result, records};
  }
  return {0, records};
}

// Returns the number of records that were compared.
template <typename Record>
int32_t compare(const Calls<Record>& calls, const std::string& text, std::vector<Record> records) {
  const pxcl_test::ExactBlock block(text);
  const auto [status, expected] = by_index(calls, text, records);
  int32_t count = static_cast<int32_t>(records.size());
  EXPECT_EQ(calls.all(block.data(), block.size(), records.data(), &count), status) << text;
  const bool refused =
      status == -5 || status == -6 || (status == -2 && expected.empty() && count != 0);
  if (refused) return 0;
  EXPECT_EQ(count, static_cast<int32_t>(expected.size())) << text;
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(std::memcmp(&records[i], &expected[i], sizeof(Record)), 0)
        << "record " << i << " of " << text;
  }
  int32_t entries = -1, index = -1;
  const int counted = calls.all(block.data(), block.size(), nullptr, &entries);
  EXPECT_EQ(counted, calls.one(text.data(), text.size(), &index, nullptr));
  EXPECT_EQ(entries, counted == 0 ? index : counted == -7 ? 0 : -1);
  return count;
}

const Calls<ClssPaperSize> kSizes = {CLSS_ParseCapabilityResponsePrint_PaperSize,
                                     PXCL_ParseCapabilityResponsePrint_PaperSizes};
const Calls<ClssMediaType> kTypes = {CLSS_ParseCapabilityResponsePrint_MediaType,
                                     PXCL_ParseCapabilityResponsePrint_MediaTypes};

TEST(WholeCapability, EqualsTheIndexedCallsOnRandomReplies) {
  Capabilities replies(20090518);
  int32_t sizes = 0, types = 0;
  for (std::size_t i = 0; i < 3000 && !HasFailure(); ++i) {
    const std::string text = replies.next();
    sizes += compare(kSizes, text, std::vector<ClssPaperSize>(24, blank<ClssPaperSize>()));
    types += compare(kTypes, text, std::vector<ClssMediaType>(1 + i % 4, blank<ClssMediaType>()));
  }
  EXPECT_GT(sizes, 2000);
  EXPECT_GT(types, 1000);
}

namespace path = pxcl::keyed::path;
constexpr path::ItemPaths kElements[] = {path::kPrintAreaBorder, path::kMarginBorderless,
                                         path::kMarginDuplex};
constexpr path::ItemPaths kTypeElements[] = {path::kBorderlessPrint, path::kDuplexPrint};
constexpr pxcl::responses::KeywordElements kAll[] = {
    {kElements, {glb_clssdicPaperSizeTbl, &CLSS_DICNUM_PAPERSIZE}},
    {kTypeElements, {glb_clssdicPaperTypeTbl, &CLSS_DICNUM_PAPERTYPE}}};

// Returns the number of texts found.
int compare_with_own_keys(const pxcl::responses::KeywordElements& elements,
                          const std::string& text) {
  std::vector<pxcl::xml::Key> keys(3 * elements.paths.size());
  std::vector<pxcl::xml::Answer> answers(keys.size());
  pxcl::responses::KeywordTexts texts;
  pxcl::responses::ask_for_elements(elements.paths, std::span(keys), 0);
  std::vector<pxcl::xml::Reader> readers(keys.size());
  EXPECT_TRUE(texts.attend(elements, readers));
  const int status = pxcl::xml::scan(text, 0, keys, answers, nullptr, readers.data());
  std::vector<std::string> paths;
  const pxcl::u16 rows = *elements.dictionary.rowCount;
  for (const auto& key : keys) {
    for (pxcl::u16 row = 1; row < rows; ++row) {
      const char* keyword = elements.dictionary.rows[row].keyword;
      paths.push_back(std::string(key.path) + "=\"" + (keyword == nullptr ? "" : keyword) + '"');
    }
  }
  std::vector<pxcl::xml::Key> own(paths.size());
  std::vector<pxcl::xml::Answer> expectations(own.size());
  for (std::size_t i = 0; i < own.size(); ++i) {
    own[i].path = paths[i];
    own[i].group = static_cast<pxcl::u32>(i);
  }
  EXPECT_EQ(pxcl::xml::scan(text, 0, own, expectations, nullptr), status);
  int found = 0;
  for (std::size_t i = 0; i < own.size(); ++i) {
    const std::size_t key = i / (rows - 1u), row = i % (rows - 1u) + 1;
    pxcl::responses::ElementTexts got;
    const auto nameSpace = static_cast<pxcl::u16>(key / elements.paths.size());
    texts.texts_of(text, {static_cast<pxcl::u32>(row), nameSpace, 0}, got);
    const std::string_view expected = pxcl::keyed::found_text(text, expectations[i]);
    const std::string_view value = got[key % elements.paths.size()];
    EXPECT_TRUE(value.size() == expected.size() &&
                (value.empty() || value.data() == expected.data()))
        << paths[i] << " in " << text;
    found += value.empty() ? 0 : 1;
  }
  return found;
}

TEST(WholeCapability, EveryElementIsWhatItsOwnKeyFinds) {
  Capabilities replies(19700101);
  int found = 0;
  for (int i = 0; i < 500 && !HasFailure(); ++i) {
    const std::string text = replies.next();
    for (const auto& elements : kAll) found += compare_with_own_keys(elements, text);
  }
  EXPECT_GT(found, 2000);
}

TEST(WholeCapability, Files) {
  for (const std::string& name : pxcl_test::list_data("replies")) {
    const std::string text = pxcl_test::read_data(name);
    compare(kSizes, text, std::vector<ClssPaperSize>(9, blank<ClssPaperSize>()));
    compare(kTypes, text, std::vector<ClssMediaType>(9, blank<ClssMediaType>()));
  }
}

TEST(WholeCapability, ARecordOfAnotherVersionEndsTheRun) {
  const std::string text = pxcl_test::read_data("replies/capability_small.xml");
  std::vector<ClssPaperSize> sizes(3, blank<ClssPaperSize>());
  sizes[1].version = 2;
  EXPECT_EQ(compare(kSizes, text, sizes), 1);
  std::vector<ClssMediaType> types(2, blank<ClssMediaType>());
  types[1].version = 0;
  EXPECT_EQ(compare(kTypes, text, types), 1);
}

}  // namespace
