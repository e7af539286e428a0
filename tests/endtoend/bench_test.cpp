#include "tests/endtoend/bench_test.h"

namespace vek::endtoend {

std::unique_ptr<BenchProcess> BenchTest::bench_;

Answer Request(const std::string& method, const std::string& path, const std::string& body,
               std::chrono::milliseconds limit) {
  support::RawConnection connection(kPort);
  connection.Send(RequestText(method, path, body));
  return ParseAnswer(connection.ReadToEnd(limit));
}

Answer Execute(const std::string& operations) {
  return Request("POST", "/execute", "{\"operations\":" + operations + "}");
}

std::string Succeed(const std::string& operations) {
  const std::string body = Execute(operations).body;
  EXPECT_NE(body.find("\"success\":true"), std::string::npos) << body;
  EXPECT_EQ(body.find("\"success\":false"), std::string::npos) << body;
  return body;
}

std::string BlockOf(int x, int y, int z, const std::string& sketch) {
  const std::string name = "\"" + sketch + "\"";
  return R"({"api_document_new_part":{},"api_sketch_create":{"plane":"XY","name":)" + name +
         R"(},"api_sketch_rectangle_two_points":{"x1":0,"y1":0,"x2":)" + std::to_string(x) + R"(,"y2":)" +
         std::to_string(y) + R"(,"sketch_name":)" + name + R"(},"api_feature_extrude":{"distance_mm":)" +
         std::to_string(z) + R"(,"sketch_name":)" + name + "}}";
}

void ExpectHolds(const std::string& text, const std::string& part) {
  EXPECT_NE(text.find(part), std::string::npos) << "no " << part << "\nin " << text;
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
