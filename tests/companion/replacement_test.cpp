// New parts and assemblies in the places of old ones, and the commands that ask for them.
#include "addin/companion/replacement.h"

#include <fstream>

#include "addin/companion/replacement_commands.h"
#include "addin/companion/selected_model.h"
#include "addin/text/wide_text.h"
#include "tests/companion/running_companion.h"
#include "tests/operations/assembly_ground.h"
#include "tests/support/captured_log.h"
#include "tests/support/companion_aside.h"

namespace vek {
namespace {

using bench::Handle;
using bench::Model;
using bench::Vector3;
using support::CountCaptured;

class Replacement : public support::AssemblyTest {
 protected:
  // A model of the test's directory that is on the disk alone; its path.
  std::wstring OnDisk(const std::wstring& name, ProMdlType type) {
    Model& model = AddModel(name, type);
    model.directory = directory().wstring();
    EXPECT_EQ(ProMdlSave(Handle(model)), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProMdlErase(Handle(model)), PRO_TK_NO_ERROR);
    const std::wstring file = ToLower(name) + (type == PRO_MDL_PART ? L".prt" : L".asm");
    std::filesystem::rename(directory() / (file + L".1"), directory() / file);
    return (directory() / file).wstring();
  }

  FileDownloadInfo In(const std::wstring& path, bool replace = true) {
    FileDownloadInfo info;
    info.downloadPath = path;
    info.placeLikeComponentTitle = L"bolt";
    info.replaceExisting = replace;
    return info;
  }

