#include <gtest/gtest.h>

#include <cmath>

#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

using Vector = std::vector<double>;

Vector Coordinates(const json& value) {
  return value.get<Vector>();
}

double Dot(const Vector& a, const Vector& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

Vector Minus(const Vector& a, const Vector& b) {
  return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

// A plate of 40 · 30 · 10 with a hole of radius 4 in (15, 12).
json Plate() {
  return Built({Extrude(1, Front(), Rectangle(1, 0, 0, 40, 30)),
                Extrude(2, Front(), {Circle(7, 15, 12, 4)}, {.operation = "cut", .mode = "through_all"})});
}

TEST(Face, TellsWhatItsSurfaceIs) {
  const json part = Plate();
  const json hole = FaceNamed(part, "2:side:7");
  EXPECT_EQ(hole["type"], "cylinder");
  EXPECT_EQ(hole["feature"], 2);
  ExpectClose(hole["area"].get<double>(), 2 * kPi * 4 * 10);
  ExpectClose(hole["radius"].get<double>(), 4);
  ExpectClose(std::abs(hole["axis"][2].get<double>()), 1);
  EXPECT_EQ(hole["orientation"], -1);  // the cylinder's normal points into the material
  ExpectClose(Box(hole), {11, 8, 0, 19, 16, 10});
  ExpectClose(hole["u"][1].get<double>() - hole["u"][0].get<double>(), 2 * kPi);
  ExpectClose(hole["v"][1].get<double>() - hole["v"][0].get<double>(), 10);

  const json top = FaceNamed(part, "1:end");
  ExpectClose(top["area"].get<double>(), 1200 - 16 * kPi);
  ExpectClose(top["normal"], {0, 0, 1});
  ExpectClose(FaceNamed(part, "1:side:2")["normal"], {1, 0, 0});
}

// The frames, parameters and normals as the protocol puts them together.
void CheckFrame(const json& face) {
  const std::string type = face["type"];
  const Vector point = Coordinates(face["point"]), normal = Coordinates(face["normal"]);
  const Vector origin = Coordinates(face["origin"]), axis = Coordinates(face["axis"]);
  const Vector from = Minus(point, origin);
  const double along = Dot(from, axis);
  Vector out = from;
  for (int i = 0; i < 3; ++i) out[i] -= along * axis[i];
  const double away = std::sqrt(Dot(out, out));
  const double turned = face["orientation"].get<int>();
  if (type == "plane") {
    ExpectClose(along, 0, type);
    ExpectClose(Dot(normal, axis), turned, type);
  } else if (type == "cylinder") {
    ExpectClose(away, face["radius"], type);
    ExpectClose(Dot(normal, out), turned * away, type);
  } else if (type == "cone") {
    const double half_angle = face["half_angle_deg"].get<double>() * kPi / 180;
    EXPECT_GT(half_angle, 0);
    ExpectClose(away, face["radius"].get<double>() + along * std::tan(half_angle), type);
    EXPECT_GT(Dot(normal, out) * turned, 0);
    // The parameter v runs along the wall.
    const double v = along / std::cos(half_angle);
    EXPECT_GE(v, face["v"][0].get<double>() - 1e-9);
    EXPECT_LE(v, face["v"][1].get<double>() + 1e-9);
  } else if (type == "sphere") {
    ExpectClose(std::sqrt(Dot(from, from)), face["radius"], type);
    ExpectClose(Dot(normal, from), turned * face["radius"].get<double>(), type);
  } else if (type == "torus") {
    const double tube = face["minor_radius"];
    ExpectClose(std::hypot(away - face["radius"].get<double>(), along), tube, type);
  } else {
    ADD_FAILURE() << "unexpected " << type;
  }
  if (type != "plane") {
    const Vector x = Coordinates(face["x"]);
    const Vector y = {axis[1] * x[2] - axis[2] * x[1], axis[2] * x[0] - axis[0] * x[2],
                      axis[0] * x[1] - axis[1] * x[0]};
    double u = std::atan2(Dot(out, y), Dot(out, x));
    while (u < face["u"][0].get<double>() - 1e-9) u += 2 * kPi;
    EXPECT_LE(u, face["u"][1].get<double>() + 1e-9) << face;
  }
}

TEST(Face, HasAFrameThatFitsItsPointAndParameters) {
  const Entities half_ring = {Arc(1, 20, 0, 4, 0, kPi), Line(2, 16, 0, 24, 0), Centerline(9, 0, 0, 0, 1)};
  const Entities half_disc = {Arc(1, 0, 0, 10, -kPi / 2, kPi / 2), Line(2, 0, 10, 0, -10),
                              Centerline(9, 0, 0, 0, 1)};
  const Entities wedge = Together(Polygon(1, {{5, 0}, {12, 0}, {8, 6}}), Centerline(9, 0, 0, 0, 1));
  const Recipes parts[] = {
      {Extrude(1, Top(), Slot(1, 10, 5), {.taper_deg = 10})},
      {Extrude(1, Right(), Together(Rectangle(1, -9, -9, 18, 18), Circle(11, 0, 0, 5)),
               {.reverse = true, .taper_deg = 8})},
      {Revolve(1, Top(), half_ring, 360, "join", true)},
      {Revolve(1, Front(), half_disc, 200)},
      {Revolve(1, Right(), wedge, 360)},
      {Extrude(1, Front(), Rectangle(1, -30, -30, 60, 60), {.mode = "symmetric", .depth = 40}),
       Revolve(2, Top(), half_ring, 360, "cut")},
  };
  for (const Recipes& recipes : parts) {
    const json part = Built(recipes);
    for (const json& face : part["faces"]) CheckFrame(face);
  }
}

TEST(Face, HasItsPointInsideTheMaterialsEdge) {
  // A frame so thin that the middle of its faces is nothing.
  const json frame = Built({Extrude(
      1, Front(), Together(Rectangle(1, 0, 0, 100, 100), Rectangle(11, 1, 1, 98, 98)), {.depth = 3})});
  for (const char* key : {"1:start", "1:end"}) {
    const Vector point = Coordinates(FaceNamed(frame, key)["point"]);
    const double edge = std::min({point[0], point[1], 100 - point[0], 100 - point[1]});
    EXPECT_NEAR(edge, 0.5, 0.4) << key;
  }
}

TEST(Face, TellsTheKindOfASweptSurface) {
  const json wall = Built({Extrude(1, Front(), {Ellipse(1, 0, 0, 9, 4)})});
  EXPECT_EQ(FaceNamed(wall, "1:side:1")["type"], "extruded");
  ExpectClose(std::abs(FaceNamed(wall, "1:side:1")["axis"][2].get<double>()), 1);
  const json ring = Built({Revolve(1, Front(), {Ellipse(1, 20, 0, 9, 4), Centerline(2, 0, 0, 0, 1)}, 360)});
  EXPECT_EQ(FaceNamed(ring, "1:side:1")["type"], "revolved");
  ExpectClose(FaceNamed(ring, "1:side:1")["axis"], {0, 1, 0});
}

TEST(Edge, TellsItsFacesAndItsCurve) {
  const json part = Plate();
  EXPECT_EQ(part["edges"].size(), 14u);  // twelve of the block, two of the hole and no seam
  const json rim = Named(part["edges"], "1:end|2:side:7");
  EXPECT_EQ(rim["faces"], (json::array({"1:end", "2:side:7"})));
  EXPECT_EQ(rim["feature"], 2);
  EXPECT_EQ(rim["type"], "circle");
  ExpectClose(rim["length"].get<double>(), 8 * kPi);
  EXPECT_EQ(rim["from"], rim["to"]);
  ExpectClose(rim["center"], {15, 12, 10});
  const json side = Named(part["edges"], "1:start|1:side:1");
  EXPECT_EQ(side["type"], "line");
  ExpectClose(side["from"], {0, 0, 0});
  ExpectClose(side["to"], {40, 0, 0});
  ExpectClose(side["length"].get<double>(), 40);
}

TEST(Edge, RunsRightHandedAboutTheAxisOfItsArc) {
  // A quarter of the way around and then another one lies the other end.
  const json slot = Built({Extrude(1, Front(), Slot(1, 10, 5))});
  int arcs = 0;
  for (const json& edge : slot["edges"]) {
    if (edge["type"] != "circle") continue;
    ++arcs;
    const Vector center = Coordinates(edge["center"]), axis = Coordinates(edge["axis"]);
    const Vector arm = Minus(Coordinates(edge["from"]), center);
    // With the axis along z the middle of the arc is center + axis × arm: 5 beyond a centre at x = ± 10.
    ExpectClose(std::abs(center[0] - axis[2] * arm[1]), 15);
    ExpectClose(edge["length"].get<double>(), 5 * kPi);
  }
  EXPECT_EQ(arcs, 4);
}

}  // namespace
}  // namespace bench::kernel::testing
