#include "addin/companion/web_client.h"

#include <stdexcept>

#include "addin/companion/companion_messages.h"
#include "addin/platform/http_client.h"
#include "addin/platform/log.h"
#include "addin/platform/text_encoding.h"
#include "addin/text/format.h"
#include "addin/text/utf8.h"

namespace vek {
namespace {

// A message holds what the code page of the thread can hold.
std::wstring InCodePage(const std::wstring& message) {
  return DecodeAnsi(EncodeAnsi(message));
}

std::wstring WhatFailed(HttpPhase phase, const HttpPost& post, const std::wstring& last_error) {
  switch (phase) {
    case HttpPhase::kSession:
      return Format(L"Failed to initialize WinHTTP session. Error: %s", last_error);
    case HttpPhase::kConnection:
      return Format(L"Failed to connect to %s:%d. Error: %s", post.host, post.port, last_error);
    case HttpPhase::kRequest:
      return Format(L"Failed to create HTTP request. Error: %s", last_error);
    case HttpPhase::kHeaders:
      return Format(L"Failed to add request headers. Error: %s", last_error);
    case HttpPhase::kSending:
      return Format(L"Failed to send HTTP request. Error: %s", last_error);
    case HttpPhase::kReceiving:
    case HttpPhase::kAnswered:
      break;
  }
  return Format(L"Failed to receive HTTP response. Error: %s", last_error);
}

}  // namespace

bool VekWebClient::SendFaceMeasurement(const FaceMeasurement& measurement, const SuccessCallback& on_success,
                                       const ErrorCallback& on_error) {
  const std::wstring json = InCodePage(FaceMeasurementMessage(measurement));
  Log(L"Sending face measurement data: " + json);
  return PostJson(L"/receive-data", json, on_success, on_error);
}

bool VekWebClient::SendReplacePart(std::wstring_view file_path, const SuccessCallback& on_success,
                                   const ErrorCallback& on_error) {
  const std::wstring json = InCodePage(FilePathMessage(file_path));
  Log(L"Sending replace part data: " + json);
  return PostJson(L"/partReplacement", json, on_success, on_error);
}

bool VekWebClient::SendInspectAssembly(std::wstring_view file_path, const SuccessCallback& on_success,
                                       const ErrorCallback& on_error) {
  const std::wstring json = InCodePage(FilePathMessage(file_path));
  Log(L"Sending inspect assembly data: " + json);
  return PostJson(L"/assemblyInspection", json, on_success, on_error);
}

bool VekWebClient::PostJson(const wchar_t* path, const std::wstring& json, const SuccessCallback& on_success,
                            const ErrorCallback& on_error) {
  HttpResponse response;
  try {
    response = Exchange(path, json);
  } catch (const std::exception& thrown) {
    return Fail(L"HTTP request exception: " + DecodeUtf8(thrown.what()), on_error);
  }
  if (response.success) {
    Log(Format(L"HTTP request successful. Status: %d, Endpoint: %s", response.statusCode, path));
    if (on_success) on_success(response);
    return true;
  }
  std::wstring error = Format(L"HTTP request failed. Status: %d, Endpoint: %s", response.statusCode, path);
  if (!response.body.empty()) error += L", Response: " + response.body;
  return Fail(std::move(error), on_error);
}

HttpResponse VekWebClient::Exchange(const wchar_t* path, const std::wstring& json) const {
  const HttpPost post{.agent = L"VekCreoAddin/1.0",
                      .host = host_,
                      .port = port_,
                      .timeout_ms = timeoutMs_,
                      .path = path,
                      .header = L"Content-Type: application/json",
                      .body = EncodeUtf8(json)};
  HttpAnswer answer = Post(post);
  if (answer.phase != HttpPhase::kAnswered)
    throw std::runtime_error(EncodeUtf8(WhatFailed(answer.phase, post, lastError_)));
  HttpResponse response;
  response.statusCode = answer.status_code;
  response.body = std::move(answer.body);
  response.success = answer.status_code >= 200 && answer.status_code <= 299;
  return response;
}

bool VekWebClient::Fail(std::wstring error, const ErrorCallback& on_error) {
  lastError_ = std::move(error);
  Log(lastError_);
  if (on_error) on_error(lastError_);
  return false;
}

void VekWebClient::Log(std::wstring_view message) const {
  if (loggingEnabled_) LogShell(L"VekWebClient: " + std::wstring(message));
}

}  // namespace vek
