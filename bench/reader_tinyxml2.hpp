// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// tinyxml2 without entities and with white space kept, which is the least that it can do. It copies
// the document itself and ends texts in its copy.

#pragma once

#include <tinyxml2.h>

#include "plan.hpp"

namespace pxcl_bench {

class TinyXml2 {
 public:
  template <typename Take>
  void read(std::string_view document, const Plan& plan, const Take& take) {
    tree_.Parse(document.data(), document.size());
    walk<Dom>(&tree_, plan.root(), take);
  }
  // The buffer in which texts stand at the offsets of the document: the declaration's text follows
  // its "<?".
  const char* base(std::string_view) const { return tree_.FirstChild()->Value() - 2; }

 private:
  struct Dom {
    using Node = const tinyxml2::XMLNode*;
    static Node first(Node parent) { return parent->FirstChildElement(); }
    static Node next(Node node) { return node->NextSiblingElement(); }
    static std::string_view name(Node node) { return node->Value(); }
    static std::string_view text(Node node) {
      const char* text = node->ToElement()->GetText();
      return text ? std::string_view(text) : std::string_view(node->Value(), 0);
    }
    static std::string_view attribute(Node node, const std::string& name) {
      const char* value = node->ToElement()->Attribute(name.c_str());
      return value ? std::string_view(value) : std::string_view();
    }
  };

  tinyxml2::XMLDocument tree_{false, tinyxml2::PRESERVE_WHITESPACE};
};

}  // namespace pxcl_bench
