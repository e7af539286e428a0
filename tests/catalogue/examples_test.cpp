// Each operation's entry in the catalogue is held against the operation: its example, what happens when an
// argument is left out, doesn't fit or has its default given, when nothing is open, and what enters the
// history.

#include <windows.h>

#include "addin/operations.h"
#include "addin/ops/common/history.h"
#include "addin/text/utf8.h"
#include "bench/host/storage/model_json.h"
#include "tests/catalogue/catalogue.h"
#include "tests/support/operation_fixture.h"

namespace vek::catalogue {
namespace {

// Where the examples keep their files.
constexpr std::string_view kDrive = "O:\\";

// Values that an argument does not take: just beyond its limits, and a word that is none of its own.
std::vector<Json> Unfitting(const Json& argument) {
  std::vector<Json> values;
  if (argument.contains("above")) values.push_back(argument.at("above"));
  if (argument.contains("minimum")) values.push_back(argument.at("minimum").get<double>() - 1);
  if (argument.contains("maximum")) values.push_back(argument.at("maximum").get<double>() + 1);
  if (argument.contains("below")) values.push_back(argument.at("below"));
  if (argument.contains("values") && !argument.value("open", false) &&
      !argument.value("values_default_on_other", false))
    values.emplace_back("no such word");
  return values;
}

class EntryTest : public support::OperationTest {
 public:
  explicit EntryTest(const Entry& entry)
      : entry_(entry), operation_(entry.operation), example_(operation_.at("example")) {}

 private:
  void TestBody() override {
    Prepare();
    ExpectRefusalsOfWhatIsMissing();
    ExpectRefusalsOfWhatDoesNotFit();
    const std::size_t steps = UndoStack().size();
    const auto before = Look();
    EXPECT_EQ(Deviation(entry_, Ask(example_.at("arguments"))), "");
    EXPECT_TRUE(!operation_.at("read_only") || Look() == before) << "it is said to read only";
    ExpectHistory(steps);

    const Json explicit_arguments = WithDefaults();
    if (explicit_arguments != example_.at("arguments")) {
      Renew();
      Prepare();
      EXPECT_EQ(Deviation(entry_, Ask(explicit_arguments)), "") << "with " << explicit_arguments.dump();
    }
    if (operation_.at("document") == "none") return;
    Renew();
    const Answer answer = Ask(example_.at("arguments"));
    EXPECT_TRUE(IsToldFailure(entry_, answer)) << "with nothing open: " << answer.message;
  }

  void Renew() {
    OperationTest::TearDown();
    OperationTest::SetUp();
  }

  // Runs an operation on the test's own directory in place of the drive.
  Answer Ask(const std::string& name, const Json& arguments) {
    const std::string here = EncodeUtf8((directory() / "").wstring());
    const auto result = Run(DecodeUtf8(name), DecodeUtf8(WithReplaced(arguments, kDrive, here).dump()));
    return {result.success, WithReplaced(EncodeUtf8(result.message), here, kDrive),
            WithReplaced(Json::parse(EncodeUtf8(result.dataJson)), here, kDrive)};
  }
  Answer Ask(const Json& arguments) { return Ask(entry_.name, arguments); }

  void Prepare() {
    for (const Json& step : example_.at("given")) {
      const Answer answer = Ask(step.at(0), step.at(1));
      ASSERT_TRUE(answer.success) << step.dump() << ": " << answer.message;
    }
  }

  // The models in session, whole, which of them is active, and the files.
  std::vector<std::string> Look() {
    std::vector<std::string> seen;
    for (const bench::Model* const model : host().session.All())
      seen.push_back((model == host().CurrentModel() ? "active " : "") + ModelToText(*model));
    for (const auto& file : std::filesystem::recursive_directory_iterator(directory()))
      seen.push_back(EncodeUtf8(file.path().wstring()));
    return seen;
  }

  // A refused operation leaves the session as it was: all are asked in the same.
  void ExpectRefusalsOfWhatIsMissing() {
    for (const Json& argument : operation_.at("arguments"))
      if (argument.value("required", false)) ExpectMissing(argument.at("name"), argument.at("missing"));
  }

  void ExpectMissing(const std::string& name, const std::string& message) {
    Json arguments = example_.at("arguments");
    EXPECT_EQ(arguments.erase(name), 1u) << name << " is not in the example";
    const Answer answer = Ask(arguments);
    EXPECT_EQ(answer.message, message) << "without " << name;
    EXPECT_TRUE(IsToldFailure(entry_, answer)) << answer.message;
  }

  void ExpectRefusalsOfWhatDoesNotFit() {
    for (const Json& argument : operation_.at("arguments")) {
      const std::string name = argument.at("name");
      Json arguments = example_.at("arguments");
      // What has no default may count only beside other arguments than the example's.
      if (!arguments.contains(name) && argument.value("default", Json()).is_null()) continue;
      for (const Json& value : Unfitting(argument)) {
        arguments[name] = value;
        const Answer answer = Ask(arguments);
        EXPECT_TRUE(IsToldFailure(entry_, answer)) << name << " = " << value << ": " << answer.message;
      }
    }
  }

  // The example's arguments and every default that they don't give.
  Json WithDefaults() {
    Json arguments = example_.at("arguments");
    for (const Json& argument : operation_.at("arguments")) {
      const std::string name = argument.at("name");
      const Json value = argument.value("default", Json());
      if (!value.is_null() && !arguments.contains(name)) arguments[name] = value;
    }
    return arguments;
  }

  // `steps` is what there was to undo before the example.
  void ExpectHistory(std::size_t steps) {
    if (operation_.at("history").is_null()) {
      EXPECT_LE(UndoStack().size(), steps) << "it enters the history";
      return;
    }
    ASSERT_GT(UndoStack().size(), steps) << "it enters no history";
    // Some steps can't be undone in every host: the entry has what undo says then.
    const std::string refusal = operation_.value("undo", "<steps> undo step(s) applied.");
    const Answer undone = Ask("api_document_undo", Json::object());
    EXPECT_TRUE(Fits(undone.message, PiecesOfMessage(refusal))) << undone.message;
    EXPECT_NE(undone.success, operation_.contains("undo"));
  }

  const Entry& entry_;
  const Json& operation_;
  const Json& example_;
};

TEST(Catalogue, HasEveryOperationOfTheAddin) {
  std::vector<std::string> told, registered;
  for (const Entry& entry : Entries()) told.push_back(entry.name);
  std::ranges::sort(told);
  for (const std::wstring& name : BuildProvider().ListOperations()) registered.push_back(EncodeUtf8(name));
  EXPECT_EQ(told, registered);
}

// A suite for each family, so that they can be run side by side.
void RegisterEntries() {
  for (const Entry& entry : Entries())
    testing::RegisterTest(entry.family.c_str(), entry.name.c_str(), nullptr, nullptr, __FILE__, __LINE__,
                          [&entry]() -> EntryTest* { return new EntryTest(entry); });
}

}  // namespace
}  // namespace vek::catalogue

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  ::SetEnvironmentVariableW(L"PRO_DIRECTORY", L"" VEK_INSTALLATION);
  vek::catalogue::RegisterEntries();
  return RUN_ALL_TESTS();
}
