// Sixteen characters of a text at once, for scanning requests: a batch is walked several times from its start
// to its end, and that walk is what a large request costs.
#pragma once

#include <cstddef>
#include <cstdint>

#if defined(__SSE2__) || defined(_M_X64)
#define VEK_HAS_SSE2 1
#include <emmintrin.h>
#endif

namespace vek {

class CharacterBlock {
 public:
  static constexpr std::ptrdiff_t kSize = 16;

  // Sixteen characters must stand at `text`.
  explicit CharacterBlock(const wchar_t* text);

  // One bit for each character, the first lowest, that equals `c`, which is above 0 and below 255.
  std::uint32_t Equal(wchar_t c) const;

 private:
#ifdef VEK_HAS_SSE2
  static __m128i Load(const wchar_t* text) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
  }
  __m128i bytes_;
#else
  const wchar_t* text_;
#endif
};

#ifdef VEK_HAS_SSE2

// Narrowed to bytes with saturation: a character above 255 becomes 255 or 0, which nobody asks for.
inline CharacterBlock::CharacterBlock(const wchar_t* text) {
  if constexpr (sizeof(wchar_t) == 2) {
    bytes_ = _mm_packus_epi16(Load(text), Load(text + 8));
  } else {
    bytes_ = _mm_packus_epi16(_mm_packs_epi32(Load(text), Load(text + 4)),
                              _mm_packs_epi32(Load(text + 8), Load(text + 12)));
  }
}

inline std::uint32_t CharacterBlock::Equal(wchar_t c) const {
  return static_cast<std::uint32_t>(
      _mm_movemask_epi8(_mm_cmpeq_epi8(bytes_, _mm_set1_epi8(static_cast<char>(c)))));
}

#else

inline CharacterBlock::CharacterBlock(const wchar_t* text) : text_(text) {}

inline std::uint32_t CharacterBlock::Equal(wchar_t c) const {
  std::uint32_t mask = 0;
  for (std::ptrdiff_t i = 0; i < kSize; ++i) mask |= static_cast<std::uint32_t>(text_[i] == c) << i;
  return mask;
}

#endif

}  // namespace vek
