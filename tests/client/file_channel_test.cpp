// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "client/file_channel.hpp"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <functional>
#include <thread>

#include "tests/support/folder.hpp"

namespace pxcl::client {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto kLong = 20s;  // more than any test waits

// The other end of the wire: a thread with blocking calls.
class Peer {
 public:
  explicit Peer(int descriptor) : descriptor_(descriptor) {}
  Peer(const Peer&) = delete;
  Peer& operator=(const Peer&) = delete;
  ~Peer() { close(); }

  std::string read(std::size_t length) {
    std::string bytes(length, '\0');
    std::size_t done = 0;
    while (done < length) {
      const ssize_t count = ::read(descriptor_, bytes.data() + done, length - done);
      if (count <= 0) break;
      done += static_cast<std::size_t>(count);
    }
    bytes.resize(done);
    return bytes;
  }

  void write(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t count = ::write(descriptor_, bytes.data(), bytes.size());
      if (count <= 0) return;
      bytes.remove_prefix(static_cast<std::size_t>(count));
    }
  }

  void close() {
    if (descriptor_ >= 0) ::close(descriptor_);
    descriptor_ = -1;
  }

 private:
  int descriptor_;
};

// A channel over a pair of sockets with small buffers.
class Wire {
 public:
  explicit Wire(std::chrono::milliseconds limit = kLong, CancelFlag cancelled = nullptr) {
    std::signal(SIGPIPE, SIG_IGN);
    int ends[2] = {-1, -1};
    EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    const int small = 4096;
    for (const int end : ends) ::setsockopt(end, SOL_SOCKET, SO_SNDBUF, &small, sizeof small);
    channel =
        std::make_unique<FileChannel>(ends[0], "the wire", FileChannel::Options{limit, cancelled});
    peer = std::make_unique<Peer>(ends[1]);
  }

  /// What the other end does meanwhile.
  void play(std::function<void(Peer&)> part) {
    thread_ = std::jthread([this, part = std::move(part)] { part(*peer); });
  }
  void wait() { thread_ = {}; }

  std::unique_ptr<FileChannel> channel;
  std::unique_ptr<Peer> peer;

 private:
  std::jthread thread_;
};

const std::string kReply = "<cmd><![CDATA[</cmd>]]><!-- </cmd> --></cmd>";

TEST(FileChannel, CarriesCommandDataAndReply) {
  Wire wire;
  std::string data;
  for (int i = 0; i < 1000000; ++i) data += static_cast<char>(i * 7 >> 3);
  std::string received;
  wire.play([&](Peer& peer) {
    for (const std::size_t length : {std::size_t{12}, 12 + data.size()}) {
      received = peer.read(length);
      for (const char byte : kReply) peer.write({&byte, 1});
      peer.write("\n");
    }
  });
  EXPECT_EQ(wire.channel->exchange("<cmd>1</cmd>", "").value(), kReply);
  EXPECT_EQ(wire.channel->exchange("<cmd>2</cmd>", data).value(), kReply);
  wire.wait();
  EXPECT_EQ(received, "<cmd>2</cmd>" + data);
}

TEST(FileChannel, ThrowsAwayWhatLiesThereBefore) {
  Wire wire;
  wire.peer->write("</cmd><cmd>an old reply</cmd>");
  wire.play([](Peer& peer) {
    peer.read(6);
    peer.write(kReply);
  });
  EXPECT_EQ(wire.channel->exchange("<cmd/>", "").value(), kReply);
}

TEST(FileChannel, TakesTheLongestReplyAndNoLonger) {
  for (const std::size_t excess : {0U, 1U}) {
    Wire wire;
    wire.play([&](Peer& peer) {
      peer.read(6);
      peer.write("<cmd>" + std::string(kLongestReply - 11 + excess, 'x') + "</cmd>");
    });
    const auto got = wire.channel->exchange("<cmd/>", "");
    if (excess == 0) {
      EXPECT_EQ(got.value().size(), kLongestReply);
    } else {
      EXPECT_EQ(got.error().fault, Fault::kBadReply);
    }
    wire.channel.reset();
  }
}

