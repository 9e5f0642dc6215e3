// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Replies decoded into records, by the library and by the parsers that our users would pick
// instead: the same elements, the same dictionaries, the same records, which are compared before
// the clock starts. The peers take each element once, by hashed names, and look keywords up by
// hash.

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

#include "documents.hpp"
#include "finder.hpp"
#include "harness.hpp"
#include "responses.h"

namespace {

using pxcl_bench::fail;
using pxcl_bench::Table;
using pxcl_bench::Value;
using pxcl_bench::Values;

// --- What a peer makes of its values -------------------------------------------------------------

constexpr std::uint16_t kUnknown = 65535;

class Words {
 public:
  Words(const ClssDicRow* rows, std::uint16_t count) : rows_(rows) {
    for (std::uint16_t i = 0; i < count; ++i) {
      if (rows[i].keyword && table_.find(rows[i].keyword) == Table::kNone)
        table_.add(rows[i].keyword, i);
    }
  }
  std::uint16_t operator()(std::string_view word) const {
    const std::uint32_t index = table_.find(word);
    return index == Table::kNone ? kUnknown : static_cast<std::uint16_t>(index);
  }
  std::uint16_t code(std::uint32_t row) const { return rows_[row].code; }

 private:
  const ClssDicRow* rows_;
  Table table_;
};
#define WORDS(name, count) const Words name(glb_clssdic##name, count)
WORDS(OperationTbl, CLSS_DICNUM_OPERATION);
WORDS(ServiceTypeTbl, CLSS_NUM_SERVICETYPE_LIST);
WORDS(ResponseTbl, CLSS_DICNUM_RESPONSE);
WORDS(ResponseDetailTbl, CLSS_DICNUM_RESDETAIL);
WORDS(IJOperationTbl, CLSS_DICNUM_IJOPERATION);
WORDS(StatusTbl, CLSS_DICNUM_STATUS);
WORDS(StatusDetailTbl, CLSS_DICNUM_STATUSDETAIL);
WORDS(JobProgressTbl, CLSS_DICNUM_JOBPROGRESS);
WORDS(StateTbl, CLSS_DICNUM_STATE);
WORDS(TCATbl, CLSS_DICNUM_TCA);
WORDS(PaperTypeTbl, CLSS_DICNUM_PAPERTYPE);
WORDS(PanelMedia, CLSS_DICNUM_PANEL_PAPERTYPE);
WORDS(PaperSizeTbl, CLSS_DICNUM_PAPERSIZE);
WORDS(StapleSideTbl, CLSS_DICNUM_STAPLESIDE);
WORDS(BorderlessTbl, CLSS_DICNUM_BORDERLESS);
WORDS(ColormodeTbl, CLSS_DICNUM_COLORMODE);
WORDS(DuplexPrintTbl, CLSS_DICNUM_DUPLEXPRINT);

void copy(std::string_view text, char* to) {
  std::memcpy(to, text.data(), text.size());
  to[text.size()] = '\0';
}

template <typename Take>
void each(std::string_view list, const Take& take) {
  while (!list.empty()) {
    const std::size_t comma = std::min(list.find(','), list.size());
    take(list.substr(0, comma));
    list.remove_prefix(std::min(comma + 1, list.size()));
  }
}

template <std::size_t count>
void numbers(std::string_view list, std::uint32_t (&to)[count]) {
  std::size_t i = 0;
  each(list, [&](std::string_view text) {
    if (i < count) std::from_chars(text.data(), text.data() + text.size(), to[i++]);
  });
}

// A list under three namespaces, in ascending order of its codes; and where each keyword went.
struct Listed {
  struct Entry {
    std::uint16_t value, nameSpace;
  };
  std::vector<Entry> entries;
  std::uint16_t place[3][128];

