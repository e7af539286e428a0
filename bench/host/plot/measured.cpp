#include "bench/host/plot/measured.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

#include "bench/host/features/dimensions.h"
#include "bench/host/features/feature_kind.h"
#include "bench/host/model/evaluation.h"
#include "bench/host/model/section_data.h"
#include "bench/host/plot/svg_writer.h"

namespace bench {
namespace {

using Measure = decltype(ViewDimension::measure);

constexpr double kSamePlace = 1e-4;  // mm
// The sine below which directions count as parallel.
constexpr double kParallel = 1e-6;

// What is looked at: one dimension of a part in one view. Lengths of the model are millimetres here.
struct Look {
  const Model& part;
  const Feature& feature;
  const DrawingView& view;
  double mm;
  double value;

  Vector3 InSpace(const Point2& point) const {
    const PlaneFrame& plane = feature.plane;
    return mm * (plane.origin + point[0] * plane.x + point[1] * plane.y);
  }
};

bool Same(double a, double b) {
  return std::abs(a - b) < kSamePlace;
}

// Which of the view's axes the direction runs along; nothing when it runs askew or into the sheet.
std::optional<int> SheetAxis(const DrawingView& view, const Vector3& direction) {
  for (const int axis : {0, 1})
    if (std::abs(std::abs(Dot(view.Axis(axis), direction)) - 1) < kParallel) return axis;
  return std::nullopt;
}

// Adds what of a face lies along the other axis; false as long as there was none.
void Widen(std::optional<Vector2>& reach, double place) {
  reach = reach ? Vector2{std::min((*reach)[0], place), std::max((*reach)[1], place)} : Vector2{place, place};
}

// Where the planar faces square to the direction lie that stand at that height along it.
std::optional<Vector2> ReachAt(const Look& look, const Vector3& direction, double height, int axis) {
  std::optional<Vector2> reach;
  for (const FaceInfo& face : look.part.topology.faces) {
    if (face.type != "plane" || Length(Cross(face.axis, direction)) > kParallel) continue;
    if (!Same(Dot(face.point, direction), height)) continue;
    for (const Vector3& corner : {face.low, face.high}) Widen(reach, look.view.Projected(corner)[1 - axis]);
  }
  return reach;
}

LinearMeasure Ordered(int axis, double from, const Vector2& reach_at_from, double to,
                      const Vector2& reach_at_to) {
  if (from <= to) return {axis, from, to, reach_at_from, reach_at_to};
  return {axis, to, from, reach_at_to, reach_at_from};
}

Measure BetweenPlanes(const Look& look, const Vector3& direction, double from, double to) {
  const auto axis = SheetAxis(look.view, direction);
  if (!axis || !Same(std::abs(to - from), look.value)) return {};
  const auto reach_at_from = ReachAt(look, direction, from, *axis);
  const auto reach_at_to = ReachAt(look, direction, to, *axis);
  if (!reach_at_from || !reach_at_to) return {};
  const double sense = Dot(look.view.Axis(*axis), direction);
  return Ordered(*axis, sense * from, *reach_at_from, sense * to, *reach_at_to);
}

Measure BetweenPoints(const Look& look, const Vector3& from, const Vector3& to) {
  const double length = Length(to - from);
  if (!Same(length, look.value) || !(length > 0)) return {};
  const auto axis = SheetAxis(look.view, 1 / length * (to - from));
  if (!axis) return {};
  const Vector2 a = look.view.Projected(from), b = look.view.Projected(to);
  const double aside = a[1 - *axis];
  return Ordered(*axis, a[*axis], {aside, aside}, b[*axis], {aside, aside});
}

// Of the feature's own walls of that radius: a round one that is seen as a circle, or else the distance of
// its two sides.
Measure OfWall(const Look& look, double radius, bool is_diameter) {
  for (const FaceInfo& face : look.part.topology.faces) {
    if (face.feature != look.feature.id || face.type != "cylinder" || !Same(face.radius, radius)) continue;
    const Vector2 center = look.view.Projected(face.origin);
    if (Length(Cross(face.axis, look.view.Axis(2))) < kParallel) {
      const bool whole = face.u[1] - face.u[0] > 2 * std::numbers::pi - kParallel;
      const double u = (face.u[0] + face.u[1]) / 2;
      const Vector3 middle =
          face.origin + radius * (std::cos(u) * face.x + std::sin(u) * Cross(face.axis, face.x));
      const Vector2 at = look.view.Projected(middle);
      const double angle = whole ? std::numbers::pi / 4 : std::atan2(at[1] - center[1], at[0] - center[0]);
      return RoundMeasure{center, radius, angle};
    }
    const auto along = SheetAxis(look.view, face.axis);
    if (!along || !is_diameter) continue;
    const Vector2 one = look.view.Projected(face.origin + face.v[0] * face.axis);
    const Vector2 other = look.view.Projected(face.origin + face.v[1] * face.axis);
    const Vector2 reach{std::min(one[*along], other[*along]), std::max(one[*along], other[*along])};
    const int across = 1 - *along;
    return LinearMeasure{across, center[across] - radius, center[across] + radius, reach, reach};
  }
  return {};
}

Measure OfHoleDepth(const Look& look) {
  for (const FaceInfo& face : look.part.topology.faces)
    if (face.feature == look.feature.id && face.type == "cylinder") {
      const auto axis = SheetAxis(look.view, face.axis);
      if (!axis || !Same(face.v[1] - face.v[0], look.value)) continue;
      const double middle = look.view.Projected(face.origin)[1 - *axis];
      const Vector2 sides{middle - face.radius, middle + face.radius};
      return Ordered(*axis, look.view.Projected(face.origin + face.v[0] * face.axis)[*axis], sides,
                     look.view.Projected(face.origin + face.v[1] * face.axis)[*axis], sides);
    }
  return {};
}

// A depth of an extrude lies on the one side of its plane or on the other, or half on each.
Measure OfExtrudeDepth(const Look& look) {
  const Vector3 normal = look.feature.plane.Normal();
  const double base = look.mm * Dot(look.feature.plane.origin, normal);
  const double half = look.value / 2;
  for (const auto& [from, to] : {std::pair{0.0, look.value}, {0.0, -look.value}, {-half, half}}) {
    const Measure measure = BetweenPlanes(look, normal, base + from, base + to);
    if (!std::holds_alternative<std::monostate>(measure)) return measure;
  }
  return {};
}

Measure OfSection(const Look& look, const SectionDimension& dimension) {
  constexpr int kLength = 1, kRadius = 3, kDiameter = 4;
  if (!look.feature.section || dimension.targets.empty()) return {};
  const auto found = look.feature.section->entities.find(dimension.targets.front().entity);
  if (found == look.feature.section->entities.end()) return {};
  const SectionEntity& entity = found->second;
  if (dimension.type == kLength)
    return BetweenPoints(look, look.InSpace(entity.first), look.InSpace(entity.second));
  if (dimension.type == kRadius) return OfWall(look, look.value, false);
  if (dimension.type == kDiameter) return OfWall(look, look.value / 2, true);
  return {};
}

// A word for how the value is written: as a length, or with the sign of a radius or a diameter.
enum class Writing { kPlain, kRadius, kDiameter };

struct Kind {
  Writing writing = Writing::kPlain;
  Measure (*measure)(const Look& look) = nullptr;
};

Kind KindOf(const std::vector<int>& path) {
  struct Entry {
    std::vector<int> path;
    Kind kind;
  };
  static const std::vector<Entry> entries{
      {{515, 429, 434}, {Writing::kPlain, OfExtrudeDepth}},
      {{515, 428, 431}, {Writing::kPlain, OfExtrudeDepth}},
      {{1671, 82}, {Writing::kDiameter, [](const Look& look) { return OfWall(look, look.value / 2, true); }}},
      {{1671, 1684, 1686, 434}, {Writing::kPlain, OfHoleDepth}},
  };
  const auto found = std::ranges::find(entries, path, &Entry::path);
  return found == entries.end() ? Kind{} : found->kind;
}

std::wstring Written(double value, bool is_angle, Writing writing) {
  const std::wstring number = NumberText(value);
  if (is_angle) return number + L"°";
  if (writing == Writing::kRadius) return L"R" + number;
  if (writing == Writing::kDiameter) return L"Ø" + number;
  return number;
}

ViewDimension Described(const Look& look, const Dimension& dimension, double value) {
  constexpr int kRound = 913, kRadius = 3, kDiameter = 4;
  ViewDimension described{dimension.Symbol(), {}, {}};
  Writing writing = Writing::kPlain;
  if (dimension.source.element_path.empty()) {
    const SectionDimension& number = look.feature.section->dimensions.at(dimension.source.section_dimension);
    if (number.type == kRadius) writing = Writing::kRadius;
    if (number.type == kDiameter) writing = Writing::kDiameter;
    if (!dimension.is_angle) described.measure = OfSection(look, number);
  } else if (look.feature.type == kRound) {
    writing = Writing::kRadius;
    described.measure = OfWall(look, look.value, false);
  } else {
    const Kind kind = KindOf(dimension.source.element_path);
    writing = kind.writing;
    if (kind.measure) described.measure = kind.measure(look);
  }
  described.text = Written(value, dimension.is_angle, writing);
  return described;
}

// Whether something was made of the dimension's sketch that has the same number.
bool IsCarriedOn(Model& part, const Dimension& dimension, double value) {
  if (!dimension.source.element_path.empty()) return false;
  return std::ranges::any_of(part.dimensions, [&](const Dimension& other) {
    if (other.feature == dimension.feature || !(other.source == dimension.source)) return false;
    const Feature* made = part.FindFeature(other.feature);
    return made && made->sketch == dimension.feature && ValueOf(part, other) == value;
  });
}

}  // namespace

std::vector<ViewDimension> DimensionsOf(const Drawing& drawing, const DrawingView& view) {
  std::vector<ViewDimension> dimensions;
  Model* part = drawing.SolidOf(view);
  if (!part) return dimensions;
  const double mm = MillimetresPer(part->length_unit);
  for (const int id : view.shown_dimensions) {
    const Dimension* dimension = FindDimension(*part, id);
    const auto value = dimension ? ValueOf(*part, *dimension) : std::nullopt;
    if (!value || IsCarriedOn(*part, *dimension, *value)) continue;
    const Look look{*part, *part->FindFeature(dimension->feature), view, mm, mm * *value};
    dimensions.push_back(Described(look, *dimension, *value));
  }
  return dimensions;
}

}  // namespace bench
