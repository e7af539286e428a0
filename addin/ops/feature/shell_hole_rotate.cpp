#include "addin/ops/feature/shell_hole_rotate.h"

#include <ProCollect.h>
#include <ProElement.h>
#include <ProGeomitem.h>
#include <ProReference.h>
#include <ProSelection.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "addin/host/element_tree_builder.h"
#include "addin/host/extracted_tree.h"
#include "addin/host/visits.h"
#include "addin/ops/common/history.h"
#include "addin/ops/common/units.h"
#include "addin/ops/feature/creation.h"
#include "addin/ops/feature/edge_selection.h"
#include "addin/ops/feature/frame.h"
#include "addin/ops/feature/rotation_matrix.h"
#include "addin/ops/feature/thread.h"
#include "addin/platform/log.h"
#include "addin/server/json_reader.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::feature {
namespace {

constexpr int kCreationOption = 6;
constexpr int kPointItemType = 66;
constexpr int kSketchPlanePath[] = {447, 450, 451};
constexpr int kWholeSolidInstruction = 4;
constexpr double kZeroDirection = 1e-12;

ElementTreeBuilder ShellTree(const std::vector<ProModelitem>& removed, double thickness) {
  ElementTreeBuilder tree(386, L"Failed to allocate shell element tree.");
  const auto root = tree.Root();
  tree.OnFailure(L"Failed to set shell feature type.");
  tree.Integer(root, 387, 928);  // feature type: shell
  tree.OnFailure(L"Failed to set shell removal surfaces.");
  if (!removed.empty()) tree.References(root, 73, removed);
  tree.OnFailure(L"Failed to set shell thickness.");
  tree.Double(root, 74, thickness);
  tree.Integer(root, 2194, 1);
  return tree;
}

struct HoleRecipe {
  ProModelitem point{};
  std::optional<ProModelitem> plane;  // of the sketch; the hole goes along its normal
  double diameter = 0;                // model units
  double depth = 0;                   // model units
};

ElementTreeBuilder HoleTree(const HoleRecipe& recipe) {
  ElementTreeBuilder tree(386, L"Failed to allocate hole element tree.");
  const auto root = tree.Root();
  tree.OnFailure(L"Failed to populate hole parameters.");
  tree.Integer(root, 387, 911);  // feature type: hole
  tree.Integer(root, 388, 1);    // feature form
  const auto hole = tree.Compound(root, 1671);
  tree.Integer(hole, 1672, 16);  // straight
  tree.Integer(hole, 3887, -1);
  tree.Double(hole, 82, recipe.diameter);
  const auto depths = tree.Compound(hole, 1684);
  const auto first_side = tree.Compound(depths, 1686);
  tree.Integer(first_side, 1688, 1);  // blind
  tree.Double(first_side, 434, recipe.depth);
  const auto second_side = tree.Compound(depths, 1685);
  tree.Integer(second_side, 1687, 6);  // none
  tree.Integer(hole, 1689, -1);
  tree.Integer(hole, 6053, -1);

  tree.OnFailure(L"Failed to set hole placement.");
  const auto placement = tree.Compound(root, 1340);
  tree.Reference(placement, 1341, recipe.point);
  tree.Integer(placement, 696, 4);  // on a point
  if (recipe.plane) {
    tree.OnFailure(L"Failed to set hole direction from the sketch plane.");
    tree.Reference(placement, 1677, *recipe.plane);
    tree.Reference(placement, 6051, *recipe.plane);
    tree.Integer(placement, 6052, 1);
  }
  return tree;
}

ElementTreeBuilder RotateTree(OwnedCollection& surfaces, const Transform& move) {
  ElementTreeBuilder tree(386, L"Failed to allocate rotate element tree.");
  const auto root = tree.Root();
  tree.OnFailure(L"Failed to populate rotate element tree.");
  tree.Integer(root, 387, 1254);  // feature type: move
  const auto moved = tree.Compound(root, 5471);
  tree.Collection(moved, 2213, surfaces);
  tree.Integer(root, 5400, 0);
  const auto moves = tree.Compound(root, 4300);
  const auto steps = tree.Compound(moves, 4301);
  const auto step = tree.Compound(steps, 4306);
  const auto transformation = tree.Compound(step, 4307);
  tree.Integer(transformation, 4308, 10);  // by a matrix
  tree.OnFailure(L"Failed to allocate rotate move value.", L"Failed to set rotate transformation matrix.");
  tree.Matrix(transformation, 4309, move.rows);
  return tree;
}

CreoMcpOperationResult CreateFromTree(ProMdl model, ElementTreeBuilder& tree, const std::wstring& kind,
                                      ProFeature& feature) {
  if (!tree.ok()) return MakeFailureResult(tree.message());
  auto created = CreateFeatureFromTree(model, tree.tree(), kCreationOption, kind, feature, true);
  tree.FreeTree();
  tree.FreeReferences();
  return created;
}

// The required length `key`, in millimetres.
CreoMcpOperationResult ReadLength(const std::wstring& arguments, const std::wstring& key, double& length) {
  if (!JsonReadNumber(arguments, key, length) || !(length > 0))
    return MakeFailureResult(Format(L"'%s' is required and must be greater than 0.", key));
  return MakeSuccessResult();
}

// A number without its fraction. What lies beyond an integer becomes the nearest one, what is no number 0:
// neither numbers a surface or a point.
int Truncated(double number) {
  if (std::isnan(number)) return 0;
  constexpr double kLowest = std::numeric_limits<int>::min(), kHighest = std::numeric_limits<int>::max();
  return static_cast<int>(std::clamp(number, kLowest, kHighest));
}

// Halves go away from zero.
int RoundedIndex(double number) {
  return Truncated(number < 0 ? number - 0.5 : number + 0.5);
}

// ---- shell

// The surfaces to remove, which may stand there twice: by their number in the visit, then by selectors.
CreoMcpOperationResult ReadRemovedSurfaces(ProMdl model, const std::wstring& arguments,
                                           std::vector<ProModelitem>& removed) {
  std::vector<double> indices;
  JsonReadNumberArray(arguments, L"face_indices", indices);
  std::vector<std::wstring> selectors;
  JsonReadStringArray(arguments, L"face_selectors", selectors);

  const std::vector<ProSurface> surfaces = SolidSurfaces(model);
  for (const double number : indices) {
    const int index = RoundedIndex(number);
    if (index < 1 || static_cast<std::size_t>(index) > surfaces.size())
      return MakeFailureResult(
          Format(L"face_indices entry %d is out of range (part has %u surfaces).", index, surfaces.size()));
    ProModelitem item{};
    if (ProSurfaceToGeomitem(static_cast<ProSolid>(model), surfaces[index - 1], &item) == PRO_TK_NO_ERROR)
      removed.push_back(item);
  }
  for (const std::wstring& selector : selectors) {
    std::optional<ProGeomitem> item;
    if (auto found = ResolveFaceSelector(model, surfaces, selector, item); !found.success) return found;
    if (item) removed.push_back(*item);
  }
  return MakeSuccessResult();
}

CreoMcpOperationResult FeatureShell(const std::wstring& arguments) {
  ProMdl model = nullptr;
  if (auto active = RequireActiveModel(model); !active.success) return active;

  double thickness_mm = 0;
  if (auto read = ReadLength(arguments, L"thickness_mm", thickness_mm); !read.success) return read;
  std::vector<ProModelitem> removed;
  if (auto read = ReadRemovedSurfaces(model, arguments, removed); !read.success) return read;

  ElementTreeBuilder tree = ShellTree(removed, MmToModel(model, thickness_mm));
  ProFeature feature{};
  if (auto created = CreateFromTree(model, tree, L"shell", feature); !created.success) return created;
  const std::wstring name = AssignFeatureName(model, feature, L"Shell");
  PushCreateFeature(name);
  const std::wstring message =
      removed.empty() ? Format(L"Closed shell '%s' created (thickness %.3g mm).", name, thickness_mm)
                      : Format(L"Shell '%s' created (thickness %.3g mm, %u removed face(s)).", name,
                               thickness_mm, removed.size());
  return MakeSuccessResult(message, FeatureNameData(name));
}

// ---- hole

struct HoleRequest {
  std::wstring sketch_name;
  double diameter_mm = 0;
  double depth_mm = 0;
  int point_index = 1;
};

CreoMcpOperationResult ReadHoleRequest(const std::wstring& arguments, HoleRequest& request) {
  request.sketch_name = JsonReadStringArgument(arguments, L"sketch_name");
  if (request.sketch_name.empty()) return MakeFailureResult(L"'sketch_name' is required.");
  if (auto read = ReadLength(arguments, L"diameter_mm", request.diameter_mm); !read.success) return read;
  if (auto read = ReadLength(arguments, L"depth_mm", request.depth_mm); !read.success) return read;
  double point_index = 1;
  if (JsonReadNumber(arguments, L"point_index", point_index))
    request.point_index = Truncated(point_index + 0.5);
  if (request.point_index < 1) return MakeFailureResult(L"'point_index' must be 1 or greater.");
  return MakeSuccessResult();
}

CreoMcpOperationResult FindHolePoint(const HoleRequest& request, const FeatureInfo& sketch,
                                     ProModelitem& point) {
  std::vector<ProModelitem> points;
  ProFeature curve = sketch.feature;
  VisitGeometry(curve, kPointItemType, [&](ProGeomitem* item, ProError) {
    points.push_back(*item);
    return PRO_TK_NO_ERROR;
  });
  if (points.empty())
    return MakeFailureResult(Format(L"Sketch '%s' has no datum points. Add a sketch point to place the hole.",
                                    request.sketch_name));
  if (static_cast<std::size_t>(request.point_index) > points.size())
    return MakeFailureResult(Format(L"point_index %d is out of range (sketch '%s' has %u point(s)).",
                                    request.point_index, request.sketch_name, points.size()));
  point = points[request.point_index - 1];
  return MakeSuccessResult();
}

// The plane on which the sketch lies. A hole can do without it.
std::optional<ProModelitem> FindSketchPlane(const FeatureInfo& sketch) {
  ExtractedTree tree;
  ProElement element = nullptr;
  OwnedReference reference;
  OwnedSelection selection;
  ProModelitem plane{};
  const bool found = tree.Extract(sketch.feature) == PRO_TK_NO_ERROR && tree.tree() != nullptr &&
                     tree.Follow(kSketchPlanePath, element) == PRO_TK_NO_ERROR &&
                     ProElementReferenceGet(element, nullptr, reference.out()) == PRO_TK_NO_ERROR &&
                     ProReferenceToSelection(reference.get(), selection.out()) == PRO_TK_NO_ERROR &&
                     ProSelectionModelitemGet(selection.get(), &plane) == PRO_TK_NO_ERROR && plane.id != 0;
  if (!found) return std::nullopt;
  LogOperation(Format(L"Feature Hole: sketch plane type=%d id=%d", plane.type, plane.id));
  return plane;
}

// Cuts the thread that the request asks for. The hole stands whatever comes of it; the answer is what the
// message has to tell.
std::wstring ThreadHole(ProMdl model, const std::wstring& arguments, const std::wstring& name,
                        const ProFeature& feature) {
  const std::wstring hole_type = JsonReadStringArgument(arguments, L"hole_type");
  const std::wstring designation = JsonReadStringArgument(arguments, L"thread_designation");
  if (designation.empty()) {
    if (ToLower(hole_type) != L"tapped") return {};
    return L" Warning: hole_type=tapped requires thread_designation (e.g. M8x1.25); no cosmetic thread "
           L"created.";
  }
  FeatureInfo hole;
  hole.name = name;
  hole.type = L"hole";
  hole.id = feature.id;
  hole.feature = feature;
  const auto threaded = AddCosmeticThread(model, hole, designation, true, 0);
  if (threaded.success) return L" " + threaded.message;
  LogOperation(L"Feature Hole: auto-thread failed: " + threaded.message);
  return L" Warning: cosmetic thread failed: " + threaded.message;
}

CreoMcpOperationResult FeatureHole(const std::wstring& arguments) {
  ProMdl model = nullptr;
  if (auto active = RequireActiveModel(model); !active.success) return active;

  HoleRequest request;
  if (auto read = ReadHoleRequest(arguments, request); !read.success) return read;
  FeatureInfo sketch;
  if (auto found = FeatureLookup(model, request.sketch_name, sketch, true); !found.success) return found;
  HoleRecipe recipe;
  if (auto found = FindHolePoint(request, sketch, recipe.point); !found.success) return found;
  recipe.plane = FindSketchPlane(sketch);
  recipe.diameter = MmToModel(model, request.diameter_mm);
  recipe.depth = MmToModel(model, request.depth_mm);

  ElementTreeBuilder tree = HoleTree(recipe);
  ProFeature feature{};
  if (auto created = CreateFromTree(model, tree, L"hole", feature); !created.success) return created;
  const std::wstring name = AssignFeatureName(model, feature, L"Hole");
  std::wstring message = Format(L"Hole '%s' created (diameter %.3g mm, depth %.3g mm) on point %d of '%s'%s.",
                                name, request.diameter_mm, request.depth_mm, request.point_index,
                                request.sketch_name, recipe.plane ? L", axis normal to sketch plane" : L"");
  message += ThreadHole(model, arguments, name, feature);
  PushCreateFeature(name);
  return MakeSuccessResult(message, FeatureNameData(name));
}

// ---- rotate

bool CollectSolidSurfaces(OwnedCollection& surfaces) {
  OwnedSurfaceInstruction instruction;
  if (ProSrfcollectionAlloc(surfaces.out()) != PRO_TK_NO_ERROR || !surfaces ||
      ProSrfcollinstrAlloc(static_cast<ProSrfcollinstrType>(kWholeSolidInstruction), PRO_B_TRUE,
                           instruction.out()) != PRO_TK_NO_ERROR ||
      !instruction || ProSrfcollectionInstructionAdd(surfaces.get(), instruction.get()) != PRO_TK_NO_ERROR)
    return false;
  instruction.release();
  return true;
}

bool ReadVector(const std::wstring& arguments, const wchar_t* key, std::array<double, 3>& vector) {
  std::vector<double> numbers;
  if (!JsonReadNumberArray(arguments, key, numbers) || numbers.size() < vector.size()) return false;
  std::copy_n(numbers.begin(), vector.size(), vector.begin());
  return true;
}

CreoMcpOperationResult FeatureTransformRotate(const std::wstring& arguments) {
  ProMdl model = nullptr;
  if (auto active = RequireActiveModel(model); !active.success) return active;

  std::array<double, 3> point{}, direction{};
  if (!ReadVector(arguments, L"axis_start", point) || !ReadVector(arguments, L"axis_direction", direction))
    return MakeFailureResult(L"'axis_start' and 'axis_direction' must each be arrays of three numbers.");
  double angle_deg = 0;
  if (!JsonReadNumber(arguments, L"angle_deg", angle_deg))
    return MakeFailureResult(L"'angle_deg' is required.");
  for (double& coordinate : point) coordinate = MmToModel(model, coordinate);
  if (std::ranges::all_of(direction, [](double part) { return std::fabs(part) < kZeroDirection; }))
    return MakeFailureResult(L"'axis_direction' must be a non-zero vector.");

  const Transform move = RotationMatrix(point, direction, angle_deg);
  OwnedCollection surfaces;
  if (!CollectSolidSurfaces(surfaces))
    return MakeFailureResult(L"Failed to collect solid surfaces to rotate.");
  ElementTreeBuilder tree = RotateTree(surfaces, move);
  ProFeature feature{};
  if (auto created = CreateFromTree(model, tree, L"rotate", feature); !created.success) return created;
  std::wstring name = FeatureDisplayName(feature);
  if (name.empty()) name = Format(L"FLEX_MOVE_%d", feature.id);
  PushCreateFeature(name);
  return MakeSuccessResult(
      Format(L"Rotated the solid body %.3g deg about the given axis (feature '%s').", angle_deg, name),
      FeatureNameData(name));
}

}  // namespace

void RegisterShellHoleOperations(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_feature_shell", FeatureShell);
  provider.RegisterOperation(L"api_feature_hole", FeatureHole);
}

void RegisterRotateOperations(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_feature_transform_rotate", FeatureTransformRotate);
}

}  // namespace vek::feature
