// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <algorithm>
#include <ranges>

#include "cli/output.hpp"
#include "cli/text.hpp"

namespace pxcl::cli {

namespace {

using List = Value::List;
using Object = Value::Object;
using Row = std::vector<std::string>;

std::string cell(const Value& value);

std::string joined(const List& list) {
  std::string text;
  for (const Value& element : list) text += (text.empty() ? "" : ", ") + cell(element);
  return text.empty() ? "none" : text;
}

std::string label(std::string_view name) {
  std::string text = printable(name);
  std::ranges::replace(text, '_', ' ');
  return text;
}

std::string joined(const Object& object) {
  std::string text;
  for (const auto& [name, field] : object) {
    text += filled("{}{} {}", text.empty() ? "" : ", ", label(name), cell(field));
  }
  return text;
}

// The value on one line.
std::string cell(const Value& value) {
  if (const auto* truth = value.as<bool>()) return *truth ? "yes" : "no";
  if (const auto* number = value.as<std::int64_t>()) return filled("{}", *number);
  if (const auto* text = value.as<std::string>()) return printable(*text);
  if (const auto* list = value.as<List>()) return joined(*list);
  if (const auto* object = value.as<Object>()) return joined(*object);
  return "unknown";
}

void pad(std::string& line, std::string_view text, std::size_t width) {
  line += text;
  line.append(width - std::min(width, columns(text)), ' ');
}

// Columns as wide as their widest cell, two blanks apart, no blanks at the ends of lines.
std::string aligned(const std::vector<Row>& rows, std::string_view indent) {
  std::vector<std::size_t> widths(rows.empty() ? 0 : rows.front().size());
  for (const Row& row : rows) {
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], columns(row[i]));
  }
  std::string text;
  for (const Row& row : rows) {
    std::string line(indent);
    for (std::size_t i = 0; i < row.size(); ++i) pad(line, row[i], widths[i] + 2);
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + "\n";
  }
  return text;
}

bool is_table(const Value& value) {
  const auto* list = value.as<List>();
  return list && !list->empty() && list->front().as<Object>();
}

// The heads of a table are the names in its first row.
std::string table(const List& list, std::string_view indent) {
  std::vector<Row> rows(1);
  for (const auto& field : *list.front().as<Object>()) rows[0].push_back(label(field.first));
  for (const Value& element : list) {
    Row row;
    for (const auto& field : *element.as<Object>()) row.push_back(cell(field.second));
    row.resize(rows[0].size());
    rows.push_back(std::move(row));
  }
  return aligned(rows, indent);
}

// What is unknown is left out: people look for what is there.
std::string fields(const Object& object, std::string_view indent) {
  const std::string deeper = std::string(indent) + "  ";
  std::string below;
  std::vector<Row> rows;
  for (const auto& [name, field] : object) {
    if (!field.known()) continue;
    if (is_table(field)) {
      below += filled("{}{}:\n{}", indent, label(name), table(*field.as<List>(), deeper));
    } else if (const auto* inner = field.as<Object>()) {
      below += filled("{}{}:\n{}", indent, label(name), fields(*inner, deeper));
    } else {
      rows.push_back({label(name) + ":", cell(field)});
    }
  }
  return aligned(rows, indent) + below;
}

}  // namespace

std::string to_tables(const Value& value) {
  if (const auto* object = value.as<Object>()) return fields(*object, "");
  if (is_table(value)) return table(*value.as<List>(), "");
  return cell(value) + "\n";
}

}  // namespace pxcl::cli
