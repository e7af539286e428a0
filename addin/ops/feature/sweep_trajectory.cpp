#include "addin/ops/feature/sweep_trajectory.h"

#include <ProCollect.h>

#include <optional>

#include "addin/host/visits.h"
#include "addin/platform/log.h"
#include "addin/text/format.h"

namespace vek::feature {
namespace {

// How an instruction takes its curves.
constexpr int kOneCurve = 101;
constexpr int kCompositeCurve = 103;
constexpr int kCurvesOfFeature = 108;

constexpr int kCurveItem = 62;
constexpr int kCompositeCurveItem = 180;

// Adds one instruction that takes `item`; false at the first call that fails.
bool AddInstruction(ProCollection collection, int type, const ProModelitem& item,
                    OwnedReferences& references) {
  OwnedCurveInstruction instruction;
  if (ProCrvcollinstrAlloc(static_cast<ProCrvcollinstrType>(type), instruction.out()) != PRO_TK_NO_ERROR)
    return false;
  OwnedReference reference;
  if (MakeReference(item, reference) != PRO_TK_NO_ERROR) return false;
  const ProReference handle = reference.get();
  references.push_back(std::move(reference));
  if (ProCrvcollinstrReferenceAdd(instruction.get(), handle) != PRO_TK_NO_ERROR) return false;
  if (ProCrvcollectionInstructionAdd(collection, instruction.get()) != PRO_TK_NO_ERROR) return false;
  instruction.release();
  return true;
}

// What the host makes of a collection.
struct CollectedCurves {
  ProError status = PRO_TK_NO_ERROR;
  int count = 0;
  OwnedSelections selections;
  bool any() const { return status == PRO_TK_NO_ERROR && count > 0; }
};

CollectedCurves Regenerate(ProCollection collection) {
  CollectedCurves curves;
  curves.status = ProCrvcollectionRegenerate(collection, curves.selections.out(), &curves.count);
  return curves;
}

bool CollectsWholeFeature(ProCollection collection, const ProFeature& feature) {
  const CollectedCurves curves = Regenerate(collection);
  LogOperation(Format(L"Feature Sweep: trajectory FEATURE_INSTR featId=%d regen=%d sels=%d", feature.id,
                      curves.status, curves.count));
  return curves.any();
}

// The first composite curve of the feature, or else its first curve.
std::optional<ProGeomitem> SingleCurve(const ProFeature& feature) {
  std::optional<ProGeomitem> first, composite;
  ProFeature path = feature;
  VisitGeometry(path, kCurveItem, [&](ProGeomitem* item, ProError) {
    if (!first) first = *item;
    if (!composite && static_cast<int>(item->type) == kCompositeCurveItem) composite = *item;
    return PRO_TK_NO_ERROR;
  });
  return composite ? composite : first;
}

bool CollectsSingleCurve(ProCollection collection, const ProFeature& feature, OwnedReferences& references) {
  const auto curve = SingleCurve(feature);
  if (!curve) return false;
  const int item_type = static_cast<int>(curve->type);
  const int instruction = item_type == kCompositeCurveItem ? kCompositeCurve : kOneCurve;
  if (!AddInstruction(collection, instruction, *curve, references)) return false;
  const CollectedCurves curves = Regenerate(collection);
  LogOperation(Format(L"Feature Sweep: trajectory single ref type=%d id=%d instr=%d regen=%d sels=%d",
                      item_type, curve->id, instruction, curves.status, curves.count));
  return curves.any();
}

}  // namespace

bool BuildTrajectoryCollection(const ProFeature& path_feature, OwnedCollection& collection,
                               OwnedReferences& references) {
  if (ProCrvcollectionAlloc(collection.out()) != PRO_TK_NO_ERROR) return false;
  if (AddInstruction(collection.get(), kCurvesOfFeature, path_feature, references)) {
    if (CollectsWholeFeature(collection.get(), path_feature)) return true;
    // An instruction that gives nothing would spoil the second try.
    if (ProCrvcollectionAlloc(collection.out()) != PRO_TK_NO_ERROR) return false;
  }
  if (CollectsSingleCurve(collection.get(), path_feature, references)) return true;
  collection.reset();
  return false;
}

}  // namespace vek::feature
