// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// `pxcl build`: one row for each builder of commands.h.

#include <unistd.h>

#include <cstdint>
#include <limits>
#include <optional>

#include "cli/command.hpp"
#include "cli/input.hpp"
#include "cli/output.hpp"
#include "cli/text.hpp"
#include "client/text.hpp"
#include "pxcl.h"

namespace pxcl::cli {

namespace {

using Kind = Option::Kind;

// Where a builder writes.
struct Target {
  char* buffer;
  std::uint64_t size;
  std::uint64_t* length;
};

struct Builder {
  std::string name;
  std::string help;
  std::string example;  // the options of one
  std::vector<Option> options;
  std::function<std::int32_t(const Arguments&, Target)> make;
};

// ---- Options that several commands have ----

Option job() {
  return {.name = "--job", .help = "ID of the job, 8 characters", .required = true};
}
Option job_if_any() {
  return {.name = "--job", .help = "Ask about this job"};
}
Option time() {
  return {.name = "--time", .help = "Local date and time, YYYYMMDDhhmmss"};
}

Option service(Choices (*choices)()) {
  return {.name = "--service",
          .kind = Kind::kKeyword,
          .help = "Service that it is for, print unless given",
          .choices = choices};
}

Option choice(std::string name, std::string help, Choices (*choices)(), bool required = false) {
  return {.name = std::move(name),
          .kind = Kind::kKeyword,
          .help = std::move(help),
          .required = required,
          .choices = choices};
}

Option number(std::string name, std::string help, std::int64_t most) {
  return {.name = std::move(name),
          .kind = Kind::kNumber,
          .help = std::move(help),
          .required = true,
          .least = 1,
          .most = most};
}

Choices bidi_choices() {
  return {{"0", 0}, {"1", 1}};
}
Choices format_choices() {
  return {{"pwg", 0}, {"jpeg", 1}, {"jpegpage", 2}};
}

// Which detections StartJob tells the printer of.
Choices detection_choices() {
  return {{"none", 0}, {"misdetection", 1}, {"paper-not-forced", 2}, {"both", 3}};
}

// ---- Arguments as the builders take them ----

// An optional text, escaped, as a string that is null when it was not given.
class Text {
 public:
  Text(const Arguments& arguments, std::string_view name) {
    if (!arguments.has(name)) return;
    if (arguments.text(name).empty()) throw Failure{kUsage, filled("{} is empty.", name)};
    text_ = client::element_text(arguments.text(name), std::numeric_limits<std::size_t>::max());
  }
  [[nodiscard]] const char* get() const { return text_ ? text_->c_str() : nullptr; }

