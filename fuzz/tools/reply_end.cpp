// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The end of a reply that comes in pieces: the first byte of the input is the length of each, the rest is the reply. It is
// found at the same place as in one piece, and where another parser finds a whole document there is an end.

#include "client/reply_end.hpp"

#include <pugixml.hpp>
#include <string>

#include "support.hpp"

namespace {

using namespace pxcl;
using client::ReplyEnd;
using fuzz::require;

std::size_t feed_in_pieces(std::string_view reply, std::size_t length, ReplyEnd& end) {
  std::size_t taken = 0;
  while (taken < reply.size()) {
    const std::string_view piece = reply.substr(taken, length);
    const std::size_t count = end.feed(piece);
    taken += count;
    require(end.found() || count == piece.size());
    if (count < piece.size()) break;
  }
  return taken;
}

bool is_reply(std::string_view text) {
  pugi::xml_document document;
  return printer::read_xml(text).root.has_value() &&
         document.load_buffer(text.data(), text.size()) &&
         document.document_element().name() == std::string_view("cmd");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const std::string_view reply = fuzz::text_of(data + 1, size - 1);
  ReplyEnd whole;
  const std::size_t length = whole.feed(reply);
  require(length <= reply.size() && (whole.found() || length == reply.size()));
  require(!whole.found() || reply[length - 1] == '>');
  ReplyEnd cut;
  require(feed_in_pieces(reply, data[0] % 16 + 1U, cut) == length);
  require(cut.found() == whole.found());
  if (is_reply(reply)) require(whole.found() && is_reply(reply.substr(0, length)));
  return 0;
}
