// Who may know whom: walks the includes of the whole tree and fails on the first arrow that runs up.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <optional>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

struct Include {
  std::string file;    // from the root, with slashes
  std::string target;  // as it stands between the quotes or brackets
  bool quoted = false;
};

std::vector<Include> IncludesBelow(const std::string& folder) {
  static const std::regex kInclude(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"])");
  std::vector<Include> includes;
  const fs::path root(VEK_SOURCE_DIR);
  for (const auto& entry : fs::recursive_directory_iterator(root / folder)) {
    const std::string extension = entry.path().extension().string();
    if (extension != ".h" && extension != ".cpp") continue;
    std::ifstream stream(entry.path());
    std::smatch match;
    for (std::string line; std::getline(stream, line);)
      if (std::regex_search(line, match, kInclude))
        includes.push_back({fs::relative(entry.path(), root).generic_string(), match[2], match[1] == "\""});
  }
  return includes;
}

bool StartsWith(const std::string& text, const std::string& head) {
  return text.rfind(head, 0) == 0;
}

// The add-in's floors, highest first. A folder stands on the first floor with which its path begins.
const std::vector<std::vector<std::string>> kFloors = {
    {"addin/shell/"},
    {"addin/operations."},
    {"addin/ops/document/", "addin/ops/exchange/"},
    {"addin/ops/parameters/", "addin/ops/macros/", "addin/ops/sketch/", "addin/ops/feature/",
     "addin/ops/assembly/", "addin/ops/drawing/"},
    {"addin/companion/", "addin/ops/common/"},
    {"addin/server/"},
    {"addin/platform/"},
    {"addin/host/", "addin/text/"},
};

std::optional<int> FloorOf(const std::string& path) {
  for (std::size_t floor = 0; floor < kFloors.size(); ++floor)
    for (const std::string& head : kFloors[floor])
      if (StartsWith(path, head)) return static_cast<int>(floor);
  return std::nullopt;
}

TEST(FolderFloors, EveryFileOfTheAddinStandsOnAFloor) {
  for (const Include& include : IncludesBelow("addin"))
    EXPECT_TRUE(FloorOf(include.file)) << include.file << " stands on no floor";
}

TEST(FolderFloors, NoIncludeOfTheAddinRunsUp) {
  int seen = 0;
  for (const Include& include : IncludesBelow("addin")) {
    if (!include.quoted) continue;
    const auto from = FloorOf(include.file);
    const auto to = FloorOf(include.target);
    ASSERT_TRUE(to) << include.file << " includes " << include.target << ", which is none of the add-in's";
    EXPECT_LE(*from, *to) << include.file << " includes " << include.target << " of a higher floor";
    ++seen;
  }
  EXPECT_GT(seen, 50) << "the walk has not seen the add-in";
}

TEST(FolderFloors, NoCircleBetweenFolders) {
  std::map<std::string, std::set<std::string>> arrows;
  for (const std::string& tree : {"addin", "bench"})
    for (const Include& include : IncludesBelow(tree)) {
      if (!include.quoted || include.target.find("/") == std::string::npos) continue;
      const std::string from = fs::path(include.file).parent_path().generic_string();
      const std::string to = fs::path(include.target).parent_path().generic_string();
      // A folder inside another is a part of it: the kinds of features know the model, and the model's
      // regeneration knows them.
      if (from != to && !StartsWith(from, to + "/") && !StartsWith(to, from + "/")) arrows[from].insert(to);
    }
  std::set<std::string> done;
  std::vector<std::string> path;
  std::function<void(const std::string&)> walk = [&](const std::string& folder) {
    const auto met = std::find(path.begin(), path.end(), folder);
    if (met != path.end()) {
      std::string circle;
      for (auto step = met; step != path.end(); ++step) circle += *step + " -> ";
      FAIL() << circle << folder;
    }
    if (done.contains(folder)) return;
    path.push_back(folder);
    for (const std::string& next : arrows[folder]) walk(next);
    path.pop_back();
    done.insert(folder);
  };
  for (const auto& [folder, targets] : std::map(arrows)) walk(folder);
}

TEST(FolderFloors, PureFoldersKnowNeitherWindowsNorTheToolkit) {
  for (const char* folder : {"addin/text", "addin/server"})
    for (const Include& include : IncludesBelow(folder)) {
      EXPECT_FALSE(StartsWith(include.target, "Pro")) << include.file << " includes " << include.target;
      EXPECT_NE(include.target, "windows.h") << include.file;
      EXPECT_NE(include.target, "winsock2.h") << include.file;
    }
}

TEST(FolderFloors, TheThreeProgramsKeepApart) {
  for (const Include& include : IncludesBelow("addin"))
    EXPECT_FALSE(StartsWith(include.target, "bench/")) << include.file << " includes " << include.target;
  for (const Include& include : IncludesBelow("bench/host")) {
    EXPECT_FALSE(StartsWith(include.target, "addin/")) << include.file << " includes " << include.target;
    EXPECT_FALSE(StartsWith(include.target, "bench/kernel/"))
        << include.file << " includes " << include.target;
  }
  for (const Include& include : IncludesBelow("bench/kernel")) {
    EXPECT_FALSE(StartsWith(include.target, "addin/")) << include.file << " includes " << include.target;
    EXPECT_FALSE(StartsWith(include.target, "bench/host/")) << include.file << " includes " << include.target;
    EXPECT_FALSE(StartsWith(include.target, "Pro")) << include.file << " includes " << include.target;
  }
}

}  // namespace
