// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Start and end tags of every kind, as the path's rules have them, and a document's usual
// beginning. scanner.cpp takes the usual tags faster.

#include "xml/document.hpp"
#include "xml/marks.hpp"
#include "xml/matching.hpp"
#include "xml/namespaces.hpp"
#include "xml/scan.hpp"
#include "xml/scan_state.hpp"
#include "xml/status.hpp"

namespace pxcl::xml {
namespace {

// --- Matching a regular start tag ----------------------------------------------------------------

bool probe_attributes(Scan& scan, u32 nameHash, u32 parent, const StartTag& tag) {
  const u32 children = scan.plan.nodes[parent].flags;
  if ((children & kNamedChildren) != 0 &&
      !probe(scan, element_key(parent, nameHash, kNamedKey), parent, tag)) {
    return false;
  }
  if ((children & kValuedChildren) == 0) return true;
  const u32 key = element_key(parent, nameHash, kValuedKey);
  for (const CurrentAttribute& attribute : scan.attributes) {
    const u32 valueHash = hash_local(inner_value({attribute.value, attribute.valueLength}));
    if (!probe(scan, valued_key(key, valueHash), parent, tag)) return false;
  }
  return true;
}

// Finds the nodes that the innermost element, with scan.attributes, matches.
i32 match_regular(Scan& scan, const StartTag& tag) {
  const AliveRange parents = parent_nodes(scan);
  if (parents.begin == parents.end) return kSuccess;
  const u32 nameHash = hash_name(spell(tag.written, tag.colon, tag.row));
  for (u32 i = parents.begin; i < parents.end; ++i) {
    const u32 parent = scan.alive[i];
    if (scan.attributes.size != 0) {
      if (!probe_attributes(scan, nameHash, parent, tag)) return kNoMemory;
    } else if ((scan.plan.nodes[parent].flags & kPlainChildren) != 0) {
      if (!probe(scan, element_key(parent, nameHash, kPlainKey), parent, tag)) return kNoMemory;
    }
  }
  return kSuccess;
}

i32 push_regular(Scan& scan, const StartTag& tag, u16 generation) {
  const u32 offset = static_cast<u32>(tag.written.data() - scan.document.data());
  const u32 length = static_cast<u32>(tag.written.size());
  if (scan.depth == scan.open.capacity) {
    scan.open.size = scan.depth;
    if (!scan.open.reserve(u64{scan.depth} + 1)) return kNoMemory;
  }
  // Only the slow look at an end tag may close the root.
  const u16 known = scan.depth == 0 ? kNoGeneration : generation;
  scan.open[scan.depth++] = {offset, length, scan.aliveTop, known, scan.standing, kUnsettled};
  return match_regular(scan, tag);
}

// --- Start tags ----------------------------------------------------------------------------------

// What the attributes of a start tag are read against.
struct AttributeReading {
  u32 generation;          // declared namespaces so far
  bool replay = false;     // the tag was read before: nothing is declared anew
  bool irregular = false;  // the path's text needs the path buffer
};

// The first declaration of the namespace in this row of the table. `isOwn`: the prefix is the
// table's own.
u16 declare(Scan& scan, u32 row, std::string_view prefix, bool isOwn) {
  scan.table[row].declaredPrefix = prefix.data();
  scan.table[row].declaredPrefixLength = prefix.size();
  // Only as many bytes are compared as a name's prefix has; behind a short one stands the URI.
  scan.declared[row] = {load_bytes(prefix.data(), 8), prefix.size(), isOwn};
  return scan.declaredAt[row] = ++scan.generation;
}

void undeclare_all(Scan& scan) {
  scan.generation = 0;
  for (u32 row = 0; row < kNamespaceCount; ++row) {
    scan.declaredAt[row] = 0;
    scan.table[row].declaredPrefix = nullptr;
    scan.table[row].declaredPrefixLength = 0;
  }
}

// What is kept in mind of the tags before may mean something else behind a declaration.
void forget_tags(Scan& scan) {
  scan.known[0] = scan.known[1] = {};
  scan.shapes.forget();
}

// The first declaration of a namespace holds for the whole document.
i32 pick_up_namespace(Scan& scan, std::string_view prefix, std::string_view value,
                      AttributeReading& reading) {
  if (prefix.empty()) return kBadArgument;
  const std::string_view uri = inner_value(value);
  for (u32 i = 0; i < kNamespaceCount; ++i) {
    if (!is_same_uri(uri, kNamespaces[i].uri)) continue;
    if (reading.replay) {
      if (scan.table[i].declaredPrefix == prefix.data()) reading.generation = scan.declaredAt[i];
    } else if (scan.declaredAt[i] == 0) {
      reading.generation = declare(scan, i, prefix, prefix == kNamespaces[i].prefix);
      if (prefix.front() == '"') scan.quotedPrefix = true;
    }
    return kSuccess;
  }
  return kSuccess;
}

bool is_declaration(const CurrentAttribute& attribute) {
  return attribute.nameLength >= 5 && std::memcmp(attribute.name, "xmlns", 5) == 0;
}

// A default declaration's prefix is its whole name; any other stands behind six bytes.
i32 read_declaration(Scan& scan, const CurrentAttribute& attribute, AttributeReading& reading) {
  std::string_view prefix = {attribute.name, attribute.nameLength};
  if (find_colon(prefix) != kNone) prefix = from(prefix, 6);
  return pick_up_namespace(scan, prefix, {attribute.value, attribute.valueLength}, reading);
}

// Spells an attribute as the path does.
i32 resolve_attribute(const Scan& scan, CurrentAttribute& attribute, u32 colon,
                      AttributeReading& reading) {
  const std::string_view name = {attribute.name, attribute.nameLength};
  if (name.empty()) return kBadArgument;
  if (colon != kNone) {
    const PathName resolved = resolve(scan, name, colon, reading.generation);
    attribute.prefix = resolved.prefix.data();
    attribute.prefixLength = static_cast<u32>(resolved.prefix.size());
    attribute.rest = static_cast<u32>(name.size() - resolved.rest.size());
  }
  if (scan.quotedPrefix) {
    const std::string_view value = {attribute.value, attribute.valueLength};
    const PathName text = resolve(scan, value, find_colon(value), reading.generation);
    attribute.valuePrefix = text.prefix.data();
    attribute.valuePrefixLength = static_cast<u32>(text.prefix.size());
    attribute.valueRest = static_cast<u32>(value.size() - text.rest.size());
    if (!text.prefix.empty()) reading.irregular = true;
  }
  return kSuccess;
}

struct AttributeName {
  u32 colon = kNone;
  bool irregular = false;  // holds "/", a double quote or a NUL byte
  bool valid = true;       // holds no white space
};

AttributeName measure_attribute_name(std::string_view document, const CurrentAttribute& attribute) {
  AttributeName name;
  const u32 begin = static_cast<u32>(attribute.name - document.data());
  for (u32 at = 0; at < attribute.nameLength; at += kLane) {
    const u32 inside = first_bits(attribute.nameLength - at);
    const NameMarks marks = name_marks(document, begin + at);
    if (name.colon == kNone && (marks.colon & inside) != 0) name.colon = at + lowest(marks.colon);
    for (u32 stop = marks.stop & inside; stop != 0; stop &= stop - 1) {
      const char byte = attribute.name[at + lowest(stop)];
      if (byte == '/' || byte == '"' || byte == '\0') name.irregular = true;
      if (is_space(byte)) name.valid = false;
    }
  }
  return name;
}

// Reads scan.attributes in order and leaves those that declare no namespace.
i32 read_attributes(Scan& scan, AttributeReading& reading) {
  const u16 generation = scan.generation;
  u32 kept = 0;
  for (u32 i = 0; i < scan.attributes.size; ++i) {
    CurrentAttribute& attribute = scan.attributes[i];
    const AttributeName name = measure_attribute_name(scan.document, attribute);
    if (attribute.value == nullptr || !name.valid ||
        find_byte({attribute.value, attribute.valueLength}, '<') != nullptr) {
      return kBadAttribute;
    }
    if (is_declaration(attribute)) {
      const i32 status = read_declaration(scan, attribute, reading);
      if (status != kSuccess) return status;
      continue;
    }
    const bool cutShort = find_byte({attribute.value, attribute.valueLength}, '\0') != nullptr;
    if (name.irregular || cutShort) reading.irregular = true;
    const i32 status = resolve_attribute(scan, attribute, name.colon, reading);
    if (status != kSuccess) return status;
    if (kept != i) scan.attributes[kept] = attribute;
    ++kept;
  }
  scan.attributes.size = kept;
  if (scan.generation != generation) forget_tags(scan);
  return kept <= kFewAttributes || index_attributes(scan) ? kSuccess : kNoMemory;
}

u64 count_attributes(std::string_view text) {
  AttributeSplitter splitter(text);
  SplitAttribute attribute;
  u64 count = 0;
  while (splitter.next(attribute)) ++count;
  return count;
}

// Fills scan.attributes with those of `text`; kBadName for a value without closing quote.
i32 split_attributes(Scan& scan, std::string_view text) {
  AttributeSplitter splitter(text);
  SplitAttribute split;
  while (splitter.next(split)) {
    if (scan.attributes.size == scan.attributes.capacity &&
        !scan.attributes.reserve(scan.attributes.size + 1 + count_attributes(splitter.rest()))) {
      return kNoMemory;
    }
    CurrentAttribute& attribute = scan.attributes[scan.attributes.size++];
    attribute = {};
    attribute.name = split.name.data();
    attribute.nameLength = static_cast<u32>(split.name.size());
    attribute.value = split.value.data();
    attribute.valueLength = static_cast<u32>(split.value.size());
  }
  return splitter.failed() ? kBadName : kSuccess;
}

// Reads a tag's attributes once more: what could fail did so the first time.
void read_again(Scan& scan, std::string_view attributes, AttributeReading reading) {
  scan.attributes.size = 0;
  split_attributes(scan, attributes);
  read_attributes(scan, reading);
}

// A declaration below the root may change what an open element's attribute values mean: matches
// every open element anew. A document has at most as many first declarations as the table has rows.
i32 match_open_elements(Scan& scan) {
  const u32 depth = scan.depth;
  i32 status = kSuccess;
  scan.aliveTop = 1;
  for (scan.depth = 1; scan.depth <= depth && status == kSuccess; ++scan.depth) {
    OpenElement& element = scan.open[scan.depth - 1];
    element.aliveBegin = scan.aliveTop;
    if ((element.flags & kIrregular) != 0) {
      status = match_irregular(scan);
      continue;
    }
    const std::string_view name = slice(scan.document, element.offset, element.length);
    const std::string_view rest = from(scan.document, u64{element.offset} + element.length);
    const char* end = find_byte(rest, '>');
    const u16 generation = scan.depth == 1 ? u16{0} : element.generation;
    read_again(scan, {rest.data(), static_cast<std::size_t>(end - rest.data())},
               {generation, true});
    const u32 colon = find_colon(name);
    const u32 row = colon == kNone ? kNone : find_row(scan, {name.data(), colon}, generation);
    const StartTag tag = {name, {}, colon, row, false};
    clear_alive(scan);
    status = match_regular(scan, tag);
  }
  scan.depth = depth;
  return status;
}

// The name of the start tag whose inside is given; what follows it is attributes.
struct NameExtent {
  u32 length;
  u32 colon;
  bool irregular;
};

// Takes what a lane of a name holds; true at the name's end.
bool take_name_lane(NameExtent& name, const char* lane, NameMarks marks, u32 at) {
  for (; marks.stop != 0; marks.stop &= marks.stop - 1) {
    const u32 stop = lowest(marks.stop);
    const char byte = lane[stop];
    if (is_space(byte)) {
      name.length = at + stop;
      marks.colon &= first_bits(stop);
      break;
    }
    if (byte == '/' || byte == '"' || byte == '\0') name.irregular = true;
  }
  if (name.colon == kNone && marks.colon != 0) name.colon = at + lowest(marks.colon);
  return marks.stop != 0;
}

NameExtent measure_name(std::string_view document, u32 begin, u32 end) {
  NameExtent name = {end - begin, kNone, false};
  for (u32 at = 0; at < end - begin; at += kLane) {
    const u32 inside = first_bits(end - begin - at);
    const NameMarks marks = name_marks(document, u64{begin} + at);
    if (take_name_lane(name, document.data() + begin + at,
                       {marks.colon & inside, marks.stop & inside}, at)) {
      break;
    }
  }
  return name;
}

// A declaration below the root: matches the open elements anew, then reads the tag's attributes
// again.
i32 read_after_declaration(Scan& scan, const StartTag& tag, u32 generation) {
  const i32 status = match_open_elements(scan);
  if (status == kSuccess) read_again(scan, tag.attributes, {generation, true});
  return status;
}

// Opens an element whose start tag has attributes or whose text is irregular.
i32 open_unusual(Scan& scan, const StartTag& tag) {
  const u16 generation = scan.generation;
  AttributeReading reading = {generation};
  reading.irregular = tag.irregularName;
  i32 status = read_attributes(scan, reading);
  if (status == kSuccess && scan.generation != generation && scan.depth != 0) {
    status = read_after_declaration(scan, tag, generation);
  }
  if (status != kSuccess) return status;
  if (reading.irregular || scan.growing.quoted) {
    return push_irregular(scan, spell(tag.written, tag.colon, tag.row));
  }
  return push_regular(scan, tag, generation);
}

bool is_root_allowed(const Scan& scan, std::string_view name) {
  if (scan.depth != 0 || (scan.flags & CL_XML_COM_FLAG) != 0) return true;
  return name.starts_with(kRootName);
}

// The attributes of a start tag, and what has to happen before its element is opened.
i32 begin_tag(Scan& scan, StartTag& tag, u32 insideEnd) {
  scan.attributes.size = 0;
  const u32 nameEnd =
      static_cast<u32>(tag.written.data() + tag.written.size() - scan.document.data());
  if (nameEnd != insideEnd) {
    tag.attributes = trim_end(slice(scan.document, nameEnd, insideEnd - nameEnd));
    const i32 status = split_attributes(scan, tag.attributes);
    if (status != kSuccess) return status;
  }
  ++scan.serial;
  return is_root_allowed(scan, tag.written) ? kSuccess : kWrongRoot;
}

// --- End tags ------------------------------------------------------------------------------------

// The innermost element as the path spells it, without its attributes.
PathName innermost_name(const Scan& scan) {
  const OpenElement& top = scan.open[scan.depth - 1];
  if ((top.flags & kIrregular) != 0) {
    u32 length = 0;
    while (length < top.length && !is_space(scan.path[top.offset + length])) ++length;
    return {{}, {scan.path.begin() + top.offset, length}};
  }
  const std::string_view name = slice(scan.document, top.offset, top.length);
  if (scan.depth == 1) return {{}, name};
  return resolve(scan, name, find_colon(name), top.generation);
}

// `begin` is not behind the name's end.
bool equal_from(const PathName& name, std::size_t begin, std::string_view text) {
  if (name.size() - begin != text.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (name[begin + i] != text[i]) return false;
  }
  return true;
}

// Whether the end tag's text names the innermost element, prefixes resolved.
bool names_innermost(const Scan& scan, std::string_view text) {
  const PathName element = innermost_name(scan);
  const u32 colon = find_colon(text);
  const u32 row = colon == kNone ? kNone : find_row(scan, {text.data(), colon}, scan.generation);
  std::size_t length = 0;
  while (length < text.size() && !is_space(text[length])) ++length;
  if (row == kNone) return equal_from(element, 0, {text.data(), length});
  const std::string_view prefix = kNamespaces[row].prefix;
  for (std::size_t i = 0; i < prefix.size(); ++i) {
    if (i >= element.size() || element[i] != prefix[i]) return false;
  }
  // No declared prefix holds white space: the colon stands in front of it.
  return equal_from(element, prefix.size(), slice(text, colon, length - colon));
}

// Regular elements whose names were read with the namespaces known now are told by their bytes.
bool closes_innermost(const Scan& scan, std::string_view text) {
  const OpenElement& top = scan.open[scan.depth - 1];
  const bool sameSpelling = top.generation == scan.generation && top.length == text.size() &&
                            equal_bytes(scan.document.data() + top.offset, text.data(), top.length);
  return sameSpelling || names_innermost(scan, text);
}

void pop_element(Scan& scan) {
  const OpenElement& top = scan.open[scan.depth - 1];
  scan.aliveTop = top.aliveBegin;
  if ((top.flags & kIrregular) != 0) {
    scan.path.size = top.offset;
    scan.growing.quoted = false;
  }
  if (scan.below.size != 0) leave_below(scan);
  --scan.depth;
}

// The root closes with exactly "</cmd>".
i32 close_root(const Scan& scan, std::string_view text) {
  if ((scan.flags & CL_XML_COM_FLAG) != 0) return kRootClosed;
  const std::size_t begin = static_cast<std::size_t>(text.data() - scan.document.data());
  return from(scan.document, begin).starts_with("cmd>") ? kRootClosed : kWrongRoot;
}

i32 close_element(Scan& scan, std::string_view name) {
  if (name.empty() || scan.depth == 0) return kBadArgument;
  if (!closes_innermost(scan, name)) return kMismatchedEndTag;
  if (scan.depth == 1) return close_root(scan, name);
  pop_element(scan);
  return kSuccess;
}

// --- The usual beginning -------------------------------------------------------------------------

// The row whose URI `text` begins with, spelled as in the table and followed by a double quote;
// kNone without one.
u32 find_quoted_uri(std::string_view text) {
  for (u32 row = 0; row < kNamespaceCount; ++row) {
    const std::string_view uri = kNamespaces[row].uri;
    if (text.size() > uri.size() && text[uri.size()] == '"' && same_text(text.data(), uri)) {
      return row;
    }
  }
  return kNone;
}

bool is_prefix_byte(char byte) {
  return static_cast<u8>(byte) > '>' || (static_cast<u8>(byte) > '/' && byte < ':') || byte == ';';
}

// Takes the declaration of a namespace's own prefix away from the beginning of `text`.
bool take_own_declaration(Scan& scan, std::string_view& text) {
  for (u32 row = 0; row < kNamespaceCount; ++row) {
    const Namespace& own = kNamespaces[row];
    if (text.size() < own.declaration.size() || !same_text(text.data(), own.declaration)) continue;
    if (scan.declaredAt[row] != 0) return false;
    declare(scan, row, slice(text, kPrefixAt, own.prefix.size()), true);
    text = from(text, own.declaration.size());
    return true;
  }
  return false;
}

// The same for any prefix, up to which the declaration begins as an own one does.
bool take_other_declaration(Scan& scan, std::string_view& text) {
  if (!text.starts_with(slice(kNamespaces[0].declaration, 0, kPrefixAt))) return false;
  std::size_t end = kPrefixAt;
  while (end < text.size() && is_prefix_byte(text[end])) ++end;
  const std::string_view prefix = slice(text, kPrefixAt, end - kPrefixAt);
  if (prefix.empty() || !from(text, end).starts_with("=\"")) return false;
  const std::string_view value = from(text, end + 2);
  const u32 row = find_quoted_uri(value);
  if (row == kNone || scan.declaredAt[row] != 0) return false;
  declare(scan, row, prefix, false);  // its own one is not read here
  text = from(value, kNamespaces[row].uri.size() + 1);
  return true;
}

// Where every declared prefix is the table's own, each of these stands as it is: none is the beginning
// of another.
void know_own_prefixes(Scan& scan) {
  constexpr auto known = [](const Namespace& own) {
    const u32 length = static_cast<u32>(own.prefix.size());
    KnownPrefix prefix;
    prefix.mask = (u64{1} << 8 * (length + 1)) - 1;
    prefix.word = join_bytes(own.prefix.data(), length) | u64{':'} << 8 * length;
    return prefix;
  };
  static constexpr KnownPrefix kFirst[] = {known(kNamespaces[0]), known(kNamespaces[1])};
  if (kLittleEndian) std::copy(std::begin(kFirst), std::end(kFirst), scan.known);
}

// Opens the root element "cmd", whose name is at `offset`.
void open_usual_root(Scan& scan, u32 offset) {
  constexpr u32 kLength = kRootName.size();
  constexpr u32 kKey = element_key(kRootNode, hash_bytes(kRootName.data(), kLength), kPlainKey);
  ++scan.serial;
  // Only the slow look at an end tag may close the root.
  scan.open[scan.depth++] = {offset,        kLength,       scan.aliveTop,
                             kNoGeneration, scan.standing, kUnsettled};
  u32 found = scan.plan.buckets[bucket_of(kKey, scan.plan.bucketMask)];
  for (; found != kNone; found = scan.plan.nodes[found].nextInBucket) {
    const Node& node = scan.plan.nodes[found];
    const std::string_view name = {node.text, node.nameLength};
    if (node.key != kKey || name != kRootName) continue;  // with this name no other parent has it
    if ((node.flags & kImpossible) != 0) continue;
    add_alive(scan, found);  // one node, and there is room
    scan.nextNode = node.next;
  }
}

}  // namespace

void take_usual_beginning(Scan& scan) {
  const char* end = find_byte(scan.document, '>');
  if (end == nullptr) return;
  const char* begin = scan.document.data();
  std::string_view rest =
      trim_begin(from(scan.document, static_cast<std::size_t>(end - begin) + 1));
  if (!rest.starts_with('<') || !from(rest, 1).starts_with(kRootName)) return;
  const u32 name = static_cast<u32>(rest.data() - begin) + 1;
  rest = from(rest, 1 + kRootName.size());
  bool areOwn = true;
  while (rest.starts_with(' ')) {
    if (take_own_declaration(scan, rest)) continue;
    areOwn = false;
    if (!take_other_declaration(scan, rest)) break;
  }
  if (rest.starts_with('>')) {
    if (areOwn) know_own_prefixes(scan);
    open_usual_root(scan, name);
    scan.at = static_cast<u32>(rest.data() - begin) + 1;
    return;
  }
  undeclare_all(scan);
}

// "<name attributes>" or "<name attributes/>": `begin` is at "<", `end` at ">".
i32 start_any_tag(Scan& scan, u32 begin, u32 end) {
  const std::string_view document = scan.document;
  const bool isEmpty = document[end - 1] == '/';
  const u32 insideEnd = isEmpty ? end - 1 : end;
  const NameExtent name = measure_name(document, begin + 1, insideEnd);
  StartTag tag = {slice(document, begin + 1, name.length), {}, name.colon, kNone, name.irregular};
  i32 status = begin_tag(scan, tag, insideEnd);
  if (status != kSuccess) return status;
  // The root element's own name keeps its prefix.
  if (name.colon != kNone && scan.depth != 0) {
    tag.row = find_row(scan, {tag.written.data(), name.colon}, scan.generation);
  }
  if (scan.attributes.size == 0 && !name.irregular && !scan.growing.quoted) {
    status = push_regular(scan, tag, scan.generation);
  } else {
    status = open_unusual(scan, tag);
    if (status == kSuccess && scan.attributes.size != 0) status = on_attributes(scan);
  }
  if (status != kSuccess || !isEmpty) return status;
  const u32 insideLength = name.length + static_cast<u32>(tag.attributes.size());
  if (is_asked_for(scan)) status = on_element_end(scan, begin + 2 + insideLength, kEmptyTag);
  return status == kSuccess ? close_element(scan, tag.written) : status;
}

i32 end_any_tag(Scan& scan, u32 begin, u32 end) {
  if (is_asked_for(scan)) {
    const i32 status = on_element_end(scan, begin, kEmptyElement);
    if (status != kSuccess) return status;
  }
  return close_element(scan, slice(scan.document, begin + 2, end - begin - 2));
}

}  // namespace pxcl::xml
