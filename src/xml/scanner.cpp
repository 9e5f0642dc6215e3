// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "xml/scanner.hpp"

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

// The fast loop reads up to two lanes from a tag's name on, and the byte behind them: this far from
// the document's end it stops. A tag with an attribute is read by four lanes, its value by lanes of
// its own.
constexpr u32 kReach = 2 * kLane + 3;
constexpr u32 kAttributeReach = 5 * kLane;

// Where the fast loop stands.
struct Cursor {
  const char* text;
  OpenElement* top;  // the innermost element
  u32 at;            // behind the markup taken last
  u32 limit;         // up to here the loop may read kReach bytes
};

// The bits of the first `length` bytes, fewer than kBlock.
inline constexpr u64 bits_below(u32 length) {
  return (u64{1} << length) - 1;
}

// Whether `length` bytes, 2 * kLane at most, are the same; both sides are readable to that length.
inline bool same_name(const char* a, const char* b, u32 length) {
  if (length > kLane) {
    if (same_lane(a, b) != bits_below(kLane)) return false;
    a += kLane;
    b += kLane;
    length -= kLane;
  }
  return (~u64{same_lane(a, b)} & bits_below(length)) == 0;
}

// --- Finding the nodes of a tag ---

// The name of the tag at hand.
struct TagName {
  const char* text;
  u32 length;
  u32 localBegin;
  u32 row;  // of the prefix that the table's takes the place of; kNone: the name stands as it is
  u32 hash;
};

struct Prefix {
  u32 length;  // with its ":"
  u32 row;     // as TagName has it
};

// The first colon of a name of up to 2 * kLane bytes; kNone without one.
inline u32 plain_colon(const char* text, u32 length) {
  const u64 lanes = u64{colon_lane(text)} | u64{colon_lane(text + kLane)} << kLane;
  const u64 colon = lanes & bits_below(length);
  return colon == 0 ? kNone : lowest(colon);
}

// Works out the prefix and keeps it in mind when it stands as it is: most tags have the same few.
[[gnu::noinline]] Prefix find_prefix(Scan& scan, const char* text, u32 length) {
  const u32 colon = plain_colon(text, length);
  const u32 row = colon == kNone ? kNone : find_other_row(scan, text, colon);
  const Prefix prefix = {colon + 1, row};  // kNone + 1 is 0
  if (!kLittleEndian || colon >= 7 || row != kNone) return prefix;
  scan.known[1] = scan.known[0];
  scan.known[0].mask = (u64{1} << 8 * (colon + 1)) - 1;
  scan.known[0].word = load_bytes(text, 8) & scan.known[0].mask;
  scan.known[0].length = colon + 1;
  return prefix;
}

inline TagName read_name(Scan& scan, const char* text, u32 length) {
  TagName name;
  name.text = text;
  name.length = length;
  name.row = kNone;
  const u64 word = load_bytes(text, 8);
  if ((word & scan.known[0].mask) == scan.known[0].word) {
    name.localBegin = scan.known[0].length;
  } else if ((word & scan.known[1].mask) == scan.known[1].word) {
    name.localBegin = scan.known[1].length;
  } else {
    const Prefix prefix = find_prefix(scan, text, length);
    name.localBegin = prefix.length;
    name.row = prefix.row;
  }
  name.hash = hash_readable(text + name.localBegin, length - name.localBegin);
  return name;
}

[[gnu::noinline]] bool has_other_name(const Node& node, const char* text, u32 length, u32 colon,
                                      u32 row) {
  return names_match(node, {text, length}, colon, row);
}

inline bool has_name(const Node& node, const TagName& name) {
  if (name.row != kNone) {
    return has_other_name(node, name.text, name.length, name.localBegin - 1, name.row);
  }
  return node.nameLength == name.length && equal_bytes(node.text, name.text, name.length);
}

