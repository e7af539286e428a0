// The choice of edges and faces. Clients hold no handles: they name a feature, a scope and a chain of small
// selectors, and this finds what they mean in the active part.
//
// Main thread only. All coordinates are in model units.
#pragma once

#include <ProGeomitem.h>
#include <ProMdl.h>

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "addin/host/owned.h"
#include "addin/host/references.h"
#include "addin/server/operation_result.h"

namespace vek::feature {

// One edge of a list; a list holds each edge once.
struct EdgeItem {
  ProGeomitem item{};
  int id = -1;  // never negative in a list
};

// Number of the line among the types of edges.
inline constexpr int kLineEdgeType = 2;

// The surfaces of the part, or of one of its features, in the host's order.
std::vector<ProSurface> SolidSurfaces(ProMdl model);
std::vector<ProSurface> FeatureSurfaces(const ProFeature& feature);

// Appends the edges of `surface` that the list doesn't hold yet, in the order of their first visit.
void CollectSurfaceEdges(ProMdl model, ProSurface surface, std::vector<EdgeItem>& edges);

// The edge that the item names; null when the host doesn't know it.
ProEdge EdgeOf(const EdgeItem& edge);

// How far apart the edge's two ends lie on each axis; false when it can't be evaluated.
bool EdgeSpans(ProEdge edge, std::array<double, 3>& spans);

// Whether a straight edge runs along the axis (0, 1, 2), give or take some 14 degrees.
bool EdgeIsAlongAxis(ProEdge edge, int axis);

// The middle between the edge's ends on the axis, which for an arc is the middle of its chord; 0 for an edge
// that can't be evaluated.
double EdgeMidCoordinate(ProEdge edge, int axis);

// Narrows `edges` down, selector by selector, each on what the one before left; nothing may be left. On
// failure, a selector that means nothing, `edges` stays as it was.
CreoMcpOperationResult ApplyEdgeSelectors(const std::vector<std::wstring>& selectors,
                                          std::vector<EdgeItem>& edges);

// The edges of the named feature, or of the whole part when `feature_name` is empty, narrowed down. Only
// without a feature `edge_scope` is looked at: "outer" keeps the edges with a single neighbouring surface,
// which a closed solid hasn't any of; every other word keeps all. Fails when no edge is left.
CreoMcpOperationResult ResolveEdgeTargets(ProMdl model, const std::wstring& feature_name,
                                          const std::wstring& edge_scope,
                                          const std::vector<std::wstring>& selectors,
                                          std::vector<EdgeItem>& edges);

// What a failure to put edges into a collection is called.
struct EdgeCollectionWords {
  std::wstring_view collection;
  std::wstring_view instruction;
  std::wstring_view edge;
};

// A collection of exactly these edges, one instruction each. `references` receives what the collection refers
// to and must outlive it. On failure `collection` is empty.
CreoMcpOperationResult CollectEdges(std::span<const EdgeItem> edges, const EdgeCollectionWords& failures,
                                    OwnedCollection& collection, OwnedReferences& references);

// The collection that rounds and chamfers take: the edges, and what runs on from them tangentially.
CreoMcpOperationResult EdgesToCollection(const std::vector<EdgeItem>& edges, OwnedCollection& collection,
                                         OwnedReferences& references);

// The outermost of `surfaces`, which stand in the host's order; among equals the first. A surface that can't
// be made an item leaves `item` empty, which is no failure.
CreoMcpOperationResult ResolveFaceSelector(ProMdl model, const std::vector<ProSurface>& surfaces,
                                           const std::wstring& selector, std::optional<ProGeomitem>& item);

}  // namespace vek::feature
