// From posted batches to solids and files, and what happens when the kernel or the disk don't play along.

#include <signal.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/endtoend/bench_test.h"

namespace vek::endtoend {
namespace {

// Everything that a suite saves goes into the bench's working directory, which is emptied first.
class Modelling : public BenchTest {
 protected:
  // A new part with a block of 40 x 20 x 10 mm: 8000 mm³.
  void MakeBlock() {
    const Answer answer = Execute(R"({"api_document_new_part":{},
      "api_sketch_create":{"name":")" +
                                  Sketch() + R"(","plane":"XY"},
      "api_sketch_rectangle_two_points":{"sketch_name":")" +
                                  Sketch() + R"(","x1":0,"y1":0,"x2":40,"y2":20},
      "api_feature_extrude":{"sketch_name":")" +
                                  Sketch() + R"(","distance_mm":10}})");
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.body.find("\"success\":false"), std::string::npos) << answer.body;
  }

  // Sketch names are unique over the whole session.
  const std::string& Sketch() const { return sketch_; }

  std::string CurrentModelLine() {
    for (const std::string& line : Bench().Console("models"))
      if (line.find(", current") != std::string::npos) return line;
    return "no current model";
  }

 private:
  static int sketches_;
  const std::string sketch_ = "S" + std::to_string(++sketches_);
};

int Modelling::sketches_ = 0;

void ExpectHolds(const std::string& text, const std::string& part) {
  EXPECT_NE(text.find(part), std::string::npos) << "no " << part << "\nin " << text;
}

// The kernel processes of the bench that belongs to this test program.
std::vector<pid_t> KernelProcesses() {
  std::vector<pid_t> processes;
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    std::ifstream name(entry.path() / "comm");
    std::string text;
    if (!std::getline(name, text) || text != "creokernel") continue;
    std::ifstream environment(entry.path() / "environ", std::ios::binary);
    const std::string variables((std::istreambuf_iterator<char>(environment)), {});
    if (variables.find("VEK_ENDTOEND=" + std::to_string(getpid())) != std::string::npos)
      processes.push_back(std::stoi(entry.path().filename().string()));
  }
  return processes;
}

TEST_F(Modelling, APostedBatchBecomesASolid) {
  MakeBlock();
  ExpectHolds(CurrentModelLine(), "volume 8000 mm");
  ExpectHolds(CurrentModelLine(), "size 40 x 20 x 10 mm");
  EXPECT_EQ(Bench().Console("faces").size(), 6u);
}

TEST_F(Modelling, APartThatWasSavedErasedAndOpenedIsTheSame) {
  MakeBlock();
  const auto tree = Bench().Console("tree");
  const auto faces = Bench().Console("faces");
  const std::string path = "O:\\\\endtoend_saved.prt";
  std::filesystem::remove(std::string(VEK_SOURCE_DIR) + "/out/endtoend_saved.prt.1");
  ExpectHolds(Execute(R"({"api_document_save_as":{"file_path":")" + path + R"("}})").body,
              "\"success\":true");
  ExpectHolds(Execute(R"({"api_document_close":{"name_or_path":"ENDTOEND_SAVED"}})").body,
              "\"success\":true");
  EXPECT_EQ(CurrentModelLine().find("ENDTOEND_SAVED"), std::string::npos);
  ExpectHolds(Execute(R"({"api_document_open":{"file_path":"O:\\endtoend_saved.prt.1"}})").body,
              "Document 'ENDTOEND_SAVED' opened and activated.");
  ExpectHolds(CurrentModelLine(), "volume 8000 mm");
  EXPECT_EQ(Bench().Console("tree"), tree);
  EXPECT_EQ(Bench().Console("faces"), faces);
}

TEST_F(Modelling, NothingOfABatchRunsBehindAClose) {
  MakeBlock();
  const std::string line = CurrentModelLine();
  const std::string name = line.substr(5, line.find(',') - 5);
  const std::string body =
      Execute(R"({"api_document_close":{"name_or_path":")" + name + R"("},"api_document_new_part":{}})").body;
  ExpectHolds(body, "\"api_document_close\":{\"success\":true");
  ExpectHolds(body, "Skipped: api_document_close must be the last operation in a batch.");
}

TEST_F(Modelling, AKernelThatDiesIsStartedAgain) {
  MakeBlock();
  const auto kernels = KernelProcesses();
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

TEST_F(Modelling, WhatTheToolkitRefusesIsToldAndTheNextRequestWorks) {
  MakeBlock();
  Bench().Console("fault ProFeatureSketchedWithOptionsCreate -1");
  ExpectHolds(
      Execute(R"({"api_feature_extrude":{"sketch_name":")" + Sketch() + R"(","distance_mm":30}})").body,
      "Creo could not create the feature from sketch '" + Sketch() + "' (status=-1, errors=0).");
  ExpectHolds(
      Execute(R"({"api_feature_extrude":{"sketch_name":")" + Sketch() + R"(","distance_mm":30}})").body,
      "\"success\":true");
  ExpectHolds(CurrentModelLine(), "size 40 x 20 x 30 mm");
}

TEST_F(Modelling, APartInInchesHasTheSameMillimetres) {
  EXPECT_EQ(Execute(R"({"api_document_new_part":{}})").status, 200);
  Bench().Console("units inch");
  ExpectHolds(Execute(R"({"api_sketch_create":{"name":"INCHES","plane":"XY"},
      "api_sketch_circle_center_radius":{"sketch_name":"INCHES","radius":12.7},
      "api_feature_extrude":{"sketch_name":"INCHES","distance_mm":50.8}})")
                  .body,
              "Extrusion 'Extrude 1' created from 'INCHES'.");
  // π·12.7²·50.8 = 25740.7…
  ExpectHolds(CurrentModelLine(), "volume 25740.7");
  ExpectHolds(CurrentModelLine(), "size 25.4 x 25.4 x 50.8 mm");
}

TEST_F(Modelling, ExportsOpenAsWhatTheyAreCalled) {
  MakeBlock();
  const std::string out = std::string(VEK_SOURCE_DIR) + "/out/";
  for (const char* file : {"endtoend.stp", "endtoend.igs", "endtoend.stl"})
    std::filesystem::remove(out + file);
  for (const char* format : {"STEP", "IGES", "STL"})
    ExpectHolds(Execute(R"({"api_export_file":{"output_path":"O:\\endtoend","format":")" +
                        std::string(format) + "\"}}")
                    .body,
                "\"success\":true");
  std::ifstream step(out + "endtoend.stp");
  std::string first;
  std::getline(step, first);
  ExpectHolds(first, "ISO-10303-21;");
  EXPECT_GT(std::filesystem::file_size(out + "endtoend.igs"), 1000u);
  // A block is twelve triangles: 80 bytes of header, 4 of count, 50 for each.
  EXPECT_EQ(std::filesystem::file_size(out + "endtoend.stl"), 84u + 12u * 50u);
  ExpectHolds(Execute(R"({"api_export_file":{"output_path":"O:\\endtoend.stp"}})").body,
              R"(File already exists: 'O:\\endtoend.stp'. Choose another path (overwrite is not allowed).)");
  ExpectHolds(Execute(R"({"api_export_file":{"output_path":"O:\\endtoend.sat","format":"SAT"}})").body,
              "Failed to export active model as SAT (status=");
}

}  // namespace
}  // namespace vek::endtoend
