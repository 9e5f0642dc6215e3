// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Byte masks: where the bytes stand at which the scan has something to decide. One bit a byte, the
// lowest for the first. This is the only file that knows the processor.

#pragma once

#include <bit>
#include <cstring>

#include "util/types.hpp"

#if defined(__SSE2__)
#include <emmintrin.h>
#elif defined(__ARM_NEON) && defined(__aarch64__)
#include <arm_neon.h>
#endif

namespace pxcl::xml {

inline constexpr u32 kLane = 16;   // bytes that one lane mask covers
inline constexpr u32 kBlock = 64;  // bytes that the masks of a value or an element cover at most

// Where a name's prefix ends, and the bytes at which a name ends or is irregular: up to the blank,
// double quotes and "/".
struct NameMarks {
  u32 colon;
  u32 stop;
};

// tag_lane: "<" and ">". name_end_lane: these and the bytes up to "/", where the name of a usual tag
// or attribute ends. value_lane: what a usual value does not hold, double quotes, colons and NUL
// bytes. end_lane: those of value_lane, white space, control bytes, "<" and ">". separator_lane: what
// ends a part of a requested element is among the bytes up to the double quotes, "/", and those from
// ":" to ">". same_two_lanes: whether the lanes at two places, and those `second` bytes behind them, are
// the same.

#if defined(__SSE2__)

inline __m128i load_lane(const char* bytes) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
}
inline __m128i lane_equal(__m128i lane, char byte) {
  return _mm_cmpeq_epi8(lane, _mm_set1_epi8(byte));
}
inline u32 lane_bits(__m128i lane) {
  return static_cast<u32>(_mm_movemask_epi8(lane));
}

// "<" and ">" differ in one bit.
inline u32 tag_lane(const char* bytes) {
  return lane_bits(lane_equal(_mm_or_si128(load_lane(bytes), _mm_set1_epi8('<' ^ '>')), '>'));
}

inline NameMarks name_lane(const char* bytes) {
  const __m128i lane = load_lane(bytes);
  const __m128i blank = _mm_cmpeq_epi8(_mm_min_epu8(lane, _mm_set1_epi8(' ')), lane);
  const __m128i quoteOrSlash = _mm_or_si128(lane_equal(lane, '"'), lane_equal(lane, '/'));
  return {lane_bits(lane_equal(lane, ':')), lane_bits(_mm_or_si128(blank, quoteOrSlash))};
}

inline u32 name_end_lane(const char* bytes) {
  const __m128i lane = load_lane(bytes);
  const __m128i low = _mm_cmpeq_epi8(_mm_min_epu8(lane, _mm_set1_epi8('/')), lane);
  const __m128i tag = lane_equal(_mm_or_si128(lane, _mm_set1_epi8('<' ^ '>')), '>');
  return lane_bits(_mm_or_si128(low, tag));
}

inline u32 colon_lane(const char* bytes) {
  return lane_bits(lane_equal(load_lane(bytes), ':'));
}

inline u32 value_lane(const char* bytes) {
  const __m128i lane = load_lane(bytes);
  const __m128i quoteOrColon = _mm_or_si128(lane_equal(lane, '"'), lane_equal(lane, ':'));
  return lane_bits(_mm_or_si128(quoteOrColon, lane_equal(lane, '\0')));
}

// ":" and ">" differ in one bit.
inline u32 end_lane(const char* bytes) {
  const __m128i lane = load_lane(bytes);
  const __m128i blank = _mm_cmpeq_epi8(_mm_min_epu8(lane, _mm_set1_epi8(' ')), lane);
  const __m128i colon = lane_equal(_mm_or_si128(lane, _mm_set1_epi8(':' ^ '>')), '>');
  const __m128i quoteOrTag = _mm_or_si128(lane_equal(lane, '"'), lane_equal(lane, '<'));
  return lane_bits(_mm_or_si128(_mm_or_si128(blank, colon), quoteOrTag));
}

