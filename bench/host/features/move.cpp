// The move: the whole solid turned and shifted by a matrix.
#include <cmath>
#include <nlohmann/json.hpp>

#include "bench/host/features/feature_kind.h"

namespace bench {
namespace {

constexpr int kMove = 1254;
constexpr int kMoved = 2213;
constexpr int kMatrixElement = 4309;
constexpr int kByMatrix = 10;
constexpr int kWholeSolid = 4;  // the type of a surface instruction

constexpr double kTolerance = 1e-8;

bool IsWholeSolid(const Collection& collection) {
  if (!collection.of_surfaces || collection.instructions.size() != 1) return false;
  const CollectionInstruction& instruction = collection.instructions.front();
  return instruction.type == kWholeSolid && instruction.include && instruction.items.empty();
}

Vector3 Row(const Matrix& matrix, int row) {
  return {matrix[row][0], matrix[row][1], matrix[row][2]};
}

// Rows are where the axes and the origin go, in units of the model. What is no number meets no comparison.
bool IsRigidMotion(const Matrix& matrix) {
  for (int row = 0; row < 4; ++row) {
    if (matrix[row][3] != (row == 3 ? 1 : 0)) return false;
    for (const double value : matrix[row])
      if (!std::isfinite(value)) return false;
  }
  const Vector3 x = Row(matrix, 0), y = Row(matrix, 1), z = Row(matrix, 2);
  const Vector3 across = Cross(x, y);
  for (int i = 0; i < 3; ++i)
    if (!(std::abs(across[i] - z[i]) < kTolerance)) return false;
  return std::abs(Length(x) - 1) < kTolerance && std::abs(Length(y) - 1) < kTolerance &&
         std::abs(Dot(x, y)) < kTolerance;
}

const Matrix& MatrixIn(const ElementNode& tree) {
  return std::get<Matrix>(tree.Find({4300, 4301, 4306, 4307, kMatrixElement})->value);
}

class MoveKind : public FeatureKind {
 public:
  ProFeattype Type(const ElementNode&) const override { return kMove; }

  nlohmann::json Recipe(const Feature& feature, const Model& model) const override {
    const double mm = MillimetresPer(model.length_unit);
    const Matrix& matrix = MatrixIn(*feature.tree);
    const Vector3 origin = Row(matrix, 3);
    return {{"kind", "move"},
            {"x", Row(matrix, 0)},
            {"y", Row(matrix, 1)},
            {"z", Row(matrix, 2)},
            {"origin", Vector3{origin[0] * mm, origin[1] * mm, origin[2] * mm}}};
  }

 protected:
  std::span<const ElementRule> Rules() const override {
    static const std::vector<ElementRule> rules{
        {{387}, true, {kMove}},
        {{5471}},
        {{5471, kMoved}},
        {{5400}, true, {0}},
        {{4300}},
        {{4300, 4301}},
        {{4300, 4301, 4306}},
        {{4300, 4301, 4306, 4307}},
        {{4300, 4301, 4306, 4307, 4308}, true, {kByMatrix}},
        {{4300, 4301, 4306, 4307, kMatrixElement}},
    };
    return rules;
  }

  std::optional<TreeProblem> CheckValues(const ElementNode& tree) const override {
    if (!IsWholeSolid(std::get<Collection>(tree.Find({5471, kMoved})->value)))
      return TreeProblem{kMoved, "is not the whole solid"};
    if (!IsRigidMotion(MatrixIn(tree))) return TreeProblem{kMatrixElement, "is no rigid motion"};
    return std::nullopt;
  }
};

}  // namespace

bool IsMove(const ElementNode& tree) {
  return IntegerAt(tree, {387}) == kMove;
}

const FeatureKind& Move() {
  static const MoveKind kind;
  return kind;
}

}  // namespace bench
