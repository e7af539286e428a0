#include <gtest/gtest.h>

#include <cmath>

#include "bench/kernel/requests.h"
#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

using Conditions = std::vector<json>;

constexpr int kWhole = 1, kStart = 2, kEnd = 3, kCenter = 4;

json At(int entity, int point = kWhole) {
  return {{"entity", entity}, {"point", point}};
}

json Condition(const char* kind, const std::vector<json>& targets) {
  return {{"kind", kind}, {"targets", targets}};
}

json Dimension(const char* kind, double value, const std::vector<json>& targets) {
  json dimension = Condition(kind, targets);
  dimension["value"] = value;
  return dimension;
}

// A construction point, which stays where it is and holds what lies on it.
json Pin(int id, double x, double y) {
  return AsConstruction(Point(id, x, y));
}

json Ask(const Entities& entities, const Conditions& conditions) {
  Requests requests;
  const json request = {{"id", 1}, {"do", "solve"}, {"entities", entities}, {"conditions", conditions}};
  const json answer = json::parse(requests.Answer(request.dump()));
  EXPECT_FALSE(answer.contains("error")) << answer;
  return answer.value("ok", json::object());
}

struct Way {
  double x, y;
  double Length() const { return std::hypot(x, y); }
};

double Dot(Way a, Way b) {
  return a.x * b.x + a.y * b.y;
}
double Cross(Way a, Way b) {
  return a.x * b.y - a.y * b.x;
}

// The entities as the solver left them.
class Solved {
 public:
  Solved(const Entities& entities, const Conditions& conditions) {
    const json ok = Ask(entities, conditions);
    EXPECT_FALSE(ok.contains("refused")) << ok;
    for (const json& entity : ok.value("entities", json::array())) entities_[entity.at("id")] = entity;
  }
  bool Has(int id) const { return entities_.contains(id); }
  double Number(int id, const char* key) const { return entities_.at(id).at(key); }
  Way Spot(int id, const char* key) const {
    const json& at = entities_.at(id).at(key);
    return {at.at(0), at.at(1)};
  }
  Way Along(int id) const {
    const Way from = Spot(id, "from"), to = Spot(id, "to");
    return {to.x - from.x, to.y - from.y};
  }
  // Of a spot from the line's straight.
  double Distance(Way spot, int line) const {
    const Way from = Spot(line, "from"), along = Along(line);
    return std::abs(Cross({spot.x - from.x, spot.y - from.y}, along)) / along.Length();
  }
  double AngleDeg(int first, int second) const {
    return std::abs(std::atan2(Cross(Along(first), Along(second)), Dot(Along(first), Along(second)))) * 180 /
           kPi;
  }

 private:
  std::map<int, json> entities_;
};

::testing::AssertionResult IsAt(Way spot, double x, double y) {
  if (std::hypot(spot.x - x, spot.y - y) < 1e-6) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "it is at " << spot.x << ", " << spot.y;
}

std::string Refusal(const Entities& entities, const Conditions& conditions) {
  return Ask(entities, conditions).value("refused", "");
}

// A line from (0, 0) to (10, 0) that can't move.
const Entities kBase = {Pin(91, 0, 0), Pin(92, 10, 0), Line(1, 0, 0, 10, 0)};

