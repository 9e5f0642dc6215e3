// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Any values put into any document: lines of a path, a tab and the new text, up to an empty line;
// then the document. What is written is the document with the ranges that were found exchanged.

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "keyed.h"
#include "target.hpp"

using pxcl::fuzz::require;

namespace {

std::string_view take_to(std::string_view& text, char end) {
  const std::size_t size = std::min(text.find(end), text.size());
  const std::string_view taken = text.substr(0, size);
  text.remove_prefix(std::min(size + 1, text.size()));
  return taken;
}

// Empty when a tag had to be opened up, or when two values stand in each other.
std::string spliced(std::string_view document, const std::vector<ClXmlParameter>& found) {
  std::map<std::uint64_t, ClXmlParameter> places;
  for (const ClXmlParameter& one : found) {
    if (one.status == -103) return {};
    if (one.valueOffset != 0 && one.newValueLength != 0) places[one.valueOffset] = one;
  }
  std::string result;
  std::uint64_t end = 0;
  for (const auto& [offset, one] : places) {
    if (offset < end) return {};
    result.append(document.substr(end, offset - end)).append(one.newValue, one.newValueLength);
    end = offset + one.valueLength;
  }
  return result.append(document.substr(end));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view input(reinterpret_cast<const char*>(data), size);
  std::vector<ClXmlParameter> parameters;
  std::vector<ClssKeyValue> keys;
  while (!input.empty() && parameters.size() < 100) {
    std::string_view value = take_to(input, '\n');
    const std::string_view path = take_to(value, '\t');
    if (path.empty()) break;
    const char* const text = value.empty() ? nullptr : value.data();
    parameters.push_back({path.data(), path.size(), 0, 0, text, 0, value.size(), 0});
    keys.push_back({path.data(), path.size(), text, value.size()});
  }
  const std::string document(input);
  ClXmlRequest request = {document.data(),
                          document.size(),
                          nullptr,
                          0,
                          parameters.data(),
                          static_cast<std::uint32_t>(parameters.size()),
                          0};
  if (ClXmlRequestParameter(&request) != 0) return 0;
  const std::string expected = spliced(document, parameters);
  std::vector<char> output(1);
  request.output = output.data();
  request.outputSize = 1;
  const std::int32_t status = ClXmlWrite(&request);
  require(status != -2 || expected.empty());
  if (status == -2) return 0;
  if (status == -12) output.resize(request.outputSize);
  request.output = output.data();
  require(request.outputSize == output.size() && ClXmlReplaceParameter(&request) == 0);
  const std::string written(output.data(), request.outputSize);
  require(expected.empty() || written == expected);
  ClXmlRequest* context = nullptr;
  const std::int32_t keyed = ReplaceXmlDataByKey(document.data(), document.size(), keys.data(),
                                                 request.parameterCount, &context);
  require(keyed == 0 ? written == std::string_view(context->output, context->outputSize)
                     : keyed == -2 && expected.empty());
  ClearCL_XML(context);
  return 0;
}
