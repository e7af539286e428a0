#include "addin/ops/feature/edge_selection.h"

#include <cmath>

#include "addin/host/visits.h"
#include "addin/ops/feature/frame.h"
#include "addin/ops/feature/selector_syntax.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::feature {
namespace {

// What the host calls them.
constexpr int kSurfaceItems = 5;
constexpr ProCrvcollinstrType kOneEdge = static_cast<ProCrvcollinstrType>(101);
constexpr ProCrvcollinstrType kTangentChain = static_cast<ProCrvcollinstrType>(114);

// Beyond every coordinate of a part, on either side.
constexpr double kFarOut = 1e30;

bool EdgeEnds(ProEdge edge, ProPoint3d start, ProPoint3d end) {
  return ProEdgeXyzdataEval(edge, 0, start, nullptr, nullptr, nullptr) == PRO_TK_NO_ERROR &&
         ProEdgeXyzdataEval(edge, 1, end, nullptr, nullptr, nullptr) == PRO_TK_NO_ERROR;
}

bool HasSingleNeighbor(const EdgeItem& item) {
  const ProEdge edge = EdgeOf(item);
  if (edge == nullptr) return false;
  ProEdge edge1 = nullptr, edge2 = nullptr;
  ProSurface face1 = nullptr, face2 = nullptr;
  if (ProEdgeNeighborsGet(edge, &edge1, &edge2, &face1, &face2) != PRO_TK_NO_ERROR) return false;
  return (face1 == nullptr) != (face2 == nullptr);
}

std::vector<EdgeItem> EdgesAlong(int axis, const std::vector<EdgeItem>& edges) {
  std::vector<EdgeItem> along;
  for (const EdgeItem& item : edges) {
    const ProEdge edge = EdgeOf(item);
    if (edge != nullptr && EdgeIsAlongAxis(edge, axis)) along.push_back(item);
  }
  return along;
}

std::vector<EdgeItem> OutermostEdges(const Selector& selector, const std::vector<EdgeItem>& edges) {
  std::vector<EdgeItem> measured;
  std::vector<double> values;
  for (const EdgeItem& item : edges) {
    const ProEdge edge = EdgeOf(item);
    if (edge == nullptr) continue;
    measured.push_back(item);
    values.push_back(EdgeMidCoordinate(edge, selector.axis));
  }
  std::vector<EdgeItem> outermost;
  for (const std::size_t index : OutermostValues(values, selector.kind)) outermost.push_back(measured[index]);
  return outermost;
}

// One instruction for one edge.
CreoMcpOperationResult AddEdge(const EdgeItem& edge, const EdgeCollectionWords& failures,
                               const OwnedCollection& collection, OwnedReferences& references) {
  OwnedCurveInstruction instruction;
  if (ProCrvcollinstrAlloc(kOneEdge, instruction.out()) != PRO_TK_NO_ERROR || !instruction)
    return MakeFailureResult(std::wstring(failures.instruction));
  OwnedReference made;
  if (MakeReference(edge.item, made) != PRO_TK_NO_ERROR)
    return MakeFailureResult(std::wstring(failures.edge));
  const ProReference reference = made.get();
  references.push_back(std::move(made));
  if (ProCrvcollinstrReferenceAdd(instruction.get(), reference) != PRO_TK_NO_ERROR ||
      ProCrvcollectionInstructionAdd(collection.get(), instruction.get()) != PRO_TK_NO_ERROR)
    return MakeFailureResult(std::wstring(failures.edge));
  instruction.release();
  return MakeSuccessResult();
}

}  // namespace

std::vector<ProSurface> SolidSurfaces(ProMdl model) {
  std::vector<ProSurface> surfaces;
  VisitSurfaces(model, [&surfaces](ProSurface surface, ProError) {
    surfaces.push_back(surface);
    return PRO_TK_NO_ERROR;
  });
  return surfaces;
}

std::vector<ProSurface> FeatureSurfaces(const ProFeature& feature) {
  std::vector<ProSurface> surfaces;
  ProFeature visited = feature;
  VisitGeometry(visited, kSurfaceItems, [&surfaces](ProGeomitem* item, ProError) {
    ProSurface surface = nullptr;
    if (ProGeomitemToSurface(item, &surface) == PRO_TK_NO_ERROR && surface != nullptr)
      surfaces.push_back(surface);
    return PRO_TK_NO_ERROR;
  });
  return surfaces;
}

void CollectSurfaceEdges(ProMdl model, ProSurface surface, std::vector<EdgeItem>& edges) {
  const auto add = [&](ProEdge edge, ProError) {
    EdgeItem found;
    if (ProEdgeIdGet(edge, &found.id) != PRO_TK_NO_ERROR || found.id < 0) return PRO_TK_NO_ERROR;
    for (const EdgeItem& known : edges)
      if (known.id == found.id) return PRO_TK_NO_ERROR;
    if (ProEdgeToGeomitem(static_cast<ProSolid>(model), edge, &found.item) == PRO_TK_NO_ERROR)
      edges.push_back(found);
    return PRO_TK_NO_ERROR;
  };
  VisitContours(surface, [&](ProContour contour, ProError) {
    VisitEdges(surface, contour, add);
    return PRO_TK_NO_ERROR;
  });
}

ProEdge EdgeOf(const EdgeItem& edge) {
  ProGeomitem item = edge.item;
  ProEdge handle = nullptr;
  return ProGeomitemToEdge(&item, &handle) == PRO_TK_NO_ERROR ? handle : nullptr;
}

