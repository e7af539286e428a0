#include "addin/ops/common/model_access.h"

#include <gtest/gtest.h>

#include "addin/ops/common/units.h"
#include "addin/ops/common/working_directory.h"
#include "bench/host/model_file.h"
#include "tests/support/operation_fixture.h"

namespace vek {
namespace {

class ModelAccess : public support::OperationTest {};

TEST_F(ModelAccess, KnowsThreeTypesByWordAndExtension) {
  const struct {
    int type;
    const wchar_t* word;
    const wchar_t* extension;
  } cases[] = {{1, L"assembly", L"asm"},
               {2, L"part", L"prt"},
               {4, L"drawing", L"drw"},
               {3, L"unknown", L""},
               {-1, L"unknown", L""}};
  for (const auto& each : cases) {
    EXPECT_EQ(ModelTypeWord(each.type), each.word);
    EXPECT_EQ(ModelTypeExtension(each.type), each.extension);
  }
  EXPECT_EQ(ExtensionToModelType(L"PRT"), 2);
  EXPECT_EQ(ExtensionToModelType(L"Asm"), 1);
  EXPECT_EQ(ExtensionToModelType(L"drw"), 4);
  for (const wchar_t* other : {L"", L"prt ", L"stp"}) EXPECT_EQ(ExtensionToModelType(other), -1);
}

TEST_F(ModelAccess, RequiresTheActiveModelInTheFamilysWords) {
  const ActiveModelWords words{L"none", L"unreadable", L"wrong"};
  ProMdl model = this;
  EXPECT_EQ(RequireActiveModelOfType(kPartType, words, model).message, L"none");
  EXPECT_EQ(model, nullptr);

  ProMdl part = bench::Handle(NewPart());
  faults().NoEffect("ProMdlCurrentGet");
  EXPECT_EQ(RequireActiveModelOfType(kPartType, words, model).message, L"none");
  faults().Fail("ProMdlTypeGet", -1);
  EXPECT_EQ(RequireActiveModelOfType(kPartType, words, model).message, L"unreadable");
  EXPECT_EQ(RequireActiveModelOfType(kAssemblyType, words, model).message, L"wrong");
  EXPECT_EQ(model, nullptr);

  const auto active = RequireActiveModelOfType(kPartType, words, model);
  EXPECT_TRUE(active.success);
  EXPECT_EQ(active.message, L"");
  EXPECT_EQ(active.dataJson, L"null");
  EXPECT_EQ(model, part);
}

TEST_F(ModelAccess, PutsPathsTogetherFromWhatTheHostKnows) {
  bench::Model& model = AddModel(L"BRACKET", PRO_MDL_PART);
  ProMdl handle = bench::Handle(model);
  EXPECT_EQ(ModelFullPath(handle, 2), L"BRACKET.prt");  // never saved: no directory
  model.directory = L"C:\\parts\\";
  EXPECT_EQ(ModelFullPath(handle, 2), L"C:\\parts\\BRACKET.prt");
  EXPECT_EQ(ModelFullPath(handle, 99), L"C:\\parts\\BRACKET");
  faults().Fail("ProMdlMdlnameGet", -1);
  EXPECT_EQ(ModelFullPath(handle, 2), L"");
}

TEST_F(ModelAccess, FindsOpenModelsByNameFileNameAndPath) {
  bench::Model& drawing = AddModel(L"BRACKET", PRO_MDL_DRAWING);
  bench::Model& frame = AddModel(L"FRAME", PRO_MDL_ASSEMBLY);
  bench::Model& part = AddModel(L"BRACKET", PRO_MDL_PART);
  drawing.directory = part.directory = L"C:\\parts";

  const std::pair<const wchar_t*, bench::Model*> cases[] = {
      {L"  bracket\t", &part},                  // parts come first, whenever they came into session
      {L"bracket.drw", &part},                  // the extension is cut before names are compared
      {L"c:\\PARTS\\bracket.drw", &drawing},    // the whole path is compared with its extension
      {L"C:\\elsewhere\\frame.asm.7", &frame},  // a path to elsewhere means the model of that name
      {L"frame.prt", &frame},
      {L"C:/parts/bracket.prt.prt.2", &part},
      {L"bracket.txt", nullptr},
      {L"fram", nullptr},
      {L"", nullptr},
  };
  for (const auto& [text, model] : cases)
    EXPECT_EQ(FindOpenModel(text), model ? bench::Handle(*model) : nullptr) << text;
}

TEST_F(ModelAccess, SkipsWhatTheHostDoesNotTellOfOpenModels) {
  ProMdl part = bench::Handle(AddModel(L"FRAME", PRO_MDL_PART));
  ProMdl assembly = bench::Handle(AddModel(L"FRAME", PRO_MDL_ASSEMBLY));
  EXPECT_EQ(FindOpenModel(L"FRAME"), part);
  faults().Fail("ProMdlTypeGet", -1);
  EXPECT_EQ(FindOpenModel(L"FRAME"), assembly);
  faults().Fail("ProSessionMdlList", -1);
  EXPECT_EQ(FindOpenModel(L"FRAME"), assembly);
  EXPECT_EQ(FindOpenModel(L"FRAME"), part);
}

TEST_F(ModelAccess, ActivatesInANewWindowOrInTheOneThatIsThere) {
  bench::Model& first = NewPart();
  NewPart();
  const std::vector<std::string> steps = {"ProObjectwindowMdlnameCreate", "ProMdlDisplay", "ProMdlWindowGet",
                                          "ProWindowActivate", "ProWindowRepaint"};
  auto mark = host().journal.Mark();
  EXPECT_TRUE(ActivateModel(bench::Handle(first)).success);
  EXPECT_EQ(CallsSince(mark, steps), steps);
  EXPECT_EQ(&Current(), &first);

  bench::Model& windowless = AddModel(L"BEHIND", PRO_MDL_PART);
  mark = host().journal.Mark();
  EXPECT_TRUE(ActivateModel(bench::Handle(windowless)).success);
  EXPECT_EQ(CallsSince(mark, steps),
            (std::vector<std::string>{"ProObjectwindowMdlnameCreate", "ProMdlDisplay", "ProWindowActivate",
                                      "ProWindowRepaint"}));
  EXPECT_EQ(&Current(), &windowless);
}

TEST_F(ModelAccess, TellsWhyAModelCanNotBeActivated) {
  ProMdl part = bench::Handle(NewPart());  // it has a window, so that a second one is refused
  const struct {
    const char* call;
    int status;
    const wchar_t* message;
  } cases[] = {
      {"ProMdlMdlnameGet", -1, L"Failed to read model name for activation."},
      {"ProMdlTypeGet", -1, L"Failed to read model type for activation."},
      {"ProMdlDisplay", -8, L"Failed to display model (status=-8)."},
      {"ProMdlWindowGet", -4, L"Failed to resolve model window."},
  };
  for (const auto& each : cases) {
    faults().Fail(each.call, each.status);
    const auto result = ActivateModel(part);
    EXPECT_FALSE(result.success);
    EXPECT_EQ(result.message, each.message);
    EXPECT_EQ(result.dataJson, L"null");
  }

  ProMdl layout = bench::Handle(AddModel(L"LAYOUT", static_cast<ProMdlType>(3)));
  EXPECT_EQ(ActivateModel(layout).message, L"Unsupported model type for activation.");
}

TEST_F(ModelAccess, OverlooksWhatDoesNotHinderAnActivation) {
  bench::Model& model = AddModel(L"BRACKET", PRO_MDL_PART);
  for (const char* call : {"ProMdlDisplay", "ProWindowActivate", "ProWindowRepaint"}) faults().Fail(call, -1);
  const auto result = ActivateModel(bench::Handle(model));
  EXPECT_TRUE(result.success);
  EXPECT_EQ(result.message, L"Document 'BRACKET' is now active.");
  EXPECT_EQ(result.dataJson, LR"({"name":"BRACKET","full_path":"BRACKET.prt","document_type":"part"})");
}

// ---- units
// -----------------------------------------------------------------------------------------------------

class ModelUnits : public support::OperationTest {};

TEST_F(ModelUnits, ConvertByThePrincipalUnitSystem) {
  bench::Model& model = AddModel(L"BRACKET", PRO_MDL_PART);
  ProMdl handle = bench::Handle(model);
  const std::pair<bench::LengthUnit, double> cases[] = {{bench::LengthUnit::kMillimetre, 1},
                                                        {bench::LengthUnit::kInch, 1 / 25.4},
                                                        {bench::LengthUnit::kMetre, 0.001}};
  for (const auto& [unit, factor] : cases) {
    model.length_unit = unit;
    EXPECT_NEAR(MmToModelScale(handle), factor, 1e-15);
    EXPECT_NEAR(MmToModel(handle, 25.4), 25.4 * factor, 1e-13);
    EXPECT_NEAR(MmToModelGuarded(handle, -25.4), -25.4 * factor, 1e-13);
    EXPECT_NEAR(ModelToMm(handle, factor), 1, 1e-13);
  }
}

TEST_F(ModelUnits, LeaveNumbersAsTheyAreWhenTheHostDoesNotTell) {
  bench::Model& model = AddModel(L"BRACKET", PRO_MDL_PART);
  model.length_unit = bench::LengthUnit::kInch;
  ProMdl handle = bench::Handle(model);
  for (const char* call : {"ProUnitInit", "ProMdlPrincipalunitsystemGet", "ProUnitsystemUnitGet",
                           "ProUnitConversionCalculate"}) {
    faults().Fail(call, -1, 1, 4);
    EXPECT_EQ(MmToModelScale(handle), 1.0) << call;
    EXPECT_EQ(MmToModel(handle, 25.4), 25.4) << call;
    EXPECT_EQ(MmToModelGuarded(handle, 25.4), 25.4) << call;
    EXPECT_EQ(ModelToMm(handle, 25.4), 25.4) << call;
  }
}

// Sketches and features take the factor as it comes; assemblies and analyses don't divide by nothing.
TEST_F(ModelUnits, GuardOnlyTheFamiliesThatAskForIt) {
  ProMdl handle = bench::Handle(AddModel(L"BRACKET", PRO_MDL_PART));
  faults().NoEffect("ProUnitConversionCalculate", 1, 4);  // leaves a factor of 0
  EXPECT_EQ(MmToModelScale(handle), 0.0);
  EXPECT_EQ(MmToModel(handle, 5), 0.0);
  EXPECT_EQ(MmToModelGuarded(handle, 5), 5.0);
  EXPECT_EQ(ModelToMm(handle, 5), 5.0);
}

// ---- working directory
// -------------------------------------------------------------------------------------------

class BorrowedDirectory : public support::OperationTest {
 protected:
  void SetUp() override {
    OperationTest::SetUp();
    std::filesystem::create_directory(directory() / "sub");
    home_ = bench::WorkingDirectory();
  }
  std::wstring Sub() const { return (directory() / "sub").wstring(); }
  std::wstring home_;
};

TEST_F(BorrowedDirectory, IsGivenBackAtTheEndOfTheScope) {
  {
    const WorkingDirectoryGuard guard(Sub());
    EXPECT_TRUE(guard.changed());
    EXPECT_EQ(guard.status(), 0);
    EXPECT_NE(bench::WorkingDirectory(), home_);
  }
  EXPECT_EQ(bench::WorkingDirectory(), home_);
}

TEST_F(BorrowedDirectory, IsNotAskedForWithoutAName) {
  const auto mark = host().journal.Mark();
  { const WorkingDirectoryGuard guard(L""); }
  EXPECT_TRUE(CallsSince(mark).empty());
}

TEST_F(BorrowedDirectory, StaysWhenItCanNotBeHad) {
  const auto mark = host().journal.Mark();
  {
    const WorkingDirectoryGuard long_one(std::wstring(260, L'a'));
    EXPECT_FALSE(long_one.changed());
    EXPECT_EQ(long_one.status(), -2);
  }
  EXPECT_EQ(CallsSince(mark), std::vector<std::string>{"ProDirectoryCurrentGet"});
  {
    faults().Fail("ProDirectoryChange", -15);
    const WorkingDirectoryGuard refused(Sub());
    EXPECT_FALSE(refused.changed());
    EXPECT_EQ(refused.status(), -15);
  }
  EXPECT_EQ(bench::WorkingDirectory(), home_);
}

TEST_F(BorrowedDirectory, IsKeptWhenTheOldOneIsUnknown) {
  faults().Fail("ProDirectoryCurrentGet", -1);
  const auto mark = host().journal.Mark();
  { const WorkingDirectoryGuard guard(Sub()); }
  EXPECT_NE(bench::WorkingDirectory(), home_);
  EXPECT_EQ(CallsSince(mark, {"ProDirectoryChange"}).size(), 1u);
}

}  // namespace
}  // namespace vek
