// A bench with the companion application running, and models for both to talk about.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "tests/endtoend/bench_test.h"

namespace vek::endtoend {

// What the companion has received, what it is to answer, and what second sessions were started with: files in
// the bench's home.
std::filesystem::path ReceivedFile();
std::filesystem::path AnswersFile();
std::filesystem::path SessionsFile();

bool ComesTrue(const std::function<bool()>& condition, std::chrono::seconds limit = std::chrono::seconds(20));
bool IsLogged(const std::string& line);
void AwaitLogged(const std::string& line);

// Waits until no companion of an earlier bench is left, which would count its answers on for this one, and
// removes what it left behind.
void ForgetEarlierCompanions();

// Names of models are told apart over the whole suite. BOLT and UNIT, an assembly with a BOLT, are open; on
// the disk alone are SCREW, twice as high, and BRACKET, an assembly with a SCREW.
class CompanionCircle : public BenchTest {
 protected:
  struct Placed {
    std::string model;
    int x, y, z;
  };

  static void SetUpTestSuite();
  static void TearDownTestSuite();
  void SetUp() override { RemoveLog(); }

  // The path of a model's file as the message to the companion has it, and as it stands in JSON.
  static std::string InMessage(const std::string& file);
  static std::string InJson(const std::string& file);

  // Carries an operation out, which must succeed; the answer's body.
  static std::string Run(const std::string& operation, const std::string& arguments = "{}");
  static void Activate(const std::string& name);
  // A part of 10 x 10 x `height` mm from the origin.
  static void MakeBlock(const std::string& name, int height);
  static void MakeAssembly(const std::string& name, const std::vector<Placed>& components);
  // Ids of the components of the current assembly, in their order.
  static std::vector<std::string> Components();

  static Answer Post(const std::string& body) { return Request("POST", "/", body); }
  static void PostReplacement(const std::string& title, const std::string& file);
  static std::string LastReceived();
};

}  // namespace vek::endtoend
