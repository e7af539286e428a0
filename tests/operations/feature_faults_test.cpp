// Every toolkit call of each operation here fails once: what is told then, step by step.
#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <fstream>

#include "addin/ops/sketch/removal.h"
#include "tests/operations/feature_test.h"

namespace vek::support {
namespace {

class FeatureFaults : public FeatureTest {
 protected:
  // A block of 40 x 20 x 10 mm with a hole through it, "Extrude_1".
  void DrilledBlock() {
    Block(40, 20, 10);
    Rectangle(L"BORE", L"XY", 10, 5, 14, 9);
    ASSERT_EQ(Create(L"api_feature_extrude", LR"({"sketch_name":"BORE","distance_mm":10,"operation":"cut"})"),
              L"Extrude_1");
  }
};

TEST_F(FeatureFaults, Extrude) {
  Rectangle(L"S", L"XY", 0, 0, 10, 10);
  ExpectFailures(
      L"api_feature_extrude", LR"({"sketch_name":"S","distance_mm":10})",
      {L"Failed to allocate extrude element tree.", L"Failed to populate extrude feature type elements.",
       L"Failed to add extrude section element.", L"Failed to set extrude direction.",
       L"Failed to build extrude depth compound.", L"Failed to set extrude depth values.",
       L"Failed to add extrude draft compound.", L"Failed to set extrude draft option.",
       L"Failed to select the sketched curve feature.", L"Failed to build sketch selection array.",
       L"Creo could not create the feature from sketch 'S' (status=-8, errors=0)."});
}

TEST_F(FeatureFaults, RevolveThatPreparesItsAxis) {
  ExpectFailures(
      L"api_feature_revolve", LR"({"sketch_name":"S","angle_deg":90})",
      {L"Failed to read sketch section while preparing revolve axis.",
       L"Sketch has no entities for a revolve axis.",
       L"Revolve requires a sketch centerline axis. Draw the axis with api_sketch_line_two_points using "
       L"\"construction\": true or \"centerline\": true (Creo maps both to a centerline).",
       L"Failed to allocate redefine options.",
       L"Failed to update sketch with a revolve centerline (status=-8).",
       L"Sketch still has no centerline after axis promotion.", L"Failed to allocate revolve element tree.",
       L"Failed to populate revolve feature type elements.", L"Failed to add revolve section element.",
       L"Failed to set revolve direction.", L"Failed to set revolve axis option.",
       L"Failed to set revolve angle.", L"Failed to select the sketched curve feature.",
       L"Failed to build sketch selection array.",
       L"Creo could not create the feature from sketch 'S' (status=-8, errors=0)."},
      0, [this] {
        if (FeatureNamed(L"S") != nullptr) sketch::DeleteSketch(L"S");
        Rectangle(L"S", L"XY", 2, 0, 5, 3);
        Draw(L"api_sketch_polyline", L"S", LR"("points":[[0,-5],[0,5]],"construction":true)");
      });
}

TEST_F(FeatureFaults, Fillet) {
  Block(40, 20, 10);
  ExpectFailures(
      L"api_edge_fillet", LR"({"radius_mm":1,"edge_selectors":[">X",">Z"]})",
      {L"No edges matched the requested fillet/chamfer target.", L"Failed to allocate edge curve collection.",
       L"Failed to allocate edge collection instruction.", L"Failed to add edge to curve collection.",
       L"Failed to allocate round element tree.", L"Failed to populate round element tree.",
       L"Failed to set round/chamfer leg value.", L"Failed to set round attach type.",
       L"Creo could not create the fillet feature (status=-8, errors=0)."});
}

TEST_F(FeatureFaults, Chamfer) {
  Block(40, 20, 10);
  ExpectFailures(
      L"api_edge_chamfer",
      LR"({"distance_mm":1,"type":"distance_angle","angle_deg":45,"edge_selectors":[">X",">Z"]})",
      {L"No edges matched the requested fillet/chamfer target.", L"Failed to allocate edge curve collection.",
       L"Failed to allocate edge collection instruction.", L"Failed to add edge to curve collection.",
       L"Failed to allocate chamfer element tree.", L"Failed to populate chamfer element tree.",
       L"Failed to resolve a reference face for two_distance/distance_angle chamfer.",
       L"Failed to set chamfer reference surface.", L"Failed to add chamfer radii.",
       L"Failed to set round/chamfer leg value.", L"Failed to finalize chamfer tree.",
       L"Creo could not create the chamfer feature (status=-8, errors=0)."});
}

TEST_F(FeatureFaults, Shell) {
  Block(40, 20, 10);
  ExpectFailures(L"api_feature_shell", LR"({"thickness_mm":2,"face_indices":[1],"face_selectors":[">Z"]})",
                 {L"face_indices entry 1 is out of range (part has 0 surfaces).",
                  L"Failed to allocate shell element tree.", L"Failed to set shell feature type.",
                  L"Failed to set shell removal surfaces.", L"Failed to set shell thickness.",
                  L"Creo could not create the shell feature (status=-8, errors=0)."});
}

TEST_F(FeatureFaults, Hole) {
  Block(40, 20, 10);
  NewSketch(L"P", L"XY");
  Draw(L"api_sketch_point", L"P", LR"("x":10,"y":10)");
  ExpectFailures(L"api_feature_hole", LR"({"sketch_name":"P","diameter_mm":4,"depth_mm":6})",
                 {L"Sketch 'P' has no datum points. Add a sketch point to place the hole.",
                  L"Failed to allocate hole element tree.", L"Failed to populate hole parameters.",
                  L"Failed to set hole placement.", L"Failed to set hole direction from the sketch plane.",
                  L"Creo could not create the hole feature (status=-8, errors=0)."});
}

TEST_F(FeatureFaults, Rotate) {
  Block(40, 20, 10);
  ExpectFailures(L"api_feature_transform_rotate",
                 LR"({"axis_start":[0,0,0],"axis_direction":[0,0,1],"angle_deg":90})",
                 {L"Failed to collect solid surfaces to rotate.", L"Failed to allocate rotate element tree.",
                  L"Failed to populate rotate element tree.", L"Failed to allocate rotate move value.",
                  L"Failed to set rotate transformation matrix.",
                  L"Creo could not create the rotate feature (status=-8, errors=0)."});
}

TEST_F(FeatureFaults, Sweep) {
  NewSketch(L"PROFILE", L"TOP");
  DrawCircle(L"PROFILE");
  NewSketch(L"PATH", L"FRONT");
  Draw(L"api_sketch_polyline", L"PATH", LR"("points":[[0,0],[30,0],[30,20]])");
  ExpectFailures(L"api_feature_sweep", LR"({"profile_sketch_name":"PROFILE","path_sketch_name":"PATH"})",
                 {L"Failed to extract the sweep profile section from 'PROFILE' (status=-8).",
                  L"Failed to collect curves from the path sketch for the sweep trajectory.",
                  L"Failed to allocate sweep element tree.", L"Failed to populate sweep element tree.",
                  L"Creo could not create the sweep feature (status=-8, errors=0).",
                  L"Sweep incomplete feature created but section extract failed."});
}

TEST_F(FeatureFaults, Thread) {
  const std::filesystem::path charts = directory() / L"text" / L"hole";
  std::filesystem::create_directories(charts);
  std::ofstream(charts / L"ISO.hol") << "THREAD_DATA\nM2x.4\n";
  ::SetEnvironmentVariableW(L"PRO_DIRECTORY", directory().c_str());
  NewSketch(L"STUD", L"XY");
  DrawCircle(L"STUD");
  Succeed(L"api_feature_extrude", LR"({"sketch_name":"STUD","distance_mm":7})");
  ExpectFailures(L"api_feature_thread", LR"({"feature_name":"Extrude 1","thread_designation":"M2x.4"})",
                 {L"Feature 'Extrude 1' has no cylindrical surface for a cosmetic thread.",
                  L"Failed to reference the threaded surface.",
                  L"Failed to find a start surface/edge for the cosmetic thread."});
  ::SetEnvironmentVariableW(L"PRO_DIRECTORY", nullptr);
}

// A pattern without a handle stays in the part.
TEST_F(FeatureFaults, RectangularPattern) {
  DrilledBlock();
  ExpectFailures(
      L"api_pattern_rectangular",
      LR"({"feature_names":["Extrude_1"],"x_direction":"X","x_count":2,"x_spacing_mm":6,
                     "y_direction":"Z","y_count":2,"y_spacing_mm":6})",
      {L"Failed to allocate direction pattern tree.", L"Failed to populate direction pattern root.",
       L"Failed to populate direction pattern direction branch.",
       L"Failed to set direction pattern instance count.",
       L"Creo could not create the rectangular pattern (status=-8).",
       L"Pattern was created but its pattern handle could not be resolved."},
      1);
}

