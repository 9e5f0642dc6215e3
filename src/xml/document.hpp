// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Whether what a caller hands to a step function lies inside the run's document.

#pragma once

#include <cstdint>

#include "clxml.h"
#include "util/types.hpp"

namespace pxcl::xml {

// Unless any root is allowed, its name begins so.
inline constexpr std::string_view kRootName = "cmd";

inline bool has_document(const ClXmlParserData* data) {
  return data != nullptr && data->document != nullptr && data->document->text != nullptr;
}

inline std::string_view text_of(const ClXmlParserData& data) {
  return as_view(data.document->text, data.document->length);
}

// A run without a document has no bounds.
inline bool is_inside(const ClXmlParserData& data, u64 offset, u64 length) {
  if (data.document == nullptr) return true;
  if (!fits_memory(data.document->length)) return false;
  return offset <= data.document->length && length <= data.document->length - offset;
}

// Offset of `place` in the document; beyond its length when it leads elsewhere. Addresses are
// compared as numbers: they may belong to different blocks.
inline u64 offset_of(const ClXmlParserData& data, const char* place) {
  return reinterpret_cast<std::uintptr_t>(place) -
         reinterpret_cast<std::uintptr_t>(data.document->text);
}

inline bool lies_in(const ClXmlParserData& data, const char* begin, u64 length) {
  return is_inside(data, offset_of(data, begin), length);
}

}  // namespace pxcl::xml
