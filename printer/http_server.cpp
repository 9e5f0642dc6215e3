// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "printer/http_server.hpp"

#include <httplib.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace pxcl::printer {
namespace {

using Clock = std::chrono::steady_clock;

constexpr char kAddress[] = "127.0.0.1";
constexpr char kReplyType[] = "text/xml";

// Clients served at a time: each keeps a thread while it is connected.
constexpr std::size_t kMostClients = 32;

// How long a client may say or take nothing before its thread is free for another.
constexpr time_t kSilenceSeconds = 10;

// Between two looks whether a client that gets no bytes is still there.
constexpr std::chrono::milliseconds kLook{50};

constexpr int kContentTooLarge = 413;
constexpr int kBadRequest = 400;
constexpr int kServerError = 500;

void answer_in_words(httplib::Response& response, int status, const std::string& words) {
  response.status = status;
  response.set_content(words + "\n", "text/plain");
}

int port_of(int socket, decltype(getsockname)& name_of) {
  sockaddr_in address{};
  socklen_t size = sizeof(address);
  if (name_of(socket, reinterpret_cast<sockaddr*>(&address), &size) != 0) return -1;
  return address.sin_family == AF_INET ? ntohs(address.sin_port) : -1;
}

// The library keeps its sockets to itself, so they are looked for among this process's files: those of connections from
// `remote_port`, or any when it is 0, to `local_port`.
std::vector<int> find_sockets(int local_port, int remote_port) {
  std::vector<int> sockets;
  std::error_code error;
  for (std::filesystem::directory_iterator entry("/proc/self/fd", error), end; entry != end;
       entry.increment(error)) {
    const int file = std::atoi(entry->path().filename().c_str());
    const int remote = port_of(file, getpeername);
    if (port_of(file, getsockname) == local_port && remote > 0 &&
        (remote_port == 0 || remote == remote_port)) {
      sockets.push_back(file);
    }
  }
  return sockets;
}

void shut(const std::vector<int>& sockets) {
  for (const int socket : sockets) shutdown(socket, SHUT_RDWR);
}

// Whether the client at the other end still listens.
bool is_open(const std::vector<int>& sockets) {
  return std::ranges::all_of(sockets, [](int socket) {
    pollfd end{socket, POLLRDHUP, 0};
    return poll(&end, 1, 0) == 0;
  });
}

}  // namespace

class HttpServer::State {
 public:
  State(Served served, std::uint16_t port);
  State(const State&) = delete;
  State& operator=(const State&) = delete;
  ~State() { stop(); }

  [[nodiscard]] std::uint16_t port() const { return port_; }
  void stop();

 private:
  void bind(std::uint16_t port);
  void handle(const httplib::Request& request, const httplib::ContentReader& content,
              httplib::Response& response);
  std::optional<std::string> read_request(const httplib::ContentReader& content,
                                          httplib::Response& response) const;
  void send(const Answer& answer, const httplib::Request& request, httplib::Response& response);
  void say_nothing(const httplib::Request& request);
  void drip(const Answer& answer, const httplib::Request& request, httplib::Response& response);
  bool wait_until(Clock::time_point time, const std::vector<int>& client);

  Served served_;
  httplib::Server server_;
  std::uint16_t port_ = 0;
  std::thread thread_;
  std::once_flag stop_once_;
  std::mutex mutex_;
  std::condition_variable stopped_;
  std::atomic<bool> stopping_ = false;
};

