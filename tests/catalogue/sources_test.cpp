// The catalogue against the operations' sources: every argument that they read and every text that they
// answer with is told, and nothing is told that isn't there.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>

#include "tests/catalogue/catalogue.h"

namespace vek::catalogue {
namespace {

// Texts with a blank that no client gets to see, or only as a part of a longer one.
struct Untold {
  std::string_view why;
  std::vector<std::string_view> texts;
};

constexpr std::size_t kTellingLetters = 10;

const Untold kUntold[] = {
    {"steps of the history, which are data",
     {"Create %s", "Suppress %s", "Unsuppress %s", "Suppress occurrence %s", "Unsuppress occurrence %s",
      "Set %s", "Move %s", "Create sketch %s", "Draw %s in %s"}},
    {"the answer to a step that is undone or done again, which undo and redo replace by their own",
     {"Sketch '%s' deleted.", "Deleted %d entit%s from '%s'.", "Sketch committed.",
      "Empty sketch discarded."}},
    {"the reason that another failure names at its end",
     {"Failed to allocate draft element tree.", "Failed to populate draft element tree.",
      "Failed to allocate draft surface collection.", "Failed to populate draft surface collection.",
      "Failed to allocate draft hinge collection.", "Failed to allocate hinge instruction.",
      "Failed to add hinge edge.", "Draft feature failed to regenerate for one of the side faces.",
      "Could not find hinge edges on the draft faces (surfaces=%u edges=%d endFaces=%u). Try pull_direction "
      "matching the extrude axis (X/Y/Z).",
      "Could not find a pull-direction edge on the draft faces.", "ProMacroLoad failed (status=%d).",
      "ProMacroExecute failed (status=%d)."}},
    {"the reason why the next way is tried, which at most the log tells",
     {"Failed to allocate scratch hole tree for thread lookup.",
      "Failed to build scratch hole tree for thread lookup.",
      "Unknown thread series '%s' (ProElementHoleThreadSeriesSet status=%d).",
      "Screw size '%s' not found in series '%s' (status=%d). Use an ISO.hol FASTENER_ID like M8x1.25.",
      "Failed to read resolved PRO_E_HLE_THRDSERIS index.",
      "Failed to read resolved PRO_E_HLE_SCREWSIZE index.",
      "Failed to allocate solidify tree.",
      "Failed to populate solidify tree.",
      "Failed to extract component element tree (status=%d).",
      "Failed to allocate element path.",
      "Component element tree has no PRO_E_COMPONENT_INIT_POS.",
      "Failed to set INIT_POS transform.",
      "Failed to redefine component INIT_POS (status=%d, errors=%d).",
      "Failed to allocate offset-plane element tree.",
      "Failed to populate offset-plane element tree.",
      "Failed to resolve solid modelitem for offset plane.",
      "Failed to allocate solid selection for offset plane.",
      "Failed to select base plane for offset.",
      "Failed to build reference for offset plane.",
      "Failed to create offset cutting plane (status=%d, errors=%d).",
      "Offset cutting plane was created but its surface could not be resolved."}},
    {"what callers rule out beforehand",
     {"Unsupported history entry.", "Unknown sketch operation '%s'.", "Failed to store sketch session.",
      "Failed to discard empty sketch feature.", "Sketch session has no section.",
      "Sketch orientation reference is required.", "Failed to resolve sketch plane/orient references.",
      "Creo could not create the cosmetic thread.", "Missing geometry item for selection.",
      "Failed to allocate assembly geometry selection.", "Source solid is null.",
      "No drawing template could be resolved.", "Drawing handle is null.", "Drawing or solid is null.",
      "Solid is null for section creation.", "'parent_view_name' / 'view_name' is required.",
      "Failed to build temporary STEP import path."}},
    {"no messages", {"Common Files\\text\\hole", "mapkey "}},
};

// The wide texts of a source, those that stand side by side joined, without what only the log gets.
class TextScanner {
 public:
  explicit TextScanner(std::string_view source) : rest_(source) {}

  std::vector<std::string> Scan() {
    while (!rest_.empty()) Step();
    return std::move(texts_);
  }

 private:
  void Step() {
    if (rest_.starts_with("//")) return Skip(std::min(rest_.find('\n'), rest_.size()));
    if (rest_.starts_with("LR\"(")) return TakeRaw();
    if (rest_.starts_with("L\"")) return TakeText(2, true);
    if (rest_.front() == '"') return TakeText(1, false);
    if (rest_.starts_with("L'")) return Skip(rest_.find('\'', rest_[2] == '\\' ? 4 : 3) + 1);
    if (std::isspace(static_cast<unsigned char>(rest_.front()))) return Skip(1);
    joins_ = false;
    const auto word_end = std::ranges::find_if_not(
        rest_, [](unsigned char letter) { return std::isalnum(letter) || letter == '_'; });
    if (word_end != rest_.begin()) {
      word_ = rest_.substr(0, static_cast<std::size_t>(word_end - rest_.begin()));
      return Skip(word_.size());
    }
    if (rest_.front() == '(' && (log_depth_ > 0 || IsLogCall())) ++log_depth_;
    if (rest_.front() == ')' && log_depth_ > 0) --log_depth_;
    word_ = {};
    Skip(1);
  }

  // LogOperation and its like; a word that merely begins with these letters is none.
  bool IsLogCall() const { return word_.size() > 3 && word_.starts_with("Log") && word_[3] < 'a'; }

  void Skip(std::size_t count) { rest_.remove_prefix(count); }

