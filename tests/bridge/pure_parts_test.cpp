// The parts of the bridge that compute without waiting: schemas, checks, the division of batches, answers
// read.

#include <gtest/gtest.h>

#include "bridge/address.h"
#include "bridge/argument_check.h"
#include "bridge/batch_plan.h"
#include "bridge/field_types.h"
#include "bridge/http_message.h"
#include "bridge/options.h"
#include "bridge/tools.h"

namespace vek::bridge {
namespace {

// One operation with these arguments and data.
Operation Described(const std::string& arguments, const std::string& data = "[]", bool array = false) {
  const std::string entry =
      R"({"name":"api_x_y","purpose":"Does.","document":"part","history":"step","read_only":false,
    "destructive":true,"notes":["Odd."],"arguments":)" +
      arguments + R"(,"data":)" + data + (array ? R"(,"data_is":"array"})" : "}");
  return Catalogue(Json::parse(R"({"families":[{"operations":[)" + entry + "]}]}")).operations().front();
}

struct Described1 {
  const char* argument;  // as the catalogue has it, without its name
  const char* schema;
};

TEST(Schemas, SayWhatTheCatalogueSays) {
  const Described1 table[] = {
      {R"({"type":"number","purpose":"Width.","unit":"mm","required":true,"above":0,"below":9})",
       R"({"type":"number","description":"Width. Unit: mm.","exclusiveMinimum":0,"exclusiveMaximum":9})"},
      {R"({"type":"integer","purpose":"Count.","default":1,"minimum":1,"maximum":10})",
       R"({"type":"integer","description":"Count.","minimum":1,"maximum":10,"default":1})"},
      {R"({"type":"string","purpose":"Word.","default":null,"values":["a","b"]})",
       R"({"type":"string","description":"Word.","enum":["a","b"]})"},
      {R"({"type":"string","purpose":"Plane.","values":["a","b"],"open":true})",
       R"({"type":"string","description":"Plane. Words: a, b, and others."})"},
      {R"({"type":"point array","purpose":"Corners."})",
       R"({"type":"array","items":{"anyOf":[
           {"type":"array","items":{"type":"number"},"minItems":2,"maxItems":2},
           {"type":"object","properties":{"x":{"type":"number"},"y":{"type":"number"}},"required":["x","y"]}]},
           "description":"Corners."})"},
  };
  for (const auto& [argument, schema] : table) {
    Json entry = Json::parse(argument);
    entry["name"] = "v";
    const Json input = OperationTool(Described(Json::array({entry}).dump()))["inputSchema"];
    EXPECT_EQ(input["properties"]["v"], Json::parse(schema)) << argument;
    EXPECT_EQ(input.contains("required"), entry.value("required", false)) << argument;
    EXPECT_EQ(input["additionalProperties"], false);
  }
}

TEST(Schemas, OfResultsWrapArraysAndLeavePicturesOut) {
  const char* const data = R"([{"name":"a","type":"string","purpose":"A."},
    {"name":"b","type":"number","purpose":"B.","unit":"mm","optional":true},
    {"name":"c","type":"object array","purpose":"C.","fields":[{"name":"n","type":"number","purpose":"N."}]},
    {"name":"screenshot_base64","type":"string","purpose":"P.","optional":true},
    {"name":"screenshot_media_type","type":"string","purpose":"T.","optional":true}])";
  const Json row = Json::parse(R"({"type":"object","properties":{"a":{"type":"string","description":"A."},
    "b":{"type":"number","description":"B. Unit: mm."},
    "c":{"type":"array","items":{"type":"object","properties":{"n":{"type":"number","description":"N."}},"required":["n"]},
         "description":"C."}},"required":["a","c"]})");
  EXPECT_EQ(OperationTool(Described("[]", data))["outputSchema"], row);
  EXPECT_EQ(OperationTool(Described("[]", data, true))["outputSchema"]["properties"]["items"]["items"], row);
  const Json tool = OperationTool(Described("[]"));
  EXPECT_FALSE(tool.contains("outputSchema"));
  EXPECT_EQ(tool["title"], "X y");
  EXPECT_EQ(tool["description"], "Does. Odd. Acts on the active part. Can be undone (step).");
  EXPECT_EQ(tool["annotations"], Json::parse(R"({"title":"X y","readOnlyHint":false,"destructiveHint":true,
    "openWorldHint":false})"));
}

