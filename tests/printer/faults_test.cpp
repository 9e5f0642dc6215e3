// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "printer/faults.hpp"

#include <stdexcept>

#include "dialogue.hpp"

namespace pxcl::printer {

namespace {

TEST(FaultLanguage, ReadsItsSentences) {
  const Fault page = read_fault("paper-out at page 2");
  EXPECT_EQ(page.kind, FaultKind::kTroubleAtPage);
  EXPECT_EQ(page.trouble, Trouble::kPaperOut);
  EXPECT_EQ(page.number, 2U);
  EXPECT_FALSE(page.times.has_value());
  const Fault ng = read_fault("  ng DeivceUseOtherJob to StartJob  3 times");
  EXPECT_EQ(ng.kind, FaultKind::kNg);
  EXPECT_EQ(ng.detail, "DeivceUseOtherJob");
  EXPECT_EQ(ng.operation, "StartJob");
  EXPECT_EQ(ng.times, 3U);
  const Fault drip = read_fault("drip reply to any every 500 ms once");
  EXPECT_EQ(drip.kind, FaultKind::kDrip);
  EXPECT_EQ(drip.number, 500U);
  EXPECT_EQ(drip.times, 1U);
}

TEST(FaultLanguage, RefusesWhatItCantRead) {
  for (const char* sentence :
       {"", "once", "paper-out", "paper-out at page", "paper-out at page 0",
        "paper-out at page two", "paper-out at page 99999999999", "mismatch at page 1",
        "ng OK to StartJob", "ng ParameterError to Everything", "cut reply to EndJob 0 times",
        "cut reply to EndJob twice", "cut reply to EndJob EndJob", "close on SendData or so"}) {
    EXPECT_THROW(static_cast<void>(read_fault(sentence)), std::invalid_argument) << sentence;
    EXPECT_THROW(Dialogue("photo", {sentence}), std::invalid_argument) << sentence;
  }
}

// ---- What is wrong with the printer

const struct {
  const char* sentence;
  const char* detail;
} kTroubles[] = {{"paper-out at page 2", "MediaEmpty"},
                 {"cover-open at page 2", "DoorOpen"},
                 {"jam after 2 sends", "MediaJam"},
                 {"ink-out at page 2", "MarkerSupplyAttention"}};

// One page is printed, the second is received but can't end.
void run_into_trouble(Dialogue& dialogue, const char* detail) {
  dialogue.open_job();
  EXPECT_EQ(dialogue.send_page(kAnotherFollows), "OK");
  EXPECT_EQ(dialogue.send_page(kLastPage), "OK");
  const ClssStatus status = dialogue.status();
  EXPECT_STREQ(glb_clssdicStatusTbl[status.common.status].keyword, "stopped");
  EXPECT_STREQ(glb_clssdicStatusDetailTbl[status.common.statusDetail].keyword, detail);
  EXPECT_STRNE(status.common.supportCode, "");
  EXPECT_EQ(status.completeImpression, 1);
  EXPECT_EQ(dialogue.outcome_of(end()), "Suspended");
}

TEST(Troubles, StopTheJobUntilItIsCancelled) {
  for (const auto& [sentence, detail] : kTroubles) {
    SCOPED_TRACE(sentence);
    Dialogue dialogue("photo", {sentence});
    run_into_trouble(dialogue, detail);
    EXPECT_EQ(dialogue.outcome_of(cancel()), "OK");
    EXPECT_TRUE(dialogue.printer.is_idle());
    EXPECT_STREQ(glb_clssdicStatusTbl[dialogue.status().common.status].keyword, "idle");
    EXPECT_EQ(dialogue.printer.pages().size(), 1U);
  }
}

TEST(Troubles, EndWhenAPersonComes) {
  for (const auto& [sentence, detail] : kTroubles) {
    SCOPED_TRACE(sentence);
    Dialogue dialogue("photo", {sentence});
    run_into_trouble(dialogue, detail);
    dialogue.printer.attend();
    EXPECT_STREQ(glb_clssdicStatusTbl[dialogue.status().common.status].keyword, "processing");
    EXPECT_EQ(dialogue.outcome_of(end()), "OK");
    EXPECT_EQ(dialogue.printer.pages().size(), 2U);
  }
}

TEST(Faults, StopTestPrintsToo) {
  Dialogue dialogue("office", {"cover-open at page 1"});
  EXPECT_EQ(dialogue.outcome_of(start(kJob, kMaintenance)), "OK");
  EXPECT_EQ(dialogue.outcome_of(built(CLSS_MakeCommand_TestPrint, kJob)), "Suspended");
  EXPECT_EQ(dialogue.outcome_of(cancel(kJob, kMaintenance)), "OK");
  EXPECT_TRUE(dialogue.printer.is_idle());
}

// ---- What is wrong with its answers

std::string status_request() {
  return built(CLSS_MakeCommand_GetStatusDevice);
}

std::string good_answer() {
  return Dialogue("photo").say(status_request());
}

TEST(Faults, CutReplies) {
  Dialogue dialogue("photo", {"cut reply to GetStatus"});
  const Answer answer = dialogue.printer.answer(status_request());
  EXPECT_EQ(answer.kind, Answer::Kind::kClose);
  const std::string good = good_answer();
  EXPECT_EQ(answer.bytes, good.substr(0, good.size() / 2));
}

TEST(Faults, Garbage) {
  Dialogue dialogue("photo", {"garbage to GetStatus"});
  EXPECT_EQ(dialogue.say(status_request()).find("<cmd"), std::string::npos);
}

TEST(Faults, HugeRepliesAreStillReplies) {
  Dialogue dialogue("photo", {"huge reply to GetStatus"});
  const std::string reply = dialogue.say(status_request());
  EXPECT_GT(reply.size(), 10'000'000U);
  EXPECT_EQ(outcome(reply), "OK");
}

TEST(Faults, Drips) {
  Dialogue dialogue("photo", {"drip reply to GetStatus every 500 ms"});
  const Answer answer = dialogue.printer.answer(status_request());
  EXPECT_EQ(answer.kind, Answer::Kind::kDrip);
  EXPECT_EQ(answer.interval.count(), 500);
  EXPECT_EQ(answer.bytes, good_answer());
}

TEST(Faults, AnotherOperation) {
  Dialogue dialogue("photo", {"wrong-operation to any"});
  const std::string operation = "cmd/zirk:contents/zirk:operation";
  EXPECT_EQ(text_at(dialogue.say(status_request()), operation), "EndJobResponse");
  EXPECT_EQ(text_at(dialogue.say(end()), operation), "StartJobResponse");
}

// The printer has done what it was told: only the answer is missing.
TEST(Faults, SilenceAndClosedConnectionsComeAfterTheDeed) {
  for (const auto& [sentence, kind] : {std::pair{"no-answer to StartJob", Answer::Kind::kNoAnswer},
                                       std::pair{"close on StartJob", Answer::Kind::kClose}}) {
    Dialogue dialogue("photo", {sentence});
    const Answer answer = dialogue.printer.answer(start());
    EXPECT_EQ(answer.kind, kind);
    EXPECT_EQ(answer.bytes, "");
    EXPECT_FALSE(dialogue.printer.is_idle());
    EXPECT_EQ(dialogue.outcome_of(cancel()), "OK");
  }
}

TEST(Faults, AScriptedRefusalIsNotCarriedOut) {
  Dialogue dialogue("photo", {"ng Initializing to StartJob 2 times"});
  EXPECT_EQ(dialogue.outcome_of(start()), "Initializing");
  EXPECT_EQ(dialogue.outcome_of(start()), "Initializing");
  EXPECT_TRUE(dialogue.printer.is_idle());
  EXPECT_EQ(dialogue.outcome_of(start()), "OK");
}

TEST(Faults, MeanVendorOperationsByName) {
  Dialogue dialogue("photo", {"ng Suspended to SetPageConfiguration", "ng NotStart to VendorCmd"});
  dialogue.open_job();
  EXPECT_EQ(dialogue.outcome_of(page(kLastPage)), "Suspended");
  EXPECT_EQ(dialogue.outcome_of(built(CLSS_MakeCommand_ModeShift, kPrint, kJob, "1")), "NotStart");
}

}  // namespace

}  // namespace pxcl::printer
