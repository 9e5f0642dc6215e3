// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// pugixml, in place on a copy of the document (it writes zeros into the text), with the quickest
// flags that find every value: nothing decoded, text kept in its element's node.

#pragma once

#include <pugixml.hpp>

#include "plan.hpp"

namespace pxcl_bench {

class PugiXml {
 public:
  template <typename Take>
  void read(std::string_view document, const Plan& plan, const Take& take) {
    text_.resize(document.size());
    std::memcpy(text_.data(), document.data(), document.size());
    tree_.load_buffer_inplace(text_.data(), text_.size(),
                              pugi::parse_minimal | pugi::parse_embed_pcdata, pugi::encoding_utf8);
    walk<Dom>(tree_, plan.root(), take);
  }
  // The buffer in which texts stand at the offsets of the document.
  const char* base(std::string_view) const { return text_.data(); }

 private:
  struct Dom {
    using Node = pugi::xml_node;
    static Node first(Node parent) { return parent.first_child(); }
    static Node next(Node node) { return node.next_sibling(); }
    static std::string_view name(Node node) { return node.name(); }
    static std::string_view text(Node node) { return node.child_value(); }
    static std::string_view attribute(Node node, const std::string& name) {
      const pugi::xml_attribute attribute = node.attribute(name.c_str());
      if (!attribute) return {};
      return attribute.value();
    }
  };

  std::string text_;
  pugi::xml_document tree_;
};

}  // namespace pxcl_bench
