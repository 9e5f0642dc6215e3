// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "printer/faults.hpp"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <stdexcept>

#include "printer/command.hpp"

namespace pxcl::printer {

namespace {

struct Form {
  FaultKind kind;
  std::string_view words;  // those in capitals stand for others
};

constexpr Form kForms[] = {
    {FaultKind::kTroubleAtPage, "TROUBLE at page N"},
    {FaultKind::kTroubleAfterSends, "TROUBLE after N sends"},
    {FaultKind::kNg, "ng DETAIL to OPERATION"},
    {FaultKind::kWrongOperation, "wrong-operation to OPERATION"},
    {FaultKind::kCut, "cut reply to OPERATION"},
    {FaultKind::kGarbage, "garbage to OPERATION"},
    {FaultKind::kHuge, "huge reply to OPERATION"},
    {FaultKind::kDrip, "drip reply to OPERATION every N ms"},
    {FaultKind::kNoAnswer, "no-answer to OPERATION"},
    {FaultKind::kClose, "close on OPERATION"},
};

// Those that can be scripted; the others come of themselves.
constexpr Trouble kScripted[] = {Trouble::kPaperOut, Trouble::kCoverOpen, Trouble::kJam,
                                 Trouble::kInkOut};

constexpr std::string_view kAny = "any";

using Words = std::vector<std::string_view>;

Words words_of(std::string_view text) {
  Words words;
  for (std::size_t at = text.find_first_not_of(' '); at < text.size();
       at = text.find_first_not_of(' ', at)) {
    const std::size_t end = std::min(text.find(' ', at), text.size());
    words.push_back(text.substr(at, end - at));
    at = end;
  }
  return words;
}

bool read_number(std::string_view word, unsigned& number) {
  const char* const end = word.data() + word.size();
  const auto result = std::from_chars(word.data(), end, number);
  return result.ec == std::errc{} && result.ptr == end && number > 0;
}

bool read_trouble(std::string_view word, Trouble& trouble) {
  const auto row = std::ranges::find(kScripted, word, [](Trouble t) { return row_of(t).name; });
  if (row == std::end(kScripted)) return false;
  trouble = *row;
  return true;
}

bool read_detail(std::string_view word, std::string_view& detail) {
  const auto row = std::ranges::find(kRefusals, word);
  if (row == kRefusals.end()) return false;
  detail = *row;
  return true;
}

bool read_operation(std::string_view word, std::string& operation) {
  const auto names = operation_names();
  if (word != kAny && std::ranges::find(names, word) == names.end()) return false;
  operation = word;
  return true;
}

// Whether `word` is what the form has there; keeps what it stands for.
bool read_word(std::string_view form, std::string_view word, Fault& fault) {
  if (form == "N") return read_number(word, fault.number);
  if (form == "TROUBLE") return read_trouble(word, fault.trouble);
  if (form == "DETAIL") return read_detail(word, fault.detail);
  if (form == "OPERATION") return read_operation(word, fault.operation);
  return form == word;
}

// " once" and " N times" at the end.
void take_times(Words& words, Fault& fault) {
  if (!words.empty() && words.back() == "once") {
    fault.times = 1;
    words.pop_back();
  } else if (words.size() > 2 && words.back() == "times") {
    unsigned times = 0;
    if (!read_number(words[words.size() - 2], times)) return;
    fault.times = times;
    words.resize(words.size() - 2);
  }
}

bool matches(const Words& words, const Form& form, Fault& fault) {
  const Words pattern = words_of(form.words);
  fault.kind = form.kind;
  return std::ranges::equal(pattern, words, [&](std::string_view expected, std::string_view word) {
    return read_word(expected, word, fault);
  });
}

bool is_dialogue(FaultKind kind) {
  return kind != FaultKind::kTroubleAtPage && kind != FaultKind::kTroubleAfterSends;
}

bool use_up(Fault& fault) {
  if (!fault.times) return true;
  if (*fault.times == 0) return false;
  --*fault.times;
  return true;
}

}  // namespace

Fault read_fault(std::string_view sentence) {
  Words words = words_of(sentence);
  Fault frame;
  take_times(words, frame);
  for (const Form& form : kForms) {
    Fault fault = frame;
    if (matches(words, form, fault)) return fault;
  }
  std::string forms;
  for (const auto form : fault_forms()) forms += (forms.empty() ? "" : "; ") + std::string(form);
  throw std::invalid_argument("The fault \"" + std::string(sentence) +
                              "\" can't be read. There are: " + forms + ".");
}

std::vector<std::string_view> fault_forms() {
  std::vector<std::string_view> forms;
  for (const Form& form : kForms) forms.push_back(form.words);
  return forms;
}

Faults::Faults(const std::vector<std::string>& sentences) {
  for (const std::string& sentence : sentences) faults_.push_back(read_fault(sentence));
}

std::optional<Fault> Faults::take(std::string_view name, std::string_view vendor) {
  for (Fault& fault : faults_) {
    const bool is_meant = fault.operation == kAny || fault.operation == name ||
                          (!vendor.empty() && fault.operation == vendor);
    if (is_dialogue(fault.kind) && is_meant && use_up(fault)) return fault;
  }
  return std::nullopt;
}

std::optional<Trouble> Faults::take_trouble(FaultKind kind, unsigned number) {
  for (Fault& fault : faults_) {
    if (fault.kind == kind && fault.number == number && use_up(fault)) return fault.trouble;
  }
  return std::nullopt;
}

std::optional<Trouble> Faults::take_at_page(unsigned page) {
  return take_trouble(FaultKind::kTroubleAtPage, page);
}

std::optional<Trouble> Faults::take_after_sends(unsigned sends) {
  return take_trouble(FaultKind::kTroubleAfterSends, sends);
}

}  // namespace pxcl::printer