TEST(FieldTypes, TakeWhatTheirSchemaTakes) {
  const struct {
    const char* type;
    std::vector<const char*> fitting, unfitting;
  } table[] = {
      {"number", {"1", "-0.5", "1e3"}, {"\"1\"", "null", "true", "[1]"}},
      {"integer", {"1", "-7", "3.0"}, {"3.5", "\"3\""}},
      {"boolean", {"true", "false"}, {"0", "1", "\"true\"", "null"}},
      {"string", {"\"\"", "\"a\""}, {"1", "null"}},
      {"string array", {"[]", "[\"a\"]"}, {"\"a\"", "[1]"}},
      {"number array", {"[]", "[1,2.5]"}, {"1", "[\"1\"]", "{}"}},
      {"number or number array", {"1", "[1]"}, {"\"1\"", "[null]"}},
      {"point array",
       {"[]", "[[1,2]]", R"([[1,2],{"x":1,"y":2}])"},
       {"[1,2]", "[[1]]", "[[1,2,3]]", "[[1,\"2\"]]", R"([{"x":1}])", R"([{"x":1,"y":"2"}])"}},
      {"contour array", {"[]", "[[[1,2],[3,4]]]"}, {"[[1,2]]", R"([[{"x":1,"y":2}]])"}},
      {"matrix", {"[[1,0,0,0],[0,1,0,0],[0,0,1,0],[0,0,0,1]]"}, {"[[1,0,0,0]]", "[]"}},
      {"object", {"{}", "{\"a\":1}"}, {"[]"}},
      {"object array", {"[]", "[{}]"}, {"{}", "[1]"}},
  };
  for (const auto& [type, fitting, unfitting] : table) {
    for (const char* value : fitting)
      EXPECT_TRUE(FindFieldType(type).fits(Json::parse(value))) << type << value;
    for (const char* value : unfitting)
      EXPECT_FALSE(FindFieldType(type).fits(Json::parse(value))) << type << value;
  }
  EXPECT_THROW(FindFieldType("numbers"), std::invalid_argument);
}

TEST(ArgumentCheck, TellsEachMistake) {
  const Operation operation = Described(R"([{"name":"n","type":"number","purpose":""},
    {"name":"w","type":"string","purpose":"","values":["left","right"],"values_default_on_other":true},
    {"name":"v","type":"string","purpose":"","values":["a"]}])");
  EXPECT_EQ(ArgumentMistakes(operation, Json::parse(R"({"n":"1","W":"","w":"leftish","v":"b"})")),
            (std::vector<std::string>{"Argument 'n' must be a number.",
                                      "Unknown argument 'W': api_x_y takes n, w, v.",
                                      "Argument 'w' must be one of left, right."}));
  for (const char* fitting : {R"({"w":"LEFT"})", R"({"w":""})"})
    EXPECT_TRUE(ArgumentMistakes(operation, Json::parse(fitting)).empty()) << fitting;
  // Missing ones are for the add-in to tell.
  EXPECT_TRUE(ArgumentMistakes(operation, Json::object()).empty());
  EXPECT_EQ(ArgumentMistakes(Described("[]"), Json::parse(R"({"a":1})")),
            std::vector<std::string>{"Unknown argument 'a': api_x_y takes none."});
}

std::vector<std::size_t> Division(const std::vector<std::string>& names) {
  std::vector<Step> steps;
  for (const std::string& name : names) steps.push_back({name});
  std::vector<std::size_t> sizes;
  for (std::span<const Step> left = steps; !left.empty(); left = left.subspan(sizes.back()))
    sizes.push_back(NextBatch(left));
  return sizes;
}

TEST(BatchPlan, DividesAtRepeatedNamesAndBehindACloseOnly) {
  using Sizes = std::vector<std::size_t>;
  EXPECT_EQ(Division({"a"}), Sizes({1}));
  EXPECT_EQ(Division({"a", "b", "c"}), Sizes({3}));
  EXPECT_EQ(Division({"a", "a", "a"}), Sizes({1, 1, 1}));
  EXPECT_EQ(Division({"a", "b", "b", "a"}), Sizes({2, 2}));
  EXPECT_EQ(Division({"a", "b", "a", "c", "b"}), Sizes({2, 3}));
  EXPECT_EQ(Division({"a", "api_document_close", "b"}), Sizes({2, 1}));
  EXPECT_EQ(Division({"api_document_close", "api_document_close"}), Sizes({1, 1}));
}

