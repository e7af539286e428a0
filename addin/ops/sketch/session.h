// Sketch sessions: sketches that live in the add-in between requests.
//
// The host holds no section open from one request to the next, so each sketch has a record here, with a
// private section that is the authoritative copy of its geometry. A commit builds the sketch's feature anew
// from the record. Main thread only.
#pragma once

#include <ProFeature.h>
#include <ProMdl.h>
#include <ProSection.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "addin/server/operation_result.h"

namespace vek::sketch {

// What the host calls the items that a sketch stands on.
inline constexpr ProType kFeatureItem = static_cast<ProType>(3);
inline constexpr ProType kSurfaceItem = static_cast<ProType>(5);
inline constexpr ProType kDatumPlaneItem = static_cast<ProType>(176);

// The letter under which a client addresses an entity, and its id in the private section. Letters: P point, L
// line, A arc or centerline, C circle, E ellipse, S spline, T native text.
struct SketchEntityRecord {
  wchar_t letter;
  int entity_id;
};

// A constraint that each commit applies. Its references are texts and mean what bears their labels at that
// moment.
struct SketchConstraintRecord {
  std::wstring type;  // lower case
  std::wstring entity1;
  std::wstring entity2;  // may be empty
};

struct SketchDimensionRecord {
  std::wstring type;  // lower case
  std::wstring entity;
  std::wstring entity2;  // may be empty
  double value = 0;      // millimetres, or degrees of an angle
  bool driven = false;   // the session tracks it, and no commit applies it
};

struct SketchSession {
  std::wstring name;  // the key in the table, and the name that the feature is to have
  ProMdl model = nullptr;
  ProSection section = nullptr;  // private, and never freed
  bool has_section = false;
  std::wstring plane_name;
  ProModelitem plane_item{};
  ProModelitem orient_item{};
  bool has_orient = false;
  int orient_dir = 4;  // what the orientation reference's normal becomes: 4 the section's +x, 1 its +y
  int plane_side = 1;
  ProFeature feature{};  // zero without a committed feature
  bool has_feature = false;
  std::vector<SketchEntityRecord> entities;  // in drawing order
  std::vector<SketchConstraintRecord> constraints;
  std::vector<SketchDimensionRecord> dimensions;
};

// The sessions of all documents by name, compared with regard to case. A session whose model has been closed
// stays; comparing its model with the active one shields it from use.
std::map<std::wstring, SketchSession>& SketchSessionTable();

// The last number that a generated name took.
extern std::int32_t SketchNameCounter;

// The session of that name, or null.
SketchSession* FindSketchSession(const std::wstring& name);

// The labels ("L:1") of the entities from index `first` on, joined by ";". A label counts the entities of its
// letter in drawing order, so labels move when an earlier entity goes.
std::wstring EntityLabelsFrom(const SketchSession& session, std::size_t first);

// The current model, when it is a part; in the words of the sketches.
CreoMcpOperationResult RequireActiveModel(ProMdl& model);

// Opens every operation that changes a sketch: the session that `sketch_name` means, in the active part, and
// the model units per millimetre.
CreoMcpOperationResult BeginGeometryOp(const std::wstring& arguments, SketchSession*& session, double& scale);

}  // namespace vek::sketch
