// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Command documents as constants: the five heads they begin with, the places in them that a builder
// fills, and the proof, at compile time, that their tags balance, that their holes ("%s") are as
// many as their builder's arguments and that their path keys lead to an element.

#pragma once

#include <iterator>

#include "util/types.hpp"
#include "xml/namespaces.hpp"

// Printers know each command by its own head: the blank before "?>" that some lack, and the odd
// encoding that one carries, are sent as they are.
#define PXCL_DECLARATION R"(<?xml version="1.0" encoding="utf-8" ?>)"
#define PXCL_DECLARATION_TIGHT R"(<?xml version="1.0" encoding="utf-8"?>)"
#define PXCL_DECLARATION_ODD R"(<?xml version="1.0" encoding="job_descriptionutf-8" ?>)"

#define PXCL_ZIRK PXCL_XMLNS("zirk", PXCL_URI_COMMON)
#define PXCL_VRX PXCL_XMLNS("vrx", PXCL_URI_VENDOR)
#define PXCL_TOLM PXCL_XMLNS("tolm", PXCL_URI_PRINT)

#define PXCL_HEAD PXCL_DECLARATION "<cmd" PXCL_ZIRK ">"
#define PXCL_HEAD_VENDOR PXCL_DECLARATION "<cmd" PXCL_ZIRK PXCL_VRX ">"
#define PXCL_HEAD_TIGHT PXCL_DECLARATION_TIGHT "<cmd" PXCL_ZIRK ">"
#define PXCL_HEAD_TIGHT_VENDOR PXCL_DECLARATION_TIGHT "<cmd" PXCL_ZIRK PXCL_VRX ">"
#define PXCL_HEAD_ODD_VENDOR PXCL_DECLARATION_ODD "<cmd" PXCL_ZIRK PXCL_VRX ">"

namespace pxcl::commands {

// Never defined: a document that calls one of these does not compile.
void tags_do_not_balance();
void holes_and_arguments_differ();
void key_leads_nowhere();
void keys_are_out_of_order();
void text_ends_too_soon();

// Loops, because compilers with a sanitizer do not take std::string_view's own as constant.
constexpr std::size_t find_either(std::string_view text, char first, char second,
                                  std::size_t begin = 0) {
  while (begin < text.size() && text[begin] != first && text[begin] != second) ++begin;
  return begin;
}
constexpr std::size_t find(std::string_view text, char byte, std::size_t begin = 0) {
  return find_either(text, byte, byte, begin);
}
constexpr std::size_t find_hole(std::string_view text, std::size_t begin) {
  do {
    begin = find(text, '%', begin);
  } while (begin < text.size() && !from(text, begin).starts_with("%s") && ++begin);
  return begin;
}

// One tag of a document, a declaration or a CDATA section among them.
struct Tag {
  std::string_view inside;  // between "<" and ">"
  std::size_t end;          // offset behind ">"; 0 where there is no further tag

