// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The client against the virtual printer: every profile, every fault, two clients at once.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <memory>

#include "cli/virtual_channel.hpp"
#include "client/http_channel.hpp"
#include "client/print_job.hpp"
#include "memory_pages.hpp"
#include "printer/http_server.hpp"
#include "tests/printer/rasters.hpp"

namespace pxcl::client {
namespace {

using namespace std::chrono_literals;

constexpr MaintenanceLimits kPatient = {
    .completion = 20s, .poll_interval = 1ms, .cancelled = nullptr};

std::string raster_page() {
  printer::RasterPage page;
  page.width = page.bytes_per_line = 40;
  page.height = 30;
  for (unsigned line = 0; line < page.height; ++line) {
    page.lines.emplace_back(page.width, static_cast<char>(line));
  }
  return make_raster({page}, printer::RasterForm::kPwg);
}

// A virtual printer with a folder for its pages, and a client at it.
class Session {
 public:
  explicit Session(std::string_view profile, const std::vector<std::string>& faults = {})
      : folder_((std::filesystem::temp_directory_path() / "pxcl-session-XXXXXX").string()) {
    EXPECT_NE(::mkdtemp(folder_.data()), nullptr);
    virtual_printer =
        std::make_shared<printer::VirtualPrinter>(printer::profile_named(profile), folder_, faults);
    channel = std::make_unique<cli::VirtualChannel>(
        virtual_printer, cli::VirtualChannel::Options{.time_out = 200ms, .cancelled = nullptr});
    options.title = "]]> \"M\xFCnchen\" & <co>";
    options.chunk_size = 100;
    options.poll_interval = 0ms;
    options.attention_limit = 20ms;
    options.completion_limit = 20s;
    options.cancel_limit = 200ms;
  }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  ~Session() { std::filesystem::remove_all(folder_); }

  Result<PrintReport> print(Channel& way, const Wishes& wishes = {}, std::size_t pages = 2) {
    Printer client(way);
    const auto capability = client.print_capability();
    if (!capability) return capability.error();
    const auto status = client.status();
    if (!status) return status.error();
    const auto settings = complete_settings(wishes, capability.value(), status.value());
    if (!settings) return settings.error();
    MemoryPages source(std::vector<std::string>(pages, raster_page()));
    return PrintJob(client, capability.value(), settings.value(), options).print(source);
  }
  Result<PrintReport> print() { return print(*channel, a4()); }

  static Wishes a4() {
    Wishes wishes;
    wishes.size = "iso_a4_210x297mm";
    return wishes;
  }

  /// What the printer says that it did, for a test that fails.
  std::string log() const {
    std::string all;
    for (const std::string& line : virtual_printer->log()) all += line + "\n";
    return all;
  }

  std::shared_ptr<printer::VirtualPrinter> virtual_printer;
  std::unique_ptr<cli::VirtualChannel> channel;
  PrintOptions options;

