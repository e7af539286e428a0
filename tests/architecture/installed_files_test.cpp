// What the commands name must be among the files that are installed with the add-in.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <string>

namespace {

std::string ReadText(const std::string& path) {
  std::ifstream stream(std::string(VEK_SOURCE_DIR) + "/" + path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

// The messages by their keys; a message takes four lines.
std::map<std::string, std::string> InstalledTexts() {
  std::map<std::string, std::string> texts;
  std::ifstream stream(std::string(VEK_SOURCE_DIR) + "/deploy/text/VekCreoAddin.txt");
  std::string key, text, translation, blank;
  while (std::getline(stream, key) && std::getline(stream, text) && std::getline(stream, translation) &&
         std::getline(stream, blank)) {
    EXPECT_EQ(translation, "#") << key;
    EXPECT_EQ(blank, "") << key;
    EXPECT_TRUE(texts.emplace(key, text).second) << key << " stands there twice";
  }
  return texts;
}

TEST(InstalledFiles, HoldATextForEveryKeyAndAnIconForEveryCommand) {
  const auto texts = InstalledTexts();
  const std::string commands = ReadText("addin/shell/commands.cpp");
  const std::regex action(R"re(\{"\w+_Act",\s*"(\w+)",\s*"(\w+\.png)")re");
  int seen = 0;
  for (std::sregex_iterator match(commands.begin(), commands.end(), action), end; match != end; ++match) {
    const std::string label = (*match)[1], icon = ReadText("deploy/text/resource/" + (*match)[2].str());
    for (const std::string& key : {label, label + "tips"})
      EXPECT_TRUE(texts.contains(key) && !texts.at(key).empty()) << key;
    // Behind the signature, the header's width and height, then 8 bits for each of red, green, blue and
    // alpha.
    ASSERT_GT(icon.size(), 26u) << (*match)[2];
    EXPECT_EQ(icon.substr(1, 3), "PNG") << (*match)[2];
    EXPECT_EQ(icon.substr(16, 10), std::string("\0\0\0\x20\0\0\0\x20\x08\x06", 10)) << (*match)[2];
    ++seen;
  }
  EXPECT_EQ(seen, 5) << "the table of commands has not been seen";
  EXPECT_TRUE(texts.contains("VekCreoAddin")) << "the menu";
  EXPECT_EQ(texts.size(), 2u * 5 + 1) << "texts that nothing asks for";
}

}  // namespace