// Calls visit(node) for the nodes below `element`, the innermost one, that a tag without attribute
// matches, until it answers false.
template <typename Visit>
inline bool visit_plain(Scan& scan, const OpenElement& element, const char* text, u32 length,
                        const Visit& visit) {
  const TagName name = read_name(scan, text, length);
  const u32* parent = scan.alive.begin() + element.aliveBegin;
  const u32* parentsEnd = scan.alive.begin() + scan.aliveTop;
  for (; parent != parentsEnd; ++parent) {
    if ((scan.plan.nodes[*parent].flags & kPlainChildren) == 0) continue;
    const u32 key = element_key(*parent, name.hash, kPlainKey);
    u32 found = scan.plan.buckets[bucket_of(key, scan.plan.bucketMask)];
    for (; found != kNone; found = scan.plan.nodes[found].nextInBucket) {
      const Node& node = scan.plan.nodes[found];
      if (node.key != key || node.parent != *parent || !has_name(node, name)) continue;
      if ((node.flags & kImpossible) == 0 && !visit(found)) return false;
    }
  }
  return true;
}

// --- Tags with one attribute ---

// Offsets into the tag, from its name on. The value stands between its quotes.
struct AttributeTag {
  const char* text;
  u32 offset;
  u32 nameLength;
  u32 attributeEnd;
  u32 valueEnd;

  u32 attributeBegin() const { return nameLength + 1; }
  u32 attributeLength() const { return attributeEnd - attributeBegin(); }
  const char* attribute() const { return text + attributeBegin(); }
  u32 valueBegin() const { return attributeEnd + 2; }
  u32 valueLength() const { return valueEnd - valueBegin(); }
  const char* value() const { return text + valueBegin(); }
  u32 end() const { return offset + valueEnd + 2; }  // behind the tag, in the document
};

// White space at a value's edges and NUL bytes are not for the fast loop, nor are values that may
// be qualified names.
inline bool is_clean_value(const char* value, u32 length) {
  if (static_cast<u8>(value[0]) <= ' ' || static_cast<u8>(value[length - 1]) <= ' ') return false;
  u32 at = 0;
  for (; at + kLane < length; at += kLane) {
    if (value_lane(value + at) != 0) return false;
  }
  return (value_lane(value + at) & bits_below(length - at)) == 0;
}

// Reads `name attribute="value"`; false for any other tag, and for an attribute that may declare a
// namespace or has no name. `low` marks the tag's bytes up to "/"; there is one.
inline bool read_attribute(const char* text, u32 length, u64 low, AttributeTag& tag) {
  const u32 blank = lowest(low);
  const u64 rest = low & (low - 1);
  if (rest == 0 || blank > 2 * kLane) return false;
  const u32 quote = lowest(rest);
  if (quote + 2 >= length || quote < blank + 3 || text[blank] != ' ' || text[quote] != '"' ||
      text[quote - 1] != '=' || text[length - 1] != '"' || text[blank + 1] == 'x' ||
      text[blank + 1] == '=') {
    return false;
  }
  tag.text = text;
  tag.nameLength = blank;
  tag.attributeEnd = quote - 1;
  tag.valueEnd = length - 1;
  return is_clean_value(tag.value(), tag.valueLength());
}

// The attribute's name as the document writes it: up to the first "=".
std::string_view attribute_name(const AttributeTag& tag) {
  const std::string_view text = {tag.attribute(), tag.attributeLength()};
  const char* equals = find_byte(text, '=');
  return equals == nullptr ? text : slice(text, 0, static_cast<std::size_t>(equals - text.data()));
}

