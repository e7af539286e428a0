#include "addin/ops/sketch/geometry.h"

#include <utility>
#include <vector>

#include "addin/ops/common/history.h"
#include "addin/ops/sketch/commit.h"
#include "addin/platform/log.h"
#include "addin/server/json_reader.h"
#include "addin/server/json_writer.h"
#include "addin/text/format.h"

namespace vek::sketch {
namespace {

// The number under `key`, 0 when the client leaves it out.
double NumberOrZero(const std::wstring& arguments, std::wstring_view key) {
  double number = 0;
  JsonReadNumber(arguments, key, number);
  return number;
}

bool ReadPositive(const std::wstring& arguments, std::wstring_view key, double& number) {
  return JsonReadNumber(arguments, key, number) && number > 0;
}

PlanePoint ReadCenter(const std::wstring& arguments) {
  return {NumberOrZero(arguments, L"cx"), NumberOrZero(arguments, L"cy")};
}

// The points "x1", "y1" and "x2", "y2".
PlaneLine ReadTwoPoints(const std::wstring& arguments) {
  return {{NumberOrZero(arguments, L"x1"), NumberOrZero(arguments, L"y1")},
          {NumberOrZero(arguments, L"x2"), NumberOrZero(arguments, L"y2")}};
}

bool ReadConstruction(const std::wstring& arguments) {
  return JsonReadBool(arguments, L"construction", false);
}

bool ReadPoints(const std::wstring& arguments, std::vector<PlanePoint>& points) {
  return ParsePointArray(JsonReadRaw(arguments, L"points"), points) && points.size() >= 2;
}

bool ReadEllipse(const std::wstring& arguments, EllipseShape& ellipse) {
  if (!ReadPositive(arguments, L"radius_x", ellipse.radius_x) ||
      !ReadPositive(arguments, L"radius_y", ellipse.radius_y))
    return false;
  ellipse.center = ReadCenter(arguments);
  ellipse.rotation_deg = NumberOrZero(arguments, L"rotation_deg");
  return true;
}

constexpr const wchar_t* kRadiusMissing = L"'radius' is required and must be positive.";
constexpr const wchar_t* kRadiiMissing = L"'radius_x' and 'radius_y' are required and must be positive.";
constexpr const wchar_t* kSweepMissing = L"'sweep_angle_deg' is required.";
constexpr const wchar_t* kPointsMissing = L"'points' must contain at least two [x, y] entries.";

// A line, or a centerline, with its log lines; the first failure's message, or none.
const wchar_t* DrawLine(SectionPen& pen, const PlaneLine& line, bool is_centerline) {
  if (is_centerline ? pen.Centerline(line) : pen.Line(line)) {
    LogOperation(
        Format(L"Sketch Line: entity added id=%d; committing", pen.session().entities.back().entity_id));
    return nullptr;
  }
  LogOperation(L"Sketch Line: ProSectionEntityAdd failed");
  return is_centerline ? L"Failed to add centerline to section." : L"Failed to add line to section.";
}

}  // namespace

CreoMcpOperationResult CommitDrawing(std::wstring_view operation, const std::wstring& arguments,
                                     const SectionPen& pen, std::wstring message) {
  SketchSession& session = pen.session();
  if (auto committed = CommitSketch(session); !committed.success) return committed;
  std::wstring data = Format(L"{\"sketch_name\":\"%s\",\"entity\":\"%s\"}", JsonEscape(session.name),
                             JsonEscape(EntityLabelsFrom(session, pen.first())));
  return FinishDrawResult(operation, arguments, MakeSuccessResult(std::move(message), std::move(data)));
}

CreoMcpOperationResult FinishDrawResult(std::wstring_view operation, const std::wstring& arguments,
                                        CreoMcpOperationResult result) {
  if (!result.success) return result;
  const std::wstring sketch = JsonReadStringArgument(result.dataJson, L"sketch_name");
  const std::wstring entity = JsonReadStringArgument(result.dataJson, L"entity");
  if (!sketch.empty() && !entity.empty()) PushDrawEntity(std::wstring(operation), arguments, sketch, entity);
  return result;
}

CreoMcpOperationResult SketchPoint(const std::wstring& arguments) {
  SketchSession* session = nullptr;
  double scale = 1;
  if (auto begun = BeginGeometryOp(arguments, session, scale); !begun.success) return begun;
  PlanePoint at;
  if (!JsonReadNumber(arguments, L"x", at.x) || !JsonReadNumber(arguments, L"y", at.y))
    return MakeFailureResult(L"'x' and 'y' are required.");

  SectionPen pen(*session, scale, false);
  if (!pen.Point(at)) return MakeFailureResult(L"Failed to add point to section.");
  return CommitDrawing(L"api_sketch_point", arguments, pen,
                       Format(L"Point (%g, %g) mm added to '%s'.", at.x, at.y, session->name));
}

CreoMcpOperationResult SketchLine(const std::wstring& arguments) {
  SketchSession* session = nullptr;
  double scale = 1;
  if (auto begun = BeginGeometryOp(arguments, session, scale); !begun.success) {
    LogOperation(L"Sketch Line: BeginGeometryOp failed");
    return begun;
  }
  const PlaneLine line = ReadTwoPoints(arguments);
  // Both flags ask for an axis; neither makes the line construction geometry.
  const bool is_centerline = ReadConstruction(arguments) || JsonReadBool(arguments, L"centerline", false);
  LogOperation(Format(L"Sketch Line: sketch='%s' scale=%g pts=(%g,%g)->(%g,%g) construction=%d centerline=%d",
                      session->name, scale, line.from.x * scale, line.from.y * scale, line.to.x * scale,
                      line.to.y * scale, static_cast<int>(ReadConstruction(arguments)),
                      static_cast<int>(is_centerline)));

  SectionPen pen(*session, scale, false);
  if (const wchar_t* failure = DrawLine(pen, line, is_centerline)) return MakeFailureResult(failure);
  return CommitDrawing(L"api_sketch_line_two_points", arguments, pen,
                       is_centerline
                           ? Format(L"Centerline added to '%s' and sketch committed.", session->name)
                           : Format(L"Line added to '%s' and sketch committed.", session->name));
}

CreoMcpOperationResult SketchCircle(const std::wstring& arguments) {
  SketchSession* session = nullptr;
  double scale = 1;
  if (auto begun = BeginGeometryOp(arguments, session, scale); !begun.success) return begun;
  double radius = 0;
  if (!ReadPositive(arguments, L"radius", radius)) return MakeFailureResult(kRadiusMissing);

  SectionPen pen(*session, scale, ReadConstruction(arguments));
  if (!pen.Circle(ReadCenter(arguments), radius))
    return MakeFailureResult(L"Failed to add circle to section.");
  return CommitDrawing(L"api_sketch_circle_center_radius", arguments, pen,
                       Format(L"Circle (r=%g mm) added to '%s'.", radius, session->name));
}

CreoMcpOperationResult SketchRectangle(const std::wstring& arguments) {
  SketchSession* session = nullptr;
  double scale = 1;
  if (auto begun = BeginGeometryOp(arguments, session, scale); !begun.success) return begun;

  // The corners are not sorted: the walk goes the way they were given.
  const auto [from, to] = ReadTwoPoints(arguments);
  const PlanePoint corners[] = {{from.x, from.y}, {to.x, from.y}, {to.x, to.y}, {from.x, to.y}};
  SectionPen pen(*session, scale, ReadConstruction(arguments));
  for (int i = 0; i < 4; ++i) {
    if (!pen.Line({corners[i], corners[(i + 1) % 4]}))
      return MakeFailureResult(L"Failed to add rectangle edges to section.");
  }
  return CommitDrawing(L"api_sketch_rectangle_two_points", arguments, pen,
                       Format(L"Rectangle added to '%s'.", session->name));
}

CreoMcpOperationResult SketchArc(const std::wstring& arguments) {
  SketchSession* session = nullptr;
  double scale = 1;
  if (auto begun = BeginGeometryOp(arguments, session, scale); !begun.success) return begun;
  PlaneArc arc;
  if (!ReadPositive(arguments, L"radius", arc.radius)) return MakeFailureResult(kRadiusMissing);
  double sweep_deg = 0;
  if (!JsonReadNumber(arguments, L"sweep_angle_deg", sweep_deg)) return MakeFailureResult(kSweepMissing);
  const double start_deg = NumberOrZero(arguments, L"start_angle_deg");
  arc.center = ReadCenter(arguments);
  arc.start = DegreesToRadians(start_deg);
  arc.end = DegreesToRadians(start_deg + sweep_deg);
  if (arc.end < arc.start) std::swap(arc.start, arc.end);

  SectionPen pen(*session, scale, ReadConstruction(arguments));
  if (!pen.Arc(arc)) return MakeFailureResult(L"Failed to add arc to section.");
  return CommitDrawing(
      L"api_sketch_arc", arguments, pen,
      Format(L"Arc added to '%s' (start=%g deg, sweep=%g deg).", session->name, start_deg, sweep_deg));
}

CreoMcpOperationResult SketchPolyline(const std::wstring& arguments) {
  SketchSession* session = nullptr;
  double scale = 1;
  if (auto begun = BeginGeometryOp(arguments, session, scale); !begun.success) return begun;
  std::vector<PlanePoint> points;
  if (!ReadPoints(arguments, points)) return MakeFailureResult(kPointsMissing);
  const bool closed = JsonReadBool(arguments, L"closed", false);

  SectionPen pen(*session, scale, ReadConstruction(arguments));
  for (std::size_t i = 1; i < points.size(); ++i) {
    if (!pen.Line({points[i - 1], points[i]}))
      return MakeFailureResult(L"Failed to add polyline segment to section.");
  }
  if (closed && points.size() > 2 && !pen.Line({points.back(), points.front()}))
    return MakeFailureResult(L"Failed to close polyline.");
  return CommitDrawing(L"api_sketch_polyline", arguments, pen,
                       Format(L"Polyline (%d pts, %s) added to '%s'.", static_cast<int>(points.size()),
                              closed ? L"closed" : L"open", session->name));
}

CreoMcpOperationResult SketchSpline(const std::wstring& arguments) {
  SketchSession* session = nullptr;
  double scale = 1;
  if (auto begun = BeginGeometryOp(arguments, session, scale); !begun.success) return begun;
  std::vector<PlanePoint> points;
  if (!ReadPoints(arguments, points)) return MakeFailureResult(kPointsMissing);

  SectionPen pen(*session, scale, ReadConstruction(arguments));
  if (!pen.Spline(L'S', points)) return MakeFailureResult(L"Failed to add spline to section.");
  return CommitDrawing(
      L"api_sketch_spline", arguments, pen,
      Format(L"Spline (%d pts) added to '%s'.", static_cast<int>(points.size()), session->name));
}

CreoMcpOperationResult SketchEllipse(const std::wstring& arguments) {
  SketchSession* session = nullptr;
  double scale = 1;
  if (auto begun = BeginGeometryOp(arguments, session, scale); !begun.success) return begun;
  EllipseShape ellipse;
  if (!ReadEllipse(arguments, ellipse)) return MakeFailureResult(kRadiiMissing);

  SectionPen pen(*session, scale, ReadConstruction(arguments));
  if (IsUnrotated(ellipse)) {
    if (!pen.Ellipse(ellipse.center, ellipse.radius_x, ellipse.radius_y))
      return MakeFailureResult(L"Failed to add ellipse to section.");
  } else if (!pen.Spline(L'E', OutlineOf(ellipse))) {
    return MakeFailureResult(L"Failed to add rotated ellipse approximation to section.");
  }
  return CommitDrawing(
      L"api_sketch_ellipse_center_radii", arguments, pen,
      Format(L"Ellipse (rx=%g, ry=%g mm) added to '%s'.", ellipse.radius_x, ellipse.radius_y, session->name));
}

CreoMcpOperationResult SketchEllipseArc(const std::wstring& arguments) {
  SketchSession* session = nullptr;
  double scale = 1;
  if (auto begun = BeginGeometryOp(arguments, session, scale); !begun.success) return begun;
  EllipseShape ellipse;
  if (!ReadEllipse(arguments, ellipse)) return MakeFailureResult(kRadiiMissing);
  double sweep_deg = 0;
  if (!JsonReadNumber(arguments, L"sweep_angle_deg", sweep_deg)) return MakeFailureResult(kSweepMissing);
  const double start_deg = NumberOrZero(arguments, L"start_angle_deg");

  SectionPen pen(*session, scale, ReadConstruction(arguments));
  if (!pen.Spline(L'S', ArcOf(ellipse, start_deg, sweep_deg)))
    return MakeFailureResult(L"Failed to add elliptical arc approximation to section.");
  return CommitDrawing(L"api_sketch_ellipse_arc", arguments, pen,
                       Format(L"Elliptical arc (rx=%g, ry=%g mm, sweep=%g deg) added to '%s'.",
                              ellipse.radius_x, ellipse.radius_y, sweep_deg, session->name));
}

CreoMcpOperationResult SketchSlot(const std::wstring& arguments) {
  SketchSession* session = nullptr;
  double scale = 1;
  if (auto begun = BeginGeometryOp(arguments, session, scale); !begun.success) return begun;
  double length = 0;
  double width = 0;
  if (!JsonReadNumber(arguments, L"length_mm", length) || !JsonReadNumber(arguments, L"width_mm", width))
    return MakeFailureResult(L"'length_mm' and 'width_mm' are required.");
  if (!(length > width)) return MakeFailureResult(L"'length_mm' must be greater than 'width_mm'.");

  const SlotShape slot = SlotOf(length, width, ReadCenter(arguments), NumberOrZero(arguments, L"angle_deg"));
  SectionPen pen(*session, scale, ReadConstruction(arguments));
  if (!pen.Line(slot.lines[0]) || !pen.Line(slot.lines[1]) || !pen.Arc(slot.arcs[0]) ||
      !pen.Arc(slot.arcs[1]))
    return MakeFailureResult(L"Failed to add slot geometry to section.");
  return CommitDrawing(L"api_sketch_slot", arguments, pen,
                       Format(L"Slot (length=%g, width=%g mm) added to '%s'.", length, width, session->name));
}

}  // namespace vek::sketch
