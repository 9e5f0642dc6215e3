// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// libxml2 by its SAX2 callbacks, one context (and so one dictionary of names) for all calls. Texts
// and attribute values are known by their places in the document.

#pragma once

#include <libxml/parser.h>

#include "plan.hpp"

namespace pxcl_bench {

class LibXml2 {
 public:
  LibXml2() : context_(xmlNewParserCtxt()) {}
  LibXml2(const LibXml2&) = delete;
  LibXml2& operator=(const LibXml2&) = delete;
  ~LibXml2() { xmlFreeParserCtxt(context_); }

  template <typename Take>
  void read(std::string_view document, const Plan& plan, const Take& take) {
    Reading<Take> reading = {{plan, levels_, take}, *this, document.data()};
    xmlSAXHandler handler = {};
    handler.initialized = XML_SAX2_MAGIC;
    handler.startElementNs = start<Take>;
    handler.endElementNs = end<Take>;
    handler.characters = text<Take>;
    *context_->sax = handler;
    context_->userData = &reading;
    xmlCtxtReadMemory(context_, document.data(), static_cast<int>(document.size()), nullptr,
                      "UTF-8", XML_PARSE_NONET);
  }
  // The buffer in which texts stand at the offsets of the document.
  const char* base(std::string_view document) const { return document.data(); }

 private:
  template <typename Take>
  struct Reading {
    Watch<Take> watch;
    LibXml2& parser;
    const char* document;
    // The parser works on its own copy, which is gone when it is done.
    const char* place(const xmlChar* begin) const {
      const xmlParserInput* input = parser.context_->input;
      return document + input->consumed + (begin - input->base);
    }
  };

  static const char* chars(const xmlChar* text) { return reinterpret_cast<const char*>(text); }

  template <typename Take>
  static void start(void* context, const xmlChar* local, const xmlChar* prefix, const xmlChar*, int,
                    const xmlChar**, int count, int, const xmlChar** attributes) {
    auto* reading = static_cast<Reading<Take>*>(context);
    reading->watch.open(
        [=] { return reading->parser.qualified(local, prefix); },
        [=](const std::string& wanted) -> std::string_view {
          for (const xmlChar** row = attributes; row != attributes + 5 * count; row += 5) {
            if (wanted == chars(row[0]))
              return {reading->place(row[3]), static_cast<std::size_t>(row[4] - row[3])};
          }
          return {};
        },
        [](std::string_view value) { return value; });
  }
  template <typename Take>
  static void end(void* context, const xmlChar*, const xmlChar*, const xmlChar*) {
    static_cast<Reading<Take>*>(context)->watch.close();
  }
  template <typename Take>
  static void text(void* context, const xmlChar* begin, int length) {
    auto* reading = static_cast<Reading<Take>*>(context);
    reading->watch.text(static_cast<std::size_t>(length), [=] { return reading->place(begin); });
  }
  std::string_view qualified(const xmlChar* local, const xmlChar* prefix) {
    if (!prefix) return chars(local);
    name_.assign(chars(prefix)).append(1, ':').append(chars(local));
    return name_;
  }

  xmlParserCtxtPtr context_;
  std::vector<const Level*> levels_;
  std::string name_;
};

}  // namespace pxcl_bench
