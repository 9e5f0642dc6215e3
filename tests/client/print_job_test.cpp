// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// A job, from StartJob to its end, against a printer that fails at any of its steps.

#include "client/print_job.hpp"

#include <gtest/gtest.h>

#include <set>
#include <stdexcept>

#include "client/job.hpp"
#include "memory_pages.hpp"
#include "scripted_printer.hpp"

namespace pxcl::client {
namespace {

using namespace std::chrono_literals;

constexpr char kJob[] = "00000042";

std::vector<std::string> three_pages() {
  return {std::string(2500, 'a'), std::string(1000, 'b'), std::string(1, 'c')};
}

// A job with short limits; every status is looked at.
class Job {
 public:
  Job() {
    printer.capability = kCapability;
    printer.states = {kLoaded};
    options.job_id = kJob;
    options.title = "title";
    options.chunk_size = 1000;
    options.poll_interval = 0ms;
    options.attention_limit = 20ms;
    options.completion_limit = 20s;
  }

  Result<PrintReport> print(PageSource& pages) {
    Printer client(printer);
    const PrintCapability capability =
        read_print_capability(capability_reply(printer.capability)).value();
    const Status status = read_status(status_reply(kLoaded)).value();
    const Settings settings = complete_settings({}, capability, status).value();
    return PrintJob(client, capability, settings, options).print(pages);
  }

  Result<PrintReport> print() {
    MemoryPages pages(three_pages());
    return print(pages);
  }

