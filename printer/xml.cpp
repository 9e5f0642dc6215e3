// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "printer/xml.hpp"

#include <algorithm>
#include <iterator>
#include <pugixml.hpp>

namespace pxcl::printer {

namespace {

constexpr int kDeepest = 8;  // the protocol's deepest command has five levels

constexpr std::size_t kNone = std::string_view::npos;

// A stretch in which markup means nothing.
struct Section {
  std::string_view begin;
  std::string_view end;
};
constexpr Section kSections[] = {{"<![CDATA[", "]]>"}, {"<!--", "-->"}, {"<?", "?>"}};

const Section* section_at(std::string_view text, std::size_t at) {
  const auto begins = [&](const Section& section) {
    return text.substr(at).starts_with(section.begin);
  };
  const auto section = std::ranges::find_if(kSections, begins);
  return section == std::end(kSections) ? nullptr : section;
}

// Behind the section's end, or kNone.
std::size_t behind(std::string_view text, const Section& section, std::size_t at) {
  const std::size_t end = text.find(section.end, at + section.begin.size());
  return end == kNone ? kNone : end + section.end.size();
}

// Behind the ">" of the tag at `at`, quoted values skipped; kNone also for a "<" inside it.
std::size_t behind_tag(std::string_view text, std::size_t at) {
  for (std::size_t i = at + 1; i < text.size(); ++i) {
    if (text[i] == '>') return i + 1;
    if (text[i] == '<') return kNone;
    if (text[i] != '"' && text[i] != '\'') continue;
    const std::size_t end = text.find_first_of(text[i] == '"' ? "\"<" : "'<", i + 1);
    if (end == kNone || text[end] == '<') return kNone;
    i = end;
  }
  return kNone;
}

// "&lt;" and its like, or a number.
bool is_reference(std::string_view text) {
  constexpr std::string_view kNamed[] = {"&lt;", "&gt;", "&amp;", "&quot;", "&apos;"};
  const auto begins = [text](std::string_view name) { return text.starts_with(name); };
  if (std::ranges::any_of(kNamed, begins)) return true;
  if (!text.starts_with("&#")) return false;
  const bool is_hex = text.starts_with("&#x");
  const std::string_view digits = is_hex ? "0123456789abcdefABCDEF" : "0123456789";
  const std::size_t first = is_hex ? 3 : 2;
  const std::size_t end = text.find_first_not_of(digits, first);
  return end != kNone && end > first && text[end] == ';';
}

bool has_sound_references(std::string_view text) {
  for (std::size_t at = text.find('&'); at != kNone; at = text.find('&', at + 1)) {
    if (!is_reference(text.substr(at))) return false;
  }
  return true;
}

// What pugixml lets pass: open markup inside tags, references to nothing, "]]>" in text.
bool has_sound_markup(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t open = std::min(text.find('<', at), text.size());
    const std::string_view between = text.substr(at, open - at);
    if (!has_sound_references(between) || between.find("]]>") != kNone) return false;
    if (open == text.size()) return true;
    const Section* const section = section_at(text, open);
    at = section != nullptr ? behind(text, *section, open) : behind_tag(text, open);
    if (at == kNone) return false;
    if (section == nullptr && !has_sound_references(text.substr(open, at - open))) return false;
  }
  return true;
}

bool is_declaration(std::string_view attribute) {
  return attribute == "xmlns" || attribute.starts_with("xmlns:");
}

// The URI that `prefix` (empty: none) stands for at `node`, null when it stands for nothing.
const char* uri_at(pugi::xml_node node, std::string_view prefix) {
  const std::string name = prefix.empty() ? "xmlns" : "xmlns:" + std::string(prefix);
  for (; node; node = node.parent()) {
    if (const auto declaration = node.attribute(name.c_str())) return declaration.value();
  }
  return nullptr;
}

// Converts pugixml's nodes; after the first error nothing more is read.
class Reader {
 public:
  Element read(pugi::xml_node node, int depth) {
    Element element;
    if (depth > kDeepest) return fail("The elements are nested too deeply.", element);
    name(node, element);
    for (const auto& attribute : node.attributes()) add(node, attribute, element);
    bool has_text = false;
    for (const auto& child : node.children()) {
      if (!error_.empty()) return element;
      if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
        element.text += child.value();
        has_text = true;
      } else if (child.type() == pugi::node_element) {
        element.children.push_back(read(child, depth + 1));
      }
    }
    if (has_text && !element.children.empty()) fail("There is text beside elements.", element);
    return element;
  }

