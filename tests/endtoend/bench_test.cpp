#include "tests/endtoend/bench_test.h"

namespace vek::endtoend {

std::unique_ptr<BenchProcess> BenchTest::bench_;

Answer ParseAnswer(const std::string& bytes) {
  Answer answer;
  const auto blank_line = bytes.find("\r\n\r\n");
  if (bytes.rfind("HTTP/1.1 ", 0) != 0 || blank_line == std::string::npos) return answer;
  answer.status = std::stoi(bytes.substr(9, 3));
  answer.head = bytes.substr(0, blank_line);
  answer.body = bytes.substr(blank_line + 4);
  return answer;
}

std::string RequestText(const std::string& method, const std::string& path, const std::string& body) {
  return method + " " + path +
         " HTTP/1.1\r\nHost: localhost\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

Answer Request(const std::string& method, const std::string& path, const std::string& body,
               std::chrono::milliseconds limit) {
  support::RawConnection connection(kPort);
  connection.Send(RequestText(method, path, body));
  return ParseAnswer(connection.ReadToEnd(limit));
}

Answer Execute(const std::string& operations) {
  return Request("POST", "/execute", "{\"operations\":" + operations + "}");
}

void BenchTest::SetUpTestSuite() {
  StartBench({});
}

void BenchTest::StartBench(const std::map<std::string, std::string>& environment) {
  bench_ = std::make_unique<BenchProcess>(environment);
}

void BenchTest::TearDownTestSuite() {
  bench_.reset();
}

void BenchTest::TearDown() {
  for (const std::string& line : Bench().Console("ledger"))
    EXPECT_EQ(line.find("violation:"), std::string::npos) << line;
}

}  // namespace vek::endtoend
