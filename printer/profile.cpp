// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "printer/profile.hpp"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <limits>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>

#include "printer/built_in_profiles.hpp"

namespace pxcl::printer {

namespace {

using Json = nlohmann::json;

constexpr std::uintmax_t kLargestFile = 1 << 20;
constexpr std::uint32_t kMostDots = 100'000;  // along one side of a paper
constexpr unsigned kMostSheets = 10'000;
constexpr std::size_t kMostBins = 7;  // a status has no more places

// A value of the file, and the way to it for messages.
class Node {
 public:
  Node(const Json& value, std::string path) : value_(&value), path_(std::move(path)) {}

  [[noreturn]] void fail(const std::string& what) const {
    throw std::runtime_error(path_ + " " + what + ".");
  }

  void allow_only(std::initializer_list<const char*> names) const {
    if (!value_->is_object()) fail("is not an object");
    for (const auto& [name, value] : value_->items()) {
      if (std::ranges::find(names, name) == names.end())
        child(name, value).fail("is no known field");
    }
  }

  std::optional<Node> find(const char* name) const {
    const auto at = value_->find(name);
    if (at == value_->end()) return std::nullopt;
    return child(name, *at);
  }

  Node at(const char* name) const {
    const auto found = find(name);
    if (!found) fail(std::string("lacks the field \"") + name + "\"");
    return *found;
  }

  std::vector<Node> items() const {
    if (!value_->is_array()) fail("is not a list");
    std::vector<Node> nodes;
    for (std::size_t i = 0; i < value_->size(); ++i) {
      nodes.emplace_back((*value_)[i], path_ + "[" + std::to_string(i) + "]");
    }
    return nodes;
  }

  std::string text() const {
    if (!value_->is_string()) fail("is not a text");
    std::string text = value_->get<std::string>();
    const auto is_control = [](char byte) { return static_cast<unsigned char>(byte) < 0x20; };
    if (text.empty() || std::ranges::any_of(text, is_control)) fail("is empty or not one line");
    return text;
  }

  std::string one_of(Keywords words) const {
    std::string word = text();
    if (!is_one_of(word, words)) fail("is \"" + word + "\", not one of " + listed(words));
    return word;
  }

  bool flag() const {
    if (!value_->is_boolean()) fail("is neither true nor false");
    return value_->get<bool>();
  }

  std::uint32_t number(std::uint32_t most) const {
    if (!value_->is_number_unsigned() || value_->get<std::uint64_t>() > most) {
      fail("is not a number from 0 to " + std::to_string(most));
    }
    return value_->get<std::uint32_t>();
  }

  template <typename Number, std::size_t count>
  std::array<Number, count> numbers(std::uint32_t most) const {
    const auto nodes = items();
    if (nodes.size() != count) fail("does not hold " + std::to_string(count) + " numbers");
    std::array<Number, count> values{};
    std::ranges::transform(nodes, values.begin(), [most](const Node& node) {
      return static_cast<Number>(node.number(most));
    });
    return values;
  }

 private:
  Node child(const std::string& name, const Json& value) const {
    return {value, path_ + "." + name};
  }

