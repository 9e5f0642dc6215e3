// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The documents that the benchmarks read and rewrite, as printers and the library write them.

#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace pxcl_bench {

// A print status reply of 4 KB: 7 input bins, 6 inks, 3 status details, one job; and what a full
// decode of it asks for.
std::string status_reply();
std::vector<std::string> status_paths();

// A reply that lists `jobs` jobs; every job is an answer of the one path.
std::string job_list_reply(std::size_t jobs);
std::string job_list_path();

// A capability reply of at least `size` bytes: every paper size and media type with its own
// elements, spread over the three namespaces, then options up to the size; and the 500 paths of
// a decode, a third of them absent.
std::string capability_reply(std::size_t size);
std::vector<std::string> capability_paths();

// The command before a block of raw data, with the four values that change from call to call.
struct Replacement {
  std::string path;
  std::string value;
};
std::string send_data_command();
std::vector<Replacement> send_data_values();

}  // namespace pxcl_bench
