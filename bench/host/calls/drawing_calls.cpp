// The calls of ProDrawing.h.
#include <ProDrawing.h>

#include "bench/host/calls/array.h"
#include "bench/host/calls/drawing_handles.h"
#include "bench/host/drawing/drawing_template.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/storage/file_names.h"
#include "bench/host/storage/model_store.h"
#include "bench/host/text.h"

namespace bench {
namespace {

constexpr auto kMadeWithProblems = static_cast<ProError>(-57);
constexpr auto kStandsThereAlready = static_cast<ProError>(-39);
constexpr ProDwgcreateOptions kShow = 1;

struct DrawingRequest {
  std::wstring_view name, template_name, model, model_type;
  ProDwgcreateOptions options;
};

ProDwgcreateErrs NewErrors() {
  const auto errors = static_cast<ProDwgcreateErrs>(NextOpaqueAddress());
  TheHost().ledger.Give(errors, HandleKind::kDrawingErrors, CurrentCall());
  return errors;
}

// The errors are told from where the template has been read.
ProError Create(const DrawingRequest& request, ProDrawing* drawing, ProDwgcreateErrs* errors) {
  *drawing = nullptr;
  if (errors) *errors = nullptr;
  if (request.options != 0 && request.options != kShow) return PRO_TK_BAD_INPUTS;
  const std::wstring name = Upper(request.name);
  if (const ProError status = CheckModelName(name)) return status;
  if (IsNameTaken(name, PRO_MDL_DRAWING)) return PRO_TK_E_FOUND;
  DrawingTemplate found;
  if (const ProError status = ReadDrawingTemplate(request.template_name, found)) return status;

  const auto type = TypeOfExtension(request.model_type);
  Model* solid =
      type && *type != PRO_MDL_DRAWING ? TheHost().session.FindByName(request.model, *type) : nullptr;
  if (!solid) {
    if (errors) *errors = NewErrors();
    return PRO_TK_E_NOT_FOUND;
  }
  const NewDrawing made = MakeDrawing(name, found, *solid);
  if (request.options == kShow) TheHost().windows.Create(*made.drawing);
  *drawing = DrawingHandle(*made.drawing);
  if (made.problems.empty()) return PRO_TK_NO_ERROR;
  for (const std::string& problem : made.problems) TheHost().announcements.Say("refused: " + problem);
  if (errors) *errors = NewErrors();
  return kMadeWithProblems;
}

}  // namespace
}  // namespace bench

using namespace bench;

ProError ProDrawingFromTemplateCreate(ProMdlName name, ProMdlName template_name, ProModelInfo* model,
                                      ProDwgcreateOptions options, ProDrawing* drawing,
                                      ProDwgcreateErrs* errors) {
  HOST_CALL(static_cast<const wchar_t*>(name), static_cast<const wchar_t*>(template_name), options) {
    if (!name || !template_name || !model || !drawing) return PRO_TK_BAD_INPUTS;
    return Create({Bounded(name, PRO_MDLNAME_SIZE), Bounded(template_name, PRO_MDLNAME_SIZE),
                   Bounded(model->name, PRO_MDLNAME_SIZE), Bounded(model->type, PRO_EXTENSION_SIZE), options},
                  drawing, errors);
  };
}

ProError ProDrawingFromTmpltCreate(ProName name, ProName template_name, ProModel* model,
                                   ProDwgcreateOptions options, ProDrawing* drawing,
                                   ProDwgcreateErrs* errors) {
  HOST_CALL(static_cast<const wchar_t*>(name), static_cast<const wchar_t*>(template_name), options) {
    if (!name || !template_name || !model || !drawing) return PRO_TK_BAD_INPUTS;
    return Create(
        {Bounded(name, PRO_NAME_SIZE), Bounded(template_name, PRO_NAME_SIZE),
         Bounded(model->name, std::size(model->name)), Bounded(model->type, std::size(model->type)), options},
        drawing, errors);
  };
}

ProError ProDwgcreateErrsFree(ProDwgcreateErrs* errors) {
  HOST_CALL_THAT_NEVER_FAILS(errors ? *errors : nullptr) {
    if (!errors || !*errors) return PRO_TK_BAD_INPUTS;
    if (!TheHost().ledger.TakeBack(*errors, HandleKind::kDrawingErrors, CurrentCall()))
      return PRO_TK_INVALID_PTR;
    *errors = nullptr;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProDrawingSolidAdd(ProDrawing drawing, ProSolid solid) {
  HOST_CALL(drawing, solid) {
    Model* sheets = nullptr;
    Model* model = nullptr;
    if (const ProError status = ResolveDrawing(drawing, sheets)) return status;
    if (const ProError status = Resolve(solid, model)) return status;
    if (model->type == PRO_MDL_DRAWING) return PRO_TK_INVALID_TYPE;
    if (HasSolid(*sheets, *model)) return kStandsThereAlready;
    AddSolid(*sheets, *model);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProDrawingSolidsCollect(ProDrawing drawing, ProSolid** solids) {
  HOST_CALL(drawing) {
    Model* sheets = nullptr;
    if (!solids) return PRO_TK_BAD_INPUTS;
    *solids = nullptr;
    if (const ProError status = ResolveDrawing(drawing, sheets)) return status;
    std::vector<ProSolid> found;
    for (const DrawnModel& drawn : sheets->drawing->solids)
      if (Model* model = drawn.model ? TheHost().session.Find(drawn.model) : nullptr)
        found.push_back(SolidHandle(*model));
    if (found.empty()) return PRO_TK_E_NOT_FOUND;
    *solids = NewArray(found);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProDrawingCurrentSheetGet(ProDrawing drawing, int* sheet) {
  HOST_CALL(drawing) {
    Model* sheets = nullptr;
    if (!sheet) return PRO_TK_BAD_INPUTS;
    if (const ProError status = ResolveDrawing(drawing, sheets)) return status;
    *sheet = sheets->drawing->current_sheet;
    return PRO_TK_NO_ERROR;
  };
}
