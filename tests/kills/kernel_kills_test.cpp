// The geometry kernel is killed while it works for the bench, or can't be had at all: the client is told, the
// model is as it was, and the next request meets a new kernel.

#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <future>
#include <sstream>
#include <thread>

#include "bench/kernel/base64.h"
#include "tests/endtoend/companion_ground.h"

namespace vek::endtoend {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

struct Running {
  char state = 'X';  // gone, unless the system tells another one
  pid_t parent = 0;
  long ticks = 0;  // of a processor that it has taken so far

  bool IsAlive() const { return state != 'X' && state != 'Z'; }
};

Running Look(pid_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/stat");
  std::string text;
  std::getline(file, text);
  // Behind the name in brackets: state, parent, and twelfth and thirteenth the ticks of user and system.
  std::istringstream words(text.substr(std::min(text.rfind(')') + 1, text.size())));
  std::string word;
  Running running;
  long user = 0, system = 0;
  words >> running.state >> running.parent;
  for (int i = 0; i < 9; ++i) words >> word;
  words >> user >> system;
  running.ticks = user + system;
  return running;
}

class KernelKills : public BenchTest {
 protected:
  static constexpr long kAtWork = 20;  // ticks: a fifth of a second

  static void SetUpTestSuite() {
    fs::remove_all(Folder());
    fs::create_directories(Folder());
    const char* const named = std::getenv("VEK_BENCH_KERNEL");
    kernel_ =
        named != nullptr ? named : std::string(VEK_SOURCE_DIR) + "/build/native/bench/kernel/creokernel";
    LetStart(true);
    StartBench({{"VEK_BENCH_KERNEL", Link().string()}});
    Succeed(BlockOf(100, 60, 10, "PLATE"));
    Succeed(R"({"api_sketch_create":{"plane":"XY","name":"BORE"},
                "api_sketch_circle_center_radius":{"sketch_name":"BORE","cx":10,"cy":10,"radius":2},
                "api_feature_extrude":{"distance_mm":10,"sketch_name":"BORE","operation":"cut"}})");
  }
  static void TearDownTestSuite() {
    BenchTest::TearDownTestSuite();
    fs::remove_all(Folder());
  }

  static fs::path Folder() { return fs::path(BenchHome()) / "kills"; }
  static fs::path Link() { return Folder() / "creokernel"; }
  // Whether a kernel is there to be started.
  static void LetStart(bool possible) {
    fs::remove(Link());
    if (possible) fs::create_symlink(kernel_, Link());
  }

  // The kernel itself, and the process in which it reads what may bring it down; 0 for none.
  static pid_t Kernel() {
    static pid_t kernel = 0;
    if (Look(kernel).IsAlive()) return kernel;
    const auto kernels = ProcessesOfBenches("creokernel");
    const auto found = std::ranges::find_if(kernels, [&](pid_t each) {
      const Running running = Look(each);
      return running.IsAlive() && std::ranges::find(kernels, running.parent) == kernels.end();
    });
    return kernel = found == kernels.end() ? 0 : *found;
  }
  static pid_t Reader() {
    const std::string kernel = std::to_string(Kernel());
    // Looking through all processes, as one can anywhere, takes longer than a reader lives.
    std::ifstream children("/proc/" + kernel + "/task/" + kernel + "/children");
    pid_t reader = 0;
    children >> reader;
    return Look(reader).IsAlive() ? reader : 0;
  }

  // Posts the operations, and kills the kernel in the midst of its work for them, and its successor too,
  // until so many were killed; the answer's body.
  static std::string KillInTheMidst(const std::string& operations, int times) {
    pid_t last = 0;
    return KillDuring(operations, times, [&last] {
      const pid_t kernel = Kernel();
      if (kernel == 0) return pid_t{0};
      // What a kernel of ours has done before is none of this work.
      if (kernel != last) {
        last = kernel;
        begin_ = Look(kernel).ticks;
      }
      return Look(kernel).ticks - begin_ >= kAtWork ? kernel : pid_t{0};
    });
  }

  // The same, for whatever process `find` tells.
  static std::string KillDuring(const std::string& operations, int times,
                                const std::function<pid_t()>& find) {
    begin_ = 0;
    find();
    auto answer = std::async(std::launch::async, [&] { return Execute(operations).body; });
    for (int killed = 0; killed < times;) {
      if (answer.wait_for(1ms) == std::future_status::ready) {
        ADD_FAILURE() << "answered before " << times << " were killed";
        break;
      }
      const pid_t process = find();
      if (process == 0) continue;
      kill(process, SIGKILL);
      ++killed;
      EXPECT_TRUE(ComesTrue([&] { return !Look(process).IsAlive(); }));
    }
    return answer.get();
  }

  // An idle kernel dies: the next one has everything to compute anew.
  static void KillIdle() {
    const pid_t kernel = Kernel();
    ASSERT_NE(kernel, 0);
    kill(kernel, SIGKILL);
    ASSERT_TRUE(ComesTrue([&] { return !Look(kernel).IsAlive(); }));
  }

