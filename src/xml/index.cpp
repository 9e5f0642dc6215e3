// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "xml/index.hpp"

#include <bit>

#include "xml/attributes.hpp"
#include "xml/element_text.hpp"
#include "xml/marks.hpp"

namespace pxcl::xml {
namespace {

// Where an element of a requested path and its name end. All are offsets into the path.
struct ElementExtent {
  u32 end;      // of the separating "/", or of the path's end
  u32 nameEnd;  // of the first white space, or `end`
  u32 colon;    // of the name's first ":"; kNone without one
};

// An element ends at the first "/" before which an even number of double quotes stands.
ElementExtent measure_element(std::string_view path, u32 begin) {
  const u32 size = static_cast<u32>(path.size());
  ElementExtent extent = {size, kNone, kNone};
  bool quoted = false;
  for (u32 lane = begin; lane < size && extent.end == size; lane += kLane) {
    NameMarks marks = name_marks(path, lane);
    for (; marks.stop != 0; marks.stop &= marks.stop - 1) {
      const u32 at = lane + lowest(marks.stop);
      const char byte = path[at];
      if (byte == '"') {
        quoted = !quoted;
      } else if (byte == '/' && !quoted) {
        extent.end = at;
        break;
      } else if (extent.nameEnd == kNone && is_space(byte)) {
        extent.nameEnd = at;
      }
    }
    if (extent.colon == kNone && marks.colon != 0) extent.colon = lane + lowest(marks.colon);
  }
  if (extent.nameEnd == kNone) extent.nameEnd = extent.end;
  if (extent.colon >= extent.nameEnd) extent.colon = kNone;
  return extent;
}

u32 common_length(std::string_view a, std::string_view b) {
  const std::size_t most = a.size() < b.size() ? a.size() : b.size();
  std::size_t i = 0;
  for (; i + kLane <= most; i += kLane) {
    const u32 same = same_lane(a.data() + i, b.data() + i);
    if (same != first_bits(kLane)) return static_cast<u32>(i) + lowest(~same);
  }
  while (i < most && a[i] == b[i]) ++i;
  return static_cast<u32>(i);
}

// One element of a requested path, taken apart.
struct RequestedElement {
  std::string_view text;
  u32 nameLength;
  u32 localBegin;
  u32 parent;
  u32 nameHash;
  u32 key;
  u32 firstAttribute;
  u32 attributeCount = 0;
  u32 childFlag = kPlainChildren;       // what the parent is told of it
  std::string_view bareAttribute = {};  // the attribute that it names without value
  bool impossible = false;              // no element of a document can match it
  bool eachValue = false;               // its attribute stands for every value
};

// Sets the look-up key by the first attribute with a value.
void key_by_value(RequestedElement& element, std::string_view localName,
                  std::string_view localValue) {
  element.childFlag = kValuedChildren;
  element.key = valued_key(element_key(element.parent, element.nameHash, kValuedKey),
                           hash_bytes(localName.data(), static_cast<u32>(localName.size())),
                           hash_bytes(localValue.data(), static_cast<u32>(localValue.size())));
}

bool push_attribute(Index& index, RequestedElement& element, std::string_view name,
                    std::string_view inner) {
  ++element.attributeCount;
  return index.attributes.push(
      {name.data(), inner.data(), static_cast<u32>(name.size()), static_cast<u32>(inner.size())});
}

// Appends the attributes of an element that is not simple; false when memory is short.
bool split_attributes(Index& index, RequestedElement& element) {
  AttributeSplitter splitter(from(element.text, element.nameLength));
  SplitAttribute attribute;
  while (splitter.next(attribute)) {
    const std::string_view inner = inner_value(attribute.value);
    if (!push_attribute(index, element, attribute.name, inner)) return false;
    if (attribute.value.data() == nullptr) {
      element.bareAttribute = attribute.name;
    } else if (inner.empty()) {
      element.impossible = true;
    } else if (element.childFlag != kValuedChildren) {
      key_by_value(element, local_part(attribute.name), local_part(inner));
    }
  }
  if (splitter.failed()) {
    element.impossible = true;
    element.bareAttribute = {};
  }
  return true;
}

// Appends the one attribute of a simple element; false when memory is short.
bool take_attribute(Index& index, RequestedElement& element, const SimpleElement& simple) {
  const std::string_view name =
      slice(element.text, simple.attributeBegin, simple.attributeEnd - simple.attributeBegin);
  if (!simple.has_value()) {
    element.bareAttribute = name;
    return push_attribute(index, element, name, {});
  }
  const std::string_view inner =
      slice(element.text, simple.valueBegin, simple.valueEnd - simple.valueBegin);
  key_by_value(element, name, from(inner, simple.valueLocal - simple.valueBegin));
  return push_attribute(index, element, name, inner);
}

u32 find_node(const Index& index, const RequestedElement& element) {
  u32 found = index.buckets[bucket_of(element.key, index.bucketMask)];
  for (; found != kNone; found = index.nodes[found].nextInBucket) {
    const Node& node = index.nodes[found];
    if (node.key == element.key && node.parent == element.parent &&
        ((node.flags & kEachValue) != 0) == element.eachValue &&
        node.textLength == element.text.size() &&
        equal_bytes(node.text, element.text.data(), element.text.size())) {
      break;
    }
  }
  return found;
}

// Twice the buckets, when the paths have more elements than their number let expect.
bool grow_buckets(Index& index) {
  const u64 buckets = u64{index.buckets.size} * 2;
  if (!index.buckets.reserve(buckets)) return false;
  index.buckets.size = static_cast<u32>(buckets);
  index.bucketMask = static_cast<u32>(buckets - 1);
  std::memset(index.buckets.begin(), 0xFF, buckets * sizeof(u32));  // kNone
  for (u32 i = kRootNode + 1; i < index.nodes.size; ++i) {
    u32& bucket = index.buckets[bucket_of(index.nodes[i].key, index.bucketMask)];
    index.nodes[i].nextInBucket = bucket;
    bucket = i;
  }
  return true;
}

// kNone when memory is short.
u32 insert_node(Index& index, const RequestedElement& element) {
  if (!index.nodes.reserve(u64{index.nodes.size} + 1)) return kNone;
  if (index.nodes.size > index.buckets.size && !grow_buckets(index)) return kNone;
  const u32 created = index.nodes.size++;
  u32& bucket = index.buckets[bucket_of(element.key, index.bucketMask)];
  Node& node = index.nodes[created];
  node.text = element.text.data();
  node.textLength = static_cast<u32>(element.text.size());
  node.nameLength = element.nameLength;
  node.localBegin = element.localBegin;
  node.parent = element.parent;
  node.key = element.key;
  node.nextInBucket = bucket;
  node.flags = (element.bareAttribute.empty() ? 0u : kNameOnly) |
               (element.impossible ? kImpossible : 0u) | (element.eachValue ? kEachValue : 0u);
  node.firstAttribute = element.firstAttribute;
  node.attributeCount = element.attributeCount;
  node.elementTargets = node.attributeTargets = node.belowTargets = kNone;
  bucket = created;
  index.nodes[element.parent].flags |= element.childFlag;
  return created;
}

// The node of an element below its parent, made when it is new; kNone when memory is short.
u32 step_down(Index& index, RequestedElement& element, const SimpleElement* simple) {
  element.firstAttribute = index.attributes.size;
  element.impossible = element.nameLength == 0;
  element.nameHash =
      hash_bytes(element.text.data() + element.localBegin, element.nameLength - element.localBegin);
  element.key = element_key(element.parent, element.nameHash, kPlainKey);
  if (element.nameLength < element.text.size()) {
    const bool stored = simple != nullptr ? take_attribute(index, element, *simple)
                                          : split_attributes(index, element);
    if (!stored) return kNone;
    if (element.childFlag == kPlainChildren && element.attributeCount != 0) {
      element.childFlag = kNamedChildren;
      element.key = element_key(element.parent, element.nameHash, kNamedKey);
    }
    if (element.eachValue) element.bareAttribute = {};
  }
  const u32 found = find_node(index, element);
  if (found == kNone) return insert_node(index, element);
  index.attributes.size = element.firstAttribute;
  return found;
}

// The offset of the "/" that ends the element, if it is among the marks; kNone if not.
u32 find_separator(const TextMarks& marks) {
  for (u64 slash = marks.slash; slash != 0; slash &= slash - 1) {
    const u32 at = lowest(slash);
    const u64 quotes = marks.quote & bits_below(at);
    if (quotes == 0 || std::popcount(quotes) % 2 == 0) return at;
  }
  return kNone;
}

// Reads an element without attributes; false for any other.
bool read_plain(std::string_view path, u32 begin, ElementExtent& extent) {
  const u32 size = static_cast<u32>(path.size());
  extent.colon = kNone;
  u32 stop = kNone;
  for (u32 at = begin; at < size && stop == kNone; at += kLane) {
    const NameMarks marks = name_marks(path, at);
    const u32 inside = first_bits(size - at);
    if ((marks.stop & inside) != 0) stop = at + lowest(marks.stop);
    if (extent.colon == kNone && (marks.colon & inside) != 0)
      extent.colon = at + lowest(marks.colon);
  }
  if (stop != kNone && path[stop] != '/') return false;
  extent.end = extent.nameEnd = stop == kNone ? size : stop;
  if (extent.colon >= extent.end) extent.colon = kNone;
  return true;
}

// Reads the element of `path` from `begin` on by masks; false when it is long or not simple.
bool read_simple(std::string_view path, u32 begin, ElementExtent& extent, SimpleElement& simple) {
  const u64 rest = path.size() - begin;
  TextMarks marks = text_marks(path, begin, rest < kBlock ? rest : kBlock);
  u32 length = find_separator(marks);
  if (length == kNone) {
    if (rest > kBlock) return false;
    length = static_cast<u32>(rest);
  }
  marks.keep(bits_below(length));
  if (!read_simple_element(marks, length, simple)) return false;
  if (simple.nameLength != length && !is_space(path[begin + simple.nameLength])) return false;
  extent.end = begin + length;
  extent.nameEnd = begin + simple.nameLength;
  extent.colon = simple.colon == kNoColon ? kNone : begin + simple.colon;
  return true;
}

void append_to_list(Index& index, u32& head, u32 target) {
  index.targets[target].next = head;
  head = target;
}

void attach(Index& index, u32 node, u32 target, bool below) {
  Node& last = index.nodes[node];
  u32& list =
      below ? last.belowTargets
            : (index.targets[target].isAttribute ? last.attributeTargets : last.elementTargets);
  append_to_list(index, list, target);
}

struct Descent {
  u32 position = 0;
  u32 node = kRootNode;
  u32 depth = 0;
};

// The elements that this path has in common with the one before it.
Descent shared_beginning(const Index& index, std::string_view path) {
  const u32 common = common_length(index.previous, path);
  Descent descent;
  while (descent.depth < index.previousDepth && index.previousEnd[descent.depth] <= common) {
    ++descent.depth;
  }
  if (descent.depth != 0) {
    descent.position = index.previousEnd[descent.depth - 1];
    descent.node = index.previousNode[descent.depth - 1];
  }
  return descent;
}

void remember_element(Index& index, Descent& descent) {
  constexpr u32 kRemembered = sizeof index.previousEnd / sizeof index.previousEnd[0];
  if (descent.depth < kRemembered && descent.depth == index.previousDepth) {
    index.previousEnd[descent.depth] = descent.position;
    index.previousNode[descent.depth] = descent.node;
    ++index.previousDepth;
  }
  ++descent.depth;
}

// Hangs the target under the node of its last element, making nodes on the way. An attribute
// without value there makes it a request for that attribute.
bool add_path(Index& index, std::string_view path, u32 number, bool kindKnown) {
  Descent descent = shared_beginning(index, path);
  index.previous = path;
  index.previousDepth = descent.depth;
  while (descent.position < path.size()) {
    const u32 begin = descent.position;
    ElementExtent extent;
    SimpleElement simple = {};
    bool isSimple = false;
    if (!read_plain(path, begin, extent)) {
      isSimple = read_simple(path, begin, extent, simple);
      if (!isSimple) extent = measure_element(path, begin);
    }
    RequestedElement element = {};
    element.text = slice(path, begin, extent.end - begin);
    element.nameLength = extent.nameEnd - begin;
    element.localBegin = extent.colon == kNone ? 0 : extent.colon - begin + 1;
    element.parent = descent.node;
    element.eachValue =
        extent.end == path.size() && index.targets[number].collect == Collect::kEach;
    descent.node = step_down(index, element, isSimple ? &simple : nullptr);
    if (descent.node == kNone) return false;
    if (extent.end == path.size()) {
      Target& target = index.targets[number];
      if (!kindKnown && !element.bareAttribute.empty()) {
        target.isAttribute = true;
        target.attributeName = element.bareAttribute.data();
        target.attributeNameLength = static_cast<u32>(element.bareAttribute.size());
      }
      attach(index, descent.node, number, false);
      return true;
    }
    descent.position = extent.end + 1;
    remember_element(index, descent);
  }
  attach(index, descent.node, number, true);
  return true;
}

}  // namespace

bool start_index(Index& index, u64 targetCount) {
  const u64 buckets = std::bit_ceil(targetCount < 32 ? u64{128} : targetCount * 4);
  if (!index.targets.reserve(targetCount) || !index.buckets.reserve(buckets) ||
      !index.nodes.reserve(targetCount + 16)) {
    return false;
  }
  index.buckets.size = static_cast<u32>(buckets);
  index.bucketMask = static_cast<u32>(buckets - 1);
  std::memset(index.buckets.begin(), 0xFF, buckets * sizeof(u32));  // kNone
  Node& root = index.nodes[kRootNode];
  root = {};
  root.parent = root.nextInBucket = kNone;
  root.elementTargets = root.attributeTargets = root.belowTargets = kNone;
  index.nodes.size = 1;
  return true;
}

bool add_target(Index& index, const TargetPath& path, Collect collect, u32 group) {
  const u32 number = index.targets.size;
  Target& target = index.targets[index.targets.size++];
  target = {};
  target.collect = collect;
  target.group = group;
  target.next = kNone;
  if (path.kindKnown) {
    target.isAttribute = path.isAttribute;
    target.attributeName = path.attributeName.data();
    target.attributeNameLength = static_cast<u32>(path.attributeName.size());
  }
  if (group >= index.groupCount) index.groupCount = group + 1;
  if (path.path.data() == nullptr) {
    index.hasNoPath = true;
    target.hasNoPath = true;
    return true;
  }
  return add_path(index, path.path, number, path.kindKnown);
}

}  // namespace pxcl::xml
