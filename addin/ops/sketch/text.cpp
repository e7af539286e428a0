#include "addin/ops/sketch/text.h"

#include <algorithm>
#include <cmath>

#include "addin/ops/sketch/geometry.h"
#include "addin/server/json_reader.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::sketch {
namespace {

constexpr double kSamePlaceMm = 1e-9;
constexpr double kNoAngleDeg = 1e-9;
// What a character is taken to be wide, for the alignment only: the host lays the text out.
constexpr double kWidthPerHeight = 0.6;

bool IsClosed(const std::vector<PlanePoint>& contour) {
  const PlanePoint &first = contour.front(), &last = contour.back();
  return std::fabs(first.x - last.x) <= kSamePlaceMm && std::fabs(first.y - last.y) <= kSamePlaceMm;
}

// Where a length begins that is aligned at `at`: there, behind it, or half before it.
double AlignedStart(double at, double length, std::wstring_view word, std::wstring_view begins_there,
                    std::wstring_view ends_there) {
  if (word == begins_there) return at;
  if (word == ends_there) return at - length;
  return at - length * 0.5;
}

std::wstring Alignment(const std::wstring& arguments, std::wstring_view key) {
  const std::wstring word = JsonReadStringArgument(arguments, key);
  return word.empty() ? L"center" : ToLower(word);
}

}  // namespace

CreoMcpOperationResult SketchText(const std::wstring& arguments) {
  SketchSession* session = nullptr;
  double scale = 1;
  if (auto begun = BeginGeometryOp(arguments, session, scale); !begun.success) return begun;
  const std::wstring text = JsonReadStringArgument(arguments, L"text");
  std::vector<std::vector<PlanePoint>> contours;
  if (!ParseContourArray(JsonReadRaw(arguments, L"outlines"), contours))
    return MakeFailureResult(L"'outlines' (array of contour arrays of [x, y] points) is required.");

  SectionPen pen(*session, scale, false);
  int lines = 0;
  for (const auto& contour : contours) {
    for (std::size_t i = 1; i < contour.size(); ++i, ++lines)
      if (!pen.Line({contour[i - 1], contour[i]}))
        return MakeFailureResult(L"Failed to add text outline segment.");
    if (contour.size() <= 2 || IsClosed(contour)) continue;
    if (!pen.Line({contour.back(), contour.front()}))
      return MakeFailureResult(L"Failed to close text outline contour.");
    ++lines;
  }
  return CommitDrawing(L"api_sketch_text", arguments, pen,
                       Format(L"Text '%s' added to '%s': %d contour(s), %d line segment(s).", text,
                              session->name, static_cast<int>(contours.size()), lines));
}

CreoMcpOperationResult SketchTextNative(const std::wstring& arguments) {
  SketchSession* session = nullptr;
  double scale = 1;
  if (auto begun = BeginGeometryOp(arguments, session, scale); !begun.success) return begun;
  const std::wstring text = JsonReadStringArgument(arguments, L"text");
  if (text.empty()) return MakeFailureResult(L"'text' is required.");
  double size = 0;
  if (!JsonReadNumber(arguments, L"fontsize", size) || !(size > 0))
    return MakeFailureResult(L"'fontsize' is required and must be positive.");
  PlanePoint at;
  if (!JsonReadNumber(arguments, L"cx", at.x) || !JsonReadNumber(arguments, L"cy", at.y))
    return MakeFailureResult(L"'cx' and 'cy' are required.");
  double angle_deg = 0;
  JsonReadNumber(arguments, L"angle_deg", angle_deg);

  const double width = static_cast<double>(text.size()) * size * kWidthPerHeight;
  const double left = AlignedStart(at.x, width, Alignment(arguments, L"halign"), L"left", L"right");
  const double low = AlignedStart(at.y, size, Alignment(arguments, L"valign"), L"bottom", L"top");
  SectionPen pen(*session, scale, false);
  if (!pen.Text({left, low}, {left + width, low + size}, text, JsonReadStringArgument(arguments, L"font")))
    return MakeFailureResult(L"Failed to add native text to section.");
  const bool angle_ignored = !(std::fabs(angle_deg) <= kNoAngleDeg);
  return CommitDrawing(
      L"api_sketch_text_native", arguments, pen,
      Format(L"Native text '%s' added to '%s' at (%g, %g) mm, size=%g mm%s.", text, session->name, at.x, at.y,
             size, angle_ignored ? L" (angle_deg ignored: not supported by this Creo SDK)" : L""));
}

}  // namespace vek::sketch