  constexpr bool is_end() const { return inside.starts_with('/'); }
  constexpr bool is_start() const {
    return !is_end() && !inside.starts_with('?') && !inside.starts_with('!') &&
           !inside.ends_with('/');
  }
  // A hole right behind a name holds declarations, not letters.
  constexpr std::string_view name() const {
    const std::string_view name = slice(inside, 0, find_either(inside, ' ', '/'));
    return name.ends_with("%s") ? slice(name, 0, name.size() - 2) : name;
  }
};

// The first tag from `begin` on. Texts hold no "<" of their own.
constexpr Tag next_tag(std::string_view text, std::size_t begin) {
  const std::size_t open = find(text, '<', begin);
  const std::size_t close = find(text, '>', open);
  if (close == text.size()) return {{}, 0};
  return {slice(text, open + 1, close - open - 1), close + 1};
}

// Whether every start tag meets its end tag, in the order of a tree.
constexpr bool tags_balance(std::string_view text) {
  std::string_view open[8];
  std::size_t depth = 0;
  for (Tag tag = next_tag(text, 0); tag.end != 0; tag = next_tag(text, tag.end)) {
    if (tag.is_start()) {
      if (depth == std::size(open)) return false;
      open[depth++] = tag.name();
    } else if (tag.is_end() && (depth == 0 || open[--depth] != from(tag.inside, 1))) {
      return false;
    }
  }
  return depth == 0;
}

// A place in a document that gives way to a text.
struct Slot {
  u16 offset;
  u16 length;
};

constexpr Slot make_slot(std::size_t begin, std::size_t end) {
  return {static_cast<u16>(begin), static_cast<u16>(end - begin)};
}

// The text of the element at `key`: the steps from the root on, a name each and perhaps attributes,
// as they stand in the start tag.
constexpr Slot find_text(std::string_view text, std::string_view key) {
  std::size_t depth = 0, matched = 0;
  for (Tag tag = next_tag(text, 0); tag.end != 0; tag = next_tag(text, tag.end)) {
    if (tag.is_end() && --depth < matched) break;
    if (!tag.is_start()) continue;
    const std::string_view step = slice(key, 0, find(key, '/'));
    if (matched == depth++ && (tag.name() == step || tag.inside == step)) {
      if (step.size() == key.size()) return make_slot(tag.end, find(text, '<', tag.end));
      key = from(key, step.size() + 1);
      ++matched;
    }
  }
  key_leads_nowhere();
  return {};
}

// A whole command, or a piece of one.
struct Document {
  const char* text;
  std::size_t length;

  template <std::size_t Size>
  consteval Document(const char (&literal)[Size]) : text(literal), length(Size - 1) {
    if (!tags_balance(view())) tags_do_not_balance();
  }
  constexpr std::string_view view() const { return {text, length}; }
};

// The pieces between places are written in blocks, each over the beginning of what follows it. So
// at least a block stands behind the last place.
inline constexpr std::size_t kBlockSize = 32;

// A document to fill, whatever the number of its places.
struct Fillable {
  std::string_view text;
  std::span<const Slot> slots;
  u16 kept;   // bytes outside the places
  u16 spare;  // bytes that callers are asked for beyond the filled document
};

// The places of a document, in their order.
template <std::size_t Slots>
struct Places {
  Slot slots[Slots] = {};
  u16 kept = 0;
  u16 spare = 0;

  // Callers are asked for the bytes of the places as well.
  consteval void measure(std::string_view text) {
    for (const Slot& slot : slots) spare = static_cast<u16>(spare + slot.length);
    kept = static_cast<u16>(text.size() - spare);
    const Slot& last = slots[Slots - 1];
    if (text.size() < last.offset + last.length + kBlockSize) text_ends_too_soon();
  }
  constexpr Fillable in(const Document& document) const {
    return {document.view(), slots, kept, spare};
  }
};

// A document with its places.
template <std::size_t Slots>
struct Template : Document, Places<Slots> {
  using Places<Slots>::slots;

  // The holes of the text. Callers are asked for a terminator too.
  template <std::size_t Size>
  consteval Template(const char (&literal)[Size]) : Document(literal) {
    std::size_t found = 0;
    for (auto at = find_hole(view(), 0); at < length; at = find_hole(view(), at + 2), ++found) {
      if (found < Slots) slots[found] = make_slot(at, at + 2);
    }
    if (found != Slots) holes_and_arguments_differ();
    this->measure(view());
    ++this->spare;
  }

  // The texts of the elements at path keys.
  template <std::size_t Size>
  consteval Template(const char (&literal)[Size], const std::string_view (&keys)[Slots])
      : Document(literal) {
    for (std::size_t i = 0; i < Slots; ++i) {
      slots[i] = find_text(view(), keys[i]);
      if (i > 0 && slots[i - 1].offset >= slots[i].offset) keys_are_out_of_order();
    }
    this->measure(view());
  }

  constexpr operator Fillable() const { return this->in(*this); }
};

}  // namespace pxcl::commands
