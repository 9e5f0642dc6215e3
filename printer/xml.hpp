// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// XML documents as trees with their namespaces resolved.

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "printer/keywords.hpp"

namespace pxcl::printer {

struct Element {
  std::string name;                ///< Without its prefix.
  std::optional<Namespace> space;  ///< None when it is in no namespace.
  std::vector<std::pair<std::string, std::string>>
      attributes;    ///< As written, but for the xmlns declarations.
  std::string text;  ///< Decoded; CDATA sections too.
  std::vector<Element> children;
};

struct XmlReading {
  std::optional<Element> root;
  std::string error;  ///< A sentence, when there is no root.
};

/// The length of the document that `bytes` begins with: as far as the end tag `</cmd>` that stands in no CDATA section
/// and no comment.
[[nodiscard]] std::optional<std::size_t> document_length(std::string_view bytes);

/// Reads a whole document. Refused are, besides what is not well-formed: prefixes that are not declared, namespaces that
/// are not the protocol's, document types, text beside elements, and trees deeper than the protocol's.
[[nodiscard]] XmlReading read_xml(std::string_view document);

/// Whether it is UTF-8 without the characters that XML forbids.
[[nodiscard]] bool is_xml_text(std::string_view text);

}  // namespace pxcl::printer
