// What the user has selected, and asking him for a pick.
#include <ProSelbuffer.h>
#include <ProSelection.h>
#include <ProUtil.h>

#include <array>
#include <cstring>
#include <vector>

#include "bench/host/calls/array.h"
#include "bench/host/calls/selection.h"
#include "bench/host/calls/surface_parameters.h"
#include "bench/host/host.h"
#include "bench/host/installation.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/model/item_lookup.h"
#include "bench/host/text.h"

namespace bench {
namespace {

// The parameters at which a face is picked: those of the point that the kernel tells, on a plane; elsewhere
// the middle of its parameters.
std::array<double, 2> ParametersOf(const LiveSurface& surface) {
  const FaceInfo face = FaceOf(surface);
  const ParameterSteps step = StepsOf(face, MillimetresPer(surface.model->length_unit));
  if (face.type == "plane") {
    const Vector3 from_origin = face.point - face.origin;
    return {Dot(from_origin, face.x) / step.u, Dot(from_origin, Cross(face.axis, face.x)) / step.v};
  }
  return {(face.u[0] + face.u[1]) / 2 / step.u, (face.v[0] + face.v[1]) / 2 / step.v};
}

ProSelection SelectionOf(const Picked& picked) {
  Model* model = LiveSolid(picked.item.owner);
  LiveSurface surface;
  if (model && picked.item.type == PRO_SURFACE &&
      Resolve(HandleOfSurface(*model, picked.item.id), surface) == PRO_TK_NO_ERROR)
    return NewSelection(picked.item, picked.path, ParametersOf(surface));
  return NewSelection(picked.item, picked.path);
}

// Whether the user can pick that item when such kinds are asked for. Faces alone are offered: a component
// answers to none of the kinds that are known here.
bool CanBePicked(const Picked& picked, const char* kinds) {
  return picked.item.type == PRO_SURFACE && std::strstr(kinds, "surface");
}

}  // namespace
}  // namespace bench

using namespace bench;

ProError ProSelbufferSelectionsGet(ProSelection** selections) {
  HOST_CALL() {
    if (!selections) return PRO_TK_BAD_INPUTS;
    std::vector<ProSelection> selected;
    for (const Picked& picked : TheHost().picks.Selected()) selected.push_back(SelectionOf(picked));
    *selections = NewArray(selected);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSelect(char* option, int max_count, ProSelection* preselected, ProSelFunctions* functions,
                   ProSelectionEnv environment, ProSelAppAction actions, ProSelection** selections,
                   int* count) {
  HOST_CALL(static_cast<const char*>(option), max_count) {
    if (!option || !*option || max_count < 1 || !selections || !count) return PRO_TK_BAD_INPUTS;
    if (preselected || functions || environment || actions) return PRO_TK_NOT_IMPLEMENTED;
    *selections = nullptr;
    *count = 0;
    Host& host = TheHost();
    host.announcements.Say(std::string("pick: ") + option);
    const auto picked = host.picks.TakePick();
    if (!picked || !CanBePicked(*picked, option)) return PRO_TK_USER_ABORT;
    *selections = NewArray(std::vector{SelectionOf(*picked)});
    *count = 1;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProToolkitApplTextPathGet(ProPath text_path) {
  HOST_CALL() {
    if (!text_path) return PRO_TK_BAD_INPUTS;
    const std::wstring directory = TextDirectory();
    if (directory.empty()) return PRO_TK_E_NOT_FOUND;
    return CopyOut(directory, *reinterpret_cast<ProPath*>(text_path)) ? PRO_TK_NO_ERROR
                                                                      : PRO_TK_LINE_TOO_LONG;
  };
}
