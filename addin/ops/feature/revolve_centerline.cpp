#include "addin/ops/feature/revolve_centerline.h"

#include <ProSection.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "addin/host/owned.h"
#include "addin/ops/feature/section_access.h"
#include "addin/platform/log.h"
#include "addin/server/json_reader.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::feature {
namespace {

constexpr int kLineEntity = 2;
constexpr int kCenterlineEntity = 3;
constexpr int kNoEntity = -1;
// The half length of an added axis, in model units. An axis has no end, so its length is for the eye alone.
constexpr double kHalfAxis = 50;
constexpr double kSmallestLength = 1e-9;
// The cosine of the angle (about 45 degrees) within which a line still has the direction asked for.
constexpr double kSameDirection = 0.7;

// What the client wants for an axis.
struct AxisWish {
  std::wstring axis;  // as given
  std::wstring word;  // trimmed, in upper case
  std::vector<double> direction;
  int index = -1;  // n of "L:n" and "A:n"
};

AxisWish ReadAxisWish(const std::wstring& arguments) {
  AxisWish wish;
  wish.axis = JsonReadStringArgument(arguments, L"axis");
  wish.word = ToUpper(Trim(wish.axis));
  JsonReadNumberArray(arguments, L"axis_direction", wish.direction);
  const std::wstring& word = wish.word;
  if (word.size() >= 3 && (word[0] == L'L' || word[0] == L'A') && word[1] == L':')
    wish.index = ReadLeadingInteger(std::wstring_view(word).substr(2));
  return wish;
}

// The entity of that id, or null. It belongs to the section, and goes when it is deleted there.
const Pro2dEntdef* EntityOf(ProSection section, int id) {
  Pro2dEntdef* entity = nullptr;
  return ProSectionEntityGet(section, id, &entity) == PRO_TK_NO_ERROR ? entity : nullptr;
}

// The line to promote: a construction line that lies right or bears the wanted number, else the first
// construction line, else the plain line with the wanted number.
int ChooseLine(ProSection section, const OwnedArray<int>& ids, const AxisWish& wish) {
  int first_construction = kNoEntity;
  int indexed_line = kNoEntity;
  int lines = 0;
  int construction_lines = 0;
  for (int i = 0; i < ids.size(); ++i) {
    const int id = ids[i];
    const Pro2dEntdef* entity = EntityOf(section, id);
    if (entity == nullptr || static_cast<int>(entity->type) != kLineEntity) continue;
    ++lines;
    const auto line = *reinterpret_cast<const Pro2dLinedef*>(entity);
    if (!IsConstruction(section, id)) {
      if (wish.index >= 1 && wish.index == lines) indexed_line = id;
      continue;
    }
    ++construction_lines;
    if (first_construction == kNoEntity) first_construction = id;
    if (AxisMatchesLine(line.end1[0], line.end1[1], line.end2[0], line.end2[1], wish.axis, wish.direction))
      return id;
    if (wish.index >= 1 && wish.index == construction_lines) return id;
  }
  return first_construction != kNoEntity ? first_construction : indexed_line;
}

bool AddCenterline(ProSection section, Pro2dClinedef& centerline) {
  centerline.type = static_cast<Pro2dEntType>(kCenterlineEntity);
  int id = kNoEntity;
  return ProSectionEntityAdd(section, reinterpret_cast<Pro2dEntdef*>(&centerline), &id) == PRO_TK_NO_ERROR;
}

// Puts a centerline in the place of a line.
bool PromoteToCenterline(ProSection section, int id) {
  LogOperation(Format(L"Feature Revolve: promoting entity id=%d to centerline", id));
  const Pro2dEntdef* entity = EntityOf(section, id);
  if (entity == nullptr) return false;
  const int type = static_cast<int>(entity->type);
  if (type != kLineEntity && type != kCenterlineEntity) return false;
  // Lines and centerlines have the same record. The copy comes before the deletion, which takes the original.
  const auto line = *reinterpret_cast<const Pro2dLinedef*>(entity);
  Pro2dClinedef centerline{};
  std::ranges::copy(line.end1, centerline.end1);
  std::ranges::copy(line.end2, centerline.end2);
  if (ProSectionEntityDelete(section, id) != PRO_TK_NO_ERROR) return false;
  return AddCenterline(section, centerline);
}

bool WantsHorizontalAxis(const AxisWish& wish) {
  if (wish.word == L"X") return true;
  if (wish.direction.size() < 2) return false;
  double others = 0;
  for (std::size_t i = 1; i < wish.direction.size(); ++i)
    others = std::max(others, std::fabs(wish.direction[i]));
  return std::fabs(wish.direction[0]) > others;
}

// Adds an axis through the section's origin.
bool InjectCenterline(ProSection section, const AxisWish& wish) {
  LogOperation(L"Feature Revolve: injecting centerline from axis / axis_direction");
  Pro2dClinedef centerline{};
  const int along = WantsHorizontalAxis(wish) ? 0 : 1;
  centerline.end1[along] = -kHalfAxis;
  centerline.end2[along] = kHalfAxis;
  return AddCenterline(section, centerline);
}

void RegenerateSection(ProSection section) {
  OwnedSectionErrors errors;
  ProSecerrorAlloc(errors.out());
  const ProError status = ProSectionRegenerate(section, errors.inout());
  int count = 0;
  if (errors) ProSecerrorCount(errors.inout(), &count);
  errors.reset();
  // A section that doesn't regenerate is no failure yet: the redefinition decides.
  LogOperation(
      Format(L"Feature Revolve: section regen after centerline status=%d errCount=%d", status, count));
}

// Gives the section an axis; false when no line can serve and the client asked for none.
bool PlaceAxis(ProSection section, const OwnedArray<int>& ids, const AxisWish& wish) {
  const int line = ChooseLine(section, ids, wish);
  if (line != kNoEntity && PromoteToCenterline(section, line)) return true;
  if (wish.axis.empty() && wish.direction.size() < 2) return false;
  return InjectCenterline(section, wish);
}

}  // namespace

