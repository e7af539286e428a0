#include <cmath>
#include <numbers>
#include <tuple>

#include "addin/ops/common/history.h"
#include "addin/ops/sketch/entity_reference.h"
#include "tests/operations/sketch_fixture.h"

namespace vek::support {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr const wchar_t* kConstrain = L"api_sketch_constraint_add";
constexpr const wchar_t* kDimension = L"api_sketch_dimension_add";
constexpr const wchar_t* kSetDriven = L"api_sketch_dimension_set_driven";

class SketchConstraints : public CommittedSketchTest {
 protected:
  void Line(double x1, double y1, double x2, double y2) {
    Draw(L"api_sketch_line_two_points", L"S",
         Format(LR"("x1":%s,"y1":%s,"x2":%s,"y2":%s)", Number(x1), Number(y1), Number(x2), Number(y2)));
  }
  void Constrain(const std::wstring& type, const std::wstring& first, const std::wstring& second = {}) {
    Succeed(kConstrain,
            InSketch(Format(LR"("type":"%s","entity1":"%s","entity2":"%s")", type, first, second)));
  }
  void Dimension(const std::wstring& type, double value, const std::wstring& first,
                 const std::wstring& second = {}) {
    Succeed(kDimension, InSketch(Format(LR"("type":"%s","value":%s,"entity":"%s","entity2":"%s")", type,
                                        Number(value), first, second)));
  }
  // Two lines, a circle, an arc and a centerline, all apart: entities 2 to 6, L:1, L:2, C:1, A:1, A:2.
  void DrawOneOfEach() {
    Line(20, 1, 40, 2);
    Line(20, 30, 30, 45);
    Draw(L"api_sketch_circle_center_radius", L"S", LR"("cx":60,"cy":8,"radius":5)");
    Draw(L"api_sketch_arc", L"S", LR"("cx":60,"cy":40,"radius":6,"sweep_angle_deg":90)");
    Draw(L"api_sketch_line_two_points", L"S", LR"("x1":-9,"y1":1,"x2":-9,"y2":9,"centerline":true)");
  }
  bool ListedAsCommitted() { return Succeed(L"api_sketch_list").at(0).at("committed").get<bool>(); }
  // From the first to the second end of a line of the feature.
  std::pair<double, double> Along(int id) {
    const auto& line = Entity(L"S", id);
    return {line.second[0] - line.first[0], line.second[1] - line.first[1]};
  }
  double Length(int id) { return std::hypot(Along(id).first, Along(id).second); }
  double AngleDeg(int first, int second) {
    const auto [ax, ay] = Along(first);
    const auto [bx, by] = Along(second);
    return std::abs(std::atan2(ax * by - ay * bx, ax * bx + ay * by)) * 180 / kPi;
  }
  // What the last call of that name was told behind the section; empty without one.
  std::string LastArguments(std::uint64_t mark, const std::string& call) {
    std::string arguments;
    for (const auto& entry : host().journal.Since(mark))
      if (entry.name == call) arguments = entry.arguments.substr(entry.arguments.find(", ") + 2);
    return arguments;
  }
};

TEST(EntityReferences, AreReadFromTexts) {
  const std::tuple<const wchar_t*, wchar_t, int, int> good[] = {
      {L" l:12 ", L'L', 12, 1}, {L"L:2x", L'L', 2, 1},       {L"L:1:START", L'L', 1, 2},
      {L"a:3:end", L'A', 3, 3}, {L"C:1:center", L'C', 1, 4}, {L"L:1:Midpoint", L'L', 1, 4},
      {L"Z:3", L'Z', 3, 1},     {L"L:1:middle", L'L', 1, 4}};
  sketch::EntityReference reference;
  std::wstring error;
  for (const auto& [text, letter, index, point] : good) {
    EXPECT_TRUE(sketch::ParseEntityReference(text, reference, error));
    EXPECT_EQ(std::tuple(reference.letter, reference.index, reference.point),
              std::tuple(letter, index, point));
  }
  const wchar_t* const form = L"Invalid entity reference. Use 'L:n', 'C:n', 'A:n', or 'L:n:start'.";
  const std::pair<const wchar_t*, const wchar_t*> bad[] = {{L"  ", L"Entity reference must not be empty."},
                                                           {L"L1", form},
                                                           {L"L:1:start:end", form},
                                                           {L"L:0", L"Invalid entity index in 'L:0'."}};
  for (const auto& [text, message] : bad) {
    EXPECT_FALSE(sketch::ParseEntityReference(text, reference, error)) << EncodeUtf8(text);
    EXPECT_EQ(error, message);
  }
}

TEST_F(SketchConstraints, ArgumentsAreCheckedBeforeTheFeatureGoes) {
  const std::tuple<const wchar_t*, const wchar_t*, const wchar_t*> cases[] = {
      {kConstrain, LR"("type":" ","entity1":"P:1")", L"'type' is required."},
      {kDimension, LR"("entity":"L:1","type":"radial")", L"'value' is required."},
      {kSetDriven, LR"("entity":"C:1","type":" Radial ")",
       L"No radial dimension on C:1 found in sketch 'S'."}};
  const auto mark = host().journal.Mark();
  for (const auto& [operation, arguments, message] : cases)
    ExpectFailure(operation, InSketch(arguments), message);
  EXPECT_TRUE(CallsSince(mark, {"ProFeatureDelete", "ProFeatureWithoptionsCreate"}).empty());
  EXPECT_TRUE(ListedAsCommitted());
}

TEST_F(SketchConstraints, AFailedAdditionTakesItsRecordAway) {
  DrawOneOfEach();
  const std::tuple<const wchar_t*, const wchar_t*, const wchar_t*> cases[] = {
      {kConstrain, LR"("type":"equal","entity1":"L:1")", L"'entity2' is required for this constraint type."},
      {kConstrain, LR"("type":"horizontal","entity1":"LL:1")", L"Unknown entity type 'LL'."},
      {kConstrain, LR"("type":"tangent","entity1":"L:1","entity2":"Q:1")",
       L"Entity 'Q:1' not found in sketch 'S'."},
      {kConstrain, LR"("type":"tangent","entity1":"L:1","entity2":"C:1:top")",
       L"Unknown point specifier 'top' in 'C:1:top'."},
      {kConstrain, LR"("type":"coincident","entity1":"L:1","entity2":"C:1")",
       L"Coincident requires at least one point reference (e.g. L:1:start)."},
      {kConstrain, LR"("type":" FIX ","entity1":"L:1")",
       L"Constraint type 'fix' is not supported by Creo Toolkit. Use coincident to a construction point "
       L"instead."},
      {kConstrain, LR"("type":"Concentric","entity1":"C:1","entity2":"A:1")",
       L"Unknown constraint type 'concentric'. Supported: horizontal, vertical, coincident, parallel, "
       L"perpendicular, tangent, equal."},
      {kConstrain, LR"("type":"horizontal","entity1":"C:1")", L"Failed to create constraint (status=-1)."},
      {kDimension, LR"("entity":"C:1","value":5)", L"Linear dimension requires a line entity."},
      {kDimension, LR"("entity":"L:1","value":5,"type":"angular","entity2":"A:2")",
       L"Angular dimension requires two line entities."},
      {kDimension, LR"("entity":"L:1","value":5,"type":"Ordinate")",
       L"Unknown dimension type 'ordinate'. Supported: linear, radial, diameter, angular."},
      {kDimension, LR"("entity":"L:1","value":0)", L"Failed to set dimension value (status=-1)."}};
  ClearHistory();
  for (const auto& [operation, arguments, message] : cases) {
    SCOPED_TRACE(EncodeUtf8(arguments));
    ExpectFailure(operation, InSketch(arguments), message);
    EXPECT_TRUE(Session(L"S").constraints.empty());
    EXPECT_TRUE(Session(L"S").dimensions.empty());
  }
  ExpectUncommitted(6);
  EXPECT_FALSE(ListedAsCommitted());
  EXPECT_TRUE(UndoStack().empty());
  EXPECT_TRUE(DrawPoint(L"S").success);
  EXPECT_TRUE(ListedAsCommitted());
}

TEST_F(SketchConstraints, TheHostIsGivenItsOwnNumbers) {
  DrawOneOfEach();
  // How many references, and the number of the constraint; some of these the solver then refuses.
  const std::tuple<const wchar_t*, const wchar_t*, const wchar_t*, const char*> constraints[] = {
      {L"horizontal", L"L:1", L"", "1, 1"},
      {L"Vertical", L"L:2", L"L:1", "1, 2"},
      {L"coincident", L"L:1:end", L"L:2:start", "2, 0"},
      {L"coincident", L"P:1", L"L:1", "2, 3"},
      {L"tangent", L"L:1", L"C:1", "2, 4"},
      {L"perpendicular", L"L:1", L"L:2", "2, 5"},
      {L"equal", L"C:1", L"A:1", "2, 6"},
      {L"equal", L"L:1", L"L:2", "2, 8"},
      {L"parallel", L"L:1", L"A:2", "2, 7"}};
  for (const auto& [type, first, second, told] : constraints) {
    SCOPED_TRACE(told);
    Session(L"S").constraints.clear();
    const auto mark = host().journal.Mark();
    Run(kConstrain, InSketch(Format(LR"("type":"%s","entity1":"%s","entity2":"%s")", type, first, second)));
    const std::string arguments = LastArguments(mark, "ProSectionConstraintCreate");
    EXPECT_EQ(arguments.substr(arguments.find(", ") + 2), told);
  }
  Session(L"S").constraints.clear();
  // The first entity, its point, how many entities, the type.
  const std::tuple<const wchar_t*, const wchar_t*, const char*> dimensions[] = {
      {L"linear", L"L:1", "2, 1, 1, 1"},        {L"", L"L:1:start", "2, 2, 1, 2"},
      {L"linear", L"A:2:middle", "6, 4, 1, 2"}, {L"linear", L"P:1", "1, 1, 1, 1"},
      {L"radial", L"A:1:center", "5, 1, 1, 3"}, {L"diameter", L"C:1:center", "4, 1, 1, 4"},
      {L"angular", L"L:1:start", "2, 1, 2, 12"}};
  for (const auto& [type, entity, told] : dimensions) {
    SCOPED_TRACE(told);
    Session(L"S").dimensions.clear();
    const auto mark = host().journal.Mark();
    Run(kDimension,
        InSketch(Format(LR"("value":40,"type":"%s","entity":"%s","entity2":"L:2")", type, entity)));
    EXPECT_EQ(LastArguments(mark, "ProSecdimCreate"), told);
  }
}

TEST_F(SketchConstraints, SuccessIsToldInTheWordsOfTheRequest) {
  DrawOneOfEach();
  ClearHistory();
  const std::tuple<const wchar_t*, const wchar_t*, const wchar_t*> cases[] = {
      {kConstrain, LR"("type":" Horizontal ","entity1":"l:1")", L"horizontal constraint on l:1 in 'S'."},
      {kConstrain, LR"("type":"vertical","entity1":"L:2","entity2":"any")",
       L"vertical constraint: L:2 / any in 'S'."},
      {kDimension, LR"("entity":"C:1","value":8.5,"type":"DIAMETER")", L"diameter dim 8.5 on C:1 in 'S'."},
      {kDimension, LR"("entity":"nonsense","value":8,"type":"radial","driven":true)",
       L"radial dim 8 on nonsense in 'S' (tracked as driven; not applied in Creo)."},
      {kSetDriven, LR"("entity":"c:1","type":"diameter")",
       L"diameter dim on c:1 set driven=true in 'S' (Creo Toolkit has no reference-dim API; dim is omitted "
       L"while driven)."},
      {kSetDriven, LR"("entity":"c:1","type":"diameter","driven":false)",
       L"diameter dim on c:1 set driven=false in 'S'."}};
  for (const auto& [operation, arguments, message] : cases)
    ExpectAnswer(operation, InSketch(arguments), message);
  EXPECT_TRUE(UndoStack().empty()) << "none of them can be undone";
}

TEST_F(SketchConstraints, EachRecordIsAppliedInTheSketchersMode) {
  DrawOneOfEach();
  Constrain(L"equal", L"L:1", L"L:2");
  const auto mark = host().journal.Mark();
  Dimension(L"linear", 20, L"L:1");
  std::string calls;
  for (const auto& entry : host().journal.Since(mark)) {
    if (entry.name == "ProSectionIntentManagerModeSet") calls += entry.arguments.back();
    if (entry.name == "ProSectionConstraintCreate") calls += " constraint ";
    if (entry.name == "ProSecdimCreate") calls += " dimension ";
    if (entry.name == "ProSecdimValueSet") calls += "value ";
    if (entry.name == "ProSectionRegenerate") break;
  }
  EXPECT_EQ(calls, "01 constraint 01 dimension value 010");
  EXPECT_NEAR(Length(2), 20, 1e-6);
  EXPECT_NEAR(Length(3), 20, 1e-6);
}

TEST_F(SketchConstraints, AnAskewOutlineBecomesARectangleOfItsDimensions) {
  Draw(L"api_sketch_polyline", L"S", LR"("points":[[3,2],[75,6],[78,41],[-1,38]],"closed":true)");
  Constrain(L"horizontal", L"L:1");
  Constrain(L"vertical", L"L:2");
  Constrain(L"horizontal", L"L:3");
  Constrain(L"vertical", L"L:4");
  Dimension(L"linear", 80, L"L:1");
  Dimension(L"linear", 40, L"L:2");
  for (const int side : {2, 4}) EXPECT_NEAR(Along(side).second, 0, 1e-6);
  for (const int side : {3, 5}) EXPECT_NEAR(Along(side).first, 0, 1e-6);
  Succeed(L"api_feature_extrude", LR"({"sketch_name":"S","distance_mm":10})");
  EXPECT_NEAR(Volume(), 80 * 40 * 10, 1e-3);
  // The private section keeps what was drawn.
  EXPECT_EQ(Session(L"S").entities.size(), 1u + 4u);
  EXPECT_TRUE(DrawPoint(L"S").success);
  EXPECT_NEAR(Length(2), 80, 1e-6);
}

TEST_F(SketchConstraints, ARepeatedConstraintIsRefusedAndTheSketchGoesOn) {
  Line(0, 0, 50, 4);
  Constrain(L"horizontal", L"L:1");
  ExpectFailure(kConstrain, InSketch(LR"("type":"horizontal","entity1":"L:1")"),
                L"Failed to create constraint (status=-1).");
  EXPECT_FALSE(ListedAsCommitted());
  Dimension(L"linear", 30, L"L:1");
  EXPECT_TRUE(ListedAsCommitted());
  ExpectFailure(kDimension, InSketch(LR"("entity":"L:1","value":31)"),
                L"Failed to create dimension (status=-1).");
  EXPECT_TRUE(DrawPoint(L"S").success);
  EXPECT_TRUE(ListedAsCommitted());
  ExpectEnds(Entity(L"S", 2), PRO_2D_LINE, {0, 0}, {30, 0});
}

TEST_F(SketchConstraints, ADrivenDimensionIsKeptAndNotApplied) {
  Line(0, 0, 10, 0);
  Dimension(L"linear", 20, L"L:1");
  EXPECT_NEAR(Length(2), 20, 1e-6);
  Run(kSetDriven, InSketch(LR"("entity":"L:1")"));
  EXPECT_NEAR(Length(2), 10, 1e-6) << "as it was drawn";
  Run(kSetDriven, InSketch(LR"("entity":"L:1","driven":false)"));
  EXPECT_NEAR(Length(2), 20, 1e-6);

  // What was never looked at fails once it is to be applied, and goes on failing: the flag stays.
  Run(kDimension, InSketch(LR"("entity":"X","value":1,"driven":true)"));
  EXPECT_TRUE(Session(L"S").has_feature);
  const wchar_t* const form = L"Invalid entity reference. Use 'L:n', 'C:n', 'A:n', or 'L:n:start'.";
  ExpectFailure(kSetDriven, InSketch(LR"("entity":"x","driven":false)"), form);
  EXPECT_EQ(DrawPoint(L"S").message, form);
  EXPECT_TRUE(Run(kSetDriven, InSketch(LR"("entity":"x")")).success);
}

TEST_F(SketchConstraints, ReferencesMeanWhatBearsTheirLabelsByThen) {
  for (const double y : {0., 10., 20., 30.}) Line(5, y, 15, y + 3);  // entities 2 to 5
  Constrain(L"horizontal", L"L:3");
  EXPECT_NEAR(Along(4).second, 0, 1e-6);
  // What was L:4, entity 5 of the private section, is L:3 now.
  const auto mark = host().journal.Mark();
  Run(L"api_sketch_entity_delete", InSketch(LR"("entity":"L:1")"));
  EXPECT_EQ(LastArguments(mark, "ProSectionEntityGetSelected").substr(0, 3), "5, ");
  ExpectFailure(L"api_sketch_entity_delete", InSketch(LR"("entity":"L:3")"),
                L"Entity 'L:3' not found in sketch 'S'.");
  ExpectUncommitted(3);
}

TEST_F(SketchConstraints, InAPartInInchesMillimetresAreScaledAndAnglesAreNot) {
  Current().length_unit = bench::LengthUnit::kInch;
  Line(0, 0, 25.4, 0);
  Line(0, 0, 25.4, 25.4);
  Dimension(L"linear", 50.8, L"L:1");
  EXPECT_NEAR(Length(2), 2, 1e-8);
  Dimension(L"angular", 30, L"L:1", L"L:2");
  EXPECT_NEAR(AngleDeg(2, 3), 30, 1e-5);
  // The texts: 10 mm up, and 10 mm further out than the value.
  const auto& dimensions = Section(L"S").dimensions;
  ExpectPoint(dimensions.at(1).place, 60.8 / 25.4, 10 / 25.4);
  ExpectPoint(dimensions.at(2).place, 40 / 25.4, 10 / 25.4);
  EXPECT_NEAR(dimensions.at(1).value, 2, 1e-12);
  EXPECT_NEAR(dimensions.at(2).value, kPi / 6, 1e-12);
}

}  // namespace
}  // namespace vek::support