  // The models and the features of the current one, as the console tells them, and that as the kernel has it.
  static std::string State() {
    std::string state;
    for (const char* command : {"models", "tree"})
      for (const std::string& line : Bench().Console(command))
        if (!line.starts_with("complaint: ") && !line.starts_with("refused: ")) state += line + '\n';
    return state + std::to_string(Bench().Console("faces").size()) + " faces";
  }

  static std::string kernel_;
  static long begin_;
};
std::string KernelKills::kernel_;
long KernelKills::begin_ = 0;

// 6 x 6 holes, one after the other.
constexpr const char* kPattern =
    R"({"api_pattern_rectangular":{"feature_names":["Extrude_1"],"x_direction":"X","x_count":6,"x_spacing_mm":15,
        "y_direction":"Z","y_count":6,"y_spacing_mm":8}})";

TEST_F(KernelKills, InTheMidstOfARegeneration) {
  const auto before = State();
  const auto refusal = "Creo could not create the rectangular pattern (status=-11).";
  ExpectHolds(KillInTheMidst(kPattern, 2), refusal);
  EXPECT_EQ(State(), before);
  ExpectHolds(Execute(R"({"api_document_rebuild":{}})").body, "\"success\":true");
  EXPECT_EQ(State(), before);

  // One kill costs time alone: the request is asked of the next kernel.
  ExpectHolds(KillInTheMidst(kPattern, 1), "\"success\":true");
  // 100 · 60 · 10 - 36 · π·2²·10 = 55476.106579
  ExpectHolds(State(), "volume 55476.1066");
}

TEST_F(KernelKills, InTheMidstOfAnExportAndOfAPicture) {
  // A kernel without anything in its cache computes the model before it writes or draws it.
  KillIdle();
  const auto before = State();
  const struct {
    const char *operation, *refusal;
    fs::path file;
  } cases[] = {{R"({"api_export_file":{"output_path":"@/holes","format":"STEP"}})",
                "Failed to export active model as STEP (status=-11).", Folder() / "holes.stp"},
               {R"({"api_export_screenshot":{"output_path":"@/holes.png","width_px":64,"height_px":48}})",
                "Failed to export screenshot (status=-11).", Folder() / "holes.png"}};
  const auto in_folder = [](std::string text) {
    return text.replace(text.find('@'), 1, "Z:" + Folder().string());
  };
  for (const auto& [operation, refusal, file] : cases) {
    ExpectHolds(KillInTheMidst(in_folder(operation), 2), refusal);
    EXPECT_FALSE(fs::exists(file));
    ExpectHolds(Execute(R"({"api_document_info":{}})").body, "\"success\":true");
    EXPECT_EQ(State(), before);
  }
  ExpectHolds(KillInTheMidst(in_folder(cases[0].operation), 1), "\"success\":true");
  ExpectHolds(Execute(in_folder(cases[1].operation)).body, "\"success\":true");
  for (const auto& [operation, refusal, file] : cases) EXPECT_TRUE(fs::exists(file));
}

TEST_F(KernelKills, InTheMidstOfAnImport) {
  Succeed(R"({"api_export_file":{"output_path":"Z:)" + Folder().string() + R"(/read","format":"STEP"}})");
  const auto before = State();
  const std::string import = R"({"api_import_step_base64":{"filename":"holes.stp","data_base64":")" +
                             bench::kernel::Base64(BytesOf(Folder() / "read.stp")) + "\"}}";
  // The host reads a file twice, for its type and for its models; a type that isn't told is no failure.
  ExpectHolds(KillDuring(import, 4, [] { return Reader() != 0 ? Kernel() : 0; }),
              "STEP import failed (status=-11).");
  EXPECT_EQ(State(), before);
  // What dies of a file alone takes no kernel along.
  ExpectHolds(KillDuring(import, 2, Reader), "STEP import failed (status=-16).");
  EXPECT_EQ(State(), before);
  EXPECT_TRUE(ComesTrue([] { return Reader() == 0; })) << "a reader outlives its kernel";
  ExpectHolds(Execute(import).body, "\"success\":true");
  ExpectHolds(Bench().Console("models").back(), "part HOLES");
}

TEST_F(KernelKills, OnceThereIsNoneToBeStarted) {
  const auto before = State();
  LetStart(false);
  KillIdle();
  const char* const picture = R"({"api_export_screenshot":{"output_path":"Z:/nowhere.bmp"}})";
  for (int i = 0; i < 2; ++i) ExpectHolds(Execute(picture).body, "Failed to export screenshot (status=-11).");
  std::string said;
  for (const std::string& line : Bench().Console("models")) said += line + '\n';
  ExpectHolds(said, "can't be started: error 2");
  EXPECT_EQ(State(), before);
  LetStart(true);
  Succeed(R"({"api_export_file":{"output_path":"Z:)" + Folder().string() + R"(/back","format":"STL"}})");
}

}  // namespace
}  // namespace vek::endtoend
