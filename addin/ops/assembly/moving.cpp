#include "addin/ops/assembly/moving.h"

#include <cmath>

#include "addin/ops/assembly/display.h"
#include "addin/ops/assembly/placement.h"
#include "addin/ops/common/history.h"
#include "addin/ops/common/units.h"
#include "addin/server/json_reader.h"
#include "addin/server/json_writer.h"
#include "addin/text/format.h"

namespace vek::assembly {
namespace {

// A factor smaller than this is none.
constexpr double kSmallestScale = 1e-18;

Translation InMillimetres(ProMdl assembly, const Translation& at) {
  const double scale = MmToModelGuarded(assembly, 1.0);
  if (std::abs(scale) < kSmallestScale) return at;
  return {at.x / scale, at.y / scale, at.z / scale};
}

Translation Shifted(ProMdl assembly, const Translation& from, const Translation& shift_mm) {
  return {from.x + MmToModelGuarded(assembly, shift_mm.x), from.y + MmToModelGuarded(assembly, shift_mm.y),
          from.z + MmToModelGuarded(assembly, shift_mm.z)};
}

// Where an occurrence stands after a move, by the way of reading it that agrees with the target.
struct ReadBack {
  bool on_target = false;
  Translation at;
};

ReadBack ReadPlace(ProMdl assembly, const OccurrenceInfo& info, const Translation& target) {
  Pose direct, by_path;
  ReadComponentPosition(info.comp, direct);
  ReadOccurrencePose(assembly, info, by_path);
  const bool match_direct = PoseMatches(direct, target);
  const bool match_path = PoseMatches(by_path, target);
  return {match_direct || match_path, PoseTranslation(match_direct ? direct : by_path)};
}

std::wstring MoveData(const std::wstring& name, const Translation& from, const Translation& to) {
  return Format(LR"({"occurrence_name":"%s","from_mm":[%g,%g,%g],"to_mm":[%g,%g,%g],"delta_mm":[%g,%g,%g]})",
                JsonEscape(name), from.x, from.y, from.z, to.x, to.y, to.z, to.x - from.x, to.y - from.y,
                to.z - from.z);
}

}  // namespace

CreoMcpOperationResult MoveComponent(const std::wstring& arguments) {
  ProMdl assembly = nullptr;
  if (auto active = RequireActiveAssembly(assembly); !active.success) return active;
  OccurrenceInfo info;
  if (auto found = ResolveNamedOccurrence(assembly, arguments, info); !found.success) return found;
  Translation shift;
  JsonReadNumber(arguments, L"dx_mm", shift.x);
  JsonReadNumber(arguments, L"dy_mm", shift.y);
  JsonReadNumber(arguments, L"dz_mm", shift.z);

  Pose pose;
  if (ReadComponentPosition(info.comp, pose) != PRO_TK_NO_ERROR)
    if (auto read = ReadOccurrencePose(assembly, info, pose); !read.success) return read;
  const Translation from = PoseTranslation(pose);
  const Translation from_mm = InMillimetres(assembly, from);
  const Translation target = Shifted(assembly, from, shift);

  if (auto released = ReleaseOccurrence(assembly, info); !released.success) return released;
  const auto persisted = PersistTranslation(assembly, info, target);
  ShowAssembly(assembly);
  RefreshOccurrence(assembly, info);
  const ReadBack place = ReadPlace(assembly, info, target);
  const Translation to_mm = InMillimetres(assembly, place.at);
  std::wstring data = MoveData(info.name, from_mm, to_mm);

  if (!persisted.success) return {false, persisted.message, std::move(data)};
  if (!place.on_target)
    return {false,
            Format(L"Occurrence '%s' pose did not update (requested delta (%g,%g,%g) mm).", info.name,
                   shift.x, shift.y, shift.z),
            std::move(data)};
  PushMove(info.name, {from_mm.x, from_mm.y, from_mm.z}, {to_mm.x, to_mm.y, to_mm.z});
  return MakeSuccessResult(
      Format(L"Occurrence '%s' moved by (%g,%g,%g) mm.", info.name, shift.x, shift.y, shift.z),
      std::move(data));
}

void RegisterMovingOperations(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_assembly_move_component", MoveComponent);
}

}  // namespace vek::assembly