 private:
  std::optional<std::string> text_;
};

// A job description stands in a CDATA section: nothing is escaped there.
std::optional<std::string> description(const Arguments& arguments) {
  if (!arguments.has("--description")) return {};
  std::string text = client::clean_line(arguments.text("--description"));
  if (text.find("]]>") != text.npos) {
    throw Failure{kUsage,
                  "--description must not hold \"]]>\", which would end it in the document."};
  }
  return text;
}

std::int32_t make_status(const Arguments& arguments, Target to) {
  const Text id(arguments, "--job");
  switch (arguments.row("--service", 0)) {
    case 0:
      return CLSS_MakeCommand_GetStatusPrint(id.get(), to.buffer, to.size, to.length);
    case 3:
      return CLSS_MakeCommand_GetStatusMaintenance(id.get(), to.buffer, to.size, to.length);
    default:
      if (id.get()) throw Failure{kUsage, "The device service has no jobs: leave --job out."};
      return CLSS_MakeCommand_GetStatusDevice(to.buffer, to.size, to.length);
  }
}

std::int32_t make_start(const Arguments& arguments, Target to) {
  const auto title = description(arguments);
  return CLSS_MakeCommand_StartJob3(
      arguments.row("--service", 0), arguments.row("--host", 0), title ? title->c_str() : nullptr,
      static_cast<std::int16_t>(arguments.row("--detection", 0)), Text(arguments, "--job").get(),
      arguments.text("--bidi", "0").c_str(), to.buffer, to.size, to.length);
}

std::int32_t make_data(const Arguments& arguments, Target to) {
  constexpr decltype(&CLSS_MakeCommand_SendDataJPEG) kBuilders[] = {
      CLSS_MakeCommand_SendDataPWGRaster, CLSS_MakeCommand_SendDataJPEG,
      CLSS_MakeCommand_SendDataJPEGPAGE};
  return kBuilders[arguments.row("--format", 0)](
      Text(arguments, "--job").get(), static_cast<std::uint32_t>(arguments.number("--bytes", 0)),
      to.buffer, to.size, to.length);
}

std::int32_t make_raw_data(const Arguments& arguments, Target to) {
  return CLSS_MakeCommand_SendDataRAW(Text(arguments, "--job").get(), arguments.row("--width", 0),
                                      arguments.row("--height", 0), to.buffer, to.size, to.length);
}

std::int32_t make_configuration(const Arguments& arguments, Target to) {
  const ClssConfigurationPaper paper = {CLSS_CONFIGURATION_VERSION, arguments.row("--size", 0),
                                        arguments.row("--type", 0),
                                        arguments.row("--borderless", 1)};
  const ClssConfigurationMode mode = {arguments.row("--color", CLSS_SETTING_ABSENT),
                                      arguments.row("--duplex", CLSS_SETTING_ABSENT)};
  std::string reply;
  if (arguments.has("--capability")) reply = read_input(arguments.text("--capability"));
  return CLSS_MakeCommand_SetConfigurationNS(paper, mode, Text(arguments, "--job").get(),
                                             reply.empty() ? nullptr : reply.data(), reply.size(),
                                             to.buffer, to.size, to.length);
}

template <auto make>
std::int32_t fixed(const Arguments&, Target to) {
  return make(to.buffer, to.size, to.length);
}

template <auto make>
std::int32_t of_service(const Arguments& arguments, Target to) {
  return make(to.buffer, to.size, to.length, arguments.row("--service", 0));
}

template <auto make>
std::int32_t of_job(const Arguments& arguments, Target to) {
  return make(Text(arguments, "--job").get(), to.buffer, to.size, to.length);
}

template <auto make>
std::int32_t of_job_and_time(const Arguments& arguments, Target to) {
  return make(Text(arguments, "--job").get(), Text(arguments, "--time").get(), to.buffer, to.size,
              to.length);
}

template <auto make>
std::int32_t of_service_and_job(const Arguments& arguments, Target to) {
  return make(arguments.row("--service", 0), Text(arguments, "--job").get(), to.buffer, to.size,
              to.length);
}

std::int32_t make_mode_shift(const Arguments& arguments, Target to) {
  return CLSS_MakeCommand_ModeShift(arguments.row("--service", 0), Text(arguments, "--job").get(),
                                    Text(arguments, "--mode").get(), to.buffer, to.size, to.length);
}

std::int32_t make_job_configuration(const Arguments& arguments, Target to) {
  return CLSS_MakeCommand_SetJobConfiguration(
      Text(arguments, "--job").get(), Text(arguments, "--time").get(), arguments.row("--guide", 0),
      to.buffer, to.size, to.length);
}

std::int32_t make_page_configuration(const Arguments& arguments, Target to) {
  return CLSS_MakeCommand_SetPageConfiguration2(
      Text(arguments, "--job").get(), arguments.row("--next-page", 0),
      arguments.row("--preparation", 0), to.buffer, to.size, to.length);
}

std::int32_t make_device_configuration(const Arguments& arguments, Target to) {
  const ClssDeviceSettings settings = {CLSS_DEVICE_SETTINGS_VERSION,
                                       arguments.row("--agreement", 0)};
  return CLSS_MakeCommand_SetConfigurationDevice(settings, Text(arguments, "--job").get(),
                                                 to.buffer, to.size, to.length);
}

std::int32_t make_clock_job(const Arguments&, Target to) {
  return PXCL_MakeKWLSetTimeJob(reinterpret_cast<std::uint8_t*>(to.buffer), to.size, to.length);
}

// ---- The builders ----

std::vector<Builder> question_builders() {
  return {
      {"get-capability",
       "Ask what a service can do",
       "--service maintenance",
       {service(services_with_capability)},
       of_service<CLSS_MakeCommand_GetCapability>},
      {"get-configuration",
       "Ask how a service is set up",
       "--service device",
       {service(services_with_configuration)},
       of_service<CLSS_MakeCommand_GetConfiguration>},
      {"get-status",
       "Ask what a service is doing",
       "--job 00000042",
       {service(services_with_status), job_if_any()},
       make_status},
      {"get-jobs",
       "Ask for the IDs of the print jobs",
       "",
       {},
       fixed<CLSS_MakeCommand_GetJobIDList>},
  };
}

std::vector<Builder> job_builders() {
  return {
      {"start-job",
       "Open a job",
       "--job 00000042 --host linux --description '00000042 letter'",
       {job(),
        service(all_services),
        choice("--host", "Kind of computer that it comes from; needs --description",
               host_environments),
        {.name = "--description", .help = "Title, at most 64 bytes"},
        choice("--detection", "Detections told, none unless given", detection_choices),
        choice("--bidi", "Whether the computer listens, 0 unless given", bidi_choices)},
       make_start},
      {"end-job",
       "Close a job",
       "--job 00000042",
       {job(), service(all_services)},
       of_service_and_job<CLSS_MakeCommand_EndJob>},
      {"cancel-job",
       "Abort a job",
       "--job 00000042",
       {job(), service(all_services)},
       of_service_and_job<CLSS_MakeCommand_CancelJob>},
      {"mode-shift",
       "Switch the printer's mode inside a job",
       "--job 00000042 --mode 1",
       {job(), service(all_services), {.name = "--mode", .help = "The mode", .required = true}},
       make_mode_shift},
      {"set-job-configuration",
       "Configure a print job",
       "--job 00000042 --time 20240102030405",
       {job(), time(),
        choice("--guide", "The printer's own guide for printing on discs", on_or_off)},
       make_job_configuration},
      {"set-page-configuration",
       "Configure the next page",
       "--job 00000042 --next-page on",
       {job(), choice("--next-page", "Whether another page follows", on_or_off),
        choice("--preparation", "What is loaded by hand before it", preparations)},
       make_page_configuration},
      {"send-data",
       "Announce page data",
       "--job 00000042 --bytes 1048576",
       {job(), number("--bytes", "Size of the data that follow", 4'294'967'295),
        choice("--format", "Format of the data, pwg unless given", format_choices)},
       make_data},
      {"send-raw-data",
       "Announce raw pixels of three bytes",
       "--job 00000042 --width 640 --height 480",
       {job(), number("--width", "Pixels in a line", 65535), number("--height", "Lines", 65535)},
       make_raw_data},
  };
}

std::vector<Builder> setting_builders() {
  return {
      {"set-configuration",
       "Set paper and modes of a print job",
       "--job 00000042 --size a4 --type stationery --duplex long",
       {job(),
        choice("--size", "Paper size, by keyword or short name", size_choices, true),
        choice("--type", "Paper type", type_choices, true),
        choice("--borderless", "Print to the paper's edges, off unless given", on_or_off),
        choice("--color", "Colour mode", color_choices),
        choice("--duplex", "Both sides, turned at the long or short side", duplex_choices),
        {.name = "--capability",
         .help = "File with the printer's capability reply, for namespaces"}},
       make_configuration},
      {"set-device-configuration",
       "Set the answer to sharing usage information",
       "--job 00000042 --agreement disagree",
       {job(), choice("--agreement", "The owner's answer", agreements, true)},
       make_device_configuration},
  };
}

std::vector<Builder> maintenance_builders() {
  return {
      {"set-maintenance-configuration",
       "Configure a maintenance job",
       "--job 00000042 --time 20240102030405",
       {job(), time()},
       of_job_and_time<CLSS_MakeCommand_SetJobConfiguration_Maintenance>},
      {"nozzle-check",
       "Print a nozzle check pattern",
       "--job 00000042",
       {job()},
       of_job<CLSS_MakeCommand_TestPrint>},
      {"align",
       "Align the print heads",
       "--job 00000042",
       {job()},
       of_job<CLSS_MakeCommand_AutoRegistration>},
      {"clean",
       "Clean the print heads",
       "--job 00000042",
       {job()},
       of_job<CLSS_MakeCommand_Cleaning>},
      {"power-off", "Switch the printer off", "", {}, fixed<CLSS_MakeCommand_PowerOff>},
      {"firmware-mode",
       "Put the printer into firmware update mode",
       "",
       {},
       fixed<CLSS_MakeCommand_FRomUpMode>},
      {"end-hand-over", "End a hand-over", "", {}, fixed<CLSS_MakeCommand_Handoveroff>},
      {"clock-job",
       "A job, not an XML command, that sets the printer's clock to now",
       "",
       {},
       make_clock_job},
  };
}

// ---- Running one ----

[[noreturn]] void refuse(std::int32_t status) {
  switch (status) {
    case CLSS_COMMAND_NOT_ACCEPTED:
      throw Failure{kUsage, "--description takes at most 64 bytes, and --host needs one."};
    case CLSS_COMMAND_NOT_FORMATTED:
      throw Failure{kUsage, "A text is empty, or too long for its place in the document."};
    case CLSS_COMMAND_NO_MEMORY:
      throw Failure{kUsage, "There is not enough memory for the document."};
    default:
      throw Failure{kUsage,
                    "The capability reply is none, or does not list this paper size and type."};
  }
}

std::string make_document(const Builder& builder, const Arguments& arguments) {
  std::string buffer(4096, '\0');
  std::uint64_t length = 0;
  std::int32_t status = builder.make(arguments, {buffer.data(), buffer.size(), &length});
  if (status == CLSS_COMMAND_BUFFER_TOO_SMALL) {
    buffer.resize(length);
    status = builder.make(arguments, {buffer.data(), buffer.size(), &length});
  }
  if (status != CLSS_COMMAND_OK) refuse(status);
  buffer.resize(length);
  return buffer;
}

// To a file or a printer go the document's bytes and no others; a terminal gets its line feed.
ExitCode run(const Builder& builder, const Arguments& arguments) {
  const std::string document = make_document(builder, arguments);
  if (arguments.has("--json")) {
    show(arguments, Value::Object{{"document", document}});
  } else {
    print(isatty(STDOUT_FILENO) ? printable(document) + "\n" : document);
  }
  return kOk;
}

}  // namespace

std::vector<Command> build_commands() {
  std::vector<Command> commands;
  for (const auto list :
       {question_builders, job_builders, setting_builders, maintenance_builders}) {
    for (const Builder& builder : list()) {
      std::vector<Option> options = builder.options;
      options.push_back(json_option());
      std::string example = "  pxcl build " + builder.name;
      if (!builder.example.empty()) example += " " + builder.example;
      commands.push_back({"build " + builder.name, builder.help, example, options,
                          [builder](const Arguments& given) { return run(builder, given); }});
    }
  }
  return commands;
}

}  // namespace pxcl::cli
