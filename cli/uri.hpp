// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace pxcl::cli {

/// "virtual:PROFILE[?output=FOLDER][&fault=SENTENCE]..."
struct VirtualUri {
  std::string profile;
  std::string output = "pxcl-pages";
  std::vector<std::string> faults;
};

/// "http://HOST[:PORT][/PATH]", or https.
struct HttpUri {
  std::string url;
};

/// "file:/dev/...", also "file:///dev/...".
struct FileUri {
  std::string path;
};

using PrinterUri = std::variant<VirtualUri, HttpUri, FileUri>;

/// Throws Failure (kUsage) with a sentence when it is none of these.
PrinterUri read_printer_uri(std::string_view uri);

}  // namespace pxcl::cli
