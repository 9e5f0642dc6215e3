// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Paper and ink: what is in the printer now.

#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "printer/profile.hpp"
#include "printer/trouble.hpp"

namespace pxcl::printer {

/// The paper that a job asks for.
struct PaperWish {
  std::string_view size;
  std::string_view type;
  bool takes_any = false;  ///< Mismatch mode "auto": another paper of that size will do, or any.
};

class Supplies {
 public:
  explicit Supplies(const Profile& profile);

  /// Takes a sheet from the bin that holds the paper, the first of several that is not empty.
  [[nodiscard]] std::optional<Trouble> feed(const PaperWish& wish);
  /// Takes a sheet of whatever there is.
  [[nodiscard]] std::optional<Trouble> feed_any();

  /// Takes `percent` of all inks, or of the black ones alone; nothing is taken when one of them is empty.
  [[nodiscard]] std::optional<Trouble> use_ink(unsigned percent, bool black_only);

  /// All bins and empty or low inks are filled. With a wish that no bin fulfils, the first bin gets that paper.
  void refill(const std::optional<PaperWish>& wish);

  [[nodiscard]] const std::vector<Bin>& bins() const { return bins_; }
  [[nodiscard]] const std::vector<Ink>& inks() const { return inks_; }
  [[nodiscard]] bool is_ink_low() const;

 private:
  [[nodiscard]] bool holds(const Bin& bin, const PaperWish& wish) const;

  std::vector<Bin> bins_;
  std::vector<Ink> inks_;
  std::vector<MediaMap> maps_;
};

}  // namespace pxcl::printer
