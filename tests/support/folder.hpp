// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <stdlib.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>

namespace pxcl {

/// A new folder that is gone with it.
class Folder {
 public:
  Folder() : path_((std::filesystem::temp_directory_path() / "pxcl-XXXXXX").string()) {
    if (::mkdtemp(path_.data()) == nullptr) throw std::system_error(errno, std::generic_category());
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() { std::filesystem::remove_all(path_); }

  [[nodiscard]] std::filesystem::path path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace pxcl
