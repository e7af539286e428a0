// The calls of ProDimension.h.
#include <ProDimension.h>

#include <vector>

#include "bench/host/calls/visit.h"
#include "bench/host/features/dimensions.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/instruments/handles.h"
#include "bench/host/text.h"

using namespace bench;

namespace {

constexpr auto kLinear = static_cast<ProDimensiontype>(1);
constexpr auto kAngular = static_cast<ProDimensiontype>(21);

ProError ResolveDimension(const ProDimension* record, Model*& model, Dimension*& dimension) {
  if (!record || record->type != PRO_DIMENSION) return PRO_TK_BAD_INPUTS;
  if (const ProError status = Resolve(record->owner, model)) return status;
  dimension = FindDimension(*model, record->id);
  return dimension ? PRO_TK_NO_ERROR : PRO_TK_E_NOT_FOUND;
}

// Runs `body(model, dimension)` on a live dimension.
template <typename Body>
ProError WithDimension(const ProDimension* record, Body&& body) {
  Model* model = nullptr;
  Dimension* dimension = nullptr;
  const ProError status = ResolveDimension(record, model, dimension);
  return status == PRO_TK_NO_ERROR ? body(*model, *dimension) : status;
}

}  // namespace

ProError ProSolidDimensionVisit(ProSolid solid, ProBoolean reference_dimensions,
                                ProDimensionVisitAction action, ProDimensionFilterAction filter,
                                ProAppData data) {
  HOST_CALL(solid, reference_dimensions) {
    if (!action) return PRO_TK_BAD_INPUTS;
    Model* model = LiveSolid(solid);
    if (!model) return PRO_TK_BAD_INPUTS;
    // No reference dimensions are made here.
    if (reference_dimensions != PRO_B_FALSE) return PRO_TK_NO_ERROR;
    std::vector<ProModelitem> items;
    for (const Dimension& dimension : model->dimensions)
      items.push_back({PRO_DIMENSION, dimension.id, static_cast<ProMdl>(solid)});
    return Visit(std::move(items), action, filter, data);
  };
}

ProError ProDimensionSymbolGet(ProDimension* dimension, ProName symbol) {
  HOST_CALL(dimension) {
    if (!symbol) return PRO_TK_BAD_INPUTS;
    return WithDimension(dimension, [&](Model&, const Dimension& found) {
      CopyOut(found.Symbol(), *reinterpret_cast<ProName*>(symbol));
      return PRO_TK_NO_ERROR;
    });
  };
}

ProError ProDimensionTypeGet(ProDimension* dimension, ProDimensiontype* type) {
  HOST_CALL(dimension) {
    if (!type) return PRO_TK_BAD_INPUTS;
    return WithDimension(dimension, [&](Model&, const Dimension& found) {
      *type = found.is_angle ? kAngular : kLinear;
      return PRO_TK_NO_ERROR;
    });
  };
}

ProError ProDimensionValueGet(ProDimension* dimension, double* value) {
  HOST_CALL(dimension) {
    if (!value) return PRO_TK_BAD_INPUTS;
    return WithDimension(dimension, [&](Model& model, const Dimension& found) {
      const auto measured = ValueOf(model, found);
      if (!measured) return PRO_TK_E_NOT_FOUND;
      *value = *measured;
      return PRO_TK_NO_ERROR;
    });
  };
}

ProError ProDimensionValueSet(ProDimension* dimension, double value) {
  HOST_CALL(dimension, value) {
    return WithDimension(dimension, [&](Model& model, const Dimension& found) {
      return found.relation_driven ? PRO_TK_BAD_CONTEXT : SetValue(model, found, value);
    });
  };
}

ProError ProDimensionIsReldriven(ProDimension* dimension, ProBoolean* driven) {
  HOST_CALL(dimension) {
    if (!driven) return PRO_TK_BAD_INPUTS;
    return WithDimension(dimension, [&](Model&, const Dimension& found) {
      *driven = found.relation_driven ? PRO_B_TRUE : PRO_B_FALSE;
      return PRO_TK_NO_ERROR;
    });
  };
}
