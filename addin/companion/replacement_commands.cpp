#include "addin/companion/replacement_commands.h"

#include <ProMdl.h>

#include "addin/companion/companion_app.h"
#include "addin/companion/selected_model.h"
#include "addin/companion/send_outcome.h"
#include "addin/companion/web_client.h"
#include "addin/host/show_message.h"
#include "addin/host/text_buffer.h"
#include "addin/platform/log.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek {
namespace {

constexpr int kAssembly = 1;
constexpr int kPart = 2;

// Every file on the disk has its version behind its extension.
bool Holds(const std::wstring& path, const wchar_t* mark) {
  return ToUpper(path).find(mark) != std::wstring::npos;
}

const wchar_t* TypeWord(int type) {
  if (type == kAssembly) return L"Assembly";
  return type == kPart ? L"Part" : L"Unknown";
}

void InspectCurrentModel() {
  ProMdl current = nullptr;
  ProMdlType type = PRO_MDL_UNUSED;
  if (ProMdlCurrentGet(&current) != PRO_TK_NO_ERROR || ProMdlTypeGet(current, &type) != PRO_TK_NO_ERROR ||
      type != kAssembly)
    return ShowMessage(L"Current model is not an assembly");
  ProMdlName name{};
  ProPath directory{};
  ProMdlMdlnameGet(current, name);
  ProMdlDirectoryPathGet(current, directory);
  RequestAssemblyInspection(ResolveModelFile(BufferText(directory), BufferText(name), L".asm"));
}

}  // namespace

int SaveCurrentModel() {
  LogShell(L"=== Saving current model ===");
  ProMdl model = nullptr;
  if (const ProError status = ProMdlCurrentGet(&model); status != PRO_TK_NO_ERROR) {
    LogShell(L"ERROR: Failed to get current model for saving");
    return status;
  }
  ProMdlType type = PRO_MDL_UNUSED;
  ProMdlName name{};
  ProMdlTypeGet(model, &type);
  ProMdlMdlnameGet(model, name);
  LogShell(Format(L"Saving current %s: %s", TypeWord(type), BufferText(name)));
  const ProError status = ProMdlSave(model);
  if (status == PRO_TK_NO_ERROR)
    LogShell(L"SUCCESS: Current model saved successfully");
  else
    LogShell(Format(L"ERROR: Failed to save current model: %d", status));
  return status;
}

void RequestPartReplacement(const std::wstring& path) {
  if (!IsCompanionRunning()) return TurnOnCompanion();
  LogShell(L"=== Saving current model before part replacement request ===");
  if (const int status = SaveCurrentModel(); status != 0)
    LogShell(Format(
        L"WARNING: Failed to save current model before replacement (error: %d), continuing anyway", status));
  VekWebClient().SendReplacePart(path, LogSuccess(L"Replace part data sent successfully"),
                                 LogError(L"Error sending replace part data: "));
}

void RequestAssemblyInspection(const std::wstring& path) {
  if (!IsCompanionRunning()) return TurnOnCompanion();
  LogShell(L"=== Saving current model before assembly inspection request ===");
  if (const int status = SaveCurrentModel(); status != 0)
    LogShell(Format(L"WARNING: Failed to save current model before inspection (error: %d), continuing anyway",
                    status));
  VekWebClient().SendInspectAssembly(path, LogSuccess(L"Assembly inspection data sent successfully"),
                                     LogError(L"Error sending assembly inspection data: "));
}

void CommandReplacePart() {
  const std::wstring path = GetSelectedPartPath();
  if (path == kNothingSelected) return ShowMessage(L"No Part selected");
  if (path == kWrongModelType) return ShowMessage(L"Please Select a Part");
  if (!Holds(path, L".PRT."))
    return ShowMessage(
        L"You are trying to Select Part Replacer on a Assembly.Please try running it on an Part.");
  RequestPartReplacement(path);
}

void CommandInspectAssembly() {
  const std::wstring path = GetSelectedModelPath();
  if (Holds(path, L".ASM.")) return RequestAssemblyInspection(path);
  if (Holds(path, L".PRT."))
    return ShowMessage(
        L"You are trying to run Assembly inspection on a part. Please try running it on an assembly.");
  LogShell(Format(L"currentSelectedPath: %s", path));
  InspectCurrentModel();
}

}  // namespace vek
