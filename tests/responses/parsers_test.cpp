// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// What every parser does alike: it scans its document once, and answers whatever arrives in place of a reply with a documented
// status. The engine's scan is replaced by one that counts.

#include <gtest/gtest.h>

#include "parsers.hpp"
#include "support.hpp"
#include "xml/scanner.hpp"

#define SCAN_NAME                                                                          \
  "_ZN4pxcl3xml12scan_indexedERKNS0_4PlanERKNS0_7ResultsESt17basic_string_viewIcSt11char_" \
  "traitsIcEEjP19ClXmlNameSpaceEntry"

using pxcl::xml::Plan;
using pxcl::xml::Results;
using pxcl::xml::ScanOutcome;

ScanOutcome real_scan(const Plan& plan, const Results& results, std::string_view document,
                      pxcl::u32 flags, ClXmlNameSpaceEntry* table) asm("__real_" SCAN_NAME);
ScanOutcome counted_scan(const Plan& plan, const Results& results, std::string_view document,
                         pxcl::u32 flags, ClXmlNameSpaceEntry* table) asm("__wrap_" SCAN_NAME);

static unsigned scans = 0;

ScanOutcome counted_scan(const Plan& plan, const Results& results, std::string_view document,
                         pxcl::u32 flags, ClXmlNameSpaceEntry* table) {
  ++scans;
  return real_scan(plan, results, document, flags, table);
}

TEST(Scans, EachParserScansItsReplyOnce) {
  for (const Parser& parser : parsers()) {
    const std::string reply = pxcl_test::read_data(std::string("replies/") + parser.reply);
    scans = 0;
    EXPECT_GE(parser.call(reply.data(), reply.size()), 0) << parser.name;
    EXPECT_EQ(scans, 1U) << parser.name;
  }
}

// Nothing is read outside, nothing leaks.
void expect_documented(const Parser& parser, std::string_view text, std::size_t place) {
  const pxcl_test::ExactBlock block(text);
  const std::size_t before = pxcl_test::live_blocks();
  const int status = parser.call(block.data(), block.size());
  EXPECT_TRUE(parser.statuses.count(status))
      << parser.name << " returns " << status << " at " << place;
  EXPECT_EQ(pxcl_test::live_blocks(), before) << parser.name << " leaks at " << place;
}

// A reply is damaged for the parsers that get past its operation.
TEST(Damage, CutAndFlippedAtEveryByte) {
  for (const std::string& file : pxcl_test::list_data("replies")) {
    SCOPED_TRACE(file);
    const bool capability = file.find("capability") != file.npos;
    std::string text = pxcl_test::read_data(file);
    for (const Parser& parser : parsers()) {
      const bool ofCapability =
          parser.family == Family::kCapability || parser.family == Family::kSupport;
      if (parser.family != Family::kHead && ofCapability != capability) continue;
      for (std::size_t i = 0; i < text.size(); ++i) {
        expect_documented(parser, {text.data(), i}, i);
        text[i] ^= 1;  // makes "=" of "<", "." of "/" and "#" of a quote
        expect_documented(parser, text, i);
        text[i] ^= 1;
      }
    }
  }
}
