// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "responses/printable.hpp"

#include <algorithm>

#include "responses/capability.hpp"

namespace pxcl::responses {
namespace {

constexpr u64 kTypesAt = kCheckKeys;
constexpr u64 kSizesAt = kTypesAt + kTypeKeys;

constexpr auto kKeys = [] {
  std::array<Key, kSizesAt + kSizeKeys> keys;
  const std::span all(keys);
  keyed::set_check_keys(all.first<kCheckKeys>(), 0);
  ask_for_types(all.subspan<kTypesAt, kTypeKeys>(), 1);
  ask_for_sizes(all.subspan<kSizesAt, kSizeKeys>(), 1 + kTypeKeys);
  return keys;
}();

// Walks as far as the indexed calls reach. What stands behind the wanted entry, damaged or not, does
// not matter.
template <typename Reply, typename Record>
i32 find_entry(std::string_view document, const Reply& reply, std::span<const ItemEntry> entries,
               u16 wanted, Record& record) {
  constexpr std::size_t kReachable = kLastIndex + 1;
  for (const ItemEntry& entry : entries.first(std::min(entries.size(), kReachable))) {
    const i32 status = reply.decode(document, entry, record);
    if (status != kOk || entry.value == wanted) return status;
  }
  return kBadArgument;
}

}  // namespace

i32 find_printable(std::string_view document, u16 type, u16 size, ClssMediaType& media,
                   ClssPaperSize& paper) {
  Answers<kKeys> answers;
  const std::span all = answers.all();
  Reader readers[std::size(kKeys)];
  const std::span attended(readers);
  TypeReply types;
  SizeReply sizes;
  if (!types.attend(attended.subspan<kTypesAt, kTypeKeys>()) ||
      !sizes.attend(attended.subspan<kSizesAt, kSizeKeys>())) {
    return kNoMemory;
  }
  i32 status = keyed::ask(document, xml::kPlanOf<kKeys>, all, nullptr, readers);
  if (status == kOk) status = check_reply(document, all.first<kCheckKeys>());
  if (status == kOk) status = types.read_list(document, all.subspan<kTypesAt, kTypeKeys>());
  if (status == kOk) status = sizes.read_list(document, all.subspan<kSizesAt, kSizeKeys>());
  if (status == kOk) status = find_entry(document, types, types.types.all(), type, media);
  if (status == kOk) status = find_entry(document, sizes, sizes.sizes.all(), size, paper);
  return status;
}

}  // namespace pxcl::responses
