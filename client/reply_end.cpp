// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "client/reply_end.hpp"

namespace pxcl::client {
namespace {

constexpr std::string_view kComment = "!--";
constexpr std::string_view kCdata = "![CDATA[";
constexpr std::size_t kLongestName = kCdata.size();

bool ends_name(char byte) {
  return byte == '>' || byte == '/' || byte == ' ' || byte == '\t' || byte == '\r' || byte == '\n';
}

}  // namespace

std::size_t ReplyEnd::feed(std::string_view piece) {
  std::size_t taken = 0;
  while (taken < piece.size() && !found_) take(piece[taken++]);
  return taken;
}

void ReplyEnd::take(char byte) {
  switch (where_) {
    case Where::kText:
      if (byte != '<') return;
      where_ = Where::kMarkup;
      name_.clear();
      return;
    case Where::kMarkup:
      return take_markup(byte);
    case Where::kHidden:
      return take_hidden(byte);
    case Where::kTag:
      return take_tag(byte);
    case Where::kValue:
      if (byte == quote_) where_ = Where::kTag;
      return;
  }
}

// The bytes behind a "<", until they tell what it is. An end tag's slash is the first byte of its name.
void ReplyEnd::take_markup(char byte) {
  const bool is_end_tag = name_.empty() && byte == '/';
  if ((ends_name(byte) && !is_end_tag && !name_.starts_with('!')) || name_.size() == kLongestName) {
    where_ = Where::kTag;
    is_empty_ = false;
    return take_tag(byte);
  }
  name_ += byte;
  if (byte == '?' && name_.size() == 1) return hide_until("?>");
  if (name_ == kComment) return hide_until("-->");
  if (name_ == kCdata) return hide_until("]]>");
  if (name_.starts_with('!') && !kComment.starts_with(name_) && !kCdata.starts_with(name_)) {
    if (byte == '>') {
      where_ = Where::kText;
    } else {
      hide_until(">");
    }
  }
}

void ReplyEnd::hide_until(std::string_view end) {
  where_ = Where::kHidden;
  end_ = end;
  last_.clear();
}

void ReplyEnd::take_hidden(char byte) {
  if (last_.size() == end_.size()) last_.erase(0, 1);
  last_ += byte;
  if (last_ == end_) where_ = Where::kText;
}

void ReplyEnd::take_tag(char byte) {
  if (byte == '"' || byte == '\'') {
    where_ = Where::kValue;
    quote_ = byte;
  } else if (byte == '>') {
    end_tag();
  }
  is_empty_ = byte == '/';
}

// An end tag too many ends a reply as well: nothing good can follow.
void ReplyEnd::end_tag() {
  where_ = Where::kText;
  if (name_ == "cmd") {
    if (!is_empty_) ++depth_;
    found_ = depth_ == 0;
  } else if (name_ == "/cmd") {
    if (depth_ > 0) --depth_;
    found_ = depth_ == 0;
  }
}

}  // namespace pxcl::client
