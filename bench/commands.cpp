// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// One command of each kind, against libraries that build the same document element by element and
// write it out, by a writer that needs no tree where they have one. All documents are compared
// before the clock starts.

#include <libxml/xmlwriter.h>
#include <tinyxml2.h>

#include <memory>
#include <pugixml.hpp>
#include <rapidxml/rapidxml.hpp>
#include <rapidxml/rapidxml_print.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "commands.h"
#include "harness.hpp"

namespace {

constexpr const char* kJob = "00000042";

using pxcl_bench::fail;

struct Command {
  const char* name;
  const char* title;
  int32_t (*make)(char* buffer, uint64_t size, uint64_t* length);
};

const Command kCommands[] = {
    {"fixed_power_off", "power off: fixed text", CLSS_MakeCommand_PowerOff},
    {"formatted_start_job", "start a job",
     [](char* b, uint64_t s, uint64_t* l) {
       return CLSS_MakeCommand_StartJob3(0, 3, "Sheet 3 of 5", 3, kJob, "0", b, s, l);
     }},
    {"formatted_end_job", "end a job",
     [](char* b, uint64_t s, uint64_t* l) { return CLSS_MakeCommand_EndJob(0, kJob, b, s, l); }},
    {"formatted_set_configuration", "set the configuration",
     [](char* b, uint64_t s, uint64_t* l) {
       return CLSS_MakeCommand_SetConfigurationNS({2, 4, 12, 2}, {1, 4}, kJob, nullptr, 0, b, s, l);
     }},
    {"keyed_send_data", "send data",
     [](char* b, uint64_t s, uint64_t* l) {
       return CLSS_MakeCommand_SendDataPWGRaster(kJob, 123456, b, s, l);
     }},
    {"keyed_set_job_configuration", "set a job's configuration",
     [](char* b, uint64_t s, uint64_t* l) {
       return CLSS_MakeCommand_SetJobConfiguration(kJob, "20240102030405", 2, b, s, l);
     }},
    {"maintenance_cleaning", "clean",
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

// ---- The peers: build() makes the document, text() is it ----

class PugiXml {
 public:
  void build(const Element& root) {
    writer_.text.clear();
    tree_.reset();
    append(tree_, root);
    tree_.save(writer_, "", pugi::format_raw, pugi::encoding_utf8);
  }
  std::string_view text() const { return writer_.text; }

  struct Writer : pugi::xml_writer {
    std::string text;
    void write(const void* data, size_t size) override {
      text.append(static_cast<const char*>(data), size);
    }
  };

 private:
  static void append(pugi::xml_node parent, const Element& element) {
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

  pugi::xml_document tree_;
  Writer writer_;
};

// Its nodes point to the texts that they are given; it writes into a buffer that is large enough.
class RapidXml {
 public:
  void build(const Element& root) {
    tree_.clear();
    auto* declaration = tree_.allocate_node(rapidxml::node_declaration);
    declaration->append_attribute(tree_.allocate_attribute("version", "1.0"));
    tree_.append_node(declaration);
    append(&tree_, root);
    length_ = static_cast<std::size_t>(
        rapidxml::print(buffer_.data(), tree_, rapidxml::print_no_indenting) - buffer_.data());
  }
  std::string_view text() const { return {buffer_.data(), length_}; }

 private:
  void append(rapidxml::xml_node<>* parent, const Element& element) {
    auto* node = tree_.allocate_node(rapidxml::node_element, element.name.data(), nullptr,
                                     element.name.size());
    parent->append_node(node);
    for (const auto& [name, value] : element.attributes) {
      node->append_attribute(
          tree_.allocate_attribute(name.data(), value.data(), name.size(), value.size()));
    }
    if (!element.text.empty()) {
      node->append_node(
          tree_.allocate_node(element.isCData ? rapidxml::node_cdata : rapidxml::node_data, nullptr,
                              element.text.data(), 0, element.text.size()));
    }
    for (const Element& child : element.children) append(node, child);
  }

  rapidxml::xml_document<> tree_;
  std::vector<char> buffer_ = std::vector<char>(64 * 1024);
  std::size_t length_ = 0;
};

class TinyXml2 {
 public:
  void build(const Element& root) {
    printer_.ClearBuffer();
    printer_.PushHeader(false, true);
    write(root);
  }
  std::string_view text() const {
    return {printer_.CStr(), static_cast<std::size_t>(printer_.CStrSize() - 1)};
  }

 private:
  void write(const Element& element) {
    printer_.OpenElement(element.name.c_str(), true);
    for (const auto& [name, value] : element.attributes) {
      printer_.PushAttribute(name.c_str(), value.c_str());
    }
    if (!element.text.empty()) printer_.PushText(element.text.c_str(), element.isCData);
    for (const Element& child : element.children) write(child);
    printer_.CloseElement(true);
  }

  tinyxml2::XMLPrinter printer_{nullptr, true};
};

class LibXml2 {
 public:
  LibXml2() : buffer_(xmlBufferCreate()) {}
  LibXml2(const LibXml2&) = delete;
  LibXml2& operator=(const LibXml2&) = delete;
  ~LibXml2() { xmlBufferFree(buffer_); }

  void build(const Element& root) {
    xmlBufferEmpty(buffer_);
    xmlTextWriter* const writer = xmlNewTextWriterMemory(buffer_, 0);
    xmlTextWriterStartDocument(writer, nullptr, nullptr, nullptr);
    write(writer, root);
    xmlTextWriterEndDocument(writer);
    xmlFreeTextWriter(writer);
  }
  std::string_view text() const {
    return {reinterpret_cast<const char*>(xmlBufferContent(buffer_)),
            static_cast<std::size_t>(xmlBufferLength(buffer_))};
  }

 private:
  static const xmlChar* chars(const std::string& text) {
    return reinterpret_cast<const xmlChar*>(text.c_str());
  }
  static void write(xmlTextWriter* writer, const Element& element) {
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

  xmlBuffer* buffer_;
};

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
  PugiXml::Writer writer;
  document.document_element().print(writer, "", pugi::format_raw);
  return writer.text;
}

template <typename Peer>
void add_peer(const pxcl_bench::Task& task, const char* who, const Element& root,
              const std::string& expected) {
  const auto prepare = [root] {
    return [root, peer = std::make_shared<Peer>()] {
      peer->build(root);
      return peer->text();
    };
  };
  const auto build = prepare();
  build();
  if (spell(build()) != expected) fail(task.name + ": " + who + " builds something else");
  pxcl_bench::add_row(task, who, prepare);
}

void add_command(const Command& command) {
  const pxcl_bench::Task task = {command.name, command.title};
  Element root;
  const std::string expected = spell(make_room(command).text(), &root);
  pxcl_bench::add_row(task, "pxcl", [command] {
    return [command, document = make_room(command)]() mutable { build_pxcl(command, document); };
  });
  add_peer<RapidXml>(task, "rapidxml", root, expected);
  add_peer<PugiXml>(task, "pugixml", root, expected);
  add_peer<TinyXml2>(task, "tinyxml2", root, expected);
  add_peer<LibXml2>(task, "libxml2", root, expected);
}

}  // namespace

void pxcl_bench::add_rows() {
  for (const Command& command : kCommands) add_command(command);
}
