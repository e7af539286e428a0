// Every link of every page leads somewhere.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

std::string ReadText(const fs::path& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<fs::path> Pages() {
  const fs::path root = VEK_SOURCE_DIR;
  std::vector<fs::path> pages;
  for (auto entry = fs::recursive_directory_iterator(root); entry != fs::recursive_directory_iterator();
       ++entry) {
    const std::string name = entry->path().filename().string();
    if (entry->is_directory() &&
        (name == "build" || name == "out" || name == "node_modules" || name == ".git"))
      entry.disable_recursion_pending();
    if (entry->path().extension() == ".md") pages.push_back(entry->path());
  }
  return pages;
}

// The name under which forges show a heading: lower case, blanks as dashes, no other signs.
std::string Anchor(const std::string& heading) {
  std::string anchor;
  for (const unsigned char sign : heading) {
    if (sign == ' ') anchor += '-';
    if (std::isalnum(sign) || sign == '-' || sign == '_') anchor += static_cast<char>(std::tolower(sign));
  }
  return anchor;
}

std::set<std::string> Anchors(const std::string& page) {
  std::set<std::string> anchors;
  const std::regex heading("(^|\n)#+ ([^\n]*)");
  for (std::sregex_iterator match(page.begin(), page.end(), heading), end; match != end; ++match)
    anchors.insert(Anchor((*match)[2]));
  return anchors;
}

TEST(Links, LeadToFilesAndHeadings) {
  const std::regex link(R"(\]\(([^)\s]*)\))");
  std::size_t seen = 0;
  for (const fs::path& page : Pages()) {
    const std::string text = ReadText(page);
    for (std::sregex_iterator match(text.begin(), text.end(), link), end; match != end; ++match) {
      const std::string target = (*match)[1];
      EXPECT_EQ(target.find("://"), std::string::npos) << page << " leads out of the project: " << target;
      const std::size_t hash = std::min(target.find('#'), target.size());
      const fs::path file = hash == 0 ? page : page.parent_path() / target.substr(0, hash);
      EXPECT_TRUE(fs::exists(file)) << page << ": " << target;
      if (hash < target.size() && fs::is_regular_file(file))
        EXPECT_TRUE(Anchors(ReadText(file)).contains(target.substr(hash + 1))) << page << ": " << target;
      ++seen;
    }
  }
  EXPECT_GT(seen, 50u);
}

}  // namespace
