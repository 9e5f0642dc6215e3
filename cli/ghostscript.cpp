// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "cli/ghostscript.hpp"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string>
#include <vector>

#include "cli/text.hpp"
#include "client/text.hpp"

namespace pxcl::cli {

namespace {

using client::Error;
using client::Fault;
using client::Result;

Error bad_input(std::string message) {
  return {Fault::kBadInput, std::move(message)};
}

// The document comes by descriptor: no file name, however odd, is an argument of ghostscript's.
std::vector<std::string> arguments(const Rendering& rendering) {
  std::vector<std::string> words = {"gs",
                                    "-q",
                                    "-dSAFER",
                                    "-dBATCH",
                                    "-dNOPAUSE",
                                    "-sDEVICE=pwgraster",
                                    filled("-r{}", rendering.resolution),
                                    filled("-dcupsColorSpace={}", rendering.gray ? 18 : 19),
                                    "-dcupsBitsPerColor=8",
                                    "-dcupsColorOrder=0"};
  if (rendering.sheet) {
    constexpr double kPerPoint = 2540.0 / 72;
    words.insert(words.end(),
                 {filled("-dDEVICEWIDTHPOINTS={:.3f}", rendering.sheet->width / kPerPoint),
                  filled("-dDEVICEHEIGHTPOINTS={:.3f}", rendering.sheet->height / kPerPoint),
                  "-dFIXEDMEDIA", "-dFitPage"});
  }
  words.insert(words.end(), {"-sstdout=%stderr", "-sOutputFile=%stdout", "/dev/stdin"});
  return words;
}

// The line of ghostscript's messages that tells what was wrong, and else the last one.
std::string reason(std::string_view messages) {
  constexpr std::size_t kLongest = 200;
  std::string_view last = "it gave no reason";
  while (!messages.empty()) {
    const std::string_view line = messages.substr(0, messages.find('\n'));
    messages.remove_prefix(std::min(messages.size(), line.size() + 1));
    const std::size_t error = line.find("Error");
    if (!line.empty()) last = line;
    if (error == line.npos) continue;
    last = line.substr(error);
    break;
  }
  return client::clean_line(client::cut(last, kLongest));
}

struct Pipe {
  Descriptor read_end, write_end;
};

Pipe open_pipe() {
  int ends[2] = {-1, -1};
  if (pipe2(ends, O_CLOEXEC) != 0) return {Descriptor(), Descriptor()};
  return {Descriptor(ends[0]), Descriptor(ends[1])};
}

// Starts ghostscript in a process group of its own: what interrupts this program is this program's to pass on.
int spawn(const std::vector<std::string>& words, int input, int output, int messages, pid_t& pid) {
  std::vector<char*> arguments;
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t files;
  posix_spawnattr_t attributes;
  posix_spawn_file_actions_init(&files);
  posix_spawnattr_init(&attributes);
  posix_spawn_file_actions_adddup2(&files, input, 0);
  posix_spawn_file_actions_adddup2(&files, output, 1);
  posix_spawn_file_actions_adddup2(&files, messages, 2);
  sigset_t broken_pipe;
  sigemptyset(&broken_pipe);
  sigaddset(&broken_pipe, SIGPIPE);
  posix_spawnattr_setsigdefault(&attributes, &broken_pipe);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
  const int error =
      posix_spawnp(&pid, words[0].c_str(), &files, &attributes, arguments.data(), environ);
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&files);
  return error;
}

class Renderer : public ByteSource {
 public:
  Renderer(pid_t pid, Descriptor raster, Descriptor messages, client::CancelFlag cancelled)
      : pid_(pid),
        raster_(std::move(raster)),
        messages_(std::move(messages)),
        cancelled_(cancelled) {}

  ~Renderer() override {
    if (pid_ <= 0) return;
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
  }

  Result<std::size_t> read(std::span<char> buffer) override;

 private:
  Result<std::size_t> finish();
  void read_messages();

  pid_t pid_;  // 0 when it has ended
  Descriptor raster_, messages_;
  client::CancelFlag cancelled_;
  std::string said_;  // the last of its messages
};

void Renderer::read_messages() {
  constexpr std::size_t kKept = 2048;
  std::array<char, 1024> part;
  const ssize_t count = read_some(messages_.get(), part);
  if (count <= 0) {
    messages_ = Descriptor();
    return;
  }
  said_.append(part.data(), static_cast<std::size_t>(count));
  if (said_.size() > kKept) said_.erase(0, said_.size() - kKept);
}

// Messages are taken while waiting for the raster, so that ghostscript never waits for them to be read.
Result<std::size_t> Renderer::read(std::span<char> buffer) {
  while (pid_ > 0) {
    if (!wait_readable(raster_.get(), messages_.get(), cancelled_)) {
      return Error{Fault::kCancelled, "Cancelled while the document was rendered."};
    }
    if (messages_.is_open() && can_read(messages_.get())) read_messages();
    if (!can_read(raster_.get())) continue;
    const ssize_t count = read_some(raster_.get(), buffer);
    if (count > 0) return static_cast<std::size_t>(count);
    return finish();
  }
  return std::size_t{0};
}

// The end of the raster is one only when ghostscript is content.
Result<std::size_t> Renderer::finish() {
  while (messages_.is_open()) read_messages();
  int status = 0;
  waitpid(pid_, &status, 0);
  pid_ = 0;
  if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return std::size_t{0};
  return bad_input(filled("ghostscript could not render the document: {}.", reason(said_)));
}

}  // namespace

Result<std::unique_ptr<ByteSource>> render(Descriptor document, const Rendering& rendering,
                                           client::CancelFlag cancelled) {
  Pipe raster = open_pipe();
  Pipe messages = open_pipe();
  pid_t pid = 0;
  const int error = spawn(arguments(rendering), document.get(), raster.write_end.get(),
                          messages.write_end.get(), pid);
  if (error == ENOENT) {
    return bad_input(
        "PDF and PostScript need ghostscript, which is not installed. Install the "
        "package ghostscript, or give PWG or CUPS raster.");
  }
  if (error != 0) return bad_input(filled("ghostscript can't be started: {}.", strerror(error)));
  return std::unique_ptr<ByteSource>(std::make_unique<Renderer>(
      pid, std::move(raster.read_end), std::move(messages.read_end), cancelled));
}

}  // namespace pxcl::cli
