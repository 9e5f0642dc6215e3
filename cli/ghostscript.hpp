// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <memory>
#include <optional>

#include "cli/byte_source.hpp"
#include "client/capability.hpp"

namespace pxcl::cli {

/// How pages are rendered.
struct Rendering {
  std::optional<client::Outline> sheet;  ///< Every page is fitted to it; none: to its own size.
  unsigned resolution;                   ///< Dots per inch.
  bool gray;                             ///< 8-bit gray in place of sRGB.
};

/// The PWG raster that ghostscript makes of a PDF or PostScript file, as it makes it. The program is ended when the source
/// goes away. kBadInput, with a sentence, when it is not installed or fails.
client::Result<std::unique_ptr<ByteSource>> render(Descriptor document, const Rendering& rendering,
                                                   client::CancelFlag cancelled);

}  // namespace pxcl::cli
