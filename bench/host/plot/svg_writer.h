// A picture in SVG, drawn in millimetres from the lower left corner of a sheet.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "bench/host/drawing/projection.h"

namespace bench {

// Wide lines for what is seen, narrow ones at half their width for all else.
enum class Pen { kFrame, kVisible, kNarrow, kHidden, kCentre };

enum class TextAnchor { kStart, kMiddle, kEnd };

// Upwards where it is turned by 90 degrees. The height is that of capital letters.
struct TextStyle {
  double height = 3.5;
  TextAnchor anchor = TextAnchor::kMiddle;
  bool upwards = false;
};

class SvgWriter {
 public:
  SvgWriter(double width, double height);

  void Line(const Vector2& from, const Vector2& to, Pen pen);
  void Lines(const std::vector<Polyline>& lines, Pen pen);
  void Frame(const Rectangle& box, Pen pen);
  void Circle(const Vector2& center, double radius, Pen pen);
  // Through all of the points and back to the first.
  void ClosedCurve(const std::vector<Vector2>& points, Pen pen);
  // A filled arrow head; the direction has the length 1.
  void Arrow(const Vector2& tip, const Vector2& direction);
  // `at` is on the base line.
  void Text(const Vector2& at, std::wstring_view text, const TextStyle& style = {});

  // What is drawn until the end of the group belongs together; the word says what it is.
  void BeginGroup(std::string_view word, std::wstring_view title);
  // What is drawn until the end of the group shows within the closed curve alone.
  void BeginWithin(const std::vector<Vector2>& curve);
  void EndGroup();

  std::string Finished() const;

 private:
  std::string X(double x) const;
  std::string Y(double y) const;
  std::string Path(const std::vector<Polyline>& lines) const;
  std::string ClosedPath(const std::vector<Vector2>& points) const;

  double width_;
  double height_;
  int clips_ = 0;
  std::string body_;
};

// How wide a text is at most, about.
double WidthOf(std::wstring_view text, double height);

// With up to three decimals.
std::wstring NumberText(double number);

}  // namespace bench
