// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// One command of each kind, against two libraries that build the same document element by element
// and write it out. All documents are compared before the clock starts.

#include <benchmark/benchmark.h>
#include <libxml/xmlwriter.h>

#include <cstdio>
#include <cstdlib>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "commands.h"

namespace {

constexpr const char* kJob = "00000042";

[[noreturn]] void fail(const std::string& message) {
  std::fprintf(stderr, "%s\n", message.c_str());
  std::exit(1);
}

struct Command {
  const char* name;
  int32_t (*make)(char* buffer, uint64_t size, uint64_t* length);
};

const Command kCommands[] = {
    {"fixed_power_off", CLSS_MakeCommand_PowerOff},
    {"formatted_start_job",
     [](char* b, uint64_t s, uint64_t* l) {
       return CLSS_MakeCommand_StartJob3(0, 3, "Sheet 3 of 5", 3, kJob, "0", b, s, l);
     }},
    {"formatted_end_job",
     [](char* b, uint64_t s, uint64_t* l) { return CLSS_MakeCommand_EndJob(0, kJob, b, s, l); }},
    {"formatted_set_configuration",
     [](char* b, uint64_t s, uint64_t* l) {
       return CLSS_MakeCommand_SetConfigurationNS({2, 4, 12, 2}, {1, 4}, kJob, nullptr, 0, b, s, l);
     }},
    {"keyed_send_data",
     [](char* b, uint64_t s, uint64_t* l) {
       return CLSS_MakeCommand_SendDataPWGRaster(kJob, 123456, b, s, l);
     }},
    {"keyed_set_job_configuration",
     [](char* b, uint64_t s, uint64_t* l) {
       return CLSS_MakeCommand_SetJobConfiguration(kJob, "20240102030405", 2, b, s, l);
     }},
    {"maintenance_cleaning",
     [](char* b, uint64_t s, uint64_t* l) { return CLSS_MakeCommand_Cleaning(kJob, b, s, l); }},
};

// What the peers build from: known before the clock starts, values included.
struct Element {
  std::string name;
  std::vector<std::pair<std::string, std::string>> attributes;
  std::string text;
  bool isCData = false;
  std::vector<Element> children;
};

// ---- The library ----

struct Document {
  std::vector<char> buffer;
  uint64_t length = 0;
  std::string_view text() const { return {buffer.data(), length}; }
};

void build_pxcl(const Command& command, Document& document) {
  if (command.make(document.buffer.data(), document.buffer.size(), &document.length) != 0) {
    fail(command.name);
  }
}

Document make_room(const Command& command) {
  Document document{std::vector<char>(4096)};
  // The need of a maintenance command is asked for with a buffer.
  if (command.make(nullptr, 0, &document.length) != 0 &&
      command.make(document.buffer.data(), 0, &document.length) != 0) {
    fail(command.name);
  }
  document.buffer.resize(document.length + 1);
  build_pxcl(command, document);
  return document;
}

// ---- pugixml ----

void append(pugi::xml_node parent, const Element& element) {
  pugi::xml_node node = parent.append_child(element.name.c_str());
  for (const auto& [name, value] : element.attributes) {
    node.append_attribute(name.c_str()).set_value(value.c_str());
  }
  if (!element.text.empty()) {
    node.append_child(element.isCData ? pugi::node_cdata : pugi::node_pcdata)
        .set_value(element.text.c_str());
  }
  for (const Element& child : element.children) append(node, child);
}

struct StringWriter : pugi::xml_writer {
  std::string text;
  void write(const void* data, size_t size) override {
    text.append(static_cast<const char*>(data), size);
  }
};

void build_pugixml(const Element& root, StringWriter& writer) {
  writer.text.clear();
  pugi::xml_document document;
  append(document, root);
  document.save(writer, "", pugi::format_raw, pugi::encoding_utf8);
}

// ---- libxml2 ----

const xmlChar* chars(const std::string& text) {
  return reinterpret_cast<const xmlChar*>(text.c_str());
}

void write(xmlTextWriter* writer, const Element& element) {
  xmlTextWriterStartElement(writer, chars(element.name));
  for (const auto& [name, value] : element.attributes) {
    xmlTextWriterWriteAttribute(writer, chars(name), chars(value));
  }
  if (element.isCData) {
    xmlTextWriterWriteCDATA(writer, chars(element.text));
  } else if (!element.text.empty()) {
    xmlTextWriterWriteString(writer, chars(element.text));
  }
  for (const Element& child : element.children) write(writer, child);
  xmlTextWriterEndElement(writer);
}

void build_libxml2(const Element& root, xmlBuffer* buffer) {
  xmlBufferEmpty(buffer);
  xmlTextWriter* const writer = xmlNewTextWriterMemory(buffer, 0);
  xmlTextWriterStartDocument(writer, nullptr, nullptr, nullptr);
  write(writer, root);
  xmlTextWriterEndDocument(writer);
  xmlFreeTextWriter(writer);
}

// ---- Before the clock ----

Element describe(const pugi::xml_node node) {
  Element element;
  element.name = node.name();
  for (const pugi::xml_attribute attribute : node.attributes()) {
    element.attributes.emplace_back(attribute.name(), attribute.value());
  }
  for (const pugi::xml_node child : node.children()) {
    if (child.type() == pugi::node_element) {
      element.children.push_back(describe(child));
    } else {
      element.text = child.value();
      element.isCData = child.type() == pugi::node_cdata;
    }
  }
  return element;
}

// The root of a document as one spelling, whoever wrote it.
std::string spell(std::string_view text, Element* root = nullptr) {
  pugi::xml_document document;
  if (!document.load_buffer(text.data(), text.size(), pugi::parse_full, pugi::encoding_utf8)) {
    fail("a document that does not parse");
  }
  if (root != nullptr) *root = describe(document.document_element());
  StringWriter writer;
  document.document_element().print(writer, "", pugi::format_raw);
  return writer.text;
}

void add(const Command& command) {
  const Document made = make_room(command);
  Element root;
  const std::string expected = spell(made.text(), &root);
  StringWriter writer;
  build_pugixml(root, writer);
  xmlBuffer* const buffer = xmlBufferCreate();
  build_libxml2(root, buffer);
  const std::string libxml2(reinterpret_cast<const char*>(xmlBufferContent(buffer)));
  xmlBufferFree(buffer);
  if (spell(writer.text) != expected || spell(libxml2) != expected) fail("documents differ");

  const std::string name = command.name;
  benchmark::RegisterBenchmark((name + "/pxcl").c_str(), [command](benchmark::State& state) {
    Document document = make_room(command);
    for (auto _ : state) {
      build_pxcl(command, document);
      benchmark::DoNotOptimize(document.buffer.data());
    }
  });
  benchmark::RegisterBenchmark((name + "/pugixml").c_str(), [root](benchmark::State& state) {
    StringWriter output;
    for (auto _ : state) {
      build_pugixml(root, output);
      benchmark::DoNotOptimize(output.text.data());
    }
  });
  benchmark::RegisterBenchmark((name + "/libxml2").c_str(), [root](benchmark::State& state) {
    xmlBuffer* const output = xmlBufferCreate();
    for (auto _ : state) {
      build_libxml2(root, output);
      benchmark::DoNotOptimize(output);
    }
    xmlBufferFree(output);
  });
}

[[maybe_unused]] const bool kRegistered = [] {
  for (const Command& command : kCommands) add(command);
  return true;
}();

}  // namespace
