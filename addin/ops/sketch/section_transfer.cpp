#include "addin/ops/sketch/section_transfer.h"

#include <vector>

#include "addin/host/owned.h"
#include "addin/ops/common/units.h"
#include "addin/ops/sketch/constraints.h"
#include "addin/ops/sketch/dimensions.h"
#include "addin/platform/log.h"
#include "addin/text/format.h"

namespace vek::sketch {
namespace {

// What stands in the place where the sketcher was looked for.
void LogStandardSection(const ExtractedTree& tree) {
  static constexpr int kStandardSection[] = {447};
  std::vector<int> children;
  if (const ProError status = tree.ChildIds(kStandardSection, children); status != PRO_TK_NO_ERROR) {
    LogOperation(Format(L"Sketch Commit: STD_SECTION children get status=%d", status));
    return;
  }
  LogOperation(Format(L"Sketch Commit: STD_SECTION childCount=%d", static_cast<int>(children.size())));
  for (std::size_t i = 0; i < children.size(); ++i)
    LogOperation(Format(L"Sketch Commit: STD_SECTION child[%d] elemId=%d", static_cast<int>(i), children[i]));
}

bool CopyEntity(ProSection source, int id, ProSection target) {
  Pro2dEntdef* entity = nullptr;
  if (ProSectionEntityGet(source, id, &entity) != PRO_TK_NO_ERROR || entity == nullptr) {
    LogOperation(Format(L"Sketch Transfer: EntityGet failed id=%d", id));
    return false;
  }
  int new_id = -1;
  if (ProSectionEntityAdd(target, entity, &new_id) != PRO_TK_NO_ERROR) {
    LogOperation(L"Sketch Transfer: EntityAdd failed");
    return false;
  }
  ProBoolean construction = PRO_B_FALSE;
  if (ProSectionEntityIsConstruction(source, id, &construction) == PRO_TK_NO_ERROR &&
      construction == PRO_B_TRUE)
    ProSectionEntityConstructionSet(target, new_id, PRO_B_TRUE);
  return true;
}

}  // namespace

ProSection FindSketcherSection(const ExtractedTree& tree) {
  ProElement sketcher = nullptr;
  ProSection section = nullptr;
  ProError status = tree.Follow(SketcherPath(), sketcher);
  if (status != PRO_TK_NO_ERROR || sketcher == nullptr) {
    LogOperation(Format(L"Sketch Commit: ProElemtreeElementGet PRO_E_SKETCHER status=%d", status));
  } else {
    status = ExtractedTree::SectionOf(sketcher, section);
    if (section != nullptr) return section;
    LogOperation(Format(L"Sketch Commit: ProElementSpecialvalueGet status=%d", status));
  }
  LogStandardSection(tree);
  LogOperation(L"Sketch Commit: missing PRO_E_SKETCHER after incomplete create");
  return nullptr;
}

bool CopyEntities(const SketchSession& session, ProSection target) {
  for (const SketchEntityRecord& record : session.entities) {
    if (!CopyEntity(session.section, record.entity_id, target)) return false;
  }
  return true;
}

bool ReplayRecords(const SketchSession& session, ProSection target, std::wstring& error) {
  if (session.constraints.empty() && session.dimensions.empty()) return true;
  const double scale = MmToModelScale(session.model);
  for (const SketchConstraintRecord& record : session.constraints)
    if (!ApplySketchConstraint(target, session, record, error)) return false;
  for (const SketchDimensionRecord& record : session.dimensions)
    if (!ApplySketchDimension(target, session, scale, record, error)) return false;
  return true;
}

void RegenerateSection(ProSection target) {
  OwnedSectionErrors errors;
  ProSecerrorAlloc(errors.out());
  const ProError status = ProSectionRegenerate(target, errors.inout());
  LogOperation(Format(L"Sketch Commit: ProSectionRegenerate status=%d", status));
  if (status != PRO_TK_NO_ERROR && errors) {
    int count = 0;
    ProSecerrorCount(errors.inout(), &count);
    LogOperation(Format(L"Sketch Commit: section error count=%d", count));
  }
  errors.reset();
  if (status != PRO_TK_NO_ERROR) LogOperation(L"Sketch Commit: regenerate non-zero; continuing to redefine");
}

}  // namespace vek::sketch
