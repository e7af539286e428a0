#include "addin/ops/sketch/point_array.h"

#include <cstddef>
#include <utility>

#include "addin/server/json_reader.h"
#include "addin/text/wide_text.h"

namespace vek::sketch {
namespace {

// One element with its brackets.
bool ParsePoint(std::wstring_view element, PlanePoint& point) {
  if (element.front() == L'{')
    return JsonReadNumber(element, L"x", point.x) && JsonReadNumber(element, L"y", point.y);
  const std::wstring_view inner = element.substr(1, element.size() - 2);
  const std::size_t comma = inner.find(L',');
  if (comma == std::wstring_view::npos) return false;
  point.x = ReadLeadingNumber(inner.substr(0, comma));
  point.y = ReadLeadingNumber(inner.substr(comma + 1));
  return true;
}

}  // namespace

bool ParsePointArray(std::wstring_view text, std::vector<PlanePoint>& points) {
  points.clear();
  int depth = 0;
  std::size_t opened_at = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const wchar_t c = text[i];
    if (c == L'[' || c == L'{') {
      if (depth == 1) opened_at = i;
      ++depth;
    } else if (c == L']' || c == L'}') {
      --depth;
      if (depth != 1) continue;
      PlanePoint point;
      if (!ParsePoint(text.substr(opened_at, i + 1 - opened_at), point)) return false;
      points.push_back(point);
    }
  }
  return !points.empty();
}

bool ParseContourArray(std::wstring_view text, std::vector<std::vector<PlanePoint>>& contours) {
  contours.clear();
  if (text.empty() || text.front() != L'[') return false;
  int depth = 0;
  std::size_t opened_at = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == L'[') {
      if (depth == 1) opened_at = i;
      ++depth;
    } else if (text[i] == L']') {
      --depth;
      std::vector<PlanePoint> contour;
      if (depth == 1 && ParsePointArray(text.substr(opened_at, i + 1 - opened_at), contour) &&
          contour.size() >= 2)
        contours.push_back(std::move(contour));
    }
  }
  return !contours.empty();
}

}  // namespace vek::sketch
