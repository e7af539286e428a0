#include "addin/ops/sketch/section_pen.h"

#include <Pro2dEntdef.h>

#include <memory>

#include "addin/host/text_buffer.h"

namespace vek::sketch {
namespace {

// The entity types as the host numbers them.
constexpr auto kPoint = static_cast<Pro2dEntType>(1);
constexpr auto kLine = static_cast<Pro2dEntType>(2);
constexpr auto kCenterline = static_cast<Pro2dEntType>(3);
constexpr auto kArc = static_cast<Pro2dEntType>(4);
constexpr auto kCircle = static_cast<Pro2dEntType>(5);
constexpr auto kSpline = static_cast<Pro2dEntType>(8);
constexpr auto kText = static_cast<Pro2dEntType>(9);
constexpr auto kEllipse = static_cast<Pro2dEntType>(12);

}  // namespace

void SectionPen::Place(double (&coordinates)[2], PlanePoint point) const {
  coordinates[0] = point.x * scale_;
  coordinates[1] = point.y * scale_;
}

template <typename Record>
bool SectionPen::Add(wchar_t letter, Record& record) {
  int id = -1;
  if (ProSectionEntityAdd(session_.section, reinterpret_cast<Pro2dEntdef*>(&record), &id) != PRO_TK_NO_ERROR)
    return false;
  if (construction_) ProSectionEntityConstructionSet(session_.section, id, PRO_B_TRUE);
  session_.entities.push_back({letter, id});
  return true;
}

bool SectionPen::Point(PlanePoint at) {
  Pro2dPntdef record{};
  record.type = kPoint;
  Place(record.pnt, at);
  return Add(L'P', record);
}

bool SectionPen::Line(const PlaneLine& line) {
  Pro2dLinedef record{};
  record.type = kLine;
  Place(record.end1, line.from);
  Place(record.end2, line.to);
  return Add(L'L', record);
}

bool SectionPen::Centerline(const PlaneLine& line) {
  Pro2dClinedef record{};
  record.type = kCenterline;
  Place(record.end1, line.from);
  Place(record.end2, line.to);
  return Add(L'A', record);
}

bool SectionPen::Circle(PlanePoint center, double radius) {
  Pro2dCircledef record{};
  record.type = kCircle;
  Place(record.center, center);
  record.radius = radius * scale_;
  return Add(L'C', record);
}

bool SectionPen::Arc(const PlaneArc& arc) {
  Pro2dArcdef record{};
  record.type = kArc;
  Place(record.center, arc.center);
  record.start_angle = arc.start;
  record.end_angle = arc.end;
  record.radius = arc.radius * scale_;
  return Add(L'A', record);
}

bool SectionPen::Spline(wchar_t letter, std::span<const PlanePoint> points) {
  const auto scaled = std::make_unique<Pro2dPnt[]>(points.size());
  for (std::size_t i = 0; i < points.size(); ++i) Place(scaled[i], points[i]);
  Pro2dSplinedef record{};
  record.type = kSpline;
  record.n_points = static_cast<unsigned>(points.size());
  record.point_arr = scaled.get();
  return Add(letter, record);
}

bool SectionPen::Ellipse(PlanePoint center, double radius_x, double radius_y) {
  Pro2dEllipsedef record{};
  record.type = kEllipse;
  Place(record.origin, center);
  record.x_radius = radius_x * scale_;
  record.y_radius = radius_y * scale_;
  return Add(L'E', record);
}

bool SectionPen::Text(PlanePoint low, PlanePoint high, std::wstring_view text, std::wstring_view font) {
  Pro2dTextdef record{};
  record.type = kText;
  Place(record.corner1, low);
  Place(record.corner2, high);
  CopyCut(record.text, text);
  CopyCut(record.font, font);
  return Add(L'T', record);
}

}  // namespace vek::sketch
