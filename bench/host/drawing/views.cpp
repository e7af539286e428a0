#include "bench/host/drawing/views.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "bench/host/drawing/projection.h"
#include "bench/host/host.h"

namespace bench {
namespace {

// How much larger a new detail is than its parent.
constexpr double kDetailEnlargement = 2;
// The sine below which directions count as parallel.
constexpr double kParallel = 1e-6;
// The part by which two distances on a sheet may differ and still be equal.
constexpr double kEqualDistance = 1e-9;

bool IsFinite(const Vector2& point) {
  return std::isfinite(point[0]) && std::isfinite(point[1]);
}

Matrix Looking(const Vector3& right, const Vector3& up, const Vector3& at_reader) {
  Matrix matrix = kNoMove;
  for (int row = 0; row < 3; ++row) {
    matrix[row][0] = right[row];
    matrix[row][1] = up[row];
    matrix[row][2] = at_reader[row];
  }
  return matrix;
}

// The views around one in third angle.
enum class Side { kRight, kLeft, kAbove, kBelow, kBack };

Matrix SeenFrom(const DrawingView& front, Side side) {
  const Vector3 x = front.Axis(0), y = front.Axis(1), z = front.Axis(2);
  switch (side) {
    case Side::kRight:
      return Looking(-1 * z, y, x);
    case Side::kLeft:
      return Looking(z, y, -1 * x);
    case Side::kAbove:
      return Looking(x, -1 * z, y);
    case Side::kBelow:
      return Looking(x, z, -1 * y);
    case Side::kBack:
      return Looking(-1 * x, y, -1 * z);
  }
  return front.orientation;
}

// Puts the view's middle on its centre. False, after a complaint, when the kernel doesn't tell the middle.
bool Anchor(const Drawing& drawing, DrawingView& view) {
  try {
    const auto bounds = UncutBoundsOf(drawing, view);
    view.anchor = bounds ? bounds->Middle() : Vector2{};
    return true;
  } catch (const NoProjection& failure) {
    Complain(std::string("a view could not be projected: ") + failure.what());
    return false;
  }
}

DrawingView* Enter(Model& drawing, std::unique_ptr<DrawingView> view) {
  Drawing& sheets = *drawing.drawing;
  view->id = sheets.next_view++;
  view->name = L"new_view_" + std::to_wstring(view->id);
  sheets.views.push_back(std::move(view));
  drawing.modified = true;
  return sheets.views.back().get();
}

// Whether a point lies within the closed polygon of the spline's points.
bool LiesWithin(const Vector2& point, const std::vector<Vector2>& polygon) {
  bool within = false;
  for (std::size_t i = 0, before = polygon.size() - 1; i < polygon.size(); before = i++) {
    const Vector2 &a = polygon[before], &b = polygon[i];
    if ((a[1] > point[1]) == (b[1] > point[1])) continue;
    within ^= point[0] < a[0] + (point[1] - a[1]) / (b[1] - a[1]) * (b[0] - a[0]);
  }
  return within;
}

bool LiesWithin(const Vector2& point, const Rectangle& box) {
  return point[0] >= box.low[0] && point[0] <= box.high[0] && point[1] >= box.low[1] &&
         point[1] <= box.high[1];
}

double HalfOfLongerSide(const Rectangle& box) {
  return std::max(box.high[0] - box.low[0], box.high[1] - box.low[1]) / 2;
}

bool LooksAlong(const Matrix& orientation, const Vector3& normal) {
  const Vector3 at_reader{orientation[0][2], orientation[1][2], orientation[2][2]};
  return Length(Cross(at_reader, normal)) < kParallel;
}

// How the view has to be turned to look along the normal; nothing when none of the views around `front` does.
std::optional<Matrix> TurnedTo(const Vector3& normal, const DrawingView& view, const DrawingView& front) {
  if (LooksAlong(view.orientation, normal)) return view.orientation;
  if (LooksAlong(front.orientation, normal)) return front.orientation;
  for (const Side side : {Side::kAbove, Side::kRight, Side::kLeft, Side::kBelow, Side::kBack})
    if (const Matrix turned = SeenFrom(front, side); LooksAlong(turned, normal)) return turned;
  return std::nullopt;
}

}  // namespace

ProError AddGeneralView(Model& drawing, const GeneralViewRequest& request, DrawingView*& view) {
  const Drawing& sheets = *drawing.drawing;
  const auto solid = std::ranges::find(sheets.solids, request.solid, &DrawnModel::model);
  if (!request.solid || solid == sheets.solids.end()) return PRO_TK_BAD_INPUTS;
  if (request.sheet < 1 || static_cast<std::size_t>(request.sheet) > sheets.sheets.size())
    return PRO_TK_BAD_INPUTS;
  if (!IsFinite(request.at)) return PRO_TK_BAD_INPUTS;
  if (request.scale && (!(*request.scale > 0) || !std::isfinite(*request.scale))) return PRO_TK_BAD_INPUTS;
  if (!PlaceIn(request.orientation)) return PRO_TK_BAD_INPUTS;

  auto made = std::make_unique<DrawingView>();
  made->sheet = request.sheet;
  made->solid = static_cast<int>(solid - sheets.solids.begin());
  made->scale = request.scale;
  made->orientation = request.orientation;
  made->center = request.at;
  if (!Anchor(sheets, *made)) return PRO_TK_COMM_ERROR;
  view = Enter(drawing, std::move(made));
  return PRO_TK_NO_ERROR;
}

ProError AddProjectedView(Model& drawing, const DrawingView& parent, const Vector2& at, DrawingView*& view) {
  const Drawing& sheets = *drawing.drawing;
  if (parent.type == ViewType::kDetail) return PRO_TK_BAD_INPUTS;
  const Vector2 away{at[0] - parent.center[0], at[1] - parent.center[1]};
  if (!IsFinite(at) || (away[0] == 0 && away[1] == 0)) return PRO_TK_BAD_INPUTS;
  const bool beside = std::abs(away[0]) >= std::abs(away[1]) * (1 - kEqualDistance);

  auto made = std::make_unique<DrawingView>();
  made->type = ViewType::kProjected;
  made->sheet = parent.sheet;
  made->solid = parent.solid;
  made->parent = parent.id;
  if (beside)
    made->orientation = SeenFrom(parent, away[0] > 0 ? Side::kRight : Side::kLeft);
  else
    made->orientation = SeenFrom(parent, away[1] > 0 ? Side::kAbove : Side::kBelow);
  made->center = at;
  if (!Anchor(sheets, *made)) return PRO_TK_COMM_ERROR;
  // Both measure the shared direction alike, so that what is level on the model is level on the sheet.
  const int shared = beside ? 1 : 0;
  made->center[shared] = sheets.OnSheet(parent, made->anchor)[shared];
  view = Enter(drawing, std::move(made));
  return PRO_TK_NO_ERROR;
}

ProError AddDetailView(Model& drawing, const DrawingView& parent, const DetailRequest& request,
                       DrawingView*& view) {
  const Drawing& sheets = *drawing.drawing;
  if (!IsFinite(request.point) || !IsFinite(request.at)) return PRO_TK_BAD_INPUTS;
  if (request.spline.size() < 3 || !std::ranges::all_of(request.spline, IsFinite)) return PRO_TK_BAD_INPUTS;
  if (!LiesWithin(request.point, request.spline)) return PRO_TK_BAD_INPUTS;
  try {
    if (!LiesWithin(request.point, OutlineOf(sheets, parent))) return PRO_TK_BAD_INPUTS;
  } catch (const NoProjection& failure) {
    Complain(std::string("a view could not be projected: ") + failure.what());
    return PRO_TK_COMM_ERROR;
  }

  auto made = std::make_unique<DrawingView>();
  made->type = ViewType::kDetail;
  made->sheet = parent.sheet;
  made->solid = parent.solid;
  made->parent = parent.id;
  made->scale = kDetailEnlargement * sheets.ScaleOf(parent);
  made->orientation = parent.orientation;
  made->center = request.at;
  DetailArea area;
  area.point = sheets.OffSheet(parent, request.point);
  for (const Vector2& point : request.spline) area.spline.push_back(sheets.OffSheet(parent, point));
  const Rectangle box = BoxAround(area.spline);
  area.radius = HalfOfLongerSide(box);
  made->anchor = box.Middle();
  made->detail = std::move(area);
  view = Enter(drawing, std::move(made));
  return PRO_TK_NO_ERROR;
}

ProError SetSection(Model& drawing, DrawingView& view, std::wstring_view name, const DrawingView* arrows) {
  if (view.type == ViewType::kDetail) return PRO_TK_BAD_CONTEXT;
  const Drawing& sheets = *drawing.drawing;
  const Model* solid = sheets.SolidOf(view);
  const CrossSection* section = solid ? FindCrossSection(*solid, name) : nullptr;
  if (!section) return PRO_TK_E_NOT_FOUND;
  const auto plane = PlaneOfSurface(*solid, section->surface);
  if (!plane) return PRO_TK_E_NOT_FOUND;
  const auto turned = TurnedTo(plane->normal, view, arrows ? *arrows : view);
  if (!turned) return PRO_TK_BAD_INPUTS;

  if (*turned != view.orientation) {
    const Matrix before = std::exchange(view.orientation, *turned);
    if (!Anchor(sheets, view)) {
      view.orientation = before;
      return PRO_TK_COMM_ERROR;
    }
  }
  view.section = section->name;
  view.section_parent = arrows ? arrows->id : 0;
  drawing.modified = true;
  return PRO_TK_NO_ERROR;
}

ProError SetScale(Model& drawing, DrawingView& view, double scale) {
  if (!(scale > 0) || !std::isfinite(scale)) return PRO_TK_BAD_INPUTS;
  if (view.type == ViewType::kProjected) return PRO_TK_BAD_CONTEXT;
  view.scale = scale;
  drawing.modified = true;
  return PRO_TK_NO_ERROR;
}

ProError ShowDimensions(Model& drawing, DrawingView& view) {
  const Model* solid = drawing.drawing->SolidOf(view);
  if (!solid) return PRO_TK_E_NOT_FOUND;
  std::vector<int> shown;
  for (const Dimension& dimension : solid->dimensions) shown.push_back(dimension.id);
  if (shown != view.shown_dimensions) drawing.modified = true;
  view.shown_dimensions = std::move(shown);
  return PRO_TK_NO_ERROR;
}

}  // namespace bench
