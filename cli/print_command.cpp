// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// `pxcl print`.

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "cli/connection.hpp"
#include "cli/document.hpp"
#include "cli/output.hpp"
#include "cli/progress.hpp"
#include "cli/signals.hpp"
#include "cli/text.hpp"
#include "cli/values.hpp"
#include "client/print_job.hpp"
#include "client/settings.hpp"

namespace pxcl::cli {

namespace {

using Kind = Option::Kind;
using Object = Value::Object;
using client::Page;
using client::PageSource;
using client::Result;

// The pages of a document several times over.
class Copies : public PageSource {
 public:
  Copies(Document& document, const Rendering& rendering, std::int64_t count)
      : document_(document), rendering_(rendering), left_(count) {}

  Result<std::optional<Page>> next_page() override {
    if (copy_done_) pages_.reset();
    if (!pages_) {
      if (left_ == 0) return std::optional<Page>();
      auto opened = document_.pages(rendering_);
      if (!opened.ok()) return opened.error();
      pages_ = std::move(opened).value();
      --left_;
    }
    Result<std::optional<Page>> page = pages_->next_page();
    if (!page.ok() || !page.value()) return page;
    copy_done_ = !page.value()->another_follows;
    page.value()->another_follows |= left_ > 0;
    return page;
  }

  Result<std::size_t> read(std::span<char> buffer) override { return pages_->read(buffer); }

