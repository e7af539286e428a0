#include "addin/ops/common/model_access.h"

#include <ProWindows.h>

#include <algorithm>

#include "addin/host/owned.h"
#include "addin/host/text_buffer.h"
#include "addin/ops/common/model_paths.h"
#include "addin/server/json_writer.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek {
namespace {

struct ModelKind {
  int type;
  const wchar_t* word;
  const wchar_t* extension;
};

constexpr ModelKind kModelKinds[] = {
    {kAssemblyType, L"assembly", L"asm"},
    {kPartType, L"part", L"prt"},
    {kDrawingType, L"drawing", L"drw"},
};

const ModelKind* KindOfType(int type) {
  const auto* kind = std::find_if(std::begin(kModelKinds), std::end(kModelKinds),
                                  [&](const ModelKind& candidate) { return candidate.type == type; });
  return kind == std::end(kModelKinds) ? nullptr : kind;
}

// A model name with room for what a generic model adds to it.
constexpr int kRetrieveNameSize = 362;

void AppendSessionModels(int type, std::vector<ProMdl>& models) {
  OwnedArray<ProMdl> listed;
  int count = 0;
  if (ProSessionMdlList(static_cast<ProMdlType>(type), listed.out(), &count) != PRO_TK_NO_ERROR) return;
  if (!listed) return;
  std::copy_if(listed.get(), listed.get() + count, std::back_inserter(models),
               [](ProMdl model) { return model != nullptr; });
}

bool IsCalled(ProMdl model, std::wstring_view name_or_path) {
  ProMdlType type = PRO_MDL_UNUSED;
  if (ProMdlTypeGet(model, &type) != PRO_TK_NO_ERROR) return false;
  return EqualsIgnoreCase(ModelName(model), name_or_path) ||
         EqualsIgnoreCase(ModelFullPath(model, type), name_or_path);
}

// Gives the model a window, or finds the one that it has.
CreoMcpOperationResult ResolveWindow(ProMdl model, ProMdlName& name, ProMdlType type, int& window) {
  if (ProObjectwindowMdlnameCreate(name, static_cast<ProType>(type), &window) == PRO_TK_NO_ERROR) {
    ProMdlDisplay(model);
    return MakeSuccessResult();
  }
  if (const ProError status = ProMdlDisplay(model); status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"Failed to display model (status=%d).", status));
  if (ProMdlWindowGet(model, &window) != PRO_TK_NO_ERROR)
    return MakeFailureResult(L"Failed to resolve model window.");
  return MakeSuccessResult();
}

}  // namespace

std::wstring ModelTypeWord(int type) {
  const ModelKind* kind = KindOfType(type);
  return kind ? kind->word : L"unknown";
}

std::wstring ModelTypeExtension(int type) {
  const ModelKind* kind = KindOfType(type);
  return kind ? kind->extension : L"";
}

int ExtensionToModelType(std::wstring_view extension) {
  for (const ModelKind& kind : kModelKinds)
    if (EqualsIgnoreCase(extension, kind.extension)) return kind.type;
  return -1;
}

CreoMcpOperationResult RequireActiveModelOfType(int wanted_type, const ActiveModelWords& words,
                                                ProMdl& model) {
  model = nullptr;
  ProMdl current = nullptr;
  if (ProMdlCurrentGet(&current) != PRO_TK_NO_ERROR || current == nullptr)
    return MakeFailureResult(words.no_model);
  ProMdlType type = PRO_MDL_UNUSED;
  if (ProMdlTypeGet(current, &type) != PRO_TK_NO_ERROR) return MakeFailureResult(words.type_unreadable);
  if (type != wanted_type) return MakeFailureResult(words.wrong_type);
  model = current;
  return MakeSuccessResult();
}

std::wstring ModelName(ProMdl model) {
  ProMdlName name{};
  return ProMdlMdlnameGet(model, name) == PRO_TK_NO_ERROR ? BufferText(name) : std::wstring();
}

std::wstring ModelFullPath(ProMdl model, int type) {
  const std::wstring name = ModelName(model);
  if (name.empty()) return {};
  ProPath directory{};
  const bool has_directory = ProMdlDirectoryPathGet(model, directory) == PRO_TK_NO_ERROR;
  const std::wstring extension = ModelTypeExtension(type);
  return JoinPath(has_directory ? BufferText(directory) : std::wstring(),
                  extension.empty() ? name : Format(L"%s.%s", name, extension));
}

std::vector<ProMdl> SessionModels() {
  std::vector<ProMdl> models;
  for (const int type : {kPartType, kAssemblyType, kDrawingType}) AppendSessionModels(type, models);
  return models;
}

std::vector<ProMdl> SessionModelsOfType(int type) {
  std::vector<ProMdl> models;
  AppendSessionModels(type, models);
  return models;
}

ProError RetrieveModel(const std::wstring& name, int type, ProMdl& model) {
  wchar_t buffer[kRetrieveNameSize];
  CopyCut(buffer, name);
  model = nullptr;
  return ProMdlnameRetrieve(buffer, static_cast<ProMdlfileType>(type), &model);
}

ProMdl FindOpenModel(std::wstring_view name_or_path) {
  if (name_or_path.empty()) return nullptr;
  const std::vector<ProMdl> models = SessionModels();
  const std::wstring_view text = Trim(name_or_path);

  auto found =
      std::find_if(models.begin(), models.end(), [&](ProMdl model) { return IsCalled(model, text); });
  if (found != models.end()) return *found;

  const std::wstring base = BaseModelName(text);
  found = std::find_if(models.begin(), models.end(),
                       [&](ProMdl model) { return EqualsIgnoreCase(ModelName(model), base); });
  return found == models.end() ? nullptr : *found;
}

CreoMcpOperationResult ActivateModel(ProMdl model) {
  ProMdlName name{};
  if (ProMdlMdlnameGet(model, name) != PRO_TK_NO_ERROR)
    return MakeFailureResult(L"Failed to read model name for activation.");
  ProMdlType type = PRO_MDL_UNUSED;
  if (ProMdlTypeGet(model, &type) != PRO_TK_NO_ERROR)
    return MakeFailureResult(L"Failed to read model type for activation.");
  if (KindOfType(type) == nullptr) return MakeFailureResult(L"Unsupported model type for activation.");

  int window = -1;
  if (auto resolved = ResolveWindow(model, name, type, window); !resolved.success) return resolved;
  ProWindowActivate(window);
  ProWindowRepaint(window);

  const std::wstring shown = BufferText(name);
  return MakeSuccessResult(
      Format(L"Document '%s' is now active.", shown),
      Format(LR"({"name":"%s","full_path":"%s","document_type":"%s"})", JsonEscape(shown),
             JsonEscape(ModelFullPath(model, type)), JsonEscape(ModelTypeWord(type))));
}

}  // namespace vek
