// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "client/file_channel.hpp"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <span>
#include <system_error>
#include <utility>

#include "client/reply_end.hpp"

namespace pxcl::client {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds kLook = milliseconds(100);  // how often the cancel flag is looked at

std::string last_cause() {
  return std::generic_category().message(errno);
}

bool is_passing(int cause) {
  return cause == EAGAIN || cause == EWOULDBLOCK || cause == EINTR;
}

// A line end behind the reply before may come late.
std::string_view without_leading_space(std::string_view piece) {
  return piece.substr(std::min(piece.find_first_not_of(" \t\r\n"), piece.size()));
}

// The kernel's request for the device ID of a printer port; no header of its interface names it.
unsigned long device_id_request(std::size_t size) {
  return _IOC(_IOC_READ, 'P', 1, static_cast<unsigned>(size));
}

}  // namespace

// One exchange, from its start to its end or failure. What is left to do stands in the channel all the time, so that
// a failure at any point leaves it right.
class FileChannel::Exchange {
 public:
  Exchange(FileChannel& channel, milliseconds limit, CancelFlag cancelled)
      : channel_(channel), limit_(limit), end_(Clock::now() + limit), cancelled_(cancelled) {}

  Result<std::string> run(std::string_view command, std::string_view data);

 private:
  Result<void> make_up();
  Result<void> skip_late_reply();
  Result<void> skip_stale_bytes();
  Result<void> send_command();
  Result<void> send_data(std::string_view data);
  Result<std::size_t> send_some(std::string_view bytes);
  Result<std::string> read_reply(Clock::time_point end);
  Result<std::size_t> read_some(std::span<char> buffer, Clock::time_point end);
  Result<void> wait_for(short event, Clock::time_point end);
  Error broken(const std::string& cause) const;
  Error too_late() const;

  FileChannel& channel_;
  milliseconds limit_;
  Clock::time_point end_;
  CancelFlag cancelled_;
};

Error FileChannel::Exchange::broken(const std::string& cause) const {
  return {Fault::kUnreachable, "The connection to the printer at " + channel_.name_ + " broke: " +
                                   cause + ". Check that it is switched on and plugged in."};
}

Error FileChannel::Exchange::too_late() const {
  return {Fault::kUnreachable, "The printer at " + channel_.name_ +
                                   " gave no complete answer within " + name_of_limit(limit_) +
                                   ". Check that it is switched on and ready."};
}

// Waits until the descriptor is ready. Something to read is ready even where the other end is closed.
Result<void> FileChannel::Exchange::wait_for(short event, Clock::time_point end) {
  while (true) {
    if (is_set(cancelled_))
      return Error{Fault::kCancelled, "The exchange with the printer was stopped."};
    const auto left = std::chrono::ceil<milliseconds>(end - Clock::now());
    if (left <= milliseconds::zero()) return too_late();
    pollfd ready = {channel_.descriptor_, event, 0};
    const int count = ::poll(&ready, 1, static_cast<int>(std::min(left, kLook).count()));
    if (count < 0 && !is_passing(errno)) return broken(last_cause());
    if (count <= 0) continue;
    if ((ready.revents & event) != 0) return {};
    return broken("it was closed");
  }
}

Result<std::size_t> FileChannel::Exchange::send_some(std::string_view bytes) {
  while (true) {
    if (Result<void> ready = wait_for(POLLOUT, end_); !ready) return std::move(ready).error();
    const ssize_t count = ::write(channel_.descriptor_, bytes.data(), bytes.size());
    if (count > 0) {
      channel_.awaits_reply_ = true;
      return static_cast<std::size_t>(count);
    }
    if (count < 0 && !is_passing(errno)) return broken(last_cause());
  }
}

Result<void> FileChannel::Exchange::send_command() {
  while (!channel_.unsent_command_.empty()) {
    const Result<std::size_t> sent = send_some(channel_.unsent_command_);
    if (!sent) return sent.error();
    channel_.unsent_command_.erase(0, sent.value());
  }
  return {};
}

// What is left of the data that was announced; without the data themselves, zeros.
Result<void> FileChannel::Exchange::send_data(std::string_view data) {
  static constexpr std::array<char, 4096> kZeros = {};
  while (channel_.unsent_data_ > 0) {
    const std::string_view rest =
        data.empty()
            ? std::string_view(kZeros.data(), std::min(kZeros.size(), channel_.unsent_data_))
            : data.substr(data.size() - channel_.unsent_data_);
    const Result<std::size_t> sent = send_some(rest);
    if (!sent) return sent.error();
    channel_.unsent_data_ -= sent.value();
  }
  return {};
}

// One read; 0 where there was nothing to read after all.
Result<std::size_t> FileChannel::Exchange::read_some(std::span<char> buffer,
                                                     Clock::time_point end) {
  if (Result<void> ready = wait_for(POLLIN, end); !ready) return std::move(ready).error();
  const ssize_t count = ::read(channel_.descriptor_, buffer.data(), buffer.size());
  if (count > 0) return static_cast<std::size_t>(count);
  if (count < 0 && !is_passing(errno)) return broken(last_cause());
  if (count == 0 && !channel_.is_device_) return broken("it was closed");
  // Printer ports read as empty between two packets.
  if (count == 0) pause_for(milliseconds(5), cancelled_);
  return std::size_t{0};
}

