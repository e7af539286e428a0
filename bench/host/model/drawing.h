// Drawings: sheets, the views on them, and the cross-sections of the solids that they show.
//
// Lengths on a sheet are millimetres from its lower left corner. A view looks along -z of its own axes: its
// orientation is a row-vector matrix, so that column 0 holds the model direction that points right on the
// sheet, column 1 the one that points up, column 2 the one that points at the reader.
#pragma once

#include <ProMdl.h>

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "bench/host/instruments/opaque_handles.h"
#include "bench/host/model/rigid_place.h"

namespace bench {

struct Model;

using Vector2 = std::array<double, 2>;

struct Rectangle {
  Vector2 low{}, high{};
  Vector2 Middle() const { return {(low[0] + high[0]) / 2, (low[1] + high[1]) / 2}; }
};

// Of one point or more.
Rectangle BoxAround(const std::vector<Vector2>& points);

// The type under which callers know cross-sections as items.
constexpr auto kCrossSectionType = static_cast<ProType>(75);

// A named cut through a solid, which keeps it: a datum plane or planar face, by the id of its surface.
struct CrossSection {
  int id = -1;  // from the model's count
  std::wstring name;
  int surface = -1;
};

// Numbered as in the toolkit.
enum class ViewType { kGeneral = 0, kProjected = 1, kDetail = 3 };

struct Sheet {
  int number = 1;
  std::wstring size;  // "A3"
  double width = 0;
  double height = 0;
  double border = 0;  // from each edge to the frame that is drawn
  double scale = 1;   // of the views that are given none
};

// What a detail shows of its parent: a closed spline around a point. Both in millimetres of the model, as the
// parent's axes measure them, so that they stay on the model when the parent's scale changes.
struct DetailArea {
  Vector2 point{};
  std::vector<Vector2> spline;  // the first point is not repeated
  double radius = 0;            // half of the longer side of the box around the spline
};

struct DrawingView {
  int id = 0;  // counted from 1 in its drawing, never reused
  void* handle = NextOpaqueAddress();
  std::wstring name;
  ViewType type = ViewType::kGeneral;
  int sheet = 1;
  int solid = -1;               // index in Drawing::solids
  int parent = 0;               // id of the view that it was made from; 0 for a general view
  std::optional<double> scale;  // its own; nothing follows the sheet
  Matrix orientation = kNoMove;
  Vector2 center{};        // on the sheet: where the middle of the outline was when the view was made
  Vector2 anchor{};        // what lies there of the projected model; millimetres along the view's axes
  std::wstring section;    // name of the cross-section that cuts the model; empty: none
  int section_parent = 0;  // id of the view that shows the section's line and arrows; 0: none
  std::optional<DetailArea> detail;   // of detail views
  std::vector<int> shown_dimensions;  // ids of the model's dimensions (Dimension::Symbol)

  // The model directions that point right, up and at the reader (column 0, 1, 2 of the orientation).
  Vector3 Axis(int column) const;
  // Where a point of the model (mm) lies along the view's right and up axes (mm, unscaled).
  Vector2 Projected(const Vector3& point) const;
};

// A solid that was added to a drawing.
struct DrawnModel {
  Model* model = nullptr;  // null for one that could not be found
  std::wstring name;       // of one that isn't there: what it is called
  ProMdlType type = PRO_MDL_PART;
};

// Its name, also when it isn't there.
std::wstring NameOfDrawn(const DrawnModel& drawn);

struct Drawing {
  std::vector<Sheet> sheets;  // never empty; numbers from 1 on
  int current_sheet = 1;
  std::vector<DrawnModel> solids;
  std::vector<std::unique_ptr<DrawingView>> views;  // in the order in which they were made
  int next_view = 1;

  DrawingView* View(int id) const;                // or null
  DrawingView* ViewOf(const void* handle) const;  // or null
  const Sheet& SheetOf(const DrawingView& view) const;
  // A projected view has its parent's scale; a view without a scale of its own that of its sheet.
  double ScaleOf(const DrawingView& view) const;
  // The model that the view shows; null when it isn't there.
  Model* SolidOf(const DrawingView& view) const;
  // On the sheet: from a point along the view's axes (mm, unscaled), and back.
  Vector2 OnSheet(const DrawingView& view, const Vector2& projected) const;
  Vector2 OffSheet(const DrawingView& view, const Vector2& on_sheet) const;
};

// The drawing in session that shows the model, or null.
Model* DrawingOf(const Model& model);

// The models that a drawing shows, each behind what it places; none of another model.
std::vector<Model*> ModelsDrawnIn(const Model& drawing);

// The drawing in session that has the view, or null.
Model* DrawingWithView(const void* view);

}  // namespace bench
