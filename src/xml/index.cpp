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
[[gnu::cold]] ElementExtent measure_element(std::string_view path, u32 begin) {
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

inline u32 common_length(std::string_view a, std::string_view b) {
  const u32 most = static_cast<u32>(a.size() < b.size() ? a.size() : b.size());
  u32 at = 0;
  for (; at + kLane <= most; at += kLane) {
    const u32 same = same_lane(a.data() + at, b.data() + at);
    if (same != first_bits(kLane)) return at + lowest(~same);
  }
  while (at < most && a[at] == b[at]) ++at;
  return at;
}

// One element of a requested path, taken apart.
struct RequestedElement {
  std::string_view text;
  u32 nameLength;
  u32 localBegin;
  u32 parent;
  u32 nameHash;
  u32 key;
  u32 attributeCount = 0;
  u32 childFlag = kPlainChildren;       // what the parent is told of it
  std::string_view bareAttribute = {};  // the attribute that it names without value
  bool impossible = false;              // no element of a document can match it
  bool eachValue = false;               // its attribute stands for every value
};

// Sets the look-up key by the first attribute with a value.
void key_by_value(RequestedElement& element, std::string_view localValue) {
  element.childFlag = kValuedChildren;
  element.key = valued_key(element_key(element.parent, element.nameHash, kValuedKey),
                           hash_bytes(localValue.data(), static_cast<u32>(localValue.size())));
}

bool push_attribute(Index& index, RequestedElement& element, std::string_view name,
                    std::string_view inner) {
  ++element.attributeCount;
  return index.attributes.push(
      {name.data(), inner.data(), static_cast<u32>(name.size()), static_cast<u32>(inner.size())});
}

// Appends the attributes of an element that is not simple; false when memory is short.
[[gnu::cold]] bool split_attributes(Index& index, RequestedElement& element) {
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
      key_by_value(element, local_part(inner));
    }
  }
  if (splitter.failed()) {
    element.impossible = true;
    element.bareAttribute = {};
  }
  return true;
}

// Where an element hangs.
struct Place {
  u32 parent;
  u32 key;
  u32 childFlag;  // what the parent is told of it
  bool eachValue;
};

inline u32 find_node(const Index& index, const Place& place, std::string_view text) {
  u32 found = index.buckets[bucket_of(place.key, index.bucketMask)];
  for (; found != kNone; found = index.nodes[found].nextInBucket) {
    const Node& node = index.nodes[found];
    if (node.key == place.key && node.parent == place.parent &&
        ((node.flags & kEachValue) != 0) == place.eachValue && node.textLength == text.size() &&
        equal_text(node.text, text.data(), text.size())) {
      break;
    }
  }
  return found;
}

