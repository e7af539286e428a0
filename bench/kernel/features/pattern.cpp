#include "bench/kernel/features/pattern.h"

#include <algorithm>
#include <gp_Mat.hxx>
#include <gp_Quaternion.hxx>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

#include "bench/kernel/features/body.h"
#include "bench/kernel/refusal.h"
#include "bench/kernel/stage.h"

namespace bench::kernel {

using nlohmann::json;

namespace {

struct PatternRecipe {
  std::vector<int> members;
  std::vector<gp_Trsf> motions;
};

// The first instance is what the members have made where they stand.
constexpr int kFirstCopy = 2;

// With which the names of a member's faces begin in an instance.
std::string CopyWord(const FeaturePlace& place, int instance, int member) {
  return WordOf(place) + ":" + std::to_string(instance) + "/" + std::to_string(member);
}

// Turns keys of what the members have made into those of what one instance has.
class KeyTranslation {
 public:
  KeyTranslation(const FeaturePlace& place, int instance, const std::vector<int>& members, bool turned)
      : place_(place), instance_(instance), members_(members.begin(), members.end()), turned_(turned) {}

  // In every text of a recipe; what is no key of the members stays.
  json Translated(const json& value) const {
    if (value.is_string()) return Text(value.get<std::string>());
    json result = value;
    if (value.is_structured())
      for (json& child : result) child = Translated(child);
    return result;
  }

 private:
  // Each name of a face begins with its feature's id, in a key and in the names that a key holds in turn:
  // "50:round:(41:end|41:side:3)|41:end".
  std::string Text(const std::string& text) const {
    std::string result;
    bool is_members = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
      const bool is_start = i == 0 || text[i - 1] == '|' || text[i - 1] == '(';
      const std::size_t end = text.find_first_not_of("0123456789", i);
      if (is_start && end != std::string::npos && text[end] == ':') {
        const auto member = std::find_if(members_.begin(), members_.end(), [&](int each) {
          return text.compare(i, end - i, std::to_string(each)) == 0;
        });
        if (member != members_.end()) {
          result += CopyWord(place_, instance_, *member);
          is_members = true;
          i = end;
        }
      }
      result += text[i];
    }
    // Parts of one face are numbered by their places, and turning exchanges those.
    if (is_members && turned_ && text.find('#') != std::string::npos)
      throw Refusal("What stands on " + text + " can't be turned with it.");
    return result;
  }

  FeaturePlace place_;
  int instance_;
  std::set<int> members_;
  bool turned_;
};

const Recipe& Find(const Before& before, int feature) {
  for (const Recipe& recipe : before.recipes)
    if (recipe.feature == feature) return recipe;
  throw Refusal("Feature " + std::to_string(feature) + " has no geometry that could be repeated.");
}

std::shared_ptr<const Feature> Again(const Recipe& recipe, const KeyTranslation& keys,
                                     const gp_Trsf& motion) {
  if (recipe.content->StandsOnKeysAlone()) {
    const json translated = keys.Translated(json::parse(recipe.text));
    return ReadRecipes(json::array({translated})).front().content;
  }
  std::shared_ptr<const Feature> moved = recipe.content->Moved(motion);
  if (!moved)
    throw Refusal("Feature " + std::to_string(recipe.feature) + " is of a kind that can't be repeated.");
  return moved;
}

// Under numbers that follow on each other: what sketches draw has the numbers of their entities, and several
// copies would share those.
void AddDrawn(const SketchGeometry& drawn, SketchGeometry& all) {
  for (const SketchCurve& curve : drawn.curves)
    all.curves.push_back({static_cast<int>(all.curves.size()) + 1, curve.edge});
  for (const SketchPoint& point : drawn.points)
    all.points.push_back({static_cast<int>(all.points.size()) + 1, point.at});
  all.guides.insert(all.guides.end(), drawn.guides.begin(), drawn.guides.end());
  all.guide_points.insert(all.guide_points.end(), drawn.guide_points.begin(), drawn.guide_points.end());
}

class PatternFeature : public Feature {
 public:
  explicit PatternFeature(PatternRecipe recipe) : recipe_(std::move(recipe)) {}

