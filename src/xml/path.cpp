// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The current path: one block of text that every start tag, attribute and end tag makes anew.

#include "xml/path.hpp"

#include <cstring>
#include <initializer_list>

#include "xml/document.hpp"
#include "xml/elements.hpp"
#include "xml/namespaces.hpp"
#include "xml/status.hpp"

namespace pxcl::xml {

std::string_view current_path(const ClXmlParserData& data) {
  return data.currentPath == nullptr ? std::string_view() : std::string_view(data.currentPath);
}

std::string_view first_element(std::string_view path) {
  bool quoted = false;
  for (std::size_t i = 0; i < path.size(); ++i) {
    if (path[i] == '"') quoted = !quoted;
    if (path[i] == '/' && !quoted) return slice(path, 0, i);
  }
  return path;
}

std::string_view last_element(std::string_view path) {
  for (;;) {
    const std::string_view element = first_element(path);
    if (element.size() == path.size()) return path;
    path = from(path, element.size() + 1);
  }
}

namespace {

// Makes the pieces, put together, the current path.
i32 set_path(ClXmlParserData& data, std::initializer_list<std::string_view> pieces) {
  u64 length = 0;
  for (const std::string_view piece : pieces) length += piece.size();
  Owned<char> block = Owned<char>::allocate(length + 1);
  if (!block) return kNoMemory;
  char* end = block.get();
  for (const std::string_view piece : pieces) {
    if (!piece.empty()) std::memcpy(end, piece.data(), piece.size());
    end += piece.size();
  }
  ClXmlClearPath(data.currentPath);
  data.currentPath = block.release();
  return kSuccess;
}

// Only the first three bytes are held against the root's name: <cmdx> opens, if it can't close.
i32 start_path(ClXmlParserData& data, std::string_view name) {
  const bool anyRoot = (data.flags & CL_XML_COM_FLAG) != 0;
  if (!anyRoot && !name.starts_with(kRootName)) return kWrongRoot;
  return set_path(data, {name});
}

// The row of the declared prefix that `name` begins with; null for none.
const ClXmlNameSpaceEntry* row_of(const ClXmlParserData& data, std::string_view name) {
  return find_declared(data.nameSpaceTable, split_qualified(name).prefix);
}

// What follows the prefix, from its ":" on.
std::string_view behind_prefix(std::string_view name) {
  return from(name, split_qualified(name).prefix.size());
}

// Whether the end tag `tag` is that of the path's last element. A prefix that is only the beginning
// of a declared one counts as that one, so the texts are compared from the ":" on.
bool closes(const ClXmlParserData& data, std::string_view element, std::string_view tag) {
  if (const ClXmlNameSpaceEntry* row = row_of(data, tag)) {
    const std::string_view prefix = row->prefix;
    if (!element.starts_with(prefix)) return false;
    element = from(element, prefix.size());
    tag = behind_prefix(tag);
  }
  return until_space(element) == until_space(tag);
}

bool is_document_end(const ClXmlParserData& data, const char* place) {
  return has_document(&data) && offset_of(data, place) == data.document->length;
}

// A name may lie in the document or elsewhere, but not across its end.
bool crosses_document_end(const ClXmlParserData& data, std::string_view name) {
  return has_document(&data) && lies_in(data, name.data(), 0) &&
         !lies_in(data, name.data(), name.size());
}

// The root's end tag is exactly </cmd>: callers rely on </cmd > being refused.
i32 close_root(const ClXmlParserData& data, std::string_view tag) {
  if ((data.flags & CL_XML_COM_FLAG) != 0) return kRootClosed;
  if (!tag.starts_with(kRootName)) return kWrongRoot;
  const char* behind = tag.data() + kRootName.size();
  if (is_document_end(data, behind)) return kWrongRoot;
  return *behind == '>' ? kRootClosed : kWrongRoot;
}

}  // namespace
}  // namespace pxcl::xml

using namespace pxcl;
using namespace pxcl::xml;

extern "C" {

int32_t ClXmlAddPath(ClXmlParserData* data, const char* separator, const char* name,
                     uint64_t length) {
  if (data == nullptr || name == nullptr || length == 0) return kBadArgument;
  if (!fits_memory(length)) return kBadArgument;
  const std::string_view text = as_view(name, length);
  if (data->currentPath == nullptr) return start_path(*data, text);
  if (separator == nullptr) return kBadArgument;
  const ClXmlNameSpaceEntry* row = row_of(*data, text);
  if (row == nullptr) return set_path(*data, {current_path(*data), separator, text});
  return set_path(*data, {current_path(*data), separator, row->prefix, behind_prefix(text)});
}

int32_t ClXmlRemovePath(ClXmlParserData* data, const char* name, uint64_t length) {
  if (!fits_memory(length)) return kBadArgument;
  if (data == nullptr || data->currentPath == nullptr || name == nullptr || length == 0 ||
      crosses_document_end(*data, as_view(name, length))) {
    return kBadArgument;
  }
  const std::string_view path = current_path(*data);
  const std::string_view element = last_element(path);
  const std::string_view tag = as_view(name, length);
  if (!closes(*data, element, tag)) return kMismatchedEndTag;
  if (element.size() == path.size()) return close_root(*data, tag);
  return set_path(*data, {slice(path, 0, path.size() - element.size() - 1)});
}

void ClXmlClearPath(char* path) {
  ClXmlMemFree(path);
}

int32_t ClXmlFirstElementLengthOfPath(const char* path, uint64_t length, uint64_t* out) {
  if (path == nullptr || length == 0 || out == nullptr || !fits_memory(length)) return 0;
  *out = first_element(as_view(path, length)).size();
  return 1;
}

}  // extern "C"
