// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The server, spoken to byte by byte over a socket.

#include "printer/http_server.hpp"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <thread>
#include <utility>
#include <vector>

#include "dialogue.hpp"

namespace pxcl::printer {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// No test waits longer than this for anything; the machine may be busy.
constexpr milliseconds kPatience{20'000};

class Connection {
 public:
  explicit Connection(std::uint16_t port) : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    connected_ = ::connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof(address)) == 0;
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection() { ::close(socket_); }

  [[nodiscard]] bool connected() const { return connected_; }

  // False when the server takes no more.
  bool send(std::string_view bytes) const {
    while (!bytes.empty()) {
      const ssize_t sent = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
      if (sent <= 0) return false;
      bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
  }

  // What comes until the server closes, `end` has come or the time is over.
  std::string receive(milliseconds time, std::string_view end = "\1never\1") const {
    const auto deadline = Clock::now() + time;
    std::string received;
    while (received.find(end) == std::string::npos) {
      const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now());
      pollfd waiting{socket_, POLLIN, 0};
      if (left <= milliseconds(0) || poll(&waiting, 1, static_cast<int>(left.count())) <= 0) break;
      std::array<char, 4096> buffer;
      const ssize_t got = recv(socket_, buffer.data(), buffer.size(), 0);
      if (got <= 0) break;
      received.append(buffer.data(), static_cast<std::size_t>(got));
    }
    return received;
  }

 private:
  int socket_;
  bool connected_ = false;
};

std::string post(std::string_view body) {
  return "POST / HTTP/1.1\r\nHost: printer\r\nConnection: close\r\nContent-Length: " +
         std::to_string(body.size()) + "\r\n\r\n" + std::string(body);
}

std::string get(std::string_view path) {
  return "GET " + std::string(path) + " HTTP/1.1\r\nHost: printer\r\nConnection: close\r\n\r\n";
}

std::string body_of(const std::string& response) {
  const std::size_t end = response.find("\r\n\r\n");
  return end == std::string::npos ? "(no response)" : response.substr(end + 4);
}

// A server whose answers the request chooses: "drip" and so on; anything else comes back as the reply.
class HttpServerTest : public testing::Test {
 protected:
  static Answer answer(std::string_view request) {
    if (request == "drip") return {Answer::Kind::kDrip, "12345", milliseconds(60)};
    if (request == "slow drip") return {Answer::Kind::kDrip, "12345", milliseconds(3'600'000)};
    if (request == "empty drip") return {Answer::Kind::kDrip, "", milliseconds(60)};
    if (request == "no answer") return {Answer::Kind::kNoAnswer, "", {}};
    if (request == "bad") return {Answer::Kind::kReply, "That is no command.", {}, true};
    if (request == "throw") throw std::runtime_error("a secret of the house");
    return {Answer::Kind::kReply, std::string(request), {}};
  }

  [[nodiscard]] std::string ask(const std::string& request) const {
    const Connection connection(server_.port());
    connection.send(request);
    return connection.receive(kPatience);
  }

