#include "bench/kernel/features/draft.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRepOffsetAPI_DraftAngle.hxx>
#include <Standard_Failure.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <cmath>
#include <gp_Lin.hxx>
#include <gp_Pln.hxx>
#include <numbers>
#include <optional>

#include "bench/kernel/keys.h"
#include "bench/kernel/refusal.h"
#include "bench/kernel/solid_in_work.h"
#include "bench/kernel/stage.h"

namespace bench::kernel {

namespace {

constexpr double kLargestAngle = 30;      // degrees
constexpr double kAngleTolerance = 1e-9;  // degrees
constexpr double kLevelTolerance = 1e-6;  // mm
constexpr double kParallel = 1e-9;        // rad

// A direction and its opposite are one edge: the sense is that in which the largest component is positive, of
// equal ones the first.
gp_Dir PullAlong(const KeyedEdge& edge) {
  const BRepAdaptor_Curve curve(edge.edge);
  if (curve.GetType() != GeomAbs_Line) throw Refusal("The pull direction must be a straight edge.");
  const gp_Dir along = curve.Line().Direction();
  constexpr double kEqual = 1e-9;
  int largest = 1;
  for (const int i : {2, 3})
    if (std::abs(along.Coord(i)) > std::abs(along.Coord(largest)) + kEqual) largest = i;
  return along.Coord(largest) < 0 ? along.Reversed() : along;
}

// How far along the pull an edge lies that is level with it; nothing when it isn't.
std::optional<double> LevelOf(const TopoDS_Edge& edge, const gp_Dir& pull) {
  constexpr int kSamples = 16;
  const BRepAdaptor_Curve curve(edge);
  const double first = curve.FirstParameter(), step = (curve.LastParameter() - first) / kSamples;
  const double level = curve.Value(first).XYZ().Dot(pull.XYZ());
  for (int i = 1; i <= kSamples; ++i)
    if (std::abs(curve.Value(first + i * step).XYZ().Dot(pull.XYZ()) - level) > kLevelTolerance)
      return std::nullopt;
  return level;
}

struct DraftRecipe {
  std::vector<std::string> faces;
  std::vector<std::string> hinges;
  std::string direction;
  double angle_deg = 0;
};

using Hinges = std::vector<const KeyedEdge*>;

// How a face turns: about the line in which it meets a plane, towards the material as one goes along that
// plane's normal. Radians.
struct Tilt {
  const KeyedFace* face = nullptr;
  gp_Pln neutral;
  double turn = 0;
};

[[noreturn]] void RefuseFace(const KeyedFace& face) {
  throw Refusal("Face " + face.key + " can't be drafted.");
}

[[noreturn]] void RefuseHinge(const KeyedEdge& hinge) {
  throw Refusal("No drafted face can turn about edge " + hinge.key + ".");
}

// A plane turns about any straight hinge until it has the angle to the pull, which need not be square to the
// hinge: the edge of a face that leans already gives a pull that leans too.
Tilt PlaneTilt(const KeyedFace& face, const Hinges& hinges, const gp_Dir& pull, double angle) {
  std::optional<gp_Lin> line;
  for (const KeyedEdge* hinge : hinges) {
    const BRepAdaptor_Curve curve(hinge->edge);
    if (curve.GetType() != GeomAbs_Line) RefuseHinge(*hinge);
    if (line && (line->Distance(curve.Value(curve.FirstParameter())) > kLevelTolerance ||
                 line->Distance(curve.Value(curve.LastParameter())) > kLevelTolerance))
      throw Refusal("Face " + face.key + " has hinges on several lines.");
    line = curve.Line();
  }
  const gp_XYZ normal = face.facts->inside.normal.XYZ(), along = line->Direction().XYZ();
  gp_XYZ up = normal.Crossed(along);
  if (up.Dot(pull.XYZ()) < 0) up.Reverse();
  // The turned normal is cos t · normal + sin t · up, and makes the sine of the angle with the pull.
  const double towards = normal.Dot(pull.XYZ()), upwards = up.Dot(pull.XYZ());
  const double sine = std::sin(angle) / std::hypot(towards, upwards);
  constexpr double kLeast = 1e-6;
  if (upwards < kLeast || std::abs(sine) > 1) RefuseFace(face);
  const gp_Dir across(pull.XYZ() - pull.XYZ().Dot(along) * along);
  return {&face, gp_Pln(line->Location(), across), std::asin(sine) - std::atan2(towards, upwards)};
}

// A cylinder or cone becomes another cone about its axis, which is the pull.
Tilt TurnedTilt(const KeyedFace& face, const Hinges& hinges, const gp_Dir& pull, double angle) {
  if (!face.facts->frame.axis->IsParallel(pull, kParallel)) RefuseFace(face);
  std::optional<double> found;
  for (const KeyedEdge* hinge : hinges) {
    const auto level = LevelOf(hinge->edge, pull);
    if (!level || (found && std::abs(*found - *level) > kLevelTolerance)) RefuseHinge(*hinge);
    found = level;
  }
  const double leans = std::asin(face.facts->inside.normal.Dot(pull));
  return {&face, gp_Pln(gp_Pnt(*found * pull.XYZ()), pull), angle - leans};
}

Tilt TiltOf(const KeyedFace& face, const Hinges& all, const gp_Dir& pull, double angle) {
  Hinges own;
  for (const KeyedEdge* hinge : all)
    if (hinge->first == &face || hinge->second == &face) own.push_back(hinge);
  if (own.empty()) throw Refusal("Face " + face.key + " has no hinge.");
  const std::string type = face.facts->frame.type;
  if (type == "plane") return PlaneTilt(face, own, pull, angle);
  if (type == "cylinder" || type == "cone") return TurnedTilt(face, own, pull, angle);
  RefuseFace(face);
}

std::vector<Tilt> ReadTilts(const DraftRecipe& recipe, const BodyKeys& keys, const gp_Dir& pull) {
  Hinges hinges;
  for (const std::string& key : recipe.hinges) hinges.push_back(&keys.Edge(key));
  std::vector<Tilt> tilts;
  for (const std::string& key : recipe.faces)
    tilts.push_back(TiltOf(keys.Face(key), hinges, pull, recipe.angle_deg * std::numbers::pi / 180));
  for (const KeyedEdge* hinge : hinges) {
    const bool is_hinge = std::ranges::any_of(
        tilts, [&](const Tilt& tilt) { return hinge->first == tilt.face || hinge->second == tilt.face; });
    if (!is_hinge) throw Refusal("Hinge " + hinge->key + " is no edge of the drafted faces.");
  }
  return tilts;
}

// The drafted faces of one solid, tilted.
void TiltIn(const SolidInWork& solid, const std::vector<Tilt>& tilts, NamedShape& body) {
  BRepOffsetAPI_DraftAngle maker(solid.Solid());
  for (const Tilt& tilt : tilts) {
    // The toolkit takes along what runs on tangentially, and does nothing when it has taken the face already.
    maker.Add(solid.CopyOf(*tilt.face), tilt.neutral.Axis().Direction(), tilt.turn, tilt.neutral);
    if (!maker.AddDone()) RefuseFace(*tilt.face);
  }
  constexpr const char* kNoRoom = "The body has no room for the draft.";
  try {
    maker.Build();
    if (!maker.IsDone()) throw Refusal(kNoRoom);
  } catch (const Standard_Failure&) {
    throw Refusal(kNoRoom);
  }
  const Descent descent = [&maker](const TopoDS_Face& face) {
    return std::vector<TopoDS_Face>{TopoDS::Face(maker.ModifiedShape(face))};
  };
  if (!solid.Finish(maker.Shape(), descent, {}, body)) throw Refusal(kNoRoom);
}

class DraftFeature : public Feature {
 public:
  explicit DraftFeature(DraftRecipe recipe) : recipe_(std::move(recipe)) {}

