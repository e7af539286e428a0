#include "tests/endtoend/companion_ground.h"

#include <algorithm>
#include <thread>

namespace vek::endtoend {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr int kCompanionPort = 4000;

fs::path Folder() {
  return fs::path(BenchHome()) / "companion_models";
}

bool CompanionListens() {
  try {
    support::RawConnection probe(kCompanionPort);
    return true;
  } catch (const std::runtime_error&) {
    return false;
  }
}

std::string Quoted(const std::string& text) {
  return '"' + text + '"';
}

}  // namespace

fs::path ReceivedFile() {
  return fs::path(BenchHome()) / "companion.log";
}

fs::path AnswersFile() {
  return fs::path(BenchHome()) / "companion.answers";
}

fs::path SessionsFile() {
  return fs::path(BenchHome()) / "sessions.log";
}

bool ComesTrue(const std::function<bool()>& condition, std::chrono::seconds limit) {
  const auto end = std::chrono::steady_clock::now() + limit;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(20ms);
  }
  return true;
}

bool IsLogged(const std::string& line) {
  const auto lines = LogLines();
  return std::find(lines.begin(), lines.end(), line) != lines.end();
}

void AwaitLogged(const std::string& line) {
  EXPECT_TRUE(ComesTrue([&] { return IsLogged(line); })) << "never logged: " << line;
}

void ForgetEarlierCompanions() {
  ASSERT_TRUE(ComesTrue([] { return !CompanionListens(); }, 60s)) << "port 4000 is taken";
  for (const fs::path& file : {ReceivedFile(), AnswersFile(), SessionsFile()}) fs::remove(file);
}

void CompanionCircle::SetUpTestSuite() {
  ForgetEarlierCompanions();
  fs::remove_all(Folder());
  fs::create_directories(Folder());
  BenchTest::SetUpTestSuite();
  Bench().Console("command OpenVekApp_Act");
  MakeBlock("bolt", 10);
  MakeBlock("screw", 20);
  MakeAssembly("unit", {{"BOLT", 0, 0, 0}});
  MakeAssembly("bracket", {{"SCREW", 0, 0, 0}});
  for (const char* name : {"BRACKET", "SCREW"})
    Run("api_document_close", "{\"name_or_path\":" + Quoted(name) + "}");
}

// Whatever comes next on this machine may look for a companion.
void CompanionCircle::TearDownTestSuite() {
  BenchTest::TearDownTestSuite();
  EXPECT_TRUE(ComesTrue([] { return ProcessesOfBenches("Vek.exe").empty(); }, 30s));
}

std::string CompanionCircle::InMessage(const std::string& file) {
  return "Z:" + (Folder() / file).string();
}

std::string CompanionCircle::InJson(const std::string& file) {
  std::string path;
  for (const char c : InMessage(file)) path += c == '/' ? std::string(R"(\\)") : std::string(1, c);
  return path;
}

std::string CompanionCircle::Run(const std::string& operation, const std::string& arguments) {
  return Succeed("{\"" + operation + "\":" + arguments + "}");
}

void CompanionCircle::Activate(const std::string& name) {
  Run("api_document_activate", "{\"name_or_path\":" + Quoted(name) + "}");
}

void CompanionCircle::MakeBlock(const std::string& name, int height) {
  Succeed(BlockOf(10, 10, height, name));
  Run("api_document_save_as", "{\"file_path\":" + Quoted(InJson(name + ".prt")) + "}");
}

void CompanionCircle::MakeAssembly(const std::string& name, const std::vector<Placed>& components) {
  const std::string file = "{\"file_path\":" + Quoted(InJson(name + ".asm")) + "}";
  Run("api_document_new_assembly");
  // It has to have its place on the disk before it takes components.
  Run("api_document_save_as", file);
  for (const Placed& placed : components)
    Run("api_assembly_add_component",
        "{\"file_path\":" + Quoted(placed.model) + ",\"x_mm\":" + std::to_string(placed.x) +
            ",\"y_mm\":" + std::to_string(placed.y) + ",\"z_mm\":" + std::to_string(placed.z) + "}");
  Run("api_document_save_as", file);
}

std::vector<std::string> CompanionCircle::Components() {
  std::vector<std::string> ids;
  for (const std::string& line : Bench().Console("tree"))
    if (line.find("type 1000") != std::string::npos) ids.push_back(line.substr(0, line.find(',')));
  return ids;
}

void CompanionCircle::PostReplacement(const std::string& title, const std::string& file) {
  const Answer answer = Post("{\"downloadPath\":" + Quoted(InJson(file)) +
                             ",\"placeLikeComponentTitle\":" + Quoted(title) + ",\"replaceExisting\":true}");
  EXPECT_EQ(answer.status, 200) << answer.body;
}

std::string CompanionCircle::LastReceived() {
  const auto lines = LinesOf(ReceivedFile());
  return lines.empty() ? "nothing" : lines.back();
}

}  // namespace vek::endtoend