inline bool same_two_lanes(const char* a, const char* b, u32 second) {
  const __m128i first = _mm_cmpeq_epi8(load_lane(a), load_lane(b));
  const __m128i other = _mm_cmpeq_epi8(load_lane(a + second), load_lane(b + second));
  return lane_bits(_mm_and_si128(first, other)) == 0xFFFF;
}

inline u32 separator_lane(const char* bytes) {
  const __m128i lane = load_lane(bytes);
  const __m128i low = _mm_cmpeq_epi8(_mm_min_epu8(lane, _mm_set1_epi8('"')), lane);
  const __m128i fromColon = _mm_sub_epi8(lane, _mm_set1_epi8(':'));
  const __m128i high = _mm_cmpeq_epi8(_mm_min_epu8(fromColon, _mm_set1_epi8('>' - ':')), fromColon);
  return lane_bits(_mm_or_si128(_mm_or_si128(low, lane_equal(lane, '/')), high));
}

inline u32 same_lane(const char* a, const char* b) {
  return lane_bits(_mm_cmpeq_epi8(load_lane(a), load_lane(b)));
}

#elif defined(__ARM_NEON) && defined(__aarch64__)

inline uint8x16_t load_lane(const char* bytes) {
  return vld1q_u8(reinterpret_cast<const u8*>(bytes));
}
inline uint8x16_t lane_equal(uint8x16_t lane, char byte) {
  return vceqq_u8(lane, vdupq_n_u8(static_cast<u8>(byte)));
}
inline u32 lane_bits(uint8x16_t marks) {
  const uint8x16_t weights = {1, 2, 4, 8, 16, 32, 64, 128, 1, 2, 4, 8, 16, 32, 64, 128};
  const uint8x16_t bits = vandq_u8(marks, weights);
  return static_cast<u32>(vaddv_u8(vget_low_u8(bits))) |
         static_cast<u32>(vaddv_u8(vget_high_u8(bits))) << 8;
}

inline u32 tag_lane(const char* bytes) {
  return lane_bits(lane_equal(vorrq_u8(load_lane(bytes), vdupq_n_u8('<' ^ '>')), '>'));
}

inline NameMarks name_lane(const char* bytes) {
  const uint8x16_t lane = load_lane(bytes);
  const uint8x16_t blank = vcleq_u8(lane, vdupq_n_u8(' '));
  const uint8x16_t quoteOrSlash = vorrq_u8(lane_equal(lane, '"'), lane_equal(lane, '/'));
  return {lane_bits(lane_equal(lane, ':')), lane_bits(vorrq_u8(blank, quoteOrSlash))};
}

inline u32 name_end_lane(const char* bytes) {
  const uint8x16_t lane = load_lane(bytes);
  const uint8x16_t tag = lane_equal(vorrq_u8(lane, vdupq_n_u8('<' ^ '>')), '>');
  return lane_bits(vorrq_u8(vcleq_u8(lane, vdupq_n_u8('/')), tag));
}

inline u32 colon_lane(const char* bytes) {
  return lane_bits(lane_equal(load_lane(bytes), ':'));
}

inline u32 value_lane(const char* bytes) {
  const uint8x16_t lane = load_lane(bytes);
  const uint8x16_t quoteOrColon = vorrq_u8(lane_equal(lane, '"'), lane_equal(lane, ':'));
  return lane_bits(vorrq_u8(quoteOrColon, lane_equal(lane, '\0')));
}

// ":" and ">" differ in one bit.
inline u32 end_lane(const char* bytes) {
  const uint8x16_t lane = load_lane(bytes);
  const uint8x16_t colon = lane_equal(vorrq_u8(lane, vdupq_n_u8(':' ^ '>')), '>');
  const uint8x16_t quoteOrTag = vorrq_u8(lane_equal(lane, '"'), lane_equal(lane, '<'));
  return lane_bits(vorrq_u8(vorrq_u8(vcleq_u8(lane, vdupq_n_u8(' ')), colon), quoteOrTag));
}

