// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "keyed/items.hpp"

#include <algorithm>
#include <cstring>
#include <limits>

#include "keyed/paths.hpp"
#include "keyed/values.hpp"

namespace pxcl::keyed {
namespace {

constexpr u64 kPathKeyLimit = 2048;  // with its terminating zero, by the template's bound
constexpr i16 kNoItemCode = -1;
constexpr u32 kFillerNumber = 0;
constexpr u64 kLongestText = std::numeric_limits<u16>::max() - 1;  // ItemText::size is 16 bits

// ---- Values of a text

// The texts between the commas of a list, the empty ones left out.
class Runs {
 public:
  explicit Runs(std::string_view text) : rest_(text) {}

  // The next run; one without bytes at the end.
  std::string_view next() {
    while (!rest_.empty()) {
      const void* comma = std::memchr(rest_.data(), ',', rest_.size());
      const std::size_t size =
          comma == nullptr
              ? rest_.size()
              : static_cast<std::size_t>(static_cast<const char*>(comma) - rest_.data());
      const std::string_view run = slice(rest_, 0, size);
      rest_ = from(rest_, std::min(size + 1, rest_.size()));
      if (!run.empty()) return run;
    }
    return {};
  }

 private:
  std::string_view rest_;
};

bool is_blank(std::string_view run) {
  return std::all_of(run.begin(), run.end(), [](char byte) { return byte == ' '; });
}

template <typename Take>
void for_each_value(std::string_view text, Take take) {
  Runs runs(text);
  for (std::string_view run = runs.next(); !run.empty(); run = runs.next()) {
    if (!is_blank(run)) take(run);
  }
}

u64 count_values(const NameSpaceTexts& texts) {
  u64 count = 0;
  for (const std::string_view text : texts) {
    for_each_value(text, [&](std::string_view) { ++count; });
  }
  return count;
}

ItemEntry decode_value(std::string_view run, const ItemSet& item, u16 nameSpace,
                       Keywords keywords) {
  if (item.dictionary == nullptr) return {read_number(run), nameSpace, kNoItemCode};
  const DicMatch match = look_up(rows_of(item.dictionary, item.rowCount), run, keywords);
  return {match.index, nameSpace, static_cast<i16>(match.code)};
}

bool is_unknown(const ItemEntry& entry, const ItemSet& item) {
  return item.dictionary != nullptr && entry.value == kUnknownIndex;
}

// ---- Orders

// By code, then by namespace and by value. The two readers place entries without code, which is
// negative, differently, and callers rely on both.
constexpr u32 kRankAt = 48;
u64 with_rank(u16 rank, const ItemEntry& entry) {
  return u64{rank} << kRankAt | u64{entry.nameSpace} << 32 | entry.value;
}
u64 without_code_first(const ItemEntry& entry) {
  return with_rank(static_cast<u16>(entry.code ^ std::numeric_limits<i16>::min()), entry);
}
u64 without_code_last(const ItemEntry& entry) {
  return with_rank(static_cast<u16>(entry.code < 0 ? -1 : entry.code), entry);
}

// Entries whose codes are in order already stay in the order of the text; that is so for all
// numbers.
template <u64 (*OrderOf)(const ItemEntry&)>
void order(std::span<ItemEntry> entries) {
  const auto goes_first = [](const ItemEntry& a, const ItemEntry& b) {
    return OrderOf(a) >> kRankAt < OrderOf(b) >> kRankAt;
  };
  if (std::is_sorted(entries.begin(), entries.end(), goes_first)) return;
  std::sort(entries.begin(), entries.end(),
            [](const ItemEntry& a, const ItemEntry& b) { return OrderOf(a) < OrderOf(b); });
}

// ---- One item under all namespaces

i32 decode_presence(std::span<const xml::Answer, kNameSpaceCount> keys, ItemSet* item) {
  Owned<ItemEntry> entries = Owned<ItemEntry>::allocate(kNameSpaceCount);
  if (!entries) return kNoMemory;
  for (u16 k = 0; k < kNameSpaceCount; ++k) {
    entries[k] = {is_present(keys[k]) ? kPresent : kAbsent, k, kNoItemCode};
  }
  item->entries = entries.release();
  item->entryCount = kNameSpaceCount;
  return kOk;
}

i32 decode_item(std::string_view document, std::span<const xml::Answer, kNameSpaceCount> keys,
                ItemSet* item) {
  if (item->mode == kPresenceMode) return decode_presence(keys, item);
  return decode_list(found_texts(document, keys), item);
}

// ---- Keys

using ItemArguments = std::array<const char*, 2>;
using ByAttributeArguments = std::array<const char*, 3>;

ItemArguments item_arguments(const ItemSet& item, u16 nameSpace) {
  return {glb_NameSpacePrefix[nameSpace], item.itemName};
}

// Those of all keys, or answers, that are one item's.
template <typename T>
std::span<T, kNameSpaceCount> of_item(std::span<T> all, std::size_t index) {
  return std::span<T, kNameSpaceCount>(all.data() + index * kNameSpaceCount, kNameSpaceCount);
}

// Sets the keys of all items up to the first whose keys cannot be formed; the number of those set.
std::size_t set_keys_of_items(std::span<const ItemSet> items, std::span<xml::Key> keys,
                              char* room) {
  for (std::size_t i = 0; i < items.size(); ++i) {
    const u32 group = static_cast<u32>(i) + 1;
    if (!set_item_keys(items[i], of_item(keys, i), group, &room)) return i;
  }
  return items.size();
}

// ---- Items by an attribute

void forget_answers(std::span<ItemSet> items) {
  for (ItemSet& item : items) {
    item.entries = nullptr;
    item.auxiliary = nullptr;
    item.entryCount = 0;
  }
}

// Everything is allocated before anything is read.
bool prepare(ItemSet* item, u32 mode) {
  item->entryCount = item->rowCount == 0 ? 0 : item->rowCount - 1;
  if (mode == kTextMode) {
    item->auxiliary = Owned<ItemText>::allocate(1).release();
    return item->auxiliary != nullptr;
  }
  if (item->entryCount == 0) return true;
  item->entries = Owned<ItemEntry>::allocate(item->entryCount).release();
  return item->entries != nullptr;
}

i32 copy_text(std::string_view document, const xml::Answer& key, ItemText* copy) {
  if (!is_present(key)) return kOk;
  const std::string_view text = found_text(document, key);
  if (text.size() > kLongestText) return kBadArgument;
  copy->text = Owned<char>::allocate(text.size() + 1).release();
  if (copy->text == nullptr) return kNoMemory;
  if (!text.empty()) std::memcpy(copy->text, text.data(), text.size());
  copy->size = static_cast<u16>(text.size() + 1);
  return kOk;
}

i32 decode_by_attribute(std::string_view document, const xml::Answer& key, u16 nameSpace, u32 mode,
                        ItemSet* item) {
  if (mode == kTextMode) return copy_text(document, key, item->auxiliary);
  return decode_into(found_text(document, key), *item, nameSpace,
                     {item->entries, item->entryCount});
}

// As set_keys_of_items, with one key an item.
std::size_t set_keys_by_attribute(std::span<const ItemSet> items, std::span<xml::Key> keys,
                                  const char* attributeValue, u16 nameSpace, char* room) {
  for (std::size_t i = 0; i < items.size(); ++i) {
    const ByAttributeArguments arguments = {glb_NameSpacePrefix[nameSpace], items[i].itemName,
                                            attributeValue};
    keys[i].path = form_path_key(items[i].pathTemplate, arguments, &room);
    keys[i].group = static_cast<u32>(i);
    if (keys[i].path.empty()) return i;
  }
  return items.size();
}

u64 bound_of_keys_by_attribute(std::span<const ItemSet> items, const char* attributeValue,
                               u16 nameSpace) {
  u64 bound = 1;  // never an empty block
  for (const ItemSet& item : items) {
    const ByAttributeArguments arguments = {glb_NameSpacePrefix[nameSpace], item.itemName,
                                            attributeValue};
    bound += bound_of_path_key(item.pathTemplate, arguments);
  }
  return bound;
}

i32 read_by_attribute(std::string_view document, std::span<ItemSet> items,
                      const char* attributeValue, u16 nameSpace, u32 mode) {
  const u64 bound = bound_of_keys_by_attribute(items, attributeValue, nameSpace);
  const Owned<char> room = Owned<char>::allocate(bound);
  KeyList keys;
  if (!room || !keys.allocate(items.size())) return kNoMemory;
  const std::size_t formed =
      set_keys_by_attribute(items, keys.keys(), attributeValue, nameSpace, room.get());
  if (formed != 0 && ask(document, keys.keys().first(formed), keys.answers()) != kOk) {
    return kBadArgument;
  }
  for (std::size_t i = 0; i < formed; ++i) {
    const i32 status = decode_by_attribute(document, keys.answers()[i], nameSpace, mode, &items[i]);
    if (status != kOk) return status;
  }
  return formed == items.size() ? kOk : kInvalid;
}

// Reads items, after `checkKeys` keys that check the reply; 0 for none.
i32 read_checked(std::string_view document, u16 operation, std::size_t checkKeys,
                 std::span<ItemSet> items) {
  u64 bound = 1;  // never an empty block
  for (const ItemSet& item : items) bound += bound_of_item_keys(item);
  const Owned<char> room = Owned<char>::allocate(bound);
  KeyList keys;
  if (!room || !keys.allocate(checkKeys + items.size() * kNameSpaceCount)) return kNoMemory;
  const std::span<xml::Key> all = keys.keys();
  if (checkKeys != 0) set_check_keys(all.first<kCheckKeys>(), 0);
  const std::size_t formed = set_keys_of_items(items, all.subspan(checkKeys), room.get());
  const std::size_t asked = checkKeys + formed * kNameSpaceCount;
  const std::span<xml::Answer> answers = keys.answers();
  if (asked != 0 && ask(document, all.first(asked), answers) != kOk) return kBadArgument;

  i32 status = kOk;
  if (checkKeys != 0) {
    status = check_operation_and_response(document, answers.first<kCheckKeys>(), operation);
  }
  for (std::size_t i = 0; i < formed && status == kOk; ++i) {
    status = decode_item(document, of_item(answers.subspan(checkKeys), i), &items[i]);
  }
  return status == kOk && formed != items.size() ? kInvalid : status;
}

bool is_document(std::string_view document) {
  return document.data() != nullptr && !document.empty();
}

bool is_operation(u16 operation) {
  return operation != kIndexNotSet && operation < CLSS_DICNUM_OPERATION;
}

std::span<ItemSet> items_of(ItemSet* items, i32 count) {
  if (items == nullptr || count < 1) return {};
  return {items, static_cast<std::size_t>(count)};
}

bool lists(const ItemSet& item, u32 wanted) {
  return std::any_of(item.entries, item.entries + item.entryCount,
                     [wanted](const ItemEntry& entry) { return entry.value == wanted; });
}

}  // namespace

i32 check_operation_and_response(std::string_view document,
                                 std::span<const xml::Answer, kCheckKeys> keys, u16 operation) {
  if (!is_found(keys[0])) return kWrongOperation;
  const auto operations = rows_of(glb_clssdicOperationTbl, CLSS_DICNUM_OPERATION);
  const std::string_view answered = text_of(document, keys[0]);
  if (look_up(operations, answered, Keywords::kValues).index != operation) return kWrongOperation;
  const auto response = std::find_if(keys.begin() + 1, keys.end(), is_found);
  if (response == keys.end()) return kNotOk;
  const auto responses = rows_of(glb_clssdicResponseTbl, CLSS_DICNUM_RESPONSE);
  const std::string_view result = text_of(document, *response);
  return look_up(responses, result, Keywords::kValues).index == kResponseOk ? kOk : kNotOk;
}

u64 bound_of_path_key(const char* pathTemplate, Arguments arguments) {
  if (pathTemplate == nullptr) return 0;
  const u64 bound = bound_of_filled(pathTemplate, arguments);
  return bound <= kPathKeyLimit ? bound : 0;
}

std::string_view form_path_key(const char* pathTemplate, Arguments arguments, char** room) {
  std::size_t length = 0;
  if (bound_of_path_key(pathTemplate, arguments) == 0) return {};
  if (!fill_template(pathTemplate, arguments, *room, &length)) return {};
  return slice(std::exchange(*room, *room + length), 0, length);
}

u64 bound_of_item_keys(const ItemSet& item) {
  u64 bound = 0;
  for (u16 k = 0; k < kNameSpaceCount; ++k) {
    bound += bound_of_path_key(item.pathTemplate, item_arguments(item, k));
  }
  return bound;
}

bool set_item_keys(const ItemSet& item, std::span<xml::Key, kNameSpaceCount> keys, u32 group,
                   char** room) {
  for (u16 k = 0; k < kNameSpaceCount; ++k) {
    keys[k].path = form_path_key(item.pathTemplate, item_arguments(item, k), room);
    keys[k].group = group;
    if (keys[k].path.empty()) return false;
  }
  return true;
}

NameSpaceTexts found_texts(std::string_view document,
                           std::span<const xml::Answer, kNameSpaceCount> keys) {
  NameSpaceTexts texts;
  for (u16 k = 0; k < kNameSpaceCount; ++k) texts[k] = found_text(document, keys[k]);
  return texts;
}

i32 decode_list(const NameSpaceTexts& texts, ItemSet* item, Keywords keywords) {
  const u64 values = count_values(texts);
  Owned<ItemEntry> entries = Owned<ItemEntry>::allocate(values);
  if (values != 0 && !entries) return kNoMemory;
  if (values != 0 && item->dictionary != nullptr && item->rowCount == 0) return kBadArgument;
  u32 count = 0;
  for (u16 k = 0; k < kNameSpaceCount; ++k) {
    for_each_value(texts[k], [&](std::string_view run) {
      entries[count] = decode_value(run, *item, k, keywords);
      if (!is_unknown(entries[count], *item)) ++count;
    });
  }
  order<without_code_first>({entries.get(), count});
  item->entries = entries.release();
  item->entryCount = count;
  return kOk;
}

i32 decode_into(std::string_view text, const ItemSet& item, u16 nameSpace,
                std::span<ItemEntry> entries, Keywords keywords) {
  std::size_t filled = 0;
  Runs runs(text);
  // A run of blanks is a value here: an unknown keyword, or no number.
  for (std::string_view run = runs.next(); !run.empty(); run = runs.next()) {
    if (filled == entries.size()) return kBadArgument;
    entries[filled++] = decode_value(run, item, nameSpace, keywords);
  }
  const u32 filler = item.dictionary != nullptr ? kUnknownIndex : kFillerNumber;
  for (ItemEntry& entry : entries.last(entries.size() - filled)) {
    entry = {filler, nameSpace, kNoItemCode};
  }
  order<without_code_last>(entries);
  return kOk;
}

i32 read_item_sets(std::string_view document, u16 operation, std::span<ItemSet> items) {
  if (!is_document(document) || !is_operation(operation)) return kBadArgument;
  return read_checked(document, operation, kCheckKeys, items);
}

i32 read_item_sets_by_attribute(std::string_view document, std::span<ItemSet> items,
                                const char* attributeValue, u16 nameSpace, u32 mode) {
  if (!is_document(document) || nameSpace >= kNameSpaceCount) return kBadArgument;
  const auto has_no_rows = [](const ItemSet& item) { return item.rowCount == 0; };
  if (mode != kTextMode && std::any_of(items.begin(), items.end(), has_no_rows)) {
    return kBadArgument;
  }
  forget_answers(items);
  const auto is_prepared = [mode](ItemSet& item) { return prepare(&item, mode); };
  const i32 status = std::all_of(items.begin(), items.end(), is_prepared)
                         ? read_by_attribute(document, items, attributeValue, nameSpace, mode)
                         : kNoMemory;
  if (status == kOk) return kOk;
  release_item_sets(items);
  forget_answers(items);
  return status;
}

void release_item_sets(std::span<ItemSet> items) {
  for (ItemSet& item : items) {
    KWVSDisposePTRX(std::exchange(item.entries, nullptr));
    const Owned<ItemText> text(std::exchange(item.auxiliary, nullptr));
    if (text) KWVSDisposePTRX(text->text);
  }
}

}  // namespace pxcl::keyed

