// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// A raster that is to be printed, made into pages: each is a raster of its own that a virtual printer renders. The first byte
// of the input is the length of the pieces in which the raster comes.

#include "cli/raster_source.hpp"

#include <memory>
#include <span>
#include <string>

#include "printer/page_renderer.hpp"
#include "small_raster.hpp"
#include "support.hpp"

namespace {

using namespace pxcl;
using client::Result;
using fuzz::require;

class Pieces : public cli::ByteSource {
 public:
  Pieces(std::string_view bytes, std::size_t length) : rest_(bytes), length_(length) {}

  Result<std::size_t> read(std::span<char> buffer) override {
    const std::size_t count = rest_.copy(buffer.data(), std::min(buffer.size(), length_));
    rest_.remove_prefix(count);
    return count;
  }

 private:
  std::string_view rest_;
  std::size_t length_;
};

template <typename Held>
bool is_there(const Result<Held>& result) {
  if (result.ok()) return true;
  require(result.error().fault == client::Fault::kBadInput);
  require(fuzz::is_line(result.error().message) && result.error().message.ends_with('.'));
  return false;
}

std::string read_page(cli::RasterSource& source, std::uint64_t size) {
  std::string page(size + 1, '\0');
  std::size_t length = 0;
  while (true) {
    const Result<std::size_t> count = source.read(std::span(page).subspan(length));
    require(count.ok());
    if (count.value() == 0) break;
    length += count.value();
  }
  require(length == size);
  page.resize(length);
  return page;
}

void render(std::string_view page) {
  static const fuzz::Folder folder;
  static const fuzz::MemoryFile file;
  file.fill(page);
  const auto rendering = printer::render_pages(
      file.path, [](auto) { return folder.path() / "page.png"; }, 2);
  require(rendering.error.empty() && rendering.pages.size() == 1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const std::string_view raster = fuzz::text_of(data + 1, size - 1);
  if (!fuzz::is_small(raster)) return 0;
  const auto source = cli::RasterSource::open(std::make_unique<Pieces>(raster, data[0] + 1U));
  if (!is_there(source)) return 0;
  const auto sheet = source.value()->sheet();
  require(!sheet || (sheet->width > 0 && sheet->height > 0));
  for (bool follows = true; follows;) {
    const auto page = source.value()->next_page();
    if (!is_there(page)) return 0;
    require(page.value().has_value());
    render(read_page(*source.value(), page.value()->size));
    follows = page.value()->another_follows;
  }
  const auto end = source.value()->next_page();
  require(end.ok() && !end.value());
  return 0;
}