inline bool same_two_lanes(const char* a, const char* b, u32 second) {
  const uint8x16_t first = vceqq_u8(load_lane(a), load_lane(b));
  return lane_bits(vandq_u8(first, vceqq_u8(load_lane(a + second), load_lane(b + second)))) ==
         0xFFFF;
}

inline u32 separator_lane(const char* bytes) {
  const uint8x16_t lane = load_lane(bytes);
  const uint8x16_t high = vcleq_u8(vsubq_u8(lane, vdupq_n_u8(':')), vdupq_n_u8('>' - ':'));
  const uint8x16_t lowOrSlash = vorrq_u8(vcleq_u8(lane, vdupq_n_u8('"')), lane_equal(lane, '/'));
  return lane_bits(vorrq_u8(lowOrSlash, high));
}

inline u32 same_lane(const char* a, const char* b) {
  return lane_bits(vceqq_u8(load_lane(a), load_lane(b)));
}

#else

template <typename Test>
inline u32 lane_bits(const Test& test) {
  u32 marks = 0;
  for (u32 i = 0; i < kLane; ++i) marks |= static_cast<u32>(test(i)) << i;
  return marks;
}

inline u32 tag_lane(const char* bytes) {
  return lane_bits([&](u32 i) { return (bytes[i] | ('<' ^ '>')) == '>'; });
}

inline NameMarks name_lane(const char* bytes) {
  const auto stops = [&](u32 i) {
    return static_cast<u8>(bytes[i]) <= ' ' || bytes[i] == '"' || bytes[i] == '/';
  };
  return {lane_bits([&](u32 i) { return bytes[i] == ':'; }), lane_bits(stops)};
}

inline u32 name_end_lane(const char* bytes) {
  return lane_bits([&](u32 i) {
    return static_cast<u8>(bytes[i]) <= '/' || bytes[i] == '<' || bytes[i] == '>';
  });
}

inline u32 colon_lane(const char* bytes) {
  return lane_bits([&](u32 i) { return bytes[i] == ':'; });
}

inline u32 value_lane(const char* bytes) {
  return lane_bits([&](u32 i) { return bytes[i] == '"' || bytes[i] == ':' || bytes[i] == '\0'; });
}

inline u32 end_lane(const char* bytes) {
  return lane_bits([&](u32 i) { return static_cast<u8>(bytes[i]) <= ' '; }) | value_lane(bytes) |
         tag_lane(bytes);
}

inline bool same_two_lanes(const char* a, const char* b, u32 second) {
  return std::memcmp(a, b, kLane) == 0 && std::memcmp(a + second, b + second, kLane) == 0;
}

inline u32 separator_lane(const char* bytes) {
  return lane_bits([&](u32 i) {
    return static_cast<u8>(bytes[i]) <= '"' || bytes[i] == '/' ||
           (bytes[i] >= ':' && bytes[i] <= '>');
  });
}

inline u32 same_lane(const char* a, const char* b) {
  return lane_bits([&](u32 i) { return a[i] == b[i]; });
}

#endif

// Whether `length` bytes are the same; at least a lane of them is readable.
inline bool same_bytes(const char* a, const char* b, u32 length) {
  if (length < kLane) return (~same_lane(a, b) & ((u32{1} << length) - 1)) == 0;
  for (; length > 4 * kLane; length -= 2 * kLane) {
    if (!same_two_lanes(a, b, kLane)) return false;
    a += 2 * kLane;
    b += 2 * kLane;
  }
  const u32 last = length - kLane;
  if (length <= 2 * kLane) return same_two_lanes(a, b, last);
  return same_two_lanes(a, b, kLane) && same_two_lanes(a + last - kLane, b + last - kLane, kLane);
}

// Whether a double quote and the tag's end stand here.
inline bool is_value_end(const char* bytes) {
  return std::memcmp(bytes, "\">", 2) == 0;
}

// The marks of end_lane in the first of two lanes that has one.
inline u64 end_marks(const char* value) {
  const u32 first = end_lane(value);
  return first != 0 ? first : u64{end_lane(value + kLane)} << kLane;
}