  void Build(const FeaturePlace& place, const Before& before, Stage& stage) const override {
    SketchGeometry drawn;
    int copies = 0;
    for (std::size_t i = 0; i < recipe_.motions.size(); ++i) {
      const int instance = kFirstCopy + static_cast<int>(i);
      const gp_Trsf& motion = recipe_.motions[i];
      const bool turned = motion.Form() != gp_Translation;
      const KeyTranslation keys(place, instance, recipe_.members, turned);
      for (const int member : recipe_.members) {
        FeaturePlace copy = place;
        copy.copy = ++copies;
        copy.word = CopyWord(place, instance, member);
        stage.drawn = {};
        BuildCopy(*Again(Find(before, member), keys, motion), copy, before, stage);
        AddDrawn(stage.drawn, drawn);
      }
    }
    stage.drawn = std::move(drawn);
  }

 private:
  static void BuildCopy(const Feature& feature, const FeaturePlace& place, const Before& before,
                        Stage& stage) {
    const NamedShape body = stage.body;
    try {
      feature.Build(place, before, stage);
    } catch (const Refusal& refusal) {
      throw Refusal("Copy " + place.word + " can't be made: " + refusal.what());
    }
    if (feature.ShapesTheBody() && !HasChanged(body, stage.body, place))
      throw Refusal("Copy " + place.word + " adds and removes nothing.");
  }

  PatternRecipe recipe_;
};

// How far the rows of a rotation may be from a right-handed frame.
constexpr double kRotationTolerance = 1e-6;

double Size(const gp_Mat& matrix) {
  double size = 0;
  for (int row = 1; row <= 3; ++row) size = std::max(size, matrix.Row(row).Modulus());
  return size;
}

// Rotation and translation, row by row: what "motions" holds twelve numbers of each.
gp_Trsf ReadMotion(const Fields& fields, const json& values) {
  constexpr std::size_t kNumbers = 12;
  double m[kNumbers]{};
  if (!values.is_array() || values.size() != kNumbers) fields.Complain("each of 'motions' has 12 numbers");
  for (std::size_t i = 0; i < kNumbers; ++i) {
    if (!values[i].is_number()) fields.Complain("each of 'motions' has 12 numbers");
    m[i] = values[i].get<double>();
  }
  const gp_Mat rotation(m[0], m[1], m[2], m[4], m[5], m[6], m[8], m[9], m[10]);
  const gp_Mat unity(1, 0, 0, 0, 1, 0, 0, 0, 1);
  const double stretch = Size(rotation.Multiplied(rotation.Transposed()).Subtracted(unity));
  if (!(stretch <= kRotationTolerance && rotation.Determinant() > 0))
    fields.Complain("each of 'motions' must be rigid");
  gp_Trsf motion;
  const gp_Vec translation(m[3], m[7], m[11]);
  // By way of a quaternion, the last digits of the rows make no scale.
  if (Size(rotation.Subtracted(unity)) > 0)
    motion.SetTransformation(gp_Quaternion(rotation), translation);
  else
    motion.SetTranslation(translation);
  return motion;
}

}  // namespace

std::unique_ptr<const Feature> ReadPattern(const Fields& fields, const std::string&) {
  PatternRecipe recipe;
  for (const json& member : fields.Array("members"))
    recipe.members.push_back(fields.AsInteger(member, "each of 'members'"));
  for (const json& motion : fields.Array("motions")) recipe.motions.push_back(ReadMotion(fields, motion));
  if (recipe.members.empty() || recipe.motions.empty())
    fields.Complain("a pattern needs members and motions");
  return std::make_unique<PatternFeature>(std::move(recipe));
}

}  // namespace bench::kernel
