// The whole circle of a replacement and of an inspection, and what the log says on the way.

#include <algorithm>
#include <cstring>
#include <fstream>

#include "tests/endtoend/companion_ground.h"

namespace vek::endtoend {
namespace {

// The whole circle in an assembly that places a model of 10 x 10 x 10 mm twice, and twice a sub-assembly
// with one more; a model of 10 x 10 x 20 mm takes its places.
struct Circle {
  const char *command, *endpoint, *old_model, *old_file, *new_model, *new_file, *broken_file, *failure,
      *success;
};

class Replacement : public CompanionCircle {
 protected:
  // Where the current assembly's matter lies.
  static void ExpectPlaces(const std::string& upper_corner, const std::string& centre) {
    const std::string box = Run("api_analysis_bounding_box");
    ExpectHolds(box, R"("min":{"x_mm":0,"y_mm":0,"z_mm":0})");
    ExpectHolds(box, "\"max\":" + upper_corner);
    ExpectHolds(Run("api_analysis_mass_properties"), "\"center_of_mass\":" + centre);
  }
  static void GoRound(const Circle& circle, const std::string& sub, const std::string& top);
};

void Replacement::GoRound(const Circle& circle, const std::string& sub, const std::string& top) {
  MakeAssembly(sub, {{circle.old_model, 0, 30, 0}});
  // Its first component has the id that the one of the sub-assembly has.
  MakeAssembly(
      top, {{circle.old_model, 0, 0, 0}, {sub, 0, 0, 100}, {sub, 100, 0, 100}, {circle.old_model, 50, 0, 0}});
  // The centres of the four are (5,5,5), (55,5,5), (5,35,105), (105,35,105).
  const auto expect_old = [&] {
    ExpectPlaces(R"({"x_mm":110,"y_mm":40,"z_mm":110})", R"({"x_mm":42.5,"y_mm":20,"z_mm":55})");
    ExpectHolds(Run("api_assembly_list_components"),
                std::string(R"("part_number":")") + circle.old_model + '"');
  };
  expect_old();

  Bench().Console("select " + Components().at(0));
  EXPECT_TRUE(Bench().Console(std::string("command ") + circle.command).empty()) << "no message is shown";
  EXPECT_EQ(LastReceived(), circle.endpoint + (R"( {"filePath":")" + InMessage(circle.old_file)) + "\"}");
  EXPECT_TRUE(IsLogged("SUCCESS: Current model saved successfully"));

  std::ofstream(InMessage(circle.broken_file).substr(2)) << "no model";
  PostReplacement(circle.old_model, circle.broken_file);
  AwaitLogged(circle.failure);
  expect_old();

  PostReplacement(circle.old_model, circle.new_file);
  AwaitLogged(circle.success);
  EXPECT_EQ(Components().size(), 4u);
  // Each is 10 higher than the old ones, and its centre 5.
  ExpectPlaces(R"({"x_mm":110,"y_mm":40,"z_mm":120})", R"({"x_mm":42.5,"y_mm":20,"z_mm":60})");
  const auto expect_new = [&](const std::string& count) {
    const std::string list = Run("api_assembly_list_components");
    EXPECT_EQ(list.find(circle.old_model), std::string::npos) << list;
    ExpectHolds(list, std::string(R"("part_number":")") + circle.new_model + '"');
    ExpectHolds(list, count);
  };
  expect_new("2 unique component(s) found (4 total occurrences).");
  Activate(sub);
  expect_new("1 unique component(s) found (1 total occurrences).");
  const auto lines = LogLines();
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "Final regeneration of parent assembly 2 of 2"), 1);
}

TEST_F(Replacement, ReplacesAPartEverywhereAndLosesNothingBefore) {
  GoRound({"ReplaceVekPart_Act", "/partReplacement", "BOLT", "bolt.prt.1", "SCREW", "screw.prt.1",
           "broken.prt", "ERROR: Failed to retrieve new part model: -16",
           "=== HandlePartReplacement: Part replacement completed successfully ==="},
          "row", "frame");
}

TEST_F(Replacement, InspectsWithAnAssemblyEverywhereAndLosesNothingBefore) {
  GoRound({"InspectAssembly_Act", "/assemblyInspection", "UNIT", "unit.asm.1", "BRACKET", "bracket.asm.1",
           "broken.asm", "ERROR: Failed to retrieve new assembly model: -16",
           "=== HandleAssemblyInspection: Assembly replacement completed successfully ==="},
          "line", "hall");
}

TEST_F(Replacement, LogsAReplacementStepByStep) {
  MakeAssembly("single", {{"BOLT", 7, 8, 9}});
  const std::string id = Components().at(0);
  // Held back, the tick can't begin before the request is answered.
  Bench().Console("pause");
  RemoveLog();
  PostReplacement("Bolt", "screw.prt.1");
  AwaitLogged("VekWebServer: VekWebServer: Part opening request processed successfully");
  Bench().Console("resume");
  const std::string end = "=== HandlePartReplacement: Part replacement completed successfully ===";
  AwaitLogged(end);

  std::vector<std::string> lines = LogLines();
  // What each visit says of the features on its way is told elsewhere; addresses and windows differ.
  std::erase_if(lines,
                [](const std::string& line) { return line.find("VisitCallback: ") != std::string::npos; });
  for (std::string& line : lines)
    for (const char* changing : {" (parent assembly: ", "Current window ID: "})
      if (const auto at = line.find(changing); at != std::string::npos)
        line.erase(at + std::strlen(changing));
  const std::string server = "VekWebServer: VekWebServer: ", find = "FindAllComponentsInAssembly: ";
  const std::vector<std::string> expected = {
      server + "Received request: POST /",
      server + "Handling part opening request",
      server + "Found placeLikeComponentTitle: Bolt",
      server + "Extracted replaceExisting value: 'true' (length: 4)",
      server + "Parsed replaceExisting: 'true' -> true",
      "=== OnFileProcessingRequest: Processing file request ===",
      "Found placeLikeComponentTitle: Bolt",
      "=== Detected PART REPLACEMENT request ===",
      "SUCCESS: Part replacement request queued",
      server + "File processing callback executed successfully",
      server + "Part opening request processed successfully",
      "=== HandlePartReplacement: Starting part replacement ===",
      "SUCCESS: Current assembly retrieved",
      "=== Starting component search with parent assemblies ===",
      "=== Starting component search in assembly (finding all matches, including subassemblies) ===",
      find + "Filtering by model type: 2",
      find + "Initialized search data with name: Bolt",
      find + "ProSolidFeatVisit completed with status: 0",
      find + "ProSolidDispCompVisit completed with status: 0",
      find + "Found 1 top-level matching component(s)",
      find + "Found 1 recursive matching component(s)",
      find + "Added top-level component 1 (Feature ID: " + id + ")",
      find + "Skipping duplicate component (Feature ID: " + id +
          ", Path length: 1 - already found as top-level)",
      find + "SUCCESS - Found and returned 1 component(s) (top-level: 1, subassembly: 0)",
      "=== Component search completed successfully ===",
      "Component 1 (Feature ID: " + id + ") is top-level, parent: root assembly",
      "FindAllComponentsInAssemblyWithParents: SUCCESS - Found 1 component(s) with parent assemblies",
      "SUCCESS: Found 1 component(s) to replace",
      "Collecting transformation matrices for all components before deletion",
      "Getting transformation for component 1 of 1",
      "=== Getting component transformation matrix ===",
      "SUCCESS: Transformation matrix retrieved - [1.000,0.000,0.000,7.000; 0.000,1.000,0.000,8.000; "
      "0.000,0.000,1.000,9.000; 0.000,0.000,0.000,1.000]",
      "Stored transformation and feature ID " + id + " for component 1 (parent assembly: ",
      "Loading new part model for replacement",
      "SUCCESS: New part model retrieved",
      "=== Deleting old components (ReplaceExisting=true) ===",
      "Deleting old component 1 of 1",
      "SUCCESS: Old component 1 deleted",
      "=== Old components deletion completed ===",
      "Adding all new components to their parent assemblies",
      "Adding new component 1 of 1 to parent assembly",
      "SUCCESS: New component 1 added successfully to parent assembly",
      "Regenerating all affected assemblies after adding all new components (final regeneration)",
      "Final regeneration of parent assembly 1 of 1",
      "SUCCESS: Parent assembly 1 final regeneration completed",
      "=== Starting comprehensive UI refresh ===",
      "Current window ID: ",
      "SUCCESS: ProWindowRepaint - Model tree refreshed",
      "SUCCESS: ProWindowRepaint(currentWindow) - Model tree refreshed",
      "SUCCESS: ProTreetoolRefresh - Model tree refreshed",
      "SUCCESS: ProMdlDisplay - Assembly display refreshed",
      "SUCCESS: ProWindowActivate - Window brought to front",
      "SUCCESS: ProWindowRepaint - Additional window refresh",
      "SUCCESS: Final ProWindowRepaint - Complete refresh done",
      "SUCCESS: Component replaced with enhanced refresh - Should be immediately visible",
      "=== Comprehensive UI refresh completed ===",
      end,
  };
  for (std::size_t i = 0; i < std::max(lines.size(), expected.size()); ++i)
    ASSERT_EQ(i < lines.size() ? lines[i] : "nothing more",
              i < expected.size() ? expected[i] : "nothing more");
}

}  // namespace
}  // namespace vek::endtoend