// The length of a usual value without white space that ends with a double quote and ">", 2 * kLane
// bytes at most; 0 for others.
inline u32 plain_value_length(const char* value) {
  const u64 marks = end_marks(value);
  if (marks == 0) return 0;
  const u32 at = static_cast<u32>(std::countr_zero(marks));
  return is_value_end(value + at) ? at : 0;
}

// The first `count` bits of a lane's mask.
inline constexpr u32 first_bits(u32 count) {
  return count >= kLane ? 0xFFFFu : (u32{1} << count) - 1;
}

// A lane of a text from a position on, near the text's end: it is read together with the bytes before
// it, or from a copy. `dropped` bytes stand in front of it.
struct LanePlace {
  const char* bytes;
  u32 dropped;
  char copy[kLane];

  LanePlace(std::string_view text, u64 position) : bytes(text.data() + position), dropped(0) {
    const std::size_t rest = text.size() - static_cast<std::size_t>(position);
    if (text.size() >= kLane) {
      dropped = static_cast<u32>(kLane - rest);
      bytes -= dropped;
      return;
    }
    std::memset(copy, 'x', sizeof copy);
    std::memcpy(copy, bytes, rest);
    bytes = copy;
  }
};

// Whether `text` begins with `other`, which is not shorter than a lane.
inline bool same_text(const char* text, std::string_view other) {
  constexpr u32 kAll = (u32{1} << kLane) - 1;
  const u64 last = other.size() - kLane;
  for (u64 at = 0; at < last; at += kLane) {
    if (same_lane(text + at, other.data() + at) != kAll) return false;
  }
  return same_lane(text + last, other.data() + last) == kAll;
}

// The name marks of up to kLane bytes of `text` from `position` on.
inline NameMarks name_marks(std::string_view text, u64 position) {
  if (text.size() - position >= kLane) return name_lane(text.data() + position);
  const LanePlace place(text, position);
  const NameMarks marks = name_lane(place.bytes);
  return {marks.colon >> place.dropped, marks.stop >> place.dropped};
}

inline u32 lowest(u32 marks) {
  return static_cast<u32>(std::countr_zero(marks));
}
inline u32 lowest(u64 marks) {
  return static_cast<u32>(std::countr_zero(marks));
}

// The separators of `Lanes` lanes.
template <u32 Lanes>
inline u64 separator_lanes(const char* bytes) {
  u64 marks = separator_lane(bytes);
  for (u32 i = 1; i < Lanes; ++i) marks |= u64{separator_lane(bytes + i * kLane)} << i * kLane;
  return marks;
}

// Those of the last `rest` bytes of Lanes lanes, and where they end.
template <u32 Lanes>
inline u64 last_separators(const char* bytes, u64 rest) {
  return separator_lanes<Lanes>(bytes) >> (Lanes * kLane - rest) | u64{1} << rest;
}

inline constexpr u32 kMostRead = kBlock - 1;  // bytes of an element that are read by marks

// The separators among up to kMostRead bytes of `path` from `begin` on, which is not its end, and
// where these bytes end.
inline u64 element_marks(std::string_view path, u32 begin) {
  const std::size_t rest = path.size() - begin;
  const char* end = path.data() + path.size();
  if (rest >= kBlock) return separator_lanes<4>(path.data() + begin) | u64{1} << kMostRead;
  if (rest <= 2 * kLane && path.size() >= 2 * kLane) {
    return last_separators<2>(end - 2 * kLane, rest);
  }
  if (rest <= 3 * kLane && path.size() >= 3 * kLane) {
    return last_separators<3>(end - 3 * kLane, rest);
  }
  if (path.size() >= kBlock) return last_separators<4>(end - kBlock, rest);
  char copy[kBlock] = {};
  std::memcpy(copy + kBlock - rest, path.data() + begin, rest);
  return last_separators<4>(copy, rest);
}

}  // namespace pxcl::xml
