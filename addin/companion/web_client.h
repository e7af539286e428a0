// The add-in's own requests to the companion application on this machine.
//
// A client is made for one command. Each request blocks the main thread until it is answered or has failed;
// its outcome goes to one of the two callbacks, once, and no exception leaves the client.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "addin/companion/face_measurement_record.h"

namespace vek {

struct HttpResponse {
  int statusCode = 0;
  std::wstring body;
  std::wstring errorMessage;
  bool success = false;
};

class VekWebClient {
 public:
  // Either may be empty.
  using SuccessCallback = std::function<void(const HttpResponse&)>;
  using ErrorCallback = std::function<void(const std::wstring&)>;

  // True when the companion answered with a status from 200 to 299.
  bool SendFaceMeasurement(const FaceMeasurement& measurement, const SuccessCallback& on_success,
                           const ErrorCallback& on_error);
  bool SendReplacePart(std::wstring_view file_path, const SuccessCallback& on_success,
                       const ErrorCallback& on_error);
  bool SendInspectAssembly(std::wstring_view file_path, const SuccessCallback& on_success,
                           const ErrorCallback& on_error);

  const std::wstring& LastError() const { return lastError_; }

 private:
  bool PostJson(const wchar_t* path, const std::wstring& json, const SuccessCallback& on_success,
                const ErrorCallback& on_error);
  // Throws std::runtime_error when there is no answer.
  HttpResponse Exchange(const wchar_t* path, const std::wstring& json) const;
  bool Fail(std::wstring error, const ErrorCallback& on_error);
  void Log(std::wstring_view message) const;

  std::wstring host_ = L"localhost";
  int port_ = 4000;
  int timeoutMs_ = 5000;
  std::wstring lastError_;
  bool loggingEnabled_ = true;
};

}  // namespace vek
