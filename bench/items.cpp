// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Item sets out of a capability reply, beside one scan of it for a single key, and look-ups. Nobody
// else does these.

#include <string>
#include <string_view>

#include "documents.hpp"
#include "harness.hpp"
#include "keyed.h"

namespace {

using pxcl_bench::fail;

constexpr std::uint16_t kGetCapabilityResponse = 2;
constexpr char kTemplate[] = "cmd/zirk:contents/zirk:param_set servicetype=\"print\"/%s:%s";
constexpr std::string_view kOperation = "cmd/zirk:contents/zirk:operation";

const std::string& document() {
  static const std::string text = pxcl_bench::capability_reply(100'000);
  return text;
}

ItemSet paper_sizes() {
  return {nullptr,
          nullptr,
          0,
          kTemplate,
          "papersize",
          0,
          glb_clssdicPaperSizeTbl,
          CLSS_DICNUM_PAPERSIZE};
}

// One scan of the document for one key, by the engine's own request.
void scan_once() {
  ClXmlParameter parameter = {kOperation.data(), kOperation.size(), 0, 0, nullptr, 0, 0, 0};
  ClXmlRequest request = {document().data(), document().size(), nullptr, 0, &parameter, 1, 0};
  if (ClXmlRequestParameter(&request) != 0 || parameter.status != 1) fail("no operation");
}

void read_items(ItemSet* items, int count) {
  if (Get_ItemSetList(document().data(), document().size(), kGetCapabilityResponse, items, count) !=
      0) {
    fail("no item set");
  }
  for (int i = 0; i < count; ++i) {
    if (items[i].entryCount == 0) fail("an empty item set");
  }
  ReleaseItemSetList(items, count);
}

void read_item_sets(int count) {
  ItemSet items[8];
  for (ItemSet& item : items) item = paper_sizes();
  read_items(items, count);
}

struct Keyword {
  const char* name;
  const char* title;
  std::string_view text;
  std::uint16_t row;
};
constexpr Keyword kKeywords[] = {
    {"first_row", "keyword of the first row", "na_letter_8.5x11in", 1},
    {"middle_row", "keyword of a row in the middle", "custom_vaslo_215x345mm", 28},
    {"middle_row_with_blanks", "the same between blanks", " custom_vaslo_215x345mm , other", 28},
    {"last_row", "keyword of the last row", "custom_vaslo_89x89mm", 82},
    {"no_row", "keyword of no row", "custom_vaslo_999x999mm", 65535},
};

void look_up(const Keyword& keyword) {
  std::uint16_t index = 0, code = 0;
  GetVasloID(glb_clssdicPaperSizeTbl, CLSS_DICNUM_PAPERSIZE, keyword.text.data(),
             keyword.text.size(), &index, &code);
  if (index != keyword.row) fail("another row");
}

}  // namespace

void pxcl_bench::add_rows() {
  const std::size_t bytes = document().size();
  add_row({"one_key", "value of one key", bytes}, "pxcl", [] { return scan_once; });
  add_row({"one_item_set", "one item set", bytes}, "pxcl",
          [] { return [] { read_item_sets(1); }; });
  add_row({"eight_item_sets", "eight item sets", bytes}, "pxcl",
          [] { return [] { read_item_sets(8); }; });
  for (const Keyword& keyword : kKeywords) {
    add_row({keyword.name, keyword.title}, "pxcl",
            [&keyword] { return [&keyword] { look_up(keyword); }; });
  }
}
