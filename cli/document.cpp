// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "cli/document.hpp"

#include <fcntl.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "cli/text.hpp"

namespace pxcl::cli {

namespace {

using client::Error;
using client::Fault;
using client::Result;

enum class Kind { kRaster, kRendered };

Error bad_input(std::string message) {
  return {Fault::kBadInput, std::move(message)};
}

// A raster's sync word, in either byte order; "%PDF-" somewhere near the start, as its readers have it; PostScript's "%!",
// perhaps behind the bytes that printer drivers put there.
std::optional<Kind> kind_of(std::string_view beginning) {
  for (const std::string_view word : {"RaS2", "RaS3", "RaSt", "2SaR", "3SaR", "tSaR"}) {
    if (beginning.starts_with(word)) return Kind::kRaster;
  }
  if (beginning.find("%PDF-") != beginning.npos) return Kind::kRendered;
  for (const std::string_view start : {"%!", "\x04%!", "\x1B%-12345X", "\xC5\xD0\xD3\xC6"}) {
    if (beginning.starts_with(start)) return Kind::kRendered;
  }
  return {};
}

Result<std::string> read_beginning(FileSource& source) {
  std::string beginning(1024, '\0');
  std::size_t filled_size = 0;
  while (filled_size < beginning.size()) {
    const Result<std::size_t> count =
        source.read({beginning.data() + filled_size, beginning.size() - filled_size});
    if (!count.ok()) return count.error();
    if (count.value() == 0) break;
    filled_size += count.value();
  }
  beginning.resize(filled_size);
  return beginning;
}

bool write_all(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(file, bytes.data(), bytes.size());
    if (count < 0 && errno != EINTR) return false;
    if (count > 0) bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

// All that the source gives, in a temporary file.
Result<Descriptor> spool(ByteSource& source) {
  constexpr std::uint64_t kMost = std::uint64_t{1} << 30;
  Descriptor file = temporary_file();
  std::array<char, 65536> part;
  std::uint64_t total = 0;
  for (;;) {
    const Result<std::size_t> count = source.read(part);
    if (!count.ok()) return count.error();
    if (count.value() == 0) return file;
    total += count.value();
    if (total > kMost) return bad_input("The document is longer than 1 GiB; print it from a file.");
    if (!file.is_open() || !write_all(file.get(), {part.data(), count.value()})) {
      return bad_input(
          filled("There is no room for the document in the folder for temporary "
                 "files: {}.",
                 strerror(errno)));
    }
  }
}

Descriptor duplicate(int file) {
  return Descriptor(fcntl(file, F_DUPFD_CLOEXEC, 3));
}

}  // namespace

Result<Document> Document::open(const std::string& path, client::CancelFlag cancelled) {
  Document document;
  document.cancelled_ = cancelled;
  document.file_ = path == "-" ? duplicate(STDIN_FILENO)
                               : Descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
  if (!document.file_.is_open()) {
    return bad_input(filled("{} can't be read: {}.", printable(path), strerror(errno)));
  }
  // What does not start at its file's start is taken for a pipe.
  document.seekable_ = lseek(document.file_.get(), 0, SEEK_CUR) == 0;
  FileSource start(duplicate(document.file_.get()), "", cancelled);
  Result<std::string> beginning = read_beginning(start);
  if (!beginning.ok()) return beginning.error();
  const std::optional<Kind> kind = kind_of(beginning.value());
  if (!kind) {
    return bad_input(filled("{} is no PWG or CUPS raster, no PDF and no PostScript.",
                            path == "-" ? "Standard input" : printable(path)));
  }
  document.is_raster_ = *kind == Kind::kRaster;
  const Result<void> taken = document.take(std::move(beginning).value());
  if (!taken.ok()) return taken.error();
  return document;
}

// The beginning has been read from the file already.
Result<void> Document::take(std::string beginning) {
  if (seekable_) {
    lseek(file_.get(), 0, SEEK_SET);
    beginning.clear();
  }
  auto bytes = std::make_unique<FileSource>(duplicate(file_.get()), beginning, cancelled_);
  if (is_raster_) {
    Result<std::unique_ptr<RasterSource>> raster = RasterSource::open(std::move(bytes));
    if (!raster.ok()) return raster.error();
    raster_ = std::move(raster).value();
  } else if (!seekable_) {
    Result<Descriptor> spooled = spool(*bytes);
    if (!spooled.ok()) return spooled.error();
    file_ = std::move(spooled).value();
    seekable_ = true;
  }
  return {};
}

Result<std::unique_ptr<RasterSource>> Document::reopen() const {
  lseek(file_.get(), 0, SEEK_SET);
  return RasterSource::open(std::make_unique<FileSource>(duplicate(file_.get()), "", cancelled_));
}

Result<std::unique_ptr<RasterSource>> Document::render_on(const Rendering& rendering) const {
  lseek(file_.get(), 0, SEEK_SET);
  Result<std::unique_ptr<ByteSource>> bytes = render(duplicate(file_.get()), rendering, cancelled_);
  if (!bytes.ok()) return bytes.error();
  return RasterSource::open(std::move(bytes).value());
}

// What is rendered tells in the head of its first page, when that is rendered in its own size.
Result<std::optional<client::Outline>> Document::sheet() const {
  if (raster_) return raster_->sheet();
  constexpr Rendering kRough = {.sheet = {}, .resolution = 20, .gray = true};
  Result<std::unique_ptr<RasterSource>> first = render_on(kRough);
  if (!first.ok()) return first.error();
  return first.value()->sheet();
}

Result<std::unique_ptr<client::PageSource>> Document::pages(const Rendering& rendering) {
  if (raster_) return std::unique_ptr<client::PageSource>(std::move(raster_));
  Result<std::unique_ptr<RasterSource>> raster = is_raster_ ? reopen() : render_on(rendering);
  if (!raster.ok()) return raster.error();
  return std::unique_ptr<client::PageSource>(std::move(raster).value());
}

}  // namespace pxcl::cli
