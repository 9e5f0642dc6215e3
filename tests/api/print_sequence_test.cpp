// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "pxcl.h"

namespace {

// Standard error as a socket that keeps every write apart.
class CapturedErrors {
 public:
  CapturedErrors() {
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_DGRAM, 0, ends_), 0);
    saved_ = dup(STDERR_FILENO);
    dup2(ends_[1], STDERR_FILENO);
  }
  ~CapturedErrors() {
    dup2(saved_, STDERR_FILENO);
    for (const int file : {saved_, ends_[0], ends_[1]}) close(file);
  }
  std::vector<std::string> writes() const {
    std::vector<std::string> all;
    char text[256];
    ssize_t size;
    while ((size = recv(ends_[0], text, sizeof text, MSG_DONTWAIT)) > 0) {
      all.emplace_back(text, static_cast<std::size_t>(size));
    }
    return all;
  }

 private:
  int ends_[2];
  int saved_;
};

struct Made {
  std::int32_t status;
  std::uint64_t length;
  std::string document;
  std::vector<std::string> errors;
};

Made make(char* buffer, std::uint64_t size, const char* job, std::uint64_t step) {
  Made made{0, 77, "", {}};
  const CapturedErrors captured;
  made.status = PXCL_GetPrintCommand(buffer, size, &made.length, job, step);
  made.errors = captured.writes();
  if (made.status == 0 && made.length <= size) made.document.assign(buffer, made.length);
  return made;
}

struct Step {
  std::uint64_t number;
  const char* line;
  const char* inside;
};
const Step kSteps[] = {
    {1, "DEBUG: getStartJobCommand Successed\n",
     "<zirk:operation>StartJob</zirk:operation><zirk:param_set servicetype=\"print\">"
     "<zirk:jobID>00000042</zirk:jobID><zirk:bidi>0</zirk:bidi>"
     "<vrx:forcepmdetection>OFF</vrx:forcepmdetection></zirk:param_set>"},
    {2, "DEBUG: ---getVenderCommand Successed---\n",
     "<zirk:operation>VendorCmd</zirk:operation><zirk:param_set servicetype=\"print\">"
     "<zirk:jobID>00000042</zirk:jobID><vrx:ijoperation>ModeShift</vrx:ijoperation>"
     "<vrx:ijmode>1</vrx:ijmode></zirk:param_set>"},
    {3, "DEBUG: getEndJobCommand Successed\n",
     "<zirk:operation>EndJob</zirk:operation><zirk:param_set servicetype=\"print\">"
     "<zirk:jobID>00000042</zirk:jobID></zirk:param_set>"},
};

TEST(PrintSequence, MakesOneCommandAStepAndSaysSoInOneWrite) {
  for (const Step& step : kSteps) {
    char buffer[1024];
    const Made made = make(buffer, sizeof buffer, "00000042", step.number);
    EXPECT_EQ(made.status, 0);
    EXPECT_NE(made.document.find(step.inside), std::string::npos) << made.document;
    EXPECT_EQ(made.errors, std::vector<std::string>{step.line});

    const Made query = make(nullptr, 0, "00000042", step.number);
    EXPECT_EQ(query.status, 0);
    EXPECT_GT(query.length, made.length);
    EXPECT_EQ(query.errors, made.errors) << "a size query is a success";

    const Made small = make(buffer, query.length - 1, "00000042", step.number);
    EXPECT_EQ(small.status, CLSS_COMMAND_BUFFER_TOO_SMALL);
    EXPECT_EQ(small.length, query.length);
    EXPECT_TRUE(small.errors.empty());

    const Made bad = make(buffer, sizeof buffer, nullptr, step.number);
    EXPECT_EQ(bad.status, CLSS_COMMAND_BAD_ARGUMENT);
    EXPECT_EQ(bad.length, 0U);
    EXPECT_TRUE(bad.errors.empty());
  }
}

TEST(PrintSequence, DoesNothingAtAnyOtherStep) {
  for (const std::uint64_t step : {0ULL, 4ULL, (1ULL << 32) + 1}) {
    char buffer[8] = "as is";
    const Made made = make(buffer, sizeof buffer, "00000042", step);
    EXPECT_EQ(made.status, 0);
    EXPECT_EQ(made.length, 77U);
    EXPECT_STREQ(buffer, "as is");
    EXPECT_TRUE(made.errors.empty());
    EXPECT_EQ(PXCL_GetPrintCommand(nullptr, 5, nullptr, nullptr, step), 0);
  }
}

}  // namespace