TEST(FileChannel, TellsFailuresApart) {
  constexpr std::size_t kAll = 100006;
  const struct {
    const char* name;
    std::size_t reads;
    const char* answers;
    bool closes;
  } rows[] = {
      {"does not read", 0, "", false},        {"does not answer", kAll, "", false},
      {"answers half", kAll, "<cmd>", false}, {"closes at once", 0, "", true},
      {"closes in the data", 1000, "", true}, {"closes in the reply", kAll, "<cmd>", true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Wire wire(300ms);
    wire.play([&row](Peer& peer) {
      peer.read(row.reads);
      peer.write(row.answers);
      if (row.closes) return peer.close();
      std::this_thread::sleep_for(600ms);
    });
    const Clock::time_point begin = Clock::now();
    const auto got = wire.channel->exchange("<cmd/>", std::string(kAll - 6, 'x'));
    ASSERT_FALSE(got);
    EXPECT_EQ(got.error().fault, Fault::kUnreachable) << got.error().message;
    EXPECT_LT(Clock::now() - begin, 10s);
    wire.channel.reset();
  }
}

// The printer still waits for the rest of the data, and then answers two commands.
TEST(FileChannel, MakesUpForAnExchangeThatWasStopped) {
  std::atomic<bool> cancelled = false;
  Wire wire(1h, &cancelled);
  std::string data, last;
  wire.play([&](Peer& peer) {
    data = peer.read(6 + 50000);
    cancelled = true;
    // Long enough for the channel to have seen the flag and to be back with its last word.
    std::this_thread::sleep_for(500ms);
    data += peer.read(50000);
    peer.write("<cmd>late</cmd>");
    last = peer.read(7);
    peer.write("<cmd>last</cmd>");
  });
  EXPECT_EQ(wire.channel->exchange("<cmd/>", std::string(100000, 'x')).error().fault,
            Fault::kCancelled);
  const auto got = wire.channel->exchange_regardless("<last/>", kLong);
  ASSERT_TRUE(got) << got.error().message;
  EXPECT_EQ(got.value(), "<cmd>last</cmd>");
  wire.wait();
  EXPECT_EQ(last, "<last/>");
  ASSERT_EQ(data.size(), 100006U);
  const std::size_t sent = data.find('\0');
  ASSERT_NE(sent, std::string::npos);
  EXPECT_EQ(data, "<cmd/>" + std::string(sent - 6, 'x') + std::string(data.size() - sent, '\0'));
}

TEST(FileChannel, DoesNotWaitForEverForALateReply) {
  Wire wire(200ms);
  std::string last;
  wire.play([&](Peer& peer) {
    peer.read(6);  // no reply to this one
    last = peer.read(7);
    peer.write("<cmd>last</cmd>");
  });
  EXPECT_EQ(wire.channel->exchange("<cmd/>", "").error().fault, Fault::kUnreachable);
  EXPECT_EQ(wire.channel->exchange_regardless("<last/>", 2s).value(), "<cmd>last</cmd>");
}

TEST(FileChannel, StopsWhenTheFlagIsSet) {
  const std::atomic<bool> cancelled = true;
  Wire wire(1h, &cancelled);
  EXPECT_EQ(wire.channel->exchange("<cmd/>", "").error().fault, Fault::kCancelled);
  // Nothing was sent, so there is nothing to make up for.
  wire.play([](Peer& peer) {
    EXPECT_EQ(peer.read(7), "<last/>");
    peer.write(kReply);
  });
  EXPECT_EQ(wire.channel->exchange_regardless("<last/>", kLong).value(), kReply);
}

// ---- Files of several kinds

TEST(FileChannel, OpensDevicesOnly) {
  const Folder folder;
  const std::string plain = folder.path() / "plain";
  std::ofstream(plain) << "keep";
  EXPECT_EQ(FileChannel::open(plain, {}).error().fault, Fault::kBadInput);
  EXPECT_EQ(std::filesystem::file_size(plain), 4U);
  EXPECT_EQ(FileChannel::open(folder.path() / "absent", {}).error().fault, Fault::kUnreachable);
  EXPECT_EQ(FileChannel::open(folder.path(), {}).error().fault, Fault::kUnreachable);
}

// A pipe that is open at both ends gives the command back.
TEST(FileChannel, TakesWhateverComesForAReply) {
  const Folder folder;
  const std::string pipe = folder.path() / "pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const auto channel = FileChannel::open(pipe, {.time_out = kLong, .cancelled = nullptr});
  ASSERT_TRUE(channel);
  EXPECT_EQ(channel.value()->exchange("<cmd>echo</cmd>", "").value(), "<cmd>echo</cmd>");
  EXPECT_EQ(channel.value()->device_id().error().fault, Fault::kUnreachable);
}

}  // namespace
}  // namespace pxcl::client
