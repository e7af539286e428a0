// The solids that extrusions make: each depth mode in both directions, added and cut, straight and tapered,
// on each plane. Volumes, outlines and centres of mass are worked out here.
#include <gtest/gtest.h>

#include <algorithm>
#include <numbers>
#include <tuple>

#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "tests/operations/feature_test.h"

namespace vek::support {
namespace {

// The section of all extrusions here: 1 ≤ s ≤ 4, 2 ≤ t ≤ 7.
constexpr double kS0 = 1, kS1 = 4, kT0 = 2, kT1 = 7;
constexpr double kWidth = kS1 - kS0, kHeight = kT1 - kT0;

constexpr double kDepth = 5, kOtherDepth = 8;

enum class Mode { kBlind, kBothSides, kTwo, kLast, kNext };

struct ExtrudeCase {
  Mode mode;
  bool against_normal;
  bool is_cut;
  double taper_deg;

  // By how much each side of the section moves in for a unit of distance from its plane.
  double Narrowing() const { return std::tan(taper_deg * std::numbers::pi / 180); }
};

// All cases of one plane, joined or cut.
std::vector<ExtrudeCase> CasesOf(std::initializer_list<Mode> modes, bool is_cut) {
  std::vector<ExtrudeCase> cases;
  for (const Mode mode : modes)
    for (const bool against : {false, true})
      for (const double taper : {0.0, 3.0, -3.0}) cases.push_back({mode, against, is_cut, taper});
  return cases;
}

// A stretch of distances from the sketch plane, on one side of it.
struct Stretch {
  int side;  // 1 along the normal, -1 against it
  double from, to;
};

// What stands over a stretch. At the distance d the section is (a - 2kd) by (b - 2kd), so that the volume up
// to d is
//   a b d - (a + b) k d² + 4/3 k² d³
// and its first moment along the normal
//   a b d²/2 - 2/3 (a + b) k d³ + k² d⁴.
// It narrows about its middle, so the centre stays over that of the rectangle.
SolidSum Prism(const Stretch& stretch, double k) {
  const double area = kWidth * kHeight, sides = kWidth + kHeight;
  const auto volume = [=](double d) { return area * d - sides * k * d * d + 4.0 / 3 * k * k * d * d * d; };
  const auto moment = [=](double d) {
    return area * d * d / 2 - 2.0 / 3 * sides * k * d * d * d + k * k * d * d * d * d;
  };
  SolidSum sum{volume(stretch.to) - volume(stretch.from), {}};
  sum.moment[0] = sum.volume * (kS0 + kS1) / 2;
  sum.moment[1] = sum.volume * (kT0 + kT1) / 2;
  sum.moment[2] = stretch.side * (moment(stretch.to) - moment(stretch.from));
  return sum;
}

std::wstring ExtrudeArguments(const ExtrudeCase& each) {
  const double sign = each.against_normal ? -1 : 1;
  // Symmetric depth is the whole depth.
  const double distance = sign * (each.mode == Mode::kBothSides ? 2 * kDepth : kDepth);
  std::wstring extent;
  if (each.mode == Mode::kBothSides) extent = L",\"both_sides\":true";
  if (each.mode == Mode::kTwo) extent = Format(L",\"distance2_mm\":%g", kOtherDepth);
  if (each.mode == Mode::kLast) extent = L",\"extent_type\":\"last\"";
  if (each.mode == Mode::kNext) extent = L",\"extent_type\":\"next\"";
  return Format(LR"({"sketch_name":"SECTION","distance_mm":%g,"operation":"%s","taper_angle_deg":%g%s})",
                distance, each.is_cut ? L"cut" : L"join", each.taper_deg, extent);
}

// How far the extrusion goes, where the body ends at the distance `last` and its next surface is at `next`.
std::vector<Stretch> ExtentOf(const ExtrudeCase& each, double last, double next) {
  const int side = each.against_normal ? -1 : 1;
  if (each.mode == Mode::kBothSides) return {{1, 0, kDepth}, {-1, 0, kDepth}};
  if (each.mode == Mode::kTwo) return {{side, 0, kDepth}, {-side, 0, kOtherDepth}};
  if (each.mode == Mode::kLast) return {{side, 0, last}};
  if (each.mode == Mode::kNext) return {{side, 0, next}};
  return {{side, 0, kDepth}};
}

class ExtrudeSolids : public FeatureTest {
 protected:
  // The section on a plane of the part.
  void DrawSection(const SketchFrame& frame) { Rectangle(L"SECTION", frame.plane, kS0, kT0, kS1, kT1); }

