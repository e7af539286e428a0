// From posted batches to solids and files, and what happens when the kernel or the disk don't play along.

#include <signal.h>

#include <cstdio>
#include <filesystem>

#include "tests/endtoend/bench_test.h"

namespace vek::endtoend {
namespace {

// Everything that a suite saves goes into the bench's working directory, which is emptied first.
class Modelling : public BenchTest {
 protected:
  // A new part with a block of 40 x 20 x 10 mm: 8000 mm³. Sketch names are unique over the whole session.
  void MakeBlock() {
    static int blocks = 0;
    const std::string sketch = R"("S)" + std::to_string(++blocks) + "\"";
    const Answer answer =
        Execute(R"({"api_document_new_part":{},"api_sketch_create":{"plane":"XY","name":)" + sketch +
                R"(},"api_sketch_rectangle_two_points":{"x1":0,"y1":0,"x2":40,"y2":20,"sketch_name":)" +
                sketch + R"(},"api_feature_extrude":{"distance_mm":10,"sketch_name":)" + sketch + "}}");
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.body.find("\"success\":false"), std::string::npos) << answer.body;
  }

  std::string CurrentModelLine() {
    for (const std::string& line : Bench().Console("models"))
      if (line.find(", current") != std::string::npos) return line;
    return "no current model";
  }
};

void ExpectHolds(const std::string& text, const std::string& part) {
  EXPECT_NE(text.find(part), std::string::npos) << "no " << part << "\nin " << text;
}

TEST_F(Modelling, APostedBatchBecomesASolid) {
  MakeBlock();
  ExpectHolds(CurrentModelLine(), "volume 8000 mm");
  ExpectHolds(CurrentModelLine(), "size 40 x 20 x 10 mm");
  EXPECT_EQ(Bench().Console("faces").size(), 6u);
}

TEST_F(Modelling, AKernelThatDiesIsStartedAgain) {
  MakeBlock();
  const auto kernels = ProcessesOfBenches("creokernel");
  ASSERT_EQ(kernels.size(), 1u);
  kill(kernels[0], SIGKILL);
  // Whichever operation meets the dead kernel says so; the one behind it meets a new one.
  Execute(R"({"api_sketch_create":{"name":"AFTER","plane":"XZ"}})");
  Execute(R"({"api_sketch_create":{"name":"AFTER","plane":"XZ"}})");
  const Answer answer =
      Execute(R"({"api_sketch_circle_center_radius":{"sketch_name":"AFTER","cx":20,"cy":-5,"radius":2},
      "api_feature_extrude":{"sketch_name":"AFTER","distance_mm":1,"extent_type":"last","operation":"cut"}})");
  EXPECT_EQ(answer.body.find("\"success\":false"), std::string::npos) << answer.body;
  // 8000 - π·2²·20 = 7748.672588
  ExpectHolds(CurrentModelLine(), "volume 7748.6725");
}

TEST_F(Modelling, AnExportIsOnTheDriveAndNotOverwritten) {
  MakeBlock();
  const std::string file = std::string(VEK_SOURCE_DIR) + "/out/endtoend.stl";
  std::filesystem::remove(file);
  const char* const export_stl = R"({"api_export_file":{"output_path":"O:\\endtoend","format":"STL"}})";
  ExpectHolds(Execute(export_stl).body, "\"success\":true");
  // A block is twelve triangles: 80 bytes of header, 4 of count, 50 for each.
  EXPECT_EQ(std::filesystem::file_size(file), 84u + 12u * 50u);
  ExpectHolds(Execute(export_stl).body,
              R"(File already exists: 'O:\\endtoend.stl'. Choose another path (overwrite is not allowed).)");
}

}  // namespace
}  // namespace vek::endtoend
