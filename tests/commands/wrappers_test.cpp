// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The PXCL_ calls: each is a builder with values of its own, and its own widths and statuses.

#include <gtest/gtest.h>

#include "catalogue.hpp"
#include "support.hpp"

using namespace pxcl_test;

namespace {

constexpr std::uint16_t kSettings[] = {9, 4, 12, 2, 1, 4};

// The 32-bit length of a call that stores one, seen as 64 bits; what stays unwritten stays so.
template <typename Wrapped>
std::int32_t with_narrow_length(Length length, Wrapped wrapped) {
  auto narrow = static_cast<std::uint32_t>(*length);
  const std::int32_t status = wrapped(&narrow);
  *length = narrow;
  return status;
}

struct Wrapper {
  std::string name;
  enum { kPlain, kFolds, kMaintenance } kind;  // kFolds: one status for every failure
  Call wrapper;
  Call builder;
};

// clang-format off
#define BUILDER(...) [](Buffer b, Size s, Length l) { return CLSS_MakeCommand_##__VA_ARGS__; }
#define WRAPPER(kind, name, call, ...) \
  {#name, Wrapper::kind, [](Buffer b, Size s, Length l) { return PXCL_##name call; }, BUILDER(__VA_ARGS__)}
#define NARROW(name, call, ...)                                                                   \
  {#name, Wrapper::kPlain, [](Buffer b, Size size, Length length) {                               \
     [[maybe_unused]] const auto s = static_cast<std::uint32_t>(size);                            \
     return with_narrow_length(length, [&](std::uint32_t* l) { return PXCL_##name call; }); },    \
   BUILDER(__VA_ARGS__)}
#define SIGNED static_cast<std::int32_t>(s)
#define REPLY kCapability.data(), kCapability.size()
const Wrapper kWrappers[] = {
  NARROW(MakeGetCapabilityCommand, (b, s, l, 3), GetCapability(b, s, l, 3)),
  NARROW(MakeCommand_GetStatusPrint, (b, s, l), GetStatusPrint(nullptr, b, s, l)),
  NARROW(MakeCommand_GetStatusMaintenance, (b, s, l), GetStatusMaintenance(nullptr, b, s, l)),
  NARROW(MakeCommand_StartJob3, (3, "d", kJob, b, SIGNED, l), StartJob3(0, 3, "d", 2, kJob, "0", b, s, l)),
  WRAPPER(kPlain, MakeCommand_StartJob3_Maintenance, (3, "d", kJob, b, s, l),
          StartJob3(3, 3, "d", 0, kJob, "0", b, s, l)),
  NARROW(MakeCommand_CancelJob, (kJob, b, s, l), CancelJob(0, kJob, b, s, l)),
  NARROW(MakeCommand_CancelJob_Maintenance, (kJob, b, s, l), CancelJob(3, kJob, b, s, l)),
  WRAPPER(kPlain, MakeCommand_EndJob_Maintenance, (kJob, b, static_cast<std::uint32_t>(s), l),
          EndJob(3, kJob, b, s, l)),
  WRAPPER(kFolds, GetSendDataPWGRasterCommand, (kJob, 77, static_cast<std::int64_t>(s), b, l),
          SendDataPWGRaster(kJob, 77, b, s, l)),
  WRAPPER(kFolds, GetSetPageConfigurationCommand, (kJob, 2, b, s, l), SetPageConfiguration(kJob, 2, b, s, l)),
  NARROW(MakeCommand_SetJobConfiguration, (kJob, kTime, b, SIGNED, l), SetTime(kJob, kTime, b, s, l)),
  WRAPPER(kFolds, GetSetConfigurationCommand, (kSettings, kJob, s, REPLY, b, l),
          SetConfigurationNS({2, 4, 12, 2}, {1, 4}, kJob, REPLY, b, s, l)),
  WRAPPER(kMaintenance, MakeCommand_SetJobConfiguration_Maintenance, (kJob, kTime, b, SIGNED, l),
          SetJobConfiguration_Maintenance(kJob, kTime, b, s, l)),
  WRAPPER(kMaintenance, MakeCommand_TestPrint, (kJob, b, SIGNED, l), TestPrint(kJob, b, s, l)),
  WRAPPER(kMaintenance, MakeCommand_AutoAlignment, (kJob, b, SIGNED, l), AutoRegistration(kJob, b, s, l)),
  WRAPPER(kMaintenance, MakeCommand_Cleaning, (kJob, b, SIGNED, l), Cleaning(kJob, b, s, l)),
};
// clang-format on

// Room for all, for all but one byte, and for none: document, length and rest of the buffer agree.
TEST(Wrappers, MakeWhatTheirBuilderMakes) {
  for (const Wrapper& w : kWrappers) {
    SCOPED_TRACE(w.name);
    const Made one = make(w.builder, 1);
    ASSERT_EQ(one.status, CLSS_COMMAND_BUFFER_TOO_SMALL);
    for (const Size size : {Size{1}, one.length - 1, one.length, Size{2000}}) {
      const Made expected = make(w.builder, size);
      const Made made = make(w.wrapper, size);
      const bool folded = w.kind == Wrapper::kFolds && expected.status != CLSS_COMMAND_OK;
      EXPECT_EQ(made.status, folded ? CLSS_COMMAND_BAD_ARGUMENT : expected.status);
      EXPECT_EQ(made.length, expected.length);
      EXPECT_EQ(made.buffer, expected.buffer);
    }
  }
}

TEST(Wrappers, AnswerASizeQueryUnlessTheyRefuseIt) {
  for (const Wrapper& w : kWrappers) {
    SCOPED_TRACE(w.name);
    const bool refused =
        w.name == "MakeGetCapabilityCommand" || w.name == "GetSendDataPWGRasterCommand";
    char spare = 0;
    char* const buffer = w.kind == Wrapper::kMaintenance ? &spare : nullptr;
    std::uint64_t need = kUnwritten, length = kUnwritten;
    EXPECT_EQ(w.builder(buffer, 0, &need), CLSS_COMMAND_OK);
    EXPECT_EQ(w.wrapper(buffer, 0, &length), refused ? CLSS_COMMAND_BAD_ARGUMENT : CLSS_COMMAND_OK);
    EXPECT_EQ(length, refused ? kUnwritten : need);
  }
}

// A signed size keeps its sign: -1 is the largest size there is, and clears nothing.
TEST(Wrappers, WidenANegativeSizeWithItsSign) {
  for (const Wrapper& w : kWrappers) {
    SCOPED_TRACE(w.name);
    const Made made = make(w.wrapper, ~Size{0});
    const bool refused = w.name == "GetSendDataPWGRasterCommand";
    EXPECT_EQ(made.status, refused ? CLSS_COMMAND_BAD_ARGUMENT : CLSS_COMMAND_OK);
    EXPECT_EQ(made.length, refused ? kUnwritten : make(w.builder).length);
    EXPECT_EQ(made.document, refused ? "" : make(w.builder).document);
  }
}

// Beyond 16 bits a host environment is not cut down to one that the dictionary knows.
TEST(Wrappers, LookAtAllOfTheHostEnvironment) {
  char buffer[4096];
  for (const std::uint32_t host : {8U, 65536U, 65539U, 0xFFFFFFFFU}) {
    std::uint32_t length = 5;
    EXPECT_EQ(PXCL_MakeCommand_StartJob3(host, "d", kJob, buffer, 4096, &length),
              CLSS_COMMAND_BAD_ARGUMENT);
    EXPECT_EQ(length, 0U);
    EXPECT_EQ(PXCL_MakeCommand_StartJob3(host, nullptr, kJob, buffer, 4096, &length),
              CLSS_COMMAND_NOT_ACCEPTED);
    std::uint64_t wide = 5;
    EXPECT_EQ(PXCL_MakeCommand_StartJob3_Maintenance(host, "d", kJob, buffer, 4096, &wide),
              CLSS_COMMAND_BAD_ARGUMENT);
    EXPECT_EQ(wide, 0U);
  }
}

}  // namespace