  void Build(const FeaturePlace&, const Before& before, Stage& stage) const override {
    if (!(std::abs(recipe_.angle_deg) <= kLargestAngle + kAngleTolerance))
      throw Refusal("The angle must be between -30 and 30 degrees.");
    const BodyKeys keys(stage.body, before.facts);
    const gp_Dir pull = PullAlong(keys.Edge(recipe_.direction));
    const std::vector<Tilt> tilts = ReadTilts(recipe_, keys, pull);
    if (tilts.empty()) throw Refusal("The draft names no face.");

    NamedShape body;
    for (const TopoDS_Solid& solid : stage.body.solids) {
      std::vector<Tilt> own;
      const SolidInWork in_work(solid, keys);
      for (const Tilt& tilt : tilts)
        if (in_work.Has(*tilt.face)) own.push_back(tilt);
      if (own.empty())
        KeepSolid(solid, stage.body.names, body);
      else
        TiltIn(in_work, own, body);
    }
    stage.body = Unified(body);
  }

 private:
  DraftRecipe recipe_;
};

}  // namespace

std::unique_ptr<const Feature> ReadDraft(const Fields& fields, const std::string&) {
  DraftRecipe recipe;
  recipe.faces = fields.Texts("faces");
  recipe.hinges = fields.Texts("hinges");
  recipe.direction = fields.Text("direction");
  recipe.angle_deg = fields.Number("angle_deg");
  return std::make_unique<DraftFeature>(std::move(recipe));
}

}  // namespace bench::kernel