  // What an assembly places, in the order of its features: the name and where.
  static std::vector<std::pair<std::wstring, Vector3>> Placed(const Model& model) {
    std::vector<std::pair<std::wstring, Vector3>> placed;
    for (const auto& feature : model.features)
      if (feature->component)
        placed.emplace_back(NameOfPlaced(*feature->component),
                            bench::TranslationOf(feature->component->place));
    return placed;
  }
  static std::wstring LastLine() { return support::CapturedLog().back().text; }
};

using Placement = std::vector<std::pair<std::wstring, Vector3>>;
constexpr const wchar_t* kDone = L"=== HandlePartReplacement: Part replacement completed successfully ===";

TEST_F(Replacement, PutsTheNewPartWhereEachOldOneWas) {
  Model& bolt = Part(L"BOLT");
  Model& sub = AddModel(L"SUB", PRO_MDL_ASSEMBLY);
  bench::AssembleComponent(sub, Part(L"PLATE"), bench::kNoMove);
  bench::AssembleComponent(sub, bolt, bench::Shifted(bench::kNoMove, {7, 8, 9}));
  bench::AssembleComponent(sub, bolt, bench::Shifted(bench::kNoMove, {17, 8, 9}));
  Place(bolt, L"", {1, 2, 3});
  Place(sub, L"", {100, 0, 0});
  Place(sub, L"", {200, 0, 0});
  const std::wstring path = OnDisk(L"SCREW", PRO_MDL_PART);
  const auto mark = host().journal.Mark();
  HandlePartReplacement(In(path));
  EXPECT_EQ(LastLine(), kDone);
  EXPECT_EQ(Placed(assembly()),
            (Placement{{L"SUB", {100, 0, 0}}, {L"SUB", {200, 0, 0}}, {L"SCREW", {1, 2, 3}}}));
  EXPECT_EQ(Placed(sub), (Placement{{L"PLATE", {0, 0, 0}}, {L"SCREW", {7, 8, 9}}, {L"SCREW", {17, 8, 9}}}));
  // All positions before any change, all deletions before any addition, one regeneration for each parent.
  const auto calls = CallsSince(mark, {"ProAsmcompPositionGet", "ProFeatureWithoptionsDelete",
                                       "ProAsmcompAssemble", "ProSolidRegenerate"});
  std::vector<std::string> expected(3, "ProAsmcompPositionGet");
  expected.insert(expected.end(), 3, "ProFeatureWithoptionsDelete");
  expected.insert(expected.end(), 3, "ProAsmcompAssemble");
  expected.insert(expected.end(), 2, "ProSolidRegenerate");
  EXPECT_EQ(calls, expected);
}

TEST_F(Replacement, KeepsTheOldOnesUnlessTheyAreToGo) {
  Place(Part(L"BOLT"), L"", {1, 2, 3});
  HandlePartReplacement(In(OnDisk(L"SCREW", PRO_MDL_PART), false));
  EXPECT_EQ(Placed(assembly()), (Placement{{L"BOLT", {1, 2, 3}}, {L"SCREW", {1, 2, 3}}}));
}

TEST_F(Replacement, FallsBackToTheNameOfTheFileAndToTheIdentity) {
  Place(Part(L"BOLT"), L"", {1, 2, 3});
  FileDownloadInfo info = In(OnDisk(L"SCREW", PRO_MDL_PART));
  info.placeLikeComponentTitle = L"Hexagon bolt";
  info.placeLikeFilePath = L"C:\\store\\Bolt.PRT.3";
  faults().Fail("ProAsmcompPositionGet", -1);
  HandlePartReplacement(info);
  EXPECT_EQ(LastLine(), kDone);
  EXPECT_EQ(Placed(assembly()), (Placement{{L"SCREW", {0, 0, 0}}}));
}

TEST_F(Replacement, LosesNothingWhenTheNewModelCanNotBeHad) {
  Place(Part(L"BOLT"), L"", {1, 2, 3});
  const std::wstring path = OnDisk(L"SCREW", PRO_MDL_PART);
  const Placement before = Placed(assembly());
  const auto expect_refusal = [&](const FileDownloadInfo& info, const std::wstring& line) {
    HandlePartReplacement(info);
    EXPECT_EQ(LastLine(), line);
    EXPECT_EQ(Placed(assembly()), before) << EncodeUtf8(line);
  };
  expect_refusal(In(L""), L"ERROR: Empty file path for replacement part");
  FileDownloadInfo untitled = In(path);
  untitled.placeLikeComponentTitle.clear();
  expect_refusal(untitled, L"ERROR: Empty placeLikeComponentTitle");
  FileDownloadInfo unknown = In(path);
  unknown.placeLikeComponentTitle = L"rivet";
  expect_refusal(unknown, L"ERROR: Component not found in assembly (tried: 'rivet' and '')");
  faults().Fail("ProMdlnameRetrieve", -10);
  expect_refusal(In(path), L"ERROR: Failed to retrieve new part model: -10");
  faults().Fail("ProFileSubtypeGet", -24);
  expect_refusal(In(path), L"ERROR: ProFileSubtypeGet failed: -24");
  faults().Fail("ProDirectoryChange", -15);
  expect_refusal(In(path), L"ERROR: Failed to change directory");
  NewPart();
  expect_refusal(In(path), L"ERROR: Current model is not an assembly");
}

TEST_F(Replacement, RegeneratesOnceMoreWhenTheHostAsks) {
  Place(Part(L"BOLT"), L"");
  faults().Fail("ProSolidRegenerate", -56);
  HandlePartReplacement(In(OnDisk(L"SCREW", PRO_MDL_PART)));
  EXPECT_EQ(CountCaptured(L"Regeneration returned PRO_TK_REGEN_AGAIN, regenerating again"), 1);
  EXPECT_EQ(CountCaptured(L"SUCCESS: Parent assembly 1 final regeneration completed"), 1);
}

TEST_F(Replacement, OfAssembliesTakesAssembliesAlone) {
  Place(AddModel(L"BOLT", PRO_MDL_ASSEMBLY), L"", {1, 2, 3});
  HandleAssemblyInspection(In(OnDisk(L"SCREW", PRO_MDL_PART)));
  EXPECT_EQ(LastLine(), L"ERROR: Retrieved model is not an assembly");
  HandleAssemblyInspection(In(OnDisk(L"UNIT", PRO_MDL_ASSEMBLY)));
  EXPECT_EQ(LastLine(), L"=== HandleAssemblyInspection: Assembly replacement completed successfully ===");
  EXPECT_EQ(Placed(assembly()), (Placement{{L"UNIT", {1, 2, 3}}}));
  EXPECT_EQ(CountCaptured(L"SUCCESS: Old assembly component 1 deleted"), 1);
}

// ---- the commands

class ReplacementCommands : public Replacement {
 protected:
  std::wstring LastMessage() {
    return host().ui.Messages().empty() ? L"none" : host().ui.Messages().back().text;
  }
  bench::Picked Component(bench::Feature& feature) {
    Model& model = *feature.component->model;
    return {{static_cast<ProType>(model.type), -1, Handle(model)}, {Handle(assembly()), {feature.id}, 1}};
  }
  std::string PathInMessage(const std::wstring& file) {
    std::string path = EncodeUtf8((directory() / file).wstring());
    std::ranges::replace(path, '\\', '/');
    return path;
  }
};

TEST_F(ReplacementCommands, SendTheFileOfTheSelectedComponentAndSaveFirst) {
  const support::RunningCompanion companion;
  bench::Feature& bolt = Place(Part(L"BOLT"), L"");
  bench::Feature& unit = Place(AddModel(L"UNIT", PRO_MDL_ASSEMBLY), L"");
  unit.component->model->directory = directory().wstring();
  host().picks.Select({Component(bolt)});
  const auto mark = host().journal.Mark();
  CommandReplacePart();
  EXPECT_EQ(CallsSince(mark, {"ProMdlSave"}).size(), 1u);
  host().picks.Select({Component(unit)});
  CommandInspectAssembly();
  host().picks.Select({});
  CommandInspectAssembly();
  const auto received = companion.Received();
  ASSERT_EQ(received.size(), 3u);
  // The part was saved along with its assembly, and the lowest version on the disk is the one.
  EXPECT_EQ(received[0], R"(/partReplacement {"filePath":")" + PathInMessage(L"bolt.prt.1") + R"("})");
  EXPECT_EQ(received[1], R"(/assemblyInspection {"filePath":")" + PathInMessage(L"unit.asm.1") + R"("})");
  EXPECT_EQ(received[2], R"(/assemblyInspection {"filePath":")" + PathInMessage(L"frame.asm.1") + R"("})");
}

TEST_F(ReplacementCommands, TellWhatTheyCanNotTake) {
  const support::CompanionAside aside;
  bench::Feature& bolt = Place(Part(L"BOLT"), L"");
  bench::Feature& unit = Place(AddModel(L"UNIT", PRO_MDL_ASSEMBLY), L"");
  CommandReplacePart();
  EXPECT_EQ(LastMessage(), L"No Part selected");
  host().picks.Select({Component(unit)});
  CommandReplacePart();
  EXPECT_EQ(LastMessage(),
            L"You are trying to Select Part Replacer on a Assembly.Please try running it on an Part.");
  host().picks.Select({Component(bolt)});
  CommandInspectAssembly();
  EXPECT_EQ(LastMessage(),
            L"You are trying to run Assembly inspection on a part. Please try running it on an assembly.");
  CommandReplacePart();
  EXPECT_EQ(LastMessage(), L"Turning on the Vek app, try again after Vek is running");
  host().picks.Select({});
  NewPart();
  CommandInspectAssembly();
  EXPECT_EQ(LastMessage(), L"Current model is not an assembly");
}

TEST_F(ReplacementCommands, TakeTheLowestVersionThatIsOnTheDisk) {
  std::ofstream(directory() / "bolt.prt.7") << "seven";
  std::ofstream(directory() / "bolt.prt.12") << "twelve";
  const std::wstring folder = directory().wstring();
  EXPECT_EQ(ResolveModelFile(folder, L"BOLT", L".prt"), folder + L"\\bolt.prt.7");
  EXPECT_EQ(ResolveModelFile(folder + L"\\", L"nut", L".prt"), folder + L"\\nut.prt.1");
}

}  // namespace
}  // namespace vek
