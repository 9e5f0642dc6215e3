// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Start tags that were met before. Replies repeat themselves: what follows an element is mostly
// what followed the one before that began alike. What a tag is up to its text or its attribute's
// value, its shape, is kept together with what came of it and with all that stood between it and the
// next shape. Where the same bytes stand there again, the scan steps from value to value.

#pragma once

#include "xml/marks.hpp"
#include "xml/plan.hpp"

namespace pxcl::xml {

// Smaller documents do not repeat themselves often enough for this.
inline constexpr u32 kShortestRepeating = 4096;

// An open element without shape.
inline constexpr u32 kUnsettled = kNone;    // nobody has looked for it yet
inline constexpr u32 kNoShape = kNone - 1;  // its children's tags alone do not say what they match

// A name, and how it is looked up.
struct NameKey {
  u32 length;
  u32 colon;  // kNone without one
  u32 row;    // of the prefix that the table's takes the place of; kNone: the name stands as it is
  u32 hash;
};

struct Shape;

// What stood between a tag, or a leaf's text, and the next shape's text or value: end tags, then
// start tags without attribute, then the beginning of the next tag.
struct Stretch {
  static constexpr u32 kMostOpened = 2;

  u32 begin;
  u32 length;
  u32 limit;   // from here on it is too near to the document's end; 0: nothing followed yet
  u32 closed;  // elements
  u32 opened;
  u32 names[kMostOpened];  // of the opened elements, from `begin` on
  const Shape* shapes[kMostOpened];
  Shape* next;   // the shape behind it
  bool isInner;  // within one element: nothing is closed or opened
};

// What a tag is known by.
struct ShapeKey {
  u32 offset;  // of a name that begins such a tag
  u32 length;  // from there to behind the ">", or behind the quote in front of the value
  u32 nameLength;
  u32 parent;  // the shape of the element around it
  bool isLeaf;
};

// How long values or texts are, up to two lanes, when two of them running were of the same length.
// Where the next one ends is then known before its bytes are: these are only held against it, and
// the processor goes on meanwhile.
struct UsualLength {
  static constexpr u64 kNever = u64{1} << 63;

  u32 length;
  u64 mark;  // at the byte behind

  void start() {
    length = 0;
    mark = kNever;
  }
  // Whether the first of the marks behind it is where it usually is.
  bool ends_at(u64 marks) const { return (marks & -marks) == mark; }
  void note(u32 found) {
    mark = found == length ? u64{1} << found : kNever;
    length = found;
  }
};

struct Shape {
  ShapeKey key;
  u32 number;
  u32 node;    // what every tag matches that begins so there; kNone
  u32 target;  // the one that gets the attribute; kNone for none
  u32 each;    // the one that gets a leaf's text with the value as its key, if nothing else does
  u16 flags;   // of an element that is opened by such a tag
  bool hasValue;
  bool byValue;   // some tags match other nodes too, by their value
  bool mayMatch;  // there is a node, or such a tag
  NameKey name;   // where they do
  UsualLength valueLength;
  UsualLength textLength;
  Stretch follower;
};

// Shapes by their numbers, which are never used twice.
class Shapes {
 public:
  Shapes() {}

  void start() {
    count_ = 0;
    std::memset(recent_, 0, sizeof recent_);
  }

  // Changes when all shapes are forgotten.
  u32 first_number() const { return base_; }

  // The shape with this beginning; one that is new has all that is known of it from here.
  Shape& place(const char* document, const ShapeKey& key, bool& isNew) {
    const u32 hash = hash_readable(document + key.offset, key.nameLength) + key.length + key.parent;
    u8& recent = recent_[(hash ^ hash >> 8) % kRecent];
    Shape& known = shapes_[recent];
    isNew = recent >= count_ || !is_same(document, known.key, key);
    if (!isNew) return known;
    if (count_ == kMost) forget();
    recent = static_cast<u8>(count_);
    Shape& shape = shapes_[count_];
    shape.key = key;
    shape.number = base_ + count_++;
    shape.valueLength.start();
    shape.textLength.start();
    shape.follower.limit = 0;
    return shape;
  }

  // The number for an element that no tag is held against.
  u32 keep_other() {
    if (count_ == kMost) forget();
    shapes_[count_].key.parent = kNone;
    return base_ + count_++;
  }

  void forget() {
    base_ += kMost;
    count_ = 0;
  }

 private:
  static bool is_same(const char* document, const ShapeKey& a, const ShapeKey& b) {
    return a.parent == b.parent && a.length == b.length && a.isLeaf == b.isLeaf &&
           same_bytes(document + a.offset, document + b.offset, a.length);
  }

  static constexpr u32 kMost = 128;
  static constexpr u32 kRecent = 64;

  u32 base_ = 0;  // the number of the first one
  u32 count_ = 0;
  u8 recent_[kRecent];  // by hash
  Shape shapes_[kMost];
};

}  // namespace pxcl::xml
