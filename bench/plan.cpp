// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "plan.hpp"

#include <algorithm>

namespace pxcl_bench {

void Table::add(std::string_view word, std::uint32_t number) {
  if (4 * ++count_ > entries_.size()) {
    std::vector<Entry> old(4 * entries_.size());
    old.swap(entries_);
    mask_ = entries_.size() - 1;
    count_ = 1;
    for (const Entry& entry : old) {
      if (entry.number != kNone) add(entry.word, entry.number);
    }
  }
  const Ends ends = ends_of(word);
  std::size_t slot = slot_of(ends, word.size());
  while (entries_[slot].number != kNone) slot = (slot + 1) & mask_;
  entries_[slot] = {ends, word, number};
}

Plan::Plan(const std::vector<std::string>& paths) : root_(new_level()) {
  for (std::uint32_t index = 0; index < paths.size(); ++index) {
    std::string_view rest = paths[index];
    Level* level = root_;
    while (true) {
      bool quoted = false;
      const auto end = std::find_if(rest.begin(), rest.end(), [&quoted](char byte) {
        quoted ^= byte == '"';
        return byte == '/' && !quoted;
      });
      const std::string_view element(rest.begin(), end);
      Step* step = enter(*level, element);
      if (end == rest.end()) {
        const bool bare = element.find(' ') != element.npos && element.find('=') == element.npos;
        (bare ? step->attribute : step->text) = index;
        break;
      }
      if (!step->below) step->below = new_level();
      level = step->below;
      rest.remove_prefix(element.size() + 1);
    }
  }
}

Step* Plan::enter(Level& level, std::string_view element) {
  const std::string& name = words_.emplace_back(element.substr(0, element.find(' ')));
  std::uint32_t index = level.table.find(name);
  if (index == Table::kNone) {
    index = static_cast<std::uint32_t>(level.names.size());
    level.names.push_back(&names_.emplace_back());
    level.table.add(name, index);
  }
  Name& known = *level.names[index];
  if (name.size() < element.size()) {
    const std::string_view attribute = element.substr(name.size() + 1);
    known.attribute = attribute.substr(0, attribute.find('='));
    if (known.attribute.size() < attribute.size()) {
      const std::string& value = words_.emplace_back(attribute.substr(
          known.attribute.size() + 2, attribute.size() - known.attribute.size() - 3));
      std::uint32_t step = known.values.find(value);
      if (step == Table::kNone) {
        step = static_cast<std::uint32_t>(known.steps.size());
        known.steps.push_back(new_step());
        known.values.add(value, step);
      }
      return known.steps[step];
    }
  }
  if (!known.any) known.any = new_step();
  return known.any;
}

}  // namespace pxcl_bench