 private:
  std::string folder_;
};

TEST(Session, PrintsOnEveryPaperOfEveryProfile) {
  for (const std::string& profile : printer::profile_names()) {
    Session first(profile);
    const PrintCapability capability = Printer(*first.channel).print_capability().value();
    EXPECT_FALSE(capability.sizes.empty() || capability.media.empty());
    const Status status = Printer(*first.channel).status().value();
    for (const LoadedPaper& paper : status.paper) {
      if (paper.by_panel) continue;
      SCOPED_TRACE(profile + " " + std::string(paper.type.keyword) + " " +
                   std::string(paper.size.keyword));
      Session session(profile);
      // Not every bin holds two sheets.
      session.options.on_progress = [&](const Progress& progress) {
        if (progress.attention) session.virtual_printer->attend();
      };
      Wishes wishes;
      wishes.size = paper.size.keyword;
      wishes.type = paper.type.keyword;
      const auto report = session.print(*session.channel, wishes);
      ASSERT_TRUE(report) << report.error().message << "\n" << session.log();
      EXPECT_EQ(session.virtual_printer->pages().size(), 2U);
      EXPECT_TRUE(session.virtual_printer->is_idle());
    }
  }
}

TEST(Session, AnswersEveryQuestionInEveryProfile) {
  for (const std::string& profile : printer::profile_names()) {
    SCOPED_TRACE(profile);
    Session session(profile);
    Printer client(*session.channel);
    EXPECT_TRUE(client.identity().value().takes_commands);
    EXPECT_TRUE(client.status());
    EXPECT_TRUE(client.maintenance_capability());
    EXPECT_TRUE(client.job_ids().value().empty());
    EXPECT_TRUE(client.clean(kPatient)) << session.log();
    EXPECT_TRUE(client.nozzle_check(kPatient)) << session.log();
    EXPECT_TRUE(client.align(kPatient)) << session.log();
    const auto time = client.set_time(1800000000, kPatient);
    EXPECT_TRUE(time || time.error().fault == Fault::kUnsuitable) << session.log();
    EXPECT_TRUE(session.virtual_printer->is_idle());
    EXPECT_TRUE(client.power_off());
    EXPECT_EQ(client.status().error().fault, Fault::kUnreachable);
  }
}

TEST(Session, EndsWellWithEveryFault) {
  struct Row {
    const char* fault;
    Fault outcome;
  };
  const Row rows[] = {
      {"paper-out at page 1", Fault::kAttention},
      {"paper-out at page 2", Fault::kAttention},
      {"cover-open after 1 sends", Fault::kAttention},
      {"jam after 3 sends", Fault::kAttention},
      {"ink-out at page 2", Fault::kAttention},
      {"ng DeivceUseOtherJob to StartJob", Fault::kRefused},
      {"ng ParameterError to SetConfiguration", Fault::kRefused},
      {"ng IllegalJobID to SetPageConfiguration", Fault::kRefused},
      {"ng DataSizeOver to SendData", Fault::kRefused},
      {"ng Suspended to EndJob", Fault::kRefused},
      {"wrong-operation to StartJob", Fault::kBadReply},
      {"wrong-operation to SendData", Fault::kBadReply},
      {"wrong-operation to EndJob", Fault::kBadReply},
      {"cut reply to GetCapability", Fault::kUnreachable},
      {"cut reply to SetPageConfiguration", Fault::kUnreachable},
      {"garbage to GetStatus", Fault::kBadReply},
      {"garbage to StartJob", Fault::kBadReply},
      {"garbage to SendData", Fault::kBadReply},
      {"huge reply to SendData", Fault::kBadReply},
      {"drip reply to SetConfiguration every 50 ms", Fault::kUnreachable},
      {"no-answer to StartJob", Fault::kUnreachable},
      {"no-answer to EndJob", Fault::kUnreachable},
      {"close on SendData", Fault::kUnreachable},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.fault);
    Session session("office", {row.fault});
    const auto report = session.print();
    ASSERT_FALSE(report) << session.log();
    EXPECT_EQ(report.error().fault, row.outcome) << report.error().message << "\n" << session.log();
    EXPECT_TRUE(session.virtual_printer->is_idle()) << session.log();
  }
}

TEST(Session, GoesOnOnceAPersonCame) {
  Session session("office", {"paper-out at page 2"});
  session.options.attention_limit = 20s;
  bool called = false;
  session.options.on_progress = [&](const Progress& progress) {
    if (!progress.attention) return;
    called = true;
    session.virtual_printer->attend();
  };
  const auto report = session.print();
  ASSERT_TRUE(report) << report.error().message << "\n" << session.log();
  EXPECT_TRUE(called);
  EXPECT_EQ(session.virtual_printer->pages().size(), 2U);
}

TEST(Session, OfASecondClientIsRefusedAndHarmless) {
  Session session("office");
  std::optional<Result<PrintReport>> second;
  session.options.on_progress = [&](const Progress& progress) {
    if (second || progress.total_sent == 0) return;
    session.options.on_progress = nullptr;
    second = session.print();
  };
  const auto first = session.print();
  EXPECT_TRUE(first) << first.error().message << "\n" << session.log();
  ASSERT_TRUE(second);
  ASSERT_FALSE(*second);
  EXPECT_EQ(second->error().fault, Fault::kRefused);
  EXPECT_NE(second->error().message.find("busy with another job"), std::string::npos)
      << second->error().message;
  EXPECT_EQ(session.virtual_printer->pages().size(), 2U);
  EXPECT_TRUE(session.virtual_printer->is_idle());
}

TEST(Session, OverHttpIsStoppedInMidPage) {
  Session session("photo");
  printer::HttpServer server(*session.virtual_printer, 0);
  std::atomic<bool> cancelled = false;
  const auto way = HttpChannel::open("http://127.0.0.1:" + std::to_string(server.port()),
                                     {.time_out = 20s, .cancelled = &cancelled});
  ASSERT_TRUE(way);
  session.options.cancelled = &cancelled;
  session.options.cancel_limit = 20s;
  session.options.on_progress = [&](const Progress& progress) {
    if (progress.page == 2 && progress.page_sent > 0) cancelled = true;
  };
  Wishes wishes;
  wishes.type = "stationery";
  const auto report = session.print(*way.value(), wishes);
  ASSERT_FALSE(report);
  EXPECT_EQ(report.error().fault, Fault::kCancelled) << report.error().message;
  EXPECT_TRUE(session.virtual_printer->is_idle()) << session.log();
  cancelled = false;
  session.options.on_progress = nullptr;
  EXPECT_TRUE(session.print(*way.value(), wishes)) << session.log();
}

TEST(Session, SetsThePrintersClock) {
  for (const auto& [profile, service] :
       {std::pair("photo", "maintenance"), std::pair("office", "print")}) {
    Session session(profile);
    ASSERT_TRUE(Printer(*session.channel).set_time(1800000000, kPatient)) << session.log();
    EXPECT_NE(session.log().find("SetJobConfiguration " + std::string(service)), std::string::npos)
        << session.log();
  }
}

}  // namespace
}  // namespace pxcl::client