  ScriptedPrinter printer;
  PrintOptions options;
};

// The job fails as it should, is cancelled that often, and is open no more.
void expect_failure(Job& job, const Result<PrintReport>& report, Fault fault, unsigned cancelled,
                    const char* words = "") {
  ASSERT_FALSE(report);
  EXPECT_EQ(report.error().fault, fault) << report.error().message;
  EXPECT_NE(report.error().message.find(words), std::string::npos) << report.error().message;
  EXPECT_EQ(job.printer.count("CancelJob"), cancelled);
  EXPECT_FALSE(job.printer.has_open_job());
}

// Without the looks at the status.
std::vector<std::string> steps_of(const ScriptedPrinter& printer) {
  std::vector<std::string> steps = printer.operations;
  std::erase(steps, "GetStatus");
  return steps;
}

TEST(PrintJob, GoesThroughItsSteps) {
  Job job;
  job.printer.statuses_to_the_end = 5;
  const auto report = job.print();
  ASSERT_TRUE(report) << report.error().message;
  EXPECT_EQ(report.value().pages, 3U);
  EXPECT_EQ(report.value().bytes, 3501U);
  EXPECT_EQ(report.value().job_id, kJob);
  EXPECT_EQ(steps_of(job.printer),
            (std::vector<std::string>{"StartJob", "SetJobConfiguration", "SetConfiguration",
                                      "SetPageConfiguration", "SendData", "SendData", "SendData",
                                      "SetPageConfiguration", "SendData", "SetPageConfiguration",
                                      "SendData", "EndJob"}));
  EXPECT_FALSE(job.printer.has_open_job());
  EXPECT_EQ(job.printer.operations.back(), "GetStatus");
  EXPECT_NE(job.printer.last("StartJob").find("<![CDATA[00000042 title]]>"), std::string::npos);
  EXPECT_NE(job.printer.last("StartJob").find("<vrx:host_environment>linux<"), std::string::npos);
  EXPECT_NE(job.printer.last("SetJobConfiguration").find("<zirk:datetime>20"), std::string::npos);
  EXPECT_NE(job.printer.last("SetConfiguration").find("<zirk:papersize>iso_a4_210x297mm<"),
            std::string::npos);
  EXPECT_NE(job.printer.last("SendData").find("<zirk:format>PWGRaster<"), std::string::npos);
}

TEST(PrintJob, SendsEveryByteInChunks) {
  for (const std::size_t piece : {1U, 7U, 1000U, 5000U}) {
    for (const std::size_t chunk : {1U, 999U, 2500U, 1000000U}) {
      Job job;
      job.options.chunk_size = chunk;
      job.options.poll_interval = 1h;
      MemoryPages pages(three_pages(), piece);
      ASSERT_TRUE(job.print(pages));
      std::string all;
      for (const std::string& data : job.printer.data) {
        EXPECT_LE(data.size(), chunk);
        all += data;
      }
      EXPECT_EQ(all, std::string(2500, 'a') + std::string(1000, 'b') + 'c');
    }
  }
}

TEST(PrintJob, TellsOfTheNextPageWherePrintersWantToKnow) {
  std::vector<std::string> told;
  for (const bool wants : {true, false}) {
    Job job;
    if (!wants) job.printer.capability.erase(job.printer.capability.find("<vrx:nextpage>"), 36);
    ASSERT_TRUE(job.print());
    for (std::size_t i = 0; i < job.printer.operations.size(); ++i) {
      if (job.printer.operations[i] != "SetPageConfiguration") continue;
      const std::string& command = job.printer.commands[i];
      const std::size_t at = command.find("<vrx:nextpage>");
      told.push_back(at == std::string::npos ? "-" : command.substr(at + 14, 2));
    }
  }
  EXPECT_EQ(told, (std::vector<std::string>{"ON", "ON", "OF", "-", "-", "-"}));
}

TEST(PrintJob, ReportsProgress) {
  Job job;
  std::vector<Progress> heard;
  job.options.on_progress = [&](const Progress& progress) { heard.push_back(progress); };
  ASSERT_TRUE(job.print());
  std::uint64_t total = 0;
  unsigned page = 1;
  for (const Progress& progress : heard) {
    EXPECT_GE(progress.total_sent, total);
    EXPECT_GE(progress.page, page);
    EXPECT_LE(progress.page_sent, progress.page_size);
    EXPECT_EQ(progress.another_follows, progress.page < 3);
    total = progress.total_sent;
    page = progress.page;
  }
  ASSERT_FALSE(heard.empty());
  EXPECT_TRUE(heard.back().all_sent);
  EXPECT_EQ(heard.back().page, 3U);
  EXPECT_EQ(heard.back().status->state->keyword, "idle");
}

// ---- Damaged replies at every step

struct Step {
  const char* operation;
  unsigned number;  // of its replies
  bool in_job;      // the job is open, or may be, when the reply has come
};
const Step kSteps[] = {
    {"GetStatus", 1, false},
    {"StartJob", 1, true},
    {"SetJobConfiguration", 1, true},
    {"SetConfiguration", 1, true},
    {"SetPageConfiguration", 1, true},
    {"SetPageConfiguration", 3, true},
    {"SendData", 1, true},
    {"SendData", 5, true},
    {"GetStatus", 2, true},
    {"EndJob", 1, true},
    {"GetStatus", 7, true},
};
TEST(PrintJob, IsCancelledWhereverItFails) {
  for (const Step& step : kSteps) {
    for (const DamageRow& row : kDamageRows) {
      const bool isStatus = std::string_view(step.operation) == "GetStatus";
      if (isStatus && row.damage == Damage::kWrongJob) continue;
      SCOPED_TRACE(std::string(step.operation) + " " + std::to_string(step.number) + ", damage " +
                   std::to_string(static_cast<int>(row.damage)));
      Job job;
      job.printer.statuses_to_the_end = 1000;
      job.printer.damage(step.operation, row.damage, "IllegalOperation", step.number);
      const auto report = job.print();
      const bool neverStarted = !step.in_job || (row.damage == Damage::kNg &&
                                                 std::string_view(step.operation) == "StartJob");
      expect_failure(job, report, row.fault, neverStarted ? 0 : 1);
      EXPECT_TRUE(report.error().message.ends_with('.')) << report.error().message;
    }
  }
}

TEST(PrintJob, OnABusyPrinterSaysSo) {
  Job job;
  job.printer.damage("StartJob", Damage::kNg, "DeivceUseOtherJob");
  expect_failure(job, job.print(), Fault::kRefused, 0, "busy with another job");
}

TEST(PrintJob, SaysWhenItCouldNotBeCancelled) {
  struct Row {
    Damage damage;
    const char* reason;
    bool says_so;
  };
  // An "NG" to CancelJob: there is no such job, which is well.
  for (const Row& row : {Row{Damage::kUnreachable, "", true}, Row{Damage::kGarbage, "", true},
                         Row{Damage::kNg, "NotStart", false}}) {
    Job job;
    job.printer.damage("SendData", Damage::kNg, "DataSizeOver");
    job.printer.damage("CancelJob", row.damage, row.reason);
    const auto report = job.print();
    ASSERT_FALSE(report);
    EXPECT_EQ(report.error().fault, Fault::kRefused);
    EXPECT_EQ(report.error().message.find("did not confirm") != std::string::npos, row.says_so)
        << report.error().message;
  }
}

// ---- Attention

const std::string kStoppedState =
    "<zirk:status>stopped</zirk:status><zirk:status_detail>MediaEmpty</zirk:status_detail>"
    "<zirk:current_support_code>1003</zirk:current_support_code>";

TEST(PrintJob, WaitsForAPerson) {
  Job job;
  job.options.attention_limit = 10s;
  job.printer.states = {kLoaded, kStoppedState, kStoppedState, kStoppedState, kLoaded};
  std::set<std::string> heard;
  job.options.on_progress = [&](const Progress& progress) {
    if (progress.attention) heard.insert(*progress.attention);
  };
  ASSERT_TRUE(job.print());
  ASSERT_EQ(heard.size(), 1U);
  EXPECT_NE(heard.begin()->find("out of paper (support code 1003)"), std::string::npos)
      << *heard.begin();
}

TEST(PrintJob, IsCancelledWhenNobodyComes) {
  for (const unsigned good : {0U, 1U, 3U, 6U}) {
    Job job;
    job.printer.statuses_to_the_end = 1000;
    job.printer.states.assign(good, kLoaded);
    job.printer.states.push_back(kStoppedState);
    // Before the first look nothing has been opened.
    expect_failure(job, job.print(), Fault::kAttention, good == 0 ? 0 : 1, "out of paper");
  }
}

TEST(PrintJob, AsksASuspendedPrinterAgain) {
  for (const char* operation : {"SetConfiguration", "SetPageConfiguration", "SendData", "EndJob"}) {
    SCOPED_TRACE(operation);
    Job job;
    job.printer.damage(operation, Damage::kNg, "Suspended", 1, 2);
    const auto report = job.print();
    EXPECT_TRUE(report) << report.error().message;
    std::string all;
    for (const std::string& data : job.printer.data) all += data;
    const bool wasData = std::string_view(operation) == "SendData";
    EXPECT_EQ(all.size(), 3501U + (wasData ? 2000 : 0));
  }
}

TEST(PrintJob, DoesNotAskASuspendedPrinterForEver) {
  Job job;
  job.options.poll_interval = 1ms;
  job.printer.damage("SendData", Damage::kNg, "Suspended");
  expect_failure(job, job.print(), Fault::kRefused, 1);
}

// ---- The end

TEST(PrintJob, ThatIsNeverDoneIsCancelled) {
  Job job;
  job.options.poll_interval = 1ms;
  job.options.completion_limit = 50ms;
  job.printer.statuses_to_the_end = 1000000;
  expect_failure(job, job.print(), Fault::kAttention, 1);
}

TEST(PrintJob, ThatWasCancelledAtThePrinterIsNotCancelledAgain) {
  Job job;
  job.printer.statuses_to_the_end = 5;
  job.printer.job_elements = "<zirk:jobprogress>canceling</zirk:jobprogress>";
  expect_failure(job, job.print(), Fault::kCancelled, 0);
}

// A printer that does not repeat descriptions still names the job at work.
TEST(PrintJob, IsNotDoneWhileItIsTheOneAtWork) {
  Job job;
  job.printer.statuses_to_the_end = 4;
  job.printer.repeats_descriptions = false;
  ASSERT_TRUE(job.print());
  EXPECT_FALSE(job.printer.has_open_job());
}

// ---- The caller

TEST(PrintJob, StopsWhenTheFlagIsSet) {
  for (const char* operation : {"GetStatus", "StartJob", "SetConfiguration", "SetPageConfiguration",
                                "SendData", "EndJob"}) {
    SCOPED_TRACE(operation);
    Job job;
    std::atomic<bool> cancelled = false;
    job.options.cancelled = &cancelled;
    job.printer.statuses_to_the_end = 1000;
    job.printer.on_command = [&](std::string_view now) {
      if (now == operation) cancelled = true;
    };
    const bool wasOpen = std::string_view(operation) != "GetStatus";
    expect_failure(job, job.print(), Fault::kCancelled, wasOpen ? 1 : 0);
  }
}

class BadPages : public PageSource {
 public:
  explicit BadPages(std::string_view kind) : kind_(kind) {}

