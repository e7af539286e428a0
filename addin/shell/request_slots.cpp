#include "addin/shell/request_slots.h"

#include <exception>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "addin/companion/replacement.h"
#include "addin/platform/files.h"
#include "addin/platform/log.h"
#include "addin/shell/model_opening.h"
#include "addin/text/format.h"
#include "addin/text/path_text.h"
#include "addin/text/wide_text.h"

namespace vek {
namespace {

class RequestSlot {
 public:
  void Put(FileDownloadInfo info) {
    const std::lock_guard lock(mutex_);
    waiting_ = std::move(info);
  }

  std::optional<FileDownloadInfo> Take() {
    const std::lock_guard lock(mutex_);
    return std::exchange(waiting_, std::nullopt);
  }

 private:
  std::mutex mutex_;
  std::optional<FileDownloadInfo> waiting_;
};

RequestSlot openSlot, partReplacementSlot, assemblyInspectionSlot, windchillSlot;

void QueueComponentRequest(const FileDownloadInfo& info) {
  LogShell(Format(L"Found placeLikeComponentTitle: %s", info.placeLikeComponentTitle));
  const std::wstring path = ToUpper(info.downloadPath);
  if (path.find(L".PRT") != std::wstring::npos) {
    LogShell(L"=== Detected PART REPLACEMENT request ===");
    partReplacementSlot.Put(info);
    LogShell(L"SUCCESS: Part replacement request queued");
  } else if (path.find(L".ASM") != std::wstring::npos) {
    LogShell(L"=== Detected ASSEMBLY INSPECTION request ===");
    assemblyInspectionSlot.Put(info);
    LogShell(L"SUCCESS: Assembly inspection request queued");
  } else {
    LogShell(
        Format(L"ERROR: Unknown request type for placeLikeComponentTitle: %s", info.placeLikeComponentTitle));
  }
}

void QueueOpening(const FileDownloadInfo& info) {
  LogShell(L"=== Standard file opening request ===");
  if (info.downloadPath.empty()) return LogShell(L"ERROR: Empty file path received");
  if (!PathExists(info.downloadPath))
    return LogShell(Format(L"ERROR: File does not exist: %s", info.downloadPath));
  FileDownloadInfo opening;
  opening.downloadPath = info.downloadPath;
  opening.location = info.location;
  openSlot.Put(std::move(opening));
  LogShell(L"SUCCESS: File opening request queued");
}

void Queue(const FileDownloadInfo& info) {
  LogShell(L"=== OnFileProcessingRequest: Processing file request ===");
  if (info.downloadPath.empty() && IsPlainFileName(info.fileName)) {
    LogShell(L"=== Detected WINDCHILL open request ===");
    windchillSlot.Put(info);
    LogShell(L"SUCCESS: Windchill open request queued");
    return;
  }
  if (!info.placeLikeComponentTitle.empty()) return QueueComponentRequest(info);
  QueueOpening(info);
}

}  // namespace

void OnFileProcessingRequest(const FileDownloadInfo& info) {
  try {
    Queue(info);
  } catch (const std::exception& thrown) {
    LogShell(Format(L"ERROR: Exception in OnFileProcessingRequest: %S", thrown.what()));
  } catch (...) {
    // The server has nobody to tell.
  }
}

void ServeOneRequest() {
  if (const auto request = openSlot.Take()) {
    OpenFileInCreo(*request);
  } else if (const auto replacement = partReplacementSlot.Take()) {
    HandlePartReplacement(*replacement);
  } else if (const auto inspection = assemblyInspectionSlot.Take()) {
    HandleAssemblyInspection(*inspection);
  } else if (const auto opening = windchillSlot.Take()) {
    OpenWindchillModelInCreo(*opening);
  }
}

}  // namespace vek