 private:
  Document& document_;
  Rendering rendering_;
  std::int64_t left_;
  std::unique_ptr<PageSource> pages_;
  bool copy_done_ = false;
};

std::optional<std::string> keyword_of(client::Dictionary dictionary, const Arguments& arguments,
                                      std::string_view option) {
  if (!arguments.has(option)) return {};
  const auto word = dictionary.at(arguments.row(option, 0));
  return word ? std::optional<std::string>(word->keyword) : std::nullopt;
}

// The printer's size of a sheet: within a millimetre, the way that it lies.
std::optional<client::Word> size_of(const client::Outline& sheet,
                                    const client::PrintCapability& capability) {
  constexpr std::int32_t kTolerance = 100;
  for (const client::PaperSize& size : capability.sizes) {
    if (size.outline && std::abs(size.outline->width - sheet.width) <= kTolerance &&
        std::abs(size.outline->height - sheet.height) <= kTolerance) {
      return size.size;
    }
  }
  return {};
}

bool is_loaded(const client::Word& size, const std::optional<std::string>& type,
               const client::Status& status) {
  return std::ranges::any_of(status.paper, [&](const client::LoadedPaper& paper) {
    return paper.size == size && (!type || paper.type.keyword == *type);
  });
}

// The document's own size, for want of a wish. Where it is not loaded, what is rendered is fitted to what is; raster
// can't be.
std::optional<std::string> own_size(const Document& document,
                                    const std::optional<std::string>& type,
                                    const client::PrintCapability& capability,
                                    const client::Status& status) {
  const auto sheet = value_or_fail(document.sheet());
  const auto size = sheet ? size_of(*sheet, capability) : std::nullopt;
  if (!size || !(document.is_raster() || is_loaded(*size, type, status))) return {};
  return std::string(size->keyword);
}

client::Wishes wishes_of(const Arguments& arguments, const Document& document,
                         const client::PrintCapability& capability, const client::Status& status) {
  client::Wishes wishes;
  wishes.size = keyword_of(client::paper_sizes(), arguments, "--size");
  wishes.type = keyword_of(client::paper_types(), arguments, "--type");
  if (!wishes.size) wishes.size = own_size(document, wishes.type, capability, status);
  wishes.color_mode = keyword_of(client::color_modes(), arguments, "--color");
  if (arguments.has("--borderless")) {
    wishes.borderless = arguments.row("--borderless", 0) == client::kBorderlessOn;
  }
  if (arguments.has("--duplex")) {
    wishes.duplex = static_cast<client::DuplexRow>(arguments.row("--duplex", 0));
  }
  return wishes;
}

std::string title_of(const Arguments& arguments) {
  if (arguments.has("--title")) return arguments.text("--title");
  const std::string path = arguments.text("FILE");
  return path == "-" ? "standard input" : std::filesystem::path(path).filename().string();
}

client::PrintOptions options_of(const Arguments& arguments, ProgressBar& bar) {
  client::PrintOptions options;
  options.title = title_of(arguments);
  options.attention_limit = std::chrono::seconds(arguments.number("--wait", 120));
  options.cancelled = interrupted();
  options.on_progress = [&bar](const client::Progress& progress) { bar.show(progress); };
  return options;
}

Value settings_value(const client::Settings& settings) {
  return Object{
      {"size", settings.size.keyword},
      {"type", settings.type.keyword},
      {"borderless", settings.borderless},
      {"color", settings.color_mode ? Value(settings.color_mode->keyword) : Value()},
      {"duplex", settings.duplex ? Value(duplex_name(*settings.duplex)) : Value()},
  };
}

Value::List names(const std::vector<std::filesystem::path>& pages) {
  Value::List list;
  for (const std::filesystem::path& page : pages) list.push_back(page.string());
  return list;
}

void show_report(const Arguments& arguments, const client::PrintReport& report,
                 const client::Settings& settings, const Connection& connection) {
  Object object = {{"job", report.job_id},
                   {"pages", report.pages},
                   {"bytes", static_cast<std::int64_t>(report.bytes)}};
  if (const auto pages = connection.pages(); !pages.empty())
    object.push_back({"files", names(pages)});
  object.push_back({"settings", settings_value(settings)});
  show(arguments, object);
}

// The pages are printed; whether the printer wants a look is one question more, and its failure no failure of theirs.
ExitCode look_after(client::Printer& printer) {
  const Result<client::Status> status = printer.status();
  if (!status.ok() || status.value().inks_fine != false) return kOk;
  complain("The pages are printed. An ink of the printer's wants a look: it is low or unknown.");
  return kWarning;
}

ExitCode run(const Arguments& arguments) {
  Connection connection(arguments);
  Document document = value_or_fail(Document::open(arguments.text("FILE"), interrupted()));
  const std::int64_t copies = arguments.number("--copies", 1);
  if (copies > 1 && !document.is_repeatable()) {
    throw Failure{kUsage, "Raster from a pipe can be printed once only: give --copies a file."};
  }
  client::Printer& printer = connection.printer();
  const client::PrintCapability capability = value_or_fail(printer.print_capability());
  const client::Status status = value_or_fail(printer.status());
  const client::Settings settings = value_or_fail(client::complete_settings(
      wishes_of(arguments, document, capability, status), capability, status));
  constexpr std::uint16_t kColor = 1;  // row of the colour modes; all others are of black ink
  const bool gray = settings.color_mode && *settings.color_mode != kColor;
  const Rendering rendering = {settings.outline,
                               static_cast<unsigned>(arguments.number("--resolution", 300)), gray};
  Copies pages(document, rendering, copies);
  ProgressBar bar;
  client::PrintJob job(printer, capability, settings, options_of(arguments, bar));
  const Result<client::PrintReport> report = job.print(pages);
  bar.clear();
  if (!report.ok()) fail(report.error());
  const ExitCode code = look_after(printer);
  connection.close_trace();
  show_report(arguments, report.value(), settings, connection);
  return code;
}

std::vector<Option> print_options() {
  return {
      {.name = "FILE",
       .help = "PWG or CUPS raster, PDF or PostScript; - reads standard input",
       .required = true},
      {.name = "--size",
       .kind = Kind::kKeyword,
       .help = "Paper size, such as iso_a4_210x297mm or a4; else the document's or the loaded one",
       .choices = size_choices},
      {.name = "--type",
       .kind = Kind::kKeyword,
       .help = "Paper type, such as stationery; else the loaded one",
       .choices = type_choices},
      {.name = "--borderless",
       .kind = Kind::kKeyword,
       .help = "Print to the paper's edges",
       .choices = on_or_off},
      {.name = "--color", .kind = Kind::kKeyword, .help = "Colour mode", .choices = color_choices},
      {.name = "--duplex",
       .kind = Kind::kKeyword,
       .help = "Both sides, turned at which side",
       .choices = duplex_choices},
      {.name = "--copies",
       .kind = Kind::kNumber,
       .help = "How often, 1 unless given",
       .least = 1,
       .most = 999},
      {.name = "--title", .help = "Title of the job, the file's name unless given"},
      {.name = "--resolution",
       .kind = Kind::kNumber,
       .help = "Dots per inch that PDF and PostScript are rendered in, 300 unless given",
       .least = 72,
       .most = 1200},
      {.name = "--wait",
       .kind = Kind::kNumber,
       .help = "Seconds that a printer which needs a person is waited for, 120 unless given",
       .least = 0,
       .most = 86'400},
  };
}

}  // namespace

std::vector<Command> print_commands() {
  return {
      {"print", "Print a document",
       "  pxcl print letter.pdf --printer virtual:office\n"
       "  pxcl print photo.pwg --size 4x6in --type photographic --borderless on\n"
       "  pdftops report.pdf - | pxcl print - --title 'Report' --duplex long",
       with_connection(print_options()), run},
  };
}

}  // namespace pxcl::cli
