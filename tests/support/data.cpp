// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "support.hpp"

namespace fs = std::filesystem;

namespace pxcl_test {

std::string read_data(const std::string& relativePath) {
  std::ifstream file(fs::path(PXCL_TEST_DATA) / relativePath, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << "tests/data/" << relativePath;
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> list_data(const std::string& folder) {
  std::vector<std::string> names;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(fs::path(PXCL_TEST_DATA) / folder, error)) {
    if (entry.is_regular_file()) names.push_back(folder + "/" + entry.path().filename().string());
  }
  EXPECT_FALSE(names.empty()) << "tests/data/" << folder;
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace pxcl_test
