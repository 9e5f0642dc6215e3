// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// A peer that finds values as pointer and length, and writes a new document around them.

#pragma once

#include "contender.hpp"
#include "readers.hpp"

namespace pxcl_bench {

template <typename Reader>
class PeerContender final : public Contender {
 public:
  explicit PeerContender(const Question& question)
      : question_(question),
        plan_(question.paths),
        output_(question.document.size() + 1024, '\0') {}

  void run() override {
    found_.clear();
    if (question_.job == Job::kEvery) {
      read([this](std::uint32_t, std::string_view value) { found_.push_back(value); });
      return;
    }
    found_.resize(question_.paths.size());
    read([this](std::uint32_t path, std::string_view value) {
      if (!found_[path].data()) found_[path] = value;
    });
    if (question_.job == Job::kReplace) splice();
  }
  std::vector<std::string> results() const override {
    if (question_.job == Job::kReplace) return {output_.substr(0, written_)};
    std::vector<std::string> results;
    for (std::string_view value : found_) {
      results.emplace_back(value.data() ? value : std::string_view("(absent)"));
    }
    return results;
  }

 private:
  template <typename Store>
  void read(const Store& store) {
    reader_.read(question_.document, plan_,
                 [&](const Step& step, std::string_view attribute, const auto& text_of) {
                   if (step.attribute != Step::kNobody) store(step.attribute, attribute);
                   if (step.text != Step::kNobody) store(step.text, text_of());
                 });
  }
  // The quickest way to the new document: between the values the bytes are copied as they stand.
  // The values are asked for in document order.
  void splice() {
    const std::string_view document = question_.document;
    char* out = output_.data();
    std::size_t copied = 0;
    const auto append = [&out](std::string_view text) {
      std::memcpy(out, text.data(), text.size());
      out += text.size();
    };
    for (std::size_t index = 0; index < found_.size(); ++index) {
      const auto offset = static_cast<std::size_t>(found_[index].data() - reader_.base(document));
      append(document.substr(copied, offset - copied));
      append(question_.values[index]);
      copied = offset + found_[index].size();
    }
    append(document.substr(copied));
    written_ = static_cast<std::size_t>(out - output_.data());
  }

  const Question& question_;
  const Plan plan_;
  Reader reader_;
  std::vector<std::string_view> found_;
  std::string output_;
  std::size_t written_ = 0;
};

}  // namespace pxcl_bench
