// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The engine through its C interface, with nothing prepared but the request records.

#include "clxml.h"
#include "contender.hpp"

namespace pxcl_bench {
namespace {

std::string text_at(const Question& question, uint64_t offset, uint64_t length) {
  std::string text = question.document.substr(offset, length);
  const bool quoted = text.size() >= 2 && text.front() == '"';
  return quoted ? text.substr(1, text.size() - 2) : text;
}

ClXmlRequest request_for(const Question& question, void* parameters, std::size_t count) {
  ClXmlRequest request = {};
  request.document = question.document.data();
  request.documentLength = question.document.size();
  request.parameters = parameters;
  request.parameterCount = static_cast<uint32_t>(count);
  return request;
}

class FirstValues final : public Contender {
 public:
  explicit FirstValues(const Question& question)
      : question_(question), parameters_(question.paths.size()) {
    for (std::size_t index = 0; index < parameters_.size(); ++index) {
      parameters_[index].path = question.paths[index].data();
      parameters_[index].pathLength = question.paths[index].size();
    }
    request_ = request_for(question, parameters_.data(), parameters_.size());
  }
  void run() override { result_ = ClXmlRequestParameter(&request_); }
  std::vector<std::string> results() const override {
    if (result_ != 0) return {"failed: " + std::to_string(result_)};
    std::vector<std::string> results;
    for (const ClXmlParameter& parameter : parameters_) {
      results.push_back(parameter.status == 1
                            ? text_at(question_, parameter.valueOffset, parameter.valueLength)
                            : "(absent)");
    }
    return results;
  }

 private:
  const Question& question_;
  std::vector<ClXmlParameter> parameters_;
  ClXmlRequest request_ = {};
  int32_t result_ = 0;
};

class EveryValue final : public Contender {
 public:
  explicit EveryValue(const Question& question)
      : question_(question), request_(request_for(question, &parameter_, 1)) {
    parameter_.path = question.paths[0].data();
    parameter_.pathLength = question.paths[0].size();
  }
  ~EveryValue() override { release(); }
  void run() override {
    release();
    result_ = ClXmlRequestParameterList(&request_);
  }
  std::vector<std::string> results() const override {
    if (result_ != 0) return {"failed: " + std::to_string(result_)};
    std::vector<std::string> results;
    for (uint32_t index = 0; parameter_.ranges && index < parameter_.rangeCount; ++index) {
      const ClXmlValueRange& range = parameter_.ranges[index];
      results.push_back(text_at(question_, range.offset, range.length));
    }
    return results;
  }

 private:
  void release() {
    ClXmlRequestParameterListFree(&request_);
    parameter_.ranges = nullptr;
  }

  const Question& question_;
  ClXmlListParameter parameter_ = {};
  ClXmlRequest request_;
  int32_t result_ = 0;
};

class Replace final : public Contender {
 public:
  explicit Replace(const Question& question)
      : parameters_(question.paths.size()), output_(question.document.size() + 1024, '\0') {
    for (std::size_t index = 0; index < parameters_.size(); ++index) {
      parameters_[index].path = question.paths[index].data();
      parameters_[index].pathLength = question.paths[index].size();
      parameters_[index].newValue = question.values[index].data();
      parameters_[index].newValueLength = question.values[index].size();
    }
    request_ = request_for(question, parameters_.data(), parameters_.size());
    request_.output = output_.data();
  }
  void run() override {
    request_.outputSize = output_.size();
    result_ = ClXmlReplaceParameter(&request_);
  }
  std::vector<std::string> results() const override {
    if (result_ != 0) return {"failed: " + std::to_string(result_)};
    return {output_.substr(0, request_.outputSize)};
  }

 private:
  std::vector<ClXmlParameter> parameters_;
  std::string output_;
  ClXmlRequest request_ = {};
  int32_t result_ = 0;
};

}  // namespace

std::unique_ptr<Contender> make_engine(const Question& question) {
  switch (question.job) {
    case Job::kFirst:
      return std::make_unique<FirstValues>(question);
    case Job::kEvery:
      return std::make_unique<EveryValue>(question);
    case Job::kReplace:
      return std::make_unique<Replace>(question);
  }
  return nullptr;
}

}  // namespace pxcl_bench
