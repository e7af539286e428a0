// Several files moved as one.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vek::helper {

// Within one disk; nothing stands at `to`.
struct Move {
  std::wstring from;
  std::wstring to;
};

struct MoveFailure {
  std::wstring path;        // of the file that the system refused to move
  unsigned long error = 0;  // the system's
  bool taken_back = true;   // whether everything is again where it was
};

// Makes the moves in their order. When one is refused, those before it are taken back in the opposite order.
std::optional<MoveFailure> MoveAll(const std::vector<Move>& moves);

}  // namespace vek::helper
