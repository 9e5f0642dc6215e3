// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// `pxcl text`: small values in text files.

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>

#include "cli/command.hpp"
#include "cli/input.hpp"
#include "cli/output.hpp"
#include "cli/text.hpp"
#include "pxcl.h"

namespace pxcl::cli {

namespace {

std::string given_text(const Arguments& arguments) {
  const std::string text = arguments.text("TEXT");
  return text == "-" ? read_input(text) : text;
}

std::string hexadecimal(std::string_view bytes) {
  std::string digits;
  for (const char byte : bytes) digits += filled("{:02x}", static_cast<unsigned char>(byte));
  return digits;
}

// The bytes as they are, but not to a terminal.
void show_bytes(const Arguments& arguments, const std::string& bytes) {
  if (arguments.has("--json")) {
    show(arguments, Value::Object{{"text", bytes},
                                  {"bytes", static_cast<std::int64_t>(bytes.size())},
                                  {"hexadecimal", hexadecimal(bytes)}});
  } else {
    print(isatty(STDOUT_FILENO) ? printable(bytes) + "\n" : bytes);
  }
}

ExitCode encode(const Arguments& arguments) {
  const std::string text = given_text(arguments);
  std::string code(2 * text.size() + 9, '\0');
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  if (PXCL_EncodeToString(bytes, text.size(), code.data(), code.size()) < 0) {
    throw Failure{kUsage, "The text is too long to be encoded."};
  }
  if (arguments.has("--json")) {
    show(arguments, Value::Object{{"code", code}});
  } else {
    print(code + "\n");
  }
  return kOk;
}

ExitCode decode(const Arguments& arguments) {
  std::string code = given_text(arguments);
  code.erase(code.find_last_not_of("\r\n") + 1);
  std::string bytes(code.size() / 2 + 1, '\0');
  auto* output = reinterpret_cast<std::uint8_t*>(bytes.data());
  const std::int32_t count = PXCL_DecodeFromString(code.data(), code.size(), output, bytes.size());
  if (count < 0) {
    throw Failure{kUsage,
                  "This is no encoded text, or one that was damaged: letters a to p, \"=\" "
                  "and the checksum's eight letters are expected."};
  }
  bytes.resize(static_cast<std::size_t>(count));
  show_bytes(arguments, bytes);
  return kOk;
}

// The library reads the file twice, which takes a plain file, and all of it into memory.
void require_plain_file(const std::string& path) {
  constexpr off_t kLongest = off_t{4} << 20;
  struct stat facts;
  if (stat(path.c_str(), &facts) != 0 || access(path.c_str(), R_OK) != 0) {
    throw Failure{kUsage, filled("{} can't be read.", printable(path))};
  }
  if (!S_ISREG(facts.st_mode) || facts.st_size > kLongest) {
    throw Failure{kUsage, filled("{} is no file, or longer than 4 MiB.", printable(path))};
  }
}

ExitCode look_up(const Arguments& arguments) {
  const std::string path = arguments.text("FILE");
  const std::string tag = arguments.text("TAG");
  require_plain_file(path);
  char* found = nullptr;
  const std::int32_t length = PXCL_GetStringWithTagFromFile(
      path.c_str(), tag.c_str(), arguments.has("--decode") ? 1 : 0, &found);
  const std::unique_ptr<char, void (*)(void*)> owner(found, &free);
  if (length < 0) {
    throw Failure{kUsage,
                  filled("{} holds no value for the tag {}{}.", printable(path), printable(tag),
                         arguments.has("--decode") ? " that can be decoded" : "")};
  }
  show_bytes(arguments, std::string(found, static_cast<std::size_t>(length)));
  return kOk;
}

Option text_option(std::string help) {
  return {.name = "TEXT", .help = std::move(help), .required = true};
}

}  // namespace

std::vector<Command> text_commands() {
  const Option decode_option = {
      .name = "--decode", .kind = Option::Kind::kFlag, .help = "Decode the value"};
  return {
      {"text encode",
       "Write a text as checksummed letters",
       "  pxcl text encode 'office, 2nd floor'",
       {text_option("The text; - reads standard input"), json_option()},
       encode},
      {"text decode",
       "Read such letters back",
       "  pxcl text decode 'fk=aaaaaaaa'",
       {text_option("The letters; - reads standard input"), json_option()},
       decode},
      {"text lookup",
       "Find a tagged value in a text file",
       "  pxcl text lookup printers.ppd LOCATION --decode",
       {{.name = "FILE", .help = "File with lines such as \"*% #TAG:value\"", .required = true},
        {.name = "TAG", .help = "The tag", .required = true},
        decode_option,
        json_option()},
       look_up},
  };
}

}  // namespace pxcl::cli
