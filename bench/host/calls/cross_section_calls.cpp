// The calls of ProXsec.h.
#include <ProXsec.h>

#include "bench/host/calls/visit.h"
#include "bench/host/drawing/cross_section.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/instruments/handles.h"
#include "bench/host/text.h"

namespace bench {
namespace {

constexpr int kCutsSolid = 0;

ProError ResolveSolid(ProSolid solid, Model*& model) {
  if (const ProError status = Resolve(solid, model)) return status;
  return model->type == PRO_MDL_DRAWING ? PRO_TK_INVALID_TYPE : PRO_TK_NO_ERROR;
}

ProError Create(ProSolid solid, const wchar_t* name, int surface, int cut_object, ProXsec* cross_section) {
  Model* model = nullptr;
  if (!name || !cross_section) return PRO_TK_BAD_INPUTS;
  if (const ProError status = ResolveSolid(solid, model)) return status;
  if (cut_object != kCutsSolid) return PRO_TK_NOT_IMPLEMENTED;
  int id = -1;
  if (const ProError status = AddCrossSection(*model, Bounded(name, PRO_NAME_SIZE), surface, id))
    return status;
  *cross_section = {kCrossSectionType, id, Handle(*model)};
  return PRO_TK_NO_ERROR;
}

}  // namespace
}  // namespace bench

using namespace bench;

ProError ProSolidXsecVisit(ProSolid solid, ProXsecVisitAction action, ProXsecFilterAction filter,
                           ProAppData data) {
  HOST_CALL(solid) {
    Model* model = nullptr;
    if (!action) return PRO_TK_BAD_INPUTS;
    if (const ProError status = ResolveSolid(solid, model)) return status;
    std::vector<ProXsec> sections;
    for (const CrossSection& section : model->cross_sections)
      sections.push_back({kCrossSectionType, section.id, Handle(*model)});
    return Visit(std::move(sections), action, filter, data);
  };
}

ProError ProXsecNameGet(ProXsec* cross_section, ProName name) {
  HOST_CALL(cross_section) {
    Model* model = nullptr;
    if (!cross_section || !name) return PRO_TK_BAD_INPUTS;
    if (cross_section->type != kCrossSectionType) return PRO_TK_INVALID_TYPE;
    if (const ProError status = Resolve(cross_section->owner, model)) return status;
    const CrossSection* found = FindCrossSection(*model, cross_section->id);
    if (!found) return PRO_TK_E_NOT_FOUND;
    return CopyOut(found->name, *reinterpret_cast<ProName*>(name)) ? PRO_TK_NO_ERROR : PRO_TK_LINE_TOO_LONG;
  };
}

ProError ProXsecPlanarWithoptionsCreate(ProSolid solid, wchar_t* name, int surface_id, int cut_object,
                                        int one_sided, int quilt_id, ProBoolean flip, ProBoolean exclude,
                                        int* component_ids, ProXsec* cross_section) {
  HOST_CALL(solid, static_cast<const wchar_t*>(name), surface_id, cut_object, one_sided, quilt_id) {
    // A view looks at its section from where it stands, and cuts all components.
    if (one_sided || flip || exclude || component_ids) return PRO_TK_NOT_IMPLEMENTED;
    return Create(solid, name, surface_id, cut_object, cross_section);
  };
}

ProError ProXsecPlanarCreate(ProSolid solid, wchar_t* name, int surface_id, int cut_object, int quilt_id,
                             ProXsec* cross_section) {
  HOST_CALL(solid, static_cast<const wchar_t*>(name), surface_id, cut_object, quilt_id) {
    return Create(solid, name, surface_id, cut_object, cross_section);
  };
}
