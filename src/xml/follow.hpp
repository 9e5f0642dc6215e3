// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Following what repeats itself: see shapes.hpp.

#pragma once

#include "xml/take_tag.hpp"

namespace pxcl::xml {

inline bool may_repeat(const Scan& scan) {
  return scan.document.size() >= kShortestRepeating;
}

// Begins a new stretch behind a shape.
inline void begin_stretch(Scan& scan, u32 at, Shape* shape) {
  scan.lastShape = shape;
  scan.stretch.begin = at;
  scan.stretch.closed = scan.stretch.opened = 0;
}

// The end tag of `element` is met within the stretch at hand.
inline void close_in_stretch(Scan& scan, const OpenElement& element) {
  if (scan.lastShape == nullptr) return;
  if (scan.stretch.opened != 0 || (element.flags & kElementTargets) != 0) {
    scan.lastShape = nullptr;
  } else {
    ++scan.stretch.closed;
  }
}

// What a tag's shape is good for.
struct Learned {
  u32 element;     // of the element that is opened
  Shape* leading;  // what follows it may be known; null for none
};

// Keeps the shape of a tag by itself below `parent`, the innermost element, and what stood in front
// of it. The nodes that it matches are `matched`.
Learned learn(Scan& scan, OpenElement& parent, const Tag& tag, bool isLeaf, Matched matched);

// Takes what follows the tag of the shape `first`, which is the last one taken, as long as it is what
// followed such a one before. It begins at `at`: at a leaf's end tag, or behind a tag.
i32 follow(Scan& scan, Cursor& cursor, Shape& first, u32 at);

}  // namespace pxcl::xml