// The attribute as the general functions want it.
void take_attribute(Scan& scan, const AttributeTag& tag) {
  const std::string_view name = attribute_name(tag);
  const PathName spelled = resolve(scan, name, find_colon(name), scan.generation);
  CurrentAttribute& attribute = scan.attributes[0];
  attribute = {};
  attribute.name = name.data();
  attribute.nameLength = static_cast<u32>(name.size());
  attribute.prefix = spelled.prefix.data();
  attribute.prefixLength = static_cast<u32>(spelled.prefix.size());
  attribute.rest = static_cast<u32>(name.size() - spelled.rest.size());
  attribute.value = tag.value() - 1;
  attribute.valueLength = tag.valueLength() + 2;
  scan.attributes.size = 1;
}

// note_key() for a value that holds no ":".
inline void note_plain_key(Scan& scan, const Node& node, const AttributeTag& tag) {
  for (u32 i = node.elementTargets; i != kNone; i = scan.plan.targets[i].next) {
    Finding& finding = scan.findings[i];
    finding.keyBegin = tag.offset + tag.valueBegin();
    finding.keyLength = tag.valueLength();
    finding.flags = static_cast<u8>(finding.flags & ~kKeyInPath);
  }
}

// Whether the node's element, which is not written as the tag is, means the same.
[[gnu::noinline]] bool means_the_same(Scan& scan, const AttributeTag& tag, const TagName& name,
                                      const Node& node) {
  if ((node.flags & kImpossible) != 0 || !has_name(node, name)) return false;
  take_attribute(scan, tag);
  return attributes_match(scan, node);
}

// Whether the tag is the node's element. `compared` bytes of it have to be the same where the node
// spells it as the tag does: up to the attribute's value, or with it.
inline bool is_element(Scan& scan, const AttributeTag& tag, const TagName& name, const Node& node,
                       u32 compared) {
  if (name.row != kNone || node.textLength != compared || (node.flags & kSimple) == 0 ||
      !equal_text(tag.text, node.text, compared)) {
    return means_the_same(scan, tag, name, node);
  }
  if ((node.flags & kEachValue) != 0) note_plain_key(scan, node, tag);
  return true;
}

// Appends the nodes with this key below `parent` that the tag matches.
inline u32* append_matches(Scan& scan, const AttributeTag& tag, const TagName& name, u32 parent,
                           u32 key, u32 compared, u32* out) {
  u32 found = scan.plan.buckets[bucket_of(key, scan.plan.bucketMask)];
  for (; found != kNone; found = scan.plan.nodes[found].nextInBucket) {
    const Node& node = scan.plan.nodes[found];
    if (node.key != key || node.parent != parent) continue;
    if (is_element(scan, tag, name, node, compared)) *out++ = found;
  }
  return out;
}

// Writes the nodes that a tag with one attribute matches behind the last ones alive, and answers
// where they end: there is room for every node. Its value and its name alone are looked up by keys
// of their own. `element` is the parent's.
u32* look_up_attribute(Scan& scan, const OpenElement& element, const AttributeTag& tag) {
  const TagName name = read_name(scan, tag.text, tag.nameLength);
  const u32* parent = scan.alive.begin() + element.aliveBegin;
  const u32* parentsEnd = scan.alive.begin() + scan.aliveTop;
  u32* out = scan.alive.begin() + scan.aliveTop;
  for (; parent != parentsEnd; ++parent) {
    const u32 children = scan.plan.nodes[*parent].flags;
    if ((children & kValuedChildren) != 0) {
      const u32 key = valued_key(element_key(*parent, name.hash, kValuedKey),
                                 hash_readable(tag.value(), tag.valueLength()));
      out = append_matches(scan, tag, name, *parent, key, tag.valueEnd + 1, out);
    }
    if ((children & kNamedChildren) != 0) {
      const u32 key = element_key(*parent, name.hash, kNamedKey);
      out = append_matches(scan, tag, name, *parent, key, tag.attributeEnd, out);
    }
  }
  return out;
}

// Whether the tag is, up to its value, the one that was met last in the same place.
inline bool is_repeated(const Scan& scan, u32 parent, const AttributeTag& tag) {
  const Repeated& last = scan.repeated;
  return last.parent == parent && last.length == tag.valueBegin() &&
         same_name(scan.document.data() + last.offset, tag.text, last.length);
}

