// Constraints and dimensions of sections. Each is solved when it is made or set: the section's entities move
// until all of them hold, or the section stays as it is.
#include <ProSecconstr.h>

#include <algorithm>
#include <cmath>

#include "bench/host/calls/array.h"
#include "bench/host/calls/section.h"
#include "bench/host/calls/selection.h"
#include "bench/host/features/section_solver.h"
#include "bench/host/host.h"
#include "bench/host/instruments/call_frame.h"

namespace bench {
namespace {

constexpr int kFirstPointType = 1, kLastPointType = 4;

bool IsPart(const SectionData& section, const SectionTarget& target) {
  return section.entities.contains(target.entity) && target.point >= kFirstPointType &&
         target.point <= kLastPointType;
}

// The targets that a caller selected in that section; nothing when one is no live selection of it.
std::optional<std::vector<SectionTarget>> ReadTargets(ProSection section, const ProSelection* selections,
                                                      int count) {
  const auto all = ArrayObjects(selections);
  if (!all || count <= 0 || static_cast<int>(all->size()) != count) return std::nullopt;
  std::vector<SectionTarget> targets;
  for (const ProSelection selection : *all) {
    const SelectedPart* part = PartSelected(selection);
    if (!part || part->section != section) return std::nullopt;
    targets.push_back(part->target);
  }
  return targets;
}

// Puts a solved section in the place of the live one.
ProError Finish(ProSection handle, SolvedSection solved) {
  if (!solved.section) {
    TheHost().announcements.Say("refused: " + solved.reason);
    return solved.no_kernel ? PRO_TK_COMM_ERROR : PRO_TK_GENERAL_ERROR;
  }
  ReplaceSection(handle, std::move(*solved.section));
  return PRO_TK_NO_ERROR;
}

}  // namespace
}  // namespace bench

using namespace bench;

ProError ProSectionEntityGetSelected(ProSection section, int entity, ProSectionPointType point,
                                     ProAsmcomppath* path, int component, ProSelection* selection) {
  HOST_CALL(section, entity, static_cast<int>(point), path, component) {
    if (!section || !selection) return PRO_TK_BAD_INPUTS;
    const SectionData* data = UseSection(section);
    if (!data) return PRO_TK_INVALID_PTR;
    const SectionTarget target{entity, static_cast<int>(point)};
    if (!data->entities.contains(entity)) return PRO_TK_E_NOT_FOUND;
    if (!IsPart(*data, target)) return PRO_TK_BAD_INPUTS;
    *selection = NewSelection(SelectedPart{section, target});
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSectionConstraintCreate(ProSection section, ProSelection* references, int count,
                                    ProConstraintType type, int* constraint) {
  HOST_CALL(section, references, count, static_cast<int>(type)) {
    if (!section || !references || !constraint) return PRO_TK_BAD_INPUTS;
    const SectionData* data = UseSection(section);
    if (!data) return PRO_TK_INVALID_PTR;
    const auto targets = ReadTargets(section, references, count);
    if (!targets) return PRO_TK_BAD_INPUTS;
    if (!data->intent_manager) return PRO_TK_BAD_CONTEXT;
    SectionData candidate = *data;
    const int id = candidate.next_constraint++;
    candidate.constraints[id] = {static_cast<int>(type), *targets};
    const ProError status = Finish(section, SolveSection(candidate));
    if (status == PRO_TK_NO_ERROR) *constraint = id;
    return status;
  };
}

ProError ProSecdimCreate(ProSection section, int* entities, ProSectionPointType* points, int count,
                         ProSecdimType type, Pro2dPnt place, int* dimension) {
  const int first = entities && count > 0 ? entities[0] : -1;
  const int first_point = points && count > 0 ? static_cast<int>(points[0]) : 0;
  HOST_CALL(section, first, first_point, count, static_cast<int>(type)) {
    if (!section || !entities || !points || count <= 0 || !place || !dimension) return PRO_TK_BAD_INPUTS;
    const SectionData* data = UseSection(section);
    if (!data) return PRO_TK_INVALID_PTR;
    SectionDimension made{static_cast<int>(type), {}, 0, {place[0], place[1]}};
    for (int i = 0; i < count; ++i) {
      made.targets.push_back({entities[i], static_cast<int>(points[i])});
      if (!IsPart(*data, made.targets.back())) return PRO_TK_BAD_INPUTS;
    }
    SectionData candidate = *data;
    const int id = candidate.next_dimension++;
    candidate.dimensions[id] = std::move(made);
    const ProError status = Finish(section, SolveSection(candidate, id));
    if (status == PRO_TK_NO_ERROR) *dimension = id;
    return status;
  };
}

ProError ProSecdimValueSet(ProSection section, int dimension, double value) {
  HOST_CALL(section, dimension, value) {
    if (!section || !std::isfinite(value)) return PRO_TK_BAD_INPUTS;
    const SectionData* data = UseSection(section);
    if (!data) return PRO_TK_INVALID_PTR;
    if (!data->dimensions.contains(dimension)) return PRO_TK_E_NOT_FOUND;
    SectionData candidate = *data;
    candidate.dimensions[dimension].value = value;
    return Finish(section, SolveSection(candidate));
  };
}
