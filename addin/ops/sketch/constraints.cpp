#include "addin/ops/sketch/constraints.h"

#include <ProSecconstr.h>

#include <algorithm>
#include <iterator>

#include "addin/host/owned.h"
#include "addin/ops/sketch/commit.h"
#include "addin/ops/sketch/entity_reference.h"
#include "addin/server/json_reader.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::sketch {
namespace {

struct ConstraintKind {
  const wchar_t* word;
  int number;  // the host's; of coincident and equal the one that the entities may change
  bool needs_second;
};

constexpr int kSamePoint = 0;
constexpr int kPointOnEntity = 3;
constexpr int kEqualRadii = 6;

constexpr ConstraintKind kKinds[] = {
    {L"horizontal", 1, false}, {L"vertical", 2, false},     {L"coincident", kSamePoint, true},
    {L"parallel", 7, true},    {L"perpendicular", 5, true}, {L"tangent", 4, true},
    {L"equal", 8, true},  // lengths
};

const ConstraintKind* FindKind(std::wstring_view word) {
  const auto* kind = std::find_if(std::begin(kKinds), std::end(kKinds),
                                  [&](const ConstraintKind& each) { return word == each.word; });
  return kind == std::end(kKinds) ? nullptr : kind;
}

std::wstring WhyUnknown(std::wstring_view word) {
  if (word == L"fix")
    return L"Constraint type 'fix' is not supported by Creo Toolkit. Use coincident to a construction point "
           L"instead.";
  return Format(
      L"Unknown constraint type '%s'. Supported: horizontal, vertical, coincident, parallel, perpendicular, "
      L"tangent, equal.",
      word);
}

bool IsRound(const EntityReference& reference) {
  return reference.letter == L'A' || reference.letter == L'C';
}

// An entity of a record, found in the sketch.
struct Target {
  EntityReference reference;
  int entity_id = -1;
};

// The host's number for a constraint between these entities. False with the reason in `error`.
bool NumberFor(const ConstraintKind& kind, const Target& first, const Target& second, int& number,
               std::wstring& error) {
  number = kind.number;
  const std::wstring_view word = kind.word;
  if (word == L"equal" && IsRound(first.reference) && IsRound(second.reference)) number = kEqualRadii;
  if (word != L"coincident") return true;
  const int points = IsPointReference(first.reference) + IsPointReference(second.reference);
  if (points == 0) {
    error = L"Coincident requires at least one point reference (e.g. L:1:start).";
    return false;
  }
  number = points == 2 ? kSamePoint : kPointOnEntity;
  return true;
}

ProError SelectEntity(ProSection section, const Target& target, OwnedSelection& selection) {
  return ProSectionEntityGetSelected(section, target.entity_id,
                                     static_cast<ProSectionPointType>(target.reference.point), nullptr, -1,
                                     selection.out());
}

ProError CreateConstraint(ProSection section, const std::vector<OwnedSelection>& selections, int number) {
  OwnedArray<ProSelection> array;
  const int count = static_cast<int>(selections.size());
  if (const ProError status = array.Allocate(count); status != PRO_TK_NO_ERROR) return status;
  if (!array) return PRO_TK_GENERAL_ERROR;
  for (int i = 0; i < count; ++i) array[i] = selections[static_cast<std::size_t>(i)].get();
  ProSectionIntentManagerModeSet(section, PRO_B_TRUE);
  int id = -1;
  const ProError status =
      ProSectionConstraintCreate(section, array.get(), count, static_cast<ProConstraintType>(number), &id);
  ProSectionIntentManagerModeSet(section, PRO_B_FALSE);
  return status;
}

}  // namespace

bool ApplySketchConstraint(ProSection section, const SketchSession& session,
                           const SketchConstraintRecord& record, std::wstring& error) {
  const std::wstring word = ToLower(record.type);
  Target first, second;
  if (!ResolveEntityReference(session, record.entity1, first.reference, first.entity_id, error)) return false;
  const ConstraintKind* kind = FindKind(word);
  const bool has_second = kind != nullptr && kind->needs_second;
  if (has_second) {
    if (record.entity2.empty()) {
      error = L"'entity2' is required for this constraint type.";
      return false;
    }
    if (!ResolveEntityReference(session, record.entity2, second.reference, second.entity_id, error))
      return false;
  }
  if (kind == nullptr) {
    error = WhyUnknown(word);
    return false;
  }
  int number = 0;
  if (!NumberFor(*kind, first, second, number, error)) return false;

  std::vector<OwnedSelection> selections;
  for (const Target* target : {&first, &second}) {
    if (target == &second && !has_second) break;
    OwnedSelection selection;
    const ProError status = SelectEntity(section, *target, selection);
    if (status != PRO_TK_NO_ERROR || !selection) {
      error = Format(L"Failed to select sketch entity (status=%d).", status);
      return false;
    }
    selections.push_back(std::move(selection));
  }
  const ProError status = CreateConstraint(section, selections, number);
  if (status == PRO_TK_NO_ERROR) return true;
  error = Format(L"Failed to create constraint (status=%d).", status);
  return false;
}

CreoMcpOperationResult SketchConstraintAdd(const std::wstring& arguments) {
  SketchSession* session = nullptr;
  double scale = 1;
  if (auto begun = BeginGeometryOp(arguments, session, scale); !begun.success) return begun;
  SketchConstraintRecord record;
  record.type = ToLower(Trim(JsonReadStringArgument(arguments, L"type")));
  record.entity1 = JsonReadStringArgument(arguments, L"entity1");
  record.entity2 = JsonReadStringArgument(arguments, L"entity2");
  if (record.type.empty()) return MakeFailureResult(L"'type' is required.");
  if (record.entity1.empty()) return MakeFailureResult(L"'entity1' is required.");

  session->constraints.push_back(record);
  if (auto committed = CommitSketch(*session); !committed.success) {
    session->constraints.pop_back();
    return committed;
  }
  if (record.entity2.empty())
    return MakeSuccessResult(
        Format(L"%s constraint on %s in '%s'.", record.type, record.entity1, session->name));
  return MakeSuccessResult(
      Format(L"%s constraint: %s / %s in '%s'.", record.type, record.entity1, record.entity2, session->name));
}

}  // namespace vek::sketch
