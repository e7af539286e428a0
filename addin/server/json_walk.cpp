#include "addin/server/json_walk.h"

#include <bit>
#include <cstdint>

namespace vek::json {
namespace {

// One walk from a bracket to its match. A batch is one object, so this walk goes over all of a request,
// twice.
class BracketWalk {
 public:
  BracketWalk(const wchar_t* at, const wchar_t* end, wchar_t open, wchar_t close)
      : at_(at), end_(end), open_(open), close_(close) {}

  const wchar_t* FindMatch() {
    const wchar_t* match = nullptr;
    while (!match && at_ < end_) match = end_ - at_ >= CharacterBlock::kSize ? WalkBlock() : WalkTo(end_);
    return match;
  }

 private:
  // Walks a whole block and gives the match when it lies there. What stands inside strings is told by the
  // parity of the quotes before it, which holds as long as nothing is escaped.
  const wchar_t* WalkBlock() {
    const CharacterBlock block(at_);
    if (block.Equal(L'\\') != 0) return WalkTo(at_ + CharacterBlock::kSize);
    std::uint32_t inside = block.Equal(L'"');
    for (int shift = 1; shift < CharacterBlock::kSize; shift *= 2) inside ^= inside << shift;
    if (in_string_) inside = ~inside;

    const std::uint32_t opening = block.Equal(open_);
    for (std::uint32_t left = (opening | block.Equal(close_)) & ~inside; left != 0; left &= left - 1) {
      const int place = std::countr_zero(left);
      depth_ += (opening >> place & 1) != 0 ? 1 : -1;
      if (depth_ == 0) return at_ + place;
    }
    in_string_ = (inside >> (CharacterBlock::kSize - 1) & 1) != 0;
    at_ += CharacterBlock::kSize;
    return nullptr;
  }

  // Walks character by character up to `limit`, or one further when an escape lies across it.
  const wchar_t* WalkTo(const wchar_t* limit) {
    for (; at_ < limit; ++at_) {
      if (*at_ == L'"') {
        in_string_ = !in_string_;
      } else if (in_string_) {
        if (*at_ == L'\\' && end_ - at_ > 1) ++at_;
      } else if (*at_ == open_) {
        ++depth_;
      } else if (*at_ == close_ && --depth_ == 0) {
        return at_;
      }
    }
    return nullptr;
  }

  const wchar_t* at_;
  const wchar_t* const end_;
  const wchar_t open_;
  const wchar_t close_;
  int depth_ = 0;
  bool in_string_ = false;
};

}  // namespace

const wchar_t* FindMatch(const wchar_t* at, const wchar_t* end, wchar_t open, wchar_t close) {
  return BracketWalk(at, end, open, close).FindMatch();
}

}  // namespace vek::json
