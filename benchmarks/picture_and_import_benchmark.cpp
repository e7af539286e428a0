// A screenshot of a model, as large as one is when nothing else is asked for, and the decoding of a file as
// large as one that fits into a request.
#include <windows.h>

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>

#include "addin/platform/base64_encoding.h"
#include "addin/server/json_writer.h"
#include "addin/text/base64.h"
#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "benchmarks/host_in_process.h"

namespace {

using benchmarks::HostInProcess;
using vek::Format;

constexpr double kShotBudgetMs = 2000;
constexpr double kDecodeBudgetMs = 20;
constexpr std::size_t kImportBytes = 180'000;
constexpr int kShots = 7;
constexpr int kDecodings = 50;

// A pipe of 20 and 10 with three rounded posts around it: faces of several kinds, curved edges.
bool BuildModel(HostInProcess& host) {
  bool ok =
      host.Run(L"api_document_new_part") && host.Run(L"api_sketch_create", LR"({"name":"S","plane":"XY"})");
  for (const int radius : {20, 10})
    ok = ok && host.Run(L"api_sketch_circle_center_radius",
                        Format(LR"({"sketch_name":"S","cx":0,"cy":0,"radius":%d})", radius));
  for (const int x : {-40, 40, 60})
    ok = ok && host.Run(L"api_sketch_circle_center_radius",
                        Format(LR"({"sketch_name":"S","cx":%d,"cy":0,"radius":8})", x));
  return ok && host.Run(L"api_feature_extrude", LR"({"sketch_name":"S","distance_mm":50})") &&
         host.Run(L"api_edge_fillet", LR"({"radius_mm":2,"edge_selectors":[">Z"]})");
}

// 1920 by 1080 as PNG, with the picture in the result; nothing when it fails.
std::optional<double> ShotMs(HostInProcess& host) {
  const auto path =
      std::filesystem::temp_directory_path() / Format(L"vek_benchmark_%lu.png", ::GetCurrentProcessId());
  const auto milliseconds = host.Milliseconds(
      L"api_export_screenshot", Format(LR"({"output_path":"%s"})", vek::JsonEscape(path.wstring())));
  std::error_code ignored;
  std::filesystem::remove(path, ignored);
  return milliseconds;
}

// From the request's text to the file's bytes; nothing when they aren't the same.
std::optional<double> DecodeMs(const std::string& bytes, const std::wstring& text) {
  std::string decoded;
  bool whole = false;
  const double milliseconds = benchmarks::Milliseconds([&] {
    const std::string narrow = vek::EncodeUtf8(text);
    decoded.resize(narrow.size());
    std::size_t size = decoded.size();
    whole = vek::DecodeBase64(narrow, reinterpret_cast<unsigned char*>(decoded.data()), size);
    decoded.resize(size);
  });
  return whole && decoded == bytes ? std::optional(milliseconds) : std::nullopt;
}

}  // namespace

int main() {
  HostInProcess host;
  if (!BuildModel(host)) return 1;
  std::string bytes(kImportBytes, '\0');
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 31 + i / 251);
  const auto base64 = vek::EncodeBase64(bytes);
  if (!base64) return 1;
  const std::wstring text(base64->begin(), base64->end());

  const auto shots = benchmarks::Repeat(kShots, [&] { return ShotMs(host); });
  const auto decodings = benchmarks::Repeat(kDecodings, [&] { return DecodeMs(bytes, text); });
  if (!shots || !decodings) return 1;
  benchmarks::PrintRow("a screenshot of 1920 by 1080 as PNG", "ms", *shots, kShotBudgetMs);
  benchmarks::PrintRow("decoding an import of 180,000 bytes", "ms", *decodings, kDecodeBudgetMs);
  return 0;
}