bool EdgeSpans(ProEdge edge, std::array<double, 3>& spans) {
  ProPoint3d start{}, end{};
  if (!EdgeEnds(edge, start, end)) return false;
  for (std::size_t i = 0; i < spans.size(); ++i) spans[i] = std::fabs(end[i] - start[i]);
  return true;
}

bool EdgeIsAlongAxis(ProEdge edge, int axis) {
  ProEnttype type = PRO_ENT_NONE;
  if (ProEdgeTypeGet(edge, &type) != PRO_TK_NO_ERROR || static_cast<int>(type) != kLineEdgeType) return false;
  std::array<double, 3> spans{};
  return EdgeSpans(edge, spans) && SpansRunAlong(spans, axis);
}

double EdgeMidCoordinate(ProEdge edge, int axis) {
  ProPoint3d start{}, end{};
  return EdgeEnds(edge, start, end) ? (start[axis] + end[axis]) / 2 : 0;
}

CreoMcpOperationResult ApplyEdgeSelectors(const std::vector<std::wstring>& selectors,
                                          std::vector<EdgeItem>& edges) {
  if (selectors.empty()) return MakeSuccessResult();
  std::vector<EdgeItem> current = edges;
  for (const std::wstring& text : selectors) {
    const auto selector = ReadEdgeSelector(text);
    if (!selector)
      return MakeFailureResult(Format(L"Unsupported edge selector '%s'. Use '>Z', '<X', or '|Y'.", text));
    current = selector->kind == SelectorKind::kAlong ? EdgesAlong(selector->axis, current)
                                                     : OutermostEdges(*selector, current);
  }
  edges = std::move(current);
  return MakeSuccessResult();
}

CreoMcpOperationResult ResolveEdgeTargets(ProMdl model, const std::wstring& feature_name,
                                          const std::wstring& edge_scope,
                                          const std::vector<std::wstring>& selectors,
                                          std::vector<EdgeItem>& edges) {
  edges.clear();
  if (!feature_name.empty()) {
    FeatureInfo info;
    if (auto found = FeatureLookup(model, feature_name, info, false); !found.success) return found;
    for (const ProSurface surface : FeatureSurfaces(info.feature)) CollectSurfaceEdges(model, surface, edges);
  } else {
    for (const ProSurface surface : SolidSurfaces(model)) CollectSurfaceEdges(model, surface, edges);
    if (EqualsIgnoreCase(Trim(edge_scope), L"outer"))
      std::erase_if(edges, [](const EdgeItem& edge) { return !HasSingleNeighbor(edge); });
  }
  if (auto applied = ApplyEdgeSelectors(selectors, edges); !applied.success) return applied;
  if (edges.empty()) return MakeFailureResult(L"No edges matched the requested fillet/chamfer target.");
  return MakeSuccessResult();
}

CreoMcpOperationResult CollectEdges(std::span<const EdgeItem> edges, const EdgeCollectionWords& failures,
                                    OwnedCollection& collection, OwnedReferences& references) {
  if (ProCrvcollectionAlloc(collection.out()) != PRO_TK_NO_ERROR || !collection)
    return MakeFailureResult(std::wstring(failures.collection));
  for (const EdgeItem& edge : edges) {
    auto added = AddEdge(edge, failures, collection, references);
    if (added.success) continue;
    collection.reset();
    return added;
  }
  return MakeSuccessResult();
}

CreoMcpOperationResult EdgesToCollection(const std::vector<EdgeItem>& edges, OwnedCollection& collection,
                                         OwnedReferences& references) {
  constexpr EdgeCollectionWords kFailures = {L"Failed to allocate edge curve collection.",
                                             L"Failed to allocate edge collection instruction.",
                                             L"Failed to add edge to curve collection."};
  auto collected = CollectEdges(edges, kFailures, collection, references);
  if (!collected.success) return collected;
  // The edges stand without it.
  OwnedCurveInstruction tangents;
  if (ProCrvcollinstrAlloc(kTangentChain, tangents.out()) == PRO_TK_NO_ERROR && tangents &&
      ProCrvcollectionInstructionAdd(collection.get(), tangents.get()) == PRO_TK_NO_ERROR)
    tangents.release();
  return MakeSuccessResult();
}

CreoMcpOperationResult ResolveFaceSelector(ProMdl model, const std::vector<ProSurface>& surfaces,
                                           const std::wstring& selector, std::optional<ProGeomitem>& item) {
  item.reset();
  const auto read = ReadFaceSelector(selector);
  if (!read)
    return MakeFailureResult(
        Format(L"Unsupported face selector '%s'. Use >X, <X, >Y, <Y, >Z or <Z.", selector));
  const bool largest = read->kind == SelectorKind::kLargest;
  ProVector direction = {0, 0, 0};
  direction[read->axis] = 1;

  ProSurface taken = nullptr;
  double best = largest ? -kFarOut : kFarOut;
  for (const ProSurface surface : surfaces) {
    ProPoint3d low{}, high{};
    if (ProSurfaceExtremesEval(surface, direction, low, high) != PRO_TK_NO_ERROR) continue;
    const double value = largest ? high[read->axis] : low[read->axis];
    if (!(largest ? value > best : value < best)) continue;
    best = value;
    taken = surface;
  }
  if (taken == nullptr) return MakeFailureResult(Format(L"No surface matched selector '%s'.", selector));
  ProGeomitem found{};
  if (ProSurfaceToGeomitem(static_cast<ProSolid>(model), taken, &found) == PRO_TK_NO_ERROR) item = found;
  return MakeSuccessResult();
}

}  // namespace vek::feature
