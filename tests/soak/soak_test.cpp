// The add-in through thousands of requests and restarts in one process: every answer is checked, and what the
// process holds is flat. ./test does the short form; VEK_SOAK=all, which ./run soak sets, the whole.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>

#include "tests/endtoend/bench_test.h"
#include "tests/soak/hostile_clients.h"
#include "tests/soak/traffic.h"

namespace vek::soak {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using endtoend::BenchProcess;
using support::RawConnection;

struct Plan {
  int warm_up, requests, waves, cycles;
};
constexpr Plan kShort{60, 240, 1, 30};
constexpr Plan kWhole{2'000, 8'000, 5, 1'000};

// What is let grow. Handles and threads come and go with connections, of which none is open when they are
// counted. Each sketch leaves its private section and its record, which clients may come back to as long as
// the session lasts; each closed document leaves a record in the bench, so that its handle stays known as
// dead. What is resident grows a little more, since heaps break up. The short form's warm-up fills neither
// the bench's journal with its 20,000 entries nor the kernel's cache of shapes, so that both are let grow
// once more.
constexpr long kHandlesMore = 4;
constexpr long kAllocatedPerSketchKb = 16;
constexpr long kAllocatedPerRestartKb = 1;
constexpr long kResidentPerThousandRequestsKb = 1'024;
constexpr long kResidentPerRestartKb = 4;
constexpr long kKernelPerThousandRequestsKb = 1'024;
constexpr long kJournalKb = 8'192;
constexpr long kShapesKb = 65'536;

// What the bench's process and its kernel hold at one moment.
struct Figures {
  long handles = 0;
  long threads = 0;
  long memory_kb = 0;  // resident
  long allocated_kb = 0;
  long blocks = 0;
  long sections = 0;  // private sections of sketches, which the add-in keeps on purpose
  long kernel_kb = 0;
  long kernel_threads = 0;
  long kernel_files = 0;
  std::vector<std::string> complaints;  // whatever else the ledger tells
};

// The number behind `name` among lines of the form `name: number…`.
long NumberOf(const std::vector<std::string>& lines, const std::string& name) {
  for (const std::string& line : lines)
    if (line.starts_with(name + ":")) return std::stol(line.substr(name.size() + 1));
  throw std::runtime_error("nothing tells the " + name);
}

// Waits until the server has let go of its last connection, and asks.
Figures Measure(BenchProcess& bench) {
  std::this_thread::sleep_for(300ms);
  Figures figures;
  const std::vector<std::string> resources = bench.Console("resources");
  figures.handles = NumberOf(resources, "handles");
  figures.threads = NumberOf(resources, "threads");
  figures.memory_kb = NumberOf(resources, "memory");
  figures.allocated_kb = NumberOf(resources, "allocated");
  for (const std::string& line : resources)
    if (const auto in = line.find(" kB in "); in != std::string::npos)
      figures.blocks = std::stol(line.substr(in + 7));

  for (const std::string& line : bench.Console("ledger")) {
    std::istringstream words(line);
    std::string what, kind, more;
    long count = 0;
    words >> what >> count >> kind;
    if (what == "outstanding:" && kind == "section" && !(words >> more))
      figures.sections = count;
    else
      figures.complaints.push_back(line);
  }

  for (const int kernel : endtoend::ProcessesOfBenches("creokernel")) {
    const std::filesystem::path process = "/proc/" + std::to_string(kernel);
    const std::vector<std::string> status = endtoend::LinesOf(process / "status");
    figures.kernel_kb += NumberOf(status, "VmRSS");
    figures.kernel_threads += NumberOf(status, "Threads");
    figures.kernel_files += std::distance(std::filesystem::directory_iterator(process / "fd"), {});
  }
  return figures;
}

class Soak : public testing::Test {
 protected:
  Soak() {
    const char* const asked = std::getenv("VEK_SOAK");
    whole_ = asked != nullptr && std::string_view(asked) == "all";
    plan_ = whole_ ? kWhole : kShort;
    const char* const seed = std::getenv("VEK_SOAK_SEED");
    seed_ = seed != nullptr ? static_cast<std::uint32_t>(std::stoul(seed)) : std::random_device()();
    std::printf("seed %u\n", seed_);
  }

  void RunWaves(Traffic& traffic, Random& random) {
    for (const Wave& wave : Waves()) {
      SCOPED_TRACE(wave.name);
      wave.run(random, [&] {
        const auto waited = traffic.AskHealth(wave.allowed);
        EXPECT_LE(waited, wave.allowed);
        longest_[wave.name] = std::max(longest_[wave.name], waited);
      });
      const auto behind = traffic.AskHealth(5s);
      longest_behind_ = std::max(longest_behind_, behind);
      traffic.AskBatch();
    }
  }

  // Stops and starts the add-in, every tenth time with its helper, now and then under clients that are
  // connected.
  void Restart(BenchProcess& bench, Traffic& traffic, int cycle) {
    SCOPED_TRACE("restart " + std::to_string(cycle));
    if (cycle % 10 == 0) fs::rename(folder_ / "aside.exe", addin_.Helper());
    std::unique_ptr<RawConnection> reading, waiting;
    if (cycle % 50 == 0) {
      reading = std::make_unique<RawConnection>(endtoend::kPort);
      reading->Send("POST /execute HTTP/1.1\r\nContent-Le");
    }
    if (cycle % 5 == 0) waiting = std::make_unique<RawConnection>(endtoend::kPort);
    const auto begin = std::chrono::steady_clock::now();
    bench.Console("restart");
    slowest_restart_ = std::max(slowest_restart_, std::chrono::duration_cast<std::chrono::milliseconds>(
                                                      std::chrono::steady_clock::now() - begin));
    traffic.AskHealth(5s);
    if (cycle % 10 == 0) traffic.AskBatch();
    if (reading) EXPECT_EQ(reading->ReadToEnd(), "");
    if (waiting) EXPECT_EQ(waiting->ReadToEnd(), "");
    if (cycle % 10 == 0) fs::rename(addin_.Helper(), folder_ / "aside.exe");
  }

  // How often the helper was called at starts or at stops.
  std::ptrdiff_t HelperCalls(const std::string& argument) const {
    return std::ranges::count(addin_.HelperCalls(), argument);
  }

  void Print(const Figures& start, const Figures& warm, const Figures& asked, const Figures& end,
             const Traffic& traffic) const {
    const double thousands = plan_.requests / 1000.0;
    std::printf("%-34s %10s %10s %10s %10s %12s %12s\n", "", "at start", "warm", "requests", "restarts",
                "per 1,000", "per 100");
    std::printf("%-34s %10s %10s %10s %10s %12s %12s\n", "", "", "", "", "", "requests", "restarts");
    const auto row = [&](const char* name, long Figures::*figure) {
      std::printf("%-34s %10ld %10ld %10ld %10ld %12.1f %12.1f\n", name, start.*figure, warm.*figure,
                  asked.*figure, end.*figure, static_cast<double>(asked.*figure - warm.*figure) / thousands,
                  static_cast<double>(end.*figure - asked.*figure) / (plan_.cycles / 100.0));
    };
    row("handles", &Figures::handles);
    row("threads", &Figures::threads);
    row("memory, kB", &Figures::memory_kb);
    row("of it allocated, kB", &Figures::allocated_kb);
    row("in blocks", &Figures::blocks);
    row("private sections of sketches", &Figures::sections);
    row("kernel: memory, kB", &Figures::kernel_kb);
    row("kernel: threads", &Figures::kernel_threads);
    row("kernel: open files", &Figures::kernel_files);
    std::printf("%d requests, %d of them batches, %d sketches; %d restarts, the slowest %lld ms\n",
                traffic.requests(), traffic.batches(), traffic.sketches(), plan_.cycles,
                static_cast<long long>(slowest_restart_.count()));
    for (const Wave& wave : Waves())
      std::printf("wave %-29s the honest request waited %5lld ms of %lld\n", wave.name,
                  static_cast<long long>(longest_.at(wave.name).count()),
                  static_cast<long long>(wave.allowed.count()));
    std::printf("%-34s the honest request waited %5lld ms\n", "behind a wave",
                static_cast<long long>(longest_behind_.count()));
  }

  void ExpectFlat(const Figures& warm, const Figures& asked, const Figures& end, int sketches) const {
    for (const Figures* later : {&asked, &end}) {
      EXPECT_LE(later->handles, warm.handles + kHandlesMore);
      EXPECT_EQ(later->threads, warm.threads);
      EXPECT_EQ(later->kernel_threads, warm.kernel_threads);
      EXPECT_EQ(later->kernel_files, warm.kernel_files);
      EXPECT_EQ(later->complaints, std::vector<std::string>{});
    }
    EXPECT_EQ(end.sections, sketches) << "each sketch keeps one, and nothing else does";
    const long journal = whole_ ? 0 : kJournalKb;
    EXPECT_LE(asked.allocated_kb - warm.allocated_kb,
              kAllocatedPerSketchKb * (asked.sections - warm.sections) + journal);
    EXPECT_LE(end.allocated_kb - asked.allocated_kb, kAllocatedPerRestartKb * plan_.cycles + journal);
    EXPECT_LE(asked.memory_kb - warm.memory_kb,
              kResidentPerThousandRequestsKb * plan_.requests / 1000 + journal);
    EXPECT_LE(end.memory_kb - asked.memory_kb, kResidentPerRestartKb * plan_.cycles + journal);
    EXPECT_LE(end.kernel_kb - warm.kernel_kb,
              kKernelPerThousandRequestsKb * plan_.requests / 1000 + (whole_ ? 0 : kShapesKb));
  }

  bool whole_ = false;
  Plan plan_;
  std::uint32_t seed_ = 0;
  const fs::path folder_ = fs::path(endtoend::BenchHome()) / "soak";
  const endtoend::InstalledAddin addin_{folder_};
  std::map<std::string, std::chrono::milliseconds> longest_;
  std::chrono::milliseconds longest_behind_{0};
  std::chrono::milliseconds slowest_restart_{0};
};

TEST_F(Soak, StaysFlatOverRequestsHostileClientsAndRestarts) {
  fs::create_directories(folder_ / "work");
  auto environment = addin_.Environment();
  environment["VEK_BENCH_WORK"] = (folder_ / "work").string();
  Figures start, warm, asked, end;
  {
    BenchProcess bench(environment);
    start = Measure(bench);
    Random random(seed_);
    Traffic traffic(seed_, fs::canonical(folder_ / "work").string());
    traffic.Prepare();
    if (whole_) RunWaves(traffic, random);
    traffic.Run(plan_.warm_up - traffic.requests());
    warm = Measure(bench);
    for (int wave = 0; wave < plan_.waves && !HasFailure(); ++wave) {
      traffic.Run(plan_.requests / plan_.waves);
      RunWaves(traffic, random);
    }
    asked = Measure(bench);
    fs::rename(addin_.Helper(), folder_ / "aside.exe");
    for (int cycle = 0; cycle < plan_.cycles && !HasFailure(); ++cycle) Restart(bench, traffic, cycle);
    end = Measure(bench);
    ASSERT_FALSE(HasFailure());
    Print(start, warm, asked, end, traffic);
    ExpectFlat(warm, asked, end, traffic.sketches());
    EXPECT_EQ(bench.Quit(), 0);
  }
  // At the first start, and at the stop and start of every tenth restart.
  const int with_helper = plan_.cycles / 10;
  EXPECT_EQ(HelperCalls("--install-pending"), with_helper);
  for (int i = 0; i < 500 && HelperCalls("--check-update") <= with_helper; ++i)
    std::this_thread::sleep_for(20ms);
  EXPECT_EQ(HelperCalls("--check-update"), with_helper + 1);
}

}  // namespace
}  // namespace vek::soak
