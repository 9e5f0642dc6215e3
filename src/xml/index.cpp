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
};

// An element ends at the first "/" before which an even number of double quotes stands.
[[gnu::cold]] ElementExtent measure_element(std::string_view path, u32 begin) {
  const u32 size = static_cast<u32>(path.size());
  ElementExtent extent = {size, kNone};
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
  }
  if (extent.nameEnd == kNone) extent.nameEnd = extent.end;
  return extent;
}

// Whether the texts are the same up to `length`: looked at by two lanes.
inline bool is_same(const char* a, const char* b, u32 length) {
  if (length < 2 * kLane) return equal_bytes(a, b, length);
  const auto differs = [&](u32 at) {
    return (same_lane(a + at, b + at) & same_lane(a + at + kLane, b + at + kLane)) !=
           first_bits(kLane);
  };
  const u32 last = length - 2 * kLane;
  for (u32 at = 0; at < last; at += 2 * kLane) {
    if (differs(at)) return false;
  }
  return !differs(last);
}

// The node there with the same element among those of one bucket, of which `found` is the first.
inline u32 find_in_bucket(Node* nodes, u32 found, Node& wanted) {
  for (; found != kNone; found = nodes[found].nextInBucket) {
    Node& node = nodes[found];
    if (node.key != wanted.key || node.parent != wanted.parent) continue;
    if (((node.flags ^ wanted.flags) & kEachValue) == 0 && node.textLength == wanted.textLength &&
        equal_text(node.text, wanted.text, wanted.textLength)) {
      break;
    }
    node.flags &= ~u32{kSimple};
    wanted.flags &= ~u32{kSimple};
    nodes[found - 1].next = 0;  // its bytes do not tell it apart
  }
  return found;
}

// Twice the buckets, when the paths have more elements than their number let expect.
bool grow_buckets(Index& index) {
  const u64 buckets = u64{index.buckets.size} * 2;
  if (!index.buckets.reserve(buckets)) return false;
  index.buckets.size = static_cast<u32>(buckets);
  index.bucketMask = static_cast<u32>(buckets - 1);
  std::memset(index.buckets.begin(), 0xFF,  // kNone
              static_cast<std::size_t>(buckets * sizeof(u32)));
  for (u32 i = kRootNode + 1; i < index.nodes.size; ++i) {
    u32& bucket = index.buckets[bucket_of(index.nodes[i].key, index.bucketMask)];
    index.nodes[i].nextInBucket = bucket;
    bucket = i;
  }
  return true;
}

// Room to read an element into; there are as many buckets as there is room for nodes.
inline bool has_room(const Index& index) {
  return index.nodes.size != index.nodes.capacity &&
         index.attributes.size != index.attributes.capacity;
}

[[gnu::cold]] bool make_room(Index& index) {
  return index.nodes.reserve(u64{index.nodes.size} + 1) &&
         index.attributes.reserve(u64{index.attributes.size} + 1) &&
         (index.nodes.capacity <= index.buckets.size || grow_buckets(index));
}

// The number of the node that was read behind the last one, or of the one that there was before.
// Its attributes stand from `firstAttribute` on, and it is an element at `depth`.
inline u32 enter_node(Index& index, u32 number, u32 firstAttribute, u32 depth) {
  Node* nodes = index.nodes.begin();
  Node& node = nodes[number];
  u32& bucket = index.buckets[bucket_of(node.key, index.bucketMask)];
  if (bucket != kNone) {
    const u32 found = find_in_bucket(nodes, bucket, node);
    if (found != kNone) {
      index.attributes.size = firstAttribute;
      return found;
    }
  }
  node.nextInBucket = bucket;
  node.elementTargets = node.attributeTargets = node.belowTargets = kNone;
  node.next = 0;
  if (is_expectable(node, depth)) nodes[number - 1].next = number;
  node.firstAttribute = firstAttribute;
  index.attributes.size = firstAttribute + node.attributeCount;
  nodes[node.parent].flags |= child_flag(node.key);
  index.nodes.size = number + 1;
  bucket = number;
  return number;
}

