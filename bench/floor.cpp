// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include <bit>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "contender.hpp"

namespace pxcl_bench {
namespace {

constexpr std::size_t kLane = 16;

// One bit for each of 16 bytes that is "<", ">" or a double quote.
#if defined(__SSE2__)
std::uint32_t marks(const char* bytes) {
  const __m128i lane = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
  const __m128i open = _mm_cmpeq_epi8(lane, _mm_set1_epi8('<'));
  const __m128i close = _mm_cmpeq_epi8(lane, _mm_set1_epi8('>'));
  const __m128i quote = _mm_cmpeq_epi8(lane, _mm_set1_epi8('"'));
  return static_cast<std::uint32_t>(
      _mm_movemask_epi8(_mm_or_si128(_mm_or_si128(open, close), quote)));
}
#else
std::uint32_t marks(const char* bytes) {
  std::uint32_t bits = 0;
  for (std::size_t i = 0; i < kLane; ++i) {
    const bool marked = bytes[i] == '<' || bytes[i] == '>' || bytes[i] == '"';
    bits |= static_cast<std::uint32_t>(marked) << i;
  }
  return bits;
}
#endif

class Floor final : public Contender {
 public:
  explicit Floor(const Question& question) : document_(question.document) {}

  void run() override {
    seen_ = 0;
    std::size_t position = 0;
    for (; position + kLane <= document_.size(); position += kLane) {
      visit(marks(document_.data() + position), position);
    }
    char rest[kLane] = {};
    std::memcpy(rest, document_.data() + position, document_.size() - position);
    visit(marks(rest), position);
  }
  std::vector<std::string> results() const override { return {}; }

 private:
  void visit(std::uint32_t bits, std::size_t position) {
    for (; bits != 0; bits &= bits - 1) {
      seen_ += position + static_cast<std::size_t>(std::countr_zero(bits));
    }
  }

  std::string_view document_;
  std::size_t seen_ = 0;
};

}  // namespace

std::unique_ptr<Contender> make_floor(const Question& question) {
  return std::make_unique<Floor>(question);
}

}  // namespace pxcl_bench
