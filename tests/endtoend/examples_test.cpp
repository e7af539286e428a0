// The catalogue's examples as a client posts them.

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "tests/catalogue/catalogue.h"
#include "tests/endtoend/bench_test.h"

namespace vek::endtoend {
namespace {

using catalogue::Json;
using catalogue::WithReplaced;

// The examples' drive, and the folder on it that this test empties.
constexpr std::string_view kDrive = "O:\\";
constexpr std::string_view kFolder = "O:\\endtoend_examples\\";

constexpr const char* kClose = "api_document_close";

std::filesystem::path Folder() {
  return std::filesystem::path(BenchHome()) / "prefix/dosdevices/o:/endtoend_examples";
}

catalogue::Answer ReadAnswer(const Json& result) {
  const Json here = WithReplaced(result, kFolder, kDrive);
  return {here.at("success"), here.at("message"), here.at("data")};
}

// Posts the calls, each a name with its arguments, and gives their answers. A batch takes a name once, and
// does nothing more behind a close.
std::vector<catalogue::Answer> Post(const Json& calls) {
  std::vector<catalogue::Answer> answers;
  while (answers.size() < calls.size()) {
    Json batch = Json::object();
    for (std::size_t i = answers.size(); i < calls.size(); ++i) {
      const std::string name = calls[i][0];
      if (batch.contains(name) || batch.contains(kClose)) break;
      batch[name] = WithReplaced(calls[i][1], kDrive, kFolder);
    }
    const Json body = Json::parse(Execute(batch.dump()).body);
    for (const auto& call : batch.items()) answers.push_back(ReadAnswer(body.at("results").at(call.key())));
  }
  return answers;
}

// The steps of an example and the example itself, with sketch names that no other has: they stay taken.
Json CallsOf(const catalogue::Entry& entry, const std::string& suffix) {
  const Json& example = entry.operation.at("example");
  Json calls = example.at("given");
  calls.push_back({entry.name, example.at("arguments")});
  std::set<std::string> sketches;
  for (const Json& call : calls)
    if (call[0] == "api_sketch_create") sketches.insert(call[1].at("name"));
  for (Json& call : calls)
    for (Json& argument : call[1])
      if (argument.is_string() && sketches.contains(argument))
        argument = argument.get<std::string>() + suffix;
  return calls;
}

// Closes the models that are listed: drawings and assemblies, which stand behind, before what they hold.
void CloseAll(const Json& open) {
  Json calls = Json::array();
  for (auto model = open.rbegin(); model != open.rend(); ++model)
    calls.push_back({kClose, {{"name_or_path", model->at("name")}}});
  for (const auto& answer : Post(calls)) EXPECT_TRUE(answer.success) << answer.message;
}

using Examples = BenchTest;

TEST_F(Examples, AnswerAsTheCatalogueSays) {
  int number = 0;
  for (const catalogue::Entry& entry : catalogue::Entries()) {
    SCOPED_TRACE(entry.name);
    std::filesystem::remove_all(Folder());
    std::filesystem::create_directories(Folder());
    const std::string suffix = "_of_" + std::to_string(++number);
    Json calls = CallsOf(entry, suffix);
    calls.push_back({"api_document_list_open", Json::object()});
    auto answers = Post(calls);
    const Json open = answers.back().data;
    auto answer = answers[answers.size() - 2];
    for (std::size_t i = 0; i + 2 < answers.size(); ++i)
      EXPECT_TRUE(answers[i].success) << answers[i].message;
    answer.message = WithReplaced(answer.message, suffix, "");
    answer.data = WithReplaced(answer.data, suffix, "");
    EXPECT_EQ(Deviation(entry, answer), "");
    CloseAll(open);
  }
  std::filesystem::remove_all(Folder());
}

}  // namespace
}  // namespace vek::endtoend
