#include "deploy/helper/moves.h"

#include <cstddef>

#include "deploy/helper/disk.h"

namespace vek::helper {
namespace {

bool TakeBack(const std::vector<Move>& moves, std::size_t count) {
  bool all = true;
  while (count-- > 0) {
    // The others are taken back all the same: the nearer to what was, the better.
    if (MoveFileTo(moves[count].to, moves[count].from) != 0) all = false;
  }
  return all;
}

}  // namespace

std::optional<MoveFailure> MoveAll(const std::vector<Move>& moves) {
  for (std::size_t done = 0; done < moves.size(); ++done) {
    const unsigned long error = MoveFileTo(moves[done].from, moves[done].to);
    if (error != 0) return MoveFailure{moves[done].from, error, TakeBack(moves, done)};
  }
  return std::nullopt;
}

}  // namespace vek::helper
