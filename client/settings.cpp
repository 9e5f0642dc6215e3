// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "client/settings.hpp"

#include <pxcl.h>

#include <algorithm>
#include <string_view>
#include <vector>

#include "client/text.hpp"

namespace pxcl::client {
namespace {

constexpr std::uint16_t kSettingsVersion = 2;
constexpr std::uint16_t kStatusVersion = 1;
constexpr std::uint16_t kPlain = 1,
                        kOtherPlain =
                            15;  // of paper_types(): what is printed with borders unless asked for

// How CLSS_AutoMakePrintSettings chooses paper.
enum Mode : std::uint16_t { kSizeByType = 0, kTypeBySize = 1, kNotPlain = 2, kPlainPaper = 3 };

// Its statuses.
constexpr std::int32_t kNoneFits = -7, kNotOneFits = -17;

Error unsuitable(std::string message) {
  return {Fault::kUnsuitable, std::move(message)};
}

std::string list_of(const std::vector<std::string_view>& words) {
  std::string list;
  for (const std::string_view word : words) list += (list.empty() ? "" : ", ") + std::string(word);
  return list.empty() ? "none" : list;
}

template <typename Entry, typename Name>
std::string list_of(const std::vector<Entry>& entries, Name name) {
  std::vector<std::string_view> words;
  words.reserve(entries.size());
  for (const Entry& entry : entries) words.push_back(name(entry));
  return list_of(words);
}

std::string quoted(std::string_view text) {
  return "\"" + clean_line(text) + "\"";
}

const PaperSize* find_size(const PrintCapability& capability, std::uint16_t row) {
  const auto found = std::find_if(capability.sizes.begin(), capability.sizes.end(),
                                  [row](const PaperSize& size) { return size.size == row; });
  return found == capability.sizes.end() ? nullptr : &*found;
}

const MediaType* find_type(const PrintCapability& capability, std::uint16_t row) {
  const auto found = std::find_if(capability.media.begin(), capability.media.end(),
                                  [row](const MediaType& type) { return type.type == row; });
  return found == capability.media.end() ? nullptr : &*found;
}

// Paper that is chosen from what is loaded. A type that only the panel knows can't be asked for in a job.
std::vector<LoadedPaper> choosable(const Status& status) {
  std::vector<LoadedPaper> paper = status.paper;
  std::erase_if(paper, [](const LoadedPaper& loaded) { return loaded.by_panel; });
  return paper;
}

std::string loaded_list(const Status& status) {
  std::vector<std::string> names;
  for (const LoadedPaper& loaded : choosable(status)) {
    names.push_back(std::string(loaded.type.keyword) + " in " + std::string(loaded.size.keyword));
  }
  return list_of(names, [](const std::string& name) { return std::string_view(name); });
}

ClssStatus loaded_record(const Status& status) {
  ClssStatus record = {};
  record.leading = kStatusVersion;
  std::fill(std::begin(record.currentPaperType), std::end(record.currentPaperType), kNoRow);
  std::fill(std::begin(record.currentPaperSize), std::end(record.currentPaperSize), kNoRow);
  std::size_t slot = 0;
  for (const LoadedPaper& loaded : choosable(status)) {
    if (slot + 1 == std::size(record.currentPaperType)) break;
    record.currentPaperType[slot] = loaded.type.row;
    record.currentPaperSize[slot] = loaded.size.row;
    ++slot;
  }
  return record;
}

// One way from wishes to settings.
class Completion {
 public:
  Completion(const Wishes& wishes, const PrintCapability& capability, const Status& status)
      : wishes_(wishes), capability_(capability), status_(status) {
    record_.version = kSettingsVersion;
    CLSS_initPrintSettings(&record_);
  }

  Result<Settings> complete();

 private:
  Result<void> take_paper_wishes();
  Result<void> choose_paper();
  std::int32_t choose_by(Mode mode);
  Error no_choice(std::int32_t status) const;
  void take_other_wishes();
  std::uint16_t duplex_row() const;
  Result<void> complete_rest();
  Result<void> check_borderless() const;
  Result<void> check_color() const;
  Result<void> check_duplex() const;
  Result<Settings> settings() const;

