// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// How often each parser scans its document. The engine's scan is replaced by one that counts.

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
