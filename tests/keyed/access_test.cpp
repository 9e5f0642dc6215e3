// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "keyed.h"
#include "reply.hpp"
#include "support.hpp"

namespace {

using pxcl_test::ExactBlock;
using Access = decltype(&GetXmlDataByKey);

#define PRINT "cmd/zirk:contents/zirk:param_set servicetype=\"print\""

ClssKeyValue key(std::string_view path, std::string_view value = {}) {
  return {path.data(), path.size(), value.data(), value.size()};
}

const ClssKeyValue kJobID = key(PRINT "/zirk:jobID", "00000042");
const ClssKeyValue kItems = key(PRINT "/vrx:item");
const ClssKeyValue kGone = key(PRINT "/zirk:gone", "x");

ExactBlock sample() {
  return ExactBlock(
      reply("<zirk:jobID>1</zirk:jobID><vrx:item>a</vrx:item><vrx:item>bc</vrx:item>"));
}

std::string_view text_of(const ClXmlRequest* request, std::uint64_t offset, std::uint64_t length) {
  return std::string_view(request->document, request->documentLength).substr(offset, length);
}

TEST(GetXmlDataByKey, GivesTheFirstTextOfEachKey) {
  const ExactBlock document = sample();
  const ClssKeyValue records[] = {kItems, kGone, key(PRINT "/zirk:response")};
  ClXmlRequest* context = nullptr;
  ASSERT_EQ(GetXmlDataByKey(document.data(), document.size(), records, 3, &context), 0);
  const auto* parameters = static_cast<const ClXmlParameter*>(context->parameters);
  EXPECT_EQ(text_of(context, parameters[0].valueOffset, parameters[0].valueLength), "a");
  EXPECT_EQ(parameters[0].status, 1);
  EXPECT_EQ(parameters[1].status, -101);
  EXPECT_EQ(text_of(context, parameters[2].valueOffset, parameters[2].valueLength), "OK");
  EXPECT_EQ(context->outputSize, document.size() + 1);
  EXPECT_NE(context->output, nullptr);
  EXPECT_EQ(ClearCL_XML(context), 1);
}

TEST(GetXmlDataByKeyList, GivesEveryText) {
  const ExactBlock document = sample();
  const ClssKeyValue records[] = {kGone, {kItems.key, kItems.keyLength, "value", 0}};
  ClXmlRequest* context = nullptr;
  ASSERT_EQ(GetXmlDataByKeyList(document.data(), document.size(), records, 2, &context), 0);
  const auto* parameters = static_cast<const ClXmlListParameter*>(context->parameters);
  EXPECT_EQ(parameters[0].ranges, nullptr);
  ASSERT_EQ(parameters[1].rangeCount, 2u);
  const ClXmlValueRange& second = parameters[1].ranges[1];
  EXPECT_EQ(text_of(context, second.offset, second.length), "bc");
  EXPECT_EQ(ClearCL_XML2(context), 1);
}

TEST(ReplaceXmlDataByKey, WritesTheNewDocument) {
  const ExactBlock document = sample();
  const ClssKeyValue records[] = {kItems, kGone, kJobID};
  ClXmlRequest* context = nullptr;
  ASSERT_EQ(ReplaceXmlDataByKey(document.data(), document.size(), records, 3, &context), 0);
  std::string expected(document);
  expected.replace(expected.find(">1<") + 1, 1, "00000042");
  EXPECT_EQ(std::string_view(context->output, context->outputSize), expected);
  EXPECT_EQ(ClearCL_XML(context), 1);
}

TEST(KeyedAccess, RefusesBadRecords) {
  const struct {
    ClssKeyValue record;
    int status;
    int listStatus;
  } cases[] = {
      {key({}), -4, -4},
      {{"cmd", 0, nullptr, 0}, -4, -4},
      {{nullptr, 3, nullptr, 0}, -4, -4},
      {{"cmd", 3, "value", 0}, -4, 0},
      {{"cmd", 3, nullptr, 5}, -4, 0},
  };
  const ExactBlock document = sample();
  for (const auto& [record, status, listStatus] : cases) {
    for (const bool last : {false, true}) {
      const ClssKeyValue records[] = {last ? kItems : record, last ? record : kItems};
      ClXmlRequest* context = nullptr;
      EXPECT_EQ(GetXmlDataByKey(document.data(), document.size(), records, 2, &context), status);
      EXPECT_EQ(ReplaceXmlDataByKey(document.data(), document.size(), records, 2, &context),
                status);
      EXPECT_EQ(SetCL_XML(document.data(), document.size(), records, 2, &context), status);
      EXPECT_EQ(context, nullptr);
      EXPECT_EQ(GetXmlDataByKeyList(document.data(), document.size(), records, 2, &context),
                listStatus);
      EXPECT_EQ(ClearCL_XML2(context), listStatus == 0 ? 1 : 0);
    }
  }
}

TEST(KeyedAccess, RefusesBrokenDocuments) {
  const ExactBlock document = sample();
  for (const Access access : {&GetXmlDataByKey, &GetXmlDataByKeyList, &ReplaceXmlDataByKey}) {
    ClXmlRequest* context = nullptr;
    EXPECT_EQ(access(document.data(), document.size() - 8, &kJobID, 1, &context), -2);
    EXPECT_EQ(context, nullptr);
  }
}

TEST(GetNeedBufferSize, AddsTheValueLengths) {
  const ClssKeyValue records[] = {kJobID, kItems, kGone};
  EXPECT_EQ(Get_NeedBufferSize(100, records, 3), 109u);
  EXPECT_EQ(Get_NeedBufferSize(100, records, 0), 100u);
  EXPECT_EQ(Get_NeedBufferSize(100, nullptr, 3), 100u);
}

}  // namespace
