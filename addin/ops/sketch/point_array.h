// Reading the points of a request. Pure.
#pragma once

#include <string_view>
#include <vector>

namespace vek::sketch {

// A place in the plane of a sketch.
struct PlanePoint {
  double x = 0;
  double y = 0;
};

// Reads an array of [x, y] pairs and {"x", "y"} objects, which may be mixed. Brackets inside strings count
// like any other; a third number of a pair is ignored. False when an element has no comma or lacks a key, and
// when there is no element at all.
bool ParsePointArray(std::wstring_view text, std::vector<PlanePoint>& points);

// Reads an array of such arrays. One that can't be read, or has fewer than two points, is dropped without a
// word. False when none is left.
bool ParseContourArray(std::wstring_view text, std::vector<std::vector<PlanePoint>>& contours);

}  // namespace vek::sketch
