#include "addin/ops/exchange/screenshot_path.h"

#include "addin/ops/common/model_paths.h"
#include "addin/ops/exchange/screenshot_text.h"
#include "addin/platform/files.h"
#include "addin/platform/temporary_file.h"

namespace vek::exchange {
namespace {

// The backslashes are doubled in the text that clients get.
constexpr const wchar_t* kClimbsOut =
    LR"(Relative screenshot output_path must stay under %TEMP%\\VekAI\\Screenshots (path traversal with '..' is not allowed).)";

}  // namespace

bool ResolveScreenshotPath(const std::wstring& output_path, std::wstring& resolved, std::wstring& error) {
  if (output_path.empty()) {
    error = L"'output_path' argument is required.";
    return false;
  }
  if (IsAbsolutePath(output_path)) {
    if (FullPath(output_path, resolved)) return true;
    error = L"Failed to resolve absolute screenshot output_path.";
    return false;
  }

  std::wstring temporary;
  if (!TemporaryDirectory(temporary)) {
    error = L"Failed to resolve TEMP directory for screenshot output.";
    return false;
  }
  const std::wstring base = JoinPath(JoinPath(temporary, L"VekAI"), L"Screenshots");
  std::wstring folder;
  // Both by the same rules, or a short name in one of them would tell them apart.
  if (!FullPath(JoinPath(base, output_path), resolved) || !FullPath(base, folder)) {
    error = L"Failed to resolve screenshot output_path.";
    return false;
  }
  if (LiesInFolder(folder, resolved)) return true;
  error = kClimbsOut;
  return false;
}

}  // namespace vek::exchange
