// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// The records of one scan, and how a name or a value of the document compares with a requested one.

#pragma once

#include "clxml.h"
#include "util/growing.hpp"
#include "xml/attributes.hpp"
#include "xml/namespaces.hpp"
#include "xml/plan.hpp"
#include "xml/scan.hpp"
#include "xml/scanner.hpp"
#include "xml/shapes.hpp"

namespace pxcl::xml {

// Beside those of NodeFlags.
enum ElementFlags : u16 {
  kIrregular = 1,  // its text stands in the path buffer
  kTrailing = 2,   // an empty text: while it is the innermost, the path ends in "/"
};
inline constexpr u32 kAttributeChildren = kNamedChildren | kValuedChildren;

inline constexpr u16 kNoGeneration = 0xFFFF;  // of an irregular element

// An open element. A regular one is known by its name in the document. The text of an irregular
// one, whose start tag holds "/" or a double quote in a name, or a NUL byte, stands in the path
// buffer: there an element is what the path's separators make of it, and one start tag can make
// several or none.
struct OpenElement {
  u32 offset;
  u32 length;
  u32 aliveBegin;  // its nodes: alive[aliveBegin] up to the next element's
  u16 generation;  // declared namespaces when its name was read
  u16 flags;
  u32 shape;  // the number of its tag's shape
};

// An attribute of the start tag at hand. `prefix` and `valuePrefix` are the table's, where they
// stand in place of the document's; the rest of the name or value follows from `rest` or
// `valueRest` on.
struct CurrentAttribute {
  const char* name;
  const char* value;  // with its quotes
  const char* prefix;
  const char* valuePrefix;
  u32 nameLength;
  u32 valueLength;
  u32 prefixLength;
  u32 valuePrefixLength;
  u32 rest;
  u32 valueRest;
  u32 next;  // with the same hash, where there are many attributes
};

// A name as the path spells it.
struct PathName {
  std::string_view prefix;
  std::string_view rest;
  std::size_t size() const { return prefix.size() + rest.size(); }
  char operator[](std::size_t i) const {
    return i < prefix.size() ? prefix[i] : rest[i - prefix.size()];
  }
};

// A declared prefix as a word, for the look-up at every start tag.
struct DeclaredPrefix {
  u64 word;  // its first eight bytes
  u64 length;
  bool verbatim;  // the table's own
};

// A prefix, with its ":", that names keep: the first bytes of a name under the mask.
struct KnownPrefix {
  u64 mask = 0;
  u64 word = ~u64{0};  // no name has that under this mask
};

// How far the text of the innermost irregular element was taken apart. While it holds an odd number
// of double quotes, every further "/" is part of it and it goes on growing.
struct GrowingElement {
  enum Phase : u8 { kName, kGap, kAttributeName, kBeforeValue, kInValue };
  Phase phase = kName;
  bool quoted = false;
  u32 parsedTo = 0;  // offsets into the path buffer
  u32 nameEnd = 0;
  u32 attributeBegin = 0;
  u32 attributeEnd = 0;
  u32 valueBegin = 0;
  u32 attributeCount = 0;
};

struct BelowEntry {
  u32 node;
  u32 depth;
};

struct Scan {
  Scan(const Plan& paths, const Results& wanted, std::string_view text, u32 runFlags,
       ClXmlNameSpaceEntry* run)
      : plan(paths),
        findings(wanted.findings),
        readers(wanted.readers),
        document(text),
        flags(runFlags),
        table(run) {}

  Plan plan;
  Finding* findings;      // one a target
  const Reader* readers;  // likewise, or null
  std::string_view document;
  u32 flags;
  ClXmlNameSpaceEntry* table;  // the run's copy of clNsTable

  const char* limit;  // up to here the loop over usual tags may read kReach bytes
  u32 at = 0;         // behind the markup taken last
  u32 position = 0;   // of the byte that the scan stopped at
  u32 serial = 0;
  bool metText = false;
  bool metAttributes = false;

  // By the rows of the table.
  u16 declaredAt[kNamespaceCount] = {};  // generation; 0: not declared yet
  DeclaredPrefix declared[kNamespaceCount];
  KnownPrefix known[2] = {};  // these two are forgotten when a namespace is declared
  u16 generation = 0;         // counts declared namespaces
  u16 standing = 0;           // flags that every open element has
  bool quotedPrefix = false;  // a declared prefix begins with a double quote