  const Wishes& wishes_;
  const PrintCapability& capability_;
  const Status& status_;
  ClssPrintSettings record_ = {};
  const PaperSize* size_ = nullptr;
  const MediaType* type_ = nullptr;
};

Result<void> Completion::take_paper_wishes() {
  if (wishes_.size) {
    const std::optional<Word> word = paper_sizes().find(*wishes_.size);
    if (!word || find_size(capability_, word->row) == nullptr) {
      return unsuitable(
          "This printer has no paper size " + quoted(*wishes_.size) + ". Choose one of: " +
          list_of(capability_.sizes, [](const PaperSize& size) { return size.size.keyword; }) +
          ".");
    }
    record_.paperSize = word->row;
  }
  if (wishes_.type) {
    const std::optional<Word> word = paper_types().find(*wishes_.type);
    if (!word || find_type(capability_, word->row) == nullptr) {
      return unsuitable(
          "This printer has no paper type " + quoted(*wishes_.type) + ". Choose one of: " +
          list_of(capability_.media, [](const MediaType& type) { return type.type.keyword; }) +
          ".");
    }
    record_.paperType = word->row;
  }
  return {};
}

std::int32_t Completion::choose_by(Mode mode) {
  const ClssStatus loaded = loaded_record(status_);
  return CLSS_AutoMakePrintSettings(mode, capability_.document.data(), capability_.document.size(),
                                    &loaded, &record_);
}

// What is not wished for comes from the loaded paper. With no wish at all that is the plain paper, or else the only other.
Result<void> Completion::choose_paper() {
  if (wishes_.size && wishes_.type) return {};
  if (choosable(status_).empty()) {
    return unsuitable(
        "The printer does not tell which paper is loaded. Load some, or name size and type of the "
        "paper.");
  }
  std::int32_t status = 0;
  if (wishes_.type) {
    status = choose_by(kSizeByType);
  } else if (wishes_.size) {
    status = choose_by(kTypeBySize);
  } else {
    status = choose_by(kPlainPaper);
    if (status == kNotOneFits) status = choose_by(kNotPlain);
  }
  if (status != 0) return no_choice(status);
  return {};
}

Error Completion::no_choice(std::int32_t status) const {
  const std::string wish = wishes_.type   ? " of the type " + *wishes_.type
                           : wishes_.size ? " of the size " + *wishes_.size
                                          : std::string();
  const std::string loaded = " Loaded: " + loaded_list(status_) + ".";
  if (status == kNoneFits) {
    return unsuitable("No paper" + wish + " is loaded. Load it, or name both size and type." +
                      loaded);
  }
  const std::string_view name =
      wish.empty() ? "Name its size or its type." : "Name both size and type.";
  if (status == kNotOneFits) {
    return unsuitable("It is open which paper" + wish + " is meant. " + std::string(name) + loaded);
  }
  return unsuitable("The loaded paper" + wish +
                    " is not what the printer offers for jobs. Name both size and type." + loaded);
}

// "ON" by itself means whichever side the printer staples.
std::uint16_t Completion::duplex_row() const {
  if (!wishes_.duplex) return kNoRow;
  if (*wishes_.duplex != kDuplexOn) return *wishes_.duplex;
  for (const Word& mode : type_->duplex) {
    if (mode.row != kDuplexOff) return mode.row;
  }
  return kDuplexOn;
}

void Completion::take_other_wishes() {
  record_.borderless = kNoRow;
  record_.colorMode = kNoRow;
  record_.duplexPrint = duplex_row();
  if (wishes_.borderless) record_.borderless = *wishes_.borderless ? kBorderlessOn : kBorderlessOff;
  if (wishes_.color_mode) {
    const std::optional<Word> word = color_modes().find(*wishes_.color_mode);
    if (word) record_.colorMode = word->row;
  }
}

Result<void> Completion::complete_rest() {
  size_ = find_size(capability_, record_.paperSize);
  type_ = find_type(capability_, record_.paperType);
  if (size_ == nullptr || type_ == nullptr) {
    return unsuitable(
        "The loaded paper is not what the printer offers for jobs. Name both size and type.");
  }
  take_other_wishes();
  const bool isPlain = record_.paperType == kPlain || record_.paperType == kOtherPlain;
  const std::int32_t status = CLSS_AutoMakeOtherPrintSettings(
      isPlain ? 1 : 0, capability_.document.data(), capability_.document.size(), &record_);
  if (status == 0) return {};
  return Error{Fault::kBadReply,
               "What the printer says that it can do is not to be understood. Try again."};
}

Result<void> Completion::check_borderless() const {
  const std::string paper = quoted(type_->type.keyword) + " in " + quoted(size_->size.keyword);
  if (record_.borderless == kNoRow)
    return unsuitable("The printer can't print on " + paper + ". Choose another type or size.");
  if (!wishes_.borderless || *wishes_.borderless == (record_.borderless == kBorderlessOn))
    return {};
  return unsuitable("Printing " + std::string(*wishes_.borderless ? "borderless" : "with borders") +
                    " on " + paper + " is not possible, only " +
                    (*wishes_.borderless ? "with borders" : "borderless") + ".");
}

Result<void> Completion::check_color() const {
  const std::optional<Word> mode = color_modes().at(record_.colorMode);
  if (!wishes_.color_mode || (mode && mode->keyword == *wishes_.color_mode)) return {};
  return unsuitable("The colour mode " + quoted(*wishes_.color_mode) + " is not possible on " +
                    quoted(type_->type.keyword) + ". Possible: " +
                    list_of(type_->color_modes, [](const Word& word) { return word.keyword; }) +
                    ".");
}

std::string_view name_of_duplex(const Word& mode) {
  static constexpr std::string_view kNames[] = {
      "", "one-sided", "two-sided", "two-sided on the long side", "two-sided on the short side"};
  return mode.row < std::size(kNames) ? kNames[mode.row] : mode.keyword;
}

// One-sided printing is possible on paper without the choice, too.
Result<void> Completion::check_duplex() const {
  const bool isOff = record_.duplexPrint == kNoRow || record_.duplexPrint == kDuplexOff;
  const std::uint16_t wish = duplex_row();
  if (wish == kNoRow || wish == record_.duplexPrint || (wish == kDuplexOff && isOff)) return {};
  const std::string possible =
      size_->duplex ? list_of(type_->duplex, name_of_duplex) : std::string("one-sided");
  return unsuitable("Printing on both sides as asked for is not possible on " +
                    quoted(type_->type.keyword) + " in " + quoted(size_->size.keyword) +
                    ". Possible: " + (type_->duplex.empty() ? "one-sided" : possible) + ".");
}

Result<Settings> Completion::settings() const {
  const bool borderless = record_.borderless == kBorderlessOn;
  const std::optional<Word> duplex = duplex_modes().at(record_.duplexPrint);
  const bool isDuplex = duplex && *duplex != kDuplexOff;
  const std::optional<PrintArea>& area = isDuplex     ? size_->duplex
                                         : borderless ? size_->borderless
                                                      : size_->border;
  if (!area || !size_->outline) {
    return unsuitable("The printer does not tell where it can print on " +
                      quoted(size_->size.keyword) + ". Choose another size.");
  }
  return Settings{.size = size_->size,
                  .type = type_->type,
                  .borderless = borderless,
                  .color_mode = color_modes().at(record_.colorMode),
                  .duplex = duplex,
                  .outline = *size_->outline,
                  .print_area = *area};
}

Result<Settings> Completion::complete() {
  if (Result<void> done = take_paper_wishes(); !done) return std::move(done).error();
  if (Result<void> done = choose_paper(); !done) return std::move(done).error();
  if (Result<void> done = complete_rest(); !done) return std::move(done).error();
  if (Result<void> good = check_borderless(); !good) return std::move(good).error();
  if (Result<void> good = check_color(); !good) return std::move(good).error();
  if (Result<void> good = check_duplex(); !good) return std::move(good).error();
  return settings();
}

}  // namespace

Result<Settings> complete_settings(const Wishes& wishes, const PrintCapability& capability,
                                   const Status& status) {
  return Completion(wishes, capability, status).complete();
}

}  // namespace pxcl::client
