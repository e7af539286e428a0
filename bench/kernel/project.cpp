#include "bench/kernel/project.h"

#include <BRep_Builder.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS_Compound.hxx>
#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "bench/kernel/bounds.h"
#include "bench/kernel/linework.h"
#include "bench/kernel/section_cut.h"

namespace bench::kernel {

using nlohmann::json;

namespace {

// Curves become polylines that stay within this part of the model's size of them, but no nearer than that.
constexpr double kTolerancePerSize = 1e-4, kLeastTolerance = 1e-4;

std::optional<CuttingPlane> ReadCut(const Fields& request) {
  if (!request.Has("cut")) return std::nullopt;
  const Fields cut = request.Object("cut");
  const gp_XYZ normal = cut.Vector("normal");
  if (!(normal.Modulus() > 0)) cut.Complain("'normal' must have a length");
  return CuttingPlane{cut.Vector("origin"), normal / normal.Modulus()};
}

// Where a body was cut: which of the scene's, in their order.
struct CutFace {
  int body = 0;
  TopoDS_Face face;
};

struct CutScene {
  TopoDS_Compound rest;
  std::vector<CutFace> faces;
};

CutScene Cut(const Scene& scene, const std::optional<CuttingPlane>& plane) {
  CutScene cut;
  BRep_Builder builder;
  builder.MakeCompound(cut.rest);
  int number = 0;
  for (const PlacedPart& body : scene.Bodies()) {
    const TopoDS_Shape placed = scene.models[body.model].body.Compound().Moved(TopLoc_Location(body.place));
    const CutBody left = plane ? CutAway(placed, *plane) : CutBody{placed, {}};
    if (!left.rest.IsNull()) builder.Add(cut.rest, left.rest);
    for (const TopoDS_Face& face : left.faces) cut.faces.push_back({number, face});
    ++number;
  }
  return cut;
}

json AsJson(const gp_XY& point) {
  return {point.X() + 0.0, point.Y() + 0.0};
}

json AsJson(const Polyline& line) {
  json points = json::array();
  for (const gp_XY& point : line) points.push_back(AsJson(point));
  return points;
}

json AsJson(const std::vector<Polyline>& lines) {
  json all = json::array();
  for (const Polyline& line : lines) all.push_back(AsJson(line));
  return all;
}

}  // namespace

json AnswerProject(const Fields& request, const Scene& scene) {
  const Sight sight = ReadSight(request);
  const bool only_bounds = request.Flag("only_bounds", false);
  const CutScene cut = Cut(scene, ReadCut(request));

  json answer = {{"low", nullptr}, {"high", nullptr}};
  const Reach across = ReachOf(cut.rest, sight.right), upward = ReachOf(cut.rest, sight.up);
  double size = 0;
  if (!across.is_empty) {
    const gp_XY low(across.HeightOf(across.low), upward.HeightOf(upward.low));
    const gp_XY high(across.HeightOf(across.high), upward.HeightOf(upward.high));
    size = (high - low).Modulus();
    answer["low"] = AsJson(low);
    answer["high"] = AsJson(high);
  }
  if (only_bounds) return answer;

  const double tolerance = std::max(kTolerancePerSize * size, kLeastTolerance);
  SeenLines lines = LinesSeen(cut.rest, sight, tolerance);
  Tidy(lines, tolerance);
  answer["visible"] = AsJson(lines.visible);
  answer["hidden"] = AsJson(lines.hidden);
  answer["section"] = json::array();
  for (const auto& [body, face] : cut.faces) {
    const SectionRegion region = RegionOf(face, sight, tolerance);
    answer["section"].push_back(
        {{"body", body}, {"outer", AsJson(region.outer)}, {"holes", AsJson(region.holes)}});
  }
  return answer;
}

}  // namespace bench::kernel