Result<std::string> FileChannel::Exchange::read_reply(Clock::time_point end) {
  std::string reply;
  ReplyEnd finder;
  std::array<char, 16384> buffer;
  while (!finder.found()) {
    const Result<std::size_t> count = read_some(buffer, end);
    if (!count) return count.error();
    const std::string_view piece = reply.empty()
                                       ? without_leading_space({buffer.data(), count.value()})
                                       : std::string_view(buffer.data(), count.value());
    const std::size_t taken = finder.feed(piece);
    if (reply.size() + taken > kLongestReply) {
      return Error{Fault::kBadReply,
                   "The answer of the printer at " + channel_.name_ + " is longer than " +
                       std::to_string(kLongestReply >> 20) +
                       " MiB and was not read. Check that this is a printer of this protocol."};
    }
    reply += piece.substr(0, taken);
  }
  channel_.awaits_reply_ = false;
  return reply;
}

// The reply to what was broken off may never come, so it gets half of the time.
Result<void> FileChannel::Exchange::skip_late_reply() {
  const Result<std::string> late = read_reply(Clock::now() + (end_ - Clock::now()) / 2);
  channel_.awaits_reply_ = false;
  if (!late && late.error().fault == Fault::kCancelled) return late.error();
  return {};
}

Result<void> FileChannel::Exchange::make_up() {
  if (!channel_.awaits_reply_) return {};
  if (Result<void> sent = send_command(); !sent) return sent;
  if (Result<void> sent = send_data({}); !sent) return sent;
  return skip_late_reply();
}

Result<void> FileChannel::Exchange::skip_stale_bytes() {
  std::array<char, 16384> buffer;
  std::size_t skipped = 0;
  while (true) {
    const ssize_t count = ::read(channel_.descriptor_, buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return {};
    skipped += static_cast<std::size_t>(count);
    if (skipped > kLongestReply) {
      return Error{
          Fault::kBadReply,
          channel_.name_ +
              " gives data that nobody asked for, without end. Check that it is a printer."};
    }
  }
}

Result<std::string> FileChannel::Exchange::run(std::string_view command, std::string_view data) {
  if (Result<void> done = make_up(); !done) return std::move(done).error();
  if (Result<void> done = skip_stale_bytes(); !done) return std::move(done).error();
  channel_.unsent_command_ = command;
  channel_.unsent_data_ = data.size();
  if (Result<void> sent = send_command(); !sent) return std::move(sent).error();
  if (Result<void> sent = send_data(data); !sent) return std::move(sent).error();
  return read_reply(end_);
}

Result<std::unique_ptr<FileChannel>> FileChannel::open(const std::string& path, Options options) {
  const int descriptor = ::open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
  if (descriptor < 0) {
    return Error{Fault::kUnreachable,
                 "Cannot open " + path + ": " + last_cause() +
                     ". Check that the printer is connected and that you may use it."};
  }
  auto channel = std::make_unique<FileChannel>(descriptor, path, options);
  struct stat about = {};
  if (::fstat(descriptor, &about) != 0 || S_ISREG(about.st_mode) || S_ISBLK(about.st_mode)) {
    return Error{Fault::kBadInput,
                 path + " is no device of a printer: name a device file such as /dev/usb/lp0."};
  }
  return channel;
}

FileChannel::FileChannel(int descriptor, std::string name, Options options)
    : descriptor_(descriptor), name_(std::move(name)), options_(options) {
  struct stat about = {};
  is_device_ = ::fstat(descriptor_, &about) == 0 && S_ISCHR(about.st_mode);
  const int flags = ::fcntl(descriptor_, F_GETFL);
  if (flags >= 0) ::fcntl(descriptor_, F_SETFL, flags | O_NONBLOCK);
}

FileChannel::~FileChannel() {
  ::close(descriptor_);
}

Result<std::string> FileChannel::exchange(std::string_view command, std::string_view data) {
  return Exchange(*this, options_.time_out, options_.cancelled).run(command, data);
}

Result<std::string> FileChannel::exchange_regardless(std::string_view command, milliseconds limit) {
  return Exchange(*this, limit, nullptr).run(command, {});
}

// The driver's answer: two bytes with the length of all, high byte first, then the ID.
Result<std::string> FileChannel::device_id() {
  std::array<char, 1024> buffer = {};
  if (::ioctl(descriptor_, device_id_request(buffer.size()), buffer.data()) < 0) {
    return Error{Fault::kUnreachable, name_ + " has no device ID to give (" + last_cause() +
                                          "). Only the ports of printers have one."};
  }
  const auto high = static_cast<unsigned char>(buffer[0]);
  const auto low = static_cast<unsigned char>(buffer[1]);
  const std::size_t length =
      std::clamp<std::size_t>(std::size_t{high} * 256 + low, 2, buffer.size());
  return std::string(buffer.data() + 2, length - 2);
}

}  // namespace pxcl::client
