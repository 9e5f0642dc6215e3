// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "printer/reply.hpp"

#include <utility>

namespace pxcl::printer {

namespace {

void append_escaped(std::string& out, std::string_view text) {
  for (const char byte : text) {
    switch (byte) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      default:
        out += byte;
    }
  }
}

// "]]>" can't stand in a section: it is divided between two.
void append_section(std::string& out, std::string_view text) {
  constexpr std::string_view kEnd = "]]>";
  out += "<![CDATA[";
  for (std::size_t at = text.find(kEnd); at != text.npos; at = text.find(kEnd)) {
    out += text.substr(0, at + 2);
    out += "]]><![CDATA[";
    text.remove_prefix(at + 2);
  }
  out += text;
  out += kEnd;
}

}  // namespace

Reply::Reply(std::string_view operation, std::string_view service)
    : text_(R"(<?xml version="1.0" encoding="utf-8" ?>)") {
  std::vector<Attribute> declarations;
  std::string names[3];
  for (const Namespace space : {Namespace::kCommon, Namespace::kVendor, Namespace::kSchema}) {
    std::string& name = names[static_cast<std::size_t>(space)];
    name = "xmlns:" + std::string(prefix_of(space));
    declarations.push_back({name, uri_of(space)});
  }
  open("cmd", declarations);
  open("zirk:contents");
  add("zirk:operation", operation);
  open("zirk:param_set", {{"servicetype", service}});
}

void Reply::open(std::string_view name, const std::vector<Attribute>& attributes) {
  text_ += '<';
  text_ += name;
  for (const Attribute& attribute : attributes) {
    text_ += ' ';
    text_ += attribute.name;
    text_ += "=\"";
    append_escaped(text_, attribute.value);
    text_ += '"';
  }
  text_ += '>';
  open_.emplace_back(name);
}

void Reply::close() {
  text_ += "</" + open_.back() + ">";
  open_.pop_back();
}

void Reply::add(std::string_view name, std::string_view text,
                const std::vector<Attribute>& attributes) {
  open(name, attributes);
  append_escaped(text_, text);
  close();
}

void Reply::add(std::string_view name, unsigned number) {
  add(name, std::to_string(number));
}

void Reply::add_raw(std::string_view name, std::string_view text) {
  open(name);
  append_section(text_, text);
  close();
}

void Reply::add_list(std::string_view name, const std::vector<std::string>& words,
                     const std::vector<Attribute>& attributes) {
  if (words.empty()) return;
  std::string list;
  for (const std::string& word : words) list += (list.empty() ? "" : ",") + word;
  add(name, list, attributes);
}

std::string Reply::finish() && {
  while (!open_.empty()) close();
  return std::move(text_);
}

std::string qualified(Namespace space, std::string_view name) {
  return std::string(prefix_of(space)) + ":" + std::string(name);
}

}  // namespace pxcl::printer
