#include "bench/kernel/render.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "bench/kernel/base64.h"
#include "bench/kernel/bounds.h"
#include "bench/kernel/mesh.h"
#include "bench/kernel/picture_format.h"
#include "bench/kernel/screen_fit.h"
#include "bench/kernel/sketch_drawing.h"

namespace bench::kernel {

using nlohmann::json;

namespace {

constexpr int kMostPixels = 10000;    // a side
constexpr double kDeflection = 1e-4;  // of the scene's size
// Normals that turn to the viewer by less than this are square to the view: they waver on a wall that the
// viewer looks along.
constexpr double kEdgeOn = 1e-6;

// What a part is drawn from, in its own coordinates.
struct Shown {
  Mesh mesh;
  std::uint32_t material = 0;
  PartLines sketches;

  void AddTo(ScreenFit& fit, const gp_Trsf& place) const {
    const auto add = [&](const gp_XYZ& at) { fit.Add(gp_Pnt(at).Transformed(place).XYZ()); };
    for (const MeshNode& node : mesh.nodes) add(node.point);
    for (const SketchLines* lines : {&sketches.geometry, &sketches.guides}) {
      for (const auto& curve : lines->curves) std::ranges::for_each(curve, add);
      std::ranges::for_each(lines->points, add);
    }
  }
};

bool IsSeen(const SceneModel& model) {
  const auto draws = [](const SketchGeometry& sketch) { return !sketch.IsEmpty(); };
  return !model.body.IsEmpty() || std::ranges::any_of(model.sketches, draws);
}

// A part with solids gets a material of its own.
Shown ShownOf(const SceneModel& model, double deflection, std::vector<ShadeTable>& materials) {
  Shown shown;
  shown.sketches = LinesOf(model.sketches, deflection);
  if (model.body.IsEmpty()) return shown;
  shown.mesh = MeshOf(model.body.Compound(), deflection);
  shown.material = static_cast<std::uint32_t>(materials.size());
  materials.emplace_back(PartColor(materials.size()));
  return shown;
}

Bounds RoomOf(const SceneModel& model) {
  Bounds bounds;
  if (!model.body.IsEmpty()) bounds = BoundsOf(model.body.Compound());
  for (const SketchGeometry& sketch : model.sketches) {
    for (const auto* curves : {&sketch.curves, &sketch.guides})
      for (const SketchCurve& curve : *curves) bounds.Add(BoundsOf(curve.edge));
    for (const auto* points : {&sketch.points, &sketch.guide_points})
      for (const SketchPoint& point : *points) bounds.Add(point.at.XYZ());
  }
  return bounds;
}

double SizeOf(const Scene& scene, const std::vector<PlacedPart>& parts) {
  std::map<ModelIndex, Bounds> bounds;
  Bounds all;
  for (const PlacedPart& part : parts) {
    const auto [entry, fresh] = bounds.try_emplace(part.model);
    if (fresh) entry->second = RoomOf(scene.models[part.model]);
    if (entry->second.IsEmpty()) continue;
    const gp_XYZ &low = entry->second.low, &high = entry->second.high;
    for (int corner = 0; corner < 8; ++corner) {
      gp_Pnt at(corner & 1 ? high.X() : low.X(), corner & 2 ? high.Y() : low.Y(),
                corner & 4 ? high.Z() : low.Z());
      all.Add(at.Transformed(part.place).XYZ());
    }
  }
  return (all.high - all.low).Modulus();
}

struct LineStyle {
  float width = 1;
  std::uint8_t strength = 255;
};

// Lines are as thick as they are in a window, also where the picture is a poster's.
float LineScale(int width, int height) {
  return std::clamp(static_cast<float>(std::min(width, height)) / 1080, 0.7f, 10.0f);
}

struct LineStyles {
  explicit LineStyles(float scale) {
    sharp = {1.5f * scale, 255};
    outline = {1.5f * scale, 235};
    smooth = {1.0f * scale, 70};
  }
  LineStyle sharp, outline, smooth;
};

class Drawer {
 public:
  Drawer(const ScreenFit& fit, const LineStyles& styles, ScreenDrawing& drawing)
      : fit_(fit), styles_(styles), drawing_(drawing) {}

  void Draw(const Shown& part, const gp_Trsf& place) {
    nodes_.clear();
    for (const MeshNode& node : part.mesh.nodes) nodes_.push_back(Placed(node, place));
    for (const auto& triangle : part.mesh.triangles) {
      AddTriangle(triangle, part.material);
      AddOutline(triangle);
    }
    for (const MeshEdge& edge : part.mesh.edges) {
      const LineStyle& style = edge.is_smooth ? styles_.smooth : styles_.sharp;
      for (std::size_t i = 0; i + 1 < edge.points.size(); ++i)
        AddLine(Pixel(edge.points[i], place), Pixel(edge.points[i + 1], place), style);
    }
  }

 private:
  struct Node {
    ScreenPoint at;
    gp_XYZ normal;  // right, up, towards the viewer
  };

  ScreenPoint Pixel(gp_XYZ at, const gp_Trsf& place) const {
    place.Transforms(at);
    return fit_.Pixel(at);
  }

