// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "printer/command.hpp"

#include <algorithm>
#include <iterator>
#include <span>

#include "printer/xml.hpp"

namespace pxcl::printer {

namespace {

// ---- What the documents look like

enum class Need {
  kAlways,
  kMaybe,
  kWithPrevious,       // just when the one before it is there
  kMaybeWithPrevious,  // not unless the one before it is there
};

enum class In { kCommon, kVendor, kAny };

enum class Value { kWord, kNumber, kText, kNothing, kJobId, kDateTime, kGuide };

struct Rule {
  std::string_view name;
  In space;
  Value value;
  Need need = Need::kAlways;
  const Keywords* words = nullptr;  // of a kWord
};

constexpr Rule kJobId = {"jobID", In::kCommon, Value::kJobId};
constexpr Rule kVendorOperation = {"ijoperation", In::kVendor, Value::kText};
constexpr Rule kDateTime = {"datetime", In::kCommon, Value::kDateTime, Need::kMaybe};

constexpr Rule kJobOnly[] = {kJobId};
constexpr Rule kJobMaybe[] = {{"jobID", In::kCommon, Value::kJobId, Need::kMaybe}};
constexpr Rule kVendorOnly[] = {kVendorOperation};

constexpr Rule kStartJob[] = {
    kJobId,
    {"bidi", In::kCommon, Value::kNumber},
    {"key_misdetection", In::kVendor, Value::kWord, Need::kMaybe, &kSwitches},
    {"forcepmdetection", In::kVendor, Value::kWord, Need::kMaybe, &kSwitches},
    {"jobname", In::kCommon, Value::kNothing, Need::kMaybe},
    {"username", In::kCommon, Value::kNothing, Need::kWithPrevious},
    {"computername", In::kCommon, Value::kNothing, Need::kWithPrevious},
    {"job_description", In::kCommon, Value::kText, Need::kWithPrevious},
    {"host_environment", In::kVendor, Value::kWord, Need::kMaybeWithPrevious, &kHosts},
};

constexpr Rule kSetJobConfiguration[] = {
    kJobId,
    {"mismatch_mode", In::kCommon, Value::kWord, Need::kAlways, &kMismatchModes},
    kDateTime,
    {"device_side_guide", In::kVendor, Value::kGuide, Need::kMaybe},
};

constexpr Rule kSetClock[] = {kJobId, kDateTime};

constexpr Rule kSetConfiguration[] = {
    kJobId,
    {"papersize", In::kAny, Value::kWord, Need::kAlways, &kPaperSizes},
    {"papertype", In::kAny, Value::kWord, Need::kAlways, &kPaperTypes},
    {"borderlessprint", In::kAny, Value::kWord, Need::kAlways, &kSwitches},
    {"printcolormode", In::kAny, Value::kWord, Need::kMaybe, &kColorModes},
    {"duplexprint", In::kAny, Value::kWord, Need::kMaybe, &kSwitches},
    {"stapleside", In::kCommon, Value::kWord, Need::kMaybeWithPrevious, &kStapleSides},
};

constexpr Rule kSetAgreement[] = {
    kJobId, {"selfPLIagreement", In::kVendor, Value::kWord, Need::kAlways, &kAgreements}};

constexpr Rule kSetPageConfiguration[] = {
    kJobId,
    kVendorOperation,
    {"nextpage", In::kVendor, Value::kWord, Need::kMaybe, &kSwitches},
    {"printpreparation", In::kVendor, Value::kWord, Need::kMaybe, &kPreparations},
};

constexpr Rule kModeShift[] = {kJobId, kVendorOperation, {"ijmode", In::kVendor, Value::kNumber}};

constexpr Rule kSendData[] = {
    kJobId,
    {"format", In::kCommon, Value::kWord, Need::kAlways, &kDataFormats},
    {"datasize", In::kCommon, Value::kNumber},
    {"datawidth", In::kCommon, Value::kNumber, Need::kMaybe},
    {"datalength", In::kCommon, Value::kNumber, Need::kWithPrevious},
};

constexpr Rule kTestPrint[] = {{"type", In::kCommon, Value::kWord, Need::kAlways, &kTestPatterns},
                               kJobId};

constexpr Rule kCleaning[] = {{"inkgroup", In::kCommon, Value::kWord, Need::kAlways, &kInkGroups},
                              {"type", In::kCommon, Value::kText},
                              kJobId};

// Printers know each command by its own declaration: the blank that some lack and the odd encoding are meant.
constexpr std::string_view kUsual = R"(<?xml version="1.0" encoding="utf-8" ?>)";
constexpr std::string_view kTight = R"(<?xml version="1.0" encoding="utf-8"?>)";
constexpr std::string_view kOdd = R"(<?xml version="1.0" encoding="job_descriptionutf-8" ?>)";

struct Form {
  Action action;
  std::string_view operation;
  std::string_view vendor_operation;  // of VendorCmd
  Service service;
  std::string_view declaration;
  std::span<const Rule> rules;
};

constexpr auto kPrint = Service::kPrint;
constexpr auto kDevice = Service::kDevice;
constexpr auto kMaintenance = Service::kMaintenance;

// clang-format off
constexpr Form kForms[] = {
    {Action::kGetCapability,        "GetCapability",       "",                     kPrint,       kUsual, {}},
    {Action::kGetCapability,        "GetCapability",       "",                     kDevice,      kUsual, {}},
    {Action::kGetCapability,        "GetCapability",       "",                     kMaintenance, kUsual, {}},
    {Action::kGetConfiguration,     "GetConfiguration",    "",                     kPrint,       kUsual, {}},
    {Action::kGetConfiguration,     "GetConfiguration",    "",                     kDevice,      kUsual, {}},
    {Action::kGetStatus,            "GetStatus",           "",                     kPrint,       kUsual, kJobMaybe},
    {Action::kGetStatus,            "GetStatus",           "",                     kDevice,      kUsual, {}},
    {Action::kGetStatus,            "GetStatus",           "",                     kMaintenance, kUsual, kJobMaybe},
    {Action::kGetJobIdList,         "GetJobIDList",        "",                     kPrint,       kUsual, {}},
    {Action::kStartJob,             "StartJob",            "",                     kPrint,       kUsual, kStartJob},
    {Action::kStartJob,             "StartJob",            "",                     kDevice,      kUsual, kStartJob},
    {Action::kStartJob,             "StartJob",            "",                     kMaintenance, kUsual, kStartJob},
    {Action::kSetJobConfiguration,  "SetJobConfiguration", "",                     kPrint,       kTight, kSetJobConfiguration},
    {Action::kSetJobConfiguration,  "SetJobConfiguration", "",                     kMaintenance, kOdd,   kSetClock},
    {Action::kSetConfiguration,     "SetConfiguration",    "",                     kPrint,       kUsual, kSetConfiguration},
    {Action::kSetConfiguration,     "SetConfiguration",    "",                     kDevice,      kUsual, kSetAgreement},
    {Action::kSendData,             "SendData",            "",                     kPrint,       kUsual, kSendData},
    {Action::kEndJob,               "EndJob",              "",                     kPrint,       kUsual, kJobOnly},
    {Action::kEndJob,               "EndJob",              "",                     kDevice,      kUsual, kJobOnly},
    {Action::kEndJob,               "EndJob",              "",                     kMaintenance, kUsual, kJobOnly},
    {Action::kCancelJob,            "CancelJob",           "",                     kPrint,       kUsual, kJobOnly},
    {Action::kCancelJob,            "CancelJob",           "",                     kDevice,      kUsual, kJobOnly},
    {Action::kCancelJob,            "CancelJob",           "",                     kMaintenance, kUsual, kJobOnly},
    {Action::kTestPrint,            "TestPrint",           "",                     kMaintenance, kTight, kTestPrint},
    {Action::kCleaning,             "Cleaning",            "",                     kMaintenance, kTight, kCleaning},
    {Action::kPowerOff,             "PowerOff",            "",                     kDevice,      kUsual, {}},
    {Action::kSetPageConfiguration, "VendorCmd",           "SetPageConfiguration", kPrint,       kUsual, kSetPageConfiguration},
    {Action::kModeShift,            "VendorCmd",           "ModeShift",            kPrint,       kUsual, kModeShift},
    {Action::kModeShift,            "VendorCmd",           "ModeShift",            kDevice,      kUsual, kModeShift},
    {Action::kFRomUpMode,           "VendorCmd",           "FRomUpMode",           kDevice,      kUsual, kVendorOnly},
    {Action::kHandOverOff,          "VendorCmd",           "HandOverOff",          kDevice,      kUsual, kVendorOnly},
};
// clang-format on

// ---- Values

bool is_digits(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == text.npos;
}

bool is_in_range(std::string_view digits, int least, int most) {
  int value = 0;
  for (const char digit : digits) value = value * 10 + (digit - '0');
  return value >= least && value <= most;
}

// "20260704123000"
bool is_date_time(std::string_view text) {
  return text.size() == 14 && is_digits(text) && is_in_range(text.substr(4, 2), 1, 12) &&
         is_in_range(text.substr(6, 2), 1, 31) && is_in_range(text.substr(8, 2), 0, 23) &&
         is_in_range(text.substr(10, 2), 0, 59) && is_in_range(text.substr(12, 2), 0, 60);
}

// <vrx:item name="disc">ON</vrx:item>
const Element* guide_item(const Element& guide) {
  if (guide.children.size() != 1) return nullptr;
  const Element& item = guide.children[0];
  const bool is_disc = item.name == "item" && item.space == Namespace::kVendor &&
                       item.attributes.size() == 1 && item.attributes[0].first == "name" &&
                       item.attributes[0].second == "disc" && item.children.empty();
  return is_disc && is_one_of(item.text, kSwitches) ? &item : nullptr;
}

bool has_value(const Element& element, const Rule& rule) {
  if (rule.value == Value::kGuide) return guide_item(element) != nullptr;
  if (!element.children.empty()) return false;
  switch (rule.value) {
    case Value::kWord:
      return is_one_of(element.text, *rule.words);
    case Value::kNumber:
      return is_digits(element.text);
    case Value::kText:
    case Value::kJobId:  // Which jobs there are is not the reader's to know.
      return !element.text.empty();
    case Value::kNothing:
      return element.text.empty();
    case Value::kDateTime:
      return is_date_time(element.text);
    case Value::kGuide:
      break;
  }
  return false;
}

bool is_in(const Element& element, In space) {
  switch (space) {
    case In::kCommon:
      return element.space == Namespace::kCommon;
    case In::kVendor:
      return element.space == Namespace::kVendor;
    case In::kAny:
      break;
  }
  return element.space.has_value();
}

// ---- Reading

Refusal bad_parameter(std::string reason) {
  return {"ParameterError", std::move(reason)};
}

// Puts the elements into `command` as the rules say, in their order.
class Matcher {
 public:
  Matcher(const Element& set, Command& command) : set_(set), command_(command) {}

