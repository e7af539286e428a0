#include "addin/ops/drawing/offset_plane.h"

#include <ProFeature.h>
#include <ProModelitem.h>

#include "addin/host/element_tree_builder.h"
#include "addin/host/owned.h"
#include "addin/host/text_buffer.h"
#include "addin/host/visits.h"
#include "addin/text/format.h"

namespace vek::drawing {
namespace {

constexpr int kFeatureItem = 3;
constexpr int kSurfaceItem = 5;
constexpr int kDatumPlaneItem = 176;
constexpr int kCreateOption = 1;

ElementTreeBuilder OffsetPlaneTree(ProReference base, double offset, const std::wstring& name) {
  ElementTreeBuilder tree(386, L"Failed to allocate offset-plane element tree.");
  const auto root = tree.Root();
  tree.OnFailure(L"Failed to populate offset-plane element tree.");
  tree.Integer(root, 387, 923);  // feature type: datum plane
  tree.Text(root, 1964, name);
  const auto constraints = tree.Compound(root, 410);
  const auto constraint = tree.Compound(constraints, 411);
  tree.Integer(constraint, 412, 3);  // constraint type: offset
  tree.HeldReference(constraint, 413, base);
  tree.Double(constraint, 414, offset);
  return tree;
}

bool FirstSurface(ProFeature& feature, ProGeomitem& surface) {
  bool found = false;
  VisitGeometry(feature, kSurfaceItem, [&](ProGeomitem* item, ProError) {
    if (!found && item->id >= 0) {
      surface = *item;
      found = true;
    }
    return PRO_TK_NO_ERROR;
  });
  return found;
}

CreoMcpOperationResult SelectSolid(ProSolid solid, OwnedSelection& selection) {
  ProModelitem item{};
  if (ProMdlToModelitem(solid, &item) != PRO_TK_NO_ERROR)
    return MakeFailureResult(L"Failed to resolve solid modelitem for offset plane.");
  if (ProSelectionAlloc(nullptr, &item, selection.out()) != PRO_TK_NO_ERROR || !selection)
    return MakeFailureResult(L"Failed to allocate solid selection for offset plane.");
  return MakeSuccessResult();
}

CreoMcpOperationResult ReferToBase(const ProGeomitem& base, OwnedSelection& selection,
                                   OwnedReference& reference) {
  ProGeomitem item = base;
  if (ProSelectionAlloc(nullptr, &item, selection.out()) != PRO_TK_NO_ERROR || !selection)
    return MakeFailureResult(L"Failed to select base plane for offset.");
  if (ProSelectionToReference(selection.get(), reference.out()) != PRO_TK_NO_ERROR || !reference)
    return MakeFailureResult(L"Failed to build reference for offset plane.");
  return MakeSuccessResult();
}

// Creates the feature and finds its surface.
CreoMcpOperationResult CreatePlane(ProSolid solid, ProSelection selection, ProElement tree,
                                   ProGeomitem& surface) {
  OwnedArray<int> options;
  if (options.Allocate(1) != PRO_TK_NO_ERROR || !options)
    return MakeFailureResult(L"Failed to allocate feature create options.");
  options[0] = kCreateOption;
  ProFeature feature{};
  ProErrorlist errors{};
  const ProError status = ProFeatureWithoptionsCreate(selection, tree, options.As<ProFeatureCreateOptions>(),
                                                      0, &feature, &errors);
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"Failed to create offset cutting plane (status=%d, errors=%d).", status,
                                    errors.error_number));

  ProSolidRegenerate(solid, 0);
  if (!FirstSurface(feature, surface))
    return MakeFailureResult(L"Offset cutting plane was created but its surface could not be resolved.");
  return MakeSuccessResult();
}

}  // namespace

bool FindDatumSurface(ProSolid solid, std::wstring_view name, ProGeomitem& plane) {
  ProName buffer;
  CopyCut(buffer, name);
  ProFeature feature{};
  if (ProModelitemByNameInit(solid, static_cast<ProType>(kFeatureItem), buffer, &feature) ==
          PRO_TK_NO_ERROR &&
      FirstSurface(feature, plane))
    return true;
  return ProModelitemByNameInit(solid, static_cast<ProType>(kDatumPlaneItem), buffer, &plane) ==
         PRO_TK_NO_ERROR;
}

CreoMcpOperationResult CreateOffsetPlane(ProSolid solid, const ProGeomitem& base, double offset,
                                         const std::wstring& name, ProGeomitem& surface) {
  OwnedSelection solid_selection;
  if (auto selected = SelectSolid(solid, solid_selection); !selected.success) return selected;
  OwnedSelection base_selection;
  OwnedReference reference;
  if (auto referred = ReferToBase(base, base_selection, reference); !referred.success) return referred;

  const ElementTreeBuilder tree = OffsetPlaneTree(reference.get(), offset, name);
  if (!tree.ok()) return MakeFailureResult(tree.message());
  return CreatePlane(solid, solid_selection.get(), tree.tree(), surface);
}

}  // namespace vek::drawing
