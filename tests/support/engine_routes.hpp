// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The engine's two routes held against each other on one document and its paths: the plain one,
// written with the step functions, and the indexed one behind every entry point.

#pragma once

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "answers.hpp"
#include "clxml.h"
#include "xml/scan.hpp"
#include "xml/shapes.hpp"
#include "xml/steps.hpp"

namespace pxcl_test {

struct EngineCase {
  std::uint32_t flags = 0;         // 0 or CL_XML_COM_FLAG
  std::vector<std::string> paths;  // the first one is not empty
  std::size_t nullPath = 0;        // this one is handed over as a null pointer; 0: none
  std::string document;
};

// One flags byte (bit 0: any root; bit 1: null path; bit 2: a zero-length path more), path lines up
// to an empty one, the document.
inline EngineCase read_engine_case(std::string_view input) {
  EngineCase result;
  const int bits = input.empty() ? 0 : input.front();
  if (!input.empty()) input.remove_prefix(1);
  result.flags = (bits & 1) != 0 ? CL_XML_COM_FLAG : 0;
  while (!input.empty()) {
    const std::size_t end = std::min(input.find('\n'), input.size());
    const std::string_view line = input.substr(0, end);
    input.remove_prefix(std::min(end + 1, input.size()));
    if (line.empty()) break;
    result.paths.emplace_back(line);
  }
  if (result.paths.empty()) result.paths.emplace_back("cmd/a");
  if ((bits & 4) != 0) result.paths.emplace_back();
  const std::size_t later = result.paths.size() - 1;
  if ((bits & 2) != 0 && later != 0)
    result.nullPath = 1 + static_cast<unsigned>(bits >> 3 & 7) % later;
  result.document = input;
  return result;
}

// Texts as heap blocks of their exact size, so that a sanitizer sees one byte read too far.
class Texts {
 public:
  explicit Texts(const EngineCase& one)
      : document(copy(one.document)), length(one.document.size()) {
    for (const std::string& path : one.paths) {
      paths.push_back(copy(path));
      pathLengths.push_back(path.size());
    }
    if (one.nullPath != 0) paths[one.nullPath] = nullptr;
  }

  std::unique_ptr<char[]> document;
  std::uint64_t length;
  std::vector<std::unique_ptr<char[]>> paths;
  std::vector<std::uint64_t> pathLengths;

 private:
  static std::unique_ptr<char[]> copy(std::string_view text) {
    std::unique_ptr<char[]> block(new char[text.size()]);
    if (!text.empty()) std::memcpy(block.get(), text.data(), text.size());
    return block;
  }
};

// A request for all of the paths; Parameter is ClXmlParameter or ClXmlListParameter.
template <typename Parameter>
struct Request {
  explicit Request(const Texts& texts) : parameters(texts.paths.size()) {
    for (std::size_t i = 0; i < parameters.size(); ++i) {
      parameters[i].path = texts.paths[i].get();
      parameters[i].pathLength = texts.pathLengths[i];
    }
    record.document = texts.document.get();
    record.documentLength = texts.length;
    record.parameters = parameters.data();
    record.parameterCount = static_cast<std::uint32_t>(parameters.size());
  }
  ~Request() {
    if constexpr (std::is_same_v<Parameter, ClXmlListParameter>)
      ClXmlRequestParameterListFree(&record);
  }