  // Runs the extrusion, holds what came of it against `expected`, and deletes it.
  void Check(const ExtrudeCase& each, const SketchFrame& frame, const SolidSum& expected,
             const bench::Box& outline) {
    const std::wstring arguments = ExtrudeArguments(each);
    SCOPED_TRACE(EncodeUtf8(frame.plane + arguments));
    const std::wstring name =
        Create(each.mode == Mode::kTwo ? L"api_feature_extrude_advanced" : L"api_feature_extrude", arguments);
    if (name.empty()) return;
    ExpectSolid(frame, expected, outline);
    Delete(name);
  }
};

class ExtrudeInAnEmptyPart : public ExtrudeSolids, public testing::WithParamInterface<SketchFrame> {};

TEST_P(ExtrudeInAnEmptyPart, StandsOnItsSection) {
  const SketchFrame frame = GetParam();
  DrawSection(frame);
  for (const ExtrudeCase& each : CasesOf({Mode::kBlind, Mode::kBothSides, Mode::kTwo}, false)) {
    const double k = each.Narrowing();
    SolidSum expected;
    double low = 0, high = 0;
    for (const Stretch& stretch : ExtentOf(each, 0, 0)) {
      expected = expected + Prism(stretch, k);
      (stretch.side > 0 ? high : low) = stretch.side * stretch.to;
    }
    // A section that widens is widest at the far end.
    const double wider = std::max(0.0, -k * std::max(-low, high));
    Check(each, frame, expected, {{kS0 - wider, kT0 - wider, low}, {kS1 + wider, kT1 + wider, high}});
  }
}

// A body in which the section meets walls: a comb of 10 × 10 × 20, whose teeth lie across the normal in the
// same way on both sides of the plane, with a spine of thickness 1 that joins them, clear of the section.
struct Comb {
  std::vector<std::pair<double, double>> teeth;  // along the normal
  double next;                                   // where the section first meets or leaves the body
};
constexpr double kSize = 10, kSpine = 1;

class ExtrudeAgainstABody : public ExtrudeSolids,
                            public testing::WithParamInterface<std::tuple<SketchFrame, bool>> {
 protected:
  // The comb, piece by piece. Each is drawn on a plane that holds the normal w and one axis of the sketch,
  // which `a` counts, and drawn out from 0 to 10 along the other axis.
  SolidSum BuildComb(const SketchFrame& frame, const Comb& comb) {
    SolidSum sum = AddPiece(frame, kSize - kSpine, kSize, -kSize, kSize);
    for (const auto& [w0, w1] : comb.teeth) sum = sum + AddPiece(frame, 0, kSize - kSpine, w0, w1);
    return sum;
  }

 private:
  SolidSum AddPiece(const SketchFrame& frame, double a0, double a1, double w0, double w1) {
    const std::wstring name = Format(L"PIECE%d", ++pieces_);
    const bool front = frame.plane == std::wstring_view(L"FRONT");
    const bool right = frame.plane == std::wstring_view(L"RIGHT");
    // FRONT: drawn on TOP, whose right is a and whose up is -w. TOP: drawn on FRONT with a to the right and w
    // up. RIGHT: drawn on FRONT with w to the right and a up.
    if (front) Rectangle(name, L"TOP", a0, -w0, a1, -w1);
    if (right) Rectangle(name, L"FRONT", w0, a0, w1, a1);
    if (!front && !right) Rectangle(name, L"FRONT", a0, w0, a1, w1);
    // The other axis of the sketch is +Y for FRONT, along the normal of TOP; for TOP and RIGHT it is -Z,
    // against the normal of FRONT.
    Succeed(L"api_feature_extrude",
            Format(LR"({"sketch_name":"%s","distance_mm":%g})", name, front ? kSize : -kSize));
    return right ? BoxPiece({0, a0, w0}, {kSize, a1, w1}) : BoxPiece({a0, 0, w0}, {a1, kSize, w1});
  }

  int pieces_ = 0;
};

// What of a stretch lies in the teeth.
SolidSum PartInTeeth(const Stretch& stretch, const Comb& comb, double k) {
  SolidSum sum;
  for (const auto& [w0, w1] : comb.teeth) {
    const double from = std::max(stretch.from, stretch.side > 0 ? w0 : -w1);
    const double to = std::min(stretch.to, stretch.side > 0 ? w1 : -w0);
    if (from < to) sum = sum + Prism({stretch.side, from, to}, k);
  }
  return sum;
}

TEST_P(ExtrudeAgainstABody, AddsBetweenItsWallsOrTakesThemAway) {
  const auto& [frame, is_cut] = GetParam();
  // A cut needs material where it starts; what is added must not, or the next surface would be that of its
  // own wall.
  const Comb comb =
      is_cut ? Comb{{{-10, -6}, {-4, 4}, {6, 10}}, 4} : Comb{{{-10, -6}, {-4, -2}, {2, 4}, {6, 10}}, 2};
  const SolidSum body = BuildComb(frame, comb);
  DrawSection(frame);
  const bench::Box outline{{0, 0, -kSize}, {kSize, kSize, kSize}};
  ExpectSolid(frame, body, outline);

  for (const ExtrudeCase& each :
       CasesOf({Mode::kBlind, Mode::kBothSides, Mode::kTwo, Mode::kLast, Mode::kNext}, is_cut)) {
    const double k = each.Narrowing();
    SolidSum expected = body;
    for (const Stretch& stretch : ExtentOf(each, kSize, comb.next)) {
      const SolidSum inside = PartInTeeth(stretch, comb, k);
      expected = is_cut ? expected - inside : expected + Prism(stretch, k) - inside;
    }
    Check(each, frame, expected, outline);
  }
  ExpectSolid(frame, body, outline);
}

constexpr auto kFrames = {kFront, kTop, kRight};

INSTANTIATE_TEST_SUITE_P(Planes, ExtrudeInAnEmptyPart, testing::ValuesIn(kFrames),
                         [](const auto& info) { return EncodeUtf8(info.param.plane); });

INSTANTIATE_TEST_SUITE_P(Planes, ExtrudeAgainstABody,
                         testing::Combine(testing::ValuesIn(kFrames), testing::Bool()), [](const auto& info) {
                           return EncodeUtf8(std::get<0>(info.param).plane) +
                                  (std::get<1>(info.param) ? "_Cut" : "_Join");
                         });

TEST_F(ExtrudeSolids, APartInInchesHasTheSameMillimetres) {
  Current().length_unit = bench::LengthUnit::kInch;
  DrawSection(kTop);
  const ExtrudeCase each{Mode::kTwo, true, false, 3};
  const double k = each.Narrowing();
  Check(each, kTop, Prism({-1, 0, kDepth}, k) + Prism({1, 0, kOtherDepth}, k),
        {{kS0, kT0, -kDepth}, {kS1, kT1, kOtherDepth}});
}

}  // namespace
}  // namespace vek::support
