#include "bench/kernel/sight.h"

#include <cmath>

namespace bench::kernel {

using nlohmann::json;

Sight ReadSight(const Fields& request) {
  const json& rows = request.Array("view");
  double at[3][3];
  if (rows.size() != 3) request.Complain("'view' must have three rows");
  for (int row = 0; row < 3; ++row) {
    if (!rows[row].is_array() || rows[row].size() != 3) request.Complain("each row of 'view' has 3 numbers");
    for (int column = 0; column < 3; ++column) {
      if (!rows[row][column].is_number()) request.Complain("each row of 'view' has 3 numbers");
      at[row][column] = rows[row][column].get<double>();
    }
  }
  const auto column = [&at](int number) { return gp_XYZ(at[0][number], at[1][number], at[2][number]); };
  const Sight sight{column(0), column(1), column(2)};
  constexpr double kSquare = 1e-6;
  const bool turned = std::abs(sight.right.Modulus() - 1) < kSquare &&
                      std::abs(sight.up.Modulus() - 1) < kSquare &&
                      std::abs(sight.right.Dot(sight.up)) < kSquare &&
                      (sight.right.Crossed(sight.up) - sight.toward).Modulus() < kSquare;
  if (!turned) request.Complain("'view' must be a rotation");
  return sight;
}

}  // namespace bench::kernel
