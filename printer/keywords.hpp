// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The protocol's keywords and namespaces, as a printer knows them. The library has tables of its own: each side is held
// against the other by talking to it.

#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace pxcl::printer {

enum class Namespace { kCommon, kVendor, kSchema };

/// "zirk", "vrx" or "tolm".
[[nodiscard]] std::string_view prefix_of(Namespace space);
[[nodiscard]] std::string_view uri_of(Namespace space);
[[nodiscard]] std::optional<Namespace> namespace_of_prefix(std::string_view prefix);
[[nodiscard]] std::optional<Namespace> namespace_of_uri(std::string_view uri);

enum class Service { kPrint, kDevice, kMaintenance };

[[nodiscard]] std::optional<Service> service_of(std::string_view word);

using Keywords = std::span<const std::string_view>;

/// Whether `word` is one of `words`.
[[nodiscard]] bool is_one_of(std::string_view word, Keywords words);
/// All of them, with commas between.
[[nodiscard]] std::string listed(Keywords words);

extern const Keywords kPaperSizes;
extern const Keywords kPaperTypes;  ///< Those of a disc label among them.
extern const Keywords
    kPanelTypes;  ///< Types that a person chose at the panel; a media map tells what they are.
extern const Keywords kColorModes;
extern const Keywords
    kSwitches;  ///< Borderless and duplex printing, next page, the guide on the device.
extern const Keywords kStapleSides;
extern const Keywords kDataFormats;
extern const Keywords kReceivedFormats;  ///< Those that this printer can make pages of.
extern const Keywords kPreparations;
extern const Keywords kHosts;
extern const Keywords kMismatchModes;
extern const Keywords kAgreements;
extern const Keywords kInkStates;
extern const Keywords kInkGroups;
extern const Keywords kTestPatterns;
extern const Keywords kRefusals;  ///< The details of an "NG".

/// What a size's keyword says of itself: "iso_a4_210x297mm" is 210 by 297 millimetres. In 1/600 inch.
struct Extent {
  double width;
  double height;
};
[[nodiscard]] std::optional<Extent> extent_of(std::string_view paper_size);

}  // namespace pxcl::printer
