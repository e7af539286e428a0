#include "addin/ops/feature/draft_geometry.h"

#include <algorithm>
#include <cmath>

#include "addin/ops/feature/frame.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::feature {
namespace {

struct PullWord {
  const wchar_t* word;
  PullVector vector;
};

constexpr PullWord kPullWords[] = {
    {L"X", {1, 0, 0}}, {L"YZ", {1, 0, 0}}, {L"RIGHT", {1, 0, 0}},  //
    {L"Y", {0, 1, 0}}, {L"XZ", {0, 1, 0}}, {L"FRONT", {0, 1, 0}},  //
    {L"Z", {0, 0, 1}}, {L"XY", {0, 0, 1}}, {L"TOP", {0, 0, 1}},
};

constexpr int kPlaneType = 34;
constexpr double kShortestNormal = 1e-12;
// A plane whose normal is nearer to the pull direction than this cosine is an end face.
constexpr double kEndFaceCosine = 0.85;

// Model units: an edge that covers less has no direction.
constexpr double kShortestSpan = 1e-9;
// An edge runs across the pull direction when it covers at most this part of its longest span along it.
constexpr double kCrosswiseRatio = 0.35;
// Puts the edges that lie on no hinge face behind all that do.
constexpr double kNotOnHingeFace = 1000000;

// The coordinate axis on which the pull direction mainly lies.
struct PullAxis {
  int axis = 0;
  int sign = 1;
};

PullAxis AxisOf(const PullVector& pull) {
  PullAxis result;
  for (int i = 1; i < 3; ++i)
    if (std::fabs(pull[i]) > std::fabs(pull[result.axis])) result.axis = i;
  result.sign = pull[result.axis] < 0 ? -1 : 1;
  return result;
}

double Length(const double (&vector)[3]) {
  return std::sqrt(vector[0] * vector[0] + vector[1] * vector[1] + vector[2] * vector[2]);
}

bool IsEndFace(ProSurface surface, const PullVector& pull) {
  ProSrftype type = PRO_SRF_NONE;
  if (ProSurfaceTypeGet(surface, &type) != PRO_TK_NO_ERROR || static_cast<int>(type) != kPlaneType)
    return false;
  ProUvParam middle = {0.5, 0.5};
  ProPoint3d point{};
  ProVector normal{};
  if (ProSurfaceXyzdataEval(surface, middle, point, nullptr, nullptr, normal) != PRO_TK_NO_ERROR)
    return false;
  const double length = Length(normal);
  if (!(length >= kShortestNormal)) return false;
  const double along = normal[0] * pull[0] + normal[1] * pull[1] + normal[2] * pull[2];
  return std::fabs(along) / (length * std::hypot(pull[0], pull[1], pull[2])) > kEndFaceCosine;
}

// The end face that lies lowest along the pull direction, or all when none can be evaluated.
std::vector<ProSurface> HingeFaces(const std::vector<ProSurface>& ends, const PullAxis& pull) {
  ProSurface lowest = nullptr;
  double best = 0;
  for (const ProSurface end : ends) {
    ProUvParam middle = {0.5, 0.5};
    ProPoint3d point{};
    ProVector normal{};
    if (ProSurfaceXyzdataEval(end, middle, point, nullptr, nullptr, normal) != PRO_TK_NO_ERROR) continue;
    const double value = pull.sign * point[pull.axis];
    if (lowest != nullptr && !(value < best)) continue;
    lowest = end;
    best = value;
  }
  if (lowest == nullptr) return ends;
  return {lowest};
}

bool Touches(ProEdge edge, const std::vector<ProSurface>& faces) {
  if (faces.empty()) return false;
  ProEdge edge1 = nullptr, edge2 = nullptr;
  ProSurface face1 = nullptr, face2 = nullptr;
  if (ProEdgeNeighborsGet(edge, &edge1, &edge2, &face1, &face2) != PRO_TK_NO_ERROR) return false;
  return std::ranges::any_of(faces, [&](ProSurface face) { return face == face1 || face == face2; });
}

// Whether the edge runs across the axis; a curved one always does.
bool IsCrosswise(ProEdge edge, int axis) {
  ProEnttype type = PRO_ENT_NONE;
  if (ProEdgeTypeGet(edge, &type) != PRO_TK_NO_ERROR) return false;
  if (static_cast<int>(type) != kLineEdgeType) return true;
  std::array<double, 3> spans{};
  if (!EdgeSpans(edge, spans)) return false;
  const double longest = std::ranges::max(spans);
  return longest >= kShortestSpan && kCrosswiseRatio * longest >= spans[axis];
}

// The search for the edges of one draft.
class EdgeSearch {
 public:
  EdgeSearch(const std::vector<ProSurface>& ends, const PullVector& pull)
      : pull_(AxisOf(pull)), hinge_faces_(HingeFaces(ends, pull_)) {}

