// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <nlohmann/json.hpp>

#include "cli/output.hpp"

namespace pxcl::cli {

namespace {

using Json = nlohmann::ordered_json;

Json converted(const Value& value) {
  if (const auto* truth = value.as<bool>()) return *truth;
  if (const auto* number = value.as<std::int64_t>()) return *number;
  if (const auto* text = value.as<std::string>()) return *text;
  if (const auto* list = value.as<Value::List>()) {
    Json array = Json::array();
    for (const Value& element : *list) array.push_back(converted(element));
    return array;
  }
  if (const auto* object = value.as<Value::Object>()) {
    Json fields = Json::object();
    for (const auto& [name, field] : *object) fields[name] = converted(field);
    return fields;
  }
  return nullptr;
}

}  // namespace

std::string to_json(const Value& value, bool on_one_line) {
  return converted(value).dump(on_one_line ? -1 : 2, ' ', true, Json::error_handler_t::replace);
}

}  // namespace pxcl::cli
