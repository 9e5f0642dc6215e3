// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace pxcl::client {

/// The bytes of the character that a text begins with; not `good` when they are none. A broken sequence ends before the
/// first byte that can't belong to it. The text is not empty.
struct Sequence {
  std::size_t length;
  bool good;
};
Sequence first_sequence(std::string_view text);

/// One line of good UTF-8: broken sequences become U+FFFD each, control characters and line ends a blank each.
std::string clean_line(std::string_view text);

/// The longest beginning of a text in good UTF-8 that takes at most `limit` bytes and ends with a whole character.
std::string_view cut(std::string_view text, std::size_t limit);

/// The description of a job, as it goes into a CDATA section: "ID title", clean, without "]]>", at most
/// CLSS_JOB_DESCRIPTION_MAX bytes. Printers and the library find a job by the ID at its start.
std::string job_description(std::string_view jobID, std::string_view title);

/// Any text as the content of an element: clean, with "&", "<" and ">" escaped, at most `limit` bytes of whole characters
/// and escapes.
std::string element_text(std::string_view text, std::size_t limit);

/// Whether a text can stand for a job: 8 letters, digits or "-._".
bool is_job_id(std::string_view text);

}  // namespace pxcl::client