TEST(BatchPlan, DividesWhatTheAddinWouldNotReadWhole) {
  const auto step = [](const std::string& name, std::size_t size) {
    return Step{name, {{"data", std::string(size, 'x')}}};
  };
  const std::vector<Step> steps = {step("a", 100'000), step("b", 100'000), step("c", 100'000)};
  EXPECT_EQ(NextBatch(steps), 2U);
  EXPECT_LE(ExecuteRequest({}, ExecuteBody({steps.data(), 2})).size(), kRequestLimit);
  EXPECT_FALSE(IsTooLarge(step("a", 261'000)));
  EXPECT_TRUE(IsTooLarge(step("a", 262'000)));
  // Bytes count, not characters.
  EXPECT_TRUE(IsTooLarge({"a", {{"data", [] {
                                   std::string umlauts;
                                   for (int i = 0; i < 140'000; ++i) umlauts += "ä";
                                   return umlauts;
                                 }()}}}));
}

TEST(BatchPlan, WritesStepsInTheirOrder) {
  const std::vector<Step> steps = {{"b", {{"z", 1}, {"a", "ä\n"}}}, {"a"}};
  EXPECT_EQ(ExecuteBody(steps), "{\"operations\":{\"b\":{\"z\":1,\"a\":\"ä\\n\"},\"a\":{}}}");
}

TEST(HttpAnswers, AreCompleteWithTheirLastByteAndNotBefore) {
  using State = HttpAnswer::State;
  const std::string whole = "HTTP/1.1 503 Service Unavailable\r\nX: y\r\ncontent-LENGTH:  5\r\n\r\n{\"a\"}";
  for (std::size_t size = 0; size < whole.size(); ++size)
    for (const bool ended : {false, true})
      ASSERT_EQ(ReadHttpAnswer(whole.substr(0, size), ended).state, State::kIncomplete) << size;
  const HttpAnswer answer = ReadHttpAnswer(whole + "surplus", false);
  EXPECT_EQ(answer.state, State::kComplete);
  EXPECT_EQ(answer.status, 503);
  EXPECT_EQ(answer.body, "{\"a\"}");

  const std::string endless = "HTTP/1.0 200 OK\r\n\r\n{}";
  EXPECT_EQ(ReadHttpAnswer(endless, false).state, State::kIncomplete);
  EXPECT_EQ(ReadHttpAnswer(endless, true).body, "{}");

  for (const char* foreign : {"S", "HTTP/2 200\r\n\r\n", "HTTP/1.1\r\n\r\n", "HTTP/1.1 OK\r\n\r\n"})
    EXPECT_EQ(ReadHttpAnswer(foreign, true).state, State::kForeign) << foreign;
}

TEST(Options, TakeAnAddressAndNothingElse) {
  using Task = Options::Task;
  const struct {
    std::vector<std::string_view> arguments;
    Task task;
    std::string address;
  } table[] = {
      {{}, Task::kServe, "127.0.0.1:4001"},
      {{"--address", "localhost:65535"}, Task::kServe, "localhost:65535"},
      {{"--address", "cad.example:80", "--version"}, Task::kShowVersion, "cad.example:80"},
      {{"--help"}, Task::kShowHelp, "127.0.0.1:4001"},
      {{"--address"}, Task::kComplain, ""},
      {{"--address", "localhost"}, Task::kComplain, ""},
      {{"--address", ":4001"}, Task::kComplain, ""},
      {{"--address", "localhost:0"}, Task::kComplain, ""},
      {{"--address", "localhost:65536"}, Task::kComplain, ""},
      {{"--address", "localhost:4001x"}, Task::kComplain, ""},
      {{"--port", "4001"}, Task::kComplain, ""},
  };
  for (const auto& [arguments, task, address] : table) {
    const Options options = ReadOptions(arguments);
    EXPECT_EQ(options.task, task);
    EXPECT_EQ(options.complaint.empty(), task != Task::kComplain);
    if (task != Task::kComplain) EXPECT_EQ(options.address.Text(), address);
  }
}

}  // namespace
}  // namespace vek::bridge