  std::optional<Refusal> match(std::span<const Rule> rules) {
    bool has_previous = false;
    for (const Rule& rule : rules) {
      const bool is_here = next_ < set_.children.size() && set_.children[next_].name == rule.name;
      if (is_missing(rule.need, is_here, has_previous)) {
        return bad_parameter(std::string(rule.name) + " is missing or not in its place");
      }
      if (is_here && needs_previous(rule.need) && !has_previous) break;
      if (is_here && !take(rule)) return bad_parameter(std::string(rule.name) + " is not right");
      has_previous = is_here;
    }
    if (next_ == set_.children.size()) return std::nullopt;
    return bad_parameter(set_.children[next_].name + " is not wanted there");
  }

 private:
  static bool needs_previous(Need need) {
    return need == Need::kWithPrevious || need == Need::kMaybeWithPrevious;
  }

  static bool is_missing(Need need, bool is_here, bool has_previous) {
    return !is_here && (need == Need::kAlways || (need == Need::kWithPrevious && has_previous));
  }

  bool take(const Rule& rule) {
    const Element& element = set_.children[next_++];
    if (!is_in(element, rule.space) || !element.attributes.empty() || !has_value(element, rule)) {
      return false;
    }
    const bool is_guide = rule.value == Value::kGuide;
    command_.parameters.push_back({element.name, element.space.value_or(Namespace::kCommon),
                                   is_guide ? guide_item(element)->text : element.text});
    return true;
  }

