// The table of named operations and the code that runs them.
//
// Filled once during process load and read-only afterwards. Dispatch and batches run on the host's main
// thread; the list of names may be read from the server thread. The provider knows nothing of HTTP.
#pragma once

#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "addin/server/operation_result.h"

namespace vek {

class CreoMcpProvider {
 public:
  using Operation = std::function<CreoMcpOperationResult(const std::wstring& arguments)>;

  // The 81 names that a client may expect.
  static std::span<const wchar_t* const> ExpectedNames();

  // Enters an operation, replacing any earlier one of that name.
  void RegisterOperation(std::wstring name, Operation operation);

  // Registers, for each expected name without an entry, an operation that says it is not implemented yet.
  void FillMissingOperations();

  // The registered names in ascending ordinal order.
  std::vector<std::wstring> ListOperations() const;

  // Runs one operation between its two log lines. Every failure, exceptions included, becomes a result.
  CreoMcpOperationResult Dispatch(const std::wstring& name, const std::wstring& arguments) const;

  // Runs the calls in order. A failed one stops nothing; a successful close makes the rest be skipped.
  BatchResults ExecuteBatch(const OperationList& operations) const;

 private:
  std::map<std::wstring, Operation> operations_;
};

}  // namespace vek
