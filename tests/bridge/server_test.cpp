// The protocol, line by line.

#include "bridge/server.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <vector>

namespace vek::bridge {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

const Catalogue& TwoOperations() {
  static const Catalogue catalogue(Json::parse(R"({"families": [{"operations": [
    {"name": "api_info", "purpose": "Tells.", "document": "any", "history": null, "read_only": true,
     "destructive": false, "arguments": [], "data": [{"name": "name", "type": "string", "purpose": "Its name."}]},
    {"name": "api_point", "purpose": "Draws.", "document": "part", "history": "sketch entity", "read_only": false,
     "destructive": false, "data": [],
     "arguments": [{"name": "x", "type": "number", "purpose": "Where.", "required": true}]}]}]})"));
  return catalogue;
}

// A Creo that does everything at once, unless it is held.
class QuickCreo : public Creo {
 public:
  Answer Post(std::span<const Step> steps, const KeepWaiting& keep_waiting) override {
    for (const milliseconds waited : waits) keep_waiting(waited);
    std::unique_lock lock(mutex_);
    ++posts_;
    changed_.notify_all();
    while (held_ && keep_waiting(milliseconds(0))) changed_.wait_for(lock, milliseconds(1));
    Answer answer;
    for (const Step& step : steps)
      answer.results.push_back({StepResult::Outcome::kDone, step.operation, {{"name", "A"}}});
    return answer;
  }

  void Hold() { held_ = true; }
  void LetGo() {
    const std::lock_guard lock(mutex_);
    held_ = false;
  }
  void AwaitPost() {
    std::unique_lock lock(mutex_);
    ASSERT_TRUE(changed_.wait_for(lock, seconds(10), [this] { return posts_ > 0; }));
  }
  int posts() const { return posts_; }

  std::vector<milliseconds> waits;  // what is told of the time in every post

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  bool held_ = false;
  int posts_ = 0;
};

class ServerTest : public testing::Test {
 protected:
  void Take(std::string_view line) { server_.Take(line); }

  // What has been written, once all that was taken is answered.
  std::vector<Json> Written() {
    server_.Finish();
    return written_;
  }

  QuickCreo creo_;

 private:
  std::vector<Json> written_;
  Server server_{TwoOperations(), creo_, [this](const std::string& line) {
                   EXPECT_EQ(line.find('\n'), std::string::npos);
                   written_.push_back(Json::parse(line));
                 }};
};

std::string Request(const std::string& method, const std::string& params, const std::string& id = "1") {
  return R"({"jsonrpc":"2.0","id":)" + id + R"(,"method":")" + method + R"(","params":)" + params + "}";
}

// Lines that the reader answers by itself, each with the answer but for the words of an error; empty for
// none.
struct Exchanged {
  const char* line;
  const char* answer;
};