  // Finds the hinge among the edges of one side face, and a direction edge unless there is one.
  void Visit(const std::vector<EdgeItem>& face, DraftEdges& found) const {
    auto candidate = BestCandidate(face, found);
    if (!candidate) candidate = LowestEdge(face);
    if (!candidate) return;
    const auto has_id = [](int id) { return [id](const EdgeItem& edge) { return edge.id == id; }; };
    if (std::ranges::none_of(found.hinge, has_id(candidate->id))) found.hinge.push_back(*candidate);
    if (found.direction) return;
    const auto other = std::ranges::find_if_not(face, has_id(candidate->id));
    found.direction = other != face.end() ? *other : *candidate;
  }

 private:
  double Height(ProEdge edge) const { return pull_.sign * EdgeMidCoordinate(edge, pull_.axis); }

  // The lowest edge on the hinge face, or else the lowest one that isn't known to run along the pull
  // direction. The first of those that do becomes the direction edge.
  std::optional<EdgeItem> BestCandidate(const std::vector<EdgeItem>& face, DraftEdges& found) const {
    std::optional<EdgeItem> candidate;
    double best_score = 0;
    for (const EdgeItem& item : face) {
      const ProEdge edge = EdgeOf(item);
      if (edge == nullptr) continue;
      const bool along = EdgeIsAlongAxis(edge, pull_.axis);
      if (along && !found.direction) found.direction = item;
      const bool touches = Touches(edge, hinge_faces_);
      const bool crosswise = IsCrosswise(edge, pull_.axis);
      if (!touches && !crosswise && along) continue;
      const double score = Height(edge) + (touches ? 0 : kNotOnHingeFace);
      if (candidate && !(score < best_score)) continue;
      candidate = item;
      best_score = score;
    }
    return candidate;
  }

  std::optional<EdgeItem> LowestEdge(const std::vector<EdgeItem>& face) const {
    std::optional<EdgeItem> lowest;
    double best = 0;
    for (const EdgeItem& item : face) {
      const ProEdge edge = EdgeOf(item);
      if (edge == nullptr) continue;
      const double height = Height(edge);
      if (lowest && !(height < best)) continue;
      lowest = item;
      best = height;
    }
    return lowest;
  }

  PullAxis pull_;
  std::vector<ProSurface> hinge_faces_;
};

}  // namespace

std::optional<PullVector> ReadPullDirection(const std::wstring& word) {
  std::wstring wanted = ToUpper(Trim(word));
  if (wanted.empty()) wanted = L"Z";
  for (const auto& [known, vector] : kPullWords)
    if (wanted == known) return vector;
  return std::nullopt;
}

CreoMcpOperationResult ClassifyDraftFaces(ProMdl model, const std::wstring& feature_name,
                                          const std::wstring& pull_direction, DraftFaces& faces) {
  const auto pull = ReadPullDirection(pull_direction);
  if (!pull)
    return MakeFailureResult(
        Format(L"Unsupported pull_direction '%s'. Use X/Y/Z or RIGHT/FRONT/TOP.", pull_direction));
  FeatureInfo info;
  if (auto found = FeatureLookup(model, feature_name, info, false); !found.success) return found;
  const std::vector<ProSurface> surfaces = FeatureSurfaces(info.feature);
  if (surfaces.empty())
    return MakeFailureResult(Format(L"Feature '%s' has no selectable faces.", feature_name));
  for (const ProSurface surface : surfaces)
    (IsEndFace(surface, *pull) ? faces.ends : faces.sides).push_back(surface);
  if (faces.sides.empty())
    return MakeFailureResult(Format(
        L"No draftable side faces found on '%s' for pull_direction '%s'. Try a pull_direction matching "
        L"the extrude axis.",
        feature_name, pull_direction));
  return MakeSuccessResult();
}

CreoMcpOperationResult FindDraftEdges(ProMdl model, const std::vector<ProSurface>& sides,
                                      const std::vector<ProSurface>& ends, const PullVector& pull,
                                      DraftEdges& edges) {
  const EdgeSearch search(ends, pull);
  int edge_count = 0;
  for (const ProSurface side : sides) {
    std::vector<EdgeItem> face;
    CollectSurfaceEdges(model, side, face);
    edge_count += static_cast<int>(face.size());
    search.Visit(face, edges);
  }
  if (edges.hinge.empty())
    return MakeFailureResult(
        Format(L"Could not find hinge edges on the draft faces (surfaces=%u edges=%d endFaces=%u). Try "
               L"pull_direction matching the extrude axis (X/Y/Z).",
               sides.size(), edge_count, ends.size()));
  if (!edges.direction) return MakeFailureResult(L"Could not find a pull-direction edge on the draft faces.");
  return MakeSuccessResult();
}

}  // namespace vek::feature
