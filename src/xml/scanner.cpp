// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "xml/scanner.hpp"

#include "xml/document.hpp"
#include "xml/follow.hpp"

namespace pxcl::xml {
namespace {

constexpr i32 kEndOfText = 3;  // the document ended

// --- The scan ------------------------------------------------------------------------------------

// The first `byte` from `from` on; kNone without one.
u32 find(const Scan& scan, u32 from, char byte) {
  const std::string_view rest = pxcl::from(scan.document, from);
  const char* found = find_byte(rest, byte);
  return found == nullptr ? kNone : static_cast<u32>(found - scan.document.data());
}

// The text between two tags: [begin, end), `begin` not white space.
i32 take_text(Scan& scan, u32 begin, u32 end) {
  scan.metText = true;
  scan.position = end - 1;
  if (!is_asked_for(scan)) return kSuccess;
  u32 trimmed = end;
  while (is_space(scan.document[trimmed - 1])) --trimmed;
  return on_text(scan, begin, trimmed - begin);
}

// "<![CDATA[text]]>"
i32 take_cdata(Scan& scan, u32 begin) {
  const u32 text = begin + 9;
  for (u32 end = find(scan, text, '>'); end != kNone; end = find(scan, end + 1, '>')) {
    if (std::memcmp(scan.document.data() + end - 2, "]]", 2) != 0) continue;
    scan.position = end;
    if (end - 2 == text) return kBadArgument;  // an empty section is refused
    scan.metText = true;
    return is_asked_for(scan) ? on_text(scan, text, end - 2 - text) : kSuccess;
  }
  return kUnterminated;
}

// "<?...>", "<!...>": passed over up to the first ">".
i32 skip_markup(Scan& scan) {
  const u32 end = find(scan, scan.position, '>');
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
  const u32 end = find(scan, begin, '>');
  if (end == kNone) return kUnterminated;
  scan.position = end;
  return kind == '/' ? end_any_tag(scan, begin, end) : start_any_tag(scan, begin, end);
}

// What is left of the document from scan.at on: text, and the markup behind it. kEndOfText:
// nothing.
i32 take_next(Scan& scan) {
  const u32 tag = find(scan, scan.at, '<');
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

// What is rare, from the cursor on. It gets a copy: the cursor itself stays in registers.
template <typename Take>
inline i32 take_apart(Scan& scan, Cursor& cursor, const Take& take) {
  Cursor copy = cursor;
  const i32 status = take(scan, copy);
  cursor.at = copy.at;
  cursor.top = copy.top;
  return status;
}

// take_tag(), and what is known to follow the tag.
inline i32 take_and_learn(Scan& scan, Cursor& cursor, const Tag& tag, const char* close,
                          Matched matched) {
  const Learned learned = learn(scan, *cursor.top, tag, close != nullptr, matched);
  const i32 status = take_tag(scan, cursor, tag, close, matched.end, learned.element);
  if (learned.leading == nullptr || status != kSuccess) return status;
  const u32 stretchBegin = offset_of(scan, close != nullptr ? close : cursor.at);
  if (stretchBegin < learned.leading->follower.limit) {
    return follow(scan, cursor, *learned.leading, stretchBegin);
  }
  begin_stretch(scan, stretchBegin, learned.leading);
  return kSuccess;
}

// A start tag in a document that repeats itself, or one that may match several nodes.
[[gnu::noinline]] i32 take_general_tag(Scan& scan, Cursor& cursor, Tag tag, const char* close,
                                       u32 number) {
  const Matched matched = nodes_of(scan, *cursor.top, tag, number);
  return may_repeat(scan) ? take_and_learn(scan, cursor, tag, close, matched)
                          : take_tag(scan, cursor, tag, close, matched.end, kUnsettled);
}

// A start tag with an attribute.
[[gnu::noinline]] i32 take_attribute_tag(Scan& scan, Cursor& cursor, u32 nameLength) {
  Tag tag;
  tag.text = cursor.at + 1;
  tag.offset = offset_of(scan, tag.text);
  if (u64{tag.offset} + kAttributeReach > scan.document.size()) return kUnusual;
  if (!read_attribute_tag(tag, nameLength)) return kUnusual;
  const char* close = find_leaf_end(scan.limit, tag.text, tag.nameLength, tag.text + tag.length);
  if (close == nullptr && scan.depth == scan.open.capacity) return kUnusual;
  scan.metAttributes = true;
  const u32 number = find_attribute_node(scan, *cursor.top, tag);
  if (number == kUnclear || may_repeat(scan)) {
    return take_general_tag(scan, cursor, tag, close, number);
  }
  return take_only(scan, cursor, tag, close, number);
}

inline Tag plain_tag(const Scan& scan, const char* name, u32 length) {
  return {name, offset_of(scan, name), length, 0, 0, length + 1};
}

// A start tag without attribute, whose name is `length` long.
inline i32 take_plain_tag(Scan& scan, Cursor& cursor, u32 length) {
  const char* name = cursor.at + 1;
  const char* close = find_plain_leaf_end(scan.limit, name, length);
  if (close == nullptr && scan.depth == scan.open.capacity) return kUnusual;
  const u32 number = find_plain_node(scan, *cursor.top, name, length);
  if (number == kUnclear || may_repeat(scan)) {
    return take_apart(scan, cursor, [=](Scan& in, Cursor& from) {
      return take_general_tag(in, from, plain_tag(in, name, length), close, number);
    });
  }
  return take_only(scan, cursor, plain_tag(scan, name, length), close, number);
}

// A start tag with the very bytes of a node.
inline i32 take_exact_tag(Scan& scan, Cursor& cursor, u32 number) {
  const Node& node = scan.plan.nodes[number];
  const char* name = cursor.at + 1;
  const u32 length = node.textLength + 1;
  const char* close = find_leaf_end(scan.limit, name, node.nameLength, name + length);
  if (node.attributeCount != 0) scan.metAttributes = true;
  return take_only(scan, cursor, {name, offset_of(scan, name), node.nameLength, 0, 0, length},
                   close, number);
}

inline i32 take_start_tag(Scan& scan, Cursor& cursor) {
  // Replies mostly hold elements in the order in which they are asked for.
  const u32 next = scan.nextNode;
  if (next != 0 && is_exactly(scan, *cursor.top, cursor.at + 1, scan.plan.nodes[next])) {
    return take_exact_tag(scan, cursor, next);
  }
  const u32 length = find_name_end(cursor.at + 1);
  if (length == kNone) return kUnusual;
  if (cursor.at[1 + length] == '>') return take_plain_tag(scan, cursor, length);
  return take_apart(scan, cursor, [length](Scan& in, Cursor& from) {
    return take_attribute_tag(in, from, length);
  });
}

// An end tag whose name is read by `Same`.
template <bool (*Same)(const char*, const char*, u32)>
inline i32 take_end_tag(Scan& scan, Cursor& cursor) {
  const OpenElement& top = *cursor.top;
  const char* name = cursor.at + 2;
  const char* end = name + top.length;
  if (top.length > 2 * kLane || top.generation != scan.generation || *end != '>' ||
      !Same(scan.document.data() + top.offset, name, top.length)) {
    return kUnusual;
  }
  if ((top.flags & kElementTargets) != 0) {
    const i32 status = on_element_end(scan, offset_of(scan, cursor.at), kEmptyElement);
    scan.position = offset_of(scan, end);
    if (status != kSuccess) return status;
  }
  close_in_stretch(scan, top);
  scan.aliveTop = top.aliveBegin;
  --scan.depth;
  --cursor.top;
  cursor.at = end + 1;
  return kSuccess;
}

bool same_last_name(const char* a, const char* b, u32 length) {
  return equal_bytes(a, b, length);
}

// The end tag of the root, which may be read to its end.
inline i32 take_root_end(Scan& scan, const Cursor& cursor) {
  constexpr std::string_view kEndTag = "</cmd>";
  const OpenElement& root = *cursor.top;
  const std::string_view name = {scan.document.data() + root.offset, root.length};
  if (name != kRootName || (root.flags & kElementTargets) != 0) return kUnusual;
  if (std::string_view(cursor.at, kEndTag.size()) != kEndTag) return kUnusual;
  scan.position = offset_of(scan, cursor.at) + static_cast<u32>(kEndTag.size()) - 1;
  return kRootClosed;
}

// Near the document's end, where no lane can be read: an end tag right behind the one before.
[[gnu::noinline]] i32 take_last_tag(Scan& scan, Cursor& cursor) {
  const u64 end = u64{offset_of(scan, cursor.at)} + 2 + cursor.top->length;
  const bool isEndTag = end < scan.document.size() && is_end_tag(cursor.at);
  if (!isEndTag) return kUnusual;
  return scan.depth == 1 ? take_root_end(scan, cursor) : take_end_tag<same_last_name>(scan, cursor);
}

// White space and text in front of the next tag.
[[gnu::noinline]] i32 pass_text(Scan& scan, Cursor& cursor) {
  while (cursor.at <= scan.limit && is_space(*cursor.at)) ++cursor.at;
  const char* mark = find_tag_mark(cursor.at, scan.limit);
  if (mark == nullptr || *mark != '<') return kUnusual;
  if (mark == cursor.at) return kSuccess;
  scan.lastShape = nullptr;
  const i32 status = take_text(scan, offset_of(scan, cursor.at), offset_of(scan, mark));
  if (status == kSuccess) cursor.at = mark;
  return status;
}

// One tag, or the text in front of it; kUnusual: what follows the cursor is for take_next.
inline i32 take_usual(Scan& scan, Cursor& cursor) {
  if (cursor.at > scan.limit) return take_apart(scan, cursor, take_last_tag);
  if (*cursor.at != '<') return take_apart(scan, cursor, pass_text);
  const char kind = cursor.at[1];
  if (kind == '/') return take_end_tag<same_name>(scan, cursor);
  return is_letter(kind) ? take_start_tag(scan, cursor) : kUnusual;
}

// Takes usual tags as far as they go. Elements whose text stands in the path buffer are not for it.
[[gnu::noinline]] i32 take_usual_tags(Scan& scan) {
  const char* text = scan.document.data();
  scan.limit = text + scan.document.size() - kReach;
  Cursor cursor = {text + scan.at, &scan.open[scan.depth - 1]};
  i32 status = kSuccess;
  scan.lastShape = nullptr;
  while (status == kSuccess) status = take_usual(scan, cursor);
  scan.at = offset_of(scan, cursor.at);
  return status;
}

bool is_usual_ahead(const Scan& scan) {
  return scan.depth != 0 && scan.path.size == 0 && !scan.quotedPrefix && scan.standing == 0 &&
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
  if (!scan.alive.reserve(u64{plan.nodeCount} + 1)) return false;
  scan.alive[0] = kRootNode;
  if (may_repeat(scan)) scan.shapes.start();
  if (plan.nodes[kRootNode].belowTargets != kNone)
    scan.below.push({kRootNode, 0});  // the first fits
  refresh_standing(scan);
  take_usual_beginning(scan);
  if (may_repeat(scan)) scan.nextNode = 0;  // there it is learnt what follows what
  return true;
}

}  // namespace

ScanOutcome scan_indexed(const Plan& plan, const Results& results, std::string_view document,
                         u32 flags, ClXmlNameSpaceEntry* table) {
  Scan scan(plan, results, document, flags, table);
  i32 status = start_scan(scan) ? run(scan) : kNoMemory;
  u64 stop = scan.position;
  if (status == kRootClosed) {
    status = kSuccess;
    ++stop;
  }
  return {status, stop, scan.serial, scan.metText, scan.metAttributes};
}

}  // namespace pxcl::xml
