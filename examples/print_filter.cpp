// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0
//
// A print filter: completes the settings of a job from the printer's capabilities, then writes the
// commands of the job in the order in which a printer takes them, one a line.
//   print_filter capability_reply.xml
#include <pxcl.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

namespace {

constexpr const char* kJob = "00000042";
constexpr uint16_t kPrint = 0, kLinux = 3, kA4 = 4, kStationery = 1, kDuplexLongSide = 3;

void require(int32_t status, const char* what) {
  if (status == 0) return;
  std::fprintf(stderr, "%s: %d\n", what, static_cast<int>(status));
  std::exit(1);
}

// Every builder ends in buffer, size and length; without a buffer it tells the size that it needs.
template <typename Build>
void send(const char* name, Build build) {
  uint64_t length = 0;
  require(build(nullptr, 0, &length), name);
  std::string command(static_cast<std::size_t>(length), '\0');
  require(build(command.data(), command.size(), &length), name);
  std::printf("%.*s\n", static_cast<int>(length), command.data());
}

// What the caller wishes for, as far as the printer allows it.
ClssPrintSettings settings_for(const std::string& capability) {
  ClssPrintSettings settings = {};
  settings.version = 2;
  require(CLSS_initPrintSettings(&settings), "settings");
  settings.paperSize = kA4;
  settings.paperType = kStationery;
  settings.duplexPrint = kDuplexLongSide;
  require(CLSS_AutoMakeOtherPrintSettings(0, capability.data(), capability.size(), &settings),
          "capability reply");
  return settings;
}

}  // namespace

int main(int argc, char** argv) {
  std::ifstream file(argc == 2 ? argv[1] : "");
  const std::string capability(std::istreambuf_iterator<char>(file), {});
  const ClssPrintSettings s = settings_for(capability);
  const uint32_t pageSize = 1234567;  // bytes of raster data

  send("StartJob", [](char* buffer, uint64_t size, uint64_t* length) {
    return CLSS_MakeCommand_StartJob3(kPrint, kLinux, "quarterly report", 2, kJob, "0", buffer,
                                      size, length);
  });
  send("SetJobConfiguration", [](char* buffer, uint64_t size, uint64_t* length) {
    return CLSS_MakeCommand_SetTime(kJob, "20260704123000", buffer, size, length);
  });
  send("SetConfiguration", [&](char* buffer, uint64_t size, uint64_t* length) {
    return CLSS_MakeCommand_SetConfigurationNS(
        {2, s.paperSize, s.paperType, s.borderless}, {s.colorMode, s.duplexPrint}, kJob,
        capability.data(), capability.size(), buffer, size, length);
  });
  send("SendData", [&](char* buffer, uint64_t size, uint64_t* length) {
    return CLSS_MakeCommand_SendDataPWGRaster(kJob, pageSize, buffer, size, length);
  });
  // The page's raster data follows here.
  send("EndJob", [](char* buffer, uint64_t size, uint64_t* length) {
    return CLSS_MakeCommand_EndJob(kPrint, kJob, buffer, size, length);
  });
}
