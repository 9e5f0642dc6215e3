// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "xml/follow.hpp"

namespace pxcl::xml {
namespace {

// What is read behind a stretch: a value, the tag's end and the beginning of a text.
constexpr u32 kValueReach = 4 * kLane + 3;
constexpr u32 kLongestStretch = 8 * kLane;

// --- Learning ------------------------------------------------------------------------------------

// What `element`, the innermost one, is among the shapes; kNoShape: it is not for them.
inline u32 settled_shape(Scan& scan, OpenElement& element) {
  if (element.shape == kUnsettled) {
    const u32 count = scan.aliveTop - element.aliveBegin;
    element.shape = count <= 1 ? scan.shapes.keep_other() : kNoShape;
  }
  return element.shape;
}

// The stretch at hand ends with the tag of the shape `next`, whose text or value begins at `end`.
inline void end_stretch(Scan& scan, Shape& next, u32 end) {
  Stretch& stretch = scan.stretch;
  stretch.length = end - stretch.begin;
  if (stretch.length > kLongestStretch) return;
  stretch.limit = static_cast<u32>(scan.document.size()) - stretch.length - kValueReach;
  stretch.next = &next;
  stretch.isInner = stretch.closed == 0 && stretch.opened == 0;
  scan.lastShape->follower = stretch;
}

// An element that is neither leaf nor has an attribute is opened within the stretch at hand.
inline void open_in_stretch(Scan& scan, const Shape& shape, u32 offset) {
  Stretch& stretch = scan.stretch;
  if (stretch.opened == Stretch::kMostOpened) {
    scan.lastShape = nullptr;
  } else {
    stretch.names[stretch.opened] = offset - stretch.begin;
    stretch.shapes[stretch.opened++] = &shape;
  }
}

// Whether at most one target gets an attribute of the tag, and none asks for what is below.
inline bool is_simple(const Scan& scan, const Tag& tag, u32 number) {
  if (number == kNone) return true;
  const Node& node = scan.plan.nodes[number];
  if (node.belowTargets != kNone) return false;
  if (!tag.has_attribute() || node.attributeTargets == kNone) return true;
  const Target& target = scan.plan.targets[node.attributeTargets];
  return target.next == kNone && is_named(tag, {target.attributeName, target.attributeNameLength});
}

// The target that gets the text of a leaf that matches `node`, with its key, if it is the only one.
inline u32 only_each(const Scan& scan, const Node& node) {
  if ((node.flags & kEachValue) == 0) return kNone;
  const u32 target = node.elementTargets;
  return scan.plan.targets[target].next == kNone ? target : kNone;
}

// Notes what comes of a tag with a new shape below `parent`.
inline void describe(Scan& scan, const OpenElement& parent, const Tag& tag, u32 node,
                     Shape& shape) {
  shape.node = node;
  shape.flags = node == kNone ? u16{0} : static_cast<u16>(scan.plan.nodes[node].flags & kOfElement);
  shape.hasValue = tag.has_attribute();
  shape.byValue = shape.hasValue && (parent.flags & kValuedChildren) != 0;
  if (shape.byValue) shape.name = read_name(scan, tag.text, tag.nameLength);
  const bool mayGive = shape.hasValue && node != kNone;
  shape.target = mayGive ? scan.plan.nodes[node].attributeTargets : kNone;
  shape.mayMatch = shape.byValue || node != kNone;
  shape.each = mayGive && !shape.byValue ? only_each(scan, scan.plan.nodes[node]) : kNone;
}

// --- Following -----------------------------------------------------------------------------------

// A tag at the end of a stretch.
struct FollowingTag {
  u32 value;        // where its value begins, or what follows the tag
  u32 valueLength;  // 0 without an attribute
  u32 inside;       // behind the tag
  u32 close;        // where a leaf's text ends, for all that is known
};

// Where a scan that follows shapes stands: behind the start tag of `shape`, or at the end of its
// text, when it is not certain yet that this is a leaf.
struct Follower {
  Shape* shape;
  OpenElement* top;
  u32 at;
  u32 aliveTop;
  bool isPending;  // a leaf whose end tag was not read
  FollowingTag tag;
};

// The next "<" or ">" from `at` on that the loop may take; kNone without one.
inline u32 find_mark(const char* text, const char* limit, u32 at) {
  const char* mark = find_tag_mark(text + at, limit);
  return mark == nullptr ? kNone : static_cast<u32>(mark - text);
}

// Where the value ends that begins at tag.value; false when it is not usual.
inline bool read_value(const char* text, Shape& shape, FollowingTag& tag) {
  const char* value = text + tag.value;
  const u64 marks = end_marks(value);
  if (!shape.valueLength.ends_at(marks)) {
    if (marks == 0 || lowest(marks) == 0) return false;
    shape.valueLength.note(lowest(marks));
  }
  tag.valueLength = shape.valueLength.length;
  tag.inside = tag.value + tag.valueLength + 2;
  return is_value_end(value + tag.valueLength);
}

// Where the text ends that begins at tag.inside; false when it is not usual.
inline bool read_text(const char* text, const char* limit, Shape& shape, FollowingTag& tag) {
  const char* inside = text + tag.inside;
  u64 marks = tag_lane(inside);
  if (marks == 0) marks = u64{tag_lane(inside + kLane)} << kLane;
  if (!shape.textLength.ends_at(marks)) {
    if (marks == 0) {
      tag.close = find_mark(text, limit, tag.inside + 2 * kLane);
      return tag.close != kNone;
    }
    if (lowest(marks) == 0) return false;
    shape.textLength.note(lowest(marks));
  }
  tag.close = tag.inside + shape.textLength.length;
  return true;
}

// Reads the tag of this shape whose text or value begins at tag.value; false when it is not usual,
// or not a leaf where the shape is one.
inline bool read_following(const char* text, const char* limit, Shape& shape, FollowingTag& tag) {
  tag.valueLength = 0;
  tag.inside = tag.value;
  if (shape.hasValue && !read_value(text, shape, tag)) return false;
  tag.close = tag.inside;
  const bool isBlank = static_cast<u8>(text[tag.inside]) <= ' ';
  if (!shape.key.isLeaf) return isBlank || text[tag.inside] == '<';
  return !isBlank && read_text(text, limit, shape, tag);
}

// A tag with an attribute.
inline Tag as_tag(const char* text, const Shape& shape, const FollowingTag& following) {
  Tag tag;
  tag.offset = following.value - shape.key.length;
  tag.text = text + tag.offset;
  tag.nameLength = shape.key.nameLength;
  tag.valueBegin = shape.key.length;
  tag.valueEnd = tag.valueBegin + following.valueLength;
  tag.length = following.inside - tag.offset;
  return tag;
}

// The length of a leaf's text without the white space at its end.
inline u32 text_length(const char* text, const FollowingTag& tag) {
  u32 close = tag.close;
  while (is_space(text[close - 1])) --close;
  return close - tag.inside;
}

// Gives a leaf's text to the targets of a node that it matches, and any tag's value to those that
// want it as the key.
inline bool serve(Scan& scan, const char* text, const Shape& shape, FollowingTag tag, u32 number) {
  const Node& node = scan.plan.nodes[number];
  if ((node.flags & kEachValue) != 0) note_plain_key(scan, node, as_tag(text, shape, tag));
  if (!shape.key.isLeaf || (node.flags & kElementTargets) == 0) return true;
  return on_leaf(scan, node, tag.inside, text_length(text, tag));
}

// The same for the node of the shape, which may want the attribute too.
inline bool serve_own(Scan& scan, const char* text, const Shape& shape, FollowingTag tag) {
  if (shape.target != kNone &&
      !record(scan, shape.target, tag.value - 1, tag.valueLength + 2, kFound)) {
    return false;
  }
  return serve(scan, text, shape, tag, shape.node);
}

// Appends the nodes that the tag below `parent` matches by its value.
inline u32* append_by_value(Scan& scan, const char* text, const Shape& shape,
                            const FollowingTag& following, u32 parent, u32* out) {
  const Tag tag = as_tag(text, shape, following);
  return append_nodes(scan, tag, shape.name, parent, by_value(parent, shape.name.hash, tag), out);
}

[[gnu::noinline]] bool serve_nodes(Scan& scan, const char* text, const Shape& shape,
                                   FollowingTag tag, u32 aliveTop) {
  if (shape.byValue) {
    u32* node = scan.alive.begin() + aliveTop;
    u32* const end = append_by_value(scan, text, shape, tag, node[-1], node);
    for (; node != end; ++node) {
      if (!store_attribute(scan, as_tag(text, shape, tag), scan.plan.nodes[*node]) ||
          !serve(scan, text, shape, tag, *node)) {
        return false;
      }
    }
  }
  return shape.node == kNone || serve_own(scan, text, shape, tag);
}

// Gives a leaf's text and its key to shape.each.
[[gnu::noinline]] void serve_each(const Scan& scan, const char* text, const Shape& shape,
                                  FollowingTag tag) {
  Finding& finding = scan.findings[shape.each];
  const u32 length = text_length(text, tag);
  note_match(scan, finding, tag.inside, length, kFound);
  give(scan, shape.each, {{text + tag.value, tag.valueLength}, tag.inside, length, kFound});
}

inline bool serve_following(Scan& scan, const char* text, const Shape& shape,
                            const FollowingTag& tag, u32 aliveTop) {
  ++scan.serial;
  if (!shape.mayMatch) return true;
  if (shape.each == kNone) return serve_nodes(scan, text, shape, tag, aliveTop);
  serve_each(scan, text, shape, tag);
  return true;
}

inline void open_followed(Scan& scan, Follower& follower, const Shape& shape, u32 offset) {
  ++scan.serial;
  *++follower.top = {offset,          shape.key.nameLength, follower.aliveTop,
                     scan.generation, shape.flags,          shape.number};
  if (shape.node != kNone) scan.alive[follower.aliveTop++] = shape.node;
}

// Closes and opens what `stretch`, which begins here, does.
inline void pass_stretch(Scan& scan, Follower& follower, const Stretch& stretch) {
  if (stretch.isInner) return;
  if (stretch.closed != 0) {
    follower.top -= stretch.closed;
    follower.aliveTop = follower.top[1].aliveBegin;
  }
  for (u32 i = 0; i < stretch.opened; ++i) {
    open_followed(scan, follower, *stretch.shapes[i], follower.at + stretch.names[i]);
  }
}

// Hands over to those who take tag by tag.
inline i32 stop_following(Scan& scan, Cursor& cursor, const Follower& follower, bool taken) {
  scan.depth += static_cast<u32>(follower.top - cursor.top);
  scan.aliveTop = follower.aliveTop;
  cursor.top = follower.top;
  cursor.at = scan.document.data() + follower.at;
  return status_of(scan, cursor, taken);
}

// Goes back to the tag's "<": it is to be taken by itself.
inline i32 stop_at_tag(Scan& scan, Cursor& cursor, Follower follower) {
  follower.at = follower.tag.value - follower.shape->key.length - 1;
  scan.lastShape = nullptr;
  return stop_following(scan, cursor, follower, true);
}

// What follows is not what followed before.
inline i32 stop_behind_tag(Scan& scan, Cursor& cursor, Follower follower) {
  const ShapeKey& key = follower.shape->key;
  bool taken = true;
  const u32 stretchBegin = follower.at;
  if (follower.isPending) {
    const char* name = scan.document.data() + follower.tag.value - key.length;
    const char* inside = scan.document.data() + follower.tag.inside;
    if (find_leaf_end(scan.limit, name, key.nameLength, inside) == nullptr) {
      return stop_at_tag(scan, cursor, follower);
    }
    taken = serve_following(scan, scan.document.data(), *follower.shape, follower.tag,
                            follower.aliveTop);
    follower.at += key.nameLength + 3;  // the end tag: "</name>"
  }
  begin_stretch(scan, stretchBegin, follower.shape);
  return stop_following(scan, cursor, follower, taken);
}

// Why a scan no longer follows shapes.
enum class Stop : u8 { kNowhere, kBehindTag, kAtTag, kNoMemory };

// Whether an element matches nodes by its value: what its children match depends on that.
[[gnu::noinline]] bool matches_by_value(Scan& scan, const char* text, const Shape& shape,
                                        FollowingTag tag, u32 aliveTop) {
  u32* const nodes = scan.alive.begin() + aliveTop;
  return append_by_value(scan, text, shape, tag, nodes[-1], nodes) != nodes;
}

// Takes what follows `follower.shape` as long as it is what followed such a one before.
inline Stop follow_all(Scan& scan, const char* text, const char* limit, Follower& follower) {
  Stop stop = Stop::kNowhere;
  for (;;) {
    const Stretch& stretch = follower.shape->follower;
    if (follower.at >= stretch.limit ||
        !same_bytes(text + stretch.begin, text + follower.at, stretch.length)) {
      return stop;
    }
    stop = Stop::kBehindTag;
    if (follower.isPending &&
        !serve_following(scan, text, *follower.shape, follower.tag, follower.aliveTop)) {
      return Stop::kNoMemory;
    }
    pass_stretch(scan, follower, stretch);
    follower.tag.value = follower.at + stretch.length;
    Shape& shape = *stretch.next;
    follower.shape = &shape;
    if (!read_following(text, limit, shape, follower.tag)) return Stop::kAtTag;
    follower.isPending = shape.key.isLeaf;
    follower.at = follower.tag.close;
    if (shape.key.isLeaf) continue;
    if (shape.byValue && matches_by_value(scan, text, shape, follower.tag, follower.aliveTop)) {
      return Stop::kAtTag;
    }
    open_followed(scan, follower, shape, follower.tag.value - shape.key.length);
    if (shape.node != kNone && !serve_own(scan, text, shape, follower.tag)) {
      return Stop::kNoMemory;
    }
  }
}

}  // namespace

Learned learn(Scan& scan, OpenElement& parent, const Tag& tag, bool isLeaf, Matched matched) {
  const u32 first = scan.shapes.first_number();
  const u32 around = settled_shape(scan, parent);
  const u32 node = matched.named == matched.end ? kNone : *matched.named;
  if (around == kNoShape || matched.end - matched.named > 1 || !is_simple(scan, tag, node)) {
    scan.lastShape = nullptr;
    return {kNoShape, nullptr};
  }
  bool isNew;
  Shape& shape = scan.shapes.place(
      scan.document.data(), {tag.offset, tag.shapeLength(), tag.nameLength, around, isLeaf}, isNew);
  if (isNew) describe(scan, parent, tag, node, shape);
  if (scan.shapes.first_number() != first) scan.lastShape = nullptr;
  const bool isStation = isLeaf || shape.hasValue;
  if (scan.lastShape != nullptr) {
    if (isStation) {
      end_stretch(scan, shape, tag.offset + tag.shapeLength());
    } else {
      open_in_stretch(scan, shape, tag.offset);
    }
  }
  if (!isStation) return {shape.number, nullptr};
  scan.lastShape = nullptr;
  const bool byValue = !isLeaf && matched.named != scan.alive.begin() + scan.aliveTop;
  return byValue ? Learned{kUnsettled, nullptr} : Learned{shape.number, &shape};
}

i32 follow(Scan& scan, Cursor& cursor, Shape& first, u32 at) {
  Follower follower = {&first, cursor.top, at, scan.aliveTop, false, {}};
  const Stop stop = follow_all(scan, scan.document.data(), scan.limit, follower);
  if (stop == Stop::kBehindTag) return stop_behind_tag(scan, cursor, follower);
  if (stop == Stop::kAtTag) return stop_at_tag(scan, cursor, follower);
  if (stop == Stop::kNoMemory) return stop_following(scan, cursor, follower, false);
  begin_stretch(scan, at, &first);
  return kSuccess;
}

}  // namespace pxcl::xml
