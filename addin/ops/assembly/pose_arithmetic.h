// The arithmetic of poses: pure.
//
// The host's calls and the add-in's own builders do not agree on where the translation of a 4x4 pose stands,
// so every pose is read through one function that knows both places.
#pragma once

namespace vek::assembly {

// A pose, the identity unless told otherwise. Lengths are model units.
struct Pose {
  double matrix[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
};

struct Translation {
  double x = 0, y = 0, z = 0;
};

// How far a pose may be from where it was asked to be, in model units.
inline constexpr double kPoseTolerance = 0.001;

// The last column, or the last row when the column is zero and the row isn't.
Translation PoseTranslation(const Pose& pose);

// Whether no component of the translation is further than `tolerance` from `target`. Rotation isn't compared.
bool PoseMatches(const Pose& pose, const Translation& target, double tolerance = kPoseTolerance);

// No rotation, the translation in the last column.
Pose TranslationInColumn(const Translation& to);
// No rotation, the translation in the last row.
Pose TranslationInRow(const Translation& to);
// The rotation of `pose` as it stands, its translation in the last column, the last row (0, 0, 0, 1).
Pose ColumnForm(const Pose& pose);

}  // namespace vek::assembly
