// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// RapidXML in its fastest mode, which leaves the text alone and makes no nodes for data. It wants a
// document that ends in a zero, which ours do, so that it needs no copy. Its pool is set large
// enough that no document here makes it ask for memory.

#pragma once

#define RAPIDXML_STATIC_POOL_SIZE (2 * 1024 * 1024)
#include <rapidxml/rapidxml.hpp>

#include "plan.hpp"

namespace pxcl_bench {

class RapidXml {
 public:
  template <typename Take>
  void read(std::string_view document, const Plan& plan, const Take& take) {
    tree_.clear();
    tree_.parse<rapidxml::parse_fastest>(const_cast<char*>(document.data()));
    walk<Dom>(&tree_, plan.root(), take);
  }
  // The buffer in which texts stand at the offsets of the document.
  const char* base(std::string_view document) const { return document.data(); }

 private:
  struct Dom {
    using Node = const rapidxml::xml_node<>*;
    static Node first(Node parent) { return parent->first_node(); }
    static Node next(Node node) { return node->next_sibling(); }
    static std::string_view name(Node node) { return {node->name(), node->name_size()}; }
    static std::string_view text(Node node) { return {node->value(), node->value_size()}; }
    static std::string_view attribute(Node node, const std::string& name) {
      for (const auto* row = node->first_attribute(); row; row = row->next_attribute()) {
        if (std::string_view(row->name(), row->name_size()) == name)
          return {row->value(), row->value_size()};
      }
      return {};
    }
  };

  rapidxml::xml_document<> tree_;
};

}  // namespace pxcl_bench
