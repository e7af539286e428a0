// How windows show their models: orientations and pictures.
#include <ProRaster.h>
#include <ProView.h>
#include <ProWindows.h>

#include <cmath>
#include <nlohmann/json.hpp>
#include <string>

#include "bench/host/calls/path_in.h"
#include "bench/host/features/scene.h"
#include "bench/host/host.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/instruments/handles.h"
#include "bench/host/kernel_link/base64.h"
#include "bench/host/storage/model_file.h"
#include "bench/host/storage/whole_file.h"
#include "bench/host/text.h"

namespace bench {
namespace {

using nlohmann::json;

constexpr int kCurrentWindow = -1;
constexpr int kLongestSide = 10'000;  // pixels
// Callers work their matrices out with square roots; this is far above what those lose.
constexpr double kRotationTolerance = 1e-6;

Vector3 Row(const Matrix& matrix, int row) {
  return {matrix[row][0], matrix[row][1], matrix[row][2]};
}

// The rotation in a view's matrix without its scale. Nothing for one that stretches, shears, mirrors or isn't
// finite.
std::optional<std::array<Vector3, 3>> RotationOf(const Matrix& view) {
  for (const auto& row : view)
    for (const double number : row)
      if (!std::isfinite(number)) return std::nullopt;
  const double scale = Length(Row(view, 0));
  if (!(scale > 0) || view[0][3] != 0 || view[1][3] != 0 || view[2][3] != 0 || !(view[3][3] > 0))
    return std::nullopt;
  const Vector3 x = 1 / scale * Row(view, 0), y = 1 / scale * Row(view, 1), z = 1 / scale * Row(view, 2);
  const double faults[] = {Length(y) - 1, Dot(x, y), Length(Cross(x, y) - z)};
  for (const double fault : faults)
    if (!(std::abs(fault) <= kRotationTolerance)) return std::nullopt;
  return std::array<Vector3, 3>{x, y, z};
}

// The model whose own window a caller's view means. Views of drawings are none of them.
ProError ResolveShown(ProMdl handle, ProView view, Model*& model) {
  if (view) return PRO_TK_BAD_INPUTS;
  if (const ProError status = Resolve(handle, model)) return status;
  return model->type == PRO_MDL_DRAWING ? PRO_TK_INVALID_TYPE : PRO_TK_NO_ERROR;
}

ProError ResolveShown(int window, const Model*& model) {
  const WindowList& windows = TheHost().windows;
  const int shown = window == kCurrentWindow ? windows.Current() : window;
  if (!windows.Exists(shown)) return PRO_TK_BAD_INPUTS;
  model = windows.ModelOf(shown);
  if (!model) return PRO_TK_BAD_CONTEXT;
  return model->type == PRO_MDL_DRAWING ? PRO_TK_INVALID_TYPE : PRO_TK_NO_ERROR;
}

// The kernel's word; null for a type that isn't offered.
const char* FormatOf(ProRasterType type) {
  switch (type) {
    case PRORASTERTYPE_BMP:
      return "bmp";
    case PRORASTERTYPE_TIFF:
      return "tiff";
    case PRORASTERTYPE_JPEG:
      return "jpeg";
  }
  return nullptr;
}

bool IsResolution(int dots) {
  return dots == 100 || dots == 200 || dots == 300 || dots == 400;
}

// Nothing for a side that has no pixel, or more than any window.
std::optional<int> Pixels(double inches, int dots_per_inch) {
  const double pixels = std::round(inches * dots_per_inch);
  if (!(pixels >= 1 && pixels <= kLongestSide)) return std::nullopt;
  return static_cast<int>(pixels);
}

struct Picture {
  int width, height;  // pixels
  int dots_per_inch;
  const char* format;
};

// The members of an object as they stand between its braces.
std::string Members(const json& object) {
  const std::string text = object.dump();
  return text.substr(1, text.size() - 2);
}

ProError Draw(const Model& model, const Picture& picture, std::string& bytes) {
  const json picture_fields = {{"view", *RotationOf(model.view)},
                               {"width", picture.width},
                               {"height", picture.height},
                               {"dots_per_inch", picture.dots_per_inch},
                               {"format", picture.format}};
  const std::string fields = SceneFields(model) + ',' + Members(picture_fields);
  const auto answer = TheHost().kernel.Ask("render", fields);
  if (!answer) return PRO_TK_COMM_ERROR;
  if (const auto found = answer->find("bytes"); found != answer->end() && found->is_string())
    if (auto decoded = DecodeBase64(found->get_ref<const std::string&>())) {
      bytes = std::move(*decoded);
      return PRO_TK_NO_ERROR;
    }
  TheHost().announcements.Say("refused: no picture of " + ToUtf8(model.name) + ": " +
                              answer->value("refused", "no bytes"));
  return PRO_TK_GENERAL_ERROR;
}

}  // namespace
}  // namespace bench

using namespace bench;

ProError ProViewMatrixGet(ProMdl model, ProView view, ProMatrix matrix) {
  HOST_CALL(model, view) {
    Model* shown = nullptr;
    if (!matrix) return PRO_TK_BAD_INPUTS;
    if (const ProError status = ResolveShown(model, view, shown)) return status;
    WriteMatrix(shown->view, matrix);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProViewMatrixSet(ProMdl model, ProView view, ProMatrix matrix) {
  HOST_CALL(model, view) {
    Model* shown = nullptr;
    if (!matrix) return PRO_TK_BAD_INPUTS;
    if (const ProError status = ResolveShown(model, view, shown)) return status;
    const Matrix wanted = MatrixOf(matrix);
    if (!RotationOf(wanted)) return PRO_TK_BAD_INPUTS;
    shown->view = wanted;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProRasterFileWrite(int window, ProRasterDepth depth, double width, double height,
                            ProRasterDPI resolution, ProRasterType type, ProPath path) {
  HOST_CALL(window, depth, width, height, resolution, type, path) {
    const Model* model = nullptr;
    const auto target = ReadPath(path);
    const auto columns = Pixels(width, resolution), rows = Pixels(height, resolution);
    const char* format = FormatOf(type);
    if (!target || !columns || !rows || !format || depth != PRORASTERDEPTH_24 || !IsResolution(resolution))
      return PRO_TK_BAD_INPUTS;
    if (const ProError status = ResolveShown(window, model)) return status;
    if (const ProError status = CheckTarget(*target)) return status;
    std::string bytes;
    if (const ProError status = Draw(*model, {*columns, *rows, static_cast<int>(resolution), format}, bytes))
      return status;
    return WriteWholeFile(*target, bytes) ? PRO_TK_NO_ERROR : PRO_TK_CANT_WRITE;
  };
}
