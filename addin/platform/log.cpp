#include "addin/platform/log.h"

#include "addin/platform/text_encoding.h"
#include "addin/text/utf8.h"

namespace vek {
namespace {

constexpr const wchar_t* kLogPath = L"D:\\VekCreoAddin.log";

// Made on first use: process-wide objects log from their constructors and destructors.
const LogFile& TheLogFile() {
  static const LogFile file(kLogPath);
  return file;
}

}  // namespace

void WriteLog(const char* message) {
  if (message) TheLogFile().Write(message);
}

void LogOperation(std::wstring_view message) {
  WriteLog(EncodeUtf8(message).c_str());
}

void LogShell(std::wstring_view message) {
  WriteLog(EncodeAnsi(message).c_str());
}

}  // namespace vek