  std::vector<Parameter> parameters;
  ClXmlRequest record = {};
};

// --- What came out, as text ----------------------------------------------------------------------

inline std::string describe(const ClXmlParserData& data, std::int32_t result) {
  std::ostringstream out;
  out << "result " << result << " stop " << data.document->stopPosition << " serial " << data.serial
      << " path " << (data.currentPath == nullptr ? "freed" : "kept") << '\n';
  for (int i = 0; i < 4; ++i) {
    const ClXmlNameSpaceEntry& row = data.nameSpaceTable[i];
    if (row.declaredPrefix == nullptr) continue;
    out << "row " << i << " prefix at " << row.declaredPrefix - data.document->text << '+'
        << row.declaredPrefixLength << '\n';
  }
  for (std::uint32_t i = 0; i < data.targetCount; ++i) {
    const ClXmlTarget& target = data.targets[i];
    out << "target " << i << " kind " << target.kind << " status " << target.status << ':';
    for (std::uint32_t k = 0; k < target.matchCount; ++k) {
      const ClXmlMatch& match = target.matches[k];
      out << " {#" << match.serial << ' ' << match.offset << '+' << match.length << ' '
          << match.status << '}';
    }
    out << '\n';
  }
  return out.str();
}

inline std::string describe(const Request<ClXmlParameter>& request, std::int32_t result) {
  std::ostringstream out;
  out << "result " << result << " stop " << request.record.stopPosition << '\n';
  for (const ClXmlParameter& parameter : request.parameters) {
    out << parameter.status << ' ' << parameter.valueOffset << '+' << parameter.valueLength << '\n';
  }
  return out.str();
}

inline void describe_ranges(std::ostringstream& out, const ClXmlValueRange* ranges,
                            std::uint32_t count) {
  for (std::uint32_t i = 0; i < count; ++i)
    out << ' ' << ranges[i].offset << '+' << ranges[i].length;
  out << '\n';
}

inline std::string describe(const Request<ClXmlListParameter>& request, std::int32_t result) {
  std::ostringstream out;
  out << "result " << result << " stop " << request.record.stopPosition << '\n';
  for (const ClXmlListParameter& parameter : request.parameters) {
    out << parameter.status << ' ' << parameter.rangeCount << ':';
    describe_ranges(out, parameter.ranges, parameter.rangeCount);
  }
  return out.str();
}

// --- The routes ----------------------------------------------------------------------------------

template <typename Parameter>
ClXmlRequest* as_single(Request<Parameter>& request) {
  return std::is_same_v<Parameter, ClXmlParameter> ? &request.record : nullptr;
}
template <typename Parameter>
ClXmlRequest* as_list(Request<Parameter>& request) {
  return std::is_same_v<Parameter, ClXmlListParameter> ? &request.record : nullptr;
}

// A run over the request by `parse`; `run` receives what it left in its own record.
template <typename Parameter, typename Parse>
std::int32_t run_route(Request<Parameter>& request, std::uint32_t flags, const Parse& parse,
                       std::string& run) {
  ClXmlParserData* data = nullptr;
  std::int32_t result =
      ClXmlInitializeParserData(&data, flags, as_single(request), as_list(request));
  if (result != 0) return result;
  result = parse(data);
  run = describe(*data, result);
  ClXmlStoreParserData(data, as_single(request), as_list(request));
  ClXmlUnInitializeParserData(data);
  return result;
}

inline std::int32_t parse_plain(ClXmlParserData* data) {
  return pxcl::xml::parse_by_steps(*data);
}

template <typename Parameter>
std::int32_t run_plain(Request<Parameter>& request, std::uint32_t flags, std::string& run) {
  return run_route(request, flags, parse_plain, run);
}

inline std::int32_t ask(Request<ClXmlParameter>& request, bool anyRoot) {
  return anyRoot ? ClComXmlRequestParameter(&request.record)
                 : ClXmlRequestParameter(&request.record);
}
inline std::int32_t ask(Request<ClXmlListParameter>& request, bool anyRoot) {
  return anyRoot ? ClComXmlRequestParameterList(&request.record)
                 : ClXmlRequestParameterList(&request.record);
}

inline std::string difference(std::string_view what, const std::string& plain,
                              const std::string& indexed) {
  if (plain == indexed) return {};
  return std::string(what) + "\n--- plain\n" + plain + "--- indexed\n" + indexed;
}

// The record of a run, then the request functions.
template <typename Parameter>
std::string compare_requests(const Texts& texts, std::uint32_t flags) {
  std::string plainRun;
  std::string indexedRun;
  Request<Parameter> plain(texts);
  const std::int32_t expected = run_plain(plain, flags, plainRun);
  Request<Parameter> indexed(texts);
  run_route(indexed, flags, ClXmlParse, indexedRun);
  std::string found = difference("ClXmlParse", plainRun, indexedRun);
  Request<Parameter> asked(texts);
  const std::int32_t got = ask(asked, flags != 0);
  if (found.empty()) found = difference("request", describe(plain, expected), describe(asked, got));
  return found;
}

// A run whose targets all want an attribute, whatever their paths name: a caller may set that.
inline std::string compare_attributes(const Texts& texts, std::uint32_t flags) {
  const auto run = [&](std::int32_t (*parse)(ClXmlParserData*)) {
    const auto parse_attributes = [parse](ClXmlParserData* data) {
      for (std::uint32_t i = 0; i < data->targetCount; ++i) {
        data->targets[i].kind = 1;
        data->targets[i].attributeName = "k";
        data->targets[i].attributeNameLength = 1;
      }
      return parse(data);
    };
    Request<ClXmlParameter> request(texts);
    std::string left;
    run_route(request, flags, parse_attributes, left);
    return left;
  };
  return difference("attributes", run(parse_plain), run(ClXmlParse));
}

// A path that ends in `name attribute="key"`, taken apart for Wanted::kEach.
struct EachPath {
  std::string path;  // without the value; empty for any other path
  std::string key;
};

inline EachPath split_each(const std::string& path) {
  std::size_t begin = 0;
  bool quoted = false;
  for (std::size_t i = 0; i < path.size(); ++i) {
    if (path[i] == '"') quoted = !quoted;
    if (path[i] == '/' && !quoted) begin = i + 1;
  }
  static constexpr const char* kBlank = " \t\r\n";
  const std::size_t open = std::min(path.find('"', begin), path.size());
  const std::size_t gap = std::min(path.find_first_of(kBlank, begin), open);
  const std::string attribute = path.substr(gap, open - gap);
  const bool usual = attribute.size() > 2 && attribute.find('=') == attribute.size() - 1 &&
                     attribute.find_last_of(kBlank) == 0 && gap != begin &&
                     path.find('"', open + 1) == path.size() - 1;
  if (!usual) return {};
  std::string key = path.substr(open + 1, path.size() - open - 2);
  key.erase(0, key.find_first_not_of(kBlank));
  key.erase(key.find_last_not_of(kBlank) + 1);
  if (key.empty() || key.find(':') != key.npos) return {};
  return {path.substr(0, open - 1), key};
}

// What Wanted::kEach finds at one key, as a list request would have it.
struct EachReader {
  std::string key;
  std::int32_t status = pxcl::xml::kNotFound;
  std::vector<ClXmlValueRange> ranges = {};
  std::uint32_t count = 0;  // at all keys

