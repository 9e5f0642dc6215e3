// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "client/trace_channel.hpp"

#include <algorithm>

#include "client/text.hpp"

namespace pxcl::client {
namespace {

constexpr std::size_t kLongestShown = std::size_t{64} << 10;

// Writes a document with each element on a line of its own, unless it is laid out already.
class Layout {
 public:
  Layout(std::ostream& out, std::string_view document)
      : out_(out), rest_(document), keeps_lines_(document.find('\n') < document.rfind('<')) {}

  void write() {
    while (!rest_.empty()) write_next();
    out_ << '\n';
  }

 private:
  void write_next();
  void write_tag(std::string_view tag);
  void write_bytes(std::string_view bytes);
  void write_codes(std::string_view bytes);
  std::string_view take(std::size_t length);
  std::string_view take_markup();

  std::ostream& out_;
  std::string_view rest_;
  const bool keeps_lines_;
  std::size_t depth_ = 0;
  bool begins_ = true;  // nothing is written yet
  bool after_start_ =
      false;  // a start tag was, and perhaps its text: its end tag stays on the line
};

std::string_view Layout::take(std::size_t length) {
  const std::string_view taken = rest_.substr(0, length);
  rest_.remove_prefix(taken.size());
  return taken;
}

std::string_view Layout::take_markup() {
  const std::string_view end = rest_.starts_with("<![CDATA[") ? "]]>"
                               : rest_.starts_with("<!--")    ? "-->"
                                                              : ">";
  const std::size_t at = rest_.find(end);
  return take(at == std::string_view::npos ? rest_.size() : at + end.size());
}

void Layout::write_next() {
  if (rest_.front() != '<') return write_bytes(take(rest_.find('<')));
  const std::string_view markup = take_markup();
  if (keeps_lines_ || markup.starts_with("<![CDATA[")) return write_bytes(markup);
  write_tag(markup);
}

void Layout::write_tag(std::string_view tag) {
  const bool is_end = tag.starts_with("</");
  const bool is_start =
      !is_end && !tag.starts_with("<?") && !tag.starts_with("<!") && !tag.ends_with("/>");
  if (is_end && depth_ > 0) --depth_;
  if (!begins_ && !(is_end && after_start_)) {
    out_ << '\n';
    // What is this deep is no document for people.
    for (std::size_t i = 0; i < std::min<std::size_t>(depth_, 40); ++i) out_ << "  ";
  }
  write_bytes(tag);
  if (is_start) ++depth_;
  after_start_ = is_start;
  begins_ = false;
}

// As they are where they make characters that print.
void Layout::write_bytes(std::string_view bytes) {
  while (!bytes.empty()) {
    const auto [length, good] = first_sequence(bytes);
    const std::string_view character = bytes.substr(0, length);
    const auto first = static_cast<unsigned char>(character.front());
    const bool prints = good && (length > 1 || (first >= 0x20 && first != 0x7F));
    if (prints || (character == "\n" && keeps_lines_)) {
      out_ << character;
    } else {
      write_codes(character);
    }
    bytes.remove_prefix(length);
  }
}

void Layout::write_codes(std::string_view bytes) {
  static constexpr std::string_view kDigits = "0123456789ABCDEF";
  for (const char byte : bytes) {
    const auto code = static_cast<unsigned char>(byte);
    out_ << "\\x" << kDigits[code >> 4] << kDigits[code & 15];
  }
}

void write_document(std::ostream& out, std::string_view document) {
  const std::string_view shown = document.substr(0, kLongestShown);
  const std::size_t end = shown.find_last_not_of(" \t\r\n");
  if (end == std::string_view::npos) return;
  Layout(out, shown.substr(0, end + 1)).write();
  if (document.size() > kLongestShown) {
    out << "... and " << document.size() - kLongestShown << " bytes more\n";
  }
}

}  // namespace

void TraceChannel::write_request(std::string_view command, std::size_t dataLength) {
  ++number_;
  out_ << ">>> " << number_ << " command, " << command.size() << " bytes\n";
  write_document(out_, command);
  if (dataLength > 0) out_ << ">>> " << number_ << " data, " << dataLength << " bytes\n";
  out_.flush();
}

void TraceChannel::write_outcome(const Result<std::string>& reply) {
  if (reply) {
    out_ << "<<< " << number_ << " reply, " << reply.value().size() << " bytes\n";
    write_document(out_, reply.value());
  } else {
    out_ << "<<< " << number_ << " no reply: " << reply.error().message << '\n';
  }
  out_.flush();
}

Result<std::string> TraceChannel::exchange(std::string_view command, std::string_view data) {
  write_request(command, data.size());
  Result<std::string> reply = inner_.exchange(command, data);
  write_outcome(reply);
  return reply;
}

Result<std::string> TraceChannel::exchange_regardless(std::string_view command,
                                                      std::chrono::milliseconds limit) {
  write_request(command, 0);
  Result<std::string> reply = inner_.exchange_regardless(command, limit);
  write_outcome(reply);
  return reply;
}

Result<std::string> TraceChannel::device_id() {
  return inner_.device_id();
}

}  // namespace pxcl::client
