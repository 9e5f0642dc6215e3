// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The PXCL_ calls: each is a builder with values of its own, and its own widths and statuses.

#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <set>

#include "catalogue.hpp"
#include "commands.h"
#include "support.hpp"

using namespace pxcl_test;

namespace {

constexpr const char* kJob = "00000042";
constexpr const char* kTime = "20240102030405";
constexpr std::uint16_t kSettings[] = {9, 4, 12, 2, 1, 4};

using Buffer = char*;
using Size = std::uint64_t;
using Length = std::uint64_t*;
using Call = std::function<std::int32_t(Buffer, Size, Length)>;

// The 32-bit length of a call that stores one, seen as 64 bits; what stays unwritten stays so.
template <typename Wrapped>
std::int32_t with_narrow_length(Length length, Wrapped wrapped) {
  if (length == nullptr) return wrapped(static_cast<std::uint32_t*>(nullptr));
  auto narrow = static_cast<std::uint32_t>(*length);
  const std::int32_t status = wrapped(&narrow);
  *length = narrow;
  return status;
}

enum class Rule {
  kStores,   // the length is always stored
  kNoQuery,  // as well, but size 0 is refused
  kPasses,   // the builder's status and length
  kFolds,    // the builder's length, and one status for every failure
};

struct Wrapper {
  std::string name;
  Rule rule;
  Call wrapper;
  Call builder;
};

std::vector<Wrapper> list_wrappers() {
#define WRAPPER(name, rule, call, builder)                                                       \
  {                                                                                              \
#name, rule,                                                                                 \
        [](Buffer b, Size s,                                                                     \
           Length l) { return PXCL_##name call; },                                               \
                                                [](Buffer b, Size s,                             \
                                                   Length                                        \
                                                       l) { return CLSS_MakeCommand_##builder; } \
  }
#define NARROW(name, rule, call, builder)                                                \
  {                                                                                      \
#name, rule,                                                                           \
        [](Buffer b, Size size, Length length) {                                           \
          [[maybe_unused]] const auto s = static_cast<std::uint32_t>(size);                \
          return with_narrow_length(length, [&](std::uint32_t* l) { return PXCL_##name call; }); \
        },                                                                                 \
        [](Buffer b, Size s, Length l) { return CLSS_MakeCommand_##builder; } \
  }
#define SIGNED static_cast<std::int32_t>(s)
  return {
      NARROW(MakeGetCapabilityCommand, Rule::kNoQuery, (b, s, l, 3), GetCapability(b, s, l, 3)),
      NARROW(MakeCommand_GetStatusPrint, Rule::kStores, (b, s, l),
             GetStatusPrint(nullptr, b, s, l)),
      NARROW(MakeCommand_GetStatusMaintenance, Rule::kStores, (b, s, l),
             GetStatusMaintenance(nullptr, b, s, l)),
      NARROW(MakeCommand_StartJob3, Rule::kStores, (3, "d", kJob, b, SIGNED, l),
             StartJob3(0, 3, "d", 2, kJob, "0", b, s, l)),
      WRAPPER(MakeCommand_StartJob3_Maintenance, Rule::kStores, (3, "d", kJob, b, s, l),
              StartJob3(3, 3, "d", 0, kJob, "0", b, s, l)),
      NARROW(MakeCommand_CancelJob, Rule::kStores, (kJob, b, s, l), CancelJob(0, kJob, b, s, l)),
      NARROW(MakeCommand_CancelJob_Maintenance, Rule::kStores, (kJob, b, s, l),
             CancelJob(3, kJob, b, s, l)),
      WRAPPER(MakeCommand_EndJob_Maintenance, Rule::kStores,
              (kJob, b, static_cast<std::uint32_t>(s), l), EndJob(3, kJob, b, s, l)),
      WRAPPER(GetSendDataPWGRasterCommand, Rule::kFolds,
              (kJob, 77, static_cast<std::int64_t>(s), b, l), SendDataPWGRaster(kJob, 77, b, s, l)),
      WRAPPER(GetSetPageConfigurationCommand, Rule::kFolds, (kJob, 2, b, s, l),
              SetPageConfiguration(kJob, 2, b, s, l)),
      NARROW(MakeCommand_SetJobConfiguration, Rule::kStores, (kJob, kTime, b, SIGNED, l),
             SetTime(kJob, kTime, b, s, l)),
      WRAPPER(GetSetConfigurationCommand, Rule::kFolds,
              (kSettings, kJob, s, kCapability.data(), kCapability.size(), b, l),
              SetConfigurationNS({2, 4, 12, 2}, {1, 4}, kJob, kCapability.data(),
                                 kCapability.size(), b, s, l)),
      WRAPPER(MakeCommand_SetJobConfiguration_Maintenance, Rule::kPasses,
              (kJob, kTime, b, SIGNED, l), SetJobConfiguration_Maintenance(kJob, kTime, b, s, l)),
      WRAPPER(MakeCommand_TestPrint, Rule::kPasses, (kJob, b, SIGNED, l), TestPrint(kJob, b, s, l)),
      WRAPPER(MakeCommand_AutoAlignment, Rule::kPasses, (kJob, b, SIGNED, l),
              AutoRegistration(kJob, b, s, l)),
      WRAPPER(MakeCommand_Cleaning, Rule::kPasses, (kJob, b, SIGNED, l), Cleaning(kJob, b, s, l)),
  };
#undef WRAPPER
#undef NARROW
#undef SIGNED
}

Made run(const Call& call, Size size) {
  std::string buffer(4096, '\x5A');
  std::uint64_t length = kUnwritten;
  const std::int32_t status = call(buffer.data(), size, &length);
  return {status, length, buffer};
}

// Room for all, for all but one byte, and for none: document, length and rest of the buffer agree.
TEST(Wrappers, MakeWhatTheirBuilderMakes) {
  for (const Wrapper& w : list_wrappers()) {
    SCOPED_TRACE(w.name);
    const Made one = run(w.builder, 1);
    ASSERT_EQ(one.status, CLSS_COMMAND_BUFFER_TOO_SMALL);
    for (const Size size : {Size{1}, one.length - 1, one.length, Size{2000}}) {
      const Made expected = run(w.builder, size);
      const Made made = run(w.wrapper, size);
      const bool folded = w.rule == Rule::kFolds && expected.status != CLSS_COMMAND_OK;
      EXPECT_EQ(made.status, folded ? CLSS_COMMAND_BAD_ARGUMENT : expected.status);
      EXPECT_EQ(made.length, expected.length);
      EXPECT_EQ(made.document, expected.document);
    }
  }
}

TEST(Wrappers, StoreTheLengthByTheirOwnRule) {
  for (const Wrapper& w : list_wrappers()) {
    SCOPED_TRACE(w.name);
    std::string buffer(4096, '\x5A');
    EXPECT_EQ(w.wrapper(buffer.data(), buffer.size(), nullptr), CLSS_COMMAND_BAD_ARGUMENT);
    std::uint64_t length = kUnwritten;
    EXPECT_EQ(w.wrapper(nullptr, 4000, &length), CLSS_COMMAND_BAD_ARGUMENT);
    const bool stores = w.rule == Rule::kStores || w.rule == Rule::kNoQuery;
    EXPECT_EQ(length, stores ? 0 : kUnwritten);
  }
}

TEST(Wrappers, AnswerASizeQueryUnlessTheyRefuseIt) {
  for (const Wrapper& w : list_wrappers()) {
    SCOPED_TRACE(w.name);
    const bool refused = w.rule == Rule::kNoQuery || w.name == "GetSendDataPWGRasterCommand";
    char spare = 0;
    char* const buffer = w.rule == Rule::kPasses ? &spare : nullptr;
    std::uint64_t need = kUnwritten, length = kUnwritten;
    EXPECT_EQ(w.builder(buffer, 0, &need), CLSS_COMMAND_OK);
    EXPECT_EQ(w.wrapper(buffer, 0, &length), refused ? CLSS_COMMAND_BAD_ARGUMENT : CLSS_COMMAND_OK);
    EXPECT_EQ(length, refused ? kUnwritten : need);
  }
}

// A signed size keeps its sign: -1 is the largest size there is, and clears nothing.
TEST(Wrappers, WidenANegativeSizeWithItsSign) {
  for (const Wrapper& w : list_wrappers()) {
    if (w.name == "GetSendDataPWGRasterCommand") continue;
    SCOPED_TRACE(w.name);
    const Made fits = run(w.builder, 4000);
    const Made made = run(w.wrapper, ~Size{0});
    EXPECT_EQ(made.status, CLSS_COMMAND_OK);
    EXPECT_EQ(made.length, fits.length);
    EXPECT_EQ(made.document.substr(0, made.length), fits.document.substr(0, fits.length));
  }
  std::uint64_t length = kUnwritten;
  char buffer[4096];
  EXPECT_EQ(PXCL_GetSendDataPWGRasterCommand(kJob, 77, -1, buffer, &length),
            CLSS_COMMAND_BAD_ARGUMENT);
  EXPECT_EQ(length, kUnwritten);
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

TEST(Wrappers, FoldEveryFailureIntoOne) {
  char buffer[4096];
  std::uint64_t length = kUnwritten;
  const std::uint16_t broken[] = {2, 4, 12, 7, 1, 4};
  EXPECT_EQ(PXCL_GetSetConfigurationCommand(broken, kJob, 4096, nullptr, 0, buffer, &length),
            CLSS_COMMAND_BAD_ARGUMENT);
  EXPECT_EQ(PXCL_GetSetConfigurationCommand(nullptr, kJob, 4096, nullptr, 0, buffer, &length),
            CLSS_COMMAND_BAD_ARGUMENT);
  EXPECT_EQ(PXCL_GetSetPageConfigurationCommand("", 1, buffer, 4096, &length),
            CLSS_COMMAND_BAD_ARGUMENT);
  EXPECT_EQ(PXCL_GetSendDataPWGRasterCommand(kJob, 0, 4096, buffer, &length),
            CLSS_COMMAND_BAD_ARGUMENT);
  EXPECT_EQ(length, kUnwritten);
}

TEST(Wrappers, AreAllTested) {
  std::ifstream header(PXCL_COMMANDS_HEADER);
  const std::string text{std::istreambuf_iterator<char>(header), {}};
  const std::regex declaration(R"(PXCL_API int32_t PXCL_(\w+)\()");
  std::set<std::string> declared, tested;
  for (std::sregex_iterator i(text.begin(), text.end(), declaration), end; i != end; ++i) {
    declared.insert((*i)[1]);
  }
  for (const Wrapper& w : list_wrappers()) tested.insert(w.name);
  EXPECT_EQ(declared, tested);
}

}  // namespace
