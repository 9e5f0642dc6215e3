// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Any text in a command. The first byte of the input is a limit, the rest is the title of a job, or the content of an
// element: another parser reads it again, good UTF-8 and not too long.

#include "client/text.hpp"

#include <pugixml.hpp>
#include <string>

#include "client/job.hpp"
#include "pxcl.h"
#include "support.hpp"

namespace {

using namespace pxcl;
using client::Result;
using fuzz::require;

constexpr std::string_view kJob = "00000042";

// Reads what goes by, and answers nothing.
struct Reader : client::Channel {
  Result<std::string> exchange(std::string_view command, std::string_view) override {
    const pugi::xml_parse_result result = document.load_buffer(command.data(), command.size());
    require(static_cast<bool>(result) && printer::read_xml(command).root.has_value());
    return client::Error{client::Fault::kUnreachable, "Nobody."};
  }
  Result<std::string> device_id() override { return std::string(); }

  pugi::xml_document document;
};

void start_job(std::string_view title) {
  Reader reader;
  client::OpenJob job(reader, client::Service::kPrint, std::string(kJob));
  require(!job.start(title, client::host_environments().at(1)).ok());
  const std::string_view description =
      reader.document.select_node("//zirk:job_description").node().child_value();
  require(description.starts_with(kJob) && description.size() <= CLSS_JOB_DESCRIPTION_MAX);
  require(fuzz::is_line(description));
}

void element(std::string_view text, std::size_t limit) {
  const std::string content = client::element_text(text, limit);
  require(content.size() <= limit);
  const std::string markup = "<a>" + content + "</a>";
  pugi::xml_document document;
  require(static_cast<bool>(document.load_buffer(markup.data(), markup.size(),
                                                 pugi::parse_default | pugi::parse_ws_pcdata)));
  const std::string_view back = document.document_element().child_value();
  const std::string clean = client::clean_line(text);
  require(fuzz::is_line(clean) && fuzz::is_line(back) && clean.starts_with(back));
  require(client::clean_line(clean) == clean);
  require(fuzz::is_line(client::cut(clean, limit)));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const std::string_view text = fuzz::text_of(data + 1, size - 1);
  start_job(text);
  element(text, data[0]);
  return 0;
}
