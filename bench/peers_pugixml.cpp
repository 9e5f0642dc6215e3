// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// pugixml, in place on a copy of the document (it writes zeros into the text), without decoding and
// with the text kept in its element's node.

#include <pugixml.hpp>

#include "peers.hpp"

namespace pxcl_bench {
namespace {

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

class PugiXml final : public Peer {
 public:
  explicit PugiXml(const Question& question) : Peer(question), text_(question.document) {}

 private:
  void find() override {
    std::memcpy(text_.data(), question_.document.data(), question_.document.size());
    document_.load_buffer_inplace(text_.data(), text_.size(),
                                  pugi::parse_minimal | pugi::parse_embed_pcdata,
                                  pugi::encoding_utf8);
    walk<Dom>(document_, plan_.root());
  }
  const char* base() const override { return text_.data(); }

  std::string text_;
  pugi::xml_document document_;
};

}  // namespace

std::unique_ptr<Contender> make_pugixml(const Question& question) {
  return std::make_unique<PugiXml>(question);
}

}  // namespace pxcl_bench