TEST(Solver, BringsAboutEachConstraint) {
  const Solved ends({Line(1, 0, 0, 10, 0), Pin(2, 12, 5)}, {Condition("coincident", {At(1, kEnd), At(2)})});
  EXPECT_TRUE(IsAt(ends.Spot(1, "to"), 12, 5));
  EXPECT_TRUE(IsAt(ends.Spot(1, "from"), 0, 0)) << "the other end stays";
  // A point comes onto a line about where it was, and straight onto a circle: half of (8, 6) is 5 away.
  const Way on_line =
      Solved(Together(kBase, Point(2, 4, 3)), {Condition("coincident", {At(2), At(1)})}).Spot(2, "at");
  EXPECT_NEAR(on_line.y, 0, 1e-6);
  EXPECT_NEAR(on_line.x, 4, 0.1);
  const Solved on_circle({Pin(1, 0, 0), Circle(2, 0, 0, 5), Point(3, 8, 6)},
                         {Condition("coincident", {At(2), At(3)}), Dimension("radius", 5, {At(2)})});
  EXPECT_TRUE(IsAt(on_circle.Spot(3, "at"), 4, 3));
  const Solved centre({Circle(1, 1, 1, 3), Pin(2, 5, 6)}, {Condition("coincident", {At(1, kCenter), At(2)})});
  EXPECT_TRUE(IsAt(centre.Spot(1, "center"), 5, 6));

  const Solved horizontal({Pin(1, 0, 0), Line(2, 0, 0, 10, 2)}, {Condition("horizontal", {At(2)})});
  EXPECT_TRUE(IsAt(horizontal.Spot(2, "to"), 10, 0));
  const Solved vertical({Pin(1, 0, 0), Centerline(2, 0, 0, 1, 10)}, {Condition("vertical", {At(2)})});
  EXPECT_TRUE(IsAt(vertical.Spot(2, "to"), 0, 10));
  const Solved parallel(Together(kBase, Pin(2, 0, 5), Line(3, 0, 5, 7, 6)),
                        {Condition("parallel", {At(3), At(1)})});
  EXPECT_TRUE(IsAt(parallel.Spot(3, "to"), 7, 5));
  const Solved perpendicular(Together(kBase, Pin(2, 5, 5), Line(3, 5, 5, 6, 12)),
                             {Condition("perpendicular", {At(1), At(3)})});
  EXPECT_NEAR(perpendicular.Spot(3, "to").x, 5, 1e-6);
  EXPECT_NEAR(perpendicular.Spot(3, "to").y, 12, 0.2);

  const Solved lengths(Together(kBase, Pin(2, 0, 5), Line(3, 0, 5, 6, 5)),
                       {Condition("equal_length", {At(1), At(3)})});
  EXPECT_TRUE(IsAt(lengths.Spot(3, "to"), 10, 5));
  const Solved radii({Circle(1, 50, 0, 4), Pin(2, 0, 0), Arc(3, 0, 0, 3, 0, kPi / 2)},
                     {Dimension("radius", 4, {At(1)}), Condition("equal_radius", {At(1), At(3)})});
  EXPECT_NEAR(radii.Number(3, "radius"), 4, 1e-6);
  EXPECT_NEAR(radii.Number(3, "end"), kPi / 2, 1e-6) << "the arc's ends go outwards";
}

// Where a line lies just across, nothing tells a solver which way to turn it.
TEST(Solver, TurnsLinesThatLieJustAcross) {
  const Entities crossing = {Pin(1, 0, 0), Line(2, 0, 0, 10, 0), Line(3, 20, 0, 20, 5)};
  const Solved vertical(crossing, {Condition("vertical", {At(2)})});
  EXPECT_NEAR(vertical.Along(2).x, 0, 1e-6);
  EXPECT_NEAR(vertical.Along(2).Length(), 10, 1e-6);
  const Solved parallel(crossing, {Condition("parallel", {At(2), At(3)})});
  EXPECT_NEAR(Cross(parallel.Along(2), parallel.Along(3)), 0, 1e-6);
  EXPECT_NEAR(parallel.Along(2).Length() + parallel.Along(3).Length(), 15, 1e-6);
  const Solved perpendicular({Pin(1, 0, 0), Line(2, 0, 0, 10, 0), Line(3, 10, 0, 25, 0)},
                             {Condition("perpendicular", {At(2), At(3)})});
  EXPECT_NEAR(perpendicular.AngleDeg(2, 3), 90, 1e-5);
  EXPECT_GT(perpendicular.Along(2).Length() * perpendicular.Along(3).Length(), 10);
  // The arc's radius lies along the line that it is to leave at a right angle to it.
  const Solved tangent(Together(kBase, Arc(3, 15, 0, 5, kPi, 1.5 * kPi)),
                       {Condition("tangent", {At(1), At(3)})});
  EXPECT_NEAR(tangent.Spot(3, "center").x, 10, 1e-6);
  EXPECT_GT(tangent.Number(3, "radius"), 1);
}