  void TakeRaw() {
    const std::size_t end = rest_.find(")\"");
    Add(std::string(rest_.substr(4, end - 4)));
    Skip(end + 2);
  }

  void TakeText(std::size_t begin, bool wide) {
    std::string text;
    std::size_t at = begin;
    for (; rest_[at] != '"'; ++at) {
      if (rest_[at] != '\\')
        text += rest_[at];
      else if (rest_[++at] == 'u')
        text += CharacterOf(rest_.substr(at + 1, 4)), at += 4;
      else
        text += rest_[at];
    }
    Skip(at + 1);
    if (wide) Add(std::move(text));
  }

  // The UTF-8 of a character below U+10000.
  static std::string CharacterOf(std::string_view digits) {
    const auto code = static_cast<unsigned>(std::stoul(std::string(digits), nullptr, 16));
    const auto tail = [code](unsigned shift) { return static_cast<char>(0x80 | (code >> shift & 0x3F)); };
    if (code < 0x80) return {static_cast<char>(code)};
    if (code < 0x800) return {static_cast<char>(0xC0 | code >> 6), tail(0)};
    return {static_cast<char>(0xE0 | code >> 12), tail(6), tail(0)};
  }

  void Add(std::string text) {
    if (log_depth_ > 0) return;
    if (joins_)
      texts_.back() += text;
    else
      texts_.push_back(std::move(text));
    joins_ = true;
  }

  std::string_view rest_, word_;
  std::vector<std::string> texts_;
  bool joins_ = false;
  int log_depth_ = 0;
};

// The sources of the operations by family folder, each folder's in one text.
const std::map<std::string, std::string>& Folders() {
  static const std::map<std::string, std::string> folders = [] {
    std::map<std::string, std::string> read;
    for (const auto& file : std::filesystem::recursive_directory_iterator(VEK_SOURCE_DIR "/addin/ops")) {
      if (file.path().extension() != ".cpp") continue;
      std::ifstream stream(file.path(), std::ios::binary);
      read[file.path().parent_path().filename()].append(std::istreambuf_iterator<char>(stream), {});
    }
    return read;
  }();
  return folders;
}

std::set<std::string> Captures(const std::string& source, const std::regex& pattern) {
  std::set<std::string> found;
  for (std::sregex_iterator match(source.begin(), source.end(), pattern), end; match != end; ++match)
    found.insert((*match)[1]);
  return found;
}

const std::regex& ReadArgument() {
  static const std::regex pattern(R"re(\barguments,\s*L"([a-z0-9_]+)")re");
  return pattern;
}

// What a message must consist of to come from the text. What is no whole sentence is part of a longer one.
std::vector<std::string> PiecesAnywhere(const std::string& text) {
  auto pieces = PiecesOfFormat(text);
  if (text.front() != ' ' && text.ends_with('.')) return pieces;
  pieces.insert(pieces.begin(), "");
  pieces.emplace_back();
  return pieces;
}

bool FitsAny(const std::set<std::string>& messages, const std::vector<std::string>& pieces) {
  return std::ranges::any_of(messages, [&](const std::string& message) { return Fits(message, pieces); });
}

std::string Joined(const std::vector<std::string>& pieces) {
  std::string joined;
  for (const std::string& piece : pieces) joined += piece;
  return joined;
}

TEST(CatalogueAgainstSources, TellsTheArgumentsThatAreRead) {
  static const std::regex registered(R"re((?:RegisterOperation\(|\{)\s*L"(api_\w+)")re");
  const std::set<std::string> shared = Captures(Folders().at("common"), ReadArgument());
  std::size_t seen = 0;
  for (const auto& [folder, source] : Folders()) {
    const std::set<std::string> operations = Captures(source, registered);
    seen += operations.size();
    std::set<std::string> told, read = Captures(source, ReadArgument());
    for (const Entry& entry : Entries())
      if (operations.contains(entry.name))
        for (const Json& argument : entry.operation.at("arguments")) told.insert(argument.at("name"));
    for (const std::string& name : shared)
      if (told.contains(name)) read.insert(name);
    if (folder != "common") EXPECT_EQ(told, read) << folder;
  }
  EXPECT_EQ(seen, Entries().size());
}

TEST(CatalogueAgainstSources, TellsTheTextsThatAreAnswered) {
  std::set<std::string> told;
  for (const Entry& entry : Entries())
    for (const auto& [kind, messages] : entry.operation.at("messages").items())
      told.insert(messages.begin(), messages.end());
  std::map<std::string_view, int> untold;
  for (const Untold& group : kUntold)
    for (const std::string_view text : group.texts) untold[text] = 0;

  std::vector<std::vector<std::string>> formats;
  for (const auto& [folder, source] : Folders()) {
    for (const std::string& text : TextScanner(source).Scan()) {
      if (text.find(' ') == std::string::npos) continue;
      const auto exception = untold.find(text);
      if (exception != untold.end()) ++exception->second;
      const auto pieces = PiecesAnywhere(text);
      EXPECT_TRUE(exception != untold.end() || FitsAny(told, pieces)) << folder << ": " << text;
      formats.push_back(pieces);
    }
  }
  for (const auto& [text, times] : untold) EXPECT_GT(times, 0) << "in no source: " << text;

  // A format of few letters would fit everything.
  std::erase_if(formats, [](const auto& pieces) { return Joined(pieces).size() < kTellingLetters; });
  for (const std::string& message : told)
    EXPECT_TRUE(std::ranges::any_of(formats, [&](const auto& pieces) { return Fits(message, pieces); }))
        << "no source has: " << message;
}

}  // namespace
}  // namespace vek::catalogue
