// An assembly that lies in the test's directory, and components placed in it: behind the operations' back, or
// by them, twice the same part for the tests of constraints.
#pragma once

#include <ProAsmcomp.h>

#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "bench/host/features/component.h"
#include "bench/host/model/component.h"
#include "tests/support/operation_fixture.h"

namespace vek::support {

class AssemblyTest : public OperationTest {
 protected:
  // Where the occurrence B of a part placed twice begins, in mm; A lies in the origin. Both are unturned.
  static constexpr bench::Vector3 kPlaceOfB{30, 40, 7};

  void SetUp() override {
    OperationTest::SetUp();
    assembly_ = &NewAssembly();
    SaveAs(L"frame.asm");
  }

  bench::Model& assembly() { return *assembly_; }
  void ActivateAssembly() { Succeed(L"api_document_activate", LR"({"name_or_path":"frame.asm"})"); }
  // The current model. The path as a request has it.
  std::wstring SaveAs(const std::wstring& file) {
    const std::wstring path = JsonPath(file);
    Succeed(L"api_document_save_as", Format(LR"({"file_path":"%s"})", path));
    return path;
  }

  // A part in session without a body, as one that lies in `directory`.
  bench::Model& Part(const std::wstring& name, const std::wstring& directory) {
    bench::Model& part = AddModel(name, PRO_MDL_PART);
    part.directory = directory;
    return part;
  }
  bench::Model& Part(const std::wstring& name) { return Part(name, assembly().directory); }

  // A component behind the operations' back. Model units.
  bench::Feature& Place(bench::Model& model, const std::wstring& name, const bench::Vector3& at = {0, 0, 0}) {
    const auto outcome = bench::AssembleComponent(assembly(), model, bench::Shifted(bench::kNoMove, at));
    bench::Feature& feature = *assembly().FindFeature(outcome.feature);
    feature.name = name;
    return feature;
  }

  // The current part, placed twice by the operations.
  void PlaceTwice(const std::wstring& part, const wchar_t* first, const wchar_t* second) {
    SaveAs(part + L".prt");
    ActivateAssembly();
    Succeed(L"api_assembly_add_component",
            Format(LR"({"file_path":"%s","component_name":"%s"})", part, first));
    Succeed(
        L"api_assembly_add_component",
        Format(LR"({"file_path":"%s","component_name":"%s","x_mm":30,"y_mm":40,"z_mm":7})", part, second));
  }
  // As A and B, which stand on their first plane: the bottom, whose normal is -Z.
  void PlaceBlocks() {
    NewPart();
    Block(10, 20, 30);
    PlaceTwice(L"block", L"A", L"B");
  }

  bench::Feature& Occurrence(const std::wstring& name) {
    bench::Feature* const feature = FeatureNamed(name);
    if (feature == nullptr || !feature->component) throw std::logic_error("no such occurrence");
    return *feature;
  }
  ProAsmcomp Record(const bench::Feature& feature) {
    return {PRO_FEATURE, feature.id, bench::Handle(assembly())};
  }
  bench::Matrix& PlaceOf(const std::wstring& name) { return Occurrence(name).component->place; }
  std::vector<bench::ComponentConstraint>& Constraints(const std::wstring& name) {
    return Occurrence(name).component->constraints;
  }

  // Where its origin is; model units.
  void ExpectAt(const std::wstring& name, const bench::Vector3& expected) {
    const bench::Vector3 at = bench::TranslationOf(PlaceOf(name));
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(at[i], expected[i], 1e-9) << "axis " << i;
  }
  // Where a point of the occurrence's part, in mm, lies in the assembly; in mm.
  void ExpectPoint(const std::wstring& name, const bench::Vector3& point, const bench::Vector3& expected) {
    const double unit = bench::MillimetresPer(assembly().length_unit);
    const bench::Vector3 lies = bench::MovedBy(bench::Scaled(PlaceOf(name), unit), point);
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(lies[i], expected[i], 1e-6) << "axis " << i;
  }

 private:
  bench::Model* assembly_ = nullptr;
};

}  // namespace vek::support