// Keeps the tag in mind when whatever begins as it does matches `node` alone.
inline void keep_repeated(Scan& scan, u32 parent, const AttributeTag& tag, u32 node) {
  const bool byName = (scan.plan.nodes[parent].flags & kValuedChildren) == 0;
  const bool isOnly = (scan.plan.nodes[node].flags & kEachValue) == 0;
  if (byName && isOnly && tag.valueBegin() <= 2 * kLane) {
    scan.repeated = {parent, tag.offset, tag.valueBegin(), node};
  }
}

inline u32* find_by_attribute(Scan& scan, const OpenElement& element, const AttributeTag& tag) {
  u32* out = scan.alive.begin() + scan.aliveTop;
  const u32 parent = scan.alive[element.aliveBegin];
  const bool isOnlyParent = scan.aliveTop - element.aliveBegin == 1;
  if (isOnlyParent && is_repeated(scan, parent, tag)) {
    *out = scan.repeated.node;
    return out + 1;
  }
  u32* end = look_up_attribute(scan, element, tag);
  if (isOnlyParent && end == out + 1) keep_repeated(scan, parent, tag, *out);
  return end;
}

inline bool is_named(const AttributeTag& tag, std::string_view name) {
  if (tag.attributeLength() < name.size()) return false;
  if (tag.attributeLength() > name.size()) return attribute_name(tag) == name;
  return equal_bytes(tag.attribute(), name.data(), name.size());
}

// Gives the tag's attribute to the targets of `node` that ask for it.
inline bool store_attribute(Scan& scan, const AttributeTag& tag, u32 node) {
  u32 number = scan.plan.nodes[node].attributeTargets;
  for (; number != kNone; number = scan.plan.targets[number].next) {
    const Target& target = scan.plan.targets[number];
    if (!is_named(tag, {target.attributeName, target.attributeNameLength})) continue;
    if (!record(scan, number, tag.offset + tag.valueBegin() - 1, tag.valueLength() + 2, kFound))
      return false;
  }
  return true;
}

// --- Start tags ---

// Opens an element whose nodes stand behind the last ones alive, up to `end`; false when memory is
// short.
inline bool open_usual(Scan& scan, OpenElement& opened, u32 offset, u32 length, const u32* end) {
  u32 flags = 0;
  const u32* node = scan.alive.begin() + scan.aliveTop;
  opened = {offset, length, scan.aliveTop, scan.generation, 0};
  ++scan.depth;
  for (; node != end; ++node) {
    const Node& matched = scan.plan.nodes[*node];
    flags |= matched.flags;
    if (matched.belowTargets == kNone) continue;
    if (!scan.below.push({*node, scan.depth})) return false;
    refresh_standing(scan);
  }
  opened.flags = static_cast<u16>(flags & kOfElement);
  scan.aliveTop = static_cast<u32>(end - scan.alive.begin());
  return true;
}

// The element without attribute whose start tag is at the cursor gets the nodes that match it.
[[gnu::noinline]] bool open_plain(Scan& scan, const Cursor& cursor, u32 length) {
  const u32 begin = cursor.at + 1;
  u32* end = scan.alive.begin() + scan.aliveTop;
  visit_plain(scan, *cursor.top, cursor.text + begin, length, [&](u32 node) {
    *end++ = node;
    return true;
  });
  return open_usual(scan, cursor.top[1], begin, length, end);
}

// A leaf is an element in which nothing but text is. Its text, [begin, close), goes to what asks for
// it without the white space at its end.
inline bool on_leaf_text(Scan& scan, u32 node, u32 begin, u32 close) {
  const char* text = scan.document.data();
  while (is_space(text[close - 1])) --close;
  return on_leaf(scan, node, begin, close - begin);
}

