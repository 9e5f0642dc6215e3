// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// What every reader of a reply stands on: all its keys asked for in one scan.

#pragma once

#include "keyed/status.hpp"
#include "util/types.hpp"
#include "xml/scan.hpp"

namespace pxcl::keyed {

// Scans `document` once for every key; kOk or kBadArgument.
inline i32 ask(std::string_view document, std::span<const xml::Key> keys,
               std::span<xml::Answer> answers) {
  return xml::scan(document, 0, keys, answers, nullptr) == kOk ? kOk : kBadArgument;
}

// The same for keys that `plan` was made of.
inline i32 ask(std::string_view document, const xml::Plan& plan, std::span<xml::Answer> answers,
               u64* stopPosition = nullptr, const xml::Reader* readers = nullptr) {
  return xml::scan(document, plan, answers, stopPosition, readers) == kOk ? kOk : kBadArgument;
}

// Keys, and their answers, whose number is known at run time only.
class KeyList {
 public:
  // `count` keys without a path; false when memory is short. To be called once.
  bool allocate(std::size_t count);

  KeyList() = default;
  KeyList(const KeyList&) = delete;
  KeyList& operator=(const KeyList&) = delete;
  ~KeyList() { xml::release(answers()); }

  std::span<xml::Key> keys() const { return {keys_.get(), count_}; }
  std::span<xml::Answer> answers() const { return {answers_.get(), count_}; }

 private:
  Owned<xml::Key> keys_;
  Owned<xml::Answer> answers_;
  std::size_t count_ = 0;
};

inline bool is_found(const xml::Answer& key) {
  return key.firstStatus == xml::kFound;
}
// Found, or there but empty in either form.
inline bool is_present(const xml::Answer& key) {
  return key.count != 0;
}
inline std::string_view text_of(std::string_view document, const xml::Answer& key) {
  return slice(document, key.firstOffset, key.firstLength);
}
inline std::string_view text_of(std::string_view document, const ClXmlValueRange& range) {
  return slice(document, range.offset, range.length);
}
// The text at a key; one without data when the key is not found.
inline std::string_view found_text(std::string_view document, const xml::Answer& key) {
  return is_found(key) ? text_of(document, key) : std::string_view();
}

}  // namespace pxcl::keyed
