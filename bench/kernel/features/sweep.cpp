#include "bench/kernel/features/sweep.h"

#include <BRepCheck_Analyzer.hxx>
#include <cmath>
#include <numbers>
#include <optional>

#include "bench/kernel/boolean.h"
#include "bench/kernel/features/body.h"
#include "bench/kernel/features/swept_piece.h"
#include "bench/kernel/features/trajectory.h"
#include "bench/kernel/measures.h"
#include "bench/kernel/refusal.h"
#include "bench/kernel/stage.h"

namespace bench::kernel {

namespace {

struct SweepRecipe {
  Sketch path;
  std::vector<Entity> section;
  std::optional<gp_Dir> x_reference;
  Operation operation = Operation::kJoin;
};

// Radians: directions that differ by less run on tangentially.
constexpr double kTangent = 1e-6;
// The sharpest corner that is mitred.
constexpr double kSharpestTurn = 179 * std::numbers::pi / 180;
// How much of their volume pieces may lose by being joined before they count as overlapping: what integration
// over curved faces leaves in doubt.
constexpr double kVolumeDoubt = 1e-5;

gp_Dir DirectionInSpace(const gp_Dir2d& direction, const gp_Ax3& plane) {
  return gp_Dir(plane.XDirection().XYZ() * direction.X() + plane.YDirection().XYZ() * direction.Y());
}

// The section's place at the start of a piece: the normal runs along the trajectory.
gp_Ax3 FrameAtStart(const PathPiece& piece, const gp_Ax3& path_plane) {
  return {InSpace(piece.curve.Start(), path_plane), DirectionInSpace(piece.DirectionAtStart(), path_plane),
          path_plane.Direction()};
}

// Where the section lies: by default its +y is the normal of the trajectory's plane.
gp_Ax3 Crosshairs(const PathPiece& piece, const SweepRecipe& recipe) {
  const gp_Ax3 frame = FrameAtStart(piece, recipe.path.plane);
  gp_Vec x = gp_Vec(recipe.path.plane.Direction()).Crossed(gp_Vec(frame.Direction()));
  if (recipe.x_reference) {
    const gp_Vec wanted(*recipe.x_reference), along(frame.Direction());
    x = wanted - along * wanted.Dot(along);
    if (!(x.Magnitude() > kTangent)) throw Refusal("The start direction runs along the trajectory.");
  }
  return {frame.Location(), frame.Direction(), gp_Dir(x)};
}

// Half the angle by which the trajectory turns left between two pieces, where that must be mitred.
std::optional<double> HalfTurn(const PathPiece& from, const PathPiece& to) {
  const double turn = from.DirectionAtEnd().Angle(to.DirectionAtStart());
  if (std::abs(turn) <= kTangent) return std::nullopt;
  if (!from.IsLine() || !to.IsLine() || std::abs(turn) > kSharpestTurn)
    throw Refusal("The corner between the trajectory's entities " + std::to_string(from.curve.entity) +
                  " and " + std::to_string(to.curve.entity) + " can't be mitred.");
  return turn / 2;
}

class SweptBody {
 public:
  SweptBody(const SweepRecipe& recipe, const FeaturePlace& place)
      : place_(place), trajectory_(TrajectoryOf(recipe.path)) {
    section_ = {Crosshairs(trajectory_.pieces.front(), recipe), recipe.section};
    for (const Entity& entity : recipe.section) last_entity_ = std::max(last_entity_, entity.id);
    const gp_Vec left = gp_Vec(recipe.path.plane.Direction()).Crossed(gp_Vec(section_.plane.Direction()));
    const Section section = BuildSection(section_);
    loops_ = section.faces.size();
    across_ = ExtentAlong(section.curves, gp_Dir2d(left.Dot(gp_Vec(section_.plane.XDirection())),
                                                   left.Dot(gp_Vec(section_.plane.YDirection()))));
  }

  NamedShape Make() const {
    std::vector<NamedShape> pieces;
    for (std::size_t i = 0; i < trajectory_.pieces.size(); ++i) pieces.push_back(SweptPiece(PieceAt(i)));
    const NamedShape joined = Joined(pieces);
    const bool sound = joined.solids.size() == loops_ && BRepCheck_Analyzer(joined.Compound()).IsValid() &&
                       VolumeOf(joined) > 0;
    if (!sound) throw Refusal("The swept section makes no valid solid.");
    return Unified(joined);
  }

