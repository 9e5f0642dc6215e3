// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "client/text.hpp"

#include <pxcl.h>

#include <algorithm>
#include <cstdint>

namespace pxcl::client {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

// What a lead byte promises: the length of its sequence, and the range of the byte behind it. That range leaves out
// overlong forms, surrogates and what is beyond U+10FFFF.
struct Lead {
  std::size_t length;
  unsigned char least;
  unsigned char greatest;
};

Lead lead_of(unsigned char byte) {
  if (byte < 0x80) return {1, 0, 0};
  if (byte >= 0xC2 && byte <= 0xDF) return {2, 0x80, 0xBF};
  if (byte == 0xE0) return {3, 0xA0, 0xBF};
  if (byte == 0xED) return {3, 0x80, 0x9F};
  if (byte >= 0xE1 && byte <= 0xEF) return {3, 0x80, 0xBF};
  if (byte == 0xF0) return {4, 0x90, 0xBF};
  if (byte >= 0xF1 && byte <= 0xF3) return {4, 0x80, 0xBF};
  if (byte == 0xF4) return {4, 0x80, 0x8F};
  return {0, 0, 0};
}

unsigned char byte_at(std::string_view text, std::size_t index) {
  return static_cast<unsigned char>(text[index]);
}

// C0, DEL, C1 (C2 80 to C2 9F) and the line and paragraph separators; and the two code points that XML has no place for.
bool is_control(std::string_view character) {
  if (character.size() == 1) return byte_at(character, 0) < 0x20 || character[0] == 0x7F;
  if (character.size() == 2) return byte_at(character, 0) == 0xC2 && byte_at(character, 1) < 0xA0;
  return character == "\xE2\x80\xA8" || character == "\xE2\x80\xA9" ||
         character == "\xEF\xBF\xBE" || character == "\xEF\xBF\xBF";
}

std::string_view escape_of(std::string_view character) {
  if (character == "&") return "&amp;";
  if (character == "<") return "&lt;";
  if (character == ">") return "&gt;";
  return character;
}

}  // namespace

Sequence first_sequence(std::string_view text) {
  const Lead lead = lead_of(byte_at(text, 0));
  if (lead.length <= 1) return {1, lead.length == 1};
  std::size_t length = 1;
  while (length < lead.length && length < text.size()) {
    const unsigned char byte = byte_at(text, length);
    const bool isSecond = length == 1;
    if (byte < (isSecond ? lead.least : 0x80) || byte > (isSecond ? lead.greatest : 0xBF)) break;
    ++length;
  }
  return {length, length == lead.length};
}

std::string clean_line(std::string_view text) {
  std::string clean;
  clean.reserve(text.size());
  while (!text.empty()) {
    const auto [length, good] = first_sequence(text);
    const std::string_view character = text.substr(0, length);
    clean += !good ? kReplacement : is_control(character) ? " " : character;
    text.remove_prefix(length);
  }
  return clean;
}

std::string_view cut(std::string_view text, std::size_t limit) {
  if (text.size() <= limit) return text;
  std::size_t end = limit;
  while (end > 0 && (byte_at(text, end) & 0xC0) == 0x80) --end;
  return text.substr(0, end);
}

// "]]>" loses its ">" to a blank, which no other text can make it again by.
std::string job_description(std::string_view jobID, std::string_view title) {
  std::string description = clean_line(jobID);
  const std::string clean = clean_line(title);
  if (!clean.empty()) description += " " + clean;
  for (std::size_t at = 0; (at = description.find("]]>", at)) != std::string::npos;) {
    description[at + 2] = ' ';
  }
  return std::string(cut(description, CLSS_JOB_DESCRIPTION_MAX));
}

std::string element_text(std::string_view text, std::size_t limit) {
  const std::string clean = clean_line(text);
  std::string escaped;
  for (std::string_view rest = clean; !rest.empty();) {
    const std::size_t length = first_sequence(rest).length;
    const std::string_view piece = escape_of(rest.substr(0, length));
    if (escaped.size() + piece.size() > limit) break;
    escaped += piece;
    rest.remove_prefix(length);
  }
  return escaped;
}

bool is_job_id(std::string_view text) {
  const auto is_allowed = [](char byte) {
    return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= 'a' && byte <= 'z') || byte == '-' || byte == '.' || byte == '_';
  };
  return text.size() == 8 && std::all_of(text.begin(), text.end(), is_allowed);
}

}  // namespace pxcl::client
