// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <string>
#include <string_view>

#include "cli/command.hpp"
#include "cli/value.hpp"

namespace pxcl::cli {

/// The value as JSON, on one line or indented, without a line feed at its end. It is ASCII, so that no text can do
/// anything to a terminal; bytes that are no UTF-8 become U+FFFD.
std::string to_json(const Value& value, bool on_one_line = false);

/// The value for a person: aligned lines and tables, every text printable.
std::string to_tables(const Value& value);

/// Writes to standard output. Throws Failure (kOutputFailed) when that fails.
void print(std::string_view text);

/// Sees to it that all has been written; throws as print does.
void finish_output();

/// Prints the value, as JSON when --json was given.
void show(const Arguments& arguments, const Value& value);

/// One sentence on standard error.
void complain(std::string_view sentence);

}  // namespace pxcl::cli