 private:
  // The piece before or behind, where there is one.
  const PathPiece* Neighbour(std::size_t i, bool behind) const {
    const std::size_t count = trajectory_.pieces.size();
    if (!trajectory_.closed && i == (behind ? count - 1 : 0)) return nullptr;
    return &trajectory_.pieces[(i + (behind ? 1 : count - 1)) % count];
  }

  PieceRecipe PieceAt(std::size_t i) const {
    const PathPiece& piece = trajectory_.pieces[i];
    const PathPiece* before = Neighbour(i, false);
    const PathPiece* behind = Neighbour(i, true);
    PieceRecipe recipe{piece, trajectory_.plane, section_, across_, {}, {}, NamesOf(piece)};
    gp_Trsf to_piece;
    to_piece.SetDisplacement(FrameAtStart(trajectory_.pieces.front(), trajectory_.plane),
                             FrameAtStart(piece, trajectory_.plane));
    recipe.section.plane.Transform(to_piece);
    if (before) recipe.mitre_at_start = HalfTurn(*before, piece);
    if (behind) recipe.mitre_at_end = HalfTurn(piece, *behind);
    recipe.names.start = before ? recipe.names.joint : StartName(place_);
    recipe.names.end = behind ? recipe.names.joint : EndName(place_);
    return recipe;
  }

  PieceNames NamesOf(const PathPiece& piece) const {
    PieceNames names;
    names.place = place_;
    names.first_rank = kSideRank + piece.order * (last_entity_ + 1);
    names.path_entity = piece.curve.entity;
    const int behind_all = kSideRank + static_cast<int>(trajectory_.pieces.size()) * (last_entity_ + 1);
    names.joint = OwnName(place_, behind_all, "joint");
    return names;
  }

  static NamedShape Joined(const std::vector<NamedShape>& pieces) {
    if (pieces.size() == 1) return pieces.front();
    NamedShape others;
    for (std::size_t i = 1; i < pieces.size(); ++i) {
      others.solids.insert(others.solids.end(), pieces[i].solids.begin(), pieces[i].solids.end());
      for (const TopoDS_Face& face : pieces[i].Faces()) others.names.Bind(face, pieces[i].names.Find(face));
    }
    const NamedShape joined = Boolean(BooleanKind::kFuse, pieces.front(), others).Result();
    const double volume = VolumeOf(pieces.front()) + VolumeOf(others);
    if (volume - VolumeOf(joined) > kVolumeDoubt * volume) throw Refusal("The sweep runs into itself.");
    return joined;
  }

  FeaturePlace place_;
  Trajectory trajectory_;
  Sketch section_;
  int last_entity_ = 0;
  std::size_t loops_ = 0;
  Extent across_;
};

class SweepFeature : public Feature {
 public:
  explicit SweepFeature(SweepRecipe recipe) : recipe_(std::move(recipe)) {}

  void Build(const FeaturePlace& place, const Before&, Stage& stage) const override {
    stage.body = Apply(recipe_.operation, stage.body, SweptBody(recipe_, place).Make());
  }

  std::unique_ptr<const Feature> Moved(const gp_Trsf& motion) const override {
    SweepRecipe moved = recipe_;
    moved.path.plane.Transform(motion);
    if (moved.x_reference) moved.x_reference->Transform(motion);
    return std::make_unique<SweepFeature>(std::move(moved));
  }

 private:
  SweepRecipe recipe_;
};

}  // namespace

std::unique_ptr<const Feature> ReadSweep(const Fields& fields, const std::string& where) {
  SweepRecipe recipe;
  recipe.path = ReadSketch(fields.Object("path"), where + ", path");
  recipe.section = ReadEntities(fields.Object("section"), where + ", section");
  if (fields.Has("x_reference")) {
    const gp_XYZ direction = fields.Vector("x_reference");
    if (!(direction.Modulus() > kTangent)) fields.Complain("'x_reference' must have a length");
    recipe.x_reference = gp_Dir(direction);
  }
  recipe.operation = ReadOperation(fields);
  return std::make_unique<SweepFeature>(std::move(recipe));
}

}  // namespace bench::kernel
