// The solids that extrusions make: each depth mode in both directions, added and cut, straight and tapered,
// on each plane. Volumes, outlines and centres of mass are worked out here.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <numbers>
#include <tuple>

#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "tests/operations/feature_solid_sums.h"
#include "tests/operations/feature_test.h"

namespace vek::support {
namespace {

constexpr double kTolerance = 1e-6;

// The section of all extrusions here: 1 ≤ s ≤ 4, 2 ≤ t ≤ 7.
constexpr double kS0 = 1, kS1 = 4, kT0 = 2, kT1 = 7;
constexpr double kWidth = kS1 - kS0, kHeight = kT1 - kT0;

constexpr double kDepth = 5, kOtherDepth = 8;

enum class Mode { kBlind, kBothSides, kTwo, kLast, kNext };
constexpr Mode kModes[] = {Mode::kBlind, Mode::kBothSides, Mode::kTwo, Mode::kLast, Mode::kNext};

struct ExtrudeCase {
  Mode mode;
  bool against_normal;
  bool is_cut;
  double taper_deg;
};

std::string Describe(const ExtrudeCase& each) {
  return "mode " + std::to_string(static_cast<int>(each.mode)) +
         (each.against_normal ? " against" : " along") + (each.is_cut ? " cut" : " join") + " taper " +
         std::to_string(each.taper_deg);
}

// A stretch of distances from the sketch plane, on one side of it.
struct Stretch {
  int side;  // 1 along the normal, -1 against it
  double from, to;
};

// By how much each side of the section moves in for a unit of distance from its plane.
double Narrowing(double taper_deg) {
  return std::tan(taper_deg * std::numbers::pi / 180);
}

// What stands over a stretch. At the distance d the section is (a - 2kd) by (b - 2kd), so that the volume up
// to d is
//   a b d - (a + b) k d² + 4/3 k² d³
// and its first moment along the normal
//   a b d²/2 - 2/3 (a + b) k d³ + k² d⁴.
// It narrows about its middle, so the centre stays over that of the rectangle.
SolidSum Prism(const Stretch& stretch, double k) {
  const auto volume = [k](double d) {
    return kWidth * kHeight * d - (kWidth + kHeight) * k * d * d + 4.0 / 3 * k * k * d * d * d;
  };
  const auto moment = [k](double d) {
    return kWidth * kHeight * d * d / 2 - 2.0 / 3 * (kWidth + kHeight) * k * d * d * d +
           k * k * d * d * d * d;
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

const wchar_t* OperationOf(const ExtrudeCase& each) {
  return each.mode == Mode::kTwo ? L"api_feature_extrude_advanced" : L"api_feature_extrude";
}

// How far the extrusion goes, where the body ends at the distance `last` and its next surface is at `next`.
std::vector<Stretch> ExtentOf(const ExtrudeCase& each, double last, double next) {
  const int side = each.against_normal ? -1 : 1;
  switch (each.mode) {
    case Mode::kBlind:
      return {{side, 0, kDepth}};
    case Mode::kBothSides:
      return {{1, 0, kDepth}, {-1, 0, kDepth}};
    case Mode::kTwo:
      return {{side, 0, kDepth}, {-side, 0, kOtherDepth}};
    case Mode::kLast:
      return {{side, 0, last}};
    case Mode::kNext:
      return {{side, 0, next}};
  }
  return {};
}

class ExtrudeSolids : public FeatureTest {
 protected:
  void SetUp() override {
    FeatureTest::SetUp();
    NewPart();
  }

  // The section on a plane of the part.
  void DrawSection(const SketchFrame& frame) { Rectangle(L"SECTION", frame.plane, kS0, kT0, kS1, kT1); }

  // Runs the extrusion, holds what came of it against `expected`, and deletes it.
  void Check(const ExtrudeCase& each, const SketchFrame& frame, const SolidSum& expected,
             const bench::Box& outline) {
    SCOPED_TRACE(EncodeUtf8(frame.plane) + " " + Describe(each));
    const auto data = Succeed(OperationOf(each), ExtrudeArguments(each));
    if (!data.is_object()) return;
    CheckSolid(frame, expected, outline);
    Succeed(L"api_feature_delete",
            Format(LR"({"feature_name":"%s"})", DecodeUtf8(data.value("feature_name", ""))));
  }

  void CheckSolid(const SketchFrame& frame, const SolidSum& expected, const bench::Box& outline) {
    EXPECT_NEAR(Volume(), expected.volume, kTolerance * expected.volume);
    const Vector3 mass_center = Current().topology.mass.value_or(bench::MassProperties{}).center;
    const Vector3 center = frame.Place(expected.Center());
    const bench::Box wanted = frame.Place(outline), box = Outline();
    for (int i = 0; i < 3; ++i) {
      EXPECT_NEAR(mass_center[i], center[i], kTolerance * 10) << "axis " << i;
      EXPECT_NEAR(box.low[i], wanted.low[i], kTolerance * 10) << "axis " << i;
      EXPECT_NEAR(box.high[i], wanted.high[i], kTolerance * 10) << "axis " << i;
    }
  }
};

class ExtrudeInAnEmptyPart : public ExtrudeSolids, public testing::WithParamInterface<SketchFrame> {};

TEST_P(ExtrudeInAnEmptyPart, StandsOnItsSection) {
  const SketchFrame frame = GetParam();
  DrawSection(frame);
  for (const Mode mode : {Mode::kBlind, Mode::kBothSides, Mode::kTwo}) {
    for (const bool against : {false, true}) {
      for (const double taper : {0.0, 3.0, -3.0}) {
        const ExtrudeCase each{mode, against, false, taper};
        const double k = Narrowing(taper);
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
  }
}

// A body in which the section meets walls: a comb of 10 × 10 × 20 with teeth over stretches of distances that
// are the same on both sides of the plane, and a spine of thickness 1 that joins them, clear of the section.
struct Comb {
  std::vector<std::pair<double, double>> teeth;  // by distance from the plane, the innermost first
  double next;                                   // where the section first meets or leaves the body
};
constexpr double kSize = 10, kSpine = 1;

class ExtrudeAgainstABody : public ExtrudeSolids,
                            public testing::WithParamInterface<std::tuple<SketchFrame, bool>> {
 protected:
  // The comb's profile lies in a plane that holds the normal w and one axis of the sketch, which `a` counts;
  // it is drawn out from 0 to 10 along the other axis.
  void BuildComb(const SketchFrame& frame, const Comb& comb) {
    const bool front = frame.plane == std::wstring_view(L"FRONT");
    const bool right = frame.plane == std::wstring_view(L"RIGHT");
    std::wstring points;
    const auto add = [&](double a, double w) {
      // FRONT: drawn on TOP, whose right is a and whose up is -w. TOP: drawn on FRONT with a to the right and
      // w up. RIGHT: drawn on FRONT with w to the right and a up.
      const double x = right ? w : a, y = front ? -w : (right ? a : w);
      points += Format(L"%s[%g,%g]", points.empty() ? L"" : L",", x, y);
    };
    // All teeth by w, from the highest down; one that starts at the plane is a single tooth with its mirror
    // image.
    std::vector<std::pair<double, double>> walls;
    for (const auto& [from, to] : comb.teeth) {
      if (from > 0) walls.push_back({from, to});
      walls.push_back({-to, from > 0 ? -from : to});
    }
    std::ranges::sort(walls, std::ranges::greater());

    add(kSize, -kSize);
    add(kSize, kSize);
    for (std::size_t i = 0; i < walls.size(); ++i) {
      if (i > 0) add(kSize - kSpine, walls[i].second);
      add(0, walls[i].second);
      add(0, walls[i].first);
      if (i + 1 < walls.size()) add(kSize - kSpine, walls[i].first);
    }
    NewSketch(L"COMB", front ? L"TOP" : L"FRONT");
    Succeed(L"api_sketch_polyline", Format(LR"({"sketch_name":"COMB","closed":true,"points":[%s]})", points));
    // The other axis of the sketch is +Y for FRONT, along the normal of TOP; for TOP and RIGHT it is -Z,
    // against the normal of FRONT.
    Succeed(L"api_feature_extrude",
            Format(LR"({"sketch_name":"COMB","distance_mm":%g})", front ? kSize : -kSize));
  }

  static SolidSum CombSum(const SketchFrame& frame, const Comb& comb) {
    const bool right = frame.plane == std::wstring_view(L"RIGHT");
    const auto slab = [&](double a0, double w0, double w1) {
      return right ? BoxPiece({0, a0, w0}, {kSize, kSize, w1}) : BoxPiece({a0, 0, w0}, {kSize, kSize, w1});
    };
    // The spine over the whole height, and of each tooth what stands out from it.
    SolidSum sum = slab(kSize - kSpine, -kSize, kSize);
    for (const auto& [from, to] : comb.teeth) {
      for (const auto& [w0, w1] : {std::pair{from, to}, std::pair{-to, -from}})
        sum = sum + slab(0, w0, w1) - slab(kSize - kSpine, w0, w1);
    }
    return sum;
  }
};

// The parts of a stretch that lie in the teeth, or between them.
std::vector<Stretch> PartsOf(const Stretch& stretch, const Comb& comb, bool in_teeth) {
  std::vector<Stretch> parts;
  double done = stretch.from;
  const auto add = [&](double from, double to, bool in_tooth) {
    to = std::min(to, stretch.to);
    if (in_tooth == in_teeth && from < to) parts.push_back({stretch.side, from, to});
  };
  for (const auto& [from, to] : comb.teeth) {
    add(done, from, false);
    add(from, to, true);
    done = to;
  }
  add(done, stretch.to, false);
  return parts;
}

TEST_P(ExtrudeAgainstABody, AddsBetweenItsWallsOrTakesThemAway) {
  const auto& [frame, is_cut] = GetParam();
  // A cut needs material where it starts; what is added must not, or the next surface would be that of its
  // own wall.
  const Comb comb = is_cut ? Comb{{{0, 4}, {6, 10}}, 4} : Comb{{{2, 4}, {6, 10}}, 2};
  BuildComb(frame, comb);
  DrawSection(frame);
  const SolidSum body = CombSum(frame, comb);
  const bench::Box outline{{0, 0, -kSize}, {kSize, kSize, kSize}};
  CheckSolid(frame, body, outline);

  for (const Mode mode : kModes) {
    for (const bool against : {false, true}) {
      for (const double taper : {0.0, 3.0, -3.0}) {
        const ExtrudeCase each{mode, against, is_cut, taper};
        SolidSum expected = body;
        for (const Stretch& stretch : ExtentOf(each, kSize, comb.next)) {
          for (const Stretch& part : PartsOf(stretch, comb, is_cut)) {
            const SolidSum prism = Prism(part, Narrowing(taper));
            expected = is_cut ? expected - prism : expected + prism;
          }
        }
        Check(each, frame, expected, outline);
      }
    }
  }
  CheckSolid(frame, body, outline);
}

std::string FrameName(const testing::TestParamInfo<SketchFrame>& info) {
  return EncodeUtf8(info.param.plane);
}

INSTANTIATE_TEST_SUITE_P(Planes, ExtrudeInAnEmptyPart, testing::Values(kFront, kTop, kRight), FrameName);

INSTANTIATE_TEST_SUITE_P(Planes, ExtrudeAgainstABody,
                         testing::Combine(testing::Values(kFront, kTop, kRight), testing::Bool()),
                         [](const auto& info) {
                           return EncodeUtf8(std::get<0>(info.param).plane) +
                                  (std::get<1>(info.param) ? "_Cut" : "_Join");
                         });

// A part in inches gives the same millimetres.
TEST_F(ExtrudeSolids, APartInInchesHasTheSameMillimetres) {
  Current().length_unit = bench::LengthUnit::kInch;
  DrawSection(kTop);
  const ExtrudeCase each{Mode::kTwo, true, false, 3};
  const SolidSum expected = Prism({-1, 0, kDepth}, Narrowing(3)) + Prism({1, 0, kOtherDepth}, Narrowing(3));
  Check(each, kTop, expected, {{kS0, kT0, -kDepth}, {kS1, kT1, kOtherDepth}});
}

}  // namespace
}  // namespace vek::support
