#include "addin/ops/common/model_access.h"

#include <gtest/gtest.h>

#include <array>

#include "addin/ops/common/model_paths.h"
#include "addin/ops/common/units.h"
#include "addin/ops/common/working_directory.h"
#include "tests/support/operation_fixture.h"

namespace vek {
namespace {

TEST(ModelPaths, AreTakenApartByHand) {
  // the path, and its directory, name and extension
  const std::array<const wchar_t*, 4> cases[] = {
      {L"a.PRT.3", L"", L"a", L"PRT"},
      {L"a.prt.3.12", L"", L"a", L"prt"},
      {L"a.7", L"", L"a", L""},
      {L"a.txt.4", L"", L"a.txt", L""},
      {L"a.", L"", L"a.", L""},
      {L"a.prt.prt.5", L"", L"a.prt", L"prt"},
      {L"C:/parts\\new/a.Asm.1", L"C:\\parts\\new", L"a", L"Asm"},
      {L"\\a.drw", L"", L"a", L"drw"},
      {L"C:\\my.prt\\a", L"C:\\my.prt", L"a", L""},
  };
  std::wstring directory, name, extension;
  for (const auto& each : cases) {
    EXPECT_TRUE(ParseModelFileNameByHand(each[0], directory, name, extension));
    EXPECT_EQ(directory, each[1]);
    EXPECT_EQ(name, each[2]);
    EXPECT_EQ(extension, each[3]);
  }
  for (const wchar_t* path : {L"", L"C:\\parts\\", L"C:/parts/.prt.1", L".2"})
    EXPECT_FALSE(ParseModelFileNameByHand(path, directory, name, extension)) << path;
}

TEST(ModelPaths, AreJoinedWithOneSeparator) {
  EXPECT_EQ(JoinPath(L"C:\\parts\\//\\", L"a.prt"), L"C:\\parts\\a.prt");
  EXPECT_EQ(JoinPath(L"", L"a.prt"), L"a.prt");
  EXPECT_EQ(JoinPath(L"C:\\parts\\/", L""), L"C:\\parts\\/");
}

TEST(ModelPaths, AreCutDownToABaseName) {
  EXPECT_EQ(BaseModelName(L"a.5.DRW.6"), L"a");
  EXPECT_EQ(BaseModelName(L"C:\\parts/sub\\a.txt.prt.1"), L"a.txt");
}

class HostParsedPaths : public support::OperationTest {};

TEST_F(HostParsedPaths, FallBackToTheHandOnlyWhenTheHostFails) {
  std::wstring directory, name, extension;
  ASSERT_TRUE(ParseModelFileName(L"C:\\parts\\a.stp", directory, name, extension));
  EXPECT_EQ(directory, L"C:\\parts");
  EXPECT_EQ(name, L"a");
  EXPECT_EQ(extension, L"stp");
  faults().Fail("ProFileMdlnameParse", -1);
  ASSERT_TRUE(ParseModelFileName(L"C:\\parts\\a.stp", directory, name, extension));
  EXPECT_EQ(name, L"a.stp");
  EXPECT_EQ(extension, L"");
  faults().NoEffect("ProFileMdlnameParse");
  EXPECT_FALSE(ParseModelFileName(L"C:\\parts\\a.prt", directory, name, extension));
}

class ModelAccess : public support::OperationTest {};

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
  // What the host does not tell of is passed over.
  faults().Fail("ProMdlTypeGet", -1);
  EXPECT_EQ(FindOpenModel(L"bracket"), bench::Handle(drawing));
}

TEST_F(ModelAccess, ActivatesInTheWindowThatIsThere) {
  bench::Model& first = NewPart();
  NewPart();
  const std::vector<std::string> steps = {"ProObjectwindowMdlnameCreate", "ProMdlDisplay", "ProMdlWindowGet",
                                          "ProWindowActivate", "ProWindowRepaint"};
  const auto mark = host().journal.Mark();
  EXPECT_TRUE(ActivateModel(bench::Handle(first)).success);
  EXPECT_EQ(CallsSince(mark, steps), steps);
  EXPECT_EQ(&Current(), &first);
}

TEST_F(ModelAccess, TellsWhyAModelCanNotBeActivated) {
  ProMdl part = bench::Handle(NewPart());  // it has a window, so that a second one is refused
  faults().Fail("ProMdlDisplay", -8);
  EXPECT_EQ(ActivateModel(part).message, L"Failed to display model (status=-8).");
  ProMdl layout = bench::Handle(AddModel(L"LAYOUT", static_cast<ProMdlType>(3)));
  EXPECT_EQ(ActivateModel(layout).message, L"Unsupported model type for activation.");
}

TEST_F(ModelAccess, OverlooksWhatDoesNotHinderAnActivation) {
  bench::Model& model = AddModel(L"BRACKET", PRO_MDL_PART);
  for (const char* call : {"ProMdlDisplay", "ProWindowActivate", "ProWindowRepaint"}) faults().Fail(call, -1);
  EXPECT_EQ(ActivateModel(bench::Handle(model)).message, L"Document 'BRACKET' is now active.");
}

class ModelUnits : public support::OperationTest {};

// Sketches and features take the factor as it comes; assemblies and analyses don't divide by nothing.
TEST_F(ModelUnits, GuardOnlyTheFamiliesThatAskForIt) {
  bench::Model& model = AddModel(L"BRACKET", PRO_MDL_PART);
  ProMdl handle = bench::Handle(model);
  faults().NoEffect("ProUnitConversionCalculate", 1, 4);  // leaves a factor of 0
  EXPECT_EQ(MmToModelScale(handle), 0.0);
  EXPECT_EQ(MmToModel(handle, 5), 0.0);
  EXPECT_EQ(MmToModelGuarded(handle, 5), 5.0);
  EXPECT_EQ(ModelToMm(handle, 5), 5.0);
  // Where the host doesn't tell, numbers stay as they are.
  model.length_unit = bench::LengthUnit::kInch;
  faults().Fail("ProUnitConversionCalculate", -1, 1, 3);
  EXPECT_EQ(MmToModel(handle, 25.4), 25.4);
  EXPECT_EQ(MmToModelGuarded(handle, 25.4), 25.4);
  EXPECT_EQ(ModelToMm(handle, 25.4), 25.4);
}

class BorrowedDirectory : public support::OperationTest {};

// That it is given back whichever call fails is seen where files are opened and saved.
TEST_F(BorrowedDirectory, AndParsedPathsReachTheHostOnlyWhenABufferHoldsThem) {
  const auto mark = host().journal.Mark();
  const WorkingDirectoryGuard nameless(L"");
  EXPECT_TRUE(CallsSince(mark).empty());
  const WorkingDirectoryGuard long_one(std::wstring(260, L'a'));
  EXPECT_FALSE(long_one.changed());
  EXPECT_EQ(long_one.status(), -2);
  std::wstring directory = L"before", name = L"before", extension = L"before";
  EXPECT_FALSE(ParseModelFileName(std::wstring(260, L'a'), directory, name, extension));
  EXPECT_TRUE(directory.empty() && name.empty() && extension.empty());
  EXPECT_EQ(CallsSince(mark), std::vector<std::string>{"ProDirectoryCurrentGet"});
}

}  // namespace
}  // namespace vek
