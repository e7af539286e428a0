// Neutral files as new models. The kernel reads the bytes; the host alone touches the disk.
#include <ProIntfimport.h>

#include "bench/host/calls/path_in.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/session.h"
#include "bench/host/storage/file_names.h"
#include "bench/host/storage/model_store.h"
#include "bench/host/storage/step_file.h"
#include "bench/host/text.h"

namespace bench {
namespace {

bool IsModelOfStep(ProMdlType type) {
  return type == PRO_MDL_PART || type == PRO_MDL_ASSEMBLY || type == PRO_MDL_UNUSED;
}

// The name for the new model of the file, read and checked.
ProError ReadName(const wchar_t* text, std::wstring& name) {
  name = Upper(Bounded(text, PRO_MDLNAME_SIZE));
  return CheckModelName(name);
}

}  // namespace
}  // namespace bench

using namespace bench;

ProError ProIntfimportSourceTypeGet(ProPath path, ProIntfImportType type, ProMdlType* source_type) {
  HOST_CALL(static_cast<const wchar_t*>(path), type) {
    const auto source = ReadPath(path);
    if (!source || !source_type) return PRO_TK_BAD_INPUTS;
    if (type != PRO_INTF_IMPORT_STEP) return PRO_TK_NOT_IMPLEMENTED;
    StepFile file;
    if (const ProError status = ReadStepFile(*source, file)) return status;
    *source_type = file.Type();
    return PRO_TK_NO_ERROR;
  };
}

ProError ProIntfimportModelWithOptionsMdlnameCreate(ProPath path, ProPath profile, ProIntfImportType type,
                                                    ProMdlType model_type, ProImportRepType representation,
                                                    ProMdlName name, ProIntfimportLayerFilter filter,
                                                    ProAppData, ProMdl* model) {
  HOST_CALL(static_cast<const wchar_t*>(path), type, static_cast<int>(model_type), representation,
            static_cast<const wchar_t*>(name)) {
    const auto source = ReadPath(path);
    if (!source || !name || !model || !IsModelOfStep(model_type)) return PRO_TK_BAD_INPUTS;
    *model = nullptr;
    if (type != PRO_INTF_IMPORT_STEP || representation != PRO_IMPORTREP_MASTER || profile || filter)
      return PRO_TK_NOT_IMPLEMENTED;
    std::wstring wanted;
    if (const ProError status = ReadName(name, wanted)) return status;
    // A told type spares a caller who tries one name after the other the reading of the file.
    if (model_type != PRO_MDL_UNUSED && IsNameTaken(wanted, model_type)) return PRO_TK_E_FOUND;
    StepFile file;
    if (const ProError status = ReadStepFile(*source, file)) return status;
    if (model_type != PRO_MDL_UNUSED && model_type != file.Type()) return PRO_TK_INVALID_TYPE;
    if (IsNameTaken(wanted, file.Type())) return PRO_TK_E_FOUND;
    Model* root = nullptr;
    if (const ProError status = BringIntoSession(file, wanted, root)) return status;
    *model = Handle(*root);
    return PRO_TK_NO_ERROR;
  };
}