  HttpServer server_{{answer, [] { return std::string("MFG:X;MDL:Y;"); }}, 0};
};

// -------------------------------------------------------------------------- requests and responses

TEST_F(HttpServerTest, AnswersByPathAndMethod) {
  const struct {
    std::string request;
    const char* status;
    const char* type;
    const char* body;
  } rows[] = {
      {post("<cmd/>"), "200", "text/xml", "<cmd/>"},
      {get("/device-id"), "200", "text/plain", "MFG:X;MDL:Y;"},
      {post("bad"), "400", "text/plain", "That is no command.\n"},
      {post("throw"), "500", "text/plain", "The printer failed.\n"},
      {post("empty drip"), "200", "text/xml", ""},
      {"POST / HTTP/1.1\r\nConnection: close\r\nTransfer-Encoding: "
       "chunked\r\n\r\n3\r\n<cm\r\n3\r\nd/>\r\n0\r\n\r\n",
       "200", "text/xml", "<cmd/>"},
      {get("/"), "404", "", ""},
      {get("/etc/passwd"), "404", "", ""},
      {"POST /device-id HTTP/1.1\r\nConnection: close\r\nContent-Length: 1\r\n\r\nx", "404", "",
       ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.request);
    const std::string response = ask(row.request);
    EXPECT_EQ(response.substr(0, 13), std::string("HTTP/1.1 ") + row.status + " ");
    EXPECT_NE(response.find(std::string("Content-Type: ") + row.type),
              row.type[0] == '\0' ? 0 : std::string::npos);
    EXPECT_EQ(body_of(response), row.body);
  }
}

TEST_F(HttpServerTest, AnswersWhatIsNotHttp) {
  const Connection connection(server_.port());
  connection.send("<cmd>straight into the socket</cmd>\r\n\r\n");
  EXPECT_EQ(connection.receive(kPatience, "\r\n\r\n").substr(0, 13), "HTTP/1.1 400 ");
}

TEST_F(HttpServerTest, TooLongARequestIsRefused) {
  const std::string head = "POST / HTTP/1.1\r\nConnection: close\r\n";
  // Announced and sent.
  const Connection announced(server_.port());
  announced.send(head + "Content-Length: " + std::to_string(kLongestRequest + 1) + "\r\n\r\n");
  announced.send(std::string(kLongestRequest + 1, 'x'));
  const std::string response = announced.receive(kPatience);
  EXPECT_EQ(response.substr(0, 13), "HTTP/1.1 413 ");
  EXPECT_EQ(body_of(response), "A request may have 67108864 bytes at most.\n");
  // Without an end: the server has to close.
  const Connection endless(server_.port());
  endless.send(head + "Transfer-Encoding: chunked\r\n\r\n");
  const std::string chunk = "100000\r\n" + std::string(0x100000, 'x') + "\r\n";
  std::size_t sent = 0;
  while (sent < 4 * kLongestRequest && endless.send(chunk)) sent += 0x100000;
  EXPECT_LT(sent, kLongestRequest + (std::size_t{32} << 20));
  // And it still serves.
  EXPECT_EQ(body_of(ask(post("<cmd/>"))), "<cmd/>");
}

// ------------------------------------------------------------------------------------- odd answers

TEST_F(HttpServerTest, ADripComesByteByByte) {
  const Connection connection(server_.port());
  const auto start = Clock::now();
  connection.send(post("drip"));
  EXPECT_EQ(body_of(connection.receive(kPatience, "\r\n\r\n1")).substr(0, 1), "1");
  const auto first = Clock::now();
  EXPECT_EQ(connection.receive(kPatience), "2345");
  EXPECT_GE(first - start, milliseconds(60));
  EXPECT_GE(Clock::now() - start, milliseconds(300));
}

TEST_F(HttpServerTest, NoAnswerHoldsTheConnection) {
  const Connection connection(server_.port());
  connection.send(post("no answer"));
  const auto start = Clock::now();
  EXPECT_EQ(connection.receive(milliseconds(300)), "");
  EXPECT_GE(Clock::now() - start, milliseconds(300)) << "closed";
}

TEST_F(HttpServerTest, ClientsThatGiveUpLeaveTheServerFree) {
  for (int round = 0; round < 5; ++round) {
    std::vector<std::unique_ptr<Connection>> clients;
    for (int i = 0; i < 20; ++i) {
      clients.push_back(std::make_unique<Connection>(server_.port()));
      clients.back()->send(post(i % 2 == 0 ? "no answer" : "slow drip"));
    }
    // Until the last ones are being answered.
    clients[19]->receive(kPatience, "\r\n\r\n");
    EXPECT_EQ(clients[18]->receive(milliseconds(50)), "");
  }
  EXPECT_EQ(body_of(ask(post("<cmd/>"))), "<cmd/>");
}

TEST_F(HttpServerTest, ABusyClientKeepsNoOtherWaiting) {
  const Connection busy(server_.port());
  busy.send(post("slow drip"));
  busy.receive(kPatience, "\r\n\r\n");
  std::vector<std::thread> clients;
  std::atomic<int> right = 0;
  for (int i = 0; i < 8; ++i) {
    clients.emplace_back([this, &right, body = std::string(100'000, static_cast<char>('a' + i))] {
      for (int k = 0; k < 5; ++k) right += body_of(ask(post(body))) == body ? 1 : 0;
    });
  }
  for (std::thread& client : clients) client.join();
  EXPECT_EQ(right, 40);
}

// ---------------------------------------------------------------------------------- start and stop

TEST_F(HttpServerTest, StopsPromptlyWhateverIsUnderWay) {
  const struct {
    const char* name;
    std::string sent;
    const char* until;  // What the client has seen before the server is stopped.
  } rows[] = {
      {"a drip", post("slow drip"), "\r\n\r\n"},
      {"no answer", post("no answer"), nullptr},
      {"half a request line", "POST", nullptr},
      {"half a body", "POST / HTTP/1.1\r\nContent-Length: 10\r\n\r\n12345", nullptr},
      {"nothing said", "", nullptr},
      {"nothing more said", "GET /device-id HTTP/1.1\r\n\r\n", "MDL:Y;"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    HttpServer server({answer, [] { return std::string("MDL:Y;"); }}, 0);
    const Connection connection(server.port());
    connection.send(row.sent);
    if (row.until != nullptr) connection.receive(kPatience, row.until);
    // Until the server waits for this client, or this client for it.
    connection.receive(milliseconds(50));
    const auto start = Clock::now();
    std::thread([&server] { server.stop(); }).join();
    EXPECT_LT(Clock::now() - start, kPatience / 4);
    connection.receive(kPatience);
    EXPECT_FALSE(Connection(server.port()).connected());
    server.stop();
  }
}

TEST_F(HttpServerTest, OnlyThisMachineIsServed) {
  const int other = ::socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(server_.port());
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK + 1);
  EXPECT_NE(::connect(other, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
  ::close(other);
}

}  // namespace
}  // namespace pxcl::printer
