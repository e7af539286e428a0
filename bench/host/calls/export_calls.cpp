// Writing models in neutral formats. The kernel makes the bytes; the host alone touches the disk.
#include <ProIntf.h>

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "bench/host/calls/path_in.h"
#include "bench/host/features/scene.h"
#include "bench/host/host.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/kernel_link/base64.h"
#include "bench/host/model/item_lookup.h"
#include "bench/host/storage/whole_file.h"
#include "bench/host/text.h"

namespace bench {
namespace {

constexpr int kStep = 1;
constexpr int kIges = 4;
constexpr int kAcis = 7;
constexpr int kBinaryStl = 12;

struct Format {
  const char* word;
  const wchar_t* extension;
};
constexpr Format kStepFormat{"step", L".stp"};
constexpr Format kIgesFormat{"iges", L".igs"};
constexpr Format kStlFormat{"stl", L".stl"};

struct Written {
  ProError status = PRO_TK_NO_ERROR;
  std::string bytes;
};

Written AskForBytes(const Model& model, const Format& format) {
  const std::string fields = std::string(R"("format":")") + format.word + "\"," + SceneFields(model);
  const auto answer = TheHost().kernel.Ask("export", fields);
  if (!answer) return {PRO_TK_COMM_ERROR, {}};
  if (const auto bytes = answer->find("bytes"); bytes != answer->end() && bytes->is_string())
    if (auto decoded = DecodeBase64(bytes->get<std::string>())) return {PRO_TK_NO_ERROR, std::move(*decoded)};
  TheHost().announcements.Say("refused: no export of " + ToUtf8(model.name) + ": " +
                              answer->value("refused", "no bytes"));
  return {PRO_TK_GENERAL_ERROR, {}};
}

ProError Export(const Model& model, const Format& format, const std::wstring& path) {
  if (const ProError status = CheckTarget(path)) return status;
  const Written written = AskForBytes(model, format);
  if (written.status != PRO_TK_NO_ERROR) return written.status;
  return WriteWholeFile(path, written.bytes) ? PRO_TK_NO_ERROR : PRO_TK_CANT_WRITE;
}

bool IsIdentity(const ProMatrix& matrix) {
  for (int row = 0; row < 4; ++row)
    for (int column = 0; column < 4; ++column)
      if (matrix[row][column] != (row == column ? 1 : 0)) return false;
  return true;
}

}  // namespace
}  // namespace bench

using namespace bench;

ProError ProIntf3DFileWriteWithDefaultProfile(ProSolid solid, ProIntf3DFileType type, wchar_t* path) {
  HOST_CALL(solid, type, path) {
    const Model* model = LiveSolid(solid);
    const auto target = ReadPath(path);
    if (!model || !target) return PRO_TK_BAD_INPUTS;
    switch (static_cast<int>(type)) {
      case kStep:
        return Export(*model, kStepFormat, *target + kStepFormat.extension);
      case kIges:
        return Export(*model, kIgesFormat, *target + kIgesFormat.extension);
      case kAcis:
        return PRO_TK_NOT_IMPLEMENTED;
      default:
        return PRO_TK_BAD_INPUTS;
    }
  };
}

ProError ProIntfSliceFileExport(ProSolid solid, wchar_t* path, ProIntfSliceFileType type, double quality[2],
                                ProMatrix transform, int flags) {
  HOST_CALL(solid, path, type, flags) {
    const Model* model = LiveSolid(solid);
    const auto target = ReadPath(path);
    if (!model || !target || !quality || !transform) return PRO_TK_BAD_INPUTS;
    if (static_cast<int>(type) != kBinaryStl) return PRO_TK_BAD_INPUTS;
    // Facets in another place than the model's own are offered by nobody here.
    if (!IsIdentity(*reinterpret_cast<ProMatrix*>(transform))) return PRO_TK_NOT_IMPLEMENTED;
    const bool has_extension = Lower(*target).ends_with(kStlFormat.extension);
    return Export(*model, kStlFormat, has_extension ? *target : *target + kStlFormat.extension);
  };
}
