// The orientations in which models are shown, on drawings and in pictures: pure.
#pragma once

#include <string>
#include <string_view>

namespace vek::drawing {

// The matrix that a word means, blanks and case aside, and the word that results tell: "front" (also for an
// empty text), "top", "right", and "iso" (also for "isometric" and "home"). False for any other word, and
// then nothing is written. The matrix is for row vectors, as the host takes it for views.
bool OrientationMatrix(std::wstring_view word, double (&matrix)[4][4], std::wstring& canonical);

}  // namespace vek::drawing
