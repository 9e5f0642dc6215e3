// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "xml/scanner.hpp"

#include "xml/element_text.hpp"
#include "xml/marks.hpp"
#include "xml/matching.hpp"
#include "xml/scan.hpp"
#include "xml/scan_state.hpp"
#include "xml/status.hpp"

namespace pxcl::xml {
namespace {

constexpr i32 kUnusual = 1;    // not for the fast loop
constexpr i32 kEndOfText = 3;  // the document ended

// --- The scan ------------------------------------------------------------------------------------

// The next "<" or ">" that was not visited yet; kNone at the end of the document.
u32 next_mark(Scan& scan) {
  while (scan.marks == 0) {
    const std::size_t next = std::size_t{scan.block} + kBlock;
    if (next >= scan.document.size()) return kNone;
    scan.block = static_cast<u32>(next);
    const u64 rest = scan.document.size() - next;
    const char* block = scan.document.data() + next;
    scan.marks = rest >= kBlock ? tag_block(block) : tag_rest(block, rest);
  }
  const u32 at = scan.block + lowest(scan.marks);
  scan.marks &= scan.marks - 1;
  return at;
}

u32 next_mark(Scan& scan, char byte) {
  u32 at = next_mark(scan);
  while (at != kNone && scan.document[at] != byte) at = next_mark(scan);
  return at;
}

// The text between two tags: [begin, end), `begin` not white space.
i32 take_text(Scan& scan, u32 begin, u32 end) {
  scan.metText = true;
  scan.position = end - 1;
  if (!is_asked_for(scan)) return kSuccess;
  u32 trimmed = end;
  if (scan.document.size() - begin >= 3) {
    while (trimmed > begin && is_space(scan.document[trimmed - 1])) --trimmed;
  }
  return on_text(scan, begin, trimmed - begin);
}

// "<![CDATA[text]]>"
i32 take_cdata(Scan& scan, u32 begin) {
  const u32 text = begin + 9;
  for (u32 end = next_mark(scan, '>'); end != kNone; end = next_mark(scan, '>')) {
    if (end < text + 2 || std::memcmp(scan.document.data() + end - 2, "]]", 2) != 0) continue;
    scan.position = end;
    if (end - 2 == text) return kBadArgument;  // an empty section is refused
    scan.metText = true;
    return is_asked_for(scan) ? on_text(scan, text, end - 2 - text) : kSuccess;
  }
  return kUnterminated;
}

// "<?...>", "<!...>": passed over up to the first ">".
i32 skip_markup(Scan& scan) {
  const u32 end = next_mark(scan, '>');
  if (end == kNone) return kUnterminated;
  scan.position = end;
  return kSuccess;
}

// "<!": a CDATA section, or a comment or document type to be passed over.
i32 take_declaration(Scan& scan, u32 begin) {
  const std::string_view rest = from(scan.document, begin);
  if (rest.size() < 3 || rest[2] == '>') return kEndsTooEarly;
  if (rest.size() > 9 && std::memcmp(rest.data(), "<![CDATA[", 9) == 0)
    return take_cdata(scan, begin);
  return skip_markup(scan);
}

inline bool is_letter(char byte) {
  return static_cast<u8>((byte | 0x20) - 'a') < 26;
}

// The markup that begins with the "<" at scan.position; leaves the position on its last byte.
i32 take_markup(Scan& scan) {
  const u32 begin = scan.position;
  if (begin + 1 == scan.document.size()) return kEndsTooEarly;
  const char kind = scan.document[begin + 1];
  if (kind == '?') return skip_markup(scan);
  if (kind == '!') return take_declaration(scan, begin);
  if (kind != '/' && !is_letter(kind)) return kBadName;
  const u32 end = next_mark(scan, '>');
  if (end == kNone) return kUnterminated;
  scan.position = end;
  return kind == '/' ? end_any_tag(scan, begin, end) : start_any_tag(scan, begin, end);
}

// What is left of the document from scan.at on: text, and the markup behind it. kEndOfText:
// nothing.
i32 take_next(Scan& scan) {
  const u32 tag = next_mark(scan, '<');
  const u32 textEnd = tag == kNone ? static_cast<u32>(scan.document.size()) : tag;
  while (scan.at < textEnd && is_space(scan.document[scan.at])) ++scan.at;
  scan.position = scan.at;
  if (scan.at < textEnd) {
    const i32 status = tag == kNone ? kUnterminated : take_text(scan, scan.at, textEnd);
    if (status != kSuccess) return status;
  }
  if (tag == kNone) return kEndOfText;
  scan.position = tag;
  const i32 status = take_markup(scan);
  scan.at = scan.position + 1;
  return status;
}

// --- The usual tags, taken by masks alone --------------------------------------------------------

// The fast loop reads up to two lanes from a tag's name on, and a lane from a value's last byte on:
// this far from the document's end it stops.
constexpr u32 kReach = 2 * kLane + 2;

// Where the fast loop stands; kept in registers.
struct Cursor {
  const char* text;
  u64 marks;
  u32 block;
  u32 at;
  u32 limit;
};

[[gnu::noinline]] u64 last_block(const char* bytes, u64 length) {
  return tag_rest(bytes, length);
}

// Moves on to the next block that has a mark; at the document's end the cursor stays where it is.
inline bool refill(Cursor& cursor) {
  const u32 size = cursor.limit + kReach;
  for (u32 block = cursor.block + kBlock; block < size; block += kBlock) {
    const char* bytes = cursor.text + block;
    cursor.marks = size - block >= kBlock ? tag_block(bytes) : last_block(bytes, size - block);
    if (cursor.marks == 0) continue;
    cursor.block = block;
    return true;
  }
  return false;
}

// The next mark; kNone when there is none.
inline u32 next_mark(Cursor& cursor) {
  if (cursor.marks == 0 && !refill(cursor)) return kNone;
  const u32 at = cursor.block + lowest(cursor.marks);
  cursor.marks &= cursor.marks - 1;
  return at;
}

// Whether `length` bytes, 2 * kLane at most, are the same; both sides are readable to that length.
inline bool same_name(const char* a, const char* b, u32 length) {
  const u64 same = u64{same_lane(a, b)} | u64{same_lane(a + kLane, b + kLane)} << kLane;
  return (~same & ((u64{1} << length) - 1)) == 0;
}

inline i32 take_end_tag(Scan& scan, const char* text, u32 begin, u32 end) {
  const OpenElement& top = scan.open[scan.depth - 1];
  const u32 length = end - begin - 2;
  if (top.generation != scan.generation || top.length != length || length > 2 * kLane ||
      !same_name(text + top.offset, text + begin + 2, length)) {
    return kUnusual;
  }
  if ((top.flags & kElementTargets) != 0) {
    const i32 status = on_element_end(scan, begin, kEmptyElement);
    if (status != kSuccess) return status;
  }
  if (scan.below.size != 0) leave_below(scan);
  scan.aliveTop = top.aliveBegin;
  --scan.depth;
  return kSuccess;
}

// The name of the tag at hand.
struct TagName {
  const char* text;
  u32 length;
  u32 colon;  // kNoColon without one
};

// The first colon of a name of up to 2 * kLane bytes.
inline u32 plain_colon(const char* text, u32 length) {
  const u64 colon = u64{plain_lane(text).colon} | u64{plain_lane(text + kLane).colon} << kLane;
  return first_mark(colon & ((u64{1} << length) - 1));
}

// The key of its local part: no prefix changes that.
inline u32 hash_of(const TagName& name) {
  const u32 localBegin = name.colon + 1;  // kNoColon + 1 is 0
  return hash_readable(name.text + localBegin, name.length - localBegin);
}

// A tag with one attribute.
struct AttributeTag {
  const char* name;
  u32 offset;
  SimpleElement element;
};

// The attribute as the general functions want it.
void take_attribute(Scan& scan, const AttributeTag& tag) {
  const SimpleElement& element = tag.element;
  CurrentAttribute& attribute = scan.attributes[0];
  attribute = {};
  attribute.name = tag.name + element.attributeBegin;
  attribute.nameLength = element.attributeEnd - element.attributeBegin;
  attribute.value = tag.name + element.valueBegin - 1;
  attribute.valueLength = element.valueEnd + 2 - element.valueBegin;
  scan.attributes.size = 1;
}

std::string_view attribute_name(const AttributeTag& tag) {
  return {tag.name + tag.element.attributeBegin,
          tag.element.attributeEnd - tag.element.attributeBegin};
}

std::string_view inner_value(const AttributeTag& tag) {
  return {tag.name + tag.element.valueBegin, tag.element.valueEnd - tag.element.valueBegin};
}

bool same_text(std::string_view text, const char* other, u32 length) {
  return text.size() == length && equal_bytes(text.data(), other, length);
}

// White space at a value's edges and NUL bytes are not for the fast loop.
bool is_clean_value(std::string_view value) {
  return !is_space(value.front()) && !is_space(value.back()) && find_byte(value, '\0') == nullptr;
}

// Whether the tag's attribute answers those that the node names.
inline bool attribute_matches(Scan& scan, const AttributeTag& tag, const Node& node) {
  if (node.attributeCount == 1) {
    const RequestedAttribute& requested = scan.plan.attributes[node.firstAttribute];
    if (!same_text(attribute_name(tag), requested.name, requested.nameLength)) return false;
    if ((node.flags & kEachValue) != 0) note_key(scan, node, inner_value(tag), false);
    if (requested.value == nullptr) return true;
    if (same_text(inner_value(tag), requested.value, requested.valueLength)) return true;
  }
  take_attribute(scan, tag);
  return attributes_match(scan, node);
}

// Calls `visit` for every node of this key and name below `parent`, until it returns false.
template <typename Visit>
inline bool visit_nodes(const Scan& scan, const TagName& name, u32 parent, u32 key,
                        const Visit& visit) {
  u32 found = scan.plan.buckets[bucket_of(key, scan.plan.bucketMask)];
  for (; found != kNone; found = scan.plan.nodes[found].nextInBucket) {
    const Node& node = scan.plan.nodes[found];
    if (node.key != key || node.parent != parent || (node.flags & kImpossible) != 0) continue;
    if (!names_match(scan, node, name.text, name.length, name.colon)) continue;
    if (!visit(found, node)) return false;
  }
  return true;
}

struct AliveNodes {
  const u32* begin;
  const u32* end;
};

inline AliveNodes innermost_nodes(const Scan& scan) {
  const u32* nodes = scan.alive.begin();
  return {nodes + scan.open[scan.depth - 1].aliveBegin, nodes + scan.aliveTop};
}

// Calls `visit` for every node below `parents` that a tag without attribute matches.
template <typename Visit>
inline bool match_plain(const Scan& scan, const TagName& name, AliveNodes parents,
                        const Visit& visit) {
  for (const u32* parent = parents.begin; parent != parents.end; ++parent) {
    if ((scan.plan.nodes[*parent].flags & kPlainChildren) == 0) continue;
    const u32 key = element_key(*parent, hash_of(name), kPlainKey);
    const bool stored = visit_nodes(scan, name, *parent, key, [&](u32 found, const Node& node) {
      return node.attributeCount != 0 || visit(found);
    });
    if (!stored) return false;
  }
  return true;
}

// The same for a tag with one attribute. Its value and its name alone are looked up by keys of
// their own.
template <typename Visit>
inline bool match_attribute_tag(Scan& scan, const AttributeTag& tag, AliveNodes parents,
                                const Visit& visit) {
  const SimpleElement& element = tag.element;
  const TagName name = {tag.name, element.nameLength, element.colon};
  const auto visit_keyed = [&](u32 parent, u32 key) {
    return visit_nodes(scan, name, parent, key, [&](u32 found, const Node& node) {
      return !attribute_matches(scan, tag, node) || visit(found);
    });
  };
  for (const u32* parent = parents.begin; parent != parents.end; ++parent) {
    const u32 children = scan.plan.nodes[*parent].flags;
    if ((children & (kValuedChildren | kNamedChildren)) == 0) continue;
    const u32 hash = hash_of(name);
    const auto key = [&](KeyClass keyClass) { return element_key(*parent, hash, keyClass); };
    if ((children & kValuedChildren) != 0) {
      const std::string_view attribute = attribute_name(tag);
      const u32 valued = valued_key(
          key(kValuedKey), hash_readable(attribute.data(), static_cast<u32>(attribute.size())),
          hash_readable(tag.name + element.valueLocal, element.valueEnd - element.valueLocal));
      if (!visit_keyed(*parent, valued)) return false;
    }
    if ((children & kNamedChildren) != 0 && !visit_keyed(*parent, key(kNamedKey))) return false;
  }
  return true;
}

// Gives the tag's attribute to the targets of `node` that ask for it.
inline bool store_attribute(Scan& scan, const AttributeTag& tag, u32 node) {
  const u32 offset = tag.offset + tag.element.valueBegin - 1;
  u32 number = scan.plan.nodes[node].attributeTargets;
  for (; number != kNone; number = scan.plan.targets[number].next) {
    const Target& target = scan.plan.targets[number];
    if (!same_text(attribute_name(tag), target.attributeName, target.attributeNameLength)) continue;
    const u32 length = tag.element.valueEnd + 2 - tag.element.valueBegin;
    if (!record(scan, number, offset, length, kFound)) return false;
  }
  return true;
}

// The text of an element in which nothing else is.
struct LeafText {
  u32 begin;
  u32 length;
  u32 end;  // of the end tag behind it
};

// "<name>text</name>": nothing has to be opened.
[[gnu::noinline]] bool take_leaf(Scan& scan, const char* tag, u32 length, LeafText text) {
  const TagName name = {tag, length, plain_colon(tag, length)};
  return match_plain(scan, name, innermost_nodes(scan),
                     [&](u32 node) { return on_leaf(scan, node, text.begin, text.length); });
}

[[gnu::noinline]] bool take_attribute_leaf(Scan& scan, const AttributeTag& tag, LeafText text) {
  return match_attribute_tag(scan, tag, innermost_nodes(scan), [&](u32 node) {
    return store_attribute(scan, tag, node) && on_leaf(scan, node, text.begin, text.length);
  });
}

// "<name>": an element with others in it, or without text. It is open already; `parents` are the
// nodes of its parent.
[[gnu::noinline]] bool open_plain(Scan& scan, const char* tag, u32 length, AliveNodes parents) {
  const TagName name = {tag, length, plain_colon(tag, length)};
  return match_plain(scan, name, parents, [&](u32 node) { return add_alive(scan, node); });
}

[[gnu::noinline]] bool open_attribute_tag(Scan& scan, const AttributeTag& tag, AliveNodes parents) {
  return match_attribute_tag(scan, tag, parents, [&](u32 node) {
    return add_alive(scan, node) && store_attribute(scan, tag, node);
  });
}

// Whether a tag of `length` bytes is a name and nothing else; a name with a byte up to "/" in it
// counts as none.
inline bool is_plain_tag(const char* text, u32 length) {
  if (length > 2 * kLane) return false;
  const u64 low = u64{plain_lane(text).low} | u64{plain_lane(text + kLane).low} << kLane;
  return (low & ((u64{1} << length) - 1)) == 0;
}

// Reads `name attribute="value"` by its marks; false for any other tag.
inline bool read_attribute(const TagMarks& marks, u32 length, AttributeTag& tag) {
  const u64 open = marks.quote & -marks.quote;
  const u64 close = marks.quote ^ open;
  const u64 inNames = open - 1;
  const u64 blank = marks.stop & -marks.stop;
  if (close != u64{1} << (length - 1) || close == open << 1 ||
      (marks.equals & inNames) != open >> 1 || (marks.stop & inNames) != blank || blank == 0 ||
      blank << 2 == open || (marks.colon & inNames) > blank) {
    return false;
  }
  const u64 colon = marks.colon & ~inNames;
  SimpleElement& element = tag.element;
  element.nameLength = lowest(blank);
  element.colon = first_mark(marks.colon & inNames);
  element.attributeBegin = element.nameLength + 1;
  element.valueBegin = lowest(open) + 1;
  element.attributeEnd = element.valueBegin - 2;
  element.valueEnd = length - 1;
  element.valueLocal = colon == 0 ? element.valueBegin : lowest(colon) + 1;
  const bool isClean = marks.stop == blank || is_clean_value(inner_value(tag));
  return isClean && is_space(tag.name[element.nameLength]) &&
         tag.name[element.attributeBegin] != 'x';
}

// Any other tag that is a name alone or followed by one attribute with a value.
[[gnu::noinline]] bool read_tag(const char* text, u32 length, AttributeTag& tag) {
  if (length > kBlock) return false;
  const TagMarks marks = tag_marks(text, length);
  tag.name = text;
  if (marks.quote != 0) return read_attribute(marks, length, tag);
  tag.element.nameLength = length;
  tag.element.attributeEnd = 0;
  return marks.stop == 0;
}

// Opens an element; the nodes of its parent.
inline AliveNodes push_usual(Scan& scan, u32 offset, u32 length) {
  const AliveNodes parents = innermost_nodes(scan);
  scan.open[scan.depth++] = {offset, length, scan.aliveTop, scan.generation, scan.standing};
  return parents;
}

// Whether "text</name>" stands from `begin` on, with the name's bytes at `name`.
inline bool find_leaf(Cursor& ahead, const char* name, u32 length, u32 begin, LeafText& leaf) {
  if (length > 2 * kLane) return false;
  const char* text = ahead.text;
  const u32 close = next_mark(ahead);
  const u32 end = next_mark(ahead);
  if (end >= ahead.limit || end - close != length + 2 || text[close] != '<' || text[end] != '>' ||
      text[close + 1] != '/' || !same_name(name, text + close + 2, length)) {
    return false;
  }
  u32 trimmed = close;
  while (begin < close && is_space(text[begin])) ++begin;
  while (begin < trimmed && is_space(text[trimmed - 1])) --trimmed;
  leaf = {begin, trimmed - begin, end};
  return begin < trimmed;
}

// A start tag, and the text and the end tag behind it when the element has nothing else.
inline i32 take_start_tag(Scan& scan, Cursor& cursor, u32 begin, u32 end) {
  const char* name = cursor.text + begin + 1;
  u32 length = end - begin - 1;
  AttributeTag tag;
  bool isPlain = is_plain_tag(name, length);
  if (!isPlain) {
    tag.offset = begin + 1;
    if (!read_tag(name, length, tag)) return kUnusual;
    length = tag.element.nameLength;
    isPlain = !tag.element.has_attribute();
    if (isPlain && length > 2 * kLane) return kUnusual;
  }
  const bool mayMatch =
      (scan.open[scan.depth - 1].flags & (isPlain ? kPlainBelow : kAttributesBelow)) != 0;
  const Cursor behind = cursor;
  LeafText leaf;
  bool stored = true;
  if (cursor.text[end + 1] != '<' && scan.standing == 0 &&
      find_leaf(cursor, name, length, end + 1, leaf)) {
    end = leaf.end;
    ++scan.serial;
    scan.metText = true;
    if (mayMatch) {
      stored = isPlain ? take_leaf(scan, name, length, leaf) : take_attribute_leaf(scan, tag, leaf);
    }
  } else {
    cursor = behind;
    if (scan.depth == scan.open.capacity) return kUnusual;
    ++scan.serial;
    const AliveNodes parents = push_usual(scan, begin + 1, length);
    if (mayMatch) {
      stored = isPlain ? open_plain(scan, name, length, parents)
                       : open_attribute_tag(scan, tag, parents);
    }
  }
  if (!isPlain) scan.metAttributes = true;
  cursor.at = end + 1;
  if (stored) return kSuccess;
  scan.position = end;
  return kNoMemory;
}

// One tag and the text in front of it; kUnusual: what follows cursor.at is for take_next.
inline i32 take_usual(Scan& scan, Cursor& cursor) {
  const u32 begin = next_mark(cursor);
  const u32 end = next_mark(cursor);
  if (end >= cursor.limit || cursor.text[begin] != '<' || cursor.text[end] != '>') return kUnusual;
  while (cursor.at != begin && is_space(cursor.text[cursor.at])) ++cursor.at;
  if (cursor.at != begin) {
    const i32 status = take_text(scan, cursor.at, begin);
    if (status != kSuccess) return status;
    cursor.at = begin;
  }
  const char kind = cursor.text[begin + 1];
  if (is_letter(kind)) return take_start_tag(scan, cursor, begin, end);
  if (kind != '/') return kUnusual;
  const i32 status = take_end_tag(scan, cursor.text, begin, end);
  if (status == kSuccess) {
    cursor.at = end + 1;
  } else {
    scan.position = end;
  }
  return status;
}

// Puts the marks back to those from scan.at on.
void rewind_marks(Scan& scan) {
  const u64 size = scan.document.size();
  scan.block = scan.at & ~(kBlock - 1);
  if (scan.block >= size) {
    scan.marks = 0;
    return;
  }
  const char* block = scan.document.data() + scan.block;
  const u64 rest = size - scan.block;
  scan.marks = rest >= kBlock ? tag_block(block) : tag_rest(block, rest);
  scan.marks &= ~bits_below(scan.at % kBlock);
}

// Takes usual tags as far as they go. Elements whose text stands in the path buffer are not for it.
i32 take_usual_tags(Scan& scan) {
  Cursor cursor = {scan.document.data(), scan.marks, scan.block, scan.at,
                   static_cast<u32>(scan.document.size()) - kReach};
  i32 status = kSuccess;
  while (status == kSuccess) status = take_usual(scan, cursor);
  scan.at = cursor.at;
  if (status == kUnusual) rewind_marks(scan);
  return status;
}

bool is_usual_ahead(const Scan& scan) {
  return scan.depth != 0 && scan.path.size == 0 && !scan.growing.quoted && !scan.quotedPrefix &&
         u64{scan.at} + kReach < scan.document.size();
}

i32 run(Scan& scan) {
  i32 status = kSuccess;
  while (status == kSuccess) {
    status = is_usual_ahead(scan) ? take_usual_tags(scan) : kUnusual;
    if (status == kUnusual) status = take_next(scan);
  }
  return status == kEndOfText ? kSuccess : status;
}

bool start_scan(Scan& scan) {
  const Plan& plan = scan.plan;
  if (!scan.alive.reserve(u64{plan.nodeCount} + 1) || !scan.firstOfGroup.reserve(plan.groupCount)) {
    return false;
  }
  for (u32 i = 0; i < plan.groupCount; ++i) scan.firstOfGroup[i] = kNone;
  scan.alive[0] = kRootNode;
  if (plan.nodes[kRootNode].belowTargets != kNone && !scan.below.push({kRootNode, 0})) return false;
  refresh_standing(scan);
  rewind_marks(scan);
  return true;
}

}  // namespace

ScanOutcome scan_indexed(const Plan& plan, const Answers& answers, std::string_view document,
                         u32 flags, ClXmlNameSpaceEntry* table) {
  Scan scan(plan, answers, document, flags, table);
  i32 status = start_scan(scan) ? run(scan) : kNoMemory;
  u64 stop = scan.position;
  if (status == kRootClosed) {
    status = kSuccess;
    ++stop;
  }
  return {status, stop, scan.serial, scan.metText, scan.metAttributes};
}

}  // namespace pxcl::xml
