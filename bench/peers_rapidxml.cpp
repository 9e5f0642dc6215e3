// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// RapidXML in its fastest mode, which leaves the text alone and makes no nodes for data. Its pool
// is set large enough that no document here makes it ask for memory.

#define RAPIDXML_STATIC_POOL_SIZE (2 * 1024 * 1024)
#include <rapidxml/rapidxml.hpp>

#include "peers.hpp"

namespace pxcl_bench {
namespace {

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

// The parser wants a text that ends in a zero. `kCopy` copies the document to a place where one can
// be put behind it; without it the document is taken to have one.
template <bool kCopy>
class RapidXml final : public Peer {
 public:
  explicit RapidXml(const Question& question) : Peer(question), text_(question.document) {}

 private:
  void find() override {
    if constexpr (kCopy) {
      std::memcpy(text_.data(), question_.document.data(), question_.document.size());
      text_[question_.document.size()] = '\0';
    }
    document_.clear();
    document_.parse<rapidxml::parse_fastest>(text_.data());
    walk<Dom>(&document_, plan_.root());
  }
  const char* base() const override { return text_.data(); }

  std::string text_;
  rapidxml::xml_document<> document_;
};

}  // namespace

std::unique_ptr<Contender> make_rapidxml(const Question& question) {
  return std::make_unique<RapidXml<false>>(question);
}
std::unique_ptr<Contender> make_rapidxml_copying(const Question& question) {
  return std::make_unique<RapidXml<true>>(question);
}

}  // namespace pxcl_bench