  void clear() {
    entries.clear();
    std::memset(place, 0xFF, sizeof place);
  }
  void add(std::string_view list, std::uint16_t nameSpace, const Words& words) {
    each(list, [&](std::string_view word) {
      const std::uint16_t value = words(word);
      if (value != kUnknown) entries.push_back({value, nameSpace});
    });
  }
  void order(const Words& words) {
    std::sort(entries.begin(), entries.end(), [&](const Entry& a, const Entry& b) {
      return words.code(a.value) < words.code(b.value);
    });
    for (std::size_t i = 0; i < entries.size(); ++i)
      place[entries[i].nameSpace][entries[i].value] = static_cast<std::uint16_t>(i);
  }
};

// --- The jobs ------------------------------------------------------------------------------------

const std::string kContents = "cmd/zirk:contents/";
const std::string kPrint = kContents + "zirk:param_set servicetype=\"print\"/";
constexpr const char* kSpaces[] = {"zirk:", "vrx:", "tolm:"};
constexpr const char* kJobID = "00000012";
constexpr std::size_t kCapabilitySize = 100'000;

struct Result {
  ClssResponseCommon head;
  ClssStatus status;
  std::vector<std::array<char, 9>> jobs;
  std::vector<ClssPaperSize> sizes;
  std::vector<ClssMediaType> types;
};

struct Job {
  const char* name;
  const char* title;
  std::string document;
  std::vector<std::string> paths;
  std::uint32_t keyed;
  void (*ours)(std::string_view document, Result& result);
  void (*theirs)(const Values& values, Result& result);
  bool (*same)(const Result& a, const Result& b);
};

template <typename Record>
bool same_bytes(const std::vector<Record>& a, const std::vector<Record>& b) {
  return !a.empty() && a.size() == b.size() &&
         std::memcmp(a.data(), b.data(), a.size() * sizeof(Record)) == 0;
}

void require(bool good) {
  if (!good) fail("a decode failed");
}

// The head of a StartJob reply.
std::vector<std::string> head_paths() {
  const std::string set = kContents + "zirk:param_set servicetype";
  std::vector<std::string> paths = {kContents + "zirk:operation", set};
  for (const char* name : {"zirk:response", "zirk:response_detail", "vrx:ijoperation",
                           "vrx:ijresponse", "zirk:jobID", "zirk:jobstatus/zirk:jobID"}) {
    paths.push_back(set + "/" + name);
  }
  return paths;
}
void our_head(std::string_view document, Result& result) {
  std::uint64_t position;
  std::memset(&result.head, 0, sizeof result.head);
  require(CLSS_ParseResponseCommon(document.data(), document.size(), &position, &result.head) == 0);
}
void their_head(const Values& values, Result& result) {
  ClssResponseCommon& head = result.head;
  std::memset(&head, 0, sizeof head);
  head.operation = head.response = head.responseDetail = head.ijOperation = head.ijResponse =
      kUnknown;
  for (const Value& value : values) {
    switch (value.path) {
      case 0:
        head.operation = OperationTbl(value.text);
        break;
      case 1:
        head.serviceType = ServiceTypeTbl(value.text);
        break;
      case 2:
        head.response = ResponseTbl(value.text);
        break;
      case 3:
        if (head.response == 2) head.responseDetail = ResponseDetailTbl(value.text);
        break;
      case 4:
        head.ijOperation = IJOperationTbl(value.text);
        break;
      case 5:
        head.ijResponse = ResponseTbl(value.text);
        break;
      default:
        if (head.jobID[0] == '\0') copy(value.text, head.jobID);
    }
  }
}

// A whole status reply with its job block. status_paths(): common, bins, ink, details, job.
void our_status(std::string_view document, Result& result) {
  std::memset(&result.status, 0, sizeof result.status);
  require(CLSS_ParseStatusResponsePrint2(document.data(), document.size(), kJobID,
                                         &result.status) == 0);
}
void their_status(const Values& values, Result& result) {
  ClssStatus& status = result.status;
  ClssStatusCommon& common = status.common;
  std::memset(&status, 0, sizeof status);
  common.status = common.statusDetail = common.jobProgress = status.jobState = kUnknown;
  status.completeImpression = -1;
  std::uint16_t bins[14], panel[7] = {};
  std::fill_n(bins, 14, kUnknown);
  std::size_t inks = 0, good = 0, items = 0, codes = 0;
  bool ours = false;
  std::string_view job;
  for (const Value& value : values) {
    switch (value.path) {
      case 0:
        common.status = StatusTbl(value.text);
        break;
      case 1:
        common.statusDetail = StatusDetailTbl(value.text);
        break;
      case 2:
        copy(value.text, common.jobID);
        break;
      case 3:
        common.jobProgress = JobProgressTbl(value.text);
        break;
      case 4:
        copy(value.text, common.supportCode);
        break;
      case 19:
        ++inks;
        good += TCATbl(value.text) == 1;
        break;
      case 20:
        ++items;
        break;
      case 21:
        ++codes;
        break;
      case 22:
        job = value.text;
        break;
      case 23:
        ours = value.text.starts_with(kJobID);
        if (ours) copy(job, common.jobID);
        break;
      case 24:
        if (ours) common.jobProgress = JobProgressTbl(value.text);
        break;
      case 25:
        if (ours) status.jobState = StateTbl(value.text);
        break;
      case 26:
        if (ours)
          std::from_chars(value.text.data(), value.text.data() + value.text.size(),
                          status.completeImpression);
        break;
      case 27:
        require(OperationTbl(value.text) == 14);
        break;
      default: {
        const std::size_t bin = value.path - 5;
        if (bin % 2 != 0) {
          bins[bin] = PaperSizeTbl(value.text);
        } else if ((bins[bin] = PaperTypeTbl(value.text)) == kUnknown) {
          bins[bin] = PanelMedia(value.text);
          panel[bin / 2] = 1;
        }
      }
    }
  }
  std::size_t slot = 0;
  for (std::size_t bin = 0; bin < 7; ++bin) {
    if (bins[2 * bin] == kUnknown || bins[2 * bin + 1] == kUnknown) continue;
    status.currentPaperType[slot] = bins[2 * bin];
    status.currentPaperSize[slot] = bins[2 * bin + 1];
    status.panelMedia[slot++] = panel[bin];
  }
  status.inkState = inks == 0 ? kUnknown : inks == good ? 2 : 1;
  if (std::strcmp(common.supportCode, "4103") == 0) common.statusDetail = 7;
  require(items == codes);
}

void our_jobs(std::string_view document, Result& result) {
  std::int32_t count = 500;
  result.jobs.resize(500);
  auto* slots = reinterpret_cast<char(*)[9]>(result.jobs.data());
  require(CLSS_ParseJobIDListResponse(document.data(), document.size(), slots, &count) == 0);
  result.jobs.resize(static_cast<std::size_t>(count));
}
void their_jobs(const Values& values, Result& result) {
  result.jobs.resize(500);
  std::size_t count = 0;
  for (const Value& value : values) {
    if (count < 500 && value.text.size() == 8) copy(value.text, result.jobs[count++].data());
  }
  result.jobs.resize(count);
}

// All sizes or types of a capability reply: operation, response, lists, then the elements that name
// a keyword, each under every namespace.
std::vector<std::string> capability_paths(std::initializer_list<const char*> lists,
                                          const std::string& attribute,
                                          std::initializer_list<const char*> elements) {
  std::vector<std::string> paths = {kContents + "zirk:operation", kPrint + "zirk:response"};
  for (const char* list : lists) {
    for (const char* space : kSpaces) paths.push_back(kPrint + space + list);
  }
  for (const std::string element : elements) {
    for (const char* space : kSpaces) paths.push_back(kPrint + space + element + " " + attribute);
  }
  return paths;
}

void our_sizes(std::string_view document, Result& result) {
  ClssPaperSize blank = {};
  blank.version = 3;
  result.sizes.assign(CLSS_DICNUM_PAPERSIZE, blank);
  std::int32_t count = CLSS_DICNUM_PAPERSIZE;
  require(PXCL_ParseCapabilityResponsePrint_PaperSizes(document.data(), document.size(),
                                                       result.sizes.data(), &count) == 0);
  result.sizes.resize(static_cast<std::size_t>(count));
}
void our_sizes_by_index(std::string_view document, Result& result) {
  std::int32_t count = -1;
  require(CLSS_ParseCapabilityResponsePrint_PaperSize(document.data(), document.size(), &count,
                                                      nullptr) == 0);
  ClssPaperSize blank = {};
  blank.version = 3;
  result.sizes.assign(static_cast<std::size_t>(count), blank);
  for (std::int32_t i = 0; i < count; ++i) {
    require(CLSS_ParseCapabilityResponsePrint_PaperSize(
                document.data(), document.size(), &i, &result.sizes[static_cast<std::size_t>(i)]) ==
            0);
  }
}
void their_sizes(const Values& values, Result& result) {
  static Listed list;
  list.clear();
  for (const Value& value : values) {
    if (value.path == 0) require(OperationTbl(value.text) == 2);
    if (value.path == 1) require(ResponseTbl(value.text) == 1);
    if (value.path - 2 < 3)
      list.add(value.text, static_cast<std::uint16_t>(value.path - 2), PaperSizeTbl);
  }
  list.order(PaperSizeTbl);
  ClssPaperSize blank = {};
  blank.version = 3;
  result.sizes.assign(list.entries.size(), blank);
  for (std::size_t i = 0; i < list.entries.size(); ++i) {
    result.sizes[i].paperSize = list.entries[i].value;
    result.sizes[i].sizeItemTag = list.entries[i].nameSpace;
  }
  for (const Value& value : values) {
    if (value.path < 5) continue;
    const std::uint16_t row = PaperSizeTbl(value.key);
    if (row == kUnknown) continue;
    const std::uint16_t place = list.place[(value.path - 5) % 3][row];
    if (place == kUnknown) continue;
    ClssPaperSize& size = result.sizes[place];
    switch ((value.path - 5) / 3) {
      case 0:
        numbers(value.text, size.printAreaBorder);
        break;
      case 1:
        numbers(value.text, size.printAreaBorderless);
        break;
      case 2:
        numbers(value.text, size.printAreaDuplex);
        break;
      case 3:
        numbers(value.text, size.marginBorder);
        break;
      case 4:
        numbers(value.text, size.marginBorderless);
        break;
      default:
        numbers(value.text, size.marginDuplex);
    }
  }
}

ClssMediaType blank_type() {
  ClssMediaType blank;
  std::memset(&blank, 0xFF, sizeof blank);
  blank.version = 3;
  blank.borderlessOff = blank.borderlessOn = 1;
  return blank;
}
void our_types(std::string_view document, Result& result) {
  result.types.assign(CLSS_DICNUM_PAPERTYPE, blank_type());
  std::int32_t count = CLSS_DICNUM_PAPERTYPE;
  require(PXCL_ParseCapabilityResponsePrint_MediaTypes(document.data(), document.size(),
                                                       result.types.data(), &count) == 0);
  result.types.resize(static_cast<std::size_t>(count));
}
void our_types_by_index(std::string_view document, Result& result) {
  std::int32_t count = -1;
  require(CLSS_ParseCapabilityResponsePrint_MediaType(document.data(), document.size(), &count,
                                                      nullptr) == 0);
  result.types.assign(static_cast<std::size_t>(count), blank_type());
  for (std::int32_t i = 0; i < count; ++i) {
    require(CLSS_ParseCapabilityResponsePrint_MediaType(
                document.data(), document.size(), &i, &result.types[static_cast<std::size_t>(i)]) ==
            0);
  }
}
void their_types(const Values& values, Result& result) {
  static Listed list, sides;
  list.clear();
  sides.clear();
  for (const Value& value : values) {
    if (value.path == 0) require(OperationTbl(value.text) == 2);
    if (value.path == 1) require(ResponseTbl(value.text) == 1);
    if (value.path - 2 < 3)
      list.add(value.text, static_cast<std::uint16_t>(value.path - 2), PaperTypeTbl);
    if (value.path - 5 < 3)
      sides.add(value.text, static_cast<std::uint16_t>(value.path - 5), StapleSideTbl);
  }
  list.order(PaperTypeTbl);
  sides.order(StapleSideTbl);
  result.types.assign(list.entries.size(), blank_type());
  for (std::size_t i = 0; i < list.entries.size(); ++i) {
    result.types[i].paperType = list.entries[i].value;
    result.types[i].nameSpace = list.entries[i].nameSpace;
  }
  for (const Value& value : values) {
    if (value.path < 8) continue;
    const std::uint16_t row = PaperTypeTbl(value.key);
    if (row == kUnknown) continue;
    const std::uint16_t place = list.place[(value.path - 8) % 3][row];
    if (place == kUnknown) continue;
    ClssMediaType& type = result.types[place];
    std::size_t used = 0;
    switch ((value.path - 8) / 3) {
      case 0:
        each(value.text, [&](std::string_view word) {
          const std::uint16_t borderless = BorderlessTbl(word);
          if (borderless == 1) type.borderlessOff = 2;
          if (borderless == 2) type.borderlessOn = 2;
        });
        break;
      case 1:
        each(value.text,
             [&](std::string_view word) { type.colorModes[used++] = ColormodeTbl(word); });
        std::sort(type.colorModes, type.colorModes + used);
        break;
      default:
        each(value.text, [&](std::string_view word) {
          const std::uint16_t mode = DuplexPrintTbl(word);
          if (mode != 2 || sides.entries.empty()) {
            type.duplexModes[used++] = mode;
          } else {
            for (const auto& side : sides.entries)
              type.duplexModes[used++] = static_cast<std::uint16_t>(side.value + 2);
          }
        });
        std::sort(type.duplexModes, type.duplexModes + used);
    }
  }
}

// --- The runs ------------------------------------------------------------------------------------

std::string start_job_reply() {
  return "<?xml version=\"1.0\" encoding=\"utf-8\" ?><cmd"
         " xmlns:zirk=\"http://www.example.com/ns/cmd/2008/07/common/\""
         " xmlns:vrx=\"http://www.example.com/ns/cmd/2008/07/vaslo/\"><zirk:contents>"
         "<zirk:operation>StartJobResponse</zirk:operation><zirk:param_set servicetype=\"print\">"
         "<zirk:response>NG</zirk:response><zirk:response_detail>ParameterError</"
         "zirk:response_detail>"
         "<zirk:jobID>00000012</zirk:jobID></zirk:param_set></zirk:contents></cmd>";
}

std::vector<Job> jobs() {
  std::vector<std::string> statusPaths = pxcl_bench::status_paths();
  statusPaths.push_back(kContents + "zirk:operation");
  const auto sizes = [](const Result& a, const Result& b) { return same_bytes(a.sizes, b.sizes); };
  const auto types = [](const Result& a, const Result& b) { return same_bytes(a.types, b.types); };
  return {
      {"header", "common header of a reply", start_job_reply(), head_paths(),
       pxcl_bench::kNoneKeyed, our_head, their_head,
       [](const Result& a, const Result& b) {
         return std::memcmp(&a.head, &b.head, sizeof a.head) == 0;
       }},
      {"full_status", "full status", pxcl_bench::status_reply(), statusPaths,
       pxcl_bench::kNoneKeyed, our_status, their_status,
       [](const Result& a, const Result& b) {
         // What stands behind the end of the bins means nothing.
         return std::memcmp(&a.status.common, &b.status.common, sizeof a.status.common) == 0 &&
                std::memcmp(a.status.currentPaperType, b.status.currentPaperType, 14) == 0 &&
                std::memcmp(a.status.currentPaperSize, b.status.currentPaperSize, 14) == 0 &&
                std::memcmp(a.status.panelMedia, b.status.panelMedia, 14) == 0 &&
                a.status.inkState == b.status.inkState && a.status.jobState == b.status.jobState &&
                a.status.completeImpression == b.status.completeImpression;
       }},
      {"job_identifiers",
       "500 job identifiers",
       pxcl_bench::job_list_reply(500),
       {pxcl_bench::job_list_path()},
       pxcl_bench::kNoneKeyed,
       our_jobs,
       their_jobs,
       [](const Result& a, const Result& b) { return same_bytes(a.jobs, b.jobs); }},
      {"sizes", "all paper sizes", pxcl_bench::capability_reply(kCapabilitySize),
       capability_paths({"papersize"}, "papersize",
                        {"printarea_border", "printarea_borderless", "printarea_duplex",
                         "margin_border", "margin_borderless", "margin_duplex"}),
       5, our_sizes, their_sizes, sizes},
      {"types", "all media types", pxcl_bench::capability_reply(kCapabilitySize),
       capability_paths({"papertype", "stapleside"}, "papertype",
                        {"borderlessprint", "printcolormode", "duplexprint"}),
       8, our_types, their_types, types},
      {"sizes_by_index",
       "all paper sizes, one call each",
       pxcl_bench::capability_reply(kCapabilitySize),
       {},
       pxcl_bench::kNoneKeyed,
       our_sizes_by_index,
       nullptr,
       nullptr},
      {"types_by_index",
       "all media types, one call each",
       pxcl_bench::capability_reply(kCapabilitySize),
       {},
       pxcl_bench::kNoneKeyed,
       our_types_by_index,
       nullptr,
       nullptr},
  };
}

void add_job(const Job& job) {
  const pxcl_bench::Task task = {job.name, job.title, job.document.size()};
  Result ours;
  job.ours(job.document, ours);
  pxcl_bench::add_row(task, "pxcl", [&job] {
    return [&job, result = Result()]() mutable { job.ours(job.document, result); };
  });
  if (!job.theirs) return;
  pxcl_bench::for_each_finder(job.paths, job.keyed, [&](const char* who, const auto& finder) {
    Result theirs;
    job.theirs(finder->read(job.document), theirs);
    if (!job.same(ours, theirs)) fail(task.name + ": " + who + " decodes something else");
    pxcl_bench::add_row(task, who, [&job, finder] {
      return [&job, finder, result = Result()]() mutable {
        job.theirs(finder->read(job.document), result);
      };
    });
  });
}

}  // namespace

void pxcl_bench::add_rows() {
  static const std::vector<Job> all = jobs();
  for (const Job& job : all) add_job(job);
}
