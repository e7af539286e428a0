// Drawing into the private section of a sketch.
#pragma once

#include <span>
#include <string_view>

#include "addin/ops/sketch/curves.h"
#include "addin/ops/sketch/session.h"

namespace vek::sketch {

// Adds entities to a session's section and records each under its letter. Lengths are millimetres, angles
// radians. A call answers false when the host refuses the entity; what was added before stays.
class SectionPen {
 public:
  // `scale` is model units per millimetre; `construction` makes every entity construction geometry.
  SectionPen(SketchSession& session, double scale, bool construction)
      : session_(session), scale_(scale), construction_(construction), first_(session.entities.size()) {}

  bool Point(PlanePoint at);
  bool Line(const PlaneLine& line);
  // A line that bounds nothing; a revolve turns about it.
  bool Centerline(const PlaneLine& line);
  bool Circle(PlanePoint center, double radius);
  // Counter-clockwise from the start, which is not above the end.
  bool Arc(const PlaneArc& arc);
  // `letter` tells what the points stand for: a spline or an ellipse.
  bool Spline(wchar_t letter, std::span<const PlanePoint> points);
  // An ellipse along the axes of the sketch.
  bool Ellipse(PlanePoint center, double radius_x, double radius_y);
  // The host's text in the box between two corners; an empty font is the host's own. Texts that are too long
  // for the host's record are cut.
  bool Text(PlanePoint low, PlanePoint high, std::wstring_view text, std::wstring_view font);

  SketchSession& session() const { return session_; }
  // The index of the first entity that this pen drew.
  std::size_t first() const { return first_; }

 private:
  template <typename Record>
  bool Add(wchar_t letter, Record& record);
  void Place(double (&coordinates)[2], PlanePoint point) const;

  SketchSession& session_;
  double scale_;
  bool construction_;
  std::size_t first_;
};

}  // namespace vek::sketch
