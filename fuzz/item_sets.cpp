// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Replies with lists: many items read in one scan must be what each gives when it is read alone. A
// line of the input is an element: digits for its namespace, name and attribute, "/" for an empty
// tag or another byte, and its text.

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "keyed.h"
#include "target.hpp"

using pxcl::fuzz::require;

namespace {

#define PRINT "cmd/zirk:contents/zirk:param_set servicetype=\"print\""
constexpr std::uint16_t kOperation = 2;  // GetCapabilityResponse
constexpr int kCount = 5;

std::string element(std::string_view line) {
  static const char* const attributes[] = {"", " k=\"k\"", " k=\"x\""};
  const auto choice = [line](std::size_t i) { return static_cast<std::size_t>(line[i] & 3); };
  if (line.size() < 4) return std::string(line);
  const std::string name =
      std::string(glb_NameSpacePrefix[choice(0) % 3]) + ":" + "mnps"[choice(1)];
  const std::string tag = "<" + name + attributes[choice(2) % 3];
  if (line[3] == '/') return tag + "/>";
  return tag + ">" + std::string(line.substr(4)) + "</" + name + ">";
}

std::string reply(std::string_view lines) {
  std::string text = "<?xml version=\"1.0\"?><cmd";
  for (int k = 0; k < 3; ++k) {
    text += std::string(" xmlns:") + glb_NameSpacePrefix[k] + "=\"" + glb_NameSpace[k] + "\"";
  }
  text +=
      "><zirk:contents><zirk:operation>GetCapabilityResponse</zirk:operation>"
      "<zirk:param_set servicetype=\"print\"><zirk:response>OK</zirk:response>";
  while (!lines.empty()) {
    const std::size_t end = std::min(lines.find('\n'), lines.size());
    text += element(lines.substr(0, end));
    lines.remove_prefix(std::min(end + 1, lines.size()));
  }
  return text + "</zirk:param_set></zirk:contents></cmd>";
}

struct Items {
  ItemSet sets[kCount] = {
      {nullptr, nullptr, 0, nullptr, "m", 0, glb_clssdicColormodeTbl, CLSS_DICNUM_COLORMODE},
      {nullptr, nullptr, 0, nullptr, "s", 0, glb_clssdicPaperSizeTbl, CLSS_DICNUM_PAPERSIZE},
      {nullptr, nullptr, 0, nullptr, "n", 0, nullptr, 4},
      {nullptr, nullptr, 0, nullptr, "p", 1, nullptr, 4},
      {nullptr, nullptr, 0, nullptr, "m", 0, glb_clssdicDataFormatTbl, CLSS_DICNUM_DATAFORMAT},
  };
  explicit Items(const char* pathTemplate) {
    for (ItemSet& item : sets) item.pathTemplate = pathTemplate;
  }
  ~Items() { ReleaseItemSetList(sets, kCount); }
};

void require_same(const ItemSet& a, const ItemSet& b) {
  require(a.entryCount == b.entryCount);
  require((a.entries == nullptr) == (b.entries == nullptr));
  require((a.auxiliary == nullptr) == (b.auxiliary == nullptr));
  if (a.entries != nullptr) {
    require(std::memcmp(a.entries, b.entries, a.entryCount * sizeof *a.entries) == 0);
  }
  if (a.auxiliary != nullptr) {
    require(a.auxiliary->size == b.auxiliary->size);
    if (a.auxiliary->size != 0) require(std::strcmp(a.auxiliary->text, b.auxiliary->text) == 0);
  }
}

void compare_list(const std::string& text) {
  Items together(PRINT "/%s:%s"), alone(PRINT "/%s:%s");
  int expected = CheckOpeAndRes(text.data(), text.size(), kOperation);
  for (int i = 0; i < kCount && expected == 0; ++i) {
    expected = Get_ItemSet(text.data(), text.size(), &alone.sets[i]);
  }
  require(Get_ItemSetList(text.data(), text.size(), kOperation, together.sets, kCount) == expected);
  for (int i = 0; i < kCount; ++i) require_same(together.sets[i], alone.sets[i]);
}

void compare_by_attribute(const std::string& text, std::uint16_t nameSpace, std::uint32_t mode) {
  Items together(PRINT "/%s:%s k=\"%s\""), alone(PRINT "/%s:%s k=\"%s\"");
  const auto read = [&](ItemSet* items, std::uint16_t count) {
    return Get_ItemSetByReq(text.data(), text.size(), items, count, "k", nameSpace, mode);
  };
  int expected = 0;
  for (int i = 0; i < kCount && expected == 0; ++i) expected = read(&alone.sets[i], 1);
  require(read(together.sets, kCount) == expected);
  if (expected != 0) ReleaseItemSetList(alone.sets, kCount);
  for (int i = 0; i < kCount; ++i) {
    if (expected != 0) alone.sets[i].entryCount = 0;
    require_same(together.sets[i], alone.sets[i]);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = reply({reinterpret_cast<const char*>(data), size});
  compare_list(text);
  for (std::uint16_t nameSpace = 0; nameSpace < 3; ++nameSpace) {
    for (const std::uint32_t mode : {0u, 1u}) compare_by_attribute(text, nameSpace, mode);
  }
  return 0;
}
