// What the end-to-end suites share: a bench of their own, and requests to it.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "tests/endtoend/bench_process.h"
#include "tests/support/http_text.h"
#include "tests/support/raw_connection.h"

namespace vek::endtoend {

inline constexpr int kPort = 4001;

using support::Answer;
using support::ParseAnswer;
using support::RequestText;

// One request with a body and its length, and the answer to it. The server gives every answer within its two
// minutes, however busy the machine is.
Answer Request(const std::string& method, const std::string& path, const std::string& body = {},
               std::chrono::milliseconds limit = std::chrono::seconds(130));
Answer Execute(const std::string& operations);

// Carries operations out, which must succeed; the answer's body.
std::string Succeed(const std::string& operations);
// Operations that make a new part with a block of that size with a corner in the origin, from a sketch of
// that name; names of sketches are told apart over the whole session.
std::string BlockOf(int x, int y, int z, const std::string& sketch);

// That the text holds the part.
void ExpectHolds(const std::string& text, const std::string& part);

// One bench for all tests of a suite. After each test, the console's ledger must be clean.
class BenchTest : public testing::Test {
 protected:
  static void SetUpTestSuite();
  static void TearDownTestSuite();
  void TearDown() override;

  // The suite's bench, with more in its environment; for a suite that sets itself up.
  static void StartBench(const std::map<std::string, std::string>& environment);
  static BenchProcess& Bench() { return *bench_; }

 private:
  static std::unique_ptr<BenchProcess> bench_;
};

}  // namespace vek::endtoend
