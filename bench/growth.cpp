// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// What odd and large documents cost the engine: each shape from a 64th of its size to all of it.
// growth [--quick] [--points FILE] [PART OF A SHAPE'S NAME] prints a Markdown table; a shape that
// breaks a bound is named on standard error and fails the program. --points writes "KIND, SHAPE,
// BYTES, SECONDS" lines, with tabs between, for a picture. --quick takes small documents and leaves
// time unjudged.

#include <malloc.h>
#include <pthread.h>
#include <sys/mman.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <functional>
#include <string>
#include <vector>

#include "clxml.h"
#include "documents.hpp"

// ---- What the library asks of the heap ----

namespace {
std::size_t live_bytes = 0;
std::size_t live_blocks = 0;
std::size_t peak_bytes = 0;

void* count_in(void* block) {
  if (!block) return block;
  live_bytes += malloc_usable_size(block);
  ++live_blocks;
  peak_bytes = std::max(peak_bytes, live_bytes);
  return block;
}
void count_out(void* block) {
  if (!block) return;
  live_bytes -= malloc_usable_size(block);
  --live_blocks;
}
}  // namespace

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* block, std::size_t size);
void __real_free(void* block);

void* __wrap_malloc(std::size_t size) {
  return count_in(__real_malloc(size));
}
void* __wrap_calloc(std::size_t count, std::size_t size) {
  return count_in(__real_calloc(count, size));
}
void* __wrap_realloc(void* block, std::size_t size) {
  count_out(block);
  return count_in(__real_realloc(block, size));
}
void __wrap_free(void* block) {
  count_out(block);
  __real_free(block);
}
}