  u32 depth = 0;
  u32 aliveTop = 1;
  u32 nextNode = 0;        // that the next tag is expected to match, see Node::next
  u32 irregularCount = 0;  // numbers the irregular elements that were taken apart
  GrowingElement growing = {};
  GrowingArray<OpenElement, kUsualDepth> open = {};
  GrowingArray<u32, 64> alive = {};  // nodes matched by the open elements, the root node first
  GrowingArray<BelowEntry, 8> below = {};
  GrowingArray<CurrentAttribute, 8> attributes = {};
  GrowingArray<u32, 1> attributeBuckets = {};  // of more than kFewAttributes of them
  GrowingArray<char, 256> path = {};           // text of the irregular elements
  Shapes shapes = {};
  Shape* lastShape = nullptr;  // behind which the stretch at hand begins; null: there is none
  Stretch stretch;
  Owned<u32> candidateOf = {};  // by node: the irregular element (its number) that has its name
  // By requested attribute: the irregular element that has this attribute; 0 for none yet.
  Owned<u32> satisfiedBy = {};
  GrowingArray<u32, 32> firstOfGroup = {};  // empty until an element's end needs it
};

// --- Names and namespaces ------------------------------------------------------------------------

// The first row whose declared prefix begins with `prefix`, as it was at `generation`; kNone
// without one.
inline u32 find_row(const Scan& scan, std::string_view prefix, u32 generation) {
  if (prefix.empty()) return kNone;
  for (u32 row = 0; row < kNamespaceCount; ++row) {
    const u16 declaredAt = scan.declaredAt[row];
    if (declaredAt == 0 || declaredAt > generation) continue;
    const ClXmlNameSpaceEntry& entry = scan.table[row];
    if (entry.declaredPrefixLength >= prefix.size() &&
        equal_bytes(entry.declaredPrefix, prefix.data(), prefix.size())) {
      return row;
    }
  }
  return kNone;
}

// The same at this point of the document, for a prefix from which eight bytes can be read. kNone
// too for a prefix that is the table's own: the name is spelled as it stands.
inline u32 find_other_row(const Scan& scan, const char* prefix, u32 length) {
  if (length - 1 >= 7 || std::endian::native != std::endian::little) {
    return find_row(scan, {prefix, length}, scan.generation);
  }
  const u64 mask = (u64{1} << 8 * length) - 1;
  const u64 word = load_bytes(prefix, 8);
  for (u32 row = 0; row < kNamespaceCount; ++row) {
    if (scan.declaredAt[row] == 0) continue;
    const DeclaredPrefix& declared = scan.declared[row];
    if (((declared.word ^ word) & mask) != 0 || declared.length < length) continue;
    return declared.verbatim && declared.length == length ? kNone : row;
  }
  return kNone;
}

inline u32 find_colon(std::string_view name) {
  const char* colon = find_byte(name, ':');
  return colon == nullptr ? kNone : static_cast<u32>(colon - name.data());
}

// `name` with the table's prefix of `row` in place of its own.
inline PathName spell(std::string_view name, u32 colon, u32 row) {
  if (row == kNone) return {{}, name};
  return {kNamespaces[row].prefix, from(name, colon)};
}

inline PathName resolve(const Scan& scan, std::string_view name, u32 colon, u32 generation) {
  if (colon == kNone) return {{}, name};
  return spell(name, colon, find_row(scan, {name.data(), colon}, generation));
}

// hash_bytes() of such a name.
inline u32 hash_name(const PathName& name) {
  if (name.prefix.empty()) return hash_bytes(name.rest.data(), static_cast<u32>(name.rest.size()));
  const u32 length = static_cast<u32>(name.size());
  const u32 count = std::min(length, u32{8});
  char first[8] = {}, last[8] = {};
  for (u32 i = 0; i < count; ++i) {
    first[i] = name[i];
    last[i] = name[length - count + i];
  }
  return length < 8 ? hash_bytes(last, length)
                    : mix_hash(load_bytes(first, 8), load_bytes(last, 8), length);
}

inline bool spells(const PathName& name, std::string_view text) {
  return name.size() == text.size() &&
         equal_bytes(name.prefix.data(), text.data(), name.prefix.size()) &&
         equal_bytes(name.rest.data(), text.data() + name.prefix.size(), name.rest.size());
}

inline PathName path_name(const CurrentAttribute& attribute) {
  return {{attribute.prefix, attribute.prefixLength},
          from({attribute.name, attribute.nameLength}, attribute.rest)};
}

// --- Attributes of the tag at hand ---------------------------------------------------------------

inline constexpr u32 kFewAttributes = 32;  // up to here they are searched one by one

// Prepares the look-up of scan.attributes; false when memory is short.
bool index_attributes(Scan& scan);

inline u32 hash_local(std::string_view name) {
  const std::string_view local = local_part(name);
  return hash_bytes(local.data(), static_cast<u32>(local.size()));
}

// The first attribute, in document order, that `matches` of those whose local name is that of
// `name`; null without one.
template <typename Matches>
inline const CurrentAttribute* find_attribute(const Scan& scan, std::string_view name,
                                              const Matches& matches) {
  const u32 count = scan.attributes.size;
  const bool few = count <= kFewAttributes;
  u32 i = few ? 0 : scan.attributeBuckets[hash_local(name) & (scan.attributeBuckets.size - 1)];
  for (; i < count; i = few ? i + 1 : scan.attributes[i].next) {
    if (matches(scan.attributes[i])) return &scan.attributes[i];
  }
  return nullptr;
}

// --- Requested against current -------------------------------------------------------------------

// Whether a value of the document answers a requested one that is not the same text: as qualified
// names of the second vendor namespace.
bool same_qualified_name(const Scan& scan, std::string_view requested, std::string_view current);

inline bool value_matches(const Scan& scan, const RequestedAttribute& requested,
                          std::string_view current) {
  if (requested.value == nullptr) return !current.empty();
  const std::string_view inner = inner_value(current);
  if (inner.empty()) return false;
  const std::string_view wanted = {requested.value, requested.valueLength};
  if (inner.size() == wanted.size() && equal_bytes(inner.data(), wanted.data(), wanted.size())) {
    return true;
  }
  return same_qualified_name(scan, wanted, inner);
}

// Notes the key of the innermost element, or of the start tag at hand, for the targets of `node`.
// `value` is its attribute's, without quotes; it stands in the path buffer or in the document.
void note_key(Scan& scan, const Node& node, std::string_view value, bool inPath);

// --- Events (events.cpp) -------------------------------------------------------------------------

// Whether some target asks for the text of the innermost element.
inline bool is_asked_for(const Scan& scan) {
  return scan.depth == 0 || (scan.open[scan.depth - 1].flags & kElementTargets) != 0;
}

// Notes what is kept in a finding's list.
inline void note_listed(Finding& finding, u32 length, i32 status) {
  const u32 hasValue = status == kFound ? kHasValue : 0;
  const u32 hasRange = length != 0 ? kHasRange : 0;
  finding.flags = static_cast<u8>(finding.flags | hasValue | hasRange);
}

inline void append_range(Finding& finding, u32 offset, u32 length, i32 status) {
  static_cast<ClXmlValueRange*>(finding.list)[finding.count] = {offset, length};
  note_listed(finding, length, status);
}

// Hands what was found for a target of Collect::kEach to its reader.
inline void give(const Scan& scan, u32 number, const EachText& text) {
  if (scan.readers == nullptr) return;
  const Reader& reader = scan.readers[number];
  reader.take(reader.self, text);
}

// Keeps what a target wants beside its first match; false when memory is short.
bool collect(Scan& scan, u32 number, u32 offset, u32 length, i32 status);

inline void note_match(const Scan& scan, Finding& finding, u32 offset, u32 length, i32 status) {
  if (finding.count == 0) {
    finding.firstOffset = offset;
    finding.firstLength = length;
    finding.firstStatus = static_cast<i16>(status);
  }
  ++finding.count;
  finding.lastSerial = scan.serial;
}

// Notes a match of a target; false when memory is short.
inline bool record(Scan& scan, u32 number, u32 offset, u32 length, i32 status) {
  Finding& finding = scan.findings[number];
  const Collect wanted = scan.plan.targets[number].collect;
  if (wanted == Collect::kRanges && finding.count < finding.capacity) {
    append_range(finding, offset, length, status);
  } else if (wanted != Collect::kFirst && !collect(scan, number, offset, length, status)) {
    return false;
  }
  note_match(scan, finding, offset, length, status);
  return true;
}

template <typename Visit>
inline bool visit_list(const Scan& scan, u32 first, const Visit& visit) {
  for (u32 target = first; target != kNone; target = scan.plan.targets[target].next) {
    if (!visit(target)) return false;
  }
  return true;
}

// The text of an element that was not opened: it matches `node`.
inline bool on_leaf(Scan& scan, const Node& node, u32 offset, u32 length) {
  if ((node.flags & kOneFirst) != 0) {
    note_match(scan, scan.findings[node.elementTargets], offset, length, kFound);
    return true;
  }
  return visit_list(scan, node.elementTargets,
                    [&](u32 target) { return record(scan, target, offset, length, kFound); });
}

// A text run or CDATA section of an element that is asked for.
i32 on_text(Scan& scan, u32 offset, u32 length);
// The attributes, scan.attributes, of the innermost element.
i32 on_attributes(Scan& scan);
// The end of an element that is asked for: kEmptyElement at an end tag, kEmptyTag at an
// empty-element tag.
i32 on_element_end(Scan& scan, u32 offset, i32 status);

// --- Tags (tags.cpp) -----------------------------------------------------------------------------

// Takes the XML declaration, and behind it the root if it is a "cmd" that declares our namespaces
// and nothing else; does nothing at the beginning of any other document.
void take_usual_beginning(Scan& scan);

// "<name attributes>" or "<name attributes/>": `begin` is at "<", `end` at ">".
i32 start_any_tag(Scan& scan, u32 begin, u32 end);
// "</name>"
i32 end_any_tag(Scan& scan, u32 begin, u32 end);

// --- Irregular elements --------------------------------------------------------------------------

// Appends a start tag's text to the path and opens the elements that it makes; kSuccess or
// kNoMemory.
i32 push_irregular(Scan& scan, const PathName& name);
// Matches the innermost element, an irregular one, again from the start of its text.
i32 match_irregular(Scan& scan);

// The nodes of the innermost element's parent: [begin, end) of scan.alive.
struct AliveRange {
  u32 begin;
  u32 end;
};
inline AliveRange parent_nodes(const Scan& scan) {
  const u32 begin = scan.depth >= 2 ? scan.open[scan.depth - 2].aliveBegin : 0;
  return {begin, scan.open[scan.depth - 1].aliveBegin};
}

// Targets whose path ends in "/" further up ask for every element's text, and a null path has to be
// met by every event.
inline void refresh_standing(Scan& scan) {
  scan.standing = scan.below.size != 0 || scan.plan.hasNoPath ? kElementTargets : 0;
}

inline void leave_below(Scan& scan) {
  while (scan.below.size != 0 && scan.below.back().depth >= scan.depth) --scan.below.size;
  refresh_standing(scan);
}

// Adds `node` to those that the innermost element matches; false when memory is short.
inline bool add_alive(Scan& scan, u32 node) {
  const Node& matched = scan.plan.nodes[node];
  OpenElement& top = scan.open[scan.depth - 1];
  scan.alive[scan.aliveTop++] = node;
  top.flags = static_cast<u16>(top.flags | (matched.flags & kOfElement));
  if (matched.belowTargets == kNone) return true;
  const bool stored = scan.below.push({node, scan.depth});
  refresh_standing(scan);
  return stored;
}

// Forgets what the innermost element matches.
inline void clear_alive(Scan& scan) {
  OpenElement& top = scan.open[scan.depth - 1];
  scan.aliveTop = top.aliveBegin;
  top.shape = kUnsettled;
  if (scan.below.size != 0) leave_below(scan);
  top.flags = static_cast<u16>((top.flags & ~kOfElement) | scan.standing);
  if ((top.flags & kTrailing) != 0) top.flags |= kElementTargets;
}

}  // namespace pxcl::xml
