// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// expat with its three handlers, one parser for all calls. Text is known by its place in the
// document; attribute values are gone after their tag and have to be copied.

#pragma once

#include <expat.h>

#include "plan.hpp"

namespace pxcl_bench {

class Expat {
 public:
  Expat() : parser_(XML_ParserCreate("UTF-8")) {}
  Expat(const Expat&) = delete;
  Expat& operator=(const Expat&) = delete;
  ~Expat() { XML_ParserFree(parser_); }

  template <typename Take>
  void read(std::string_view document, const Plan& plan, const Take& take) {
    copies_.resize(document.size());
    copied_ = 0;
    Reading<Take> reading = {{plan, levels_, take}, *this, document.data()};
    XML_ParserReset(parser_, "UTF-8");
    XML_SetUserData(parser_, &reading);
    XML_SetElementHandler(parser_, start<Take>, end<Take>);
    XML_SetCharacterDataHandler(parser_, text<Take>);
    XML_Parse(parser_, document.data(), static_cast<int>(document.size()), 1);
  }
  // The buffer in which texts stand at the offsets of the document.
  const char* base(std::string_view document) const { return document.data(); }

 private:
  template <typename Take>
  struct Reading {
    Watch<Take> watch;
    Expat& expat;
    const char* document;
  };

  template <typename Take>
  static void XMLCALL start(void* context, const char* name, const char** attributes) {
    auto* reading = static_cast<Reading<Take>*>(context);
    reading->watch.open([name] { return std::string_view(name); },
                        [attributes](const std::string& wanted) -> std::string_view {
                          for (const char** pair = attributes; *pair; pair += 2) {
                            if (wanted == *pair) return pair[1];
                          }
                          return {};
                        },
                        [reading](std::string_view value) { return reading->expat.copy(value); });
  }
  template <typename Take>
  static void XMLCALL end(void* context, const char*) {
    static_cast<Reading<Take>*>(context)->watch.close();
  }
  template <typename Take>
  static void XMLCALL text(void* context, const char*, int length) {
    auto* reading = static_cast<Reading<Take>*>(context);
    reading->watch.text(static_cast<std::size_t>(length), [reading] {
      return reading->document + XML_GetCurrentByteIndex(reading->expat.parser_);
    });
  }
  std::string_view copy(std::string_view value) {
    char* place = copies_.data() + copied_;
    std::memcpy(place, value.data(), value.size());
    copied_ += value.size();
    return {place, value.size()};
  }

  XML_Parser parser_;
  std::vector<const Level*> levels_;
  std::string copies_;
  std::size_t copied_ = 0;
};

}  // namespace pxcl_bench
