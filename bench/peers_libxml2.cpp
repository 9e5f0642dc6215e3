// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// libxml2 by its SAX2 callbacks, one context (and so one dictionary of names) for all calls; values
// are where its copy of the document has them.

#include <libxml/parser.h>

#include "peers.hpp"

namespace pxcl_bench {
namespace {

const char* chars(const xmlChar* text) {
  return reinterpret_cast<const char*>(text);
}

class LibXml2 final : public Peer {
 public:
  explicit LibXml2(const Question& question) : Peer(question), context_(xmlNewParserCtxt()) {
    xmlSAXHandler handler = {};
    handler.initialized = XML_SAX2_MAGIC;
    handler.startElementNs = start;
    handler.endElementNs = end;
    handler.characters = text;
    *context_->sax = handler;
    context_->userData = this;
  }
  ~LibXml2() override { xmlFreeParserCtxt(context_); }

 private:
  void find() override {
    levels_.assign(1, &plan_.root());
    unwanted_ = 0;
    wanted_ = Step::kNobody;
    xmlCtxtReadMemory(context_, question_.document.data(),
                      static_cast<int>(question_.document.size()), nullptr, "UTF-8",
                      XML_PARSE_NONET);
  }
  const char* base() const override { return question_.document.data(); }

  // The parser works on its own copy, which is gone when it is done.
  std::string_view in_document(const xmlChar* begin, std::size_t length) const {
    const auto offset = static_cast<std::size_t>(begin - context_->input->base);
    return {question_.document.data() + context_->input->consumed + offset, length};
  }

  static void start(void* self, const xmlChar* local, const xmlChar* prefix, const xmlChar*, int,
                    const xmlChar**, int count, int, const xmlChar** attributes) {
    static_cast<LibXml2*>(self)->open(local, prefix, attributes, count);
  }
  static void end(void* self, const xmlChar*, const xmlChar*, const xmlChar*) {
    static_cast<LibXml2*>(self)->close();
  }
  static void text(void* self, const xmlChar* begin, int length) {
    auto* parser = static_cast<LibXml2*>(self);
    if (parser->wanted_ != Step::kNobody) parser->take(begin, static_cast<std::size_t>(length));
  }

  std::string_view qualified(const xmlChar* local, const xmlChar* prefix) {
    if (!prefix) return chars(local);
    name_.assign(chars(prefix)).append(1, ':').append(chars(local));
    return name_;
  }
  void open(const xmlChar* local, const xmlChar* prefix, const xmlChar** attributes, int count) {
    finish();
    if (unwanted_ > 0 || !levels_.back()) {
      ++unwanted_;
      return;
    }
    std::string_view value;
    const Step* step = step_for(
        *levels_.back(), qualified(local, prefix),
        [&](const std::string& wanted) -> std::string_view {
          for (const xmlChar** row = attributes; row != attributes + 5 * count; row += 5) {
            if (wanted == chars(row[0])) {
              return in_document(row[3], static_cast<std::size_t>(row[4] - row[3]));
            }
          }
          return {};
        },
        value);
    if (!step) {
      ++unwanted_;
      return;
    }
    if (step->attribute != Step::kNobody) store(step->attribute, value);
    wanted_ = step->text;
    text_ = {};
    levels_.push_back(step->below);
  }
  void close() {
    finish();
    if (unwanted_ > 0) {
      --unwanted_;
    } else {
      levels_.pop_back();
    }
  }
  // Text may come in pieces.
  void take(const xmlChar* begin, std::size_t length) {
    text_ = text_.data() ? std::string_view(text_.data(), text_.size() + length)
                         : in_document(begin, length);
  }
  void finish() {
    if (wanted_ == Step::kNobody) return;
    store(wanted_, text_);
    wanted_ = Step::kNobody;
  }

  xmlParserCtxtPtr context_;
  std::vector<const Level*> levels_;  // of the wanted elements that are open
  std::size_t unwanted_ = 0;          // open elements below them
  std::uint32_t wanted_ = Step::kNobody;
  std::string_view text_;
  std::string name_;
};

}  // namespace

std::unique_ptr<Contender> make_libxml2(const Question& question) {
  return std::make_unique<LibXml2>(question);
}

}  // namespace pxcl_bench
