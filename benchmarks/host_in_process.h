// The bench host in the benchmark's own process, with the kernel behind it that the environment names in
// VEK_BENCH_KERNEL.
#pragma once

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "addin/operations.h"
#include "bench/host/host.h"

namespace benchmarks {

class HostInProcess {
 public:
  HostInProcess() : provider_(vek::BuildProvider()) {
    wchar_t kernel[MAX_PATH] = L"";
    GetEnvironmentVariableW(L"VEK_BENCH_KERNEL", kernel, MAX_PATH);
    bench::TheHost().Reset();
    bench::TheHost().kernel.SetProgram(kernel);
  }
  ~HostInProcess() { bench::TheHost().kernel.Stop(); }
  HostInProcess(const HostInProcess&) = delete;
  HostInProcess& operator=(const HostInProcess&) = delete;

  // An operation that must succeed: false, and its message on standard error, when it doesn't.
  bool Run(const wchar_t* name, const std::wstring& arguments = L"{}") {
    std::wstring data;
    return Run(name, arguments, data);
  }
  bool Run(const wchar_t* name, const std::wstring& arguments, std::wstring& data) {
    const auto result = provider_.Dispatch(name, arguments);
    if (!result.success) std::fprintf(stderr, "%ls: %ls\n", name, result.message.c_str());
    data = result.dataJson;
    return result.success;
  }

  // How long the operation takes; nothing when it fails.
  std::optional<double> Milliseconds(const wchar_t* name, const std::wstring& arguments = L"{}") {
    const auto begin = std::chrono::steady_clock::now();
    if (!Run(name, arguments)) return std::nullopt;
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
  }

 private:
  vek::CreoMcpProvider provider_;
};

inline double Median(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
  return values[values.size() / 2];
}

}  // namespace benchmarks