TEST(Solver, MakesCurvesTangent) {
  // A circle grows to a line 4 below its centre.
  const Solved grows(Together(kBase, Pin(2, 5, 4), Circle(3, 5, 4, 3)),
                     {Condition("tangent", {At(1), At(3)})});
  EXPECT_NEAR(grows.Number(3, "radius"), 4, 1e-6);
  // A line through the middle of a circle turns away from it.
  const Solved turns({Pin(1, 0, 0), Line(2, 0, 0, 10, 0), Pin(3, 5, 0), Circle(4, 5, 0, 3)},
                     {Condition("tangent", {At(4), At(2)}), Dimension("radius", 3, {At(4)})});
  EXPECT_NEAR(turns.Distance({5, 0}, 2), 3, 1e-6);
  // An arc goes on from a line, 1 right of its centre and 5 below: that comes over the end they share.
  const Solved goes_on(Together(kBase, Arc(3, 9, 5, std::sqrt(26), -std::atan(5), 1)),
                       {Condition("tangent", {At(1), At(3)})});
  EXPECT_TRUE(IsAt(goes_on.Spot(3, "center"), 10, goes_on.Number(3, "radius")));
  EXPECT_NEAR(goes_on.Number(3, "start"), -kPi / 2, 1e-6);
  // A line whose end lies on a circle touches it there.
  const Solved touches({Pin(1, 0, 0), Circle(2, 0, 0, 5), Line(3, 3, 4, 10, 2)},
                       {Condition("tangent", {At(2), At(3)}), Condition("coincident", {At(3, kStart), At(2)}),
                        Dimension("radius", 5, {At(2)})});
  EXPECT_NEAR(touches.Spot(3, "from").Length(), 5, 1e-6);
  EXPECT_NEAR(touches.Distance({0, 0}, 3), 5, 1e-6);
  // Side by side, 10 apart: 4 + 6. Inside of each other, 2 apart: 10 - 8, whichever is named first.
  const Solved beside({Pin(1, 0, 0), Circle(2, 0, 0, 4), Pin(3, 10, 0), Circle(4, 10, 0, 5)},
                      {Dimension("radius", 4, {At(2)}), Condition("tangent", {At(2), At(4)})});
  EXPECT_NEAR(beside.Number(4, "radius"), 6, 1e-6);
  for (const auto& [first, second] : {std::pair(2, 4), std::pair(4, 2)}) {
    const Solved inside({Pin(1, 0, 0), Circle(2, 0, 0, 10), Pin(3, 2, 0), Circle(4, 2, 0, 7)},
                        {Dimension("radius", 10, {At(2)}), Condition("tangent", {At(first), At(second)})});
    EXPECT_NEAR(inside.Number(4, "radius"), 8, 1e-6);
  }
  // Arcs that share an end have it in line with their centres.
  const Solved arcs({Pin(1, 0, 0), Pin(2, 5, 0), Arc(3, 0, 0, 5, 0, 2),
                     Arc(4, 8, 1, std::sqrt(10), kPi + std::atan(1. / 3), 5)},
                    {Condition("tangent", {At(3), At(4)})});
  EXPECT_TRUE(IsAt(arcs.Spot(4, "center"), arcs.Number(4, "radius") + 5, 0));
}