// Takes the attributes of an element that is not simple; false when memory is short. It is looked up
// by the first one that has a value.
bool split_attributes(Index& index, Node& node, u32 nameHash) {
  AttributeSplitter splitter(from({node.text, node.textLength}, node.nameLength));
  SplitAttribute attribute;
  while (splitter.next(attribute)) {
    const std::string_view inner = inner_value(attribute.value);
    const auto length = [](std::string_view text) { return static_cast<u32>(text.size()); };
    if (!index.attributes.push(
            {attribute.name.data(), inner.data(), length(attribute.name), length(inner)})) {
      return false;
    }
    if (node.attributeCount++ == 0) node.key = element_key(node.parent, nameHash, kNamedKey);
    if (attribute.value.data() == nullptr) {
      node.flags |= kNameOnly;
    } else if (inner.empty()) {
      node.flags |= kImpossible;
    } else if (child_flag(node.key) != kValuedChildren) {
      const std::string_view local = local_part(inner);
      node.key = valued_key(element_key(node.parent, nameHash, kValuedKey),
                            hash_bytes(local.data(), length(local)));
    }
  }
  if (splitter.failed()) node.flags |= kImpossible;
  return true;
}

// Reads an element that is not simple; false when memory is short.
[[gnu::cold]] bool read_any_element(Index& index, std::string_view path, u32 begin, Node& node) {
  const ElementExtent extent = measure_element(path, begin);
  node.text = path.data() + begin;
  node.textLength = extent.end - begin;
  node.nameLength = extent.nameEnd - begin;
  node.flags = node.nameLength == 0 ? u32{kImpossible} : 0u;
  node.attributeCount = 0;
  const u32 nameHash = hash_bytes(node.text, node.nameLength);
  node.key = element_key(node.parent, nameHash, kPlainKey);
  return node.nameLength == node.textLength || split_attributes(index, node, nameHash);
}

// How far a path was descended: up to which element, and what comes next.
struct Descent {
  u32 position = 0;
  u32 node = kRootNode;
  u32 depth = 0;
};

// The node of the element that comes next; kNone when memory is short. `each`: if it is the last one,
// its attribute stands for every value.
inline u32 step_along(Index& index, std::string_view path, const Descent& descent, bool each) {
  const u32 begin = descent.position;
  if (!has_room(index) && !make_room(index)) return kNone;
  const u32 firstAttribute = index.attributes.size;
  const u32 number = index.nodes.size;
  Node& node = index.nodes[number];
  node.parent = descent.node;
  if (!read_marked_element(path, begin, node, index.attributes[firstAttribute]) &&
      !read_any_element(index, path, begin, node)) {
    return kNone;
  }
  if (each && begin + node.textLength == path.size()) {
    node.flags = (node.flags & ~u32{kNameOnly}) | kEachValue;
  }
  return enter_node(index, number, firstAttribute, descent.depth + 1);
}

// Where the path before this one has its element at `depth`, if this one has it too.
inline bool has_in_common(const Index& index, std::string_view path, u32 depth) {
  const u32 end = index.previousEnd[depth - 1];
  return end <= path.size() && is_same(index.previous.data(), path.data(), end);
}

[[gnu::noinline]] u32 common_depth(const Index& index, std::string_view path, u32 depth) {
  while (depth != 0 && !has_in_common(index, path, depth)) --depth;
  return depth;
}

