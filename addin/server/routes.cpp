#include "addin/server/routes.h"

#include "addin/server/json_reader.h"
#include "addin/server/json_writer.h"
#include "addin/text/wide_text.h"

namespace vek {
namespace {

void AnswerJson(HttpServerResponse& response, int status_code, std::wstring body) {
  response.statusCode = status_code;
  response.contentType = L"application/json; charset=utf-8";
  response.body = std::move(body);
}

void AnswerError(HttpServerResponse& response, int status_code, std::wstring_view error) {
  AnswerJson(response, status_code, EncodeError(error));
}

void HandleHealthRequest(HttpServerResponse& response, const CreoMcpMainThread& main_thread, int port) {
  const CreoMcpProvider* const provider = main_thread.Provider();
  if (!provider) return AnswerError(response, 503, CreoMcpMainThread::kNotInitialised);
  AnswerJson(response, 200, EncodeHealth(provider->ListOperations(), port));
}

void HandleExecuteRequest(HttpServerResponse& response, const std::wstring& body,
                          CreoMcpMainThread& main_thread) {
  if (!main_thread.Provider()) return AnswerError(response, 503, CreoMcpMainThread::kNotInitialised);
  if (body.empty()) return AnswerError(response, 400, L"Request body is empty.");

  const std::wstring_view object = JsonFindAnywhere(body, L"operations");
  if (object.empty()) return AnswerError(response, 400, L"Request must include an 'operations' object.");
  OperationList operations;
  std::wstring error;
  if (!ParseOperationsObject(object, operations, error)) {
    if (error.empty()) error = L"Request must include at least one entry in 'operations'.";
    return AnswerError(response, 400, error);
  }

  BatchResults results;
  if (main_thread.Submit(operations, results, error))
    return AnswerJson(response, 200, EncodeBatchResults(results));
  const bool timed_out = error.find(L"Timed out") != std::wstring::npos;
  AnswerError(response, timed_out ? 504 : 500, error);
}

}  // namespace

void RouteRequest(HttpServerResponse& response, const HttpServerRequest& request,
                  const Endpoints& endpoints) {
  const std::wstring path = NormalisePath(request.path);
  const bool is_post = EqualsIgnoreCase(request.method, L"POST");
  const bool is_get = EqualsIgnoreCase(request.method, L"GET");

  // Browsers ask before they post, for whatever path.
  if (EqualsIgnoreCase(request.method, L"OPTIONS")) {
    response.statusCode = 204;
    response.body.clear();
    response.contentType = L"text/plain";
    return;
  }
  if (is_post && EqualsIgnoreCase(path, L"/")) return endpoints.open_part(response, request);
  if (is_post && EqualsIgnoreCase(path, L"/execute"))
    return HandleExecuteRequest(response, request.body, endpoints.main_thread);
  // Clients that can only post probe with POST.
  if ((is_post || is_get) && EqualsIgnoreCase(path, L"/health"))
    return HandleHealthRequest(response, endpoints.main_thread, endpoints.port);
  AnswerError(response, 404, L"Endpoint not found: " + request.method + L" " + path);
}

}  // namespace vek