HttpServer::State::State(Served served, std::uint16_t port) : served_(std::move(served)) {
  server_.new_task_queue = [] { return new httplib::ThreadPool(kMostClients); };
  server_.set_tcp_nodelay(true);
  server_.set_keep_alive_max_count(1'000'000);
  server_.set_keep_alive_timeout(kSilenceSeconds);
  server_.set_read_timeout(kSilenceSeconds);
  server_.set_write_timeout(kSilenceSeconds);
  server_.set_payload_max_length(kLongestRequest);
  server_.set_exception_handler([](const auto&, auto& response, const std::exception_ptr&) {
    answer_in_words(response, kServerError, "The printer failed.");
  });
  server_.Post("/", [this](const auto& request, auto& response, const auto& content) {
    handle(request, content, response);
  });
  server_.Get("/device-id", [this](const auto&, auto& response) {
    response.set_content(served_.device_id(), "text/plain");
  });
  bind(port);
  thread_ = std::thread([this] { server_.listen_after_bind(); });
  // Until then the library would not hear a stop().
  while (!server_.is_running()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

void HttpServer::State::bind(std::uint16_t port) {
  int listening = -1;
  // The library's own options let two servers share a port.
  server_.set_socket_options([&listening](int socket) {
    const int yes = 1;
    setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof(yes));
    listening = socket;
  });
  if (port == 0) {
    const int any = server_.bind_to_any_port(kAddress);
    if (any > 0) port_ = static_cast<std::uint16_t>(any);
  } else if (server_.bind_to_port(kAddress, port)) {
    port_ = port;
  }
  if (port_ == 0) {
    throw std::runtime_error("Port " + std::to_string(port) +
                             " of this machine can't be served: another program may use it.");
  }
  // The library lets five wait; the sixth would try again only after a second.
  listen(listening, SOMAXCONN);
}

void HttpServer::State::stop() {
  std::call_once(stop_once_, [this] {
    {
      const std::lock_guard lock(mutex_);
      stopping_ = true;
    }
    stopped_.notify_all();
    server_.stop();
    // Clients that are silent would keep their threads waiting.
    shut(find_sockets(port_, 0));
    thread_.join();
  });
}

void HttpServer::State::handle(const httplib::Request& request,
                               const httplib::ContentReader& content, httplib::Response& response) {
  if (const auto body = read_request(content, response)) {
    send(served_.answer(*body), request, response);
  }
}

// The library limits only bodies that announce their length, so the rest is counted here.
std::optional<std::string> HttpServer::State::read_request(const httplib::ContentReader& content,
                                                           httplib::Response& response) const {
  std::string request;
  bool too_long = false;
  const bool complete = content([&](const char* data, std::size_t size) {
    too_long = size > kLongestRequest - request.size();
    if (!too_long) request.append(data, size);
    return !too_long && !stopping_;
  });
  if (complete) return request;
  if (too_long || response.status == kContentTooLarge) {
    answer_in_words(response, kContentTooLarge,
                    "A request may have " + std::to_string(kLongestRequest) + " bytes at most.");
  } else {
    answer_in_words(response, kBadRequest, "The request is not complete.");
  }
  return std::nullopt;
}

void HttpServer::State::send(const Answer& answer, const httplib::Request& request,
                             httplib::Response& response) {
  if (answer.bad_request) return answer_in_words(response, kBadRequest, answer.bytes);
  switch (answer.kind) {
    case Answer::Kind::kReply:
      response.set_content(answer.bytes, kReplyType);
      return;
    case Answer::Kind::kDrip:
      drip(answer, request, response);
      return;
    case Answer::Kind::kNoAnswer:
      say_nothing(request);
      return;
    case Answer::Kind::kClose:
      // One byte is announced that never comes.
      response.set_content_provider(
          answer.bytes.size() + 1, kReplyType,
          [bytes = answer.bytes](std::size_t offset, std::size_t, httplib::DataSink& sink) {
            return offset < bytes.size() &&
                   sink.write(bytes.data() + offset, bytes.size() - offset);
          });
      return;
  }
}

void HttpServer::State::say_nothing(const httplib::Request& request) {
  const std::vector<int> client = find_sockets(request.local_port, request.remote_port);
  while (wait_until(Clock::now() + kLook, client)) continue;
  // The library would answer now.
  shut(client);
}

void HttpServer::State::drip(const Answer& answer, const httplib::Request& request,
                             httplib::Response& response) {
  if (answer.bytes.empty()) {
    response.set_content("", kReplyType);
    return;
  }
  response.set_content_provider(
      answer.bytes.size(), kReplyType,
      [this, answer, next = Clock::now() + answer.interval,
       client = find_sockets(request.local_port, request.remote_port)](
          std::size_t offset, std::size_t, httplib::DataSink& sink) mutable {
        if (!wait_until(std::min(next, Clock::now() + kLook), client)) return false;
        if (Clock::now() < next) return true;
        next += answer.interval;
        return sink.write(&answer.bytes[offset], 1);
      });
}

// False when the server stops before that, or the client has gone.
bool HttpServer::State::wait_until(Clock::time_point time, const std::vector<int>& client) {
  std::unique_lock lock(mutex_);
  return !stopped_.wait_until(lock, time, [this] { return stopping_.load(); }) && is_open(client);
}

HttpServer::HttpServer(Served served, std::uint16_t port)
    : state_(std::make_unique<State>(std::move(served), port)) {}

HttpServer::HttpServer(VirtualPrinter& printer, std::uint16_t port)
    : HttpServer({[&printer](std::string_view request) { return printer.answer(request); },
                  [&printer] { return printer.device_id(); }},
                 port) {}

HttpServer::~HttpServer() = default;

std::uint16_t HttpServer::port() const {
  return state_->port();
}

void HttpServer::stop() {
  state_->stop();
}

}  // namespace pxcl::printer