TEST(Solver, BringsAboutEachDimension) {
  const Solved length({Pin(1, 0, 0), Line(2, 0, 0, 3, 4)}, {Dimension("length", 20, {At(2)})});
  EXPECT_TRUE(IsAt(length.Spot(2, "to"), 12, 16));  // 20 / 5 times (3, 4)
  const Solved radius({Circle(1, 2, 3, 4)}, {Dimension("radius", 7, {At(1)})});
  EXPECT_NEAR(radius.Number(1, "radius"), 7, 1e-6);
  EXPECT_TRUE(IsAt(radius.Spot(1, "center"), 2, 3));
  const Solved diameter({Pin(1, 0, 0), Arc(2, 0, 0, 4, 0, 1)}, {Dimension("diameter", 7, {At(2)})});
  EXPECT_NEAR(diameter.Number(2, "radius"), 3.5, 1e-6);
  EXPECT_NEAR(diameter.Number(2, "end"), 1, 1e-6);

  // The angle is that between the directions, or to the reverse where that is nearer; parallel lines turn.
  const struct {
    json line;
    double asked_deg, expected_deg;
  } angles[] = {{Line(2, 0, 0, 8, 6), 60, 60},
                {Line(2, 0, 0, -8, 1), 30, 150},
                {Line(2, 0, 0, 1, 7), 90, 90},
                {Line(2, 0, 5, 7, 5), 30, 30},
                {Line(2, 12, 5, 7, 5), 135, 135}};
  for (const auto& [line, asked_deg, expected_deg] : angles) {
    const Solved angle(Together(kBase, line), {Dimension("angle", asked_deg * kPi / 180, {At(1), At(2)})});
    EXPECT_NEAR(angle.AngleDeg(1, 2), expected_deg, 1e-5) << line;
    EXPECT_GT(angle.Along(2).Length(), 1) << line;
  }
}

TEST(Solver, ADimensionWithoutAValueHoldsWhatIsThere) {
  const Entities entities = {Line(1, 0, 0, 3, 4), Circle(2, 0, 9, 2), Line(3, 0, 0, 5, 0)};
  Conditions conditions = {Condition("length", {At(1)}), Condition("diameter", {At(2)}),
                           Condition("angle", {At(3), At(1)}), Condition("horizontal", {At(3)})};
  const json values = Ask(entities, conditions)["values"];
  ASSERT_EQ(values.size(), 4u);
  EXPECT_NEAR(values[0].get<double>(), 5, 1e-9);  // 3² + 4² = 5²
  EXPECT_NEAR(values[1].get<double>(), 4, 1e-9);
  EXPECT_NEAR(values[2].get<double>(), std::atan2(4, 3), 1e-9);
  EXPECT_TRUE(values[3].is_null());
  conditions.push_back(Condition("radius", {At(2)}));
  EXPECT_NE(Refusal(entities, conditions), "") << "radius and diameter repeat each other";
}

TEST(Solver, TakesASlotsTangentsAndDimensions) {
  // 2 · 10 between the centres, radius 4; to be 30 and 6.
  const Solved s(Slot(1, 10, 4), {Condition("tangent", {At(1), At(2)}), Condition("tangent", {At(2), At(3)}),
                                  Condition("tangent", {At(3), At(4)}), Condition("tangent", {At(4), At(1)}),
                                  Condition("horizontal", {At(1)}), Condition("equal_radius", {At(2), At(4)}),
                                  Dimension("radius", 6, {At(2)}), Dimension("length", 30, {At(3)})});
  EXPECT_NEAR(s.Number(2, "radius"), 6, 1e-6);
  EXPECT_NEAR(s.Number(4, "radius"), 6, 1e-6);
  EXPECT_NEAR(s.Spot(2, "center").x - s.Spot(4, "center").x, 30, 1e-6);
  EXPECT_NEAR(s.Distance(s.Spot(2, "center"), 1), 6, 1e-6);
  for (const int arc : {2, 4}) EXPECT_NEAR(s.Number(arc, "end") - s.Number(arc, "start"), kPi, 1e-6);
}

TEST(Solver, ArcsKeepTheirTurn) {
  const std::pair<double, double> turns[] = {{0, 1.5 * kPi}, {-5, -1}, {3, 3 + 1.9 * kPi}, {7, 7 + 2 * kPi}};
  for (const auto& [start, end] : turns) {
    const Solved s({Pin(1, 0, 0), Arc(2, 0, 0, 5, start, end)}, {Dimension("radius", 8, {At(2)})});
    EXPECT_NEAR(s.Number(2, "radius"), 8, 1e-6);
    EXPECT_NEAR(s.Number(2, "start"), start, 1e-6);
    EXPECT_NEAR(s.Number(2, "end"), end, 1e-6);
  }
}

