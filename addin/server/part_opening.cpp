#include "addin/server/part_opening.h"

#include <cstddef>
#include <exception>

#include "addin/platform/files.h"
#include "addin/text/format.h"
#include "addin/text/path_text.h"
#include "addin/text/wide_text.h"

namespace vek {
namespace {

void AnswerError(HttpServerResponse& response, int status_code, std::wstring_view error) {
  response.statusCode = status_code;
  response.body = Format(L"<html><body><h1>Error</h1><p>%s</p></body></html>", error);
}

// The text behind `key` in double quotes and a colon.
bool FindBehindKey(std::wstring_view text, std::wstring_view key, std::wstring_view& behind) {
  const std::wstring quoted = L"\"" + std::wstring(key) + L"\"";
  for (const wchar_t* colon : {L":", L" :"}) {
    const std::wstring mark = quoted + colon;
    if (const std::size_t at = text.find(mark); at != std::wstring_view::npos) {
      behind = text.substr(at + mark.size());
      return true;
    }
  }
  return false;
}

// A value in double quotes, without them; `text` begins behind the first.
std::wstring_view QuotedValue(std::wstring_view text) {
  std::size_t end = 0;
  while (end < text.size() && text[end] != L'"') end += text[end] == L'\\' && end + 1 < text.size() ? 2 : 1;
  return text.substr(0, end);
}

std::wstring ReadFlatFieldOfKey(std::wstring_view text, std::wstring_view key) {
  std::wstring_view behind;
  if (!FindBehindKey(text, key, behind)) return {};
  const std::size_t start = behind.find_first_not_of(L" \t\r\n");
  if (start == std::wstring_view::npos) return {};
  const std::wstring_view value = behind.substr(start);
  if (value.front() == L'"') return std::wstring(QuotedValue(value.substr(1)));
  return std::wstring(Trim(value.substr(0, value.find_first_of(L",}]\r\n"))));
}

void ReadCoordinates(std::wstring_view text, LocationInfo& location, const ServerLog& log) {
  try {
    const std::wstring x = ReadFlatField(text, L"x", L"X");
    const std::wstring y = ReadFlatField(text, L"y", L"Y");
    const std::wstring z = ReadFlatField(text, L"z", L"Z");
    if (x.empty() || y.empty() || z.empty()) return;
    location.x = ReadLeadingNumber(x);
    location.y = ReadLeadingNumber(y);
    location.z = ReadLeadingNumber(z);
  } catch (const std::exception& thrown) {
    log(Format(L"VekWebServer: Exception parsing Location: %S", thrown.what()));
  }
}

// A matrix is accepted and not read: models arrive unturned.
void ReadOrientation(std::wstring_view text, LocationInfo& location, const ServerLog& log) {
  try {
    location.orientation = LocationInfo{}.orientation;
    if (text.find(L'[') != std::wstring_view::npos && text.find(L']') != std::wstring_view::npos)
      log(L"VekWebServer: Using default identity matrix for orientation");
  } catch (const std::exception& thrown) {
    log(Format(L"VekWebServer: Exception parsing orientation matrix: %S", thrown.what()));
  }
}

LocationInfo ReadLocation(std::wstring_view text, const ServerLog& log) {
  LocationInfo location;
  try {
    if (const std::wstring loc = ReadFlatField(text, L"loc", L"Loc"); !loc.empty())
      ReadCoordinates(loc, location, log);
    if (const std::wstring rows = ReadFlatField(text, L"orientation", L"Orientation"); !rows.empty())
      ReadOrientation(rows, location, log);
  } catch (const std::exception& thrown) {
    log(Format(L"VekWebServer: Exception parsing LocationInfo: %S", thrown.what()));
    return {};
  }
  return location;
}

bool ReadReplaceExisting(std::wstring_view body, const ServerLog& log) {
  const std::wstring value = ReadFlatField(body, L"replaceExisting", L"ReplaceExisting");
  log(Format(L"VekWebServer: Extracted replaceExisting value: '%s' (length: %d)", value,
             static_cast<int>(value.size())));
  if (value.empty()) {
    log(L"VekWebServer: replaceExisting field not found or empty, using default: false");
    return false;
  }
  const std::wstring word = ToLower(Trim(value));
  const bool replace = word == L"true" || word == L"1";
  log(Format(L"VekWebServer: Parsed replaceExisting: '%s' -> %s", word, replace ? L"true" : L"false"));
  return replace;
}

// A path that no disk of this machine has may be the name of an object in the workspace.
void FallBackToWorkspace(FileDownloadInfo& info, const ServerLog& log) {
  const std::wstring path = info.downloadPath;
  const bool on_drive = path.size() > 1 && path[1] == L':';
  if (path.empty() || on_drive || path.starts_with(L"\\\\") || PathExists(path)) return;
  const std::wstring name(NameInPath(path));
  if (!IsPlainFileName(name)) return;
  log(
      Format(L"VekWebServer: Non-local downloadPath '%s' not found. Falling back to Windchill open by "
             L"fileName='%s'.",
             path, name));
  info.fileName = name;
  info.downloadPath.clear();
}

}  // namespace

std::wstring ReadFlatField(std::wstring_view text, std::wstring_view first_key,
                           std::wstring_view second_key) {
  std::wstring value = ReadFlatFieldOfKey(text, first_key);
  if (value.empty() && !second_key.empty() && second_key != first_key)
    value = ReadFlatFieldOfKey(text, second_key);
  return value;
}

bool ParseFileDownloadInfo(std::wstring_view body, FileDownloadInfo& info, const ServerLog& log) {
  try {
    info.downloadPath = ReadFlatField(body, L"downloadPath", L"DownloadPath");
    if (info.downloadPath.empty()) info.downloadPath = ReadFlatField(body, L"filePath");
    if (const std::wstring text = ReadFlatField(body, L"locationInfo", L"LocationInfo"); !text.empty())
      info.location = ReadLocation(text, log);
    info.placeLikeComponentTitle =
        ReadFlatField(body, L"placeLikeComponentTitle", L"PlaceLikeComponentTitle");
    if (!info.placeLikeComponentTitle.empty())
      log(L"VekWebServer: Found placeLikeComponentTitle: " + info.placeLikeComponentTitle);
    info.placeLikeFilePath = ReadFlatField(body, L"placeLikeFilePath", L"PlaceLikeFilePath");
    if (!info.placeLikeFilePath.empty())
      log(L"VekWebServer: Found placeLikeFilePath: " + info.placeLikeFilePath);
    info.replaceExisting = ReadReplaceExisting(body, log);
    return true;
  } catch (const std::exception& thrown) {
    log(Format(L"VekWebServer: Exception parsing FileDownloadInfo: %S", thrown.what()));
    return false;
  }
}

void HandlePartOpeningRequest(HttpServerResponse& response, const HttpServerRequest& request,
                              const FileProcessingCallback& callback, const ServerLog& log) {
  log(L"VekWebServer: Handling part opening request");
  if (request.body.empty()) return AnswerError(response, 400, L"Request body is empty");
  FileDownloadInfo info;
  if (!ParseFileDownloadInfo(request.body, info, log))
    return AnswerError(response, 400, L"Invalid JSON format in request body");

  FallBackToWorkspace(info, log);
  const bool in_workspace = info.downloadPath.empty() && IsPlainFileName(info.fileName);
  if (!in_workspace && info.downloadPath.empty())
    return AnswerError(response, 400, L"Download path is missing");
  if (!in_workspace && !PathExists(info.downloadPath))
    return AnswerError(response, 404, L"File not found: " + info.downloadPath);

  if (callback) {
    try {
      callback(info);
      log(L"VekWebServer: File processing callback executed successfully");
    } catch (const std::exception& thrown) {
      log(Format(L"VekWebServer: Exception in file processing callback: %S", thrown.what()));
      return AnswerError(response, 500, L"Internal server error during file processing");
    }
  } else {
    log(L"VekWebServer: No file processing callback set");
  }
  response.statusCode = 200;
  response.contentType = L"text/html";
  response.body = L"<html><body><h1>Data Received</h1></body></html>";
  log(L"VekWebServer: Part opening request processed successfully");
}

}  // namespace vek
