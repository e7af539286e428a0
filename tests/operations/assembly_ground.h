// An assembly that lies in the test's directory, and components placed in it.
#pragma once

#include <ProAsmcomp.h>

#include "addin/text/format.h"
#include "bench/host/features/component.h"
#include "bench/host/model/component.h"
#include "tests/support/operation_fixture.h"

namespace vek::support {

class AssemblyTest : public OperationTest {
 protected:
  void SetUp() override {
    OperationTest::SetUp();
    assembly_ = &NewAssembly();
    Succeed(L"api_document_save_as", Format(LR"({"file_path":"%s"})", JsonPath(L"frame.asm")));
  }

  bench::Model& assembly() { return *assembly_; }

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

  static ProAsmcomp Record(bench::Model& assembly, const bench::Feature& feature) {
    return {PRO_FEATURE, feature.id, bench::Handle(assembly)};
  }

  void ExpectAt(const std::wstring& name, const bench::Vector3& expected) {
    const bench::Feature* const feature = FeatureNamed(name);
    ASSERT_TRUE(feature != nullptr && feature->component != nullptr);
    const bench::Vector3 at = bench::TranslationOf(feature->component->place);
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(at[i], expected[i], 1e-9) << "axis " << i;
  }

 private:
  bench::Model* assembly_ = nullptr;
};

}  // namespace vek::support