  Node Placed(const MeshNode& node, const gp_Trsf& place) const {
    gp_XYZ normal = fit_.OnScreen(gp_Vec(node.normal).Transformed(place).XYZ());
    if (std::abs(normal.Z()) < kEdgeOn) normal.SetZ(0);
    return {Pixel(node.point, place), normal};
  }

  // A surface that is seen from behind shows its other side.
  void AddTriangle(const std::array<std::size_t, 3>& corners, std::uint32_t material) {
    double towards = 0;
    for (const std::size_t corner : corners) towards += nodes_[corner].normal.Z();
    const double side = towards < 0 ? -1 : 1;
    ScreenTriangle triangle{.nodes = {}, .material = material};
    for (std::size_t i = 0; i < 3; ++i) {
      const Node& node = nodes_[corners[i]];
      triangle.nodes[i] = {node.at, static_cast<float>(side * node.normal.X()),
                           static_cast<float>(side * node.normal.Y())};
    }
    drawing_.triangles.push_back(triangle);
  }

  // Where a curved surface turns away from the viewer it has an outline, though no edge.
  void AddOutline(const std::array<std::size_t, 3>& corners) {
    ScreenPoint ends[2];
    int found = 0;
    for (std::size_t i = 0; i < 3 && found < 2; ++i) {
      const Node &a = nodes_[corners[i]], &b = nodes_[corners[(i + 1) % 3]];
      const double from = a.normal.Z(), to = b.normal.Z();
      if ((from > 0) == (to > 0)) continue;
      const auto share = static_cast<float>(from / (from - to));
      ends[found++] = {a.at.x + (b.at.x - a.at.x) * share, a.at.y + (b.at.y - a.at.y) * share,
                       a.at.z + (b.at.z - a.at.z) * share};
    }
    if (found == 2) AddLine(ends[0], ends[1], styles_.outline);
  }

  void AddLine(const ScreenPoint& from, const ScreenPoint& to, const LineStyle& style) {
    drawing_.lines.push_back({from, to, style.width, style.strength});
  }

  const ScreenFit& fit_;
  const LineStyles& styles_;
  ScreenDrawing& drawing_;
  std::vector<Node> nodes_;
};

int ReadPixels(const Fields& request, const char* key) {
  const int pixels = request.Integer(key);
  if (pixels < 1 || pixels > kMostPixels)
    request.Complain("'" + std::string(key) + "' must be from 1 to " + std::to_string(kMostPixels));
  return pixels;
}

PictureFormat ReadFormat(const Fields& request) {
  const std::string format = request.Text("format");
  if (format == "bmp") return PictureFormat::kBmp;
  if (format == "jpeg") return PictureFormat::kJpeg;
  if (format == "tiff") return PictureFormat::kTiff;
  request.Complain("unknown format '" + format + "'");
}

int ReadDotsPerInch(const Fields& request) {
  constexpr int kUsual = 100, kMost = 10000;
  if (!request.Has("dots_per_inch")) return kUsual;
  const int dots = request.Integer("dots_per_inch");
  if (dots < 1 || dots > kMost) request.Complain("'dots_per_inch' must be from 1 to 10000");
  return dots;
}

}  // namespace

Picture PictureOf(const Scene& scene, const Sight& sight, int width, int height) {
  std::vector<PlacedPart> parts = scene.Parts();
  std::erase_if(parts, [&](const PlacedPart& part) { return !IsSeen(scene.models[part.model]); });
  ScreenDrawing drawing;
  if (parts.empty()) return Rasterized(drawing, width, height);
  const double deflection = kDeflection * SizeOf(scene, parts);
  std::map<ModelIndex, Shown> models;
  ScreenFit fit(sight, width, height);
  for (const PlacedPart& part : parts) {
    const auto [entry, fresh] = models.try_emplace(part.model);
    Shown& shown = entry->second;
    if (fresh) shown = ShownOf(scene.models[part.model], deflection, drawing.materials);
    shown.AddTo(fit, part.place);
  }
  fit.Settle();
  const float scale = LineScale(width, height);
  const LineStyles styles(scale);
  Drawer drawer(fit, styles, drawing);
  for (const PlacedPart& part : parts) drawer.Draw(models.at(part.model), part.place);
  for (const PlacedPart& part : parts)
    Draw(models.at(part.model).sketches.guides, part.place, fit, GuidePen(scale), drawing);
  for (const PlacedPart& part : parts)
    Draw(models.at(part.model).sketches.geometry, part.place, fit, GeometryPen(scale), drawing);
  return Rasterized(drawing, width, height);
}

json AnswerRender(const Fields& request, const Scene& scene) {
  const Sight sight = ReadSight(request);
  const int width = ReadPixels(request, "width"), height = ReadPixels(request, "height");
  const PictureFormat format = ReadFormat(request);
  const int dots_per_inch = ReadDotsPerInch(request);
  return {{"bytes", Base64(PictureBytes(PictureOf(scene, sight, width, height), format, dots_per_inch))}};
}

}  // namespace bench::kernel
