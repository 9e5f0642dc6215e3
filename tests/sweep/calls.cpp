// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "calls.hpp"

#include <cstdio>
#include <cstdlib>
#include <type_traits>

#include "pxcl.h"

namespace sweep {
namespace {

constexpr std::uint64_t kAll = ~std::uint64_t{0};  // what is kept, by size

constexpr Shortage answers(std::initializer_list<std::int64_t> listed, std::uint64_t keeps = 0) {
  Shortage result;
  result.keeps = keeps;
  for (const std::int64_t answer : listed) result.answers[result.count++] = answer;
  return result;
}

constexpr std::int64_t kWrong = -1000;  // no function's answer

constexpr Shortage kTakesNone;
constexpr Shortage kNull = answers({0});
constexpr Shortage kEngine = answers({-11, -2});     // -2: an empty element could not be recorded
constexpr Shortage kRanges = answers({0, -11, -2});  // 0: ranges are null
constexpr Shortage kKeyed = answers({-1, -2});
constexpr Shortage kReader = answers({-2, -1});
constexpr Shortage kUnread = answers({-2}, kAll);
constexpr Shortage kUnsupported = answers({0});

std::int64_t given(void* block) {
  KWVSDisposePTRX(block);
  return block != nullptr;
}

// ---- The engine ----

constexpr std::string_view kDocument =
    "<?xml version=\"1.0\"?><cmd xmlns:z=\"http://www.example.com/ns/cmd/2008/07/common/\">"
    "<a k=\"v\">text</a><b/><z:c></z:c><d><e>1</e><e>2</e><e>3</e></d></cmd>";
constexpr std::string_view kPaths =
    "cmd/a k=\"v\"\ncmd/b\ncmd/zirk:c\ncmd/d/e\ncmd/a k\ncmd/none\n";

constexpr std::uint64_t at(std::string_view piece) {
  return kDocument.find(piece);
}

// A text on the heap of its thread.
class Writer {
 public:
  explicit Writer(char* begin) : begin_(begin), end_(begin) {}
  void add(std::string_view piece, int times = 1) {
    for (; times > 0; --times) end_ = piece.copy(end_, piece.size()) + end_;
  }
  std::string_view text() const { return {begin_, end_}; }

