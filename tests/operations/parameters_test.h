// A part with parameters, whose values are listed, read and set.
#pragma once

#include <gmock/gmock.h>

#include "addin/ops/common/history.h"
#include "bench/host/console/console.h"
#include "tests/support/operation_fixture.h"

namespace vek::support {

inline constexpr const wchar_t* kList = L"api_parameters_list";
inline constexpr const wchar_t* kGet = L"api_parameters_get";
inline constexpr const wchar_t* kSet = L"api_parameters_set";

class ParametersTest : public OperationTest {
 protected:
  void SetUp() override {
    OperationTest::SetUp();
    NewPart();
    Console("parameter Width double 2 in");
    Console("parameter Ratio double 1.5");
    Console("parameter Label string Bolt");
    Console("parameter Count integer 3");
    Console("parameter Hollow bool true");
    ClearHistory();
  }

  // A command of the bench's console.
  void Console(const std::string& line) {
    bench::Console([&](const std::string& said) { EXPECT_EQ(said, "ok") << line; }).Run(line);
  }

  static std::wstring NameAnd(const std::wstring& name, const std::wstring& expression) {
    return LR"({"name":")" + name + LR"(","expression":")" + expression + LR"("})";
  }
};

}  // namespace vek::support
