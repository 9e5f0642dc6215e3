// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The engine against other parsers at the same jobs. Before a case is timed, everybody's answers
// are compared.

#include "contender_peer.hpp"
#include "documents.hpp"
#include "harness.hpp"

namespace {

using namespace pxcl_bench;

struct Entry {
  std::string name;
  MakeContender make;
  bool answers = true;
};

struct Case {
  Task task;
  Question question;
};

Question replace_question() {
  Question question = {Job::kReplace, send_data_command(), {}, {}};
  for (const Replacement& replacement : send_data_values()) {
    question.paths.push_back(replacement.path);
    question.values.push_back(replacement.value);
  }
  return question;
}

Case make_case(const char* name, const char* title, Question question) {
  const std::size_t bytes = question.document.size();
  return {{name, title, bytes}, std::move(question)};
}

const std::vector<Case>& cases() {
  static const std::vector<Case> all = {
      make_case("status", "27 paths of a status reply",
                {Job::kFirst, status_reply(), status_paths(), {}}),
      make_case("job_list", "500 answers of one path",
                {Job::kEvery, job_list_reply(500), {job_list_path()}, {}}),
      make_case("capability", "500 paths of a capability reply",
                {Job::kFirst, capability_reply(100'000), capability_paths(), {}}),
      make_case("replace", "4 values of a command replaced", replace_question()),
  };
  return all;
}

std::vector<Entry> make_entries() {
  std::vector<Entry> entries = {{"pxcl", make_engine}};
  for_each_reader([&]<typename Reader>(const char* name, std::type_identity<Reader>) {
    entries.push_back({name, [](const Question& question) {
                         return std::make_unique<PeerContender<Reader>>(question);
                       }});
  });
  entries.push_back({"floor", make_floor, false});
  return entries;
}

// The first entry's answers are the measure of the others'.
void compare_answers(const Case& one, const std::vector<Entry>& entries) {
  std::vector<std::string> expected;
  for (const Entry& entry : entries) {
    if (!entry.answers) continue;
    const auto contender = entry.make(one.question);
    contender->run();
    contender->run();
    const std::vector<std::string> results = contender->results();
    if (expected.empty()) expected = results;
    if (results == expected) continue;
    std::size_t index = 0;
    while (index < expected.size() && index < results.size() && expected[index] == results[index])
      ++index;
    const auto shown = [index](const std::vector<std::string>& list) {
      return index < list.size() ? list[index] : std::string("(nothing)");
    };
    fail(one.task.name + "/" + entry.name + " differs from " + entries[0].name + " at answer " +
         std::to_string(index) + ": " + shown(results) + ", not " + shown(expected));
  }
}

}  // namespace

void pxcl_bench::add_rows() {
  const std::vector<Entry> entries = make_entries();
  for (const Case& one : cases()) {
    compare_answers(one, entries);
    for (const Entry& entry : entries) {
      add_row(one.task, entry.name, [&one, make = entry.make] {
        return [contender = std::shared_ptr<Contender>(make(one.question))] { contender->run(); };
      });
    }
  }
}