using namespace pxcl;
using namespace pxcl::keyed;

extern "C" {

i32 CheckOpeAndRes(const char* document, u64 length, u16 operation) {
  return read_item_sets(as_view(document, length), operation, {});
}

i32 Get_ItemSet(const char* document, u64 length, ItemSet* item) {
  if (document == nullptr || length == 0 || item == nullptr) return kBadArgument;
  return read_checked(as_view(document, length), kIndexNotSet, 0, {item, 1});
}

i32 Get_ItemSetList(const char* document, u64 length, u16 operation, ItemSet* items, i32 count) {
  const i32 status = read_item_sets(as_view(document, length), operation, items_of(items, count));
  return status == kOk && items == nullptr && count > 0 ? kBadArgument : status;
}

i32 Get_ItemSetByReq(const char* document, u64 length, ItemSet* items, u16 count,
                     const char* attributeValue, u16 nameSpace, u32 mode) {
  if (count == 0) return kInvalid;
  if (items == nullptr) return kBadArgument;
  return read_item_sets_by_attribute(as_view(document, length), {items, count}, attributeValue,
                                     nameSpace, mode);
}

void ReleaseItemSetList(ItemSet* items, i32 count) {
  release_item_sets(items_of(items, count));
}

i32 checkSuport(const char* document, u64 length, u16 operation, const ItemSet* item, u16 wanted) {
  if (document == nullptr || length == 0 || item == nullptr) return kBadArgument;
  if (item->rowCount != 0 && item->rowCount <= wanted) return kBadArgument;
  ItemSet copy = *item;
  forget_answers({&copy, 1});
  const i32 status = read_item_sets(as_view(document, length), operation, {&copy, 1});
  if (status != kOk) return status;
  const i32 answer = copy.entryCount == 0  ? kNotListed
                     : lists(copy, wanted) ? kSupported
                                           : kNotSupported;
  release_item_sets({&copy, 1});
  return answer;
}

}  // extern "C"
