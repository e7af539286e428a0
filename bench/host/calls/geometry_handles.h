// Handles on the surfaces, contours and edges of solids.
//
// They belong to the host and are in no ledger: the same item has the same handle for as long as its model is
// in session, and one whose item is gone is an invalid pointer, until the item is back.
#pragma once

#include <ProGeomitem.h>

#include <string>
#include <vector>

#include "bench/host/model/model.h"

namespace bench {

struct LiveSurface {
  Model* model = nullptr;
  int id = -1;
  const FaceInfo* face = nullptr;  // null for a datum plane, which has no bounds
  const Feature* datum = nullptr;  // of a datum plane: what it is the plane of
};

struct LiveContour {
  LiveSurface surface;
  const std::vector<std::string>* edges = nullptr;  // their keys, in their order
};

struct LiveEdge {
  Model* model = nullptr;
  int id = -1;
  const EdgeInfo* edge = nullptr;
};

// What stands behind a handle: a null one is a bad input; one that was never given out is a violation and an
// invalid pointer, and one whose item is gone is the latter alone.
ProError Resolve(ProSurface handle, LiveSurface& surface);
ProError Resolve(ProContour handle, LiveContour& contour);
ProError Resolve(ProEdge handle, LiveEdge& edge);

ProSurface HandleOfSurface(Model& model, int id);
ProEdge HandleOfEdge(Model& model, int id);
// Those of a face or an edge of the model's topology; null for a key that is no item of the model.
ProSurface HandleOfFace(Model& model, const std::string& key);
ProEdge HandleOfEdge(Model& model, const std::string& key);
// The contours of a surface, in their order.
std::vector<ProContour> HandlesOfContours(const LiveSurface& surface);

}  // namespace bench