// The elements that this path has in common with the one before it: mostly all but the last.
inline Descent shared_beginning(const Index& index, std::string_view path) {
  u32 depth = index.previousDepth;
  if (depth != 0 && !has_in_common(index, path, depth))
    depth = common_depth(index, path, depth - 1);
  if (depth == 0) return {};
  return {index.previousEnd[depth - 1], index.previousNode[depth - 1], depth};
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

// A target whose path is added.
struct Asked {
  Target* target;
  u32 number;
  bool each;       // its last attribute stands for every value
  bool kindKnown;  // the target says what it asks for
};

// Makes the target one for the attribute that its last element names without value.
[[gnu::cold]] void ask_for_attribute(const Index& index, const Node& node, Target& target) {
  const RequestedAttribute& last = index.attributes[node.firstAttribute + node.attributeCount - 1];
  target.isAttribute = true;
  target.attributeName = last.name;
  target.attributeNameLength = last.nameLength;
}

inline void append_to_list(u32& head, Target& target, u32 number) {
  target.next = head;
  head = number;
}

// Hangs the target under the node of its last element.
inline void attach(const Index& index, Node& node, const Asked& asked) {
  Target& target = *asked.target;
  if ((node.flags & kNameOnly) != 0 && !asked.kindKnown) ask_for_attribute(index, node, target);
  node.flags = with_target(node, target);
  append_to_list(target.isAttribute ? node.attributeTargets : node.elementTargets, target,
                 asked.number);
}

// Hangs the target under the node of its last element, making nodes on the way. An attribute
// without value there makes it a request for that attribute. Requests have hundreds of paths: what
// they do not need is left out where they call it.
[[gnu::always_inline]] inline bool add_path(Index& index, std::string_view path,
                                            const Asked& asked) {
  Descent descent = shared_beginning(index, path);
  index.previous = path;
  index.previousDepth = descent.depth;
  while (descent.position < path.size()) {
    descent.node = step_along(index, path, descent, asked.each);
    if (descent.node == kNone) return false;
    Node& node = index.nodes[descent.node];
    const u32 end = descent.position + node.textLength;
    if (end == path.size()) {
      attach(index, node, asked);
      return true;
    }
    descent.position = end + 1;
    remember_element(index, descent);
  }
  append_to_list(index.nodes[descent.node].belowTargets, *asked.target, asked.number);
  return true;
}

inline Target& new_target(Index& index, Collect collect, u32 group) {
  Target& target = index.targets[index.targets.size++];
  target = {};
  target.next = kNone;
  target.group = group;
  target.collect = collect;
  return target;
}

void note_no_path(Index& index, Target& target) {
  index.hasNoPath = true;
  target.hasNoPath = true;
}

}  // namespace

bool start_index(Index& index, u64 targetCount) {
  const u64 buckets = std::bit_ceil(targetCount < 32 ? u64{128} : targetCount * 4);
  if (!index.targets.reserve(targetCount) || !index.attributes.reserve(targetCount) ||
      !index.buckets.reserve(buckets) || !index.nodes.reserve(targetCount + targetCount / 4 + 16)) {
    return false;
  }
  index.buckets.size = static_cast<u32>(buckets);
  index.bucketMask = static_cast<u32>(buckets - 1);
  std::memset(index.buckets.begin(), 0xFF,  // kNone
              static_cast<std::size_t>(buckets * sizeof(u32)));
  Node& root = index.nodes[kRootNode];
  root = {};
  root.parent = root.nextInBucket = kNone;
  root.elementTargets = root.attributeTargets = root.belowTargets = kNone;
  index.nodes.size = 1;
  return true;
}

bool add_target(Index& index, std::string_view path, Collect collect, u32 group,
                const TargetKind* kind) {
  const u32 number = index.targets.size;
  Target& target = new_target(index, collect, group);
  if (kind != nullptr) {
    target.isAttribute = kind->isAttribute;
    target.attributeName = kind->attributeName.data();
    // A name with "=" in it is no attribute's, so it may as well be empty: none has that either.
    target.attributeNameLength = find_byte(kind->attributeName, '=') == nullptr
                                     ? static_cast<u32>(kind->attributeName.size())
                                     : 0;
  }
  if (group >= index.groupCount) index.groupCount = group + 1;
  if (path.data() == nullptr) {
    note_no_path(index, target);
    return true;
  }
  return add_path(index, path, {&target, number, collect == Collect::kEach, kind != nullptr});
}

bool add_targets(Index& index, const PathRecords& records, Collect collect) {
  const char* record = static_cast<const char*>(records.first);
  for (u32 i = 0; i < records.count; ++i, record += records.stride) {
    PathRecord path;
    std::memcpy(&path, record, sizeof path);
    Target& target = new_target(index, collect, 0);
    if (path.text == nullptr) {
      note_no_path(index, target);
    } else if (!add_path(index, as_view(path.text, path.length), {&target, i, false, false})) {
      return false;
    }
  }
  return true;
}

}  // namespace pxcl::xml