  const std::string& error() const { return error_; }

 private:
  Element fail(std::string error, const Element& element) {
    if (error_.empty()) error_ = std::move(error);
    return element;
  }

  void name(pugi::xml_node node, Element& element) {
    const std::string_view whole = node.name();
    const std::size_t colon = whole.find(':');
    const std::string_view prefix = colon == kNone ? "" : whole.substr(0, colon);
    element.name = colon == kNone ? whole : whole.substr(colon + 1);
    const char* const uri = uri_at(node, prefix);
    if (uri == nullptr && !prefix.empty()) {
      fail("The prefix of " + std::string(whole) + " is not declared.", element);
    } else if (uri != nullptr && !(element.space = namespace_of_uri(uri))) {
      fail(std::string(whole) + " is in none of the protocol's namespaces.", element);
    }
  }

  void add(pugi::xml_node node, pugi::xml_attribute attribute, Element& element) {
    const std::string_view whole = attribute.name();
    if (node.attribute(attribute.name()) != attribute) {
      fail("The attribute " + std::string(whole) + " is there twice.", element);
    }
    if (!is_declaration(whole)) element.attributes.emplace_back(whole, attribute.value());
  }

  std::string error_;
};

// How many bytes a UTF-8 sequence has that begins so; 0 for none.
std::size_t sequence_length(unsigned char first) {
  if (first < 0x80) return 1;
  if (first < 0xC2 || first > 0xF4) return 0;
  return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

bool is_character(std::string_view sequence) {
  char32_t point = static_cast<unsigned char>(sequence[0]);
  if (sequence.size() == 1) return point >= 0x20 || point == '\t' || point == '\n' || point == '\r';
  point &= 0xFFU >> (sequence.size() + 1);
  for (const char byte : sequence.substr(1)) {
    if ((static_cast<unsigned char>(byte) & 0xC0) != 0x80) return false;
    point = point << 6 | (static_cast<unsigned char>(byte) & 0x3F);
  }
  constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
  return point >= kLeast[sequence.size()] && (point < 0xD800 || point > 0xDFFF) &&
         point != 0xFFFE && point != 0xFFFF && point <= 0x10FFFF;
}

// The one root, or null.
pugi::xml_node only_root(const pugi::xml_document& document) {
  pugi::xml_node root;
  for (const auto& node : document.children()) {
    if (node.type() == pugi::node_doctype) return {};
    if (node.type() != pugi::node_element) continue;
    if (root) return {};
    root = node;
  }
  return root;
}

}  // namespace

std::optional<std::size_t> document_length(std::string_view bytes) {
  constexpr std::string_view kEnd = "</cmd";
  for (std::size_t at = bytes.find('<'); at != kNone; at = bytes.find('<', at)) {
    if (const Section* const section = section_at(bytes, at)) {
      at = behind(bytes, *section, at);
      if (at == kNone) return std::nullopt;
      continue;
    }
    if (bytes.substr(at).starts_with(kEnd)) {
      const std::size_t close = bytes.find_first_not_of(" \t\r\n", at + kEnd.size());
      if (close != kNone && bytes[close] == '>') return close + 1;
    }
    ++at;
  }
  return std::nullopt;
}

XmlReading read_xml(std::string_view document) {
  if (!is_xml_text(document)) return {{}, "The document is not UTF-8 text."};
  pugi::xml_document parsed;
  const auto result = parsed.load_buffer(
      document.data(), document.size(),
      pugi::parse_default | pugi::parse_doctype | pugi::parse_declaration, pugi::encoding_utf8);
  if (!result) return {{}, "The document is not XML: " + std::string(result.description()) + "."};
  if (!has_sound_markup(document)) return {{}, "The document's markup is not well-formed."};
  const pugi::xml_node root = only_root(parsed);
  if (!root) return {{}, "The document has a document type, or not one root."};
  Reader reader;
  Element element = reader.read(root, 1);
  if (!reader.error().empty()) return {{}, reader.error()};
  return {std::move(element), {}};
}

bool is_xml_text(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = sequence_length(static_cast<unsigned char>(text[0]));
    if (length == 0 || length > text.size() || !is_character(text.substr(0, length))) return false;
    text.remove_prefix(length);
  }
  return true;
}

}  // namespace pxcl::printer