 private:
  char* begin_;
  char* end_;
};

// More attributes and depth than the engine holds without a block.
void add_crowd(Writer& writer) {
  writer.add("<many");
  for (char name = 'a'; name < 'w'; ++name) {
    writer.add(" ");
    writer.add({&name, 1});
    writer.add("=\"v\"");
  }
  writer.add("/>");
  writer.add("<d>", 100);
  writer.add("</d>", 100);
}

std::string_view large_document() {
  static thread_local char room[4096];
  Writer writer(room);
  writer.add("<?xml ?><cmd>");
  writer.add("<b/><a k=\"v\">1</a>", 12);
  add_crowd(writer);
  writer.add("</cmd>");
  return writer.text();
}

// Elements with names that the engine reads in another way, one in the other.
std::string_view odd_document() {
  static thread_local char room[8192];
  Writer writer(room);
  writer.add("<?xml ?><cmd xmlns:z=\"http://www.example.com/ns/cmd/2008/07/common/\">");
  writer.add("<z:s/x z:key=\"z:v\" k=\"text of some length\">", 60);
  writer.add("<z:s\"x z:key=\"z:v\" k=\"text of some length\">", 60);
  writer.add("</cmd>");
  return writer.text();
}

// A file of tests/data/replies, crowded.
Text reply(Stage& s, const char* name) {
  static thread_local char read[8192], room[8192];
  std::snprintf(room, sizeof room, "%s/replies/%s.xml", PXCL_TEST_DATA, name);
  std::FILE* const file = std::fopen(room, "rb");
  if (file == nullptr) return s.in({});
  const std::string_view text(read, std::fread(read, 1, sizeof read, file));
  std::fclose(file);
  const std::size_t start = text.find("<zirk:operation>");
  Writer writer(room);
  writer.add(text.substr(0, start));
  add_crowd(writer);
  writer.add(text.substr(start));
  return s.sized(writer.text());
}

std::string_view many_paths() {
  static thread_local char room[2048];
  Writer writer(room);
  writer.add(kPaths, 2);
  writer.add("cmd/many b\ncmd/many b=\"v\" c\ncmd/d/\ncmd/d/d/d/\ncmd/\n");
  for (char name = 'a'; name < 'z'; ++name) {
    writer.add("cmd/d/d/");
    writer.add({&name, 1});
    writer.add("/x k=\"v\"\n");
  }
  return writer.text();
}

// One path a line.
template <typename Parameter>
std::uint32_t put_parameters(Stage& s, Parameter* to, std::string_view paths) {
  const Text text = s.in(paths);
  std::uint32_t count = 0;
  for (std::size_t begin = 0; begin < paths.size(); ++count) {
    const std::size_t end = paths.find('\n', begin);
    to[count].path = text + begin;
    to[count].pathLength = end - begin;
    begin = end + 1;
  }
  return count;
}

// A request for few paths or for many, with room for the writer.
template <typename Parameter = ClXmlParameter>
ClXmlRequest* request(Stage& s, std::string_view document) {
  const Text text = s.sized(document);
  const std::uint64_t room = document.size() + 64;
  auto* const parameters = s.record(Parameter{}, 64);
  const std::uint32_t count =
      put_parameters(s, parameters, document == kDocument ? kPaths : many_paths());
  return s.record(ClXmlRequest{text, text.size, s.buffer(room), room, parameters, count, 0});
}

void note_results(Stage& s, const ClXmlParameter& one) {
  for (const std::uint64_t value : {one.valueOffset, one.valueLength, one.newValueOffset}) {
    s.note(value);
  }
}

void note_results(Stage& s, const ClXmlListParameter& one) {
  s.note(one.rangeCount);
  for (std::uint32_t i = 0; one.ranges != nullptr && i < one.rangeCount; ++i) {
    s.note(one.ranges[i].offset);
    s.note(one.ranges[i].length);
  }
}

template <typename Parameter>
std::int64_t ask(Stage& s, auto function, std::string_view document) {
  ClXmlRequest* const asked = request<Parameter>(s, document);
  const std::int32_t status = function(asked);
  for (std::uint32_t i = 0; i < asked->parameterCount; ++i) {
    const Parameter& one = static_cast<const Parameter*>(asked->parameters)[i];
    if (one.status == 0 && status != -2) return kWrong;  // every path is told what became of it
    note_results(s, one);
  }
  if constexpr (std::same_as<Parameter, ClXmlListParameter>) ClXmlRequestParameterListFree(asked);
  return status;
}

std::int64_t replace(Stage& s, auto function, bool found) {
  ClXmlRequest* const asked = request(s, large_document());
  auto* const parameters = static_cast<ClXmlParameter*>(asked->parameters);
  const Text value = s.in("new");
  for (std::uint32_t i = 0; i < asked->parameterCount; ++i) {
    parameters[i].newValue = value;
    parameters[i].newValueLength = 3;
  }
  if (!found && ClXmlRequestParameter(asked) != 0) return -11;
  const std::int32_t status = function(asked);
  for (std::uint32_t i = 0; i < asked->parameterCount; ++i) note_results(s, parameters[i]);
  return status;
}

// A run over the document, up to `step`, and its release.
template <typename Step>
std::int64_t run(Stage& s, Step step, std::string_view document = kDocument) {
  ClXmlRequest* const asked = request(s, document);
  ClXmlParserData* data = nullptr;
  const std::int32_t made = ClXmlInitializeParserData(&data, 0, asked, nullptr);
  if (made != 0) return made;
  const std::int64_t status = step(data);
  s.note(data->serial);
  ClXmlClearPath(data->currentPath);
  ClXmlStoreParserData(data, asked, nullptr);
  note_results(s, *static_cast<const ClXmlParameter*>(asked->parameters));
  ClXmlUnInitializeParserData(data);
  return status;
}

// The same with `path` open, elements after the first one by one.
template <typename Step>
std::int64_t run_at(Stage& s, std::initializer_list<std::string_view> path, Step step) {
  return run(s, [&](ClXmlParserData* data) -> std::int64_t {
    for (const std::string_view name : path) {
      const Text text = s.in(name);
      const std::int32_t status = ClXmlAddPath(data, s.string("/"), text, text.size);
      if (status != 0) return status;
    }
    return step(data);
  });
}

ClXmlAttribute* attribute(Stage& s, std::string_view name, std::string_view value) {
  const Text left = s.in(name), right = s.in(value);
  return s.record(ClXmlAttribute{left, left.size, right, right.size});
}

const ClXmlElement* element(Stage& s, std::string_view name) {
  const Text text = s.in(name);
  return s.record(ClXmlElement{text, text.size, attribute(s, "k", "\"v\""), 1});
}

// ---- Path keys and items ----

const ClssKeyValue* keys(Stage& s) {
  const Text first = s.in("cmd/a k=\"v\""), second = s.in("cmd/d/e"), value = s.in("x");
  const ClssKeyValue both[2] = {{first, first.size, value, value.size},
                                {second, second.size, nullptr, 0}};
  return s.list(both);
}

std::int64_t access(Stage& s, auto function, std::int32_t (*release)(ClXmlRequest*)) {
  const Text document = s.sized(kDocument);
  ClXmlRequest** const context = s.record<ClXmlRequest*>(nullptr);
  const std::int32_t status = function(document, document.size, keys(s), 2, context);
  if ((*context != nullptr) != (status == 0)) return kWrong;
  if (status == 0) s.note((*context)->outputSize);
  release(*context);
  return status;
}

constexpr std::uint16_t kGetCapability = 2;

ItemSet* items(Stage& s, std::uint32_t mode, bool byAttribute, const char* item) {
  const char* const path = "cmd/zirk:contents/zirk:param_set servicetype=\"print\"/%s:%s";
  const char* const keyed =
      "cmd/zirk:contents/zirk:param_set servicetype=\"print\"/%s:%s papertype=\"%s\"";
  const ItemSet one = {nullptr,
                       nullptr,
                       0,
                       s.string(byAttribute ? keyed : path),
                       s.string(item),
                       mode,
                       glb_clssdicPaperSizeTbl,
                       CLSS_DICNUM_PAPERSIZE};
  return s.record(one, 2);
}

std::int64_t end_items(Stage& s, ItemSet* all, std::int64_t status) {
  for (int i = 0; i < 2; ++i) {
    s.note(all[i].entryCount);
    for (std::uint32_t k = 0; all[i].entries != nullptr && k < all[i].entryCount; ++k) {
      s.note(all[i].entries[k].value);
    }
  }
  ReleaseItemSetList(all, 2);
  return status;
}

// ---- Print settings ----

ClssPrintSettings* settings(Stage& s, std::uint16_t size, std::uint16_t type) {
  return s.out(ClssPrintSettings{2, size, type, 65535, 65535, 65535});
}

const ClssStatus* loaded(Stage& s) {
  auto* const status = s.record(ClssStatus{});
  status->leading = 1;
  std::memset(status->currentPaperType, 0xFF, sizeof status->currentPaperType);
  std::memset(status->currentPaperSize, 0xFF, sizeof status->currentPaperSize);
  status->currentPaperType[0] = 1;
  status->currentPaperSize[0] = 4;
  return status;
}

// ---- A call with something of it zero ----

std::uint64_t word_at(const char* place) {
  std::uint64_t word;
  std::memcpy(&word, place, sizeof word);
  return word;
}

// A word that is another until the end of the call; what the call owns and replaced is released.
struct Denial {
  Stage& s;
  bool owned = false;
  char* word = nullptr;
  std::uint64_t before = 0;
  std::uint64_t meanwhile = 0;
  void put(char* place, std::uint64_t value) {
    word = place;
    before = word_at(place);
    s.put(place, meanwhile = value);
  }
  ~Denial() {
    if (word == nullptr) return;
    if (word_at(word) == meanwhile) {
      s.put(word, before);
    } else if (owned) {
      KWVSDisposePTRX(reinterpret_cast<void*>(before));
    }
  }
};

template <typename Record>
void deny_words(Denial& denial, Record* record, bool owned = false) {
  using Plain = std::remove_const_t<Record>;
  if (record == nullptr || (!owned && !denial.s.holds(record))) return;
  if constexpr (std::is_integral_v<Plain> && std::same_as<Plain, Record>) {
    if (*record != 0 && denial.s.next_is_denied()) *record = 0;
  } else if constexpr (std::is_class_v<Plain> || std::is_pointer_v<Plain>) {
    char* const bytes = reinterpret_cast<char*>(const_cast<Plain*>(record));
    for (std::size_t at = 0; at + sizeof denial.before <= sizeof(Record);
         at += sizeof denial.before) {
      if (!denial.s.next_is_denied()) continue;
      denial.owned = owned;
      return denial.put(bytes + at, 0);
    }
  }
}

void deny_below(Denial&, auto) {}
void deny_below(Denial& denial, const ClXmlElement* element) {
  if (element != nullptr) deny_words(denial, element->attributes);
}
void deny_below(Denial& denial, const ClXmlRequest* asked) {
  if (asked != nullptr) deny_words(denial, static_cast<ClXmlParameter*>(asked->parameters));
}
void deny_below(Denial& denial, const ClXmlParserData* data) {
  if (data == nullptr) return;
  deny_words(denial, data->document, true);
  deny_words(denial, data->targets, true);
  deny_words(denial, data, true);
}

template <typename Argument>
void deny_argument(Denial& denial, Argument& argument) {
  if constexpr (!std::is_class_v<Argument>) {
    if (argument != Argument{} && denial.s.next_is_denied()) argument = Argument{};
  }
  if constexpr (std::is_pointer_v<Argument>) {
    if constexpr (!std::is_same_v<Argument, ClXmlParserData*>) deny_words(denial, argument);
    deny_below(denial, static_cast<const std::remove_pointer_t<Argument>*>(argument));
  }
}

// ---- A call with a length that has its low 32 bits right, and one more above them ----

constexpr std::uint64_t kTwo32 = std::uint64_t{1} << 32;

// The lengths and offsets of what an argument leads to.
using Lengths = std::initializer_list<const std::uint64_t*>;
void widen_one_of(Denial& denial, Lengths lengths) {
  for (const std::uint64_t* const length : lengths) {
    if (denial.word != nullptr || !denial.s.next_is_denied()) continue;
    denial.put(reinterpret_cast<char*>(const_cast<std::uint64_t*>(length)), *length + kTwo32);
  }
}

void widen_below(Denial&, const void*) {}
void widen_below(Denial& denial, const ClssKeyValue* one) {
  if (one != nullptr) widen_one_of(denial, {&one->keyLength, &one->valueLength});
}
void widen_below(Denial& denial, const ClXmlAttribute* one) {
  if (one != nullptr) widen_one_of(denial, {&one->nameLength, &one->valueLength});
}
void widen_below(Denial& denial, const ClXmlElement* one) {
  if (one == nullptr) return;
  widen_one_of(denial, {&one->nameLength});
  widen_below(denial, one->attributes);
}
void widen_below(Denial& denial, const ClXmlParameter* one) {
  if (one == nullptr) return;
  widen_one_of(denial, {&one->pathLength, &one->valueOffset, &one->valueLength,
                        &one->newValueOffset, &one->newValueLength});
}
void widen_below(Denial& denial, const ClXmlTarget* one) {
  if (one != nullptr) widen_one_of(denial, {&one->pathLength, &one->attributeNameLength});
}
void widen_below(Denial& denial, const ClXmlRequest* one) {
  if (one == nullptr) return;
  widen_one_of(denial, {&one->documentLength, &one->outputSize});
  widen_below(denial, static_cast<const ClXmlParameter*>(one->parameters));
}
void widen_below(Denial& denial, const ClXmlParserData* one) {
  if (one == nullptr) return;
  widen_one_of(denial, {&one->document->length});
  widen_below(denial, one->targets);
}
void widen_below(Denial& denial, const std::uint64_t* offset) {
  if (offset != nullptr && denial.s.holds(offset)) widen_one_of(denial, {offset});
}

template <typename Argument>
void widen_argument(Denial& denial, Argument& argument) {
  if constexpr (std::same_as<Argument, std::uint64_t> || std::same_as<Argument, std::int64_t>) {
    if (denial.s.next_is_denied()) argument += static_cast<Argument>(kTwo32);
  } else if constexpr (std::is_pointer_v<Argument> &&
                       std::is_object_v<std::remove_pointer_t<Argument>>) {
    widen_below(denial, argument);
  }
}

// A function, each of whose arguments and of their records' words can be denied, or widened.
template <typename Result, typename... Arguments>
class Tried {
 public:
  Tried(Stage& s, Result (*function)(Arguments...)) : s_(s), function_(function) {}
  Result operator()(Arguments... arguments) const {
    Denial denial{s_};
    if (s_.widens()) {
      (widen_argument(denial, arguments), ...);
    } else if (s_.denies()) {  // otherwise what is uninitialised is not looked at
      (deny_argument(denial, arguments), ...);
    }
    return function_(arguments...);
  }

