// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Any texts in a command: the first byte chooses the builder, three lines are its texts, the rest is
// a capability reply. It fits where it says that it does, and a plain job ID can be read back.

#include <memory>
#include <string>
#include <string_view>

#include "pxcl.h"
#include "target.hpp"

using pxcl::fuzz::require;

namespace {

struct Texts {
  std::string job, second, third, rest;
};

std::string take_line(std::string& text) {
  const std::size_t end = std::min(text.find('\n'), text.size());
  const std::string line = text.substr(0, end);
  text.erase(0, end + 1);
  return line.c_str();  // up to a zero byte, as the builders take it
}

// clang-format off
#define BUILD(service, ...) \
  {service, [](const Texts& t, char* b, uint64_t n, uint64_t* l) -> int32_t { return CLSS_MakeCommand_##__VA_ARGS__; }}
const struct {
  const char* service;
  int32_t (*make)(const Texts& texts, char* buffer, uint64_t size, uint64_t* length);
} kBuilders[] = {
  BUILD("print", GetStatusPrint(t.job.c_str(), b, n, l)),
  BUILD("scan", StartJob3(2, 3, t.second.c_str(), 3, t.job.c_str(), t.third.c_str(), b, n, l)),
  BUILD("print", EndJob(0, t.job.c_str(), b, n, l)),
  BUILD("print", ModeShift(0, t.job.c_str(), t.second.c_str(), b, n, l)),
  BUILD("print", SendDataRAW(t.job.c_str(), 640, 480, b, n, l)),
  BUILD("print", SetPageConfiguration2(t.job.c_str(), 1, 2, b, n, l)),
  BUILD("print", SetJobConfiguration(t.job.c_str(), t.second.c_str(), 1, b, n, l)),
  BUILD("print", SetConfigurationNS({2, 4, 1, 1}, {1, 2}, t.job.c_str(), nullptr, 0, b, n, l)),
  BUILD("print", SetConfigurationNS({2, 4, 1, 1}, {1, 2}, t.job.c_str(), t.rest.data(), t.rest.size(), b, n, l)),
  BUILD("device", SetConfigurationDevice({1, 2}, t.job.c_str(), b, n, l)),
};
// clang-format on

void read_back(std::string_view document, const char* service, const std::string& job) {
  if (job.empty() || job.find_first_of("<> \t\r\n") != job.npos) return;
  const std::string key =
      std::string("cmd/zirk:contents/zirk:param_set servicetype=\"") + service + "\"/zirk:jobID";
  ClXmlParameter found = {key.data(), key.size(), 0, 0, nullptr, 0, 0, 0};
  ClXmlRequest request = {document.data(), document.size(), nullptr, 0, &found, 1, 0};
  if (ClXmlRequestParameter(&request) != 0) return;  // another text has broken it
  if (found.status == 1) require(document.substr(found.valueOffset, found.valueLength) == job);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  Texts texts;
  texts.rest.assign(reinterpret_cast<const char*>(data) + 1, size - 1);
  for (std::string* line : {&texts.job, &texts.second, &texts.third}) *line = take_line(texts.rest);
  const auto& builder = kBuilders[data[0] % std::size(kBuilders)];
  uint64_t need = 0, length = 0;
  if (builder.make(texts, nullptr, 0, &need) != 0) return 0;
  const std::unique_ptr<char[]> exact(new char[need]);
  require(builder.make(texts, exact.get(), need - 1, &length) == -100 && length == need);
  const int32_t status = builder.make(texts, exact.get(), need, &length);
  require(status == 0 || (status == -4 && (texts.job.empty() || texts.second.empty())));
  require(length <= need);
  if (status == 0) read_back({exact.get(), length}, builder.service, texts.job);
  return 0;
}
