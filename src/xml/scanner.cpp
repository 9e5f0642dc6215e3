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
  if (scan.document.size() - begin >= 3) {
    while (is_space(scan.document[trimmed - 1])) --trimmed;
  }
  return on_text(scan, begin, trimmed - begin);
}

// "<![CDATA[text]]>"
i32 take_cdata(Scan& scan, u32 begin) {
  const u32 text = begin + 9;
  for (u32 end = find(scan, begin, '>'); end != kNone; end = find(scan, end + 1, '>')) {
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

// A start tag by itself.
inline i32 take_start_tag(Scan& scan, Cursor& cursor) {
  Tag tag;
  tag.text = cursor.text + cursor.at + 1;
  tag.offset = cursor.at + 1;
  const bool mayBeLong = u64{tag.offset} + kAttributeReach <= scan.document.size();
  if (!read_tag(tag, mayBeLong)) return kUnusual;
  const u32 close = find_leaf_end(cursor, tag.text, tag.nameLength, tag.end());
  if (close == 0 && scan.depth == scan.open.capacity) return kUnusual;
  u32* none = scan.alive.begin() + scan.aliveTop;
  Matched matched = {none, none};
  if (tag.has_attribute()) {
    if ((cursor.top->flags & kAttributeChildren) != 0)
      matched = look_up_attribute(scan, *cursor.top, tag);
  } else {
    if ((cursor.top->flags & kPlainChildren) != 0)
      matched.end = look_up_plain(scan, *cursor.top, tag);
  }
  Learned learned = {kUnsettled, nullptr};
  if (may_repeat(scan)) learned = learn(scan, *cursor.top, tag, close != 0, matched);
  if (tag.has_attribute()) scan.metAttributes = true;
  const i32 status = close != 0 ? pass_leaf(scan, cursor, tag, close, matched.end)
                                : enter(scan, cursor, tag, matched.end, learned.element);
  if (learned.leading == nullptr || status != kSuccess) return status;
  const u32 stretchBegin = close != 0 ? close : cursor.at;
  if (stretchBegin < learned.leading->follower.limit) {
    return follow(scan, cursor, *learned.leading, stretchBegin);
  }
  begin_stretch(scan, stretchBegin, learned.leading);
  return kSuccess;
}

// An end tag whose name is read by `Same`.
template <bool (*Same)(const char*, const char*, u32)>
inline i32 take_end_tag(Scan& scan, Cursor& cursor) {
  const OpenElement& top = *cursor.top;
  const u32 end = cursor.at + 2 + top.length;
  if (top.length > 2 * kLane || top.generation != scan.generation || cursor.text[end] != '>' ||
      !Same(cursor.text + top.offset, cursor.text + cursor.at + 2, top.length)) {
    return kUnusual;
  }
  if ((top.flags & kElementTargets) != 0) {
    const i32 status = on_element_end(scan, cursor.at, kEmptyElement);
    scan.position = end;
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
  const std::string_view name = {cursor.text + root.offset, root.length};
  if (name != kRootName || (root.flags & kElementTargets) != 0) return kUnusual;
  if (std::string_view(cursor.text + cursor.at, kEndTag.size()) != kEndTag) return kUnusual;
  scan.position = cursor.at + static_cast<u32>(kEndTag.size()) - 1;
  return kRootClosed;
}

// Near the document's end, where no lane can be read: an end tag right behind the one before.
[[gnu::noinline]] i32 take_last_tag(Scan& scan, Cursor& cursor) {
  const u64 end = u64{cursor.at} + 2 + cursor.top->length;
  const bool isEndTag = end < scan.document.size() && is_end_tag(cursor.text + cursor.at);
  if (!isEndTag) return kUnusual;
  return scan.depth == 1 ? take_root_end(scan, cursor) : take_end_tag<same_last_name>(scan, cursor);
}

// White space and text in front of the next tag.
[[gnu::noinline]] i32 pass_text(Scan& scan, Cursor& cursor) {
  while (cursor.at <= cursor.limit && is_space(cursor.text[cursor.at])) ++cursor.at;
  const u32 mark = find_tag_mark(cursor, cursor.at);
  if (mark == kNone || cursor.text[mark] != '<') return kUnusual;
  if (mark != cursor.at) scan.lastShape = nullptr;
  const i32 status = mark == cursor.at ? kSuccess : take_text(scan, cursor.at, mark);
  if (status == kSuccess) cursor.at = mark;
  return status;
}

// One tag, or the text in front of it; kUnusual: what follows cursor.at is for take_next.
inline i32 take_usual(Scan& scan, Cursor& cursor) {
  if (cursor.at > cursor.limit) return take_last_tag(scan, cursor);
  if (cursor.text[cursor.at] != '<') return pass_text(scan, cursor);
  const char kind = cursor.text[cursor.at + 1];
  if (kind == '/') return take_end_tag<same_name>(scan, cursor);
  return is_letter(kind) ? take_start_tag(scan, cursor) : kUnusual;
}

// Takes usual tags as far as they go. Elements whose text stands in the path buffer are not for it.
i32 take_usual_tags(Scan& scan) {
  Cursor cursor = {scan.document.data(), &scan.open[scan.depth - 1], scan.at,
                   static_cast<u32>(scan.document.size()) - kReach};
  i32 status = kSuccess;
  scan.lastShape = nullptr;
  while (status == kSuccess) status = take_usual(scan, cursor);
  scan.at = cursor.at;
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
