// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Whatever arrives in place of a reply: a documented status, nothing read outside, nothing leaked.

#include <gtest/gtest.h>

#include "parsers.hpp"
#include "support.hpp"

namespace {

using pxcl_test::ExactBlock;
using pxcl_test::live_blocks;

void expect_documented(const Parser& parser, std::string_view text, const std::string& damage) {
  const ExactBlock block(text);
  const std::size_t before = live_blocks();
  const int status = parser.call(block.data(), block.size());
  EXPECT_TRUE(parser.statuses.count(status))
      << parser.name << " returns " << status << " for " << damage;
  EXPECT_EQ(live_blocks(), before) << parser.name << " leaks on " << damage;
}

// A reply, and the parsers that get past its operation.
class Damage : public testing::TestWithParam<std::string> {
 protected:
  void SetUp() override {
    const bool capability = GetParam().find("capability") != std::string::npos;
    for (const Parser& parser : parsers()) {
      const bool ofCapability =
          parser.family == Family::kCapability || parser.family == Family::kSupport;
      if (parser.family == Family::kHead || ofCapability == capability) readers_.push_back(parser);
    }
  }

  const std::string reply_ = pxcl_test::read_data(GetParam());
  std::vector<Parser> readers_;
};

TEST_P(Damage, CutAtEveryByte) {
  for (std::size_t size = 0; size < reply_.size(); ++size) {
    for (const Parser& parser : readers_) {
      expect_documented(parser, {reply_.data(), size}, "a cut at " + std::to_string(size));
    }
  }
}

TEST_P(Damage, EveryByteFlippedInTurn) {
  std::string text = reply_;
  for (std::size_t i = 0; i < text.size(); ++i) {
    text[i] = static_cast<char>(text[i] ^ 1);  // makes "=" of "<", "." of "/" and "#" of a quote
    for (const Parser& parser : readers_) {
      expect_documented(parser, text, "a flip at " + std::to_string(i));
    }
    text[i] = reply_[i];
  }
}

INSTANTIATE_TEST_SUITE_P(Replies, Damage, testing::ValuesIn(pxcl_test::list_data("replies")),
                         [](const auto& parameter) {
                           std::string name =
                               parameter.param.substr(parameter.param.rfind('/') + 1);
                           return name.substr(0, name.find('.'));
                         });

}  // namespace
