// Which components of an assembly share space with which.
#include <ProFit.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "bench/host/calls/array.h"
#include "bench/host/calls/selection.h"
#include "bench/host/features/scene.h"
#include "bench/host/host.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/instruments/opaque_handles.h"
#include "bench/host/model/item_lookup.h"
#include "bench/host/text.h"

namespace bench {
namespace {

using nlohmann::json;

struct Clash {
  std::vector<int> first, second;  // the ways to the two
  double volume = 0;               // mm³
};

// What stands behind the data of an interference: its volume in units of the assembly.
OpaqueHandles<ProInterferenceData, double>& Volumes() {
  static OpaqueHandles<ProInterferenceData, double> volumes;
  return volumes;
}

bool LeadsToModel(Model& assembly, const std::vector<int>& way) {
  const auto end = Follow(assembly, way);
  return end && end->model && way.size() <= PRO_MAX_ASSEM_LEVEL;
}

// Those of the kernel's answer; throws when it is none.
std::vector<Clash> ReadClashes(const json& answer, Model& assembly) {
  std::vector<Clash> clashes;
  for (const json& entry : answer.at("clashes")) {
    Clash clash{entry.at("first"), entry.at("second"), entry.at("volume")};
    if (!LeadsToModel(assembly, clash.first) || !LeadsToModel(assembly, clash.second))
      throw std::runtime_error("a clash of what isn't there");
    clashes.push_back(std::move(clash));
  }
  return clashes;
}

ProError AskForClashes(Model& assembly, std::vector<Clash>& clashes) {
  const auto answer = TheHost().kernel.Ask("interfere", SceneFields(assembly));
  if (!answer) return PRO_TK_COMM_ERROR;
  if (answer->contains("refused")) {
    TheHost().announcements.Say("refused: no interference of " + ToUtf8(assembly.name) + ": " +
                                answer->value("refused", ""));
    return PRO_TK_GENERAL_ERROR;
  }
  try {
    clashes = ReadClashes(*answer, assembly);
    return PRO_TK_NO_ERROR;
  } catch (const std::exception& exception) {
    Complain(std::string("the geometry kernel's answer can't be read: ") + exception.what());
    return PRO_TK_COMM_ERROR;
  }
}

ProSelection SelectionOf(Model& assembly, const std::vector<int>& way) {
  Model& model = *Follow(assembly, way)->model;
  ProAsmcomppath path{Handle(assembly), {}, static_cast<int>(way.size())};
  std::ranges::copy(way, path.comp_id_table);
  return NewSelection({static_cast<ProType>(model.type), 0, Handle(model)}, path);
}

ProInterferenceInfo InfoOf(Model& assembly, const Clash& clash) {
  const double mm = MillimetresPer(assembly.length_unit);
  const ProInterferenceData data = Volumes().Enter(clash.volume / (mm * mm * mm));
  TheHost().ledger.Give(data, HandleKind::kInterference, CurrentCall());
  return {data, SelectionOf(assembly, clash.first), SelectionOf(assembly, clash.second)};
}

bool FreeData(ProInterferenceData data) {
  if (!TheHost().ledger.TakeBack(data, HandleKind::kInterference, CurrentCall())) return false;
  Volumes().Remove(data);
  return true;
}

}  // namespace
}  // namespace bench

using namespace bench;

ProError ProFitGlobalinterferenceCompute(ProSolid assembly, ProFitComputeSetup setup, ProBoolean with_facets,
                                         ProBoolean with_quilts, ProBoolean with_unseen,
                                         ProInterferenceInfo** interferences) {
  HOST_CALL(assembly, setup, with_facets, with_quilts, with_unseen) {
    Model* model = LiveSolid(assembly);
    if (!model || !interferences) return PRO_TK_BAD_INPUTS;
    *interferences = nullptr;
    if (model->type != PRO_MDL_ASSEMBLY) return PRO_TK_INVALID_TYPE;
    if (setup != PRO_FIT_PARTS || with_facets || with_quilts || with_unseen) return PRO_TK_NOT_IMPLEMENTED;
    std::vector<Clash> clashes;
    if (const ProError status = AskForClashes(*model, clashes)) return status;
    if (clashes.empty()) return PRO_TK_E_NOT_FOUND;
    std::vector<ProInterferenceInfo> infos;
    for (const Clash& clash : clashes) infos.push_back(InfoOf(*model, clash));
    *interferences = NewArray(infos);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProFitInterferencevolumeCompute(ProInterferenceData data, double* volume) {
  HOST_CALL(data) {
    if (!data || !volume) return PRO_TK_BAD_INPUTS;
    if (!TheHost().ledger.Check(data, HandleKind::kInterference, CurrentCall())) return PRO_TK_INVALID_PTR;
    *volume = *Volumes().Find(data);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProInterferenceInfoProarrayFree(ProInterferenceInfo* interferences) {
  HOST_CALL_THAT_NEVER_FAILS(interferences) {
    if (!interferences) return PRO_TK_BAD_INPUTS;
    const auto all = ArrayObjects(interferences);
    if (!all) return PRO_TK_INVALID_PTR;
    // What was freed before is a mistake, but no reason to keep the others.
    bool right = true;
    for (const ProInterferenceInfo& info : *all) {
      right &= FreeData(info.interf_data);
      right &= FreeSelection(info.selection_1);
      right &= FreeSelection(info.selection_2);
    }
    FreeArray(interferences);
    return right ? PRO_TK_NO_ERROR : PRO_TK_INVALID_PTR;
  };
}
