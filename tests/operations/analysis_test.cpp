// The analyses: what they tell of models in mm, cm², cm³, kg and degrees, and what of models that they can't
// measure.
#include <numbers>

#include "addin/server/json_writer.h"
#include "tests/operations/assembly_ground.h"

namespace vek::support {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr const wchar_t* kMass = L"api_analysis_mass_properties";
constexpr const wchar_t* kBox = L"api_analysis_bounding_box";
constexpr const wchar_t* kClashes = L"api_analysis_check_interference";
constexpr const wchar_t* kDraftAngle = L"api_analysis_draft_angle";

void ExpectPoint(const nlohmann::json& point, const bench::Vector3& expected) {
  EXPECT_NEAR(point.at("x_mm"), expected[0], 1e-6);
  EXPECT_NEAR(point.at("y_mm"), expected[1], 1e-6);
  EXPECT_NEAR(point.at("z_mm"), expected[2], 1e-6);
}

using Analysis = OperationTest;

TEST_F(Analysis, OfABlock) {
  NewPart();
  const std::wstring block = Block(40, 20, 10);
  // 40 * 20 * 10 = 8000 mm³ of 1 g/cm³; 2 * (800 + 400 + 200) = 2800 mm².
  ExpectAnswer(kMass, L"{}", L"Mass properties retrieved.",
               LR"({"mass_kg":0.008,"volume_cm3":8,"surface_area_cm2":28,)"
               LR"("center_of_mass":{"x_mm":20,"y_mm":10,"z_mm":5}})");
  const auto box = Succeed(kBox);
  ExpectPoint(box.at("min"), {0, 0, 0});
  ExpectPoint(box.at("max"), {40, 20, 10});
  ExpectPoint(box.at("size"), {40, 20, 10});
  for (const auto& [asked, told] :
       {std::pair(L"", L"Z"), {L"right", L"X"}, {L" xz", L"Y"}, {L"diagonal", L"Z"}})
    ExpectAnswer(kDraftAngle, Format(LR"({"pull_direction":"%s"})", asked),
                 L"Draft analysis: min=0.00\u00b0 max=90.00\u00b0, 4 undrafted face(s).",
                 Format(LR"({"pull_direction":"%s","min_angle_deg":0.000,"max_angle_deg":90.000,)"
                        LR"("undrafted_face_count":4})",
                        told));
  Succeed(L"api_edge_draft",
          Format(LR"({"feature_name":"%s","angle_deg":5,"pull_direction":"Z"})", JsonEscape(block)));
  ExpectAnswer(
      kDraftAngle, L"{}", L"Draft analysis: min=5.00\u00b0 max=90.00\u00b0, 0 undrafted face(s).",
      LR"({"pull_direction":"Z","min_angle_deg":5.000,"max_angle_deg":90.000,"undrafted_face_count":0})");
}

TEST_F(Analysis, OfAnInchCubeAndARing) {
  NewPart().length_unit = bench::LengthUnit::kInch;
  Block(25.4, 25.4, 25.4);
  // 2.54³ = 16.387064 cm³, 6 * 2.54² = 38.7096 cm².
  const wchar_t* cube =
      LR"({"mass_kg":%s,"volume_cm3":16.3871,"surface_area_cm2":38.7096,)"
      LR"("center_of_mass":{"x_mm":12.7,"y_mm":12.7,"z_mm":12.7}})";
  const auto weighing = [cube](const std::wstring& mass) {
    std::wstring data = cube;
    return data.replace(data.find(L"%s"), 2, mass);
  };
  ExpectAnswer(kMass, L"{}", L"Mass properties retrieved.", weighing(L"0.0163871"));
  // Without the factor it stays in pounds: 0.016387064 / 0.45359237.
  faults().Fail("ProUnitInit", -1);
  ExpectAnswer(kMass, L"{}", L"Mass properties retrieved.", weighing(L"0.0361273"));
  ExpectPoint(Succeed(kBox).at("size"), {25.4, 25.4, 25.4});

  // About Z: radii 20 and 10, 30 high.
  NewPart().density = 7.85;
  Succeed(L"api_sketch_create", LR"({"name":"RING","plane":"XY"})");
  for (const wchar_t* radius : {L"20", L"10"})
    Succeed(L"api_sketch_circle_center_radius",
            Format(LR"({"sketch_name":"RING","cx":0,"cy":0,"radius":%s})", radius));
  Succeed(L"api_feature_extrude", LR"({"sketch_name":"RING","distance_mm":30})");
  // (400 - 100) * pi * 30 mm³; 2 * pi * (20 + 10) * 30 + 2 * (400 - 100) * pi mm².
  const auto ring = Succeed(kMass);
  EXPECT_NEAR(ring.at("volume_cm3"), 9 * kPi, 1e-4);
  EXPECT_NEAR(ring.at("mass_kg"), 9 * kPi * 7.85 / 1000, 1e-6);
  EXPECT_NEAR(ring.at("surface_area_cm2"), 24 * kPi, 1e-4);
  ExpectPoint(ring.at("center_of_mass"), {0, 0, 15});
  const auto box = Succeed(kBox);
  ExpectPoint(box.at("min"), {-20, -20, 0});
  ExpectPoint(box.at("max"), {20, 20, 30});
  // The ends are its planar faces.
  ExpectAnswer(
      kDraftAngle, L"{}", L"Draft analysis: min=90.00\u00b0 max=90.00\u00b0, 0 undrafted face(s).",
      LR"({"pull_direction":"Z","min_angle_deg":90.000,"max_angle_deg":90.000,"undrafted_face_count":0})");
}

TEST_F(Analysis, OfTwoPointsNeedsNoDocument) {
  // 3² + 4² + 12² = 13².
  ExpectAnswer(
      L"api_analysis_measure_distance", LR"({"x1":1,"y1":-2,"z1":0.5,"x2":4,"y2":2,"z2":12.5})",
      L"Distance: 13.0000 mm.",
      LR"({"point1":{"x_mm":1,"y_mm":-2,"z_mm":0.5},"point2":{"x_mm":4,"y_mm":2,"z_mm":12.5},"distance_mm":13})");
}

TEST_F(Analysis, WhatCantBeMeasuredIsTold) {
  NewPart();
  ExpectFailure(kMass, L"{}", L"Failed to compute mass properties (status=-1).");
  ExpectFailure(kBox, L"{}", L"Unable to compute document bounding box (status=-1).");
  EXPECT_EQ(Run(kDraftAngle).message, L"No planar faces found to analyse.");
  ExpectFailure(kClashes, L"{}", L"Assembly operations require an active assembly document.");
  NewAssembly();
  ExpectFailure(kDraftAngle, L"{}", L"AnalyzeDraftAngle requires an active part document.");
  Current().type = PRO_MDL_DRAWING;
  ExpectFailure(kMass, L"{}", L"Active document must be a part or assembly.");
  Current().type = PRO_MDL_ASSEMBLY;
}

class Interference : public AssemblyTest {
 protected:
  void ExpectClashes(const std::wstring& message, int count, const std::wstring& pairs) {
    ExpectAnswer(kClashes, L"{}", message,
                 Format(LR"({"interference_count":%d,"pairs":[%s]})", count, pairs));
  }
};

constexpr const wchar_t* kTooFew =
    L"Assembly has fewer than 2 components \u00e2\u20ac\u201d no interference possible.";
constexpr const wchar_t* kNone = L"No interference detected.";
constexpr const wchar_t* kOne = L"1 interference(s) detected.";

TEST_F(Interference, BetweenTwoBlocks) {
  ExpectClashes(kTooFew, 0, L"");
  PlaceBlocks();
  ExpectClashes(kNone, 0, L"");
  // The blocks are 10 by 20 by 30. In (5, 10, 20), B shares 5 * 10 * 10 mm³ with A; in (10, 0, 0) a face.
  PlaceOf(L"B") = bench::Shifted(bench::kNoMove, {5, 10, 20});
  ExpectClashes(kOne, 1, LR"({"occ1":"A","occ2":"B","volume_cm3":0.5})");
  PlaceOf(L"B") = bench::Shifted(bench::kNoMove, {10, 0, 0});
  ExpectClashes(kNone, 0, L"");
  assembly().length_unit = bench::LengthUnit::kInch;
  PlaceOf(L"B") = bench::Shifted(bench::kNoMove, {5 / 25.4, 10 / 25.4, 20 / 25.4});
  ExpectClashes(kOne, 1, LR"({"occ1":"A","occ2":"B","volume_cm3":0.5})");

  faults().Fail("ProSelectionAsmcomppathGet", -1);
  faults().Fail("ProFitInterferencevolumeCompute", -1);
  ExpectClashes(kOne, 1, LR"({"occ1":"unknown","occ2":"B","volume_cm3":0})");
  // Without a list there is nothing to tell, whatever the status.
  for (const int status : {-4, -1}) {
    faults().Fail("ProFitGlobalinterferenceCompute", status);
    ExpectClashes(kNone, 0, L"");
  }
  Succeed(L"api_assembly_suppress_occurrence", LR"({"occurrence_name":"B"})");
  ExpectClashes(kTooFew, 0, L"");
}

TEST_F(Interference, DeepInASubAssemblyIsThatOfItsTopOccurrence) {
  PlaceBlocks();
  NewAssembly();
  SaveAs(L"inner.asm");
  Succeed(L"api_assembly_add_component", LR"({"file_path":"block","component_name":"DEEP","x_mm":1})");
  SaveAs(L"inner.asm");
  ActivateAssembly();
  Succeed(L"api_assembly_add_component",
          LR"({"file_path":"inner.asm","component_name":"SUB","x_mm":-9,"z_mm":26})");
  // The deep block begins in (1 - 9, 0, 26) and ends at x = 2: 2 * 20 * (30 - 26) mm³ lie in A.
  ExpectClashes(kOne, 1, LR"({"occ1":"A","occ2":"SUB","volume_cm3":0.16})");
}

}  // namespace
}  // namespace vek::support