namespace {

using namespace pxcl_bench;

// ---- Bounds ----

constexpr double kHeapPerByte = 24;
constexpr double kHeapBeside = 64 * 1024;
constexpr double kTimeOfTwice = 2.6;           // of twice the document: twice, and some noise
constexpr double kTooShortToCompare = 0.2e-3;  // seconds
constexpr std::size_t kMostStack = 64 * 1024;
constexpr std::size_t kStackSlack = 1024;  // between sizes

// ---- Shapes ----

enum class Ask { kFirst, kEvery, kReplace };

// What grows.
enum class Kind { kDepth, kNames, kCounts, kRuns };
constexpr std::array kKindNames = {"levels", "odd names", "many of one thing", "one long run"};

struct Shape {
  Kind kind;
  const char* name;
  std::size_t full;
  Ask ask;
  std::int32_t result;  // of the engine, so that no shape ends earlier than it is meant to
  std::function<std::string(std::size_t)> document;
  std::function<std::vector<std::string>(std::size_t)> paths;
};

const std::string kDeclaration = "<?xml version=\"1.0\" ?>";
constexpr std::size_t kMillion = 1'000'000;
constexpr std::size_t kTenMegabytes = 10 * 1024 * 1024;

std::string repeat(const std::string& text, std::size_t count) {
  std::string all;
  all.reserve(text.size() * count);
  for (std::size_t i = 0; i < count; ++i) all += text;
  return all;
}
std::string fill(const std::string& text, std::size_t size) {
  return repeat(text, size / text.size());
}
std::string in_root(const std::string& content) {
  return kDeclaration + "<cmd>" + content + "</cmd>";
}

template <typename Part>
std::string each(std::size_t count, const Part& part) {
  std::string all;
  for (std::size_t i = 0; i < count; ++i) all += part(std::to_string(i));
  return all;
}
template <typename Part>
std::vector<std::string> list(std::size_t count, const Part& part) {
  std::vector<std::string> all;
  for (std::size_t i = 0; i < count; ++i) all.push_back(part(std::to_string(i)));
  return all;
}
std::function<std::vector<std::string>(std::size_t)> path(const std::string& text) {
  return [text](std::size_t) { return std::vector<std::string>{text}; };
}

// An opening that is never closed, and one that is.
std::function<std::string(std::size_t)> opened(const std::string& open) {
  return [open](std::size_t n) { return kDeclaration + "<cmd>" + repeat(open, n); };
}
std::function<std::string(std::size_t)> nested(const std::string& open, const std::string& close) {
  return [=](std::size_t n) { return in_root(repeat(open, n) + repeat(close, n)); };
}
// One text, name or tag that fills the document.
std::function<std::string(std::size_t)> filled(const std::string& before, const std::string& unit,
                                               const std::string& after) {
  return [=](std::size_t n) { return before + fill(unit, n) + after; };
}
std::function<std::string(std::size_t)> repeated(const std::string& unit) {
  return [unit](std::size_t n) { return in_root(repeat(unit, n)); };
}

std::vector<std::string> some_capability_paths(std::size_t n) {
  std::vector<std::string> paths = capability_paths();
  paths.resize(n);
  return paths;
}
std::string many_attributes(std::size_t n) {
  return in_root("<a" + each(n, [](auto i) { return " k" + i + "=\"" + i + "\""; }) + ">x</a>");
}
std::vector<std::string> last_attribute_paths(std::size_t n) {
  std::vector<std::string> paths;
  for (std::size_t i = n - std::min<std::size_t>(n, 500); i < n; ++i)
    paths.push_back("cmd/a k" + std::to_string(i));
  return paths;
}
std::string many_declarations(std::size_t n) {
  return in_root("<a" + each(n, [](auto i) { return " xmlns:p" + i + "=\"urn:" + i + "\""; }) +
                 ">x</a>");
}
std::string numbered_elements(std::size_t n) {
  return in_root(each(n, [](auto i) { return "<a k=\"" + i + "\">x</a>"; }));
}
std::vector<std::string> numbered_paths(std::size_t n) {
  return list(n, [](auto i) { return "cmd/a k=\"" + i + "\""; });
}
std::string capability_of_100_kb(std::size_t) {
  return capability_reply(100'000);
}

const std::string kStart = kDeclaration + "<cmd>";

// clang-format off
const std::vector<Shape>& shapes() {
  static const std::vector<Shape> all = {
    {Kind::kDepth, "1,000,000 levels, opened only", kMillion, Ask::kEvery, 0, opened("<a>"), path("cmd/a/a")},
    {Kind::kDepth, "1,000,000 levels, opened and closed", kMillion, Ask::kEvery, 0, nested("<a>", "</a>"), path("cmd/a/a")},
    {Kind::kDepth, "1,000,000 levels with a prefix, closed", kMillion, Ask::kEvery, 0, nested("<zirk:a>", "</zirk:a>"), path("cmd/zirk:a")},
    {Kind::kDepth, "1,000,000 levels with text, all matched", kMillion, Ask::kEvery, 0, nested("<a>x", "</a>"), path("cmd/")},
    {Kind::kDepth, "100,000 levels, a path as deep", 100'000, Ask::kFirst, 0, nested("<a>", "</a>"), [](std::size_t n) { return std::vector{"cmd" + repeat("/a", n)}; }},
    {Kind::kNames, "1,000,000 names with \"/\", opened only", kMillion, Ask::kEvery, 0, opened("<a/b>"), path("cmd/a/b")},
    {Kind::kNames, "1,000,000 names with \"/\", closed", kMillion, Ask::kEvery, 0, nested("<a/b>", "</b></a>"), path("cmd/a/b")},
    {Kind::kNames, "1,000,000 names with a quote, opened only", kMillion, Ask::kEvery, 0, opened("<a\">"), path("cmd/a")},
    {Kind::kNames, "1,000,000 names with a quote, closed", kMillion, Ask::kEvery, 0, nested("<a\"><b\">", "</a\"/b\">"), path("cmd/a")},
    {Kind::kNames, "1,000,000 names with two quotes, closed", kMillion, Ask::kEvery, 0, nested("<a\"\">", "</a\"\">"), path("cmd/a\"\"")},
    {Kind::kCounts, "100,000 attributes on one element", 100'000, Ask::kFirst, 0, many_attributes, path("cmd/a k7")},
    {Kind::kCounts, "100,000 attributes, the last 500 wanted", 100'000, Ask::kFirst, 0, many_attributes, last_attribute_paths},
    {Kind::kCounts, "100,000 namespace declarations", 100'000, Ask::kFirst, 0, many_declarations, path("cmd/a")},
    {Kind::kCounts, "100,000 matches of one path", 100'000, Ask::kEvery, 0, repeated("<a>x</a>"), path("cmd/a")},
    {Kind::kCounts, "100,000 matches that are empty tags", 100'000, Ask::kEvery, 0, repeated("<a/>"), path("cmd/a")},
    {Kind::kCounts, "100,000 matches between empty tags", 100'000, Ask::kEvery, 0, repeated("x<a/>"), path("cmd")},
    {Kind::kCounts, "100,000 CDATA sections", 100'000, Ask::kEvery, 0, repeated("<![CDATA[x]]>"), path("cmd")},
    {Kind::kCounts, "500 targets, larger documents", 400'000, Ask::kFirst, 0, capability_reply, [](std::size_t) { return capability_paths(); }},
    {Kind::kCounts, "more targets up to 500, 100 KB", 500, Ask::kFirst, 0, capability_of_100_kb, some_capability_paths},
    {Kind::kCounts, "500 replacements", 500, Ask::kReplace, 0, numbered_elements, numbered_paths},
    {Kind::kRuns, "10 MB of one text", kTenMegabytes, Ask::kEvery, 0, filled(kStart, "x", "</cmd>"), path("cmd")},
    {Kind::kRuns, "10 MB without the declaration", kTenMegabytes, Ask::kEvery, -3, filled("<cmd>", "x", "</cmd>"), path("cmd")},
    {Kind::kRuns, "10 MB of beginnings of a declaration", kTenMegabytes, Ask::kEvery, -3, filled("", "<?xm", ""), path("cmd")},
    {Kind::kRuns, "10 MB of \"<\"", kTenMegabytes, Ask::kEvery, -3, filled("", "<", ""), path("cmd")},
    {Kind::kRuns, "10 MB of \"<\" in a comment", kTenMegabytes, Ask::kEvery, 0, filled(kStart + "<!--", "<", "--></cmd>"), path("cmd")},
    {Kind::kRuns, "10 MB of \"<\" in a tag", kTenMegabytes, Ask::kEvery, -8, filled(kStart + "<a k=\"", "<", "\"></a></cmd>"), path("cmd/a k")},
    {Kind::kRuns, "10 MB of \"<!>\" after 10 MB of text", kTenMegabytes, Ask::kEvery, -5, [](std::size_t n) { return kStart + fill("x", n) + fill("<!>", n); }, path("cmd")},
    {Kind::kRuns, "10 MB of \"]\" in a CDATA section", kTenMegabytes, Ask::kEvery, 0, filled(kStart + "<![CDATA[", "]", "]]></cmd>"), path("cmd")},
    {Kind::kRuns, "10 MB of quotes as text", kTenMegabytes, Ask::kEvery, 0, filled(kStart, "\"", "</cmd>"), path("cmd")},
    {Kind::kRuns, "10 MB of quotes in a tag", kTenMegabytes, Ask::kEvery, -8, filled(kStart + "<a ", "\"", "></a></cmd>"), path("cmd/a")},
    {Kind::kRuns, "10 MB of quotes in a name", kTenMegabytes, Ask::kEvery, 0, filled(kStart + "<a", "\"", "><b>x</b>"), path("cmd/a")},
    {Kind::kRuns, "10 MB of empty attributes", kTenMegabytes, Ask::kEvery, 0, filled(kStart + "<a ", "k=\"\"", "></a></cmd>"), path("cmd/a k")},
    {Kind::kRuns, "10 MB of \"/\" in a value", kTenMegabytes, Ask::kEvery, 0, filled(kStart + "<a k=\"", "/", "\"><b>x</b></a></cmd>"), path("cmd/a k/b")},
  };
  return all;
}
// clang-format on

// ---- One call ----

struct Call {
  std::string document;
  std::vector<std::string> paths;
  std::vector<ClXmlParameter> single;
  std::vector<ClXmlListParameter> lists;
  std::string output;
  ClXmlRequest request = {};
  Ask ask = Ask::kFirst;
  std::int32_t result = 0;
  std::size_t answers = 0;

  Call(const Shape& shape, std::size_t n)
      : document(shape.document(n)), paths(shape.paths(n)), ask(shape.ask) {
    request.document = document.data();
    request.documentLength = document.size();
    request.parameterCount = static_cast<std::uint32_t>(paths.size());
    if (ask == Ask::kEvery) {
      lists.resize(paths.size());
      request.parameters = lists.data();
    } else {
      single.resize(paths.size());
      request.parameters = single.data();
    }
    for (std::size_t i = 0; i < lists.size(); ++i) name_path(lists[i], paths[i]);
    for (std::size_t i = 0; i < single.size(); ++i) name_path(single[i], paths[i]);
    if (ask == Ask::kReplace) replace_all();
  }

  void run() {
    if (ask == Ask::kEvery) {
      result = ClXmlRequestParameterList(&request);
      release_lists();
    } else if (ask == Ask::kFirst) {
      result = ClXmlRequestParameter(&request);
      answers = static_cast<std::size_t>(
          std::count_if(single.begin(), single.end(), [](auto& p) { return p.status == 1; }));
    } else {
      request.outputSize = output.size();
      result = ClXmlReplaceParameter(&request);
      answers = paths.size();
    }
  }

 private:
  template <typename Parameter>
  static void name_path(Parameter& parameter, const std::string& text) {
    parameter.path = text.data();
    parameter.pathLength = text.size();
  }
  void replace_all() {
    output.resize(document.size() + 8 * paths.size());
    request.output = output.data();
    for (ClXmlParameter& parameter : single) {
      parameter.newValue = "replaced";
      parameter.newValueLength = 8;
    }
  }
  void release_lists() {
    answers = 0;
    for (const ClXmlListParameter& list_parameter : lists)
      answers += list_parameter.ranges ? list_parameter.rangeCount : 0;
    ClXmlRequestParameterListFree(&request);
    for (ClXmlListParameter& list_parameter : lists) list_parameter.ranges = nullptr;
  }
};

// ---- Stack ----

// Runs `body` on a painted stack; the number of bytes that lost their paint.
std::size_t stack_of(const std::function<void()>& body) {
  constexpr std::size_t kSize = 1024 * 1024;
  constexpr unsigned char kPaint = 0xA5;
  auto* stack = static_cast<unsigned char*>(
      mmap(nullptr, kSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
  std::memset(stack, kPaint, kSize);
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstack(&attributes, stack, kSize);
  pthread_t thread;
  const auto entry = [](void* context) -> void* {
    (*static_cast<const std::function<void()>*>(context))();
    return nullptr;
  };
  void* context = const_cast<void*>(static_cast<const void*>(&body));
  if (pthread_create(&thread, &attributes, entry, context) == 0) pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
  const auto* untouched =
      std::find_if(stack, stack + kSize, [](unsigned char byte) { return byte != kPaint; });
  const auto used = static_cast<std::size_t>(stack + kSize - untouched);
  munmap(stack, kSize);
  return used;
}

// ---- Measuring ----

struct Options {
  bool quick = false;
  const char* points = nullptr;
  const char* part = "";
};

struct Figures {
  std::size_t document = 0;
  std::size_t answers = 0;
  std::int32_t result = 0;
  double seconds = 0;
  std::size_t heap = 0;
  std::size_t leaked = 0;
  std::size_t stack = 0;

  double heap_ratio() const { return static_cast<double>(heap) / static_cast<double>(document); }
  bool heap_is_bounded() const {
    return static_cast<double>(heap) <= kHeapPerByte * static_cast<double>(document) + kHeapBeside;
  }
};

// Of the processor, so that other load counts for little.
double thread_seconds() {
  timespec now = {};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// The best of some runs: three, if they take no longer than `patience`, or a fifth of it.
double best_time(Call& call, double patience) {
  double best = 1e9;
  double total = 0;
  for (int run = 0; total < (run < 3 ? patience : patience / 5) && run < 200; ++run) {
    const double start = thread_seconds();
    call.run();
    const double seconds = thread_seconds() - start;
    best = std::min(best, seconds);
    total += seconds;
  }
  return best;
}

Figures measure(const Shape& shape, std::size_t n, bool quick, std::size_t idle_stack) {
  Call call(shape, n);
  live_bytes = live_blocks = peak_bytes = 0;
  Figures figures;
  figures.stack = stack_of([&call] { call.run(); });
  figures.stack -= std::min(figures.stack, idle_stack);
  figures.heap = peak_bytes;
  figures.leaked = live_blocks;
  figures.document = call.document.size();
  figures.answers = call.answers;
  figures.result = call.result;
  figures.seconds = best_time(call, quick ? 1e-3 : 1.0);
  return figures;
}

constexpr std::size_t kSizes = 7;
using Sizes = std::array<Figures, kSizes>;  // from a 64th, each twice the one before

// The bounds on time hold for the largest three; the rest is for the picture.
constexpr std::size_t kFirstJudged = kSizes - 3;

// How much longer twice the document takes; the machine is shared, so the worse step decides only
// if it can be repeated.
double time_of_twice(const Sizes& sizes) {
  double worst = 0;
  for (std::size_t i = kFirstJudged + 1; i < kSizes; ++i)
    worst = std::max(worst, sizes[i].seconds / sizes[i - 1].seconds);
  return worst;
}
bool time_is_bounded(const Sizes& sizes) {
  for (std::size_t i = kFirstJudged + 1; i < kSizes; ++i) {
    if (sizes[i].seconds < kTooShortToCompare) continue;
    if (sizes[i].seconds > kTimeOfTwice * sizes[i - 1].seconds) return false;
  }
  return true;
}

Sizes measure_sizes(const Shape& shape, const Options& options, std::size_t idle_stack) {
  const int attempts = options.quick ? 1 : 4;
  const auto size_of = [&](std::size_t i) {
    return shape.full >> (kSizes - 1 - i) >> (options.quick ? 6 : 0);
  };
  Sizes sizes;
  for (std::size_t i = 0; i < kSizes; ++i)
    sizes[i] = measure(shape, std::max<std::size_t>(size_of(i), 1), options.quick, idle_stack);
  for (int attempt = 1; attempt < attempts && !time_is_bounded(sizes); ++attempt) {
    for (std::size_t i = kFirstJudged; i < kSizes; ++i) {
      Call call(shape, size_of(i));
      sizes[i].seconds = std::min(sizes[i].seconds, best_time(call, 1.0));
    }
  }
  return sizes;
}

int report_faults(const Shape& shape, const Sizes& sizes, bool quick) {
  int faults = 0;
  const auto fault = [&](const char* what) {
    std::fprintf(stderr, "%s: %s\n", shape.name, what);
    ++faults;
  };
  for (const Figures& figures : sizes) {
    if (figures.result != shape.result) fault("not the expected result");
    if (!figures.heap_is_bounded()) fault("more heap than the bound");
    if (figures.leaked != 0) fault("blocks left behind");
    if (figures.stack > kMostStack) fault("more stack than the bound");
  }
  if (sizes.back().stack > sizes[kFirstJudged].stack + kStackSlack)
    fault("stack grows with the document");
  if (!quick && !time_is_bounded(sizes)) fault("time grows faster than the document");
  return faults;
}

// ---- The table ----

std::string bytes_text(std::size_t bytes) {
  char text[32];
  const auto value = static_cast<double>(bytes);
  if (bytes < 10'000) {
    std::snprintf(text, sizeof text, "%zu B", bytes);
  } else if (bytes < 1'000'000) {
    std::snprintf(text, sizeof text, "%.0f KB", value / 1e3);
  } else {
    std::snprintf(text, sizeof text, "%.1f MB", value / 1e6);
  }
  return text;
}
std::string time_text(double seconds) {
  char text[32];
  if (seconds < 1e-3) {
    std::snprintf(text, sizeof text, "%.1f us", seconds * 1e6);
  } else {
    std::snprintf(text, sizeof text, "%.2f ms", seconds * 1e3);
  }
  return text;
}

void print_head() {
  std::printf(
      "| shape | document | result | answers | at n/4 | at n/2 | at n | for twice the size | peak "
      "heap | heap / document | stack |\n|---|--:|--:|--:|--:|--:|--:|--:|--:|--:|--:|\n");
}

void print_row(const Shape& shape, const Sizes& sizes) {
  const Figures& full = sizes.back();
  std::printf("| %s | %s | %d | %zu | %s | %s | %s | %.2f | %s | %.1f | %s |\n", shape.name,
              bytes_text(full.document).c_str(), full.result, full.answers,
              time_text(sizes[kSizes - 3].seconds).c_str(),
              time_text(sizes[kSizes - 2].seconds).c_str(), time_text(full.seconds).c_str(),
              time_of_twice(sizes), bytes_text(full.heap).c_str(), full.heap_ratio(),
              bytes_text(full.stack).c_str());
  std::fflush(stdout);
}

void print_bounds() {
  std::printf(
      "\nBounds: twice the document takes at most %.1f times as long, where it takes more than "
      "%.1f ms; the heap stays under %.0f times the document plus %.0f KiB; the stack stays under "
      "%zu KiB and does not grow with the document by more than %zu bytes.\n",
      kTimeOfTwice, kTooShortToCompare * 1e3, kHeapPerByte, kHeapBeside / 1024, kMostStack / 1024,
      kStackSlack);
}

void write_points(std::FILE* file, const Shape& shape, const Sizes& sizes) {
  for (const Figures& figures : sizes)
    std::fprintf(file, "%s\t%s\t%zu\t%.9f\n", kKindNames[static_cast<std::size_t>(shape.kind)],
                 shape.name, figures.document, figures.seconds);
}

Options read_options(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--quick") == 0) {
      options.quick = true;
    } else if (std::strcmp(argv[i], "--points") == 0 && i + 1 < argc) {
      options.points = argv[++i];
    } else {
      options.part = argv[i];
    }
  }
  return options;
}

}  // namespace

int main(int argc, char** argv) {
  const Options options = read_options(argc, argv);
  std::FILE* points = options.points ? std::fopen(options.points, "w") : nullptr;
  if (options.points && !points) {
    std::perror(options.points);
    return 1;
  }
  mallopt(M_TRIM_THRESHOLD, 1 << 30);
  mallopt(M_MMAP_THRESHOLD, 1 << 30);
  const std::size_t idle_stack = stack_of([] {});
  print_head();
  int faults = 0;
  for (const Shape& shape : shapes()) {
    if (!std::strstr(shape.name, options.part)) continue;
    const Sizes sizes = measure_sizes(shape, options, idle_stack);
    print_row(shape, sizes);
    if (points) write_points(points, shape, sizes);
    faults += report_faults(shape, sizes, options.quick);
  }
  print_bounds();
  if (points) std::fclose(points);
  return faults == 0 ? 0 : 1;
}