const Exchanged kExchanged[] = {
    {"", ""},
    {" \t\r", ""},
    {"{", R"({"jsonrpc":"2.0","id":null,"error":{"code":-32700}})"},
    {"\xff", R"({"jsonrpc":"2.0","id":null,"error":{"code":-32700}})"},
    {R"({"jsonrpc":"2.0","id":1,"method":"ping"} x)",
     R"({"jsonrpc":"2.0","id":null,"error":{"code":-32700}})"},
    {"7", R"({"jsonrpc":"2.0","id":null,"error":{"code":-32600}})"},
    {"[]", R"({"jsonrpc":"2.0","id":null,"error":{"code":-32600}})"},
    {R"({"id":1,"method":"ping"})", R"({"jsonrpc":"2.0","id":1,"error":{"code":-32600}})"},
    {R"({"jsonrpc":"1.0","id":"a","method":"ping"})",
     R"({"jsonrpc":"2.0","id":"a","error":{"code":-32600}})"},
    {R"({"jsonrpc":"2.0","id":1,"method":5})", R"({"jsonrpc":"2.0","id":1,"error":{"code":-32600}})"},
    {R"({"jsonrpc":"2.0","id":1})", R"({"jsonrpc":"2.0","id":1,"error":{"code":-32600}})"},
    {R"({"jsonrpc":"2.0","id":null,"method":"ping"})",
     R"({"jsonrpc":"2.0","id":null,"error":{"code":-32600}})"},
    {R"({"jsonrpc":"2.0","id":1.5,"method":"ping"})",
     R"({"jsonrpc":"2.0","id":null,"error":{"code":-32600}})"},
    {R"({"jsonrpc":"2.0","id":{},"method":"ping"})",
     R"({"jsonrpc":"2.0","id":null,"error":{"code":-32600}})"},
    {R"({"jsonrpc":"2.0","id":0,"method":"ping"})", R"({"jsonrpc":"2.0","id":0,"result":{}})"},
    {R"({"jsonrpc":"2.0","id":-9007199254740993,"method":"ping"})",
     R"({"jsonrpc":"2.0","id":-9007199254740993,"result":{}})"},
    {R"({"jsonrpc":"2.0","id":"Ω\"\n","method":"ping","params":{}})",
     R"({"jsonrpc":"2.0","id":"Ω\"\n","result":{}})"},
    {R"({"jsonrpc":"2.0","id":1,"method":"ping","params":[]})",
     R"({"jsonrpc":"2.0","id":1,"error":{"code":-32602}})"},
    {R"({"jsonrpc":"2.0","id":1,"method":"resources/list"})",
     R"({"jsonrpc":"2.0","id":1,"error":{"code":-32601}})"},
    {R"({"jsonrpc":"2.0","id":1,"method":"tools/list","params":{"cursor":"2"}})",
     R"({"jsonrpc":"2.0","id":1,"error":{"code":-32602}})"},
    {R"({"jsonrpc":"2.0","id":1,"method":"tools/call"})",
     R"({"jsonrpc":"2.0","id":1,"error":{"code":-32602}})"},
    {R"({"jsonrpc":"2.0","id":1,"method":"tools/call","params":{"name":"api_other"}})",
     R"({"jsonrpc":"2.0","id":1,"error":{"code":-32602}})"},
    {R"({"jsonrpc":"2.0","id":1,"method":"tools/call","params":{"name":"api_info","arguments":[]}})",
     R"({"jsonrpc":"2.0","id":1,"error":{"code":-32602}})"},
    {R"({"jsonrpc":"2.0","id":1,"method":"initialize","params":{}})",
     R"({"jsonrpc":"2.0","id":1,"error":{"code":-32602}})"},
    {R"({"jsonrpc":"2.0","method":"notifications/initialized"})", ""},
    {R"({"jsonrpc":"2.0","method":"notifications/of_another_kind","params":{}})", ""},
    {R"({"jsonrpc":"2.0","method":"notifications/cancelled","params":{"requestId":12}})", ""},
    {R"({"jsonrpc":"2.0","method":"tools/call","params":{"name":"api_info"}})", ""},
    {R"({"jsonrpc":"2.0","id":4,"result":{}})", ""},
    {R"([{"jsonrpc":"2.0","method":"notifications/initialized"}])", ""},
    {R"([{"jsonrpc":"2.0","id":1,"method":"ping"},{"jsonrpc":"2.0","method":"x"},3])",
     R"([{"jsonrpc":"2.0","id":1,"result":{}},{"jsonrpc":"2.0","id":null,"error":{"code":-32600}}])"},
};

void ForgetWords(Json& answer) {
  if (answer.is_array())
    for (Json& one : answer) ForgetWords(one);
  if (answer.contains("error")) {
    EXPECT_TRUE(answer["error"]["message"].is_string());
    answer["error"].erase("message");
  }
}

TEST(ServerLines, AreAnsweredByTheRules) {
  for (const auto& [line, answer] : kExchanged) {
    QuickCreo creo;
    std::vector<Json> written;
    Server server(TwoOperations(), creo,
                  [&](const std::string& text) { written.push_back(Json::parse(text)); });
    server.Take(line);
    server.Finish();
    for (Json& one : written) ForgetWords(one);
    const Json expected = *answer == '\0' ? Json::array() : Json::array({Json::parse(answer)});
    EXPECT_EQ(Json(written), expected) << line;
    EXPECT_EQ(creo.posts(), 0) << line;
  }
}