// A leaf without attribute.
[[gnu::noinline]] bool take_plain_leaf(Scan& scan, const Cursor& cursor, u32 length, u32 close) {
  const u32 name = cursor.at + 1;
  return visit_plain(scan, *cursor.top, cursor.text + name, length,
                     [&](u32 node) { return on_leaf_text(scan, node, name + length + 1, close); });
}

// The element whose start tag is at the cursor; `close` is where a leaf's text ends, 0 for others.
[[gnu::noinline]] bool match_attribute_tag(Scan& scan, const Cursor& cursor,
                                           const AttributeTag& tag, u32 close) {
  const bool isLeaf = close != 0;
  const u32* node = scan.alive.begin() + scan.aliveTop;
  const u32* end = find_by_attribute(scan, *cursor.top, tag);
  if (!isLeaf && !open_usual(scan, cursor.top[1], tag.offset, tag.nameLength, end)) return false;
  for (; node != end; ++node) {
    if (!store_attribute(scan, tag, *node)) return false;
    if (isLeaf && !on_leaf_text(scan, *node, tag.end(), close)) return false;
  }
  return true;
}

// The next "<" or ">" from `at` on that the loop may take; kNone without one.
inline u32 find_tag_mark(const Cursor& cursor, u32 at) {
  for (; at + kLane <= cursor.limit; at += kLane) {
    const u32 marks = tag_lane(cursor.text + at);
    if (marks != 0) return at + lowest(marks);
  }
  return kNone;
}

inline bool is_end_tag(const char* tag) {
  return tag[0] == '<' && tag[1] == '/';
}

// Where the text of a leaf ends whose start tag, with this name, ends in front of `begin`; 0 for
// every other element.
inline u32 find_leaf_end(const Cursor& cursor, const char* name, u32 length, u32 begin) {
  const char* text = cursor.text;
  if (text[begin] == '<' || static_cast<u8>(text[begin]) <= ' ') return 0;
  const u32 close = find_tag_mark(cursor, begin);
  if (close == kNone || !is_end_tag(text + close) || text[close + 2 + length] != '>') return 0;
  return same_name(name, text + close + 2, length) ? close : 0;
}

// Moves on behind a tag; `taken`: memory was there.
inline i32 pass(Scan& scan, Cursor& cursor, u32 end, bool taken) {
  cursor.at = end;
  if (taken) return kSuccess;
  scan.position = end - 1;
  return kNoMemory;
}

// A leaf's end tag is `length` bytes and "</>" long.
inline i32 pass_leaf(Scan& scan, Cursor& cursor, u32 close, u32 length, bool taken) {
  scan.metText = true;
  return pass(scan, cursor, close + length + 3, taken);
}

// Goes into an element that was opened.
inline i32 enter(Scan& scan, Cursor& cursor, u32 begin, bool taken) {
  ++cursor.top;
  const i32 status = pass(scan, cursor, begin, taken);
  return status == kSuccess && scan.standing != 0 ? kUnusual : status;
}

// Opens an element that no path leads through. Always true, as open_plain() mostly is.
inline bool open_unasked(Scan& scan, const Cursor& cursor, u32 length) {
  cursor.top[1] = {cursor.at + 1, length, scan.aliveTop, scan.generation, 0};
  ++scan.depth;
  return true;
}

inline i32 take_plain_tag(Scan& scan, Cursor& cursor, u32 length) {
  const u32 begin = cursor.at + length + 2;
  const u32 close = find_leaf_end(cursor, cursor.text + cursor.at + 1, length, begin);
  const bool mayMatch = (cursor.top->flags & kPlainChildren) != 0;
  if (close == 0 && scan.depth == scan.open.capacity) return kUnusual;
  ++scan.serial;
  if (close != 0) {
    const bool taken = !mayMatch || take_plain_leaf(scan, cursor, length, close);
    return pass_leaf(scan, cursor, close, length, taken);
  }
  const bool taken =
      mayMatch ? open_plain(scan, cursor, length) : open_unasked(scan, cursor, length);
  return enter(scan, cursor, begin, taken);
}

