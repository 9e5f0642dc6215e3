// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The peers that read. Each is a class with
//   read(document, plan, take)   calls take for each wanted element, as walk() and Watch tell;
//   base(document)               the buffer whose offsets are the document's.
// The document's buffer ends in a zero, for the parser that needs one.

#pragma once

#include <type_traits>

#include "reader_expat.hpp"
#include "reader_libxml2.hpp"
#include "reader_pugixml.hpp"
#include "reader_rapidxml.hpp"
#include "reader_tinyxml2.hpp"

namespace pxcl_bench {

// visit(name, std::type_identity<Reader>) for each.
template <typename Visit>
void for_each_reader(const Visit& visit) {
  visit("rapidxml", std::type_identity<RapidXml>());
  visit("pugixml", std::type_identity<PugiXml>());
  visit("tinyxml2", std::type_identity<TinyXml2>());
  visit("expat", std::type_identity<Expat>());
  visit("libxml2", std::type_identity<LibXml2>());
}

}  // namespace pxcl_bench
