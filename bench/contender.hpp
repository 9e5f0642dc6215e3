// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// One job of the engine benchmark, and those who do it: the engine and its peers.

#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace pxcl_bench {

enum class Job {
  kFirst,    // the first value at each path
  kEvery,    // every value at the one path
  kReplace,  // the document with the value at each path replaced
};

// All of it is known before the clock starts. The document's buffer ends in a zero, for the parsers
// that need one.
struct Question {
  Job job = Job::kFirst;
  std::string document;
  std::vector<std::string> paths;
  std::vector<std::string> values;  // kReplace: the new text at each path
};

class Contender {
 public:
  virtual ~Contender() = default;
  // The timed part: from the document to pointer and length of every value, or to the new text.
  virtual void run() = 0;
  // What the last run found, for the comparison before the clock starts: a value each, attribute
  // values without quotes, "(absent)" for a path without one.
  virtual std::vector<std::string> results() const = 0;
};

// The question outlives the contender; whatever can be prepared once is prepared here.
using MakeContender = std::function<std::unique_ptr<Contender>(const Question& question)>;

std::unique_ptr<Contender> make_engine(const Question& question);
// Visits every "<", ">" and quote and answers nothing: what reading alone takes.
std::unique_ptr<Contender> make_floor(const Question& question);

}  // namespace pxcl_bench