  const Json* value_;
  std::string path_;
};

// A list that may be left out.
std::vector<std::string> words(const Node& node, const char* name, Keywords allowed) {
  std::vector<std::string> list;
  const auto field = node.find(name);
  if (!field) return list;
  for (const Node& item : field->items()) {
    list.push_back(item.one_of(allowed));
    if (std::ranges::count(list, list.back()) > 1) item.fail("is listed twice");
  }
  return list;
}

bool flag(const Node& node, const char* name) {
  const auto field = node.find(name);
  return field && field->flag();
}

Namespace read_namespace(const Node& node) {
  const std::string prefix = node.text();
  const auto space = namespace_of_prefix(prefix);
  if (!space) node.fail("is \"" + prefix + "\", not one of zirk,vrx,tolm");
  return *space;
}

std::optional<PrintArea> read_area(const Node& size, const char* name) {
  const auto node = size.find(name);
  if (!node) return std::nullopt;
  node->allow_only({"area", "margin"});
  const PrintArea area{node->at("area").numbers<std::uint32_t, 2>(kMostDots),
                       node->at("margin").numbers<std::uint32_t, 4>(kMostDots)};
  if (area.area[0] == 0 || area.area[1] == 0) node->at("area").fail("is empty");
  return area;
}

// What is printed on and the margins make the whole paper. (A borderless area may hang over.)
void check_fits(const Node& node, const char* name, const std::optional<PrintArea>& area,
                const std::string& keyword) {
  constexpr double kRounding = 3;
  const auto extent = extent_of(keyword);
  if (!area || !extent) return;
  const double width = area->area[0] + area->margin[2] + area->margin[3];
  const double height = area->area[1] + area->margin[0] + area->margin[1];
  if (std::abs(width - extent->width) > kRounding ||
      std::abs(height - extent->height) > kRounding) {
    node.at(name).fail("and its margins do not make the whole paper");
  }
}

PaperSize read_size(const Node& node) {
  node.allow_only({"keyword", "in", "border", "borderless", "duplex"});
  PaperSize size{node.at("keyword").one_of(kPaperSizes), read_namespace(node.at("in")),
                 read_area(node, "border"), read_area(node, "borderless"),
                 read_area(node, "duplex")};
  if (!size.border && !size.borderless) node.fail("has neither \"border\" nor \"borderless\"");
  check_fits(node, "border", size.border, size.keyword);
  check_fits(node, "duplex", size.duplex, size.keyword);
  return size;
}

MediaType read_type(const Node& node) {
  node.allow_only({"keyword", "in", "borderless", "color", "duplex"});
  MediaType type{node.at("keyword").one_of(kPaperTypes), read_namespace(node.at("in")),
                 words(node, "borderless", kSwitches), words(node, "color", kColorModes),
                 words(node, "duplex", kSwitches)};
  if (type.borderless.empty()) node.fail("allows neither borderless \"OFF\" nor \"ON\"");
  return type;
}

Bin read_bin(const Node& node, const Profile& profile) {
  node.allow_only({"size", "type", "sheets", "capacity"});
  Bin bin{"", "", 0, node.at("capacity").number(kMostSheets)};
  const auto size = node.find("size"), type = node.find("type"), sheets = node.find("sheets");
  if (!size && !type && !sheets) return bin;
  bin.size = node.at("size").text();
  bin.type = node.at("type").text();
  bin.sheets = node.at("sheets").number(bin.capacity);
  if (find_size(profile, bin.size) == nullptr) size->fail("is not one of the printer's sizes");
  const bool is_panel =
      std::ranges::find(profile.media_maps, bin.type, &MediaMap::panel) != profile.media_maps.end();
  if (find_type(profile, bin.type) == nullptr && !is_panel) {
    type->fail("is neither one of the printer's types nor of its media maps");
  }
  return bin;
}

Ink read_ink(const Node& node) {
  node.allow_only({"color", "level", "tca"});
  return {node.at("color").text(), node.at("level").number(100), node.at("tca").one_of(kInkStates)};
}

MediaMap read_map(const Node& node, const Profile& profile) {
  node.allow_only({"panel", "front", "back"});
  MediaMap map{node.at("panel").one_of(kPanelTypes), node.at("front").text(),
               node.at("back").text()};
  for (const char* side : {"front", "back"}) {
    if (find_type(profile, node.at(side).text()) == nullptr) {
      node.at(side).fail("is not one of the printer's types");
    }
  }
  return map;
}

std::optional<Pixels> read_pixels(const Node& root) {
  constexpr std::uint32_t kMost = std::numeric_limits<std::uint16_t>::max();
  const auto node = root.find("pixels");
  if (!node) return std::nullopt;
  node->allow_only({"most", "least"});
  Pixels pixels{node->at("most").numbers<std::uint16_t, 2>(kMost), {}};
  if (const auto least = node->find("least")) {
    pixels.least = least->numbers<std::uint16_t, 2>(kMost);
  }
  return pixels;
}

Features read_features(const Node& node) {
  node.allow_only({"formats", "next_page", "print_preparation", "disc_guide", "staple_sides",
                   "hosts", "mismatch_modes", "job_queue", "date_time"});
  Features features{words(node, "formats", kReceivedFormats),
                    words(node, "next_page", kSwitches),
                    words(node, "print_preparation", kPreparations),
                    words(node, "disc_guide", kSwitches),
                    words(node, "staple_sides", kStapleSides),
                    words(node, "hosts", kHosts),
                    words(node, "mismatch_modes", kMismatchModes),
                    flag(node, "job_queue"),
                    flag(node, "date_time")};
  if (features.formats.empty()) node.fail("has no \"formats\"");
  return features;
}

MaintenanceFeatures read_maintenance(const Node& root) {
  const auto node = root.find("maintenance");
  if (!node) return {};
  node->allow_only({"hosts", "date_time"});
  return {words(*node, "hosts", kHosts), flag(*node, "date_time")};
}

// Fields end in ";", and the one of command sets names this protocol.
std::string read_device_id(const Node& node) {
  std::string id = node.text();
  const std::size_t sets = id.find("CMD:");
  const std::string value = sets == id.npos ? "" : id.substr(sets, id.find(';', sets) - sets) + ';';
  const bool has_protocol = value.find("ZIRK;") != id.npos || value.find("ZIRK,") != id.npos;
  if (!id.ends_with(';') || !has_protocol) {
    node.fail("is not a device ID with ZIRK among its command sets (\"...;CMD:...,ZIRK;...;\")");
  }
  return id;
}

template <typename Read>
auto read_all(const Node& list, std::string(std::invoke_result_t<Read, Node>::*key), Read read) {
  std::vector<std::invoke_result_t<Read, Node>> all;
  for (const Node& item : list.items()) {
    all.push_back(read(item));
    if (std::ranges::count(all, all.back().*key, key) > 1) item.fail("is there twice");
  }
  if (all.empty()) list.fail("is empty");
  return all;
}

void read_bins(const Node& list, Profile& profile) {
  for (const Node& item : list.items()) profile.bins.push_back(read_bin(item, profile));
  if (profile.bins.empty() || profile.bins.size() > kMostBins) {
    list.fail("does not hold 1 to " + std::to_string(kMostBins) + " bins");
  }
}

Profile read_profile(const Node& root) {
  root.allow_only({"model", "device_id", "sizes", "types", "bins", "inks", "media_maps", "pixels",
                   "print", "maintenance"});
  Profile profile;
  profile.model = root.at("model").text();
  profile.device_id = read_device_id(root.at("device_id"));
  profile.sizes = read_all(root.at("sizes"), &PaperSize::keyword, read_size);
  profile.types = read_all(root.at("types"), &MediaType::keyword, read_type);
  if (const auto maps = root.find("media_maps")) {
    profile.media_maps =
        read_all(*maps, &MediaMap::panel, [&](const Node& map) { return read_map(map, profile); });
  }
  read_bins(root.at("bins"), profile);
  profile.inks = read_all(root.at("inks"), &Ink::color, read_ink);
  profile.pixels = read_pixels(root);
  profile.print = read_features(root.at("print"));
  profile.maintenance = read_maintenance(root);
  return profile;
}

}  // namespace

std::vector<std::string> profile_names() {
  std::vector<std::string> names;
  for (const BuiltInProfile& profile : built_in_profiles()) names.emplace_back(profile.name);
  return names;
}

Profile profile_named(std::string_view name) {
  std::string names;
  for (const BuiltInProfile& profile : built_in_profiles()) {
    if (profile.name == name) return profile_from_json(profile.json, name);
    names += (names.empty() ? "" : ", ") + std::string(profile.name);
  }
  throw std::runtime_error("There is no profile \"" + std::string(name) + "\": choose one of " +
                           names + ", or give a JSON file.");
}

Profile profile_from_file(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("The profile " + path.string() + " can't be opened.");
  std::string text(kLargestFile + 1, '\0');
  file.read(text.data(), static_cast<std::streamsize>(text.size()));
  text.resize(static_cast<std::size_t>(file.gcount()));
  if (file.bad() || text.size() > kLargestFile) {
    throw std::runtime_error("The profile " + path.string() + " can't be read, or is no profile.");
  }
  return profile_from_json(text, path.string());
}

Profile profile_from_json(std::string_view text, std::string_view origin) {
  Json json;
  try {
    json = Json::parse(text);
  } catch (const Json::exception& error) {
    throw std::runtime_error("The profile " + std::string(origin) +
                             " is not JSON: " + error.what());
  }
  return read_profile({json, "The profile " + std::string(origin) + ":"});
}

const PaperSize* find_size(const Profile& profile, std::string_view keyword) {
  const auto at = std::ranges::find(profile.sizes, keyword, &PaperSize::keyword);
  return at == profile.sizes.end() ? nullptr : &*at;
}

const MediaType* find_type(const Profile& profile, std::string_view keyword) {
  const auto at = std::ranges::find(profile.types, keyword, &MediaType::keyword);
  return at == profile.types.end() ? nullptr : &*at;
}

}  // namespace pxcl::printer
