#include "addin/ops/exchange/screenshot.h"

#include <ProMdl.h>
#include <ProRaster.h>
#include <ProView.h>
#include <ProWindows.h>

#include <algorithm>
#include <optional>

#include "addin/host/text_buffer.h"
#include "addin/ops/common/model_access.h"
#include "addin/ops/drawing/orientation.h"
#include "addin/ops/exchange/export_text.h"
#include "addin/ops/exchange/inline_picture.h"
#include "addin/ops/exchange/screenshot_path.h"
#include "addin/ops/exchange/screenshot_text.h"
#include "addin/platform/files.h"
#include "addin/platform/images.h"
#include "addin/platform/temporary_file.h"
#include "addin/server/json_reader.h"
#include "addin/server/json_writer.h"
#include "addin/text/format.h"

namespace vek::exchange {
namespace {

constexpr double kDotsPerInch = 100;
constexpr int kTrueColor = 2;  // 24 bits a pixel
constexpr int kNoWindow = -1;

// What a client asks for.
struct Shot {
  std::wstring path;
  const RasterFormat* format = nullptr;
  std::wstring view;
  double width_px = 1920;
  double height_px = 1080;
  double max_dim_px = 1600;
};

// The view of a model's window as it was found, given back in the end once it was turned.
class KeptView {
 public:
  KeptView(ProMdl model, int window) : model_(model), window_(window) {
    known_ = ProViewMatrixGet(model_, nullptr, matrix_) == PRO_TK_NO_ERROR;
  }
  ~KeptView() {
    if (!turned_ || !known_) return;
    ProViewMatrixSet(model_, nullptr, matrix_);
    ProWindowRepaint(window_);
  }
  KeptView(const KeptView&) = delete;
  KeptView& operator=(const KeptView&) = delete;

  // Turns the window to the view that the text names and tells the view's canonical word.
  CreoMcpOperationResult Turn(const std::wstring& view, std::wstring& canonical) {
    const std::wstring word = ScreenshotView(view);
    ProMatrix matrix{};
    if (word.empty() || !drawing::OrientationMatrix(word, matrix, canonical))
      return MakeFailureResult(
          Format(L"Unsupported screenshot view '%s'. Expected front, top, right, iso, or home.", view));
    if (const ProError status = ProViewMatrixSet(model_, nullptr, matrix); status != PRO_TK_NO_ERROR)
      return MakeFailureResult(Format(L"Failed to set screenshot view orientation (status=%d).", status));
    turned_ = true;
    ProWindowRepaint(window_);
    return MakeSuccessResult();
  }

 private:
  ProMdl model_;
  int window_;
  ProMatrix matrix_{};
  bool known_ = false;
  bool turned_ = false;
};

// Resolves the path, makes its directory and refuses what is taken already.
CreoMcpOperationResult PrepareTarget(const std::wstring& arguments, Shot& shot) {
  const std::wstring output_path = JsonReadStringArgument(arguments, L"output_path");
  std::wstring error;
  if (!ResolveScreenshotPath(output_path, shot.path, error)) return MakeFailureResult(error);
  shot.format = FindRasterFormat(shot.path);
  if (shot.format == nullptr)
    return MakeFailureResult(L"output_path must end with .png, .bmp, .jpg, .jpeg, .tif, or .tiff.");
  const std::wstring directory = DirectoryOf(shot.path);
  if (!directory.empty() && !EnsureDirectory(directory))
    return MakeFailureResult(Format(L"Failed to create destination directory '%s'.", directory));
  if (FileExists(shot.path)) return MakeFailureResult(AlreadyExists(shot.path));
  return MakeSuccessResult();
}

void ReadSizes(const std::wstring& arguments, Shot& shot) {
  JsonReadNumber(arguments, L"width_px", shot.width_px);
  JsonReadNumber(arguments, L"height_px", shot.height_px);
  JsonReadNumber(arguments, L"max_dim_px", shot.max_dim_px);
}

CreoMcpOperationResult FindWindow(ProMdl& model, int& window) {
  model = nullptr;
  if (ProMdlCurrentGet(&model) != PRO_TK_NO_ERROR || model == nullptr)
    return MakeFailureResult(L"No active document.");
  ProMdlType type = PRO_MDL_UNUSED;
  if (ProMdlTypeGet(model, &type) == PRO_TK_NO_ERROR && type == kDrawingType)
    return MakeFailureResult(
        L"Screenshot export is currently supported for model windows only, not drawings.");
  if (ProWindowCurrentGet(&window) == PRO_TK_NO_ERROR && window != kNoWindow) return MakeSuccessResult();
  if (ProMdlWindowGet(model, &window) == PRO_TK_NO_ERROR && window != kNoWindow) return MakeSuccessResult();
  return MakeFailureResult(L"Failed to resolve the active Creo window.");
}

double Inches(double pixels) {
  return std::max(1.0, pixels) / kDotsPerInch;
}

CreoMcpOperationResult WriteRaster(int window, const Shot& shot, const std::wstring& target) {
  ProPath path;
  if (!CopyWhole(path, target)) return MakeFailureResult(L"output_path is too long.");
  const ProError status =
      ProRasterFileWrite(window, static_cast<ProRasterDepth>(kTrueColor), Inches(shot.width_px),
                         Inches(shot.height_px), static_cast<ProRasterDPI>(static_cast<int>(kDotsPerInch)),
                         static_cast<ProRasterType>(shot.format->raster_type), path);
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"Failed to export screenshot (status=%d).", status));
  return MakeSuccessResult();
}