  static void take(void* self, const pxcl::xml::EachText& text) {
    EachReader& reader = *static_cast<EachReader*>(self);
    ++reader.count;
    if (!text.key.empty() && text.key != reader.key) return;
    if (reader.ranges.empty()) reader.status = text.status;
    if (text.offset != 0 && text.length != 0) reader.status = pxcl::xml::kFound;
    reader.ranges.push_back({text.offset, text.length});
  }
};

// What the keys find at `key`, by the last one of them.
inline std::string texts_at(const std::string& key, const EngineCase& one,
                            const std::vector<pxcl::xml::Key>& keys) {
  std::vector<EachReader> texts(keys.size(), {key});
  std::vector<pxcl::xml::Reader> readers;
  for (EachReader& reader : texts) readers.push_back({EachReader::take, &reader});
  Answers answers(keys.size());
  pxcl::xml::scan(one.document, one.flags, keys, answers.all, nullptr, readers.data());
  std::ostringstream text;
  if (keys.back().wanted == pxcl::xml::Wanted::kEach) {
    const std::vector<ClXmlValueRange>& ranges = texts.back().ranges;
    describe_ranges(text, ranges.data(), static_cast<std::uint32_t>(ranges.size()));
    text << texts.back().status << (texts.back().count == answers.all.back().count ? "" : " count");
  } else {
    const pxcl::xml::Answer& list = answers.all.back();
    describe_ranges(text, ranges_of(list).data(), list.count);
    text << (list.count == 0                            ? pxcl::xml::kNotFound
             : (list.flags & pxcl::xml::kHasRange) != 0 ? pxcl::xml::kFound
                                                        : list.firstStatus);
  }
  return text.str();
}

// The texts of every key, held against a list request for the path with one of the keys.
inline std::string compare_each(const EngineCase& one, const std::string& path) {
  using pxcl::xml::Key;
  using pxcl::xml::Wanted;
  const EachPath each = split_each(path);
  if (each.path.empty()) return {};
  const Texts alone({one.flags, {path}, 0, one.document});
  std::string run;
  Request<ClXmlListParameter> list(alone);
  run_plain(list, one.flags, run);
  const ClXmlListParameter& expected = list.parameters.front();
  std::ostringstream plainText;
  describe_ranges(plainText, expected.ranges, expected.rangeCount);
  plainText << expected.status;
  const Key attribute = {each.path};
  const Key texts = {each.path, Wanted::kEach, 1};
  const Key others = {each.path, Wanted::kEach, 2};
  const Key written = {path, Wanted::kAll, 3};
  const std::vector<Key> requests[] = {{texts},         {attribute, texts}, {others, texts},
                                       {texts, others}, {written, texts},   {texts, written}};
  for (const std::vector<Key>& keys : requests) {
    std::string found =
        difference("each of " + path, plainText.str(), texts_at(each.key, one, keys));
    if (!found.empty()) return found;
  }
  return {};
}

// Every path a key of its own group: each answers as a request for that path alone.
inline std::string compare_scan(const EngineCase& one) {
  std::vector<pxcl::xml::Key> keys;
  std::ostringstream plainText;
  std::ostringstream scanText;
  for (const std::string& path : one.paths) {
    if (path.empty()) continue;
    const bool all = keys.size() % 2 == 1;
    keys.push_back({path, all ? pxcl::xml::Wanted::kAll : pxcl::xml::Wanted::kFirst,
                    static_cast<std::uint32_t>(keys.size())});
    const Texts alone({one.flags, {path}, 0, one.document});
    std::string run;
    Request<ClXmlParameter> single(alone);
    Request<ClXmlListParameter> list(alone);
    plainText << describe(single, run_plain(single, one.flags, run));
    run_plain(list, one.flags, run);
    const ClXmlListParameter& values = list.parameters.front();
    if (all) describe_ranges(plainText, values.ranges, values.rangeCount);
  }
  std::uint64_t stop = 0;
  Answers answers(keys.size());
  const std::int32_t result = pxcl::xml::scan(one.document, one.flags, keys, answers.all, &stop);
  for (std::size_t i = 0; i < keys.size(); ++i) {
    const pxcl::xml::Answer& answer = answers.all[i];
    const std::int32_t status = answer.firstStatus;
    scanText << "result " << result << " stop " << stop << '\n'
             << (status == 0 ? pxcl::xml::kNotFound : status) << ' ' << answer.firstOffset << '+'
             << answer.firstLength << '\n';
    if (keys[i].wanted == pxcl::xml::Wanted::kAll) {
      describe_ranges(scanText, ranges_of(answer).data(), answer.count);
    }
  }
  return difference("scan", plainText.str(), scanText.str());
}

// Replaces every value into a buffer that just fits; the new ones must stand where the records say.
inline std::string check_replacement(const Texts& texts) {
  constexpr std::string_view kValue = "<new & \"longer\"/>";
  Request<ClXmlParameter> request(texts);
  char small[1];
  for (ClXmlParameter& parameter : request.parameters) {
    parameter.newValue = kValue.data();
    parameter.newValueLength = kValue.size();
  }
  request.record.output = small;
  request.record.outputSize = sizeof small;
  if (ClXmlRequestParameter(&request.record) != 0) return {};
  constexpr std::int32_t kTooSmall = -12;
  if (ClXmlReplaceParameter(&request.record) != kTooSmall) return "one byte is not too small";
  const std::uint64_t needed = request.record.outputSize;
  const std::unique_ptr<char[]> output(new char[needed]);
  request.record.output = output.get();
  const std::int32_t result = ClXmlReplaceParameter(&request.record);
  if (result != 0 || request.record.outputSize != needed) return "size needed does not fit";
  for (const ClXmlParameter& parameter : request.parameters) {
    if (parameter.status != 1) continue;
    const std::string_view text(output.get(), needed);
    if (text.substr(parameter.newValueOffset, kValue.size()) != kValue) return "value not in place";
  }
  return {};
}

// Empty when both routes agree, otherwise what differs.
inline std::string compare_on_document(const EngineCase& one) {
  const Texts texts(one);
  std::string found = compare_requests<ClXmlParameter>(texts, one.flags);
  if (found.empty()) found = compare_requests<ClXmlListParameter>(texts, one.flags);
  if (found.empty()) found = compare_attributes(texts, one.flags);
  if (one.nullPath != 0 || one.document.empty()) return found;
  if (found.empty()) found = compare_scan(one);
  for (const std::string& path : one.paths) {
    if (found.empty()) found = compare_each(one, path);
  }
  return found;
}

// The same on the document itself, on one with blanks behind it, since far from the end of the text
// the scan reads whole lanes, and on one so long that it looks for what repeats itself.
inline std::string compare_routes(const EngineCase& one) {
  std::string found;
  for (const std::size_t blanks : {0U, 80U, pxcl::xml::kShortestRepeating}) {
    EngineCase longer = one;
    longer.document.append(blanks, ' ');
    if (found.empty()) found = compare_on_document(longer);
  }
  return found.empty() && one.nullPath == 0 ? check_replacement(Texts(one)) : found;
}

// For the fuzz targets: both routes agree, or the process ends with the case on stderr.
inline void require_agreement(const EngineCase& one) {
  const std::string found = compare_routes(one);
  if (found.empty()) return;
  std::fprintf(stderr, "%s", found.c_str());
  for (const std::string& path : one.paths) std::fprintf(stderr, "[%s]\n", path.c_str());
  std::fprintf(stderr, "%s\n", one.document.c_str());
  std::abort();
}

}  // namespace pxcl_test
