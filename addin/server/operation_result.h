// What an operation gives back.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vek {

// The result of one operation. `dataJson` is text that is already JSON and is never empty.
struct CreoMcpOperationResult {
  bool success = false;
  std::wstring message;
  std::wstring dataJson = L"null";
};

// One operation of a batch: its name and its arguments, both raw text of the request.
struct OperationCall {
  std::wstring name;
  std::wstring arguments;
};

// The operations of a batch in the order of the request.
using OperationList = std::vector<OperationCall>;

// The results of a batch by name, compared ordinally: the order of the response, not of the execution.
using BatchResults = std::map<std::wstring, CreoMcpOperationResult>;

inline CreoMcpOperationResult MakeFailureResult(std::wstring message) {
  return {false, std::move(message), L"null"};
}

inline CreoMcpOperationResult MakeSuccessResult(std::wstring message = {}, std::wstring dataJson = L"null") {
  return {true, std::move(message), std::move(dataJson)};
}

}  // namespace vek