// Writes the window as it is turned; `bitmap` is where a picture goes that has to be converted afterwards.
CreoMcpOperationResult Capture(ProMdl model, int window, const std::wstring& arguments, Shot& shot,
                               std::optional<TemporaryFile>& bitmap) {
  KeptView kept(model, window);
  std::wstring canonical;
  if (auto turned = kept.Turn(JsonReadStringArgument(arguments, L"view"), canonical); !turned.success)
    return turned;
  shot.view = canonical;
  ReadSizes(arguments, shot);
  if (shot.format->direct) return WriteRaster(window, shot, shot.path);
  std::wstring path;
  if (!NewTemporaryPath(path)) return MakeFailureResult(L"Failed to allocate temporary BMP path.");
  bitmap.emplace(path + L".bmp");
  return WriteRaster(window, shot, bitmap->path());
}

// Nothing stands at the path before; what a failure leaves there is no picture.
bool ConvertToPng(const std::wstring& bitmap, const std::wstring& path) {
  const auto picture = Image::Load(bitmap);
  if (!picture) return false;
  if (picture->Save(path, kPngType)) return true;
  DeleteFileAt(path);
  return false;
}

std::wstring ResultData(const Shot& shot) {
  std::wstring base64, media_type;
  BuildInlineImage(shot.path, std::max(CutToInteger(shot.max_dim_px), 1), base64, media_type);
  std::wstring data =
      Format(LR"({"output_path":"%s","view":"%s")", JsonEscape(shot.path), JsonEscape(shot.view));
  if (!base64.empty() && !media_type.empty())
    data += Format(LR"(,"screenshot_base64":"%s","screenshot_media_type":"%s")", JsonEscape(base64),
                   JsonEscape(media_type));
  return data + L"}";
}

CreoMcpOperationResult ExportScreenshot(const std::wstring& arguments) {
  Shot shot;
  if (auto prepared = PrepareTarget(arguments, shot); !prepared.success) return prepared;
  ProMdl model = nullptr;
  int window = kNoWindow;
  if (auto found = FindWindow(model, window); !found.success) return found;
  {
    std::optional<TemporaryFile> bitmap;
    if (auto captured = Capture(model, window, arguments, shot, bitmap); !captured.success) return captured;
    if (bitmap && !ConvertToPng(bitmap->path(), shot.path))
      return MakeFailureResult(L"Screenshot was captured, but PNG conversion failed.");
  }
  return MakeSuccessResult(Format(L"Screenshot captured (%dx%d, view=%s).", CutToInteger(shot.width_px),
                                  CutToInteger(shot.height_px), shot.view),
                           ResultData(shot));
}

}  // namespace

void RegisterScreenshotOperations(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_export_screenshot", ExportScreenshot);
}

}  // namespace vek::exchange