TEST_F(ServerTest, RefusesWhatIsNestedBeyondReason) {
  const auto nested = [](int depth) {
    return Request("ping", R"({"x":)" + std::string(depth, '[') + std::string(depth, ']') + "}");
  };
  Take(nested(90));
  Take(nested(100'000));
  const auto written = Written();
  ASSERT_EQ(written.size(), 2U);
  EXPECT_TRUE(written[0].contains("result"));
  EXPECT_EQ(written[1]["error"]["code"], -32700);
}

TEST_F(ServerTest, AgreesOnAVersionThatBothKnow) {
  const std::pair<const char*, const char*> kAskedAndAgreed[] = {{"2025-06-18", "2025-06-18"},
                                                                 {"2025-03-26", "2025-03-26"},
                                                                 {"2024-11-05", "2024-11-05"},
                                                                 {"2099-01-01", "2025-06-18"},
                                                                 {"", "2025-06-18"}};
  for (const auto& [asked, agreed] : kAskedAndAgreed)
    Take(Request("initialize", std::string(R"({"protocolVersion":")") + asked + R"("})"));
  const auto written = Written();
  ASSERT_EQ(written.size(), std::size(kAskedAndAgreed));
  for (std::size_t i = 0; i < written.size(); ++i)
    EXPECT_EQ(written[i]["result"]["protocolVersion"], kAskedAndAgreed[i].second);
}

TEST_F(ServerTest, AnswersWhileACallRunsAndForgetsACancelledOne) {
  creo_.Hold();
  Take(Request("tools/call", R"({"name":"api_info"})", "\"held\""));
  Take(Request("tools/call", R"({"name":"api_info"})", "2"));
  Take(Request("tools/call", R"({"name":"api_info"})", "3"));
  creo_.AwaitPost();
  Take(Request("ping", "{}", "4"));
  // The one that waits first: with the running one gone it would have its turn.
  Take(R"({"jsonrpc":"2.0","method":"notifications/cancelled","params":{"requestId":2}})");
  Take(R"({"jsonrpc":"2.0","method":"notifications/cancelled","params":{"requestId":"held"}})");
  creo_.LetGo();
  const auto written = Written();
  ASSERT_EQ(written.size(), 2U);
  EXPECT_EQ(written[0]["id"], 4);
  EXPECT_EQ(written[1]["id"], 3);
  EXPECT_EQ(written[1]["result"]["structuredContent"]["name"], "A");
  // The second was cancelled before its turn, and never posted.
  EXPECT_EQ(creo_.posts(), 2);
}

TEST_F(ServerTest, AnswersAnArrayWithAnArrayWhenTheLastCallIsDone) {
  creo_.Hold();
  Take("[" + Request("tools/call", R"({"name":"api_info"})", "1") + "," + Request("ping", "{}", "2") + "]");
  creo_.AwaitPost();
  creo_.LetGo();
  const auto written = Written();
  ASSERT_EQ(written.size(), 1U);
  ASSERT_EQ(written[0].size(), 2U);
  EXPECT_EQ(written[0][0]["id"], 2);
  EXPECT_EQ(written[0][1]["id"], 1);
}

// A wait of three times five seconds is told of three times, and what is told grows without reaching the end.
TEST_F(ServerTest, TellsOfProgressOnlyWhereItWasAskedFor) {
  creo_.waits = {milliseconds(100),    milliseconds(5'000),  milliseconds(5'100),
                 milliseconds(10'000), milliseconds(14'900), milliseconds(15'000)};
  const std::string steps =
      R"("arguments":{"steps":[{"operation":"api_info"},{"operation":"api_point","arguments":{"x":1}}]})";
  Take(Request("tools/call", R"({"name":"batch",)" + steps + R"(,"_meta":{"progressToken":"t"}})"));
  Take(Request("tools/call", R"({"name":"batch",)" + steps + "}"));
  const auto written = Written();
  ASSERT_EQ(written.size(), 5U);
  double last = 0;
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(written[i]["method"], "notifications/progress");
    EXPECT_EQ(written[i]["params"]["progressToken"], "t");
    EXPECT_EQ(written[i]["params"]["total"], 2);
    const double progress = written[i]["params"]["progress"];
    EXPECT_GT(progress, last);
    EXPECT_LT(progress, 2);
    last = progress;
  }
  EXPECT_EQ(written[3]["result"]["structuredContent"]["done"], 2);
  EXPECT_EQ(written[4]["result"]["structuredContent"]["done"], 2);
}

}  // namespace
}  // namespace vek::bridge