bool AxisMatchesLine(double x1, double y1, double x2, double y2, std::wstring_view axis,
                     std::span<const double> axis_direction) {
  const double length = std::hypot(x2 - x1, y2 - y1);
  if (!(length >= kSmallestLength)) return false;
  const double ux = (x2 - x1) / length;
  const double uy = (y2 - y1) / length;

  const std::wstring word = ToUpper(Trim(axis));
  // A sketch has no Z of its own: that axis is taken as its vertical one.
  if (word == L"Y" || word == L"Z") return std::fabs(uy) >= std::fabs(ux);
  if (word == L"X") return std::fabs(ux) >= std::fabs(uy);

  if (axis_direction.size() < 2) return true;
  const double a = axis_direction[0];
  double b = axis_direction[1];
  if (axis_direction.size() >= 3 && std::fabs(axis_direction[2]) > std::fabs(b)) b = axis_direction[2];
  const double size = std::hypot(a, b);
  if (!(size > kSmallestLength)) return true;
  return std::fabs(a / size * ux + b / size * uy) > kSameDirection;
}

bool SketchHasCenterline(const FeatureInfo& sketch) {
  ExtractedTree tree;
  ProSection section = nullptr;
  if (ExtractFeatureSection(sketch.feature, tree, section) != PRO_TK_NO_ERROR) return false;
  OwnedArray<int> ids;
  if (ProSectionEntityIdsGet(section, ids.out()) != PRO_TK_NO_ERROR) return false;
  for (int i = 0; i < ids.size(); ++i) {
    const Pro2dEntdef* entity = EntityOf(section, ids[i]);
    if (entity != nullptr && static_cast<int>(entity->type) == kCenterlineEntity) return true;
  }
  return false;
}

CreoMcpOperationResult UpdateSketchFeature(const ProFeature& feature, const ExtractedTree& tree) {
  OwnedArray<int> options;
  if (options.Allocate(1) != PRO_TK_NO_ERROR || !options)
    return MakeFailureResult(L"Failed to allocate redefine options.");
  options[0] = 0;

  ProFeature sketch = feature;
  ProErrorlist errors{};
  const ProError status = ProFeatureWithoptionsRedefine(nullptr, &sketch, tree.tree(),
                                                        options.As<ProFeatureCreateOptions>(), 0, &errors);
  options.reset();
  LogOperation(Format(L"Feature Revolve: sketch redefine status=%d errCount=%d featId=%d", status,
                      errors.error_number, sketch.id));
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(
        Format(L"Failed to update sketch with a revolve centerline (status=%d).", status));
  return MakeSuccessResult();
}

CreoMcpOperationResult PrepareRevolveCenterline(const FeatureInfo& sketch, const std::wstring& arguments) {
  if (SketchHasCenterline(sketch)) return MakeSuccessResult();
  const AxisWish wish = ReadAxisWish(arguments);

  ExtractedTree tree;
  ProSection section = nullptr;
  if (ExtractFeatureSection(sketch.feature, tree, section) != PRO_TK_NO_ERROR || section == nullptr)
    return MakeFailureResult(L"Failed to read sketch section while preparing revolve axis.");
  OwnedArray<int> ids;
  if (ProSectionEntityIdsGet(section, ids.out()) != PRO_TK_NO_ERROR || !ids)
    return MakeFailureResult(L"Sketch has no entities for a revolve axis.");

  const bool placed = PlaceAxis(section, ids, wish);
  ids.reset();
  if (!placed)
    return MakeFailureResult(
        L"Revolve requires a sketch centerline axis. Draw the axis with api_sketch_line_two_points using "
        L"\"construction\": true or \"centerline\": true (Creo maps both to a centerline).");
  RegenerateSection(section);
  if (auto updated = UpdateSketchFeature(sketch.feature, tree); !updated.success) return updated;
  if (!SketchHasCenterline(sketch))
    return MakeFailureResult(L"Sketch still has no centerline after axis promotion.");
  return MakeSuccessResult();
}

}  // namespace vek::feature
