#include "bench/kernel/render.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <utility>

#include "bench/kernel/base64.h"
#include "bench/kernel/bounds.h"
#include "bench/kernel/mesh.h"
#include "bench/kernel/picture_format.h"

namespace bench::kernel {

using nlohmann::json;

namespace {

constexpr int kMostPixels = 10000;    // a side
constexpr double kMargin = 0.05;      // of the picture's side, on each side
constexpr double kDeflection = 1e-4;  // of the scene's size
// Normals that turn to the viewer by less than this are square to the view: they waver on a wall that the
// viewer looks along.
constexpr double kEdgeOn = 1e-6;

// One part of the scene where it stands.
struct MeshInPlace {
  const Mesh* mesh = nullptr;
  gp_Trsf place;
  std::uint32_t material = 0;
};

double SizeOf(const Scene& scene, const std::vector<PlacedBody>& bodies) {
  std::map<ModelIndex, Bounds> bounds;
  Bounds all;
  for (const PlacedBody& body : bodies) {
    const auto [entry, fresh] = bounds.try_emplace(body.model);
    if (fresh) entry->second = BoundsOf(scene.models[body.model].body.Compound());
    const gp_XYZ &low = entry->second.low, &high = entry->second.high;
    for (int corner = 0; corner < 8; ++corner) {
      gp_Pnt at(corner & 1 ? high.X() : low.X(), corner & 2 ? high.Y() : low.Y(),
                corner & 4 ? high.Z() : low.Z());
      all.Add(at.Transformed(body.place).XYZ());
    }
  }
  return (all.high - all.low).Modulus();
}

// The room of the screen that a scene takes up, in millimetres, and how it becomes pixels.
class Fit {
 public:
  Fit(const Sight& sight, int width, int height) : sight_(sight), width_(width), height_(height) {}

  gp_XYZ OnScreen(const gp_XYZ& at) const {
    return {at.Dot(sight_.right), at.Dot(sight_.up), at.Dot(sight_.toward)};
  }
  void Add(const gp_XYZ& at) { room_.Add(OnScreen(at)); }

  void Settle() {
    const gp_XYZ size = room_.high - room_.low;
    const double share = 1 - 2 * kMargin;
    scale_ = std::min(share * width_ / size.X(), share * height_ / size.Y());
    middle_ = (room_.high + room_.low) / 2;
  }

  ScreenPoint Pixel(const gp_XYZ& at) const {
    const gp_XYZ away = (OnScreen(at) - middle_) * scale_;
    return {static_cast<float>(width_ / 2.0 + away.X()), static_cast<float>(height_ / 2.0 - away.Y()),
            static_cast<float>(away.Z())};
  }

 private:
  Sight sight_;
  int width_, height_;
  Bounds room_;
  double scale_ = 1;
  gp_XYZ middle_;
};

struct LineStyle {
  float width = 1;
  std::uint8_t strength = 255;
};

// Lines as thick as they are in a window, also where the picture is a poster's.
struct LineStyles {
  explicit LineStyles(int width, int height) {
    const float scale = std::clamp(static_cast<float>(std::min(width, height)) / 1080, 0.7f, 10.0f);
    sharp = {1.5f * scale, 255};
    outline = {1.5f * scale, 235};
    smooth = {1.0f * scale, 70};
  }
  LineStyle sharp, outline, smooth;
};

class Drawer {
 public:
  Drawer(const Fit& fit, const LineStyles& styles, ScreenDrawing& drawing)
      : fit_(fit), styles_(styles), drawing_(drawing) {}

  void Draw(const MeshInPlace& part) {
    nodes_.clear();
    for (const MeshNode& node : part.mesh->nodes) nodes_.push_back(Placed(node, part.place));
    for (const auto& triangle : part.mesh->triangles) {
      AddTriangle(triangle, part.material);
      AddOutline(triangle);
    }
    for (const MeshEdge& edge : part.mesh->edges) {
      const LineStyle& style = edge.is_smooth ? styles_.smooth : styles_.sharp;
      for (std::size_t i = 0; i + 1 < edge.points.size(); ++i)
        AddLine(Pixel(edge.points[i], part.place), Pixel(edge.points[i + 1], part.place), style);
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

  const Fit& fit_;
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
  const std::vector<PlacedBody> bodies = scene.Bodies();
  ScreenDrawing drawing;
  if (bodies.empty()) return Rasterized(drawing, width, height);
  const double deflection = kDeflection * SizeOf(scene, bodies);
  struct Part {
    Mesh mesh;
    std::uint32_t material = 0;
  };
  std::map<ModelIndex, Part> parts;
  std::vector<MeshInPlace> placed;
  Fit fit(sight, width, height);
  for (const PlacedBody& body : bodies) {
    const auto [entry, fresh] = parts.try_emplace(body.model);
    if (fresh) {
      entry->second = {MeshOf(scene.models[body.model].body.Compound(), deflection),
                       static_cast<std::uint32_t>(drawing.materials.size())};
      drawing.materials.emplace_back(PartColor(drawing.materials.size()));
    }
    placed.push_back({&entry->second.mesh, body.place, entry->second.material});
    for (const MeshNode& node : entry->second.mesh.nodes)
      fit.Add(gp_Pnt(node.point).Transformed(body.place).XYZ());
  }
  fit.Settle();
  const LineStyles styles(width, height);
  Drawer drawer(fit, styles, drawing);
  for (const MeshInPlace& part : placed) drawer.Draw(part);
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
