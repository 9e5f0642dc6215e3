// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>

#include <algorithm>
#include <fstream>
#include <memory>
#include <regex>
#include <set>

#include "catalogue.hpp"
#include "commands.h"
#include "support.hpp"

using namespace pxcl_test;

namespace {

std::string path_of(const Command& command) {
  return "commands/" + command.file + ".xml";
}

TEST(Documents, AreThoseOfTheFiles) {
  for (const Command& command : catalogue()) {
    SCOPED_TRACE(command.file);
    const Made made = make(command);
    EXPECT_EQ(made.status, CLSS_COMMAND_OK);
    EXPECT_EQ(made.document, read_data(path_of(command)));
  }
}

// A builder without a document here, or a file that no builder makes, is an oversight.
TEST(Documents, CoverEveryBuilder) {
  std::set<std::string> listed, files;
  for (const Command& command : catalogue()) {
    listed.insert(command.builder);
    EXPECT_TRUE(files.insert(path_of(command)).second) << command.file;
  }
  for (const std::string& file : list_data("commands")) {
    EXPECT_TRUE(files.count(file)) << file << " belongs to no builder";
  }
  std::ifstream header(PXCL_COMMANDS_HEADER);
  const std::string text{std::istreambuf_iterator<char>(header), {}};
  const std::regex declaration(R"(CLSS_MakeCommand_(\w+)\()");
  std::set<std::string> declared;
  for (std::sregex_iterator i(text.begin(), text.end(), declaration), end; i != end; ++i) {
    declared.insert((*i)[1]);
  }
  EXPECT_EQ(declared, listed);
}

// ---- The documents as another parser reads them ----

struct Free {
  void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
  void operator()(xmlParserCtxt* context) const { xmlFreeParserCtxt(context); }
  void operator()(xmlXPathContext* context) const { xmlXPathFreeContext(context); }
  void operator()(xmlXPathObject* object) const { xmlXPathFreeObject(object); }
};

using Tree = std::unique_ptr<xmlDoc, Free>;

// The encoding comes from outside: one command's own is none that a parser knows.
Tree parse(const std::string& text) {
  const std::unique_ptr<xmlParserCtxt, Free> context(xmlNewParserCtxt());
  Tree tree(xmlCtxtReadMemory(context.get(), text.data(), static_cast<int>(text.size()), nullptr,
                              "utf-8", XML_PARSE_IGNORE_ENC));
  EXPECT_TRUE(context->wellFormed && context->nsWellFormed) << text;
  return tree;
}

// An XPath expression as text; z, v and t are the three namespaces.
std::string ask(const Tree& tree, const std::string& expression) {
  const std::unique_ptr<xmlXPathContext, Free> context(xmlXPathNewContext(tree.get()));
  const std::string host = "http://www.example.com/ns/";
  for (const auto& [prefix, uri] :
       {std::pair<const char*, std::string>{"z", host + "cmd/2008/07/common/"},
        {"v", host + "cmd/2008/07/vaslo/"},
        {"t", host + "wdp/2008/01/print/"}}) {
    xmlXPathRegisterNs(context.get(), reinterpret_cast<const xmlChar*>(prefix),
                       reinterpret_cast<const xmlChar*>(uri.c_str()));
  }
  const std::unique_ptr<xmlXPathObject, Free> result(xmlXPathEvalExpression(
      reinterpret_cast<const xmlChar*>(("string(" + expression + ")").c_str()), context.get()));
  return reinterpret_cast<const char*>(result->stringval);
}

TEST(Documents, AreReadByAnotherParser) {
  for (const Command& command : catalogue()) {
    SCOPED_TRACE(command.file);
    const Tree tree = parse(read_data(path_of(command)));
    ASSERT_TRUE(tree);
    EXPECT_EQ(ask(tree, "count(/cmd/z:contents/*)"), "2");
    EXPECT_NE(ask(tree, "/cmd/z:contents/z:operation"), "");
    EXPECT_NE(ask(tree, "/cmd/z:contents/z:param_set/@servicetype"), "");
    // A namespace is declared exactly where it is used ("xml" counts among a parser's).
    const bool vendor = ask(tree, "count(//v:*) > 0") == "true";
    const bool declared = ask(tree, "count(/cmd/namespace::vrx)") == "1";
    EXPECT_TRUE(declared == vendor || command.kind == Kind::kMaintenance);
  }
}

TEST(Documents, HoldValuesWhereTheyBelong) {
  const struct {
    const char* file;
    const char* inParameters;  // below param_set
    const char* value;
  } kCases[] = {
      {"StartJob_1_described", "@servicetype", "maintenance"},
      {"StartJob_3_host", "@servicetype", "scan"},
      {"StartJob_3_host", "z:jobID", "00000042"},
      {"StartJob_3_host", "z:bidi", "1"},
      {"StartJob_3_host", "z:job_description", "Sheet 3 <of> 5 & more"},
      {"StartJob_3_host", "v:host_environment", "other"},
      {"StartJob_2", "count(v:*)", "1"},
      {"StartJob_2", "v:forcepmdetection", "OFF"},
      {"ModeShift", "v:ijmode", "1"},
      {"SendDataRAW", "z:datawidth", "100"},
      {"SendDataRAW", "z:datalength", "50"},
      {"SendDataRAW", "z:datasize", "15000"},
      {"SetPageConfiguration_both", "v:nextpage", "ON"},
      {"SetPageConfiguration_both", "v:printpreparation", "manualfeed"},
      {"SetJobConfiguration_both", "z:datetime", "20240102030405"},
      {"SetJobConfiguration_both", "v:device_side_guide/v:item[@name='disc']", "ON"},
      {"SetConfiguration_schema_size", "t:papersize", "iso_a4_210x297mm"},
      {"SetConfiguration_schema_size", "z:papertype", "stationery"},
      {"SetConfiguration_all_namespaces", "t:papersize", "iso_a4_210x297mm"},
      {"SetConfiguration_all_namespaces", "v:duplexprint", "ON"},
      {"SetConfiguration_all_namespaces", "z:stapleside", "shortside"},
      {"SetConfiguration_device", "v:selfPLIagreement", "disagree"},
      {"SetJobConfiguration_Maintenance_time", "z:jobID/following-sibling::z:datetime",
       "20240102030405"},
  };
  for (const auto& c : kCases) {
    const Tree tree = parse(read_data(std::string("commands/") + c.file + ".xml"));
    const std::string below = c.inParameters;
    const std::string set = "/cmd/z:contents/z:param_set/";
    const bool counts = below.starts_with("count(");
    EXPECT_EQ(ask(tree, counts ? "count(" + set + below.substr(6) : set + below), c.value)
        << c.file << " " << c.inParameters;
  }
}

}  // namespace
