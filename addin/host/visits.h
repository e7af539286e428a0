// Visits of features and their geometry, with plain callables in place of the toolkit's actions.
//
// No exception passes through the host's frames: one that the callable throws ends the visit, is kept, and is
// thrown again here.
#pragma once

#include <ProAsmcomp.h>
#include <ProDimension.h>
#include <ProFeature.h>
#include <ProGeomitem.h>
#include <ProParameter.h>
#include <ProSolid.h>
#include <ProXsec.h>

#include <exception>
#include <type_traits>

namespace vek {
namespace visits_detail {

template <typename Action>
struct Visit {
  Action& action;
  std::exception_ptr exception;

  template <typename Item>
  static ProError Step(Item* item, ProError status, ProAppData data) {
    auto& visit = *static_cast<Visit*>(data);
    try {
      return visit.action(item, status);
    } catch (...) {
      visit.exception = std::current_exception();
      return PRO_TK_GENERAL_ERROR;
    }
  }

  ProError End(ProError status) {
    if (exception) std::rethrow_exception(exception);
    return status;
  }
};

}  // namespace visits_detail

// `action(ProFeature*, ProError filter_status) -> ProError`; a non-zero answer ends the visit and is
// returned.
template <typename Action>
ProError VisitFeatures(ProMdl model, Action&& action) {
  visits_detail::Visit<std::remove_reference_t<Action>> visit{action, nullptr};
  using Step = decltype(visit);
  return visit.End(
      ProSolidFeatVisit(static_cast<ProSolid>(model), &Step::template Step<ProFeature>, nullptr, &visit));
}

// The same for the features that `filter(ProFeature*) -> ProError` answers with 0; the others are skipped.
// After an exception of the filter nothing more is visited, and it is thrown again here.
template <typename Filter, typename Action>
ProError VisitFeatures(ProMdl model, Filter&& filter, Action&& action) {
  struct Both {
    Filter& filter;
    Action& action;
    std::exception_ptr exception;

    static ProError Choose(ProFeature* feature, ProAppData data) {
      auto& both = *static_cast<Both*>(data);
      if (both.exception) return PRO_TK_CONTINUE;
      try {
        return both.filter(feature);
      } catch (...) {
        both.exception = std::current_exception();
        return PRO_TK_CONTINUE;
      }
    }
    static ProError Step(ProFeature* feature, ProError status, ProAppData data) {
      auto& both = *static_cast<Both*>(data);
      try {
        return both.action(feature, status);
      } catch (...) {
        both.exception = std::current_exception();
        return PRO_TK_GENERAL_ERROR;
      }
    }
  };
  Both both{filter, action, nullptr};
  const ProError status = ProSolidFeatVisit(static_cast<ProSolid>(model), &Both::Step, &Both::Choose, &both);
  if (both.exception) std::rethrow_exception(both.exception);
  return status;
}

// `action(ProSurface, ProError filter_status) -> ProError`, for each surface of the model's solid.
template <typename Action>
ProError VisitSurfaces(ProMdl model, Action&& action) {
  visits_detail::Visit<std::remove_reference_t<Action>> visit{action, nullptr};
  using Step = decltype(visit);
  return visit.End(
      ProSolidSurfaceVisit(static_cast<ProSolid>(model), &Step::template Step<CreoSurface>, nullptr, &visit));
}

// `action(ProContour, ProError filter_status) -> ProError`.
template <typename Action>
ProError VisitContours(ProSurface surface, Action&& action) {
  visits_detail::Visit<std::remove_reference_t<Action>> visit{action, nullptr};
  using Step = decltype(visit);
  return visit.End(ProSurfaceContourVisit(surface, &Step::template Step<CreoContour>, nullptr, &visit));
}

// `action(ProEdge, ProError filter_status) -> ProError`.
template <typename Action>
ProError VisitEdges(ProSurface surface, ProContour contour, Action&& action) {
  visits_detail::Visit<std::remove_reference_t<Action>> visit{action, nullptr};
  using Step = decltype(visit);
  return visit.End(ProContourEdgeVisit(surface, contour, &Step::template Step<CreoEdge>, nullptr, &visit));
}

// `action(ProAsmcomppath*, ProBoolean down) -> ProError`, for each displayed component of the assembly at
// every depth.
template <typename Action>
ProError VisitDisplayedComponents(ProMdl assembly, Action&& action) {
  struct Components {
    Action& action;
    std::exception_ptr exception;

    static ProError Step(ProAsmcomppath* path, ProSolid, ProBoolean down, ProAppData data) {
      auto& components = *static_cast<Components*>(data);
      try {
        return components.action(path, down);
      } catch (...) {
        components.exception = std::current_exception();
        return PRO_TK_GENERAL_ERROR;
      }
    }
  };
  Components components{action, nullptr};
  const ProError status =
      ProSolidDispCompVisit(static_cast<ProSolid>(assembly), &Components::Step, nullptr, &components);
  if (components.exception) std::rethrow_exception(components.exception);
  return status;
}

// `action(ProParameter*, ProError filter_status) -> ProError`, for each parameter of the model or item.
template <typename Action>
ProError VisitParameters(ProModelitem& owner, Action&& action) {
  visits_detail::Visit<std::remove_reference_t<Action>> visit{action, nullptr};
  using Step = decltype(visit);
  return visit.End(ProParameterVisit(&owner, nullptr, &Step::template Step<ProParameter>, &visit));
}

// `action(ProDimension*, ProError filter_status) -> ProError`, for each dimension that drives the solid.
template <typename Action>
ProError VisitDimensions(ProMdl model, Action&& action) {
  visits_detail::Visit<std::remove_reference_t<Action>> visit{action, nullptr};
  using Step = decltype(visit);
  return visit.End(ProSolidDimensionVisit(static_cast<ProSolid>(model), PRO_B_FALSE,
                                          &Step::template Step<ProDimension>, nullptr, &visit));
}

// `action(ProXsec*, ProError filter_status) -> ProError`, for each cross-section of the solid.
template <typename Action>
ProError VisitCrossSections(ProMdl model, Action&& action) {
  visits_detail::Visit<std::remove_reference_t<Action>> visit{action, nullptr};
  using Step = decltype(visit);
  return visit.End(
      ProSolidXsecVisit(static_cast<ProSolid>(model), &Step::template Step<ProXsec>, nullptr, &visit));
}

// The items of `type` that belong to `feature`: 5 surfaces, 21 axes, 57 quilts, 62 curves, 66 points.
template <typename Action>
ProError VisitGeometry(ProFeature& feature, int type, Action&& action) {
  visits_detail::Visit<std::remove_reference_t<Action>> visit{action, nullptr};
  using Step = decltype(visit);
  return visit.End(ProFeatureGeomitemVisit(&feature, static_cast<ProType>(type),
                                           &Step::template Step<ProGeomitem>, nullptr, &visit));
}

}  // namespace vek
