// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "printer/faults.hpp"

#include <stdexcept>

#include "dialogue.hpp"

namespace pxcl::printer {

namespace {

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

// One page is printed, the second is received but can't end until a person comes, or the job is cancelled.
TEST(Troubles, StopTheJob) {
  for (const auto& [sentence, detail] : kTroubles) {
    for (const bool attended : {false, true}) {
      SCOPED_TRACE(sentence);
      Dialogue dialogue("photo", {sentence});
      const auto state = [&] {
        return std::string(glb_clssdicStatusTbl[dialogue.status().common.status].keyword);
      };
      dialogue.open_job();
      EXPECT_EQ(dialogue.send_page(kAnotherFollows), "OK");
      EXPECT_EQ(dialogue.send_page(kLastPage), "OK");
      EXPECT_EQ(state(), "stopped");
      const ClssStatus status = dialogue.status();
      EXPECT_STREQ(glb_clssdicStatusDetailTbl[status.common.statusDetail].keyword, detail);
      EXPECT_STRNE(status.common.supportCode, "");
      EXPECT_EQ(status.completeImpression, 1);
      EXPECT_EQ(dialogue.outcome_of(end()), "Suspended");
      if (attended) {
        dialogue.printer.attend();
        EXPECT_EQ(state(), "processing");
      }
      EXPECT_EQ(dialogue.outcome_of(attended ? end() : cancel()), "OK");
      EXPECT_EQ(state(), "idle");
      EXPECT_TRUE(dialogue.printer.is_idle());
      EXPECT_EQ(dialogue.printer.pages().size(), attended ? 2U : 1U);
    }
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

TEST(Faults, SpoilReplies) {
  using Kind = Answer::Kind;
  const std::string good = Dialogue("photo").say(status_request());
  const struct {
    const char* sentence;
    Kind kind;
    std::chrono::milliseconds interval;
    std::string bytes;
  } rows[] = {
      {"cut reply to GetStatus", Kind::kClose, {}, good.substr(0, good.size() / 2)},
      {"drip reply to any every 500 ms once", Kind::kDrip, std::chrono::milliseconds(500), good},
      {"no-answer to GetStatus", Kind::kNoAnswer, {}, ""},
      {" close on  GetStatus", Kind::kClose, {}, ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.sentence);
    Dialogue dialogue("photo", {row.sentence});
    const Answer answer = dialogue.printer.answer(status_request());
    EXPECT_EQ(answer.kind, row.kind);
    EXPECT_EQ(answer.interval, row.interval);
    EXPECT_EQ(answer.bytes, row.bytes);
  }
  Dialogue garbage("photo", {"garbage to GetStatus"}), huge("photo", {"huge reply to GetStatus"});
  EXPECT_EQ(garbage.say(status_request()).find("<cmd"), std::string::npos);
  const std::string reply = huge.say(status_request());
  EXPECT_GT(reply.size(), 10'000'000U);
  EXPECT_EQ(outcome(reply), "OK");
}

TEST(Faults, AnotherOperation) {
  Dialogue dialogue("photo", {"wrong-operation to any"});
  const std::string operation = "cmd/zirk:contents/zirk:operation";
  EXPECT_EQ(text_at(dialogue.say(status_request()), operation), "EndJobResponse");
  EXPECT_EQ(text_at(dialogue.say(end()), operation), "StartJobResponse");
}

// The printer has done what it was told: only the answer is missing.
TEST(Faults, ComeAfterTheDeed) {
  for (const char* sentence : {"no-answer to StartJob once", "close on StartJob once"}) {
    Dialogue dialogue("photo", {sentence});
    static_cast<void>(dialogue.printer.answer(start()));
    EXPECT_FALSE(dialogue.printer.is_idle());
    EXPECT_EQ(dialogue.outcome_of(start()), "DeivceUseOtherJob");
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
