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

// Finds the next mark; false when the document's end is near.
inline bool next_mark(Cursor& cursor, u32& at) {
  while (cursor.marks == 0) {
    cursor.block += kBlock;
    const u32 size = cursor.limit + kReach;
    if (cursor.block + kBlock > size) {
      if (cursor.block >= size) return false;
      cursor.marks = tag_rest(cursor.text + cursor.block, size - cursor.block);
    } else {
      cursor.marks = tag_block(cursor.text + cursor.block);
    }
  }
  at = cursor.block + lowest(cursor.marks);
  cursor.marks &= cursor.marks - 1;
  return true;
}

// Whether `length` bytes, 32 at most, are the same.
inline bool same_name(const char* a, const char* b, u32 length) {
  if (length <= kLane) return (~same_lane(a, b) & first_bits(length)) == 0;
  return (same_lane(a, b) & same_lane(a + length - kLane, b + length - kLane)) == 0xFFFF;
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

// The tag at hand: its name and, at most, one attribute with a value.
struct UsualTag {
  const char* name;
  u32 offset;
  SimpleElement element;
};

// The attribute of a usual tag, as the general functions want it.
void take_attribute(Scan& scan, const UsualTag& tag) {
  const SimpleElement& element = tag.element;
  CurrentAttribute& attribute = scan.attributes[0];
  attribute = {};
  attribute.name = tag.name + element.attributeBegin;
  attribute.nameLength = element.attributeEnd - element.attributeBegin;
  attribute.value = tag.name + element.valueBegin - 1;
  attribute.valueLength = element.valueEnd + 2 - element.valueBegin;
  scan.attributes.size = 1;
}

std::string_view attribute_name(const UsualTag& tag) {
  return {tag.name + tag.element.attributeBegin,
          tag.element.attributeEnd - tag.element.attributeBegin};
}

std::string_view inner_value(const UsualTag& tag) {
  return {tag.name + tag.element.valueBegin, tag.element.valueEnd - tag.element.valueBegin};
}

bool same_text(std::string_view text, const char* other, u32 length) {
  return text.size() == length && equal_bytes(text.data(), other, length);
}

// Whether the tag's one attribute answers those that the node names.
inline bool attribute_matches(Scan& scan, const UsualTag& tag, const Node& node) {
  if (node.attributeCount == 1) {
    const RequestedAttribute& requested = scan.index.attributes[node.firstAttribute];
    if (!same_text(attribute_name(tag), requested.name, requested.nameLength)) return false;
    if ((node.flags & kEachValue) != 0) note_key(scan, node, inner_value(tag), false);
    if (requested.value == nullptr) return true;
    if (same_text(inner_value(tag), requested.value, requested.valueLength)) return true;
  }
  take_attribute(scan, tag);
  return attributes_match(scan, node);
}

// Calls `visit` for every node with this key that the tag matches, until it returns false.
template <typename Visit>
inline bool visit_nodes(Scan& scan, const UsualTag& tag, u32 parent, u32 key, const Visit& visit) {
  u32 found = scan.index.buckets[bucket_of(scan.index, key)];
  for (; found != kNone; found = scan.index.nodes[found].nextInBucket) {
    const Node& node = scan.index.nodes[found];
    if (node.key != key || node.parent != parent || (node.flags & kImpossible) != 0) continue;
    if (!names_match(scan, node, tag.name, tag.element.nameLength, tag.element.colon)) continue;
    const bool plain = !tag.element.has_attribute();
    if (plain ? node.attributeCount != 0 : !attribute_matches(scan, tag, node)) continue;
    if (!visit(found)) return false;
  }
  return true;
}

// The hashes by which a tag is looked up, made when the first look-up wants them.
class TagKeys {
 public:
  explicit TagKeys(const UsualTag& tag) : tag_(tag) {}

  u32 plain(u32 parent) { return element_key(parent, name(), kPlainKey); }
  u32 named(u32 parent) { return element_key(parent, name(), kNamedKey); }
  u32 valued(u32 parent) {
    const SimpleElement& element = tag_.element;
    const std::string_view attribute = attribute_name(tag_);
    return valued_key(
        element_key(parent, name(), kValuedKey),
        hash_readable(attribute.data(), static_cast<u32>(attribute.size())),
        hash_readable(tag_.name + element.valueLocal, element.valueEnd - element.valueLocal));
  }

 private:
  u32 name() const {
    const u32 localBegin = tag_.element.colon + 1;  // kNoColon + 1 is 0
    return hash_readable(tag_.name + localBegin, tag_.element.nameLength - localBegin);
  }

  const UsualTag& tag_;
};

// Calls `visit` for every node below `parents` that the tag matches. An attribute's value and its
// name alone are looked up by keys of their own.
template <typename Visit>
inline bool match_usual(Scan& scan, const UsualTag& tag, AliveRange parents, const Visit& visit) {
  TagKeys keys(tag);
  for (u32 i = parents.begin; i < parents.end; ++i) {
    const u32 parent = scan.alive[i];
    const u32 children = scan.index.nodes[parent].flags;
    bool stored = true;
    if (!tag.element.has_attribute()) {
      if ((children & kPlainChildren) != 0) {
        stored = visit_nodes(scan, tag, parent, keys.plain(parent), visit);
      }
    } else {
      if ((children & kValuedChildren) != 0) {
        stored = visit_nodes(scan, tag, parent, keys.valued(parent), visit);
      }
      if (stored && (children & kNamedChildren) != 0) {
        stored = visit_nodes(scan, tag, parent, keys.named(parent), visit);
      }
    }
    if (!stored) return false;
  }
  return true;
}

// Gives the tag's attribute to the targets of `node` that ask for it.
inline bool store_attribute(Scan& scan, const UsualTag& tag, u32 node) {
  const u32 offset = tag.offset + tag.element.valueBegin - 1;
  u32 number = scan.index.nodes[node].attributeTargets;
  for (; number != kNone; number = scan.index.targets[number].next) {
    const Target& target = scan.index.targets[number];
    if (!same_text(attribute_name(tag), target.attributeName, target.attributeNameLength)) continue;
    const u32 length = tag.element.valueEnd + 2 - tag.element.valueBegin;
    if (!record(scan, number, offset, length, kFound)) return false;
  }
  return true;
}

inline AliveRange innermost_nodes(const Scan& scan) {
  return {scan.open[scan.depth - 1].aliveBegin, scan.aliveTop};
}

// "<name>text</name>": nothing has to be opened.
inline i32 take_leaf(Scan& scan, const UsualTag& tag, u32 text, u32 textLength) {
  ++scan.serial;
  scan.metText = true;
  const AliveRange parents = innermost_nodes(scan);
  if (tag.element.has_attribute()) scan.metAttributes = true;
  const bool stored =
      parents.begin == parents.end || match_usual(scan, tag, parents, [&](u32 node) {
        return store_attribute(scan, tag, node) && on_leaf(scan, node, text, textLength);
      });
  return stored ? kSuccess : kNoMemory;
}

// "<name>": an element with others in it, or without text.
i32 open_usual(Scan& scan, const UsualTag& tag) {
  const AliveRange parents = innermost_nodes(scan);
  if (scan.depth == scan.open.capacity) return kUnusual;
  ++scan.serial;
  scan.open[scan.depth++] = {tag.offset, tag.element.nameLength, scan.aliveTop, scan.generation,
                             scan.standing};
  if (tag.element.has_attribute()) scan.metAttributes = true;
  if (parents.begin == parents.end) return kSuccess;
  const bool stored = match_usual(scan, tag, parents, [&](u32 node) {
    return add_alive(scan, node) && store_attribute(scan, tag, node);
  });
  return stored ? kSuccess : kNoMemory;
}

// The marks of the first 2 * kLane bytes of a tag.
struct NameHead {
  u64 colon;
  u64 stop;
};

inline NameHead mark_head(const char* name, u32 length) {
  NameMarks marks = name_lane(name);
  if (length > kLane) {
    const NameMarks more = name_lane(name + kLane);
    marks.stop |= more.stop << kLane;
    marks.colon |= more.colon << kLane;
  }
  const u64 inside = bits_below(length);
  return {marks.colon & inside, marks.stop & inside};
}

// A tag with bytes that no name holds: reads `name attribute="value"` and nothing else.
inline bool read_attribute_tag(UsualTag& tag, const NameHead& head, u32 length) {
  const char* text = tag.name;
  SimpleElement& element = tag.element;
  element.nameLength = head.stop == 0 ? 2 * kLane : lowest(head.stop);
  element.attributeBegin = element.nameLength + 1;
  const u64 equals = (u64{byte_lane(text, '=')} | u64{byte_lane(text + kLane, '=')} << kLane) &
                     ~bits_below(element.attributeBegin);
  if (equals == 0 || text[length - 1] != '"' || !is_space(text[element.nameLength])) return false;
  const u32 at = lowest(equals);
  const u64 inName = bits_below(at) & ~bits_below(element.attributeBegin);
  if (at + 3 >= length || at == element.attributeBegin || text[at + 1] != '"' ||
      text[element.attributeBegin] == 'x' || ((head.stop | head.colon) & inName) != 0) {
    return false;
  }
  element.attributeEnd = at;
  element.valueBegin = at + 2;
  element.valueEnd = length - 1;
  const std::string_view inner = inner_value(tag);
  if (is_space(inner.front()) || is_space(inner.back())) return false;
  element.valueLocal = element.valueBegin;
  for (u32 lane = 0; lane < inner.size(); lane += kLane) {
    const u32 inside = first_bits(static_cast<u32>(inner.size()) - lane);
    const u32 colon = byte_lane(inner.data() + lane, ':') & inside;
    if (((byte_lane(inner.data() + lane, '"') | byte_lane(inner.data() + lane, '\0')) & inside) !=
        0) {
      return false;
    }
    if (colon != 0 && element.valueLocal == element.valueBegin) {
      element.valueLocal = element.valueBegin + lane + lowest(colon) + 1;
    }
  }
  return true;
}

// The same for one whose "=" stands behind the head.
bool read_long_tag(const Scan& scan, UsualTag& tag, u32 length) {
  SimpleElement& element = tag.element;
  element = {};
  return read_simple_element(text_marks(scan.document, tag.offset, length), length, element) &&
         element.has_value() && tag.name[element.attributeBegin] != 'x' &&
         is_space(tag.name[element.nameLength]) && find_byte(inner_value(tag), '\0') == nullptr;
}

inline bool read_usual_tag(const Scan& scan, UsualTag& tag, u32 length) {
  if (length > kBlock || tag.name[length - 1] == '/') return false;
  const NameHead head = mark_head(tag.name, length);
  const u64 colon = head.stop == 0 ? head.colon : head.colon & bits_below(lowest(head.stop));
  tag.element.colon = colon == 0 ? kNoColon : lowest(colon);
  if (head.stop != 0 || length > 2 * kLane) {
    return read_attribute_tag(tag, head, length) || read_long_tag(scan, tag, length);
  }
  tag.element.nameLength = length;
  tag.element.attributeEnd = 0;
  return true;
}

// Where the text of an element and its end tag stand, when nothing else is in it.
struct Leaf {
  u32 text;
  u32 textEnd;
  u32 end;  // of the end tag
};

inline bool find_leaf(Cursor& ahead, const UsualTag& tag, u32 begin, Leaf& leaf) {
  const char* text = ahead.text;
  const u32 length = tag.element.nameLength;
  u32 close;
  if (length > 2 * kLane || !next_mark(ahead, close) || text[close] != '<' ||
      !next_mark(ahead, leaf.end) || text[leaf.end] != '>' || text[close + 1] != '/' ||
      close >= ahead.limit || leaf.end - close - 2 != length ||
      !same_name(tag.name, text + close + 2, length)) {
    return false;
  }
  leaf.text = begin;
  leaf.textEnd = close;
  while (leaf.text < close && is_space(text[leaf.text])) ++leaf.text;
  while (leaf.text < leaf.textEnd && is_space(text[leaf.textEnd - 1])) --leaf.textEnd;
  return leaf.text < leaf.textEnd;
}

inline i32 take_start_tag(Scan& scan, Cursor& cursor, u32 begin, u32 end) {
  UsualTag tag;
  tag.name = cursor.text + begin + 1;
  tag.offset = begin + 1;
  if (!read_usual_tag(scan, tag, end - begin - 1)) return kUnusual;
  Leaf leaf;
  Cursor ahead = cursor;
  i32 status;
  if (scan.standing == 0 && find_leaf(ahead, tag, end + 1, leaf)) {
    status = take_leaf(scan, tag, leaf.text, leaf.textEnd - leaf.text);
    cursor = ahead;
    end = leaf.end;
  } else {
    status = open_usual(scan, tag);
  }
  if (status != kUnusual) scan.position = end;
  cursor.at = status == kSuccess ? end + 1 : cursor.at;
  return status;
}

// One tag and the text in front of it; kUnusual: what follows cursor.at is for take_next.
inline i32 take_usual(Scan& scan, Cursor& cursor) {
  u32 begin;
  if (!next_mark(cursor, begin) || cursor.text[begin] != '<' || begin >= cursor.limit)
    return kUnusual;
  while (cursor.at != begin && is_space(cursor.text[cursor.at])) ++cursor.at;
  if (cursor.at != begin) {
    const i32 status = take_text(scan, cursor.at, begin);
    if (status != kSuccess) return status;
    cursor.at = begin;
  }
  u32 end;
  if (!next_mark(cursor, end) || cursor.text[end] != '>' || end >= cursor.limit) return kUnusual;
  const char kind = cursor.text[begin + 1];
  if (is_letter(kind)) return take_start_tag(scan, cursor, begin, end);
  if (kind != '/') return kUnusual;
  const i32 status = take_end_tag(scan, cursor.text, begin, end);
  scan.position = end;
  if (status == kSuccess) cursor.at = end + 1;
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
  const Index& index = scan.index;
  if (!scan.alive.reserve(u64{index.nodes.size} + 1) ||
      !scan.firstOfGroup.reserve(index.groupCount)) {
    return false;
  }
  for (u32 i = 0; i < index.groupCount; ++i) scan.firstOfGroup[i] = kNone;
  scan.alive[0] = kRootNode;
  if (index.nodes[kRootNode].belowTargets != kNone && !scan.below.push({kRootNode, 0}))
    return false;
  refresh_standing(scan);
  rewind_marks(scan);
  return true;
}

}  // namespace

ScanOutcome scan_indexed(Index& index, std::string_view document, u32 flags,
                         ClXmlNameSpaceEntry* table) {
  Scan scan(index, document, flags, table);
  i32 status = start_scan(scan) ? run(scan) : kNoMemory;
  u64 stop = scan.position;
  if (status == kRootClosed) {
    status = kSuccess;
    ++stop;
  }
  return {status, stop, scan.serial, scan.metText, scan.metAttributes};
}

}  // namespace pxcl::xml
