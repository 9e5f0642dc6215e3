// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "printer/capability.hpp"

#include <span>

namespace pxcl::printer {

namespace {

// One area of a size, and what it is called.
struct AreaRow {
  const char* area;
  const char* margin;
  std::optional<PrintArea> PaperSize::*field;
};

constexpr AreaRow kAreas[] = {
    {"printarea_border", "margin_border", &PaperSize::border},
    {"printarea_borderless", "margin_borderless", &PaperSize::borderless},
    {"printarea_duplex", "margin_duplex", &PaperSize::duplex},
};

// The choices that a type allows, and what they are called.
struct ChoiceRow {
  const char* name;
  std::vector<std::string> MediaType::*field;
};

constexpr ChoiceRow kChoices[] = {
    {"borderlessprint", &MediaType::borderless},
    {"printcolormode", &MediaType::color},
    {"duplexprint", &MediaType::duplex},
};

// A list of words of the print service, and where it is announced.
struct FeatureRow {
  const char* name;
  std::vector<std::string> Features::*field;
};

constexpr FeatureRow kFeatures[] = {
    {"zirk:stapleside", &Features::staple_sides},
    {"zirk:support_data_format", &Features::formats},
    {"vrx:nextpage", &Features::next_page},
    {"vrx:printpreparation", &Features::print_preparation},
    {"vrx:host_environment", &Features::hosts},
    {"zirk:mismatch_mode", &Features::mismatch_modes},
};

template <typename Number>
std::string joined(std::span<const Number> numbers) {
  std::string text;
  for (const Number number : numbers) text += (text.empty() ? "" : ",") + std::to_string(number);
  return text;
}

// The keywords of each namespace make an element of their own.
template <typename Item>
void add_names(Reply& reply, std::string_view name, const std::vector<Item>& items) {
  for (const Namespace space : {Namespace::kCommon, Namespace::kVendor, Namespace::kSchema}) {
    std::vector<std::string> keywords;
    for (const Item& item : items) {
      if (item.space == space) keywords.push_back(item.keyword);
    }
    reply.add_list(qualified(space, name), keywords);
  }
}

void add_areas(Reply& reply, const PaperSize& size) {
  for (const AreaRow& row : kAreas) {
    const std::optional<PrintArea>& area = size.*row.field;
    if (!area) continue;
    const std::vector<Attribute> which = {{"papersize", size.keyword}};
    reply.add(qualified(size.space, row.area), joined(std::span<const std::uint32_t>(area->area)),
              which);
    reply.add(qualified(size.space, row.margin),
              joined(std::span<const std::uint32_t>(area->margin)), which);
  }
}

void add_choices(Reply& reply, const MediaType& type) {
  for (const ChoiceRow& row : kChoices) {
    reply.add_list(qualified(type.space, row.name), type.*row.field, {{"papertype", type.keyword}});
  }
}

void add_map(Reply& reply, const MediaMap& map) {
  reply.open("vrx:mediamap", {{"papertype", map.panel}});
  reply.add("vrx:front", map.front);
  reply.add("vrx:back", map.back);
  reply.close();
}

void add_pixels(Reply& reply, const Pixels& pixels) {
  reply.add("zirk:max_pixels", joined(std::span<const std::uint16_t>(pixels.most)));
  if (!pixels.least) return;
  reply.add("zirk:min_pixels", joined(std::span<const std::uint16_t>(*pixels.least)));
}

void add_print_features(Reply& reply, const Features& features) {
  for (const FeatureRow& row : kFeatures) reply.add_list(row.name, features.*row.field);
  if (!features.disc_guide.empty()) {
    reply.open("vrx:device_side_guide");
    reply.add_list("vrx:item", features.disc_guide, {{"name", "disc"}});
    reply.close();
  }
  if (features.job_queue) reply.add("zirk:job_queue", "ON");
  if (features.date_time) reply.add("zirk:datetime", "ON");
}

void add_print(Reply& reply, const Profile& profile) {
  add_names(reply, "papersize", profile.sizes);
  for (const PaperSize& size : profile.sizes) add_areas(reply, size);
  add_names(reply, "papertype", profile.types);
  for (const MediaType& type : profile.types) add_choices(reply, type);
  for (const MediaMap& map : profile.media_maps) add_map(reply, map);
  if (profile.pixels) add_pixels(reply, *profile.pixels);
  add_print_features(reply, profile.print);
}

void add_maintenance(Reply& reply, const MaintenanceFeatures& features) {
  reply.add_list("vrx:host_environment", features.hosts);
  if (features.date_time) reply.add("zirk:datetime", "ON");
  reply.add("zirk:inkgroup", "all");
  reply.add("zirk:type", listed(kTestPatterns));
}

}  // namespace

void add_capability(Reply& reply, const Profile& profile, Service service) {
  switch (service) {
    case Service::kPrint:
      return add_print(reply, profile);
    case Service::kMaintenance:
      return add_maintenance(reply, profile.maintenance);
    case Service::kDevice:
      return reply.add("vrx:selfPLIagreement", listed(kAgreements));
  }
}

}  // namespace pxcl::printer
