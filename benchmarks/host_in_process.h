// The bench host in the benchmark's own process, with the kernel behind it that the environment names in
// VEK_BENCH_KERNEL.
#pragma once

#include <windows.h>

#include <cstdio>
#include <optional>
#include <string>

#include "addin/operations.h"
#include "bench/host/host.h"
#include "benchmarks/figure.h"

namespace benchmarks {

class HostInProcess {
 public:
  HostInProcess() : provider_(vek::BuildProvider()) {
    wchar_t kernel[MAX_PATH] = L"";
    GetEnvironmentVariableW(L"VEK_BENCH_KERNEL", kernel, MAX_PATH);
    bench::TheHost().Reset();
    bench::TheHost().kernel.SetProgram(kernel);
    bench::TheHost().announcements.SetSink([](const std::string& line) {
      if (line.starts_with("complaint:")) std::fprintf(stderr, "%s\n", line.c_str());
    });
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
    bool ok = false;
    const double milliseconds = benchmarks::Milliseconds([&] { ok = Run(name, arguments); });
    return ok ? std::optional(milliseconds) : std::nullopt;
  }

 private:
  vek::CreoMcpProvider provider_;
};

}  // namespace benchmarks
