// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// What the peers share: the paths, turned once into tables, so that a peer looks at each sibling
// once and finds out by one comparison whether it is wanted; and the ways through a document with
// them.

#pragma once

#include <cstdint>
#include <cstring>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace pxcl_bench {

// Words and their numbers. A word is known by its length, first and last eight bytes; only what is
// longer than sixteen is compared byte by byte.
class Table {
 public:
  static constexpr std::uint32_t kNone = ~0U;

  void add(std::string_view word, std::uint32_t number);
  std::uint32_t find(std::string_view word) const {
    const Ends ends = ends_of(word);
    for (std::size_t slot = slot_of(ends, word.size());; slot = (slot + 1) & mask_) {
      const Entry& entry = entries_[slot];
      if (entry.number == kNone) return kNone;
      if (entry.ends.head == ends.head && entry.ends.tail == ends.tail &&
          entry.word.size() == word.size() &&
          (word.size() <= 16 ||
           std::memcmp(entry.word.data() + 8, word.data() + 8, word.size() - 16) == 0)) {
        return entry.number;
      }
    }
  }

 private:
  struct Ends {
    std::uint64_t head = 0;
    std::uint64_t tail = 0;
  };
  struct Entry {
    Ends ends = {};
    std::string_view word = {};
    std::uint32_t number = kNone;
  };

  template <typename Word>
  static std::uint64_t load(const char* bytes) {
    Word word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return word;
  }
  static Ends ends_of(std::string_view word) {
    const char* end = word.data() + word.size();
    if (word.size() >= 8) return {load<std::uint64_t>(word.data()), load<std::uint64_t>(end - 8)};
    if (word.size() >= 4) return {load<std::uint32_t>(word.data()), load<std::uint32_t>(end - 4)};
    Ends ends = {};
    for (char byte : word) ends.head = ends.head << 8 | static_cast<unsigned char>(byte);
    return ends;
  }
  std::size_t slot_of(const Ends& ends, std::size_t length) const {
    constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15U;
    const std::uint64_t mixed = (ends.head * kOdd) ^ (ends.tail + length);
    return static_cast<std::size_t>((mixed * kOdd) >> 32) & mask_;
  }

  std::vector<Entry> entries_ = std::vector<Entry>(8);
  std::size_t mask_ = 7;
  std::size_t count_ = 0;
};

struct Level;

// An element that some path goes through or ends in.
struct Step {
  static constexpr std::uint32_t kNobody = ~0U;
  std::uint32_t text = kNobody;       // the path that wants its text
  std::uint32_t attribute = kNobody;  // the path that wants its attribute's value
  Level* below = nullptr;             // null when no path goes further
  bool is_wanted() const { return text != kNobody || attribute != kNobody; }
};

// All paths through elements of one name: they name no attribute, one with any value, or one with
// one of several values.
struct Name {
  std::string attribute;
  Table values;
  std::vector<Step*> steps;  // one for each value
  Step* any = nullptr;
};

struct Level {
  Table table;
  std::vector<Name*> names;
};

class Plan {
 public:
  explicit Plan(const std::vector<std::string>& paths);
  const Level& root() const { return *root_; }

 private:
  Step* enter(Level& level, std::string_view element);
  Step* new_step() { return &steps_.emplace_back(); }
  Level* new_level() { return &levels_.emplace_back(); }

  std::deque<std::string> words_;
  std::deque<Step> steps_;
  std::deque<Name> names_;
  std::deque<Level> levels_;
  Level* root_;
};

// The step for an element, null when nobody wants it. `attribute_of` answers with a null view when
// the element lacks the attribute; the value that was looked at is left in `value`.
template <typename AttributeOf>
const Step* step_for(const Level& level, std::string_view name, const AttributeOf& attribute_of,
                     std::string_view& value) {
  const std::uint32_t index = level.table.find(name);
  if (index == Table::kNone) return nullptr;
  const Name& known = *level.names[index];
  if (known.attribute.empty()) return known.any;
  value = attribute_of(known.attribute);
  if (!value.data()) return nullptr;
  if (known.any) return known.any;
  const std::uint32_t step = known.values.find(value);
  return step == Table::kNone ? nullptr : known.steps[step];
}

// The way to the wanted elements of a tree: take(step, attribute value, text_of) for each, where
// text_of() is its text. The attribute's value is there at least when somebody wants it.
template <typename Dom, typename Take>
void walk(typename Dom::Node parent, const Level& level, const Take& take) {
  for (typename Dom::Node node = Dom::first(parent); node; node = Dom::next(node)) {
    std::string_view value;
    const Step* step = step_for(
        level, Dom::name(node),
        [&](const std::string& attribute) { return Dom::attribute(node, attribute); }, value);
    if (!step) continue;
    if (step->is_wanted()) take(*step, value, [&] { return Dom::text(node); });
    if (step->below) walk<Dom>(node, *step->below, take);
  }
}

// The same for a parser that calls back. Texts and attribute values have to last until the read is
// over.
template <typename Take>
class Watch {
 public:
  // `levels` is the room for a stack, kept from read to read.
  Watch(const Plan& plan, std::vector<const Level*>& levels, const Take& take)
      : levels_(levels), take_(take) {
    levels_.assign(1, &plan.root());
  }

  // name_of() is asked only where it matters; keep(value) makes the wanted value of an attribute
  // last.
  template <typename NameOf, typename AttributeOf, typename Keep>
  void open(const NameOf& name_of, const AttributeOf& attribute_of, const Keep& keep) {
    finish();
    std::string_view value;
    const Step* step = unwanted_ > 0 || !levels_.back()
                           ? nullptr
                           : step_for(*levels_.back(), name_of(), attribute_of, value);
    if (!step) {
      ++unwanted_;
      return;
    }
    levels_.push_back(step->below);
    if (!step->is_wanted()) return;
    wanted_ = step;
    attribute_ = step->attribute == Step::kNobody ? std::string_view() : keep(value);
    text_ = {};
  }
  // Text may come in pieces; `begin()` tells where one stands.
  template <typename Begin>
  void text(std::size_t length, const Begin& begin) {
    if (!wanted_) return;
    text_ = text_.data() ? std::string_view(text_.data(), text_.size() + length)
                         : std::string_view(begin(), length);
  }
  void close() {
    finish();
    if (unwanted_ > 0) {
      --unwanted_;
    } else {
      levels_.pop_back();
    }
  }

 private:
  void finish() {
    if (!wanted_) return;
    take_(*wanted_, attribute_, [this] { return text_; });
    wanted_ = nullptr;
  }

  std::vector<const Level*>& levels_;  // of the wanted elements that are open
  const Take& take_;
  std::size_t unwanted_ = 0;  // open elements below them
  const Step* wanted_ = nullptr;
  std::string_view attribute_, text_;
};

}  // namespace pxcl_bench
