// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "client/http_channel.hpp"

#include <gtest/gtest.h>

#include <mutex>
#include <thread>

#include "printer/http_server.hpp"

namespace pxcl::client {
namespace {

using namespace std::chrono_literals;
using printer::Answer;
using Clock = std::chrono::steady_clock;

constexpr auto kLong = 20s;  // more than any test waits

// A server that gives one answer to everything, and keeps the last request.
class Server {
 public:
  explicit Server(Answer answer)
      : answer_(std::move(answer)),
        server_({[this](std::string_view request) { return take(request); },
                 [] { return std::string("MFG:x;"); }},
                0) {}

  [[nodiscard]] std::string url() const {
    return "http://127.0.0.1:" + std::to_string(server_.port());
  }

  std::string request() {
    const std::lock_guard lock(mutex_);
    return request_;
  }

 private:
  Answer take(std::string_view request) {
    const std::lock_guard lock(mutex_);
    request_ = request;
    return answer_;
  }

  std::mutex mutex_;
  Answer answer_;
  std::string request_;
  printer::HttpServer server_;
};

std::unique_ptr<HttpChannel> channel_to(const std::string& url,
                                        std::chrono::milliseconds limit = kLong,
                                        CancelFlag cancelled = nullptr) {
  return HttpChannel::open(url, {.time_out = limit, .cancelled = cancelled}).value();
}

Answer reply(std::string bytes) {
  return {.kind = Answer::Kind::kReply, .bytes = std::move(bytes)};
}

TEST(HttpChannel, CarriesCommandDataAndReply) {
  Server server(reply("<cmd></cmd>"));
  const auto channel = channel_to(server.url() + "/");
  std::string data;
  for (int i = 0; i < 3000000; ++i) data += static_cast<char>(i * 7 >> 3);
  for (const std::string& sent : {std::string(), data}) {
    const auto got = channel->exchange("<cmd>1</cmd>", sent);
    ASSERT_TRUE(got) << got.error().message;
    EXPECT_EQ(got.value(), "<cmd></cmd>");
    EXPECT_EQ(server.request(), "<cmd>1</cmd>" + sent);
  }
  EXPECT_EQ(channel->device_id().value(), "MFG:x;");
}

TEST(HttpChannel, TakesTheLongestReplyAndNoLonger) {
  Server longest(reply(std::string(kLongestReply, 'x')));
  EXPECT_EQ(channel_to(longest.url())->exchange("<cmd/>", "").value().size(), kLongestReply);
  Server longer(reply(std::string(kLongestReply + 1, 'x')));
  EXPECT_EQ(channel_to(longer.url())->exchange("<cmd/>", "").error().fault, Fault::kBadReply);
}

TEST(HttpChannel, TellsFailuresApart) {
  struct Row {
    const char* name;
    Answer answer;
    Fault fault;
  };
  using Kind = Answer::Kind;
  const Row rows[] = {
      {"no answer", {Kind::kNoAnswer, ""}, Fault::kUnreachable},
      {"drip", {Kind::kDrip, std::string(100000, 'x'), 20ms}, Fault::kUnreachable},
      {"closed", {Kind::kClose, ""}, Fault::kUnreachable},
      {"closed in the reply", {Kind::kClose, "<cmd>"}, Fault::kUnreachable},
      {"HTTP status", {Kind::kReply, "no", {}, true}, Fault::kBadReply},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Server server(row.answer);
    const Clock::time_point begin = Clock::now();
    const auto got = channel_to(server.url(), 300ms)->exchange("<cmd/>", "data");
    ASSERT_FALSE(got);
    EXPECT_EQ(got.error().fault, row.fault) << got.error().message;
    EXPECT_LT(Clock::now() - begin, 10s);
  }
}

TEST(HttpChannel, StopsWhenTheFlagIsSet) {
  Server server({.kind = Answer::Kind::kNoAnswer, .bytes = ""});
  std::atomic<bool> cancelled = false;
  const auto channel = channel_to(server.url(), 1h, &cancelled);
  std::jthread setter([&] {
    std::this_thread::sleep_for(100ms);
    cancelled = true;
  });
  const Clock::time_point begin = Clock::now();
  EXPECT_EQ(channel->exchange("<cmd/>", "").error().fault, Fault::kCancelled);
  EXPECT_LT(Clock::now() - begin, kLong);
  // A last word goes out all the same, within its own limit.
  EXPECT_EQ(channel->exchange_regardless("<cmd/>", 200ms).error().fault, Fault::kUnreachable);
  EXPECT_LT(Clock::now() - begin, kLong);
}

TEST(HttpChannel, SendsALastWordInSpiteOfTheFlag) {
  Server server(reply("<cmd/>"));
  const std::atomic<bool> cancelled = true;
  EXPECT_EQ(
      channel_to(server.url(), kLong, &cancelled)->exchange_regardless("<last/>", kLong).value(),
      "<cmd/>");
  EXPECT_EQ(server.request(), "<last/>");
}

TEST(HttpChannel, NeedsAnAddressAndSomebodyThere) {
  for (const char* url : {"", "printer", "ftp://x", "http://", "file:///etc/passwd"}) {
    EXPECT_EQ(HttpChannel::open(url, {}).error().fault, Fault::kBadInput) << url;
  }
  std::string url;
  {
    Server server(reply(""));
    url = server.url();
  }
  for (const std::string& nobody : {url, std::string("http://no-such-host.invalid")}) {
    EXPECT_EQ(channel_to(nobody)->exchange("<cmd/>", "").error().fault, Fault::kUnreachable);
    EXPECT_EQ(channel_to(nobody)->device_id().error().fault, Fault::kUnreachable);
  }
}

}  // namespace
}  // namespace pxcl::client
