// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "cli/values.hpp"

#include "cli/text.hpp"

namespace pxcl::cli {

namespace {

using List = Value::List;
using Object = Value::Object;

template <typename Known>
Value known(const std::optional<Known>& value) {
  return value ? Value(*value) : Value();
}

Value known(const std::optional<client::Word>& word) {
  return word ? Value(word->keyword) : Value();
}

List keywords(const std::vector<client::Word>& words) {
  List list;
  for (const client::Word& word : words) list.push_back(word.keyword);
  return list;
}

// "210 x 297 mm"
Value sheet(const std::optional<client::Outline>& outline) {
  if (!outline) return {};
  return filled("{:g} x {:g} mm", outline->width / 100.0, outline->height / 100.0);
}

Value area(const std::optional<client::PrintArea>& area) {
  if (!area) return {};
  List margins;
  for (const std::uint32_t margin : area->margins) margins.push_back(margin);
  return Object{{"width", area->area.width}, {"height", area->area.height}, {"margins", margins}};
}

Value pixels(const std::optional<client::Area>& area) {
  if (!area) return {};
  return Object{{"width", area->width}, {"height", area->height}};
}

List sizes(const std::vector<client::PaperSize>& sizes) {
  List list;
  for (const client::PaperSize& size : sizes) {
    list.push_back(Object{{"size", size.size.keyword},
                          {"sheet", sheet(size.outline)},
                          {"bordered", area(size.border)},
                          {"borderless", area(size.borderless)},
                          {"duplex", area(size.duplex)}});
  }
  return list;
}

List media(const std::vector<client::MediaType>& media) {
  List list;
  for (const client::MediaType& type : media) {
    List duplex;
    for (const client::Word& mode : type.duplex) duplex.push_back(duplex_name(mode));
    list.push_back(Object{{"type", type.type.keyword},
                          {"bordered", type.border},
                          {"borderless", type.borderless},
                          {"color_modes", keywords(type.color_modes)},
                          {"duplex", duplex}});
  }
  return list;
}

List papers(const std::vector<client::LoadedPaper>& papers) {
  List list;
  for (const client::LoadedPaper& paper : papers) {
    list.push_back(Object{{"size", paper.size.keyword},
                          {"type", paper.type.keyword},
                          {"chosen_on_panel", paper.by_panel}});
  }
  return list;
}

Object features(const client::PrintCapability& capability) {
  return {
      {"formats", keywords(capability.formats)},
      {"least_pixels", pixels(capability.min_pixels)},
      {"most_pixels", pixels(capability.max_pixels)},
      {"host_environment", known(capability.host_environment)},
      {"print_preparations", keywords(capability.print_preparations)},
      {"next_page", capability.next_page},
      {"job_queue", capability.job_queue},
      {"date_time", capability.date_time},
      {"mismatch_mode_none", capability.mismatch_none},
      {"disc_labels", capability.disc_labels},
      {"disc_guide", capability.disc_guide},
  };
}

}  // namespace

std::string_view duplex_name(const client::Word& mode) {
  switch (mode.row) {
    case client::kDuplexLongSide:
      return "long";
    case client::kDuplexShortSide:
      return "short";
    default:
      return mode == client::kDuplexOff ? "off" : "on";
  }
}

Value value_of(const client::Identity& identity) {
  return Object{
      {"device_id", identity.device_id},
      {"manufacturer", known(identity.manufacturer)},
      {"model", known(identity.model)},
      {"protocol", identity.has_new_protocol ? "newer" : "older"},
      {"xml_commands", identity.takes_commands},
      {"usage_information", identity.reports_usage},
      {"minp_family", identity.is_min_p},
      {"kwnp_14autumn_family", identity.is_kwnp_from_14_autumn},
      {"corvel_family", identity.corvel_request_version.has_value()},
      {"corvel_request_version", known(identity.corvel_request_version)},
  };
}

Value value_of(const client::JobStatus& job) {
  return Object{{"id", job.job_id},
                {"progress", known(job.progress)},
                {"state", known(job.state)},
                {"pages_done", known(job.impressions)}};
}

Value value_of(const client::Status& status) {
  Object object = {
      {"status", known(status.state)},
      {"detail", known(status.detail)},
      {"support_code", known(status.support_code)},
      {"inks_fine", known(status.inks_fine)},
      {"job_at_work", known(status.job_id)},
      {"job_progress", known(status.job_progress)},
      {"paper", papers(status.paper)},
  };
  if (status.job) object.push_back({"job", value_of(*status.job)});
  return object;
}

Value value_of(const client::PrintCapability& capability) {
  Object object = {{"sizes", sizes(capability.sizes)}, {"types", media(capability.media)}};
  for (auto& field : features(capability)) object.push_back(std::move(field));
  return object;
}

Value summary_of(const client::PrintCapability& capability) {
  List sizes;
  for (const client::PaperSize& size : capability.sizes) {
    sizes.push_back(Object{{"size", size.size.keyword},
                           {"sheet", sheet(size.outline)},
                           {"bordered", size.border.has_value()},
                           {"borderless", size.borderless.has_value()},
                           {"duplex", size.duplex.has_value()}});
  }
  Object object = {{"sizes", sizes}, {"types", media(capability.media)}};
  for (auto& field : features(capability)) object.push_back(std::move(field));
  return object;
}

Value value_of(const client::MaintenanceCapability& capability) {
  return Object{{"host_environment", known(capability.host_environment)},
                {"date_time", capability.date_time}};
}

List list_of_jobs(const std::vector<std::string>& jobIDs) {
  List list;
  for (const std::string& id : jobIDs) list.push_back(Object{{"id", id}});
  return list;
}

}  // namespace pxcl::cli
