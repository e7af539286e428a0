#include "addin/ops/drawing/templates.h"

#include <vector>

#include "addin/host/owned.h"
#include "addin/host/text_buffer.h"
#include "addin/ops/common/model_access.h"
#include "addin/ops/common/model_paths.h"
#include "addin/ops/common/working_directory.h"
#include "addin/ops/drawing/drawing_names.h"
#include "addin/ops/drawing/drawing_source.h"
#include "addin/ops/drawing/frame.h"
#include "addin/platform/files.h"
#include "addin/text/format.h"

namespace vek::drawing {
namespace {

constexpr const wchar_t* kDefaultTemplates[] = {
    L"a3_drawing", L"a4_drawing", L"empty", L"c_drawing", L"a_drawing", L"b_drawing",
};

constexpr ProDwgcreateOptions kDisplayDrawing = 1;

// The drawing was made, though not all that its template asks for.
constexpr int kMadeWithErrors = -57;

// The model that a drawing is made of, as the host wants it described.
struct SourceModel {
  std::wstring name;
  const wchar_t* type_word;
};

// The templates to try, in their order, and the directory that they lie in.
struct TemplateChoice {
  std::vector<std::wstring> names;
  std::wstring directory;
};

TemplateChoice ChooseTemplates(const std::wstring& template_path) {
  TemplateChoice choice;
  std::wstring name, extension;
  if (!template_path.empty() && !ParseModelFileName(template_path, choice.directory, name, extension))
    name = TemplateNameByHand(template_path);
  if (name.empty())
    choice.names.assign(std::begin(kDefaultTemplates), std::end(kDefaultTemplates));
  else
    choice.names.push_back(name);
  return choice;
}

bool IsMade(ProError status, ProDrawing drawing) {
  return (status == PRO_TK_NO_ERROR || status == kMadeWithErrors) && drawing != nullptr;
}

// One of the host's two calls, which differ in how long the names may be that they take.
template <typename NameBuffer, typename Description, typename Call>
ProError Create(Call* create, const std::wstring& name, const std::wstring& template_name,
                const SourceModel& source, ProDrawing& drawing) {
  NameBuffer name_buffer, template_buffer;
  CopyCut(name_buffer, name);
  CopyCut(template_buffer, template_name);
  Description model;
  CopyCut(model.name, source.name);
  CopyCut(model.type, source.type_word);
  OwnedDrawingErrors errors;
  drawing = nullptr;
  return create(name_buffer, template_buffer, &model, kDisplayDrawing, &drawing, errors.out());
}

// One try with one template. On failure the message tells of it.
CreoMcpOperationResult TryTemplate(const std::wstring& template_name, const std::wstring& directory,
                                   const SourceModel& source, ProDrawing& drawing) {
  const std::wstring name = FreeDrawingName(
      TickCount(), [](const std::wstring& candidate) { return FindOpenModel(candidate) != nullptr; });
  const WorkingDirectoryGuard guard(directory);
  if (!directory.empty() && !guard.changed())
    return MakeFailureResult(Format(L"Failed to change to template directory (status=%d).", guard.status()));

  ProError status =
      Create<ProMdlName, ProModelInfo>(ProDrawingFromTemplateCreate, name, template_name, source, drawing);
  if (IsMade(status, drawing)) return MakeSuccessResult();
  status = Create<ProName, ProModel>(ProDrawingFromTmpltCreate, name, template_name, source, drawing);
  if (IsMade(status, drawing)) return MakeSuccessResult();
  drawing = nullptr;
  const std::wstring message = Format(L"Template '%s' failed (status=%d).", template_name, status);
  LogDrawing(message);
  return MakeFailureResult(message);
}

CreoMcpOperationResult DescribeSource(ProMdl source, SourceModel& described) {
  if (source == nullptr) return MakeFailureResult(L"Source solid is null.");
  const int type = SolidTypeOf(source);
  if (type == -1) return MakeFailureResult(L"Source must be a part or assembly.");
  described = {ModelName(source), type == kAssemblyType ? L"ASM" : L"PRT"};
  if (described.name.empty()) return MakeFailureResult(L"Failed to read source model name.");
  return MakeSuccessResult();
}

}  // namespace

CreoMcpOperationResult CreateDrawingFromTemplate(ProMdl source, const std::wstring& template_path,
                                                 ProDrawing& drawing, std::wstring& used_template) {
  drawing = nullptr;
  SourceModel described;
  if (auto readable = DescribeSource(source, described); !readable.success) return readable;

  const TemplateChoice choice = ChooseTemplates(template_path);
  CreoMcpOperationResult last = MakeFailureResult(L"No drawing template could be resolved.");
  for (const std::wstring& candidate : choice.names) {
    last = TryTemplate(candidate, choice.directory, described, drawing);
    if (!last.success) continue;
    used_template = candidate;
    PendingSource() = {ModelName(drawing), source};
    return last;
  }
  return last;
}

}  // namespace vek::drawing
