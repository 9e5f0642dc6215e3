// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "client/reply_end.hpp"

#include <gtest/gtest.h>

namespace pxcl::client {
namespace {

struct Row {
  std::string reply;   // up to its end
  std::string behind;  // what is not its any more
  bool ends = true;
};

const Row kRows[] = {
    {"<cmd></cmd>", "\n"},
    {"<?xml version=\"1.0\"?>\n<cmd a=\"b\">text</cmd >", "<cmd></cmd>"},
    {"<cmd/>", "x"},
    {"<cmd a='/' />", "x"},
    {"<cmd><x/><x>1</x></cmd>", ""},
    {"<cmd><!-- </cmd> > -- ></cmd> --></cmd>", ""},
    {"<cmd><![CDATA[</cmd>]]]]><x/></cmd>", "</cmd>"},
    {"<cmd><![CDATA[a]]></cmd>", ""},
    {"<cmd><?php </cmd> ?></cmd>", ""},
    {"<!DOCTYPE cmd><cmd></cmd>", ""},
    {"<!><cmd></cmd>", ""},
    {"<cmd a=\"</cmd>\" b='</cmd>\"'></cmd>", ""},
    {"<cmd><cmd></cmd><cmd/></cmd>", ""},
    {"<cmd><cmdx></cmdx></cmdx></cmd>", ""},
    {"<cmd><x></cmd>", ""},
    {"<ns:cmd></ns:cmd><cmd></cmd>", ""},
    {"<cmd\n></cmd\t>", ""},
    {"</cmd>", ""},
    {"garbage < > <cmd></cmd>", ""},
    {"", "", false},
    {"no markup at all", "", false},
    {"<cmd><![CDATA[</cmd>", "", false},
    {"<cmd><!--</cmd>", "", false},
    {"<cmd></cmd", "", false},
    {"<cmd a=\"></cmd>", "", false},
    {"<cmd><cmd></cmd>", "", false},
};

TEST(ReplyEnd, IsTheRootsEndTagWhateverThePieces) {
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.reply);
    for (std::size_t cut = 0; cut <= row.reply.size(); ++cut) {
      ReplyEnd end;
      std::size_t taken = end.feed(std::string_view(row.reply).substr(0, cut));
      EXPECT_EQ(end.found(), row.ends && cut == row.reply.size());
      taken += end.feed(row.reply.substr(cut) + row.behind);
      EXPECT_EQ(taken, row.reply.size());
      EXPECT_EQ(end.found(), row.ends);
    }
  }
}

}  // namespace
}  // namespace pxcl::client
