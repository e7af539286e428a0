// Making solids and walking their features.
#include <ProSolid.h>

#include "bench/host/calls/visit.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/instruments/handles.h"
#include "bench/host/model/start_template.h"
#include "bench/host/storage/file_names.h"
#include "bench/host/storage/model_store.h"
#include "bench/host/text.h"

using namespace bench;

ProError ProSolidMdlnameCreate(ProMdlName name, ProMdlfileType type, ProSolid* solid) {
  HOST_CALL(static_cast<const wchar_t*>(name), static_cast<int>(type)) {
    if (!name || !solid) return PRO_TK_BAD_INPUTS;
    *solid = nullptr;
    if (type != PRO_MDLFILE_PART && type != PRO_MDLFILE_ASSEMBLY) return PRO_TK_INVALID_TYPE;
    const auto model_type = static_cast<ProMdlType>(type);
    const std::wstring wanted = Upper(Bounded(name, PRO_MDLNAME_SIZE));
    if (const ProError status = CheckModelName(wanted)) return status;
    if (IsNameTaken(wanted, model_type)) return PRO_TK_E_FOUND;
    *solid = SolidHandle(TheHost().session.Add(NewSolidFromTemplate(wanted, model_type)));
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSolidFeatVisit(ProSolid solid, ProFeatureVisitAction action, ProFeatureFilterAction filter,
                           ProAppData data) {
  HOST_CALL(static_cast<const void*>(solid)) {
    Model* model = nullptr;
    if (!action) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(solid, model)) return status;
    if (model->type == PRO_MDL_DRAWING) return PRO_TK_INVALID_TYPE;
    std::vector<ProModelitem> features;
    for (const auto& feature : model->features)
      features.push_back({PRO_FEATURE, feature->id, Handle(*model)});
    return Visit(std::move(features), action, filter, data);
  };
}