// Twice the buckets, when the paths have more elements than their number let expect.
[[gnu::cold]] bool grow_buckets(Index& index) {
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

// A node without targets; null when memory is short. Who adds it tells the element.
inline Node* add_node(Index& index, const Place& place) {
  if (!index.nodes.reserve(u64{index.nodes.size} + 1)) return nullptr;
  if (index.nodes.size > index.buckets.size && !grow_buckets(index)) return nullptr;
  const u32 created = index.nodes.size++;
  u32& bucket = index.buckets[bucket_of(place.key, index.bucketMask)];
  Node& node = index.nodes[created];
  node.parent = place.parent;
  node.key = place.key;
  node.nextInBucket = bucket;
  node.flags = place.eachValue ? u32{kEachValue} : 0u;
  node.elementTargets = node.attributeTargets = node.belowTargets = kNone;
  bucket = created;
  index.nodes[place.parent].flags |= place.childFlag;
  return &node;
}

// The node of an element that is not simple, made when it is new; kNone when memory is short.
[[gnu::cold]] u32 step_down(Index& index, RequestedElement& element) {
  const u32 firstAttribute = index.attributes.size;
  element.impossible = element.nameLength == 0;
  element.nameHash =
      hash_bytes(element.text.data() + element.localBegin, element.nameLength - element.localBegin);
  element.key = element_key(element.parent, element.nameHash, kPlainKey);
  if (element.nameLength < element.text.size()) {
    if (!split_attributes(index, element)) return kNone;
    if (element.childFlag == kPlainChildren && element.attributeCount != 0) {
      element.childFlag = kNamedChildren;
      element.key = element_key(element.parent, element.nameHash, kNamedKey);
    }
    if (element.eachValue) element.bareAttribute = {};
  }
  const Place place = {element.parent, element.key, element.childFlag, element.eachValue};
  const u32 found = find_node(index, place, element.text);
  if (found != kNone) {
    index.attributes.size = firstAttribute;
    return found;
  }
  Node* node = add_node(index, place);
  if (node == nullptr) return kNone;
  node->text = element.text.data();
  node->textLength = static_cast<u32>(element.text.size());
  node->nameLength = element.nameLength;
  node->localBegin = element.localBegin;
  node->firstAttribute = firstAttribute;
  node->attributeCount = element.attributeCount;
  node->flags |= (element.bareAttribute.empty() ? 0u : u32{kNameOnly}) |
                 (element.impossible ? u32{kImpossible} : 0u);
  return index.nodes.size - 1;
}

inline Place place_of(std::string_view path, const SimpleElement& element, u32 parent, bool each) {
  const char* text = path.data();
  const u32 name = hash_bytes(text + element.localBegin, element.nameEnd - element.localBegin);
  if (!element.has_attribute()) {
    return {parent, element_key(parent, name, kPlainKey), kPlainChildren, each};
  }
  if (!element.has_value()) {
    return {parent, element_key(parent, name, kNamedKey), kNamedChildren, each};
  }
  const u32 value = hash_bytes(text + element.valueLocal, element.valueEnd - element.valueLocal);
  return {parent, valued_key(element_key(parent, name, kValuedKey), value), kValuedChildren, each};
}

// step_down() for a simple element.
inline u32 step_down(Index& index, std::string_view path, const SimpleElement& element, u32 parent,
                     bool each) {
  const std::string_view text = slice(path, element.begin, element.end - element.begin);
  const Place place = place_of(path, element, parent, each);
  const u32 found = find_node(index, place, text);
  if (found != kNone) return found;
  Node* node = add_node(index, place);
  if (node == nullptr) return kNone;
  node->text = text.data();
  node->textLength = static_cast<u32>(text.size());
  node->nameLength = element.nameEnd - element.begin;
  node->localBegin = element.localBegin - element.begin;
  node->firstAttribute = index.attributes.size;
  node->attributeCount = element.has_attribute() ? 1 : 0;
  node->flags |= kSimple;
  if (!element.has_attribute()) return index.nodes.size - 1;
  if (!element.has_value() && !each) node->flags |= kNameOnly;
  const char* value = element.has_value() ? path.data() + element.valueBegin : nullptr;
  const bool stored = index.attributes.push({path.data() + element.attributeBegin(), value,
                                             element.attributeEnd - element.attributeBegin(),
                                             element.valueEnd - element.valueBegin});
  return stored ? index.nodes.size - 1 : kNone;
}

void append_to_list(Index& index, u32& head, u32 target) {
  index.targets[target].next = head;
  head = target;
}

inline void attach(Index& index, u32 node, u32 target, bool below) {
  Node& last = index.nodes[node];
  const bool isAttribute = index.targets[target].isAttribute;
  u32& list =
      below ? last.belowTargets : (isAttribute ? last.attributeTargets : last.elementTargets);
  append_to_list(index, list, target);
  if (!below) last.flags |= isAttribute ? kAttributeTargets : kElementTargets;
}

struct Descent {
  u32 position = 0;
  u32 node = kRootNode;
  u32 depth = 0;
};

// The elements that this path has in common with the one before it.
inline Descent shared_beginning(const Index& index, std::string_view path) {
  const u32 common = common_length(index.previous, path);
  Descent descent;
  descent.depth = index.previousDepth;
  while (descent.depth != 0 && index.previousEnd[descent.depth - 1] > common) --descent.depth;
  if (descent.depth != 0) {
    descent.position = index.previousEnd[descent.depth - 1];
    descent.node = index.previousNode[descent.depth - 1];
  }
  return descent;
}

inline void remember_element(Index& index, Descent& descent) {
  constexpr u32 kRemembered = sizeof index.previousEnd / sizeof index.previousEnd[0];
  if (descent.depth < kRemembered) {
    index.previousEnd[descent.depth] = descent.position;
    index.previousNode[descent.depth] = descent.node;
    ++index.previousDepth;
  }
  ++descent.depth;
}

// What a step along a path leads to.
struct Step {
  u32 node;  // kNone: memory is short
  u32 end;   // of the element, an offset into the path
  std::string_view bareAttribute;
};

// One that is not simple.
[[gnu::cold]] Step step_generally(Index& index, std::string_view path, u32 begin, u32 parent,
                                  bool each) {
  const ElementExtent extent = measure_element(path, begin);
  RequestedElement element = {};
  element.text = slice(path, begin, extent.end - begin);
  element.nameLength = extent.nameEnd - begin;
  element.localBegin = extent.colon == kNone ? 0 : extent.colon - begin + 1;
  element.parent = parent;
  element.eachValue = each && extent.end == path.size();
  const u32 node = step_down(index, element);
  return {node, extent.end, element.bareAttribute};
}

inline Step step_along(Index& index, std::string_view path, u32 begin, u32 parent, bool each) {
  SimpleElement element;
  if (!read_marked_element(path, begin, element_marks(path, begin), element)) {
    return step_generally(index, path, begin, parent, each);
  }
  each = each && element.end == path.size();
  const bool isBare = element.has_attribute() && !element.has_value() && !each;
  const u32 nameLength = isBare ? element.attributeEnd - element.attributeBegin() : 0;
  return {step_down(index, path, element, parent, each), element.end,
          slice(path, element.attributeBegin(), nameLength)};
}

// Hangs the target under the node of its last element, making nodes on the way. An attribute
// without value there makes it a request for that attribute.
bool add_path(Index& index, std::string_view path, u32 number, bool kindKnown) {
  Descent descent = shared_beginning(index, path);
  index.previous = path;
  index.previousDepth = descent.depth;
  Target& target = index.targets[number];
  const bool each = target.collect == Collect::kEach;
  while (descent.position < path.size()) {
    const Step step = step_along(index, path, descent.position, descent.node, each);
    if (step.node == kNone) return false;
    descent.node = step.node;
    if (step.end == path.size()) {
      if (!kindKnown && !step.bareAttribute.empty()) {
        target.isAttribute = true;
        target.attributeName = step.bareAttribute.data();
        target.attributeNameLength = static_cast<u32>(step.bareAttribute.size());
      }
      attach(index, descent.node, number, false);
      return true;
    }
    descent.position = step.end + 1;
    remember_element(index, descent);
  }
  attach(index, descent.node, number, true);
  return true;
}

}  // namespace

bool start_index(Index& index, u64 targetCount) {
  const u64 buckets = std::bit_ceil(targetCount < 32 ? u64{128} : targetCount * 4);
  if (!index.targets.reserve(targetCount) || !index.buckets.reserve(buckets) ||
      !index.nodes.reserve(targetCount + targetCount / 4 + 16)) {
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
    // A name with "=" in it is no attribute's, so it may as well be empty: none has that either.
    target.attributeNameLength = find_byte(path.attributeName, '=') == nullptr
                                     ? static_cast<u32>(path.attributeName.size())
                                     : 0;
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