TEST(Solver, SplinesEllipsesAndConstructionPointsHoldWhatLiesOnThem) {
  const Solved s({Spline(1, {{0, 0}, {2, 1}, {4, 0}}), Line(2, 4, 0, 10, 3), Ellipse(3, 20, 7, 2, 1),
                  Line(4, 20, 7, 30, 9)},
                 {Condition("horizontal", {At(2)}), Condition("horizontal", {At(4)})});
  EXPECT_FALSE(s.Has(1) || s.Has(3));
  EXPECT_TRUE(IsAt(s.Spot(2, "from"), 4, 0));
  EXPECT_TRUE(IsAt(s.Spot(2, "to"), 10, 0));
  EXPECT_TRUE(IsAt(s.Spot(4, "from"), 20, 7));
  EXPECT_TRUE(IsAt(s.Spot(4, "to"), 30, 7));
  // An arc between three such points has nothing to solve for, and is no reason to refuse.
  const Solved held(
      {Pin(1, 0, 0), Pin(2, 5, 0), Pin(3, 0, 5), Arc(4, 0, 0, 5, 0, kPi / 2), Line(5, 0, 5, -9, 6)},
      {Condition("tangent", {At(4), At(5)})});
  EXPECT_NEAR(held.Spot(5, "to").y, 5, 1e-6);
}

TEST(Solver, ALargeSectionIsNoHindrance) {
  Entities entities = {Pin(5000, 0, 0), Line(5001, 0, 0, 10, 2)};
  for (int i = 1; i <= 1500; ++i) entities.push_back(Line(i, 100 + i, i % 2, 101 + i, (i + 1) % 2));
  const Solved s(entities, {Condition("horizontal", {At(5001)})});
  EXPECT_TRUE(IsAt(s.Spot(5001, "to"), 10, 0));
  EXPECT_TRUE(IsAt(s.Spot(700, "to"), 801, 1));
}

TEST(Solver, RefusesWhatCantHoldAndWhatMakesNoSense) {
  const char* const against = "The constraints and dimensions contradict or repeat each other.";
  const char* const circle = "Entity 2 is of the wrong kind for this.";
  const char* const line = "Entity 3 is of the wrong kind for this.";
  const char* const count = "A condition has too few or too many entities.";
  const char* const angle = "An angle must be above 0 and below 180 degrees.";
  const std::pair<Conditions, const char*> cases[] = {
      // The ends of a line of 10 are held.
      {{Dimension("length", 12, {At(1)})}, against},
      {{Dimension("length", 8, {At(3)}), Dimension("length", 9, {At(3)})}, against},
      {{Condition("horizontal", {At(3)}), Condition("horizontal", {At(3)})}, against},
      {{Condition("horizontal", {At(3)}), Condition("parallel", {At(3), At(1)})}, against},
      {{Condition("horizontal", {At(2)})}, circle},
      {{Dimension("length", 1, {At(2)})}, circle},
      {{Dimension("radius", 1, {At(3)})}, line},
      {{Condition("horizontal", {At(3, kEnd)})}, line},
      {{Condition("tangent", {At(1), At(3)})}, line},
      {{Condition("tangent", {At(2), At(4)})}, "Circles about one centre can't be tangent."},
      {{Condition("coincident", {At(1), At(3)})}, "At least one of the two must be a point."},
      {{Condition("coincident", {At(2, kEnd), At(1)})}, "Entity 2 has no such point."},
      {{Condition("vertical", {At(77)})}, "The section has no entity 77."},
      {{Condition("parallel", {At(1)})}, count},
      {{Condition("vertical", {At(1), At(3)})}, count},
      {{Dimension("length", 0, {At(3)})}, "A dimension must be above 0."},
      {{Dimension("angle", 0, {At(1), At(3)})}, angle},
      {{Dimension("angle", kPi, {At(1), At(3)})}, angle},
  };
  const Entities entities = Together(kBase, Circle(2, 3, 3, 1), Line(3, 0, 5, 9, 6), Circle(4, 3, 3, 2));
  for (const auto& [conditions, reason] : cases) EXPECT_EQ(Refusal(entities, conditions), reason);
  EXPECT_EQ(Refusal({Line(1, 0, 0, 10, 0)}, {Condition("coincident", {At(1, kStart), At(1, kEnd)})}),
            "Entity 1 would shrink to a point.");
}

}  // namespace
}  // namespace bench::kernel::testing
