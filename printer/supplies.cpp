// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "printer/supplies.hpp"

#include <algorithm>

namespace pxcl::printer {

namespace {

constexpr unsigned kFull = 100;
constexpr unsigned kLow = 5;  // percent, below which an ink asks for attention

bool has_paper(const Bin& bin) {
  return !bin.size.empty();
}

bool is_black(const Ink& ink) {
  return ink.color.find("black") != ink.color.npos;
}

}  // namespace

Supplies::Supplies(const Profile& profile)
    : bins_(profile.bins), inks_(profile.inks), maps_(profile.media_maps) {}

// A panel type is the type of its front.
bool Supplies::holds(const Bin& bin, const PaperWish& wish) const {
  if (bin.size != wish.size) return false;
  if (bin.type == wish.type || bin.type == "auto" || wish.type == "auto") return true;
  const auto map = std::ranges::find(maps_, bin.type, &MediaMap::panel);
  return map != maps_.end() && map->front == wish.type;
}

std::optional<Trouble> Supplies::feed(const PaperWish& wish) {
  Bin* found = nullptr;
  for (Bin& bin : bins_) {
    const bool is_better = found == nullptr || (found->sheets == 0 && bin.sheets > 0);
    if (holds(bin, wish) && is_better) found = &bin;
  }
  if (found == nullptr) return wish.takes_any ? feed_any() : Trouble::kMismatch;
  if (found->sheets == 0) return Trouble::kPaperOut;
  --found->sheets;
  return std::nullopt;
}

std::optional<Trouble> Supplies::feed_any() {
  const auto bin = std::ranges::find_if(bins_, [](const Bin& b) { return b.sheets > 0; });
  if (bin == bins_.end()) return Trouble::kPaperOut;
  --bin->sheets;
  return std::nullopt;
}

std::optional<Trouble> Supplies::use_ink(unsigned percent, bool black_only) {
  const auto is_used = [black_only](const Ink& ink) { return !black_only || is_black(ink); };
  const auto is_empty = [&](const Ink& ink) { return is_used(ink) && ink.level == 0; };
  if (std::ranges::any_of(inks_, is_empty)) return Trouble::kInkOut;
  for (Ink& ink : inks_) {
    if (!is_used(ink)) continue;
    ink.level -= std::min(ink.level, percent);
    if (ink.level < kLow) ink.tca = "DC";
  }
  return std::nullopt;
}

void Supplies::refill(const std::optional<PaperWish>& wish) {
  const auto fulfils = [&](const Bin& bin) { return holds(bin, *wish); };
  if (wish && std::ranges::none_of(bins_, fulfils)) {
    bins_[0].size = wish->size;
    bins_[0].type = wish->type;
  }
  for (Bin& bin : bins_) {
    if (has_paper(bin)) bin.sheets = bin.capacity;
  }
  for (Ink& ink : inks_) {
    if (ink.level < kLow) ink = {ink.color, kFull, "AC"};
  }
}

bool Supplies::is_ink_low() const {
  return std::ranges::any_of(inks_, [](const Ink& ink) { return ink.level < kLow; });
}

}  // namespace pxcl::printer
