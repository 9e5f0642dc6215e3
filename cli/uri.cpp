// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "cli/uri.hpp"

#include "cli/failure.hpp"
#include "cli/text.hpp"

namespace pxcl::cli {

namespace {

// Takes the text up to the separator, and the separator, off the front.
std::string_view take(std::string_view& text, char separator) {
  const std::size_t end = text.find(separator);
  const std::string_view part = text.substr(0, end);
  text.remove_prefix(end == text.npos ? text.size() : end + 1);
  return part;
}

VirtualUri read_virtual(std::string_view rest) {
  VirtualUri uri;
  uri.profile = take(rest, '?');
  if (uri.profile.empty()) throw Failure{kUsage, "virtual: needs a profile, as in virtual:office."};
  while (!rest.empty()) {
    std::string_view value = take(rest, '&');
    const std::string_view key = take(value, '=');
    if (key == "output" && !value.empty()) {
      uri.output = value;
    } else if (key == "fault" && !value.empty()) {
      uri.faults.emplace_back(value);
    } else {
      throw Failure{kUsage, filled("A virtual printer takes output=FOLDER and fault=SENTENCE, not "
                                   "\"{}\".",
                                   printable(key))};
    }
  }
  return uri;
}

FileUri read_file(std::string_view rest) {
  if (rest.starts_with("///")) rest.remove_prefix(2);
  if (!rest.starts_with('/')) {
    throw Failure{kUsage, "file: needs the whole path of a device, as in file:/dev/usb/lp0."};
  }
  return {std::string(rest)};
}

}  // namespace

PrinterUri read_printer_uri(std::string_view uri) {
  if (uri.starts_with("http://") || uri.starts_with("https://")) return HttpUri{std::string(uri)};
  if (uri.starts_with("virtual:")) return read_virtual(uri.substr(8));
  if (uri.starts_with("file:")) return read_file(uri.substr(5));
  throw Failure{kUsage, filled("\"{}\" names no printer: virtual:PROFILE, http://HOST:PORT and "
                               "file:/dev/... do.",
                               printable(uri))};
}

}  // namespace pxcl::cli
