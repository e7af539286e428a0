// Requests of the companion application to open a model, to put it in the place of a part, or to inspect with
// it: `POST /` with a small JSON object.
//
// The answer says no more than that the request was taken: what becomes of it in the host is for the
// callback, and for later. All of it runs on the server thread.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "addin/server/http_message.h"

namespace vek {

struct LocationInfo {
  double x = 0, y = 0, z = 0;
  std::vector<std::vector<double>> orientation = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
};

struct FileDownloadInfo {
  std::wstring downloadPath;
  LocationInfo location;
  std::wstring placeLikeComponentTitle;
  std::wstring placeLikeFilePath;
  bool replaceExisting = false;
  std::wstring fileName;
  // Carried and logged; nothing on the wire fills them.
  std::wstring version;
  std::wstring epmDocumentId;
};

using FileProcessingCallback = std::function<void(const FileDownloadInfo&)>;
using ServerLog = std::function<void(std::wstring_view)>;

// The value behind the first place where `first_key` stands in double quotes before a colon, whatever it is
// nested in; behind `second_key`, when that value is empty. A value in quotes keeps its escapes; any other
// ends at the first comma, closing bracket or line end, so that an object is cut at its first field. Empty
// when there is none.
std::wstring ReadFlatField(std::wstring_view text, std::wstring_view first_key,
                           std::wstring_view second_key = {});

// Reads what is there; what isn't keeps its default. False only when an exception was raised, which is
// logged.
bool ParseFileDownloadInfo(std::wstring_view body, FileDownloadInfo& info, const ServerLog& log);

// Answers `POST /`: reads the request, looks whether its file is there, and hands it to `callback`, which may
// be empty. A name that is no path and no file here goes on as that of an object in the workspace.
void HandlePartOpeningRequest(HttpServerResponse& response, const HttpServerRequest& request,
                              const FileProcessingCallback& callback, const ServerLog& log);

}  // namespace vek
