#include "addin/ops/feature/pattern_directions.h"

#include "addin/host/element_tree_builder.h"
#include "addin/host/text_buffer.h"
#include "addin/host/visits.h"
#include "addin/ops/feature/creation.h"
#include "addin/ops/feature/pattern_words.h"
#include "addin/text/format.h"

namespace vek::feature {
namespace {

constexpr int kSurfaceItemType = 5;
constexpr int kAxisItemType = 21;
constexpr int kDatumPlaneItemType = 176;

constexpr int kDatumAxisOption = 1;

bool FindItem(ProMdl model, int type, const std::wstring& name, ProModelitem& item) {
  ProName buffer{};
  CopyCut(buffer, name);
  return ProModelitemByNameInit(model, static_cast<ProType>(type), buffer, &item) == PRO_TK_NO_ERROR;
}

ElementTreeBuilder DatumAxisTree(const ProModelitem& plane1, const ProModelitem& plane2,
                                 const std::wstring& name) {
  ElementTreeBuilder tree(386, L"Failed to allocate datum axis tree.");
  tree.OnFailure(L"Failed to populate datum axis element tree.");
  tree.Integer(tree.Root(), 387, 926);  // feature type: datum axis
  tree.Text(tree.Root(), 1964, name);
  const auto constraints = tree.Compound(tree.Root(), 2015);
  for (const ProModelitem& plane : {plane1, plane2}) {
    const auto constraint = tree.Compound(constraints, 2016);
    tree.Integer(constraint, 2017, 1);  // the axis lies in the plane
    tree.Reference(constraint, 2018, plane);
  }
  return tree;
}

// An auxiliary feature of the add-in's own: it keeps the name in its tree and enters no history.
CreoMcpOperationResult CreateDatumAxis(ProMdl model, const ProModelitem& plane1, const ProModelitem& plane2,
                                       const std::wstring& name, ProModelitem& item) {
  ProName cut_name{};
  CopyCut(cut_name, name);
  ElementTreeBuilder tree = DatumAxisTree(plane1, plane2, BufferText(cut_name));
  if (!tree.ok()) return MakeFailureResult(tree.message());
  ProFeature feature{};
  auto created = CreateFeatureFromTree(model, tree.tree(), kDatumAxisOption, L"datum_axis", feature, true);
  tree.FreeTree();
  if (!created.success) return created;

  bool found = false;
  VisitGeometry(feature, kAxisItemType, [&](ProGeomitem* axis, ProError) {
    item = *axis;
    found = true;
    return PRO_TK_E_FOUND;
  });
  if (!found) return MakeFailureResult(L"Datum axis was created but its geometry handle was not found.");
  return MakeSuccessResult();
}

}  // namespace

bool FindDatumPlane(ProMdl model, const std::wstring& name, ProModelitem& item) {
  return FindItem(model, kSurfaceItemType, name, item) || FindItem(model, kDatumPlaneItemType, name, item);
}

CreoMcpOperationResult ResolveDirection(ProMdl model, const std::wstring& word, ProModelitem& item) {
  const std::wstring plane = DirectionPlaneName(word);
  if (FindDatumPlane(model, plane, item)) return MakeSuccessResult();
  return MakeFailureResult(Format(L"Could not resolve direction '%s' to datum plane '%s'.", word, plane));
}

CreoMcpOperationResult ResolvePatternAxis(ProMdl model, const std::wstring& word, ProModelitem& item) {
  const std::wstring axis = NormalizeWord(word);
  if (axis.empty()) return MakeFailureResult(L"'axis' is required.");
  if (FindItem(model, kAxisItemType, axis, item)) return MakeSuccessResult();

  const auto planes = AxisPlanePair(axis);
  if (!planes)
    return MakeFailureResult(
        Format(L"Could not resolve axis '%s'. Use X/Y/Z or an existing axis name.", word));
  const std::wstring name = Format(L"VEK_AXIS_%s", axis);
  if (FindItem(model, kAxisItemType, name, item)) return MakeSuccessResult();

  ProModelitem first{}, second{};
  if (!FindDatumPlane(model, planes->first, first) || !FindDatumPlane(model, planes->second, second))
    return MakeFailureResult(
        Format(L"Need datum planes %s and %s to build axis '%s'.", planes->first, planes->second, word));
  return CreateDatumAxis(model, first, second, name, item);
}

}  // namespace vek::feature