  Result<std::optional<Page>> next_page() override {
    if (kind_ == "error") return Error{Fault::kBadInput, "No such file."};
    if (kind_ == "throws") throw std::runtime_error("torn\npage");
    if (kind_ == "none" || (page_ == 1 && kind_ != "too many") || page_ == 2) {
      return std::optional<Page>();
    }
    ++page_;
    left_ = kind_ == "short" ? 99 : kind_ == "long" ? 101 : 100;
    return std::optional(Page{kind_ == "empty" ? 0U : 100U, kind_ == "too few"});
  }

  Result<std::size_t> read(std::span<char> buffer) override {
    if (kind_ == "throws on read") throw std::length_error("torn");
    if (kind_ == "throws nothing") throw 1;
    if (kind_ == "error on read") return Error{Fault::kUnsuitable, "No such page."};
    if (kind_ == "too much") return buffer.size() + 1;
    const std::size_t count = std::min(buffer.size(), left_);
    left_ -= count;
    return count;
  }

 private:
  std::string_view kind_;
  unsigned page_ = 0;
  std::size_t left_ = 0;
};

TEST(PrintJob, OutlivesBadPages) {
  for (const std::string_view kind :
       {"none", "empty", "error", "throws", "throws on read", "throws nothing", "error on read",
        "short", "long", "too much", "too few", "too many"}) {
    SCOPED_TRACE(kind);
    Job job;
    BadPages pages(kind);
    const auto report = job.print(pages);
    const bool starts = kind != "none" && kind != "empty" && kind != "error" && kind != "throws";
    expect_failure(job, report, kind == "error on read" ? Fault::kUnsuitable : Fault::kBadInput,
                   starts ? 1 : 0);
    EXPECT_EQ(job.printer.count("StartJob"), starts ? 1U : 0U);
  }
}

TEST(PrintJob, OutlivesACallbackThatThrows) {
  for (unsigned when : {1U, 2U, 4U, 9U}) {
    Job job;
    unsigned calls = 0;
    job.options.on_progress = [&](const Progress&) {
      if (++calls == when) throw std::runtime_error("window closed");
    };
    expect_failure(job, job.print(), Fault::kBadInput, when == 1 ? 0 : 1, "window closed");
  }
}

TEST(PrintJob, RefusesWhatCanNotWork) {
  Job bad_id;
  bad_id.options.job_id = "<job>   ";
  EXPECT_EQ(bad_id.print().error().fault, Fault::kBadInput);
  EXPECT_TRUE(bad_id.printer.operations.empty());

  Job no_raster;
  const std::string format = "JPEG,PWGRaster";
  no_raster.printer.capability.replace(no_raster.printer.capability.find(format), format.size(),
                                       "JPEG,RAW");
  EXPECT_EQ(no_raster.print().error().fault, Fault::kUnsuitable);
  EXPECT_TRUE(no_raster.printer.operations.empty());
}

TEST(NewJobId, IsEightDigitsAndAnotherEachTime) {
  std::set<std::string> ids;
  for (int i = 0; i < 20; ++i) {
    const std::string id = new_job_id();
    EXPECT_EQ(CheckJobID(nullptr, id.data(), id.size()), 0) << id;
    ids.insert(id);
  }
  EXPECT_GT(ids.size(), 18U);
}

}  // namespace
}  // namespace pxcl::client
