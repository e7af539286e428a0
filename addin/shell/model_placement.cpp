#include "addin/shell/model_placement.h"

#include <ProAsmcomp.h>
#include <ProTreetool.h>
#include <ProWindows.h>

#include <algorithm>
#include <vector>

#include "addin/host/text_buffer.h"
#include "addin/platform/log.h"
#include "addin/shell/second_session.h"
#include "addin/text/format.h"

namespace vek {
namespace {

constexpr int kAssembly = 1;
constexpr int kPart = 2;
constexpr int kCurrentWindow = -1;

bool IsRotation(const std::vector<std::vector<double>>& rows) {
  return rows.size() >= 3 &&
         std::ranges::all_of(rows.begin(), rows.begin() + 3, [](const auto& row) { return row.size() >= 3; });
}

// The location's numbers stand in the fourth column as they came.
void MakeTransform(const LocationInfo& location, ProMatrix transform) {
  auto rows = LocationInfo{}.orientation;
  if (IsRotation(location.orientation)) {
    LogShell(L"SUCCESS: Using provided orientation matrix from JSON");
    rows = location.orientation;
  } else {
    LogShell(L"WARNING: Invalid orientation data, using identity matrix");
  }
  const double translation[] = {location.x, location.y, location.z};
  for (std::size_t i = 0; i < 3; ++i) {
    std::ranges::copy_n(rows[i].begin(), 3, transform[i]);
    transform[i][3] = translation[i];
    transform[3][i] = 0;
  }
  transform[3][3] = 1;
  const auto row = [&](int i) {
    return Format(L"%.3f,%.3f,%.3f", transform[i][0], transform[i][1], transform[i][2]);
  };
  LogShell(Format(
      L"SUCCESS: Transformation matrix created - Location: [%.3f, %.3f, %.3f], Orientation: [%s; %s; %s]",
      location.x, location.y, location.z, row(0), row(1), row(2)));
}

void ShowComponent(ProMdl assembly) {
  ProWindowRepaint(kCurrentWindow);
  int window = 0;
  if (ProWindowCurrentGet(&window) == PRO_TK_NO_ERROR) {
    ProWindowRepaint(window);
    ProWindowActivate(window);
  }
  ProTreetoolRefresh(assembly);
  ProMdlDisplay(assembly);
  ProWindowRepaint(kCurrentWindow);
}

int AddToAssembly(ProMdl assembly, ProMdl model, const LocationInfo& location) {
  LogShell(L"SUCCESS: Current assembly found - Adding component to assembly");
  ProMatrix transform{};
  MakeTransform(location, transform);
  ProAsmcomp component{};
  if (const ProError status = ProAsmcompAssemble(static_cast<ProSolid>(assembly),
                                                 static_cast<ProSolid>(model), transform, &component);
      status != PRO_TK_NO_ERROR) {
    LogShell(L"ERROR: ProAsmcompAssemble failed - Could not add component to assembly");
    return status;
  }
  LogShell(L"SUCCESS: ProAsmcompAssemble - Component added to assembly");
  if (ProAsmcompRegenerate(&component, PRO_B_FALSE) == PRO_TK_NO_ERROR)
    LogShell(L"SUCCESS: ProAsmcompRegenerate - Component regenerated");
  else
    LogShell(L"WARNING: ProAsmcompRegenerate failed, but component is added");
  ShowComponent(assembly);
  LogShell(L"SUCCESS: Component added with enhanced refresh - Should be immediately visible");
  return 0;
}

int ShowInWindow(const std::wstring& modelName, int modelType) {
  const int window_type = modelType == kAssembly ? kAssembly : kPart;
  ProMdlName name;
  CopyCut(name, modelName);
  int window = 0;
  const ProError status = ProObjectwindowMdlnameCreate(name, static_cast<ProType>(window_type), &window);
  LogShell(status == PRO_TK_NO_ERROR
               ? L"SUCCESS: ProObjectwindowMdlnameCreate - Model displayed in separate window"
               : L"ERROR: Failed to display model in separate window");
  return status;
}

int ShowInSecondSession(const std::wstring& sourcePath) {
  LogShell(L"INFO: Current model is a part - Creating new session for imported part");
  const int status = OpenFileInCreoNewWindow(sourcePath);
  LogShell(status == 0 ? L"SUCCESS: OpenFileInCreoNewWindow - New session created for imported part"
                       : L"ERROR: Failed to create new session for imported part");
  return status;
}

}  // namespace

int PlaceOrDisplayModel(ProMdl model, const std::wstring& modelName, int modelType,
                        const LocationInfo& location, const std::wstring& sourcePath) {
  LogShell(L"SUCCESS: ProMdlnameRetrieve - Model handle retrieved");
  ProMdl current = nullptr;
  if (ProMdlCurrentGet(&current) != PRO_TK_NO_ERROR) {
    LogShell(L"WARNING: No current model found - Using fallback display method");
    return ShowInWindow(modelName, modelType);
  }
  ProMdlType current_type = PRO_MDL_UNUSED;
  ProMdlTypeGet(current, &current_type);
  if (current_type == kAssembly) return AddToAssembly(current, model, location);
  if (current_type != kPart) {
    LogShell(L"WARNING: Current model is not a part or assembly - Using fallback display method");
    return ShowInWindow(modelName, modelType);
  }
  if (!sourcePath.empty()) return ShowInSecondSession(sourcePath);
  LogShell(L"INFO: Current model is a part - Opening retrieved model in separate window");
  return ShowInWindow(modelName, modelType);
}

}  // namespace vek
