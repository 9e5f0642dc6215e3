// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "client/trace_channel.hpp"

#include <gtest/gtest.h>

#include <sstream>

namespace pxcl::client {
namespace {

class OneReply : public Channel {
 public:
  explicit OneReply(Result<std::string> reply) : reply_(std::move(reply)) {}
  Result<std::string> exchange(std::string_view, std::string_view) override { return reply_; }
  Result<std::string> exchange_regardless(std::string_view,
                                          std::chrono::milliseconds limit) override {
    return "<cmd>" + std::to_string(limit.count()) + "</cmd>";
  }
  Result<std::string> device_id() override { return std::string("MFG:x;"); }

 private:
  Result<std::string> reply_;
};

std::string trace_of(std::string_view command, std::string_view data,
                     const Result<std::string>& reply) {
  OneReply inner(reply);
  std::ostringstream out;
  TraceChannel trace(inner, out);
  const Result<std::string> got = trace.exchange(command, data);
  EXPECT_EQ(got.ok(), reply.ok());
  EXPECT_EQ(got.ok() ? got.value() : "", reply.ok() ? reply.value() : "");
  return out.str();
}

TEST(Trace, LaysOutOneElementALine) {
  EXPECT_EQ(trace_of("<?xml version=\"1.0\"?><cmd "
                     "a=\"b\"><c><d>1</d><e/><f></f><g><![CDATA[<h>]]></g></c></cmd>",
                     "12345", std::string("<cmd><x>1</x></cmd>\r\n")),
            R"(>>> 1 command, 86 bytes
<?xml version="1.0"?>
<cmd a="b">
  <c>
    <d>1</d>
    <e/>
    <f></f>
    <g><![CDATA[<h>]]></g>
  </c>
</cmd>
>>> 1 data, 5 bytes
<<< 1 reply, 21 bytes
<cmd>
  <x>1</x>
</cmd>
)");
}

TEST(Trace, KeepsDocumentsThatAreLaidOut) {
  EXPECT_EQ(trace_of("<a/>", "", std::string("<cmd>\n <x/><y/>\n</cmd>\n")),
            ">>> 1 command, 4 bytes\n<a/>\n<<< 1 reply, 23 bytes\n<cmd>\n <x/><y/>\n</cmd>\n");
}

TEST(Trace, ShowsWhatIsNoText) {
  EXPECT_EQ(trace_of("<a/>", "",
                     std::string("\0\x1B[2J\xFF"
                                 "é<\x7F",
                                 10)),
            ">>> 1 command, 4 bytes\n<a/>\n<<< 1 reply, 10 bytes\n\\x00\\x1B[2J\\xFFé<\\x7F\n");
  EXPECT_EQ(trace_of("<a/>", "", std::string()),
            ">>> 1 command, 4 bytes\n<a/>\n<<< 1 reply, 0 bytes\n");
}

TEST(Trace, ShowsErrorsInPlaceOfReplies) {
  EXPECT_EQ(trace_of("<a/>", "", Error{Fault::kUnreachable, "Gone. Plug it in."}),
            ">>> 1 command, 4 bytes\n<a/>\n<<< 1 no reply: Gone. Plug it in.\n");
}

TEST(Trace, CutsWhatIsTooLong) {
  const std::string trace = trace_of("<a/>", "", std::string(100000, 'x'));
  EXPECT_LT(trace.size(), 66000U);
  EXPECT_TRUE(trace.ends_with("\n... and 34464 bytes more\n"));
}

// Nothing that a printer sends makes a trace grow out of proportion.
TEST(Trace, IndentsOnlySoFar) {
  std::string deep;
  for (int i = 0; i < 20000; ++i) deep += "<a>";
  EXPECT_LT(trace_of("<a/>", "", deep).size(), 2000000U);
}

TEST(Trace, PassesOrdersOn) {
  OneReply inner(std::string("x"));
  std::ostringstream out;
  TraceChannel trace(inner, out);
  EXPECT_EQ(trace.exchange_regardless("<b/>", std::chrono::milliseconds(7)).value(),
            "<cmd>7</cmd>");
  EXPECT_EQ(trace.device_id().value(), "MFG:x;");
  EXPECT_EQ(out.str(), ">>> 1 command, 4 bytes\n<b/>\n<<< 1 reply, 12 bytes\n<cmd>7</cmd>\n");
}

}  // namespace
}  // namespace pxcl::client
