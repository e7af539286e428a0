// Places of bodies in space: rotations in column form with the translation in the last column.
#pragma once

#include <ProToolkit.h>

#include <optional>

#include "bench/host/model/element_tree.h"
#include "bench/host/model/vector3.h"

namespace bench {

constexpr Matrix kNoMove{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};

Vector3 TranslationOf(const Matrix& place);
Vector3 TurnedBy(const Matrix& place, const Vector3& direction);
Vector3 MovedBy(const Matrix& place, const Vector3& point);

// First `inner`, then `outer`.
Matrix Composed(const Matrix& outer, const Matrix& inner);
Matrix Inverse(const Matrix& place);
// The translation alone in other units.
Matrix Scaled(const Matrix& place, double factor);
Matrix Shifted(const Matrix& place, const Vector3& by);
// Turned about its own origin: right-handed about a direction of length 1.
Matrix Turned(const Matrix& place, const Vector3& axis, double radians);

// A caller's matrix as a place. The translation is the last column, or the last row where the column is zero.
// Nothing for one that isn't finite, or whose rotation stretches, shears or mirrors.
std::optional<Matrix> PlaceIn(const Matrix& matrix);

// The numbers of a caller's array of four rows.
Matrix MatrixOf(const ProMatrix matrix);
void WriteMatrix(const Matrix& matrix, ProMatrix out);

}  // namespace bench
