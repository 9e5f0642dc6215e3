// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The values at a list of paths, in the order of the document, by whichever peer.

#pragma once

#include <memory>

#include "readers.hpp"

namespace pxcl_bench {

struct Value {
  std::uint32_t path;
  std::string_view text;
  std::string_view key;  // the attribute's value, when the path is keyed
};
using Values = std::vector<Value>;

class Finder {
 public:
  virtual ~Finder() = default;
  virtual const Values& read(std::string_view document) = 0;
};

// A path from number `keyed` on that ends in an attribute asks for the element's text; the
// attribute is the value's key.
constexpr std::uint32_t kNoneKeyed = ~0U;

template <typename Reader>
class FinderBy final : public Finder {
 public:
  FinderBy(const std::vector<std::string>& paths, std::uint32_t keyed)
      : plan_(paths), keyed_(keyed) {}

  const Values& read(std::string_view document) override {
    values_.clear();
    reader_.read(document, plan_,
                 [this](const Step& step, std::string_view key, const auto& text_of) {
                   std::uint32_t path = step.text;
                   if (step.attribute != Step::kNobody && step.attribute >= keyed_) {
                     path = step.attribute;
                   } else if (step.attribute != Step::kNobody) {
                     values_.push_back({step.attribute, key, {}});
                   }
                   if (path != Step::kNobody) values_.push_back({path, text_of(), key});
                 });
    return values_;
  }

 private:
  Plan plan_;
  std::uint32_t keyed_;
  Reader reader_;
  Values values_;
};

// visit(name, finder) for each peer.
template <typename Visit>
void for_each_finder(const std::vector<std::string>& paths, std::uint32_t keyed,
                     const Visit& visit) {
  for_each_reader([&]<typename Reader>(const char* name, std::type_identity<Reader>) {
    visit(name, std::make_shared<FinderBy<Reader>>(paths, keyed));
  });
}

}  // namespace pxcl_bench