  const Element& set_;
  Command& command_;
  std::size_t next_ = 0;
};

// Which element it was that is not the protocol's, or null when the frame is.
const char* frame_error(const Element& root) {
  const auto is = [](const Element& element, std::string_view name) {
    return element.name == name && element.space == Namespace::kCommon;
  };
  if (root.name != "cmd" || root.space || !root.attributes.empty()) return "The root is not cmd.";
  if (root.children.size() != 1 || !is(root.children[0], "contents")) {
    return "The root does not hold the one element zirk:contents.";
  }
  const Element& contents = root.children[0];
  if (contents.children.size() != 2 || !is(contents.children[0], "operation") ||
      !is(contents.children[1], "param_set") || !contents.attributes.empty()) {
    return "zirk:contents does not hold zirk:operation and zirk:param_set.";
  }
  const Element& set = contents.children[1];
  if (set.attributes.size() != 1 || set.attributes[0].first != "servicetype" || !set.text.empty()) {
    return "zirk:param_set has not the one attribute servicetype, or has a text.";
  }
  return nullptr;
}

// Words that an answer can repeat.
bool is_plain_word(std::string_view text) {
  constexpr std::string_view kLetters =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";
  constexpr std::size_t kLongest = 64;
  return !text.empty() && text.size() <= kLongest && text.find_first_not_of(kLetters) == text.npos;
}

const Form* find_form(const Command& command) {
  const auto form = std::ranges::find_if(kForms, [&](const Form& candidate) {
    return candidate.operation == command.operation && candidate.service == command.service &&
           candidate.vendor_operation == command.vendor_operation;
  });
  return form == std::end(kForms) ? nullptr : form;
}

std::string vendor_operation_of(const Element& set) {
  const auto at = std::ranges::find(set.children, "ijoperation", &Element::name);
  return at == set.children.end() ? "" : at->text;
}

// Not yet its parameters.
Command read_head(const Element& contents) {
  Command command;
  command.operation = contents.children[0].text;
  command.service_word = contents.children[1].attributes[0].second;
  if (command.operation == "VendorCmd") {
    command.vendor_operation = vendor_operation_of(contents.children[1]);
  }
  return command;
}

std::optional<Refusal> read_parameters(std::string_view document, const Element& set,
                                       Command& command) {
  const auto service = service_of(command.service_word);
  if (!service) return Refusal{"NotSupportService", "the service is not this printer's"};
  command.service = *service;
  const Form* const form = find_form(command);
  if (form == nullptr) {
    return Refusal{"NotSupportOperation", "the operation is unknown or not this service's"};
  }
  command.action = form->action;
  if (!document.starts_with(form->declaration)) {
    return bad_parameter("the XML declaration is not this command's");
  }
  return Matcher(set, command).match(form->rules);
}

}  // namespace

const Parameter* Command::find(std::string_view name) const {
  const auto at = std::ranges::find(parameters, name, &Parameter::name);
  return at == parameters.end() ? nullptr : &*at;
}

std::string_view Command::text(std::string_view name) const {
  const Parameter* const parameter = find(name);
  return parameter == nullptr ? std::string_view{} : parameter->text;
}

CommandReading read_command(std::string_view document) {
  XmlReading xml = read_xml(document);
  if (!xml.root) return {{}, {}, xml.error};
  if (const char* const error = frame_error(*xml.root)) return {{}, {}, error};
  const Element& contents = xml.root->children[0];
  Command command = read_head(contents);
  if (!is_plain_word(command.operation) || !is_plain_word(command.service_word)) {
    return {{}, {}, "The operation or the service is not a word."};
  }
  auto refusal = read_parameters(document, contents.children[1], command);
  return {std::move(command), std::move(refusal), {}};
}

std::vector<std::string_view> operation_names() {
  std::vector<std::string_view> names;
  const auto add = [&](std::string_view name) {
    if (!name.empty() && std::ranges::find(names, name) == names.end()) names.push_back(name);
  };
  for (const Form& form : kForms) {
    add(form.operation);
    add(form.vendor_operation);
  }
  return names;
}

}  // namespace pxcl::printer
