// An assembly with two occurrences of one part, for the tests of constraints.
#pragma once

#include "addin/text/format.h"
#include "bench/host/model/component.h"
#include "tests/support/operation_fixture.h"

namespace vek::support {

class AssemblyPairTest : public OperationTest {
 protected:
  // Where the occurrence B begins, in mm; A lies in the origin. Both are unturned.
  static constexpr bench::Vector3 kPlaceOfB{100, 50, 7};

  // The part must be current. It and the assembly, which has the unit, lie in the test's directory.
  void PlaceTwice(bench::LengthUnit unit = bench::LengthUnit::kMillimetre) {
    Succeed(L"api_document_save_as", Format(LR"({"file_path":"%s"})", JsonPath(L"block.prt")));
    assembly_ = &NewAssembly();
    assembly_->length_unit = unit;
    Succeed(L"api_document_save_as", Format(LR"({"file_path":"%s"})", JsonPath(L"frame.asm")));
    Succeed(L"api_assembly_add_component", LR"({"file_path":"BLOCK","component_name":"A"})");
    Succeed(L"api_assembly_add_component",
            LR"({"file_path":"BLOCK","component_name":"B","x_mm":100,"y_mm":50,"z_mm":7})");
  }

  void PlaceBlocks(bench::LengthUnit unit = bench::LengthUnit::kMillimetre) {
    NewPart();
    Block(10, 20, 30);
    PlaceTwice(unit);
  }

  // About the part's Z axis, from z = 0 to 20, with the radius 5.
  void PlaceShafts() {
    NewPart();
    Succeed(L"api_sketch_create", LR"({"name":"ROUND","plane":"XY"})");
    Succeed(L"api_sketch_circle_center_radius", LR"({"sketch_name":"ROUND","cx":0,"cy":0,"radius":5})");
    Succeed(L"api_feature_extrude", LR"({"sketch_name":"ROUND","distance_mm":20})");
    PlaceTwice();
  }

  bench::Feature& Occurrence(const std::wstring& name) {
    bench::Feature* const feature = FeatureNamed(name);
    if (feature == nullptr || !feature->component) throw std::logic_error("no such occurrence");
    return *feature;
  }
  const std::vector<bench::ComponentConstraint>& Constraints(const std::wstring& name) {
    return Occurrence(name).component->constraints;
  }

  // Where a point of the occurrence's part, in mm, lies in the assembly; in mm.
  void ExpectPoint(const std::wstring& name, const bench::Vector3& point, const bench::Vector3& expected) {
    const double unit = bench::MillimetresPer(assembly_->length_unit);
    const bench::Vector3 lies = bench::MovedBy(bench::Scaled(Occurrence(name).component->place, unit), point);
    EXPECT_NEAR(lies[0], expected[0], 1e-6);
    EXPECT_NEAR(lies[1], expected[1], 1e-6);
    EXPECT_NEAR(lies[2], expected[2], 1e-6);
  }

  bench::Model& assembly() { return *assembly_; }

 private:
  bench::Model* assembly_ = nullptr;
};

}  // namespace vek::support
