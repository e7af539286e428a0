#include "tests/soak/figures.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace vek::soak {
namespace {

// The number behind `name` among lines of the form `name: number…`.
long NumberOf(const std::vector<std::string>& lines, const std::string& name) {
  for (const std::string& line : lines)
    if (line.starts_with(name + ":")) return std::stol(line.substr(name.size() + 1));
  throw std::runtime_error("nothing tells the " + name);
}

std::vector<std::string> LinesOf(const std::filesystem::path& file) {
  std::ifstream stream(file);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

}  // namespace

Figures Measure(endtoend::BenchProcess& bench) {
  std::this_thread::sleep_for(std::chrono::milliseconds(300));
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
    const std::vector<std::string> status = LinesOf(process / "status");
    figures.kernel_kb += NumberOf(status, "VmRSS");
    figures.kernel_threads += NumberOf(status, "Threads");
    figures.kernel_files += std::distance(std::filesystem::directory_iterator(process / "fd"), {});
  }
  return figures;
}

}  // namespace vek::soak