 private:
  Stage& s_;
  Result (*function_)(Arguments...);
};

// ---- The table ----

// `f` is the function, tried; `s` the stage. What releases its argument is not tried: only it could.
#define CALL(name, answer, shortage, ...)                 \
  {                                                       \
#name, answer, shortage, [](Stage& s) -> std::int64_t { \
    [[maybe_unused]] const Tried f(s, name); (void)s; return static_cast<std::int64_t>(__VA_ARGS__); } \
  }
// The call is the last of several steps, which end in its answer.
#define STEPS(name, answer, shortage, ...)                                                                              \
  {                                                                                                                     \
#name, answer, shortage, [](Stage& s) -> std::int64_t { [[maybe_unused]] const Tried f(s, name); (void)s; __VA_ARGS__ } \
  }
// A document, a device ID: `d` and its length `n`.
#define READ(name, answer, shortage, text, ...) \
  STEPS(name, answer, shortage, const auto [d, n] = text; return f(d, n, ##__VA_ARGS__);)
#define TO_BUFFER(bits) s.buffer(2048), 2048, s.out<std::uint##bits##_t>(77)
#define JOB s.string("00000042")

constexpr const char* kId = "MFG:x;CMD:ZIRK,NOLP;SOJ:NOLP;MDL:TX100series;";

// clang-format off
const Call kCalls[] = {
  // util
  CALL(KWVSGetSystemInfo, 0, kTakesNone, f(1, s.out<std::uint32_t>())),
  CALL(KWVSNewHNDL, 1, kNull, given(f(8))),
  CALL(KWVSNewPTR, 1, kNull, given(f(8))),
  CALL(KWVSNewPTRX, 1, kNull, given(f(8))),
  STEPS(KWVSDisposeHNDL, 0, kNull, void** const h = s.record(KWVSNewHNDL(8)); KWVSDisposeHNDL(h); return *h != nullptr;),
  STEPS(KWVSDisposePTR, 0, kNull, KWVSDisposePTR(KWVSNewPTR(8)); return 0;),
  STEPS(KWVSDisposePTRX, 0, kNull, KWVSDisposePTRX(KWVSNewPTRX(8)); return 0;),
  STEPS(KWVSLockHNDL, 1, kTakesNone, char* const h = s.buffer(1); return f(h) == h;),
  STEPS(KWVSUnlockHNDL, 1, kTakesNone, char* const h = s.buffer(1); return f(h) == h;),
  CALL(KWVSCheckEndian, 1, kTakesNone, f(1, 2)),
  CALL(KWVSSwapData, 0, kTakesNone, (f(s.buffer("abcdef"), 2, 3), 0)),
  CALL(KWVSCopyData, 0, kTakesNone, (f(s.in("abc"), s.buffer(3), 3), 0)),
  CALL(KWVSCopyDataX, 0, kTakesNone, (f(s.in("abc"), s.buffer(3), 3), 0)),
  CALL(KWVSSetData, 0, kTakesNone, (f(s.buffer(3), 7, 3), 0)),
  CALL(KWVSSetDataX, 0, kTakesNone, (f(s.buffer(3), 7, 3), 0)),
  CALL(KWVSCompData, 0, kTakesNone, f(s.in("abc"), s.in("abd"), 3)),
  CALL(KWVSCompDataX, 1, kTakesNone, f(s.in("abc"), s.in("abc"), 3)),
  CALL(KWVSForwardSearchByte, 1, kTakesNone, f(s.in("abc"), 3, 'c') != nullptr),
  CALL(KWVSReverseSearchByte, 1, kTakesNone, f(s.in("abc"), 3, 'a') != nullptr),
  CALL(KWVSForwardSearchData, 0, kTakesNone, f(s.in("abcb"), 4, s.in("bd"), 2) != nullptr),
  CALL(KWVSReverseSearchData, 0, kTakesNone, f(s.in("bdbc"), 4, s.in("cb"), 2) != nullptr),
  STEPS(KWVSCompString, -1, kTakesNone, const char* const ab = s.string("ab"); return f(ab, s.string("abc"));),
  CALL(KWVSGetLenOfString, 3, kTakesNone, f(s.string("abc"))),
  CALL(KWVSCopyString, 3, kTakesNone, f(s.string("abc"), s.buffer(4))),
  CALL(KWVSCatString, 5, kTakesNone, f(s.string("cde"), s.buffer({"ab\0...", 6}))),
  CALL(KWVS4sToString, 6, kTakesNone, f(-1234, s.buffer(6), 6, KWVS_BASE_DECIMAL)),
  CALL(KWVSStringTo4s, -12, kTakesNone, f(s.in("-12"), 3, s.out<std::uint64_t>(), KWVS_READ_DECIMAL)),

  // xml: requests and runs
  CALL(ClXmlRequestParameter, -10, answers({-10, -11, -2}), ask<ClXmlParameter>(s, f, odd_document())),
  CALL(ClXmlRequestParameter, 0, kEngine, ask<ClXmlParameter>(s, f, large_document())),
  CALL(ClComXmlRequestParameter, 0, kEngine, ask<ClXmlParameter>(s, f, large_document())),
  CALL(ClXmlRequestParameterList, -10, answers({-10, -11, -2}), ask<ClXmlListParameter>(s, f, odd_document())),
  CALL(ClXmlRequestParameterList, 0, kRanges, ask<ClXmlListParameter>(s, f, large_document())),
  CALL(ClComXmlRequestParameterList, 0, kRanges, ask<ClXmlListParameter>(s, f, large_document())),
  STEPS(ClXmlRequestParameterListFree, 0, kRanges,
        ClXmlRequest* const r = request<ClXmlListParameter>(s, kDocument); ClXmlRequestParameterList(r); return ClXmlRequestParameterListFree(r);),
  CALL(ClXmlRequestParameterListFree, 0, kTakesNone, f(s.record(ClXmlRequest{}))),
  STEPS(ClComXmlRequestParameterListFree, 0, kRanges,
        ClXmlRequest* const r = request<ClXmlListParameter>(s, kDocument); ClComXmlRequestParameterList(r); return ClComXmlRequestParameterListFree(r);),
  CALL(ClXmlReplaceParameter, 0, kEngine, replace(s, f, true)),
  CALL(ClXmlWrite, 0, kEngine, replace(s, f, false)),
  STEPS(ClXmlCheckEmptyTagSpec, 0, kTakesNone,
        auto* const p = s.record(ClXmlParameter{}); p->newValueOffset = 6;
        return f(s.in("<a><b/>"), p, s.out<std::uint64_t>(), s.out<std::uint64_t>());),
  STEPS(ClXmlExpandEmptyElement, 0, kTakesNone,
        auto* const p = s.record(ClXmlParameter{}); p->newValueOffset = 3; p->newValue = s.in("xy"); p->newValueLength = 2;
        return f(s.buffer("<b/>....."), p, s.out<std::uint64_t>(), s.out<std::uint64_t>());),
  CALL(ClXmlMemAlloc, 1, kNull, given(f(8))),
  STEPS(ClXmlMemFree, 0, kNull, ClXmlMemFree(ClXmlMemAlloc(8)); return 0;),
  STEPS(ClXmlInitializeNameSpaceTable, 1, kNull,
        auto** const t = s.record<ClXmlNameSpaceEntry*>(nullptr);
        const int made = f(t); ClXmlUnInitializeNameSpaceTable(*t); return made;),
  STEPS(ClXmlUnInitializeNameSpaceTable, 0, kNull,
        ClXmlNameSpaceEntry* t = nullptr; ClXmlInitializeNameSpaceTable(&t); ClXmlUnInitializeNameSpaceTable(t); return 0;),
  STEPS(ClXmlInitializeParserData, 0, kEngine,
        auto** const data = s.record<ClXmlParserData*>(nullptr);
        const int made = f(data, 0, nullptr, request<ClXmlListParameter>(s, kDocument));
        ClXmlUnInitializeParserData(*data); return made;),
  STEPS(ClXmlUnInitializeParserData, 0, kEngine,
        ClXmlParserData* data = nullptr; const int made = ClXmlInitializeParserData(&data, 0, request(s, kDocument), nullptr);
        ClXmlUnInitializeParserData(data); return made;),
  CALL(ClXmlParse, 0, kEngine, run(s, f)),
  CALL(ClXmlParse, -10, answers({-10, -11, -2}), run(s, f, odd_document())),
  CALL(ClXmlParse, 0, kEngine, run(s, f, large_document())),
  STEPS(ClXmlStoreParserData, 0, kRanges,
        ClXmlRequest* const r = request<ClXmlListParameter>(s, kDocument); ClXmlParserData* data = nullptr;
        const int made = ClXmlInitializeParserData(&data, 0, nullptr, r);
        if (made != 0) return made;
        ClXmlParse(data);
        const int status = f(data, nullptr, r);
        for (std::uint32_t i = 0; i < data->targetCount; ++i) ClXmlMemFree(data->targets[i].matches);
        ClXmlUnInitializeParserData(data); ClXmlRequestParameterListFree(r); return status;),

  // xml: steps
  CALL(ClXmlSearchStartPoint, 0, kEngine, run(s, f)),
  CALL(ClXmlCheckElement, 0, kEngine,
       run_at(s, {"cmd"}, [&](ClXmlParserData* data) { return f(data, s.out(at("<a"))); })),
  CALL(ClXmlPrsStartElement, 0, kEngine,
       run_at(s, {"cmd"}, [&](ClXmlParserData* data) { return f(data, s.out(at("<a")), 8); })),
  CALL(ClXmlPrsEndElement, 0, kEngine,
       run_at(s, {"cmd", "a"}, [&](ClXmlParserData* data) { return f(data, s.out(at("</a>")), 3); })),
  CALL(ClXmlPrsParameter, 0, kEngine,
       run_at(s, {"cmd", "d", "e"}, [&](ClXmlParserData* data) { return f(data, s.out(at("1</e>"))); })),
  STEPS(ClXmlSplit_Element, 2, kTakesNone,
        auto* const e = s.record(ClXmlElement{nullptr, 0, s.record(ClXmlAttribute{}, 2), 2});
        const Text t = s.in("a b=\"c\" d=\"e\""); return f(t, t.size, e);),
  CALL(ClXmlSplit_QName, 1, kTakesNone, f(s.in("a:bc"), 4, s.record<const char*>(nullptr), s.out<std::uint64_t>(),
                                          s.record<const char*>(nullptr), s.out<std::uint64_t>())),
  CALL(ClXmlPare_AttValue, 1, kTakesNone,
       f(s.in("\" v \""), 5, s.record<const char*>(nullptr), s.out<std::uint64_t>())),
  CALL(ClXmlExtractAttribute, 0, kEngine, run_at(s, {"cmd"}, [&](ClXmlParserData* data) {
         return f(data, attribute(s, "k", "\"v\""), s.out<std::int32_t>()); })),
  CALL(ClXmlPickupNamespace, 0, kEngine, run(s, [&](ClXmlParserData* data) { return f(data, s.in("q"), 1, s.in("\"u\""), 3); })),
  CALL(ClXmlCompare_Uri, 1, kTakesNone, f(s.in("a/"), 2, s.in("a"), 1)),
  CALL(ClXmlAddPath, 0, kEngine,
       run_at(s, {"cmd"}, [&](ClXmlParserData* data) { return f(data, s.string("/"), s.in("ab"), 2); })),
  CALL(ClXmlRemovePath, 0, kEngine,
       run_at(s, {"cmd", "ab"}, [&](ClXmlParserData* data) { return f(data, s.in("ab"), 2); })),
  STEPS(ClXmlClearPath, 0, kNull, ClXmlClearPath(static_cast<char*>(ClXmlMemAlloc(8))); return 0;),
  CALL(ClXmlFirstElementLengthOfPath, 1, kTakesNone, f(s.in("ab/c"), 4, s.out<std::uint64_t>())),
  CALL(ClXmlIsKnownNicknameNs, 0, kEngine,
       run(s, [&](ClXmlParserData* data) { return f(data, s.in("zirk"), 4, s.out<std::uint32_t>(0)); })),
  STEPS(ClXmlChkTargetPathRequestAttValue, 1, kTakesNone,
        auto* const t = s.record(ClXmlTarget{}); t->path = s.in("a/b cd"); t->pathLength = 6;
        return f(t, s.record<const char*>(nullptr), s.out<std::uint64_t>());),
  CALL(ClXmlStoreValuePathCompare, 1, answers({0, -11}), run_at(s, {"cmd", "a k=\"v\""}, [&](ClXmlParserData* data) { return f(data, 0); })),
  CALL(ClXmlCompare_Tag, 1, kEngine,
       run(s, [&](ClXmlParserData* data) { return f(data, element(s, "a"), element(s, "a")); })),
  CALL(ClXmlCompare_Attribute, 1, kEngine,
       run(s, [&](ClXmlParserData* data) { return f(data, element(s, "a"), element(s, "b")); })),
  CALL(ClXmlCompare_AttValue, 1, kEngine, run(s, [&](ClXmlParserData* data) {
         return f(data, attribute(s, "k", "\"zirk:v\""), attribute(s, "k", "\"zirk:v\""), s.out<std::int32_t>()); })),
  CALL(ClXmlStoreValue, 0, kEngine,
       run_at(s, {"cmd", "a k=\"v\""}, [&](ClXmlParserData* data) { return f(data, at("text"), 4); })),
  STEPS(ClXmlStoreAttValue, 0, kEngine, return run_at(s, {"cmd", "a k=\"v\""}, [&](ClXmlParserData* data) {
          const char* const text = data->document->text + at("k=\"v\"");
          return f(data, s.record(ClXmlAttribute{text, 1, text + 2, 3}), 1); });),
  CALL(ClXmlChkTargetPathOnly, 0, kEngine,
       run_at(s, {"cmd", "b"}, [&](ClXmlParserData* data) { return f(data, at("/><z:c>"), 1); })),

  // keyed
  CALL(Get_NeedBufferSize, 101, kTakesNone, f(100, keys(s), 2)),
  CALL(SetCL_XML, 0, kKeyed, access(s, f, ClearCL_XML)),
  CALL(SetCL_XML2, 0, kKeyed, access(s, f, ClearCL_XML2)),
  CALL(GetXmlDataByKey, 0, kKeyed, access(s, f, ClearCL_XML)),
  CALL(GetXmlDataByKeyList, 0, answers({0, -1, -2}), access(s, f, ClearCL_XML2)),
  CALL(ReplaceXmlDataByKey, 0, kKeyed, access(s, f, ClearCL_XML)),
  CALL(ClearCL_XML, 0, kKeyed, access(s, SetCL_XML, ClearCL_XML)),
  CALL(ClearCL_XML2, 0, kKeyed, access(s, SetCL_XML2, ClearCL_XML2)),
  CALL(GetVasloID, 0, kTakesNone, f(glb_clssdicColormodeTbl, CLSS_DICNUM_COLORMODE, s.in("co lor"), 6,
                                    s.out<std::uint16_t>(), s.out<std::uint16_t>())),
  CALL(GetValue, 0, kTakesNone, f(s.in(" 12"), 3, s.out<std::uint32_t>())),
  CALL(SetStringValue, 1, kTakesNone, f(s.in("a b,c"), 5, s.buffer(3), 3)),
  CALL(CheckJobID, 0, kTakesNone, f(JOB, s.in("00000042"), 8)),
  CALL(GetIdOrValue, 0, kTakesNone, f(nullptr, 0, s.in("7"), 1, s.out<std::uint32_t>(), s.out<std::uint16_t>())),
  CALL(CopyValueText, 1, kNull, given(f(s.in("a b"), 3))),
  STEPS(Get_NeedBufferSize2, 8, kTakesNone, const char* const list[] = {s.string("abc")}; return f(s.string("<%s>"), s.list(list), 1);),
  STEPS(clss_Sprintf, 5, answers({-1}, kAll), const char* const list[] = {s.string("abc")};
        return f(s.buffer({"<%s>\0...", 8}), 8, s.list(list), 1);),
  READ(CheckOpeAndRes, 0, kKeyed, reply(s, "capability_small"), kGetCapability),
  STEPS(Get_ItemSet, 0, kKeyed, const auto [d, n] = reply(s, "capability_small");
        ItemSet* const all = items(s, 0, false, "papersize"); return end_items(s, all, f(d, n, all));),
  STEPS(Get_ItemSetList, 0, kKeyed, const auto [d, n] = reply(s, "capability_small");
        ItemSet* const all = items(s, 1, false, "papersize"); return end_items(s, all, f(d, n, kGetCapability, all, 2));),
  STEPS(Get_ItemSetByReq, 0, kKeyed, const auto [d, n] = reply(s, "capability_small");
        ItemSet* const all = items(s, 0, true, "printcolormode");
        return end_items(s, all, f(d, n, all, 2, s.string("stationery"), 0, 0));),
  STEPS(Get_ItemSetByReq, 0, kKeyed, const auto [d, n] = reply(s, "capability_small");
        ItemSet* const all = items(s, 0, true, "printcolormode");
        return end_items(s, all, f(d, n, all, 2, s.string("stationery"), 0, 1));),
  STEPS(ReleaseItemSetList, 0, kNull, ItemSet* const all = items(s, 0, false, "x");
        all[1].entries = static_cast<ItemEntry*>(KWVSNewPTRX(sizeof(ItemEntry))); ReleaseItemSetList(all, 2); return all[1].entries != nullptr;),
  READ(checkSuport, 2, kKeyed, reply(s, "capability_small"), kGetCapability, items(s, 0, false, "papersize"), 1),
  CALL(getToken, 1, kTakesNone, f(s.in("a:b;"), 4, s.string(":"), s.string(";"), 0, s.out<std::uint32_t>()) != nullptr),
  CALL(getTokenTotal, 2, kTakesNone, f(s.in("a;b;"), 4, s.string(";"))),
  CALL(searchString, 1, kNull, f(s.in("N O L P;"), 8, PLI_DEVICEID) + 1),

  // commands
  CALL(CLSS_MakeCommand_GetCapability, 0, kTakesNone, f(TO_BUFFER(64), 3)),
  CALL(PXCL_MakeGetCapabilityCommand, 0, kTakesNone, f(TO_BUFFER(32), 0)),
  CALL(CLSS_MakeCommand_GetConfiguration, 0, kTakesNone, f(TO_BUFFER(64), 1)),
  CALL(CLSS_MakeCommand_PowerOff, 0, kTakesNone, f(TO_BUFFER(64))),
  CALL(CLSS_MakeCommand_FRomUpMode, 0, kTakesNone, f(TO_BUFFER(64))),
  CALL(CLSS_MakeCommand_Handoveroff, 0, kTakesNone, f(TO_BUFFER(64))),
  CALL(CLSS_MakeCommand_GetStatusDevice, 0, kTakesNone, f(TO_BUFFER(64))),
  CALL(CLSS_MakeCommand_GetJobIDList, 0, kTakesNone, f(TO_BUFFER(64))),
  CALL(CLSS_MakeCommand_GetStatusPrint, 0, kTakesNone, f(JOB, TO_BUFFER(64))),
  CALL(CLSS_MakeCommand_GetStatusMaintenance, 0, kTakesNone, f(JOB, TO_BUFFER(64))),
  CALL(PXCL_MakeCommand_GetStatusPrint, 0, kTakesNone, f(TO_BUFFER(32))),
  CALL(PXCL_MakeCommand_GetStatusMaintenance, 0, kTakesNone, f(TO_BUFFER(32))),
  CALL(CLSS_MakeCommand_StartJob3, 0, kTakesNone, f(2, 3, s.string("Sheet <1>"), 1, JOB, s.string("1"), TO_BUFFER(64))),
  CALL(CLSS_MakeCommand_StartJob2, 0, kTakesNone, f(1, JOB, s.string("1"), TO_BUFFER(64))),
  CALL(CLSS_MakeCommand_StartJob, 0, kTakesNone, f(JOB, s.string("0"), TO_BUFFER(64))),
  CALL(PXCL_MakeCommand_StartJob3, 0, kTakesNone, f(3, s.string("Sheet"), JOB, TO_BUFFER(32))),
  CALL(PXCL_MakeCommand_StartJob3_Maintenance, 0, kTakesNone, f(3, s.string("Sheet"), JOB, TO_BUFFER(64))),
  CALL(CLSS_MakeCommand_EndJob, 0, kTakesNone, f(0, JOB, TO_BUFFER(64))),
  CALL(CLSS_MakeCommand_CancelJob, 0, kTakesNone, f(3, JOB, TO_BUFFER(64))),
  CALL(PXCL_MakeCommand_CancelJob, 0, kTakesNone, f(JOB, TO_BUFFER(32))),
  CALL(PXCL_MakeCommand_CancelJob_Maintenance, 0, kTakesNone, f(JOB, TO_BUFFER(32))),
  CALL(PXCL_MakeCommand_EndJob_Maintenance, 0, kTakesNone, f(JOB, TO_BUFFER(64))),
  CALL(CLSS_MakeCommand_ModeShift, 0, kTakesNone, f(0, JOB, s.string("1"), TO_BUFFER(64))),
  CALL(CLSS_MakeCommand_SendDataJPEG, 0, kTakesNone, f(JOB, 1234, TO_BUFFER(64))),
  CALL(CLSS_MakeCommand_SendDataJPEGPAGE, 0, kTakesNone, f(JOB, 1234, TO_BUFFER(64))),
  CALL(CLSS_MakeCommand_SendDataPWGRaster, 0, kTakesNone, f(JOB, 3000000000, TO_BUFFER(64))),
  CALL(CLSS_MakeCommand_SendDataRAW, 0, kTakesNone, f(JOB, 100, 50, TO_BUFFER(64))),
  CALL(PXCL_GetSendDataPWGRasterCommand, 0, kTakesNone, f(JOB, 1234, 2048, s.buffer(2048), s.out<std::uint64_t>(77))),
  CALL(CLSS_MakeCommand_SetPageConfiguration2, 0, kTakesNone, f(JOB, 1, 2, TO_BUFFER(64))),
  CALL(CLSS_MakeCommand_SetPageConfiguration, 0, kTakesNone, f(JOB, 2, TO_BUFFER(64))),
  CALL(PXCL_GetSetPageConfigurationCommand, 0, kTakesNone, f(JOB, 0, TO_BUFFER(64))),
  CALL(CLSS_MakeCommand_SetJobConfiguration, 0, kTakesNone, f(JOB, s.string("20240102030405"), 1, TO_BUFFER(64))),
  CALL(CLSS_MakeCommand_SetTime, 0, kTakesNone, f(JOB, s.string("20240102030405"), TO_BUFFER(64))),
  CALL(PXCL_MakeCommand_SetJobConfiguration, 0, kTakesNone, f(JOB, s.string("20240102030405"), TO_BUFFER(32))),
  STEPS(CLSS_MakeCommand_SetConfigurationNS, 0, answers({-2}, kAll), const auto [d, n] = reply(s, "capability_small");
        return f({2, 4, 1, 2}, {1, 4}, JOB, d, n, TO_BUFFER(64));),
  STEPS(PXCL_GetSetConfigurationCommand, 0, answers({-2}, kAll), const auto [d, n] = reply(s, "capability_small");
        const std::uint16_t six[] = {0, 4, 1, 2, 1, 4};
        return f(s.list(six), JOB, 2048, d, n, s.buffer(2048), s.out<std::uint64_t>(77));),
  CALL(CLSS_MakeCommand_SetConfigurationDevice, 0, kTakesNone, f({1, 2}, JOB, TO_BUFFER(64))),
  CALL(CLSS_MakeCommand_SetJobConfiguration_Maintenance, 0, kTakesNone, f(JOB, s.string("20240102030405"), TO_BUFFER(64))),
  CALL(PXCL_MakeCommand_SetJobConfiguration_Maintenance, 0, kTakesNone, f(JOB, nullptr, TO_BUFFER(64))),
  CALL(CLSS_MakeCommand_TestPrint, 0, kTakesNone, f(JOB, TO_BUFFER(64))),
  CALL(PXCL_MakeCommand_TestPrint, 0, kTakesNone, f(JOB, TO_BUFFER(64))),
  CALL(CLSS_MakeCommand_AutoRegistration, 0, kTakesNone, f(JOB, TO_BUFFER(64))),
  CALL(PXCL_MakeCommand_AutoAlignment, 0, kTakesNone, f(JOB, TO_BUFFER(64))),
  CALL(CLSS_MakeCommand_Cleaning, 0, kTakesNone, f(JOB, TO_BUFFER(64))),
  CALL(PXCL_MakeCommand_Cleaning, 0, kTakesNone, f(JOB, TO_BUFFER(64))),

  // responses
  CALL(CLSS_GetCommandOperationPair, -2, kTakesNone, f(2)),
  CALL(CLSS_GetOperationPair, -2, kTakesNone, f(27)),
  READ(getOperation_ServiceType, 0, kReader, reply(s, "startjob_ok"), s.out<std::uint16_t>(), s.out<std::uint16_t>()),
  READ(CLSS_ParseResponseCommon, 0, kReader, reply(s, "ng_detail"), s.out<std::uint64_t>(),
       s.out_of_version<ClssResponseCommon>(0)),
  READ(PXCL_GetInfoResponse, 0, kUnread, reply(s, "startjob_ok"), s.out<std::uint16_t>(), s.buffer(9),
       s.record(s.out<std::uint16_t>())),
  STEPS(parseCommonStatusResponse, 0, kReader, const auto [d, n] = reply(s, "status_busy");
        const Text key = s.in("cmd/zirk:contents/zirk:param_set servicetype=\"print\"/zirk:status");
        const ClssKeyValue one = {key, key.size, nullptr, 0}, absent = {key, 17, nullptr, 0}, five[5] = {one, one, absent, absent, absent};
        return f(d, n, s.list(five), 5, s.out_of_version<ClssStatusCommon>(0));),
  READ(CLSS_ParseStatusResponsePrint, 0, kReader, reply(s, "status_busy"), s.out_of_version<ClssStatus>(1)),
  READ(CLSS_ParseStatusResponsePrint2, 0, kReader, reply(s, "status_busy"), s.string("00000034"), s.out_of_version<ClssStatus>(1)),
  READ(CLSS_ParseStatusResponseMaintenance, 0, kReader, reply(s, "status_maintenance"), s.string("00000056"),
       s.out_of_version<ClssStatus>(1)),
  READ(CLSS_ParseJobIDListResponse, 0, kReader, reply(s, "joblist"), reinterpret_cast<char(*)[9]>(s.buffer(27)), s.out(3)),
  READ(PXCL_GetStatus, 0, kUnread, reply(s, "status_busy"), s.out<std::uint32_t>(), s.out<std::uint32_t>(), s.buffer(11)),
  READ(PXCL_GetStatus2, 0, kUnread, reply(s, "status_busy"), s.string("00000034"), s.out<std::uint32_t>(),
       s.out<std::uint32_t>(), s.buffer(11), s.buffer(9)),
  READ(PXCL_GetStatus_Maintenance, 0, kUnread, reply(s, "status_maintenance"), s.string("00000056"),
       s.out<std::uint32_t>(), s.out<std::uint32_t>(), s.buffer(11), s.buffer(9)),
  CALL(CLSS_GetParsePossibleSize, 1, kTakesNone, f() == glb_supportedPaperSizeTbl),
  CALL(CLSS_GetParsePossibleSizeNum, 81, kTakesNone, f()),
  CALL(CLSS_GetParsePossibleMedia, 1, kTakesNone, f() == glb_supportedPaperTypeTbl),
  CALL(CLSS_GetParsePossibleMediaNum, 23, kTakesNone, f()),
  READ(CLSS_ParseCapabilityResponsePrint_PaperSize, 0, kReader, reply(s, "capability_small"), s.out(0),
       s.out_of_version<ClssPaperSize>(3)),
  READ(CLSS_ParseCapabilityResponsePrint_MediaType, 0, kReader, reply(s, "capability_small"), s.out(0),
       s.out_of_version<ClssMediaType>(3)),
  READ(PXCL_ParseCapabilityResponsePrint_PaperSizes, 0, kReader, reply(s, "capability_small"),
       s.out_of_version<ClssPaperSize>(3), s.out(1)),
  READ(PXCL_ParseCapabilityResponsePrint_MediaTypes, 0, kReader, reply(s, "capability_small"),
       s.out_of_version<ClssMediaType>(3), s.out(1)),
  READ(CLSS_ParseCapabilityResponsePrint_Pixels, 0, kReader, reply(s, "capability_small"), s.out<std::uint16_t>(),
       s.out<std::uint16_t>(), s.out<std::uint16_t>(), s.out<std::uint16_t>()),
  READ(CLSS_ParseCapabilityResponsePrint_MediaMap, 0, kReader, reply(s, "capability_small"), 1,
       s.out_of_version<ClssMediaMap>(0)),
  READ(CLSS_ParseCapabilityResponsePrint_FormatType, 2, kReader, reply(s, "capability_small"), 1),
  READ(CLSS_ParseCapabilityResponsePrint_NextPage, 2, kUnsupported, reply(s, "capability_small"), 2),
  READ(CLSS_ParseCapabilityResponsePrint_PrintPreparation, 2, kUnsupported, reply(s, "capability_small"), 2),
  READ(CLSS_ParseCapabilityResponsePrint_MismatchMode, 2, kUnsupported, reply(s, "capability_small"), 2),
  READ(CLSS_ParseCapabilityResponsePrint_DVD_DeviceSideGuide, 1, kUnsupported, reply(s, "capability_small"), 1),
  READ(CLSS_ParseCapabilityResponsePrint_HostEnvironment, 3, kUnsupported, reply(s, "capability_small"), 3),
  READ(CLSS_ParseCapabilityResponseMaintenance_HostEnvironment, 3, kUnsupported, reply(s, "capability_maintenance"), 3),
  READ(CLSS_ParseCapabilityResponsePrint_JobQueue, 2, kReader, reply(s, "capability_small")),
  READ(CLSS_ParseCapabilityResponsePrint_DateTime, 2, kReader, reply(s, "capability_small")),
  READ(CLSS_ParseCapabilityResponseMaintenance_DateTime, 2, kReader, reply(s, "capability_maintenance")),
  READ(CLSS_ParseCapabilityResponsePrint_IsDiscLabelPrint, 2, kReader, reply(s, "capability_small")),
  READ(PXCL_ParseCapabilityResponsePrint_HostEnv, 3, kUnsupported, reply(s, "capability_small")),
  READ(PXCL_ParseCapabilityResponseMaintenance_HostEnv, 3, kUnsupported, reply(s, "capability_maintenance")),
  READ(PXCL_ParseCapabilityResponsePrint_MismatchMode, 2, kUnsupported, reply(s, "capability_small"), 2),
  READ(PXCL_ParseCapabilityResponsePrint_DateTime, 2, kReader, reply(s, "capability_small")),
  READ(PXCL_ParseCapabilityResponseMaintenance_DateTime, 2, kReader, reply(s, "capability_maintenance")),

  // device
  READ(CLSS_GetProtocol, 2, answers({1, 2}), s.sized(kId)),
  READ(PXCL_GetProtocol, 2, answers({1, 2}), s.sized(kId)),
  READ(CLSS_HasZIRK, 2, answers({1}), s.sized(kId)),
  READ(CLSS_HasPLI, 2, answers({1}), s.sized(kId)),
  READ(CLSS_IsSupportMinP, 0, kNull, s.sized(kId)),
  READ(CLSS_IsSupportKWNP_From14Autumn, 0, kNull, s.sized(kId)),
  READ(CLSS_IsSupportCorvel, 0, kNull, s.sized(kId), 1),
  READ(CLSS_GetCorvelRequestVersionInfo, -1, answers({-1}), s.sized(kId), 1),
  CALL(CLSS_initPrintSettings, 0, kTakesNone, f(s.out_of_version<ClssPrintSettings>(2))),
  STEPS(CLSS_AutoMakeOtherPrintSettings, 0, answers({-2}, kAll), const auto [d, n] = reply(s, "capability_small");
        return f(0, d, n, settings(s, 4, 1));),
  STEPS(CLSS_AutoMakePrintSettings, 0, answers({-2}), const auto [d, n] = reply(s, "capability_small");
        return f(0, d, n, loaded(s), settings(s, 65535, 1));),
  CALL(CLSS_IsDiscLabelPrintSettings, 0, kTakesNone, f()),
  CALL(CLSS_GetPaperOutwardSize, -1, kTakesNone, f(83)),

  // api
  CALL(PXCL_GetPrintCommand, 0, kTakesNone, f(TO_BUFFER(64), JOB, 3)),
  CALL(PXCL_EncodeToString, 13, kTakesNone, f(reinterpret_cast<const std::uint8_t*>(s.in("ok").data), 2, s.buffer(14), 14)),
  READ(PXCL_DecodeFromString, 2, kTakesNone, s.sized("dfdb=aaaaaank"), reinterpret_cast<std::uint8_t*>(s.buffer(2)), 2),
  STEPS(PXCL_GetStringWithTagFromFile, 2, answers({-1}), char** const value = s.record<char*>(nullptr);
        const int size = f(s.string(PXCL_TEST_DATA "/tagged_file"), s.string("T"), 1, value); free(*value); return size;),
  STEPS(PXCL_MakeKWLSetTimeJob, 0, kTakesNone, auto* const job = s.record(std::uint8_t{}, 66); return f(job, 66, s.out<std::uint64_t>());),
};
// clang-format on

}  // namespace

bool Shortage::lists(std::int64_t answer) const {
  for (int i = 0; i < count; ++i) {
    if (answers[i] == answer) return true;
  }
  return false;
}

std::span<const Call> calls() {
  return kCalls;
}

}  // namespace sweep
