// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The letter code in both directions, and the tagged file. The first byte of the input is the size
// of the output, or the length of the tag; the rest is data, text or file. All blocks are exact.

#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "pxcl.h"
#include "target.hpp"

using pxcl::fuzz::require;

namespace {

std::unique_ptr<char[]> exact(std::string_view text) {
  std::unique_ptr<char[]> block(new char[text.size()]);
  std::memcpy(block.get(), text.data(), text.size());
  return block;
}

uint8_t* bytes(const std::unique_ptr<char[]>& block) {
  return reinterpret_cast<uint8_t*>(block.get());
}

std::unique_ptr<char[]> encode(const std::unique_ptr<char[]>& data, size_t size) {
  const size_t length = 2 * size + 9;
  std::unique_ptr<char[]> text(new char[length]);
  require(PXCL_EncodeToString(bytes(data), size, text.get(), length - 1) == -1);
  require(PXCL_EncodeToString(bytes(data), size, text.get(), length) ==
          static_cast<int32_t>(length));
  return text;
}

void round_trip(std::string_view input) {
  const auto data = exact(input);
  const auto text = encode(data, input.size());
  const std::unique_ptr<char[]> back(new char[input.size()]);
  require(PXCL_DecodeFromString(text.get(), 2 * input.size() + 9, bytes(back), input.size()) ==
          static_cast<int32_t>(input.size()));
  require(std::memcmp(data.get(), back.get(), input.size()) == 0);
}

// What decodes is what its bytes encode to, but for the checksum, whose letters may be any.
void decode(std::string_view input, size_t room) {
  const auto text = exact(input);
  const std::unique_ptr<char[]> output(new char[room]);
  const int32_t status = PXCL_DecodeFromString(text.get(), input.size(), bytes(output), room);
  if (status < 0) return;
  const auto count = static_cast<size_t>(status);
  require(count <= room && 2 * count + 9 <= input.size());
  const auto again = encode(output, count);
  require(std::memcmp(again.get(), text.get(), 2 * count + 1) == 0);
}

void look_up(std::string_view input, size_t tagLength) {
  const std::string tag(input.substr(0, tagLength));
  const std::string_view content = input.substr(tag.size());
  static const int file = memfd_create("tagged", 0);
  static const std::string path = "/proc/self/fd/" + std::to_string(file);
  require(ftruncate(file, 0) == 0);
  require(pwrite(file, content.data(), content.size(), 0) == static_cast<ssize_t>(content.size()));
  for (const int32_t decoded : {0, 1}) {
    char* result = nullptr;
    const int32_t status =
        PXCL_GetStringWithTagFromFile(path.c_str(), tag.c_str(), decoded, &result);
    require((status < 0) == (result == nullptr));
    require(status < 0 || (static_cast<size_t>(status) < content.size() && result[status] == 0));
    free(result);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const std::string_view input(reinterpret_cast<const char*>(data) + 1, size - 1);
  round_trip(input);
  decode(input, data[0]);
  decode(input, input.size());
  look_up(input, data[0] % 160);
  return 0;
}
