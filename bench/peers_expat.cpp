// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// expat with its three handlers, one parser for all calls. Text is known by its place in the
// document; attribute values are gone after their tag and have to be copied.

#include <expat.h>

#include "peers.hpp"

namespace pxcl_bench {
namespace {

class Expat final : public Peer {
 public:
  explicit Expat(const Question& question)
      : Peer(question),
        parser_(XML_ParserCreate("UTF-8")),
        copies_(question.document.size(), '\0') {}
  ~Expat() override { XML_ParserFree(parser_); }

 private:
  void find() override {
    XML_ParserReset(parser_, "UTF-8");
    XML_SetUserData(parser_, this);
    XML_SetElementHandler(parser_, start, end);
    XML_SetCharacterDataHandler(parser_, text);
    levels_.assign(1, &plan_.root());
    unwanted_ = 0;
    copied_ = 0;
    wanted_ = Step::kNobody;
    XML_Parse(parser_, question_.document.data(), static_cast<int>(question_.document.size()), 1);
  }
  const char* base() const override { return question_.document.data(); }

  static void XMLCALL start(void* self, const char* name, const char** attributes) {
    static_cast<Expat*>(self)->open(name, attributes);
  }
  static void XMLCALL end(void* self, const char*) { static_cast<Expat*>(self)->close(); }
  static void XMLCALL text(void* self, const char*, int length) {
    auto* expat = static_cast<Expat*>(self);
    if (expat->wanted_ != Step::kNobody) expat->take(static_cast<std::size_t>(length));
  }

  void open(const char* name, const char** attributes) {
    finish();
    if (unwanted_ > 0 || !levels_.back()) {
      ++unwanted_;
      return;
    }
    std::string_view value;
    const Step* step = step_for(
        *levels_.back(), name,
        [attributes](const std::string& wanted) -> std::string_view {
          for (const char** pair = attributes; *pair; pair += 2) {
            if (wanted == *pair) return pair[1];
          }
          return {};
        },
        value);
    if (!step) {
      ++unwanted_;
      return;
    }
    if (step->attribute != Step::kNobody) store(step->attribute, copy(value));
    wanted_ = step->text;
    text_ = {};
    levels_.push_back(step->below);
  }
  void close() {
    finish();
    if (unwanted_ > 0) {
      --unwanted_;
    } else {
      levels_.pop_back();
    }
  }
  // Text may come in pieces.
  void take(std::size_t length) {
    if (text_.data()) {
      text_ = {text_.data(), text_.size() + length};
    } else {
      text_ = {question_.document.data() + XML_GetCurrentByteIndex(parser_), length};
    }
  }
  void finish() {
    if (wanted_ == Step::kNobody) return;
    store(wanted_, text_);
    wanted_ = Step::kNobody;
  }
  std::string_view copy(std::string_view value) {
    char* place = copies_.data() + copied_;
    std::memcpy(place, value.data(), value.size());
    copied_ += value.size();
    return {place, value.size()};
  }

  XML_Parser parser_;
  std::vector<const Level*> levels_;  // of the wanted elements that are open
  std::size_t unwanted_ = 0;          // open elements below them
  std::uint32_t wanted_ = Step::kNobody;
  std::string_view text_;
  std::string copies_;
  std::size_t copied_ = 0;
};

}  // namespace

std::unique_ptr<Contender> make_expat(const Question& question) {
  return std::make_unique<Expat>(question);
}

}  // namespace pxcl_bench
