// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// What a virtual printer is: a JSON file, see printer/profiles/ for three of them. Its fields have the names of those
// below; "in" is the prefix of the namespace. What may be left out there is optional, empty or false here.

#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "printer/keywords.hpp"

namespace pxcl::printer {

/// Where a size can be printed on in one way of printing, in 1/600 inch.
struct PrintArea {
  std::array<std::uint32_t, 2> area;    ///< Width, height.
  std::array<std::uint32_t, 4> margin;  ///< Top, bottom, left, right.
};

struct PaperSize {
  std::string keyword;
  Namespace space;  ///< Where it is announced, and has to be asked for.
  std::optional<PrintArea> border;
  std::optional<PrintArea> borderless;
  std::optional<PrintArea> duplex;
};

struct MediaType {
  std::string keyword;
  Namespace space;  ///< Where it and its choices are announced, and have to be asked for.
  std::vector<std::string> borderless;  ///< Of "OFF" and "ON".
  std::vector<std::string> color;
  std::vector<std::string> duplex;  ///< Of "OFF" and "ON"; empty when there is no choice.
};

/// An input bin. Bins are numbered from 1 in their order: "inputbin_p1" and so on.
struct Bin {
  std::string size;  ///< Empty when no paper is registered.
  std::string type;  ///< Of the printer's types or a panel type.
  unsigned sheets;
  unsigned capacity;
};

struct Ink {
  std::string color;
  unsigned level;  ///< Percent.
  std::string tca;
};

/// What a type that a person chose at the panel is to the protocol.
struct MediaMap {
  std::string panel;
  std::string front;
  std::string back;
};

struct Pixels {
  std::array<std::uint16_t, 2> most;
  std::optional<std::array<std::uint16_t, 2>> least;
};

/// An empty list is not announced at all.
struct Features {
  std::vector<std::string> formats;
  std::vector<std::string> next_page;
  std::vector<std::string> print_preparation;
  std::vector<std::string> disc_guide;
  std::vector<std::string> staple_sides;
  std::vector<std::string> hosts;
  std::vector<std::string> mismatch_modes;
  bool job_queue;
  bool date_time;
};

struct MaintenanceFeatures {
  std::vector<std::string> hosts;
  bool date_time;
};

struct Profile {
  std::string model;
  std::string device_id;  ///< IEEE 1284, without its two length bytes.
  std::vector<PaperSize> sizes;
  std::vector<MediaType> types;
  std::vector<Bin> bins;
  std::vector<Ink> inks;
  std::vector<MediaMap> media_maps;
  std::optional<Pixels> pixels;
  Features print;
  MaintenanceFeatures maintenance;
};

/// The profiles that are built in, for profile_named().
[[nodiscard]] std::vector<std::string> profile_names();

/// Throws std::runtime_error with a sentence: no such name.
[[nodiscard]] Profile profile_named(std::string_view name);

/// Throws std::runtime_error with a sentence that names the file and the field that is wrong.
[[nodiscard]] Profile profile_from_file(const std::filesystem::path& path);

/// The same of a text; `origin` names it in messages.
[[nodiscard]] Profile profile_from_json(std::string_view text, std::string_view origin);

[[nodiscard]] const PaperSize* find_size(const Profile& profile, std::string_view keyword);
[[nodiscard]] const MediaType* find_type(const Profile& profile, std::string_view keyword);

}  // namespace pxcl::printer
