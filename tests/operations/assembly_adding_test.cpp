// Components put into an assembly: where their models come from, where they stand, and what they are called.
#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>

#include "addin/ops/common/history.h"
#include "addin/text/utf8.h"
#include "tests/operations/assembly_ground.h"
#include "tests/support/captured_log.h"

namespace vek::support {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Field;

constexpr const wchar_t* kAdd = L"api_assembly_add_component";
constexpr const wchar_t* kBolt = LR"({"file_path":"bolt"})";

class AssemblyAdding : public AssemblyTest {
 protected:
  // The first version of a part's file in a directory of its own, without the part in session. The path as a
  // request has it.
  std::wstring PartFile(const std::wstring& folder, const std::wstring& name) {
    std::filesystem::create_directory(directory() / folder);
    NewPart();
    const std::wstring path = SaveAs(folder + L"\\" + name + L".prt");
    ProMdlErase(bench::Handle(Current()));
    ActivateAssembly();
    return path + L".1";
  }
  void ExpectLogged(const std::wstring& text) {
    EXPECT_THAT(CapturedLog(), Contains(Field(&CapturedLine::text, text)));
  }
};

TEST_F(AssemblyAdding, WhatCannotBeAddedIsRefused) {
  std::ofstream(directory() / L"sheet.drw");
  const std::pair<std::wstring, const wchar_t*> cases[] = {
      {L"gone.prt", L"Component file not found: 'gone.prt'."},
      {JsonPath(L"sheet.drw"), L"Unsupported component type. Expected .prt or .asm."},
      {JsonPath(L""), L"Unable to parse file_path into a Creo model name."},
  };
  for (const auto& [file_path, message] : cases)
    ExpectFailure(kAdd, Format(LR"({"file_path":"%s"})", file_path), message);
}

TEST_F(AssemblyAdding, AModelInSessionNeedsNoFileAndTakesItsPlaceAndName) {
  Part(L"BOLT");
  const std::uint64_t mark = host().journal.Mark();
  const auto result = Run(kAdd, LR"({"file_path":"bolt","x_mm":1,"y_mm":"-2.5","z_mm":3e2})");
  EXPECT_EQ(result.message,
            L"Component 'BOLT' -> occurrence 'BOLT' inserted. transform=translation-only, T=(1,-2.5,300) mm, "
            L"R=identity");
  EXPECT_EQ(result.dataJson,
            Format(LR"({"occurrence_name":"BOLT","local_path":"%s","copied_beside_assembly":false})",
                   JsonPath(L"BOLT.prt")));
  ExpectLogged(L"[MCP] " + result.message);
  ExpectAt(L"BOLT", {1, -2.5, 300});
  EXPECT_TRUE(UndoStack().empty());
  EXPECT_THAT(
      CallsSince(mark,
                 {"ProAsmcompAssemble", "ProModelitemNameSet", "ProAsmcompRegenerate", "ProSolidRegenerate",
                  "ProTreetoolRefresh", "ProWindowCurrentGet", "ProWindowRefresh"}),
      ElementsAre("ProAsmcompAssemble", "ProModelitemNameSet", "ProAsmcompRegenerate", "ProSolidRegenerate",
                  "ProTreetoolRefresh", "ProWindowCurrentGet", "ProWindowRefresh"));

  Succeed(kAdd, kBolt);
  ExpectAt(L"BOLT_2", {0, 0, 0});
  for (const wchar_t* name : {L"NAME", L"NAME_2"})
    EXPECT_EQ(Succeed(kAdd, LR"({"file_path":"bolt","component_name":"NAME"})")["occurrence_name"],
              EncodeUtf8(name));
}

TEST_F(AssemblyAdding, ATransformCountsWhereItReadsAsOne) {
  Part(L"BOLT");
  assembly().length_unit = bench::LengthUnit::kInch;
  static constexpr wchar_t kAt[] = LR"({"file_path":"bolt","component_name":"C","x_mm":254,"transform":%s})";
  // 25.4 mm are an inch; the fourth row is of no account.
  const auto whole = Run(kAdd, Format(kAt, L"[[0,-1,0,25.4],[1,0,0,50.8],[0,0,1,-25.4],[9,9,9,9]]"));
  EXPECT_TRUE(whole.message.ends_with(L"transform=full4x4, T=(25.4,50.8,-25.4) mm"));
  // The rotation goes in as it is.
  const bench::Matrix expected = {{{0, -1, 0, 1}, {1, 0, 0, 2}, {0, 0, 1, -1}, {0, 0, 0, 1}}};
  for (int row = 0; row < 4; ++row)
    EXPECT_THAT(PlaceOf(L"C")[row], testing::Pointwise(testing::DoubleNear(1e-12), expected[row]));
  const auto rows = Run(kAdd, Format(kAt, L"[[1,0,0,1],[0,1,0,2],[0,0,1,3]]"));
  EXPECT_TRUE(rows.message.ends_with(L"transform=translation-only, T=(254,0,0) mm, R=identity"));
  ExpectAt(L"C_2", {10, 0, 0});
}

TEST_F(AssemblyAdding, AFileFromElsewhereIsCopiedBesideTheAssembly) {
  const std::wstring path = PartFile(L"lib", L"pin");
  const auto working = std::filesystem::current_path();
  const auto result = Run(kAdd, Format(LR"({"file_path":"%s"})", path));
  EXPECT_EQ(result.message,
            L"Component 'PIN' -> occurrence 'PIN' inserted (copied next to assembly). "
            L"transform=translation-only, T=(0,0,0) mm, R=identity");
  EXPECT_NE(result.dataJson.find(LR"("copied_beside_assembly":true)"), std::wstring::npos);
  EXPECT_TRUE(std::filesystem::exists(directory() / L"pin.prt.1"));
  EXPECT_EQ(host().session.FindByName(L"PIN", PRO_MDL_PART)->directory, assembly().directory);
  EXPECT_EQ(std::filesystem::current_path(), working);
  EXPECT_EQ(&Current(), &assembly());
}

TEST_F(AssemblyAdding, DirectoriesAreComparedWithoutCaseAndSlashes) {
  std::wstring directory = assembly().directory;
  std::ranges::replace(directory, L'\\', L'/');
  Part(L"BOLT", directory + L"//");
  std::ranges::transform(directory, directory.begin(), [](wchar_t c) { return c == L'v' ? L'V' : c; });
  Part(L"PIN", directory);
  for (const wchar_t* name : {L"bolt", L"pin"})
    EXPECT_EQ(Succeed(kAdd, Format(LR"({"file_path":"%s"})", name))["copied_beside_assembly"], false);
}

TEST_F(AssemblyAdding, WhatCannotLieBesideTheAssemblyIsRefused) {
  Part(L"BOLT", L"C:\\nowhere");
  faults().Fail("ProMdlnameBackup", PRO_TK_GENERAL_ERROR);
  ExpectFailure(
      kAdd, kBolt,
      Format(L"Failed to place component next to assembly at '%s' (status=-1).", assembly().directory));
  assembly().directory.clear();
  ExpectFailure(kAdd, kBolt, L"Save the assembly to disk first so the component can be placed next to it.");
}

TEST_F(AssemblyAdding, GroundingFixesTheComponentOrWarnsInTheLog) {
  Part(L"BOLT");
  const std::wstring grounded = LR"({"file_path":"bolt","grounded":true})";
  EXPECT_TRUE(Run(kAdd, grounded).message.ends_with(L"R=identity (grounded)"));
  ASSERT_EQ(Constraints(L"BOLT").size(), 1u);
  EXPECT_EQ(Constraints(L"BOLT")[0].type, 13);

  faults().Fail("ProAsmcompConstraintsSet", PRO_TK_GENERAL_ERROR);
  EXPECT_TRUE(Run(kAdd, grounded).message.ends_with(L" (grounded)"));
  ExpectLogged(
      L"WARNING: component inserted but grounding failed: Failed to apply FIX constraint (status=-1).");
  EXPECT_TRUE(assembly().features.back()->component->constraints.empty());
}

}  // namespace
}  // namespace vek::support