// The axis is made first and may stay as well.
TEST_F(FeatureFaults, CircularPattern) {
  DrilledBlock();
  ExpectFailures(L"api_pattern_circular",
                 LR"({"feature_names":["Extrude_1"],"axis":"Y","count":2,"angle_deg":10})",
                 {L"Failed to allocate datum axis tree.", L"Failed to populate datum axis element tree.",
                  L"Creo could not create the datum_axis feature (status=-8, errors=0).",
                  L"Datum axis was created but its geometry handle was not found.",
                  L"Failed to allocate axis pattern tree.", L"Failed to populate axis pattern tree.",
                  L"Failed to set axis pattern angle increment.", L"Failed to set axis pattern whole angle.",
                  L"Creo could not create the circular pattern (status=-8).",
                  L"Pattern was created but its pattern handle could not be resolved."},
                 2);
}

TEST_F(FeatureFaults, Mirror) {
  Block(20, 10, 5);
  ExpectFailures(
      L"api_pattern_mirror", LR"({"feature_names":["Extrude 1"],"mirror_plane":"RIGHT"})",
      {L"No mirrorable geometry found on the named feature(s). Creo Toolkit cannot mirror features the way "
       L"the "
       L"UI does; it mirrors surfaces/quilts/curves/axes owned by those features.",
       L"Failed to allocate mirror element tree.", L"Failed to populate geometry mirror element tree.",
       L"Creo could not create the mirror feature (status=-8, errors=0)."});
}

TEST_F(FeatureFaults, DeletingSuppressingAndResuming) {
  Block(40, 20, 10);
  const std::wstring block = LR"({"feature_name":"Extrude 1"})";
  const wchar_t* const ids = L"Failed to allocate feature id array.";
  ExpectFailures(
      L"api_feature_suppress", block,
      {ids, L"Failed to allocate suppress options.", L"Failed to suppress feature 'Extrude 1' (status=-8)."},
      0, [&] { Run(L"api_feature_unsuppress", block); });
  ExpectFailures(
      L"api_feature_unsuppress", block,
      {ids, L"Failed to allocate resume options.", L"Failed to unsuppress feature 'Extrude 1' (status=-8)."},
      0, [&] { Run(L"api_feature_suppress", block); });
  ExpectFailures(L"api_feature_delete", block,
                 {ids, L"Failed to allocate feature delete options.",
                  L"Failed to delete feature 'Extrude 1' (status=-8)."},
                 0, [&] {
                   if (FeatureNamed(L"Extrude 1") == nullptr)
                     Create(L"api_feature_extrude", LR"({"sketch_name":"BLOCK","distance_mm":10})");
                 });
}

}  // namespace
}  // namespace vek::support