inline i32 take_attribute_tag(Scan& scan, Cursor& cursor, const AttributeTag& tag) {
  const u32 close = find_leaf_end(cursor, tag.text, tag.nameLength, tag.end());
  const bool mayMatch = (cursor.top->flags & kAttributeChildren) != 0;
  if (close == 0 && scan.depth == scan.open.capacity) return kUnusual;
  ++scan.serial;
  scan.metAttributes = true;
  bool taken = true;
  if (mayMatch) {
    taken = match_attribute_tag(scan, cursor, tag, close);
  } else if (close == 0) {
    open_unasked(scan, cursor, tag.nameLength);
  }
  return close != 0 ? pass_leaf(scan, cursor, close, tag.nameLength, taken)
                    : enter(scan, cursor, tag.end(), taken);
}

// The marks of a start tag from its name on, as many lanes as its end takes, four at most, two
// unless it may be long.
inline TagMarks read_tag(const char* name, bool mayBeLong) {
  TagMarks marks = tag_marks(name, 0);
  if (marks.tag != 0) return marks;
  marks |= tag_marks(name, 1);
  if (marks.tag != 0 || !mayBeLong) return marks;
  marks |= tag_marks(name, 2);
  if (marks.tag != 0) return marks;
  marks |= tag_marks(name, 3);
  return marks;
}

inline i32 take_start_tag(Scan& scan, Cursor& cursor) {
  const char* name = cursor.text + cursor.at + 1;
  const bool mayHaveAttribute = cursor.at + u64{1} + kAttributeReach <= scan.document.size();
  const TagMarks marks = read_tag(name, mayHaveAttribute);
  if (marks.tag == 0) return kUnusual;
  const u32 length = lowest(marks.tag);
  if (name[length] != '>') return kUnusual;
  const u64 low = marks.low & bits_below(length);
  if (low == 0) return length <= 2 * kLane ? take_plain_tag(scan, cursor, length) : kUnusual;
  AttributeTag tag;
  tag.offset = cursor.at + 1;
  if (!mayHaveAttribute || !read_attribute(name, length, low, tag)) return kUnusual;
  return take_attribute_tag(scan, cursor, tag);
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
  scan.aliveTop = top.aliveBegin;
  --scan.depth;
  --cursor.top;
  cursor.at = end + 1;
  return kSuccess;
}

bool same_last_name(const char* a, const char* b, u32 length) {
  return equal_bytes(a, b, length);
}

// Near the document's end, where no lane can be read: an end tag right behind the one before.
[[gnu::noinline]] i32 take_last_tag(Scan& scan, Cursor& cursor) {
  const u64 end = u64{cursor.at} + 2 + cursor.top->length;
  const bool isEndTag = end < scan.document.size() && is_end_tag(cursor.text + cursor.at);
  return isEndTag ? take_end_tag<same_last_name>(scan, cursor) : kUnusual;
}

// White space and text in front of the next tag.
[[gnu::noinline]] i32 pass_text(Scan& scan, Cursor& cursor) {
  while (cursor.at <= cursor.limit && is_space(cursor.text[cursor.at])) ++cursor.at;
  const u32 mark = find_tag_mark(cursor, cursor.at);
  if (mark == kNone || cursor.text[mark] != '<') return kUnusual;
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
  if (!scan.alive.reserve(u64{plan.nodeCount} + 1) || !scan.firstOfGroup.reserve(plan.groupCount)) {
    return false;
  }
  for (u32 i = 0; i < plan.groupCount; ++i) scan.firstOfGroup[i] = kNone;
  scan.alive[0] = kRootNode;
  if (plan.nodes[kRootNode].belowTargets != kNone)
    scan.below.push({kRootNode, 0});  // the first fits
  refresh_standing(scan);
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
