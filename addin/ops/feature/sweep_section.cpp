#include "addin/ops/feature/sweep_section.h"

#include <ProSecdim.h>

#include <optional>
#include <string_view>

#include "addin/host/owned.h"
#include "addin/ops/common/units.h"
#include "addin/ops/feature/section_access.h"
#include "addin/platform/log.h"
#include "addin/text/format.h"

namespace vek::feature {
namespace {

constexpr int kPoint = 1;
constexpr int kLine = 2;
constexpr int kCenterline = 3;
constexpr int kArc = 4;
constexpr int kCircle = 5;
constexpr int kSpline = 8;

constexpr auto kWholeEntity = static_cast<ProSectionPointType>(1);
constexpr auto kDiameter = static_cast<ProSecdimType>(4);

// What a profile without any use gives a sweep.
constexpr double kFallbackRadiusMm = 5.0;

struct Addition {
  ProError status = PRO_TK_NO_ERROR;
  int id = -1;
  bool done() const { return status == PRO_TK_NO_ERROR; }
};

template <typename Record>
Addition Add(ProSection section, Record record) {
  Addition added;
  added.status = ProSectionEntityAdd(section, reinterpret_cast<Pro2dEntdef*>(&record), &added.id);
  return added;
}

// `origin_of_radius` is the log's word for where the radius comes from.
Addition AddCircleAtOrigin(ProSection section, std::wstring_view origin_of_radius, double radius) {
  Pro2dCircledef circle{};
  circle.type = static_cast<Pro2dEntType>(kCircle);
  circle.radius = radius;
  const Addition added = Add(section, circle);
  LogOperation(Format(L"Feature Sweep: %s circle-at-origin status=%d id=%d r=%g", origin_of_radius,
                      added.status, added.id, radius));
  return added;
}

void AddDiameter(ProSection section, int circle) {
  int entities[] = {circle};
  ProSectionPointType points[] = {kWholeEntity};
  Pro2dPnt place{};
  int dimension = -1;
  const ProError status = ProSecdimCreate(section, entities, points, 1, kDiameter, place, &dimension);
  LogOperation(Format(L"Feature Sweep: section dia-dim status=%d dimId=%d", status, dimension));
}

struct SectionVerdict {
  ProError status = PRO_TK_NO_ERROR;
  int errors = 0;
};

SectionVerdict Judge(ProSection section, ProError (*call)(ProSection, ProWSecerror*)) {
  SectionVerdict verdict;
  OwnedSectionErrors errors;
  ProSecerrorAlloc(errors.out());
  verdict.status = call(section, errors.inout());
  if (errors) ProSecerrorCount(errors.inout(), &verdict.errors);
  return verdict;
}

// Lets the host settle the section. What it thinks of it is only logged: the redefinition decides.
void FinalizeSection(ProSection section) {
  ProSectionIntentManagerModeSet(section, PRO_B_TRUE);
  ProSectionIntentManagerModeSet(section, PRO_B_FALSE);
  const SectionVerdict solved = Judge(section, ProSectionSolve);
  const SectionVerdict regenerated = Judge(section, ProSectionRegenerate);
  LogOperation(Format(L"Feature Sweep[%s]: solve=%d (errs=%d) regen=%d (errs=%d)", L"finalize", solved.status,
                      solved.errors, regenerated.status, regenerated.errors));
}

// Adds the profile's first circle that is no construction, moved to the origin. Nothing without a circle.
std::optional<Addition> AddFirstCircle(ProSection profile, ProSection section) {
  OwnedArray<int> ids;
  if (ProSectionEntityIdsGet(profile, ids.out()) != PRO_TK_NO_ERROR) return std::nullopt;
  for (int i = 0; i < ids.size(); ++i) {
    if (IsConstruction(profile, ids[i])) continue;
    Pro2dEntdef* entity = nullptr;
    if (ProSectionEntityGet(profile, ids[i], &entity) != PRO_TK_NO_ERROR || entity == nullptr) continue;
    if (static_cast<int>(entity->type) != kCircle) continue;
    return AddCircleAtOrigin(section, L"section", reinterpret_cast<const Pro2dCircledef*>(entity)->radius);
  }
  return std::nullopt;
}

// Adds a copy of an entity of another section. Only the kinds that profiles are drawn with are known here.
bool AddCopy(ProSection section, const Pro2dEntdef& entity) {
  switch (static_cast<int>(entity.type)) {
    case kPoint:
      return Add(section, reinterpret_cast<const Pro2dPntdef&>(entity)).done();
    case kLine:
    case kCenterline:
      return Add(section, reinterpret_cast<const Pro2dLinedef&>(entity)).done();
    case kArc:
      return Add(section, reinterpret_cast<const Pro2dArcdef&>(entity)).done();
    case kCircle:
      return Add(section, reinterpret_cast<const Pro2dCircledef&>(entity)).done();
    case kSpline:
      return Add(section, reinterpret_cast<const Pro2dSplinedef&>(entity)).done();
    default:
      return false;
  }
}

bool CopySectionEntities(ProSection from, ProSection to) {
  OwnedArray<int> ids;
  if (ProSectionEntityIdsGet(from, ids.out()) != PRO_TK_NO_ERROR) return false;
  bool copied = false;
  for (int i = 0; i < ids.size(); ++i) {
    if (IsConstruction(from, ids[i])) continue;
    Pro2dEntdef* entity = nullptr;
    if (ProSectionEntityGet(from, ids[i], &entity) != PRO_TK_NO_ERROR || entity == nullptr) return false;
    if (!AddCopy(to, *entity)) return false;
    copied = true;
  }
  return copied;
}

// Gives a circle that was added its dimension, and settles the section.
bool FinishCircle(ProSection section, const Addition& circle) {
  if (!circle.done()) return false;
  AddDiameter(section, circle.id);
  FinalizeSection(section);
  return true;
}

}  // namespace

bool DrawCrossSection(ProMdl model, ProSection profile, ProSection section) {
  if (const auto circle = AddFirstCircle(profile, section)) {
    if (FinishCircle(section, *circle)) return true;
  } else if (CopySectionEntities(profile, section)) {
    LogOperation(L"Feature Sweep: copied non-construction profile entities");
    FinalizeSection(section);
    return true;
  }
  const double radius = MmToModel(model, kFallbackRadiusMm);
  return FinishCircle(section, AddCircleAtOrigin(section, L"fallback", radius));
}

int CountEntities(ProSection section) {
  OwnedArray<int> ids;
  return ProSectionEntityIdsGet(section, ids.out()) == PRO_TK_NO_ERROR ? ids.size() : 0;
}

int CountDrawnEntities(ProSection section) {
  OwnedArray<int> ids;
  if (ProSectionEntityIdsGet(section, ids.out()) != PRO_TK_NO_ERROR) return 0;
  int drawn = 0;
  for (int i = 0; i < ids.size(); ++i)
    if (!IsConstruction(section, ids[i])) ++drawn;
  return drawn;
}

}  // namespace vek::feature
